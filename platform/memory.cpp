// Relocatable handles, tracked memory, memory counts, and allocations that fail on demand.
#include "zan/platform/bel.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <new>

namespace {

// A caller's handle is the address of `data`, which is the master pointer.
struct Master {
    void* data;
    size_t bytes;
};

// Precedes each tracked block. Its alignment keeps the block aligned for any type.
struct alignas(std::max_align_t) TrackedHeader {
    size_t bytes;
};

std::mutex mutex;
Bel_MemoryCounts counts{};
uint32_t failingKinds = 0;
uint64_t failingCountdown = 0;  // 1 if the next allocation of these kinds fails, and so on; 0 if none fails
bool failingAllAfter = false;

// Requires the lock. Called once for each allocation.
bool mustFail(uint32_t kind) {
    if ((failingKinds & kind) == 0 || failingCountdown == 0) return false;
    if (failingCountdown > 1) {
        --failingCountdown;
        return false;
    }
    if (!failingAllAfter) failingCountdown = 0;
    return true;
}

Bel_Handle allocateHandle(uint32_t kind, size_t bytes) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (mustFail(kind)) return nullptr;
    auto* master = static_cast<Master*>(std::malloc(sizeof(Master)));
    if (master == nullptr) return nullptr;
    master->data = std::calloc(bytes != 0 ? bytes : 1, 1);
    master->bytes = bytes;
    if (master->data == nullptr) {
        std::free(master);
        return nullptr;
    }
    ++counts.handles;
    counts.handleBytes += bytes;
    return &master->data;
}

// Requires the lock.
void releaseData(Master& master) {
    if (master.data == nullptr) return;
    std::free(master.data);
    master.data = nullptr;
    counts.handleBytes -= master.bytes;
}

}  // namespace

Bel_Handle Bel_AllocateHandle(uint32_t errorNumber, const char* name, size_t bytes) {
    Bel_Handle handle = allocateHandle(kBel_HandleAllocations, bytes);
    if (handle == nullptr) {
        char text[kBel_LoggingBufferSize];
        std::snprintf(text, sizeof text, "not enough memory for %s.", name);
        Belp_ReportErrString(errorNumber, kBel_SeverityError, text);
    }
    return handle;
}

Bel_Handle Bel_AllocateHandleQuiet(size_t bytes) { return allocateHandle(kBel_QuietAllocations, bytes); }

void Bel_FreeHandle(Bel_Handle handle) {
    if (handle == nullptr) return;
    const std::lock_guard<std::mutex> lock(mutex);
    auto* master = reinterpret_cast<Master*>(handle);
    releaseData(*master);
    std::free(master);
    --counts.handles;
}

void Bel_ReclaimHandle(Bel_Handle handle) {
    if (handle == nullptr) return;
    const std::lock_guard<std::mutex> lock(mutex);
    releaseData(*reinterpret_cast<Master*>(handle));
}

void* Bel_MemTrackedObject::TrackedNew(std::size_t bytes, bool /*unused*/) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (mustFail(kBel_TrackedAllocations) || bytes > SIZE_MAX - sizeof(TrackedHeader)) throw std::bad_alloc();
    auto* header = static_cast<TrackedHeader*>(std::malloc(sizeof(TrackedHeader) + bytes));
    if (header == nullptr) throw std::bad_alloc();
    header->bytes = bytes;
    ++counts.trackedBlocks;
    ++counts.trackedNews;
    counts.trackedBytes += bytes;
    return header + 1;
}

void Bel_MemTrackedObject::TrackedDelete(void* block) {
    if (block == nullptr) return;
    const std::lock_guard<std::mutex> lock(mutex);
    auto* header = static_cast<TrackedHeader*>(block) - 1;
    --counts.trackedBlocks;
    ++counts.trackedDeletes;
    counts.trackedBytes -= header->bytes;
    std::free(header);
}

void Bel_SetAllocationFailure(uint32_t kinds, uint64_t n, bool andAllAfter) {
    const std::lock_guard<std::mutex> lock(mutex);
    failingKinds = kinds;
    failingCountdown = n;
    failingAllAfter = andAllAfter;
}

void Bel_GetMemoryCounts(Bel_MemoryCounts* out) {
    const std::lock_guard<std::mutex> lock(mutex);
    *out = counts;
}
