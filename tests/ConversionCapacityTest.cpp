// The capacity of the decoders' results: no larger than the standard string
// gives a new string of exactly that content, for well-formed and malformed
// input of every length around the edges of the decoders' staging; and the
// fact of the standard library that lets the decoders get it with no copy.
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "StandardCapacity.h"
#include "string/Staging.h"
#include "string/String.h"
#include "tests/reference/Utf16Reference.h"
#include "tests/reference/Utf8Reference.h"

namespace {

using zelvo::unicode::kDecodeStaging;
using zelvo::unicode::String;

// Result lengths around the edges of the staging: short ones, the lengths
// where the first chunk fills, and those where later chunks do.
std::vector<std::size_t> lengthsAroundTheEdges() {
  std::vector<std::size_t> lengths;
  for (std::size_t n = 0; n < 40; ++n) lengths.push_back(n);
  for (std::size_t chunks = 1; chunks <= 3; ++chunks)
    for (std::size_t n = chunks * kDecodeStaging - 80;
         n <= chunks * kDecodeStaging + 8; ++n)
      lengths.push_back(n);
  lengths.push_back(100000);
  return lengths;
}

// One element of each encoded width.
const char32_t kWidths[] = {U'a', U'\u00E9', U'\u20AC', U'\U0001F600'};

TEST(StandardString, ReserveFromEmptyGivesTheCapacityOfANewStringThatLong) {
  // A decoded result longer than one staging chunk is reserved from empty
  // to its length, and fits only because of this.
  for (std::size_t n = kDecodeStaging / 2; n <= 3 * kDecodeStaging; ++n) {
    std::u32string reserved;
    reserved.reserve(n);
    ASSERT_EQ(reserved.capacity(), freshCapacity(n)) << n;
  }
  std::u32string large;
  large.reserve(1000003);
  EXPECT_EQ(large.capacity(), freshCapacity(1000003));
}

TEST(Utf8DecodingCapacity, WellFormedResultsFitTheirContentAtEveryLength) {
  for (const char32_t width : kWidths) {
    for (const std::size_t n : lengthsAroundTheEdges()) {
      const std::string in =
          zelvo_reference::encodeUtf8(std::u32string(n, width));
      String s(U"old content, long enough to live outside the object");
      s.fromUTF8String(in);
      ASSERT_EQ(s.size(), n);
      ASSERT_LE(s.capacity(), freshCapacity(n))
          << n << " elements of U+" << std::hex << static_cast<unsigned>(width);
    }
  }
}

TEST(Utf8DecodingCapacity, ResultsShortOfTheBoundFitTheirContent) {
  // A lead that swallows an ASCII byte, a stray continuation byte, an
  // impossible byte and a tail cut short: each gives fewer code points than
  // the bytes that are no continuation bytes.
  const std::string kShortfalls[] = {"\xC3\x41", "\x80\x41", "\xF8\x41",
                                     "\x41\xE2\x82"};
  for (const std::string& piece : kShortfalls) {
    for (const std::size_t n : lengthsAroundTheEdges()) {
      std::string in;
      while (in.size() < 2 * n) in += piece;
      String s;
      s.fromUTF8String(in);
      ASSERT_EQ(s.size(), zelvo_reference::decodeUtf8(in).size());
      ASSERT_LE(s.capacity(), freshCapacity(s.size())) << in.size();
    }
  }
}

TEST(Utf16DecodingCapacity, WellFormedResultsFitTheirContentAtEveryLength) {
  for (const char32_t width : kWidths) {
    for (const std::size_t n : lengthsAroundTheEdges()) {
      const std::u16string in =
          zelvo_reference::encodeUtf16(std::u32string(n, width));
      String s(U"old content, long enough to live outside the object");
      s.fromUTF16String(in);
      ASSERT_EQ(s.size(), n);
      ASSERT_LE(s.capacity(), freshCapacity(n))
          << n << " elements of U+" << std::hex << static_cast<unsigned>(width);
    }
  }
}

TEST(Utf16DecodingCapacity, ResultsShortOfTheBoundFitTheirContent) {
  // Surrogates that join whatever follows them, and one cut off at the end:
  // each gives fewer code points than the bound counts.
  const std::u16string kShortfalls[] = {std::u16string{0xDC00, 0xDC00},
                                        std::u16string{0xD800, 0x0041},
                                        std::u16string{0x0041, 0xDBFF}};
  for (const std::u16string& piece : kShortfalls) {
    for (const std::size_t n : lengthsAroundTheEdges()) {
      std::u16string in;
      while (in.size() < 2 * n) in += piece;
      String s;
      s.fromUTF16String(in);
      ASSERT_EQ(s.size(), zelvo_reference::decodeUtf16(in).size());
      ASSERT_LE(s.capacity(), freshCapacity(s.size())) << in.size();
    }
  }
}

}  // namespace
