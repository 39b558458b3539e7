// Matrices and what goes through them, beside glm and Eigen in double precision. Those libraries inline into the host;
// zan is called in its shared library, as a host calls it.
#include <Eigen/Dense>

#include "entries.h"
#include "peers_glm.h"
#include "zan/matrix.h"

namespace zan_bench {
namespace {

/// The same matrices in each library.
struct Matrices3 {
    std::vector<Zan_Matrix3> zan;
    std::vector<glm::dmat3> glm;
    std::vector<Eigen::Matrix3d> eigen;

    explicit Matrices3(uint32_t seed)
        : zan(sameBytes<Zan_Matrix3>(inputs(kManyLarge, seed, planeTransform))),
          glm(sameBytes<glm::dmat3>(zan)),
          eigen(sameBytes<Eigen::Matrix3d>(zan)) {}
};
struct Matrices4 {
    std::vector<Zan_Matrix4> zan;
    std::vector<glm::dmat4> glm;
    std::vector<Eigen::Matrix4d> eigen;

    explicit Matrices4(uint32_t seed, std::array<double, 16> (*make)(Random&) = spaceTransform)
        : zan(sameBytes<Zan_Matrix4>(inputs(kManyLarge, seed, make))),
          glm(sameBytes<glm::dmat4>(zan)),
          eigen(sameBytes<Eigen::Matrix4d>(zan)) {}
};

void addValues() {
    static const Matrices3 first3(31), second3(32);
    static const Matrices4 first4(33), second4(34);
    const Zan_Matrix3 *a3 = first3.zan.data(), *b3 = second3.zan.data();
    const glm::dmat3 *ga3 = first3.glm.data(), *gb3 = second3.glm.data();
    const Eigen::Matrix3d *ea3 = first3.eigen.data(), *eb3 = second3.eigen.data();
    const Zan_Matrix4 *a4 = first4.zan.data(), *b4 = second4.zan.data();
    const glm::dmat4 *ga4 = first4.glm.data(), *gb4 = second4.glm.data();
    const Eigen::Matrix4d *ea4 = first4.eigen.data(), *eb4 = second4.eigen.data();

    Entry("3x3 product", kManyLarge,
          [=](size_t i) {
              Zan_Matrix3 product = a3[i];
              Zan_ConcatMatrix(&b3[i], &product);
              return product;
          })
        .peer(
            "glm", [=](size_t i) { return gb3[i] * ga3[i]; }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix3d { return eb3[i] * ea3[i]; }, Near());
    Entry("4x4 product", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 product;
              Zan_ConcatMatrix4(&a4[i], &b4[i], &product);
              return product;
          })
        .peer(
            "glm", [=](size_t i) { return gb4[i] * ga4[i]; }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return eb4[i] * ea4[i]; }, Near());
    Entry("3x3 determinant", kManyLarge, [=](size_t i) { return a3[i].Determinant(); })
        .peer(
            "glm", [=](size_t i) { return glm::determinant(ga3[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) { return ea3[i].determinant(); }, Near());
    Entry("4x4 determinant", kManyLarge,
          [=](size_t i) {
              double determinant = 0;
              Zan_GetMatrix4Determinant(&a4[i], &determinant);
              return determinant;
          })
        .peer(
            "glm", [=](size_t i) { return glm::determinant(ga4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) { return ea4[i].determinant(); }, Near());
    Entry("4x4 transpose", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 transposed;
              Zan_TransposeMatrix4(&a4[i], &transposed);
              return transposed;
          })
        .peer(
            "glm", [=](size_t i) { return glm::transpose(ga4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return ea4[i].transpose(); }, Near());
    Entry("4x4 comparison within a tolerance", kManyLarge, [=](size_t i) {
        return Zan_EqualMatrixWithinEpsilon(a4[i], a4[i & 1 ? i : 0], 1e-9);
    }).peer("glm", [=](size_t i) {
          return glm::all(glm::equal(ga4[i], ga4[i & 1 ? i : 0], 1e-9));
      }).peer("Eigen", [=](size_t i) { return ((ea4[i] - ea4[i & 1 ? i : 0]).array().abs() <= 1e-9).all(); });
}

// Points go through a matrix, then in the same place through its inverse, so that they stay what they are.

template <class Matrix>
std::vector<Matrix> withInverses(std::vector<Matrix> matrices) {
    constexpr int n = sizeof(Matrix) == sizeof(Zan_Matrix3) ? 3 : 4;
    const size_t count = matrices.size();
    for (size_t i = 0; i < count; ++i) {
        Eigen::Matrix<double, n, n> m;
        std::memcpy(m.data(), &matrices[i], sizeof(Matrix));
        const Eigen::Matrix<double, n, n> inverse = m.inverse();
        Matrix back;
        std::memcpy(static_cast<void*>(&back), inverse.data(), sizeof back);
        matrices.push_back(back);
    }
    return matrices;
}

/// The same numbers as points of one side; the others have their own, since each side changes its points.
template <class Point>
std::vector<Point> pointsOf(size_t count, uint32_t seed) {
    Random random(seed);
    std::vector<Point> points(count);
    for (Point& point : points) {
        double numbers[sizeof(Point) / sizeof(double)];
        for (double& number : numbers) number = random.real(-1, 1);
        // A homogeneous point in front of the camera.
        if (std::size(numbers) == 4) numbers[std::size(numbers) - 1] = 1;
        std::memcpy(static_cast<void*>(&point), numbers, sizeof point);
    }
    return points;
}
template <int Size>
using EigenPoints = Eigen::Matrix<double, Size, Eigen::Dynamic>;
template <int Size>
EigenPoints<Size> eigenPoints(uint32_t seed) {
    const auto points = pointsOf<std::array<double, Size>>(kPoints, seed);
    EigenPoints<Size> columns(Size, kPoints);
    std::memcpy(columns.data(), points.data(), points.size() * sizeof points[0]);
    return columns;
}

/// Two matrices, one the inverse of the other.
struct Pair3 {
    std::vector<Zan_Matrix3> zan;
    std::vector<glm::dmat3> glm;
    std::vector<Eigen::Matrix3d> eigen;

    Pair3(uint32_t seed, size_t count = 1)
        : zan(withInverses(sameBytes<Zan_Matrix3>(inputs(count, seed, planeTransform)))),
          glm(sameBytes<glm::dmat3>(zan)),
          eigen(sameBytes<Eigen::Matrix3d>(zan)) {}
};
struct Pair4 {
    std::vector<Zan_Matrix4> zan;
    std::vector<glm::dmat4> glm;
    std::vector<Eigen::Matrix4d> eigen;

    Pair4(uint32_t seed, std::array<double, 16> (*make)(Random&), size_t count = 1)
        : zan(withInverses(sameBytes<Zan_Matrix4>(inputs(count, seed, make)))),
          glm(sameBytes<glm::dmat4>(zan)),
          eigen(sameBytes<Eigen::Matrix4d>(zan)) {}
};

void transformByGlm(const glm::dmat3& m, size_t count, glm::dvec2* points) {
    for (size_t i = 0; i < count; ++i) points[i] = glm::dvec2(m * glm::dvec3(points[i], 1.0));
}
void transformByGlm(const glm::dmat4& m, size_t count, glm::dvec3* points) {
    for (size_t i = 0; i < count; ++i) points[i] = glm::dvec3(m * glm::dvec4(points[i], 1.0));
}
void divideByGlm(const glm::dmat4& m, size_t count, glm::dvec3* points) {
    for (size_t i = 0; i < count; ++i) {
        const glm::dvec4 p = m * glm::dvec4(points[i], 1.0);
        points[i] = glm::dvec3(p) / p.w;
    }
}

void addPoints2() {
    static const Pair3 one(35), many(36, kManyLarge);
    static auto ours = pointsOf<Zan_Vector2T<double>>(kPoints, 41),
                ours4 = pointsOf<Zan_Vector2T<double>>(kManyLarge * 4, 42);
    static auto glms = pointsOf<glm::dvec2>(kPoints, 41), glms4 = pointsOf<glm::dvec2>(kManyLarge * 4, 42);
    static auto eigens = eigenPoints<2>(41);

    Entry("1000 points of the plane", 2,
          [](size_t i) {
              Zan_TransformFloatPoints(&one.zan[i], kPoints, ours.data());
              return ours.data();
          })
        .peer(
            "glm",
            [](size_t i) {
                transformByGlm(one.glm[i], kPoints, glms.data());
                return glms.data();
            },
            NearArrays{2 * kPoints})
        .peer(
            "Eigen, all at once",
            [](size_t i) {
                eigens = (one.eigen[i].topLeftCorner<2, 2>() * eigens).colwise() + one.eigen[i].topRightCorner<2, 1>();
                return eigens.data();
            },
            NearArrays{2 * kPoints});
    Entry("4 points of the plane", 2 * kManyLarge,
          [](size_t i) {
              Zan_Vector2T<double>* points = &ours4[i % kManyLarge * 4];
              Zan_TransformFloatPoints(&many.zan[i], 4, points);
              return points;
          })
        .peer(
            "glm",
            [](size_t i) {
                glm::dvec2* points = &glms4[i % kManyLarge * 4];
                transformByGlm(many.glm[i], 4, points);
                return points;
            },
            NearArrays{8});
}

void addPoints3() {
    static const Pair4 affine(37, spaceTransform), camera(38, cameraTransform),
        cameras(39, cameraTransform, kManyLarge);
    static auto ours = pointsOf<Zan_Vector3T<double>>(kPoints, 43), divided = ours;
    static auto ours4 = pointsOf<Zan_Vector3T<double>>(kManyLarge * 4, 44);
    static auto glms = pointsOf<glm::dvec3>(kPoints, 43), glmsDivided = glms;
    static auto glms4 = pointsOf<glm::dvec3>(kManyLarge * 4, 44);
    static auto eigens = eigenPoints<3>(43), eigensDivided = eigens;

    Entry("1000 points of space, affine", 2,
          [](size_t i) {
              affine.zan[i].TransformPoints(kPoints, ours.data());
              return ours.data();
          })
        .peer(
            "glm",
            [](size_t i) {
                transformByGlm(affine.glm[i], kPoints, glms.data());
                return glms.data();
            },
            NearArrays{3 * kPoints})
        .peer(
            "Eigen, all at once",
            [](size_t i) {
                eigens =
                    (affine.eigen[i].topLeftCorner<3, 3>() * eigens).colwise() + affine.eigen[i].topRightCorner<3, 1>();
                return eigens.data();
            },
            NearArrays{3 * kPoints});
    Entry("1000 points of space, divided", 2,
          [](size_t i) {
              Zan_Transform3DFloatPoints(&camera.zan[i], kPoints, divided.data());
              return divided.data();
          })
        .peer(
            "glm",
            [](size_t i) {
                divideByGlm(camera.glm[i], kPoints, glmsDivided.data());
                return glmsDivided.data();
            },
            NearArrays{3 * kPoints})
        .peer(
            "Eigen, all at once",
            [](size_t i) {
                eigensDivided =
                    (camera.eigen[i] * eigensDivided.colwise().homogeneous()).colwise().hnormalized().eval();
                return eigensDivided.data();
            },
            NearArrays{3 * kPoints});
    Entry("4 points of space, divided", 2 * kManyLarge,
          [](size_t i) {
              Zan_Vector3T<double>* points = &ours4[i % kManyLarge * 4];
              Zan_Transform3DFloatPoints(&cameras.zan[i], 4, points);
              return points;
          })
        .peer(
            "glm",
            [](size_t i) {
                glm::dvec3* points = &glms4[i % kManyLarge * 4];
                divideByGlm(cameras.glm[i], 4, points);
                return points;
            },
            NearArrays{12});
}

void addPoints4() {
    static const Pair4 one(40, cameraTransform);
    static auto ours = pointsOf<Zan_Vector4T<double>>(kPoints, 45), divided = ours;
    static auto glms = pointsOf<glm::dvec4>(kPoints, 45), glmsDivided = glms;
    static auto eigens = eigenPoints<4>(45), eigensDivided = eigens;

    Entry("1000 homogeneous points", 2,
          [](size_t i) {
              Zan_TransformVector4NoDivide(&one.zan[i], kPoints, ours.data());
              return ours.data();
          })
        .peer(
            "glm",
            [](size_t i) {
                for (glm::dvec4& p : glms) p = one.glm[i] * p;
                return glms.data();
            },
            NearArrays{4 * kPoints})
        .peer(
            "Eigen, all at once",
            [](size_t i) {
                eigens = one.eigen[i] * eigens;
                return eigens.data();
            },
            NearArrays{4 * kPoints});
    Entry("1000 homogeneous points, divided", 2,
          [](size_t i) {
              Zan_TransformVector4(&one.zan[i], kPoints, divided.data());
              return divided.data();
          })
        .peer(
            "glm",
            [](size_t i) {
                for (glm::dvec4& p : glmsDivided) {
                    p = one.glm[i] * p;
                    p /= p.w;
                }
                return glmsDivided.data();
            },
            NearArrays{4 * kPoints})
        .peer(
            "Eigen, all at once",
            [](size_t i) {
                eigensDivided = (one.eigen[i] * eigensDivided).colwise().hnormalized().eval().colwise().homogeneous();
                return eigensDivided.data();
            },
            NearArrays{4 * kPoints});
}

/// Quarter turns and back about a point, so that whole numbers stay whole.
void addIntegerPoints() {
    static Zan_Matrix3 turns[2];
    turns[0] = turns[1] = Zan_Matrix3(true);
    turns[0].m00 = turns[0].m11 = turns[1].m00 = turns[1].m11 = 0;
    turns[0].m01 = turns[1].m10 = 1;
    turns[0].m10 = turns[1].m01 = -1;
    turns[0].m20 = 3;
    turns[0].m21 = 4;
    turns[1].m20 = -4;
    turns[1].m21 = 3;
    static auto shorts = inputs(kPoints, 46, [](Random& random) {
        return Zan_Point{static_cast<int16_t>(random.whole(-9999, 9999)),
                         static_cast<int16_t>(random.whole(-9999, 9999))};
    });
    static auto shortsByHand = shorts;
    static auto fixed = inputs(kPoints, 47, [](Random& random) {
        return Zan_FixedPoint{random.whole(-0x20000000, 0x20000000), random.whole(-0x20000000, 0x20000000)};
    });
    static auto fixedByHand = fixed;
    static const auto same = [](const auto* zan, const auto* peer) {
        for (int i = 0; i < kPoints; ++i) {
            if (zan[i].h != peer[i].h || zan[i].v != peer[i].v) return false;
        }
        return true;
    };
    /// The next whole number, or the nearest end of the range.
    static const auto rounded = [](double value, double limit) {
        return std::lround(std::clamp(value, -limit, limit));
    };

    Entry("1000 points, 16-bit", 2,
          [](size_t i) {
              static_cast<void>(Zan_TransformPoints(&turns[i], kPoints, shorts.data()));
              return shorts.data();
          })
        .peer(
            "std::lround",
            [](size_t i) {
                const Zan_Matrix3& m = turns[i];
                for (Zan_Point& p : shortsByHand) {
                    const double x = p.h, y = p.v;
                    p.h = static_cast<int16_t>(rounded(x * m.m00 + y * m.m10 + m.m20, 32767));
                    p.v = static_cast<int16_t>(rounded(x * m.m01 + y * m.m11 + m.m21, 32767));
                }
                return shortsByHand.data();
            },
            same);
    Entry("1000 points, 16.16", 2,
          [](size_t i) {
              static_cast<void>(Zan_TransformFixPoints(&turns[i], kPoints, fixed.data()));
              return fixed.data();
          })
        .peer(
            "std::lround",
            [](size_t i) {
                const Zan_Matrix3& m = turns[i];
                for (Zan_FixedPoint& p : fixedByHand) {
                    const double x = p.h, y = p.v;
                    p.h = static_cast<int32_t>(rounded(x * m.m00 + y * m.m10 + m.m20 * 65536, 2147483647));
                    p.v = static_cast<int32_t>(rounded(x * m.m01 + y * m.m11 + m.m21 * 65536, 2147483647));
                }
                return fixedByHand.data();
            },
            same);
}

/// The box around a transformed rectangle.
Zan_FloatRect boxByGlm(const glm::dmat3& m, double left, double top, double right, double bottom) {
    const glm::dvec3 p[4] = {m * glm::dvec3(left, top, 1), m * glm::dvec3(right, top, 1),
                             m * glm::dvec3(right, bottom, 1), m * glm::dvec3(left, bottom, 1)};
    const glm::dvec3 low = glm::min(glm::min(p[0], p[1]), glm::min(p[2], p[3]));
    const glm::dvec3 high = glm::max(glm::max(p[0], p[1]), glm::max(p[2], p[3]));
    return {low.x, low.y, high.x, high.y};
}

void addRectangles() {
    static const Matrices3 all(48);
    static const auto rects = inputs(kManyLarge, 49, [](Random& random) {
        const int32_t left = random.whole(-1000, 1000), top = random.whole(-1000, 1000);
        return Zan_LRect{left, top, left + random.whole(1, 1000), top + random.whole(1, 1000)};
    });
    const Zan_Matrix3* m = all.zan.data();
    const glm::dmat3* g = all.glm.data();
    const Zan_LRect* r = rects.data();

    Entry("box of a rectangle, double", kManyLarge,
          [=](size_t i) {
              Zan_FloatRect box = {static_cast<double>(r[i].left), static_cast<double>(r[i].top),
                                   static_cast<double>(r[i].right), static_cast<double>(r[i].bottom)};
              Zan_TransformFloatRect(&m[i], &box, nullptr, nullptr);
              return box;
          })
        .peer(
            "glm", [=](size_t i) { return boxByGlm(g[i], r[i].left, r[i].top, r[i].right, r[i].bottom); }, Near());
    Entry("box of a rectangle, 32-bit", kManyLarge, [=](size_t i) { return Zan_TransformBounds(m[i], r[i]); })
        .peer(
            "glm, std::floor, std::ceil",
            [=](size_t i) {
                const Zan_FloatRect box = boxByGlm(g[i], r[i].left, r[i].top, r[i].right, r[i].bottom);
                return Zan_LRect{static_cast<int32_t>(std::floor(box.left)), static_cast<int32_t>(std::floor(box.top)),
                                 static_cast<int32_t>(std::ceil(box.right)),
                                 static_cast<int32_t>(std::ceil(box.bottom))};
            },
            [](const Zan_LRect& zan, const Zan_LRect& peer) {
                return zan.left == peer.left && zan.top == peer.top && zan.right == peer.right &&
                       zan.bottom == peer.bottom;
            });
}

struct Turn {
    glm::dvec3 axis, angles;
    double radians;
};

void addBuilders() {
    static const Matrices3 all3(91);
    static const Matrices4 all4(92);
    static const auto turns = inputs(kManyLarge, 93, [](Random& random) {
        const auto [x, y, z, w] = rotation(random);
        return Turn{{x, y, z + 0.1}, {random.real(-3, 3), random.real(-1.5, 1.5), random.real(-3, 3)}, 3 * w};
    });
    const Zan_Matrix3* m3 = all3.zan.data();
    const Eigen::Matrix3d* e3 = all3.eigen.data();
    const Zan_Matrix4* m4 = all4.zan.data();
    const glm::dmat4* g4 = all4.glm.data();
    const Eigen::Matrix4d* e4 = all4.eigen.data();
    const Turn* t = turns.data();

    Entry("append a turn about a centre, 3x3", kManyLarge,
          [=](size_t i) {
              Zan_Matrix3 m = m3[i];
              Zan_RotateMatrix(&m, t[i].radians * 57.29577951308232, 10, 20);
              return m;
          })
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix3d {
                Eigen::Affine2d m(e3[i]);
                m.pretranslate(Eigen::Vector2d(-10, -20)).prerotate(t[i].radians).pretranslate(Eigen::Vector2d(10, 20));
                return m.matrix();
            },
            Near());
    Entry("append a translation, 4x4", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              Zan_TranslateMatrix4(t[i].axis.x, t[i].axis.y, t[i].axis.z, &m);
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::translate(glm::dmat4(1), t[i].axis) * g4[i]; }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Affine3d m(e4[i]);
                m.pretranslate(Eigen::Vector3d(t[i].axis.x, t[i].axis.y, t[i].axis.z));
                return m.matrix();
            },
            Near());
    Entry("append a turn about an axis, 4x4", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              static_cast<void>(Zan_RotateMatrix4(t[i].axis.x, t[i].axis.y, t[i].axis.z, t[i].radians, &m));
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::rotate(glm::dmat4(1), t[i].radians, t[i].axis) * g4[i]; }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Affine3d m(e4[i]);
                const Eigen::Vector3d axis(t[i].axis.x, t[i].axis.y, t[i].axis.z);
                m.prerotate(Eigen::AngleAxisd(t[i].radians, axis.normalized()));
                return m.matrix();
            },
            Near());
    Entry("append turns by three angles, 4x4", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 m = m4[i];
              Zan_RotateMatrix4XYZ(t[i].angles.x, t[i].angles.y, t[i].angles.z, &m);
              return m;
          })
        .peer(
            "glm", [=](size_t i) { return glm::eulerAngleXYZ(t[i].angles.x, t[i].angles.y, t[i].angles.z) * g4[i]; },
            Near());
    Entry("look at a point", kManyLarge,
          [=](size_t i) {
              const Zan_Vector3T<double> eye(t[i].axis.x, t[i].axis.y, t[i].axis.z), up(0, 1, 0);
              const Zan_Vector3T<double> target(t[i].angles.x, t[i].angles.y, t[i].angles.z);
              return Zan_LookAtMatrix(eye, target, up);
          })
        .peer(
            "glm", [=](size_t i) { return glm::lookAtLH(t[i].axis, t[i].angles, glm::dvec3(0, 1, 0)); },
            // glm gives the transform in the other direction, with the way to the eye in it.
            [](const Zan_Matrix4& zan, const glm::dmat4& peer) {
                const glm::dmat3 turn(glm::transpose(peer));
                const double rows[9] = {zan.m00, zan.m01, zan.m02, zan.m10, zan.m11,
                                        zan.m12, zan.m20, zan.m21, zan.m22};
                return Near().arrays(rows, &turn, 9);
            });
}

void addInverses() {
    static const Matrices3 all3(94);
    static const Matrices4 all4(95);
    const Zan_Matrix3* m3 = all3.zan.data();
    const glm::dmat3* g3 = all3.glm.data();
    const Eigen::Matrix3d* e3 = all3.eigen.data();
    const Zan_Matrix4* m4 = all4.zan.data();
    const glm::dmat4* g4 = all4.glm.data();
    const Eigen::Matrix4d* e4 = all4.eigen.data();

    Entry("3x3 inverse", kManyLarge,
          [=](size_t i) {
              Zan_Matrix3 inverse;
              static_cast<void>(Zan_InverseMatrixQuiet(&m3[i], &inverse, nullptr));
              return inverse;
          })
        .peer(
            "glm", [=](size_t i) { return glm::inverse(g3[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix3d { return e3[i].inverse(); }, Near())
        .peer(
            "Eigen, partial pivoting", [=](size_t i) -> Eigen::Matrix3d { return e3[i].partialPivLu().inverse(); },
            Near());
    Entry("4x4 inverse", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 inverse;
              static_cast<void>(Zan_InverseMatrix4Quiet(&m4[i], &inverse, nullptr));
              return inverse;
          })
        .peer(
            "glm", [=](size_t i) { return glm::inverse(g4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return e4[i].inverse(); }, Near());
    Entry("4x4 normal matrix", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4 normal;
              static_cast<void>(Zan_CalcNormalMatrix4Quiet(&m4[i], &normal, nullptr));
              return normal;
          })
        .peer(
            "glm", [=](size_t i) { return glm::inverseTranspose(g4[i]); }, Near())
        .peer(
            "Eigen", [=](size_t i) -> Eigen::Matrix4d { return e4[i].inverse().transpose(); }, Near());
}

struct GlmDecomposition {
    glm::dvec3 scale, translation, skew;
    glm::dquat orientation;
    glm::dvec4 perspective;
};

void addRotations() {
    static const Matrices4 all(96), turns(97, [](Random&random) {
        const auto [x, y, z, w] = rotation(random);
        return std::array<double, 16>{1 - 2 * (y * y + z * z),
                                      2 * (x * y + z * w),
                                      2 * (x * z - y * w),
                                      0,
                                      2 * (x * y - z * w),
                                      1 - 2 * (x * x + z * z),
                                      2 * (y * z + x * w),
                                      0,
                                      2 * (x * z + y * w),
                                      2 * (y * z - x * w),
                                      1 - 2 * (x * x + y * y),
                                      0,
                                      0,
                                      0,
                                      0,
                                      1};
    });
    static const auto first = inputs(kMany, 98, rotation), second = inputs(kMany, 99, rotation);
    static const auto zan1 = sameBytes<Zan_Quat>(first), zan2 = sameBytes<Zan_Quat>(second);
    // Both keep x, y, z, w in this order.
    static const auto glm1 = sameBytes<glm::dquat>(first), glm2 = sameBytes<glm::dquat>(second);
    static const auto eigen1 = sameBytes<Eigen::Quaterniond>(first), eigen2 = sameBytes<Eigen::Quaterniond>(second);
    const Zan_Matrix4 *m = all.zan.data(), *t = turns.zan.data();
    const glm::dmat4 *g = all.glm.data(), *gt = turns.glm.data();
    const Eigen::Matrix4d* et = turns.eigen.data();
    const Zan_Quat *q1 = zan1.data(), *q2 = zan2.data();
    const glm::dquat *g1 = glm1.data(), *g2 = glm2.data();
    const Eigen::Quaterniond *e1 = eigen1.data(), *e2 = eigen2.data();

    Entry("4x4 decomposition", kManyLarge,
          [=](size_t i) {
              Zan_Matrix4Decomp parts;
              unsigned char failed = 0;
              static_cast<void>(Zan_DecomposeMatrix4(&m[i], &parts, &failed));
              return parts;
          })
        .peer(
            "glm::decompose",
            [=](size_t i) {
                GlmDecomposition parts;
                glm::decompose(g[i], parts.scale, parts.orientation, parts.translation, parts.skew, parts.perspective);
                return parts;
            },
            [](const Zan_Matrix4Decomp& zan, const GlmDecomposition& peer) {
                return Near().arrays(&zan.tx, &peer.translation, 3) && Near().arrays(&zan.sx, &peer.scale, 3);
            });
    Entry("quaternion to matrix", kMany,
          [=](size_t i) {
              Zan_Matrix4 turn;
              Zan_QuatToMatrix4(&q1[i], &turn);
              return turn;
          })
        .peer(
            "glm", [=](size_t i) { return glm::mat4_cast(g1[i]); }, Near())
        .peer(
            "Eigen",
            [=](size_t i) -> Eigen::Matrix4d {
                Eigen::Matrix4d turn = Eigen::Matrix4d::Identity();
                turn.topLeftCorner<3, 3>() = e1[i].toRotationMatrix();
                return turn;
            },
            Near());
    const auto sameTurn = [](const Zan_Quat& zan, const auto& peer) {
        const double sign = zan.w * peer.w() < 0 ? -1 : 1, tolerance = 1e-9;
        return std::abs(zan.x - sign * peer.x()) < tolerance && std::abs(zan.y - sign * peer.y()) < tolerance &&
               std::abs(zan.z - sign * peer.z()) < tolerance && std::abs(zan.w - sign * peer.w()) < tolerance;
    };
    const auto sameGlmTurn = [=](const Zan_Quat& zan, const glm::dquat& peer) {
        return sameTurn(zan, Eigen::Quaterniond(peer.w, peer.x, peer.y, peer.z));
    };
    Entry("matrix to quaternion", kManyLarge,
          [=](size_t i) {
              Zan_Quat q;
              Zan_Matrix4ToQuat(&t[i], &q);
              return q;
          })
        .peer(
            "glm", [=](size_t i) { return glm::quat_cast(gt[i]); }, sameGlmTurn)
        .peer(
            "Eigen", [=](size_t i) { return Eigen::Quaterniond(et[i].topLeftCorner<3, 3>()); }, sameTurn);
    Entry("slerp", kMany,
          [=](size_t i) {
              Zan_Quat q;
              Zan_Slerp(&q1[i], &q2[i], 0.3, &q);
              return q;
          })
        .peer(
            "glm", [=](size_t i) { return glm::slerp(g1[i], g2[i], 0.3); }, sameGlmTurn)
        .peer(
            "Eigen", [=](size_t i) { return e1[i].slerp(0.3, e2[i]); }, sameTurn);
}

}  // namespace

void addMatrixEntries() {
    addValues();
    addPoints2();
    addPoints3();
    addPoints4();
    addIntegerPoints();
    addRectangles();
    addBuilders();
    addInverses();
    addRotations();
}

}  // namespace zan_bench
