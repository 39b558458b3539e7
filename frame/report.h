// Failure reports. The function that finds a failure reports it once and returns the result of the report.
#ifndef ZAN_FRAME_REPORT_H
#define ZAN_FRAME_REPORT_H

#include "frame/messages.h"
#include "zan/frame.h"
#include "zan/platform/bel.h"

namespace zan {

/// The place that reports. Its number is the low half of the report's error number.
enum class Site : uint16_t {
#define ZAN_SITE(number, name, operations) name = number,
#include "frame/sites.def"
#undef ZAN_SITE
};

/// The error number of a site's reports, for platform functions that report by themselves.
[[nodiscard]] constexpr uint32_t errorNumber(Site site) { return 0x110000U | static_cast<uint16_t>(site); }

/// For codes whose message has no "%s".
inline constexpr Message kNoContext{0};

/// Reports a Zan_Err_ code with the message that belongs to it; returns the code.
inline int32_t report(Site site, int32_t code, Message context) {
    return Zanp_ReportErr(static_cast<uint16_t>(site), code, static_cast<int16_t>(context));
}

/// Reports a message without a code, severity 8. The thread's last error stays as it was.
void reportText(Site site, Message message);

/// Reports a platform error with the platform's own text, severity 8; returns the platform's result.
[[nodiscard]] int32_t reportPlatform(Site site, Bel_Error platformCode);
/// Reports a platform error with a text from the message table, severity 8; returns the platform's result.
[[nodiscard]] int32_t reportPlatform(Site site, Bel_Error platformCode, Message message);

/// Throws the result code of a plain function as a long, for the classes. The plain function has already reported it.
inline void throwIfFailed(int32_t code) {
    if (code != 0) throw static_cast<long>(code);
}

}  // namespace zan

#endif  // ZAN_FRAME_REPORT_H
