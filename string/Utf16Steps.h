// One step of the UTF-16 decoder and of the encoder, exactly as written, for
// the portable path and for the places the block kernels leave.
#pragma once

#include <cstddef>

namespace zelvo {
namespace unicode {
namespace kernels {

// Either kind of surrogate unit, high or low: the decoder does not tell them
// apart.
inline bool isSurrogateUnit(char32_t unit) { return (unit & 0xF800) == 0xD800; }

// The usual surrogate pair formula with its constants folded. It is applied
// to any surrogate and whatever unit follows, so malformed pairs give odd
// values rather than errors.
inline char32_t joinUnits(char32_t first, char32_t second) {
  return (first << 10) + second - 0x35FDC00u;
}

// Takes the decoding step at p, which must be below end: stores its code
// point at o. Returns the cursor after the step, or end for a surrogate in
// the last place, which has no partner and is discarded.
inline const char16_t* decodeUtf16Step(const char16_t* p, const char16_t* end,
                                       char32_t*& o) {
  const char32_t unit = *p;
  if (!isSurrogateUnit(unit)) {
    *o++ = unit;
    return p + 1;
  }
  if (end - p < 2) return end;
  *o++ = joinUnits(unit, p[1]);
  return p + 2;
}

// Counts the code points that the decoding steps starting below stop give,
// moving p past them.
inline std::size_t countUtf16Steps(const char16_t*& p, const char16_t* end,
                                   const char16_t* stop) {
  std::size_t count = 0;
  while (p < stop) {
    if (!isSurrogateUnit(*p)) {
      ++p;
    } else if (end - p < 2) {
      p = end;
      break;
    } else {
      p += 2;
    }
    ++count;
  }
  return count;
}

// One element takes one unit below 0xD800, from 0xE000 to 0xFFFF, and above
// U+10FFFF (the lone 0xD800); all others take a pair.
inline bool isSingleUnit(char32_t c) {
  return c < 0xD800 || (c >= 0xE000 && c <= 0xFFFF);
}

// One encoding step: writes the units of c at o and returns their number.
inline std::size_t encodeUtf16Step(char32_t c, char16_t* o) {
  if (isSingleUnit(c)) {
    o[0] = static_cast<char16_t>(c);
    return 1;
  }
  if (c > 0x10FFFF) {
    // Too large for any pair: a lone high surrogate stands in for it.
    o[0] = 0xD800;
    return 1;
  }
  // Supplementary code points, and surrogate elements too: for these the
  // subtraction wraps, and the pair stands for value + 0x100000.
  const char32_t d = c - 0x10000;
  o[0] = static_cast<char16_t>(0xD800 | ((d >> 10) & 0x3FF));
  o[1] = static_cast<char16_t>(0xDC00 | (d & 0x3FF));
  return 2;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
