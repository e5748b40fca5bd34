// zelvo::unicode::CodePage: one single-byte encoding, ASCII below 0x80 and a
// 128-entry table for the bytes 0x80 to 0xFF.
#pragma once

#include <array>
#include <string>
#include <unordered_map>

#include "string/String.h"

namespace zelvo {
namespace unicode {

// A plain value. Both directions are total: a byte without a character
// decodes to U+FFFD, and a code point without a byte encodes to '?'.
class CodePage {
 public:
  // The page "none": byte 0x80 + i is U+0080 + i, with no holes.
  CodePage();
  // Entry i of the table is the code point of byte 0x80 + i; U+FFFD marks a
  // hole. The reverse map is built here; where a code point stands twice,
  // the higher byte wins.
  CodePage(const std::string& name, std::array<char32_t, 128> table);

  std::string getName() const;

  // Encodes. Bad code points are dropped without counting as a loss; any
  // other code point without a byte becomes 0x3F and sets lossy.
  std::string fromUnicode(const String& text) const;
  std::string fromUnicode(const String& text, bool& lossy) const;

  // Decodes one code point per byte.
  String toUnicode(const std::string& bytes) const;

 private:
  std::string name;
  std::array<char32_t, 128> toUnicodeTable;
  std::unordered_map<char32_t, char> fromUnicodeMap;
};

}  // namespace unicode
}  // namespace zelvo
