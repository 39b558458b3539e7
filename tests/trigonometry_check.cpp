// Reads the lines of trigonometry_values.cpp and compares each result with the correctly rounded one, which MPFR
// calculates. Prints for each function the greatest error, in units in the last place, and the share of the results
// that are correctly rounded; fails if an error is greater than one unit, or two for atan2.
#include <mpfr.h>

#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>

static double doubleOf(uint64_t bits) {
    double x = 0;
    std::memcpy(&x, &bits, sizeof x);
    return x;
}

struct Errors {
    double greatest = 0, at = 0;
    int values = 0, correct = 0;
};

int main() {
    constexpr int kPrecision = 200;
    mpfr_t x, y, exact;
    mpfr_inits2(kPrecision, x, y, exact, nullptr);
    std::map<std::string, Errors> all;
    char name[8];
    uint64_t first = 0, second = 0, bits = 0;
    while (std::scanf("%7s %" SCNx64 " %" SCNx64 " %" SCNx64, name, &first, &second, &bits) == 4) {
        const std::string function = name;
        const double result = doubleOf(bits);
        mpfr_set_d(x, doubleOf(first), MPFR_RNDN);
        mpfr_set_d(y, doubleOf(second), MPFR_RNDN);
        if (function == "sin") mpfr_sin(exact, x, MPFR_RNDN);
        if (function == "cos") mpfr_cos(exact, x, MPFR_RNDN);
        if (function == "tan") mpfr_tan(exact, x, MPFR_RNDN);
        if (function == "atan") mpfr_atan(exact, x, MPFR_RNDN);
        if (function == "atan2") mpfr_atan2(exact, x, y, MPFR_RNDN);
        if (function == "asin") mpfr_asin(exact, x, MPFR_RNDN);
        if (function == "acos") mpfr_acos(exact, x, MPFR_RNDN);
        const double rounded = mpfr_get_d(exact, MPFR_RNDN);
        const double unit = std::nextafter(std::fabs(rounded), INFINITY) - std::fabs(rounded);
        mpfr_sub_d(exact, exact, result, MPFR_RNDN);
        const double error = std::fabs(mpfr_get_d(exact, MPFR_RNDN)) / unit;
        Errors& errors = all[function];
        ++errors.values;
        errors.correct += result == rounded;
        if (!(error <= errors.greatest)) errors.greatest = error, errors.at = doubleOf(first);
    }
    bool good = all.size() == 7;
    for (const auto& [function, errors] : all) {
        std::printf("%-5s at most %.3f units in the last place (at %.17g), %.2f %% of %d correctly rounded\n",
                    function.c_str(), errors.greatest, errors.at, 100.0 * errors.correct / errors.values,
                    errors.values);
        good = good && errors.greatest <= (function == "atan2" ? 2 : 1);
    }
    mpfr_clears(x, y, exact, nullptr);
    return good ? 0 : 1;
}
