// Matrices and transforms.
//
// Row vectors throughout: a point p goes through a matrix as p' = p * M, with M stored row by row and the translation
// in its last row. For a Zan_Matrix3 and the homogeneous point (x, y, w)
//     x' = x*m00 + y*m10 + w*m20,   y' = x*m01 + y*m11 + w*m21,   w' = x*m02 + y*m12 + w*m22
// and p * A * B applies A first, then B. Plain functions take records and return a result code; the members of the two
// classes do the same work and throw a code that is not 0 as a `long`, after it has been reported.
#ifndef ZAN_MATRIX_H
#define ZAN_MATRIX_H

#include "zan/types.h"

struct Zan_Matrix4;

/// A quaternion, vector part first. The turn by an angle about a unit axis a is (a * sin(angle/2), cos(angle/2)).
struct Zan_Quat {
    double x, y, z, w;
};

/// A transform of space taken apart: what is done to a row vector is scale, then shear, then rotation, then
/// translation.
struct Zan_Matrix4Decomp {
    double tx, ty, tz;                 ///< translation
    double sx, sy, sz;                 ///< scale along the three rows; all negative when the matrix mirrors
    double shearXY, shearXZ, shearYZ;  ///< products of the rows while they are made orthogonal, not divided by a scale
    double rx, ry, rz;                 ///< angles in radians, in the order of the operation that filled the record
};

/// @defgroup matrixkinds Kinds of a Zan_Matrix3
/// The first condition that holds, tested in this order with exact comparisons: perspective when column 2 is not
/// (0, 0, 1), affine when m01 or m10 is not 0, then by whether m00 and m11 are both 1 and m20 and m21 both 0. A NaN
/// differs from everything. Kinds 0 to 3 carry rectangles to rectangles with upright edges.
/// @{
using Zan_MatrixType = int32_t;
inline constexpr Zan_MatrixType Zan_MatrixType_Identity = 0;        ///< changes nothing
inline constexpr Zan_MatrixType Zan_MatrixType_Translate = 1;       ///< unit diagonal, translation not 0
inline constexpr Zan_MatrixType Zan_MatrixType_Scale = 2;           ///< other diagonal, translation 0
inline constexpr Zan_MatrixType Zan_MatrixType_ScaleTranslate = 3;  ///< other diagonal, translation not 0
inline constexpr Zan_MatrixType Zan_MatrixType_Affine = 4;          ///< rotates or skews
inline constexpr Zan_MatrixType Zan_MatrixType_Perspective = 5;     ///< has a projective column
/// @}

/// A homogeneous transform of the plane: nine doubles, row by row, and nothing else. It may be copied and compared byte
/// by byte; `=` from the same class does so. A default-constructed matrix holds no defined values.
/// @threads any for every member, as long as nobody writes the matrix at the same time
struct Zan_Matrix3 {
    double m00, m01, m02;  ///< row 0: where (1, 0, 0) goes
    double m10, m11, m12;  ///< row 1: where (0, 1, 0) goes
    double m20, m21, m22;  ///< row 2: the translation m20, m21

    Zan_Matrix3() = default;
    /// Starts as the identity.
    /// @param identity  false leaves the elements unset
    ZAN_API explicit Zan_Matrix3(bool identity);

    /// this := the identity.
    ZAN_API void SetIdentity();
    /// this := nine zeros.
    ZAN_API void SetZero();

    /// The kind, as Zan_GetMatrixType gives it.
    [[nodiscard]] ZAN_API int32_t GetType() const;
    /// IsZeroWithinEpsilon(0.0): -0.0 and NaN pass for zero.
    [[nodiscard]] ZAN_API bool IsZero() const;
    /// IsIdentityWithinEpsilon(0.0): NaN passes.
    [[nodiscard]] ZAN_API bool IsIdentity() const;
    /// False when one element has |mij| > eps, which a NaN has not.
    /// @param eps  the largest deviation that passes
    [[nodiscard]] ZAN_API bool IsZeroWithinEpsilon(double eps) const;
    /// False when one element is further than eps from the identity's, which a NaN is not.
    /// @param eps  the largest deviation that passes
    [[nodiscard]] ZAN_API bool IsIdentityWithinEpsilon(double eps) const;

    /// this := this * n: n is applied after what the matrix did before.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix3& operator*=(const Zan_Matrix3& n);
    /// Sum, element by element.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix3& operator+=(const Zan_Matrix3& n);
    /// Difference this - n, element by element.
    /// @param n  may be this matrix itself
    ZAN_API Zan_Matrix3& operator-=(const Zan_Matrix3& n);
    /// The same 72 bytes: 0.0 and -0.0 differ, a NaN equals the same NaN. Zan_EqualMatrix compares values.
    /// @param n  the other matrix
    [[nodiscard]] ZAN_API bool operator==(const Zan_Matrix3& n) const;
    /// Not the same 72 bytes.
    /// @param n  the other matrix
    [[nodiscard]] ZAN_API bool operator!=(const Zan_Matrix3& n) const;

    /// (m00*(m11*m22 - m21*m12) + m01*(m12*m20 - m10*m22)) + m02*(m21*m10 - m11*m20).
    [[nodiscard]] ZAN_API double Determinant() const;
    /// Mirrors the elements at the diagonal, in place.
    ZAN_API void Transpose();
    /// Zan_InverseMatrix in place; throws Zan_Err_CannotInvert, reported, and leaves the matrix as it was where that
    /// fails.
    ZAN_API void Invert();
    /// The same without report or exception.
    /// @return true when there is no inverse and the matrix is as it was; false when it was replaced by its inverse
    [[nodiscard]] ZAN_API bool InvertQuiet();
    /// this := its adjugate, the transpose of the matrix of cofactors: M * adj(M) is the determinant times the
    /// identity. A singular matrix has one too.
    ZAN_API void Adjoint();

    /// this := rows 0, 1, 3 and columns 0, 1, 3 of m: what m does in the plane z = 0.
    /// @param m  a transform of space
    ZAN_API void AssignFromByDroppingZ(const Zan_Matrix4& m);
    /// this := m without one row and one column, the others in ascending order.
    /// @param m            the larger matrix
    /// @param row, column  0 to 3; a smaller number drops the first, a larger one the last
    ZAN_API void AssignFromByDroppingIndices(const Zan_Matrix4& m, int32_t row, int32_t column);

    /// @name Building: this := this * step, so that the step is applied after what the matrix did before
    /// The functions of @ref matrixbuilders; angles in degrees. A scale or a turn without a centre is about (0, 0).
    /// @{
    ZAN_API void Translate(double tx, double ty);                    ///< Zan_TranslateMatrix
    ZAN_API void Rotate(double degrees);                             ///< Zan_RotateMatrix about (0, 0)
    ZAN_API void Rotate(double degrees, double cx, double cy);       ///< Zan_RotateMatrix
    ZAN_API void Scale(double sx, double sy);                        ///< Zan_ScaleMatrix about (0, 0)
    ZAN_API void Scale(double sx, double sy, double cx, double cy);  ///< Zan_ScaleMatrix
    /// Skews along an axis: turns by axisDegrees, then x' = x - y*t, y' = y with t = tan(skewDegrees), then turns back
    /// by -axisDegrees. A skew by 0.0 changes nothing.
    /// @libm sin, cos, tan
    ZAN_API void Skew(double skewDegrees, double axisDegrees);
    /// @}

    /// The lengths of rows 0 and 1, projective column included: sqrt((m00^2 + m01^2) + m02^2) and the same of row 1.
    [[nodiscard]] ZAN_API Zan_Vector2T<double> GetScale() const;
    /// The squares of GetScale.
    [[nodiscard]] ZAN_API Zan_Vector2T<double> GetScaleSquared() const;

    /// @name Points, in place
    /// The rules are those of @ref matrixpoints. A count below 1 does nothing.
    /// @{
    /// Affine: x' = x*m00 + y*m10 + m20, y' = x*m01 + y*m11 + m21. Column 2 is not read.
    ZAN_API void TransformPoint(Zan_Vector2T<double>* point) const;
    /// The whole product of the homogeneous point (x, y, z = w), not divided.
    ZAN_API void TransformPoint(Zan_Vector3T<double>* point) const;
    /// Affine, each point.
    ZAN_API void TransformPoints(int32_t count, Zan_Vector2T<double>* points) const;
    /// Zan_TransformVector3.
    ZAN_API void TransformPoints(int32_t count, Zan_Vector3T<double>* points) const;
    /// Zan_TransformPoints; throws Zan_Err_Overflow, reported, where that returns it.
    ZAN_API void TransformPoints(int32_t count, Zan_Point* points) const;
    /// Zan_TransformFixPoints; throws Zan_Err_Overflow, reported, where that returns it.
    ZAN_API void TransformPoints(int32_t count, Zan_FixedPoint* points) const;
    /// @}

    /// @name Points, divided by their w
    /// The whole product (X, Y, W), then x = X / W, y = Y / W, z = 1.0. A W with -1e-12 < W < 1e-12 is reported as
    /// "homogeneous point has W=0" under the number named with each member, severity 8, and Zan_Err_HomogeneousWZero is
    /// thrown: that point and all later ones are unchanged, earlier ones stay transformed. The Fast members divide by
    /// whatever W is and report nothing. A Zan_Vector2T goes through as (x, y, 1). A count below 1 does nothing.
    /// @{
    ZAN_API void TransformPointAndDivide(Zan_Vector3T<double>* point) const;                       ///< 0x110039
    ZAN_API void TransformPointAndDivide(Zan_Vector2T<double>* point) const;                       ///< 0x110039
    ZAN_API void TransformPointsAndDivide(int32_t count, Zan_Vector3T<double>* points) const;      ///< 0x11003A
    ZAN_API void TransformPointsAndDivide(int32_t count, Zan_Vector2T<double>* points) const;      ///< 0x110039
    ZAN_API void TransformPointAndDivideFast(Zan_Vector3T<double>* point) const;                   ///< no test
    ZAN_API void TransformPointsAndDivideFast(int32_t count, Zan_Vector3T<double>* points) const;  ///< no test
    /// @}

    /// Zan_TransformRect.
    ZAN_API void TransformRect(Zan_Rect* rect, Zan_Vector2T<double>* corners, unsigned char* turned) const;
    /// Zan_TransformFixRect; throws Zan_Err_Overflow, reported, where that returns it.
    ZAN_API void TransformRect(Zan_FixedRect* rect, Zan_FixedPoint* corners, unsigned char* turned) const;
};

/// A homogeneous transform of space: sixteen doubles, row by row, and nothing else. As Zan_Matrix3 in everything; the
/// translation is m30, m31, m32, the projective terms are column 3.
/// @threads any for every member, as long as nobody writes the matrix at the same time
struct Zan_Matrix4 {
    double m00, m01, m02, m03;  ///< row 0: where (1, 0, 0, 0) goes
    double m10, m11, m12, m13;  ///< row 1: where (0, 1, 0, 0) goes
    double m20, m21, m22, m23;  ///< row 2: where (0, 0, 1, 0) goes
    double m30, m31, m32, m33;  ///< row 3: the translation m30, m31, m32

    Zan_Matrix4() = default;
    /// Starts as the identity.
    /// @param identity  false leaves the elements unset
    ZAN_API explicit Zan_Matrix4(bool identity);

    /// this := the identity.
    ZAN_API void SetIdentity();
    /// this := sixteen zeros.
    ZAN_API void SetZero();

    /// IsZeroWithinEpsilon(0.0): -0.0 and NaN pass for zero.
    [[nodiscard]] ZAN_API bool IsZero() const;
    /// IsIdentityWithinEpsilon(0.0): NaN passes.
    [[nodiscard]] ZAN_API bool IsIdentity() const;
    /// False when one element has |mij| > eps, which a NaN has not.
    /// @param eps  the largest deviation that passes
    [[nodiscard]] ZAN_API bool IsZeroWithinEpsilon(double eps) const;
    /// False when one element is further than eps from the identity's, which a NaN is not.
    /// @param eps  the largest deviation that passes
    [[nodiscard]] ZAN_API bool IsIdentityWithinEpsilon(double eps) const;
    /// No element is infinite or NaN.
    [[nodiscard]] ZAN_API bool IsFinite() const;

    /// this := this * n: n is applied after what the matrix did before.
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
    /// The same 128 bytes: 0.0 and -0.0 differ, a NaN equals the same NaN. Zan_EqualMatrix4 compares values.
    /// @param n  the other matrix
    [[nodiscard]] ZAN_API bool operator==(const Zan_Matrix4& n) const;
    /// Not the same 128 bytes.
    /// @param n  the other matrix
    [[nodiscard]] ZAN_API bool operator!=(const Zan_Matrix4& n) const;

    /// The determinant, as Zan_GetMatrix4Determinant gives it.
    [[nodiscard]] ZAN_API double Determinant() const;
    /// Mirrors the elements at the diagonal, in place.
    ZAN_API void Transpose();
    /// Zan_InverseMatrix4 in place; throws Zan_Err_CannotInvert, reported, and leaves the matrix as it was where that
    /// fails.
    ZAN_API void Invert();
    /// The same without report or exception.
    /// @return true when there is no inverse and the matrix is as it was; false when it was replaced by its inverse
    [[nodiscard]] ZAN_API bool InvertQuiet();

    /// Zan_DecomposeMatrix4 without a flag; throws Zan_Err_CannotDecompose, reported, where that fails.
    /// @param out  receives the parts; all zeros after a failure
    ZAN_API void Decompose(Zan_Matrix4Decomp* out) const;
    /// Zan_DecomposeMatrix4ZYX without a flag; throws Zan_Err_CannotDecompose, reported, where that fails.
    /// @param out  receives the parts; all zeros after a failure
    ZAN_API void DecomposeZYX(Zan_Matrix4Decomp* out) const;

    /// @name Building: this := this * step, so that the step is applied after what the matrix did before
    /// The functions of @ref matrixbuilders; angles in radians.
    /// @{
    ZAN_API void Translate(double tx, double ty, double tz);  ///< Zan_TranslateMatrix4
    ZAN_API void Scale(double sx, double sy, double sz);      ///< Zan_ScaleMatrix4
    /// Zan_RotateMatrix4; throws Zan_Result_BadAxis, reported, where that returns it.
    ZAN_API void RotateAxis(double ax, double ay, double az, double radians);
    ZAN_API void RotateXYZ(double rx, double ry, double rz);  ///< Zan_RotateMatrix4XYZ
    /// A projection: (x, y, z, w) becomes (x, y, z - w, z/d), and after the division by its w a point has its x and y
    /// scaled by d/z. d = 0 gives an infinite element.
    ZAN_API void Project(double d);
    /// @}

    /// this := the change of basis of Zan_SetMatrix4CoB, not appended.
    ZAN_API void SetCOB(const Zan_Vector4T<double>& a, const Zan_Vector4T<double>& b, const Zan_Vector4T<double>& c);

    /// The lengths of rows 0, 1 and 2 over all four columns.
    [[nodiscard]] ZAN_API Zan_Vector3T<double> GetScale() const;
    /// The squares of GetScale.
    [[nodiscard]] ZAN_API Zan_Vector3T<double> GetScaleSquared() const;

    /// @name Points, in place
    /// The rules are those of @ref matrixpoints. A count below 1 does nothing.
    /// @{
    /// The whole product, not divided.
    ZAN_API void TransformPoint(Zan_Vector4T<double>* point) const;
    /// The whole product of (x, y, z, 1), of which w is dropped.
    ZAN_API void TransformPoint(Zan_Vector3T<double>* point) const;
    /// Zan_TransformVector4NoDivide.
    ZAN_API void TransformPoints(int32_t count, Zan_Vector4T<double>* points) const;
    /// Affine: x' = x*m00 + y*m10 + z*m20 + m30, y' and z' alike. Column 3 is not read.
    ZAN_API void TransformPoints(int32_t count, Zan_Vector3T<double>* points) const;
    /// @}

    /// @name Points, divided by their w
    /// As in Zan_Matrix3, but by one reciprocal: with r = 1 / W the point becomes (X*r, Y*r, Z*r, 1.0), so that the
    /// last bit can differ from a division. A Zan_Vector3T goes through as (x, y, z, 1).
    /// @{
    ZAN_API void TransformPointAndDivide(Zan_Vector4T<double>* point) const;                       ///< 0x11003B
    ZAN_API void TransformPointAndDivide(Zan_Vector3T<double>* point) const;                       ///< 0x11003B
    ZAN_API void TransformPointsAndDivide(int32_t count, Zan_Vector4T<double>* points) const;      ///< 0x11003C
    ZAN_API void TransformPointsAndDivide(int32_t count, Zan_Vector3T<double>* points) const;      ///< 0x11003B
    ZAN_API void TransformPointAndDivideFast(Zan_Vector4T<double>* point) const;                   ///< no test
    ZAN_API void TransformPointsAndDivideFast(int32_t count, Zan_Vector4T<double>* points) const;  ///< no test
    /// @}
};

extern "C" {

/// @defgroup matrixvalues Matrices as values
/// None of these can fail: each returns 0, reports nothing, may be called from any thread and before Zan_Birth.
/// Infinities and NaNs go through the arithmetic. An output may be one of the inputs.
/// @{

/// Sets a matrix to the identity.
/// @param m  receives it
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_SetIdentityMatrix(Zan_Matrix3* m);
/// @copydoc Zan_SetIdentityMatrix
ZAN_API int32_t Zan_IdentityMatrix4(Zan_Matrix4* m);

/// Sets all sixteen elements to 0.
/// @param m  receives them
/// @return   0
/// @threads  any
ZAN_API int32_t Zan_ZeroMatrix4(Zan_Matrix4* m);

/// Classifies a matrix.
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

/// b := b * a: b's transform first, then a's. Note that Zan_ConcatMatrix4 takes its factors the other way round. Each
/// element is a sum of three products, added from left to right.
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

/// Mirrors the elements at the diagonal.
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

/// Widens a transform of the plane to one of space, which leaves z as it is. Column 2 (m02, m12, m22) is dropped, so
/// the result is always affine: rows (m00, m01, 0, 0), (m10, m11, 0, 0), (0, 0, 1, 0), (m20, m21, 0, 1).
/// @param m     the smaller matrix
/// @param wide  receives the larger one
/// @return      0
/// @threads     any
ZAN_API int32_t Zan_Matrix3ToMatrix4(const Zan_Matrix3* m, Zan_Matrix4* wide);

/// The same, but a scale that is the same on both axes goes into z: with a = m00^2 + m10^2 and b = m01^2 + m11^2,
/// element (2, 2) is sqrt(a) when a and b differ by less than 1e-12 of the larger (or by less than 563 * 2^-49),
/// otherwise 1.
/// @param m     the smaller matrix
/// @param wide  receives the larger one
/// @return      0
/// @threads     any
ZAN_API int32_t Zan_Matrix3ToMatrix4Uniform(const Zan_Matrix3* m, Zan_Matrix4* wide);

/// @}

/// @defgroup matrixinverse Inverses
/// The output may be the input. The two sizes use different methods and different limits: the pivots of an elimination
/// for a Zan_Matrix3, the determinant for a Zan_Matrix4, so that a scale by 1e-5 on all four axes counts as singular.
/// @{

/// The inverse, by elimination with partial pivoting (Gauss and Jordan), quietly.
/// @param in        the matrix
/// @param out       receives the inverse; after a failure the identity
/// @param singular  receives 1 when there is no inverse, else 0; may be null
/// @return          0; Zan_Err_CannotInvert (0x1107) for a pivot p with -1e-20 < p < 1e-20
/// @threads         any
[[nodiscard]] ZAN_API int32_t Zan_InverseMatrixQuiet(const Zan_Matrix3* in, Zan_Matrix3* out, unsigned char* singular);

/// As Zan_InverseMatrixQuiet, with a report.
/// @param in   the matrix
/// @param out  receives the inverse; after a failure the identity
/// @return     0; Zan_Err_CannotInvert (0x1107) for a pivot p with -1e-20 < p < 1e-20
/// @reports    0x110023 severity 8, "unable to invert matrix."
/// @threads    any
[[nodiscard]] ZAN_API int32_t Zan_InverseMatrix(const Zan_Matrix3* in, Zan_Matrix3* out);

/// The inverse, each element of the adjugate divided by the determinant, quietly.
/// @param in        the matrix
/// @param out       receives the inverse; after a failure the adjugate, not divided
/// @param singular  receives 1 when there is no inverse, else 0; may be null
/// @return          0; Zan_Err_CannotInvert (0x1107) for a determinant with |d| < 1e-16. A NaN determinant gives NaNs
/// @threads         any
[[nodiscard]] ZAN_API int32_t Zan_InverseMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out, unsigned char* singular);

/// As Zan_InverseMatrix4Quiet, with a report.
/// @param in   the matrix
/// @param out  receives the inverse; after a failure the adjugate, not divided
/// @return     0; Zan_Err_CannotInvert (0x1107) for a determinant with |d| < 1e-16
/// @reports    0x11002D severity 8, "unable to invert matrix."
/// @threads    any
[[nodiscard]] ZAN_API int32_t Zan_InverseMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out);

/// The normal matrix, the transpose of the inverse, which carries the normals of surfaces.
/// @param in   the matrix
/// @param out  receives the normal matrix; after a failure the adjugate, neither divided nor transposed
/// @return     0; Zan_Err_CannotInvert (0x1107) for a determinant with |d| < 1e-16
/// @reports    0x11002D severity 8, "unable to invert matrix."
/// @threads    any
[[nodiscard]] ZAN_API int32_t Zan_CalcNormalMatrix4(const Zan_Matrix4* in, Zan_Matrix4* out);

/// The normal matrix, quietly.
/// @param in        the matrix
/// @param out       receives the normal matrix; after a failure the transpose of the adjugate
/// @param singular  receives 1 when there is no inverse, else 0; may be null
/// @return          0; Zan_Err_CannotInvert (0x1107) for a determinant with |d| < 1e-16
/// @threads         any
[[nodiscard]] ZAN_API int32_t Zan_CalcNormalMatrix4Quiet(const Zan_Matrix4* in, Zan_Matrix4* out,
                                                         unsigned char* singular);

/// @}

/// @defgroup matrixbuilders Building transforms
/// Each appends one step T on the right, m := m * T: with row vectors T is applied after everything that m did before.
/// Angles are in degrees for a Zan_Matrix3, in radians for a Zan_Matrix4. Only a rotation axis without direction fails;
/// zeros, infinities and NaNs elsewhere go into the matrix.
/// @{

/// Appends the translation [1 0 0] [0 1 0] [tx ty 1].
/// @param m       the transform
/// @param tx, ty  the way along x and y
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_TranslateMatrix(Zan_Matrix3* m, double tx, double ty);

/// Appends a turn about the point (cx, cy), from the x axis towards the y axis: with c and s the cosine and sine of the
/// angle, [c s 0] [-s c 0] [(1-c)*cx + cy*s  (1-c)*cy - cx*s  1]. Multiples of 360 degrees leave the matrix as it is,
/// bit for bit.
/// @param m        the transform
/// @param degrees  the angle; its remainder by 360 is what counts
/// @param cx, cy   the point that stays
/// @return         0
/// @threads        any
/// @libm           sin, cos
ZAN_API int32_t Zan_RotateMatrix(Zan_Matrix3* m, double degrees, double cx, double cy);

/// Appends a scale about the point (cx, cy): [sx 0 0] [0 sy 0] [(1-sx)*cx  (1-sy)*cy  1]. Scales of 1 leave the matrix
/// as it is.
/// @param m       the transform
/// @param sx, sy  the factors along x and y
/// @param cx, cy  the point that stays
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_ScaleMatrix(Zan_Matrix3* m, double sx, double sy, double cx, double cy);

/// Appends the translation with row 3 = (tx, ty, tz, 1).
/// @param tx, ty, tz  the way along the axes
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

/// Appends a turn about an axis through the origin, counter-clockwise when the axis points at the viewer. With (x, y,
/// z) the unit axis, c and s the cosine and sine of the angle and t = 1 - c, the rows are (t*x*x + c, t*x*y + s*z,
/// t*x*z - s*y), (t*x*y - s*z, t*y*y + c, t*y*z + s*x), (t*x*z + s*y, t*y*z - s*x, t*z*z + c).
/// @param ax, ay, az  the axis, of any length but 0
/// @param radians     the angle
/// @param m           the transform; unchanged after a failure
/// @return            0; Zan_Result_BadAxis (3) for an axis shorter than 1e-12
/// @reports           0x11002E severity 8, "unable to build rotation matrix."
/// @threads           any
/// @libm              sin, cos
[[nodiscard]] ZAN_API int32_t Zan_RotateMatrix4(double ax, double ay, double az, double radians, Zan_Matrix4* m);

/// Appends turns about x, then about y as that turn has left it, then about z as both have left it: m := m * R with
/// R = Rz * Ry * Rx in terms of turns about the fixed axes.
/// @param rx, ry, rz  the angles in radians
/// @param m           the transform
/// @return            0
/// @threads           any
/// @libm              sin, cos
ZAN_API int32_t Zan_RotateMatrix4XYZ(double rx, double ry, double rz, Zan_Matrix4* m);

/// The same, or turns about m's own axes: each of x, y and z goes through m as it then is (as a direction, by
/// Zan_TransformVector4) and m := m * turn about the result. An axis that comes out with all coordinates nearer to 0
/// than 1e-12 is passed over.
/// @param rx, ry, rz         the angles in radians
/// @param startFromIdentity  not 0 for Zan_RotateMatrix4XYZ, 0 for m's own axes
/// @param m                  the transform
/// @return                   0
/// @threads                  any
/// @libm                     sin, cos
ZAN_API int32_t Zan_RotateMatrix4XYZPlus(double rx, double ry, double rz, unsigned char startFromIdentity,
                                         Zan_Matrix4* m);

/// Sets, not appends, the change of basis with the columns a, b, c: a point p becomes (p.a, p.b, p.c), its coordinates
/// along three orthonormal axes. The w of the vectors is not read.
/// @param a, b, c  the axes
/// @param out      receives the matrix
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_SetMatrix4CoB(const Zan_Vector4T<double>* a, const Zan_Vector4T<double>* b,
                                  const Zan_Vector4T<double>* c, Zan_Matrix4* out);

/// @}

/// @defgroup matrixpoints Transforming points, vectors and rectangles
/// All work in place on the caller's records. Sums are added from left to right in double precision. A count below 1
/// leaves the array untouched and returns 0. Except where an entry says otherwise nothing is reported: NaN, infinities
/// and w = 0 go through the arithmetic. Different arrays may go through one matrix on any number of threads at once.
/// @{

/// 16-bit points, affine: x' = x*m00 + y*m10 + m20, y' = x*m01 + y*m11 + m21, with x = h and y = v, each rounded by
/// Zan_RoundDouble. Column 2 is not read.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points. After a failure the points before the failing one are transformed, those behind it are
///                not; the failing one has its new h and its old v when v' is what does not fit
/// @return        0; Zan_Err_Overflow (0x1102) for a coordinate >= 32767.0 or <= -32768.0 before rounding. NaN gives 0
/// @reports       0x110026 severity 8, "overflow in point transformation."
/// @threads       any
[[nodiscard]] ZAN_API int32_t Zan_TransformPoints(const Zan_Matrix3* m, int32_t count, Zan_Point* points);

/// 16.16 points, affine, on the raw numbers: x' = x*m00 + y*m10 + m20*65536.0, y' alike, each rounded by
/// Zan_RoundDouble. The matrix is in whole units.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points; after a failure as in Zan_TransformPoints
/// @return        0; Zan_Err_Overflow (0x1102) for a raw coordinate >= 2147483647.0 or <= -2147483648.0 before
/// rounding.
///                NaN gives 0x80000000
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

/// Homogeneous points of the plane, the whole product, not divided: x' = x*m00 + y*m10 + z*m20, y' and z' alike.
/// @param m        the transform
/// @param count    number of vectors
/// @param vectors  the vectors; z is the homogeneous w
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformVector3(const Zan_Matrix3* m, int32_t count, Zan_Vector3T<double>* vectors);

/// Homogeneous points of space: the whole product, then divided: with r = 1 / w' it becomes (x'*r, y'*r, z'*r, 1.0). A
/// vector whose w' is near zero, -1e-12 < w' < 1e-12, stays undivided and keeps its w'.
/// @param m        the transform
/// @param count    number of vectors
/// @param vectors  the vectors
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformVector4(const Zan_Matrix4* m, int32_t count, Zan_Vector4T<double>* vectors);

/// Homogeneous points of space, the whole product, not divided.
/// @param m        the transform
/// @param count    number of vectors
/// @param vectors  the vectors
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformVector4NoDivide(const Zan_Matrix4* m, int32_t count, Zan_Vector4T<double>* vectors);

/// Points of space, (x, y, z, 1) as in Zan_TransformVector4; w' is not stored.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_Transform3DFloatPoints(const Zan_Matrix4* m, int32_t count, Zan_Vector3T<double>* points);

/// 16-bit points as the points (h, v, 0) of space: Zan_Transform3DFloatPoints, then x and y clamped to -32767 to 32766
/// and truncated towards zero. NaN gives 0.
/// @param m       the transform
/// @param count   number of points
/// @param points  the points
/// @return        0
/// @threads       any
ZAN_API int32_t Zan_3DTransform2DPoints(const Zan_Matrix4* m, int32_t count, Zan_Point* points);

/// The upright box around a transformed 16-bit rectangle. Its corners (left, top), (right, top), (right, bottom),
/// (left, bottom) are transformed as by Zan_TransformFloatPoints, never divided; each bound of the box is clamped to
/// -32767 to 32766 and rounded by Zan_RoundDouble. A corner's x or y that is NaN makes both bounds of its axis NaN, and
/// they are stored as 0.
/// @param m        the transform
/// @param rect     becomes the box
/// @param corners  receives the four transformed corners, neither clamped nor rounded; may be null
/// @param turned   receives 1 when the matrix is of kind Zan_MatrixType_Affine or _Perspective, so that the box is
///                 larger than the shape and the corners tell more, else 0; may be null
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformRect(const Zan_Matrix3* m, Zan_Rect* rect, Zan_Vector2T<double>* corners,
                                  unsigned char* turned);

/// The upright box around a transformed rectangle, as Zan_TransformRect but neither clamped nor rounded; NaN is stored
/// as it is.
/// @param m        the transform
/// @param rect     becomes the box
/// @param corners  receives the four transformed corners; may be null
/// @param turned   as in Zan_TransformRect; may be null
/// @return         0
/// @threads        any
ZAN_API int32_t Zan_TransformFloatRect(const Zan_Matrix3* m, Zan_FloatRect* rect, Zan_Vector2T<double>* corners,
                                       unsigned char* turned);

/// The upright box around a transformed 16.16 rectangle, whose corners go through Zan_TransformFixPoints.
/// @param m        the transform
/// @param rect     becomes the box; unchanged after a failure
/// @param corners  receives the four transformed corners; may be null. After a failure it holds the corners with those
///                 transformed that came before, as in Zan_TransformPoints
/// @param turned   as in Zan_TransformRect; not written after a failure; may be null
/// @return         0; Zan_Err_Overflow (0x1102) where Zan_TransformFixPoints gives it
/// @reports        0x110027 severity 8, "overflow in fixed point transformation."
/// @threads        any
[[nodiscard]] ZAN_API int32_t Zan_TransformFixRect(const Zan_Matrix3* m, Zan_FixedRect* rect, Zan_FixedPoint* corners,
                                                   unsigned char* turned);

/// @}

/// @defgroup matrixparts Transforms taken apart, quaternions
/// Angles in radians.
/// @{

/// Takes a transform apart, after a division of all elements by m33. Row 0 gives sx and the first axis; row 1 without
/// its share shearXY along that axis gives sy and the second; row 2 without its shares shearXZ and shearYZ gives sz and
/// the third. Where the three axes mirror, they and the scales are negated, the shears are not. The angles are those of
/// the axes as rows of R = Rz * Ry * Rx, which Zan_RotateMatrix4XYZ appends. Where |cos ry| < 1e-5 only what the
/// other two turns make together is known: then rx = 0.
/// @param m       the transform
/// @param out     receives the parts; all zeros after a failure
/// @param failed  set to 1 by a failure, which is then not reported, and otherwise left alone; null to have it reported
/// @return        0; Zan_Err_CannotDecompose (0x1108) when m33 is 0 or column 3 is otherwise not 0 after the division
/// @reports       0x11002D severity 8, "unable to decompose matrix.", only without the flag
/// @threads       any
/// @libm          asin, cos, atan2, in the angles alone
[[nodiscard]] ZAN_API int32_t Zan_DecomposeMatrix4(const Zan_Matrix4* m, Zan_Matrix4Decomp* out, unsigned char* failed);

/// The same with the angles of R = Rx * Ry * Rz. Where |cos ry| < 1e-5, rx takes the whole turn and rz = 0; but when
/// the element (2, 1) is nearer to 0 than 1e-5, rx = 0 and rz is pi if the element (1, 1) is nearly -1, else 0.
/// @param m       the transform
/// @param out     receives the parts; all zeros after a failure
/// @param failed  as in Zan_DecomposeMatrix4
/// @return        0; Zan_Err_CannotDecompose (0x1108) where Zan_DecomposeMatrix4 gives it
/// @reports       0x11002D severity 8, "unable to decompose matrix.", only without the flag
/// @threads       any
/// @libm          asin, cos, atan2, in the angles alone
[[nodiscard]] ZAN_API int32_t Zan_DecomposeMatrix4ZYX(const Zan_Matrix4* m, Zan_Matrix4Decomp* out,
                                                      unsigned char* failed);

/// The angles of Zan_DecomposeMatrix4.
/// @param m           the transform
/// @param rx, ry, rz  receive the angles; zeros after a failure
/// @return            0; Zan_Err_CannotDecompose (0x1108) where that gives it
/// @reports           0x11002D severity 8, "unable to decompose matrix."
/// @threads           any
/// @libm              asin, cos, atan2
[[nodiscard]] ZAN_API int32_t Zan_GetOrderedXYZRotationFromMatrix(const Zan_Matrix4* m, double* rx, double* ry,
                                                                  double* rz);

/// The angles that Zan_RotateMatrix4XYZ takes for the turn that Zan_RotateMatrix4 makes.
/// @param ax, ay, az  the axis, of any length but 0
/// @param radians     the angle
/// @param rx, ry, rz  receive the angles; zeros after a failure
/// @return            0; Zan_Result_BadAxis (3) for an axis shorter than 1e-12
/// @reports           0x11002E severity 8, "unable to build rotation matrix."
/// @threads           any
/// @libm              sin, cos, asin, atan2
[[nodiscard]] ZAN_API int32_t Zan_ConvertAxisAngleToOrderedXYZRotation(double ax, double ay, double az, double radians,
                                                                       double* rx, double* ry, double* rz);

/// The matrix of a quaternion, which is not brought to unit length: one of length L gives its rotation scaled by L^2.
/// @param q    the quaternion
/// @param out  receives the matrix
/// @return     0
/// @threads    any
ZAN_API int32_t Zan_QuatToMatrix4(const Zan_Quat* q, Zan_Matrix4* out);

/// The quaternion of a rotation (Shoemake, 1985), of which only the upper left 3 by 3 elements are read. What is not a
/// rotation gives a quaternion without meaning.
/// @param m    the rotation
/// @param out  receives the quaternion, its w or else its largest component positive
/// @return     0
/// @threads    any
ZAN_API int32_t Zan_Matrix4ToQuat(const Zan_Matrix4* m, Zan_Quat* out);

/// The quaternion between two, along the shorter arc at even speed (Shoemake, 1985); along the straight line when they
/// are so nearly parallel that 1 - |q0.q1| <= 1e-5. Not brought to unit length.
/// @param q0, q1  where the way begins and ends; when all components are nearly equal the result is q0
/// @param t       the share of the way; outside 0 to 1 beyond the ends
/// @param out     receives the quaternion; may be q0 or q1
/// @return        0
/// @threads       any
/// @libm          acos, sin
ZAN_API int32_t Zan_Slerp(const Zan_Quat* q0, const Zan_Quat* q1, double t, Zan_Quat* out);

/// @}

}  // extern "C"

/// The smallest rectangle of whole units around a transformed one: corners as in Zan_TransformRect, then the floor of
/// the smallest and the ceiling of the largest coordinates. Bounds outside the 32-bit range stop at its ends; a
/// corner's x that is NaN puts left at -2^31 and right at 2^31 - 1, a y top and bottom.
/// @param m     the transform, never divided by
/// @param rect  the rectangle
/// @return      the box; all zeros for an empty rectangle (right <= left or bottom <= top)
/// @threads     any
[[nodiscard]] ZAN_API Zan_LRect Zan_TransformBounds(const Zan_Matrix3& m, const Zan_LRect& rect);

/// Compares values with a tolerance: false as soon as one pair of elements has |aij - bij| > eps. A NaN difference is
/// not greater and passes.
/// @param a, b  the matrices
/// @param eps   the largest difference that passes
/// @threads     any
[[nodiscard]] ZAN_API bool Zan_EqualMatrixWithinEpsilon(const Zan_Matrix3& a, const Zan_Matrix3& b, double eps);
/// @copydoc Zan_EqualMatrixWithinEpsilon(const Zan_Matrix3&,const Zan_Matrix3&,double)
[[nodiscard]] ZAN_API bool Zan_EqualMatrixWithinEpsilon(const Zan_Matrix4& a, const Zan_Matrix4& b, double eps);

/// The rotation that takes the z axis to the direction of view f, the x axis to s = up x f and the y axis to u = f x s,
/// each of unit length. Nothing is translated. When up has the direction of view: a turn about x by +pi/2 when f.y < 0,
/// else by -pi/2; when eye and target are the same point: the identity.
/// @param eye, target  the direction of view is target - eye
/// @param up           any vector that is not along it
/// @return             the rotation
/// @threads            any
/// @libm               sin, cos, only when up has the direction of view
[[nodiscard]] ZAN_API Zan_Matrix4 Zan_LookAtMatrix(const Zan_Vector3T<double>& eye, const Zan_Vector3T<double>& target,
                                                   const Zan_Vector3T<double>& up);

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

#endif  // ZAN_MATRIX_H
