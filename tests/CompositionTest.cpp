// Tests of toNFC, toNFKC, composeHelper and the map of primary composites:
// pairs, the blocking rule, consumed slots and Hangul by arithmetic.
#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <type_traits>

#include "NormalizationTestSupport.h"
#include "transform/UnicodeOperations.h"

namespace {

using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;
using zelvo::unicode::toNFC;
using zelvo::unicode::toNFKC;
using zelvo::unicode::UnicodeTransformationTables;

static_assert(std::is_same<decltype(toNFC(String())), String>::value,
              "toNFC returns a new String");
static_assert(std::is_same<decltype(toNFKC(String())), String>::value,
              "toNFKC returns a new String");
static_assert(
    std::is_same<decltype(&UnicodeTransformationTables::composeHelper),
                 String (UnicodeTransformationTables::*)(String&)>::value,
    "composeHelper works on the caller's string and returns the result");
static_assert(std::is_same<decltype(gTransformTables.compositionMap),
                           std::map<String, char32_t>>::value,
              "compositionMap is keyed by two-element Strings");

constexpr char32_t kMarker = 0xFFFFFFFF;

TEST(CompositionTest, DeletedMarkerIsAllBitsSet) {
  EXPECT_EQ(gTransformTables.deletedMarker, kMarker);
}

TEST(CompositionTest, EmptyStringGivesEmptyString) {
  EXPECT_EQ(toNFC(String()), String());
  EXPECT_EQ(toNFKC(String()), String());
}

TEST(CompositionTest, ArgumentIsLeftAlone) {
  const String s{0x0061, 0x0301, 0x1100, 0x1161, 0x00C5};
  const String copy = s;
  toNFC(s);
  toNFKC(s);
  EXPECT_EQ(s, copy);
}

TEST(CompositionTest, SingletonGivesItsOneElementDecomposition) {
  EXPECT_EQ(toNFC({0x2126}), (String{0x03A9}));
  EXPECT_EQ(toNFKC({0x2126}), (String{0x03A9}));
}

TEST(CompositionTest, StringOfOneElementIsReturnedAsItIs) {
  EXPECT_EQ(toNFC({0x0041}), (String{0x0041}));
  EXPECT_EQ(toNFC({0x0301}), (String{0x0301}));
  EXPECT_EQ(toNFC({0x00E9}), (String{0x00E9}));
}

TEST(CompositionTest, DecompositionThatBeginsWithANonStarterStaysDecomposed) {
  EXPECT_EQ(toNFC({0x0344}), (String{0x0308, 0x0301}));
  EXPECT_EQ(toNFKC({0x0344}), (String{0x0308, 0x0301}));
}

TEST(CompositionTest, BaseAndMarkCompose) {
  EXPECT_EQ(toNFC({0x0061, 0x0301}), (String{0x00E1}));
  EXPECT_EQ(toNFKC({0x0061, 0x0301}), (String{0x00E1}));
}

TEST(CompositionTest, SingletonDecomposesAndComposesAgain) {
  EXPECT_EQ(toNFC({0x212B}), (String{0x00C5}));
}

TEST(CompositionTest, FirstMarkThatComposesIsTakenInCanonicalOrder) {
  EXPECT_EQ(toNFC({0x0061, 0x0323, 0x0307}), (String{0x1EA1, 0x0307}));
  EXPECT_EQ(toNFC({0x0061, 0x0307, 0x0323}), (String{0x1EA1, 0x0307}));
}

TEST(CompositionTest, CompositionBuildsOnAnEarlierComposite) {
  // U+01D5 maps to U+00DC U+0304, and U+00DC to U+0055 U+0308.
  EXPECT_EQ(toNFC({0x0055, 0x0308, 0x0304}), (String{0x01D5}));
}

TEST(CompositionTest, MarksWithoutAStarterInFrontStayAsTheyAre) {
  EXPECT_EQ(toNFC({0x0301, 0x0301}), (String{0x0301, 0x0301}));
  EXPECT_EQ(toNFC({0x0301, 0x0061}), (String{0x0301, 0x0061}));
}

TEST(CompositionTest, MarkOfEqualClassBlocks) {
  // U+0331 and U+0323 both have class 220; e does not compose with U+0331.
  EXPECT_EQ(toNFC({0x0065, 0x0331, 0x0323}), (String{0x0065, 0x0331, 0x0323}));
}

TEST(CompositionTest, MarkOfLowerClassDoesNotBlock) {
  EXPECT_EQ(toNFC({0x0065, 0x0331, 0x0301}), (String{0x00E9, 0x0331}));
}

TEST(CompositionTest, BlockingComparesWeightsAsSignedIntegers) {
  // With a negative weight for U+0331 in a copy of the tables, the mark in
  // between weighs less than U+0323 and no longer blocks it.
  UnicodeTransformationTables tables = gTransformTables;
  tables.weightMap[0x0331] = -1;
  String working{0x0065, 0x0331, 0x0323};
  EXPECT_EQ(tables.composeHelper(working), (String{0x1EB9, 0x0331}));
}

TEST(CompositionTest, MarkBlocksAStarter) {
  EXPECT_EQ(toNFC({0x0B47, 0x0301, 0x0B3E}), (String{0x0B47, 0x0301, 0x0B3E}));
}

TEST(CompositionTest, AdjacentStartersCompose) {
  EXPECT_EQ(toNFC({0x0B47, 0x0B3E}), (String{0x0B4B}));
}

TEST(CompositionTest, ExcludedCompositeStaysDecomposed) {
  EXPECT_EQ(toNFC({0x0958}), (String{0x0915, 0x093C}));
  EXPECT_EQ(toNFC({0x0915, 0x093C}), (String{0x0915, 0x093C}));
}

TEST(CompositionTest, LeadingConsonantAndVowel) {
  EXPECT_EQ(toNFC({0x1100, 0x1161}), (String{0xAC00}));
  EXPECT_EQ(toNFC({0x1112, 0x1175}), (String{0xD788}));
}

TEST(CompositionTest, LeadingConsonantVowelAndTrailingConsonant) {
  EXPECT_EQ(toNFC({0x1100, 0x1161, 0x11A8}), (String{0xAC01}));
  EXPECT_EQ(toNFC({0x1100, 0x1161, 0x11C2}), (String{0xAC1B}));
}

TEST(CompositionTest, U11A7IsSwallowedAsAnEmptyTrailingPlace) {
  EXPECT_EQ(toNFC({0x1100, 0x1161, 0x11A7}), (String{0xAC00}));
  EXPECT_EQ(toNFC({0xAC00, 0x11A7}), (String{0xAC00}));
  EXPECT_EQ(toNFKC({0x1100, 0x1161, 0x11A7}), (String{0xAC00}));
  EXPECT_EQ(toNFKC({0xAC00, 0x11A7}), (String{0xAC00}));
}

TEST(CompositionTest, U11C3IsNoTrailingConsonant) {
  EXPECT_EQ(toNFC({0x1100, 0x1161, 0x11C3}), (String{0xAC00, 0x11C3}));
}

TEST(CompositionTest, SyllableAndTrailingConsonantComposeThroughDecomposition) {
  EXPECT_EQ(toNFC({0xAC00, 0x11A8}), (String{0xAC01}));
  EXPECT_EQ(toNFKC({0xAC00, 0x11A8}), (String{0xAC01}));
}

TEST(CompositionTest, JamoOutsideTheBoundsDoNotCompose) {
  EXPECT_EQ(toNFC({0x1113, 0x1161}), (String{0x1113, 0x1161}));
  EXPECT_EQ(toNFC({0x1100, 0x1176}), (String{0x1100, 0x1176}));
}

TEST(CompositionTest, VowelNotAdjacentToTheConsonantDoesNotCompose) {
  EXPECT_EQ(toNFC({0x1100, 0x0301, 0x1161}), (String{0x1100, 0x0301, 0x1161}));
}

TEST(CompositionTest, EveryJamoTripleComposesToItsSyllable) {
  // U+11A7 in the trailing place counts as the empty place.
  for (char32_t l = 0; l < 19; ++l)
    for (char32_t v = 0; v < 21; ++v)
      for (char32_t t = 0; t < 28; ++t) {
        const char32_t syllable = 0xAC00 + (l * 21 + v) * 28 + t;
        ASSERT_EQ(toNFC({0x1100 + l, 0x1161 + v, 0x11A7 + t}),
                  (String{syllable}))
            << std::hex << syllable;
        ASSERT_EQ(toNFC({syllable}), (String{syllable}))
            << std::hex << syllable;
      }
}

TEST(CompositionTest, ElementEqualToTheMarkerLooksLikeAConsumedSlot) {
  EXPECT_EQ(toNFC({0x0061, kMarker}), (String{0x0061}));
  EXPECT_EQ(toNFC({kMarker, 0x0301}), (String{0x0301}));
  EXPECT_EQ(toNFKC({0x0061, kMarker}), (String{0x0061}));
}

TEST(CompositionTest, MarkerValuesAnywhereInTheStringAreDropped) {
  // The marker between U+0061 and U+0301 reads as a consumed slot, so it
  // does not block the mark either.
  EXPECT_EQ(toNFC({kMarker, 0x0061, kMarker, 0x0301, kMarker}),
            (String{0x00E1}));
  EXPECT_EQ(toNFC({kMarker, kMarker}), String());
  EXPECT_EQ(toNFKC({0x1100, kMarker, 0x1161}), (String{0x1100, 0x1161}));
}

TEST(CompositionTest, MarkerAloneStays) {
  EXPECT_EQ(toNFC({kMarker}), (String{kMarker}));
  EXPECT_EQ(toNFKC({kMarker}), (String{kMarker}));
}

TEST(CompositionTest, ComposeHelperLeavesMarkersInItsArgument) {
  String working{0x0061, 0x0301, 0x1100, 0x1161, 0x11A8};
  EXPECT_EQ(gTransformTables.composeHelper(working), (String{0x00E1, 0xAC01}));
  EXPECT_EQ(working, (String{0x00E1, kMarker, 0xAC01, kMarker, kMarker}));
}

TEST(CompositionTest, ConsumedSlotBeforeAStarterUnblocksIt) {
  // S a b X: a stays, b composes with S, then X is tried against the
  // composite, past a. No pair of the real data shows this, so two are
  // added to a copy of the tables; U+0B3E is a starter that may compose.
  UnicodeTransformationTables tables = gTransformTables;
  tables.compositionMap[String{0x0061, 0x0345}] = 0xE000;
  tables.compositionMap[String{0xE000, 0x0B3E}] = 0xE001;
  String working{0x0061, 0x0315, 0x0345, 0x0B3E};
  EXPECT_EQ(tables.composeHelper(working), (String{0xE001, 0x0315}));
  // Without the consumed slot in front, the mark blocks the starter.
  String blocked{0xE000, 0x0315, 0x0B3E};
  EXPECT_EQ(tables.composeHelper(blocked), (String{0xE000, 0x0315, 0x0B3E}));
}

TEST(CompositionTest,
     CompatibilityFormsComposeAfterCompatibilityDecomposition) {
  EXPECT_EQ(toNFKC({0x00A0}), (String{0x0020}));
  EXPECT_EQ(toNFKC({0xFB01}), (String{0x0066, 0x0069}));
  EXPECT_EQ(toNFKC({0x1E9B, 0x0323}), (String{0x1E69}));
  EXPECT_EQ(toNFC({0x1E9B, 0x0323}), (String{0x1E9B, 0x0323}));
}

TEST(CompositionTest, ValuesWithoutDataPassThrough) {
  for (char32_t odd :
       {char32_t{0x0378}, char32_t{0xD800}, char32_t{0x110000}}) {
    EXPECT_EQ(toNFC({0x0061, odd, 0x0301}), (String{0x0061, odd, 0x0301}));
    EXPECT_EQ(toNFKC({0x0061, odd, 0x0301}), (String{0x0061, odd, 0x0301}));
  }
}

TEST(CompositionTest, CompositionMapKeysAreOneLevelMappings) {
  const auto& map = gTransformTables.compositionMap;
  EXPECT_EQ(map.size(), 940u);
  const auto found = map.find(String{0x00DC, 0x0304});
  ASSERT_NE(found, map.end());
  EXPECT_EQ(found->second, char32_t{0x01D5});
  for (char32_t nonStarterDecomposition : {0x0344, 0x0F73, 0x0F75, 0x0F81})
    for (const auto& entry : map)
      EXPECT_NE(entry.second, nonStarterDecomposition);
}

TEST(CompositionTest, CompositionMapEqualsThePrimaryCompositesOfTheFiles) {
  zelvo_test::UnicodeDataFile data;
  const std::string unicodeData = zelvo_test::ucdFile("UnicodeData.txt");
  const std::string exclusionsFile =
      zelvo_test::ucdFile("CompositionExclusions.txt");
  if (unicodeData.empty() || exclusionsFile.empty() ||
      !zelvo_test::readUnicodeData(unicodeData, data))
    GTEST_FAIL() << "UnicodeData.txt or CompositionExclusions.txt not found "
                    "under $ZELVO_UCD_DIR";
  std::set<char32_t> exclusions;
  std::ifstream in(exclusionsFile);
  std::string line;
  while (std::getline(in, line)) {
    line = line.substr(0, line.find('#'));
    if (line.find_first_not_of(" \t") == std::string::npos) continue;
    exclusions.insert(static_cast<char32_t>(std::stoul(line, nullptr, 16)));
  }
  EXPECT_EQ(exclusions.size(), 81u);

  std::map<String, char32_t> want;
  for (const auto& entry : data.canonical) {
    const String& pair = entry.second;
    if (pair.length() == 2 && data.classOf(entry.first) == 0 &&
        data.classOf(pair[0]) == 0 && exclusions.count(entry.first) == 0)
      want[pair] = entry.first;
  }
  EXPECT_EQ(want.size(), 940u);
  EXPECT_TRUE(gTransformTables.compositionMap == want);
}

TEST(CompositionTest,
     EveryPrimaryCompositeSurvivesDecompositionAndComposition) {
  for (const auto& entry : gTransformTables.compositionMap) {
    const String composite{entry.second};
    EXPECT_EQ(toNFC(zelvo::unicode::toNFD(composite)), composite)
        << std::hex << entry.second;
    EXPECT_EQ(toNFC(entry.first), composite) << std::hex << entry.second;
  }
}

}  // namespace
