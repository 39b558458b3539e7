// Records that hold only doubles, in checks: compared by their bits, or by their greatest difference, and printed.
#ifndef ZAN_TESTS_SUPPORT_DOUBLES_H
#define ZAN_TESTS_SUPPORT_DOUBLES_H

#include "tests/support/same_bits.h"

#include <catch2/catch.hpp>

#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <string>

template <class Record>
using DoublesOf = std::array<double, sizeof(Record) / sizeof(double)>;

/// Compared by sameDoubles. CHECK(doubles(a) == doubles(b)) prints every number when it fails.
template <class Record>
struct Doubles {
    Record record;
    friend bool operator==(const Doubles& a, const Doubles& b) { return sameDoubles(a.record, b.record); }
};
template <class Record>
Doubles<Record> doubles(const Record& record) {
    return {record};
}

/// The greatest absolute difference of two corresponding doubles; infinite when a difference is NaN.
template <class Record>
double greatestDifference(const Record& a, const Record& b) {
    const auto x = std::bit_cast<DoublesOf<Record>>(a);
    const auto y = std::bit_cast<DoublesOf<Record>>(b);
    double greatest = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        const double difference = std::fabs(x[i] - y[i]);
        if (!(difference <= greatest)) greatest = std::isnan(difference) ? INFINITY : difference;
    }
    return greatest;
}

template <class Record>
struct Catch::StringMaker<Doubles<Record>> {
    static std::string convert(const Doubles<Record>& doubles) {
        std::string text;
        for (const double x : std::bit_cast<DoublesOf<Record>>(doubles.record)) {
            char number[32];
            std::snprintf(number, sizeof number, "%.17g", x);
            text += (text.empty() ? "{" : ", ") + std::string(number);
        }
        return text + "}";
    }
};

#endif  // ZAN_TESTS_SUPPORT_DOUBLES_H
