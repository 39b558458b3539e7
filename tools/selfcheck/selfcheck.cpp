// zan-selfcheck: checks that the library gives the golden sums on this machine, as it was compiled and in the process's
// floating-point mode, and that no operation changes errno or the rounding mode. Prints one line with the outcome, then
// the operations that differ.
#include "batch.h"
#include "zan/platform/bel.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cfenv>
#include <cfloat>
#include <cstdlib>
#include <map>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <thread>

using namespace selfcheck;

namespace {

constexpr uint64_t kCases = 2000;
constexpr uint64_t kCasesForThreads = 200;
constexpr char kGoldenSums[] =
#include "golden_sums.inc"
    ;

constexpr char kUsage[] =
    R"(zan-selfcheck              compare all sums with the golden sums; exit status 0 if they are equal, the
                           floating-point mode is right, and no operation changes it or errno; else 1
zan-selfcheck --threads N  compare the sums of N simultaneous threads with those of one; exit status 0 if equal, else 1
zan-selfcheck --list       list the operations, with the reason for each that has no golden sum
zan-selfcheck --write      print the sums of this machine, in the format of the file golden.sums
zan-selfcheck NAME         print the sum of each case of one operation, to find where two builds differ
zan-selfcheck NAME CASE    print the results of one case
)";

// Of this thread: the sum to which the current operation adds its reports, and a line for each change of errno or of
// the rounding mode.
thread_local Sum* reported = nullptr;
thread_local std::string violations;

void addReportsToSums() {
    Bel_SetReportHandler([](void*, const Bel_Report* report) { reported->add(report->errorNumber); }, nullptr);
}

uint64_t runOne(const Entry& entry, uint64_t n, bool print) {
    constexpr int kErrno = 12345;
    const int rounding = std::fegetround();
    Draw draw(n);
    Sum sum(print);
    reported = &sum;
    errno = kErrno;
    entry.run(draw, sum);
    if (errno != kErrno) violations.append("  ").append(entry.name).append(": changes errno\n");
    if (std::fegetround() != rounding)
        violations.append("  ").append(entry.name).append(": changes the rounding mode\n");
    return sum.value();
}

std::string hex(uint64_t sum) {
    char text[20];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(sum));
    return text;
}

std::string sumOf(const Entry& entry, uint64_t cases) {
    Sum sum(false);
    const size_t before = violations.size();
    for (uint64_t n = 0; n < cases && violations.size() == before; ++n) sum.fold(runOne(entry, n, false));
    return hex(sum.value());
}

// The sum, or "libm" for an operation whose sum is not the same on every machine.
std::string goldenSumOf(const Entry& entry) {
    std::string sum = sumOf(entry, kCases);
    return entry.libm ? "libm" : sum;
}

void say(bool good, const std::string& outcome, const std::string& details) {
    std::printf("zan %s, %s, %s: %s: %s\n%s", ZAN_VERSION, ZAN_PROCESSOR, ZAN_COMPILER,
                good ? "the same bits" : "NOT the same bits", outcome.c_str(), details.c_str());
}

// The faults of the floating-point mode; empty when it is as the library needs it.
std::string wrongMode() {
    std::string wrong;
    if (std::fegetround() != FE_TONEAREST) wrong += "; the rounding mode is not round-to-nearest";
    volatile double smallest = DBL_MIN;
    volatile double subnormal = 0x1p-1074;
    if (smallest / 2 == 0 || subnormal * 2 == 0) wrong += "; subnormal numbers are flushed to zero";
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
    const auto differs = [&](const std::string& name, const std::string& actual, const std::string& expected) {
        differing += "  " + name + ": " + actual + ", expected " + expected + "\n";
        ++differences;
    };
    const auto check = [&](const std::string& name, const std::string& sum) {
        const auto node = golden.extract(name);
        const std::string expected = node ? node.mapped() : "no such operation";
        if (sum != expected) differs(name, sum, expected);
    };
    for (const Entry& entry : entries()) {
        check(entry.name, goldenSumOf(entry));
        count += !entry.libm;
    }
    for (const char* name : operationsOfState()) check(name, "state");
    for (const auto& [name, sum] : golden) differs(name, "no such operation", sum);
    const std::string mode = wrongMode();
    const bool good = differences == 0 && mode.empty() && violations.empty();
    say(good, std::to_string(differences) + " of " + std::to_string(count) + " operations differ" + mode,
        differing + violations);
    return good ? 0 : 1;
}

// Every thread runs all operations, each starting with a different one.
int compareThreads(size_t count) {
    const std::vector<Entry>& all = entries();
    std::vector<std::string> found(count);
    std::vector<std::thread> threads;
    std::atomic<size_t> ready{0};
    std::atomic<bool> cancelled{false};
    std::vector<std::vector<std::string>> sums(count, std::vector<std::string>(all.size()));
    const auto work = [&](size_t t) {
        // All threads start together, so that they race for what is initialised at the first use.
        for (++ready; ready < count && !cancelled;) std::this_thread::yield();
        if (cancelled) return;
        for (size_t k = 0; k < all.size(); ++k) {
            const size_t i = (k + t * all.size() / count) % all.size();
            sums[t][i] = sumOf(all[i], kCasesForThreads);
        }
        found[t] = violations;
    };
    std::string failure;
    try {
        threads.reserve(count);
        for (size_t t = 0; t < count; ++t) threads.emplace_back(work, t);
    } catch (const std::system_error& error) {
        failure = "thread " + std::to_string(threads.size() + 1) + " cannot be started: " + error.what();
        cancelled = true;
    }
    for (std::thread& thread : threads) thread.join();
    if (!failure.empty()) throw std::runtime_error(failure);
    std::string details;
    for (size_t t = 0; t < count; ++t) details += found[t];
    for (size_t i = 0; i < all.size(); ++i) {
        const std::string sum = sumOf(all[i], kCasesForThreads);
        for (size_t t = 0; t < count; ++t) {
            if (sums[t][i] != sum)
                details.append("  ").append(all[i].name).append(" in thread ").append(std::to_string(t)).append("\n");
        }
    }
    say(details.empty(), std::to_string(count) + " simultaneous threads", details);
    return details.empty() ? 0 : 1;
}

int list() {
    for (const Entry& entry : entries()) std::printf("%s%s\n", entry.name.c_str(), entry.libm ? " libm" : "");
    for (const char* name : operationsOfState()) std::printf("%s state\n", name);
    return 0;
}

int write() {
    for (const Entry& entry : entries()) std::printf("%s %s\n", entry.name.c_str(), goldenSumOf(entry).c_str());
    for (const char* name : operationsOfState()) std::printf("%s state\n", name);
    return 0;
}

void printCase(const Entry& entry, uint64_t n, bool print) {
    std::printf("%d", static_cast<int>(n));
    const uint64_t sum = runOne(entry, n, print);
    std::printf(" %s\n", hex(sum).c_str());
}

}  // namespace

// @return the exit status, provided that standard output could be written
static int run(int argc, char** argv) {
    addReportsToSums();
    if (argc == 1) return compare();
    const std::string_view argument = argv[1];
    if (argument == "--threads" && argc == 3 && std::atoi(argv[2]) > 0) {
        return compareThreads(size_t(std::atoi(argv[2])));
    }
    if (argument == "--list") return list();
    if (argument == "--write") return write();
    if (argument == "--help") {
        std::fputs(kUsage, stdout);
        return 0;
    }
    const auto& all = entries();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Entry& entry) { return entry.name == argument; });
    if (found != all.end() && argc > 2) {
        printCase(*found, std::strtoull(argv[2], nullptr, 10), true);
        return 0;
    }
    if (found != all.end()) {
        for (uint64_t n = 0; n < kCases; ++n) printCase(*found, n, false);
        return 0;
    }
    std::fprintf(stderr, "zan-selfcheck: unknown operation %s\n%s", argv[1], kUsage);
    return 2;
}

int main(int argc, char** argv) {
    constexpr int kFailed = 2;
    try {
        const int status = run(argc, argv);
        // An earlier failed write has set ferror; a failure of this last flush is in its result.
        if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
        std::fputs("zan-selfcheck: standard output cannot be written\n", stderr);
    } catch (const std::bad_alloc&) {
        std::fputs("zan-selfcheck: not enough memory\n", stderr);
    } catch (const std::runtime_error& error) {
        std::fprintf(stderr, "zan-selfcheck: %s\n", error.what());
    }
    return kFailed;
}
