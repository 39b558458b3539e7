// A small platform that zan can run on. It prints reports to standard output; a real host forwards these calls to
// its own libraries.
#include "zan/frame.h"
#include "zan/platform/bel.h"
#include "zan/platform/oska.h"
#include "zan/platform/vun.h"

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>

namespace {

thread_local char loggingBuffer[kBel_LoggingBufferSize];

}  // namespace

void Belp_SetThreadLastError(int32_t /*error*/) {}
char* Belp_GetThreadLoggingBuffer() { return loggingBuffer; }

void Belp_ReportErrString(uint32_t errorNumber, int32_t severity, const char* text) {
    std::printf("host received report 0x%X, severity %d: %s\n", errorNumber, severity, text);
    std::fflush(stdout);
}
void Belp_ReportError(uint32_t errorNumber, int32_t severity) {
    Belp_ReportErrString(errorNumber, severity, loggingBuffer);
}
int32_t Belp_ReportVamoErrString(uint32_t errorNumber, int32_t severity, int32_t platformCode, const char* textOrNull) {
    const std::string own = "host's text for platform error " + std::to_string(platformCode);
    Belp_ReportErrString(errorNumber, severity, textOrNull != nullptr ? textOrNull : own.c_str());
    return platformCode;
}
int32_t Bel_TranslateAndReportException(const std::exception& exception) {
    Belp_ReportErrString(0, Zan_kSeverityError, exception.what());
    return kBel_Err_Exception;
}

// Always English: the text after the '=' of the entry's key.
const char* Bel_ZLookupLStrCache(const void* zref, int32_t index, int32_t /*zero1*/, int32_t /*zero2*/) {
    const auto* table = static_cast<const Zan_MessageTable*>(zref);
    const std::string_view key = table->entries[index].key;
    return key.data() + key.find('=') + 1;
}

static int32_t checkVersion(int32_t errorNumber, int32_t wanted, int32_t provided) {
    if (wanted == provided) return 0;
    Belp_ReportErrString(static_cast<uint32_t>(errorNumber), kBel_SeverityVersionMismatch, "another version is needed");
    return 1;
}
int32_t Bel_CheckVersions(int32_t errorNumber, int32_t version) {
    return checkVersion(errorNumber, version, kBel_InterfaceVersion);
}
int32_t VUN_CheckVersions(int32_t errorNumber, int32_t version) {
    return checkVersion(errorNumber, version, kVUN_InterfaceVersion);
}
void OSKA_Log(int32_t /*kind*/, const char* /*category*/, const char* /*function*/, const char* /*text*/) {}

// One allocation holds the master pointer and, behind it, the block. It is never reclaimed.
Bel_Handle Bel_AllocateHandleQuiet(size_t bytes) {
    constexpr size_t kHeaderSize = alignof(std::max_align_t);
    auto* memory = static_cast<unsigned char*>(std::calloc(1, kHeaderSize + bytes));
    if (memory == nullptr) return nullptr;
    return new (memory) void* {memory + kHeaderSize};
}
Bel_Handle Bel_AllocateHandle(uint32_t errorNumber, const char* name, size_t bytes) {
    const Bel_Handle handle = Bel_AllocateHandleQuiet(bytes);
    if (handle == nullptr) {
        const std::string text = std::string("not enough memory for ") + name + '.';
        Belp_ReportErrString(errorNumber, Zan_kSeverityError, text.c_str());
    }
    return handle;
}
void Bel_FreeHandle(Bel_Handle handle) { std::free(handle); }

void* Bel_MemTrackedObject::TrackedNew(std::size_t bytes, bool /*unused*/) { return ::operator new(bytes); }
void Bel_MemTrackedObject::TrackedDelete(void* block) { ::operator delete(block); }
