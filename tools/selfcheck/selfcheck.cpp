// zan-selfcheck: does this machine, with the library as it was compiled and in the process's floating-point mode, give
// the sums that every other gives, and leave its host alone? One line says so; the operations that differ follow.
#include "batch.h"
#include "platform/bel.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cfenv>
#include <cfloat>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string_view>
#include <thread>

using namespace selfcheck;

namespace {

constexpr uint64_t kCases = 2000;
constexpr uint64_t kCasesForThreads = 200;
constexpr char kGoldenSums[] =
#include "golden_sums.inc"
    ;

constexpr char kUsage[] =
    R"(zan-selfcheck              compare all sums with the golden ones: status 0 when they are the same, else 1
zan-selfcheck --threads N  do N threads at once get what one gets? status 0 when they do, else 1
zan-selfcheck --list       the operations that are compared, and those that are not
zan-selfcheck --write      the sums as they are here, in the form of the file golden.sums
zan-selfcheck NAME         the sum of each case of an operation, to find where two builds part
zan-selfcheck NAME CASE    what one case gave
)";

// Of this thread's call: where its reports go, and what it changed that is the host's.
thread_local Sum* reported = nullptr;
thread_local std::string trespasses;

void hearReports() {
    Bel_SetReportHandler([](void*, const Bel_Report* report) { reported->add(report->errorNumber); }, nullptr);
}

uint64_t runOne(const Entry& entry, uint64_t n, bool print) {
    constexpr int kUntouched = 12345;
    const int rounding = std::fegetround();
    Draw draw(n);
    Sum sum(print);
    reported = &sum;
    errno = kUntouched;
    entry.run(draw, sum);
    if (errno != kUntouched) trespasses.append("  ").append(entry.name).append(": sets errno\n");
    if (std::fegetround() != rounding)
        trespasses.append("  ").append(entry.name).append(": changes the rounding mode\n");
    return sum.value();
}

std::string hex(uint64_t sum) {
    char text[20];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(sum));
    return text;
}

std::string sumOf(const Entry& entry, uint64_t cases) {
    Sum sum(false);
    const size_t before = trespasses.size();
    for (uint64_t n = 0; n < cases && trespasses.size() == before; ++n) sum.fold(runOne(entry, n, false));
    return hex(sum.value());
}

// The sum, or why there is none that is the same everywhere.
std::string goldenSumOf(const Entry& entry) {
    std::string sum = sumOf(entry, kCases);
    return entry.libm ? "libm" : sum;
}

void say(bool good, const std::string& outcome, const std::string& details) {
    std::printf("zan %s, %s, %s: %s: %s\n%s", ZAN_VERSION, ZAN_PROCESSOR, ZAN_COMPILER,
                good ? "the same bits" : "NOT the same bits", outcome.c_str(), details.c_str());
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
        take(entry.name, goldenSumOf(entry));
        count += !entry.libm;
    }
    for (const char* name : operationsOfState()) take(name, "state");
    for (const auto& [name, sum] : golden) differs(name, "nothing", sum);
    const std::string mode = wrongMode();
    const bool good = differences == 0 && mode.empty() && trespasses.empty();
    say(good, std::to_string(differences) + " of " + std::to_string(count) + " operations differ" + mode,
        differing + trespasses);
    return good ? 0 : 1;
}

// Every thread calls all operations, each starting with another.
int compareThreads(size_t count) {
    const std::vector<Entry>& all = entries();
    std::vector<std::string> found(count);
    std::vector<std::thread> threads;
    std::atomic<size_t> ready{0};
    // Together from their first call on, so that they meet in what is decided at a first use.
    std::vector<std::vector<std::string>> sums(count, std::vector<std::string>(all.size()));
    for (size_t t = 0; t < count; ++t) {
        threads.emplace_back([&, t] {
            for (++ready; ready < count;) std::this_thread::yield();
            for (size_t k = 0; k < all.size(); ++k) {
                const size_t i = (k + t * all.size() / count) % all.size();
                sums[t][i] = sumOf(all[i], kCasesForThreads);
            }
            found[t] = trespasses;
        });
    }
    for (std::thread& thread : threads) thread.join();
    std::string details;
    for (size_t t = 0; t < count; ++t) details += found[t];
    for (size_t i = 0; i < all.size(); ++i) {
        const std::string sum = sumOf(all[i], kCasesForThreads);
        for (size_t t = 0; t < count; ++t) {
            if (sums[t][i] != sum)
                details.append("  ").append(all[i].name).append(" in thread ").append(std::to_string(t)).append("\n");
        }
    }
    say(details.empty(), std::to_string(count) + " threads at once", details);
    return details.empty() ? 0 : 1;
}

int write(bool sums) {
    for (const Entry& entry : entries()) {
        const std::string sum = sums || entry.libm ? goldenSumOf(entry) : "";
        std::printf("%s%s%s\n", entry.name.c_str(), sum.empty() ? "" : " ", sum.c_str());
    }
    for (const char* name : operationsOfState()) std::printf("%s state\n", name);
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
    hearReports();
    if (argc == 1) return compare();
    const std::string_view what = argv[1];
    if (what == "--threads" && argc == 3 && std::atoi(argv[2]) > 0) return compareThreads(size_t(std::atoi(argv[2])));
    if (what == "--list" || what == "--write") return write(what == "--write");
    if (what == "--help") return std::fputs(kUsage, stdout) < 0;
    const auto& all = entries();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Entry& entry) { return entry.name == what; });
    if (found != all.end()) return printCases(*found, argc > 2 ? argv[2] : nullptr);
    std::fprintf(stderr, "%s is no operation\n%s", argv[1], kUsage);
    return 2;
}
