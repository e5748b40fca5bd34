// Searching, substr and compare of String: element equality and the
// unsigned order of 32-bit values.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "ExceptionText.h"
#include "string/String.h"

namespace {

using zelvo::unicode::String;

const size_t npos = String::npos;
const char32_t kEmptyArray[] = {0};

std::u32string elements(const String& s) {
  return std::u32string(s.begin(), s.end());
}

// ---- On an empty String --------------------------------------------------

TEST(StringSearchEmpty, FindEmptyNeedleGivesZero) {
  const String s;
  EXPECT_EQ(s.find(String()), 0u);
  EXPECT_EQ(s.find(kEmptyArray), 0u);
}

TEST(StringSearchEmpty, FindElementGivesNpos) {
  const String s;
  EXPECT_EQ(s.find(U'a', 0), npos);
  EXPECT_EQ(s.find(char32_t{0}, 0), npos);
}

TEST(StringSearchEmpty, FirstOfAndFirstNotOfGiveNpos) {
  const String s;
  EXPECT_EQ(s.find_first_of(String{U'a'}), npos);
  EXPECT_EQ(s.find_first_of(String()), npos);
  EXPECT_EQ(s.find_first_of(U"a"), npos);
  EXPECT_EQ(s.find_first_of(U'a'), npos);
  EXPECT_EQ(s.find_first_not_of(String{U'a'}), npos);
  EXPECT_EQ(s.find_first_not_of(String()), npos);
  EXPECT_EQ(s.find_first_not_of(U"a"), npos);
  EXPECT_EQ(s.find_first_not_of(U'a'), npos);
}

TEST(StringSearchEmpty, RfindEmptyNeedleGivesZero) {
  const String s;
  EXPECT_EQ(s.rfind(String()), 0u);
  EXPECT_EQ(s.rfind(kEmptyArray), 0u);
}

TEST(StringSearchEmpty, BackwardElementAndSetSearchesGiveNpos) {
  const String s;
  EXPECT_EQ(s.rfind(U'a', npos), npos);
  EXPECT_EQ(s.find_last_of(String{U'a'}), npos);
  EXPECT_EQ(s.find_last_of(U"a"), npos);
  EXPECT_EQ(s.find_last_of(U'a'), npos);
  EXPECT_EQ(s.find_last_not_of(String{U'a'}), npos);
  EXPECT_EQ(s.find_last_not_of(String()), npos);
  EXPECT_EQ(s.find_last_not_of(U"a"), npos);
  EXPECT_EQ(s.find_last_not_of(U'a'), npos);
}

// ---- Empty needles and sets on a String of size 3 -------------------------

TEST(StringSearchEmptyNeedle, FindAtSizeGivesSizeAndPastGivesNpos) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(s.find(String(), 3), 3u);
  EXPECT_EQ(s.find(String(), 4), npos);
  EXPECT_EQ(s.find(kEmptyArray, 3), 3u);
  EXPECT_EQ(s.find(kEmptyArray, 4), npos);
  EXPECT_EQ(s.find(String(), 1), 1u);
}

TEST(StringSearchEmptyNeedle, RfindPastSizeGivesSize) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(s.rfind(String(), 7), 3u);
  EXPECT_EQ(s.rfind(kEmptyArray, 7), 3u);
  EXPECT_EQ(s.rfind(String(), 1), 1u);
  EXPECT_EQ(s.rfind(String()), 3u);
}

TEST(StringSearchEmptyNeedle, FirstNotOfEmptySetGivesPositionBelowSize) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(s.find_first_not_of(String(), 2), 2u);
  EXPECT_EQ(s.find_first_not_of(String(), 3), npos);
  EXPECT_EQ(s.find_first_not_of(kEmptyArray, 2), 2u);
  EXPECT_EQ(s.find_first_not_of(kEmptyArray, 3), npos);
}

TEST(StringSearchEmptyNeedle, LastNotOfEmptySetGivesLastElement) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(s.find_last_not_of(String(), npos), 2u);
  EXPECT_EQ(s.find_last_not_of(kEmptyArray, npos), 2u);
  EXPECT_EQ(s.find_last_not_of(String(), 1), 1u);
}

TEST(StringSearchEmptyNeedle, FirstOfAndLastOfEmptySetGiveNpos) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(s.find_first_of(String()), npos);
  EXPECT_EQ(s.find_first_of(kEmptyArray), npos);
  EXPECT_EQ(s.find_last_of(String()), npos);
  EXPECT_EQ(s.find_last_of(kEmptyArray), npos);
}

// ---- find and rfind ------------------------------------------------------

TEST(StringFind, FirstOccurrenceAtOrAfterPosition) {
  const String s{U'a', U'b', U'a', U'b', U'a'};
  const String needle{U'a', U'b'};
  EXPECT_EQ(s.find(needle), 0u);
  EXPECT_EQ(s.find(needle, 1), 2u);
  EXPECT_EQ(s.find(needle, 3), npos);
  EXPECT_EQ(s.find(U"ba", 0), 1u);
  EXPECT_EQ(s.find(U'b', 2), 3u);
}

TEST(StringFind, NeedleLongerThanTheRestGivesNpos) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(s.find(String{U'b', U'c', U'd'}), npos);
  EXPECT_EQ(s.find(String{U'c', U'd'}, 2), npos);
  EXPECT_EQ(s.find(U"abcd"), npos);
}

TEST(StringFind, PositionPastSizeGivesNpos) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(s.find(String{U'a'}, 4), npos);
  EXPECT_EQ(s.find(U"a", 4), npos);
  EXPECT_EQ(s.find(U'a', 4), npos);
  EXPECT_EQ(s.find(U'a', npos), npos);
  EXPECT_EQ(s.find(U'c', 3), npos);
}

TEST(StringFind, ZeroElementIsFoundInsideTheSize) {
  const String s{U'A', 0, U'B'};
  EXPECT_EQ(s.find(char32_t{0}), 1u);
  EXPECT_EQ(s.find(char32_t{0}, 2), npos);
}

TEST(StringFind, TerminatorBehindTheEndIsNeverFound) {
  const String s{U'A', U'B'};
  EXPECT_EQ(s.find(char32_t{0}), npos);
  EXPECT_EQ(s.rfind(char32_t{0}), npos);
  EXPECT_EQ(s.find_first_of(String{0}), npos);
}

TEST(StringFind, PointerToZeroIsTheEmptyNeedle) {
  const String s{U'A', 0, U'B'};
  EXPECT_EQ(s.find(kEmptyArray, 0), 0u);
  EXPECT_EQ(s.find(kEmptyArray, 2), 2u);
}

TEST(StringFind, StringNeedleMayHoldZero) {
  const String s{U'A', 0, U'B'};
  EXPECT_EQ(s.find(String{0, U'B'}), 1u);
  const char32_t pointerNeedle[] = {0, U'B', 0};
  EXPECT_EQ(s.find(pointerNeedle, 1), 1u);
}

TEST(StringFind, ElementsOnlyNoEquivalence) {
  const String decomposed{U'e', 0x0301};
  EXPECT_EQ(decomposed.find(char32_t{0x00E9}), npos);
  EXPECT_EQ(decomposed.find(String{0x00E9}), npos);
  const String text{U'A', U'a'};
  EXPECT_EQ(text.find(U'a'), 1u);
}

TEST(StringFind, BadValuesAreFoundAsValues) {
  const String s{U'a', 0xD800, 0xFFFFFFFF};
  EXPECT_EQ(s.find(char32_t{0xD800}), 1u);
  EXPECT_EQ(s.find(String{0xFFFFFFFF}), 2u);
  EXPECT_EQ(s.find(char32_t{0xFFFF}), npos);
}

TEST(StringRfind, LastOccurrenceAtOrBeforePosition) {
  const String s{U'a', U'b', U'a', U'b', U'a'};
  const String needle{U'a', U'b'};
  EXPECT_EQ(s.rfind(needle), 2u);
  EXPECT_EQ(s.rfind(needle, 1), 0u);
  EXPECT_EQ(s.rfind(U"ba"), 3u);
  EXPECT_EQ(s.rfind(U"ba", 2), 1u);
  EXPECT_EQ(s.rfind(U'b'), 3u);
  EXPECT_EQ(s.rfind(U'b', 2), 1u);
  EXPECT_EQ(s.rfind(U'z'), npos);
}

TEST(StringRfind, MatchMayEndBeyondThePosition) {
  const String s{U'x', U'y', U'z', U'q'};
  EXPECT_EQ(s.rfind(String{U'x', U'y', U'z'}, 0), 0u);
  EXPECT_EQ(s.rfind(U"xyz", 0), 0u);
}

TEST(StringRfind, PositionPastEndIsTakenAsTheEnd) {
  const String s{U'a', U'b', U'a'};
  EXPECT_EQ(s.rfind(String{U'a'}, 100), 2u);
  EXPECT_EQ(s.rfind(U'a', 100), 2u);
  EXPECT_EQ(s.rfind(U'a', npos), 2u);
}

TEST(StringRfind, NeedleLongerThanTextGivesNpos) {
  const String s{U'a', U'b'};
  EXPECT_EQ(s.rfind(String{U'a', U'b', U'c'}), npos);
}

// ---- Set searches --------------------------------------------------------

TEST(StringFindFirstOf, FirstElementInTheSet) {
  const String s{U'a', U'b', U'c', U'd'};
  EXPECT_EQ(s.find_first_of(String{U'd', U'c'}), 2u);
  EXPECT_EQ(s.find_first_of(U"dc", 3), 3u);
  EXPECT_EQ(s.find_first_of(U'b'), 1u);
  EXPECT_EQ(s.find_first_of(U"xyz"), npos);
}

TEST(StringFindFirstOf, PositionAtOrPastSizeGivesNpos) {
  const String s{U'a', U'b'};
  EXPECT_EQ(s.find_first_of(String{U'a'}, 2), npos);
  EXPECT_EQ(s.find_first_of(U"a", 5), npos);
  EXPECT_EQ(s.find_first_of(U'a', 2), npos);
}

TEST(StringFindFirstOf, ElementFormIsFind) {
  const String s{U'a', U'b', U'a'};
  for (size_t pos = 0; pos <= 4; ++pos) {
    EXPECT_EQ(s.find_first_of(U'a', pos), s.find(U'a', pos)) << pos;
  }
}

TEST(StringFindFirstOf, StringSetMayHoldZero) {
  const String s{U'a', 0, U'b'};
  EXPECT_EQ(s.find_first_of(String{U'x', 0}), 1u);
  const char32_t pointerSet[] = {U'x', 0, U'a', 0};
  EXPECT_EQ(s.find_first_of(pointerSet), npos);
}

TEST(StringFindLastOf, LastElementInTheSet) {
  const String s{U'a', U'b', U'c', U'a'};
  EXPECT_EQ(s.find_last_of(String{U'b', U'c'}), 2u);
  EXPECT_EQ(s.find_last_of(U"bc", 1), 1u);
  EXPECT_EQ(s.find_last_of(U"bc", 0), npos);
  EXPECT_EQ(s.find_last_of(U'a'), 3u);
  EXPECT_EQ(s.find_last_of(U'a', 2), 0u);
}

TEST(StringFindLastOf, PositionPastEndIsTakenAsLastElement) {
  const String s{U'a', U'b'};
  EXPECT_EQ(s.find_last_of(String{U'b'}, 9), 1u);
  EXPECT_EQ(s.find_last_of(U"b", npos), 1u);
}

TEST(StringFindLastOf, ElementFormIsRfind) {
  const String s{U'a', U'b', U'a'};
  for (size_t pos : {size_t{0}, size_t{1}, size_t{2}, size_t{3}, npos}) {
    EXPECT_EQ(s.find_last_of(U'a', pos), s.rfind(U'a', pos)) << pos;
  }
}

TEST(StringFindFirstNotOf, FirstElementOutsideTheSet) {
  const String s{U'a', U'a', U'b', U'c'};
  EXPECT_EQ(s.find_first_not_of(String{U'a'}), 2u);
  EXPECT_EQ(s.find_first_not_of(U"ab"), 3u);
  EXPECT_EQ(s.find_first_not_of(U"abc"), npos);
  EXPECT_EQ(s.find_first_not_of(U'a'), 2u);
  EXPECT_EQ(s.find_first_not_of(U'a', 3), 3u);
}

TEST(StringFindFirstNotOf, PositionAtOrPastSizeGivesNpos) {
  const String s{U'a', U'b'};
  EXPECT_EQ(s.find_first_not_of(String{U'x'}, 2), npos);
  EXPECT_EQ(s.find_first_not_of(U"x", 2), npos);
  EXPECT_EQ(s.find_first_not_of(U'x', 2), npos);
}

TEST(StringFindLastNotOf, LastElementOutsideTheSet) {
  const String s{U'a', U'b', U'c', U'c'};
  EXPECT_EQ(s.find_last_not_of(String{U'c'}), 1u);
  EXPECT_EQ(s.find_last_not_of(U"bc"), 0u);
  EXPECT_EQ(s.find_last_not_of(U"abc"), npos);
  EXPECT_EQ(s.find_last_not_of(U'c'), 1u);
  EXPECT_EQ(s.find_last_not_of(U'a', 0), npos);
}

TEST(StringFindLastNotOf, PositionPastEndIsTakenAsLastElement) {
  const String s{U'a', U'b'};
  EXPECT_EQ(s.find_last_not_of(String{U'a'}, 50), 1u);
  EXPECT_EQ(s.find_last_not_of(U'a', 50), 1u);
}

TEST(StringSearch, NeverThrowsWhateverThePosition) {
  const String s{U'a'};
  EXPECT_NO_THROW(s.find(String{U'a'}, npos));
  EXPECT_NO_THROW(s.rfind(U"a", npos));
  EXPECT_NO_THROW(s.find_first_of(U'a', npos));
  EXPECT_NO_THROW(s.find_last_of(String(), npos));
  EXPECT_NO_THROW(s.find_first_not_of(U"a", npos));
  EXPECT_NO_THROW(s.find_last_not_of(U'a', npos));
}

// ---- substr --------------------------------------------------------------

TEST(StringSubstr, FromPositionAtMostCount) {
  const String s{U'a', U'b', U'c', U'd'};
  EXPECT_EQ(elements(s.substr(1, 2)), U"bc");
  EXPECT_EQ(elements(s.substr(2, 100)), U"cd");
  EXPECT_EQ(elements(s.substr()), U"abcd");
}

TEST(StringSubstr, AtSizeIsEmpty) {
  const String s{U'a', U'b'};
  EXPECT_TRUE(s.substr(s.size(), 5).empty());
}

TEST(StringSubstr, PastSizeThrows) {
  const String s{U'a', U'b'};
  EXPECT_THROW(s.substr(s.size() + 1, 5), std::out_of_range);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringSubstr, FromOneToNposDropsTheFirst) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(elements(s.substr(1, npos)), U"bc");
}

// ---- compare -------------------------------------------------------------

TEST(StringCompare, EmptyWithEmptyIsZero) {
  EXPECT_EQ(String().compare(String()), 0);
  EXPECT_EQ(String().compare(kEmptyArray), 0);
}

TEST(StringCompare, ShorterPrefixIsLess) {
  const String a{U'A'};
  const String aa{U'A', U'A'};
  EXPECT_EQ(a.compare(aa), -1);
  EXPECT_EQ(aa.compare(a), 1);
  EXPECT_EQ(a.compare(a), 0);
}

TEST(StringCompare, ResultIsExactlyMinusOneZeroOrOne) {
  const String shortText{U'a'};
  const String longText(1000, U'a');
  EXPECT_EQ(shortText.compare(longText), -1);
  EXPECT_EQ(longText.compare(shortText), 1);
  EXPECT_EQ(String{U'z'}.compare(String{U'a'}), 1);
  EXPECT_EQ(String{0}.compare(String{0xFFFFFFFF}), -1);
  EXPECT_EQ(longText.compare(U"a"), 1);
  EXPECT_EQ(shortText.compare(0, 1, longText), -1);
  EXPECT_EQ(longText.compare(0, npos, shortText, 0, 1), 1);
  EXPECT_EQ(longText.compare(0, npos, U"a"), 1);
}

TEST(StringCompare, FirstDifferenceDecides) {
  const String abc{U'a', U'b', U'c'};
  const String abd{U'a', U'b', U'd'};
  const String ac{U'a', U'c'};
  EXPECT_EQ(abc.compare(abd), -1);
  EXPECT_EQ(abd.compare(abc), 1);
  EXPECT_EQ(abc.compare(ac), -1);
}

TEST(StringCompare, IsUnsigned) {
  EXPECT_EQ(String{0xE000}.compare(String{0x10000}), -1);
  EXPECT_EQ(String{0x10FFFF}.compare(String{0x110000}), -1);
  EXPECT_EQ(String{0xFFFFFFFF}.compare(String{0}), 1);
  EXPECT_EQ(String{0x80000000}.compare(String{0x7FFFFFFF}), 1);
}

// The order of UTF-16 units would put U+FF61 above U+10000 (0xFF61 > 0xD800).
TEST(StringCompare, CodePointOrderNotUtf16Order) {
  EXPECT_EQ(String{0xFF61}.compare(String{0x10000}), -1);
}

TEST(StringCompare, SurrogatesSortBetweenTheirNeighbours) {
  EXPECT_EQ(String{0xD800}.compare(String{0xD7FF}), 1);
  EXPECT_EQ(String{0xDFFF}.compare(String{0xE000}), -1);
}

TEST(StringCompare, PartWithWhole) {
  const String s{U'x', U'a', U'b', U'y'};
  const String ab{U'a', U'b'};
  EXPECT_EQ(s.compare(1, 2, ab), 0);
  EXPECT_EQ(s.compare(1, 3, ab), 1);
  EXPECT_EQ(s.compare(0, 2, ab), 1);
  EXPECT_EQ(s.compare(1, 1, ab), -1);
}

TEST(StringCompare, PartAtSizeWithEmptyIsZero) {
  const String s{U'a', U'b'};
  EXPECT_EQ(s.compare(s.size(), 0, String()), 0);
  EXPECT_EQ(s.compare(s.size(), 5, kEmptyArray), 0);
}

TEST(StringCompare, PartPastSizeThrows) {
  const String s{U'a', U'b'};
  EXPECT_THROW(s.compare(s.size() + 1, 0, String()), std::out_of_range);
  EXPECT_THROW(s.compare(s.size() + 1, 0, kEmptyArray), std::out_of_range);
  EXPECT_THROW(s.compare(s.size() + 1, 0, String(), 0, 0), std::out_of_range);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringCompare, PartsOfBoth) {
  const String s{U'x', U'a', U'b', U'y'};
  const String t{U'q', U'a', U'b'};
  EXPECT_EQ(s.compare(1, 2, t, 1, 2), 0);
  EXPECT_EQ(s.compare(1, 2, t, 1), 0);
  EXPECT_EQ(s.compare(1, 2, t, 0, 2), -1);
  EXPECT_EQ(s.compare(0, 0, t, 3, 4), 0);
}

TEST(StringCompare, SecondPositionPastItsSizeThrows) {
  const String s{U'a', U'b'};
  const String t{U'a'};
  EXPECT_THROW(s.compare(0, 1, t, 2, 1), std::out_of_range);
  EXPECT_THROW(s.compare(3, 1, t, 2, 1), std::out_of_range);
}

TEST(StringCompare, WithPointerEndsAtItsFirstZero) {
  const String s{U'A', 0};
  const char32_t p[] = {U'A', 0};
  EXPECT_EQ(s.compare(p), 1);
  EXPECT_EQ(String{U'A'}.compare(p), 0);
}

TEST(StringCompare, PartWithPointer) {
  const String s{U'x', U'a', U'b'};
  EXPECT_EQ(s.compare(1, 2, U"ab"), 0);
  EXPECT_EQ(s.compare(1, npos, U"abc"), -1);
  EXPECT_EQ(s.compare(0, 1, U"a"), 1);
}

TEST(StringCompare, ElementsOnlyNoEquivalence) {
  const String composed{0x00E9};
  const String decomposed{U'e', 0x0301};
  EXPECT_EQ(composed.compare(decomposed), 1);
}

// ---- the exception a bad position raises ---------------------------------

// The library adds no message of its own: compare with a position past the
// end fails with exactly the exception the standard string raises for it.
TEST(StringCompare, PositionErrorIsTheStandardStringsOwnException) {
  const std::u32string held(3, U'a');
  const std::string standard =
      outOfRangeText([&] { static_cast<void>(held.substr(4, 0)); });
  ASSERT_NE(standard, "none");
  const String s{U'a', U'b', U'c'};
  const String t{U'x', U'y', U'z'};
  EXPECT_EQ(outOfRangeText([&] { s.compare(4, 1, t); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.compare(0, 1, t, 4, 1); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.compare(4, 1, kEmptyArray); }), standard);
}

}  // namespace
