// The free functions of the library's character operations: their exact
// signatures, and that each one gives what the method of gTransformTables
// that it fronts gives, leaving its argument alone.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace {

namespace u = zelvo::unicode;
using u::gTransformTables;
using u::String;

template <typename A, typename B>
constexpr bool same = std::is_same<A, B>::value;

// Each overload is named by its exact type; a missing or changed one fails
// to compile.
static_assert(same<decltype(&u::isNFD), bool (*)(String const&)>, "isNFD");
static_assert(same<decltype(&u::isNFC), bool (*)(String const&)>, "isNFC");
static_assert(same<decltype(&u::isNFKD), bool (*)(String const&)>, "isNFKD");
static_assert(same<decltype(&u::isNFKC), bool (*)(String const&)>, "isNFKC");
static_assert(same<decltype(&u::toNFD), String (*)(String const&)>, "toNFD");
static_assert(same<decltype(&u::toNFC), String (*)(String const&)>, "toNFC");
static_assert(same<decltype(&u::toNFKD), String (*)(String const&)>, "toNFKD");
static_assert(same<decltype(&u::toNFKC), String (*)(String const&)>, "toNFKC");

using StringToString = String (*)(String const&);
using StringInPlace = void (*)(String&);
using CharToChar = char32_t (*)(char32_t const&);
using CharInPlace = void (*)(char32_t&);
using FullOfString = String (*)(String const&, std::string const&);
using FullOfChar = String (*)(char32_t, std::string const&);

constexpr StringToString kUpperString = &u::toUpperSimple;
constexpr StringToString kLowerString = &u::toLowerSimple;
constexpr StringInPlace kUpperStringInPlace = &u::toUpperSimpleInPlace;
constexpr StringInPlace kLowerStringInPlace = &u::toLowerSimpleInPlace;
constexpr CharToChar kUpperChar = &u::toUpperSimple;
constexpr CharInPlace kUpperCharInPlace = &u::toUpperSimpleInPlace;
constexpr CharToChar kLowerChar = &u::toLowerSimple;
constexpr CharInPlace kLowerCharInPlace = &u::toLowerSimpleInPlace;
constexpr CharToChar kTitleChar = &u::toTitleSimple;
constexpr CharInPlace kTitleCharInPlace = &u::toTitleSimpleInPlace;
constexpr FullOfString kUpperFull = &u::toUpperFull;
constexpr FullOfChar kUppperFull = &u::toUppperFull;
constexpr FullOfString kLowerFull = &u::toLowerFull;
constexpr FullOfChar kLowerFullOfChar = &u::toLowerFull;
constexpr FullOfChar kTitleFull = &u::toTitleFull;
constexpr CharToChar kFold = &u::simpleCaseFold;
constexpr CharInPlace kFoldInPlace = &u::simpleCaseFoldInPlace;
static_assert(same<decltype(&u::isAssigned), bool (*)(char32_t)>, "");

// The language of a full mapping may be left out; it is then "".
static_assert(same<decltype(u::toUpperFull(String())), String>, "");
static_assert(same<decltype(u::toUppperFull(U'a')), String>, "");
static_assert(same<decltype(u::toLowerFull(String())), String>, "");
static_assert(same<decltype(u::toLowerFull(U'a')), String>, "");
static_assert(same<decltype(u::toTitleFull(U'a')), String>, "");

std::u32string text(const String& s) {
  return std::u32string(s.begin(), s.end());
}

// A little of everything: ASCII, Latin with and without marks, Greek with
// final sigma, Turkish and Lithuanian dots, Hangul, a ligature, and values
// that are not code points.
const std::vector<String> kSamples = {
    String(),
    String{0x0041},
    String{0x0061, 0x0301, 0x0042, 0x00DF},
    String{0x0041, 0x030A, 0x0323, 0x212B},
    String{0x03A3, 0x0391, 0x03A3, 0x0020, 0x03C3},
    String{0x0049, 0x0307, 0x0069, 0x0130, 0x0131},
    String{0x004A, 0x0301, 0x00CC, 0x012E, 0x0300},
    String{0xAC00, 0x1100, 0x1161, 0x11A8, 0xD7A3},
    String{0xFB03, 0x1E9B, 0x0323, 0x1F88, 0x01C5},
    String{0xD800, 0x110000, 0xFFFFFFFF, 0x0378},
};
const std::vector<std::string> kLanguages = {"", "tr", "az", "lt", "en", "TR"};

std::vector<char32_t> sampleCodePoints() {
  std::vector<char32_t> result;
  for (const String& s : kSamples) {
    result.insert(result.end(), s.begin(), s.end());
  }
  return result;
}

TEST(UnicodeOperationsTest, NormalFormsGiveWhatTheTableSetGives) {
  for (const String& s : kSamples) {
    const String before = s;
    EXPECT_EQ(text(u::toNFD(s)), text(gTransformTables.toNFD(s)));
    EXPECT_EQ(text(u::toNFC(s)), text(gTransformTables.toNFC(s)));
    EXPECT_EQ(text(u::toNFKD(s)), text(gTransformTables.toNFKD(s)));
    EXPECT_EQ(text(u::toNFKC(s)), text(gTransformTables.toNFKC(s)));
    EXPECT_EQ(text(s), text(before));
  }
}

TEST(UnicodeOperationsTest, QuickChecksGiveWhatTheTableSetGives) {
  for (const String& s : kSamples) {
    EXPECT_EQ(u::isNFD(s), gTransformTables.isNFD(s));
    EXPECT_EQ(u::isNFC(s), gTransformTables.isNFC(s));
    EXPECT_EQ(u::isNFKD(s), gTransformTables.isNFKD(s));
    EXPECT_EQ(u::isNFKC(s), gTransformTables.isNFKC(s));
  }
}

TEST(UnicodeOperationsTest, SimpleMappingOfAStringMapsEachElement) {
  for (const String& s : kSamples) {
    std::u32string upper, lower;
    for (char32_t c : s) {
      char32_t up = c, low = c;
      gTransformTables.toUpper(up);
      gTransformTables.toLower(low);
      upper.push_back(up);
      lower.push_back(low);
    }
    const String before = s;
    EXPECT_EQ(text(kUpperString(s)), upper);
    EXPECT_EQ(text(kLowerString(s)), lower);
    EXPECT_EQ(text(s), text(before));
    String inPlace = s;
    kUpperStringInPlace(inPlace);
    EXPECT_EQ(text(inPlace), upper);
    inPlace = s;
    kLowerStringInPlace(inPlace);
    EXPECT_EQ(text(inPlace), lower);
  }
}

TEST(UnicodeOperationsTest, SimpleMappingOfACodePointIsTheMethod) {
  for (char32_t c : sampleCodePoints()) {
    char32_t up = c, low = c, title = c, fold = c;
    gTransformTables.toUpper(up);
    gTransformTables.toLower(low);
    gTransformTables.toTitle(title);
    gTransformTables.simpleCaseFold(fold);
    EXPECT_EQ(kUpperChar(c), up);
    EXPECT_EQ(kLowerChar(c), low);
    EXPECT_EQ(kTitleChar(c), title);
    EXPECT_EQ(kFold(c), fold);
    char32_t inPlace = c;
    kUpperCharInPlace(inPlace);
    EXPECT_EQ(inPlace, up);
    inPlace = c;
    kLowerCharInPlace(inPlace);
    EXPECT_EQ(inPlace, low);
    inPlace = c;
    kTitleCharInPlace(inPlace);
    EXPECT_EQ(inPlace, title);
    inPlace = c;
    kFoldInPlace(inPlace);
    EXPECT_EQ(inPlace, fold);
  }
}

TEST(UnicodeOperationsTest, FullMappingOfAStringIsTheMethod) {
  for (const String& s : kSamples) {
    for (const std::string& language : kLanguages) {
      EXPECT_EQ(text(kUpperFull(s, language)),
                text(gTransformTables.toUpperFull(s, language)));
      EXPECT_EQ(text(kLowerFull(s, language)),
                text(gTransformTables.toLowerFull(s, language)));
    }
    EXPECT_EQ(text(u::toUpperFull(s)), text(kUpperFull(s, "")));
    EXPECT_EQ(text(u::toLowerFull(s)), text(kLowerFull(s, "")));
  }
}

// toUppperFull(c, language) is toUpperFull(String(1, c), language), for every
// code point, in every language that selects rows and in one that does not.
TEST(UnicodeOperationsTest, UppperFullOfACodePointIsUpperFullOfItsString) {
  for (const std::string language : {"", "tr", "lt"}) {
    size_t differences = 0;
    for (char32_t c = 0; c <= 0x110000; ++c) {
      if (text(kUppperFull(c, language)) !=
          text(kUpperFull(String(1, c), language))) {
        if (++differences <= 10) {
          ADD_FAILURE() << "U+" << std::hex << static_cast<unsigned>(c)
                        << " in \"" << language << "\"";
        }
      }
    }
    EXPECT_EQ(differences, 0u) << language;
  }
  EXPECT_EQ(text(u::toUppperFull(0x00DF)), U"SS");
}

TEST(UnicodeOperationsTest, LowerFullOfACodePointIsLowerFullOfItsString) {
  for (char32_t c : sampleCodePoints()) {
    for (const std::string& language : kLanguages) {
      EXPECT_EQ(text(kLowerFullOfChar(c, language)),
                text(kLowerFull(String(1, c), language)));
    }
  }
}

TEST(UnicodeOperationsTest, TitleFullOfACodePointIsTheMethod) {
  for (char32_t c : sampleCodePoints()) {
    for (const std::string& language : kLanguages) {
      EXPECT_EQ(text(kTitleFull(c, language)),
                text(gTransformTables.toTitleFull(c, language)));
    }
  }
}

}  // namespace
