// Shared by the benchmarks that transform arrays of points. A benchmark transforms its points in place, by a matrix and
// then by the inverse, so that the coordinates stay in range over all repetitions.
#ifndef ZAN_BENCH_MATRIX_POINTS_H
#define ZAN_BENCH_MATRIX_POINTS_H

#include "entries.h"
#include "zan/matrix.h"

#include <Eigen/Dense>

#include <algorithm>
#include <cstring>
#include <vector>

namespace zan_bench {

/// Number of short arrays ("blocks") in an entry, and of matrices in a group of withInverses.
inline constexpr size_t kBlocks = 256;

/// The matrices in groups of at most kBlocks, each group followed by the inverses of its matrices.
template <class Matrix>
std::vector<Matrix> withInverses(const std::vector<Matrix>& matrices) {
    constexpr int n = sizeof(Matrix) == sizeof(Zan_Matrix3) ? 3 : 4;
    std::vector<Matrix> all;
    for (size_t first = 0; first < matrices.size(); first += kBlocks) {
        const size_t last = std::min(first + kBlocks, matrices.size());
        all.insert(all.end(), &matrices[first], &matrices[first] + (last - first));
        for (size_t i = first; i < last; ++i) {
            Eigen::Matrix<double, n, n> m;
            std::memcpy(m.data(), &matrices[i], sizeof(Matrix));
            const Eigen::Matrix<double, n, n> inverse = m.inverse();
            std::memcpy(static_cast<void*>(&all.emplace_back()), inverse.data(), sizeof(Matrix));
        }
    }
    return all;
}

/// The function of an entry: transforms the whole array by matrix i.
template <class Matrix, class Point, class Loop>
auto onArray(const std::vector<Matrix>& matrices, std::vector<Point>& points, Loop loop) {
    return [&matrices, &points, loop](size_t i) {
        loop(matrices[i], points.size(), points.data());
        return viewOf(points);
    };
}

}  // namespace zan_bench

#endif  // ZAN_BENCH_MATRIX_POINTS_H
