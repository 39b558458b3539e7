// Prints values of the seven trigonometric functions that the library takes from the C library, for
// trigonometry_check.cpp: the name, the argument, for atan2 the second argument, and the result, in hexadecimal. Fails
// if the library takes its sines and cosines from elsewhere.
#include "tests/support/choices.h"
#include "zan/zan.h"

#include <cstdio>
#include <cstring>

namespace {

int failures = 0;

unsigned long long bitsOf(double x) {
    uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    return bits;
}
void print(const char* function, double x, double result, double second = 0) {
    std::printf("%s %016llx %016llx %016llx\n", function, bitsOf(x), bitsOf(second), bitsOf(result));
}

void printCircular(double radians) {
    const double sine = std::sin(radians), cosine = std::cos(radians);
    print("sin", radians, sine);
    print("cos", radians, cosine);
    print("tan", radians, std::tan(radians));
    Zan_Matrix4 rotation(true);
    const int32_t code = Zan_RotateMatrix4(0, 0, 1, radians, &rotation);
    if (code == 0 && rotation.m01 == sine && rotation.m00 == cosine) return;
    std::fprintf(stderr, "%a radians: the library's sine is %a, the C library's %a\n", radians, rotation.m01, sine);
    ++failures;
}

void printInverse(double x, double y) {
    print("atan", x * 10, std::atan(x * 10));
    print("atan2", y, std::atan2(y, x), x);
    print("asin", x, std::asin(x));
    print("acos", x, std::acos(x));
}

}  // namespace

int main() {
    constexpr double kRadiansPerDegree = 0.017453292519943295;
    constexpr double kHalfPi = 1.5707963267948966;
    Choices choices(1);
    for (int degrees = -720; degrees <= 720; ++degrees) printCircular(degrees * kRadiansPerDegree);
    for (int i = 0; i < 256; ++i) printCircular(i / 255.0 * kHalfPi);
    for (int i = 0; i < 20000; ++i) printCircular(choices.plain(-10, 10));
    for (int i = 0; i < 20000; ++i) printCircular(choices.plain(-1e6, 1e6));
    printCircular(1e6);
    for (int i = 0; i < 40000; ++i) printInverse(choices.plain(-1, 1), choices.plain(-1, 1));
    return failures == 0 && std::fflush(stdout) == 0 ? 0 : 1;
}
