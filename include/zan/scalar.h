// Integer and bit operations, rounding, fixed point, ratios and the lookup tables.
#ifndef ZAN_SCALAR_H
#define ZAN_SCALAR_H

#include "zan/types.h"

/// @defgroup scalar Numbers
/// @{

/// @defgroup ratiostatus Status byte of the ratio operations
/// On entry the byte holds a combination of the two Zan_RatioAllow bits. Afterwards it holds the outcome.
/// @{
inline constexpr uint8_t Zan_RatioAllowHalving = 1;        ///< on entry: division may halve both terms of the divisor
inline constexpr uint8_t Zan_RatioAllowApproximation = 2;  ///< on entry: the result may be an approximation
inline constexpr uint8_t Zan_RatioExact = 0;               ///< outcome: the result is exact
inline constexpr uint8_t Zan_RatioFailed = 1;              ///< outcome: no result; the destination is {0, 0}
inline constexpr uint8_t Zan_RatioApproximated = 2;        ///< outcome: the result is an approximation
/// The same bit as Zan_RatioApproximated. A division that halved its divisor sets it, also when it failed (outcome 3).
inline constexpr uint8_t Zan_RatioDivisorHalved = 2;
/// A status pointer that allows halving and approximation without a status byte; never dereferenced.
inline uint8_t* const Zan_kRatioApproximate =
    reinterpret_cast<uint8_t*>(UINTPTR_MAX);  // NOLINT(performance-no-int-to-ptr)
/// @}

extern "C" {

/// @defgroup integers Integers and bits
/// Pure functions of their arguments. None of them reports.
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
/// @return  0 for x = 0; 0 also for x > 2^31, because 2^32 wraps
/// @threads any
[[nodiscard]] ZAN_API uint32_t Zan_RoundUpToPowerOf2(uint32_t x);
/// The largest power of two that is not greater than x.
/// @return  0 for x = 0
/// @threads any
[[nodiscard]] ZAN_API uint32_t Zan_RoundDownToPowerOf2(uint32_t x);

/// Number of bits up to and including the highest set bit.
/// @return  0 for x <= 0, else 1 to 31
/// @threads any
[[nodiscard]] ZAN_API int16_t Zan_BitsUsed(int32_t x);

/// True when bits 31 and 30 of x are equal, that is when 2 * x fits.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_IsTopTwoBitsSame(int32_t x);

/// True when a + b does not fit 32 bits. Exact.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_AddWouldOverflow(int32_t a, int32_t b);
/// True when the leading zeros of |a| and |b| add up to 32 or less. Conservative: true for every product that does not
/// fit, and for some that do, such as 2 * 0x3FFFFFFF. |INT32_MIN| is 2^31.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_MulWouldOverflow(int32_t a, int32_t b);
/// True when the leading zeros of a and b add up to 31 or less. Conservative in the same way.
/// @threads any
[[nodiscard]] ZAN_API bool Zan_UMulWouldOverflow(uint32_t a, uint32_t b);

/// Greatest common divisor of |a| and |b|.
/// @param a, b     every value; |INT32_MIN| is 2^31
/// @param divisor  receives it: 1 when b = 0, whatever a is; |b| when a = 0. A divisor of 2^31 is stored as INT32_MIN
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SignedGCD(int32_t a, int32_t b, int32_t* divisor);
/// Greatest common divisor.
/// @param a, b     every value
/// @param divisor  receives it: 1 when b = 0, whatever a is; b when a = 0
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_UnsignedGCD(uint32_t a, uint32_t b, uint32_t* divisor);

/// Least common multiple, with the sign of a * b.
/// @param a, b      every value; |INT32_MIN| is 2^31
/// @param multiple  receives a * b, wrapped to 32 bits, divided by the greatest common divisor, truncated toward zero.
///                  That is the least common multiple if a * b fits. 0 when b = 0
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SignedLCM(int32_t a, int32_t b, int32_t* multiple);
/// Least common multiple of unsigned values.
/// @param a, b      every value
/// @param multiple  receives a * b modulo 2^32, divided by the greatest common divisor. That is the least common
///                  multiple if a * b fits. 0 when b = 0
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_UnsignedLCM(uint32_t a, uint32_t b, uint32_t* multiple);

/// The multiple of m nearest to x, halfway cases away from zero.
/// @param x  every value; |x| + m / 2 wraps to 32 bits
/// @param m  positive. m = 0 returns x. A negative m gives a multiple of m that may not be the nearest: its
///           magnitude is s - s % m with s = |x| + m / 2
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_RoundToNearestMult(int32_t x, int32_t m);

/// x rounded to the nearest integer, halves toward plus infinity: 2.5 gives 3, -2.5 gives -2. x + 0.5 and x - 0.5 are
/// rounded to double precision, so the largest double below 0.5 gives 1, and its negative gives -1.
/// @return   INT32_MIN when the result does not fit, and for NaN
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_RoundDouble(double x);
/// As Zan_RoundDouble, but clamped to the range of the result.
/// @return   INT32_MAX for x > 2147483646.5; INT32_MIN for x < -2147483647.5, and for NaN
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_RoundDoubleSafe(double x);
/// As Zan_RoundDouble in 64 bits. An odd x between 2^52 and 2^53 gives x + 1, because x + 0.5 rounds to it.
/// @return   INT64_MIN when the result does not fit, and for NaN
/// @threads  any
[[nodiscard]] ZAN_API int64_t Zan_RoundDouble64(double x);

/// The remainder of x / y for the quotient truncated toward zero. Exact, with the sign of x. errno is unchanged.
/// @return   NaN when x is infinite, y is 0, or either is NaN; x when y is infinite and x is finite
/// @threads  any
[[nodiscard]] ZAN_API double Zan_fmod(double x, double y);
/// @}

/// @defgroup fixed Fixed point
/// 16.16 (Zan_Fixed) in 32-bit integer arithmetic, without reports; 8.24 (Zan_Fix24) in double precision, with reports.
/// A result that does not fit or is undefined is 0x80000000 (Zan_kFixedFailure); nothing is clamped.
/// @{

/// Product of two 16.16 numbers. Exact if the trailing zero bits of a and b add up to more than 16; otherwise the low 8
/// bits of both are dropped first. A product that does not fit wraps, and is detected only if its sign is wrong.
/// @param a, b   16.16, every value
/// @return   16.16; 0x80000000 when the product has the wrong sign
/// @threads  any
[[nodiscard]] ZAN_API Zan_Fixed Zan_FixMul(Zan_Fixed a, Zan_Fixed b);

/// Quotient a / b of two 16.16 numbers, truncated toward zero. For |a| >= 1.0 the divisor first loses low bits: as many
/// as |a| has above bit 15.
/// @param a, b   16.16, every value
/// @return   16.16; 0x80000000 when the quotient does not fit, when b is 0, or when b loses all its bits
/// @threads  any
[[nodiscard]] ZAN_API Zan_Fixed Zan_FixDiv(Zan_Fixed a, Zan_Fixed b);

/// Product of two 8.24 numbers, computed in double precision, halves rounded away from zero.
/// @param a, b   8.24, every value
/// @return   8.24; 0x80000000 when the product does not fit
/// @reports  0x110008 "overflow in fix24 multiply." for a product >= 128 or <= -129. A product between -129 and
///           -128, or at most 2^-25 below 128, does not fit either, but is not reported
/// @threads  any
[[nodiscard]] ZAN_API Zan_Fix24 Zan_Fix24Mul(Zan_Fix24 a, Zan_Fix24 b);

/// The quotient, as an 8.24 number, of two integers that have the same scale. Computed in double precision, halves
/// rounded away from zero.
/// @param numerator, denominator  every value
/// @return   8.24; 0x80000000 when the quotient does not fit or the denominator is 0
/// @reports  0x110009 "divide by zero in fix24 divide."; 0x110009 "overflow in fix24 divide." for a quotient >= 128 or
///           <= -129; nothing in the same ranges as Zan_Fix24Mul
/// @threads  any
[[nodiscard]] ZAN_API Zan_Fix24 Zan_Fix24Ratio(int32_t numerator, int32_t denominator);
/// @}

/// @defgroup ratios Ratios
/// Exact arithmetic on 32-bit ratios, which need not be in lowest terms. An operand with denominator 0 is invalid and
/// is reported. A failed operation stores {0, 0} in its destination unless its entry says otherwise. A destination may
/// be one of the operands.
///
/// Sums, differences and products are computed in 32 bits. If that may overflow (by the conservative test of
/// Zan_MulWouldOverflow), common factors are cancelled and the operation is repeated. If the result may still overflow,
/// the operation fails, or the result is approximated as the status pointer decides. An approximation is calculated in
/// double precision and converted by Zan_FpLong2Ratio, which rounds it to single precision first: the relative error is
/// up to 2^-24 (6e-8), and a result that rounds to at most 2^-31 becomes 0.
///
/// | status pointer | approximation allowed | halving of a divisor allowed | on failure |
/// |---|---|---|---|
/// | null | no | no | reports and returns a code |
/// | Zan_kRatioApproximate | yes | yes | reports and returns a code |
/// | a byte | if it has Zan_RatioAllowApproximation | if it has Zan_RatioAllowHalving | returns 0 |
///
/// The byte receives Zan_RatioExact, Zan_RatioFailed or Zan_RatioApproximated; a division that halved its divisor also
/// sets Zan_RatioDivisorHalved. A zero denominator is reported and its code returned whatever the status pointer is,
/// and the byte is set to 0, or to Zan_RatioDivisorHalved if a division had halved its divisor. The exception is a
/// division that fails because it may not halve its divisor: it does not look at the other denominator.
///
/// A numerator of -2^31 has the magnitude 2^31: unless it can be reduced, no product with it fits, and it cannot be
/// subtracted. The exact operation fails then, and the result is approximated if the status pointer allows it.
/// @{

/// Reduces a ratio to lowest terms.
/// @param source       any ratio; one with denominator 0 is copied unchanged
/// @param destination  receives the reduced ratio; 0 over a denominator below 2^31 becomes 0/1, 0 over a larger one is
///                     copied unchanged
/// @param changed      receives whether the greatest common divisor of the terms (Zan_UnsignedGCD) is not 1, also for
///                     the 0 that is copied unchanged; may be null
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_ReduceRatio(const Zan_Ratio* source, Zan_Ratio* destination, bool* changed);

/// The reciprocal of a ratio. A denominator of 2^31 or more does not fit the new numerator: the ratio is reduced first,
/// or if that is not possible, both terms are halved and truncated.
/// @param source       any ratio; the reciprocal of 0 has denominator 0, which is not an error here
/// @param destination  receives the denominator, with the sign of the numerator, over the magnitude of the numerator;
///                     for 0 over 2^31 or more the new numerator wraps
/// @param exact        receives false when the terms were halved, otherwise true; may be null
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_RecipRatio(const Zan_Ratio* source, Zan_Ratio* destination, bool* exact);

/// Converts a ratio to another denominator. The new numerator is newDenominator / denominator * numerator, computed in
/// double precision and rounded as Zan_RoundDouble does.
/// @param source          the ratio
/// @param newDenominator  1 to 2^32 - 1
/// @param destination     receives the new ratio; {0, 0} on failure
/// @param exact           receives whether the value is unchanged, by cross products in double precision; false on
///                        overflow; may be null. Not written for a zero denominator
/// @param overflow        receives whether the new numerator does not fit, false for a zero denominator. If null, an
///                        overflow is reported and its code returned
/// @return   0, also for an overflow that the flag receives; Zan_Err_ZeroDenominator (0x1106); Zan_Err_Overflow
///           (0x1102) when overflow is null
/// @reports  0x110012 "zero denominator converting ratio denominators."; 0x110012 "overflow converting ratio
///           denominators." when overflow is null
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ConvRatio(const Zan_Ratio* source, uint32_t newDenominator, Zan_Ratio* destination,
                                            bool* exact, bool* overflow);

/// As Zan_ConvRatio, for the numerator only.
/// @param numerator       every value
/// @param oldDenominator  1 to 2^32 - 1
/// @param newDenominator  1 to 2^32 - 1
/// @param destination     receives the new numerator; 0 on failure
/// @param overflow        as in Zan_ConvRatio
/// @return   as Zan_ConvRatio
/// @reports  0x110013 with the texts of Zan_ConvRatio
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ShortConvRatio(int32_t numerator, uint32_t oldDenominator, uint32_t newDenominator,
                                                 int32_t* destination, bool* overflow);

/// Rounds a value to single precision and converts it to the nearest ratio with both terms at most 2^30, in lowest
/// terms (continued fractions; Khinchin, 1935). The relative error is up to 6e-8 for magnitudes from 2^-30 to 2^30. So
/// a frame rate of 29.97 becomes 15712911/524288, and 30000.0 / 1001.0 does not become 30000/1001.
/// @param value        a magnitude above 2^30 is clipped to 2^30 / 1; one that rounds to at most 2^-31 gives 0/1
/// @param destination  receives the ratio; {0, 0} on overflow
/// @param overflow     receives whether value is infinite, NaN, or at least 2^31 in magnitude; not null
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_FpLong2Ratio(double value, Zan_Ratio* destination, bool* overflow);

/// The sum a + b.
/// @param a, b         the operands
/// @param destination  receives the sum, not necessarily in lowest terms; {0, 0} on failure
/// @param status       null, Zan_kRatioApproximate, or a byte that is read and written
/// @return   0; Zan_Err_ZeroDenominator (0x1106); Zan_Err_Overflow (0x1102) without a status byte
/// @reports  0x110010 "zero denominator in ratio addition."; 0x110010 "overflow in ratio addition.", only without a
///           status byte
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_AddRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);
/// The difference a - b.
/// @param a, b         the operands
/// @param destination  receives the difference, not necessarily in lowest terms; {0, 0} on failure
/// @param status       as in Zan_AddRatio
/// @return   as Zan_AddRatio
/// @reports  0x110010 as Zan_AddRatio, but "... in ratio subtraction."
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_SubRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);
/// The product a * b.
/// @param a, b         the operands
/// @param destination  receives the product, not necessarily in lowest terms; {0, 0} on failure
/// @param status       as in Zan_AddRatio
/// @return   as Zan_AddRatio
/// @reports  0x110011 as Zan_AddRatio, but "... in ratio multiply."
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_MulRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);
/// The quotient a / b: the product of a and the reciprocal of b. If the denominator of b is 2^31 or more, it does not
/// fit the numerator of the reciprocal: both terms of b are halved and truncated first if that is allowed; otherwise
/// the division fails.
/// @param a, b         the operands
/// @param destination  receives the quotient, not necessarily in lowest terms; {0, 0} on failure
/// @param status       as in Zan_AddRatio; a byte also gets Zan_RatioDivisorHalved when the divisor was halved
/// @return   as Zan_AddRatio
/// @reports  0x110011 "zero denominator in ratio multiply.", also for b = 0; 0x110011 "overflow in ratio multiply.",
///           only without a status byte; 0x110011 "overflow in ratio divide.", only with a null status pointer, when
///           b would have to be halved
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_DivRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);

/// Compares two ratios. Exact if both denominators are below 2^31. With a larger one, ratios whose difference does not
/// fit are compared in double precision.
/// @param a, b   the operands
/// @param order  receives a negative number when a < b, 0 when they are equal, a positive number when a > b; only its
///               sign has a meaning. 0 on failure
/// @return   0; Zan_Err_ZeroDenominator (0x1106)
/// @reports  0x110010 "zero denominator comparing ratios."
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_CompareRatio(const Zan_Ratio* a, const Zan_Ratio* b, int32_t* order);

/// The smaller of two ratios.
/// @param a, b         the operands
/// @param destination  receives it, a when they are equal; {0, 0} on failure
/// @return   as Zan_CompareRatio
/// @reports  as Zan_CompareRatio
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_MinRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination);
/// The larger of two ratios.
/// @copydetails Zan_MinRatio
[[nodiscard]] ZAN_API int32_t Zan_MaxRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination);

/// Clips a ratio to a range.
/// @param value        the ratio
/// @param low, high    the range, both ends included
/// @param destination  receives low, value or high; {0, 0} when value has denominator 0; not written when low or high
///                     has denominator 0 or low > high
/// @return   0; Zan_Err_ZeroDenominator (0x1106); the platform's result when low > high
/// @reports  as Zan_CompareRatio; 0x110018 platform code 3, "invalid rational range"
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ClipRatio(const Zan_Ratio* value, const Zan_Ratio* low, const Zan_Ratio* high,
                                            Zan_Ratio* destination);

/// Clips a ratio to a span.
/// @param value          the ratio
/// @param start, length  the span from start to start + length, both ends included
/// @param destination    receives start, value or the end; {0, 0} on failure
/// @return   0; Zan_Err_ZeroDenominator (0x1106); Zan_Err_Overflow (0x1102) when value > start and start + length does
///           not fit
/// @reports  as Zan_CompareRatio; 0x110010 as Zan_AddRatio, but "... in ratio span."
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ClipRatioToSpan(const Zan_Ratio* value, const Zan_Ratio* start,
                                                  const Zan_Ratio* length, Zan_Ratio* destination);

/// Clips span 1 to span 2.
/// @param start1, length1    span 1, from start1 to start1 + length1
/// @param start2, length2    span 2, from start2 to start2 + length2
/// @param destinationStart   receives start1 clipped to span 2; {0, 0} on any failure
/// @param destinationLength  receives start1 + length1 clipped to span 2, minus the clipped start; {0, 0} on any
///                           failure
/// @return   as Zan_ClipRatioToSpan
/// @reports  as Zan_ClipRatioToSpan; 0x110010 as Zan_AddRatio and Zan_SubRatio
/// @threads  any
[[nodiscard]] ZAN_API int32_t Zan_ClipSpanToSpan(const Zan_Ratio* start1, const Zan_Ratio* length1,
                                                 const Zan_Ratio* start2, const Zan_Ratio* length2,
                                                 Zan_Ratio* destinationStart, Zan_Ratio* destinationLength);
/// @}

/// @defgroup tables Lookup tables
/// Tables of the services that Zan_Birth starts. A prepare call returns addresses that are valid until the matching
/// unprepare call. Each prepare call that finds its service running needs one unprepare call, even if it did not
/// succeed.
///
/// The platform may reclaim the memory of tables that are not prepared. A prepare call checks for that and rebuilds the
/// tables only while the prepare count is 0. One unprepare call too many wraps the count, and later prepare calls do
/// not check. If the memory for rebuilding cannot be allocated, the service stops running: that prepare call and all
/// later prepare and unprepare calls fail until the service is started again.
/// @{

/// Prepares the 256 by 256 tables of 8-bit products and quotients on a scale of 255. The entry for a and b is at index
/// a * 256 + b: product floor((a * b + 127) / 255); quotient 255 when b >= a, else floor((b * 255 + floor(a / 2)) / a).
/// @param reportFailure    report tables that are reclaimed and not rebuilt, and return Zan_Result_Failed for them
/// @param failIfReclaimed  do not rebuild reclaimed tables
/// @param ok               receives whether the tables are ready; may be null
/// @param multiplyTable    receives the address of the products, null on failure; may be null
/// @param divideTable      receives the address of the quotients, null on failure; may be null
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run. For tables that are reclaimed and
///           not rebuilt: Zan_Result_Failed (4) if reportFailure, else 0 with ok false
/// @reports  0x11001F "attempt to use unrequested math service (fast char math).";
///           0x11001F "fast character math will be unavailable.", only if reportFailure
/// @threads  one at a time: the prepare counts are not synchronized
[[nodiscard]] ZAN_API int32_t Zan_PrepareFCMD(bool reportFailure, bool failIfReclaimed, bool* ok,
                                              uint8_t** multiplyTable, uint8_t** divideTable);

/// Ends the use of the tables after one Zan_PrepareFCMD.
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run
/// @reports  0x110020 "attempt to use unrequested math service (fast char math)."
/// @threads  one at a time
ZAN_API int32_t Zan_UnprepareFCMD();

/// Prepares the quarter-wave sine table: 256 floats, entry i = sin(i / 255 * pi / 2), radians.
/// @param reportFailure    as in Zan_PrepareFCMD
/// @param failIfReclaimed  as in Zan_PrepareFCMD
/// @param ok               as in Zan_PrepareFCMD
/// @param sineTable        receives the table, null on failure; may be null
/// @return   as Zan_PrepareFCMD
/// @reports  0x11002A "attempt to use unrequested math service (fast trig).";
///           0x11002A "fast trig will be unavailable.", only if reportFailure
/// @threads  one at a time
/// @libm     sin, atan
[[nodiscard]] ZAN_API int32_t Zan_PrepareFTrig(bool reportFailure, bool failIfReclaimed, bool* ok, float** sineTable);

/// Ends the use of the table after one Zan_PrepareFTrig.
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run
/// @reports  0x11002A "attempt to use unrequested math service (fast trig)."
/// @threads  one at a time
ZAN_API int32_t Zan_UnprepareFTrig();

/// @}

}  // extern "C"

/// @}

#endif  // ZAN_SCALAR_H
