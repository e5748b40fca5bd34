// The fast paths of the case operations (the property index in front of the
// tables, the rows reached once per walk, the context scans on the index)
// against the plain transcription in tests/reference/CaseReference.h: every
// code point, every language that matters and many that nearly do, random
// and adversarial texts, and long texts with the special cases deep inside.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "case/AsciiAnswers.h"
#include "case/ReachableRows.h"
#include "tests/reference/CaseReference.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace {

using zelvo::unicode::ConditionTable;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;
using zelvo_reference::CaseReference;

CaseReference const& reference() {
  static CaseReference const plain(gTransformTables);
  return plain;
}

std::u32string elements(String const& s) {
  return std::u32string(s.begin(), s.end());
}

std::string show(std::u32string const& s) {
  std::string out;
  char buffer[16];
  for (char32_t c : s) {
    std::snprintf(buffer, sizeof buffer, "%s%04X", out.empty() ? "" : " ",
                  static_cast<unsigned>(c));
    out += buffer;
  }
  return "[" + out + "]";
}

// Every code point, and values above the code space, some with a letter or
// a conditional code point in their low bits.
std::vector<char32_t> everyValue() {
  std::vector<char32_t> values;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) values.push_back(c);
  for (char32_t c : {0x110000u, 0x110049u, 0x1000069u, 0x7FFFFFFFu, 0x80000041u,
                     0x800003A3u, 0xFFFFFFFFu})
    values.push_back(c);
  return values;
}

// The languages that select rows, near misses of them, the keys of the
// condition tables taken as languages, and texts that end in a key's suffix.
std::vector<std::string> const& languages() {
  static std::vector<std::string> const all = {"",
                                               "tr",
                                               "az",
                                               "lt",
                                               "TR",
                                               "tr-TR",
                                               "tr_TR",
                                               "tr ",
                                               " tr",
                                               "t",
                                               "Tr",
                                               "xx",
                                               "Final_Sigma",
                                               "final_sigma",
                                               "tr After_I",
                                               "tr Not_Before_Dot",
                                               "az After_I",
                                               "az Not_Before_Dot",
                                               "lt After_Soft_Dotted",
                                               "lt More_Above",
                                               " After_I",
                                               "After_I",
                                               std::string("tr\0", 3),
                                               "lt More_Above More_Above"};
  return all;
}

// Code points that the rows and the context rules look at, and others.
std::u32string const kPalette =
    U"\u0049\u004A\u0069\u006A\u00CC\u00CD\u0128\u012E\u012F\u0130\u0131"
    U"\u0307\u03A3\u0391\u03C3\u0041\u0061\u0301\u0323\u0345\u05B0\u002E"
    U"\u0020\u0031\u02B0\u00DF\uFB03\u1F80\u1F88\u0587\U00010400\U0001D16E"
    U"\u0000\u4E00\u01C5";

std::u32string randomText(std::mt19937& random, std::size_t maxLength) {
  std::uniform_int_distribution<std::size_t> length(0, maxLength);
  std::uniform_int_distribution<std::size_t> pick(0, kPalette.size() + 3);
  std::uniform_int_distribution<std::uint32_t> any;
  std::u32string s(length(random), U'\0');
  for (char32_t& c : s) {
    std::size_t const choice = pick(random);
    if (choice < kPalette.size())
      c = kPalette[choice];
    else if (choice == kPalette.size())
      c = 0xD800 + any(random) % 0x800;
    else if (choice == kPalette.size() + 1)
      c = any(random);
    else
      c = any(random) % 0x110000;
  }
  return s;
}

// ---------------------------------------------------------------------------
// Simple mappings and folding.

TEST(SimpleMappingShortcut, EveryValueMapsAsThePlainLookups) {
  int failures = 0;
  for (char32_t c : everyValue()) {
    char32_t upper = c, lower = c, title = c, fold = c;
    gTransformTables.toUpper(upper);
    gTransformTables.toLower(lower);
    gTransformTables.toTitle(title);
    gTransformTables.simpleCaseFold(fold);
    if ((upper != reference().upper(c) || lower != reference().lower(c) ||
         title != reference().title(c) || fold != reference().fold(c)) &&
        ++failures <= 10)
      ADD_FAILURE() << "members differ at " << show({c});
  }
  EXPECT_EQ(failures, 0);
}

TEST(SimpleMappingShortcut, FreeFunctionsOfACodePointAreTheMembers) {
  int failures = 0;
  for (char32_t c : everyValue()) {
    char32_t upper = c, lower = c, title = c, fold = c;
    zelvo::unicode::toUpperSimpleInPlace(upper);
    zelvo::unicode::toLowerSimpleInPlace(lower);
    zelvo::unicode::toTitleSimpleInPlace(title);
    zelvo::unicode::simpleCaseFoldInPlace(fold);
    bool const same =
        zelvo::unicode::toUpperSimple(c) == reference().upper(c) &&
        zelvo::unicode::toLowerSimple(c) == reference().lower(c) &&
        zelvo::unicode::toTitleSimple(c) == reference().title(c) &&
        zelvo::unicode::simpleCaseFold(c) == reference().fold(c) &&
        upper == reference().upper(c) && lower == reference().lower(c) &&
        title == reference().title(c) && fold == reference().fold(c);
    if (!same && ++failures <= 10)
      ADD_FAILURE() << "free functions differ at " << show({c});
  }
  EXPECT_EQ(failures, 0);
}

TEST(SimpleMappingShortcut, StringFormsMapEveryElementAsThePlainLookups) {
  std::vector<char32_t> const values = everyValue();
  std::u32string const all(values.begin(), values.end());
  std::u32string wantUpper, wantLower;
  for (char32_t c : all) {
    wantUpper.push_back(reference().upper(c));
    wantLower.push_back(reference().lower(c));
  }
  String const s(all);
  EXPECT_TRUE(elements(zelvo::unicode::toUpperSimple(s)) == wantUpper);
  EXPECT_TRUE(elements(zelvo::unicode::toLowerSimple(s)) == wantLower);
  String upper(all), lower(all);
  zelvo::unicode::toUpperSimpleInPlace(upper);
  zelvo::unicode::toLowerSimpleInPlace(lower);
  EXPECT_TRUE(elements(upper) == wantUpper);
  EXPECT_TRUE(elements(lower) == wantLower);
}

// ---------------------------------------------------------------------------
// Full mappings of one code point.

TEST(FullMappingShortcut, OneCodePointMembersAreThePlainLookups) {
  int failures = 0;
  for (char32_t c : everyValue()) {
    if ((elements(gTransformTables.toUpperFull(c)) !=
             elements(reference().upperFull(c)) ||
         elements(gTransformTables.toLowerFull(c)) !=
             elements(reference().lowerFull(c))) &&
        ++failures <= 10)
      ADD_FAILURE() << "one-code-point members differ at " << show({c});
  }
  EXPECT_EQ(failures, 0);
}

// Counts the code points whose title mapping differs from the plain one.
template <typename Values>
int titleMismatches(Values const& values, std::string const& language) {
  int failures = 0;
  for (char32_t c : values)
    if (elements(zelvo::unicode::toTitleFull(c, language)) !=
            elements(reference().titleFull(c, language)) &&
        ++failures <= 10)
      ADD_FAILURE() << "\"" << language << "\" title of " << show({c});
  return failures;
}

TEST(FullMappingShortcut, TitleOfEveryCodePointIsThePlainDispatcher) {
  std::vector<char32_t> const values = everyValue();
  EXPECT_EQ(titleMismatches(values, ""), 0);
  EXPECT_EQ(titleMismatches(values, "tr"), 0);
}

TEST(FullMappingShortcut, TitleInEveryLanguageIsThePlainDispatcher) {
  for (std::string const& language : languages())
    EXPECT_EQ(titleMismatches(kPalette, language), 0) << language;
}

TEST(FullMappingShortcut, OneElementWalksInEveryLanguageAreThePlainWalk) {
  int failures = 0;
  for (std::string const& language : languages())
    for (char32_t c : kPalette + std::u32string{0xD800, 0x10FFFF, 0x110000}) {
      String const one(1, c);
      if ((elements(zelvo::unicode::toUppperFull(c, language)) !=
               elements(reference().upperFull(one, language)) ||
           elements(zelvo::unicode::toLowerFull(c, language)) !=
               elements(reference().lowerFull(one, language))) &&
          ++failures <= 10)
        ADD_FAILURE() << "\"" << language << "\" walk over " << show({c});
    }
  EXPECT_EQ(failures, 0);
}

// ---------------------------------------------------------------------------
// The walk.

void expectWalksAsReference(std::u32string const& s,
                            std::string const& language, int& failures) {
  String const input(s);
  std::u32string const upper =
      elements(zelvo::unicode::toUpperFull(input, language));
  std::u32string const lower =
      elements(zelvo::unicode::toLowerFull(input, language));
  if (upper != elements(reference().upperFull(input, language)) &&
      ++failures <= 10)
    ADD_FAILURE() << "\"" << language << "\" upper of " << show(s) << " is "
                  << show(upper);
  if (lower != elements(reference().lowerFull(input, language)) &&
      ++failures <= 10)
    ADD_FAILURE() << "\"" << language << "\" lower of " << show(s) << " is "
                  << show(lower);
}

TEST(WalkShortcut, TextOfEveryCodePointIsThePlainWalk) {
  std::vector<char32_t> const values = everyValue();
  std::u32string const all(values.begin(), values.end());
  int failures = 0;
  for (std::string const language : {"", "tr"})
    expectWalksAsReference(all, language, failures);
  EXPECT_EQ(failures, 0);
}

TEST(WalkShortcut, EveryShortTextOfThePaletteInEveryLanguage) {
  int failures = 0;
  for (std::string const& language : languages())
    for (char32_t a : kPalette) {
      expectWalksAsReference({a}, language, failures);
      for (char32_t b : kPalette) {
        expectWalksAsReference({a, b}, language, failures);
        for (char32_t c :
             {0x0307u, 0x0301u, 0x0323u, 0x0049u, 0x03A3u, 0x002Eu, 0x0041u})
          expectWalksAsReference({a, b, c}, language, failures);
      }
    }
  EXPECT_EQ(failures, 0);
}

TEST(WalkShortcut, RandomTextsInEveryLanguage) {
  std::mt19937 random(20260);
  int failures = 0;
  for (int round = 0; round < 400; ++round) {
    std::u32string const s = randomText(random, 40);
    for (std::string const& language : languages())
      expectWalksAsReference(s, language, failures);
  }
  EXPECT_EQ(failures, 0);
}

// Random bytes as the language, now and then with a key's suffix after them.
TEST(WalkShortcut, RandomLanguages) {
  std::mt19937 random(9);
  std::uniform_int_distribution<int> byte(0, 255);
  std::vector<std::string> const suffixes = {
      "", " After_I", " Not_Before_Dot", " More_Above", " After_Soft_Dotted"};
  int failures = 0;
  for (int round = 0; round < 300; ++round) {
    std::string language;
    for (int n = byte(random) % 4; n > 0; --n)
      language.push_back(static_cast<char>(
          byte(random) % 3 == 0 ? byte(random) : "trazl"[byte(random) % 5]));
    language += suffixes[byte(random) % suffixes.size()];
    expectWalksAsReference(randomText(random, 24), language, failures);
  }
  EXPECT_EQ(failures, 0);
}

// Long texts with the special cases far from the start: a sigma after
// hundreds of letters, marks between a capital I and its dot, case-ignorable
// runs before the end, and expansions and deletions around every size that
// the result grows through.
TEST(WalkShortcut, SpecialCasesDeepInsideLongTexts) {
  std::vector<std::u32string> texts;
  std::u32string letters(700, U'\u03B1');
  texts.push_back(letters + U"\u03A3");
  texts.push_back(letters + U"\u03A3" + std::u32string(300, U'.'));
  texts.push_back(letters + U"\u03A3" + std::u32string(300, U'.') + U" ");
  texts.push_back(U"\u0391" + std::u32string(500, U'\u02B0') + U"\u03A3");
  texts.push_back(std::u32string(500, U'\u00DF') + U"I" +
                  std::u32string(400, U'\u0323') + U"\u0307");
  texts.push_back(U"I" + std::u32string(400, U'\u0323'));
  texts.push_back(U"I" + std::u32string(400, U'\u0323') + U"A");
  texts.push_back(U"J" + std::u32string(300, U'\u0323') + U"\u0301" +
                  std::u32string(300, U'\u0323'));
  for (std::size_t size : {1u, 2u, 3u, 7u, 8u, 63u, 64u, 255u, 256u, 1023u}) {
    texts.push_back(std::u32string(size, U'\u00DF'));
    texts.push_back(std::u32string(size, U'a') + U"\uFB03");
    texts.push_back(std::u32string(size, U'\uFB03') + U"a");
    std::u32string mixed;
    for (std::size_t i = 0; i < size; ++i)
      mixed += (i % 3 == 0) ? U"I\u0307" : (i % 3 == 1) ? U"\u0149" : U"x";
    texts.push_back(mixed);
  }
  int failures = 0;
  for (std::u32string const& s : texts)
    for (std::string const language : {"", "tr", "az", "lt", "Final_Sigma",
                                       "tr After_I", "lt After_Soft_Dotted"})
      expectWalksAsReference(s, language, failures);
  EXPECT_EQ(failures, 0);
}

// ---------------------------------------------------------------------------
// The context scans, through the members, on a table made up so that every
// code point of the palette has a row under every key.

// The value of each row tells which key it stands under; the rows under the
// language are empty, as a deleting row is.
ConditionTable everyRowTable(std::string const& language) {
  ConditionTable table;
  char32_t mark = U'1';
  for (std::string const& key :
       {std::string("Final_Sigma"), language + " After_Soft_Dotted",
        language + " More_Above", language + " Not_Before_Dot",
        language + " After_I"}) {
    for (char32_t c : kPalette) table[key][c] = String(1, mark);
    ++mark;
  }
  for (char32_t c : kPalette) table[language][c] = String();
  return table;
}

// Texts of the palette, marks of class 220 standing for the rest.
std::u32string paletteText(std::mt19937& random) {
  std::u32string s = randomText(random, 16);
  for (char32_t& c : s)
    if (kPalette.find(c) == std::u32string::npos) c = U'\u0323';
  return s;
}

TEST(ContextScans, EachTestAtEveryPositionIsThePlainScan) {
  std::string const language = "tr";
  ConditionTable const table = everyRowTable(language);
  std::mt19937 random(3);
  int failures = 0;
  auto& t = gTransformTables;
  auto const& r = reference();
  for (int round = 0; round < 2000; ++round) {
    std::u32string const s = paletteText(random);
    if (s.empty()) continue;
    char32_t const* begin = s.data();
    char32_t const* end = begin + s.size();
    for (char32_t const* at = begin; at != end; ++at) {
      String got, want;
      bool const same =
          t.mapFinalSigma(begin, end, at, table, got) ==
              r.finalSigma(begin, end, at, table, want) &&
          t.mapAfterSoftDotted(begin, at, language, table, got) ==
              r.afterSoftDotted(begin, at, language, table, want) &&
          t.mapMoreAbove(end, at, language, table, got) ==
              r.moreAbove(end, at, language, table, want) &&
          t.mapNotBeforeDot(end, at, language, table, got) ==
              r.notBeforeDot(end, at, language, table, want) &&
          t.mapAfterI(begin, at, language, table, got) ==
              r.afterI(begin, at, language, table, want) &&
          t.mapSpecialCondition(begin, end, at, language, table, got) ==
              r.condition(begin, end, at, language, table, want) &&
          elements(got) == elements(want);
      if (!same && ++failures <= 10)
        ADD_FAILURE() << show(s) << " at " << (at - begin);
    }
  }
  EXPECT_EQ(failures, 0);
}

// The rows a walk reaches, asked for a code point, give the value of the row
// that the dispatcher applies, on a table where every test has a row.
TEST(ReachableRows, FirstApplicableRowIsTheDispatchers) {
  std::mt19937 random(11);
  int failures = 0;
  for (std::string const language : {"tr", "", "Final_Sigma"}) {
    ConditionTable const table = everyRowTable(language);
    for (int round = 0; round < 2000; ++round) {
      std::u32string const s = paletteText(random);
      if (s.empty()) continue;
      char32_t const* begin = s.data();
      char32_t const* end = begin + s.size();
      zelvo::unicode::reachablerows::ReachableRows reachable(table, language);
      for (char32_t const* at = begin; at != end; ++at) {
        String want;
        bool const applies =
            reference().condition(begin, end, at, language, table, want);
        auto const* got = reachable.apply(begin, end, at);
        bool const same =
            applies == (got != nullptr) &&
            (got == nullptr ||
             std::u32string(got->text, got->length) == elements(want));
        if (!same && ++failures <= 10)
          ADD_FAILURE() << "\"" << language << "\" " << show(s) << " at "
                        << (at - begin);
      }
    }
  }
  EXPECT_EQ(failures, 0);
}

// An ASCII code point that a walk answers without asking the rows gets,
// in every language and whatever stands around it, what the plain walk
// gives it there.
TEST(AsciiAnswers, EveryAnswerIsThePlainWalkInAnyContext) {
  using zelvo::unicode::asciianswers::AsciiAnswers;
  using zelvo::unicode::casedirection::Direction;
  int failures = 0;
  for (std::string const& language : languages()) {
    zelvo::unicode::reachablerows::ReachableRows upperRows(
        gTransformTables.toUpperSpecialConditionMap, language);
    zelvo::unicode::reachablerows::ReachableRows lowerRows(
        gTransformTables.toLowerSpecialConditionMap, language);
    AsciiAnswers<Direction::kUpper> upper;
    AsciiAnswers<Direction::kLower> lower;
    for (char32_t c = 0; c < 0x80; ++c) {
      char32_t const upperAnswer = upper.answer(c, upperRows);
      char32_t const lowerAnswer = lower.answer(c, lowerRows);
      for (char32_t before : kPalette + U"\u0049")
        for (char32_t after : {0x0307u, 0x0301u, 0x0041u, 0x03A3u}) {
          String const around({before, c, after});
          std::u32string const plainUpper =
              elements(reference().upperFull(around, language));
          std::u32string const plainLower =
              elements(reference().lowerFull(around, language));
          String const justBefore(1, before);
          std::size_t const at =
              reference().upperFull(justBefore, language).size();
          std::size_t const lowerAt =
              reference().lowerFull(justBefore, language).size();
          bool const upperSame =
              upperAnswer == AsciiAnswers<Direction::kUpper>::kAsk ||
              plainUpper.substr(at, 1) == std::u32string(1, upperAnswer);
          bool const lowerSame =
              lowerAnswer == AsciiAnswers<Direction::kLower>::kAsk ||
              plainLower.substr(lowerAt, 1) == std::u32string(1, lowerAnswer);
          if (!(upperSame && lowerSame) && ++failures <= 10)
            ADD_FAILURE() << "\"" << language << "\" "
                          << show({before, c, after});
        }
    }
  }
  EXPECT_EQ(failures, 0);
}

}  // namespace
