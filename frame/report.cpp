// The error reporter: from a code and a context to one report of the host's error service.
#include "frame/report.h"

#include <cstdio>

namespace {

using zan::Message;

struct CodeRow {
    int32_t code;
    Message message;
    bool takesContext;
    int32_t severity;
};
constexpr CodeRow kCodes[] = {
#define ZAN_CODE(code, message, takesContext, severity) {code, Message::message, takesContext, severity},
#include "frame/codes.def"
#undef ZAN_CODE
};

// The texts come from the host's catalogue, so they cannot be literals; the platform vouches for their conversions.
#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
#endif
template <class... Arguments>
void formatIntoLoggingBuffer(const char* text, Arguments... arguments) {
    std::snprintf(Belp_GetThreadLoggingBuffer(), kBel_LoggingBufferSize, text, arguments...);
}

}  // namespace

int32_t Zanp_ReportErr(uint16_t site, int32_t code, int16_t context) {
    if (code == 0) return 0;
    Belp_SetThreadLastError(0);
    int32_t severity = Zan_kSeverityError;
    const CodeRow* row = nullptr;
    for (const CodeRow& candidate : kCodes) {
        if (candidate.code == code) row = &candidate;
    }
    if (row == nullptr) {
        formatIntoLoggingBuffer(zan::messageText(Message::UnknownError), code);
    } else {
        severity = row->severity;
        if (row->takesContext) {
            const char* contextText = zan::messageText(Message{context});
            formatIntoLoggingBuffer(zan::messageText(row->message), contextText);
        } else {
            formatIntoLoggingBuffer(zan::messageText(row->message));
        }
    }
    Belp_ReportError(zan::errorNumber(zan::Site{site}), severity);
    return code;
}

void zan::reportText(Site site, Message message) {
    Belp_ReportErrString(errorNumber(site), Zan_kSeverityError, messageText(message));
}

int32_t zan::reportPlatform(Site site, Bel_Error platformCode) {
    return Belp_ReportVamoErrString(errorNumber(site), Zan_kSeverityError, platformCode, nullptr);
}

int32_t zan::reportPlatform(Site site, Bel_Error platformCode, Message message) {
    return Belp_ReportVamoErrString(errorNumber(site), Zan_kSeverityError, platformCode, messageText(message));
}
