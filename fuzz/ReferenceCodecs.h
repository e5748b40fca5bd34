// Plain, unoptimised models of the library's UTF-8 and UTF-16 rules, and
// strict well-formedness checks, for the conversion fuzz targets to compare
// against.
#pragma once

#include <cstdint>
#include <string>

namespace zelvo_fuzz {

// Lead byte decides the length; the following bytes are not inspected; a
// truncated sequence ends the input; stray and impossible leads are skipped.
inline std::u32string modelDecodeUtf8(const std::string& in) {
  std::u32string out;
  size_t i = 0;
  while (i < in.size()) {
    uint8_t lead = static_cast<uint8_t>(in[i]);
    size_t need;
    uint32_t value;
    if (lead < 0x80) {
      out.push_back(lead);
      ++i;
      continue;
    }
    if (lead < 0xC0 || lead >= 0xF8) {
      ++i;
      continue;
    }
    if (lead < 0xE0) {
      need = 1;
      value = lead & 0x1F;
    } else if (lead < 0xF0) {
      need = 2;
      value = lead & 0x0F;
    } else {
      need = 3;
      value = lead & 0x07;
    }
    if (in.size() - i < need + 1) break;
    for (size_t k = 1; k <= need; ++k)
      value = (value << 6) | (static_cast<uint8_t>(in[i + k]) & 0x3F);
    out.push_back(value);
    i += need + 1;
  }
  return out;
}

// Surrogates and values above U+10FFFF are dropped.
template <typename Sequence>
std::string modelEncodeUtf8(const Sequence& in) {
  std::string out;
  for (char32_t c : in) {
    uint32_t v = c;
    if (v < 0x80) {
      out += static_cast<char>(v);
    } else if (v < 0x800) {
      out += static_cast<char>(0xC0 | (v >> 6));
      out += static_cast<char>(0x80 | (v & 0x3F));
    } else if (v < 0x10000) {
      if (v >= 0xD800 && v <= 0xDFFF) continue;
      out += static_cast<char>(0xE0 | (v >> 12));
      out += static_cast<char>(0x80 | ((v >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (v & 0x3F));
    } else if (v <= 0x10FFFF) {
      out += static_cast<char>(0xF0 | (v >> 18));
      out += static_cast<char>(0x80 | ((v >> 12) & 0x3F));
      out += static_cast<char>(0x80 | ((v >> 6) & 0x3F));
      out += static_cast<char>(0x80 | (v & 0x3F));
    }
  }
  return out;
}

// Shortest forms of U+0000 to U+D7FF and U+E000 to U+10FFFF only.
inline bool isWellFormedUtf8(const std::string& in) {
  size_t i = 0;
  while (i < in.size()) {
    uint8_t b = static_cast<uint8_t>(in[i]);
    size_t need;
    uint32_t value, minimum;
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
    for (size_t k = 1; k <= need; ++k) {
      uint8_t t = static_cast<uint8_t>(in[i + k]);
      if ((t & 0xC0) != 0x80) return false;
      value = (value << 6) | (t & 0x3F);
    }
    if (value < minimum || value > 0x10FFFF) return false;
    if (value >= 0xD800 && value <= 0xDFFF) return false;
    i += need + 1;
  }
  return true;
}

// Any surrogate unit joins the unit behind it by the folded pair formula;
// one at the very end is dropped.
inline std::u32string modelDecodeUtf16(const std::u16string& in) {
  std::u32string out;
  size_t i = 0;
  while (i < in.size()) {
    uint32_t u = in[i];
    if ((u & 0xF800) != 0xD800) {
      out.push_back(u);
      ++i;
      continue;
    }
    if (i + 1 == in.size()) break;
    uint32_t v = in[i + 1];
    out.push_back((u << 10) + v - 0x35FDC00u);
    i += 2;
  }
  return out;
}

// Every element gives one or two units; a surrogate element wraps into a
// pair, and a value above U+10FFFF becomes the lone unit 0xD800.
template <typename Sequence>
std::u16string modelEncodeUtf16(const Sequence& in) {
  std::u16string out;
  for (char32_t c : in) {
    uint32_t v = c;
    if (v < 0xD800 || (v >= 0xE000 && v <= 0xFFFF)) {
      out += static_cast<char16_t>(v);
    } else if (v > 0x10FFFF) {
      out += static_cast<char16_t>(0xD800);
    } else {
      uint32_t d = v - 0x10000u;
      out += static_cast<char16_t>(0xD800 | ((d >> 10) & 0x3FF));
      out += static_cast<char16_t>(0xDC00 | (d & 0x3FF));
    }
  }
  return out;
}

// Surrogates only as a high unit directly followed by a low unit.
inline bool isWellFormedUtf16(const std::u16string& in) {
  for (size_t i = 0; i < in.size(); ++i) {
    char16_t u = in[i];
    if (u >= 0xDC00 && u <= 0xDFFF) return false;
    if (u >= 0xD800 && u <= 0xDBFF) {
      if (i + 1 == in.size()) return false;
      char16_t v = in[i + 1];
      if (v < 0xDC00 || v > 0xDFFF) return false;
      ++i;
    }
  }
  return true;
}

}  // namespace zelvo_fuzz
