// Fuzzes the UTF-8 decoder and encoder of String (and the native forms, which
// are UTF-8): both against the step-by-step reference, and the round trip of
// good code points, and the bad code point members on whatever the decoder
// yields.
#include <cstdint>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "string/String.h"
#include "tests/ConversionKernelsTest.h"
#include "tests/reference/Utf8Reference.h"

using zelvo::unicode::String;
using namespace zelvo_fuzz;

namespace {

std::u32string held(const String& s) {
  return std::u32string(s.begin(), s.end());
}

void checkBadCodePointMembers(const String& s) {
  const std::u32string original = held(s);
  bool anyBad = false;
  std::u32string good;
  for (char32_t c : original) {
    anyBad = anyBad || isBad(c);
    if (!isBad(c)) good.push_back(c);
  }
  FUZZ_CHECK(s.hasBadCodePoints() == anyBad, hex(original));

  String stripped = s;
  stripped.stripBadCodePoints();
  FUZZ_CHECK(held(stripped) == good, hex(original));
  FUZZ_CHECK(!stripped.hasBadCodePoints(), hex(original));

  String replaced = s;
  replaced.replaceBadCodePoints();
  FUZZ_CHECK(!replaced.hasBadCodePoints(), hex(original));
  FUZZ_CHECK(replaced.size() == original.size(), hex(original));
  for (size_t i = 0; i < original.size(); ++i) {
    char32_t want = isBad(original[i]) ? char32_t(0xFFFD) : original[i];
    FUZZ_CHECK(replaced[i] == want, hex(original));
  }

  String noReplacement = s;
  noReplacement.stripReplacementCodePoints();
  std::u32string want;
  for (char32_t c : original)
    if (c != 0xFFFD) want.push_back(c);
  FUZZ_CHECK(held(noReplacement) == want, hex(original));

  // After either cleaning, the encoders give well-formed output that decodes
  // back to the same elements.
  for (const String* clean : {&stripped, &replaced}) {
    std::string utf8 = clean->toUTF8String();
    FUZZ_CHECK(zelvo_reference::isWellFormedUtf8(utf8), hex(held(*clean)));
    FUZZ_CHECK(String(utf8) == *clean, hex(held(*clean)));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const std::u32string expected = zelvo_reference::decodeUtf8(bytes);

  const String decoded(bytes);
  FUZZ_CHECK(held(decoded) == expected, hexBytes(bytes));
  FUZZ_CHECK(decoded.size() <= bytes.size(), hexBytes(bytes));
  FUZZ_CHECK(decoded.data()[decoded.size()] == 0, hexBytes(bytes));
  for (char32_t c : decoded) FUZZ_CHECK(c <= 0x1FFFFF, hexBytes(bytes));

  // The member replaces whatever content the object had, empty input too.
  String reused{0x41, 0xD800, 0x110000, 0xFFFD};
  reused.fromUTF8String(bytes);
  FUZZ_CHECK(reused == decoded, hexBytes(bytes));
  String native{0x42};
  native.fromNativeString(bytes);
  FUZZ_CHECK(native == decoded, hexBytes(bytes));

  // The encoder writes exactly the good elements, shortest form.
  const std::string encoded = decoded.toUTF8String();
  FUZZ_CHECK(encoded == zelvo_reference::encodeUtf8(expected), hexBytes(bytes));
  FUZZ_CHECK(decoded.toNativeString() == encoded, hexBytes(bytes));
  FUZZ_CHECK(zelvo_reference::isWellFormedUtf8(encoded), hexBytes(bytes));
  if (zelvo_reference::isWellFormedUtf8(bytes))
    FUZZ_CHECK(encoded == bytes, hexBytes(bytes));

  // Good code points survive toUTF8String and fromUTF8String unchanged.
  String good = decoded;
  good.stripBadCodePoints();
  FUZZ_CHECK(String(encoded) == good, hexBytes(bytes));
  FUZZ_CHECK(good.toUTF8String() == encoded, hexBytes(bytes));

  checkBadCodePointMembers(decoded);

  // Every kernel set, not only the one this processor picks, decodes and
  // encodes as the reference does, with an exact count.
  const String anyValues = fuzzText(data, size);
  for (const auto* set : zelvo_kernels::availableKernelSets()) {
    const zelvo_kernels::Decoded d = zelvo_kernels::decodeUtf8With(*set, bytes);
    FUZZ_CHECK(d.elements == expected && d.counted == expected.size(),
               std::string(set->name) + " " + hexBytes(bytes));
    const std::u32string values(anyValues.begin(), anyValues.end());
    FUZZ_CHECK(zelvo_kernels::encodeUtf8With<8192>(*set, values) ==
                       zelvo_reference::encodeUtf8(values) &&
                   zelvo_kernels::encodeUtf8With<64>(*set, values) ==
                       zelvo_reference::encodeUtf8(values),
               std::string(set->name) + " " + hex(values));
  }

  // The same members on any 32-bit values, which no decoder can produce.
  const String text = fuzzText(data, size);
  FUZZ_CHECK(text.toUTF8String() == zelvo_reference::encodeUtf8(held(text)),
             hex(held(text)));
  checkBadCodePointMembers(text);
  return 0;
}
