// An entry: one capability by zan, and the same by each peer, what a host would use instead. Both sides answer on the
// same inputs and are compared before they are timed.
#ifndef ZAN_BENCH_ENTRIES_H
#define ZAN_BENCH_ENTRIES_H

#include "inputs.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

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

/// The numbers that an operation on an array left there. They are equal when all bytes are.
template <class T>
struct Array {
    const T* data;
    size_t count;

    bool operator==(const Array& other) const {
        return count == other.count && std::memcmp(data, other.data, count * sizeof(T)) == 0;
    }
};
template <class Container>
auto arrayOf(const Container& container) {
    return Array<typename Container::value_type>{container.data(), container.size()};
}

/// The answers are arrays of doubles, or of records of doubles.
struct NearArrays {
    double tolerance = 1e-9;

    template <class A, class B>
    bool operator()(const Array<A>& a, const Array<B>& b) const {
        static_assert(sizeof(A) == sizeof(B) && sizeof(A) % sizeof(double) == 0);
        return a.count == b.count && Near{tolerance}.arrays(a.data, b.data, a.count * (sizeof(A) / sizeof(double)));
    }
};

/// The bytes of an answer as one number, for a comparison with the answer of another process.
class Digest {
public:
    template <class T>
    void add(const T& record) {
        bytes(&record, sizeof record);
    }
    template <class T>
    void add(const Array<T>& array) {
        bytes(array.data, array.count * sizeof(T));
    }
    uint64_t value() const { return value_; }

private:
    void bytes(const void* data, size_t count) {
        for (const auto* p = static_cast<const unsigned char*>(data); count > 0; --count) {
            value_ = (value_ ^ *p++) * 0x100000001B3;
        }
    }
    uint64_t value_ = 0xCBF29CE484222325;
};

/// True in the program that is linked with zan's plain kernels.
extern const bool kPlainKernels;

#ifdef ZAN_BENCH_NATIVE
inline constexpr bool kNative = true;
#else
inline constexpr bool kNative = false;
#endif

/// Registers itself. The functions take the number of an input, 0 to count - 1, and give the answer; they must hold
/// what they read by pointer or by value. What is timed is zan and its plain form where the program is built for any
/// processor, and the peers in either build; with zan's plain kernels forced, these alone.
template <class Function>
class Entry {
public:
    /// @param elements  what a call works on: times are given for one of them
    Entry(std::string capability, size_t count, Function zan, size_t elements = 1)
        : capability_(std::move(capability)), count_(count), elements_(elements), zan_(std::move(zan)) {}

    /// zan with its plain kernels is the plain form: measured in a process of its own, with the same answers.
    Entry& kernels() {
        byKernels_ = true;
        return *this;
    }
    /// The plain form of the operation, which gives the same bits.
    template <class Plain>
    Entry& plain(const Plain& function) {
        const auto sameBits = [](const auto& zan, const auto& stated) {
            Digest a, b;
            a.add(zan);
            b.add(stated);
            return a.value() == b.value();
        };
        if (!kNative && !kPlainKernels) compare("plain", function, sameBits);
        return *this;
    }
    /// @param agree  whether an answer of zan and one of the peer may pass for the same
    template <class Peer, class Agree = Same>
    Entry& peer(const std::string& name, const Peer& function, Agree agree = {}) {
        if (!kPlainKernels) compare(name, function, agree);
        return *this;
    }

    ~Entry() {
        if (kPlainKernels && !byKernels_) return;
        // One round for all, so that functions that change what they work on find every copy in the same state, in
        // every process.
        Digest digest;
        for (size_t i = 0; i < count_; ++i) {
            const Answer answer = zan_(i);
            digest.add(answer);
            for (const auto& compare : comparisons_) compare(answer, i);
        }
        for (const auto& add : others_) add();
        if (kNative) return;
        add(kPlainKernels ? "plain" : "zan", zan_, "", byKernels_ ? std::to_string(digest.value()) : "");
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

private:
    using Answer = std::invoke_result_t<Function, size_t>;

    template <class Other, class Agree>
    void compare(const std::string& name, const Other& function, const Agree& agree) {
        const auto difference = std::make_shared<std::string>();
        comparisons_.push_back([=](const Answer& ours, size_t i) {
            const auto theirs = function(i);
            if (!difference->empty() || agree(ours, theirs)) return;
            *difference = std::string("zan and ").append(name).append(" differ at input ").append(std::to_string(i));
        });
        others_.push_back([=, this] { add(name, function, *difference, ""); });
    }
    template <class Timed>
    void add(const std::string& who, const Timed& function, const std::string& difference,
             const std::string& label) const {
        const auto measure = [=, count = count_, elements = elements_](benchmark::State& state) {
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
            state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(count * elements));
            state.SetLabel(label);
        };
        benchmark::RegisterBenchmark((capability_ + "/" + who).c_str(), measure);
    }

    std::string capability_;
    size_t count_, elements_;
    Function zan_;
    bool byKernels_ = false;
    std::vector<std::function<void(const Answer&, size_t)>> comparisons_;
    std::vector<std::function<void()>> others_;
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
