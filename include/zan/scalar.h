// Integer and bit utilities, fixed point, ratios and the lookup tables.
#ifndef ZAN_SCALAR_H
#define ZAN_SCALAR_H

#include "zan/types.h"

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
