// What the UTF-8 and UTF-16 converters of String share: decoders that count
// their result exactly and write it in place, encoders that stage chunks of
// it and append them, and between the two the block kernels taking what
// they can and the written steps the rest.
#pragma once

#include <cstddef>
#include <string>

namespace zelvo {
namespace unicode {
// Each file that includes this gets its own copy, with internal linkage: the
// library exports none of it.
namespace {

// Runs a decoder into a new string, built apart from any object so that a
// failure of any allocation leaves the caller's object as it was.
// codePoints is the exact number of code points the input gives: the result
// is sized to it once, and decode(o, oEnd) writes them straight into place,
// so the capacity fits the content with no copy.
//
// Where the string's own rounding still leaves spare capacity (in its
// smallest sizes), the result is fitted by a copy rather than by
// shrink_to_fit, which is only a request and may swallow a failed
// allocation: this way the capacity always fits, and a failure throws
// before anything is installed.
template <typename Decode>
std::u32string decodeApart(std::size_t codePoints, Decode decode) {
  std::u32string decoded;
  decoded.resize(codePoints);
  if (codePoints != 0) decode(&decoded[0], &decoded[0] + codePoints);
  if (decoded.capacity() > decoded.size()) {
    std::u32string fitted(decoded.begin(), decoded.end());
    decoded.swap(fitted);
  }
  return decoded;
}

// Runs a conversion over [p, end) into [o, oEnd), which holds at least what
// the input gives, and leaves o behind its output. The kernel takes the blocks
// it can; where it stops at a block it cannot take whole, or near the end of
// the input or of the result, up to stepSpan units go through the written steps
// one at a time: step(p, end, o) takes the step at p, writes its output at o
// and returns the cursor after it.
template <typename In, typename Out, typename Kernel, typename Step>
void convertInPlace(const In* p, const In* const end, Out*& o, Out* const oEnd,
                    Kernel kernel, Step step, std::ptrdiff_t stepSpan) {
  while (p != end && o != oEnd) {
    const In* const before = p;
    kernel(p, end, o, oEnd);
    if (p != before) continue;
    const In* const stop = end - p > stepSpan ? p + stepSpan : end;
    while (p < stop && o != oEnd) p = step(p, end, o);
  }
}

// Encodes [p, end) chunk by chunk through a staging buffer on the stack and
// appends each chunk to out, which grows as its appends make it. A chunk of
// kChunk elements gives at most kChunk * kMostUnits units.
template <std::size_t kChunk, std::size_t kMostUnits, typename Unit,
          typename Target, typename Kernel, typename Step>
void encodeByChunks(const char32_t* p, const char32_t* const end, Target& out,
                    Kernel kernel, Step step, std::ptrdiff_t stepSpan) {
  Unit staging[kChunk * kMostUnits];
  while (p != end) {
    const char32_t* const chunkEnd =
        static_cast<std::size_t>(end - p) > kChunk ? p + kChunk : end;
    Unit* o = staging;
    convertInPlace(p, chunkEnd, o, staging + kChunk * kMostUnits, kernel, step,
                   stepSpan);
    out.append(reinterpret_cast<const typename Target::value_type*>(staging),
               static_cast<std::size_t>(o - staging));
    p = chunkEnd;
  }
}

}  // namespace
}  // namespace unicode
}  // namespace zelvo
