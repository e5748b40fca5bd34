// The table that packs the chosen lanes of eight to the front: for each mask
// of 8 bits, the positions of its set bits in order, 3 bits each.
#pragma once

#include <array>
#include <cstdint>

namespace zelvo {
namespace unicode {
namespace kernels {

constexpr std::array<std::uint32_t, 256> makeLeftPack() {
  std::array<std::uint32_t, 256> table{};
  for (unsigned mask = 0; mask < 256; ++mask) {
    std::uint32_t packed = 0;
    unsigned slot = 0;
    for (unsigned lane = 0; lane < 8; ++lane) {
      if ((mask >> lane) & 1) packed |= lane << (3 * slot++);
    }
    table[mask] = packed;
  }
  return table;
}

inline constexpr std::array<std::uint32_t, 256> kLeftPack = makeLeftPack();

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
