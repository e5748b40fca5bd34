// The property index against the tables it stands for: every field of the
// record of every code point up to U+10FFFF, and values above it, are
// checked against the members of gTransformTables.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <map>
#include <set>
#include <string>

#include "transform/PropertyIndex.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace {

namespace index = zelvo::unicode::propertyindex;
using zelvo::unicode::ConditionTable;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::rangeContains;
using zelvo::unicode::RangeList;

constexpr char32_t kLastCodePoint = 0x10FFFF;

// Values above U+10FFFF that the record of every value beyond is checked
// on: the first few, the decoders' largest, and the ends of the range.
const char32_t kBeyond[] = {0x110000,   0x110001,  0x11007F,   0x110080,
                            0x1FFFFF,   0x200000,  0x7FFFFFFF, 0x80000000,
                            0xFFFFFFFE, 0xFFFFFFFF};

// Every code point, and the values beyond, where the flag differs from
// `expected`, as "U+XXXX" texts; at most ten.
std::string mismatches(index::Flag flag,
                       const std::function<bool(char32_t)>& expected) {
  std::string found;
  int count = 0;
  auto test = [&](char32_t c) {
    const bool has = (index::lookup(c) & flag) != 0;
    if (has != expected(c) && ++count <= 10) {
      char text[16];
      std::snprintf(text, sizeof text, " U+%04X", static_cast<unsigned>(c));
      found += text;
    }
  };
  for (char32_t c = 0; c <= kLastCodePoint; ++c) test(c);
  for (char32_t c : kBeyond) test(c);
  return found;
}

template <class Map>
std::function<bool(char32_t)> keyOf(const Map& map) {
  return [&map](char32_t c) { return map.find(c) != map.end(); };
}

std::function<bool(char32_t)> inRanges(const RangeList& ranges) {
  return [&ranges](char32_t c) { return rangeContains(ranges, c); };
}

// Whether c is an inner key of the condition table.
std::function<bool(char32_t)> innerKeyOf(const ConditionTable& table) {
  return [&table](char32_t c) {
    for (const auto& rows : table)
      if (rows.second.count(c) != 0) return true;
    return false;
  };
}

TEST(PropertyIndex, CombiningClassIsTheWeightOfWeightMap) {
  const auto& weights = gTransformTables.weightMap;
  for (char32_t c = 0; c <= kLastCodePoint; ++c) {
    const auto found = weights.find(c);
    const int expected = found == weights.end() ? 0 : found->second;
    ASSERT_EQ(index::combiningClass(index::lookup(c)), expected)
        << "U+" << std::hex << static_cast<unsigned>(c);
  }
  for (char32_t c : kBeyond) EXPECT_EQ(weights.count(c), 0u);
}

TEST(PropertyIndex, DecompositionFlagsMarkTheKeysOfTheDecompositionMaps) {
  EXPECT_EQ(mismatches(index::kCanonicalDecomposition,
                       keyOf(gTransformTables.decompositionMap)),
            "");
  EXPECT_EQ(mismatches(index::kCompatDecomposition,
                       keyOf(gTransformTables.compatDecompositionMap)),
            "");
}

TEST(PropertyIndex, QuickCheckFlagsMarkTheirRangeLists) {
  const auto& t = gTransformTables;
  EXPECT_EQ(mismatches(index::kNfdNo, inRanges(t.nfdQcNoRanges)), "");
  EXPECT_EQ(mismatches(index::kNfcNo, inRanges(t.nfcQcNoRanges)), "");
  EXPECT_EQ(mismatches(index::kNfcMaybe, inRanges(t.nfcQcMaybeRanges)), "");
  EXPECT_EQ(mismatches(index::kNfkdNo, inRanges(t.nfkdQcNoRanges)), "");
  EXPECT_EQ(mismatches(index::kNfkcNo, inRanges(t.nfkcQcNoRanges)), "");
  EXPECT_EQ(mismatches(index::kNfkcMaybe, inRanges(t.nfkcQcMaybeRanges)), "");
}

TEST(PropertyIndex, CompositionFlagsMarkTheElementsOfCompositionKeys) {
  std::set<char32_t> firsts, seconds;
  for (const auto& pair : gTransformTables.compositionMap) {
    ASSERT_EQ(pair.first.length(), 2u);
    firsts.insert(pair.first[0]);
    seconds.insert(pair.first[1]);
  }
  EXPECT_EQ(mismatches(index::kComposesFirst, keyOf(firsts)), "");
  EXPECT_EQ(mismatches(index::kComposesSecond, keyOf(seconds)), "");
}

TEST(PropertyIndex, AssignedFlagIsIsAssigned) {
  EXPECT_EQ(
      mismatches(index::kAssigned,
                 [](char32_t c) { return zelvo::unicode::isAssigned(c); }),
      "");
}

TEST(PropertyIndex, SpecialCasingFlagMarksTheKeysOfEveryUnconditionalTable) {
  const auto& t = gTransformTables;
  EXPECT_EQ(mismatches(index::kSpecialCasing, keyOf(t.toUpperSpecialMap)), "");
  EXPECT_EQ(mismatches(index::kSpecialCasing, keyOf(t.toLowerSpecialMap)), "");
  EXPECT_EQ(mismatches(index::kSpecialCasing, keyOf(t.toTitleSpecialMap)), "");
}

TEST(PropertyIndex, ConditionalCasingFlagMarksTheInnerKeysOfEveryTable) {
  const auto& t = gTransformTables;
  EXPECT_EQ(mismatches(index::kConditionalCasing,
                       innerKeyOf(t.toUpperSpecialConditionMap)),
            "");
  EXPECT_EQ(mismatches(index::kConditionalCasing,
                       innerKeyOf(t.toLowerSpecialConditionMap)),
            "");
  EXPECT_EQ(mismatches(index::kConditionalCasing,
                       innerKeyOf(t.toTitleSpecialConditionMap)),
            "");
}

TEST(PropertyIndex, CasingPropertyFlagsMarkTheirRangeLists) {
  const auto& t = gTransformTables;
  EXPECT_EQ(mismatches(index::kCased, inRanges(t.casedRanges)), "");
  EXPECT_EQ(mismatches(index::kCaseIgnorable, inRanges(t.caseIgnorableRanges)),
            "");
  EXPECT_EQ(mismatches(index::kSoftDotted, inRanges(t.softDottedRanges)), "");
}

// The distances give what the members make of every value.
TEST(PropertyIndex, CaseDistancesGiveTheSimpleMappingsAndTheFolding) {
  auto& t = gTransformTables;
  auto check = [&](char32_t c) {
    const index::CaseDistances& d = index::caseDistances(index::lookup(c));
    char32_t upper = c, lower = c, title = c, fold = c;
    t.toUpper(upper);
    t.toLower(lower);
    t.toTitle(title);
    t.simpleCaseFold(fold);
    ASSERT_EQ(static_cast<char32_t>(c + d.upper), upper) << std::hex << c;
    ASSERT_EQ(static_cast<char32_t>(c + d.lower), lower) << std::hex << c;
    ASSERT_EQ(static_cast<char32_t>(c + d.title), title) << std::hex << c;
    ASSERT_EQ(static_cast<char32_t>(c + d.fold), fold) << std::hex << c;
  };
  for (char32_t c = 0; c <= kLastCodePoint; ++c) check(c);
  for (char32_t c : kBeyond) check(c);
}

TEST(PropertyIndex, RowZeroOfTheCaseDistancesMapsNothing) {
  const index::CaseDistances& none = index::kCaseDistances[0];
  EXPECT_EQ(none.upper, 0);
  EXPECT_EQ(none.lower, 0);
  EXPECT_EQ(none.title, 0);
  EXPECT_EQ(none.fold, 0);
}

TEST(PropertyIndex, ValuesBeyondTheLastCodePointHaveTheEmptyRecord) {
  for (char32_t c : kBeyond) EXPECT_EQ(index::lookup(c), 0u) << std::hex << c;
}

}  // namespace
