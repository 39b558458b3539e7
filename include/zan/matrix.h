// Matrices and transforms.
//
// Row vectors throughout: a point p goes through a matrix as p' = p * M, with M stored row by row and the translation
// in its last row. For a Zan_Matrix3 and the homogeneous point (x, y, w)
//     x' = x*m00 + y*m10 + w*m20,   y' = x*m01 + y*m11 + w*m21,   w' = x*m02 + y*m12 + w*m22
// and p * A * B applies A first, then B. Plain functions take records and return a result code. The members of the two
// classes do the same and throw a result code other than 0, which has been reported by then, as a `long`.
#ifndef ZAN_MATRIX_H
#define ZAN_MATRIX_H

#include "zan/types.h"

struct Zan_Matrix4;

/// @defgroup matrix Matrices and transforms
/// @{

/// @defgroup matrixclasses The matrix classes and records
/// @{

/// A quaternion, vector part first. The rotation by an angle about the unit axis a is (a * sin(angle/2), cos(angle/2)).
struct Zan_Quat {
    double x, y, z, w;
};

/// The parts of a transform of space. A row vector is scaled, then sheared, then rotated, then translated.
struct Zan_Matrix4Decomp {
    double tx, ty, tz;                 ///< translation
    double sx, sy, sz;                 ///< lengths of the three axes; all negative for a reflection
    double shearXY, shearXZ, shearYZ;  ///< dot products of the rows during orthogonalization, not divided by a scale
    double rx, ry, rz;                 ///< angles in radians, in the order of the operation that filled the record
};

/// @}

/// @defgroup matrixkinds Kinds of a Zan_Matrix3
/// Found by exact comparisons, in this order: perspective when column 2 is not (0, 0, 1); affine when m01 or m10 is not
/// 0; otherwise by whether m00 and m11 are both 1 and whether m20 and m21 are both 0. A NaN equals nothing. Kinds 0 to
/// 3 transform axis-aligned rectangles to axis-aligned rectangles.
/// @{

/// One of the kinds.
using Zan_MatrixType = int32_t;
inline constexpr Zan_MatrixType Zan_MatrixType_Identity = 0;        ///< leaves points unchanged
inline constexpr Zan_MatrixType Zan_MatrixType_Translate = 1;       ///< m00 = m11 = 1, translation not 0
inline constexpr Zan_MatrixType Zan_MatrixType_Scale = 2;           ///< m00 or m11 not 1, translation 0
inline constexpr Zan_MatrixType Zan_MatrixType_ScaleTranslate = 3;  ///< m00 or m11 not 1, translation not 0
inline constexpr Zan_MatrixType Zan_MatrixType_Affine = 4;          ///< rotates or skews
inline constexpr Zan_MatrixType Zan_MatrixType_Perspective = 5;     ///< has a projective column
/// @}

/// @addtogroup matrixclasses
/// @{

/// A homogeneous transform of the plane: nine doubles, row by row, and nothing else. It may be copied and compared byte
/// by byte; assignment from the same class copies the bytes. A default-constructed matrix is uninitialised.
/// @threads any for every member, as long as no other thread writes the matrix at the same time
struct Zan_Matrix3 {
    double m00, m01, m02;  ///< row 0: the image of (1, 0, 0)
    double m10, m11, m12;  ///< row 1: the image of (0, 1, 0)
    double m20, m21, m22;  ///< row 2: the translation m20, m21

    /// Leaves the elements uninitialised.
    Zan_Matrix3() = default;
    /// Makes an identity matrix, or an uninitialised one.
    /// @param identity  true sets the matrix to the identity, false leaves it uninitialised
    ZAN_API explicit Zan_Matrix3(bool identity);

    /// this := the identity.
    ZAN_API void SetIdentity();
    /// this := nine zeros.
    ZAN_API void SetZero();

    /// The kind of the matrix, as by Zan_GetMatrixType.
    [[nodiscard]] ZAN_API int32_t GetType() const;
    /// IsZeroWithinEpsilon(0.0): true when every element is 0.0, -0.0 or NaN.
    [[nodiscard]] ZAN_API bool IsZero() const;
    /// IsIdentityWithinEpsilon(0.0): true when every element is NaN or equal to the identity's.
    [[nodiscard]] ZAN_API bool IsIdentity() const;
    /// True unless an element has |mij| > eps. A NaN element passes.
    /// @param eps  the largest deviation that passes
    [[nodiscard]] ZAN_API bool IsZeroWithinEpsilon(double eps) const;
    /// True unless an element differs from the identity's by more than eps. A NaN element passes.
    /// @param eps  the largest deviation that passes
    [[nodiscard]] ZAN_API bool IsIdentityWithinEpsilon(double eps) const;

    /// this := this * n: the transform so far, then n.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix3& operator*=(const Zan_Matrix3& n);
    /// Sum, element by element.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix3& operator+=(const Zan_Matrix3& n);
    /// Difference this - n, element by element.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix3& operator-=(const Zan_Matrix3& n);
    /// True when all 72 bytes are equal: 0.0 and -0.0 differ, a NaN equals a NaN of the same bits. Zan_EqualMatrix
    /// compares values instead.
    /// @param n  the other matrix
    [[nodiscard]] ZAN_API bool operator==(const Zan_Matrix3& n) const;
    /// True when any of the 72 bytes differ.
    /// @param n  the other matrix
    [[nodiscard]] ZAN_API bool operator!=(const Zan_Matrix3& n) const;

    /// The determinant, (m00*(m11*m22 - m21*m12) + m01*(m12*m20 - m10*m22)) + m02*(m21*m10 - m11*m20).
    [[nodiscard]] ZAN_API double Determinant() const;
    /// Transposes the matrix in place.
    ZAN_API void Transpose();
    /// Zan_InverseMatrix in place. Where that fails, throws Zan_Err_CannotInvert, reported, and leaves the matrix
    /// unchanged.
    ZAN_API void Invert();
    /// Invert without a report or an exception.
    /// @return true when there is no inverse and the matrix is unchanged; false when it was replaced by its inverse
    [[nodiscard]] ZAN_API bool InvertQuiet();
    /// this := its adjugate, the transpose of the matrix of cofactors: M * adj(M) is the determinant times the
    /// identity. Also defined for a singular matrix.
    ZAN_API void Adjoint();

    /// this := rows 0, 1, 3 and columns 0, 1, 3 of m: the restriction of m to the plane z = 0.
    /// @param m  a transform of space
    ZAN_API void AssignFromByDroppingZ(const Zan_Matrix4& m);
    /// this := m without one row and one column, the others in ascending order.
    /// @param m            the larger matrix
    /// @param row, column  the indices to drop, 0 to 3; a smaller number drops the first, a larger one the last
    ZAN_API void AssignFromByDroppingIndices(const Zan_Matrix4& m, int32_t row, int32_t column);

    /// @name Building: this := this * step, the transform so far, then the step
    /// The functions of @ref matrixbuilders; angles in degrees.
    /// @{

    ZAN_API void Translate(double tx, double ty);                    ///< Zan_TranslateMatrix
    ZAN_API void Rotate(double degrees);                             ///< Zan_RotateMatrix about (0, 0)
    ZAN_API void Rotate(double degrees, double cx, double cy);       ///< Zan_RotateMatrix
    ZAN_API void Scale(double sx, double sy);                        ///< Zan_ScaleMatrix about (0, 0)
    ZAN_API void Scale(double sx, double sy, double cx, double cy);  ///< Zan_ScaleMatrix
    /// Skews along an axis: rotates by axisDegrees, then x' = x - y*t, y' = y with t = tan(skewDegrees), then rotates
    /// by -axisDegrees. A skew by 0.0 leaves the matrix unchanged.
    /// @param skewDegrees  the angle of the skew
    /// @param axisDegrees  the angle of the axis
    /// @libm sin, cos, tan
    ZAN_API void Skew(double skewDegrees, double axisDegrees);
    /// @}

    /// The lengths of rows 0 and 1, projective column included: sqrt((m00^2 + m01^2) + m02^2), and for row 1 alike.
    [[nodiscard]] ZAN_API Zan_Vector2T<double> GetScale() const;
    /// The squares of GetScale.
    [[nodiscard]] ZAN_API Zan_Vector2T<double> GetScaleSquared() const;

    /// @name Points, in place
    /// As the functions of @ref matrixpoints. A count below 1 does nothing.
    /// @{

    /// Affine: x' = x*m00 + y*m10 + m20, y' = x*m01 + y*m11 + m21. Column 2 is not read.
    ZAN_API void TransformPoint(Zan_Vector2T<double>* point) const;
    /// The product of the homogeneous point (x, y, w = z) with all three columns, not divided by w.
    ZAN_API void TransformPoint(Zan_Vector3T<double>* point) const;
    /// Zan_TransformFloatPoints.
    ZAN_API void TransformPoints(int32_t count, Zan_Vector2T<double>* points) const;
    /// Zan_TransformVector3.
    ZAN_API void TransformPoints(int32_t count, Zan_Vector3T<double>* points) const;
    /// Zan_TransformPoints. Throws Zan_Err_Overflow, reported, where that returns it.
    ZAN_API void TransformPoints(int32_t count, Zan_Point* points) const;
    /// Zan_TransformFixPoints. Throws Zan_Err_Overflow, reported, where that returns it.
    ZAN_API void TransformPoints(int32_t count, Zan_FixedPoint* points) const;
    /// @}

    /// @name Points, divided by their w
    /// Each point is multiplied by the matrix, giving (X, Y, W), and becomes x = X / W, y = Y / W, z = 1.0. A
    /// Zan_Vector2T enters as (x, y, 1). A W with -1e-12 < W < 1e-12 is reported under the number beside the member,
    /// severity 8, "homogeneous point has W=0", and Zan_Err_HomogeneousWZero is thrown: that point and all later ones
    /// are unchanged, earlier ones stay transformed. The Fast members divide by any W and report nothing. A count below
    /// 1 does nothing.
    /// @{

    ZAN_API void TransformPointAndDivide(Zan_Vector3T<double>* point) const;                       ///< 0x110039
    ZAN_API void TransformPointAndDivide(Zan_Vector2T<double>* point) const;                       ///< 0x110039
    ZAN_API void TransformPointsAndDivide(int32_t count, Zan_Vector3T<double>* points) const;      ///< 0x11003A
    ZAN_API void TransformPointsAndDivide(int32_t count, Zan_Vector2T<double>* points) const;      ///< 0x110039
    ZAN_API void TransformPointAndDivideFast(Zan_Vector3T<double>* point) const;                   ///< W not tested
    ZAN_API void TransformPointsAndDivideFast(int32_t count, Zan_Vector3T<double>* points) const;  ///< W not tested
    /// @}

    /// Zan_TransformRect: stores the box and, unless null, the four transformed corners and the flag.
    ZAN_API void TransformRect(Zan_Rect* rect, Zan_Vector2T<double>* corners, unsigned char* turned) const;
    /// Zan_TransformFixRect. Throws Zan_Err_Overflow, reported, where that returns it.
    ZAN_API void TransformRect(Zan_FixedRect* rect, Zan_FixedPoint* corners, unsigned char* turned) const;
};

/// A homogeneous transform of space: sixteen doubles, row by row, and nothing else. It is copied, compared and
/// initialised as a Zan_Matrix3 is. The translation is m30, m31, m32; the projective terms are column 3.
/// @threads any for every member, as long as no other thread writes the matrix at the same time
struct Zan_Matrix4 {
    double m00, m01, m02, m03;  ///< row 0: the image of (1, 0, 0, 0)
    double m10, m11, m12, m13;  ///< row 1: the image of (0, 1, 0, 0)
    double m20, m21, m22, m23;  ///< row 2: the image of (0, 0, 1, 0)
    double m30, m31, m32, m33;  ///< row 3: the translation m30, m31, m32

    /// Leaves the elements uninitialised.
    Zan_Matrix4() = default;
    /// Makes an identity matrix, or an uninitialised one.
    /// @param identity  true sets the matrix to the identity, false leaves it uninitialised
    ZAN_API explicit Zan_Matrix4(bool identity);

    /// this := the identity.
    ZAN_API void SetIdentity();
    /// this := sixteen zeros.
    ZAN_API void SetZero();

    /// IsZeroWithinEpsilon(0.0): true when every element is 0.0, -0.0 or NaN.
    [[nodiscard]] ZAN_API bool IsZero() const;
    /// IsIdentityWithinEpsilon(0.0): true when every element is NaN or equal to the identity's.
    [[nodiscard]] ZAN_API bool IsIdentity() const;
    /// True unless an element has |mij| > eps. A NaN element passes.
    /// @param eps  the largest deviation that passes
    [[nodiscard]] ZAN_API bool IsZeroWithinEpsilon(double eps) const;
    /// True unless an element differs from the identity's by more than eps. A NaN element passes.
    /// @param eps  the largest deviation that passes
    [[nodiscard]] ZAN_API bool IsIdentityWithinEpsilon(double eps) const;
    /// True when no element is infinite or NaN.
    [[nodiscard]] ZAN_API bool IsFinite() const;

    /// this := this * n: the transform so far, then n.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix4& operator*=(const Zan_Matrix4& n);
    /// this := this * N with N = n widened by Zan_Matrix3ToMatrix4.
    /// @param n  a transform of the plane
    ZAN_API Zan_Matrix4& operator*=(const Zan_Matrix3& n);
    /// Sum, element by element.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix4& operator+=(const Zan_Matrix4& n);
    /// Difference this - n, element by element.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix4& operator-=(const Zan_Matrix4& n);
    /// this := n widened by Zan_Matrix3ToMatrix4.
    /// @param n  a transform of the plane
    ZAN_API Zan_Matrix4& operator=(const Zan_Matrix3& n);
    /// True when all 128 bytes are equal: 0.0 and -0.0 differ, a NaN equals a NaN of the same bits. Zan_EqualMatrix4
    /// compares values instead.
    /// @param n  the other matrix
    [[nodiscard]] ZAN_API bool operator==(const Zan_Matrix4& n) const;
    /// True when any of the 128 bytes differ.
    /// @param n  the other matrix
    [[nodiscard]] ZAN_API bool operator!=(const Zan_Matrix4& n) const;

    /// The determinant, as by Zan_GetMatrix4Determinant.
    [[nodiscard]] ZAN_API double Determinant() const;
    /// Transposes the matrix in place.
    ZAN_API void Transpose();
    /// Zan_InverseMatrix4 in place. Where that fails, throws Zan_Err_CannotInvert, reported, and leaves the matrix
    /// unchanged.
    ZAN_API void Invert();
    /// Invert without a report or an exception.
    /// @return true when there is no inverse and the matrix is unchanged; false when it was replaced by its inverse
    [[nodiscard]] ZAN_API bool InvertQuiet();

    /// Zan_DecomposeMatrix4. Throws Zan_Err_CannotDecompose, reported, where that fails.
    /// @param out  receives the parts; all zeros on failure
    ZAN_API void Decompose(Zan_Matrix4Decomp* out) const;
    /// Zan_DecomposeMatrix4ZYX. Throws Zan_Err_CannotDecompose, reported, where that fails.
    /// @param out  receives the parts; all zeros on failure
    ZAN_API void DecomposeZYX(Zan_Matrix4Decomp* out) const;

    /// @name Building: this := this * step, the transform so far, then the step
    /// The functions of @ref matrixbuilders; angles in radians.
    /// @{

    ZAN_API void Translate(double tx, double ty, double tz);  ///< Zan_TranslateMatrix4
    ZAN_API void Scale(double sx, double sy, double sz);      ///< Zan_ScaleMatrix4
    /// Zan_RotateMatrix4. Throws Zan_Result_BadAxis, reported, where that returns it.
    ZAN_API void RotateAxis(double ax, double ay, double az, double radians);
    ZAN_API void RotateXYZ(double rx, double ry, double rz);  ///< Zan_RotateMatrix4XYZ
    /// Appends a perspective projection: (x, y, z, w) becomes (x, y, z - w, z/d); dividing by that w scales x and y by
    /// d/z.
    /// @param d  the distance of the projection plane; 0 gives an infinite element
    ZAN_API void Project(double d);
    /// @}

    /// this := the change of basis of Zan_SetMatrix4CoB; what the matrix held before is lost.
    /// @param a, b, c  the axes
    ZAN_API void SetCOB(const Zan_Vector4T<double>& a, const Zan_Vector4T<double>& b, const Zan_Vector4T<double>& c);

    /// The lengths of rows 0, 1 and 2 over all four columns.
    [[nodiscard]] ZAN_API Zan_Vector3T<double> GetScale() const;
    /// The squares of GetScale.
    [[nodiscard]] ZAN_API Zan_Vector3T<double> GetScaleSquared() const;

    /// @name Points, in place
    /// As the functions of @ref matrixpoints. A count below 1 does nothing.
    /// @{

    /// The product with all four columns, not divided by w.
    ZAN_API void TransformPoint(Zan_Vector4T<double>* point) const;
    /// The product of (x, y, z, 1), whose w is dropped without a division.
    ZAN_API void TransformPoint(Zan_Vector3T<double>* point) const;
    /// Zan_TransformVector4NoDivide.
    ZAN_API void TransformPoints(int32_t count, Zan_Vector4T<double>* points) const;
    /// Affine: x' = x*m00 + y*m10 + z*m20 + m30, y' and z' alike. Column 3 is not read.
    ZAN_API void TransformPoints(int32_t count, Zan_Vector3T<double>* points) const;
    /// @}

    /// @name Points, divided by their w
    /// As in Zan_Matrix3, but multiplied by one reciprocal: with r = 1 / W the point becomes (X*r, Y*r, Z*r, 1.0), so
    /// that the last bit can differ from that of a division. A Zan_Vector3T enters as (x, y, z, 1).
    /// @{

    ZAN_API void TransformPointAndDivide(Zan_Vector4T<double>* point) const;                       ///< 0x11003B
    ZAN_API void TransformPointAndDivide(Zan_Vector3T<double>* point) const;                       ///< 0x11003B
    ZAN_API void TransformPointsAndDivide(int32_t count, Zan_Vector4T<double>* points) const;      ///< 0x11003C
    ZAN_API void TransformPointsAndDivide(int32_t count, Zan_Vector3T<double>* points) const;      ///< 0x11003B
    ZAN_API void TransformPointAndDivideFast(Zan_Vector4T<double>* point) const;                   ///< W not tested
    ZAN_API void TransformPointsAndDivideFast(int32_t count, Zan_Vector4T<double>* points) const;  ///< W not tested
    /// @}
};

/// @}

extern "C" {

/// @defgroup matrixvalues Matrices as values
/// None of these can fail: each returns 0, reports nothing, may be called from any thread and before Zan_Birth.
/// Infinities and NaNs are not errors; they follow IEEE arithmetic. An output may be one of the inputs.
/// @{

/// Sets a matrix to the identity.
/// @param m  receives the identity
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SetIdentityMatrix(Zan_Matrix3* m);
/// @copydoc Zan_SetIdentityMatrix
ZAN_API int32_t Zan_IdentityMatrix4(Zan_Matrix4* m);

/// Sets all sixteen elements to 0.
/// @param m  receives the zeros
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_ZeroMatrix4(Zan_Matrix4* m);

/// Finds the kind of a matrix (@ref matrixkinds).
/// @param m     the matrix
/// @param kind  receives one of Zan_MatrixType_Identity to Zan_MatrixType_Perspective
/// @return      0
/// @threads     any
ZAN_API int32_t Zan_GetMatrixType(const Zan_Matrix3* m, int32_t* kind);

/// Compares values: -0.0 equals 0.0, a NaN equals nothing.
/// @param a, b   the matrices
/// @param equal  receives 1 when every pair of elements compares equal, else 0
/// @return       0
/// @threads      any
ZAN_API int32_t Zan_EqualMatrix(const Zan_Matrix3* a, const Zan_Matrix3* b, unsigned char* equal);
/// @copydoc Zan_EqualMatrix
ZAN_API int32_t Zan_EqualMatrix4(const Zan_Matrix4* a, const Zan_Matrix4* b, unsigned char* equal);

/// b := b * a: b's transform first, then a's. Zan_ConcatMatrix4 takes its factors in the opposite order. Each element
/// is a sum of three products, added from left to right.
/// @param a  the second factor; may be b
/// @param b  the first factor; receives the product
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_ConcatMatrix(const Zan_Matrix3* a, Zan_Matrix3* b);

/// product := a * b: a's transform first, then b's. Each element is a sum of four products, added from left to right.
/// @param a        the first factor
/// @param b        the second factor
/// @param product  receives the product; may be a or b
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_ConcatMatrix4(const Zan_Matrix4* a, const Zan_Matrix4* b, Zan_Matrix4* product);

/// Transposes a matrix.
/// @param m           the matrix
/// @param transposed  receives the result; may be m
/// @return            0
/// @threads           any
ZAN_API int32_t Zan_TransposeMatrix4(const Zan_Matrix4* m, Zan_Matrix4* transposed);

/// The determinant m00*M00 - m01*M01 + m02*M02 - m03*M03. The minor Mij is the Determinant() of the Zan_Matrix3 that
/// remains without row i and column j.
/// @param m            the matrix
/// @param determinant  receives it
/// @return             0
/// @threads            any
ZAN_API int32_t Zan_GetMatrix4Determinant(const Zan_Matrix4* m, double* determinant);

/// Extends a transform of the plane to one of space that keeps z. Column 2 (m02, m12, m22) is dropped, so that the
/// result is always affine: rows (m00, m01, 0, 0), (m10, m11, 0, 0), (0, 0, 1, 0), (m20, m21, 0, 1).
/// @param m     the smaller matrix
/// @param wide  receives the larger one
/// @return      0
/// @threads     any
ZAN_API int32_t Zan_Matrix3ToMatrix4(const Zan_Matrix3* m, Zan_Matrix4* wide);

/// As Zan_Matrix3ToMatrix4, but a scale equal on both axes also scales z: with a = m00^2 + m10^2 and b = m01^2 + m11^2,
/// element (2, 2) is sqrt(a) when a and b differ by less than 1e-12 times the larger or by less than 563 * 2^-49, and 1
/// otherwise.
/// @param m     the smaller matrix
/// @param wide  receives the larger one
/// @return      0
/// @threads     any
ZAN_API int32_t Zan_Matrix3ToMatrix4Uniform(const Zan_Matrix3* m, Zan_Matrix4* wide);

/// @}

/// @defgroup matrixinverse Inverses
/// The output may be the input. The two sizes use different methods and different tests for a singular matrix: the
/// pivots of an elimination for a Zan_Matrix3, the determinant for a Zan_Matrix4. A Zan_Matrix4 with 1e-5 in every
/// place of its diagonal therefore counts as singular.
/// @{

/// The inverse, by Gauss-Jordan elimination with partial pivoting. A failure is not reported.
/// @param in        the matrix
/// @param out       receives the inverse, or the identity when there is none
/// @param singular  receives 1 when there is no inverse, else 0; may be null
/// @return          0; Zan_Err_CannotInvert (0x1107) for a pivot p with -1e-20 < p < 1e-20
/// @threads         any
[[nodiscard]] ZAN_API int32_t Zan_InverseMatrixQuiet(const Zan_Matrix3* in, Zan_Matrix3* out, unsigned char* singular);

/// As Zan_InverseMatrixQuiet, but a failure is reported.
/// @param in   the matrix
/// @param out  receives the inverse, or the identity when there is none
/// @return     0; Zan_Err_CannotInvert (0x1107) for a pivot p with -1e-20 < p < 1e-20
/// @reports    0x110023 severity 8, "unable to invert matrix."
/// @threads    any
[[nodiscard]] ZAN_API int32_t Zan_InverseMatrix(const Zan_Matrix3* in, Zan_Matrix3* out);

/// The inverse: each element of the adjugate, divided by the determinant. A failure is not reported.
/// @param in        the matrix
/// @param out       receives the inverse, or the undivided adjugate when there is none
/// @param singular  receives 1 when there is no inverse, else 0; may be null
/// @return          0; Zan_Err_CannotInvert (0x1107) for a determinant with |d| < 1e-16. A NaN determinant gives NaNs
/// @threads         any
[[nodiscard]] ZAN_API int32_t Zan_InverseMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out, unsigned char* singular);

/// As Zan_InverseMatrix4Quiet, but a failure is reported.
/// @param in   the matrix
/// @param out  receives the inverse, or the undivided adjugate when there is none
/// @return     0; Zan_Err_CannotInvert (0x1107) for a determinant with |d| < 1e-16
/// @reports    0x11002D severity 8, "unable to invert matrix."
/// @threads    any
[[nodiscard]] ZAN_API int32_t Zan_InverseMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out);

/// The normal matrix, by which normals of surfaces are transformed: the transpose of the inverse.
/// @param in   the matrix
/// @param out  receives the normal matrix, or the adjugate, neither divided nor transposed, when there is no inverse
/// @return     0; Zan_Err_CannotInvert (0x1107) for a determinant with |d| < 1e-16
/// @reports    0x11002D severity 8, "unable to invert matrix."
/// @threads    any
[[nodiscard]] ZAN_API int32_t Zan_CalcNormalMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out);

/// As Zan_CalcNormalMatrix4, but a failure is not reported and leaves a different output.
/// @param in        the matrix
/// @param out       receives the normal matrix, or the transpose of the undivided adjugate when there is no inverse
/// @param singular  receives 1 when there is no inverse, else 0; may be null
/// @return          0; Zan_Err_CannotInvert (0x1107) for a determinant with |d| < 1e-16
/// @threads         any
[[nodiscard]] ZAN_API int32_t Zan_CalcNormalMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out,
                                                         unsigned char* singular);

/// @}

/// @defgroup matrixbuilders Building transforms
/// Each appends one step T on the right, m := m * T. With row vectors that applies the transform so far, then T. Angles
/// are in degrees for a Zan_Matrix3, in radians for a Zan_Matrix4. Only a rotation axis shorter than 1e-12 fails;
/// zeros, infinities and NaNs elsewhere are not errors.
/// @{

/// Appends the translation [1 0 0] [0 1 0] [tx ty 1].
/// @param m       the transform
/// @param tx, ty  the displacements along x and y
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_TranslateMatrix(Zan_Matrix3* m, double tx, double ty);

/// Appends a rotation about the point (cx, cy), from the x axis toward the y axis: with c and s the cosine and sine of
/// the angle, [c s 0] [-s c 0] [(1-c)*cx + cy*s  (1-c)*cy - cx*s  1]. A multiple of 360 degrees leaves every bit of the
/// matrix unchanged.
/// @param m        the transform
/// @param degrees  the angle, reduced to Zan_fmod(degrees, 360.0) before it is converted to radians
/// @param cx, cy   the centre
/// @return         0
/// @threads        any
/// @libm           sin, cos
ZAN_API int32_t Zan_RotateMatrix(Zan_Matrix3* m, double degrees, double cx, double cy);

/// Appends a scale about the point (cx, cy): [sx 0 0] [0 sy 0] [(1-sx)*cx  (1-sy)*cy  1]. Two factors of 1 leave every
/// bit of the matrix unchanged.
/// @param m       the transform
/// @param sx, sy  the factors along x and y
/// @param cx, cy  the centre
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_ScaleMatrix(Zan_Matrix3* m, double sx, double sy, double cx, double cy);

/// Appends the translation with row 3 = (tx, ty, tz, 1).
/// @param tx, ty, tz  the displacements along the axes
/// @param m           the transform
/// @return            0
/// @threads           any
ZAN_API int32_t Zan_TranslateMatrix4(double tx, double ty, double tz, Zan_Matrix4* m);

/// Appends the scale with the diagonal (sx, sy, sz, 1).
/// @param sx, sy, sz  the factors along the axes
/// @param m           the transform
/// @return            0
/// @threads           any
ZAN_API int32_t Zan_ScaleMatrix4(double sx, double sy, double sz, Zan_Matrix4* m);

/// Appends a rotation about an axis through the origin, counterclockwise when the axis points at the viewer. With (x,
/// y, z) the unit axis, c and s the cosine and sine of the angle and t = 1 - c, the rows are (t*x*x + c, t*x*y + s*z,
/// t*x*z - s*y), (t*x*y - s*z, t*y*y + c, t*y*z + s*x), (t*x*z + s*y, t*y*z - s*x, t*z*z + c).
/// @param ax, ay, az  the axis, of length 1e-12 or more
/// @param radians     the angle
/// @param m           the transform; unchanged on failure
/// @return            0; Zan_Result_BadAxis (3) for an axis shorter than 1e-12
/// @reports           0x11002E severity 8, "unable to build rotation matrix."
/// @threads           any
/// @libm              sin, cos
[[nodiscard]] ZAN_API int32_t Zan_RotateMatrix4(double ax, double ay, double az, double radians, Zan_Matrix4* m);

/// Appends three rotations: about the x axis, about the y axis as rotated by the first, about the z axis as rotated by
/// both. That is m := m * R with R = Rz * Ry * Rx, where Rx, Ry and Rz are rotations about the fixed axes.
/// @param rx, ry, rz  the angles in radians
/// @param m           the transform
/// @return            0
/// @threads           any
/// @libm              sin, cos
ZAN_API int32_t Zan_RotateMatrix4XYZ(double rx, double ry, double rz, Zan_Matrix4* m);

/// Appends three rotations, either as Zan_RotateMatrix4XYZ does or about m's own axes. For the latter, each of the axes
/// x, y and z in turn is transformed by m as it then is (as a direction with w = 0, by Zan_TransformVector4), and the
/// rotation about the result is appended. An axis is skipped when all its transformed coordinates lie between -1e-12
/// and 1e-12.
/// @param rx, ry, rz         the angles in radians
/// @param startFromIdentity  not 0: as Zan_RotateMatrix4XYZ; 0: about m's own axes
/// @param m                  the transform
/// @return                   0
/// @threads                  any
/// @libm                     sin, cos
ZAN_API int32_t Zan_RotateMatrix4XYZPlus(double rx, double ry, double rz, unsigned char startFromIdentity,
                                         Zan_Matrix4* m);

/// Sets a matrix to the change of basis with the columns a, b, c; nothing is appended. A point p becomes (p.a, p.b,
/// p.c), its coordinates along three orthonormal axes. The w of the vectors is not read.
/// @param a, b, c  the axes
/// @param out      receives the matrix
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_SetMatrix4CoB(const Zan_Vector4T<double>* a, const Zan_Vector4T<double>* b,
                                  const Zan_Vector4T<double>* c, Zan_Matrix4* out);

/// @}

/// @defgroup matrixpoints Transforming points and rectangles
/// All work in place on the caller's records. Sums are added from left to right in double precision. With a count below
/// 1 the array is not touched and the result is 0. Except where an entry says otherwise nothing is reported: NaN,
/// infinities and w = 0 follow IEEE arithmetic. Several threads may transform different arrays by the same matrix at
/// once.
/// @{

/// 16-bit points, affine: x' = x*m00 + y*m10 + m20, y' = x*m01 + y*m11 + m21, with x = h and y = v, each rounded by
/// Zan_RoundDouble. Column 2 is not read.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points. On failure the points before the failing one are transformed and those after it are
///                unchanged; if v' is what does not fit, the failing point has its new h and its old v
/// @return        0; Zan_Err_Overflow (0x1102) for a coordinate >= 32767.0 or <= -32768.0 before rounding. NaN gives 0
/// @reports       0x110026 severity 8, "overflow in point transformation."
/// @threads       any
[[nodiscard]] ZAN_API int32_t Zan_TransformPoints(const Zan_Matrix3* m, int32_t count, Zan_Point* points);

/// 16.16 points, affine, computed on the raw integers: x' = x*m00 + y*m10 + m20*65536.0, y' alike, each rounded by
/// Zan_RoundDouble. The translation (m20, m21) is in whole units, hence the factor.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points; on failure as in Zan_TransformPoints
/// @return        0; Zan_Err_Overflow (0x1102) for an unrounded raw coordinate >= 2147483647.0 or
///                <= -2147483648.0. NaN gives 0x80000000
/// @reports       0x110027 severity 8, "overflow in fixed point transformation."
/// @threads       any
[[nodiscard]] ZAN_API int32_t Zan_TransformFixPoints(const Zan_Matrix3* m, int32_t count, Zan_FixedPoint* points);

/// Points of the plane, affine: x' = x*m00 + y*m10 + m20, y' = x*m01 + y*m11 + m21. Column 2 is not read.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_TransformFloatPoints(const Zan_Matrix3* m, int32_t count, Zan_Vector2T<double>* points);

/// Homogeneous points of the plane, multiplied by the matrix and not divided: x' = x*m00 + y*m10 + z*m20, y' and z'
/// alike.
/// @param m        the transform
/// @param count    number of vectors
/// @param vectors  the vectors; z is the homogeneous w
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformVector3(const Zan_Matrix3* m, int32_t count, Zan_Vector3T<double>* vectors);

/// Homogeneous points of space, multiplied by the matrix and divided by w': with r = 1 / w' the result is
/// (x'*r, y'*r, z'*r, 1.0). If w' is near zero, -1e-12 < w' < 1e-12, the result is the undivided (x', y', z', w').
/// @param m        the transform
/// @param count    number of vectors
/// @param vectors  the vectors
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformVector4(const Zan_Matrix4* m, int32_t count, Zan_Vector4T<double>* vectors);

/// Homogeneous points of space, multiplied by the matrix and not divided.
/// @param m        the transform
/// @param count    number of vectors
/// @param vectors  the vectors
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformVector4NoDivide(const Zan_Matrix4* m, int32_t count, Zan_Vector4T<double>* vectors);

/// Points of space: (x, y, z, 1) is transformed as by Zan_TransformVector4; its w is not stored.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_Transform3DFloatPoints(const Zan_Matrix4* m, int32_t count, Zan_Vector3T<double>* points);

/// 16-bit points as the points (h, v, 0) of space: transformed as by Zan_Transform3DFloatPoints, then x and y clamped
/// to -32767 to 32766 and truncated toward zero. NaN gives 0.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_3DTransform2DPoints(const Zan_Matrix4* m, int32_t count, Zan_Point* points);

/// The axis-aligned bounding box of a transformed 16-bit rectangle. Its corners (left, top), (right, top), (right,
/// bottom), (left, bottom) are transformed as by Zan_TransformFloatPoints, without a division. Each edge of the box is
/// clamped to -32767 to 32766 and rounded by Zan_RoundDouble. If the x of a corner is NaN, left and right are 0; if a y
/// is NaN, top and bottom are 0.
/// @param m        the transform
/// @param rect     the rectangle; receives the box
/// @param corners  receives the four transformed corners in that order, neither clamped nor rounded; may be null
/// @param turned   receives 1 when the kind of the matrix is Zan_MatrixType_Affine or Zan_MatrixType_Perspective (the
///                 box can then be larger than the transformed rectangle), else 0; may be null
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformRect(const Zan_Matrix3* m, Zan_Rect* rect, Zan_Vector2T<double>* corners,
                                  unsigned char* turned);

/// The axis-aligned bounding box of a transformed rectangle, as by Zan_TransformRect but neither clamped nor rounded;
/// NaN stays NaN.
/// @param m        the transform
/// @param rect     the rectangle; receives the box
/// @param corners  receives the four transformed corners; may be null
/// @param turned   as in Zan_TransformRect; may be null
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformFloatRect(const Zan_Matrix3* m, Zan_FloatRect* rect, Zan_Vector2T<double>* corners,
                                       unsigned char* turned);

/// The axis-aligned bounding box of a transformed 16.16 rectangle. Its corners are transformed by
/// Zan_TransformFixPoints.
/// @param m        the transform
/// @param rect     the rectangle; receives the box; unchanged on failure
/// @param corners  receives the four transformed corners; may be null. On failure it receives the corners as
///                 Zan_TransformFixPoints leaves them
/// @param turned   as in Zan_TransformRect; unchanged on failure; may be null
/// @return         0; Zan_Err_Overflow (0x1102) where Zan_TransformFixPoints gives it
/// @reports        0x110027 severity 8, "overflow in fixed point transformation."
/// @threads        any
[[nodiscard]] ZAN_API int32_t Zan_TransformFixRect(const Zan_Matrix3* m, Zan_FixedRect* rect, Zan_FixedPoint* corners,
                                                   unsigned char* turned);

/// @}

/// @defgroup matrixparts Decomposition and quaternions
/// Angles in radians.
/// @{

/// Decomposes a transform into translation, scale, shear and rotation, by Gram-Schmidt orthogonalization of its rows
/// after all elements were divided by m33. The length of row 0 is sx, its direction the first axis. Row 1 minus its
/// component shearXY along the first axis has the length sy and gives the second axis. Row 2 minus its components
/// shearXZ and shearYZ along both axes has the length sz and gives the third. If the axes are left-handed (a
/// reflection), the axes and the scales are negated, the shears are not. The angles are those of the rotation R = Rz *
/// Ry * Rx whose rows are the axes; Zan_RotateMatrix4XYZ appends it. With |cos ry| < 1e-5 (gimbal lock) rx and rz are
/// not determined separately: rx is 0.
///
/// The parts make m / m33 again as L * R * T, with the translation T = (tx, ty, tz) and L = rows (sx, 0, 0),
/// (k*shearXY, sy, 0), (k*shearXZ, k*shearYZ, sz), where k is -1 for a reflection (sx < 0) and 1 otherwise. A scale of
/// 0 leaves its axis and the shears along it 0; the angles are then not those of a rotation, and the parts make another
/// transform.
/// @param m       the transform
/// @param out     receives the parts; all zeros on failure
/// @param failed  null: a failure is reported. Otherwise a failure sets it to 1 and is not reported; success leaves it
///                unchanged
/// @return        0; Zan_Err_CannotDecompose (0x1108) when m33 is 0, or m03, m13 or m23 is not 0 after the division by
///                m33
/// @reports       0x11002D severity 8, "unable to decompose matrix.", only when `failed` is null
/// @threads       any
/// @libm          asin, cos, atan2, in the angles alone
[[nodiscard]] ZAN_API int32_t Zan_DecomposeMatrix4(const Zan_Matrix4* m, Zan_Matrix4Decomp* out, unsigned char* failed);

/// As Zan_DecomposeMatrix4, but with the angles of R = Rx * Ry * Rz. With |cos ry| < 1e-5 (gimbal lock) rz is 0 and rx
/// has the whole angle; but if element (2, 1) of R is between -1e-5 and 1e-5, rx is 0, and rz is pi when element (1, 1)
/// of R is within 563 * 2^-49 (about 1e-12) of -1, else 0.
/// @param m       the transform
/// @param out     receives the parts; all zeros on failure
/// @param failed  as in Zan_DecomposeMatrix4
/// @return        0; Zan_Err_CannotDecompose (0x1108) where Zan_DecomposeMatrix4 gives it
/// @reports       0x11002D severity 8, "unable to decompose matrix.", only when `failed` is null
/// @threads       any
/// @libm          asin, cos, atan2, in the angles alone
[[nodiscard]] ZAN_API int32_t Zan_DecomposeMatrix4ZYX(const Zan_Matrix4* m, Zan_Matrix4Decomp* out,
                                                      unsigned char* failed);

/// The angles that Zan_DecomposeMatrix4 finds.
/// @param m           the transform
/// @param rx, ry, rz  receive the angles; zeros on failure
/// @return            0; Zan_Err_CannotDecompose (0x1108) where Zan_DecomposeMatrix4 gives it
/// @reports           0x11002D severity 8, "unable to decompose matrix."
/// @threads           any
/// @libm              asin, cos, atan2
[[nodiscard]] ZAN_API int32_t Zan_GetOrderedXYZRotationFromMatrix(const Zan_Matrix4* m, double* rx, double* ry,
                                                                  double* rz);

/// Converts a rotation from axis and angle, as Zan_RotateMatrix4 takes it, to the three angles of Zan_RotateMatrix4XYZ.
/// @param ax, ay, az  the axis, of length 1e-12 or more
/// @param radians     the angle
/// @param rx, ry, rz  receive the angles; zeros on failure
/// @return            0; Zan_Result_BadAxis (3) for an axis shorter than 1e-12
/// @reports           0x11002E severity 8, "unable to build rotation matrix."
/// @threads           any
/// @libm              sin, cos, asin, atan2
[[nodiscard]] ZAN_API int32_t Zan_ConvertAxisAngleToOrderedXYZRotation(double ax, double ay, double az, double radians,
                                                                       double* rx, double* ry, double* rz);

/// The matrix of a quaternion. The quaternion is not normalized: one of length L gives its rotation scaled by L^2.
/// @param q    the quaternion
/// @param out  receives the matrix
/// @return     0
/// @threads    any
ZAN_API int32_t Zan_QuatToMatrix4(const Zan_Quat* q, Zan_Matrix4* out);

/// The quaternion of a rotation (Shoemake, 1985). Only the upper left 3 by 3 elements are read. A matrix that is not a
/// rotation gives a meaningless quaternion.
/// @param m    the rotation
/// @param out  receives the quaternion: w > 0 when m00 + m11 + m22 > 0, otherwise the largest of x, y and z is positive
/// @return     0
/// @threads    any
ZAN_API int32_t Zan_Matrix4ToQuat(const Zan_Matrix4* m, Zan_Quat* out);

/// Spherical linear interpolation between two quaternions along the shorter arc (Shoemake, 1985); linear when they are
/// nearly parallel, 1 - |q0.q1| <= 1e-5. The result is not normalized.
/// @param q0, q1  the ends. If each pair of components differs by less than 1e-12 times the larger or by less than
///                563 * 2^-49, the result is q0
/// @param t       0 for q0, 1 for q1 or for -q1, whichever is nearer to q0; values outside 0 to 1 extrapolate
/// @param out     receives the quaternion; may be q0 or q1
/// @return        0
/// @threads       any
/// @libm          acos, sin
ZAN_API int32_t Zan_Slerp(const Zan_Quat* q0, const Zan_Quat* q1, double t, Zan_Quat* out);

/// @}

}  // extern "C"

/// @addtogroup matrixpoints
/// @{

/// The smallest rectangle with integer edges that contains a transformed one: the corners are transformed as in
/// Zan_TransformRect; left and top are the floor of the smallest coordinates, right and bottom the ceiling of the
/// largest. Edges are clamped to 32 bits. If the x of a corner is NaN, left is -2^31 and right is 2^31 - 1; a NaN y
/// does the same to top and bottom.
/// @param m     the transform; column 2 is not read
/// @param rect  the rectangle
/// @return      the box; all zeros for an empty rectangle (right <= left or bottom <= top)
/// @threads     any
[[nodiscard]] ZAN_API Zan_LRect Zan_TransformBounds(const Zan_Matrix3& m, const Zan_LRect& rect);

/// @}

/// @addtogroup matrixvalues
/// @{

/// Compares values within a tolerance: true unless a pair of elements has |aij - bij| > eps. A NaN difference passes.
/// @param a, b  the matrices
/// @param eps   the largest difference that passes
/// @threads     any
[[nodiscard]] ZAN_API bool Zan_EqualMatrixWithinEpsilon(const Zan_Matrix3& a, const Zan_Matrix3& b, double eps);
/// @copydoc Zan_EqualMatrixWithinEpsilon(const Zan_Matrix3&,const Zan_Matrix3&,double)
[[nodiscard]] ZAN_API bool Zan_EqualMatrixWithinEpsilon(const Zan_Matrix4& a, const Zan_Matrix4& b, double eps);

/// @}

/// @addtogroup matrixbuilders
/// @{

/// The rotation that takes the z axis to the direction of view f = target - eye, the x axis to s = cross(up, f) and the
/// y axis to u = cross(f, s), each normalized. The result has no translation. When eye and target are the same point,
/// it is the identity. When up is 0 or parallel to f, it is a rotation about x, by pi/2 if f.y < 0 and by -pi/2
/// otherwise.
/// @param eye, target  the eye and the point that it looks at
/// @param up           any vector not parallel to the direction of view. It gives the y axis of eye space:
///                     where y points down on the screen, pass the direction that is down there
/// @return             the rotation
/// @threads            any
/// @libm               sin, cos, only when up is 0 or parallel to the direction of view
[[nodiscard]] ZAN_API Zan_Matrix4 Zan_LookAtMatrix(const Zan_Vector3T<double>& eye, const Zan_Vector3T<double>& target,
                                                   const Zan_Vector3T<double>& up);
/// @}

/// @cond
namespace zan_layout {
static_assert(kPlainData<Zan_Quat> && sizeof(Zan_Quat) == 32 && offsetof(Zan_Quat, w) == 24);
static_assert(kPlainData<Zan_Matrix4Decomp> && sizeof(Zan_Matrix4Decomp) == 96 &&
              offsetof(Zan_Matrix4Decomp, sx) == 24 && offsetof(Zan_Matrix4Decomp, shearXY) == 48 &&
              offsetof(Zan_Matrix4Decomp, rx) == 72);
static_assert(kPlainData<Zan_Matrix3> && sizeof(Zan_Matrix3) == 72 && offsetof(Zan_Matrix3, m01) == 8 &&
              offsetof(Zan_Matrix3, m10) == 24 && offsetof(Zan_Matrix3, m20) == 48 && offsetof(Zan_Matrix3, m22) == 64);
static_assert(kPlainData<Zan_Matrix4> && sizeof(Zan_Matrix4) == 128 && offsetof(Zan_Matrix4, m01) == 8 &&
              offsetof(Zan_Matrix4, m10) == 32 && offsetof(Zan_Matrix4, m20) == 64 &&
              offsetof(Zan_Matrix4, m30) == 96 && offsetof(Zan_Matrix4, m33) == 120);
}  // namespace zan_layout
/// @endcond

/// @}

#endif  // ZAN_MATRIX_H
