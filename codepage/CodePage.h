// zelvo::unicode::CodePage: one single-byte encoding, ASCII below 0x80 and a
// 128-entry table for the bytes 0x80 to 0xFF.
#pragma once

#include <array>
#include <string>
#include <unordered_map>

#include "string/String.h"

namespace zelvo {
namespace unicode {

/// One single-byte encoding: ASCII below 0x80 on every page, and a table for
/// the bytes 0x80 to 0xFF.
///
/// A plain value, unchanged after construction, so any number of threads may
/// use one page at once. Both directions are total: a byte without a
/// character decodes to U+FFFD, and a code point without a byte encodes to
/// 0x3F ('?'). Nothing is reported except through the `lossy` flag; only
/// exhausted memory throws (`std::bad_alloc`).
class CodePage {
 public:
  /// The page "none": byte 0x80 + i is U+0080 + i, with no holes. The
  /// library never registers it.
  CodePage();
  /// A page named `name`, which may be any text, the empty one included.
  /// Entry i of `table` is the code point of byte 0x80 + i, and U+FFFD marks
  /// a hole, a byte without a character; nothing else is checked. Where a
  /// code point stands twice, it encodes to the higher byte.
  CodePage(const std::string& name, std::array<char32_t, 128> table);

  /// A copy of the name, which is the page's key in the registry.
  std::string getName() const;

  /// Encodes `text` as the two-argument form does, and does not tell of a
  /// loss.
  std::string fromUnicode(const String& text) const;
  /// Encodes `text`, one byte for each code point. `lossy` is an output
  /// only: set to false, then true if a code point had no byte and became
  /// 0x3F. U+FFFD has no byte on any page. Bad code points are dropped
  /// without a byte and without setting `lossy`; `text` is left alone.
  std::string fromUnicode(const String& text, bool& lossy) const;

  /// Decodes `bytes`, one code point for each byte, a zero byte too; a hole
  /// gives U+FFFD.
  String toUnicode(const std::string& bytes) const;

 private:
  std::string name;
  std::array<char32_t, 128> toUnicodeTable;
  std::unordered_map<char32_t, char> fromUnicodeMap;
};

}  // namespace unicode
}  // namespace zelvo
