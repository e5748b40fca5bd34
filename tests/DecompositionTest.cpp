// Tests of toNFD and toNFKD, of the full decompositions expanded at load,
// and of Hangul decomposition by arithmetic.
#include <gtest/gtest.h>

#include <algorithm>
#include <type_traits>
#include <utility>

#include "NormalizationTestSupport.h"
#include "transform/UnicodeOperations.h"

namespace {

using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;
using zelvo::unicode::toNFD;
using zelvo::unicode::toNFKD;
using zelvo::unicode::UnicodeTransformationTables;

static_assert(std::is_same<decltype(toNFD(String())), String>::value,
              "toNFD returns a new String");
static_assert(std::is_same<decltype(toNFKD(String())), String>::value,
              "toNFKD returns a new String");
static_assert(std::is_same<decltype(&UnicodeTransformationTables::expandCompat),
                           String (UnicodeTransformationTables::*)(
                               char32_t const&)>::value,
              "expandCompat takes one code point");

TEST(DecompositionTest, EmptyStringGivesEmptyString) {
  EXPECT_EQ(toNFD(String()), String());
  EXPECT_EQ(toNFKD(String()), String());
}

TEST(DecompositionTest, ArgumentIsLeftAlone) {
  const String s{0x00C5, 0x1E9B, 0xAC01};
  const String copy = s;
  toNFD(s);
  toNFKD(s);
  EXPECT_EQ(s, copy);
}

TEST(DecompositionTest, SingletonWithTwoLevelChain) {
  EXPECT_EQ(toNFD({0x212B}), (String{0x0041, 0x030A}));
}

TEST(DecompositionTest, NonStarterDecompositions) {
  EXPECT_EQ(toNFD({0x0344}), (String{0x0308, 0x0301}));
  EXPECT_EQ(toNFD({0x0F73}), (String{0x0F71, 0x0F72}));
}

TEST(DecompositionTest, FirstElementChainOutsideTheBmp) {
  EXPECT_EQ(toNFD({0x1D160}), (String{0x1D158, 0x1D165, 0x1D16E}));
}

TEST(DecompositionTest, ChainKeepsSecondElementsFromInnermostOutward) {
  // U+1E14 maps to U+0112 U+0300, and U+0112 to U+0045 U+0304.
  EXPECT_EQ(toNFD({0x1E14}), (String{0x0045, 0x0304, 0x0300}));
  EXPECT_EQ(gTransformTables.decompositionMap.at(0x1E14),
            (String{0x0045, 0x0304, 0x0300}));
}

TEST(DecompositionTest, HangulSyllableWithoutTrailingConsonant) {
  EXPECT_EQ(toNFD({0xAC00}), (String{0x1100, 0x1161}));
}

TEST(DecompositionTest, HangulSyllableWithTrailingConsonant) {
  EXPECT_EQ(toNFD({0xAC01}), (String{0x1100, 0x1161, 0x11A8}));
  EXPECT_EQ(toNFD({0xD7A3}), (String{0x1112, 0x1175, 0x11C2}));
}

TEST(DecompositionTest, ValuesJustOutsideTheSyllablesAreUnchanged) {
  EXPECT_EQ(toNFD({0xD7A4}), (String{0xD7A4}));
  EXPECT_EQ(toNFD({0xABFF}), (String{0xABFF}));
  EXPECT_EQ(toNFKD({0xD7A4}), (String{0xD7A4}));
  EXPECT_EQ(toNFKD({0xABFF}), (String{0xABFF}));
}

TEST(DecompositionTest, HangulSyllablesDecomposeByArithmetic) {
  // Against the jamo counts themselves: 19 leading, 21 vowels, 28 trailing.
  for (char32_t l = 0; l < 19; ++l)
    for (char32_t v = 0; v < 21; ++v)
      for (char32_t t = 0; t < 28; ++t) {
        const char32_t syllable = 0xAC00 + (l * 21 + v) * 28 + t;
        String want{0x1100 + l, 0x1161 + v};
        if (t != 0) want.push_back(0x11A7 + t);
        ASSERT_EQ(toNFD({syllable}), want) << std::hex << syllable;
        ASSERT_EQ(toNFKD({syllable}), want) << std::hex << syllable;
      }
}

TEST(DecompositionTest, MarksFromDifferentSourcesAreSortedTogether) {
  EXPECT_EQ(toNFD({0x0041, 0x030A, 0x0323}), (String{0x0041, 0x0323, 0x030A}));
  EXPECT_EQ(toNFD({0x1E0B, 0x0323}), (String{0x0064, 0x0323, 0x0307}));
}

TEST(DecompositionTest, LongestCompatibilityDecomposition) {
  EXPECT_EQ(toNFKD({0xFDFA}).length(), 18u);
}

TEST(DecompositionTest, CompatibilityMappings) {
  EXPECT_EQ(toNFKD({0x00A0}), (String{0x0020}));
  EXPECT_EQ(toNFKD({0x00BD}), (String{0x0031, 0x2044, 0x0032}));
}

TEST(DecompositionTest, CanonicalFirstThenCompatibility) {
  // U+1E9B becomes U+017F U+0307, then U+017F becomes U+0073.
  EXPECT_EQ(toNFKD({0x1E9B}), (String{0x0073, 0x0307}));
}

TEST(DecompositionTest, ToNfkdSortsTheMarksThatCompatibilityValuesBringIn) {
  // U+00A8 is a starter with no canonical mapping; its compatibility value
  // U+0020 U+0308 puts a class 230 mark before the class 220 U+0323.
  EXPECT_EQ(toNFD({0x00A8, 0x0323}), (String{0x00A8, 0x0323}));
  EXPECT_EQ(toNFKD({0x00A8, 0x0323}), (String{0x0020, 0x0323, 0x0308}));
}

TEST(DecompositionTest, ToNfdLeavesCompatibilityCharactersAlone) {
  EXPECT_EQ(toNFD({0x00A0}), (String{0x00A0}));
  EXPECT_EQ(toNFD({0x00BD}), (String{0x00BD}));
  EXPECT_EQ(toNFD({0xFDFA}), (String{0xFDFA}));
}

TEST(DecompositionTest, ValuesWithoutDataPassThrough) {
  for (char32_t odd : {char32_t{0x0378}, char32_t{0xD800}, char32_t{0xDFFF},
                       char32_t{0x110000}, char32_t{0xFFFFFFFF}}) {
    const String s{0x0061, odd, 0x00C5};
    EXPECT_EQ(toNFD(s), (String{0x0061, odd, 0x0041, 0x030A}))
        << std::hex << static_cast<unsigned>(odd);
    EXPECT_EQ(toNFKD(s), (String{0x0061, odd, 0x0041, 0x030A}))
        << std::hex << static_cast<unsigned>(odd);
  }
}

TEST(DecompositionTest, TextBelowTheThresholdsIsCopied) {
  String below;
  for (char32_t c = 0; c < 0xC0; ++c) below.push_back(c);
  EXPECT_EQ(toNFD(below), below);
  below.resize(0xA0);
  EXPECT_EQ(toNFKD(below), below);
}

// toNFD and toNFKD copy text below U+00C0 and U+00A0 without a lookup.
TEST(DecompositionTest, ThresholdsAreTheLowestKeysOfTheMaps) {
  ASSERT_FALSE(gTransformTables.decompositionMap.empty());
  ASSERT_FALSE(gTransformTables.compatDecompositionMap.empty());
  EXPECT_EQ(gTransformTables.decompositionMap.begin()->first, char32_t{0x00C0});
  EXPECT_EQ(gTransformTables.compatDecompositionMap.begin()->first,
            char32_t{0x00A0});
}

TEST(DecompositionTest, ExpandCompatIsNoUseAfterConstruction) {
  // The raw table it recurses through has been emptied at load.
  EXPECT_EQ(gTransformTables.expandCompat(0x00BD), (String{0x00BD}));
  EXPECT_EQ(gTransformTables.expandCompat(0x0041), (String{0x0041}));
}

// The full decomposition of c by the data of the file: recursive, canonical
// mappings only, or compatibility ones too.
String fullDecomposition(const zelvo_test::UnicodeDataFile& data, char32_t c,
                         bool compat) {
  const auto canonical = data.canonical.find(c);
  const String* mapping = nullptr;
  if (canonical != data.canonical.end()) {
    mapping = &canonical->second;
  } else if (compat) {
    const auto found = data.compat.find(c);
    if (found != data.compat.end()) mapping = &found->second;
  }
  if (mapping == nullptr) return String{c};
  String result;
  for (char32_t element : *mapping)
    result += fullDecomposition(data, element, compat);
  return result;
}

// Canonical order by the classes of the file, by insertion within each run.
String canonicallyOrdered(const zelvo_test::UnicodeDataFile& data, String s) {
  for (size_t i = 1; i < s.length(); ++i) {
    const int cls = data.classOf(s[i]);
    if (cls == 0) continue;
    for (size_t j = i; j > 0; --j) {
      const int before = data.classOf(s[j - 1]);
      if (before <= cls) break;
      std::swap(s[j - 1], s[j]);
    }
  }
  return s;
}

class DecompositionDataTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string path = zelvo_test::ucdFile("UnicodeData.txt");
    if (path.empty() || !zelvo_test::readUnicodeData(path, data_))
      GTEST_FAIL() << "UnicodeData.txt not found under $ZELVO_UCD_DIR";
  }
  zelvo_test::UnicodeDataFile data_;
};

TEST_F(DecompositionDataTest,
       DecompositionMapHoldsEveryFullCanonicalDecomposition) {
  const auto& map = gTransformTables.decompositionMap;
  EXPECT_EQ(map.size(), data_.canonical.size());
  EXPECT_EQ(map.size(), 2060u);
  for (const auto& entry : data_.canonical) {
    const auto found = map.find(entry.first);
    ASSERT_NE(found, map.end()) << std::hex << entry.first;
    EXPECT_EQ(found->second, fullDecomposition(data_, entry.first, false))
        << std::hex << entry.first;
    EXPECT_GE(found->second.length(), 1u);
    EXPECT_LE(found->second.length(), 4u);
  }
}

TEST_F(DecompositionDataTest,
       CompatDecompositionMapHoldsEveryFullCompatibilityDecomposition) {
  const auto& map = gTransformTables.compatDecompositionMap;
  EXPECT_EQ(map.size(), data_.compat.size());
  EXPECT_EQ(map.size(), 3661u);
  size_t longest = 0;
  for (const auto& entry : data_.compat) {
    const auto found = map.find(entry.first);
    ASSERT_NE(found, map.end()) << std::hex << entry.first;
    // Stored in the order of expansion; with the 7.0.0 data that order is
    // canonical already.
    EXPECT_EQ(
        found->second,
        canonicallyOrdered(data_, fullDecomposition(data_, entry.first, true)))
        << std::hex << entry.first;
    longest = std::max(longest, found->second.length());
  }
  EXPECT_EQ(longest, 18u);
}

TEST_F(DecompositionDataTest, TheTwoMapsShareNoKey) {
  for (const auto& entry : gTransformTables.compatDecompositionMap)
    EXPECT_EQ(gTransformTables.decompositionMap.count(entry.first), 0u)
        << std::hex << entry.first;
}

TEST_F(DecompositionDataTest, ToNfdAndToNfkdOfEveryMappedCodePoint) {
  for (const auto& entry : data_.canonical) {
    const String want =
        canonicallyOrdered(data_, fullDecomposition(data_, entry.first, false));
    EXPECT_EQ(toNFD({entry.first}), want) << std::hex << entry.first;
  }
  for (const auto& entry : data_.compat) {
    const String want =
        canonicallyOrdered(data_, fullDecomposition(data_, entry.first, true));
    EXPECT_EQ(toNFKD({entry.first}), want) << std::hex << entry.first;
    EXPECT_EQ(toNFD({entry.first}), (String{entry.first}))
        << std::hex << entry.first;
  }
}

}  // namespace
