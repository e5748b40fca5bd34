// Tests of the UTF-8 conversions of String: the lax decoder, the dropping
// encoder, and sweeps against a plain reference written from their tables.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include "StandardCapacity.h"
#include "string/String.h"
#include "tests/CorpusTexts.h"
#include "tests/reference/Utf8Reference.h"

namespace {

using zelvo::unicode::String;

static_assert(std::is_same<decltype(&String::fromUTF8String),
                           void (String::*)(const std::string&)>::value,
              "fromUTF8String takes a std::string and returns nothing");
static_assert(std::is_same<decltype(&String::toUTF8String),
                           std::string (String::*)() const>::value,
              "toUTF8String is const and returns a std::string by value");
static_assert(std::is_constructible<String, const std::string&>::value,
              "a String is made from a std::string");

// The bytes of a std::string, written as numbers.
std::string bytes(std::initializer_list<int> values) {
  std::string out;
  for (int v : values) out.push_back(static_cast<char>(v));
  return out;
}

std::string hex(const std::u32string& s) {
  std::string out;
  char buf[16];
  for (char32_t c : s) {
    snprintf(buf, sizeof buf, "%s%X", out.empty() ? "" : " ",
             static_cast<unsigned>(c));
    out += buf;
  }
  return out.empty() ? "(empty)" : out;
}

std::string hex(const std::string& s) {
  std::string out;
  char buf[8];
  for (char c : s) {
    snprintf(buf, sizeof buf, "%s%02X", out.empty() ? "" : " ",
             static_cast<unsigned>(static_cast<unsigned char>(c)));
    out += buf;
  }
  return out.empty() ? "(empty)" : out;
}

std::u32string decode(const std::string& in) {
  String s;
  s.fromUTF8String(in);
  return s.toUTF32String();
}

std::string encode(const std::u32string& elements) {
  return String(elements).toUTF8String();
}

using zelvo_reference::decodeUtf8;
using zelvo_reference::encodeUtf8;

// ---------------------------------------------------------------------------
// Decoding, row by row.

struct DecodeRow {
  const char* name;
  std::string input;
  std::u32string expected;
};

void PrintTo(const DecodeRow& row, std::ostream* os) { *os << row.name; }

class Utf8DecodingRow : public ::testing::TestWithParam<DecodeRow> {};

TEST_P(Utf8DecodingRow, GivesTheListedElements) {
  const DecodeRow& row = GetParam();
  EXPECT_EQ(hex(decode(row.input)), hex(row.expected))
      << "input " << hex(row.input);
}

const DecodeRow kDecodeRows[] = {
    {"NulAndLetter", bytes({0x00, 0x41}), {0x0, 0x41}},
    {"TwoByte", bytes({0xC3, 0xA9}), {0xE9}},
    {"ThreeByte", bytes({0xE2, 0x82, 0xAC}), {0x20AC}},
    {"FourByte", bytes({0xF0, 0x9F, 0x98, 0x80}), {0x1F600}},
    {"LargestCodePoint", bytes({0xF4, 0x8F, 0xBF, 0xBF}), {0x10FFFF}},
    {"OverlongC1", bytes({0xC1, 0xBF}), {0x7F}},
    {"EncodedLowSurrogate", bytes({0xED, 0xB0, 0x80}), {0xDC00}},
    {"StrayContinuationFirst", bytes({0x80, 0x41}), {0x41}},
    {"StrayContinuationBetween", bytes({0x41, 0xBF, 0x42}), {0x41, 0x42}},
    {"ImpossibleLeadsFFFE", bytes({0xFF, 0xFE, 0x41}), {0x41}},
    {"FiveByteFormIsFiveSkips", bytes({0xF8, 0x88, 0x80, 0x80, 0x80}), {}},
    {"NulSwallowedAsContinuation", bytes({0xC3, 0x00}), {0xC0}},
    {"LeadSwallowedThenStray", bytes({0xC3, 0xC3, 0xA9}), {0xC3}},
    {"LettersSwallowedByThreeByteLead", bytes({0xE2, 0x41, 0x42}), {0x2042}},
    {"LettersSwallowedByFourByteLead",
     bytes({0xF0, 0x41, 0x42, 0x43}),
     {0x1083}},
    {"LetterSwallowedByTwoByteLead", bytes({0xC3, 0x41}), {0xC1}},
    {"TruncatedThreeByteAlone", bytes({0xE2, 0x82}), {}},
    {"TruncatedTwoByteAtEnd", bytes({0x41, 0xC3}), {0x41}},
    {"TruncatedLeadTakesLetterWithIt", bytes({0x41, 0xE2, 0x41}), {0x41}},
    {"TruncatedFourByteAtEnd", bytes({0x41, 0xF0, 0x9F, 0x98}), {0x41}},
    {"TwoByteLeadAlone", bytes({0xC3}), {}},
    {"ThreeByteLeadAlone", bytes({0xE2}), {}},
    {"FourByteLeadAlone", bytes({0xF0}), {}},
    {"FourByteLeadWithOneByte", bytes({0xF0, 0x9F}), {}},
    {"ByteOrderMarkKept", bytes({0xEF, 0xBB, 0xBF, 0x41}), {0xFEFF, 0x41}},
    {"ByteOrderMarkInsideKept",
     bytes({0x41, 0xEF, 0xBB, 0xBF, 0x42}),
     {0x41, 0xFEFF, 0x42}},
    {"ReplacementCharacterAsData", bytes({0xEF, 0xBF, 0xBD}), {0xFFFD}},
    {"NoncharacterFFFE", bytes({0xEF, 0xBF, 0xBE}), {0xFFFE}},
    {"NoncharacterFFFF", bytes({0xEF, 0xBF, 0xBF}), {0xFFFF}},
    {"OverlongNul", bytes({0xC0, 0x80}), {0x0}},
    {"OverlongSlashTwoBytes", bytes({0xC0, 0xAF}), {0x2F}},
    {"OverlongSlashThreeBytes", bytes({0xE0, 0x80, 0xAF}), {0x2F}},
    {"OverlongSlashFourBytes", bytes({0xF0, 0x80, 0x80, 0xAF}), {0x2F}},
    {"EncodedHighSurrogate", bytes({0xED, 0xA0, 0x80}), {0xD800}},
    {"EncodedSurrogatePairNotJoined",
     bytes({0xED, 0xA0, 0xBD, 0xED, 0xB8, 0x80}),
     {0xD83D, 0xDE00}},
    {"AboveLargestCodePoint", bytes({0xF4, 0x90, 0x80, 0x80}), {0x110000}},
    {"LeadF5", bytes({0xF5, 0x80, 0x80, 0x80}), {0x140000}},
    {"LeadF6", bytes({0xF6, 0x80, 0x80, 0x80}), {0x180000}},
    {"LargestDecodableValue", bytes({0xF7, 0xBF, 0xBF, 0xBF}), {0x1FFFFF}},
    {"LeadF8Skipped", bytes({0xF8, 0x41}), {0x41}},
    {"SingleByte7F", bytes({0x7F}), {0x7F}},
    {"TwoByteDFBF", bytes({0xDF, 0xBF}), {0x7FF}},
    {"ThreeByteE0Overlong", bytes({0xE0, 0x80, 0x80}), {0x0}},
    {"ThreeByteEFBFBF", bytes({0xEF, 0xBF, 0xBF}), {0xFFFF}},
    {"FourByteF0Overlong", bytes({0xF0, 0x80, 0x80, 0x80}), {0x0}},
    {"NulByteInside", bytes({0x61, 0x00, 0x62}), {0x61, 0x0, 0x62}},
};

INSTANTIATE_TEST_SUITE_P(Table, Utf8DecodingRow,
                         ::testing::ValuesIn(kDecodeRows),
                         [](const ::testing::TestParamInfo<DecodeRow>& info) {
                           return std::string(info.param.name);
                         });

// ---------------------------------------------------------------------------
// Decoding, as a whole.

TEST(Utf8Decoding, EmptyInputEmptiesTheObject) {
  String s(U"old content");
  s.fromUTF8String(std::string());
  EXPECT_TRUE(s.empty());
}

TEST(Utf8Decoding, ReplacesTheWholeOldContent) {
  String s(U"a much longer old content than the new one");
  s.fromUTF8String("xy");
  EXPECT_EQ(s.toUTF32String(), U"xy");
}

TEST(Utf8Decoding, ConstructorFromStdStringDecodes) {
  const String s(bytes({0x41, 0xC3, 0xA9, 0xC3, 0x41}));
  EXPECT_EQ(hex(s.toUTF32String()), hex(U"\u0041\u00E9\u00C1"));
}

TEST(Utf8Decoding, ResultCapacityFitsItsContent) {
  // 400 bytes of two-byte sequences give 200 elements, where 400 were
  // reserved while decoding.
  std::string input;
  for (int i = 0; i < 200; ++i) input += "\xC3\xA9";
  String s;
  s.fromUTF8String(input);
  ASSERT_EQ(s.size(), 200u);
  EXPECT_EQ(s.capacity(), fittedCapacity(400, 200));
}

TEST(Utf8Decoding, OldStorageIsReleased) {
  String s(std::u32string(1000, U'x'));
  ASSERT_GE(s.capacity(), 1000u);
  s.fromUTF8String("0123456789");
  EXPECT_EQ(s.size(), 10u);
  EXPECT_EQ(s.capacity(), fittedCapacity(10, 10));
}

TEST(Utf8Decoding, NeverCreatesReplacementCharacters) {
  // Strays, impossible leads and truncated tails leave no U+FFFD behind.
  const std::u32string out =
      decode(bytes({0x80, 0xBF, 0xF8, 0xFF, 0x41, 0xC0, 0x80, 0xE2, 0x82}));
  EXPECT_EQ(hex(out), hex(std::u32string{0x41, 0x0}));
}

// ---------------------------------------------------------------------------
// Encoding, row by row.

struct EncodeRow {
  const char* name;
  std::u32string elements;
  std::string expected;
};

void PrintTo(const EncodeRow& row, std::ostream* os) { *os << row.name; }

class Utf8EncodingRow : public ::testing::TestWithParam<EncodeRow> {};

TEST_P(Utf8EncodingRow, GivesTheListedBytes) {
  const EncodeRow& row = GetParam();
  EXPECT_EQ(hex(encode(row.elements)), hex(row.expected))
      << "elements " << hex(row.elements);
}

const EncodeRow kEncodeRows[] = {
    {"Nul", {0x0}, bytes({0x00})},
    {"Last1Byte", {0x7F}, bytes({0x7F})},
    {"First2Byte", {0x80}, bytes({0xC2, 0x80})},
    {"Last2Byte", {0x7FF}, bytes({0xDF, 0xBF})},
    {"First3Byte", {0x800}, bytes({0xE0, 0xA0, 0x80})},
    {"BelowSurrogates", {0xD7FF}, bytes({0xED, 0x9F, 0xBF})},
    {"FirstSurrogateDropped", {0xD800}, {}},
    {"LastSurrogateDropped", {0xDFFF}, {}},
    {"AboveSurrogates", {0xE000}, bytes({0xEE, 0x80, 0x80})},
    {"ReplacementCharacter", {0xFFFD}, bytes({0xEF, 0xBF, 0xBD})},
    {"NoncharacterFFFF", {0xFFFF}, bytes({0xEF, 0xBF, 0xBF})},
    {"NoncharacterFDD0", {0xFDD0}, bytes({0xEF, 0xB7, 0x90})},
    {"Noncharacter1FFFE", {0x1FFFE}, bytes({0xF0, 0x9F, 0xBF, 0xBE})},
    {"First4Byte", {0x10000}, bytes({0xF0, 0x90, 0x80, 0x80})},
    {"LargestCodePoint", {0x10FFFF}, bytes({0xF4, 0x8F, 0xBF, 0xBF})},
    {"JustAboveLargestDropped", {0x110000}, {}},
    {"LargestDecodableDropped", {0x1FFFFF}, {}},
    {"AllBitsDropped", {0xFFFFFFFF}, {}},
    {"NeighboursOfDroppedJoin", {0x41, 0xD800, 0x42}, bytes({0x41, 0x42})},
    {"NeighboursOfLargeDroppedJoin",
     {0x41, 0x110000, 0x42},
     bytes({0x41, 0x42})},
    {"ByteOrderMark", {0xFEFF}, bytes({0xEF, 0xBB, 0xBF})},
};

INSTANTIATE_TEST_SUITE_P(Table, Utf8EncodingRow,
                         ::testing::ValuesIn(kEncodeRows),
                         [](const ::testing::TestParamInfo<EncodeRow>& info) {
                           return std::string(info.param.name);
                         });

// ---------------------------------------------------------------------------
// Encoding, as a whole.

TEST(Utf8Encoding, EmptyStringGivesEmptyBytes) {
  EXPECT_TRUE(String().toUTF8String().empty());
}

TEST(Utf8Encoding, LeavesTheObjectUnchanged) {
  String s(std::u32string{0x41, 0xD800, 0x110000, 0x1F600});
  const std::u32string before = s.toUTF32String();
  (void)s.toUTF8String();
  EXPECT_EQ(s.toUTF32String(), before);
}

TEST(Utf8Encoding, NulElementsAreWrittenAsZeroBytes) {
  const std::string out = encode(std::u32string{0x61, 0x0, 0x62});
  EXPECT_EQ(out.size(), 3u);
  EXPECT_EQ(hex(out), "61 00 62");
}

// ---------------------------------------------------------------------------
// Exhaustive sweeps against the reference.

TEST(Utf8Sweep, EveryCodePointEncodesAsTheReferenceAndDecodesBack) {
  size_t failures = 0;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    const std::u32string one(1, c);
    const std::string encoded = encode(one);
    const std::string expected = encodeUtf8(one);
    const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
    const std::u32string back = decode(encoded);
    if (encoded != expected || back != (surrogate ? U"" : one)) {
      if (++failures <= 10) {
        ADD_FAILURE() << "U+" << std::hex << static_cast<unsigned>(c) << ": "
                      << hex(encoded) << " want " << hex(expected) << ", back "
                      << hex(back);
      }
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf8Sweep, AllCodePointsInOneStringRoundTrip) {
  std::u32string all;
  std::u32string written;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    all.push_back(c);
    if (c < 0xD800 || c > 0xDFFF) written.push_back(c);
  }
  const std::string encoded = encode(all);
  EXPECT_TRUE(encoded == encodeUtf8(all));
  EXPECT_TRUE(decode(encoded) == written);
}

TEST(Utf8Sweep, EveryValueAboveTheLargestCodePointIsDropped) {
  std::u32string large;
  for (char32_t c = 0x110000; c <= 0x1FFFFF; ++c) large.push_back(c);
  for (uint64_t c = 0x200000; c <= 0xFFFFFFFF; c += 0x10001) {
    large.push_back(static_cast<char32_t>(c));
  }
  large.push_back(0xFFFFFFFF);
  large.push_back(0x80000000);
  EXPECT_TRUE(encode(large).empty());
}

TEST(Utf8Sweep, EveryOneByteInputMatchesTheReference) {
  for (int b = 0; b < 256; ++b) {
    const std::string in = bytes({b});
    EXPECT_EQ(hex(decode(in)), hex(decodeUtf8(in))) << "input " << hex(in);
  }
}

TEST(Utf8Sweep, EveryTwoByteInputMatchesTheReference) {
  size_t failures = 0;
  for (int a = 0; a < 256; ++a) {
    for (int b = 0; b < 256; ++b) {
      const std::string in = bytes({a, b});
      const std::u32string got = decode(in);
      const std::u32string want = decodeUtf8(in);
      if (got != want && ++failures <= 10) {
        ADD_FAILURE() << "input " << hex(in) << ": " << hex(got) << " want "
                      << hex(want);
      }
    }
  }
  EXPECT_EQ(failures, 0u);
}

// Random bytes drawn mostly from leads and continuations, so that swallowed
// and truncated sequences are common, with ASCII runs long enough for the
// decoder's block path.
std::string randomMalformedBytes(std::mt19937& rng) {
  static const int kInteresting[] = {0x00, 0x41, 0x7F, 0x80, 0xBF, 0xC0, 0xC1,
                                     0xC3, 0xDF, 0xE0, 0xE2, 0xED, 0xEF, 0xF0,
                                     0xF4, 0xF5, 0xF7, 0xF8, 0xFE, 0xFF};
  std::uniform_int_distribution<int> length(0, 80);
  std::uniform_int_distribution<int> kind(0, 9);
  std::uniform_int_distribution<int> anyByte(0, 255);
  std::uniform_int_distribution<int> pick(
      0, static_cast<int>(std::size(kInteresting)) - 1);
  std::uniform_int_distribution<int> run(1, 40);
  std::string out;
  const int n = length(rng);
  while (static_cast<int>(out.size()) < n) {
    const int k = kind(rng);
    if (k < 4) {
      out.push_back(static_cast<char>(anyByte(rng)));
    } else if (k < 8) {
      out.push_back(static_cast<char>(kInteresting[pick(rng)]));
    } else {
      out.append(static_cast<size_t>(run(rng)), 'a');
    }
  }
  return out;
}

TEST(Utf8Sweep, RandomMalformedInputsMatchTheReference) {
  std::mt19937 rng(20240607);
  size_t failures = 0;
  for (int i = 0; i < 200000; ++i) {
    const std::string in = randomMalformedBytes(rng);
    const std::u32string got = decode(in);
    const std::u32string want = decodeUtf8(in);
    if (got != want && ++failures <= 10) {
      ADD_FAILURE() << "input " << hex(in) << ": " << hex(got) << " want "
                    << hex(want);
    }
  }
  EXPECT_EQ(failures, 0u);
}

// Long text of mixed one- to four-byte sequences, with a few bytes spoiled
// here and there, so that the decoder's paths for long stretches meet every
// kind of break in them.
std::string randomLongText(std::mt19937& rng) {
  std::uniform_int_distribution<int> length(0, 1500);
  std::uniform_int_distribution<int> kind(0, 9);
  std::uniform_int_distribution<int> run(1, 30);
  std::uniform_int_distribution<uint32_t> ascii(0x20, 0x7E);
  std::uniform_int_distribution<uint32_t> two(0x80, 0x7FF);
  std::uniform_int_distribution<uint32_t> three(0x800, 0xFFFF);
  std::uniform_int_distribution<uint32_t> four(0x10000, 0x10FFFF);
  std::u32string elements;
  const int n = length(rng);
  while (static_cast<int>(elements.size()) < n) {
    const int k = kind(rng);
    const int count = run(rng);
    for (int i = 0; i < count; ++i) {
      elements.push_back(k < 4   ? ascii(rng)
                         : k < 7 ? two(rng)
                         : k < 9 ? three(rng)
                                 : four(rng));
    }
  }
  std::string bytes = encodeUtf8(elements);
  std::uniform_int_distribution<int> spoils(0, 3);
  std::uniform_int_distribution<int> anyByte(0, 255);
  const int count = bytes.empty() ? 0 : spoils(rng);
  for (int i = 0; i < count; ++i) {
    std::uniform_int_distribution<size_t> at(0, bytes.size() - 1);
    bytes[at(rng)] = static_cast<char>(anyByte(rng));
  }
  return bytes;
}

TEST(Utf8Sweep, RandomLongTextMatchesTheReference) {
  std::mt19937 rng(314159);
  size_t failures = 0;
  for (int i = 0; i < 5000; ++i) {
    const std::string in = randomLongText(rng);
    if (decode(in) != decodeUtf8(in) && ++failures <= 10) {
      ADD_FAILURE() << "case " << i << ", " << in.size() << " bytes";
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf8Sweep, RandomElementsEncodeAsTheReference) {
  std::mt19937 rng(77);
  std::uniform_int_distribution<int> length(0, 300);
  std::uniform_int_distribution<int> kind(0, 5);
  std::uniform_int_distribution<uint32_t> any;
  std::uniform_int_distribution<uint32_t> ascii(0, 0x7F);
  std::uniform_int_distribution<uint32_t> bmp(0x80, 0xFFFF);
  std::uniform_int_distribution<uint32_t> supplementary(0x10000, 0x10FFFF);
  std::uniform_int_distribution<int> run(1, 40);
  size_t failures = 0;
  for (int i = 0; i < 20000; ++i) {
    std::u32string elements;
    const int n = length(rng);
    for (int j = 0; j < n; ++j) {
      const int k = kind(rng);
      if (k == 0) {
        // A run of ASCII, long enough for the encoder's block path.
        elements.append(static_cast<size_t>(run(rng)), U'a');
        continue;
      }
      elements.push_back(k < 3   ? ascii(rng)
                         : k < 4 ? bmp(rng)
                         : k < 5 ? supplementary(rng)
                                 : any(rng));
    }
    const std::string got = encode(elements);
    const std::string want = encodeUtf8(elements);
    if (got != want && ++failures <= 10) {
      ADD_FAILURE() << "elements " << hex(elements) << ": " << hex(got)
                    << " want " << hex(want);
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf8Sweep, UniformTextOfEveryLengthUpTo600RoundTrips) {
  // Runs of one kind of element end exactly at the end of the input, at the
  // end of a kernel block, or in between, depending on the length.
  const char32_t kKinds[] = {0x41, 0xE9, 0x20AC, 0x1F600, 0xD800};
  for (char32_t kind : kKinds) {
    for (size_t n = 0; n <= 600; ++n) {
      const std::u32string elements(n, kind);
      const std::string encoded = encode(elements);
      ASSERT_EQ(encoded, encodeUtf8(elements))
          << n << " of U+" << std::hex << static_cast<unsigned>(kind);
      ASSERT_TRUE(decode(encoded) == decodeUtf8(encoded)) << n;
    }
  }
}

// ---------------------------------------------------------------------------
// Block edges: inputs around the sizes of the kernels' blocks, with a
// sequence of every length at every position, so that some straddle each
// edge.

const size_t kBoundaryLengths[] = {127, 128, 129, 255, 256, 257};

std::u32string withOneWideElement(size_t length, size_t position,
                                  char32_t wide) {
  std::u32string elements;
  for (size_t i = 0; i < length; ++i) {
    elements.push_back(i == position ? wide
                                     : U'a' + static_cast<char32_t>(i % 26));
  }
  return elements;
}

TEST(Utf8BlockEdges, DecodingAroundBlockBoundariesMatchesTheReference) {
  const char32_t kWide[] = {0xE9, 0x20AC, 0x1F600};
  size_t failures = 0;
  for (size_t length : kBoundaryLengths) {
    for (char32_t wide : kWide) {
      for (size_t position = 0; position < length; ++position) {
        const std::string in =
            encodeUtf8(withOneWideElement(length, position, wide));
        // Also cut the input one byte short, so the last sequence truncates.
        for (const std::string& cut : {in, in.substr(0, in.size() - 1)}) {
          if (decode(cut) != decodeUtf8(cut) && ++failures <= 10) {
            ADD_FAILURE() << "length " << length << ", U+" << std::hex
                          << static_cast<unsigned>(wide) << " at " << std::dec
                          << position << ", " << cut.size() << " bytes";
          }
        }
      }
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf8BlockEdges, EncodingAroundBlockBoundariesMatchesTheReference) {
  const char32_t kWide[] = {0xE9, 0x20AC, 0x1F600, 0xD800, 0x110000};
  size_t failures = 0;
  for (size_t length : kBoundaryLengths) {
    for (char32_t wide : kWide) {
      for (size_t position = 0; position < length; ++position) {
        const std::u32string elements =
            withOneWideElement(length, position, wide);
        if (encode(elements) != encodeUtf8(elements) && ++failures <= 10) {
          ADD_FAILURE() << "length " << length << ", U+" << std::hex
                        << static_cast<unsigned>(wide) << " at " << std::dec
                        << position;
        }
      }
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf8BlockEdges, UniformMultiByteTextAroundBlockBoundariesRoundTrips) {
  const char32_t kWide[] = {0x41, 0xE9, 0x20AC, 0x1F600};
  for (size_t length : kBoundaryLengths) {
    for (char32_t wide : kWide) {
      for (size_t n = length - 2; n <= length + 2; ++n) {
        const std::u32string elements(n, wide);
        const std::string encoded = encode(elements);
        EXPECT_EQ(encoded, encodeUtf8(elements)) << n << " elements";
        EXPECT_TRUE(decode(encoded) == elements) << n << " elements";
      }
    }
  }
}

}  // namespace

namespace {

// ---------------------------------------------------------------------------
// The corpus: real text of many scripts, and the same text spoiled.

TEST(Utf8Corpus, EveryFileDecodesAsTheReferenceAndEncodesBack) {
  const std::vector<std::string> texts = corpusTexts();
  if (texts.empty()) GTEST_FAIL() << "ZELVO_CORPUS_DIR is not set or empty";
  for (const std::string& text : texts) {
    const std::u32string decoded = decode(text);
    EXPECT_TRUE(decoded == decodeUtf8(text));
    EXPECT_TRUE(encode(decoded) == text);
  }
}

TEST(Utf8Corpus, SpoiledFilesDecodeAsTheReference) {
  const std::vector<std::string> texts = corpusTexts();
  if (texts.empty()) GTEST_FAIL() << "ZELVO_CORPUS_DIR is not set or empty";
  std::mt19937 rng(2718);
  std::uniform_int_distribution<int> anyByte(0, 255);
  for (std::string text : texts) {
    std::uniform_int_distribution<size_t> at(0, text.size() - 1);
    for (int i = 0; i < 2000; ++i)
      text[at(rng)] = static_cast<char>(anyByte(rng));
    EXPECT_TRUE(decode(text) == decodeUtf8(text));
  }
}

}  // namespace
