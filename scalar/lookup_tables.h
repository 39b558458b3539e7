// How the lookup tables are filled: used where a service starts and where a reclaimed table is rebuilt.
#ifndef ZAN_SCALAR_LOOKUP_TABLES_H
#define ZAN_SCALAR_LOOKUP_TABLES_H

#include <cstddef>
#include <cstdint>

namespace zan {

inline constexpr size_t kSineTableBytes = 1024;
inline constexpr size_t kCharTableBytes = 65536;

/// 256 quarter-wave sines: entry i is sin(i / 255 * pi / 2).
void fillSineTable(float* sines);

/// 256 by 256 entries each, at a * 256 + b: products and quotients of 8-bit values on a scale of 255.
void fillCharTables(uint8_t* products, uint8_t* quotients);

}  // namespace zan

#endif  // ZAN_SCALAR_LOOKUP_TABLES_H
