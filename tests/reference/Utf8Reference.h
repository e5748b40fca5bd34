// The UTF-8 decoder and encoder of String written out step by step from
// their rules, with no shortcut, for the tests and fuzz targets to hold the
// library to; and a strict check of well-formed UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zelvo_reference {

// The lead byte's high bits give the length; the bytes behind it give their
// low six bits whatever they are; a lead whose sequence runs past the end
// stops decoding with nothing stored for it; 0x80 to 0xBF and 0xF8 to 0xFF
// are skipped.
inline std::u32string decodeUtf8(const std::string& in) {
  std::u32string out;
  std::size_t i = 0;
  while (i < in.size()) {
    const std::uint32_t lead = static_cast<unsigned char>(in[i]);
    std::size_t length;
    std::uint32_t value;
    if (lead <= 0x7F) {
      length = 1;
      value = lead;
    } else if (lead <= 0xBF) {
      ++i;
      continue;
    } else if (lead <= 0xDF) {
      length = 2;
      value = lead & 0x1F;
    } else if (lead <= 0xEF) {
      length = 3;
      value = lead & 0x0F;
    } else if (lead <= 0xF7) {
      length = 4;
      value = lead & 0x07;
    } else {
      ++i;
      continue;
    }
    if (in.size() - i < length) break;
    for (std::size_t k = 1; k < length; ++k)
      value = (value << 6) | (static_cast<unsigned char>(in[i + k]) & 0x3F);
    out.push_back(value);
    i += length;
  }
  return out;
}

// By the value, in this order: one byte up to 0x7F, two up to 0x7FF, three
// up to 0xFFFF except the surrogates, which are dropped, four up to
// 0x10FFFF; anything larger is dropped.
inline std::string encodeUtf8(const std::u32string& in) {
  std::string out;
  for (const char32_t c : in) {
    const std::uint32_t v = c;
    if (v <= 0x7F) {
      out += static_cast<char>(v);
    } else if (v <= 0x7FF) {
      out += static_cast<char>(0xC0 | ((v >> 6) & 0x1F));
      out += static_cast<char>(0x80 | (v & 0x3F));
    } else if (v >= 0xD800 && v <= 0xDFFF) {
      continue;
    } else if (v <= 0xFFFF) {
      out += static_cast<char>(0xE0 | ((v >> 12) & 0x0F));
      out += static_cast<char>(0x80 | ((v >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (v & 0x3F));
    } else if (v <= 0x10FFFF) {
      out += static_cast<char>(0xF0 | ((v >> 18) & 0x07));
      out += static_cast<char>(0x80 | ((v >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((v >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (v & 0x3F));
    }
  }
  return out;
}

// Shortest forms of U+0000 to U+D7FF and U+E000 to U+10FFFF only.
inline bool isWellFormedUtf8(const std::string& in) {
  std::size_t i = 0;
  while (i < in.size()) {
    const std::uint8_t b = static_cast<std::uint8_t>(in[i]);
    std::size_t need;
    std::uint32_t value, minimum;
    if (b < 0x80) {
      ++i;
      continue;
    } else if (b >= 0xC2 && b <= 0xDF) {
      need = 1, value = b & 0x1F, minimum = 0x80;
    } else if (b >= 0xE0 && b <= 0xEF) {
      need = 2, value = b & 0x0F, minimum = 0x800;
    } else if (b >= 0xF0 && b <= 0xF4) {
      need = 3, value = b & 0x07, minimum = 0x10000;
    } else {
      return false;
    }
    if (in.size() - i < need + 1) return false;
    for (std::size_t k = 1; k <= need; ++k) {
      const std::uint8_t t = static_cast<std::uint8_t>(in[i + k]);
      if ((t & 0xC0) != 0x80) return false;
      value = (value << 6) | (t & 0x3F);
    }
    if (value < minimum || value > 0x10FFFF) return false;
    if (value >= 0xD800 && value <= 0xDFFF) return false;
    i += need + 1;
  }
  return true;
}

}  // namespace zelvo_reference
