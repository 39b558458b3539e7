// Integer and bit utilities, fixed point, ratios and the lookup tables.
#ifndef ZAN_SCALAR_H
#define ZAN_SCALAR_H

#include "zan/types.h"

/// @defgroup ratiostatus Status byte of the ratio operations
/// What it holds on entry, any sum of Zan_RatioAllow..., and afterwards.
/// @{
inline constexpr uint8_t Zan_RatioAllowHalving = 1;        ///< division may halve both terms of a divisor
inline constexpr uint8_t Zan_RatioAllowApproximation = 2;  ///< an approximation will do
inline constexpr uint8_t Zan_RatioExact = 0;               ///< the result is exact
inline constexpr uint8_t Zan_RatioFailed = 1;              ///< the result does not fit; the destination is {0, 0}
inline constexpr uint8_t Zan_RatioApproximated = 2;        ///< the result is the best approximation
/// The status pointer that allows everything silently; never dereferenced.
inline uint8_t* const Zan_kRatioApproximate =
    reinterpret_cast<uint8_t*>(UINTPTR_MAX);  // NOLINT(performance-no-int-to-ptr)
/// @}

extern "C" {

/// @defgroup integers Integers and bits
/// Pure functions of their arguments; nothing here reports or keeps state.
/// @{

/// Number of zero bits above the highest set bit.
/// @return  0 to 32; 32 for x = 0
/// @threads any
[[nodiscard]] ZAN_API int16_t Zan_LeadingZeros(uint32_t x);
/// Number of zero bits below the lowest set bit.
/// @return  0 to 32; 32 for x = 0
/// @threads any
[[nodiscard]] ZAN_API int16_t Zan_TrailingZeros(uint32_t x);

/// The smallest power of two that is not less than x.
/// @return  0 for x = 0 and, since 2^32 wraps, for x above 2^31
/// @threads any
[[nodiscard]] ZAN_API uint32_t Zan_RoundUpToPowerOf2(uint32_t x);
/// The highest set bit of x.
/// @return  0 for x = 0
/// @threads any
[[nodiscard]] ZAN_API uint32_t Zan_RoundDownToPowerOf2(uint32_t x);

/// Number of bits up to and including the highest set bit.
/// @return  0 for x <= 0, else 1 to 31
/// @threads any
[[nodiscard]] ZAN_API int16_t Zan_BitsUsed(int32_t x);

/// True when bits 31 and 30 of x are equal, so that 2 * x still fits.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_IsTopTwoBitsSame(int32_t x);

/// True when a + b does not fit 32 bits. Exact.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_AddWouldOverflow(int32_t a, int32_t b);
/// True when a * b may not fit: when the leading zeros of |a| and |b| sum up to 32 or less. Cautious, so that (2,
/// 0x3FFFFFFF) is true although the product fits; false always means that it fits. |-2^31| counts as 2^31.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_MulWouldOverflow(int32_t a, int32_t b);
/// The same for unsigned values: leading zeros that sum up to 31 or less.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_UMulWouldOverflow(uint32_t a, uint32_t b);

/// Greatest common divisor of |a| and |b|.
/// @param a, b     every value; -2^31 counts with its magnitude 2^31
/// @param divisor  1 when b = 0, whatever a is; |b| when a = 0; a divisor of 2^31 itself is written as INT32_MIN
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SignedGCD(int32_t a, int32_t b, int32_t* divisor);
/// Greatest common divisor.
/// @param a, b     every value
/// @param divisor  1 when b = 0, whatever a is; b when a = 0
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_UnsignedGCD(uint32_t a, uint32_t b, uint32_t* divisor);

/// Least common multiple, with the sign of a * b.
/// @param a, b      every value; -2^31 counts with its magnitude 2^31
/// @param multiple  a * b, wrapped to 32 bits, divided by the greatest common divisor and truncated toward zero: the
///                  least common multiple wherever a * b fits; 0 when b = 0
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SignedLCM(int32_t a, int32_t b, int32_t* multiple);
/// Least common multiple of unsigned values.
/// @param a, b      every value
/// @param multiple  a * b modulo 2^32, divided by the greatest common divisor; 0 when b = 0
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_UnsignedLCM(uint32_t a, uint32_t b, uint32_t* multiple);

/// The multiple of m nearest to x, halfway cases away from zero.
/// @param x  every value; where x and half of m sum up to more than 32 bits, the sum wraps
/// @param m  positive. With 0 the result is x as it is; a negative m goes through the same arithmetic, s = |x| + m / 2
///           and then s - s % m, and gives a multiple of m that is not the nearest
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_RoundToNearestMult(int32_t x, int32_t m);

/// x rounded to the nearest integer, halves toward plus infinity: 2.5 gives 3, -2.5 gives -2. The sums x + 0.5 and
/// x - 0.5 are formed in double precision, so that the doubles next to 0.5 and -0.5 on the side of zero give 1 and -1.
/// @return   INT32_MIN for NaN and for what does not fit
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_RoundDouble(double x);
/// As Zan_RoundDouble, clamped.
/// @return   INT32_MAX for x > 2147483646.5, INT32_MIN for x < -2147483647.5 and for NaN
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_RoundDoubleSafe(double x);
/// As Zan_RoundDouble in 64 bits. Odd values from 2^52 to 2^53 are rounded up to the even one above by the sum.
/// @return   INT64_MIN for NaN and for what does not fit
/// @threads  any
[[nodiscard]] ZAN_API int64_t Zan_RoundDouble64(double x);

/// The remainder of x / y with the quotient truncated toward zero: exact, with the sign of x.
/// @return   NaN when x is infinite, y is 0, or either is NaN; x when y is infinite
/// @threads  any
[[nodiscard]] ZAN_API double Zan_fmod(double x, double y);
/// @}

/// @defgroup fixed Fixed point
/// 16.16 (Zan_Fixed) in 32-bit integer arithmetic, without reports; 8.24 (Zan_Fix24) in double precision, with reports.
/// Whatever does not fit or cannot be formed gives 0x80000000 (Zan_kFixedFailure), never the largest positive value.
/// @{

/// Product of two 16.16 numbers: exact where their trailing zero bits allow it, else formed without the low 8 bits of
/// each. Products wrap: one that does not fit and happens to keep its sign goes unnoticed.
/// @param a, b   16.16, every value
/// @return   16.16; 0x80000000 when the product has the wrong sign
/// @threads  any
[[nodiscard]] ZAN_API Zan_Fixed Zan_FixMul(Zan_Fixed a, Zan_Fixed b);

/// Quotient a / b of two 16.16 numbers, truncated toward zero. A dividend of magnitude 1.0 or more costs the divisor
/// low bits: as many as the dividend's magnitude has above bit 15.
/// @param a, b   16.16, every value
/// @return   16.16; 0x80000000 when the quotient does not fit, and when b is zero or loses all its bits
/// @threads  any
[[nodiscard]] ZAN_API Zan_Fixed Zan_FixDiv(Zan_Fixed a, Zan_Fixed b);

/// Product of two 8.24 numbers, formed in double precision, rounded half away from zero.
/// @param a, b   8.24, every value
/// @return   8.24; 0x80000000 when the product does not fit
/// @reports  0x110008 "overflow in fix24 multiply." for a product >= 128 or <= -129; between -129 and -128, and in the
///           last half step below 128, the returned value alone tells
/// @threads  any
[[nodiscard]] ZAN_API Zan_Fix24 Zan_Fix24Mul(Zan_Fix24 a, Zan_Fix24 b);

/// Quotient of two integers of any common scale as an 8.24 number, formed in double precision, rounded half away from
/// zero.
/// @param numerator, denominator  every value
/// @return   8.24; 0x80000000 when the quotient does not fit or the denominator is 0
/// @reports  0x110009 "divide by zero in fix24 divide."; 0x110009 "overflow in fix24 divide." for a quotient >= 128 or
///           <= -129; in the same ranges as for Zan_Fix24Mul the returned value alone tells
/// @threads  any
[[nodiscard]] ZAN_API Zan_Fix24 Zan_Fix24Ratio(int32_t numerator, int32_t denominator);
/// @}

/// @defgroup ratios Ratios
/// Exact arithmetic on 32-bit ratios. Values need not be in lowest terms; a denominator of 0 is invalid as an operand
/// and is reported. What fails leaves {0, 0} in its destination unless its entry says otherwise. A destination may be
/// one of the inputs.
///
/// Sums, differences and products are formed in 32 bits. When the plain form may overflow (Zan_MulWouldOverflow is
/// cautious) common factors are cancelled and it is tried again; a result that does not fit then has failed, or is
/// approximated in double precision if the caller's status pointer allows it:
///
/// | status pointer | approximation | halving of a divisor | failure |
/// |---|---|---|---|
/// | null | no | no | reported and returned |
/// | Zan_kRatioApproximate | yes, silently | yes, silently | reported and returned |
/// | a byte | with Zan_RatioAllowApproximation in it | with Zan_RatioAllowHalving in it | code 0; the byte tells |
///
/// The byte is cleared when it has been read and receives Zan_RatioExact, Zan_RatioFailed or Zan_RatioApproximated. A
/// zero denominator is reported and returned in every mode, and leaves the byte cleared.
///
/// A numerator of -2^31 is a value like any other and counts with its magnitude 2^31: no product with it fits unless it
/// can be reduced first, and as a subtrahend it must be reduced first. It never gives a wrong value.
/// @{

/// A ratio in lowest terms.
/// @param source       any record; one with denominator 0 is copied as it is
/// @param destination  receives it; zero over anything below 2^31 becomes 0/1
/// @param changed      receives whether the terms had a common divisor other than 1; may be null. True also for a
///                     zero over 2^31 or more, which is copied as it is
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_ReduceRatio(const Zan_Ratio* source, Zan_Ratio* destination, bool* changed);

/// The reciprocal of a ratio. A denominator of 2^31 or more is reduced first, or where it cannot be, both terms are
/// halved and truncated.
/// @param source       any record; the reciprocal of a zero has denominator 0, which is no error here
/// @param destination  receives the denominator with the old sign over the magnitude of the numerator; for a zero over
///                     2^31 or more the new numerator wraps
/// @param exact        receives false when the terms were halved, true otherwise; may be null
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_RecipRatio(const Zan_Ratio* source, Zan_Ratio* destination, bool* exact);

/// A ratio over another denominator. The numerator newDenominator / denominator * numerator is formed in double
/// precision and rounded as Zan_RoundDouble does.
/// @param source          the ratio
/// @param newDenominator  1 to 2^32 - 1
/// @param destination     receives it; {0, 0} on failure
/// @param exact           receives whether the value is unchanged, false on overflow; may be null. Not written for a
///                        zero denominator
/// @param overflow        receives whether the numerator does not fit, false for a zero denominator; when null, an
///                        overflow is an error
/// @return   0; Zan_Err_ZeroDenominator (0x1106); Zan_Err_Overflow (0x1102) when overflow is null
/// @reports  0x110012 "zero denominator converting ratio denominators."; 0x110012 "overflow converting ratio
///           denominators." when overflow is null
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ConvRatio(const Zan_Ratio* source, uint32_t newDenominator, Zan_Ratio* destination,
                                            bool* exact, bool* overflow);

/// As Zan_ConvRatio for the numerator alone.
/// @param numerator       every value
/// @param oldDenominator  1 to 2^32 - 1
/// @param newDenominator  1 to 2^32 - 1
/// @param destination     receives the new numerator; 0 on failure
/// @param overflow        as in Zan_ConvRatio
/// @return   as Zan_ConvRatio
/// @reports  0x110013, the texts of Zan_ConvRatio
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ShortConvRatio(int32_t numerator, uint32_t oldDenominator, uint32_t newDenominator,
                                                 int32_t* destination, bool* overflow);

/// The ratio nearest to a value that is first rounded to single precision, with both terms at most 2^30, in lowest
/// terms.
/// @param value        a size above 2^30 is clipped to 2^30 / 1, one below about 2^-31 gives 0/1
/// @param destination  receives the ratio; {0, 0} on overflow
/// @param overflow     receives whether value is infinite, NaN, or at least 2^31 in size; not null
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_FpLong2Ratio(double value, Zan_Ratio* destination, bool* overflow);

/// The sum a + b.
/// @param a, b         the operands
/// @param destination  receives the sum, not necessarily in lowest terms; {0, 0} on failure
/// @param status       null, Zan_kRatioApproximate, or a byte that is read and written
/// @return   0; Zan_Err_ZeroDenominator (0x1106); Zan_Err_Overflow (0x1102) without a status byte
/// @reports  0x110010 "zero denominator in ratio addition."; 0x110010 "overflow in ratio addition." without a
///           status byte
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_AddRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);
/// The difference a - b.
/// @param a, b         the operands
/// @param destination  receives the difference, not necessarily in lowest terms; {0, 0} on failure
/// @param status       as in Zan_AddRatio
/// @return   as Zan_AddRatio
/// @reports  0x110010 as Zan_AddRatio, "... in ratio subtraction."
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_SubRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);
/// The product a * b.
/// @param a, b         the operands
/// @param destination  receives the product, not necessarily in lowest terms; {0, 0} on failure
/// @param status       as in Zan_AddRatio
/// @return   as Zan_AddRatio
/// @reports  0x110011 as Zan_AddRatio, "... in ratio multiply."
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_MulRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);
/// The quotient a / b, as the product of a and the reciprocal of b. A denominator of b from 2^31 on cannot become a
/// numerator: where halving is allowed both terms of b are halved and truncated first, else the division fails.
/// @param a, b         the operands
/// @param destination  receives the quotient, not necessarily in lowest terms; {0, 0} on failure
/// @param status       as in Zan_AddRatio; bit value 2 is also added to a byte when the divisor was halved
/// @return   as Zan_AddRatio
/// @reports  0x110011 "zero denominator in ratio multiply." also for a divisor that is 0; 0x110011 "overflow in ratio
///           multiply." without a status byte; 0x110011 "overflow in ratio divide." with a null status pointer for a
///           divisor that cannot become a numerator
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_DivRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);

/// The order of two ratios, exact for denominators below 2^31; with larger ones, two values whose difference does not
/// fit are compared in double precision.
/// @param a, b   the operands
/// @param order  receives a negative value when a < b, 0 when they are equal, a positive one when a > b; its size means
///               nothing. 0 on failure
/// @return   0; Zan_Err_ZeroDenominator (0x1106)
/// @reports  0x110010 "zero denominator comparing ratios."
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_CompareRatio(const Zan_Ratio* a, const Zan_Ratio* b, int32_t* order);

/// The smaller of two ratios.
/// @param a, b         the operands
/// @param destination  receives a when they are equal; {0, 0} on failure
/// @return   as Zan_CompareRatio
/// @reports  as Zan_CompareRatio
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_MinRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination);
/// The larger of two ratios.
/// @copydetails Zan_MinRatio
[[nodiscard]] ZAN_API int32_t Zan_MaxRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination);

/// A ratio clipped to a range.
/// @param value        the ratio
/// @param low, high    the range, both ends included
/// @param destination  receives low, value or high; {0, 0} when value is invalid; not written when low or high is
///                     invalid or low is above high
/// @return   0; Zan_Err_ZeroDenominator (0x1106); the platform's result when low is above high
/// @reports  as Zan_CompareRatio; 0x110018 platform code 3 "invalid rational range"
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ClipRatio(const Zan_Ratio* value, const Zan_Ratio* low, const Zan_Ratio* high,
                                            Zan_Ratio* destination);

/// A ratio clipped to a span.
/// @param value          the ratio
/// @param start, length  the span from start to start + length, both ends included
/// @param destination    receives start, value or the end; {0, 0} on failure
/// @return   0; Zan_Err_ZeroDenominator (0x1106); Zan_Err_Overflow (0x1102) when the end is needed and does not fit
/// @reports  as Zan_CompareRatio; 0x110010 as Zan_AddRatio, "... in ratio span."
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ClipRatioToSpan(const Zan_Ratio* value, const Zan_Ratio* start,
                                                  const Zan_Ratio* length, Zan_Ratio* destination);

/// A span clipped to another one.
/// @param start1, length1    the span that is clipped
/// @param start2, length2    the span to which it is clipped
/// @param destinationStart   receives start 1 clipped to span 2; {0, 0} on any failure
/// @param destinationLength  receives the length up to the clipped end; {0, 0} on any failure
/// @return   as Zan_ClipRatioToSpan
/// @reports  as Zan_ClipRatioToSpan; 0x110010 as Zan_AddRatio and Zan_SubRatio
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ClipSpanToSpan(const Zan_Ratio* start1, const Zan_Ratio* length1,
                                                 const Zan_Ratio* start2, const Zan_Ratio* length2,
                                                 Zan_Ratio* destinationStart, Zan_Ratio* destinationLength);
/// @}

/// @defgroup tables Lookup tables
/// Tables of the services that Zan_Birth started. A prepare call hands out addresses that stay valid until the matching
/// unprepare call; every prepare call that finds its service running must be matched by one unprepare call, whether or
/// not it succeeded. Only the first of several open prepare calls looks for reclaimed memory; an unprepare call too
/// many makes the count wrap, so that none does. Where memory to rebuild tables is lacking, the service no longer runs:
/// this and every further call of it, unprepare calls too, fail until it is started again.
/// @{

/// Hands out the 256 by 256 tables of 8-bit products and quotients on a scale of 255, at index a * 256 + b:
/// products floor((a * b + 127) / 255); quotients 255 when b >= a, else floor((b * 255 + floor(a / 2)) / a).
/// @param reportFailure    report tables that cannot be made ready, and return Zan_Result_Failed for them
/// @param failIfReclaimed  do not rebuild tables whose memory the platform has reclaimed
/// @param ok               receives whether the addresses were handed out; may be null
/// @param multiplyTable    receives the products, null on failure; may be null
/// @param divideTable      receives the quotients, null on failure; may be null
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run; Zan_Result_Failed (4) when the
///           tables cannot be made ready and reportFailure is set, 0 with ok false when it is not
/// @reports  0x11001F "attempt to use unrequested math service (fast char math).";
///           0x11001F "fast character math will be unavailable."
/// @threads  one at a time: the prepare counts are not synchronized
[[nodiscard]] ZAN_API int32_t Zan_PrepareFCMD(bool reportFailure, bool failIfReclaimed, bool* ok,
                                              uint8_t** multiplyTable, uint8_t** divideTable);

/// Ends a use of the tables of Zan_PrepareFCMD.
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run
/// @reports  0x110020 "attempt to use unrequested math service (fast char math)."
/// @threads  one at a time
ZAN_API int32_t Zan_UnprepareFCMD();

/// Hands out the quarter-wave sine table: 256 floats, entry i = sin(i / 255 * pi / 2), radians.
/// @param reportFailure    as in Zan_PrepareFCMD
/// @param failIfReclaimed  as in Zan_PrepareFCMD
/// @param ok               as in Zan_PrepareFCMD
/// @param sineTable        receives the table, null on failure; may be null
/// @return   as Zan_PrepareFCMD
/// @reports  0x11002A "attempt to use unrequested math service (fast trig)."; 0x11002A "fast trig will be unavailable."
/// @threads  one at a time
/// @libm     the entries come from sin
[[nodiscard]] ZAN_API int32_t Zan_PrepareFTrig(bool reportFailure, bool failIfReclaimed, bool* ok, float** sineTable);

/// Ends a use of the table of Zan_PrepareFTrig.
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run
/// @reports  0x11002A "attempt to use unrequested math service (fast trig)."
/// @threads  one at a time
ZAN_API int32_t Zan_UnprepareFTrig();

/// @}

}  // extern "C"

#endif  // ZAN_SCALAR_H
