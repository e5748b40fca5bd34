// The UTF-16 decoder and encoder of String written out step by step from
// their rules, with no shortcut, for the tests and fuzz targets to hold the
// library to; and a strict check of well-formed UTF-16.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zelvo_reference {

// A unit whose top five bits are not 11011 is stored as it is. Any other,
// high or low surrogate alike, is combined with whatever unit follows by
// (U << 10) + V - 0x35FDC00 in 32-bit arithmetic; in the last place it is
// discarded.
inline std::u32string decodeUtf16(const std::u16string& in) {
  std::u32string out;
  std::size_t i = 0;
  while (i < in.size()) {
    const std::uint32_t u = in[i];
    if ((u & 0xF800) != 0xD800) {
      out.push_back(u);
      ++i;
      continue;
    }
    ++i;
    if (i == in.size()) break;
    const std::uint32_t v = in[i];
    out.push_back((u << 10) + v - 0x35FDC00u);
    ++i;
  }
  return out;
}

// In this order: one unit below 0xD800 and from 0xE000 to 0xFFFF, the lone
// unit 0xD800 above 0x10FFFF, and a pair from value - 0x10000 for all
// others, surrogate values included, for which the subtraction wraps.
inline std::u16string encodeUtf16(const std::u32string& in) {
  std::u16string out;
  for (const char32_t c : in) {
    const std::uint32_t v = c;
    if (v < 0xD800 || (v >= 0xE000 && v <= 0xFFFF)) {
      out += static_cast<char16_t>(v);
    } else if (v > 0x10FFFF) {
      out += static_cast<char16_t>(0xD800);
    } else {
      const std::uint32_t d = v - 0x10000u;
      out += static_cast<char16_t>(0xD800 | ((d >> 10) & 0x3FF));
      out += static_cast<char16_t>(0xDC00 | (d & 0x3FF));
    }
  }
  return out;
}

// Surrogates only as a high unit directly followed by a low unit.
inline bool isWellFormedUtf16(const std::u16string& in) {
  for (std::size_t i = 0; i < in.size(); ++i) {
    const char16_t u = in[i];
    if (u >= 0xDC00 && u <= 0xDFFF) return false;
    if (u >= 0xD800 && u <= 0xDBFF) {
      if (i + 1 == in.size()) return false;
      const char16_t v = in[i + 1];
      if (v < 0xDC00 || v > 0xDFFF) return false;
      ++i;
    }
  }
  return true;
}

}  // namespace zelvo_reference
