// Fuzzes the wide and UTF-32 conversions of String: both are straight copies
// of 32-bit units, so every value, bad or not, must come back bit for bit.
#include <cstdint>
#include <string>
#include <utility>

#include "fuzz/FuzzSupport.h"
#include "string/String.h"

using zelvo::unicode::String;
using namespace zelvo_fuzz;

static_assert(sizeof(wchar_t) == 4, "wide strings are taken to be UTF-32");

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::wstring wide;
  std::u32string utf32;
  for (size_t i = 0; i + 3 < size; i += 4) {
    uint32_t v = data[i] | (data[i + 1] << 8) | (data[i + 2] << 16) |
                 (static_cast<uint32_t>(data[i + 3]) << 24);
    wide.push_back(static_cast<wchar_t>(v));
    utf32.push_back(v);
  }

  const String fromWide(wide);
  FUZZ_CHECK(fromWide.size() == wide.size(), hex(utf32));
  FUZZ_CHECK(std::u32string(fromWide.begin(), fromWide.end()) == utf32,
             hex(utf32));
  FUZZ_CHECK(fromWide.toWString() == wide, hex(utf32));
  FUZZ_CHECK(fromWide.data()[fromWide.size()] == 0, hex(utf32));

  const String fromUtf32(utf32);
  FUZZ_CHECK(fromUtf32 == fromWide, hex(utf32));
  FUZZ_CHECK(fromUtf32.toUTF32String() == utf32, hex(utf32));

  // The members replace the content, whatever it was.
  String reused{0x41, 0xD800, 0x110000};
  reused.fromWString(wide);
  FUZZ_CHECK(reused == fromWide, hex(utf32));
  reused.fromUTF32String(std::u32string(U"xyz"));
  reused.fromUTF32String(utf32);
  FUZZ_CHECK(reused == fromWide, hex(utf32));

  // toUTF32String hands out the held string itself: giving it back changes
  // nothing, and later edits show through it.
  const std::u32string& self = reused.toUTF32String();
  FUZZ_CHECK(&self == &reused.toUTF32String(), hex(utf32));
  FUZZ_CHECK(self.data() == reused.data(), hex(utf32));
  reused.fromUTF32String(self);
  FUZZ_CHECK(reused == fromWide, hex(utf32));
  reused.push_back(0x263A);
  FUZZ_CHECK(self.size() == utf32.size() + 1 && self.back() == 0x263A,
             hex(utf32));

  // The rvalue constructor takes the storage and leaves its argument empty.
  std::u32string moved = utf32;
  const String taken(std::move(moved));
  FUZZ_CHECK(moved.empty(), hex(utf32));
  FUZZ_CHECK(taken == fromWide, hex(utf32));

  // No output conversion of these two touches a bad code point.
  String wideAgain(fromWide.toWString());
  FUZZ_CHECK(wideAgain.hasBadCodePoints() == fromWide.hasBadCodePoints(),
             hex(utf32));
  return 0;
}
