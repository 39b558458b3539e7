// An entry is one operation, in zan's form and in those of its peers. A peer is what a host would use instead; each
// peer has a row in the table. All run on the same inputs, and their results are compared before they are timed.
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

/// Compares results: they are equal.
struct Equal {
    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
        return a == b;
    }
};

/// Compares numbers, or records of doubles with the same layout: they differ by at most tolerance * max(1, |a|, |b|),
/// since a peer may add and divide in another order.
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

/// A view of an array that an operation has written. Equal when all bytes are.
template <class T>
struct ArrayView {
    const T* data;
    size_t count;

    bool operator==(const ArrayView& other) const {
        return count == other.count && std::memcmp(data, other.data, count * sizeof(T)) == 0;
    }
};
template <class Container>
auto viewOf(const Container& container) {
    return ArrayView<typename Container::value_type>{container.data(), container.size()};
}

/// Near, for arrays of doubles or of records of doubles.
struct NearArrays {
    double tolerance = 1e-9;

    template <class A, class B>
    bool operator()(const ArrayView<A>& a, const ArrayView<B>& b) const {
        static_assert(sizeof(A) == sizeof(B) && sizeof(A) % sizeof(double) == 0);
        return a.count == b.count && Near{tolerance}.arrays(a.data, b.data, a.count * (sizeof(A) / sizeof(double)));
    }
};

/// A hash (FNV-1a) of the bytes of results, to compare them with those of another process.
class Digest {
public:
    template <class T>
    void add(const T& record) {
        bytes(&record, sizeof record);
    }
    template <class T>
    void add(const ArrayView<T>& array) {
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

/// True in zan_bench_plain.
extern const bool kPlainKernels;

#ifdef ZAN_BENCH_NATIVE
inline constexpr bool kNative = true;
#else
inline constexpr bool kNative = false;
#endif

/// Registers its benchmarks when it is destroyed. Its functions take the index of an input, 0 to count - 1, and return
/// the result; they are copied, so they hold their inputs by pointer or by value. Three programs measure:
/// - zan_bench, built for any processor: zan, its plain form and the peers;
/// - zan_bench_native, built for this processor: the peers;
/// - zan_bench_plain, linked with zan's plain kernels: zan alone, in the entries that have kernels.
template <class Function>
class Entry {
public:
    /// @param elements  elements of an array that one call processes: times are per element
    Entry(std::string operation, size_t count, Function zan, size_t elements = 1)
        : operation_(std::move(operation)), count_(count), elements_(elements), zan_(std::move(zan)) {}

    /// The operation has kernels: its plain form is zan itself in zan_bench_plain.
    Entry& hasKernels() {
        hasKernels_ = true;
        return *this;
    }
    /// The plain form of an operation without kernels. It must give the same bits.
    template <class Plain>
    Entry& plain(const Plain& function) {
        const auto sameBits = [](const auto& zan, const auto& plain) {
            Digest a, b;
            a.add(zan);
            b.add(plain);
            return a.value() == b.value();
        };
        if (!kNative && !kPlainKernels) compare("plain", function, sameBits);
        return *this;
    }
    /// @param agree  compares a result of zan with one of the peer
    template <class Peer, class Agree = Equal>
    Entry& peer(const std::string& name, const Peer& function, Agree agree = {}) {
        if (!kPlainKernels) compare(name, function, agree);
        return *this;
    }

    ~Entry() {
        if (kPlainKernels && !hasKernels_) return;
        // Each function runs once per input, so that functions that write to their inputs start from the same state in
        // every process.
        Digest digest;
        for (size_t i = 0; i < count_; ++i) {
            const Result result = zan_(i);
            digest.add(result);
            for (const auto& compare : comparisons_) compare(result, i);
        }
        for (const auto& add : registrations_) add();
        if (kNative) return;
        add(kPlainKernels ? "plain" : "zan", zan_, "", hasKernels_ ? std::to_string(digest.value()) : "");
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

private:
    using Result = std::invoke_result_t<Function, size_t>;

    template <class Other, class Agree>
    void compare(const std::string& name, const Other& function, const Agree& agree) {
        const auto difference = std::make_shared<std::string>();
        comparisons_.push_back([=](const Result& ours, size_t i) {
            const auto theirs = function(i);
            if (!difference->empty() || agree(ours, theirs)) return;
            *difference = std::string("zan and ").append(name).append(" differ at input ").append(std::to_string(i));
        });
        registrations_.push_back([=, this] { add(name, function, *difference, ""); });
    }
    template <class Timed>
    void add(const std::string& side, const Timed& function, const std::string& difference,
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
                    auto result = timed(i);
                    benchmark::DoNotOptimize(result);
                }
            }
            state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(count * elements));
            state.SetLabel(label);
        };
        benchmark::RegisterBenchmark((operation_ + "/" + side).c_str(), measure);
    }

    std::string operation_;
    size_t count_, elements_;
    Function zan_;
    bool hasKernels_ = false;
    std::vector<std::function<void(const Result&, size_t)>> comparisons_;
    std::vector<std::function<void()>> registrations_;
};

// Each registers the entries of one file, in the order of the table.
void addScalarTables();
void addScalarEntries();
void addGeom2dEntries();
void addMatrixProducts();
void addMatrixPoints();
void addMatrixIntegerPoints();
void addMatrixRectangles();
void addMatrixBuilders();
void addMatrixInverses();
void addMatrixDecompositions();
void addSpaceEntries();
void addPolyHitTests();
void addPolyHulls();
void addPolyClips();
void addPolyLayers();

}  // namespace zan_bench

#endif  // ZAN_BENCH_ENTRIES_H
