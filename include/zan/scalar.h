// Integer and bit utilities, fixed point, ratios and the lookup tables.
#ifndef ZAN_SCALAR_H
#define ZAN_SCALAR_H

#include "zan/types.h"

extern "C" {

/// @defgroup tables Lookup tables
/// Tables of the services that Zan_Birth started. A prepare call hands out addresses that stay valid until the matching
/// unprepare call; every prepare call that finds its service running must be matched by one unprepare call, whether or
/// not it succeeded. An unprepare call too many makes the count wrap: the tables are then no longer checked for
/// reclaimed memory.
/// @{

/// Hands out the 256 by 256 tables of 8-bit products and quotients on a scale of 255, at index a * 256 + b:
/// products floor((a * b + 127) / 255); quotients 255 when b >= a, else floor((b * 255 + floor(a / 2)) / a).
/// @param reportFailure    report tables that cannot be made ready, and return Zan_Result_Failed for them
/// @param failIfReclaimed  do not rebuild tables whose memory the platform has reclaimed
/// @param ok               receives whether the addresses were handed out; may be null
/// @param multiplyTable    receives the products, null on failure; may be null
/// @param divideTable      receives the quotients, null on failure; may be null
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run; Zan_Result_Failed (4) when the
/// tables
///           cannot be made ready and reportFailure is set, 0 with ok false when it is not
/// @reports  0x11001F "attempt to use unrequested math service (fast char math).";
///           0x11001F "fast character math will be unavailable."
/// @threads  one at a time: the prepare counts are not synchronized
[[nodiscard]] ZAN_API int32_t Zan_PrepareFCMD(bool reportFailure, bool failIfReclaimed, bool* ok,
                                              uint8_t** multiplyTable, uint8_t** divideTable);

/// Ends a use of the tables of Zan_PrepareFCMD.
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run
/// @reports  0x110020 "attempt to use unrequested math service (fast char math)."
/// @threads  one at a time
ZAN_API int32_t Zan_UnprepareFCMD();

/// Hands out the quarter-wave sine table: 256 floats, entry i = sin(i / 255 * pi / 2), radians.
/// @param reportFailure    as in Zan_PrepareFCMD
/// @param failIfReclaimed  as in Zan_PrepareFCMD
/// @param ok               as in Zan_PrepareFCMD
/// @param sineTable        receives the table, null on failure; may be null
/// @return   as Zan_PrepareFCMD
/// @reports  0x11002A "attempt to use unrequested math service (fast trig)."; 0x11002A "fast trig will be unavailable."
/// @threads  one at a time
/// @libm     the entries come from sin
[[nodiscard]] ZAN_API int32_t Zan_PrepareFTrig(bool reportFailure, bool failIfReclaimed, bool* ok, float** sineTable);

/// Ends a use of the table of Zan_PrepareFTrig.
/// @return   0; Zan_Err_UnrequestedService (0x1105) when the service does not run
/// @reports  0x11002A "attempt to use unrequested math service (fast trig)."
/// @threads  one at a time
ZAN_API int32_t Zan_UnprepareFTrig();

/// @}

}  // extern "C"

#endif  // ZAN_SCALAR_H
