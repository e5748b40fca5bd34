// Tables of byte shuffles that write the leading bytes of each lane of a
// vector one behind the other, for the kernels that pack variable-length
// forms into place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zelvo {
namespace unicode {
namespace kernels {

using Shuffle = std::array<std::uint8_t, 16>;

// For each index below kCount, the shuffle that takes, lane after lane of
// kLaneBytes bytes, length(index, lane) bytes of the lane and writes them one
// behind the other: from the lane's lowest byte up, or, with kTopDown, from
// its byte length - 1 down, for lanes that hold a sequence with its first
// byte highest. The places behind them read zero.
template <std::size_t kCount, unsigned kLanes, unsigned kLaneBytes,
          bool kTopDown, typename Length>
constexpr std::array<Shuffle, kCount> makeShuffles(Length length) {
  std::array<Shuffle, kCount> table{};
  for (unsigned index = 0; index < kCount; ++index) {
    Shuffle shuffle{};
    for (std::uint8_t& b : shuffle) b = 0x80;
    unsigned at = 0;
    for (unsigned lane = 0; lane < kLanes; ++lane) {
      const unsigned n = length(index, lane);
      for (unsigned k = 0; k < n; ++k)
        shuffle[at++] = static_cast<std::uint8_t>(kLaneBytes * lane +
                                                  (kTopDown ? n - 1 - k : k));
    }
    table[index] = shuffle;
  }
  return table;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
