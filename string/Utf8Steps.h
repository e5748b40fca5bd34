// One step of the UTF-8 decoder and of the encoder, exactly as written, for
// the portable path and for the places the block kernels leave.
#pragma once

#include <cstddef>

namespace zelvo {
namespace unicode {
namespace kernels {

// Takes the decoding step at p, which must be below end: stores its code
// point at o and advances o, if the step gives one. Returns the cursor after
// the step, or end when the sequence of a lead runs past the end, which stops
// decoding with nothing stored for it.
inline const unsigned char* decodeUtf8Step(const unsigned char* p,
                                           const unsigned char* end,
                                           char32_t*& o) {
  const unsigned lead = *p;
  if (lead < 0x80) {
    *o++ = lead;
    return p + 1;
  }
  // Stray continuation bytes and 0xF8 to 0xFF start nothing: skipped.
  if (lead < 0xC0 || lead >= 0xF8) return p + 1;
  const std::size_t remaining = static_cast<std::size_t>(end - p);
  if (lead < 0xE0) {
    if (remaining < 2) return end;
    *o++ = ((lead & 0x1F) << 6) | (p[1] & 0x3Fu);
    return p + 2;
  }
  if (lead < 0xF0) {
    if (remaining < 3) return end;
    *o++ = ((lead & 0x0F) << 12) | ((p[1] & 0x3Fu) << 6) | (p[2] & 0x3Fu);
    return p + 3;
  }
  if (remaining < 4) return end;
  *o++ = ((lead & 0x07) << 18) | ((p[1] & 0x3Fu) << 12) |
         ((p[2] & 0x3Fu) << 6) | (p[3] & 0x3Fu);
  return p + 4;
}

// Counts the code points that the decoding steps starting below stop give,
// moving p past them (to end when a sequence is cut short by the end).
inline std::size_t countUtf8Steps(const unsigned char*& p,
                                  const unsigned char* end,
                                  const unsigned char* stop) {
  std::size_t count = 0;
  while (p < stop) {
    const unsigned lead = *p;
    std::size_t length = 1;
    if (lead >= 0xC0 && lead < 0xF8)
      length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (static_cast<std::size_t>(end - p) < length) {
      p = end;
      break;
    }
    if (lead < 0x80 || length > 1) ++count;
    p += length;
  }
  return count;
}

// The number of bytes the encoder writes for c: 0 for a surrogate or a value
// above U+10FFFF, which it drops.
inline std::size_t utf8Length(char32_t c) {
  if (c < 0x80) return 1;
  if (c < 0x800) return 2;
  if (c < 0x10000) return (c & 0xF800) == 0xD800 ? 0 : 3;
  return c < 0x110000 ? 4 : 0;
}

// One encoding step: writes the form of c at o and returns the number of
// bytes written, 0 for a dropped element.
inline std::size_t encodeUtf8Step(char32_t c, unsigned char* o) {
  const std::size_t length = utf8Length(c);
  switch (length) {
    case 1:
      o[0] = static_cast<unsigned char>(c);
      break;
    case 2:
      o[0] = static_cast<unsigned char>(0xC0 | ((c >> 6) & 0x1F));
      o[1] = static_cast<unsigned char>(0x80 | (c & 0x3F));
      break;
    case 3:
      o[0] = static_cast<unsigned char>(0xE0 | ((c >> 12) & 0x0F));
      o[1] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
      o[2] = static_cast<unsigned char>(0x80 | (c & 0x3F));
      break;
    case 4:
      o[0] = static_cast<unsigned char>(0xF0 | ((c >> 18) & 0x07));
      o[1] = static_cast<unsigned char>(0x80 | ((c >> 12) & 0x3F));
      o[2] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
      o[3] = static_cast<unsigned char>(0x80 | (c & 0x3F));
      break;
    default:
      break;
  }
  return length;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
