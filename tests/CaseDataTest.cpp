// The case operations against the Unicode 7.0.0 files themselves, read here
// from $ZELVO_UCD_DIR: UnicodeData.txt for the simple mappings,
// SpecialCasing.txt for the full ones, CaseFolding.txt for folding. Every
// code point 0 to 0x10FFFF is checked, and a few values above it.
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace {

using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;

constexpr char32_t kLastCodePoint = 0x10FFFF;
// Above the code space, some with a letter in their low bits.
std::vector<char32_t> const kAboveRange = {0x110000,   0x110041,   0x1000061,
                                           0x7FFFFFFF, 0x80000041, 0xFFFFFFFF};

// ---------------------------------------------------------------------------
// Reading the files.

std::string trim(std::string const& s) {
  std::size_t const first = s.find_first_not_of(" \t");
  if (first == std::string::npos) return "";
  std::size_t const last = s.find_last_not_of(" \t\r");
  return s.substr(first, last - first + 1);
}

// The fields of a data line, without its comment.
std::vector<std::string> fields(std::string const& line) {
  std::vector<std::string> parts;
  std::string const data = line.substr(0, line.find('#'));
  std::size_t start = 0;
  for (;;) {
    std::size_t const semicolon = data.find(';', start);
    parts.push_back(trim(data.substr(start, semicolon - start)));
    if (semicolon == std::string::npos) break;
    start = semicolon + 1;
  }
  return parts;
}

std::u32string codePoints(std::string const& text) {
  std::u32string result;
  std::istringstream in(text);
  std::string hex;
  while (in >> hex)
    result.push_back(static_cast<char32_t>(std::stoul(hex, nullptr, 16)));
  return result;
}

std::string show(std::u32string const& s) {
  std::ostringstream out;
  for (std::size_t i = 0; i < s.size(); ++i)
    out << (i ? " " : "") << "U+" << std::uppercase << std::hex << std::setw(4)
        << std::setfill('0') << static_cast<unsigned long>(s[i]);
  return s.empty() ? "(empty)" : out.str();
}

std::string show(char32_t c) { return show(std::u32string(1, c)); }

std::u32string elements(String const& s) {
  return std::u32string(s.begin(), s.end());
}

struct SpecialCasingRow {
  int line;
  char32_t codePoint;
  std::u32string lower, title, upper;
  std::string condition;  // empty for an unconditional row
};

struct CaseFoldingRow {
  int line;
  char32_t codePoint;
  char status;
  std::u32string mapping;
};

struct UnicodeFiles {
  bool found = false;
  std::string missing;
  // Fields 12, 13 and 14 of UnicodeData.txt, where not empty.
  std::map<char32_t, char32_t> upper, lower, title;
  std::vector<SpecialCasingRow> specialCasing;
  std::vector<CaseFoldingRow> caseFolding;
};

bool open(std::string const& name, std::ifstream& in, UnicodeFiles& files) {
  char const* dir = std::getenv("ZELVO_UCD_DIR");
  if (dir == nullptr) {
    files.missing = "ZELVO_UCD_DIR is not set";
    return false;
  }
  in.open(std::string(dir) + "/" + name);
  if (!in) {
    files.missing = std::string(dir) + "/" + name + " cannot be read";
    return false;
  }
  return true;
}

UnicodeFiles readFiles() {
  UnicodeFiles files;
  std::ifstream unicodeData, specialCasing, caseFolding;
  if (!open("UnicodeData.txt", unicodeData, files) ||
      !open("SpecialCasing.txt", specialCasing, files) ||
      !open("CaseFolding.txt", caseFolding, files))
    return files;

  std::string line;
  while (std::getline(unicodeData, line)) {
    std::vector<std::string> const f = fields(line);
    if (f.size() < 15) continue;
    char32_t const c = codePoints(f[0])[0];
    if (!f[12].empty()) files.upper[c] = codePoints(f[12])[0];
    if (!f[13].empty()) files.lower[c] = codePoints(f[13])[0];
    if (!f[14].empty()) files.title[c] = codePoints(f[14])[0];
  }
  int number = 0;
  while (std::getline(specialCasing, line)) {
    ++number;
    std::vector<std::string> const f = fields(line);
    if (f.size() < 5) continue;
    files.specialCasing.push_back(
        {number, codePoints(f[0])[0], codePoints(f[1]), codePoints(f[2]),
         codePoints(f[3]), f.size() > 5 ? f[4] : std::string()});
  }
  number = 0;
  while (std::getline(caseFolding, line)) {
    ++number;
    std::vector<std::string> const f = fields(line);
    if (f.size() < 4) continue;
    files.caseFolding.push_back(
        {number, codePoints(f[0])[0], f[1][0], codePoints(f[2])});
  }
  files.found = true;
  return files;
}

class CaseData : public testing::Test {
 protected:
  static void SetUpTestSuite() { files_ = new UnicodeFiles(readFiles()); }
  static void TearDownTestSuite() {
    delete files_;
    files_ = nullptr;
  }
  void SetUp() override {
    if (!files_->found) GTEST_FAIL() << files_->missing;
  }
  static UnicodeFiles const& files() { return *files_; }

  // The simple mapping that UnicodeData.txt gives c: the field, or c itself.
  static char32_t simple(std::map<char32_t, char32_t> const& field,
                         char32_t c) {
    auto const found = field.find(c);
    return found == field.end() ? c : found->second;
  }

  // Counts failures and reports the first few of them.
  void fail(int& failures, std::string const& what) {
    if (++failures <= 20) ADD_FAILURE() << what;
  }

 private:
  static UnicodeFiles* files_;
};

UnicodeFiles* CaseData::files_ = nullptr;

// Every code point and the values above the code space.
template <typename Check>
void everyValue(Check check) {
  for (char32_t c = 0; c <= kLastCodePoint; ++c) check(c);
  for (char32_t c : kAboveRange) check(c);
}

// ---------------------------------------------------------------------------
// Simple mappings.

TEST_F(CaseData, FilesHaveTheExpectedRows) {
  EXPECT_EQ(files().upper.size(), 1100u);
  EXPECT_EQ(files().lower.size(), 1092u);
  EXPECT_EQ(files().title.size(), 1104u);
  EXPECT_EQ(files().specialCasing.size(), 119u);
  EXPECT_EQ(files().caseFolding.size(), 1210u);
}

TEST_F(CaseData, SimpleUpperOfEveryCodePoint) {
  int failures = 0;
  everyValue([&](char32_t c) {
    char32_t const want = simple(files().upper, c);
    char32_t const got = zelvo::unicode::toUpperSimple(c);
    if (got != want)
      fail(failures, "toUpperSimple(" + show(c) + ") = " + show(got) +
                         " want " + show(want));
  });
  EXPECT_EQ(failures, 0);
}

TEST_F(CaseData, SimpleLowerOfEveryCodePoint) {
  int failures = 0;
  everyValue([&](char32_t c) {
    char32_t const want = simple(files().lower, c);
    char32_t const got = zelvo::unicode::toLowerSimple(c);
    if (got != want)
      fail(failures, "toLowerSimple(" + show(c) + ") = " + show(got) +
                         " want " + show(want));
  });
  EXPECT_EQ(failures, 0);
}

TEST_F(CaseData, SimpleTitleOfEveryCodePoint) {
  int failures = 0;
  everyValue([&](char32_t c) {
    char32_t const want = simple(files().title, c);
    char32_t const got = zelvo::unicode::toTitleSimple(c);
    if (got != want)
      fail(failures, "toTitleSimple(" + show(c) + ") = " + show(got) +
                         " want " + show(want));
  });
  EXPECT_EQ(failures, 0);
}

// The String forms map each element as the code point forms do.
TEST_F(CaseData, SimpleMappingOfAStringOfEveryCodePoint) {
  std::u32string all;
  everyValue([&](char32_t c) { all.push_back(c); });
  std::u32string wantUpper, wantLower;
  for (char32_t c : all) {
    wantUpper.push_back(simple(files().upper, c));
    wantLower.push_back(simple(files().lower, c));
  }
  EXPECT_TRUE(elements(zelvo::unicode::toUpperSimple(String(all))) ==
              wantUpper);
  EXPECT_TRUE(elements(zelvo::unicode::toLowerSimple(String(all))) ==
              wantLower);
}

// ---------------------------------------------------------------------------
// Full mappings of one code point.

TEST_F(CaseData, UnconditionalRowsThroughTheOneCodePointMembers) {
  int failures = 0;
  int rows = 0;
  for (SpecialCasingRow const& row : files().specialCasing) {
    if (!row.condition.empty()) continue;
    ++rows;
    std::string const where = "line " + std::to_string(row.line) + ": ";
    std::u32string const upper =
        elements(gTransformTables.toUpperFull(row.codePoint));
    std::u32string const lower =
        elements(gTransformTables.toLowerFull(row.codePoint));
    std::u32string const title =
        elements(gTransformTables.toTitleFull(row.codePoint, ""));
    if (upper != row.upper)
      fail(failures, where + "toUpperFull(" + show(row.codePoint) +
                         ") = " + show(upper) + " want " + show(row.upper));
    if (lower != row.lower)
      fail(failures, where + "toLowerFull(" + show(row.codePoint) +
                         ") = " + show(lower) + " want " + show(row.lower));
    if (title != row.title)
      fail(failures, where + "toTitleFull(" + show(row.codePoint) +
                         ") = " + show(title) + " want " + show(row.title));
  }
  EXPECT_EQ(rows, 103);
  EXPECT_EQ(failures, 0);
}

// The same rows through the free functions, which walk a String of one.
TEST_F(CaseData, UnconditionalRowsThroughTheFreeFunctions) {
  int failures = 0;
  for (SpecialCasingRow const& row : files().specialCasing) {
    if (!row.condition.empty()) continue;
    std::string const where = "line " + std::to_string(row.line) + ": ";
    std::u32string const upper =
        elements(zelvo::unicode::toUppperFull(row.codePoint, ""));
    std::u32string const lower =
        elements(zelvo::unicode::toLowerFull(row.codePoint, ""));
    std::u32string const title =
        elements(zelvo::unicode::toTitleFull(row.codePoint, ""));
    if (upper != row.upper || lower != row.lower || title != row.title)
      fail(failures, where + show(row.codePoint) + " gives " + show(upper) +
                         ", " + show(lower) + ", " + show(title));
  }
  EXPECT_EQ(failures, 0);
}

// A code point without an unconditional row takes its simple mapping.
TEST_F(CaseData, EveryOtherCodePointFullMapsAsSimple) {
  std::set<char32_t> special;
  for (SpecialCasingRow const& row : files().specialCasing)
    if (row.condition.empty()) special.insert(row.codePoint);
  int failures = 0;
  everyValue([&](char32_t c) {
    if (special.count(c) != 0) return;
    std::u32string const upper(1, simple(files().upper, c));
    std::u32string const lower(1, simple(files().lower, c));
    std::u32string const title(1, simple(files().title, c));
    if (elements(gTransformTables.toUpperFull(c)) != upper ||
        elements(gTransformTables.toLowerFull(c)) != lower ||
        elements(gTransformTables.toTitleFull(c, "")) != title)
      fail(failures, "full mapping of " + show(c) +
                         " differs from the simple " + show(upper) + ", " +
                         show(lower) + ", " + show(title));
  });
  EXPECT_EQ(failures, 0);
}

// Without a language, a one-element walk is the one-code-point member: no
// conditional row applies to a code point alone.
TEST_F(CaseData, OneElementWalkWithoutLanguageIsTheMember) {
  int failures = 0;
  everyValue([&](char32_t c) {
    if (elements(zelvo::unicode::toUppperFull(c, "")) !=
            elements(gTransformTables.toUpperFull(c)) ||
        elements(zelvo::unicode::toLowerFull(c, "")) !=
            elements(gTransformTables.toLowerFull(c)))
      fail(failures, "the walk over " + show(c) + " differs from the member");
  });
  EXPECT_EQ(failures, 0);
}

// One walk over a String of every code point gives what the member gives
// for each of them: without a language, no conditional row applies here
// (U+03A3 follows U+03A2, which is not cased).
TEST_F(CaseData, FullMappingOfAStringOfEveryCodePoint) {
  std::u32string all;
  everyValue([&](char32_t c) { all.push_back(c); });
  std::u32string wantUpper, wantLower;
  for (char32_t c : all) {
    wantUpper += elements(gTransformTables.toUpperFull(c));
    wantLower += elements(gTransformTables.toLowerFull(c));
  }
  EXPECT_TRUE(elements(zelvo::unicode::toUpperFull(String(all), "")) ==
              wantUpper);
  EXPECT_TRUE(elements(zelvo::unicode::toLowerFull(String(all), "")) ==
              wantLower);
}

// Rows whose condition is a language alone hold for a code point alone.
TEST_F(CaseData, LanguageRowsThroughTheFreeFunctions) {
  int failures = 0;
  int rows = 0;
  for (SpecialCasingRow const& row : files().specialCasing) {
    if (row.condition.empty() || row.condition.find(' ') != std::string::npos ||
        row.condition == "Final_Sigma")
      continue;
    ++rows;
    std::string const& language = row.condition;
    std::string const where = "line " + std::to_string(row.line) + ": ";
    std::u32string const upper =
        elements(zelvo::unicode::toUppperFull(row.codePoint, language));
    std::u32string const lower =
        elements(zelvo::unicode::toLowerFull(row.codePoint, language));
    std::u32string const title =
        elements(zelvo::unicode::toTitleFull(row.codePoint, language));
    if (upper != row.upper || lower != row.lower || title != row.title)
      fail(failures, where + language + " " + show(row.codePoint) + " gives " +
                         show(upper) + ", " + show(lower) + ", " + show(title) +
                         " want " + show(row.upper) + ", " + show(row.lower) +
                         ", " + show(row.title));
  }
  EXPECT_EQ(rows, 7);
  EXPECT_EQ(failures, 0);
}

// A language is compared byte for byte: capitals, a region or nothing at
// all select no row. The contexts put each code point that a language row
// names next to the marks and letters that its conditions look at.
TEST_F(CaseData, LanguagesAreComparedByteForByte) {
  std::map<std::string, std::set<char32_t>> named;
  for (SpecialCasingRow const& row : files().specialCasing)
    if (!row.condition.empty() && row.condition != "Final_Sigma")
      named[row.condition.substr(0, row.condition.find(' '))].insert(
          row.codePoint);
  ASSERT_EQ(named.size(), 3u);

  auto texts = [](char32_t c) {
    return std::vector<std::u32string>{
        {c}, {0x0049, c}, {c, 0x0301}, {c, 0x0307}, {c, 0x0323, 0x0301}};
  };
  auto mappings = [](std::u32string const& s, std::string const& language) {
    String const text(s);
    return elements(zelvo::unicode::toLowerFull(text, language)) + U"|" +
           elements(zelvo::unicode::toUpperFull(text, language)) + U"|" +
           elements(zelvo::unicode::toTitleFull(s[0], language));
  };

  int failures = 0;
  for (auto const& entry : named) {
    std::string const& language = entry.first;
    std::string capitals = language;
    for (char& letter : capitals) letter = static_cast<char>(letter - 0x20);
    std::vector<std::string> const others = {
        capitals, language + "-" + capitals, language + "_" + capitals,
        capitals.substr(0, 1) + language.substr(1), language + " "};
    int changes = 0;
    for (char32_t c : entry.second)
      for (std::u32string const& s : texts(c)) {
        std::u32string const none = mappings(s, "");
        if (mappings(s, language) != none) ++changes;
        for (std::string const& other : others)
          if (mappings(s, other) != none)
            fail(failures, "\"" + other + "\" selects a row for " + show(s));
      }
    EXPECT_GT(changes, 0) << language << " itself must select rows";
  }
  EXPECT_EQ(failures, 0);
}

// ---------------------------------------------------------------------------
// Folding.

TEST_F(CaseData, CommonAndSimpleFoldingRows) {
  int failures = 0;
  int rows = 0;
  for (CaseFoldingRow const& row : files().caseFolding) {
    if (row.status != 'C' && row.status != 'S') continue;
    ++rows;
    char32_t const got = zelvo::unicode::simpleCaseFold(row.codePoint);
    if (std::u32string(1, got) != row.mapping)
      fail(failures, "line " + std::to_string(row.line) + ": simpleCaseFold(" +
                         show(row.codePoint) + ") = " + show(got) + " want " +
                         show(row.mapping));
  }
  EXPECT_EQ(rows, 1076 + 28);
  EXPECT_EQ(failures, 0);
}

TEST_F(CaseData, EveryOtherCodePointFoldsToItself) {
  std::set<char32_t> folded;
  for (CaseFoldingRow const& row : files().caseFolding)
    if (row.status == 'C' || row.status == 'S') folded.insert(row.codePoint);
  int failures = 0;
  everyValue([&](char32_t c) {
    if (folded.count(c) != 0) return;
    char32_t const got = zelvo::unicode::simpleCaseFold(c);
    if (got != c)
      fail(failures, "simpleCaseFold(" + show(c) + ") = " + show(got) +
                         ", but the code point has no C or S row");
  });
  EXPECT_EQ(failures, 0);
}

}  // namespace
