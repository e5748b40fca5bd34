// How the conversions of String stage their output on the stack: 8 KiB in
// each direction, which stays in the first-level cache, filled chunk by
// chunk between block appends.
#pragma once

#include <cstddef>

namespace zelvo {
namespace unicode {

constexpr std::size_t kDecodeStaging = 2048;       // code points
constexpr std::size_t kUtf8EncodeStaging = 8192;   // bytes
constexpr std::size_t kUtf16EncodeStaging = 4096;  // units

// How a conversion fills a chunk: where the kernel takes nothing, the steps
// go stepSpan units of input one by one before it is asked again; and the
// chunk ends when fewer than room places are left, room being the most that
// one kernel block or one such run of steps writes.
struct ChunkPace {
  std::ptrdiff_t stepSpan;
  std::ptrdiff_t room;
};

// 64 bytes give 64 code points at most, as does a block of the kernel.
constexpr ChunkPace kUtf8DecodePace = {64, 64};
// 8 elements give 32 bytes at most; a window of 16, 64.
constexpr ChunkPace kUtf8EncodePace = {8, 64};
// 16 units give 16 code points at most, as does a block of the kernel.
constexpr ChunkPace kUtf16DecodePace = {16, 16};
// 8 elements give 16 units at most; a window of 16, 32.
constexpr ChunkPace kUtf16EncodePace = {8, 32};

}  // namespace unicode
}  // namespace zelvo
