// What the UTF-8 and UTF-16 converters of String share: decoders that write
// their exactly counted result in place, encoders that stage chunks on the
// stack and append them, and in both the block kernels taking what they can
// and the written steps the rest.
#pragma once

#include <cstddef>
#include <string>

namespace zelvo {
namespace unicode {
// Each file that includes this gets its own copy, with internal linkage: the
// library exports none of it.
namespace {

// Fills [o, oEnd) from the input at p, moving both cursors. The kernel takes
// the blocks it can; where it stops at a block it cannot take whole, or near
// the end of the input, up to stepSpan units go through the written steps
// one at a time: step(p, end, o) takes the step at p, writes its output at o
// and returns the cursor after it. Returns at the end of the input, or when
// fewer than room places are left: room must hold what one kernel block or
// one run of steps writes, so neither has to look at oEnd.
template <typename In, typename Out, typename Kernel, typename Step>
void convertChunk(const In*& p, const In* const end, Out*& o, Out* const oEnd,
                  Kernel kernel, Step step, std::ptrdiff_t stepSpan,
                  std::ptrdiff_t room) {
  while (p != end && oEnd - o >= room) {
    const In* const before = p;
    kernel(p, end, o, oEnd);
    if (p != before) continue;
    const In* const stop = end - p > stepSpan ? p + stepSpan : end;
    while (p < stop) p = step(p, end, o);
  }
}

// Converts [p, end) chunk by chunk through a staging buffer of kStaging
// units of type Out on the stack, appending each chunk to out in one block.
template <std::size_t kStaging, typename Out, typename In, typename Target,
          typename Kernel, typename Step>
void convertByChunks(const In* p, const In* const end, Target& out,
                     Kernel kernel, Step step, std::ptrdiff_t stepSpan,
                     std::ptrdiff_t room) {
  static_assert(sizeof(Out) == sizeof(typename Target::value_type),
                "the staging units are the target's units");
  Out staging[kStaging];
  while (p != end) {
    Out* o = staging;
    convertChunk(p, end, o, staging + kStaging, kernel, step, stepSpan, room);
    out.append(reinterpret_cast<const typename Target::value_type*>(staging),
               static_cast<std::size_t>(o - staging));
  }
}

// Decodes [p, end) into a new string, built apart from any object so that
// a failure of any allocation leaves the caller's object as it was.
// codePoints is the exact number of code points the input gives: the result
// is made of that size once and written in place. The kernel runs as in
// convertChunk; the last code points, fewer than room, go one step at a time.
//
// The sized constructor gives the capacity that shrink_to_fit would give
// that many code points, on libstdc++ and libc++ alike (resize does not:
// libstdc++ rounds its smallest sizes up to twice its short buffer), so the
// result fits with one allocation and no copy. ConversionAllocationFailureTest
// holds it to shrink_to_fit at every small size.
//
// Everything is inlined into it, so that the string's zero fill of the new
// size is seen to be a fill with zero and becomes the library's memset.
template <typename In, typename Kernel, typename Step>
__attribute__((flatten)) std::u32string decodeApart(
    const In* p, const In* const end, std::size_t codePoints, Kernel kernel,
    Step step, std::ptrdiff_t stepSpan, std::ptrdiff_t room) {
  std::u32string decoded(codePoints, U'\0');
  if (codePoints != 0) {
    char32_t* o = &decoded[0];
    char32_t* const oEnd = o + codePoints;
    convertChunk(p, end, o, oEnd, kernel, step, stepSpan, room);
    while (p != end && o != oEnd) p = step(p, end, o);
  }
  return decoded;
}

}  // namespace
}  // namespace unicode
}  // namespace zelvo
