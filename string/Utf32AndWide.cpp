// UTF-32, wide and native strings at the boundary of String: straight copies
// of 32-bit units, and UTF-8 under the name of the native encoding.
#include <string>
#include <utility>

#include "string/String.h"

namespace zelvo {
namespace unicode {

// A wide string is UTF-32 by contract: each wchar_t is copied bit for bit.
static_assert(sizeof(wchar_t) == sizeof(char32_t),
              "the wide conversions take wchar_t to be 32 bits wide");

String::String(const std::u32string& utf32) : str_(utf32) {}

String::String(std::u32string&& utf32) noexcept : str_(std::move(utf32)) {
  utf32.clear();  // the argument is left empty, whatever its storage was
}

String::String(const std::wstring& wide) { fromWString(wide); }

void String::fromUTF32String(const std::u32string& utf32) {
  // The held string itself, reached through toUTF32String: nothing to do.
  if (&utf32 == &str_) return;
  // Plain assignment: the object keeps its storage when it is large enough,
  // and a failed allocation leaves the content as it was.
  str_ = utf32;
}

const std::u32string& String::toUTF32String() const { return str_; }

void String::fromWString(const std::wstring& wide) {
  // The units pass through unchanged: a negative wchar_t keeps its bits and
  // becomes an element above 0x7FFFFFFF, and no two units are joined.
  const std::u32string units(wide.begin(), wide.end());
  fromUTF32String(units);
}

std::wstring String::toWString() const {
  return std::wstring(str_.begin(), str_.end());
}

// The native encoding is UTF-8 everywhere this library runs; no locale or
// environment is consulted.
void String::fromNativeString(const std::string& native) {
  fromUTF8String(native);
}

std::string String::toNativeString() const { return toUTF8String(); }

}  // namespace unicode
}  // namespace zelvo
