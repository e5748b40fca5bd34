// Bad code points of String: surrogates and values above U+10FFFF, found,
// stripped and replaced in place.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "string/String.h"

namespace {

using zelvo::unicode::String;

std::u32string elements(const String& s) {
  return std::u32string(s.begin(), s.end());
}

// The obvious reference: the value alone decides.
bool isBadByDefinition(uint32_t value) {
  return (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF;
}

struct Row {
  const char* name;
  std::u32string content;
  bool hasBad;
  std::u32string afterStrip;
  std::u32string afterReplace;
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class BadCodePointRow : public ::testing::TestWithParam<Row> {};

const std::u32string kEmpty;

INSTANTIATE_TEST_SUITE_P(
    Table, BadCodePointRow,
    ::testing::Values(
        Row{"Empty", kEmpty, false, kEmpty, kEmpty},
        Row{"Zero", std::u32string(1, 0), false, std::u32string(1, 0),
            std::u32string(1, 0)},
        Row{"LastBeforeSurrogates", U"\uD7FF", false, U"\uD7FF", U"\uD7FF"},
        Row{"FirstSurrogate", {0xD800}, true, kEmpty, U"\uFFFD"},
        Row{"LastSurrogate", {0xDFFF}, true, kEmpty, U"\uFFFD"},
        Row{"FirstAfterSurrogates", U"\uE000", false, U"\uE000", U"\uE000"},
        Row{"Replacement", U"\uFFFD", false, U"\uFFFD", U"\uFFFD"},
        Row{"Noncharacters", U"\uFFFE\uFFFF", false, U"\uFFFE\uFFFF",
            U"\uFFFE\uFFFF"},
        Row{"Unassigned", U"\u0378", false, U"\u0378", U"\u0378"},
        Row{"LastCodePoint", U"\U0010FFFF", false, U"\U0010FFFF",
            U"\U0010FFFF"},
        Row{"FirstAboveCodeSpace", {0x110000}, true, kEmpty, U"\uFFFD"},
        Row{"AllBitsSet", {0xFFFFFFFF}, true, kEmpty, U"\uFFFD"},
        Row{"Mixed",
            {U'A', 0xD800, U'B', 0x110000},
            true,
            U"AB",
            U"A\uFFFDB\uFFFD"}),
    [](const ::testing::TestParamInfo<Row>& info) {
      return std::string(info.param.name);
    });

String fromElements(const std::u32string& content) {
  return String(content.cbegin(), content.cend());
}

TEST_P(BadCodePointRow, HasBadCodePoints) {
  EXPECT_EQ(fromElements(GetParam().content).hasBadCodePoints(),
            GetParam().hasBad);
}

TEST_P(BadCodePointRow, StripBadCodePoints) {
  String s = fromElements(GetParam().content);
  s.stripBadCodePoints();
  EXPECT_EQ(elements(s), GetParam().afterStrip);
}

TEST_P(BadCodePointRow, ReplaceBadCodePoints) {
  String s = fromElements(GetParam().content);
  s.replaceBadCodePoints();
  EXPECT_EQ(elements(s), GetParam().afterReplace);
}

TEST_P(BadCodePointRow, NoneLeftAfterStrip) {
  String s = fromElements(GetParam().content);
  s.stripBadCodePoints();
  EXPECT_FALSE(s.hasBadCodePoints());
}

TEST_P(BadCodePointRow, NoneLeftAfterReplace) {
  String s = fromElements(GetParam().content);
  s.replaceBadCodePoints();
  EXPECT_FALSE(s.hasBadCodePoints());
}

// Every code point, and the values around the top of the code space, one
// at a time against the definition.
TEST(BadCodePoints, EverySingleValueAgreesWithTheDefinition) {
  std::vector<uint32_t> values;
  for (uint32_t v = 0; v <= 0x110100; ++v) values.push_back(v);
  for (uint32_t v : {0x1FFFFFu, 0x200000u, 0x7FFFFFFFu, 0x80000000u,
                     0xFFFFD800u, 0xFFFFFFFEu, 0xFFFFFFFFu}) {
    values.push_back(v);
  }
  size_t failures = 0;
  for (uint32_t v : values) {
    const String s{static_cast<char32_t>(v)};
    if (s.hasBadCodePoints() != isBadByDefinition(v) && ++failures <= 10) {
      ADD_FAILURE() << "hasBadCodePoints(0x" << std::hex << v << ")";
    }
  }
  EXPECT_EQ(failures, 0u);
}

// The whole value is tested, not its low 16 bits: U+1D800 and U+10D800
// are ordinary code points.
TEST(BadCodePoints, SurrogateLowBitsInAPlaneAboveZeroAreGood) {
  const String s{0x1D800};
  EXPECT_FALSE(s.hasBadCodePoints());
  const String t{0x10D800};
  EXPECT_FALSE(t.hasBadCodePoints());
}

TEST(BadCodePoints, HasFindsOneAtTheEnd) {
  String s(100, U'a');
  s.push_back(0xDC00);
  EXPECT_TRUE(s.hasBadCodePoints());
}

TEST(BadCodePoints, NoncharactersAndPrivateUseAreGood) {
  const String s{0xFDD0, 0xFDEF, 0x1FFFE, 0x10FFFE, 0xE000, 0xF8FF, 0xF0000};
  EXPECT_FALSE(s.hasBadCodePoints());
  String stripped = s;
  stripped.stripBadCodePoints();
  EXPECT_EQ(elements(stripped), elements(s));
}

TEST(BadCodePoints, StripKeepsOrderOfTheRest) {
  String s{0xD800, U'a', 0xDBFF, 0xDC00, U'b', U'c', 0x110000, U'd', 0xDFFF};
  s.stripBadCodePoints();
  EXPECT_EQ(elements(s), U"abcd");
}

TEST(BadCodePoints, StripReplacementRemovesOnlyReplacement) {
  String s{U'A', 0xFFFD, 0xD800, 0xFFFD};
  s.stripReplacementCodePoints();
  EXPECT_EQ(elements(s), std::u32string({U'A', 0xD800}));
  EXPECT_TRUE(s.hasBadCodePoints());
}

TEST(BadCodePoints, StripReplacementWithoutAnyChangesNothing) {
  String s{U'A', 0xFFFC, 0xFFFE};
  s.stripReplacementCodePoints();
  EXPECT_EQ(elements(s), std::u32string({U'A', 0xFFFC, 0xFFFE}));
}

TEST(BadCodePoints, ReplaceThenStripReplacementRemovesMoreThanStrip) {
  const String original{0xFFFD, U'a', 0xD800, U'b', 0x110000};
  String strippedOnly = original;
  strippedOnly.stripBadCodePoints();
  String replacedThenStripped = original;
  replacedThenStripped.replaceBadCodePoints();
  replacedThenStripped.stripReplacementCodePoints();
  EXPECT_EQ(elements(strippedOnly), U"\uFFFDab");
  EXPECT_EQ(elements(replacedThenStripped), U"ab");
}

TEST(BadCodePoints, ReplaceKeepsSizeAndGoodElements) {
  String s{0xFFFD, U'a', 0xDC00, U'b'};
  s.replaceBadCodePoints();
  EXPECT_EQ(s.size(), 4u);
  EXPECT_EQ(elements(s), U"\uFFFDa\uFFFDb");
}

TEST(BadCodePoints, StripOfAllBadLeavesEmptyWithSameCapacity) {
  String s(50, 0xD800);
  s.append(25, 0x110000);
  const size_t capacity = s.capacity();
  const char32_t* storage = s.data();
  s.stripBadCodePoints();
  EXPECT_TRUE(s.empty());
  EXPECT_EQ(s.capacity(), capacity);
  EXPECT_EQ(s.data(), storage);
  EXPECT_EQ(s.data()[0], U'\0');
}

TEST(BadCodePoints, StripAndReplaceWorkInPlace) {
  String s(60, U'a');
  s[10] = 0xDFFF;
  s[20] = 0xFFFD;
  const size_t capacity = s.capacity();
  const char32_t* storage = s.data();
  s.replaceBadCodePoints();
  EXPECT_EQ(s.data(), storage);
  s.stripReplacementCodePoints();
  EXPECT_EQ(s.size(), 58u);
  EXPECT_EQ(s.capacity(), capacity);
  EXPECT_EQ(s.data(), storage);
  EXPECT_EQ(s.data()[58], U'\0');
}

TEST(BadCodePoints, StripOfCleanTextKeepsEverything) {
  String s(30, U'q');
  const char32_t* storage = s.data();
  const size_t capacity = s.capacity();
  s.stripBadCodePoints();
  EXPECT_EQ(elements(s), std::u32string(30, U'q'));
  EXPECT_EQ(s.data(), storage);
  EXPECT_EQ(s.capacity(), capacity);
}

}  // namespace
