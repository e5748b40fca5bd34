// What the UTF-8 and UTF-16 converters of String share: the SSE2 switch of
// their block kernels, and the staging buffer they append from in blocks.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>

// The block kernels use SSE2, which every x86-64 processor has; elsewhere
// they fall back to plain loops with the same results.
#if defined(__SSE2__) && defined(__x86_64__)
#define ZELVO_SSE2_BLOCKS 1
#include <emmintrin.h>
#endif

namespace zelvo {
namespace unicode {
// Each file that includes this gets its own copy, with internal linkage: the
// library exports none of it.
namespace {

// Every direction stages at most this many units before a block append, and
// allocates a few places more so that one step never has to test for room.
constexpr std::size_t kMaxStaging = 128;
constexpr std::size_t kStagingSpare = 5;

// 128 places, or the given count when that is smaller; a count of zero gets
// the full 128.
inline std::size_t stagingCapacity(std::size_t count) {
  if (count == 0) return kMaxStaging;
  return std::min(kMaxStaging, count);
}

// Appends one staged block. Kept out of line so that the compiler, which
// can see that a block is small, does not expand the copy into a slow
// inline string move: the library memcpy is much faster at these sizes.
template <typename Target, typename Unit>
__attribute__((noinline)) void appendBlock(Target& out, const Unit* block,
                                           std::size_t count) {
  out.append(block, count);
}

// Runs a block kernel window after window from p into o. Each window reads
// kSteps * kUnitsPerStep input units, stores kSteps outputs and gives the
// number of steps at its front that the kernel could take. Whole windows move
// the cursors by a constant, so that the next window is read before this one
// is counted; the first window that is not whole gives its leading run. No
// step is taken at or past limit, so flushes fall where single steps would
// put them, and no window runs where its stores would pass the spare places
// or its reads the end of the input. The caller checks the first window.
template <std::size_t kSteps, std::size_t kUnitsPerStep, typename In,
          typename Out, typename Kernel>
inline void takeWindows(const In*& p, const In* end, Out*& o, Out* limit,
                        Kernel kernel) {
  constexpr std::ptrdiff_t kWidth = kSteps * kUnitsPerStep;
  for (;;) {
    const std::size_t run = kernel(p, o);
    const std::size_t room = static_cast<std::size_t>(limit - o);
    if (run < kSteps || room <= kSteps) {
      const std::size_t taken = std::min(run, room);
      p += kUnitsPerStep * taken;
      o += taken;
      return;
    }
    p += kWidth;
    o += kSteps;
    if (limit - o + static_cast<std::ptrdiff_t>(kStagingSpare) <
            static_cast<std::ptrdiff_t>(kSteps) ||
        end - p < kWidth) {
      return;
    }
  }
}

// Runs a decoder into a new string, built apart from any object so that a
// failure of any allocation leaves the caller's object as it was.
// mostCodePoints bounds what the input can give, so the block appends never
// reallocate; decode(staging, capacity, out) stages through a buffer of
// capacity places and its spare ones.
//
// The result is shrunk to fit by a copy rather than by shrink_to_fit, which
// is only a request and may swallow a failed allocation: this way the
// capacity always fits, and a failure throws before anything is installed.
template <typename Decode>
std::u32string decodeApart(std::size_t mostCodePoints, std::size_t capacity,
                           Decode decode) {
  std::u32string decoded;
  decoded.reserve(mostCodePoints);
  {
    std::unique_ptr<char32_t[]> staging(new char32_t[capacity + kStagingSpare]);
    decode(staging.get(), capacity, decoded);
  }
  if (decoded.capacity() > decoded.size()) {
    std::u32string fitted(decoded.begin(), decoded.end());
    decoded.swap(fitted);
  }
  return decoded;
}

}  // namespace
}  // namespace unicode
}  // namespace zelvo
