// VUN, the host's string library. Zan calls only its version check.
#ifndef ZAN_PLATFORM_VUN_H
#define ZAN_PLATFORM_VUN_H

#include "zan/platform/bel.h"

/// @defgroup vun VUN: the version check
/// @ingroup platform
/// @{

/// The interface version that this header describes, for VUN_CheckVersions.
inline constexpr int32_t kVUN_InterfaceVersion = 3;

extern "C" {

/// Checks the interface version.
/// @return 0 if this library provides it, else 1 after a report under errorNumber (severity 16)
ZAN_PLATFORM_API int32_t VUN_CheckVersions(int32_t errorNumber, int32_t version);

/// Sets the interface version that VUN_CheckVersions accepts, from any thread; initially kVUN_InterfaceVersion.
ZAN_PLATFORM_API void VUN_SetInterfaceVersion(int32_t version);

}  // extern "C"

/// @}

#endif  // ZAN_PLATFORM_VUN_H
