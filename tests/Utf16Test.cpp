// Tests of the UTF-16 conversions of String: the decoder that joins any
// surrogate with the unit behind it, the encoder that writes something for
// every element, and sweeps against a plain reference.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "StandardCapacity.h"
#include "string/String.h"
#include "tests/reference/Utf16Reference.h"

namespace {

using zelvo::unicode::String;

static_assert(std::is_same<decltype(&String::fromUTF16String),
                           void (String::*)(const std::u16string&)>::value,
              "fromUTF16String takes a std::u16string and returns nothing");
static_assert(std::is_same<decltype(&String::toUTF16String),
                           std::u16string (String::*)() const>::value,
              "toUTF16String is const and returns a std::u16string by value");
static_assert(std::is_constructible<String, const std::u16string&>::value,
              "a String is made from a std::u16string");

std::u16string units(std::initializer_list<unsigned> values) {
  std::u16string out;
  for (unsigned v : values) out.push_back(static_cast<char16_t>(v));
  return out;
}

template <typename Text>
std::string hex(const Text& s) {
  std::string out;
  char buf[16];
  for (auto c : s) {
    snprintf(buf, sizeof buf, "%s%X", out.empty() ? "" : " ",
             static_cast<unsigned>(c));
    out += buf;
  }
  return out.empty() ? "(empty)" : out;
}

std::u32string decode(const std::u16string& in) {
  String s;
  s.fromUTF16String(in);
  return s.toUTF32String();
}

std::u16string encode(const std::u32string& elements) {
  return String(elements).toUTF16String();
}

bool isSurrogate(uint32_t unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

using zelvo_reference::decodeUtf16;
using zelvo_reference::encodeUtf16;

// ---------------------------------------------------------------------------
// Decoding, row by row.

struct DecodeRow {
  const char* name;
  std::u16string input;
  std::u32string expected;
};

void PrintTo(const DecodeRow& row, std::ostream* os) { *os << row.name; }

class Utf16DecodingRow : public ::testing::TestWithParam<DecodeRow> {};

TEST_P(Utf16DecodingRow, GivesTheListedElements) {
  const DecodeRow& row = GetParam();
  EXPECT_EQ(hex(decode(row.input)), hex(row.expected))
      << "input " << hex(row.input);
}

const DecodeRow kDecodeRows[] = {
    {"Letter", units({0x0041}), {0x41}},
    {"ZeroUnitEndsNothing", units({0x0000, 0x0041}), {0x0, 0x41}},
    {"Pair", units({0xD83D, 0xDE00}), {0x1F600}},
    {"FirstPair", units({0xD800, 0xDC00}), {0x10000}},
    {"LastHighFirstLow", units({0xDBFF, 0xDC00}), {0x10FC00}},
    {"LastPair", units({0xDBFF, 0xDFFF}), {0x10FFFF}},
    {"LoneHighAtEndDiscarded", units({0xD800}), {}},
    {"LoneLowAtEndDiscarded", units({0x0041, 0xDC00}), {0x41}},
    {"HighJoinsLetter", units({0xD800, 0x0041}), {0x2441}},
    {"LowFirstJoinsLetter", units({0xDC00, 0x0041}), {0x102441}},
    {"TwoHighs", units({0xD800, 0xD800}), {0xFC00}},
    {"TwoLows", units({0xDC00, 0xDC00}), {0x110000}},
    {"SumIsASurrogate", units({0xD800, 0xB400}), {0xD800}},
    {"LargestSum", units({0xDFFF, 0xDFFF}), {0x20FFFF}},
    {"LargestOfAll", units({0xDFFF, 0xFFFF}), {0x211FFF}},
    {"SmallestSum", units({0xD800, 0x0000}), {0x2400}},
    {"ByteOrderMarkKept", units({0xFEFF, 0x0041}), {0xFEFF, 0x41}},
    {"SwappedByteOrderMarkKept", units({0xFFFE, 0x0041}), {0xFFFE, 0x41}},
    {"NoncharacterFFFF", units({0xFFFF}), {0xFFFF}},
    {"ReplacementCharacterAsData", units({0xFFFD}), {0xFFFD}},
    {"BelowSurrogates", units({0xD7FF}), {0xD7FF}},
    {"AboveSurrogates", units({0xE000}), {0xE000}},
    {"HighSwallowsHigh", units({0xD800, 0xD800, 0xDC00}), {0xFC00}},
};

INSTANTIATE_TEST_SUITE_P(Table, Utf16DecodingRow,
                         ::testing::ValuesIn(kDecodeRows),
                         [](const ::testing::TestParamInfo<DecodeRow>& info) {
                           return std::string(info.param.name);
                         });

// ---------------------------------------------------------------------------
// Decoding, as a whole.

TEST(Utf16Decoding, EmptyInputEmptiesTheObject) {
  String s(U"old content");
  s.fromUTF16String(std::u16string());
  EXPECT_TRUE(s.empty());
}

TEST(Utf16Decoding, ReplacesTheWholeOldContent) {
  String s(U"a much longer old content than the new one");
  s.fromUTF16String(u"xy");
  EXPECT_EQ(s.toUTF32String(), U"xy");
}

TEST(Utf16Decoding, ConstructorFromU16StringDecodes) {
  const String s(units({0x0041, 0xD83D, 0xDE00, 0xD800}));
  EXPECT_EQ(hex(s.toUTF32String()), "41 1F600");
}

TEST(Utf16Decoding, ResultCapacityFitsItsContent) {
  // 400 units of pairs give 200 elements, where 400 were reserved.
  std::u16string input;
  for (int i = 0; i < 200; ++i) input += u"\U0001F600";
  String s;
  s.fromUTF16String(input);
  ASSERT_EQ(s.size(), 200u);
  EXPECT_EQ(s.capacity(), fittedCapacity(400, 200));
}

TEST(Utf16Decoding, OldStorageIsReleased) {
  String s(std::u32string(1000, U'x'));
  ASSERT_GE(s.capacity(), 1000u);
  s.fromUTF16String(u"0123456789");
  EXPECT_EQ(s.size(), 10u);
  EXPECT_EQ(s.capacity(), fittedCapacity(10, 10));
}

TEST(Utf16Decoding, NeverCreatesReplacementCharacters) {
  const std::u32string out = decode(units({0xDC00, 0xDC00, 0x0041, 0xD800}));
  EXPECT_EQ(hex(out), "110000 41");
}

// ---------------------------------------------------------------------------
// Encoding, row by row, with what the decoder makes of the units again.

struct EncodeRow {
  const char* name;
  char32_t element;
  std::u16string expected;
  std::u32string decodedAgain;
};

void PrintTo(const EncodeRow& row, std::ostream* os) { *os << row.name; }

class Utf16EncodingRow : public ::testing::TestWithParam<EncodeRow> {};

TEST_P(Utf16EncodingRow, GivesTheListedUnits) {
  const EncodeRow& row = GetParam();
  EXPECT_EQ(hex(encode(std::u32string(1, row.element))), hex(row.expected));
}

TEST_P(Utf16EncodingRow, DecodesAgainAsListed) {
  const EncodeRow& row = GetParam();
  EXPECT_EQ(hex(decode(encode(std::u32string(1, row.element)))),
            hex(row.decodedAgain));
}

const EncodeRow kEncodeRows[] = {
    {"Nul", 0x0, units({0x0000}), {0x0}},
    {"BelowSurrogates", 0xD7FF, units({0xD7FF}), {0xD7FF}},
    {"FirstSurrogate", 0xD800, units({0xDBF6, 0xDC00}), {0x10D800}},
    {"FirstLowSurrogate", 0xDC00, units({0xDBF7, 0xDC00}), {0x10DC00}},
    {"LastSurrogate", 0xDFFF, units({0xDBF7, 0xDFFF}), {0x10DFFF}},
    {"AboveSurrogates", 0xE000, units({0xE000}), {0xE000}},
    {"ReplacementCharacter", 0xFFFD, units({0xFFFD}), {0xFFFD}},
    {"NoncharacterFFFF", 0xFFFF, units({0xFFFF}), {0xFFFF}},
    {"FirstSupplementary", 0x10000, units({0xD800, 0xDC00}), {0x10000}},
    {"Emoji", 0x1F600, units({0xD83D, 0xDE00}), {0x1F600}},
    {"LargestCodePoint", 0x10FFFF, units({0xDBFF, 0xDFFF}), {0x10FFFF}},
    {"JustAboveLargest", 0x110000, units({0xD800}), {}},
    {"AllBits", 0xFFFFFFFF, units({0xD800}), {}},
};

INSTANTIATE_TEST_SUITE_P(Table, Utf16EncodingRow,
                         ::testing::ValuesIn(kEncodeRows),
                         [](const ::testing::TestParamInfo<EncodeRow>& info) {
                           return std::string(info.param.name);
                         });

// ---------------------------------------------------------------------------
// Encoding, as a whole.

TEST(Utf16Encoding, EmptyStringGivesEmptyUnits) {
  EXPECT_TRUE(String().toUTF16String().empty());
}

TEST(Utf16Encoding, TooLargeElementJoinsTheNextOnDecoding) {
  const std::u16string out = encode(std::u32string{0x110000, 0x41});
  EXPECT_EQ(hex(out), "D800 41");
  EXPECT_EQ(hex(decode(out)), "2441");
}

TEST(Utf16Encoding, NeverShorterThanTheString) {
  const std::u32string elements{0x0, 0x41, 0xD800, 0x110000, 0xFFFF, 0x10000};
  EXPECT_GE(encode(elements).size(), elements.size());
}

TEST(Utf16Encoding, ResultIsReservedToTheElementCount) {
  const String s(std::u32string(300, U'\u4E2D'));
  const std::u16string out = s.toUTF16String();
  std::u16string reserved;
  reserved.reserve(300);
  EXPECT_EQ(out.size(), 300u);
  EXPECT_EQ(out.capacity(), reserved.capacity());
}

TEST(Utf16Encoding, LeavesTheObjectUnchanged) {
  const String s(std::u32string{0x41, 0xD800, 0x110000, 0x1F600});
  const std::u32string before = s.toUTF32String();
  (void)s.toUTF16String();
  EXPECT_EQ(s.toUTF32String(), before);
}

// ---------------------------------------------------------------------------
// Exhaustive sweeps against the reference.

TEST(Utf16Sweep, EveryCodePointEncodesAsTheReferenceAndDecodesBack) {
  size_t failures = 0;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    const std::u32string one(1, c);
    const std::u16string encoded = encode(one);
    // A surrogate element comes back as the value + 0x100000.
    const std::u32string expectedBack(1, isSurrogate(c) ? c + 0x100000 : c);
    const std::u32string back = decode(encoded);
    if ((encoded != encodeUtf16(one) || back != expectedBack) &&
        ++failures <= 10) {
      ADD_FAILURE() << "U+" << std::hex << static_cast<unsigned>(c) << ": "
                    << hex(encoded) << ", back " << hex(back);
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf16Sweep, AllCodePointsInOneStringRoundTrip) {
  std::u32string all;
  std::u32string back;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    all.push_back(c);
    back.push_back(isSurrogate(c) ? c + 0x100000 : c);
  }
  const std::u16string encoded = encode(all);
  EXPECT_TRUE(encoded == encodeUtf16(all));
  EXPECT_TRUE(decode(encoded) == back);
}

TEST(Utf16Sweep, EveryValueAboveTheLargestCodePointIsALoneHighSurrogate) {
  std::u32string large;
  for (char32_t c = 0x110000; c <= 0x21FFFF; ++c) large.push_back(c);
  for (uint64_t c = 0x220000; c <= 0xFFFFFFFF; c += 0x10001) {
    large.push_back(static_cast<char32_t>(c));
  }
  large.push_back(0xFFFFFFFF);
  EXPECT_TRUE(encode(large) ==
              std::u16string(large.size(), static_cast<char16_t>(0xD800)));
}

TEST(Utf16Sweep, EverySingleUnitMatchesTheReference) {
  for (uint32_t u = 0; u <= 0xFFFF; ++u) {
    const std::u16string in(1, static_cast<char16_t>(u));
    const std::u32string got = decode(in);
    if (isSurrogate(u)) {
      EXPECT_TRUE(got.empty()) << std::hex << u;
    } else {
      EXPECT_TRUE(got == std::u32string(1, u)) << std::hex << u;
    }
  }
}

TEST(Utf16Sweep, EveryPairStartingWithASurrogateMatchesTheReference) {
  // For each surrogate unit, all 65536 pairs behind one another: each pair
  // is consumed whole, so every one is decoded as it would be alone.
  size_t failures = 0;
  char32_t largest = 0;
  for (uint32_t u = 0xD800; u <= 0xDFFF; ++u) {
    std::u16string in;
    in.reserve(2 * 0x10000);
    for (uint32_t v = 0; v <= 0xFFFF; ++v) {
      in.push_back(static_cast<char16_t>(u));
      in.push_back(static_cast<char16_t>(v));
    }
    const std::u32string got = decode(in);
    if (got != decodeUtf16(in) && ++failures <= 10) {
      ADD_FAILURE() << "pairs beginning with " << std::hex << u;
    }
    if (!got.empty())
      largest = std::max(largest, *std::max_element(got.begin(), got.end()));
  }
  EXPECT_EQ(failures, 0u);
  EXPECT_EQ(largest, 0x211FFFu);
}

TEST(Utf16Sweep, RandomMalformedInputsMatchTheReference) {
  std::mt19937 rng(1613);
  std::uniform_int_distribution<int> length(0, 80);
  std::uniform_int_distribution<int> kind(0, 9);
  std::uniform_int_distribution<uint32_t> anyUnit(0, 0xFFFF);
  std::uniform_int_distribution<uint32_t> surrogate(0xD800, 0xDFFF);
  std::uniform_int_distribution<uint32_t> ascii(0x20, 0x7E);
  std::uniform_int_distribution<int> run(1, 40);
  size_t failures = 0;
  for (int i = 0; i < 200000; ++i) {
    std::u16string in;
    const int n = length(rng);
    for (int j = 0; j < n; ++j) {
      const int k = kind(rng);
      if (k == 9) {
        in.append(static_cast<size_t>(run(rng)), u'x');
        continue;
      }
      in.push_back(static_cast<char16_t>(k < 3   ? anyUnit(rng)
                                         : k < 6 ? surrogate(rng)
                                                 : ascii(rng)));
    }
    const std::u32string got = decode(in);
    const std::u32string want = decodeUtf16(in);
    if (got != want && ++failures <= 10) {
      ADD_FAILURE() << "input " << hex(in) << ": " << hex(got) << " want "
                    << hex(want);
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf16Sweep, RandomElementsEncodeAsTheReference) {
  std::mt19937 rng(4242);
  std::uniform_int_distribution<int> length(0, 300);
  std::uniform_int_distribution<int> kind(0, 5);
  std::uniform_int_distribution<uint32_t> any;
  std::uniform_int_distribution<uint32_t> bmp(0, 0xFFFF);
  std::uniform_int_distribution<uint32_t> surrogate(0xD800, 0xDFFF);
  std::uniform_int_distribution<uint32_t> supplementary(0x10000, 0x10FFFF);
  std::uniform_int_distribution<int> run(1, 40);
  size_t failures = 0;
  for (int i = 0; i < 20000; ++i) {
    std::u32string elements;
    const int n = length(rng);
    for (int j = 0; j < n; ++j) {
      const int k = kind(rng);
      if (k == 0) {
        // A run of plain elements, long enough for the block path.
        elements.append(static_cast<size_t>(run(rng)), U'\u4E2D');
        continue;
      }
      elements.push_back(k < 3   ? bmp(rng)
                         : k < 4 ? surrogate(rng)
                         : k < 5 ? supplementary(rng)
                                 : any(rng));
    }
    const std::u16string got = encode(elements);
    if (got != encodeUtf16(elements) && ++failures <= 10) {
      ADD_FAILURE() << "elements " << hex(elements) << ": " << hex(got);
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf16Sweep, UniformTextOfEveryLengthUpTo600MatchesTheReference) {
  // Runs of one kind end exactly at the end of the input, at the end of a
  // kernel block, or in between, depending on the length.
  const char32_t kElements[] = {0x41, 0x4E2D, 0x1F600, 0xD800, 0x110000};
  const char16_t kUnits[] = {0x41, 0x4E2D, 0xD800, 0xDC00, 0xFFFF};
  for (size_t n = 0; n <= 600; ++n) {
    for (char32_t element : kElements) {
      const std::u32string elements(n, element);
      ASSERT_TRUE(encode(elements) == encodeUtf16(elements))
          << n << " of " << std::hex << static_cast<unsigned>(element);
    }
    for (char16_t unit : kUnits) {
      const std::u16string in(n, unit);
      ASSERT_TRUE(decode(in) == decodeUtf16(in))
          << n << " of " << std::hex << static_cast<unsigned>(unit);
    }
  }
}

// ---------------------------------------------------------------------------
// Block edges: inputs around the sizes of the kernels' blocks, with a pair
// at every position, so that some straddle each edge.

const size_t kBoundaryLengths[] = {127, 128, 129, 255, 256, 257};

std::u32string withOneElement(size_t length, size_t position, char32_t odd) {
  std::u32string elements;
  for (size_t i = 0; i < length; ++i) {
    elements.push_back(
        i == position ? odd : U'\u0430' + static_cast<char32_t>(i % 32));
  }
  return elements;
}

TEST(Utf16BlockEdges, DecodingAroundBlockBoundariesMatchesTheReference) {
  const char32_t kOdd[] = {0x1F600, 0xD800, 0x110000};
  size_t failures = 0;
  for (size_t length : kBoundaryLengths) {
    for (char32_t odd : kOdd) {
      for (size_t position = 0; position < length; ++position) {
        const std::u16string in =
            encodeUtf16(withOneElement(length, position, odd));
        for (const std::u16string& cut : {in, in.substr(0, in.size() - 1)}) {
          if (decode(cut) != decodeUtf16(cut) && ++failures <= 10) {
            ADD_FAILURE() << "length " << length << ", " << std::hex
                          << static_cast<unsigned>(odd) << " at " << std::dec
                          << position << ", " << cut.size() << " units";
          }
        }
      }
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf16BlockEdges, EncodingAroundBlockBoundariesMatchesTheReference) {
  const char32_t kOdd[] = {0x1F600, 0xD800, 0x110000, 0x41};
  size_t failures = 0;
  for (size_t length : kBoundaryLengths) {
    for (char32_t odd : kOdd) {
      for (size_t position = 0; position < length; ++position) {
        const std::u32string elements = withOneElement(length, position, odd);
        if (encode(elements) != encodeUtf16(elements) && ++failures <= 10) {
          ADD_FAILURE() << "length " << length << ", " << std::hex
                        << static_cast<unsigned>(odd) << " at " << std::dec
                        << position;
        }
      }
    }
  }
  EXPECT_EQ(failures, 0u);
}

TEST(Utf16BlockEdges, UniformPairsAroundBlockBoundariesRoundTrip) {
  for (size_t length : kBoundaryLengths) {
    for (size_t n = length - 2; n <= length + 2; ++n) {
      const std::u32string elements(n, U'\U0001F600');
      const std::u16string encoded = encode(elements);
      EXPECT_TRUE(encoded == encodeUtf16(elements)) << n << " elements";
      EXPECT_TRUE(decode(encoded) == elements) << n << " elements";
    }
  }
}

}  // namespace
