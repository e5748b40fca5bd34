// Fuzzes the UTF-16 decoder and encoder of String against the step-by-step
// rules: the input is read once as 16-bit units to decode, and once as fuzz
// text whose elements, any 32-bit values, are encoded.
#include <cstdint>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "string/String.h"
#include "tests/ConversionKernelsTest.h"
#include "tests/reference/Utf16Reference.h"

using zelvo::unicode::String;
using namespace zelvo_fuzz;

namespace {

std::u32string held(const String& s) {
  return std::u32string(s.begin(), s.end());
}

void checkEncoder(const String& s) {
  const std::u32string elements = held(s);
  const std::u16string units = s.toUTF16String();
  FUZZ_CHECK(units == zelvo_reference::encodeUtf16(elements), hex(elements));
  FUZZ_CHECK(units.size() >= s.size(), hex(elements));

  // Decoding the encoder's output gives the model's reading of those units,
  // and for good code points that is the String itself.
  const String back(units);
  FUZZ_CHECK(held(back) == zelvo_reference::decodeUtf16(units), hex(elements));
  if (!s.hasBadCodePoints()) {
    FUZZ_CHECK(back == s, hex(elements));
    FUZZ_CHECK(zelvo_reference::isWellFormedUtf16(units), hex(elements));
  }

  // After cleaning, the output is well formed and reads back unchanged.
  String stripped = s;
  stripped.stripBadCodePoints();
  String replaced = s;
  replaced.replaceBadCodePoints();
  for (const String* clean : {&stripped, &replaced}) {
    const std::u16string out = clean->toUTF16String();
    FUZZ_CHECK(zelvo_reference::isWellFormedUtf16(out), hex(held(*clean)));
    FUZZ_CHECK(String(out) == *clean, hex(held(*clean)));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::u16string units;
  for (size_t i = 0; i + 1 < size; i += 2)
    units.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));

  const std::u32string expected = zelvo_reference::decodeUtf16(units);
  const String decoded(units);
  FUZZ_CHECK(held(decoded) == expected, hex(units));
  FUZZ_CHECK(decoded.size() <= units.size(), hex(units));
  for (char32_t c : decoded) FUZZ_CHECK(c <= 0x211FFF, hex(units));

  String reused{0x41, 0xDC00, 0xFFFFFFFF};
  reused.fromUTF16String(units);
  FUZZ_CHECK(reused == decoded, hex(units));

  // Well-formed input goes through both directions unit for unit.
  if (zelvo_reference::isWellFormedUtf16(units))
    FUZZ_CHECK(decoded.toUTF16String() == units, hex(units));

  checkEncoder(decoded);

  // Every kernel set, not only the one this processor picks, decodes and
  // encodes as the reference does, with an exact count.
  const String anyValues = fuzzText(data, size);
  const std::u32string values(anyValues.begin(), anyValues.end());
  for (const auto* set : zelvo_kernels::availableKernelSets()) {
    const zelvo_kernels::Decoded d =
        zelvo_kernels::decodeUtf16With(*set, units);
    FUZZ_CHECK(d.elements == expected && d.counted == expected.size(),
               std::string(set->name) + " " + hex(units));
    FUZZ_CHECK(zelvo_kernels::encodeUtf16With<4096>(*set, values) ==
                       zelvo_reference::encodeUtf16(values) &&
                   zelvo_kernels::encodeUtf16With<16>(*set, values) ==
                       zelvo_reference::encodeUtf16(values),
               std::string(set->name) + " " + hex(values));
  }
  checkEncoder(fuzzText(data, size));
  return 0;
}
