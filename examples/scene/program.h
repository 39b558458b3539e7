// zan-scene as a function that tests can call.
#ifndef ZAN_SCENE_PROGRAM_H
#define ZAN_SCENE_PROGRAM_H

#include <ostream>

namespace scene {

/// The whole program: reads options and deck, starts zan, computes the answers, writes the files, stops zan.
/// @param argc, argv  as main receives them
/// @param out         standard output
/// @param err         standard error: messages, the library's reports, progress
/// @return            an ExitCode
int run(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace scene

#endif  // ZAN_SCENE_PROGRAM_H
