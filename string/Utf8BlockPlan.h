// What a block of 64 UTF-8 bytes holds, from five bit planes of its bytes,
// and whether the decoder's steps through it can be read off at once.
#pragma once

#include <cstddef>
#include <cstdint>

#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

struct Utf8BlockPlan {
  // Bit k is set for byte k of the block that is 0x80 to 0xBF.
  std::uint64_t continuation;
  // Bit k is set for byte k that is not ASCII.
  std::uint64_t nonAscii;
  // Bit k is set for byte k that is 0xE0 or above: a lead of three bytes or
  // more.
  std::uint64_t longLead;
  // True when, walked from the step boundary behind its carried bytes, the
  // block's steps start exactly at the bytes that are no continuation
  // bytes, and each of those gives a code point: the carried bytes and the
  // bytes behind every lead are as many continuation bytes as its class
  // needs, there are no others, and no byte is 0xF8 to 0xFF. Such a block
  // decodes as a validating decoder would read it (the bytes of the last
  // sequence past the block are taken as they stand, as always).
  bool whole;
  // How many bytes the last sequence of a whole block reaches past it (0 to
  // 3): the bytes the next block carries.
  unsigned spill;
};

// The plan of a block of 64 ASCII bytes.
inline Utf8BlockPlan asciiUtf8Block() { return {0, 0, 0, true, 0}; }

// bitK has bit k set when bit K of byte k of the block is set; carried is
// the number of bytes at the front of the block that the last sequence of
// the block before it takes (0 to 3).
inline Utf8BlockPlan planUtf8Block(std::uint64_t bit7, std::uint64_t bit6,
                                   std::uint64_t bit5, std::uint64_t bit4,
                                   std::uint64_t bit3, unsigned carried) {
  const std::uint64_t continuation = bit7 & ~bit6;
  const std::uint64_t lead = bit7 & bit6;         // 0xC0 and above
  const std::uint64_t lead3 = lead & bit5;        // 0xE0 and above
  const std::uint64_t lead4 = lead3 & bit4;       // 0xF0 and above
  const std::uint64_t impossible = lead4 & bit3;  // 0xF8 and above
  // The bytes that the leads claim: one behind each lead, two behind the
  // three- and four-byte ones, three behind the four-byte ones; and the
  // carried ones.
  const std::uint64_t claimed = (lead << 1) | (lead3 << 2) | (lead4 << 3) |
                                ((std::uint64_t{1} << carried) - 1);
  Utf8BlockPlan plan;
  plan.continuation = continuation;
  plan.nonAscii = bit7;
  plan.longLead = lead3;
  plan.whole = impossible == 0 && claimed == continuation;
  // The claims of the last leads that fall past the block, one per byte.
  const unsigned past64 =
      static_cast<unsigned>(((lead >> 63) | (lead3 >> 62) | (lead4 >> 61)) & 1);
  const unsigned past65 =
      static_cast<unsigned>(((lead3 >> 63) | (lead4 >> 62)) & 1);
  const unsigned past66 = static_cast<unsigned>(lead4 >> 63);
  plan.spill = past64 + past65 + past66;
  return plan;
}

// The exact number of code points that decoding [p, end) gives. Blocks of 64
// bytes go one after the other, each carrying the bytes that the last
// sequence of the one before reaches into it, so that the next load never
// waits for the last plan; a whole block gives one code point for each byte
// that is no continuation byte. Where a block is not whole, or near the end,
// the steps are counted one at a time from the boundary behind its carried
// bytes. plan(p, carried) plans the 64 bytes at p; this is always inlined
// into the kernel that names it, so that its plan is inlined too.
template <Utf8BlockPlan (*plan)(const unsigned char*, unsigned)>
__attribute__((always_inline)) inline std::size_t countUtf8ByBlocks(
    const unsigned char* p, const unsigned char* end) {
  std::size_t count = 0;
  unsigned carried = 0;
  while (p != end) {
    // The last sequence of a block must end before the input does, or it
    // would be cut off.
    if (end - p >= 67) {
      const Utf8BlockPlan block = plan(p, carried);
      if (block.whole) {
        count += 64;
        if (block.continuation != 0)
          count -= static_cast<std::size_t>(
              __builtin_popcountll(block.continuation));
        p += 64;
        carried = block.spill;
        continue;
      }
    }
    p += carried;
    carried = 0;
    const unsigned char* stop = end - p > 64 ? p + 64 : end;
    count += countUtf8Steps(p, end, stop);
  }
  return count;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
