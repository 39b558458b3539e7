// The processor's instruction sets, for the subsystems that have kernels: implementations of one loop, one for each
// instruction set.
#ifndef ZAN_FRAME_PROCESSOR_H
#define ZAN_FRAME_PROCESSOR_H

#include <atomic>

namespace zan {

/// The instruction sets among which the library chooses at run time; each includes those before it. A subsystem's list
/// of kernels is in this order. kBaseline is what every processor of the target has; its kernel is the plain one or,
/// on 64-bit ARM (NEON) and in WebAssembly (SIMD), the one for two lanes if there is one.
enum class InstructionSet : int { kBaseline, kAvx2 };

/// The best instruction set that the processor, the system and this build support. Queries the processor at each call.
InstructionSet supportedInstructionSet();

/// The instruction set whose kernels the library is to use: the supported one. Test builds link another definition,
/// which returns kBaseline.
InstructionSet preferredInstructionSet();

/// The value of activeInstructionSet(), negative before its first call.
extern std::atomic<int> activeInstructionSetOrNone;
InstructionSet initActiveInstructionSet();

/// The instruction set whose kernels the library uses. Determined at the first call, so that nothing runs when the
/// library is loaded; threads that make the first call at the same time determine the same value.
inline InstructionSet activeInstructionSet() {
    const int active = activeInstructionSetOrNone.load(std::memory_order_relaxed);
    return active < 0 ? initActiveInstructionSet() : static_cast<InstructionSet>(active);
}

}  // namespace zan

#endif  // ZAN_FRAME_PROCESSOR_H
