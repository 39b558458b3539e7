// The error reporter: builds the message of a result code and sends it to the host's error service.
#include "frame/report.h"

#include <cstdio>

namespace {

using zan::Message;

struct CodeMessage {
    int32_t code;
    Message message;
    bool takesContext;
    int32_t severity;
};
constexpr CodeMessage kCodeMessages[] = {
#define ZAN_CODE(code, message, takesContext, severity) {code, Message::message, takesContext, severity},
#include "frame/codes.def"
#undef ZAN_CODE
};

// The format strings come from the host's catalogue and cannot be literals. The platform accepts a translation only if
// it has the same conversions as the English text.
#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
#endif
template <class... Arguments>
void formatIntoLoggingBuffer(const char* format, Arguments... arguments) {
    std::snprintf(Belp_GetThreadLoggingBuffer(), kBel_LoggingBufferSize, format, arguments...);
}

}  // namespace

int32_t Zanp_ReportErr(uint16_t site, int32_t code, int16_t context) {
    if (code == 0) return 0;
    Belp_SetThreadLastError(0);
    int32_t severity = Zan_kSeverityError;
    const CodeMessage* known = nullptr;
    for (const CodeMessage& candidate : kCodeMessages) {
        if (candidate.code == code) known = &candidate;
    }
    if (known == nullptr) {
        formatIntoLoggingBuffer(zan::messageText(Message::UnknownError), code);
    } else {
        severity = known->severity;
        if (known->takesContext) {
            const char* contextText = zan::messageText(Message{context});
            formatIntoLoggingBuffer(zan::messageText(known->message), contextText);
        } else {
            formatIntoLoggingBuffer(zan::messageText(known->message));
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
