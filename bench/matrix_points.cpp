// Arrays of floating-point points through a matrix, beside glm, Eigen, cglm and loops written by hand.
#include "matrix_points.h"

#include "matrix_inputs.h"

namespace zan_bench {
namespace {

/// Random points as one library's records. Each library has its own copy, since the benchmarks write to it.
template <class Point>
std::vector<Point> pointsOf(size_t count, uint32_t seed) {
    Random random(seed);
    std::vector<Point> points(count);
    for (Point& point : points) {
        double numbers[sizeof(Point) / sizeof(double)];
        for (double& number : numbers) number = random.real(-1, 1);
        // Homogeneous coordinates with w = 1.
        if (std::size(numbers) == 4) numbers[std::size(numbers) - 1] = 1;
        std::memcpy(static_cast<void*>(&point), numbers, sizeof point);
    }
    return points;
}
template <int Size>
using EigenPoints = Eigen::Matrix<double, Size, Eigen::Dynamic>;
template <int Size>
EigenPoints<Size> eigenPoints(size_t count, uint32_t seed) {
    const auto points = pointsOf<std::array<double, Size>>(count, seed);
    EigenPoints<Size> columns(Size, points.size());
    std::memcpy(columns.data(), points.data(), points.size() * sizeof points[0]);
    return columns;
}

/// Transforms of the plane and their inverses, count / 2 of each, the same for each library.
struct Pairs3 {
    std::vector<Zan_Matrix3> zan;
    std::vector<glm::dmat3> glm;
    std::vector<Eigen::Matrix3d> eigen;

    explicit Pairs3(uint32_t seed, size_t count = 2)
        : zan(withInverses(copiedBytes<Zan_Matrix3>(inputs(count / 2, seed, planeTransform)))),
          glm(copiedBytes<glm::dmat3>(zan)),
          eigen(copiedBytes<Eigen::Matrix3d>(zan)) {}
};
/// The same in space.
struct Pairs4 {
    std::vector<Zan_Matrix4> zan;
    std::vector<glm::dmat4> glm;
    std::vector<Eigen::Matrix4d> eigen;

    Pairs4(uint32_t seed, std::array<double, 16> (*make)(Random&), size_t count = 2)
        : zan(withInverses(copiedBytes<Zan_Matrix4>(inputs(count / 2, seed, make)))),
          glm(copiedBytes<glm::dmat4>(zan)),
          eigen(copiedBytes<Eigen::Matrix4d>(zan)) {}
};

// Loops that a host would write: plain ones over its own records, and with glm.

struct HostPoint2 {
    double x, y;
};
struct HostPoint3 {
    double x, y, z;
};
struct HostPoint4 {
    double x, y, z, w;
};
void transformByHand(const Zan_Matrix3& m, size_t count, HostPoint2* points) {
    const double a = m.m00, b = m.m01, c = m.m10, d = m.m11, tx = m.m20, ty = m.m21;
    for (size_t i = 0; i < count; ++i) {
        const auto [x, y] = points[i];
        points[i] = {x * a + y * c + tx, x * b + y * d + ty};
    }
}
void transformAndDivideByHand(const Zan_Matrix4& from, size_t count, HostPoint3* points) {
    const Zan_Matrix4 m = from;
    for (size_t i = 0; i < count; ++i) {
        const auto [x, y, z] = points[i];
        const double r = 1 / (x * m.m03 + y * m.m13 + z * m.m23 + m.m33);
        points[i] = {(x * m.m00 + y * m.m10 + z * m.m20 + m.m30) * r, (x * m.m01 + y * m.m11 + z * m.m21 + m.m31) * r,
                     (x * m.m02 + y * m.m12 + z * m.m22 + m.m32) * r};
    }
}
void transformByHand(const Zan_Matrix4& from, size_t count, HostPoint4* points) {
    const Zan_Matrix4 m = from;
    for (size_t i = 0; i < count; ++i) {
        const auto [x, y, z, w] = points[i];
        points[i] = {x * m.m00 + y * m.m10 + z * m.m20 + w * m.m30, x * m.m01 + y * m.m11 + z * m.m21 + w * m.m31,
                     x * m.m02 + y * m.m12 + z * m.m22 + w * m.m32, x * m.m03 + y * m.m13 + z * m.m23 + w * m.m33};
    }
}
void transformByGlm(const glm::dmat3& m, size_t count, glm::dvec2* points) {
    for (size_t i = 0; i < count; ++i) points[i] = glm::dvec2(m * glm::dvec3(points[i], 1.0));
}
void transformByGlm(const glm::dmat4& m, size_t count, glm::dvec3* points) {
    for (size_t i = 0; i < count; ++i) points[i] = glm::dvec3(m * glm::dvec4(points[i], 1.0));
}
void transformAndDivideByGlm(const glm::dmat4& m, size_t count, glm::dvec3* points) {
    for (size_t i = 0; i < count; ++i) {
        const glm::dvec4 p = m * glm::dvec4(points[i], 1.0);
        points[i] = glm::dvec3(p) / p.w;
    }
}

/// The function of an entry with many short arrays: transforms block i, modulo kBlocks, by matrix i.
template <class Matrix, class Point, class Loop>
auto onBlocks(const std::vector<Matrix>& matrices, std::vector<Point>& points, Loop loop) {
    const size_t size = points.size() / kBlocks;
    return [&matrices, &points, loop, size](size_t i) {
        Point* block = &points[i % kBlocks * size];
        loop(matrices[i], size, block);
        return ArrayView<Point>{block, size};
    };
}
/// The function of an entry for Eigen, whose points are the columns of a matrix.
template <class Matrix, class Points, class Loop>
auto onColumns(const std::vector<Matrix>& matrices, Points& points, Loop loop) {
    return [&matrices, &points, loop](size_t i) {
        loop(matrices[i], points);
        return ArrayView<double>{points.data(), static_cast<size_t>(points.size())};
    };
}
/// Compares an array of records with an array of their coordinates.
struct NearColumns {
    template <class A>
    bool operator()(const ArrayView<A>& a, const ArrayView<double>& b) const {
        return a.count * sizeof(A) == b.count * sizeof(double) && Near().arrays(a.data, b.data, b.count);
    }
};

const auto kZan2 = [](const Zan_Matrix3& m, size_t count, Vector2* points) {
    Zan_TransformFloatPoints(&m, static_cast<int32_t>(count), points);
};
const auto kGlm = [](const auto& m, size_t count, auto* points) { transformByGlm(m, count, points); };
const auto kHand = [](const auto& m, size_t count, auto* points) { transformByHand(m, count, points); };

void addPoints2() {
    static const Pairs3 two(35), many(36, kInputs);
    static auto ours = pointsOf<Vector2>(kPoints, 41), ours16 = ours;
    static auto glms = pointsOf<glm::dvec2>(kPoints, 41), glms16 = glms;
    static auto hand = pointsOf<HostPoint2>(kPoints, 41), hand16 = hand;
    static auto eigens = eigenPoints<2>(kPoints, 41), eigens16 = eigens;
    static_assert(kPoints == 16 * kBlocks);

    Entry("2D points, 16", kInputs, onBlocks(many.zan, ours16, kZan2), 16)
        .peer("by hand", onBlocks(many.zan, hand16, kHand), NearArrays())
        .peer("glm", onBlocks(many.glm, glms16, kGlm), NearArrays())
        .peer(
            "Eigen, all at once",
            [](size_t i) {
                auto block = eigens16.middleCols<16>(static_cast<Eigen::Index>(i % kBlocks * 16));
                block = ((many.eigen[i].topLeftCorner<2, 2>() * block).colwise() + many.eigen[i].topRightCorner<2, 1>())
                            .eval();
                return ArrayView<double>{block.data(), 32};
            },
            NearColumns())
        .hasKernels();
    Entry("2D points, 4,096", 2, onArray(two.zan, ours, kZan2), kPoints)
        .peer("by hand", onArray(two.zan, hand, kHand), NearArrays())
        .peer("glm", onArray(two.glm, glms, kGlm), NearArrays())
        .peer("Eigen, all at once",
              onColumns(two.eigen, eigens,
                        [](const Eigen::Matrix3d& m, auto& points) {
                            points = (m.topLeftCorner<2, 2>() * points).colwise() + m.topRightCorner<2, 1>();
                        }),
              NearColumns())
        .hasKernels();
}

void addPoints3() {
    static const Pairs4 affine(37, spaceTransform), camera(38, cameraTransform), cameras(39, cameraTransform, kInputs);
    static auto ours = pointsOf<Vector3>(kPoints, 43), divided = ours;
    static auto glms = pointsOf<glm::dvec3>(kPoints, 43), glmsDivided = glms;
    static auto handDivided = pointsOf<HostPoint3>(kPoints, 43);
    static auto eigens = eigenPoints<3>(kPoints, 43), eigensDivided = eigens;
    static auto ours4 = pointsOf<Vector3>(4 * kBlocks, 44);
    static auto glms4 = pointsOf<glm::dvec3>(4 * kBlocks, 44);
    static auto hand4 = pointsOf<HostPoint3>(4 * kBlocks, 44);
    const auto zan = [](const Zan_Matrix4& m, size_t count, Vector3* points) {
        Zan_Transform3DFloatPoints(&m, static_cast<int32_t>(count), points);
    };
    const auto glmDivide = [](const auto& m, size_t count, auto* points) { transformAndDivideByGlm(m, count, points); };
    const auto handDivide = [](const auto& m, size_t count, auto* points) {
        transformAndDivideByHand(m, count, points);
    };

    Entry("3D points, divided, 4", kInputs, onBlocks(cameras.zan, ours4, zan), 4)
        .peer("by hand", onBlocks(cameras.zan, hand4, handDivide), NearArrays())
        .peer("glm", onBlocks(cameras.glm, glms4, glmDivide), NearArrays())
        .hasKernels();
    Entry("3D points, divided, 4,096", 2, onArray(camera.zan, divided, zan), kPoints)
        .peer("by hand", onArray(camera.zan, handDivided, handDivide), NearArrays())
        .peer("glm", onArray(camera.glm, glmsDivided, glmDivide), NearArrays())
        .peer("Eigen, all at once",
              onColumns(camera.eigen, eigensDivided,
                        [](const Eigen::Matrix4d& m, auto& points) {
                            points = (m * points.colwise().homogeneous()).colwise().hnormalized().eval();
                        }),
              NearColumns())
        .hasKernels();
    Entry("3D points, affine, 4,096", 2,
          onArray(affine.zan, ours,
                  [](const Zan_Matrix4& m, size_t count, Vector3* points) {
                      m.TransformPoints(static_cast<int32_t>(count), points);
                  }),
          kPoints)
        .peer("glm", onArray(affine.glm, glms, kGlm), NearArrays())
        .peer("Eigen, all at once",
              onColumns(affine.eigen, eigens,
                        [](const Eigen::Matrix4d& m, auto& points) {
                            points = (m.topLeftCorner<3, 3>() * points).colwise() + m.topRightCorner<3, 1>();
                        }),
              NearColumns())
        .hasKernels();
}

void addPoints4() {
    static const Pairs4 two(40, cameraTransform);
    static const SingleMatrix singles[2] = {singlePrecision(two.zan[0]), singlePrecision(two.zan[1])};
    static auto ours = pointsOf<Vector4>(kPoints, 45), divided = ours;
    static auto glms = pointsOf<glm::dvec4>(kPoints, 45), glmsDivided = glms;
    static auto hand = pointsOf<HostPoint4>(kPoints, 45);
    static auto eigens = eigenPoints<4>(kPoints, 45), eigensDivided = eigens;
    struct Single4 {
        alignas(16) vec4 v;
    };
    static std::vector<Single4> cglms;
    for (const HostPoint4& p : hand) {
        cglms.push_back({{static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z), 1}});
    }

    Entry("4D vectors, 4,096", 2,
          onArray(two.zan, ours,
                  [](const Zan_Matrix4& m, size_t count, Vector4* points) {
                      Zan_TransformVector4NoDivide(&m, static_cast<int32_t>(count), points);
                  }),
          kPoints)
        .peer("by hand", onArray(two.zan, hand, kHand), NearArrays())
        .peer("glm",
              onArray(two.glm, glms,
                      [](const glm::dmat4& m, size_t count, glm::dvec4* points) {
                          for (size_t i = 0; i < count; ++i) points[i] = m * points[i];
                      }),
              NearArrays())
        .peer("Eigen, all at once",
              onColumns(two.eigen, eigens, [](const Eigen::Matrix4d& m, auto& points) { points = m * points; }),
              NearColumns())
        .peer(
            kCglm,
            [](size_t i) {
                SingleMatrix m = singles[i];
                for (Single4& p : cglms) glm_mat4_mulv(m.m, p.v, p.v);
                return viewOf(cglms);
            },
            [](const ArrayView<Vector4>& zan, const ArrayView<Single4>& peer) {
                for (size_t i = 0; i < zan.count; ++i) {
                    if (!Near{2e-3}(zan.data[i].x, peer.data[i].v[0])) return false;
                }
                return true;
            })
        .hasKernels();
    Entry("4D vectors, divided, 4,096", 2,
          onArray(two.zan, divided,
                  [](const Zan_Matrix4& m, size_t count, Vector4* points) {
                      Zan_TransformVector4(&m, static_cast<int32_t>(count), points);
                  }),
          kPoints)
        .peer("glm",
              onArray(two.glm, glmsDivided,
                      [](const glm::dmat4& m, size_t count, glm::dvec4* points) {
                          for (size_t i = 0; i < count; ++i) {
                              points[i] = m * points[i];
                              points[i] /= points[i].w;
                          }
                      }),
              NearArrays())
        .peer("Eigen, all at once",
              onColumns(two.eigen, eigensDivided,
                        [](const Eigen::Matrix4d& m, auto& points) {
                            points = (m * points).colwise().hnormalized().eval().colwise().homogeneous();
                        }),
              NearColumns())
        .hasKernels();
}

}  // namespace

void addMatrixPoints() {
    addPoints2();
    addPoints3();
    addPoints4();
}

}  // namespace zan_bench
