// Helpers shared by the fuzz targets: a check that aborts with a readable
// message, a reader for operation scripts, and the fuzz text format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "string/String.h"

namespace zelvo_fuzz {

using zelvo::unicode::String;

// Ends the run so that libFuzzer records the input as a crash.
[[noreturn]] inline void fail(const char* file, int line, const char* what,
                              const std::string& detail) {
  std::fprintf(stderr, "%s:%d: property violated: %s\n  %s\n", file, line, what,
               detail.c_str());
  std::abort();
}

// The detail is evaluated only when the property does not hold.
#define FUZZ_CHECK(cond, detail)                                          \
  do {                                                                    \
    if (!(cond)) ::zelvo_fuzz::fail(__FILE__, __LINE__, #cond, (detail)); \
  } while (0)

// A bad code point: above U+10FFFF, or a surrogate value.
inline bool isBad(char32_t c) {
  return c > 0x10FFFF || (c & 0xFFFFF800u) == 0xD800;
}

template <typename Sequence>
std::string hex(const Sequence& s) {
  std::string out;
  char buffer[16];
  size_t shown = 0;
  for (auto c : s) {
    if (shown++ == 64) {
      out += "...";
      break;
    }
    std::snprintf(buffer, sizeof buffer, "%s%04X", out.empty() ? "" : " ",
                  static_cast<unsigned>(static_cast<uint32_t>(c)));
    out += buffer;
  }
  return "[" + out + "]";
}

inline std::string hexBytes(const std::string& bytes) {
  std::string out;
  char buffer[8];
  for (size_t i = 0; i < bytes.size() && i < 96; ++i) {
    std::snprintf(buffer, sizeof buffer, "%s%02X", i ? " " : "",
                  static_cast<unsigned char>(bytes[i]));
    out += buffer;
  }
  return "[" + out + "]";
}

// Reads an operation script; past its end every read gives 0.
class Reader {
 public:
  Reader(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  bool done() const { return pos_ >= size_; }
  size_t remaining() const { return done() ? 0 : size_ - pos_; }

  uint8_t byte() { return pos_ < size_ ? data_[pos_++] : 0; }

  uint32_t u32() {
    uint32_t v = 0;
    for (int i = 0; i < 4; ++i) v |= static_cast<uint32_t>(byte()) << (8 * i);
    return v;
  }

  // A position or count for a string of the given size: mostly within or
  // just past its end, sometimes npos.
  size_t position(size_t size) {
    uint8_t b = byte();
    if (b == 0xFF) return static_cast<size_t>(-1);
    return b % (size + 3);
  }

  // An element: mostly from a few interesting values, sometimes any 32 bits.
  char32_t element() {
    static const char32_t kPalette[] = {
        0x0000, 0x0041, 0x0042, 0x0061,   0x00E9,   0x0301,     0x0323, 0xD800,
        0xDFFF, 0xFFFD, 0xFFFF, 0x10FFFF, 0x110000, 0xFFFFFFFF, 0x1F600};
    uint8_t b = byte();
    if (b < 0xF0) return kPalette[b % (sizeof kPalette / sizeof *kPalette)];
    return static_cast<char32_t>(u32());
  }

  // A short run of elements, U+0000 among the possible values.
  std::u32string elements(size_t maxLength) {
    size_t n = byte() % (maxLength + 1);
    std::u32string s;
    for (size_t i = 0; i < n; ++i) s.push_back(element());
    return s;
  }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t pos_ = 0;
};

// The fuzz text format, so that UTF-8 text makes a natural seed while every
// 32-bit value stays reachable: bytes are read as the library's lax UTF-8
// (lead byte decides, following bytes give their low six bits, stray
// continuation bytes are skipped, a truncated sequence ends the text), except
// that a byte 0xF8 to 0xFF introduces a raw little-endian 32-bit element.
inline String fuzzText(const uint8_t* data, size_t size) {
  std::u32string out;
  size_t i = 0;
  while (i < size) {
    uint8_t lead = data[i];
    size_t need;
    char32_t value;
    if (lead < 0x80) {
      out.push_back(lead);
      ++i;
      continue;
    } else if (lead < 0xC0) {
      ++i;
      continue;
    } else if (lead < 0xE0) {
      need = 1;
      value = lead & 0x1F;
    } else if (lead < 0xF0) {
      need = 2;
      value = lead & 0x0F;
    } else if (lead < 0xF8) {
      need = 3;
      value = lead & 0x07;
    } else {
      if (size - i < 5) break;
      uint32_t raw = 0;
      for (int k = 0; k < 4; ++k)
        raw |= static_cast<uint32_t>(data[i + 1 + k]) << (8 * k);
      out.push_back(raw);
      i += 5;
      continue;
    }
    if (size - i < need + 1) break;
    for (size_t k = 1; k <= need; ++k)
      value = (value << 6) | (data[i + k] & 0x3F);
    out.push_back(value);
    i += need + 1;
  }
  return String(std::move(out));
}

}  // namespace zelvo_fuzz
