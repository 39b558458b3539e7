// The message table: the index of each text, and its text in the host's language.
#ifndef ZAN_FRAME_MESSAGES_H
#define ZAN_FRAME_MESSAGES_H

#include <cstdint>

namespace zan {

/// Index of a text in the message table: a message, or a context, which is a phrase that replaces the "%s" of a
/// message.
enum class Message : int16_t {
#define ZAN_MESSAGE(index, name, text) name = index,
#include "frame/messages.def"
#undef ZAN_MESSAGE
};

/// The text from the host's message catalogue, English where the catalogue has none.
[[nodiscard]] const char* messageText(Message message);

}  // namespace zan

#endif  // ZAN_FRAME_MESSAGES_H
