// Tests of isNFD, isNFKD, isNFC and isNFKC: the class test, the No lists,
// the Maybe path, and the strict threshold of the decomposed checks.
#include <gtest/gtest.h>

#include <type_traits>

#include "NormalizationTestSupport.h"
#include "transform/UnicodeOperations.h"

namespace {

using zelvo::unicode::gTransformTables;
using zelvo::unicode::isNFC;
using zelvo::unicode::isNFD;
using zelvo::unicode::isNFKC;
using zelvo::unicode::isNFKD;
using zelvo::unicode::String;

static_assert(std::is_same<decltype(isNFD(String())), bool>::value, "");
static_assert(std::is_same<decltype(isNFC(String())), bool>::value, "");
static_assert(std::is_same<decltype(isNFKD(String())), bool>::value, "");
static_assert(std::is_same<decltype(isNFKC(String())), bool>::value, "");

TEST(QuickChecksTest, EmptyStringIsInEveryForm) {
  EXPECT_TRUE(isNFD(String()));
  EXPECT_TRUE(isNFC(String()));
  EXPECT_TRUE(isNFKD(String()));
  EXPECT_TRUE(isNFKC(String()));
}

TEST(QuickChecksTest, MarksInCanonicalOrderPass) {
  const String s{0x0061, 0x0323, 0x0307};
  EXPECT_TRUE(isNFD(s));
  EXPECT_TRUE(isNFKD(s));
}

TEST(QuickChecksTest, MarksOutOfCanonicalOrderFailTheClassTest) {
  const String s{0x0061, 0x0307, 0x0323};
  EXPECT_FALSE(isNFD(s));
  EXPECT_FALSE(isNFKD(s));
  EXPECT_FALSE(isNFC(s));
  EXPECT_FALSE(isNFKC(s));
}

TEST(QuickChecksTest, ComposableMarkIsSettledByNormalizing) {
  const String s{0x0041, 0x0301};
  EXPECT_TRUE(isNFD(s));
  EXPECT_FALSE(isNFC(s));
  EXPECT_FALSE(isNFKC(s));
}

TEST(QuickChecksTest, PrecomposedLetterIsComposedNotDecomposed) {
  const String s{0x00E9};
  EXPECT_FALSE(isNFD(s));
  EXPECT_TRUE(isNFC(s));
  EXPECT_FALSE(isNFKD(s));
  EXPECT_TRUE(isNFKC(s));
}

TEST(QuickChecksTest, NonStarterDecompositionIsInNoForm) {
  const String s{0x0344};
  EXPECT_FALSE(isNFD(s));
  EXPECT_FALSE(isNFC(s));
  EXPECT_FALSE(isNFKD(s));
  EXPECT_FALSE(isNFKC(s));
}

TEST(QuickChecksTest, HangulSyllableIsComposedNotDecomposed) {
  const String s{0xAC00};
  EXPECT_FALSE(isNFD(s));
  EXPECT_FALSE(isNFKD(s));
  EXPECT_TRUE(isNFC(s));
  EXPECT_TRUE(isNFKC(s));
}

TEST(QuickChecksTest, JamoPairIsDecomposedNotComposed) {
  const String s{0x1100, 0x1161};
  EXPECT_TRUE(isNFD(s));
  EXPECT_TRUE(isNFKD(s));
  EXPECT_FALSE(isNFC(s));
  EXPECT_FALSE(isNFKC(s));
}

TEST(QuickChecksTest, NoBreakSpaceFailsOnlyTheCompatibilityForms) {
  const String s{0x00A0};
  EXPECT_TRUE(isNFD(s));
  EXPECT_TRUE(isNFC(s));
  EXPECT_FALSE(isNFKD(s));
  EXPECT_FALSE(isNFKC(s));
}

TEST(QuickChecksTest, ClassOfAMarkSurvivesACodePointBelowTheThreshold) {
  // In NFD and NFKD, but U+0061 does not reset the class 240 of U+0345
  // before U+0315, class 232.
  const String s{0x0345, 0x0061, 0x0315};
  EXPECT_EQ(zelvo::unicode::toNFD(s), s);
  EXPECT_EQ(zelvo::unicode::toNFKD(s), s);
  EXPECT_FALSE(isNFD(s));
  EXPECT_FALSE(isNFKD(s));
}

TEST(QuickChecksTest, ClassTestComparesSignedIntegers) {
  // A negative weight in a copy of the tables: as a signed int it is below
  // the class 0 that `last` starts with, so even a lone mark fails, where an
  // unsigned comparison would see a huge class and pass it.
  zelvo::unicode::UnicodeTransformationTables tables = gTransformTables;
  tables.weightMap[0x0301] = -5;
  EXPECT_FALSE(tables.isNFD({0x0061, 0x0301}));
  EXPECT_FALSE(tables.isNFKD({0x0061, 0x0301}));
  EXPECT_FALSE(tables.isNFC({0x0061, 0x0301}));
  EXPECT_TRUE(isNFD({0x0061, 0x0301}));
}

TEST(QuickChecksTest, ComposedChecksResetTheClassAtEveryStarter) {
  const String s{0x0345, 0x0061, 0x0315};
  EXPECT_TRUE(isNFC(s));
  EXPECT_TRUE(isNFKC(s));
}

TEST(QuickChecksTest, ThresholdsOfTheDecomposedChecksDiffer) {
  // U+00B7 is below the threshold of isNFD, not below that of isNFKD.
  const String s{0x0345, 0x00B7, 0x0315};
  EXPECT_FALSE(isNFD(s));
  EXPECT_TRUE(isNFKD(s));
}

TEST(QuickChecksTest, StarterAtOrAboveTheThresholdResetsTheClass) {
  EXPECT_TRUE(isNFD({0x0315, 0x4E00, 0x0300}));
  EXPECT_TRUE(isNFKD({0x0315, 0x4E00, 0x0300}));
}

TEST(QuickChecksTest, EqualClassesPassAndNothingComposes) {
  const String s{0x0301, 0x0301};
  EXPECT_TRUE(isNFD(s));
  EXPECT_TRUE(isNFC(s));
  EXPECT_TRUE(isNFKD(s));
  EXPECT_TRUE(isNFKC(s));
}

TEST(QuickChecksTest, SingletonsFailNfcThroughTheNoList) {
  EXPECT_FALSE(isNFC({0x2126}));
  EXPECT_FALSE(isNFC({0x212B}));
}

TEST(QuickChecksTest, U11A7BehindASyllablePassesWithoutAMaybe) {
  // Neither code point is No or Maybe, although toNFC takes the U+11A7 away.
  const String s{0xAC00, 0x11A7};
  EXPECT_NE(zelvo::unicode::toNFC(s), s);
  EXPECT_TRUE(isNFC(s));
  EXPECT_TRUE(isNFKC(s));
}

TEST(QuickChecksTest, MaybeBringsTheTreatmentOfU11A7In) {
  const String s{0x0301, 0xAC00, 0x11A7};
  EXPECT_FALSE(isNFC(s));
  EXPECT_FALSE(isNFKC(s));
}

TEST(QuickChecksTest, MaybeThatNormalizesToItselfLetsTheScanGoOn) {
  // U+0301 is Maybe and the string is its own NFC; U+FB01 later is NFKC No.
  EXPECT_TRUE(isNFC({0x0301, 0x0301, 0x0061, 0xFB01}));
  EXPECT_FALSE(isNFKC({0x0301, 0x0301, 0x0061, 0xFB01}));
  // A second Maybe is settled again, on the whole string.
  EXPECT_FALSE(isNFC({0x0301, 0x0061, 0x0301}));
}

TEST(QuickChecksTest, CompatibilityCharactersFailOnlyTheCompatibilityForms) {
  const String s{0xFB01};
  EXPECT_TRUE(isNFD(s));
  EXPECT_TRUE(isNFC(s));
  EXPECT_FALSE(isNFKD(s));
  EXPECT_FALSE(isNFKC(s));
  EXPECT_TRUE(isNFKC({0x0066, 0x0069}));
}

TEST(QuickChecksTest, ValuesThatAreNotCodePointsPass) {
  for (char32_t odd : {char32_t{0xD800}, char32_t{0xDFFF}, char32_t{0x110000},
                       char32_t{0xFFFFFFFF}}) {
    const String s{0x0061, odd, 0x0062};
    EXPECT_TRUE(isNFD(s)) << std::hex << static_cast<unsigned>(odd);
    EXPECT_TRUE(isNFC(s)) << std::hex << static_cast<unsigned>(odd);
    EXPECT_TRUE(isNFKD(s)) << std::hex << static_cast<unsigned>(odd);
    EXPECT_TRUE(isNFKC(s)) << std::hex << static_cast<unsigned>(odd);
  }
}

TEST(QuickChecksTest, MarkerValueBeforeAMaybeFailsTheComposedChecks) {
  // The Maybe has the whole string normalized, and composition drops the
  // value that looks like a consumed slot.
  const String s{0x0061, 0xFFFFFFFF, 0x0301};
  EXPECT_TRUE(isNFD(s));
  EXPECT_FALSE(isNFC(s));
  EXPECT_FALSE(isNFKC(s));
}

TEST(QuickChecksTest, CheckOfOneCodePointAgreesWithItsNormalization) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    const String s{c};
    ASSERT_EQ(isNFD(s), zelvo::unicode::toNFD(s) == s) << std::hex << c;
    ASSERT_EQ(isNFKD(s), zelvo::unicode::toNFKD(s) == s) << std::hex << c;
    ASSERT_EQ(isNFC(s), zelvo::unicode::toNFC(s) == s) << std::hex << c;
    ASSERT_EQ(isNFKC(s), zelvo::unicode::toNFKC(s) == s) << std::hex << c;
  }
}

}  // namespace
