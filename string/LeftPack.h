// The permutations that pack the chosen lanes of eight to the front: for
// each mask of 8 bits, the positions of its set bits in order, then zeros.
#pragma once

#include <array>
#include <cstdint>

namespace zelvo {
namespace unicode {
namespace kernels {
// Each kernel file that includes this gets its own copy, with internal
// linkage, which it reaches with no indirection.
namespace {

using LanePermutation = std::array<std::int32_t, 8>;

constexpr std::array<LanePermutation, 256> makeLeftPacks() {
  std::array<LanePermutation, 256> table{};
  for (unsigned mask = 0; mask < 256; ++mask) {
    LanePermutation packed{};
    unsigned slot = 0;
    for (unsigned lane = 0; lane < 8; ++lane) {
      if ((mask >> lane) & 1) packed[slot++] = static_cast<std::int32_t>(lane);
    }
    table[mask] = packed;
  }
  return table;
}

alignas(32) constexpr std::array<LanePermutation, 256> kLeftPacks =
    makeLeftPacks();

}  // namespace
}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
