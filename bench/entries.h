// An entry: one capability by zan, and the same by each peer, what a host would use instead. Both sides answer on the
// same inputs and are compared before they are timed.
#ifndef ZAN_BENCH_ENTRIES_H
#define ZAN_BENCH_ENTRIES_H

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

#include "inputs.h"

namespace zan_bench {

/// The answers are equal.
struct Same {
    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
        return a == b;
    }
};

/// The answers, numbers or records of doubles laid out alike, differ by no more than a part of the larger number, or of
/// 1: the peer adds and divides in another order.
struct Near {
    double tolerance = 1e-9;

    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
        if constexpr (std::is_arithmetic_v<A> && std::is_arithmetic_v<B>) {
            return near(static_cast<double>(a), static_cast<double>(b));
        } else {
            static_assert(sizeof(A) == sizeof(B) && sizeof(A) % sizeof(double) == 0);
            return arrays(&a, &b, sizeof(A) / sizeof(double));
        }
    }
    bool arrays(const void* a, const void* b, size_t count) const {
        for (size_t i = 0; i < count; ++i) {
            if (!near(element(a, i), element(b, i))) return false;
        }
        return true;
    }

private:
    static double element(const void* record, size_t i) {
        double value = 0;
        std::memcpy(&value, static_cast<const char*>(record) + i * sizeof value, sizeof value);
        return value;
    }
    bool near(double a, double b) const {
        return std::abs(a - b) <= tolerance * std::max({1.0, std::abs(a), std::abs(b)});
    }
};

/// The answers point to count doubles each.
struct NearArrays {
    size_t count;
    double tolerance = 1e-9;

    template <class A, class B>
    bool operator()(const A* a, const B* b) const {
        return Near{tolerance}.arrays(a, b, count);
    }
};

/// Registers itself. The functions take the number of an input, 0 to count - 1, and give the answer; they must hold
/// what they read by pointer or by value.
template <class Function>
class Entry {
public:
    Entry(std::string capability, size_t count, Function zan)
        : capability_(std::move(capability)), count_(count), zan_(std::move(zan)) {
        add("zan", zan_, "");
    }

    /// @param agree  whether an answer of zan and one of the peer may pass for the same
    template <class Peer, class Agree = Same>
    Entry& peer(const std::string& name, const Peer& function, Agree agree = {}) {
        std::string difference;
        for (size_t i = 0; i < count_ && difference.empty(); ++i) {
            // In this order: functions that change what they work on find both copies in the same state.
            const auto ours = zan_(i);
            const auto theirs = function(i);
            if (!agree(ours, theirs)) difference = "zan and " + name + " differ at input " + std::to_string(i);
        }
        add(name, function, difference);
        return *this;
    }

private:
    template <class Timed>
    void add(const std::string& who, const Timed& function, const std::string& difference) const {
        const auto run = [function, difference, count = count_](benchmark::State& state) {
            if (!difference.empty()) {
                state.SkipWithError(difference.c_str());
                return;
            }
            Timed timed = function;
            for (auto pass : state) {
                static_cast<void>(pass);
                for (size_t i = 0; i < count; ++i) {
                    auto answer = timed(i);
                    benchmark::DoNotOptimize(answer);
                }
            }
            state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(count));
        };
        benchmark::RegisterBenchmark((capability_ + "/" + who).c_str(), run);
    }

    std::string capability_;
    size_t count_;
    Function zan_;
};

// One per room.
void addFrameEntries();
void addGeom2dEntries();
void addMatrixEntries();
void addPolyEntries();
void addScalarEntries();
void addSpaceEntries();

}  // namespace zan_bench

#endif  // ZAN_BENCH_ENTRIES_H
