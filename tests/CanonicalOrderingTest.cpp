// Tests of sortCombiningMarks: runs of non-starters ordered by combining
// class, stably, never across a starter.
#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>
#include <utility>
#include <vector>

#include "NormalizationTestSupport.h"
#include "transform/UnicodeOperations.h"

namespace {

using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;
using zelvo::unicode::UnicodeTransformationTables;

String sorted(String s) {
  gTransformTables.sortCombiningMarks(s);
  return s;
}

static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::sortCombiningMarks),
                 void (UnicodeTransformationTables::*)(String&)>::value,
    "sortCombiningMarks works in place and returns nothing");

TEST(CanonicalOrderingTest, EmptyStringStaysEmpty) {
  EXPECT_EQ(sorted(String()), String());
}

TEST(CanonicalOrderingTest, OneCodePointStaysAsItIs) {
  EXPECT_EQ(sorted(String{0x0061}), (String{0x0061}));
  EXPECT_EQ(sorted(String{0x0301}), (String{0x0301}));
}

TEST(CanonicalOrderingTest, LowerClassMovesBeforeHigherClass) {
  // U+0323 has class 220, U+0307 class 230.
  EXPECT_EQ(sorted({0x0061, 0x0307, 0x0323}), (String{0x0061, 0x0323, 0x0307}));
}

TEST(CanonicalOrderingTest, MarksOfEqualClassKeepTheirOrder) {
  EXPECT_EQ(sorted({0x0061, 0x0301, 0x0300}), (String{0x0061, 0x0301, 0x0300}));
}

TEST(CanonicalOrderingTest, SortIsStableAmongEqualClasses) {
  EXPECT_EQ(sorted({0x0061, 0x0301, 0x0323, 0x0300}),
            (String{0x0061, 0x0323, 0x0301, 0x0300}));
}

TEST(CanonicalOrderingTest, LongRunIsOrderedByClass) {
  // Classes 240, 230, 220 and 1.
  EXPECT_EQ(sorted({0x0061, 0x0345, 0x0301, 0x0323, 0x0334}),
            (String{0x0061, 0x0334, 0x0323, 0x0301, 0x0345}));
}

TEST(CanonicalOrderingTest, LongRunsAreSortedStablyToo) {
  // Marks with their classes, cycled into runs longer and shorter than any
  // buffer threshold; equal classes must keep their order.
  const std::pair<char32_t, int> marks[] = {
      {0x0301, 230}, {0x0323, 220}, {0x0334, 1},   {0x0345, 240},
      {0x0300, 230}, {0x0327, 202}, {0x0316, 220}, {0x0308, 230}};
  for (size_t runLength : {2u, 15u, 16u, 17u, 40u, 200u}) {
    std::vector<std::pair<char32_t, int>> run;
    for (size_t k = 0; k < runLength; ++k) run.push_back(marks[(k * 5) % 8]);
    String s{0x0061};
    for (const auto& mark : run) s.push_back(mark.first);
    s.push_back(0x0062);
    std::stable_sort(
        run.begin(), run.end(),
        [](const std::pair<char32_t, int>& a,
           const std::pair<char32_t, int>& b) { return a.second < b.second; });
    String want{0x0061};
    for (const auto& mark : run) want.push_back(mark.first);
    want.push_back(0x0062);
    EXPECT_EQ(sorted(s), want) << runLength;
  }
}

TEST(CanonicalOrderingTest, RunNeedsNoStarterInFront) {
  EXPECT_EQ(sorted({0x0301, 0x0323}), (String{0x0323, 0x0301}));
}

TEST(CanonicalOrderingTest, StarterDividesMarks) {
  EXPECT_EQ(sorted({0x0307, 0x0061, 0x0323}), (String{0x0307, 0x0061, 0x0323}));
}

TEST(CanonicalOrderingTest, StarterAtOrAboveU0300DividesMarks) {
  EXPECT_EQ(sorted({0x0307, 0x4E00, 0x0323}), (String{0x0307, 0x4E00, 0x0323}));
}

TEST(CanonicalOrderingTest, RunThatReachesTheEndIsSorted) {
  EXPECT_EQ(sorted({0x0061, 0x0062, 0x0307, 0x0323}),
            (String{0x0061, 0x0062, 0x0323, 0x0307}));
}

TEST(CanonicalOrderingTest, EveryRunOfTheStringIsSorted) {
  EXPECT_EQ(sorted({0x0061, 0x0307, 0x0323, 0x0062, 0x0307, 0x0323, 0x0063}),
            (String{0x0061, 0x0323, 0x0307, 0x0062, 0x0323, 0x0307, 0x0063}));
}

TEST(CanonicalOrderingTest, ValuesThatAreNotCodePointsActAsStarters) {
  for (char32_t odd : {char32_t{0xD800}, char32_t{0xDFFF}, char32_t{0x110000},
                       char32_t{0xFFFFFFFF}}) {
    const String s{0x0307, odd, 0x0323};
    EXPECT_EQ(sorted(s), s) << std::hex << static_cast<unsigned>(odd);
  }
}

TEST(CanonicalOrderingTest, SortingInsertsNothingIntoWeightMap) {
  const size_t before = gTransformTables.weightMap.size();
  sorted({0x0061, 0x0345, 0x0301, 0x0323, 0x0334, 0xD800, 0x0062});
  EXPECT_EQ(gTransformTables.weightMap.size(), before);
}

TEST(CanonicalOrderingTest, EmptyWeightMapLeavesTheStringAlone) {
  // The state in which the compatibility decompositions are built at load.
  UnicodeTransformationTables tables = gTransformTables;
  tables.weightMap.clear();
  String s{0x0061, 0x0307, 0x0323, 0x0345, 0x0334};
  const String original = s;
  tables.sortCombiningMarks(s);
  EXPECT_EQ(s, original);
  EXPECT_TRUE(tables.weightMap.empty());
}

TEST(CanonicalOrderingTest, WeightsCompareAsSignedIntegers) {
  // No real class is negative; a copy of the tables with one shows that the
  // comparison is of signed ints, so a negative weight sorts first.
  UnicodeTransformationTables tables = gTransformTables;
  tables.weightMap[0x0301] = -5;
  String s{0x0061, 0x0323, 0x0301};
  tables.sortCombiningMarks(s);
  EXPECT_EQ(s, (String{0x0061, 0x0301, 0x0323}));
}

TEST(CanonicalOrderingTest, ToNfdPutsMarksInCanonicalOrder) {
  EXPECT_EQ(zelvo::unicode::toNFD({0x0061, 0x0307, 0x0323}),
            (String{0x0061, 0x0323, 0x0307}));
}

// Canonical ordering opens no run below U+0300 without a lookup, by its own
// rule; no code point there has a combining class, so the rule changes
// nothing on these tables.
TEST(CanonicalOrderingTest, NoCodePointBelowU0300HasACombiningClass) {
  ASSERT_FALSE(gTransformTables.weightMap.empty());
  EXPECT_EQ(gTransformTables.weightMap.begin()->first, char32_t{0x0300});
  EXPECT_EQ(gTransformTables.weightMap.lower_bound(0x0300),
            gTransformTables.weightMap.begin());
}

TEST(CanonicalOrderingTest, EveryWeightIsAPositiveClass) {
  for (const auto& entry : gTransformTables.weightMap) {
    EXPECT_GT(entry.second, 0) << std::hex << entry.first;
    EXPECT_LE(entry.second, 240) << std::hex << entry.first;
  }
}

}  // namespace
