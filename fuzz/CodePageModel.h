// A model of a single-byte code page for the code page fuzz targets: the
// published tables of the two built-in pages, written out independently of
// the library, and the encoding and decoding rules on any table.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "fuzz/FuzzSupport.h"

namespace zelvo_fuzz {

using Table = std::array<char32_t, 128>;
constexpr char32_t kHole = 0xFFFD;

inline Table defaultTable() {
  Table t;
  for (int i = 0; i < 128; ++i) t[i] = 0x80 + i;
  return t;
}

inline Table windows1252() {
  static const char32_t kLow[32] = {
      0x20AC, kHole,  0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, kHole,  0x017D, kHole,
      kHole,  0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, kHole,  0x017E, 0x0178};
  Table t;
  for (int i = 0; i < 32; ++i) t[i] = kLow[i];
  for (int b = 0xA0; b <= 0xFF; ++b) t[b - 0x80] = b;
  return t;
}

inline Table windows874() {
  Table t;
  t.fill(kHole);
  t[0x80 - 0x80] = 0x20AC;
  t[0x85 - 0x80] = 0x2026;
  const char32_t quotes[] = {0x2018, 0x2019, 0x201C, 0x201D,
                             0x2022, 0x2013, 0x2014};
  for (int i = 0; i < 7; ++i) t[0x91 - 0x80 + i] = quotes[i];
  t[0xA0 - 0x80] = 0x00A0;
  for (int b = 0xA1; b <= 0xDA; ++b) t[b - 0x80] = 0x0E01 + (b - 0xA1);
  for (int b = 0xDF; b <= 0xFB; ++b) t[b - 0x80] = 0x0E3F + (b - 0xDF);
  return t;
}

inline String modelDecode(const Table& table, const std::string& bytes) {
  std::u32string out;
  for (char ch : bytes) {
    uint8_t b = static_cast<uint8_t>(ch);
    out.push_back(b < 0x80 ? char32_t(b) : table[b - 0x80]);
  }
  return String(std::move(out));
}

// Bad code points vanish without a trace; ASCII goes out as it stands; the
// rest goes through the reverse of the table, in which the highest byte of a
// value wins and holes have no entry; whatever has no byte becomes '?'.
inline std::string modelEncode(const Table& table, const String& text,
                               bool& lossy) {
  std::map<char32_t, uint8_t> reverse;
  for (int i = 0; i < 128; ++i)
    if (table[i] != kHole) reverse[table[i]] = static_cast<uint8_t>(0x80 + i);
  lossy = false;
  std::string out;
  for (char32_t c : text) {
    if (isBad(c)) continue;
    if (c < 0x80) {
      out += static_cast<char>(c);
      continue;
    }
    auto it = reverse.find(c);
    if (it != reverse.end()) {
      out += static_cast<char>(it->second);
    } else {
      out += '?';
      lossy = true;
    }
  }
  return out;
}

}  // namespace zelvo_fuzz
