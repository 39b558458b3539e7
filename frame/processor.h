// What the processor and the system can do, for the rooms that have kernels: forms of one loop for several instruction
// sets.
#ifndef ZAN_FRAME_PROCESSOR_H
#define ZAN_FRAME_PROCESSOR_H

#include <atomic>

namespace zan {

/// The instruction sets that kernels are made for, each with all that are before it. A room's kernels stand in a list
/// in this order, the plain form first.
enum class Instructions : int { kPlain, kAvx2 };

/// All that this machine and this build have. Asks the processor at each call.
Instructions supportedInstructions();

/// Negative before the first use.
extern std::atomic<int> chosenInstructions;
Instructions chooseInstructions();

/// What kernels use: all that is supported, or the plain form alone where the environment variable ZAN_KERNEL is
/// "plain". Decided at the first use, nothing runs at load; threads that come first at the same time decide the
/// same.
inline Instructions instructions() {
    const int chosen = chosenInstructions.load(std::memory_order_relaxed);
    return chosen < 0 ? chooseInstructions() : static_cast<Instructions>(chosen);
}

}  // namespace zan

#endif  // ZAN_FRAME_PROCESSOR_H
