// The tool's cut rules, tried directly: at every place that a rule allows,
// the two pieces, each mapped on its own, give what the whole text gives,
// on texts built to put the library's rules at a cut and on random texts of
// the code points those rules care for. Also the facts of the data that the
// rules lean on, the tool's statement of where the decoders' sequences end,
// and that real text has places to cut.
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "Invocation.h"
#include "Stream.h"
#include "TextCuts.h"
#include "ToolProcess.h"
#include "ToolTemptingText.h"
#include "Unicode.h"

namespace {

using namespace zelvo::unicode;
using zelvo::tool::CutRule;
using zelvo::tool::Invocation;

using zelvo_tool_test::allowedCuts;
using zelvo_tool_test::joined;
using zelvo_tool_test::kGlue;
using zelvo_tool_test::names;

using Mapping = std::function<String(const String&)>;

// At every place the rule allows, the pieces give what the whole gives.
void expectPiecesGiveTheWhole(const String& text, CutRule rule,
                              const Invocation& inv, const Mapping& map,
                              const std::string& what) {
  const String whole = map(text);
  for (std::size_t i : allowedCuts(text, rule, inv)) {
    EXPECT_TRUE(map(text.substr(0, i)) + map(text.substr(i)) == whole)
        << what << ", cut before " << i << " in" << names(text);
  }
}

Invocation withLanguage(const std::string& language, bool simple = false) {
  Invocation inv;
  inv.language = language;
  inv.languageGiven = !language.empty();
  inv.simple = simple;
  return inv;
}

void expectNormalFormsAgree(const String& text) {
  const Invocation inv;
  auto rule = zelvo::tool::cutForNormalForms;
  expectPiecesGiveTheWhole(text, rule, inv, toNFD, "toNFD");
  expectPiecesGiveTheWhole(text, rule, inv, toNFC, "toNFC");
  expectPiecesGiveTheWhole(text, rule, inv, toNFKD, "toNFKD");
  expectPiecesGiveTheWhole(text, rule, inv, toNFKC, "toNFKC");
}

// The languages with rows, and texts equal to keys of the tables, whose
// rows then apply without their condition.
const std::vector<std::string> kLanguages = {"",
                                             "tr",
                                             "az",
                                             "lt",
                                             "Final_Sigma",
                                             "tr Not_Before_Dot",
                                             "az After_I",
                                             "lt After_Soft_Dotted",
                                             "lt More_Above"};

void expectCasingAgrees(const String& text) {
  for (const std::string& language : kLanguages) {
    const Invocation inv = withLanguage(language);
    auto rule = zelvo::tool::cutForCasing;
    expectPiecesGiveTheWhole(
        text, rule, inv,
        [&](const String& s) { return toUpperFull(s, language); },
        "toUpperFull " + language);
    expectPiecesGiveTheWhole(
        text, rule, inv,
        [&](const String& s) { return toLowerFull(s, language); },
        "toLowerFull " + language);
  }
}

TEST(ToolTextCuts, NormalFormsAgreeAtEveryCutOfTemptingText) {
  for (std::size_t glue = 0; glue < kGlue.size(); ++glue) {
    expectNormalFormsAgree(joined(zelvo_tool_test::everyPiece(), glue));
  }
}

TEST(ToolTextCuts, CasingAgreesAtEveryCutOfTemptingText) {
  for (std::size_t glue = 0; glue < kGlue.size(); ++glue) {
    expectCasingAgrees(joined(zelvo_tool_test::everyPiece(), glue));
  }
}

TEST(ToolTextCuts, EveryRuleAgreesAtEveryCutOfRandomTexts) {
  std::mt19937 random(20150616);
  for (int round = 0; round < 150; ++round) {
    const String text = zelvo_tool_test::randomTemptingText(random, 13);
    expectNormalFormsAgree(text);
    expectCasingAgrees(text);
  }
}

TEST(ToolTextCuts, SimpleCaseMappingMayBeCutAnywhere) {
  const Invocation simple = withLanguage("", true);
  const String text = joined(zelvo_tool_test::everyPiece(), 0);
  EXPECT_EQ(allowedCuts(text, zelvo::tool::cutForCasing, simple).size(),
            text.size() - 1);
  expectPiecesGiveTheWhole(
      text, zelvo::tool::cutForCasing, simple,
      [](const String& s) { return toUpperSimple(s); }, "toUpperSimple");
}

TEST(ToolTextCuts, RulesRefuseThePlacesWhereTheWholeDiffers) {
  const Invocation inv;
  auto normal = zelvo::tool::cutForNormalForms;
  auto casing = zelvo::tool::cutForCasing;
  EXPECT_FALSE(normal(U'e', 0x0301, inv));    // a mark composes
  EXPECT_FALSE(normal(0x1161, 0x11A7, inv));  // U+11A7 is swallowed
  EXPECT_FALSE(normal(0x1100, 0x1161, inv));  // L V composes
  EXPECT_FALSE(normal(0x0B47, 0x0B3E, inv));  // two starters compose
  EXPECT_FALSE(normal(0xD800, U' ', inv));    // no code point before
  EXPECT_FALSE(casing(0x03A3, U'.', inv));    // case-ignorable after sigma
  EXPECT_FALSE(casing(U'.', U' ', inv));      // ...and before a blank
  EXPECT_FALSE(casing(U'I', U' ', inv));      // I has conditional rows
  EXPECT_FALSE(casing(U'a', 0x0323, inv));    // a mark
  EXPECT_FALSE(casing(0x1D165, U'x', inv));   // a mark, not case-ignorable
  EXPECT_TRUE(normal(U'a', U' ', inv));
  EXPECT_TRUE(casing(U'a', U' ', inv));
}

// toNFC starts from the text itself where isNFD says yes, from toNFD where
// it says no; the normal form rule takes the two to agree.
TEST(ToolTextCuts, DecomposedCheckSaysYesOnlyToTextThatToNfdLeavesAlone) {
  std::vector<char32_t> marks;
  for (const auto& weight : gTransformTables.weightMap) {
    marks.push_back(weight.first);
  }
  for (char32_t c = 0; c <= 0x110000; ++c) {
    const String one(1, c);
    if (isNFD(one)) {
      ASSERT_TRUE(toNFD(one) == one) << names(one);
    }
  }
  for (char32_t a : marks) {
    for (char32_t b : marks) {
      const String two{a, b};
      if (isNFD(two)) {
        ASSERT_TRUE(toNFD(two) == two) << names(two);
      }
    }
  }
}

// So memory stays bounded on real text: the first 100 KB of each language
// of the corpus hold a place to cut at least every hundred code points.
TEST(ToolTextCuts, RealTextHasPlacesToCutForEveryRule) {
  const Invocation inv;
  for (const auto& file : zelvo_tool_test::corpusFiles(".utf8.txt")) {
    String text(file.bytes.substr(0, 100000));
    for (CutRule rule :
         {zelvo::tool::cutForNormalForms, zelvo::tool::cutForCasing}) {
      std::size_t last = 0, longest = 0;
      for (std::size_t i : allowedCuts(text, rule, inv)) {
        longest = std::max(longest, i - last);
        last = i;
      }
      EXPECT_LT(longest, 100u) << file.name << ": " << longest;
    }
  }
}

TEST(ToolSequences, Utf8SequenceEndsWhereTheDecoderEndsIt) {
  for (int lead = 0; lead < 256; ++lead) {
    const std::string first(1, static_cast<char>(lead));
    const std::size_t units = zelvo::tool::utf8SequenceUnits(first.data());
    for (char follower :
         {'A', '\x00', '\x80', '\xBF', '\xC3', '\xF0', '\xFF'}) {
      const std::string sequence = first + std::string(units - 1, follower);
      // Nothing behind the sequence is taken into it, and all of it is
      // needed: a sequence cut short gives nothing.
      EXPECT_TRUE(String(sequence + "A") ==
                  String(sequence) + String(std::string("A")))
          << "lead " << lead;
      if (units > 1) {
        EXPECT_TRUE(String(sequence.substr(0, units - 1)).empty())
            << "lead " << lead;
      }
    }
    // Every byte behind the lead is taken: no 'A' comes out on its own.
    EXPECT_LE(String(first + std::string(units - 1, 'A')).size(), 1u)
        << "lead " << lead;
  }
}

TEST(ToolSequences, Utf16SequenceEndsWhereTheDecoderEndsIt) {
  for (char32_t value = 0; value <= 0xFFFF; ++value) {
    const char16_t unit = static_cast<char16_t>(value);
    const std::size_t units =
        zelvo::tool::utf16SequenceUnits(reinterpret_cast<const char*>(&unit));
    const std::u16string sequence =
        std::u16string(1, unit) + std::u16string(units - 1, u'A');
    ASSERT_EQ(String(sequence).size(), 1u) << std::hex << value;
    ASSERT_TRUE(String(sequence + u"A") ==
                String(sequence) + String(std::u16string(u"A")))
        << std::hex << value;
    if (units > 1) {
      ASSERT_TRUE(String(std::u16string(1, unit)).empty());
    }
  }
}

}  // namespace
