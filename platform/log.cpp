// The log: passes entries to the host's handler, and drops them if there is none.
#include "platform/handler.h"
#include "zan/platform/oska.h"

namespace {

zan_platform::Handler<OSKA_LogHandler> logHandler;

}  // namespace

void OSKA_SetLogHandler(OSKA_LogHandler handler, void* context) { logHandler.set(handler, context); }

void OSKA_Log(int32_t kind, const char* category, const char* function, const char* text) {
    const auto handler = logHandler.get();
    if (handler.function != nullptr) handler.function(handler.context, kind, category, function, text);
}
