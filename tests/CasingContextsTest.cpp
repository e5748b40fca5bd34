// Casing contexts: the conditional rows of SpecialCasing.txt, the six tests
// that decide whether one applies, their dispatcher, and the languages.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/reference/CaseReference.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace {

using zelvo::unicode::ConditionTable;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;
using zelvo::unicode::UnicodeTransformationTables;

std::u32string elements(String const& s) {
  return std::u32string(s.begin(), s.end());
}

String text(std::u32string const& s) { return String(s); }

// ---------------------------------------------------------------------------
// The interface.

static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::mapSpecialCondition),
                 bool (UnicodeTransformationTables::*)(
                     char32_t const*, char32_t const*, char32_t const*,
                     std::string const&, ConditionTable const&,
                     String&)>::value,
    "mapSpecialCondition(begin, end, current, language, table, "
    "result)");
static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::mapFinalSigma),
                 bool (UnicodeTransformationTables::*)(
                     char32_t const*, char32_t const*, char32_t const*,
                     ConditionTable const&, String&)>::value,
    "mapFinalSigma takes no language");
static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::mapAfterSoftDotted),
                 bool (UnicodeTransformationTables::*)(
                     char32_t const*, char32_t const*, std::string const&,
                     ConditionTable const&, String&)>::value,
    "mapAfterSoftDotted(begin, current, language, table, result)");
static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::mapMoreAbove),
                 bool (UnicodeTransformationTables::*)(
                     char32_t const*, char32_t const*, std::string const&,
                     ConditionTable const&, String&)>::value,
    "mapMoreAbove(end, current, language, table, result)");
static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::mapNotBeforeDot),
                 bool (UnicodeTransformationTables::*)(
                     char32_t const*, char32_t const*, std::string const&,
                     ConditionTable const&, String&)>::value,
    "mapNotBeforeDot(end, current, language, table, result)");
static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::mapAfterI),
                 bool (UnicodeTransformationTables::*)(
                     char32_t const*, char32_t const*, std::string const&,
                     ConditionTable const&, String&)>::value,
    "mapAfterI(begin, current, language, table, result)");
static_assert(std::is_same<decltype(&UnicodeTransformationTables::mapLanguage),
                           bool (UnicodeTransformationTables::*)(
                               char32_t, std::string const&,
                               ConditionTable const&, String&)>::value,
              "mapLanguage takes the code point by value");
static_assert(
    std::is_same<ConditionTable,
                 std::map<std::string, std::map<char32_t, String>>>::value,
    "a condition table maps a condition text to code point rows");

// ---------------------------------------------------------------------------
// The contents of the three condition tables.

struct ConditionRow {
  char const* key;
  char32_t codePoint;
  std::u32string lower;
  std::u32string upper;
  std::u32string title;
};

std::vector<ConditionRow> const& conditionRows() {
  static std::vector<ConditionRow> const rows = {
      {"Final_Sigma", 0x03A3, U"\u03C2", U"\u03A3", U"\u03A3"},
      {"az", 0x0069, U"\u0069", U"\u0130", U"\u0130"},
      {"az", 0x0130, U"\u0069", U"\u0130", U"\u0130"},
      {"az After_I", 0x0307, U"", U"\u0307", U"\u0307"},
      {"az Not_Before_Dot", 0x0049, U"\u0131", U"\u0049", U"\u0049"},
      {"lt", 0x00CC, U"\u0069\u0307\u0300", U"\u00CC", U"\u00CC"},
      {"lt", 0x00CD, U"\u0069\u0307\u0301", U"\u00CD", U"\u00CD"},
      {"lt", 0x0128, U"\u0069\u0307\u0303", U"\u0128", U"\u0128"},
      {"lt After_Soft_Dotted", 0x0307, U"\u0307", U"", U""},
      {"lt More_Above", 0x0049, U"\u0069\u0307", U"\u0049", U"\u0049"},
      {"lt More_Above", 0x004A, U"\u006A\u0307", U"\u004A", U"\u004A"},
      {"lt More_Above", 0x012E, U"\u012F\u0307", U"\u012E", U"\u012E"},
      {"tr", 0x0069, U"\u0069", U"\u0130", U"\u0130"},
      {"tr", 0x0130, U"\u0069", U"\u0130", U"\u0130"},
      {"tr After_I", 0x0307, U"", U"\u0307", U"\u0307"},
      {"tr Not_Before_Dot", 0x0049, U"\u0131", U"\u0049", U"\u0049"},
  };
  return rows;
}

// Every row of a table, as (key, code point, value).
std::vector<std::pair<std::pair<std::string, char32_t>, std::u32string>>
flatten(ConditionTable const& table) {
  std::vector<std::pair<std::pair<std::string, char32_t>, std::u32string>> rows;
  for (auto const& keyed : table)
    for (auto const& row : keyed.second)
      rows.push_back({{keyed.first, row.first}, elements(row.second)});
  return rows;
}

void expectTableHolds(ConditionTable const& table,
                      std::u32string ConditionRow::*value) {
  std::vector<std::pair<std::pair<std::string, char32_t>, std::u32string>>
      expected;
  for (ConditionRow const& row : conditionRows())
    expected.push_back({{row.key, row.codePoint}, row.*value});
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(flatten(table), expected);
}

TEST(ConditionTables, LowerTableHoldsExactlyTheSixteenRows) {
  expectTableHolds(gTransformTables.toLowerSpecialConditionMap,
                   &ConditionRow::lower);
}

TEST(ConditionTables, UpperTableHoldsExactlyTheSixteenRows) {
  expectTableHolds(gTransformTables.toUpperSpecialConditionMap,
                   &ConditionRow::upper);
}

TEST(ConditionTables, TitleTableHoldsExactlyTheSixteenRows) {
  expectTableHolds(gTransformTables.toTitleSpecialConditionMap,
                   &ConditionRow::title);
}

TEST(ConditionTables, AllThreeHaveTheSameTenKeys) {
  std::set<std::string> const expected = {
      "Final_Sigma",       "az", "az After_I",
      "az Not_Before_Dot", "lt", "lt After_Soft_Dotted",
      "lt More_Above",     "tr", "tr After_I",
      "tr Not_Before_Dot"};
  for (ConditionTable const* table :
       {&gTransformTables.toLowerSpecialConditionMap,
        &gTransformTables.toUpperSpecialConditionMap,
        &gTransformTables.toTitleSpecialConditionMap}) {
    std::set<std::string> keys;
    for (auto const& keyed : *table) keys.insert(keyed.first);
    EXPECT_EQ(keys, expected);
  }
}

TEST(ConditionTables, EmptyValueIsAnEntryNotAMissingRow) {
  auto const& lower = gTransformTables.toLowerSpecialConditionMap;
  ASSERT_EQ(lower.count("tr After_I"), 1u);
  ASSERT_EQ(lower.at("tr After_I").count(0x0307), 1u);
  EXPECT_TRUE(lower.at("tr After_I").at(0x0307).empty());
  auto const& upper = gTransformTables.toUpperSpecialConditionMap;
  ASSERT_EQ(upper.at("lt After_Soft_Dotted").count(0x0307), 1u);
  EXPECT_TRUE(upper.at("lt After_Soft_Dotted").at(0x0307).empty());
}

// ---------------------------------------------------------------------------
// The walk, row by row, as toLowerFull of a String sees it.

struct WalkCase {
  char const* name;
  char const* language;
  std::u32string input;
  std::u32string expected;
};

void PrintTo(WalkCase const& c, std::ostream* os) {
  *os << c.name << " (language \"" << c.language << "\")";
}

std::string walkCaseName(testing::TestParamInfo<WalkCase> const& info) {
  return info.param.name;
}

class LowerWalk : public testing::TestWithParam<WalkCase> {};

TEST_P(LowerWalk, GivesTheExpectedText) {
  WalkCase const& c = GetParam();
  String const input = text(c.input);
  EXPECT_EQ(elements(zelvo::unicode::toLowerFull(input, c.language)),
            c.expected);
  EXPECT_EQ(elements(input), c.input) << "the input is left alone";
}

// The plain transcription that the fast paths are held against gives the
// same documented text.
TEST_P(LowerWalk, PlainTranscriptionGivesTheExpectedText) {
  WalkCase const& c = GetParam();
  zelvo_reference::CaseReference const plain(gTransformTables);
  EXPECT_EQ(elements(plain.lowerFull(text(c.input), c.language)), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    FinalSigma, LowerWalk,
    testing::Values(
        WalkCase{"AfterCasedLetterIsFinal", "", U"\u0391\u03A3",
                 U"\u03B1\u03C2"},
        WalkCase{"RuleKnowsNoLanguage", "tr", U"\u0391\u03A3", U"\u03B1\u03C2"},
        WalkCase{"AtStartOfTextIsNotFinal", "", U"\u03A3", U"\u03C3"},
        WalkCase{"NothingCasedBefore", "", U"\u002E\u03A3", U"\u002E\u03C3"},
        WalkCase{"DigitIsNotCased", "", U"\u0031\u03A3", U"\u0031\u03C3"},
        WalkCase{"FullStopBeforeIsPassedOver", "", U"\u0391\u002E\u03A3",
                 U"\u03B1\u002E\u03C2"},
        WalkCase{"CasedLetterFollows", "", U"\u0391\u03A3\u0392",
                 U"\u03B1\u03C3\u03B2"},
        WalkCase{"SpaceEndsTheWord", "", U"\u0391\u03A3\u0020\u0392",
                 U"\u03B1\u03C2\u0020\u03B2"},
        WalkCase{"DigitEndsForwardScan", "", U"\u0391\u03A3\u0031",
                 U"\u03B1\u03C2\u0031"},
        WalkCase{"IgnorableTailUpToEndIsNotFinal", "", U"\u0391\u03A3\u002E",
                 U"\u03B1\u03C3\u002E"},
        WalkCase{"SpaceEndsScanAfterIgnorable", "", U"\u0391\u03A3\u002E\u0020",
                 U"\u03B1\u03C2\u002E\u0020"},
        WalkCase{"CasedLetterAfterFullStop", "", U"\u0391\u03A3\u002E\u0392",
                 U"\u03B1\u03C3\u002E\u03B2"},
        WalkCase{"CasedAndIgnorableBeforeIsPassedOver", "", U"\u02B0\u03A3",
                 U"\u02B0\u03C3"},
        WalkCase{"CasedAndIgnorableAfterIsPassedOver", "",
                 U"\u0391\u03A3\u02B0\u0020", U"\u03B1\u03C2\u02B0\u0020"}),
    walkCaseName);

INSTANTIATE_TEST_SUITE_P(
    MoreAbove, LowerWalk,
    testing::Values(
        WalkCase{"OneMarkAbove", "lt", U"\u0049\u0301", U"\u0069\u0307\u0301"},
        WalkCase{"Class220IsPassedOver", "lt", U"\u0049\u0323\u0301",
                 U"\u0069\u0307\u0323\u0301"},
        WalkCase{"OneMarkAboveThenClass220ToEnd", "lt", U"\u0049\u0301\u0323",
                 U"\u0069\u0307\u0301\u0323"},
        WalkCase{"SecondMarkAboveDefeatsRule", "lt", U"\u0049\u0301\u0301",
                 U"\u0069\u0301\u0301"},
        WalkCase{"SecondMarkAboveFurtherOn", "lt", U"\u0049\u0301\u0323\u0301",
                 U"\u0069\u0301\u0323\u0301"},
        WalkCase{"NoMarkAbove", "lt", U"\u0049\u0323", U"\u0069\u0323"},
        WalkCase{"NothingFollows", "lt", U"\u0049", U"\u0069"},
        WalkCase{"CoversJ", "lt", U"\u004A\u0301", U"\u006A\u0307\u0301"},
        WalkCase{"CoversIOgonek", "lt", U"\u012E\u0301", U"\u012F\u0307\u0301"},
        WalkCase{"StarterAfterTheMarkHolds", "lt", U"\u0049\u0301\u0041",
                 U"\u0069\u0307\u0301\u0061"}),
    walkCaseName);

INSTANTIATE_TEST_SUITE_P(
    TurkicDots, LowerWalk,
    testing::Values(
        WalkCase{"TurkishIAloneIsDotless", "tr", U"\u0049", U"\u0131"},
        WalkCase{"AzerbaijaniIAloneIsDotless", "az", U"\u0049", U"\u0131"},
        WalkCase{"StarterFollows", "tr", U"\u0049\u0041", U"\u0131\u0061"},
        WalkCase{"DotAfterIIsDeleted", "tr", U"\u0049\u0307", U"\u0069"},
        WalkCase{"AzerbaijaniDotAfterIIsDeleted", "az", U"\u0049\u0307",
                 U"\u0069"},
        WalkCase{"DotAcrossClass220", "tr", U"\u0049\u0323\u0307",
                 U"\u0069\u0323"},
        WalkCase{"MarksUpToEndFailNotBeforeDot", "tr", U"\u0049\u0323",
                 U"\u0069\u0323"},
        WalkCase{"StarterEndsTheScan", "tr", U"\u0049\u0323\u0041",
                 U"\u0131\u0323\u0061"},
        WalkCase{"Class230HidesTheDot", "tr", U"\u0049\u0301\u0307",
                 U"\u0131\u0301\u0307"},
        WalkCase{"StarterBeforeTheDot", "tr", U"\u0041\u0307", U"\u0061\u0307"},
        WalkCase{"DotAtStartOfText", "tr", U"\u0307", U"\u0307"},
        WalkCase{"NoLanguageKeepsTheDot", "", U"\u0049\u0307", U"\u0069\u0307"},
        WalkCase{"CapitalTRKeepsTheDot", "TR", U"\u0049\u0307",
                 U"\u0069\u0307"},
        WalkCase{"RegionKeepsTheDot", "tr-TR", U"\u0049\u0307",
                 U"\u0069\u0307"},
        WalkCase{"RegionSelectsNothing", "tr-TR", U"\u0049", U"\u0069"}),
    walkCaseName);

// A language that equals a whole key applies its rows with no condition.
INSTANTIATE_TEST_SUITE_P(
    WholeKeyLanguage, LowerWalk,
    testing::Values(
        WalkCase{"FinalSigmaLanguageMapsEverySigma", "Final_Sigma",
                 U"\u03A3\u0020\u03A3\u0391\u03A3\u0391",
                 U"\u03C2\u0020\u03C2\u03B1\u03C2\u03B1"},
        WalkCase{"NotBeforeDotLanguageIgnoresTheDot", "tr Not_Before_Dot",
                 U"\u0049\u0307", U"\u0131\u0307"},
        WalkCase{"AfterILanguageDeletesALoneDot", "az After_I", U"\u0307", U""},
        WalkCase{"AfterILanguageDeletesEveryDot", "az After_I",
                 U"\u0061\u0307\u0062\u0307", U"\u0061\u0062"}),
    walkCaseName);

TEST(UpperWalk, LithuanianKeepsTheDotAfterI) {
  EXPECT_EQ(
      elements(zelvo::unicode::toUpperFull(String(U"\u0069\u0307"), "lt")),
      U"\u0049\u0307");
}

TEST(UpperWalk, LithuanianKeepsTheDotAfterJ) {
  EXPECT_EQ(
      elements(zelvo::unicode::toUpperFull(String(U"\u006A\u0307"), "lt")),
      U"\u004A\u0307");
}

TEST(UpperWalk, UnderscoreRegionSelectsNothing) {
  EXPECT_EQ(elements(zelvo::unicode::toUpperFull(String(U"\u0069"), "tr_TR")),
            U"\u0049");
}

TEST(UpperWalk, AfterSoftDottedLanguageDeletesEveryDot) {
  EXPECT_EQ(elements(zelvo::unicode::toUpperFull(
                String(U"\u0069\u0307\u0061\u0307"), "lt After_Soft_Dotted")),
            U"\u0049\u0041");
}

TEST(TitleOfOneCodePoint, AfterSoftDottedLanguageGivesEmptyString) {
  EXPECT_TRUE(
      zelvo::unicode::toTitleFull(0x0307, "lt After_Soft_Dotted").empty());
}

TEST(TitleOfOneCodePoint, FinalSigmaLanguageKeepsCapitalSigma) {
  EXPECT_EQ(elements(zelvo::unicode::toTitleFull(0x03A3, "Final_Sigma")),
            U"\u03A3");
}

// ---------------------------------------------------------------------------
// The tests called one by one, on a text held in a String.

class ContextTest : public testing::Test {
 protected:
  UnicodeTransformationTables& tables = gTransformTables;
  ConditionTable const& lower = gTransformTables.toLowerSpecialConditionMap;
  ConditionTable const& upper = gTransformTables.toUpperSpecialConditionMap;
  String input;
  String result{U'x'};

  void use(std::u32string const& s) { input = String(s); }
  char32_t const* begin() const { return &input[0]; }
  char32_t const* end() const { return &input[0] + input.length(); }
  char32_t const* at(std::size_t i) const { return &input[0] + i; }
};

TEST_F(ContextTest, TrueAppendsTheRowToWhatIsThere) {
  use(U"\u0391\u03A3");
  EXPECT_TRUE(tables.mapFinalSigma(begin(), end(), at(1), lower, result));
  EXPECT_EQ(elements(result), U"x\u03C2");
}

TEST_F(ContextTest, FalseLeavesResultUntouched) {
  use(U"\u03A3");
  EXPECT_FALSE(tables.mapFinalSigma(begin(), end(), at(0), lower, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, EmptyRowReturnsTrueAndAppendsNothing) {
  use(U"\u0049\u0307");
  EXPECT_TRUE(tables.mapAfterI(begin(), at(1), "tr", lower, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, FinalSigmaNeedsARowForTheCodePoint) {
  use(U"\u0391\u03C3");
  EXPECT_FALSE(tables.mapFinalSigma(begin(), end(), at(1), lower, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, FinalSigmaIgnoresTheLanguageButNeedsTheKey) {
  use(U"\u0391\u03A3");
  ConditionTable const none;
  EXPECT_FALSE(tables.mapFinalSigma(begin(), end(), at(1), none, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, FinalSigmaInUpperTableKeepsCapital) {
  use(U"\u0391\u03A3");
  EXPECT_TRUE(tables.mapFinalSigma(begin(), end(), at(1), upper, result));
  EXPECT_EQ(elements(result), U"x\u03A3");
}

TEST_F(ContextTest, AfterSoftDottedNeverAppliesToTheDot) {
  for (std::u32string s : {U"\u0069\u0307", U"\u006A\u0307",
                           U"\u0069\u0323\u0307", U"\u0456\u0307"}) {
    use(s);
    EXPECT_FALSE(tables.mapAfterSoftDotted(begin(), at(s.size() - 1), "lt",
                                           upper, result));
    EXPECT_FALSE(tables.mapAfterSoftDotted(begin(), at(s.size() - 1), "lt",
                                           lower, result));
  }
  EXPECT_EQ(elements(result), U"x");
}

// The scan starts at the code point being mapped, so a table whose row names
// a soft-dotted code point applies it at once, with anything before it.
TEST_F(ContextTest, AfterSoftDottedScanStartsAtCurrent) {
  ConditionTable const table = {{"lt After_Soft_Dotted", {{0x0069, {0x2A}}}}};
  use(U"\u0041\u0069");
  EXPECT_TRUE(tables.mapAfterSoftDotted(begin(), at(1), "lt", table, result));
  EXPECT_EQ(elements(result), U"x*");
}

TEST_F(ContextTest, AfterSoftDottedFailsAtStartOfText) {
  ConditionTable const table = {{"lt After_Soft_Dotted", {{0x0069, {0x2A}}}}};
  use(U"\u0069");
  EXPECT_FALSE(tables.mapAfterSoftDotted(begin(), at(0), "lt", table, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, AfterSoftDottedPassesOverClass220Backward) {
  ConditionTable const table = {{"lt After_Soft_Dotted", {{0x0323, {0x2A}}}}};
  use(U"\u0069\u0323\u0323");
  EXPECT_TRUE(tables.mapAfterSoftDotted(begin(), at(2), "lt", table, result));
  use(U"\u0041\u0323\u0323");
  EXPECT_FALSE(tables.mapAfterSoftDotted(begin(), at(2), "lt", table, result));
  use(U"\u0323\u0323");
  EXPECT_FALSE(tables.mapAfterSoftDotted(begin(), at(1), "lt", table, result));
  EXPECT_EQ(elements(result), U"x*");
}

TEST_F(ContextTest, MoreAboveFailsWithNothingAfter) {
  use(U"\u0049");
  EXPECT_FALSE(tables.mapMoreAbove(end(), at(0), "lt", lower, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, MoreAboveHoldsForExactlyOneMarkAbove) {
  use(U"\u0049\u0323\u0301\u0323");
  EXPECT_TRUE(tables.mapMoreAbove(end(), at(0), "lt", lower, result));
  EXPECT_EQ(elements(result), U"x\u0069\u0307");
}

TEST_F(ContextTest, NotBeforeDotHoldsWithNothingAfter) {
  use(U"\u0049");
  EXPECT_TRUE(tables.mapNotBeforeDot(end(), at(0), "az", lower, result));
  EXPECT_EQ(elements(result), U"x\u0131");
}

TEST_F(ContextTest, NotBeforeDotFailsForAnotherLanguage) {
  use(U"\u0049");
  EXPECT_FALSE(tables.mapNotBeforeDot(end(), at(0), "lt", lower, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, AfterIFindsIAcrossClass220) {
  use(U"\u0049\u0323\u0323\u0307");
  EXPECT_TRUE(tables.mapAfterI(begin(), at(3), "az", lower, result));
  EXPECT_EQ(elements(result), U"x");
  use(U"\u0069\u0323\u0307");
  EXPECT_FALSE(tables.mapAfterI(begin(), at(2), "az", lower, result));
}

TEST_F(ContextTest, AfterIStopsAtClass230) {
  use(U"\u0049\u0301\u0307");
  EXPECT_FALSE(tables.mapAfterI(begin(), at(2), "tr", lower, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, AfterIFailsAtStartOfText) {
  use(U"\u0307");
  EXPECT_FALSE(tables.mapAfterI(begin(), at(0), "tr", lower, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, LanguageRowNeedsNoContext) {
  EXPECT_TRUE(tables.mapLanguage(0x0130, "tr", lower, result));
  EXPECT_EQ(elements(result), U"x\u0069");
}

TEST_F(ContextTest, LanguageIsComparedByteForByte) {
  for (char const* language : {"TR", "tr-TR", "tr_TR", "", "Tr", " tr", "tr "})
    EXPECT_FALSE(tables.mapLanguage(0x0130, language, lower, result))
        << language;
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, LanguageEqualToAWholeKeyAppliesItsRows) {
  EXPECT_TRUE(tables.mapLanguage(0x03A3, "Final_Sigma", lower, result));
  EXPECT_TRUE(tables.mapLanguage(0x0049, "lt More_Above", lower, result));
  EXPECT_EQ(elements(result), U"x\u03C2\u0069\u0307");
}

// With three equal pointers, as toTitleFull passes them, no test that looks
// at a neighbour can hold.
TEST_F(ContextTest, EqualPointersDefeatEveryContext) {
  char32_t const sigma = 0x03A3;
  char32_t const capitalI = 0x0049;
  char32_t const dot = 0x0307;
  EXPECT_FALSE(tables.mapFinalSigma(&sigma, &sigma, &sigma, lower, result));
  EXPECT_FALSE(tables.mapMoreAbove(&capitalI, &capitalI, "lt", lower, result));
  EXPECT_FALSE(
      tables.mapNotBeforeDot(&capitalI, &capitalI, "tr", lower, result));
  EXPECT_FALSE(tables.mapAfterI(&dot, &dot, "tr", lower, result));
  EXPECT_FALSE(tables.mapSpecialCondition(&capitalI, &capitalI, &capitalI, "lt",
                                          lower, result));
  EXPECT_EQ(elements(result), U"x");
}

TEST_F(ContextTest, DispatcherFallsBackToTheLanguageRow) {
  char32_t const dot = 0x0307;
  EXPECT_TRUE(tables.mapSpecialCondition(
      &dot, &dot, &dot, "lt After_Soft_Dotted", upper, result));
  EXPECT_EQ(elements(result), U"x");
  char32_t const capitalI = 0x0130;
  EXPECT_TRUE(tables.mapSpecialCondition(&capitalI, &capitalI, &capitalI, "tr",
                                         lower, result));
  EXPECT_EQ(elements(result), U"x\u0069");
}

// A table made up so that two tests apply at once, each with a value of its
// own: the one asked first wins.
TEST_F(ContextTest, DispatcherAsksTheTestsInTheirOrder) {
  ConditionTable const table = {
      {"Final_Sigma", {{0x03A3, {U'F'}}}},
      {"L", {{0x03A3, {U'G'}}, {0x0307, {U'Z'}}}},
      {"L After_Soft_Dotted", {{0x0069, {U'S'}}}},
      {"L More_Above", {{0x0069, {U'M'}}, {0x0049, {U'M'}}}},
      {"L Not_Before_Dot", {{0x0049, {U'N'}}, {0x0307, {U'N'}}}},
      {"L After_I", {{0x0307, {U'A'}}}},
  };
  auto dispatch = [&](std::u32string const& s, std::size_t i) {
    use(s);
    result = String();
    EXPECT_TRUE(
        tables.mapSpecialCondition(begin(), end(), at(i), "L", table, result));
    return elements(result);
  };
  EXPECT_EQ(dispatch(U"\u0391\u03A3", 1), U"F");
  EXPECT_EQ(dispatch(U"\u03A3", 0), U"G");
  EXPECT_EQ(dispatch(U"\u0041\u0069\u0301", 1), U"S");
  EXPECT_EQ(dispatch(U"\u0049\u0301", 0), U"M");
  EXPECT_EQ(dispatch(U"\u0049\u0301\u0301", 0), U"N");
  EXPECT_EQ(dispatch(U"\u0049\u0307", 1), U"N");
  EXPECT_EQ(dispatch(U"\u0049\u0307\u0307", 1), U"A");
  EXPECT_EQ(dispatch(U"\u0041\u0307\u0307", 1), U"Z");
}

}  // namespace
