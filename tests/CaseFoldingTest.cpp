// Simple case folding: the member simpleCaseFold and the free functions
// simpleCaseFold and simpleCaseFoldInPlace.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace {

using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;
using zelvo::unicode::UnicodeTransformationTables;

static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::simpleCaseFold),
                 void (UnicodeTransformationTables::*)(char32_t&)>::value,
    "the member folds in place");
static_assert(std::is_same<decltype(zelvo::unicode::simpleCaseFold(
                               std::declval<char32_t const&>())),
                           char32_t>::value,
              "the free form returns the folded copy");
static_assert(std::is_same<decltype(zelvo::unicode::simpleCaseFoldInPlace(
                               std::declval<char32_t&>())),
                           void>::value,
              "");

template <typename T, typename = void>
struct FoldTakes : std::false_type {};
template <typename T>
struct FoldTakes<
    T, std::void_t<decltype(zelvo::unicode::simpleCaseFold(std::declval<T>()))>>
    : std::true_type {};
static_assert(FoldTakes<char32_t>::value, "");
static_assert(!FoldTakes<String const&>::value, "folding takes no String");

struct FoldCase {
  char const* name;
  char32_t input;
  char32_t expected;
};

void PrintTo(FoldCase const& c, std::ostream* os) { *os << c.name; }

class SimpleCaseFold : public testing::TestWithParam<FoldCase> {};

TEST_P(SimpleCaseFold, FreeFunctionGivesTheFoldedCopy) {
  char32_t const input = GetParam().input;
  EXPECT_EQ(zelvo::unicode::simpleCaseFold(input), GetParam().expected);
  EXPECT_EQ(input, GetParam().input);
}

TEST_P(SimpleCaseFold, InPlaceFormFoldsTheArgument) {
  char32_t c = GetParam().input;
  zelvo::unicode::simpleCaseFoldInPlace(c);
  EXPECT_EQ(c, GetParam().expected);
}

TEST_P(SimpleCaseFold, MemberFoldsTheArgument) {
  char32_t c = GetParam().input;
  gTransformTables.simpleCaseFold(c);
  EXPECT_EQ(c, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SimpleCaseFold,
    testing::Values(FoldCase{"CapitalAIsCommon", 0x0041, 0x0061},
                    FoldCase{"SmallAHasNoRow", 0x0061, 0x0061},
                    FoldCase{"CapitalIIgnoresTheTurkicRow", 0x0049, 0x0069},
                    FoldCase{"CapitalIWithDotHasOnlyFullAndTurkicRows", 0x0130,
                             0x0130},
                    FoldCase{"DotlessIHasNoCommonOrSimpleRow", 0x0131, 0x0131},
                    FoldCase{"SharpSHasOnlyAFullRow", 0x00DF, 0x00DF},
                    FoldCase{"CapitalSharpSIsSimple", 0x1E9E, 0x00DF},
                    FoldCase{"LigatureFFHasOnlyAFullRow", 0xFB00, 0xFB00},
                    FoldCase{"GreekWithProsgegrammeniIsSimple", 0x1F88, 0x1F80},
                    FoldCase{"SigmaIsCommon", 0x03A3, 0x03C3},
                    FoldCase{"FinalSigmaFoldsWithTheOthers", 0x03C2, 0x03C3},
                    FoldCase{"CapitalDzWithCaron", 0x01C4, 0x01C6},
                    FoldCase{"TitlecaseDzWithCaron", 0x01C5, 0x01C6},
                    FoldCase{"OhmSign", 0x2126, 0x03C9},
                    FoldCase{"DeseretCapitalLongI", 0x10400, 0x10428},
                    FoldCase{"SurrogateIsUnchanged", 0xD800, 0xD800},
                    FoldCase{"ValueAboveRangeIsUnchanged", 0x110000, 0x110000},
                    FoldCase{"LargestValueIsUnchanged", 0xFFFFFFFF, 0xFFFFFFFF},
                    FoldCase{"UnassignedIsUnchanged", 0x0378, 0x0378}),
    [](testing::TestParamInfo<FoldCase> const& info) {
      return std::string(info.param.name);
    });

TEST(CaseFoldingTables, CommonAndSimpleKeysAreDisjoint) {
  for (auto const& row : gTransformTables.sCaseFoldingMap)
    EXPECT_EQ(gTransformTables.cCaseFoldingMap.count(row.first), 0u)
        << std::hex << row.first;
}

// A common row ends the search even where its value has a row of its own.
TEST(CaseFoldingTables, CommonValueIsNotFoldedAgain) {
  for (auto const& row : gTransformTables.cCaseFoldingMap) {
    char32_t c = row.first;
    gTransformTables.simpleCaseFold(c);
    EXPECT_EQ(c, row.second) << std::hex << row.first;
  }
}

TEST(CaseFoldingTables, FoldingNeverAddsAKey) {
  std::size_t const common = gTransformTables.cCaseFoldingMap.size();
  std::size_t const simple = gTransformTables.sCaseFoldingMap.size();
  for (char32_t c : {0x0061u, 0x0378u, 0xD800u, 0x110000u})
    (void)zelvo::unicode::simpleCaseFold(c);
  EXPECT_EQ(gTransformTables.cCaseFoldingMap.size(), common);
  EXPECT_EQ(gTransformTables.sCaseFoldingMap.size(), simple);
}

}  // namespace
