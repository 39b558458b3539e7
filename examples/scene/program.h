// zan-scene as a function, so that the tests can call it.
#ifndef ZAN_SCENE_PROGRAM_H
#define ZAN_SCENE_PROGRAM_H

#include <ostream>

namespace scene {

/// The whole program: reads the options and the deck, starts zan, answers, writes the files, stops zan.
/// @param out  standard output
/// @param err  standard error: messages, the library's reports, progress
/// @return     an ExitCode
int run(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace scene

#endif  // ZAN_SCENE_PROGRAM_H
