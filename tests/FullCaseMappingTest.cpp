// Full case mapping: the walk over a String, the order in which the tables
// are asked, the one-code-point members and the free functions.
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

std::u32string elements(String const& s) {
  return std::u32string(s.begin(), s.end());
}

std::u32string lower(std::u32string const& s, std::string const& language) {
  return elements(zelvo::unicode::toLowerFull(String(s), language));
}

std::u32string upper(std::u32string const& s, std::string const& language) {
  return elements(zelvo::unicode::toUpperFull(String(s), language));
}

std::u32string title(char32_t c, std::string const& language) {
  return elements(zelvo::unicode::toTitleFull(c, language));
}

// ---------------------------------------------------------------------------
// The interface.

static_assert(std::is_same<decltype(zelvo::unicode::toUpperFull(
                               std::declval<String const&>(),
                               std::declval<std::string const&>())),
                           String>::value,
              "toUpperFull of a String returns a String");
static_assert(std::is_same<decltype(zelvo::unicode::toLowerFull(
                               std::declval<String const&>(),
                               std::declval<std::string const&>())),
                           String>::value,
              "toLowerFull of a String returns a String");
static_assert(
    std::is_same<decltype(static_cast<String (*)(char32_t, std::string const&)>(
                     &zelvo::unicode::toUppperFull)),
                 String (*)(char32_t, std::string const&)>::value,
    "toUppperFull, with three p, takes one code point");
static_assert(
    std::is_same<decltype(static_cast<String (*)(char32_t, std::string const&)>(
                     &zelvo::unicode::toLowerFull)),
                 String (*)(char32_t, std::string const&)>::value,
    "toLowerFull has a form for one code point");
static_assert(
    std::is_same<decltype(static_cast<String (*)(char32_t, std::string const&)>(
                     &zelvo::unicode::toTitleFull)),
                 String (*)(char32_t, std::string const&)>::value,
    "toTitleFull takes one code point");
static_assert(
    std::is_same<
        decltype(static_cast<
                 String (UnicodeTransformationTables::*)(char32_t const&)>(
            &UnicodeTransformationTables::toUpperFull)),
        String (UnicodeTransformationTables::*)(char32_t const&)>::value,
    "the member toUpperFull of one code point takes no language");
static_assert(std::is_same<decltype(&UnicodeTransformationTables::toTitleFull),
                           String (UnicodeTransformationTables::*)(
                               char32_t const&, std::string const&)>::value,
              "the member toTitleFull takes a code point and a language");

template <typename T, typename = void>
struct FreeUpperFullTakes : std::false_type {};
template <typename T>
struct FreeUpperFullTakes<T, std::void_t<decltype(zelvo::unicode::toUpperFull(
                                 std::declval<T>(), std::string()))>>
    : std::true_type {};
static_assert(FreeUpperFullTakes<String>::value, "");
static_assert(
    !FreeUpperFullTakes<char32_t>::value,
    "no free toUpperFull takes a code point: that one is toUppperFull");

template <typename T, typename = void>
struct FreeTitleFullTakes : std::false_type {};
template <typename T>
struct FreeTitleFullTakes<T, std::void_t<decltype(zelvo::unicode::toTitleFull(
                                 std::declval<T>(), std::string()))>>
    : std::true_type {};
static_assert(FreeTitleFullTakes<char32_t>::value, "");
static_assert(!FreeTitleFullTakes<String>::value,
              "there is no title case for a String");

// ---------------------------------------------------------------------------
// Edge cases, with no language unless one is named.

TEST(FullCaseMapping, EmptyStringMapsToEmpty) {
  EXPECT_TRUE(zelvo::unicode::toUpperFull(String(), "").empty());
  EXPECT_TRUE(zelvo::unicode::toLowerFull(String(), "").empty());
  EXPECT_TRUE(zelvo::unicode::toLowerFull(String(), "tr").empty());
}

TEST(FullCaseMapping, SharpSUppersToTwoLetters) {
  EXPECT_EQ(upper(U"\u00DF", ""), U"\u0053\u0053");
}

TEST(FullCaseMapping, LigatureUppersToThreeLetters) {
  EXPECT_EQ(upper(U"\uFB03", ""), U"\u0046\u0046\u0049");
}

TEST(FullCaseMapping, NApostropheUppersToTwoCodePoints) {
  EXPECT_EQ(upper(U"\u0149", ""), U"\u02BC\u004E");
}

TEST(FullCaseMapping, CapitalIWithDotLowersToIAndDot) {
  EXPECT_EQ(lower(U"\u0130", ""), U"\u0069\u0307");
}

TEST(FullCaseMapping, TurkishCapitalIWithDotLowersToI) {
  EXPECT_EQ(lower(U"\u0130", "tr"), U"\u0069");
}

TEST(FullCaseMapping, TurkishCapitalILowersToDotless) {
  EXPECT_EQ(lower(U"\u0049", "tr"), U"\u0131");
}

TEST(FullCaseMapping, TurkishIAndDotLowerToI) {
  EXPECT_EQ(lower(U"\u0049\u0307", "tr"), U"\u0069");
}

// The code point before the dot, in the input, is U+0130 and not U+0049.
TEST(FullCaseMapping, ContextIsTheInputNotTheMappedText) {
  EXPECT_EQ(lower(U"\u0130\u0307", "tr"), U"\u0069\u0307");
}

TEST(FullCaseMapping, TurkishIUppersToCapitalWithDot) {
  EXPECT_EQ(upper(U"\u0069", "tr"), U"\u0130");
}

TEST(FullCaseMapping, TurkishDotlessIUppersThroughTheSimpleTable) {
  EXPECT_EQ(upper(U"\u0131", "tr"), U"\u0049");
}

TEST(FullCaseMapping, LithuanianIGraveLowersToThreeCodePoints) {
  EXPECT_EQ(lower(U"\u00CC", "lt"), U"\u0069\u0307\u0300");
}

TEST(FullCaseMapping, TitleOfSharpS) {
  EXPECT_EQ(title(0x00DF, ""), U"\u0053\u0073");
}

TEST(FullCaseMapping, TitleOfLigatureFF) {
  EXPECT_EQ(title(0xFB00, ""), U"\u0046\u0066");
}

TEST(FullCaseMapping, TitleOfDzWithCaronIsTheTitlecaseLetter) {
  EXPECT_EQ(title(0x01C6, ""), U"\u01C5");
}

TEST(FullCaseMapping, TitleOfSigmaStaysSigma) {
  EXPECT_EQ(title(0x03A3, ""), U"\u03A3");
}

TEST(FullCaseMapping, TurkishTitleOfIHasTheDot) {
  EXPECT_EQ(title(0x0069, "tr"), U"\u0130");
}

TEST(FullCaseMapping, TurkishTitleOfDotSeesNoLeftNeighbour) {
  EXPECT_EQ(title(0x0307, "tr"), U"\u0307");
}

TEST(FullCaseMapping, TitleUsesTheTitleTablesNotTheUpperOnes) {
  EXPECT_EQ(title(0x01C4, ""), U"\u01C5");
  EXPECT_EQ(title(0x1F80, ""), U"\u1F88");
  EXPECT_EQ(upper(U"\u1F80", ""), U"\u1F08\u0399");
}

TEST(FullCaseMapping, ThreePUpperOfSharpS) {
  EXPECT_EQ(elements(zelvo::unicode::toUppperFull(0x00DF, "")),
            U"\u0053\u0053");
}

TEST(FullCaseMapping, MemberOfOneCodePointTakesNoLanguage) {
  EXPECT_EQ(elements(gTransformTables.toLowerFull(char32_t{0x0049})),
            U"\u0069");
  EXPECT_EQ(elements(gTransformTables.toUpperFull(char32_t{0x0069})),
            U"\u0049");
}

TEST(FullCaseMapping, MemberOfOneCodePointUsesTheUnconditionalRows) {
  EXPECT_EQ(elements(gTransformTables.toUpperFull(char32_t{0x00DF})),
            U"\u0053\u0053");
  EXPECT_EQ(elements(gTransformTables.toLowerFull(char32_t{0x0130})),
            U"\u0069\u0307");
  EXPECT_EQ(elements(gTransformTables.toLowerFull(char32_t{0x03A3})),
            U"\u03C3");
}

// An identity row of an unconditional table ends the search: the simple
// mapping is never asked.
TEST(FullCaseMapping, IdentityRowWinsOverTheSimpleTable) {
  EXPECT_EQ(elements(gTransformTables.toUpperFull(char32_t{0x0130})),
            U"\u0130");
  EXPECT_EQ(elements(gTransformTables.toLowerFull(char32_t{0x00DF})),
            U"\u00DF");
  EXPECT_EQ(title(0x1F88, ""), U"\u1F88");
}

// The single-code-point form of the free functions is the walk over a
// String of one element, so that a following code point is known absent.
TEST(FullCaseMapping, ThreePUpperEqualsWalkOverOneElement) {
  for (char32_t c : {0x0069u, 0x0130u, 0x00DFu, 0x03A3u, 0x0307u, 0x0041u,
                     0xD800u, 0x110000u}) {
    for (char const* language : {"", "tr", "lt", "az", "lt After_Soft_Dotted"})
      EXPECT_EQ(elements(zelvo::unicode::toUppperFull(c, language)),
                upper(std::u32string(1, c), language))
          << std::hex << c << " " << language;
  }
}

TEST(FullCaseMapping, LowerOfOneCodePointSeesNothingAfterIt) {
  EXPECT_EQ(elements(zelvo::unicode::toLowerFull(char32_t{0x0049}, "tr")),
            U"\u0131");
  EXPECT_EQ(elements(zelvo::unicode::toLowerFull(char32_t{0x0049}, "")),
            U"\u0069");
}

TEST(FullCaseMapping, TitleSeesNoNeighbourButOneCodePointWalkDoes) {
  // The walk over one element knows that nothing follows U+0049 and so
  // finds Not_Before_Dot; the title form passes three equal pointers.
  EXPECT_EQ(title(0x0049, "tr"), U"\u0049");
  EXPECT_EQ(elements(zelvo::unicode::toLowerFull(char32_t{0x0049}, "tr")),
            U"\u0131");
}

TEST(FullCaseMapping, BadValuesPassThroughUnchanged) {
  std::u32string const bad = {0xD800, 0x0061, 0xDFFF, 0x110000, 0xFFFFFFFF};
  EXPECT_EQ(lower(bad, ""), bad);
  EXPECT_EQ(upper(bad, ""),
            (std::u32string{0xD800, 0x0041, 0xDFFF, 0x110000, 0xFFFFFFFF}));
  EXPECT_EQ(title(0xD800, ""), std::u32string(1, 0xD800));
  EXPECT_EQ(title(0xFFFFFFFF, "tr"), std::u32string(1, 0xFFFFFFFF));
}

TEST(FullCaseMapping, UnknownCodePointIsCopied) {
  EXPECT_EQ(lower(U"\u0378\u4E00\U000E0001", ""), U"\u0378\u4E00\U000E0001");
  EXPECT_EQ(upper(U"\u0378\u4E00\U000E0001", "xx"), U"\u0378\u4E00\U000E0001");
}

TEST(FullCaseMapping, ResultMayBeLongerOrShorterThanInput) {
  EXPECT_EQ(upper(U"stra\u00DFe", ""), U"STRASSE");
  EXPECT_EQ(lower(U"I\u0307stanbul", "tr"), U"istanbul");
}

TEST(FullCaseMapping, ZeroCodePointIsKept) {
  std::u32string const withZero = {0x0041, 0x0000, 0x00DF, 0x0000};
  EXPECT_EQ(lower(withZero, ""), (std::u32string{0x0061, 0x0000, 0x00DF, 0}));
  EXPECT_EQ(upper(withZero, ""),
            (std::u32string{0x0041, 0x0000, 0x0053, 0x0053, 0x0000}));
}

// A long text, with expansions and U+0000 at every distance from one
// another, is the code points' own mappings one after the other.
TEST(FullCaseMapping, LongTextIsTheConcatenationOfItsCodePoints) {
  std::u32string const alphabet = {0x0061, 0x0042, 0x0000,  0x00DF,
                                   0xFB03, 0x0416, 0x10400, 0x4E00,
                                   0x0149, 0x1F80, 0x0130};
  std::u32string text;
  for (std::size_t i = 0; i < 3000; ++i)
    text.push_back(alphabet[(i * i + i / 7) % alphabet.size()]);
  std::u32string wantUpper, wantLower;
  for (char32_t c : text) {
    wantUpper += elements(gTransformTables.toUpperFull(c));
    wantLower += elements(gTransformTables.toLowerFull(c));
  }
  EXPECT_TRUE(upper(text, "") == wantUpper);
  EXPECT_TRUE(lower(text, "") == wantLower);
}

TEST(FullCaseMapping, InputIsLeftAlone) {
  String const input(U"\u0049\u0307\u00DF");
  String const copy = input;
  (void)zelvo::unicode::toLowerFull(input, "tr");
  (void)zelvo::unicode::toUpperFull(input, "tr");
  EXPECT_EQ(elements(input), elements(copy));
}

TEST(FullCaseMapping, UpperAndLowerOfPlainText) {
  EXPECT_EQ(upper(U"Hello, \u043C\u0438\u0440 \u03B1\u03B2!", ""),
            U"HELLO, \u041C\u0418\u0420 \u0391\u0392!");
  EXPECT_EQ(lower(U"Hello, \u041C\u0418\u0420 \u0391\u0392\u03A3!", ""),
            U"hello, \u043C\u0438\u0440 \u03B1\u03B2\u03C2!");
}

}  // namespace
