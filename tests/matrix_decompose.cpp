// Decomposition into translation, scale, shear and angles, and what cannot be decomposed.
#include "tests/support/host_reports.h"
#include "tests/support/matrices.h"

namespace {

const char* const kCannotDecompose = "0x11002D sev 8: unable to decompose matrix.";

int32_t decompose(RotationOrder order, const Zan_Matrix4& m, Zan_Matrix4Decomp* parts, unsigned char* failed) {
    return order == RotationOrder::kXYZ ? Zan_DecomposeMatrix4(&m, parts, failed)
                                        : Zan_DecomposeMatrix4ZYX(&m, parts, failed);
}

// Scale and shear, then rotation, then translation. For a reflection the scales are negated, the shears are not.
Zan_Matrix4 compose(const Zan_Matrix4Decomp& d, RotationOrder order) {
    const double sign = d.sx < 0 ? -1 : 1;
    const Zan_Matrix4 scaleAndShear =
        linear({d.sx, 0, 0, sign * d.shearXY, d.sy, 0, sign * d.shearXZ, sign * d.shearYZ, d.sz});
    Zan_Matrix4 m = product(scaleAndShear, rotation(d.rx, d.ry, d.rz, order));
    m.Translate(d.tx, d.ty, d.tz);
    return m;
}

}  // namespace

TEST_CASE("a decomposed matrix composes again, with the canonical signs and angles") {
    Random random(451);
    for (int round = 0; round < 2000; ++round) {
        const RotationOrder order = round % 2 == 0 ? RotationOrder::kXYZ : RotationOrder::kZYX;
        const bool isRotation = random.below(2) == 0;
        // ry at a quarter turn, on both sides of the threshold beside it, and anywhere.
        const double distances[] = {0, 1e-7, 9.9e-6, 1.01e-5, 1e-4, 1e-2, random.plain(0, 1)};
        const double distance = random.among(distances);
        const double ry = (random.below(2) == 0 ? 1 : -1) * (kPi / 2 - distance);
        const auto affine = [&](int i, int j) { return j < 3 ? random.plain(-2, 2) : i == 3 ? 1.0 : 0.0; };
        const Zan_Matrix4 first = isRotation ? Zan_Matrix4(true) : fill<Zan_Matrix4>(affine);
        const Zan_Matrix4 m = product(first, rotation(random.plain(-kPi, kPi), ry, random.plain(-kPi, kPi), order));
        const auto timesW = fill<Zan_Matrix4>([&](int i, int j) { return at(m, i, j) * -4.0; });

        Zan_Matrix4Decomp parts;
        unsigned char failed = 7;
        CHECK(decompose(order, timesW, &parts, &failed) == 0);
        CHECK(failed == 7);
        CAPTURE(round, parts.rx, parts.ry, parts.rz);
        const double tolerance = std::fabs(std::cos(parts.ry)) < 1e-5 ? 8e-5 : 1e-9;
        CHECK(greatestDifference(compose(parts, order), m) < tolerance);
        const bool reflection = m.Determinant() < 0;
        CHECK((parts.sx < 0) == reflection);
        CHECK((parts.sy < 0) == reflection);
        CHECK((parts.sz < 0) == reflection);
        CHECK(std::fabs(parts.ry) <= kPi / 2);
        const bool gimbalLock = isRotation && distance < 1e-5;
        const double lockedAngle = order == RotationOrder::kXYZ ? parts.rx : parts.rz;
        CHECK((lockedAngle == 0) == gimbalLock);
    }
}

TEST_CASE("a matrix whose 3x3 part is zero has the angles 0") {
    const auto m = fill<Zan_Matrix4>([](int i, int) { return i == 3 ? 1.0 : 0.0; });
    Zan_Matrix4Decomp parts;
    m.Decompose(&parts);
    CHECK(greatestDifference(Vector3(parts.rx, parts.ry, parts.rz), Vector3(0, 0, 0)) == 0);
}

TEST_CASE("only an affine matrix can be decomposed, after the division by m33") {
    const Zan_Matrix4 one(true);
    const Zan_Matrix4 tinyW = with(one, 3, 3, 1e-300);
    struct Row {
        const char* what;
        Zan_Matrix4 m;
        int32_t code;
    };
    const Row rows[] = {
        {"m33 is -0", with(one, 3, 3, -0.0), Zan_Err_CannotDecompose},
        {"m33 is NaN", with(one, 3, 3, kNaN), Zan_Err_CannotDecompose},
        {"m03 is not 0", with(one, 0, 3, 0.001), Zan_Err_CannotDecompose},
        {"m13 is the smallest number", with(one, 1, 3, 5e-324), Zan_Err_CannotDecompose},
        {"m23 is NaN", with(one, 2, 3, kNaN), Zan_Err_CannotDecompose},
        {"m23 is -0", with(one, 2, 3, -0.0), 0},
        {"m03 / m33 underflows to 0", with(with(one, 0, 3, 5e-324), 3, 3, 4.0), 0},
        {"m13 / m33 is 1", with(tinyW, 1, 3, 1e-300), Zan_Err_CannotDecompose},
        {"m23 / m33 is 1", with(tinyW, 2, 3, 1e-300), Zan_Err_CannotDecompose},
    };
    HostReports host;
    for (const Row& row : rows) {
        CAPTURE(row.what);
        const bool fails = row.code != 0;
        for (const RotationOrder order : {RotationOrder::kXYZ, RotationOrder::kZYX}) {
            Zan_Matrix4Decomp parts;
            unsigned char failed = 0;
            CHECK(decompose(order, row.m, &parts, &failed) == row.code);
            CHECK(failed == (fails ? 1 : 0));
            CHECK(host.takeAll().empty());
            CHECK(sameDoubles(parts, Zan_Matrix4Decomp{}) == fails);
            Zan_Matrix4Decomp member;
            const auto decomposeMember = [&] {
                order == RotationOrder::kXYZ ? row.m.Decompose(&member) : row.m.DecomposeZYX(&member);
            };
            CHECK(thrownBy(decomposeMember) == row.code);
            CHECK(host.takeAll() == (fails ? kCannotDecompose : ""));
            CHECK(doubles(member) == doubles(parts));
        }
    }
}

TEST_CASE("a matrix that cannot be decomposed is reported, and its angles are 0") {
    HostReports host;
    const Zan_Matrix4 m = with(Zan_Matrix4(true), 3, 3, 0);
    double rx = 9, ry = 9, rz = 9;
    CHECK(Zan_GetOrderedXYZRotationFromMatrix(&m, &rx, &ry, &rz) == Zan_Err_CannotDecompose);
    CHECK(doubles(Vector3(rx, ry, rz)) == doubles(Vector3(0, 0, 0)));
    CHECK(host.takeAll() == kCannotDecompose);
}

TEST_CASE("gimbal lock of DecomposeZYX: rx has the whole angle, unless (2, 1) is near zero") {
    // The rotation has element (1, 1) = b and element (2, 1) = -a.
    struct Row {
        const char* what;
        double a, b, rx, rz;
    };
    const Row rows[] = {
        {"(1, 1) is 1", 0, 1, 0, 0},
        {"(1, 1) is -1: rz is pi", 0, -1, 0, kPi},
        {"the magnitude of (2, 1) is below 1e-5, (1, 1) not quite -1", 9e-6, -1 + 4.05e-11, 0, 0},
        {"the magnitude of (2, 1) is above 1e-5: rx has the whole angle", 1.1e-5, -1 + 6.05e-11, kPi - 1.1e-5, 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        Zan_Matrix4Decomp parts;
        linear({0, 0, -1, row.a, row.b, 0, row.b, -row.a, 0}).DecomposeZYX(&parts);
        const Vector3 angles(parts.rx, parts.ry, parts.rz);
        CHECK(greatestDifference(angles, Vector3(row.rx, kPi / 2, row.rz)) < 1e-9);
    }
}

TEST_CASE("an axis so short that its normalized coordinate exceeds 1 still has an angle") {
    for (const double sign : {1.0, -1.0}) {
        CAPTURE(sign);
        Zan_Matrix4Decomp parts;
        linear({0, sign, 0, 0, 0, 1, sign * 6.212744e-155, 0, 0}).Decompose(&parts);
        CHECK(std::fabs(parts.ry - sign * kPi / 2) < 1e-9);
    }
}
