// A batch of calls of one operation, and the 64-bit sum of their results, which every compiler, system and kernel must
// reproduce. Arguments are drawn by their types. The sum covers the returned value, what non-const pointers and
// references point to after the call, the object of a member function, the number of each report, and a thrown code.
// All NaNs count as equal.
#ifndef ZAN_TOOLS_SELFCHECK_BATCH_H
#define ZAN_TOOLS_SELFCHECK_BATCH_H

#include "zan/platform/kelvora_point.h"
#include "zan/zan.h"

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace selfcheck {

template <class T, class... Others>
inline constexpr bool kOneOf = (std::is_same_v<T, Others> || ...);

/// A value of the type of all fields of a record T: double, float, int32_t or int16_t.
template <class T>
auto numberIn() {
    if constexpr (std::is_arithmetic_v<T>) {
        return T{};
    } else if constexpr (kOneOf<T, Zan_Point, Zan_Rect, Zan_WHRect>) {
        return int16_t{};
    } else if constexpr (kOneOf<T, Zan_LPoint, Zan_FixedPoint, Zan_LRect, Zan_FixedRect, Zan_Ratio>) {
        return int32_t{};
    } else if constexpr (kOneOf<T, Zan_Vector2T<float>, kelvora::geom::PointT<float>>) {
        return float{};
    } else {
        return double{};
    }
}
template <class T>
using NumberIn = decltype(numberIn<T>());

/// Numbers at which rounding, range tests and tolerances change their answer. Not shared with the lists of the
/// tests, since every golden sum depends on these.
// clang-format off
inline constexpr double kNastyDoubles[] = {
    0.0, -0.0, 1.0, -1.0, 0.5, -0.5, 1.5, -2.5, 1 - 0x1p-53, 1 + 0x1p-52,
    5e-324, -5e-324, 0x1p-1022, 1e-300, 1e300,
    1e-12, -1e-12, 1e-12 - 0x1p-92, 1e-16, 1e-20, 0.1, 0.1 - 0x1p-56,
    32766.0, 32766.5, 32767.0, 32767.5, -32768.0, -32768.5,
    2147483646.5, 2147483647.0, 2147483647.5, 2147483648.0, -2147483648.0, -2147483648.5, 0x1p53,
    DBL_MAX, HUGE_VAL, -HUGE_VAL, NAN};
inline constexpr int32_t kNastyInts[] = {
    0, 1, -1, 2, -2, -32769, 32767, -32768, 32768, 65535, 65536, -65536,
    0x3FFFFFFF, 0x40000000, -0x40000000, -0x40000001, 0x7FFF8000, 0x7FFF0001,
    INT32_MAX, INT32_MAX - 1, INT32_MIN, INT32_MIN + 1};
// clang-format on

/// Inclusive limits of integer arguments; none when low is above high.
struct IntegerRange {
    int32_t low, high;
};
inline constexpr IntegerRange kAnyInteger = {0, -1};
inline constexpr IntegerRange kSmallInteger = {-1, 8};  ///< a count of array elements, a selector or an index; or -1
inline constexpr IntegerRange kCorner = {0, 3};         ///< a corner of a layer

/// Draws the arguments of case n, which depend on n alone. Uses exact arithmetic only, so that all machines draw the
/// same.
class Draw {
public:
    explicit Draw(uint64_t n) : state_(n * 0xD1342543DE82EF95), mood_(n % 4) {}

    uint64_t bits() {  // splitmix64 (Steele, Lea and Flood, 2014)
        uint64_t z = state_ += 0x9E3779B97F4A7C15;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
        return z ^ (z >> 31);
    }
    int32_t below(int32_t limit) { return static_cast<int32_t>(bits() >> 33) % limit; }

    /// By n % 4: on a coarse grid, so that values coincide; of medium size; of any size; from the lists above.
    template <class T>
    T number() {
        if constexpr (std::is_same_v<T, bool>) {
            return below(2) != 0;
        } else if constexpr (std::is_floating_point_v<T>) {
            const double unit = static_cast<double>(static_cast<int64_t>(bits()) >> 11) * 0x1p-52;
            if (mood_ == 0) return static_cast<T>(below(9) - 4) / 2;
            if (mood_ == 3 && below(3) == 0) {
                const T nasty = static_cast<T>(kNastyDoubles[bits() % std::size(kNastyDoubles)]);
                finite_ = finite_ && std::isfinite(nasty);
                return nasty;
            }
            return static_cast<T>(std::ldexp(unit, mood_ == 1 ? 7 : below(40) - 8));
        } else {
            if (mood_ == 0) return static_cast<T>(below(9) - 4);
            if (mood_ == 3) return static_cast<T>(kNastyInts[bits() % std::size(kNastyInts)]);
            return static_cast<T>(static_cast<int64_t>(bits()) >> (mood_ == 1 ? 52 : 32 + below(31)));
        }
    }

    template <class T>
    void fill(T& record) {
        using Number = NumberIn<T>;
        Number numbers[sizeof(T) / sizeof(Number)];
        for (Number& n : numbers) n = number<Number>();
        std::memcpy(static_cast<void*>(&record), numbers, sizeof record);
    }
    void fill(Zan_Matrix3& m) {
        fill<Zan_Matrix3>(m);
        if (below(2) != 0) m.m02 = m.m12 = 0.0, m.m22 = 1.0;
        if (below(4) == 0) m.m01 = m.m10 = 0.0;
    }
    void fill(Zan_Matrix4& m) {
        fill<Zan_Matrix4>(m);
        if (below(2) != 0) m.m03 = m.m13 = m.m23 = 0.0, m.m33 = 1.0;
    }
    template <class T>
    void fill(std::vector<T>& vector) {
        vector.resize(static_cast<size_t>(below(9)));
        for (T& element : vector) fill(element);
    }
    template <class T>
    void fill(std::pair<T, T>& pair) {
        fill(pair.first);
        fill(pair.second);
    }
    void fill(Zan_TransformPoly2D& poly) {
        for (int32_t i = 0; i < 4; ++i) poly.SetLayerPoint(i, draw<Zan_Vector2T<double>>());
        poly.TransformPoints(draw<Zan_Matrix3>());
    }
    void fill(Zan_TransformPoly3D& poly) {
        for (int32_t i = 0; i < 4; ++i) poly.SetLayerPoint(i, draw<Zan_Vector2T<double>>());
        poly.TransformPointsToEye(draw<Zan_Matrix4>());
        poly.TransformPointsToScreen(draw<Zan_Matrix4>());
        if (below(4) != 0) poly.InitPolyPoints();
    }
    template <class T>
    T draw() {
        T value;
        fill(value);
        return value;
    }

    /// Whether all numbers drawn so far are finite.
    bool finite() const { return finite_; }

    /// Limits the 16-bit and 32-bit integer arguments that are drawn from now on.
    void limit(IntegerRange range) { range_ = range; }
    /// A new draw within the limits; without limits, the value that was drawn.
    int32_t limited(int32_t value) {
        return range_.low > range_.high ? value : range_.low + below(range_.high - range_.low + 1);
    }

private:
    uint64_t state_, mood_;
    IntegerRange range_ = kAnyInteger;
    bool finite_ = true;
};

/// The sum of the results of a case. Prints them too, if asked.
class Sum {
public:
    explicit Sum(bool print) : print_(print) {}

    uint64_t value() const { return value_; }
    void fold(uint64_t word) {
        value_ = (value_ ^ word) * 0x9FB21C651E98DF25;
        value_ ^= value_ >> 29;
    }
    template <class T>
    void add(const T& record) {
        using Number = NumberIn<T>;
        Number numbers[sizeof(T) / sizeof(Number)];
        std::memcpy(numbers, &record, sizeof record);
        for (const Number n : numbers) {
            uint64_t word = 0;
            std::memcpy(&word, &n, sizeof n);
            if (n != n) word = 0x7FF8000000000000;
            fold(word);
            if (print_) std::printf(std::is_floating_point_v<Number> ? " %a" : " %.0f", static_cast<double>(n));
        }
    }
    template <class T>
    void add(const std::vector<T>& vector) {
        add(static_cast<int32_t>(vector.size()));
        for (const T& element : vector) add(element);
    }
    template <class T>
    void add(const std::pair<T, T>& pair) {
        add(pair.first);
        add(pair.second);
    }
    template <class Poly>
    void addPoly(const Poly& poly) {
        add(poly.IsVisible());
        for (int32_t i = 0; i < poly.NumPolyPoints(); ++i) add(poly.GetPolyPoints()[i]);
        for (int32_t i = 0; i < 4; ++i) {
            std::pair<Zan_Vector2T<double>, Zan_Vector2T<double>> edge{};
            add(poly.GetEdge(i, &edge));
            add(edge);
        }
    }
    void add(const Zan_TransformPoly2D& poly) { addPoly(poly); }
    void add(const Zan_TransformPoly3D& poly) { addPoly(poly); }

private:
    uint64_t value_ = 1;
    bool print_;
};

/// Where the records that operations take are stored. A test may replace it while no record exists.
struct RecordMemory {
    void* (*allocate)(size_t bytes);
    void (*release)(void* memory);
};
inline RecordMemory recordMemory = {[](size_t bytes) { return ::operator new(bytes); },
                                    [](void* memory) { ::operator delete(memory); }};

/// An array of records in that memory.
template <class T>
class Records {
public:
    explicit Records(size_t count) : first_(static_cast<T*>(recordMemory.allocate(count * sizeof(T)))), count_(count) {
        std::uninitialized_value_construct_n(first_, count);
    }
    Records(Records&& other) noexcept : first_(std::exchange(other.first_, nullptr)), count_(other.count_) {}
    Records& operator=(Records&&) = delete;
    ~Records() {
        if (first_ == nullptr) return;
        std::destroy_n(first_, count_);
        recordMemory.release(first_);
    }
    T* begin() const { return first_; }
    T* end() const { return first_ + count_; }

private:
    T* first_;
    size_t count_;
};

/// An argument: a value, the target of a reference, or an array of eight elements for a pointer.
template <class P>
struct Argument {
    static constexpr bool kArray = std::is_pointer_v<P>;
    using Target = std::remove_pointer_t<std::remove_reference_t<P>>;
    using Value = std::remove_const_t<Target>;

    explicit Argument(Draw& d) : values(kArray ? 8 : 1) {
        for (Value& value : values) d.fill(value);
        if constexpr (kOneOf<P, int16_t, int32_t>) *values.begin() = static_cast<P>(d.limited(*values.begin()));
    }
    P pass() {
        if constexpr (kArray) {
            return values.begin();
        } else {
            return *values.begin();
        }
    }
    void add(Sum& sum) const {
        if constexpr (!std::is_const_v<Target> && (kArray || std::is_lvalue_reference_v<P>)) {
            for (const Value& value : values) sum.add(value);
        }
    }

    Records<Value> values;
};

/// An operation. Its name is the key of its sum in golden.sums.
struct Entry {
    std::string name;
    std::function<void(Draw&, Sum&)> run;
    /// True if the last bits depend on the C library: the operation uses sin, cos, tan, atan, atan2, asin or acos.
    bool libm = false;
};

template <class... A, class Call>
void runCase([[maybe_unused]] Draw& d, Sum& sum, const Call& call) {
    std::tuple<Argument<A>...> arguments{Argument<A>(d)...};
    try {
        std::apply(
            [&](auto&... a) {
                using Result = decltype(call(a.pass()...));
                if constexpr (std::is_void_v<Result> || std::is_pointer_v<Result>) {
                    static_cast<void>(call(a.pass()...));
                } else {
                    const auto result = call(a.pass()...);
                    sum.add(result);
                }
            },
            arguments);
    } catch (long code) {
        sum.add(static_cast<int32_t>(code));
    }
    std::apply([&](auto&... a) { (a.add(sum), ...); }, arguments);
}

/// The entry of a function or member function; the range limits its 16-bit and 32-bit integer arguments.
template <class R, class... A>
Entry entry(const char* name, R (*f)(A...), IntegerRange integers) {
    return {name, [=](Draw& d, Sum& sum) {
                d.limit(integers);
                runCase<A...>(d, sum, f);
            }};
}
template <class C, class R, class... A, class Member>
Entry memberEntry(const char* name, Member f, IntegerRange integers) {
    return {name, [=](Draw& d, Sum& sum) {
                d.limit(integers);
                Argument<C&> object(d);
                runCase<A...>(d, sum,
                              [&](auto&&... a) -> R { return (object.pass().*f)(std::forward<decltype(a)>(a)...); });
                object.add(sum);
            }};
}
template <class C, class R, class... A>
Entry entry(const char* name, R (C::*f)(A...), IntegerRange integers) {
    return memberEntry<C, R, A...>(name, f, integers);
}
template <class C, class R, class... A>
Entry entry(const char* name, R (C::*f)(A...) const, IntegerRange integers) {
    return memberEntry<C, R, A...>(name, f, integers);
}

/// Selects the overload with these parameter types.
template <class... A>
struct Taking {
    template <class R>
    constexpr auto operator()(R (*f)(A...)) const {
        return f;
    }
    template <class C, class R>
    constexpr auto operator()(R (C::*f)(A...)) const {
        return f;
    }
    template <class C, class R>
    constexpr auto operator()(R (C::*f)(A...) const) const {
        return f;
    }
};

/// All operations that return results (operations.cpp); those with libm set come last.
const std::vector<Entry>& entries();
/// The operations that change or return the library's state; they have no sum.
std::span<const char* const> operationsOfState();

}  // namespace selfcheck

#endif  // ZAN_TOOLS_SELFCHECK_BATCH_H
