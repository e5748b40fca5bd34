// What the UTF-8 and UTF-16 converters of String share: both directions
// stage chunks on the stack and append them, the decoders to a result
// reserved to its exact count, and in both the block kernels take what they
// can and the written steps the rest.
#pragma once

#include <cstddef>
#include <string>

#include "string/Staging.h"

namespace zelvo {
namespace unicode {
// Each file that includes this gets its own copy, with internal linkage: the
// library exports none of it.
namespace {

// Fills [o, oEnd) from the input at p, moving both cursors. The kernel takes
// the blocks it can; where it stops at a block it cannot take whole, or near
// the end of the input, up to pace.stepSpan units go through the written
// steps one at a time: step(p, end, o) takes the step at p, writes its output
// at o and returns the cursor after it. Returns at the end of the input, or
// when fewer than pace.room places are left: room holds what one kernel
// block or one run of steps writes, so neither has to look at oEnd.
template <typename In, typename Out, typename Kernel, typename Step>
void convertChunk(const In*& p, const In* const end, Out*& o, Out* const oEnd,
                  Kernel kernel, Step step, ChunkPace pace) {
  while (p != end && oEnd - o >= pace.room) {
    const In* const before = p;
    kernel(p, end, o, oEnd);
    if (p != before) continue;
    const In* const stop = end - p > pace.stepSpan ? p + pace.stepSpan : end;
    while (p < stop) p = step(p, end, o);
  }
}

// Converts [p, end) chunk by chunk through a staging buffer of kStaging
// units of type Out on the stack, appending each chunk to out in one block.
// With kReserveByFirstChunk, once the first chunk is full, an empty out is
// reserved to what all would take at that chunk's rate of units per element,
// and a sixteenth more: a long result is then made in one allocation, or
// grows once more, where growing chunk by chunk would double its way up and
// copy itself each time.
template <std::size_t kStaging, typename Out, bool kReserveByFirstChunk,
          typename In, typename Target, typename Kernel, typename Step>
void convertByChunks(const In* p, const In* const end, Target& out,
                     Kernel kernel, Step step, ChunkPace pace) {
  static_assert(sizeof(Out) == sizeof(typename Target::value_type),
                "the staging units are the target's units");
  Out staging[kStaging];
  const In* const begin = p;
  while (p != end) {
    Out* o = staging;
    convertChunk(p, end, o, staging + kStaging, kernel, step, pace);
    const auto used = static_cast<std::size_t>(o - staging);
    if (kReserveByFirstChunk && p != end && out.empty()) {
      const auto taken = static_cast<std::size_t>(p - begin);
      const auto left = static_cast<std::size_t>(end - p);
      // At most 4 units for each element: no overflow for any input that
      // fits in memory.
      const std::size_t rest =
          left / taken * used + left % taken * used / taken;
      const std::size_t estimate = used + rest + rest / 16;
      out.reserve(estimate < out.max_size() ? estimate : out.max_size());
    }
    out.append(reinterpret_cast<const typename Target::value_type*>(staging),
               used);
  }
}

// Decodes [p, end) into a new string, built apart from any object so that a
// failure of any allocation leaves the caller's object as it was. The code
// points are staged kStaging at a time in a buffer on the stack, which stays
// in the first-level cache, and appended in blocks: the result is written
// once, with no fill before it. Its capacity is the one the standard string
// gives a new string of exactly its content. A result that the first chunk
// holds whole is made from the staging buffer. A longer one is reserved from
// empty to bound(p, end), no fewer than the code points to come and exactly
// as many in well-formed text, and the standard libraries we build with give
// a reserve from empty just the capacity of a new string of that length
// (ConversionCapacityTest checks both); where malformed input falls short of
// the bound, the result is fitted by a copy. Input too short to fill the
// staging buffer is not bounded at all. The kernel and the steps run as in
// convertChunk.
template <std::size_t kStaging, typename In, typename Bound, typename Kernel,
          typename Step>
std::u32string decodeApart(const In* p, const In* const end, Bound bound,
                           Kernel kernel, Step step, ChunkPace pace) {
  // A first chunk that stops for lack of room has written more than
  // kStaging - pace.room code points, room being 64 at most: enough that a
  // reserve from empty is exact.
  static_assert(kStaging >= 128, "the staging holds two kernel blocks");
  char32_t staging[kStaging];
  // Each unit of input gives at most one code point.
  const bool fitsOneChunk =
      end - p <= static_cast<std::ptrdiff_t>(kStaging) - pace.room;
  const std::size_t most = fitsOneChunk ? 0 : bound(p, end);
  char32_t* o = staging;
  convertChunk(p, end, o, staging + kStaging, kernel, step, pace);
  if (p == end)
    return std::u32string(staging, static_cast<std::size_t>(o - staging));
  std::u32string decoded;
  decoded.reserve(most);
  for (;;) {
    decoded.append(staging, static_cast<std::size_t>(o - staging));
    if (p == end) break;
    o = staging;
    convertChunk(p, end, o, staging + kStaging, kernel, step, pace);
  }
  if (decoded.size() != most) return std::u32string(decoded);
  return decoded;
}

}  // namespace
}  // namespace unicode
}  // namespace zelvo
