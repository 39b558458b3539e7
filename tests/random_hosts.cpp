// Random hosts: eight threads call all operations in random order. Each record borders on an inaccessible page, at its
// end or at its start; allocations fail and the instruction set changes at random. A call gives the results that it
// gives alone, or throws bad_alloc when an allocation failed; no memory is leaked.
// zan_random_hosts [SECONDS [SEED]]
#include "tests/support/instruction_sets.h"
#include "tools/selfcheck/batch.h"
#include "zan/platform/bel.h"

#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <thread>

using namespace selfcheck;

namespace {

constexpr uint64_t kCases = 100;
constexpr int kThreads = 8;

// The state of a thread.
thread_local Sum* reported = nullptr;
thread_local Draw choices(0);
thread_local const char* currentOperation = "none";
thread_local int allocationsUntilFailure = 0;  // 1 if the next one fails; 0 if none fails
thread_local bool allocationFailed = false;

std::atomic<uint64_t> calls{0}, callsWithoutMemory{0}, faults{0};

void fault(const char* what, uint64_t n) {
    std::printf("%s, case %d: %s\n", currentOperation, static_cast<int>(n), what);
    ++faults;
}

// Blocks for records, each between two inaccessible pages. Every thread has its own.
class GuardedBlocks {
public:
    GuardedBlocks() {
        base_ =
            static_cast<char*>(mmap(nullptr, kBlocks * kStride + kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        for (size_t i = 0; i < kBlocks; ++i) {
            mprotect(start(i), kBlockBytes, PROT_READ | PROT_WRITE);
            free_[i] = i;
        }
    }
    ~GuardedBlocks() { munmap(base_, kBlocks * kStride + kPage); }
    GuardedBlocks(const GuardedBlocks&) = delete;
    GuardedBlocks& operator=(const GuardedBlocks&) = delete;

    void* allocate(size_t bytes) {
        if (bytes > kBlockBytes || used_ == kBlocks) std::abort();
        char* const block = start(free_[used_++]);
        return choices.below(2) == 0 ? block : block + (kBlockBytes - bytes);
    }
    void release(void* memory) { free_[--used_] = static_cast<size_t>(static_cast<char*>(memory) - base_) / kStride; }

private:
    static constexpr size_t kPage = 4096, kBlockBytes = 4 * kPage, kStride = kBlockBytes + kPage, kBlocks = 32;
    char* start(size_t i) { return base_ + i * kStride + kPage; }

    char* base_;
    size_t free_[kBlocks];
    size_t used_ = 0;
};
thread_local GuardedBlocks guardedBlocks;

uint64_t run(const Entry& entry, uint64_t n) {
    Draw draw(n);
    Sum sum(false);
    reported = &sum;
    currentOperation = entry.name.c_str();
    entry.run(draw, sum);
    return sum.value();
}

void callOperation(const Entry& entry, uint64_t n, uint64_t expected) {
    allocationFailed = false;
    allocationsUntilFailure = choices.below(8) == 0 ? 1 + choices.below(6) : 0;
    try {
        const uint64_t sum = run(entry, n);
        allocationsUntilFailure = 0;
        if (allocationFailed) {
            fault("an allocation failed, but no bad_alloc was thrown", n);
        } else if (sum != expected) {
            fault("other results than alone", n);
        }
    } catch (const std::bad_alloc&) {
        ++callsWithoutMemory;
    }
    allocationsUntilFailure = 0;
    ++calls;
}

// Start, use of the tables, moving the globals out and in, stop. Only one thread may do this.
void callLifecycle() {
    currentOperation = "lifecycle";
    const auto must = [](bool holds, const char* what) {
        if (!holds) fault(what, 0);
    };
    must(Zan_CheckVersions(1, Zan_kInterfaceVersion) == 0, "Zan_CheckVersions fails");
    const auto services = static_cast<uint32_t>(choices.below(8));
    uint32_t started = 0;
    if (Zan_Birth(services, &started) != 0) {
        for (void*** table : {&Zanp_G.sineTable, &Zanp_G.charMultiplyTable, &Zanp_G.charDivideTable}) {
            Bel_FreeHandle(*table);
            *table = nullptr;
        }
        return;
    }
    must(started == services, "a service is not started");
    float* sines = nullptr;
    uint8_t *products = nullptr, *quotients = nullptr;
    if ((services & Zan_Service_FastTrig) != 0) {
        must(Zan_PrepareFTrig(true, false, nullptr, &sines) == 0 && sines[255] == 1, "no sine table");
        must(Zan_UnprepareFTrig() == 0, "Zan_UnprepareFTrig fails");
    }
    if ((services & Zan_Service_FastCharMath) != 0) {
        must(Zan_PrepareFCMD(true, false, nullptr, &products, &quotients) == 0 && products[65535] == 255 &&
                 quotients[65535] == 255,
             "no 8-bit tables");
        must(Zan_UnprepareFCMD() == 0, "Zan_UnprepareFCMD fails");
    }
    Zan_Globals block;
    must(Zan_GetGlobals(&block) == 0, "Zan_GetGlobals fails");
    must(Zan_SetGlobals(&block) == 0, "Zan_SetGlobals fails");
    must(Zan_Death() == 0, "Zan_Death fails");
}

}  // namespace

// Not inlined: GCC would warn that memory from malloc is freed by delete.
[[gnu::noinline]] void* operator new(std::size_t bytes) {
    if (allocationsUntilFailure > 0 && --allocationsUntilFailure == 0) {
        allocationFailed = true;
        throw std::bad_alloc();
    }
    void* block = std::malloc(bytes != 0 ? bytes : 1);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t /*bytes*/) noexcept { operator delete(block); }

int main(int argc, char** argv) {
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 2;
    const uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : static_cast<uint64_t>(std::time(nullptr));
    std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    Bel_SetReportHandler([](void*, const Bel_Report* report) { reported->add(report->errorNumber); }, nullptr);
    const auto crashed = [](int signal) {
        const std::string text = std::string(currentOperation) + ": signal " + std::to_string(signal) + "\n";
        if (write(STDERR_FILENO, text.data(), text.size()) < 0) _exit(3);
        _exit(2);
    };
    for (const int crash : {SIGSEGV, SIGBUS}) signal(crash, crashed);

    const std::vector<Entry>& all = entries();
    std::vector<uint64_t> expected;
    zan::activeInstructionSetOrNone = 0;
    for (const Entry& entry : all) {
        for (uint64_t n = 0; n < kCases; ++n) expected.push_back(run(entry, n));
    }
    recordMemory = {[](size_t bytes) { return guardedBlocks.allocate(bytes); },
                    [](void* memory) { guardedBlocks.release(memory); }};

    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    const auto work = [&](int thread) {
        choices = Draw(seed * kThreads + static_cast<uint64_t>(thread));
        Sum ignored(false);
        while (std::chrono::steady_clock::now() < end && faults == 0) {
            if (choices.below(8) == 0) zan::activeInstructionSetOrNone = choices.below(countInstructionSets());
            if (thread == 0 && choices.below(8) == 0) {
                reported = &ignored;
                callLifecycle();
                Bel_SetAllocationFailure(kBel_TrackedAllocations | kBel_HandleAllocations,
                                         static_cast<uint64_t>(choices.below(20)), false);
            }
            const auto i = static_cast<size_t>(choices.below(static_cast<int32_t>(all.size())));
            const auto n = static_cast<uint64_t>(choices.below(kCases));
            callOperation(all[i], n, expected[i * kCases + n]);
        }
    };
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) threads.emplace_back(work, t);
    for (std::thread& thread : threads) thread.join();

    Bel_MemoryCounts counts;
    Bel_GetMemoryCounts(&counts);
    currentOperation = "at the end";
    if (counts.handles != 0 || counts.trackedBlocks != 0) fault("memory is leaked", 0);
    std::printf(
        "%llu calls, of which %llu threw bad_alloc; %llu faults\n", static_cast<unsigned long long>(calls.load()),
        static_cast<unsigned long long>(callsWithoutMemory.load()), static_cast<unsigned long long>(faults.load()));
    return faults == 0 ? 0 : 1;
}
