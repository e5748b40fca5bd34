// The normal form check of the tool, fed a text in pieces, gives the
// library's answer for the whole text: on texts built to put the checks'
// state at a cut, cut at every place the tool may cut and at some of them,
// and on the facts of the data that what it carries across a cut leans on.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "Invocation.h"
#include "NormalFormCheck.h"
#include "ToolTemptingText.h"
#include "Unicode.h"

namespace {

using namespace zelvo::unicode;
using zelvo::tool::NormalFormCheck;
using zelvo_tool_test::allowedCuts;
using zelvo_tool_test::names;

struct Form {
  const char* name;
  bool (*check)(const String&);
  String (*normalize)(const String&);
};

const Form kForms[] = {{"nfc", isNFC, toNFC},
                       {"nfd", isNFD, toNFD},
                       {"nfkc", isNFKC, toNFKC},
                       {"nfkd", isNFKD, toNFKD}};

// Feeds the text cut at `cuts` (ascending places) and gives the answer.
bool checkInPieces(const Form& form, const String& text,
                   const std::vector<std::size_t>& cuts) {
  NormalFormCheck check(form.name);
  std::size_t from = 0;
  for (std::size_t cut : cuts) {
    check.feed(text.substr(from, cut - from));
    from = cut;
  }
  check.feed(text.substr(from));
  return check.answer();
}

// The text and its four normal forms, each checked in pieces: cut at every
// place the tool may cut, and at a random choice of them.
void expectTheWholeAnswer(const String& text, std::mt19937& random) {
  const zelvo::tool::Invocation inv;
  for (const Form& normalizer : kForms) {
    for (const String& input : {text, normalizer.normalize(text)}) {
      std::vector<std::size_t> every =
          allowedCuts(input, zelvo::tool::cutForNormalForms, inv);
      std::vector<std::size_t> some;
      for (std::size_t cut : every) {
        if (random() % 3 == 0) some.push_back(cut);
      }
      for (const Form& form : kForms) {
        bool want = form.check(input);
        EXPECT_EQ(checkInPieces(form, input, every), want)
            << form.name << " cut everywhere:" << names(input);
        EXPECT_EQ(checkInPieces(form, input, some), want)
            << form.name << " cut at some places:" << names(input);
      }
    }
  }
}

TEST(ToolNormalFormCheck, PiecesOfTemptingTextGiveTheWholeAnswer) {
  std::mt19937 random(7);
  for (std::size_t glue = 0; glue < zelvo_tool_test::kGlue.size(); ++glue) {
    expectTheWholeAnswer(
        zelvo_tool_test::joined(zelvo_tool_test::everyPiece(), glue), random);
  }
}

TEST(ToolNormalFormCheck, PiecesOfRandomTextsGiveTheWholeAnswer) {
  std::mt19937 random(70);
  for (int round = 0; round < 300; ++round) {
    expectTheWholeAnswer(zelvo_tool_test::randomTemptingText(random, 7),
                         random);
  }
}

TEST(ToolNormalFormCheck, DecomposedChecksCarryAClassAcrossPieces) {
  // U+0345 (class 240) is still in mind when U+0315 (class 232) comes, with
  // only code points below the checks' thresholds between them.
  const String text(std::u32string(U"\u0345 ab \u0315"));
  ASSERT_TRUE(isNFD(text.substr(0, 4)) && isNFD(text.substr(4)));
  ASSERT_FALSE(isNFD(text));
  ASSERT_FALSE(isNFKD(text));
  // A starter that the checks look at ends what is carried.
  const String reset(std::u32string(U"\u0345 \u4E00 \u0315"));
  ASSERT_TRUE(isNFD(reset) && isNFKD(reset));
  for (const Form& form : {kForms[1], kForms[3]}) {
    EXPECT_FALSE(checkInPieces(form, text, {1, 2, 3, 4, 5})) << form.name;
    EXPECT_TRUE(checkInPieces(form, reset, {1, 2, 3, 4})) << form.name;
  }
}

TEST(ToolNormalFormCheck, ComposedChecksCompareTheWholeTextAtAMaybe) {
  // U+093C is a Maybe code point; U+AC00 U+11A7 is changed by composition
  // without any No or Maybe code point in it.
  const String text(std::u32string(U"\u0915\u093C \u4E00\uAC00\u11A7"));
  ASSERT_TRUE(isNFC(text.substr(0, 3)) && isNFC(text.substr(3)));
  ASSERT_FALSE(isNFC(text));
  ASSERT_FALSE(isNFKC(text));
  EXPECT_FALSE(checkInPieces(kForms[0], text, {3}));
  EXPECT_FALSE(checkInPieces(kForms[2], text, {3}));
  EXPECT_FALSE(checkInPieces(kForms[0], String(text.substr(3) + text), {2}));
}

// What the decomposed checks carry, the tool learns by asking them with the
// mark of the lowest class that they take alone behind the last mark; that
// works because they see every mark, wherever it stands.
TEST(ToolNormalFormCheck, DecomposedChecksSeeEveryMark) {
  for (const Form& form : {kForms[1], kForms[3]}) {
    char32_t lowest = 0;
    int lowestClass = 1000;
    for (const auto& weight : gTransformTables.weightMap) {
      if (weight.second < lowestClass && form.check(String(1, weight.first))) {
        lowest = weight.first;
        lowestClass = weight.second;
      }
    }
    ASSERT_NE(lowest, 0u);
    for (const auto& weight : gTransformTables.weightMap) {
      const String mark(1, weight.first);
      if (weight.second < lowestClass) {
        // Refused alone, and so wherever it stands.
        EXPECT_FALSE(form.check(String(std::u32string(U"a ")) + mark));
      } else if (weight.second > lowestClass && form.check(mark)) {
        EXPECT_FALSE(form.check(mark + String(1, lowest)))
            << form.name << names(mark);
        EXPECT_FALSE(form.check(mark + String(std::u32string(U"a ")) +
                                String(1, lowest)))
            << form.name << names(mark);
      }
    }
  }
}

TEST(ToolNormalFormCheck, EmptyTextIsInEveryForm) {
  for (const Form& form : kForms) {
    NormalFormCheck check(form.name);
    EXPECT_TRUE(check.answer());
    EXPECT_TRUE(check.feed(String()));
  }
}

TEST(ToolNormalFormCheck, UnknownFormIsAUsageError) {
  EXPECT_THROW(NormalFormCheck("nfx"), zelvo::tool::UsageError);
}

}  // namespace
