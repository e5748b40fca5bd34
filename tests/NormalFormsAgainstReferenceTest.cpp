// The normal forms, the quick checks, canonical ordering and composeHelper of
// the library against a plain transcription of the written algorithms
// (tests/reference/NormalizationReference.h): on the examples of their
// rules, every code point alone, pairs and triples of the code points where
// the rules bite, random strings, and long texts of many scripts with those
// code points at and across every edge of the fast paths' blocks.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "NormalizationTestSupport.h"
#include "reference/NormalizationReference.h"
#include "transform/UnicodeOperations.h"

namespace {

using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;
using zelvo_reference::NormalizationReference;
using zelvo_test::hex;

const NormalizationReference& reference() {
  static const NormalizationReference r(gTransformTables);
  return r;
}

// Every function on s, against the reference; the first difference found,
// or "" when there is none.
std::string differenceFromReference(const String& s) {
  const NormalizationReference& r = reference();
  namespace u = zelvo::unicode;
  const auto differs = [&](const char* what, const String& ours,
                           const String& want) {
    return std::string(what) + " of " + hex(s) + " = " + hex(ours) + ", want " +
           hex(want);
  };
  if (u::toNFD(s) != r.toNFD(s))
    return differs("toNFD", u::toNFD(s), r.toNFD(s));
  if (u::toNFKD(s) != r.toNFKD(s))
    return differs("toNFKD", u::toNFKD(s), r.toNFKD(s));
  if (u::toNFC(s) != r.toNFC(s))
    return differs("toNFC", u::toNFC(s), r.toNFC(s));
  if (u::toNFKC(s) != r.toNFKC(s))
    return differs("toNFKC", u::toNFKC(s), r.toNFKC(s));
  if (u::isNFD(s) != r.isNFD(s)) return "isNFD of " + hex(s);
  if (u::isNFKD(s) != r.isNFKD(s)) return "isNFKD of " + hex(s);
  if (u::isNFC(s) != r.isNFC(s)) return "isNFC of " + hex(s);
  if (u::isNFKC(s) != r.isNFKC(s)) return "isNFKC of " + hex(s);
  String ours = s;
  String want = s;
  gTransformTables.sortCombiningMarks(ours);
  r.sortCombiningMarks(want);
  if (ours != want) return differs("sortCombiningMarks", ours, want);
  if (s.length() >= 2) {
    ours = s;
    want = s;
    const String oursComposed = gTransformTables.composeHelper(ours);
    const String wantComposed = r.composeHelper(want);
    if (oursComposed != wantComposed)
      return differs("composeHelper", oursComposed, wantComposed);
    if (ours != want)
      return differs("composeHelper's working string", ours, want);
  }
  return "";
}

#define EXPECT_AS_REFERENCE(s) EXPECT_EQ(differenceFromReference(s), "")
#define ASSERT_AS_REFERENCE(s) ASSERT_EQ(differenceFromReference(s), "")

constexpr char32_t kMarker = 0xFFFFFFFF;

// Code points where the rules bite: marks of many classes, Maybe code points
// and the starters that compose with them, decompositions of every kind,
// Hangul jamo and syllables, U+11A7, the marker and values without data.
const std::vector<char32_t>& interesting() {
  static const std::vector<char32_t> all = {
      0x0041,  0x0061,   0x0065,     0x0055,  0x00A0,  0x00A8,  0x00BD,
      0x00C5,  0x00DC,   0x00E9,     0x017F,  0x01D5,  0x0300,  0x0301,
      0x0304,  0x0307,   0x0308,     0x0315,  0x031B,  0x0323,  0x0327,
      0x0331,  0x0334,   0x0340,     0x0343,  0x0344,  0x0345,  0x0385,
      0x03A9,  0x0345,   0x0591,     0x05B0,  0x05BC,  0x0627,  0x064B,
      0x0653,  0x0654,   0x0655,     0x0915,  0x0928,  0x093C,  0x094D,
      0x0958,  0x09BE,   0x09C7,     0x09CB,  0x09D7,  0x0B3E,  0x0B47,
      0x0B56,  0x0B57,   0x0BBE,     0x0BC6,  0x0BD7,  0x0CBF,  0x0CC2,
      0x0CC6,  0x0CD5,   0x0D3E,     0x0D46,  0x0D57,  0x0DCA,  0x0DCF,
      0x0DD9,  0x0DDF,   0x0E38,     0x0E48,  0x0F71,  0x0F72,  0x0F73,
      0x0F75,  0x0F80,   0x0F81,     0x1025,  0x102E,  0x1100,  0x1112,
      0x1113,  0x1161,   0x1175,     0x1176,  0x11A7,  0x11A8,  0x11C2,
      0x11C3,  0x1E0B,   0x1E14,     0x1E69,  0x1E9B,  0x1EA1,  0x1FBF,
      0x1FC1,  0x2126,   0x212B,     0x2044,  0x3099,  0x309A,  0x304B,
      0x304C,  0x3131,   0x4E00,     0xAC00,  0xAC01,  0xAC1B,  0xD788,
      0xD7A3,  0xD7A4,   0xABFF,     0xD800,  0xDFFF,  0xFB01,  0xFDFA,
      0xFF9E,  0xFF9F,   0xFFFD,     0x0378,  0x1D15E, 0x1D160, 0x1D165,
      0x1D16E, 0x110000, 0xFFFFFFFE, kMarker, 0x11099, 0x110BA, 0x1133E,
      0x11347, 0x114B0,  0x114B9,    0x115AF, 0x115B8, 0x1F600, 0x1F3FB,
      0x200D,  0x2F800,  0x0F40,     0x0F74,  0x0F77,  0x0F7A,  0x0F82,
      0x0F84,  0x0FB2,   0x0E8D,     0x0EB8,  0x0EC8,  0x05B4,  0x05C1,
      0x0625,  0x0670,   0x1E63,     0x0323};
  return all;
}

TEST(NormalFormsAgainstReferenceTest, ExamplesOfTheRules) {
  const std::vector<String> examples = {
      {},
      {0x0061},
      {0x0061, 0x0307, 0x0323},
      {0x0061, 0x0301, 0x0300},
      {0x0301, 0x0323},
      {0x0307, 0x0061, 0x0323},
      {0x0307, 0x4E00, 0x0323},
      {0x212B},
      {0x0344},
      {0x0F73},
      {0x1D160},
      {0xAC00},
      {0xAC01},
      {0xD7A3},
      {0xD7A4},
      {0xABFF},
      {0x0041, 0x030A, 0x0323},
      {0x1E0B, 0x0323},
      {0xFDFA},
      {0x00A0},
      {0x00BD},
      {0x1E9B},
      {0x2126},
      {0x0061, 0x0301},
      {0x0061, 0x0323, 0x0307},
      {0x0301, 0x0301},
      {0x0301, 0x0061},
      {0x1100, 0x1161},
      {0x1112, 0x1175},
      {0x1100, 0x1161, 0x11A8},
      {0x1100, 0x1161, 0x11C2},
      {0x1100, 0x1161, 0x11A7},
      {0xAC00, 0x11A7},
      {0x1100, 0x1161, 0x11C3},
      {0xAC00, 0x11A8},
      {0x1113, 0x1161},
      {0x1100, 0x1176},
      {0x1100, 0x0301, 0x1161},
      {0x0B47, 0x0B3E},
      {0x0958},
      {0x0061, kMarker},
      {kMarker, 0x0301},
      {kMarker},
      {0x0041, 0x0301},
      {0x00E9},
      {0x0345, 0x0061, 0x0315},
      {0x0315, 0x4E00, 0x0300},
      {0x0301, 0xAC00, 0x11A7},
      {0x0061, kMarker, 0x0301},
      {0x0301, 0x0301, 0x0061, 0xFB01},
      {0x0301, 0x0061, 0x0301},
      {0x0065, 0x0331, 0x0323},
      {0x0065, 0x0331, 0x0301},
      {0x0B47, 0x0301, 0x0B3E},
      {0x0055, 0x0308, 0x0304},
      {0x1E9B, 0x0323},
      {0x00A8, 0x0323},
      {kMarker, 0x0061, kMarker, 0x0301, kMarker},
      {0x1100, kMarker, 0x1161},
      {0x0345, 0x00B7, 0x0315},
  };
  for (const String& s : examples) EXPECT_AS_REFERENCE(s);
}

TEST(NormalFormsAgainstReferenceTest, EveryCodePointAlone) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) ASSERT_AS_REFERENCE(String{c});
  for (char32_t c : {char32_t{0x110000}, char32_t{0x7FFFFFFF},
                     char32_t{0xFFFFFFFE}, kMarker})
    ASSERT_AS_REFERENCE(String{c});
}

TEST(NormalFormsAgainstReferenceTest, EveryCodePointAfterAStarterAndAMark) {
  // Each code point where it may compose, be blocked or be reordered.
  for (char32_t c = 0x00A0; c <= 0x10FFFF; ++c) {
    if (c == 0x3400) c = 0xA000;  // ideographs: no data to differ
    if (c == 0x20000) c = 0x2F800;
    ASSERT_AS_REFERENCE((String{0x0061, c}));
    ASSERT_AS_REFERENCE((String{0x0041, 0x0323, c}));
  }
}

TEST(NormalFormsAgainstReferenceTest, EveryPairOfInterestingCodePoints) {
  for (char32_t a : interesting())
    for (char32_t b : interesting()) ASSERT_AS_REFERENCE((String{a, b}));
}

TEST(NormalFormsAgainstReferenceTest, EveryTripleOfInterestingCodePoints) {
  std::vector<char32_t> few;
  for (size_t k = 0; k < interesting().size(); k += 3)
    few.push_back(interesting()[k]);
  for (char32_t a : few)
    for (char32_t b : few)
      for (char32_t c : few) ASSERT_AS_REFERENCE((String{a, b, c}));
}

TEST(NormalFormsAgainstReferenceTest, RandomStrings) {
  std::mt19937 random(2024);
  for (int trial = 0; trial < 40000; ++trial) {
    String s;
    const size_t length = random() % 14;
    for (size_t k = 0; k < length; ++k) {
      const unsigned pick = random() % 16;
      if (pick < 11)
        s.push_back(interesting()[random() % interesting().size()]);
      else if (pick < 13)
        s.push_back(0x0300 + random() % 0x70);  // combining marks
      else if (pick < 15)
        s.push_back(random() % 0x110000);
      else
        s.push_back(static_cast<char32_t>(random()));
    }
    ASSERT_AS_REFERENCE(s);
  }
}

// Ordinary text of one script, as filler around the special cases.
struct Filler {
  const char* name;
  String text;
};

std::vector<Filler> fillers() {
  auto cycle = [](std::initializer_list<char32_t> letters, size_t length) {
    String out;
    const std::vector<char32_t> all(letters);
    for (size_t k = 0; k < length; ++k) out.push_back(all[k % all.size()]);
    return out;
  };
  return {
      {"ascii", cycle({'T', 'h', 'e', ' ', 'c', 'a', 't', '.', ' '}, 200)},
      {"latin1", cycle({'c', 0xE9, 't', 0xE9, ' ', 0xE0, ' ', 0xFC}, 200)},
      {"vietnamese", cycle({'V', 'i', 0x1EC7, 't', ' ', 0x1EA1, 'n'}, 200)},
      {"cyrillic",
       cycle({0x041F, 0x0440, 0x0438, 0x0432, 0x0435, 0x0442, 0x20, 0x0439},
             200)},
      {"greek", cycle({0x03AC, 0x03BB, 0x03C6, 0x03B1, 0x20, 0x1F00}, 200)},
      {"hangul", cycle({0xD55C, 0xAD6D, 0xC5B4, 0x20, 0xAC00}, 200)},
      {"jamo",
       cycle({0x1112, 0x1161, 0x11AB, 0x1100, 0x116E, 0x11A8, 0x20}, 200)},
      {"han", cycle({0x4E2D, 0x6587, 0x5B57, 0x3002}, 200)},
      {"kana", cycle({0x304B, 0x3099, 0x306A, 0x30AB, 0x309A, 0x3002}, 200)},
      {"devanagari",
       cycle({0x0915, 0x093C, 0x093F, 0x0928, 0x094D, 0x0926, 0x0940, 0x20},
             200)},
      {"bengali",
       cycle({0x0995, 0x09BE, 0x09B2, 0x09C7, 0x09BE, 0x0020, 0x09AC, 0x09BE},
             200)},
      {"tamil",
       cycle({0x0BA4, 0x0BAE, 0x0BBF, 0x0BB4, 0x0BCD, 0x0BC6, 0x0BBE, 0x20},
             200)},
      {"hebrew", cycle({0x05E9, 0x05C1, 0x05B8, 0x05DC, 0x05D5, 0x05B9, 0x05DD,
                        0x0591, 0x20},
                       200)},
      {"arabic", cycle({0x0627, 0x0644, 0x0639, 0x064E, 0x0631, 0x0628, 0x0650,
                        0x064A, 0x0651, 0x064E, 0x20},
                       200)},
      {"thai",
       cycle({0x0E01, 0x0E34, 0x0E48, 0x0E19, 0x0E38, 0x0E49, 0x20}, 200)},
      // Letters that decompose and stay as they are alone, of many blocks,
      // with no plain code point between them.
      {"precomposed", cycle({0x00C5, 0x1E14, 0x01D5, 0x1EC7, 0x0419, 0x03AC,
                             0x1F00, 0x304C, 0x0929, 0x09CB, 0x1E69},
                            200)},
  };
}

// The special cases that go into the fillers.
std::vector<String> specialCases() {
  return {
      {0x0301},
      {0x0065, 0x0301},
      {0x0061, 0x0307, 0x0323},
      {0x0345, 0x0061, 0x0315},
      {0x0301, 0xAC00, 0x11A7},
      {0xAC00, 0x11A7},
      {0x1100, 0x1161, 0x11A7},
      {0xAC00, 0x11A8},
      {0x1100, 0x1161},
      {0x0B47, 0x0B3E},
      {0x09C7, 0x09BE},
      {0x0958},
      {0x2126},
      {0x0344},
      {0x0F73, 0x0F72},
      {kMarker},
      {0x0061, kMarker, 0x0301},
      {0xFB01},
      {0xFF9E},
      {0x00A8, 0x0323},
      {0x1E9B, 0x0323},
      {0x0065, 0x0331, 0x0323},
      {0x0323, 0x0301, 0x0345, 0x0300, 0x0334, 0x0308, 0x0316},
      {0xD800, 0x110000},
      {0x00E9, 0x0301},
      {0x1E14, 0x0323, 0x0301},
      {0x00C5, 0x11A7},
      {0x1100, 0x1161, 0x00E9, 0x0300},
      {0x01D5, kMarker, 0x0304},
      {0x00E9, 0x110000, 0x0301},
  };
}

TEST(NormalFormsAgainstReferenceTest, SpecialCasesAtEveryPlaceOfLongText) {
  for (const Filler& filler : fillers()) {
    for (const String& special : specialCases()) {
      // At the start, across every edge of the blocks of 16, and near and
      // at the end.
      std::vector<size_t> places;
      for (size_t place = 0; place <= 36; ++place) places.push_back(place);
      for (size_t place = 188; place <= filler.text.length(); ++place)
        places.push_back(place);
      for (size_t place : places) {
        String s = filler.text.substr(0, place);
        s += special;
        s += filler.text.substr(place);
        ASSERT_AS_REFERENCE(s) << filler.name << " at " << place;
      }
    }
  }
}

TEST(NormalFormsAgainstReferenceTest, TwoSpecialCasesFarApartInLongText) {
  // A Maybe deep inside lets a change far away decide the composed checks.
  for (const Filler& filler : fillers()) {
    for (const String& first : specialCases()) {
      for (const String& second : specialCases()) {
        String s = filler.text.substr(0, 37);
        s += first;
        s += filler.text.substr(37, 150 - 37);
        s += second;
        s += filler.text.substr(150);
        ASSERT_AS_REFERENCE(s) << filler.name;
      }
    }
  }
}

TEST(NormalFormsAgainstReferenceTest, LongRunsOfMarks) {
  std::mt19937 random(99);
  const char32_t marks[] = {0x0301, 0x0323, 0x0334, 0x0345, 0x0300,
                            0x0327, 0x0316, 0x0308, 0x05B0, 0x093C};
  for (size_t length : {15u, 16u, 17u, 33u, 200u}) {
    for (int trial = 0; trial < 20; ++trial) {
      String s{0x0061};
      for (size_t k = 0; k < length; ++k) s.push_back(marks[random() % 10]);
      s.push_back(0x0062);
      ASSERT_AS_REFERENCE(s);
    }
  }
}

// A starter with a decomposition of either kind, most of which stay as they
// are alone: with marks after it in order and out of order, with Hangul jamo
// and syllables on either side, and beside values that have no data.
TEST(NormalFormsAgainstReferenceTest,
     StartersThatDecomposeInEveryNeighbourhood) {
  std::vector<char32_t> starters;
  for (const auto& entry : gTransformTables.decompositionMap)
    if (!gTransformTables.weightMap.count(entry.first))
      starters.push_back(entry.first);
  for (const auto& entry : gTransformTables.compatDecompositionMap)
    starters.push_back(entry.first);
  ASSERT_GT(starters.size(), 5000u);
  for (char32_t c : starters) {
    const std::vector<String> neighbourhoods = {
        {c, 0x0301},
        {c, 0x0323, 0x0301},
        {c, 0x0301, 0x0323},
        {c, 0x0315, 0x0300, 0x0062},
        {c, 0x0308, 0x0304},
        {c, 0x1161},
        {c, 0x11A7},
        {c, 0x11A8, 0x0301},
        {0x1100, c},
        {0x1100, 0x1161, c, 0x0301},
        {c, 0x1100, 0x1161, 0x11A7},
        {0xAC00, c, 0x11A7},
        {c, kMarker},
        {kMarker, c, 0x0301},
        {c, kMarker, 0x0301},
        {c, 0x110000, 0x0323},
        {0xFFFFFFFE, c},
        {c, c, 0x0327},
        {0x0301, c},
        {0x0061, c, 0x0062},
    };
    for (const String& s : neighbourhoods) ASSERT_AS_REFERENCE(s);
  }
}

// Pieces whose decomposition has about as many elements as the buffer in
// which a piece is composed (64), and longer: a base of one, two or three
// elements, then marks, in order or not, with values without data among
// them.
TEST(NormalFormsAgainstReferenceTest, PiecesAroundTheLengthOfTheStackBuffer) {
  std::mt19937 random(6464);
  const char32_t bases[] = {0x0061, 0x00E9, 0x1E14, 0x01D5,
                            0x0344, 0x1100, 0xAC01, 0xFDFA};
  const char32_t marks[] = {0x0300, 0x0301, 0x0304, 0x0308, 0x0323,
                            0x0327, 0x0334, 0x0345, 0x0315, 0x05B0};
  for (char32_t base : bases) {
    for (size_t count = 55; count <= 70; ++count) {
      for (int trial = 0; trial < 4; ++trial) {
        String s{0x0062, base};
        for (size_t k = 0; k < count; ++k) {
          if (trial == 0)
            s.push_back(0x0301);  // in order, nothing composes after one
          else if (trial == 3 && random() % 9 == 0)
            s.push_back(random() % 2 ? kMarker : 0x110000);
          else
            s.push_back(marks[random() % (sizeof marks / sizeof *marks)]);
        }
        s.push_back(0x0063);
        ASSERT_AS_REFERENCE(s) << "base " << hex(String{base}) << ", " << count
                               << " marks, trial " << trial;
      }
    }
  }
}

// Marks of many classes, those that compose and those that do not, in runs
// long and short, with values that have no data (the marker among them)
// standing between them, behind bases of every kind.
TEST(NormalFormsAgainstReferenceTest, RunsOfMixedMarksWithValuesWithoutData) {
  std::mt19937 random(404);
  const char32_t bases[] = {0x0061, 0x0065, 0x00E9, 0x05E9, 0x0627,
                            0x0625, 0x0F40, 0x0E01, 0x1100, 0xAC00,
                            0x0915, 0x09C7, 0x0345, 0x0020, 0x4E00};
  const char32_t marks[] = {
      0x0300, 0x0301, 0x0302, 0x0308, 0x0323, 0x0327, 0x0334, 0x0345,
      0x0315, 0x031B, 0x0591, 0x05B0, 0x05B4, 0x05BC, 0x05C1, 0x05C2,
      0x064B, 0x064E, 0x0651, 0x0654, 0x0655, 0x0670, 0x093C, 0x094D,
      0x09BE, 0x0E38, 0x0E48, 0x0F71, 0x0F72, 0x0F74, 0x0F7A, 0x0F80,
      0x0F82, 0x0F84, 0x1161, 0x11A7, 0x11A8, 0x3099};
  const char32_t withoutData[] = {0xFFFFFFFF, 0x110000, 0xD800, 0x0378,
                                  0xFFFFFFFE};
  for (int trial = 0; trial < 6000; ++trial) {
    String s;
    const size_t runs = 1 + random() % 4;
    for (size_t run = 0; run < runs; ++run) {
      s.push_back(bases[random() % (sizeof bases / sizeof *bases)]);
      const size_t length = random() % 24;
      for (size_t k = 0; k < length; ++k) {
        if (random() % 8 == 0)
          s.push_back(withoutData[random() % 5]);
        else
          s.push_back(marks[random() % (sizeof marks / sizeof *marks)]);
      }
    }
    ASSERT_AS_REFERENCE(s);
  }
}

// The composed checks pass over pieces that may change until a Maybe code
// point comes, keep the first few, and then compare them, or walk back to
// those not kept: the piece that changes may be the first of them, one in
// the middle, the last one kept or the first one not kept, the last one, or
// none.
TEST(NormalFormsAgainstReferenceTest, MaybeDeepInsideDecidesThePiecesBeforeIt) {
  const String changes = {0xAC00, 0x11A7};      // U+11A7 is swallowed
  const String staysArabic = {0x0625, 0x0650};  // decomposes and composes
  const String staysLatin = {0x00E9, 0x0315};   // the same
  const String marker = {0x0061, 0xFFFFFFFF};   // the marker goes
  // Maybe code points that stay as they are, so that the pieces before
  // them decide, and some that change.
  const std::vector<String> maybes = {{0x0628, 0x0653},
                                      {0x05D0, 0x0301},
                                      {0x0915, 0x093C},
                                      {0x0065, 0x0301},
                                      {0x1100, 0x1161}};
  for (const Filler& filler : fillers()) {
    for (const String& maybe : maybes) {
      for (const String& odd : {changes, marker, staysArabic}) {
        for (size_t count : {1u, 4u, 15u, 16u, 17u, 18u, 40u}) {
          for (size_t where : {size_t{0}, count / 2, size_t{15}, size_t{16},
                               size_t{17}, count - 1}) {
            if (where >= count) continue;
            // Pieces that may change, one of them odd, then the Maybe.
            String s = filler.text.substr(0, 20);
            for (size_t k = 0; k < count; ++k) {
              s += k == where ? odd : (k % 2 ? staysArabic : staysLatin);
              s += filler.text.substr(20 + k * 3 % 120, 3);
            }
            s += maybe;
            s += filler.text.substr(140);
            ASSERT_AS_REFERENCE(s)
                << filler.name << " odd piece " << where << " of " << count;
          }
        }
      }
    }
  }
}

TEST(NormalFormsAgainstReferenceTest, TablesOtherThanTheGlobalAnswerAlike) {
  // A copy reads its own maps, not the generated data of the global.
  zelvo::unicode::UnicodeTransformationTables copy = gTransformTables;
  for (const Filler& filler : fillers()) {
    String s = filler.text;
    s += String{0x0301, 0xAC00, 0x11A7, 0x0065, 0x0331, 0x0301};
    EXPECT_EQ(copy.toNFD(s), zelvo::unicode::toNFD(s)) << filler.name;
    EXPECT_EQ(copy.toNFKD(s), zelvo::unicode::toNFKD(s)) << filler.name;
    EXPECT_EQ(copy.toNFC(s), zelvo::unicode::toNFC(s)) << filler.name;
    EXPECT_EQ(copy.toNFKC(s), zelvo::unicode::toNFKC(s)) << filler.name;
    EXPECT_EQ(copy.isNFD(s), zelvo::unicode::isNFD(s)) << filler.name;
    EXPECT_EQ(copy.isNFKD(s), zelvo::unicode::isNFKD(s)) << filler.name;
    EXPECT_EQ(copy.isNFC(s), zelvo::unicode::isNFC(s)) << filler.name;
    EXPECT_EQ(copy.isNFKC(s), zelvo::unicode::isNFKC(s)) << filler.name;
  }
}

}  // namespace
