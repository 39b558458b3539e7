// Zan for C11: the constants, records and functions of the public headers that C can use, with the first sentence of
// each entry; the headers have the whole. Made from them by tools/api, and not edited.
// clang-format off
#ifndef ZAN_ZAN_C_H
#define ZAN_ZAN_C_H

#ifdef __cplusplus

// C++ gets the headers themselves, and this header's names for their vectors.
#include "zan/zan.h"

using Zan_Vector2d = Zan_Vector2T<double>;
using Zan_Vector3d = Zan_Vector3T<double>;
using Zan_Vector4d = Zan_Vector4T<double>;

#else

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#define ZAN_API __declspec(dllimport)
#else
#define ZAN_API __attribute__((visibility("default")))
#endif

// Marks a function whose result tells whether it failed, or is its only effect.
#if defined(__GNUC__) || defined(__clang__)
#define ZAN_NODISCARD __attribute__((warn_unused_result))
#else
#define ZAN_NODISCARD
#endif

// --- zan/types.h

/// 16.16 fixed point: raw / 65536, from -32768.0 to 32767.99998474.
typedef int32_t Zan_Fixed;

/// 8.24 fixed point: raw / 16777216, from -128.0 to 127.99999994.
typedef int32_t Zan_Fix24;

// Result codes
enum {
    Zan_Err_Overflow = 0x1102,  ///< a result does not fit its type
    Zan_Err_Underflow = 0x1103,  ///< a result is too small for its type
    Zan_Err_DivideByZero = 0x1104,  ///< a divisor is zero
    Zan_Err_UnrequestedService = 0x1105,  ///< a service that Zan_Birth did not start
    Zan_Err_ZeroDenominator = 0x1106,  ///< a ratio with denominator zero
    Zan_Err_CannotInvert = 0x1107,  ///< the matrix is singular
    Zan_Err_CannotDecompose = 0x1108,  ///< the matrix is projective or has m33 = 0
    Zan_Err_NoNormal = 0x1109,  ///< a normal vector cannot be formed
    Zan_Err_NoPlaneIntersection = 0x110A,  ///< the ray misses the plane
    Zan_Err_HomogeneousWZero = 0x110C,  ///< division by a w near zero; only thrown
    Zan_Result_BadAxis = 3,  ///< a rotation axis is shorter than 1e-12
    Zan_Result_Failed = 4,  ///< an allocation failed, or tables are not available
    Zan_Result_VersionMismatch = 7,  ///< versions of host, library, platform do not match
    Zan_Result_OutOfRange = 10,  ///< a rectangle does not fit the 16-bit record
};

// Severities of a report
enum {
    Zan_kSeverityUnderflow = 4,  ///< Zan_Err_Underflow only
    Zan_kSeverityError = 8,  ///< every other error of the library
    Zan_kSeverityVersionMismatch = 16,  ///< Zan_CheckVersions
};

// Types of numbers
enum {
    /// The value that a 16.16 or 8.24 operation returns when its result does not fit or is undefined.
    Zan_kFixedFailure = INT32_MIN,
};

/// A rational number. {0, 0} is the output of a failed operation.
typedef struct Zan_Ratio {
    int32_t num;  ///< numerator; carries the sign
    uint32_t den;  ///< denominator; 0 is invalid as an operand
} Zan_Ratio;

/// A 16-bit point, vertical coordinate first.
typedef struct Zan_Point {
    int16_t v;
    int16_t h;
} Zan_Point;

/// A 32-bit point.
typedef struct Zan_LPoint {
    int32_t h;
    int32_t v;
} Zan_LPoint;

/// A 16.16 point.
typedef struct Zan_FixedPoint {
    Zan_Fixed h;
    Zan_Fixed v;
} Zan_FixedPoint;

/// A 16-bit rectangle.
typedef struct Zan_Rect {
    int16_t top;
    int16_t left;
    int16_t bottom;
    int16_t right;
} Zan_Rect;

/// A 32-bit rectangle.
typedef struct Zan_LRect {
    int32_t left;
    int32_t top;
    int32_t right;
    int32_t bottom;
} Zan_LRect;

/// A 16.16 rectangle.
typedef struct Zan_FixedRect {
    Zan_Fixed left;
    Zan_Fixed top;
    Zan_Fixed right;
    Zan_Fixed bottom;
} Zan_FixedRect;

/// A rectangle in double precision.
typedef struct Zan_FloatRect {
    double left;
    double top;
    double right;
    double bottom;
} Zan_FloatRect;

/// Position and size in four 16-bit fields.
typedef struct Zan_WHRect {
    int16_t a;
    int16_t b;
    int16_t c;
    int16_t d;
} Zan_WHRect;

/// A vector or point in the plane.
typedef struct Zan_Vector2d {
    double x;
    double y;
} Zan_Vector2d;

/// A vector or point in space, or a homogeneous point of the plane, whose w is z.
typedef struct Zan_Vector3d {
    double x;
    double y;
    double z;
} Zan_Vector3d;

/// A homogeneous point of space.
typedef struct Zan_Vector4d {
    double x;
    double y;
    double z;
    double w;
} Zan_Vector4d;

// --- zan/frame.h

// Starting and stopping
enum {
    Zan_kInterfaceVersion = 18,  ///< The interface version of these headers; pass it to Zan_CheckVersions.
    /// Value of headMagic and tailMagic in the globals block while the library is started.
    Zan_kGlobalsMagic = 0x27182818,
};

// Services that Zan_Birth starts
enum {
    Zan_Service_Basic = 1,  ///< no table; its start never fails
    Zan_Service_FastTrig = 2,  ///< the quarter-wave sine table of Zan_PrepareFTrig
    Zan_Service_FastCharMath = 4,  ///< the 8-bit multiply and divide tables of Zan_PrepareFCMD
    Zan_Service_Gaussian = 8,  ///< not provided: its start is refused with a report
};

/// The state of the library: whether it is started, its services, its tables.
typedef struct Zan_Globals {
    uint32_t headMagic;  ///< Zan_kGlobalsMagic while started, else 0
    uint32_t services;  ///< the services that were started, also after Zan_Death
    uint8_t reserved1[8];  ///< never read or written, copied with the block
    void** charMultiplyTable;  ///< handle, 65,536 bytes; null when not allocated
    void** charDivideTable;  ///< handle, 65,536 bytes; null when not allocated
    uint8_t reserved2[8];  ///< never read or written, copied with the block
    void** sineTable;  ///< handle, 1,024 bytes; null when not allocated
    uint32_t tailMagic;  ///< Zan_kGlobalsMagic while started, else 0
    uint16_t charMathPrepareCount;  ///< outstanding Zan_PrepareFCMD calls
    uint16_t sinePrepareCount;  ///< outstanding Zan_PrepareFTrig calls
} Zan_Globals;

/// One entry of the message table.
typedef struct Zan_MessageEntry {
    const char* key;  ///< such as "$$$/Ko/Zan/LStr/0000=unknown error (%d)."; null in the terminator
    uintptr_t cache1;  ///< all ones in the terminator
    uintptr_t cache2;  ///< all ones in the terminator
    uintptr_t cache3;
} Zan_MessageEntry;

/// The message table, in the layout that the host's string service reads.
typedef struct Zan_MessageTable {
    const char* module;  ///< "Zan"
    uintptr_t entryCount;  ///< number of entries, the terminator included
    Zan_MessageEntry* entries;  ///< the first entry
    uintptr_t reserved;  ///< zero
} Zan_MessageTable;

/// The globals block.
extern ZAN_API Zan_Globals Zanp_G;

/// Address of the Zan_MessageTable, as the library passes it to the host's string service.
extern ZAN_API const void* const Zan_G_zref;

/// The version of the library.
ZAN_NODISCARD ZAN_API uint32_t Zan_PkgObjectVersion(void);

/// Checks that host and library have the same interface version.
ZAN_NODISCARD ZAN_API int32_t Zan_CheckVersions(int32_t errorNumber, int32_t headerVersion);

/// Starts the library and the requested services.
ZAN_NODISCARD ZAN_API int32_t Zan_Birth(uint32_t services, uint32_t* started);

/// Stops every running service and the library.
ZAN_API int32_t Zan_Death(void);

/// Moves the state out: copies the globals block, then sets both magic fields of Zanp_G to 0, so that the library is
/// not started.
ZAN_NODISCARD ZAN_API int32_t Zan_GetGlobals(Zan_Globals* destination);

/// Moves a state in: the library is started with the services and tables of the block.
ZAN_NODISCARD ZAN_API int32_t Zan_SetGlobals(const Zan_Globals* source);

/// Reports a failure to the host's error service.
ZAN_API int32_t Zanp_ReportErr(uint16_t site, int32_t code, int16_t context);

// --- zan/scalar.h

// Status byte of the ratio operations
enum {
    Zan_RatioAllowHalving = 1,  ///< on entry: division may halve both terms of the divisor
    Zan_RatioAllowApproximation = 2,  ///< on entry: the result may be an approximation
    Zan_RatioExact = 0,  ///< outcome: the result is exact
    Zan_RatioFailed = 1,  ///< outcome: no result; the destination is {0, 0}
    Zan_RatioApproximated = 2,  ///< outcome: the result is an approximation
    Zan_RatioDivisorHalved = 2,  ///< The same bit as Zan_RatioApproximated.
};

/// A status pointer that allows halving and approximation without a status byte; never dereferenced.
#define Zan_kRatioApproximate ((uint8_t*)UINTPTR_MAX)

/// Number of zero bits above the highest set bit.
ZAN_NODISCARD ZAN_API int16_t Zan_LeadingZeros(uint32_t x);

/// Number of zero bits below the lowest set bit.
ZAN_NODISCARD ZAN_API int16_t Zan_TrailingZeros(uint32_t x);

/// The smallest power of two that is not less than x.
ZAN_NODISCARD ZAN_API uint32_t Zan_RoundUpToPowerOf2(uint32_t x);

/// The largest power of two that is not greater than x.
ZAN_NODISCARD ZAN_API uint32_t Zan_RoundDownToPowerOf2(uint32_t x);

/// Number of bits up to and including the highest set bit.
ZAN_NODISCARD ZAN_API int16_t Zan_BitsUsed(int32_t x);

/// True when bits 31 and 30 of x are equal, that is when 2 * x fits.
ZAN_NODISCARD ZAN_API bool Zan_IsTopTwoBitsSame(int32_t x);

/// True when a + b does not fit 32 bits.
ZAN_NODISCARD ZAN_API bool Zan_AddWouldOverflow(int32_t a, int32_t b);

/// True when the leading zeros of |a| and |b| add up to 32 or less.
ZAN_NODISCARD ZAN_API bool Zan_MulWouldOverflow(int32_t a, int32_t b);

/// True when the leading zeros of a and b add up to 31 or less.
ZAN_NODISCARD ZAN_API bool Zan_UMulWouldOverflow(uint32_t a, uint32_t b);

/// Greatest common divisor of |a| and |b|.
ZAN_API int32_t Zan_SignedGCD(int32_t a, int32_t b, int32_t* divisor);

/// Greatest common divisor.
ZAN_API int32_t Zan_UnsignedGCD(uint32_t a, uint32_t b, uint32_t* divisor);

/// Least common multiple, with the sign of a * b.
ZAN_API int32_t Zan_SignedLCM(int32_t a, int32_t b, int32_t* multiple);

/// Least common multiple of unsigned values.
ZAN_API int32_t Zan_UnsignedLCM(uint32_t a, uint32_t b, uint32_t* multiple);

/// The multiple of m nearest to x, halfway cases away from zero.
ZAN_NODISCARD ZAN_API int32_t Zan_RoundToNearestMult(int32_t x, int32_t m);

/// x rounded to the nearest integer, halves toward plus infinity: 2.5 gives 3, -2.5 gives -2. x + 0.5 and x - 0.5 are
/// rounded to double precision, so the largest double below 0.5 gives 1, and its negative gives -1.
ZAN_NODISCARD ZAN_API int32_t Zan_RoundDouble(double x);

/// As Zan_RoundDouble, but clamped to the range of the result.
ZAN_NODISCARD ZAN_API int32_t Zan_RoundDoubleSafe(double x);

/// As Zan_RoundDouble in 64 bits.
ZAN_NODISCARD ZAN_API int64_t Zan_RoundDouble64(double x);

/// The remainder of x / y for the quotient truncated toward zero.
ZAN_NODISCARD ZAN_API double Zan_fmod(double x, double y);

/// Product of two 16.16 numbers.
ZAN_NODISCARD ZAN_API Zan_Fixed Zan_FixMul(Zan_Fixed a, Zan_Fixed b);

/// Quotient a / b of two 16.16 numbers, truncated toward zero.
ZAN_NODISCARD ZAN_API Zan_Fixed Zan_FixDiv(Zan_Fixed a, Zan_Fixed b);

/// Product of two 8.24 numbers, computed in double precision, halves rounded away from zero.
ZAN_NODISCARD ZAN_API Zan_Fix24 Zan_Fix24Mul(Zan_Fix24 a, Zan_Fix24 b);

/// The quotient, as an 8.24 number, of two integers that have the same scale.
ZAN_NODISCARD ZAN_API Zan_Fix24 Zan_Fix24Ratio(int32_t numerator, int32_t denominator);

/// Reduces a ratio to lowest terms.
ZAN_API int32_t Zan_ReduceRatio(const Zan_Ratio* source, Zan_Ratio* destination, bool* changed);

/// The reciprocal of a ratio.
ZAN_API int32_t Zan_RecipRatio(const Zan_Ratio* source, Zan_Ratio* destination, bool* exact);

/// Converts a ratio to another denominator.
ZAN_NODISCARD ZAN_API int32_t Zan_ConvRatio(const Zan_Ratio* source, uint32_t newDenominator, Zan_Ratio* destination,
                                            bool* exact, bool* overflow);

/// As Zan_ConvRatio, for the numerator only.
ZAN_NODISCARD ZAN_API int32_t Zan_ShortConvRatio(int32_t numerator, uint32_t oldDenominator, uint32_t newDenominator,
                                                 int32_t* destination, bool* overflow);

/// Rounds a value to single precision and converts it to the nearest ratio with both terms at most 2^30, in lowest
/// terms (continued fractions; Khinchin, 1935).
ZAN_API int32_t Zan_FpLong2Ratio(double value, Zan_Ratio* destination, bool* overflow);

/// The sum a + b.
ZAN_NODISCARD ZAN_API int32_t Zan_AddRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);

/// The difference a - b.
ZAN_NODISCARD ZAN_API int32_t Zan_SubRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);

/// The product a * b.
ZAN_NODISCARD ZAN_API int32_t Zan_MulRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);

/// The quotient a / b: the product of a and the reciprocal of b.
ZAN_NODISCARD ZAN_API int32_t Zan_DivRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination,
                                           uint8_t* status);

/// Compares two ratios.
ZAN_NODISCARD ZAN_API int32_t Zan_CompareRatio(const Zan_Ratio* a, const Zan_Ratio* b, int32_t* order);

/// The smaller of two ratios.
ZAN_NODISCARD ZAN_API int32_t Zan_MinRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination);

/// The larger of two ratios.
ZAN_NODISCARD ZAN_API int32_t Zan_MaxRatio(const Zan_Ratio* a, const Zan_Ratio* b, Zan_Ratio* destination);

/// Clips a ratio to a range.
ZAN_NODISCARD ZAN_API int32_t Zan_ClipRatio(const Zan_Ratio* value, const Zan_Ratio* low, const Zan_Ratio* high,
                                            Zan_Ratio* destination);

/// Clips a ratio to a span.
ZAN_NODISCARD ZAN_API int32_t Zan_ClipRatioToSpan(const Zan_Ratio* value, const Zan_Ratio* start,
                                                  const Zan_Ratio* length, Zan_Ratio* destination);

/// Clips span 1 to span 2.
ZAN_NODISCARD ZAN_API int32_t Zan_ClipSpanToSpan(const Zan_Ratio* start1, const Zan_Ratio* length1,
                                                 const Zan_Ratio* start2, const Zan_Ratio* length2,
                                                 Zan_Ratio* destinationStart, Zan_Ratio* destinationLength);

/// Prepares the 256 by 256 tables of 8-bit products and quotients on a scale of 255.
ZAN_NODISCARD ZAN_API int32_t Zan_PrepareFCMD(bool reportFailure, bool failIfReclaimed, bool* ok,
                                              uint8_t** multiplyTable, uint8_t** divideTable);

/// Ends the use of the tables after one Zan_PrepareFCMD.
ZAN_API int32_t Zan_UnprepareFCMD(void);

/// Prepares the quarter-wave sine table: 256 floats, entry i = sin(i / 255 * pi / 2), radians.
ZAN_NODISCARD ZAN_API int32_t Zan_PrepareFTrig(bool reportFailure, bool failIfReclaimed, bool* ok, float** sineTable);

/// Ends the use of the table after one Zan_PrepareFTrig.
ZAN_API int32_t Zan_UnprepareFTrig(void);

// --- zan/geom2d.h

/// One of the relations.
typedef int16_t Zan_RectRelation;

// Relations of two rectangles a and b
enum {
    Zan_RectRelation_Equal = 0,  ///< all four fields are equal, also when empty
    Zan_RectRelation_Larger = 1,  ///< a is wider and taller than b
    Zan_RectRelation_AtLeastAsLarge = 2,  ///< a is at least as wide and as tall as b
    Zan_RectRelation_Smaller = 3,  ///< a is narrower and shorter than b
    Zan_RectRelation_AtMostAsLarge = 4,  ///< a is at most as wide and as tall as b
    Zan_RectRelation_StrictlyEncloses = 5,  ///< a encloses b and no edges coincide
    Zan_RectRelation_Encloses = 6,  ///< a encloses b; edges may coincide
    Zan_RectRelation_Overlaps = 7,  ///< Zan_SectRect(a, b) is true
    Zan_RectRelation_OverlapsOrTouches = 8,  ///< a and b overlap, or share an edge or a corner.
};

/// Sets a point.
ZAN_API int32_t Zan_SetPt(Zan_Point* point, int16_t h, int16_t v);

/// Sets a point.
ZAN_API int32_t Zan_SetLPt(Zan_LPoint* point, int32_t h, int32_t v);

/// Sets a point.
ZAN_API int32_t Zan_SetFixedPt(Zan_FixedPoint* point, Zan_Fixed h, Zan_Fixed v);

/// Copies a point.
ZAN_API int32_t Zan_CopyPt(const Zan_Point* source, Zan_Point* destination);

/// Copies a point.
ZAN_API int32_t Zan_CopyLPt(const Zan_LPoint* source, Zan_LPoint* destination);

/// Copies a point.
ZAN_API int32_t Zan_CopyFixedPt(const Zan_FixedPoint* source, Zan_FixedPoint* destination);

/// True when both fields are equal.
ZAN_NODISCARD ZAN_API bool Zan_EqualPt(const Zan_Point* a, const Zan_Point* b);

/// True when both fields are equal.
ZAN_NODISCARD ZAN_API bool Zan_EqualLPt(const Zan_LPoint* a, const Zan_LPoint* b);

/// True when both fields are equal.
ZAN_NODISCARD ZAN_API bool Zan_EqualFixedPt(const Zan_FixedPoint* a, const Zan_FixedPoint* b);

/// Moves a point: target.v += delta.v and target.h += delta.h, modulo 2^16.
ZAN_API int32_t Zan_AddPt(Zan_Point delta, Zan_Point* target);

/// Sets a rectangle, which may be empty or inverted.
ZAN_API int32_t Zan_SetRect(Zan_Rect* rect, int16_t left, int16_t top, int16_t right, int16_t bottom);

/// Sets a rectangle, which may be empty or inverted.
ZAN_API int32_t Zan_SetLRect(Zan_LRect* rect, int32_t left, int32_t top, int32_t right, int32_t bottom);

/// Sets a rectangle, which may be empty or inverted.
ZAN_API int32_t Zan_SetFixedRect(Zan_FixedRect* rect, Zan_Fixed left, Zan_Fixed top, Zan_Fixed right, Zan_Fixed bottom);

/// Sets the four fields of a record whose meaning the host defines.
ZAN_API int32_t Zan_SetWHRect(Zan_WHRect* rect, int16_t a, int16_t b, int16_t c, int16_t d);

/// Copies a rectangle.
ZAN_API int32_t Zan_CopyRect(const Zan_Rect* source, Zan_Rect* destination);

/// Copies a rectangle.
ZAN_API int32_t Zan_CopyLRect(const Zan_LRect* source, Zan_LRect* destination);

/// Copies a rectangle.
ZAN_API int32_t Zan_CopyFixedRect(const Zan_FixedRect* source, Zan_FixedRect* destination);

/// Copies a rectangle.
ZAN_API int32_t Zan_CopyWHRect(const Zan_WHRect* source, Zan_WHRect* destination);

/// True when both rectangles are empty, or all four fields are equal.
ZAN_NODISCARD ZAN_API bool Zan_EqualRect(const Zan_Rect* a, const Zan_Rect* b);

/// True when both rectangles are empty, or all four fields are equal.
ZAN_NODISCARD ZAN_API bool Zan_EqualLRect(const Zan_LRect* a, const Zan_LRect* b);

/// True when both rectangles are empty, or all four fields are equal.
ZAN_NODISCARD ZAN_API bool Zan_EqualFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b);

/// True when all four fields are equal.
ZAN_NODISCARD ZAN_API bool Zan_EqualWHRect(const Zan_WHRect* a, const Zan_WHRect* b);

/// True when right <= left or bottom <= top.
ZAN_NODISCARD ZAN_API bool Zan_EmptyRect(const Zan_Rect* rect);

/// True when right <= left or bottom <= top.
ZAN_NODISCARD ZAN_API bool Zan_EmptyLRect(const Zan_LRect* rect);

/// True when right <= left or bottom <= top.
ZAN_NODISCARD ZAN_API bool Zan_EmptyFixedRect(const Zan_FixedRect* rect);

/// True when left <= h < right and top <= v < bottom: points on the left and top edges are inside, those on the right
/// and bottom edges are not.
ZAN_NODISCARD ZAN_API bool Zan_PtInRect(const Zan_Point* point, const Zan_Rect* rect);

/// True when left <= h < right and top <= v < bottom: points on the left and top edges are inside, those on the right
/// and bottom edges are not.
ZAN_NODISCARD ZAN_API bool Zan_LPtInRect(const Zan_LPoint* point, const Zan_LRect* rect);

/// True when left <= h < right and top <= v < bottom: points on the left and top edges are inside, those on the right
/// and bottom edges are not.
ZAN_NODISCARD ZAN_API bool Zan_FixedPtInRect(const Zan_FixedPoint* point, const Zan_FixedRect* rect);

/// The rectangle that two points span.
ZAN_API int32_t Zan_Pt2Rect(const Zan_Point* a, const Zan_Point* b, Zan_Rect* rect);

/// The rectangle that two points span.
ZAN_API int32_t Zan_LPt2Rect(const Zan_LPoint* a, const Zan_LPoint* b, Zan_LRect* rect);

/// The rectangle that two points span.
ZAN_API int32_t Zan_FixedPt2Rect(const Zan_FixedPoint* a, const Zan_FixedPoint* b, Zan_FixedRect* rect);

/// Moves every edge inward.
ZAN_API int32_t Zan_InsetRect(Zan_Rect* rect, int16_t dh, int16_t dv);

/// Moves every edge inward.
ZAN_API int32_t Zan_InsetLRect(Zan_LRect* rect, int32_t dh, int32_t dv);

/// Moves every edge inward.
ZAN_API int32_t Zan_InsetFixedRect(Zan_FixedRect* rect, Zan_Fixed dh, Zan_Fixed dv);

/// Moves a rectangle.
ZAN_API int32_t Zan_OffsetRect(Zan_Rect* rect, int16_t dh, int16_t dv);

/// Moves a rectangle.
ZAN_API int32_t Zan_OffsetLRect(Zan_LRect* rect, int32_t dh, int32_t dv);

/// Moves a rectangle.
ZAN_API int32_t Zan_OffsetFixedRect(Zan_FixedRect* rect, Zan_Fixed dh, Zan_Fixed dv);

/// Centres a rectangle in a frame and keeps its size: left becomes frame.left + (frame width - width) / 2 with the
/// division truncated toward zero, and top likewise.
ZAN_API int32_t Zan_CenterRect(const Zan_Rect* frame, Zan_Rect* rect);

/// Centres a rectangle in a frame and keeps its size: left becomes frame.left + (frame width - width) / 2 with the
/// division truncated toward zero, and top likewise.
ZAN_API int32_t Zan_CenterLRect(const Zan_LRect* frame, Zan_LRect* rect);

/// Centres a rectangle in a frame and keeps its size: left becomes frame.left + (frame width - width) / 2 with the
/// division truncated toward zero, and top likewise.
ZAN_API int32_t Zan_CenterFixedRect(const Zan_FixedRect* frame, Zan_FixedRect* rect);

/// Rounds a fixed rectangle to the nearest integers, halves toward plus infinity: 0.5 gives 1, -0.5 gives 0.
ZAN_API int32_t Zan_FixedRect2Rect(const Zan_FixedRect* source, Zan_Rect* destination);

/// Rounds a fixed rectangle to the nearest integers, halves toward plus infinity: 0.5 gives 1, -0.5 gives 0.
ZAN_API int32_t Zan_FixedRect2LRect(const Zan_FixedRect* source, Zan_LRect* destination);

/// The largest integer rectangle inside a fixed one: left and top rounded up, right and bottom down.
ZAN_API int32_t Zan_FixedRect2RectIn(const Zan_FixedRect* source, Zan_Rect* destination);

/// The largest integer rectangle inside a fixed one: left and top rounded up, right and bottom down.
ZAN_API int32_t Zan_FixedRect2LRectIn(const Zan_FixedRect* source, Zan_LRect* destination);

/// The smallest integer rectangle that contains a fixed one: left and top rounded down, right and bottom up.
ZAN_API int32_t Zan_FixedRect2RectOut(const Zan_FixedRect* source, Zan_Rect* destination);

/// The smallest integer rectangle that contains a fixed one: left and top rounded down, right and bottom up.
ZAN_API int32_t Zan_FixedRect2LRectOut(const Zan_FixedRect* source, Zan_LRect* destination);

/// Converts an integer rectangle to 16.16.
ZAN_API int32_t Zan_Rect2FixedRect(const Zan_Rect* source, Zan_FixedRect* destination);

/// Converts an integer rectangle to 16.16.
ZAN_API int32_t Zan_LRect2FixedRect(const Zan_LRect* source, Zan_FixedRect* destination);

/// Converts a 32-bit rectangle to 16 bits.
ZAN_NODISCARD ZAN_API int32_t Zan_LRect2Rect(const Zan_LRect* source, Zan_Rect* destination);

/// Intersects two rectangles.
ZAN_API bool Zan_SectRect(const Zan_Rect* a, const Zan_Rect* b, Zan_Rect* destination);

/// Intersects two rectangles.
ZAN_API bool Zan_SectLRect(const Zan_LRect* a, const Zan_LRect* b, Zan_LRect* destination);

/// Intersects two rectangles.
ZAN_API bool Zan_SectFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b, Zan_FixedRect* destination);

/// Intersects two rectangles.
ZAN_API bool Zan_SectFloatRect(const Zan_FloatRect* a, const Zan_FloatRect* b, Zan_FloatRect* destination);

/// The smallest rectangle that contains a and b.
ZAN_API int32_t Zan_UnionRect(const Zan_Rect* a, const Zan_Rect* b, Zan_Rect* destination);

/// The smallest rectangle that contains a and b.
ZAN_API int32_t Zan_UnionLRect(const Zan_LRect* a, const Zan_LRect* b, Zan_LRect* destination);

/// The smallest rectangle that contains a and b.
ZAN_API int32_t Zan_UnionFixedRect(const Zan_FixedRect* a, const Zan_FixedRect* b, Zan_FixedRect* destination);

/// Tests a relation between two rectangles.
ZAN_NODISCARD ZAN_API bool Zan_RectCompare(int16_t selector, const Zan_Rect* a, const Zan_Rect* b);

/// Tests a relation between two rectangles.
ZAN_NODISCARD ZAN_API bool Zan_LRectCompare(int16_t selector, const Zan_LRect* a, const Zan_LRect* b);

/// Tests a relation between two rectangles.
ZAN_NODISCARD ZAN_API bool Zan_FixedRectCompare(int16_t selector, const Zan_FixedRect* a, const Zan_FixedRect* b);

/// The direction from the centre of a rectangle to a point, in whole degrees.
ZAN_API int32_t Zan_PtToAngle(const Zan_Rect* rect, Zan_Point point, int16_t* angle);

// --- zan/matrix.h

/// One of the kinds.
typedef int32_t Zan_MatrixType;

// Kinds of a Zan_Matrix3
enum {
    Zan_MatrixType_Identity = 0,  ///< leaves points unchanged
    Zan_MatrixType_Translate = 1,  ///< m00 = m11 = 1, translation not 0
    Zan_MatrixType_Scale = 2,  ///< m00 or m11 not 1, translation 0
    Zan_MatrixType_ScaleTranslate = 3,  ///< m00 or m11 not 1, translation not 0
    Zan_MatrixType_Affine = 4,  ///< rotates or skews
    Zan_MatrixType_Perspective = 5,  ///< has a projective column
};

/// A quaternion, vector part first.
typedef struct Zan_Quat {
    double x;
    double y;
    double z;
    double w;
} Zan_Quat;

/// The parts of a transform of space.
typedef struct Zan_Matrix4Decomp {
    double tx;  ///< translation
    double ty;  ///< translation
    double tz;  ///< translation
    double sx;  ///< lengths of the three axes; all negative for a reflection
    double sy;  ///< lengths of the three axes; all negative for a reflection
    double sz;  ///< lengths of the three axes; all negative for a reflection
    double shearXY;  ///< dot products of the rows during orthogonalization, not divided by a scale
    double shearXZ;  ///< dot products of the rows during orthogonalization, not divided by a scale
    double shearYZ;  ///< dot products of the rows during orthogonalization, not divided by a scale
    double rx;  ///< angles in radians, in the order of the operation that filled the record
    double ry;  ///< angles in radians, in the order of the operation that filled the record
    double rz;  ///< angles in radians, in the order of the operation that filled the record
} Zan_Matrix4Decomp;

/// A homogeneous transform of the plane: nine doubles, row by row, and nothing else.
typedef struct Zan_Matrix3 {
    double m00;  ///< row 0: the image of (1, 0, 0)
    double m01;  ///< row 0: the image of (1, 0, 0)
    double m02;  ///< row 0: the image of (1, 0, 0)
    double m10;  ///< row 1: the image of (0, 1, 0)
    double m11;  ///< row 1: the image of (0, 1, 0)
    double m12;  ///< row 1: the image of (0, 1, 0)
    double m20;  ///< row 2: the translation m20, m21
    double m21;  ///< row 2: the translation m20, m21
    double m22;  ///< row 2: the translation m20, m21
} Zan_Matrix3;

/// A homogeneous transform of space: sixteen doubles, row by row, and nothing else.
typedef struct Zan_Matrix4 {
    double m00;  ///< row 0: the image of (1, 0, 0, 0)
    double m01;  ///< row 0: the image of (1, 0, 0, 0)
    double m02;  ///< row 0: the image of (1, 0, 0, 0)
    double m03;  ///< row 0: the image of (1, 0, 0, 0)
    double m10;  ///< row 1: the image of (0, 1, 0, 0)
    double m11;  ///< row 1: the image of (0, 1, 0, 0)
    double m12;  ///< row 1: the image of (0, 1, 0, 0)
    double m13;  ///< row 1: the image of (0, 1, 0, 0)
    double m20;  ///< row 2: the image of (0, 0, 1, 0)
    double m21;  ///< row 2: the image of (0, 0, 1, 0)
    double m22;  ///< row 2: the image of (0, 0, 1, 0)
    double m23;  ///< row 2: the image of (0, 0, 1, 0)
    double m30;  ///< row 3: the translation m30, m31, m32
    double m31;  ///< row 3: the translation m30, m31, m32
    double m32;  ///< row 3: the translation m30, m31, m32
    double m33;  ///< row 3: the translation m30, m31, m32
} Zan_Matrix4;

/// Sets a matrix to the identity.
ZAN_API int32_t Zan_SetIdentityMatrix(Zan_Matrix3* m);

/// Sets a matrix to the identity.
ZAN_API int32_t Zan_IdentityMatrix4(Zan_Matrix4* m);

/// Sets all sixteen elements to 0.
ZAN_API int32_t Zan_ZeroMatrix4(Zan_Matrix4* m);

/// Finds the kind of a matrix (matrixkinds).
ZAN_API int32_t Zan_GetMatrixType(const Zan_Matrix3* m, int32_t* kind);

/// Compares values: -0.0 equals 0.0, a NaN equals nothing.
ZAN_API int32_t Zan_EqualMatrix(const Zan_Matrix3* a, const Zan_Matrix3* b, unsigned char* equal);

/// Compares values: -0.0 equals 0.0, a NaN equals nothing.
ZAN_API int32_t Zan_EqualMatrix4(const Zan_Matrix4* a, const Zan_Matrix4* b, unsigned char* equal);

/// b := b * a: b's transform first, then a's.
ZAN_API int32_t Zan_ConcatMatrix(const Zan_Matrix3* a, Zan_Matrix3* b);

/// product := a * b: a's transform first, then b's.
ZAN_API int32_t Zan_ConcatMatrix4(const Zan_Matrix4* a, const Zan_Matrix4* b, Zan_Matrix4* product);

/// Transposes a matrix.
ZAN_API int32_t Zan_TransposeMatrix4(const Zan_Matrix4* m, Zan_Matrix4* transposed);

/// The determinant m00*M00 - m01*M01 + m02*M02 - m03*M03.
ZAN_API int32_t Zan_GetMatrix4Determinant(const Zan_Matrix4* m, double* determinant);

/// Extends a transform of the plane to one of space that keeps z.
ZAN_API int32_t Zan_Matrix3ToMatrix4(const Zan_Matrix3* m, Zan_Matrix4* wide);

/// As Zan_Matrix3ToMatrix4, but a scale equal on both axes also scales z: with a = m00^2 + m10^2 and b = m01^2 + m11^2,
/// element (2, 2) is sqrt(a) when a and b differ by less than 1e-12 times the larger or by less than 563 * 2^-49, and 1
/// otherwise.
ZAN_API int32_t Zan_Matrix3ToMatrix4Uniform(const Zan_Matrix3* m, Zan_Matrix4* wide);

/// The inverse, by Gauss-Jordan elimination with partial pivoting.
ZAN_NODISCARD ZAN_API int32_t Zan_InverseMatrixQuiet(const Zan_Matrix3* in, Zan_Matrix3* out, unsigned char* singular);

/// As Zan_InverseMatrixQuiet, but a failure is reported.
ZAN_NODISCARD ZAN_API int32_t Zan_InverseMatrix(const Zan_Matrix3* in, Zan_Matrix3* out);

/// The inverse: each element of the adjugate, divided by the determinant.
ZAN_NODISCARD ZAN_API int32_t Zan_InverseMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out, unsigned char* singular);

/// As Zan_InverseMatrix4Quiet, but a failure is reported.
ZAN_NODISCARD ZAN_API int32_t Zan_InverseMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out);

/// The normal matrix, by which normals of surfaces are transformed: the transpose of the inverse.
ZAN_NODISCARD ZAN_API int32_t Zan_CalcNormalMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out);

/// As Zan_CalcNormalMatrix4, but a failure is not reported and leaves a different output.
ZAN_NODISCARD ZAN_API int32_t Zan_CalcNormalMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out,
                                                         unsigned char* singular);

/// Appends the translation [1 0 0] [0 1 0] [tx ty 1].
ZAN_API int32_t Zan_TranslateMatrix(Zan_Matrix3* m, double tx, double ty);

/// Appends a rotation about the point (cx, cy), from the x axis toward the y axis: with c and s the cosine and sine of
/// the angle, [c s 0] [-s c 0] [(1-c)*cx + cy*s (1-c)*cy - cx*s 1].
ZAN_API int32_t Zan_RotateMatrix(Zan_Matrix3* m, double degrees, double cx, double cy);

/// Appends a scale about the point (cx, cy): [sx 0 0] [0 sy 0] [(1-sx)*cx (1-sy)*cy 1].
ZAN_API int32_t Zan_ScaleMatrix(Zan_Matrix3* m, double sx, double sy, double cx, double cy);

/// Appends the translation with row 3 = (tx, ty, tz, 1).
ZAN_API int32_t Zan_TranslateMatrix4(double tx, double ty, double tz, Zan_Matrix4* m);

/// Appends the scale with the diagonal (sx, sy, sz, 1).
ZAN_API int32_t Zan_ScaleMatrix4(double sx, double sy, double sz, Zan_Matrix4* m);

/// Appends a rotation about an axis through the origin, counterclockwise when the axis points at the viewer.
ZAN_NODISCARD ZAN_API int32_t Zan_RotateMatrix4(double ax, double ay, double az, double radians, Zan_Matrix4* m);

/// Appends three rotations: about the x axis, about the y axis as rotated by the first, about the z axis as rotated by
/// both.
ZAN_API int32_t Zan_RotateMatrix4XYZ(double rx, double ry, double rz, Zan_Matrix4* m);

/// Appends three rotations, either as Zan_RotateMatrix4XYZ does or about m's own axes.
ZAN_API int32_t Zan_RotateMatrix4XYZPlus(double rx, double ry, double rz, unsigned char startFromIdentity,
                                         Zan_Matrix4* m);

/// Sets a matrix to the change of basis with the columns a, b, c; nothing is appended.
ZAN_API int32_t Zan_SetMatrix4CoB(const Zan_Vector4d* a, const Zan_Vector4d* b, const Zan_Vector4d* c,
                                  Zan_Matrix4* out);

/// 16-bit points, affine: x' = x*m00 + y*m10 + m20, y' = x*m01 + y*m11 + m21, with x = h and y = v, each rounded by
/// Zan_RoundDouble.
ZAN_NODISCARD ZAN_API int32_t Zan_TransformPoints(const Zan_Matrix3* m, int32_t count, Zan_Point* points);

/// 16.16 points, affine, computed on the raw integers: x' = x*m00 + y*m10 + m20*65536.0, y' alike, each rounded by
/// Zan_RoundDouble.
ZAN_NODISCARD ZAN_API int32_t Zan_TransformFixPoints(const Zan_Matrix3* m, int32_t count, Zan_FixedPoint* points);

/// Points of the plane, affine: x' = x*m00 + y*m10 + m20, y' = x*m01 + y*m11 + m21.
ZAN_API int32_t Zan_TransformFloatPoints(const Zan_Matrix3* m, int32_t count, Zan_Vector2d* points);

/// Homogeneous points of the plane, multiplied by the matrix and not divided: x' = x*m00 + y*m10 + z*m20, y' and z'
/// alike.
ZAN_API int32_t Zan_TransformVector3(const Zan_Matrix3* m, int32_t count, Zan_Vector3d* vectors);

/// Homogeneous points of space, multiplied by the matrix and divided by w': with r = 1 / w' the result is (x'*r, y'*r,
/// z'*r, 1.0).
ZAN_API int32_t Zan_TransformVector4(const Zan_Matrix4* m, int32_t count, Zan_Vector4d* vectors);

/// Homogeneous points of space, multiplied by the matrix and not divided.
ZAN_API int32_t Zan_TransformVector4NoDivide(const Zan_Matrix4* m, int32_t count, Zan_Vector4d* vectors);

/// Points of space: (x, y, z, 1) is transformed as by Zan_TransformVector4; its w is not stored.
ZAN_API int32_t Zan_Transform3DFloatPoints(const Zan_Matrix4* m, int32_t count, Zan_Vector3d* points);

/// 16-bit points as the points (h, v, 0) of space: transformed as by Zan_Transform3DFloatPoints, then x and y clamped
/// to -32767 to 32766 and truncated toward zero.
ZAN_API int32_t Zan_3DTransform2DPoints(const Zan_Matrix4* m, int32_t count, Zan_Point* points);

/// The axis-aligned bounding box of a transformed 16-bit rectangle.
ZAN_API int32_t Zan_TransformRect(const Zan_Matrix3* m, Zan_Rect* rect, Zan_Vector2d* corners, unsigned char* turned);

/// The axis-aligned bounding box of a transformed rectangle, as by Zan_TransformRect but neither clamped nor rounded;
/// NaN stays NaN.
ZAN_API int32_t Zan_TransformFloatRect(const Zan_Matrix3* m, Zan_FloatRect* rect, Zan_Vector2d* corners,
                                       unsigned char* turned);

/// The axis-aligned bounding box of a transformed 16.16 rectangle.
ZAN_NODISCARD ZAN_API int32_t Zan_TransformFixRect(const Zan_Matrix3* m, Zan_FixedRect* rect, Zan_FixedPoint* corners,
                                                   unsigned char* turned);

/// Decomposes a transform into translation, scale, shear and rotation, by Gram-Schmidt orthogonalization of its rows
/// after all elements were divided by m33.
ZAN_NODISCARD ZAN_API int32_t Zan_DecomposeMatrix4(const Zan_Matrix4* m, Zan_Matrix4Decomp* out, unsigned char* failed);

/// As Zan_DecomposeMatrix4, but with the angles of R = Rx * Ry * Rz.
ZAN_NODISCARD ZAN_API int32_t Zan_DecomposeMatrix4ZYX(const Zan_Matrix4* m, Zan_Matrix4Decomp* out,
                                                      unsigned char* failed);

/// The angles that Zan_DecomposeMatrix4 finds.
ZAN_NODISCARD ZAN_API int32_t Zan_GetOrderedXYZRotationFromMatrix(const Zan_Matrix4* m, double* rx, double* ry,
                                                                  double* rz);

/// Converts a rotation from axis and angle, as Zan_RotateMatrix4 takes it, to the three angles of Zan_RotateMatrix4XYZ.
ZAN_NODISCARD ZAN_API int32_t Zan_ConvertAxisAngleToOrderedXYZRotation(double ax, double ay, double az, double radians,
                                                                       double* rx, double* ry, double* rz);

/// The matrix of a quaternion.
ZAN_API int32_t Zan_QuatToMatrix4(const Zan_Quat* q, Zan_Matrix4* out);

/// The quaternion of a rotation (Shoemake, 1985).
ZAN_API int32_t Zan_Matrix4ToQuat(const Zan_Matrix4* m, Zan_Quat* out);

/// Spherical linear interpolation between two quaternions along the shorter arc (Shoemake, 1985); linear when they are
/// nearly parallel, 1 - |q0.q1| <= 1e-5.
ZAN_API int32_t Zan_Slerp(const Zan_Quat* q0, const Zan_Quat* q1, double t, Zan_Quat* out);

// --- zan/space.h

/// The near plane in eye space.
#define Zan_kNearPlaneZ 0.1

/// The plane a x + b y + c z + d = 0.
typedef struct Zan_PlaneEq {
    double a;
    double b;
    double c;
    double d;
} Zan_PlaneEq;

/// The line of points origin + t * direction.
typedef struct Zan_Ray {
    Zan_Vector4d origin;  ///< the point (x, y, z); w is ignored
    Zan_Vector3d direction;
} Zan_Ray;

/// The plane through a point with a given normal.
ZAN_API int32_t Zan_GetPlaneEquation2(const Zan_Vector3d* point, const Zan_Vector3d* normal, Zan_PlaneEq* plane);

/// The intersection of a ray with a plane.
ZAN_NODISCARD ZAN_API int32_t Zan_RayIntersectPlane(const Zan_PlaneEq* plane, bool forwardOnly, const Zan_Ray* ray,
                                                    Zan_Vector3d* hit, bool* behind, bool* hitFound);

/// The intersection of the segment from a to b with the near plane z = 0.1.
ZAN_API int32_t Zan_Clip3DLine(const Zan_Vector3d* a, const Zan_Vector3d* b, bool* aBehind, bool* bBehind,
                               Zan_Vector3d* clipPoint);

/// The distance from a point to the infinite line through a segment.
ZAN_API int32_t Zan_PerpDistTo2DLine(const Zan_Vector2d* p, const Zan_Vector2d* a, const Zan_Vector2d* b,
                                     bool* withinSegment, double* distance);

/// Clips a segment to a closed rectangle.
ZAN_API int32_t Zan_ClipLine2Rect(const Zan_FloatRect* rect, Zan_Vector2d* a, Zan_Vector2d* b, bool* visible);

/// Whether a quadrilateral is seen edge-on after a transform: the cosine of the angle between its normal and the line
/// of sight lies strictly between -tolerance and tolerance.
ZAN_API int32_t Zan_IsQuadEdgeOn(const Zan_Matrix4* m, const Zan_Vector3d* quad, double tolerance, bool orthographic,
                                 bool* edgeOn);

/// Rewrites a decomposition for a layer without depth: a rotation about x or y that is within 1e-12 degrees of a half
/// turn, in either direction, becomes a mirrored scale.
ZAN_API int32_t Zan_Correct3DDecompFor2D(Zan_Matrix4Decomp* decomposition);

// --- zan/poly.h

/// Zan_IsFloatPointInConcavePoly for four vertices, without tolerance.
ZAN_API int32_t Zan_IsFloatPointInQuad(const Zan_Vector2d* point, const Zan_Vector2d* vertices, unsigned char* inside);

// --- Layouts

_Static_assert(sizeof(Zan_Ratio) == 8, "Zan_Ratio");
_Static_assert(offsetof(Zan_Ratio, den) == 4, "Zan_Ratio");
_Static_assert(sizeof(Zan_Point) == 4, "Zan_Point");
_Static_assert(offsetof(Zan_Point, h) == 2, "Zan_Point");
_Static_assert(sizeof(Zan_LPoint) == 8, "Zan_LPoint");
_Static_assert(offsetof(Zan_LPoint, v) == 4, "Zan_LPoint");
_Static_assert(sizeof(Zan_FixedPoint) == 8, "Zan_FixedPoint");
_Static_assert(offsetof(Zan_FixedPoint, v) == 4, "Zan_FixedPoint");
_Static_assert(sizeof(Zan_Rect) == 8, "Zan_Rect");
_Static_assert(offsetof(Zan_Rect, left) == 2, "Zan_Rect");
_Static_assert(offsetof(Zan_Rect, bottom) == 4, "Zan_Rect");
_Static_assert(offsetof(Zan_Rect, right) == 6, "Zan_Rect");
_Static_assert(sizeof(Zan_LRect) == 16, "Zan_LRect");
_Static_assert(offsetof(Zan_LRect, top) == 4, "Zan_LRect");
_Static_assert(offsetof(Zan_LRect, right) == 8, "Zan_LRect");
_Static_assert(offsetof(Zan_LRect, bottom) == 12, "Zan_LRect");
_Static_assert(sizeof(Zan_FixedRect) == 16, "Zan_FixedRect");
_Static_assert(offsetof(Zan_FixedRect, top) == 4, "Zan_FixedRect");
_Static_assert(offsetof(Zan_FixedRect, right) == 8, "Zan_FixedRect");
_Static_assert(offsetof(Zan_FixedRect, bottom) == 12, "Zan_FixedRect");
_Static_assert(sizeof(Zan_FloatRect) == 32, "Zan_FloatRect");
_Static_assert(offsetof(Zan_FloatRect, top) == 8, "Zan_FloatRect");
_Static_assert(offsetof(Zan_FloatRect, right) == 16, "Zan_FloatRect");
_Static_assert(offsetof(Zan_FloatRect, bottom) == 24, "Zan_FloatRect");
_Static_assert(sizeof(Zan_WHRect) == 8, "Zan_WHRect");
_Static_assert(offsetof(Zan_WHRect, b) == 2, "Zan_WHRect");
_Static_assert(offsetof(Zan_WHRect, c) == 4, "Zan_WHRect");
_Static_assert(offsetof(Zan_WHRect, d) == 6, "Zan_WHRect");
_Static_assert(sizeof(Zan_Vector2d) == 16, "Zan_Vector2d");
_Static_assert(offsetof(Zan_Vector2d, y) == 8, "Zan_Vector2d");
_Static_assert(sizeof(Zan_Quat) == 32, "Zan_Quat");
_Static_assert(offsetof(Zan_Quat, y) == 8, "Zan_Quat");
_Static_assert(offsetof(Zan_Quat, z) == 16, "Zan_Quat");
_Static_assert(offsetof(Zan_Quat, w) == 24, "Zan_Quat");
_Static_assert(sizeof(Zan_Matrix4Decomp) == 96, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, ty) == 8, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, tz) == 16, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, sx) == 24, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, sy) == 32, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, sz) == 40, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, shearXY) == 48, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, shearXZ) == 56, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, shearYZ) == 64, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, rx) == 72, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, ry) == 80, "Zan_Matrix4Decomp");
_Static_assert(offsetof(Zan_Matrix4Decomp, rz) == 88, "Zan_Matrix4Decomp");
_Static_assert(sizeof(Zan_Matrix3) == 72, "Zan_Matrix3");
_Static_assert(offsetof(Zan_Matrix3, m01) == 8, "Zan_Matrix3");
_Static_assert(offsetof(Zan_Matrix3, m02) == 16, "Zan_Matrix3");
_Static_assert(offsetof(Zan_Matrix3, m10) == 24, "Zan_Matrix3");
_Static_assert(offsetof(Zan_Matrix3, m11) == 32, "Zan_Matrix3");
_Static_assert(offsetof(Zan_Matrix3, m12) == 40, "Zan_Matrix3");
_Static_assert(offsetof(Zan_Matrix3, m20) == 48, "Zan_Matrix3");
_Static_assert(offsetof(Zan_Matrix3, m21) == 56, "Zan_Matrix3");
_Static_assert(offsetof(Zan_Matrix3, m22) == 64, "Zan_Matrix3");
_Static_assert(sizeof(Zan_Matrix4) == 128, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m01) == 8, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m02) == 16, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m03) == 24, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m10) == 32, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m11) == 40, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m12) == 48, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m13) == 56, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m20) == 64, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m21) == 72, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m22) == 80, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m23) == 88, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m30) == 96, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m31) == 104, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m32) == 112, "Zan_Matrix4");
_Static_assert(offsetof(Zan_Matrix4, m33) == 120, "Zan_Matrix4");
_Static_assert(sizeof(Zan_Vector3d) == 24, "Zan_Vector3d");
_Static_assert(offsetof(Zan_Vector3d, y) == 8, "Zan_Vector3d");
_Static_assert(offsetof(Zan_Vector3d, z) == 16, "Zan_Vector3d");
_Static_assert(sizeof(Zan_Vector4d) == 32, "Zan_Vector4d");
_Static_assert(offsetof(Zan_Vector4d, y) == 8, "Zan_Vector4d");
_Static_assert(offsetof(Zan_Vector4d, z) == 16, "Zan_Vector4d");
_Static_assert(offsetof(Zan_Vector4d, w) == 24, "Zan_Vector4d");
_Static_assert(sizeof(Zan_PlaneEq) == 32, "Zan_PlaneEq");
_Static_assert(offsetof(Zan_PlaneEq, b) == 8, "Zan_PlaneEq");
_Static_assert(offsetof(Zan_PlaneEq, c) == 16, "Zan_PlaneEq");
_Static_assert(offsetof(Zan_PlaneEq, d) == 24, "Zan_PlaneEq");
_Static_assert(sizeof(Zan_Ray) == 56, "Zan_Ray");
_Static_assert(offsetof(Zan_Ray, direction) == 32, "Zan_Ray");

#if UINTPTR_MAX > UINT32_MAX
_Static_assert(sizeof(Zan_Globals) == 56, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, services) == 4, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, reserved1) == 8, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, charMultiplyTable) == 16, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, charDivideTable) == 24, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, reserved2) == 32, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, sineTable) == 40, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, tailMagic) == 48, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, charMathPrepareCount) == 52, "Zan_Globals");
_Static_assert(offsetof(Zan_Globals, sinePrepareCount) == 54, "Zan_Globals");
_Static_assert(sizeof(Zan_MessageEntry) == 32, "Zan_MessageEntry");
_Static_assert(offsetof(Zan_MessageEntry, cache1) == 8, "Zan_MessageEntry");
_Static_assert(offsetof(Zan_MessageEntry, cache2) == 16, "Zan_MessageEntry");
_Static_assert(offsetof(Zan_MessageEntry, cache3) == 24, "Zan_MessageEntry");
_Static_assert(sizeof(Zan_MessageTable) == 32, "Zan_MessageTable");
_Static_assert(offsetof(Zan_MessageTable, entryCount) == 8, "Zan_MessageTable");
_Static_assert(offsetof(Zan_MessageTable, entries) == 16, "Zan_MessageTable");
_Static_assert(offsetof(Zan_MessageTable, reserved) == 24, "Zan_MessageTable");
#endif

#endif  // __cplusplus

#endif  // ZAN_ZAN_C_H
