// How the other rooms report a failure: one call at the place that finds it, which also gives the result to return.
#ifndef ZAN_FRAME_REPORT_H
#define ZAN_FRAME_REPORT_H

#include "platform/bel.h"
#include "zan/frame.h"

namespace zan {

/// Where a report comes from.
enum class Site : uint16_t {
#define ZAN_SITE(number, name, operations) name = number,
#include "frame/sites.def"
#undef ZAN_SITE
};

/// A text of the message table, or a context that fills one.
enum class Message : int16_t {
#define ZAN_MESSAGE(index, name, text) name = index,
#include "frame/messages.def"
#undef ZAN_MESSAGE
};

/// The context for the codes whose message takes none.
inline constexpr Message kNoContext{0};

/// The message's text in the host's language.
[[nodiscard]] const char* messageText(Message message);

/// Reports one of the library's codes and returns it.
inline int32_t report(Site site, int32_t code, Message context) {
    return Zanp_ReportErr(static_cast<uint16_t>(site), code, static_cast<int16_t>(context));
}

/// Reports a message as it stands, severity 8. The thread's last error is left alone.
void reportText(Site site, Message message);

/// Reports one of the platform's errors, severity 8, with no text of the library's; returns the platform's result.
[[nodiscard]] int32_t reportPlatform(Site site, Bel_Error platformCode);
/// The same with a text.
[[nodiscard]] int32_t reportPlatform(Site site, Bel_Error platformCode, Message message);

/// The error number of a site, for platform calls that report for themselves.
[[nodiscard]] constexpr uint32_t errorNumber(Site site) { return 0x110000U | static_cast<uint16_t>(site); }

/// The classes turn a code of the plain functions, already reported, into an exception.
inline void throwIfFailed(int32_t code) {
    if (code != 0) throw static_cast<long>(code);
}

}  // namespace zan

#endif  // ZAN_FRAME_REPORT_H
