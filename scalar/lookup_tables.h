// Contents of the lookup tables, for the start of a service and for rebuilding reclaimed tables.
#ifndef ZAN_SCALAR_LOOKUP_TABLES_H
#define ZAN_SCALAR_LOOKUP_TABLES_H

#include <cstddef>
#include <cstdint>

namespace zan {

inline constexpr size_t kSineTableBytes = 1024;
inline constexpr size_t kCharTableBytes = 65536;

/// 256 quarter-wave sines: entry i is sin(i / 255 * pi / 2).
void fillSineTable(float* sines);

/// Products and quotients of 8-bit values on a scale of 255: 256 by 256 entries each, that of a and b at a * 256 + b.
void fillCharTables(uint8_t* products, uint8_t* quotients);

}  // namespace zan

#endif  // ZAN_SCALAR_LOOKUP_TABLES_H
