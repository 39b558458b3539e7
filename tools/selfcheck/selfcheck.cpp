// zan-selfcheck: does this machine, with the library as it was compiled and in the process's floating-point mode, give
// the sums that every other gives? One line says so; the operations that differ follow.
#include <algorithm>
#include <cfenv>
#include <cfloat>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string_view>

#include "batch.h"
#include "platform/bel.h"

using namespace selfcheck;

namespace {

constexpr uint64_t kCases = 2000;
constexpr char kGoldenSums[] =
#include "golden_sums.inc"
    ;

constexpr char kUsage[] =
    R"(zan-selfcheck              compare all sums with the golden ones: status 0 when they are the same, else 1
zan-selfcheck --list       the operations that are compared, and those that are not
zan-selfcheck --write      the sums as they are here, in the form of the file golden.sums
zan-selfcheck NAME         the sum of each case of an operation, to find where two builds part
zan-selfcheck NAME CASE    what one case gave
)";

uint64_t runOne(const Entry& entry, uint64_t n, bool print) {
    Draw draw(n);
    Sum sum(print);
    Bel_SetReportHandler(
        [](void* context, const Bel_Report* report) { static_cast<Sum*>(context)->add(report->errorNumber); }, &sum);
    entry.run(draw, sum);
    Bel_SetReportHandler(nullptr, nullptr);
    return sum.value();
}

std::string hex(uint64_t sum) {
    char text[20];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(sum));
    return text;
}

std::string sumOf(const Entry& entry) {
    Sum sum(false);
    for (uint64_t n = 0; n < kCases; ++n) sum.fold(runOne(entry, n, false));
    return hex(sum.value());
}

template <class Visit>
void forEachWithout(const Visit& visit) {
    for (const Without& without : entriesWithout()) {
        std::istringstream names(without.names);
        for (std::string name; names >> name;) visit(name, without.reason);
    }
}

// What is wrong with the floating-point mode; nothing when it is as the library needs it.
std::string wrongMode() {
    std::string wrong;
    if (std::fegetround() != FE_TONEAREST) wrong += "; does not round to nearest";
    volatile double smallest = DBL_MIN;
    volatile double subnormal = 0x1p-1074;
    if (smallest / 2 == 0 || subnormal * 2 == 0) wrong += "; flushes subnormal numbers to zero";
    return wrong;
}

int compare() {
    std::map<std::string, std::string> golden;
    std::istringstream lines(kGoldenSums);
    for (std::string line; std::getline(lines, line);) {
        const size_t space = line.rfind(' ');
        golden[line.substr(0, space)] = line.substr(space + 1);
    }
    size_t count = 0, differences = 0;
    std::string differing;
    const auto differs = [&](const std::string& name, const std::string& here, const std::string& there) {
        differing += "  " + name + ": " + here + ", golden is " + there + "\n";
        ++differences;
    };
    const auto take = [&](const std::string& name, const std::string& sum) {
        const auto node = golden.extract(name);
        const std::string kept = node ? node.mapped() : "nothing";
        if (sum != kept) differs(name, sum, kept);
    };
    for (const Entry& entry : entries()) {
        take(entry.name, sumOf(entry));
        ++count;
    }
    forEachWithout(take);
    for (const auto& [name, sum] : golden) differs(name, "nothing", sum);
    const std::string mode = wrongMode();
    const bool good = differences == 0 && mode.empty();
    std::printf("zan %s, %s, %s: %s: %zu of %zu operations differ%s\n%s", ZAN_VERSION, ZAN_PROCESSOR, ZAN_COMPILER,
                good ? "the same bits" : "NOT the same bits", differences, count, mode.c_str(), differing.c_str());
    return good ? 0 : 1;
}

int write(bool sums) {
    for (const Entry& entry : entries()) {
        const std::string sum = sums ? sumOf(entry) : "";
        std::printf(sums ? "%s %s\n" : "%s%s\n", entry.name.c_str(), sum.c_str());
    }
    forEachWithout([](const std::string& name, const char* reason) { std::printf("%s %s\n", name.c_str(), reason); });
    return 0;
}

int printCases(const Entry& entry, const char* only) {
    const uint64_t first = only != nullptr ? std::strtoull(only, nullptr, 10) : 0;
    for (uint64_t n = first; n < (only != nullptr ? first + 1 : kCases); ++n) {
        std::printf("%d", static_cast<int>(n));
        const uint64_t sum = runOne(entry, n, only != nullptr);
        std::printf(" %s\n", hex(sum).c_str());
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 1) return compare();
    const std::string_view what = argv[1];
    if (what == "--list" || what == "--write") return write(what == "--write");
    if (what == "--help") return std::fputs(kUsage, stdout) < 0;
    const auto all = entries();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Entry& entry) { return entry.name == what; });
    if (found != all.end()) return printCases(*found, argc > 2 ? argv[2] : nullptr);
    std::fprintf(stderr, "%s is no operation\n%s", argv[1], kUsage);
    return 2;
}
