// NormalizationTest.txt of Unicode 7.0.0, streamed line by line through the
// four normal forms and the four quick checks, and every code point that the
// file does not list checked to be left alone.
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "NormalizationTestSupport.h"
#include "transform/UnicodeOperations.h"

namespace {

using zelvo::unicode::String;
using zelvo_test::hex;

// A check on one line of the file that our required behaviour makes differ
// from the file's expectation, and why.
struct ExpectedDifference {
  int line;
  const char* check;  // as in the failure message: "isNFD(c1)"
  const char* reason;
};

// None, with the 7.0.0 file. The behaviours that part from the standard do
// not show on any of its lines: no line puts U+11A7 behind a leading
// consonant and a vowel (composition swallows it); no line has a mark of
// higher class, then a code point below U+00C0, then a mark of lower class
// (isNFD and isNFKD carry the class across such a code point and answer
// false); and no pair of the data lets the one-code-point blocking rule
// differ from the standard's. A difference that appears is a failure, and a
// line listed here that stops differing is one too.
const std::vector<ExpectedDifference> kExpectedDifferences = {};

struct Line {
  int number;
  std::array<String, 5> columns;
};

// One failing check: "line N: toNFC(c1) = ... want ...".
struct Difference {
  int line;
  std::string check;
  std::string message;
};

class NormalizationConformanceTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    const std::string path = zelvo_test::ucdFile("NormalizationTest.txt");
    if (path.empty()) return;
    std::ifstream in(path);
    std::string text;
    int number = 0;
    int part = -1;
    while (std::getline(in, text)) {
      ++number;
      if (text.empty() || text[0] == '#') continue;
      if (text[0] == '@') {
        part = std::stoi(text.substr(5));
        continue;
      }
      const std::vector<std::string> fields = zelvo_test::splitFields(text);
      ASSERT_GE(fields.size(), 5u) << "line " << number;
      Line line;
      line.number = number;
      for (size_t k = 0; k < 5; ++k)
        line.columns[k] = zelvo_test::fromHex(fields[k]);
      if (part == 1) listed_->insert(line.columns[0][0]);
      lines_->push_back(std::move(line));
    }
    found_ = true;
  }

  void SetUp() override {
    if (!found_)
      GTEST_FAIL() << "NormalizationTest.txt not found under $ZELVO_UCD_DIR";
  }

  // Reports every difference that is not expected, and every expected one
  // that did not happen, with the counts of the family of checks.
  static void compare(const std::vector<Difference>& differences,
                      const std::string& family, size_t checks) {
    std::set<std::pair<int, std::string>> expected;
    for (const ExpectedDifference& known : kExpectedDifferences)
      if (known.check != nullptr &&
          std::string(known.check).compare(0, family.size(), family) == 0)
        expected.insert({known.line, known.check});

    size_t unexpected = 0;
    std::set<std::pair<int, std::string>> seen;
    for (const Difference& difference : differences) {
      seen.insert({difference.line, difference.check});
      if (expected.count({difference.line, difference.check}) == 0) {
        ++unexpected;
        ADD_FAILURE() << difference.message;
      }
    }
    size_t vanished = 0;
    for (const auto& known : expected)
      if (seen.count(known) == 0) {
        ++vanished;
        ADD_FAILURE() << "line " << known.first << ": " << known.second
                      << " is listed as differing by design but agrees";
      }
    std::cout << "[ " << family << " ] " << lines_->size() << " lines, "
              << checks << " checks, " << checks - differences.size()
              << " agree with the file, " << differences.size() - unexpected
              << " differ by design, " << unexpected << " unexpected, "
              << vanished << " listed but agreeing\n";
    EXPECT_EQ(unexpected, 0u);
    EXPECT_EQ(vanished, 0u);
  }

  static std::vector<Line>* lines_;
  static std::set<char32_t>* listed_;
  static bool found_;
};

std::vector<Line>* NormalizationConformanceTest::lines_ = new std::vector<Line>;
std::set<char32_t>* NormalizationConformanceTest::listed_ =
    new std::set<char32_t>;
bool NormalizationConformanceTest::found_ = false;

using Normalizer = String (*)(String const&);
using Checker = bool (*)(String const&);

TEST_F(NormalizationConformanceTest, NormalFormsOfEveryLine) {
  struct Form {
    const char* name;
    Normalizer normalize;
    // The column that holds the form of each column.
    std::array<int, 5> want;
  };
  const Form forms[] = {
      {"toNFC", zelvo::unicode::toNFC, {1, 1, 1, 3, 3}},
      {"toNFD", zelvo::unicode::toNFD, {2, 2, 2, 4, 4}},
      {"toNFKC", zelvo::unicode::toNFKC, {3, 3, 3, 3, 3}},
      {"toNFKD", zelvo::unicode::toNFKD, {4, 4, 4, 4, 4}},
  };
  std::vector<Difference> differences;
  size_t checks = 0;
  for (const Line& line : *lines_)
    for (const Form& form : forms)
      for (int k = 0; k < 5; ++k) {
        ++checks;
        const String got = form.normalize(line.columns[k]);
        const String& want = line.columns[form.want[k]];
        if (got == want) continue;
        const std::string check =
            std::string(form.name) + "(c" + std::to_string(k + 1) + ")";
        differences.push_back({line.number, check,
                               "line " + std::to_string(line.number) + ": " +
                                   form.name + "(" + hex(line.columns[k]) +
                                   ") = " + hex(got) + " want " + hex(want) +
                                   " [" + check + "]"});
      }
  compare(differences, "to", checks);
}

TEST_F(NormalizationConformanceTest, QuickChecksOfEveryColumn) {
  struct Check {
    const char* name;
    Checker check;
    std::array<int, 5> form;
  };
  const Check quickChecks[] = {
      {"isNFC", zelvo::unicode::isNFC, {1, 1, 1, 3, 3}},
      {"isNFD", zelvo::unicode::isNFD, {2, 2, 2, 4, 4}},
      {"isNFKC", zelvo::unicode::isNFKC, {3, 3, 3, 3, 3}},
      {"isNFKD", zelvo::unicode::isNFKD, {4, 4, 4, 4, 4}},
  };
  std::vector<Difference> differences;
  size_t checks = 0;
  for (const Line& line : *lines_)
    for (const Check& quick : quickChecks)
      for (int k = 0; k < 5; ++k) {
        ++checks;
        const String& column = line.columns[k];
        const bool want = column == line.columns[quick.form[k]];
        const bool got = quick.check(column);
        if (got == want) continue;
        const std::string check =
            std::string(quick.name) + "(c" + std::to_string(k + 1) + ")";
        differences.push_back(
            {line.number, check,
             "line " + std::to_string(line.number) + ": " + quick.name + "(" +
                 hex(column) + ") = " + (got ? "true" : "false") + " want " +
                 (want ? "true" : "false") + " [" + check + "]"});
      }
  compare(differences, "is", checks);
}

TEST_F(NormalizationConformanceTest, CodePointsTheFileDoesNotListAreUnchanged) {
  // Every value up to U+10FFFF, assigned or not, surrogates included: none
  // of them has data unless the @Part1 section of the file lists it.
  size_t failures = 0;
  size_t checked = 0;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (listed_->count(c) != 0) continue;
    ++checked;
    const String x{c};
    const std::pair<const char*, String> results[] = {
        {"toNFC", zelvo::unicode::toNFC(x)},
        {"toNFD", zelvo::unicode::toNFD(x)},
        {"toNFKC", zelvo::unicode::toNFKC(x)},
        {"toNFKD", zelvo::unicode::toNFKD(x)},
    };
    for (const auto& result : results)
      if (result.second != x) {
        ++failures;
        ADD_FAILURE() << result.first << "(" << hex(x)
                      << ") = " << hex(result.second) << " want " << hex(x);
      }
    const std::pair<const char*, bool> answers[] = {
        {"isNFC", zelvo::unicode::isNFC(x)},
        {"isNFD", zelvo::unicode::isNFD(x)},
        {"isNFKC", zelvo::unicode::isNFKC(x)},
        {"isNFKD", zelvo::unicode::isNFKD(x)},
    };
    for (const auto& answer : answers)
      if (!answer.second) {
        ++failures;
        ADD_FAILURE() << answer.first << "(" << hex(x) << ") = false want true";
      }
  }
  std::cout << "[ unlisted ] " << checked << " code points not in @Part1, "
            << checked * 8 << " checks, " << failures << " failures\n";
  EXPECT_EQ(checked, 0x110000u - listed_->size());
  EXPECT_EQ(failures, 0u);
}

TEST_F(NormalizationConformanceTest, FileHasAllItsParts) {
  EXPECT_GT(lines_->size(), 18000u);
  EXPECT_GT(listed_->size(), 16000u);
  EXPECT_EQ(listed_->count(0xAC00), 1u);
  EXPECT_EQ(listed_->count(0x0041), 0u);
}

}  // namespace
