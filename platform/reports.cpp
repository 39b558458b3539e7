// Reports, each thread's last error and logging buffer, translation of exceptions, and version checks.
#include "platform/handler.h"
#include "zan/platform/bel.h"
#include "zan/platform/vun.h"

#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <new>
#include <stdexcept>

namespace {

zan_platform::Handler<Bel_ReportHandler> reportHandler;
std::atomic<int32_t> belVersion{kBel_InterfaceVersion};
std::atomic<int32_t> vunVersion{kVUN_InterfaceVersion};

thread_local int32_t lastError = 0;
thread_local char loggingBuffer[kBel_LoggingBufferSize] = {};

void deliver(const Bel_Report& report) {
    const auto handler = reportHandler.get();
    if (handler.function != nullptr) {
        handler.function(handler.context, &report);
        return;
    }
    std::fprintf(stderr, "0x%" PRIX32 " severity %" PRId32 ": %s\n", report.errorNumber, report.severity, report.text);
    std::fflush(stderr);  // not every C runtime leaves standard error unbuffered
}

const char* platformText(int32_t code) {
    switch (code) {
        case kBel_Err_BadGlobals:
            return "the globals block is not valid.";
        case kBel_Err_BadRange:
            return "the range is not valid.";
        case kBel_Err_NoService:
            return "the service is not provided.";
        case kBel_Err_NotStarted:
            return "the library has not been started.";
        case kBel_Err_AlreadyStarted:
            return "the library has already been started.";
        default:
            return "platform error.";
    }
}

int32_t checkVersions(const char* library, int32_t errorNumber, int32_t wanted, int32_t provided) {
    if (wanted == provided) return 0;
    char text[96];
    std::snprintf(text, sizeof text, "%s provides interface version %" PRId32 ", not %" PRId32 ".", library, provided,
                  wanted);
    Belp_ReportErrString(static_cast<uint32_t>(errorNumber), kBel_SeverityVersionMismatch, text);
    return 1;
}

}  // namespace

void Bel_SetReportHandler(Bel_ReportHandler handler, void* context) { reportHandler.set(handler, context); }

void Belp_SetThreadLastError(int32_t error) { lastError = error; }

int32_t Bel_GetThreadLastError() { return lastError; }

char* Belp_GetThreadLoggingBuffer() { return loggingBuffer; }

void Belp_ReportError(uint32_t errorNumber, int32_t severity) {
    // Copied, because a handler that reports an error itself overwrites the logging buffer.
    char text[kBel_LoggingBufferSize];
    std::memcpy(text, loggingBuffer, sizeof text);
    text[sizeof text - 1] = '\0';
    deliver({errorNumber, severity, false, 0, text});
}

void Belp_ReportErrString(uint32_t errorNumber, int32_t severity, const char* text) {
    deliver({errorNumber, severity, false, 0, text != nullptr ? text : ""});
}

int32_t Belp_ReportVamoErrString(uint32_t errorNumber, int32_t severity, int32_t platformCode, const char* textOrNull) {
    deliver(
        {errorNumber, severity, true, platformCode, textOrNull != nullptr ? textOrNull : platformText(platformCode)});
    return platformCode;
}

int32_t Bel_TranslateAndReportException(const std::exception& exception) {
    Belp_ReportErrString(0, kBel_SeverityError, exception.what());
    if (dynamic_cast<const std::bad_alloc*>(&exception) != nullptr) return kBel_Err_OutOfMemory;
    if (dynamic_cast<const std::length_error*>(&exception) != nullptr) return kBel_Err_TooLong;
    return kBel_Err_Exception;
}

int32_t Bel_CheckVersions(int32_t errorNumber, int32_t version) {
    return checkVersions("Bel", errorNumber, version, belVersion.load());
}

void Bel_SetInterfaceVersion(int32_t version) { belVersion.store(version); }

int32_t VUN_CheckVersions(int32_t errorNumber, int32_t version) {
    return checkVersions("VUN", errorNumber, version, vunVersion.load());
}

void VUN_SetInterfaceVersion(int32_t version) { vunVersion.store(version); }
