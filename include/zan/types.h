// Records and codes that all of Zan shares: result codes, fixed point, ratios, points, rectangles, vectors. Plain data:
// nothing here is exported, and nothing here can fail.
#ifndef ZAN_TYPES_H
#define ZAN_TYPES_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

/// @defgroup types Records and codes
/// @{

/// @def ZAN_API
/// Marks what the library exports. On Windows it marks what a host imports from zan.dll.
/// @def ZAN_INLINE_API
/// Marks a member that the library exports and the header defines, so that callers can inline it.
#if defined(_WIN32)
#define ZAN_INLINE_API
#if defined(ZAN_BUILDING)
#define ZAN_API  // the .def file lists the exports
#else
#define ZAN_API __declspec(dllimport)
#endif
#else
#define ZAN_API __attribute__((visibility("default")))
#define ZAN_INLINE_API __attribute__((visibility("default")))
#endif

/// @def ZAN_MAY_ALIAS
/// Exempts a record from type-based alias analysis: a Zan_Rect is also read and written through the Zan_Point views
/// that Zan_TopLeft and Zan_BottomRight return.
#if defined(__GNUC__) || defined(__clang__)
#define ZAN_MAY_ALIAS __attribute__((may_alias))
#else
#define ZAN_MAY_ALIAS
#endif

/// @defgroup codes Result codes
/// A plain function that can fail returns 0 for success, one of these codes, or a code of the platform. The classes
/// throw a non-zero code as `long`.
/// @{
inline constexpr int32_t Zan_Err_Overflow = 0x1102;             ///< a result does not fit its type
inline constexpr int32_t Zan_Err_Underflow = 0x1103;            ///< a result is too small for its type
inline constexpr int32_t Zan_Err_DivideByZero = 0x1104;         ///< a divisor is zero
inline constexpr int32_t Zan_Err_UnrequestedService = 0x1105;   ///< a service that Zan_Birth did not start
inline constexpr int32_t Zan_Err_ZeroDenominator = 0x1106;      ///< a ratio with denominator zero
inline constexpr int32_t Zan_Err_CannotInvert = 0x1107;         ///< the matrix is singular
inline constexpr int32_t Zan_Err_CannotDecompose = 0x1108;      ///< the matrix is projective or has m33 = 0
inline constexpr int32_t Zan_Err_NoNormal = 0x1109;             ///< a normal vector cannot be formed
inline constexpr int32_t Zan_Err_NoPlaneIntersection = 0x110A;  ///< the ray misses the plane
inline constexpr int32_t Zan_Err_HomogeneousWZero = 0x110C;     ///< division by a w near zero; only thrown
inline constexpr int32_t Zan_Result_BadAxis = 3;                ///< a rotation axis is shorter than 1e-12
inline constexpr int32_t Zan_Result_Failed = 4;                 ///< an allocation failed, or tables are not available
inline constexpr int32_t Zan_Result_VersionMismatch = 7;        ///< versions of host, library, platform do not match
inline constexpr int32_t Zan_Result_OutOfRange = 10;            ///< a rectangle does not fit the 16-bit record
/// @}

/// @defgroup severities Severities of a report
/// @{
inline constexpr int32_t Zan_kSeverityUnderflow = 4;         ///< Zan_Err_Underflow only
inline constexpr int32_t Zan_kSeverityError = 8;             ///< every other error of the library
inline constexpr int32_t Zan_kSeverityVersionMismatch = 16;  ///< Zan_CheckVersions
/// @}

/// @defgroup numbers Types of numbers
/// @{

/// 16.16 fixed point: raw / 65536, from -32768.0 to 32767.99998474.
using Zan_Fixed = int32_t;
/// 8.24 fixed point: raw / 16777216, from -128.0 to 127.99999994.
using Zan_Fix24 = int32_t;
/// The value that a 16.16 or 8.24 operation returns when its result does not fit or is undefined.
inline constexpr int32_t Zan_kFixedFailure = INT32_MIN;

/// A rational number. {0, 0} is the output of a failed operation.
struct Zan_Ratio {
    int32_t num;   ///< numerator; carries the sign
    uint32_t den;  ///< denominator; 0 is invalid as an operand
};
/// @}

/// @defgroup records Records of points and rectangles
/// Vertical coordinates grow downward. Integer and fixed rectangles are half-open: left <= h < right, top <= v <
/// bottom. Field order differs: the 16-bit records have the vertical coordinate first, all others the horizontal one.
/// @{

/// A 16-bit point, vertical coordinate first.
struct ZAN_MAY_ALIAS Zan_Point {
    int16_t v, h;
};
/// A 32-bit point.
struct Zan_LPoint {
    int32_t h, v;
};
/// A 16.16 point.
struct Zan_FixedPoint {
    Zan_Fixed h, v;
};
/// A 16-bit rectangle. Its layout is that of two Zan_Point: top left, bottom right.
struct Zan_Rect {
    int16_t top, left, bottom, right;
};
/// A 32-bit rectangle.
struct Zan_LRect {
    int32_t left, top, right, bottom;
};
/// A 16.16 rectangle.
struct Zan_FixedRect {
    Zan_Fixed left, top, right, bottom;
};
/// A rectangle in double precision.
struct Zan_FloatRect {
    double left, top, right, bottom;
};
/// Position and size in four 16-bit fields. The library copies and compares them; the host defines their meaning.
struct Zan_WHRect {
    int16_t a, b, c, d;
};
/// @}

/// @defgroup vectors Vectors
/// Row vectors: a matrix M transforms a point p to p' = p * M. A default-constructed vector is uninitialised.
/// @{

/// A vector or point in the plane.
template <class T>
struct Zan_Vector2T {
    T x, y;

    /// Leaves the members uninitialised.
    Zan_Vector2T() = default;
    /// The vector (xValue, yValue).
    constexpr Zan_Vector2T(T xValue, T yValue) : x(xValue), y(yValue) {}

    /// (x - o.x)^2 + (y - o.y)^2, computed in T.
    [[nodiscard]] constexpr T DistanceSquared(const Zan_Vector2T& o) const {
        const T dx = x - o.x;
        const T dy = y - o.y;
        return dx * dx + dy * dy;
    }
    /// True when both members compare equal; -0.0 equals 0.0, and NaN equals nothing.
    [[nodiscard]] friend constexpr bool operator==(const Zan_Vector2T& a, const Zan_Vector2T& b) {
        return a.x == b.x && a.y == b.y;
    }
    /// The opposite of ==.
    [[nodiscard]] friend constexpr bool operator!=(const Zan_Vector2T& a, const Zan_Vector2T& b) { return !(a == b); }
};

/// A vector or point in space, or a homogeneous point of the plane, whose w is z.
template <class T>
struct Zan_Vector3T {
    T x, y, z;

    /// Leaves the members uninitialised.
    Zan_Vector3T() = default;
    /// The vector (xValue, yValue, zValue).
    constexpr Zan_Vector3T(T xValue, T yValue, T zValue) : x(xValue), y(yValue), z(zValue) {}
    /// The homogeneous point (v.x, v.y, 1).
    explicit constexpr Zan_Vector3T(const Zan_Vector2T<T>& v) : x(v.x), y(v.y), z(1) {}

    /// (x^2 + y^2) + z^2.
    [[nodiscard]] constexpr T LengthSquared() const { return x * x + y * y + z * z; }
};

/// A homogeneous point of space.
template <class T>
struct Zan_Vector4T {
    T x, y, z, w;

    /// Leaves the members uninitialised.
    Zan_Vector4T() = default;
    /// The vector (xValue, yValue, zValue, wValue).
    constexpr Zan_Vector4T(T xValue, T yValue, T zValue, T wValue) : x(xValue), y(yValue), z(zValue), w(wValue) {}
    /// The homogeneous point (v.x, v.y, v.z, 1).
    explicit constexpr Zan_Vector4T(const Zan_Vector3T<T>& v) : x(v.x), y(v.y), z(v.z), w(1) {}

    /// ((x^2 + y^2) + z^2) + w^2.
    [[nodiscard]] constexpr T LengthSquared() const { return x * x + y * y + z * z + w * w; }
};
/// @}

/// @cond
namespace zan_layout {
template <class T>
inline constexpr bool kPlainData = std::is_standard_layout_v<T>&& std::is_trivially_copyable_v<T>;

static_assert(kPlainData<Zan_Ratio> && sizeof(Zan_Ratio) == 8 && offsetof(Zan_Ratio, den) == 4);
static_assert(kPlainData<Zan_Point> && sizeof(Zan_Point) == 4 && offsetof(Zan_Point, h) == 2);
static_assert(kPlainData<Zan_LPoint> && sizeof(Zan_LPoint) == 8 && offsetof(Zan_LPoint, v) == 4);
static_assert(kPlainData<Zan_FixedPoint> && sizeof(Zan_FixedPoint) == 8 && offsetof(Zan_FixedPoint, v) == 4);
static_assert(kPlainData<Zan_Rect> && sizeof(Zan_Rect) == 8 && offsetof(Zan_Rect, left) == 2 &&
              offsetof(Zan_Rect, bottom) == 4 && offsetof(Zan_Rect, right) == 6);
static_assert(kPlainData<Zan_LRect> && sizeof(Zan_LRect) == 16 && offsetof(Zan_LRect, top) == 4 &&
              offsetof(Zan_LRect, right) == 8 && offsetof(Zan_LRect, bottom) == 12);
static_assert(kPlainData<Zan_FixedRect> && sizeof(Zan_FixedRect) == 16 && offsetof(Zan_FixedRect, top) == 4 &&
              offsetof(Zan_FixedRect, right) == 8 && offsetof(Zan_FixedRect, bottom) == 12);
static_assert(kPlainData<Zan_FloatRect> && sizeof(Zan_FloatRect) == 32 && offsetof(Zan_FloatRect, top) == 8 &&
              offsetof(Zan_FloatRect, right) == 16 && offsetof(Zan_FloatRect, bottom) == 24);
static_assert(kPlainData<Zan_WHRect> && sizeof(Zan_WHRect) == 8 && offsetof(Zan_WHRect, d) == 6);
static_assert(kPlainData<Zan_Vector2T<double>> && sizeof(Zan_Vector2T<double>) == 16 &&
              offsetof(Zan_Vector2T<double>, y) == 8);
static_assert(kPlainData<Zan_Vector2T<float>> && sizeof(Zan_Vector2T<float>) == 8 &&
              offsetof(Zan_Vector2T<float>, y) == 4);
static_assert(kPlainData<Zan_Vector3T<double>> && sizeof(Zan_Vector3T<double>) == 24 &&
              offsetof(Zan_Vector3T<double>, z) == 16);
static_assert(kPlainData<Zan_Vector4T<double>> && sizeof(Zan_Vector4T<double>) == 32 &&
              offsetof(Zan_Vector4T<double>, w) == 24);
}  // namespace zan_layout
/// @endcond

/// @}

#endif  // ZAN_TYPES_H
