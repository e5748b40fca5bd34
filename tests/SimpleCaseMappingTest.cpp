// Simple case mapping: the members toUpper, toLower and toTitle, and the free
// functions that front them for a code point and for a String.
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

char32_t memberUpper(char32_t c) {
  gTransformTables.toUpper(c);
  return c;
}
char32_t memberLower(char32_t c) {
  gTransformTables.toLower(c);
  return c;
}
char32_t memberTitle(char32_t c) {
  gTransformTables.toTitle(c);
  return c;
}

// ---------------------------------------------------------------------------
// The interface.

static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::toUpper),
                 void (UnicodeTransformationTables::*)(char32_t&)>::value,
    "toUpper maps a code point in place");
static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::toLower),
                 void (UnicodeTransformationTables::*)(char32_t&)>::value,
    "toLower maps a code point in place");
static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::toTitle),
                 void (UnicodeTransformationTables::*)(char32_t&)>::value,
    "toTitle maps a code point in place");
static_assert(std::is_same<decltype(zelvo::unicode::toUpperSimple(
                               std::declval<char32_t const&>())),
                           char32_t>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toLowerSimple(
                               std::declval<char32_t const&>())),
                           char32_t>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toTitleSimple(
                               std::declval<char32_t const&>())),
                           char32_t>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toUpperSimple(
                               std::declval<String const&>())),
                           String>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toLowerSimple(
                               std::declval<String const&>())),
                           String>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toUpperSimpleInPlace(
                               std::declval<String&>())),
                           void>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toLowerSimpleInPlace(
                               std::declval<String&>())),
                           void>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toUpperSimpleInPlace(
                               std::declval<char32_t&>())),
                           void>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toLowerSimpleInPlace(
                               std::declval<char32_t&>())),
                           void>::value,
              "");
static_assert(std::is_same<decltype(zelvo::unicode::toTitleSimpleInPlace(
                               std::declval<char32_t&>())),
                           void>::value,
              "");

template <typename T, typename = void>
struct TitleSimpleTakes : std::false_type {};
template <typename T>
struct TitleSimpleTakes<
    T, std::void_t<decltype(zelvo::unicode::toTitleSimple(std::declval<T>()))>>
    : std::true_type {};
static_assert(TitleSimpleTakes<char32_t>::value, "");
static_assert(!TitleSimpleTakes<String const&>::value,
              "no simple title case for a String");

template <typename T, typename = void>
struct TitleSimpleInPlaceTakes : std::false_type {};
template <typename T>
struct TitleSimpleInPlaceTakes<
    T, std::void_t<decltype(zelvo::unicode::toTitleSimpleInPlace(
           std::declval<T>()))>> : std::true_type {};
static_assert(TitleSimpleInPlaceTakes<char32_t&>::value, "");
static_assert(!TitleSimpleInPlaceTakes<String&>::value,
              "no simple title case in place for a String");

// ---------------------------------------------------------------------------
// Edge cases.

TEST(SimpleCaseMapping, EmptyStringGivesEmptyString) {
  EXPECT_TRUE(zelvo::unicode::toUpperSimple(String()).empty());
  EXPECT_TRUE(zelvo::unicode::toLowerSimple(String()).empty());
}

TEST(SimpleCaseMapping, InPlaceOnEmptyStringDoesNothing) {
  String s;
  zelvo::unicode::toUpperSimpleInPlace(s);
  EXPECT_TRUE(s.empty());
  zelvo::unicode::toLowerSimpleInPlace(s);
  EXPECT_TRUE(s.empty());
}

TEST(SimpleCaseMapping, SharpSStaysUnderAllThree) {
  EXPECT_EQ(zelvo::unicode::toUpperSimple(char32_t{0x00DF}), 0x00DFu);
  EXPECT_EQ(zelvo::unicode::toLowerSimple(char32_t{0x00DF}), 0x00DFu);
  EXPECT_EQ(zelvo::unicode::toTitleSimple(char32_t{0x00DF}), 0x00DFu);
}

TEST(SimpleCaseMapping, LengthOfAStringNeverChanges) {
  String const s(U"stra\u00DFe \uFB03 \u0149");
  EXPECT_EQ(elements(zelvo::unicode::toUpperSimple(s)),
            U"STRA\u00DFE \uFB03 \u0149");
  EXPECT_EQ(zelvo::unicode::toLowerSimple(s).length(), s.length());
}

TEST(SimpleCaseMapping, DotlessIUppersToI) {
  EXPECT_EQ(memberUpper(0x0131), 0x0049u);
}

TEST(SimpleCaseMapping, MicroSignUppersToCapitalMu) {
  EXPECT_EQ(memberUpper(0x00B5), 0x039Cu);
}

TEST(SimpleCaseMapping, CapitalIWithDotLowersToPlainI) {
  EXPECT_EQ(memberLower(0x0130), 0x0069u);
}

TEST(SimpleCaseMapping, CapitalIWithDotUppersToItself) {
  EXPECT_EQ(memberUpper(0x0130), 0x0130u);
}

TEST(SimpleCaseMapping, CapitalSharpSLowersButSharpSDoesNotUpper) {
  EXPECT_EQ(memberLower(0x1E9E), 0x00DFu);
  EXPECT_EQ(memberUpper(0x00DF), 0x00DFu);
}

TEST(SimpleCaseMapping, DzWithCaronSmall) {
  EXPECT_EQ(memberUpper(0x01C6), 0x01C4u);
  EXPECT_EQ(memberTitle(0x01C6), 0x01C5u);
}

TEST(SimpleCaseMapping, DzWithCaronTitlecase) {
  EXPECT_EQ(memberTitle(0x01C5), 0x01C5u);
  EXPECT_EQ(memberUpper(0x01C5), 0x01C4u);
  EXPECT_EQ(memberLower(0x01C5), 0x01C6u);
}

TEST(SimpleCaseMapping, TitleRowsToThemselvesActAsMissingRows) {
  for (char32_t c : {0x01C5u, 0x01C8u, 0x01CBu, 0x01F2u}) {
    ASSERT_EQ(gTransformTables.toTitleMap.count(c), 1u);
    EXPECT_EQ(memberTitle(c), c);
  }
}

TEST(SimpleCaseMapping, SigmaLowersToMediumSigmaEvenAtWordEnd) {
  EXPECT_EQ(memberLower(0x03A3), 0x03C3u);
  EXPECT_EQ(elements(zelvo::unicode::toLowerSimple(String(U"\u0391\u03A3 "))),
            U"\u03B1\u03C3 ");
}

TEST(SimpleCaseMapping, FinalSigmaUppersToSigma) {
  EXPECT_EQ(memberUpper(0x03C2), 0x03A3u);
}

TEST(SimpleCaseMapping, CapitalIKnowsNoLanguage) {
  EXPECT_EQ(memberLower(0x0049), 0x0069u);
  EXPECT_EQ(zelvo::unicode::toLowerSimple(char32_t{0x0049}), 0x0069u);
}

TEST(SimpleCaseMapping, SurrogateAndValueAboveRangeComeBackUnchanged) {
  for (char32_t c : {0xD800u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(memberUpper(c), c);
    EXPECT_EQ(memberLower(c), c);
    EXPECT_EQ(memberTitle(c), c);
  }
}

TEST(SimpleCaseMapping, StringKeepsBadValuesInPlace) {
  std::u32string const held = {0x0061, 0xD800, 0x0042, 0x110000};
  EXPECT_EQ(elements(zelvo::unicode::toUpperSimple(String(held))),
            (std::u32string{0x0041, 0xD800, 0x0042, 0x110000}));
  EXPECT_EQ(elements(zelvo::unicode::toLowerSimple(String(held))),
            (std::u32string{0x0061, 0xD800, 0x0062, 0x110000}));
}

TEST(SimpleCaseMapping, ReturningFormsLeaveTheArgumentAlone) {
  String const s(U"Abc\u03A3");
  (void)zelvo::unicode::toUpperSimple(s);
  (void)zelvo::unicode::toLowerSimple(s);
  EXPECT_EQ(elements(s), U"Abc\u03A3");
  char32_t const c = 0x0061;
  EXPECT_EQ(zelvo::unicode::toUpperSimple(c), 0x0041u);
  EXPECT_EQ(c, 0x0061u);
}

TEST(SimpleCaseMapping, InPlaceFormsChangeEveryElement) {
  String s(U"Abc\u03A3\u0431");
  zelvo::unicode::toUpperSimpleInPlace(s);
  EXPECT_EQ(elements(s), U"ABC\u03A3\u0411");
  zelvo::unicode::toLowerSimpleInPlace(s);
  EXPECT_EQ(elements(s), U"abc\u03C3\u0431");
}

TEST(SimpleCaseMapping, InPlaceFormsOfACodePoint) {
  char32_t c = 0x01C6;
  zelvo::unicode::toUpperSimpleInPlace(c);
  EXPECT_EQ(c, 0x01C4u);
  zelvo::unicode::toLowerSimpleInPlace(c);
  EXPECT_EQ(c, 0x01C6u);
  zelvo::unicode::toTitleSimpleInPlace(c);
  EXPECT_EQ(c, 0x01C5u);
}

TEST(SimpleCaseMapping, FreeTitleOfACodePoint) {
  EXPECT_EQ(zelvo::unicode::toTitleSimple(char32_t{0x01C4}), 0x01C5u);
  EXPECT_EQ(zelvo::unicode::toTitleSimple(char32_t{0x0061}), 0x0041u);
}

TEST(SimpleCaseMapping, ReadingNeverAddsAKey) {
  std::size_t const upperRows = gTransformTables.toUpperMap.size();
  std::size_t const lowerRows = gTransformTables.toLowerMap.size();
  std::size_t const titleRows = gTransformTables.toTitleMap.size();
  for (char32_t c : {0x0378u, 0x4E00u, 0xD800u, 0x110000u}) {
    memberUpper(c);
    memberLower(c);
    memberTitle(c);
  }
  EXPECT_EQ(gTransformTables.toUpperMap.size(), upperRows);
  EXPECT_EQ(gTransformTables.toLowerMap.size(), lowerRows);
  EXPECT_EQ(gTransformTables.toTitleMap.size(), titleRows);
}

}  // namespace
