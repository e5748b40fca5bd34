// Standard output for the tool, and the ways it writes code points and bytes
// for people to read.
#pragma once

#include <string>
#include <type_traits>

#include "string/String.h"

namespace zelvo {
namespace tool {

// Buffered writes to standard output; a failed write is noticed at the end.
void writeOut(const std::string& bytes);
// Flushes; returns false (and tells standard error) if any write failed.
bool finishOutput();

// Writes "zelvo-unicode: " and the line to standard error.
void tellError(const std::string& line);

// The value in upper-case hexadecimal, with at least `digits` digits.
std::string hex(unsigned long value, int digits);
// "U+00E9"; values above U+FFFF get as many digits as they need, and bad
// code points (surrogates, above U+10FFFF) are written "0xD800".
std::string codePointName(char32_t c);
// The names of all elements, separated by spaces.
std::string codePointNames(const unicode::String& s);
// The text with every non-ASCII or control element escaped as \uXXXX
// (\UXXXXXXXX above U+FFFF), so that invisible differences show.
std::string escapedText(const unicode::String& s);
// The text as UTF-8 if every element can be shown as it stands, else empty:
// controls and bad code points are not shown.
std::string printableText(const unicode::String& s);

// Bytes, or 16-bit or 32-bit units, as hexadecimal numbers of two, four or
// eight digits separated by spaces.
template <typename Unit>
std::string hexUnits(const std::basic_string<Unit>& units) {
  std::string text;
  for (Unit unit : units) {
    if (!text.empty()) text += ' ';
    text += hex(static_cast<std::make_unsigned_t<Unit>>(unit), 2 * sizeof unit);
  }
  return text;
}

}  // namespace tool
}  // namespace zelvo
