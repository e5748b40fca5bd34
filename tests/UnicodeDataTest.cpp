// The generated tables against the Unicode 7.0.0 files, read at run time from
// $ZELVO_UCD_DIR: every row of every filler, the row counts, first and last
// keys of the data set, and the marks that tell 7.0.0 from later versions.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "UnicodeDataFiles.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"
#include "transform/data/Fillers.h"

namespace {

namespace data = zelvo_private::unicode;
using namespace ucdtest;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;

using CharMap = std::map<char32_t, char32_t>;
using TextMap = std::map<char32_t, std::u32string>;
using CompatMap = std::map<char32_t, std::pair<std::u32string, std::string>>;
using ConditionRows =
    std::map<std::pair<std::string, char32_t>, std::u32string>;

#define READ_OR_FAIL(records, file)                                          \
  std::vector<Record> records;                                               \
  do {                                                                       \
    std::string path = dataFile(file);                                       \
    if (path.empty()) {                                                      \
      GTEST_FAIL() << file << " not found: ZELVO_UCD_DIR is unset or wrong"; \
    }                                                                        \
    records = readRecords(path);                                             \
  } while (false)

// ---------------------------------------------------------------------------
// What the files say, computed here from the parsed records.

// UnicodeData.txt: index of a field among those after the code point.
constexpr size_t kCombiningClass = 2;
constexpr size_t kDecomposition = 4;
constexpr size_t kUppercase = 11;
constexpr size_t kLowercase = 12;
constexpr size_t kTitlecase = 13;

CharMap simpleMappings(const std::vector<Record>& unicodeData, size_t field) {
  CharMap result;
  for (const Record& r : unicodeData) {
    if (!r.fields.at(field).empty()) {
      result[r.first] = parseCode(r.fields[field], "UnicodeData.txt");
    }
  }
  return result;
}

TextMap canonicalMappings(const std::vector<Record>& unicodeData) {
  TextMap result;
  for (const Record& r : unicodeData) {
    const std::string& d = r.fields.at(kDecomposition);
    if (!d.empty() && d[0] != '<') {
      result[r.first] = parseSequence(d, "UnicodeData.txt");
    }
  }
  return result;
}

CompatMap compatibilityMappings(const std::vector<Record>& unicodeData) {
  CompatMap result;
  for (const Record& r : unicodeData) {
    const std::string& d = r.fields.at(kDecomposition);
    if (!d.empty() && d[0] == '<') {
      size_t close = d.find('>');
      result[r.first] = {parseSequence(d.substr(close + 1), "UnicodeData.txt"),
                         d.substr(0, close + 1)};
    }
  }
  return result;
}

// SpecialCasing.txt: code; lower; title; upper; [condition;] # comment.
enum CaseField { kLower = 0, kTitle = 1, kUpper = 2 };

std::string conditionOf(const Record& r) {
  return r.fields.size() == 5 ? r.fields[3] : "";
}

TextMap unconditionalRows(const std::vector<Record>& specialCasing,
                          CaseField field) {
  TextMap result;
  for (const Record& r : specialCasing) {
    if (conditionOf(r).empty()) {
      result[r.first] = parseSequence(r.fields.at(field), "SpecialCasing.txt");
    }
  }
  return result;
}

ConditionRows conditionalRows(const std::vector<Record>& specialCasing,
                              CaseField field) {
  ConditionRows result;
  for (const Record& r : specialCasing) {
    if (!conditionOf(r).empty()) {
      result[{conditionOf(r), r.first}] =
          parseSequence(r.fields.at(field), "SpecialCasing.txt");
    }
  }
  return result;
}

// CaseFolding.txt: code; status; mapping; # comment.
TextMap foldingRows(const std::vector<Record>& caseFolding,
                    const std::string& status) {
  TextMap result;
  for (const Record& r : caseFolding) {
    if (r.fields.at(0) == status) {
      result[r.first] = parseSequence(r.fields.at(1), "CaseFolding.txt");
    }
  }
  return result;
}

CharMap singleCodePoints(const TextMap& rows) {
  CharMap result;
  for (const auto& row : rows) {
    EXPECT_EQ(row.second.size(), 1u) << hex(row.first);
    result[row.first] = row.second.at(0);
  }
  return result;
}

// A property file: code; property[; value] # comment.
Ranges propertyRanges(const std::vector<Record>& records,
                      const std::string& property,
                      const std::string& value = "") {
  Ranges spans;
  for (const Record& r : records) {
    if (r.fields.at(0) == property &&
        (value.empty() || (r.fields.size() > 1 && r.fields[1] == value))) {
      spans.push_back({r.first, r.last});
    }
  }
  return mergeSpans(spans);
}

// ---------------------------------------------------------------------------
// What the fillers add, each to a fresh container.

CharMap filled(void (*filler)(std::map<char32_t, char32_t>&)) {
  CharMap m;
  filler(m);
  return m;
}

TextMap filled(void (*filler)(std::map<char32_t, String>&)) {
  std::map<char32_t, String> m;
  filler(m);
  return texts(m);
}

Ranges filled(void (*filler)(std::vector<std::pair<char32_t, char32_t>>&)) {
  Ranges v;
  filler(v);
  return v;
}

ConditionRows filled(void (*filler)(zelvo::unicode::ConditionTable&)) {
  zelvo::unicode::ConditionTable m;
  filler(m);
  ConditionRows result;
  for (const auto& outer : m) {
    for (const auto& inner : outer.second) {
      result[{outer.first, inner.first}] = text(inner.second);
    }
  }
  return result;
}

CompatMap compatTexts(
    const std::map<char32_t, std::pair<String, std::string>>& m) {
  CompatMap result;
  for (const auto& row : m) {
    result[row.first] = {text(row.second.first), row.second.second};
  }
  return result;
}

CompatMap filledCompat(
    void (*filler)(std::map<char32_t, std::pair<String, std::string>>&)) {
  std::map<char32_t, std::pair<String, std::string>> m;
  filler(m);
  return compatTexts(m);
}

// Ranges strictly ascending, and no two touching.
std::string rangeShapeProblems(const Ranges& ranges) {
  std::string problems;
  for (size_t i = 0; i < ranges.size(); ++i) {
    if (ranges[i].first > ranges[i].second) {
      problems += " backwards at " + hex(ranges[i].first);
    }
    if (i > 0 && ranges[i].first <= ranges[i - 1].second + 1) {
      problems += " touches its predecessor at " + hex(ranges[i].first);
    }
  }
  return problems;
}

// ---------------------------------------------------------------------------
// Simple case mappings.

TEST(UnicodeDataTest, SimpleUppercaseRowsAreField12OfUnicodeData) {
  READ_OR_FAIL(ud, "UnicodeData.txt");
  CharMap expected = simpleMappings(ud, kUppercase);
  EXPECT_EQ(rowDifferences(filled(data::initToUpper), expected), "");
  EXPECT_EQ(filled(data::initToUpper).size(), 1100u);
}

TEST(UnicodeDataTest, SimpleLowercaseRowsAreField13OfUnicodeData) {
  READ_OR_FAIL(ud, "UnicodeData.txt");
  CharMap expected = simpleMappings(ud, kLowercase);
  EXPECT_EQ(rowDifferences(filled(data::initToLower), expected), "");
  EXPECT_EQ(filled(data::initToLower).size(), 1092u);
}

TEST(UnicodeDataTest, SimpleTitlecaseRowsAreField14OfUnicodeData) {
  READ_OR_FAIL(ud, "UnicodeData.txt");
  CharMap expected = simpleMappings(ud, kTitlecase);
  EXPECT_EQ(rowDifferences(filled(data::initToTitle), expected), "");
  EXPECT_EQ(filled(data::initToTitle).size(), 1104u);
}

TEST(UnicodeDataTest, SimpleUpperAndLowerMapNoCodePointToItself) {
  for (const CharMap& m :
       {filled(data::initToUpper), filled(data::initToLower)}) {
    for (const auto& row : m) {
      EXPECT_NE(row.first, row.second) << hex(row.first);
    }
  }
}

TEST(UnicodeDataTest, SimpleTitlecaseKeepsItsFourIdentityRows) {
  std::set<char32_t> identities;
  for (const auto& row : filled(data::initToTitle)) {
    if (row.first == row.second) {
      identities.insert(row.first);
    }
  }
  EXPECT_EQ(identities, (std::set<char32_t>{0x01C5, 0x01C8, 0x01CB, 0x01F2}));
  EXPECT_EQ(filled(data::initToTitle).at(0x01C5), 0x01C5u);
}

TEST(UnicodeDataTest, SimpleMappingsHaveNoRowsAddedAfter7) {
  CharMap upper = filled(data::initToUpper);
  CharMap lower = filled(data::initToLower);
  EXPECT_EQ(lower.count(0x13A0), 0u);
  EXPECT_EQ(upper.count(0x10D0), 0u);
  for (char32_t c : {0x019B, 0x0264, 0x026A, 0x0282, 0x029D}) {
    EXPECT_EQ(upper.count(c), 0u) << hex(c);
  }
}

// ---------------------------------------------------------------------------
// Full case mappings.

TEST(UnicodeDataTest, UnconditionalFullMappingsAreTheFieldsOfSpecialCasing) {
  READ_OR_FAIL(sc, "SpecialCasing.txt");
  EXPECT_EQ(rowDifferences(filled(data::initToUpperSpecial),
                           unconditionalRows(sc, kUpper)),
            "");
  EXPECT_EQ(rowDifferences(filled(data::initToLowerSpecial),
                           unconditionalRows(sc, kLower)),
            "");
  EXPECT_EQ(rowDifferences(filled(data::initToTitleSpecial),
                           unconditionalRows(sc, kTitle)),
            "");
}

TEST(UnicodeDataTest, UnconditionalFullMappingsShareTheir103Keys) {
  std::set<char32_t> upper, lower, title;
  for (const auto& row : filled(data::initToUpperSpecial))
    upper.insert(row.first);
  for (const auto& row : filled(data::initToLowerSpecial))
    lower.insert(row.first);
  for (const auto& row : filled(data::initToTitleSpecial))
    title.insert(row.first);
  EXPECT_EQ(upper.size(), 103u);
  EXPECT_EQ(lower, upper);
  EXPECT_EQ(title, upper);
  for (auto filler : {data::initToUpperSpecial, data::initToLowerSpecial,
                      data::initToTitleSpecial}) {
    for (const auto& row : filled(filler)) {
      EXPECT_GE(row.second.size(), 1u) << hex(row.first);
      EXPECT_LE(row.second.size(), 3u) << hex(row.first);
    }
  }
}

size_t identityRows(const TextMap& m) {
  size_t count = 0;
  for (const auto& row : m) {
    count += row.second == std::u32string(1, row.first);
  }
  return count;
}

TEST(UnicodeDataTest, UnconditionalFullMappingsKeepIdentityRows) {
  TextMap upper = filled(data::initToUpperSpecial);
  TextMap lower = filled(data::initToLowerSpecial);
  TextMap title = filled(data::initToTitleSpecial);
  EXPECT_EQ(identityRows(upper), 1u);
  EXPECT_EQ(upper.at(0x0130), U"\u0130");
  EXPECT_EQ(identityRows(lower), 75u);
  EXPECT_EQ(lower.at(0x00DF), U"\u00DF");
  EXPECT_EQ(identityRows(title), 28u);
  EXPECT_EQ(title.at(0x0130), U"\u0130");
  EXPECT_EQ(title.at(0x1F88), U"\u1F88");
}

TEST(UnicodeDataTest, SharpSUppercasesToTwoCapitalS) {
  EXPECT_EQ(filled(data::initToUpperSpecial).at(0x00DF), U"SS");
}

TEST(UnicodeDataTest, ConditionalFullMappingsAreTheFieldsOfSpecialCasing) {
  READ_OR_FAIL(sc, "SpecialCasing.txt");
  EXPECT_EQ(rowDifferences(filled(data::initToUpperSpecialCondition),
                           conditionalRows(sc, kUpper)),
            "");
  EXPECT_EQ(rowDifferences(filled(data::initToLowerSpecialCondition),
                           conditionalRows(sc, kLower)),
            "");
  EXPECT_EQ(rowDifferences(filled(data::initToTitleSpecialCondition),
                           conditionalRows(sc, kTitle)),
            "");
}

TEST(UnicodeDataTest, ConditionTablesHaveTenConditionsAndSixteenRows) {
  const std::map<std::string, std::set<char32_t>> expected = {
      {"Final_Sigma", {0x03A3}},
      {"az", {0x0069, 0x0130}},
      {"az After_I", {0x0307}},
      {"az Not_Before_Dot", {0x0049}},
      {"lt", {0x00CC, 0x00CD, 0x0128}},
      {"lt After_Soft_Dotted", {0x0307}},
      {"lt More_Above", {0x0049, 0x004A, 0x012E}},
      {"tr", {0x0069, 0x0130}},
      {"tr After_I", {0x0307}},
      {"tr Not_Before_Dot", {0x0049}},
  };
  for (auto filler :
       {data::initToUpperSpecialCondition, data::initToLowerSpecialCondition,
        data::initToTitleSpecialCondition}) {
    zelvo::unicode::ConditionTable table;
    filler(table);
    std::map<std::string, std::set<char32_t>> keys;
    size_t rows = 0;
    for (const auto& outer : table) {
      for (const auto& inner : outer.second) {
        keys[outer.first].insert(inner.first);
        ++rows;
      }
    }
    EXPECT_EQ(keys, expected);
    EXPECT_EQ(rows, 16u);
  }
}

TEST(UnicodeDataTest, EmptyConditionalFieldIsAnEntryWithAnEmptyValue) {
  ConditionRows upper = filled(data::initToUpperSpecialCondition);
  ConditionRows lower = filled(data::initToLowerSpecialCondition);
  ConditionRows title = filled(data::initToTitleSpecialCondition);
  ASSERT_EQ(lower.count({"tr After_I", 0x0307}), 1u);
  EXPECT_TRUE(lower.at({"tr After_I", 0x0307}).empty());
  EXPECT_TRUE(lower.at({"az After_I", 0x0307}).empty());
  EXPECT_TRUE(upper.at({"lt After_Soft_Dotted", 0x0307}).empty());
  EXPECT_TRUE(title.at({"lt After_Soft_Dotted", 0x0307}).empty());
  size_t empty = 0;
  for (const ConditionRows* rows : {&upper, &lower, &title}) {
    for (const auto& row : *rows) {
      empty += row.second.empty();
    }
  }
  EXPECT_EQ(empty, 4u);
}

// ---------------------------------------------------------------------------
// Case folding.

TEST(UnicodeDataTest, FoldingTablesAreTheFourStatusesOfCaseFolding) {
  READ_OR_FAIL(cf, "CaseFolding.txt");
  EXPECT_EQ(rowDifferences(filled(data::initCCaseFolding),
                           singleCodePoints(foldingRows(cf, "C"))),
            "");
  EXPECT_EQ(rowDifferences(filled(data::initSCaseFolding),
                           singleCodePoints(foldingRows(cf, "S"))),
            "");
  EXPECT_EQ(rowDifferences(filled(data::initTCaseFolding),
                           singleCodePoints(foldingRows(cf, "T"))),
            "");
  EXPECT_EQ(
      rowDifferences(filled(data::initFCaseFolding), foldingRows(cf, "F")), "");
}

TEST(UnicodeDataTest, FoldingTablesHaveTheirRowCounts) {
  EXPECT_EQ(filled(data::initCCaseFolding).size(), 1076u);
  EXPECT_EQ(filled(data::initSCaseFolding).size(), 28u);
  EXPECT_EQ(filled(data::initTCaseFolding).size(), 2u);
  EXPECT_EQ(filled(data::initFCaseFolding).size(), 104u);
}

TEST(UnicodeDataTest, TurkicFoldingHasExactlyTheTwoDotlessRows) {
  EXPECT_EQ(filled(data::initTCaseFolding),
            (CharMap{{0x0049, 0x0131}, {0x0130, 0x0069}}));
}

TEST(UnicodeDataTest, FullFoldingValuesHaveTwoOrThreeCodePoints) {
  for (const auto& row : filled(data::initFCaseFolding)) {
    EXPECT_GE(row.second.size(), 2u) << hex(row.first);
    EXPECT_LE(row.second.size(), 3u) << hex(row.first);
  }
}

TEST(UnicodeDataTest, ACodePointMayFoldInSeveralTables) {
  EXPECT_EQ(filled(data::initTCaseFolding).count(0x0130), 1u);
  EXPECT_EQ(filled(data::initFCaseFolding).count(0x0130), 1u);
  EXPECT_EQ(filled(data::initSCaseFolding).count(0x1E9E), 1u);
  EXPECT_EQ(filled(data::initFCaseFolding).count(0x1E9E), 1u);
}

TEST(UnicodeDataTest, FoldingHasNoSimpleRowsAddedAfter7) {
  CharMap c = filled(data::initCCaseFolding);
  CharMap s = filled(data::initSCaseFolding);
  TextMap f = filled(data::initFCaseFolding);
  for (char32_t cp : {0x1FD3, 0x1FE3, 0xFB05}) {
    EXPECT_EQ(c.count(cp), 0u) << hex(cp);
    EXPECT_EQ(s.count(cp), 0u) << hex(cp);
    EXPECT_EQ(f.count(cp), 1u) << hex(cp);
  }
}

// ---------------------------------------------------------------------------
// Decomposition mappings.

TEST(UnicodeDataTest, CanonicalRowsAreTheUntaggedMappingsOfUnicodeData) {
  READ_OR_FAIL(ud, "UnicodeData.txt");
  TextMap actual = filled(data::initDecomposition);
  EXPECT_EQ(rowDifferences(actual, canonicalMappings(ud)), "");
  ASSERT_EQ(actual.size(), 2060u);
  EXPECT_EQ(actual.begin()->first, 0x00C0u);
  EXPECT_EQ(actual.rbegin()->first, 0x2FA1Du);
}

TEST(UnicodeDataTest, CanonicalRowsHoldOneOrTwoCodePoints) {
  size_t ones = 0, twos = 0;
  for (const auto& row : filled(data::initDecomposition)) {
    ones += row.second.size() == 1;
    twos += row.second.size() == 2;
  }
  EXPECT_EQ(ones, 1035u);
  EXPECT_EQ(twos, 1025u);
}

TEST(UnicodeDataTest, HangulSyllablesHaveNoCanonicalRow) {
  TextMap m = filled(data::initDecomposition);
  EXPECT_EQ(m.lower_bound(0xAC00), m.upper_bound(0xD7A3));
}

TEST(UnicodeDataTest, AngstromSignMapsToRingedAOneLevelOnly) {
  std::map<char32_t, String> raw;
  data::initDecomposition(raw);
  ASSERT_EQ(raw.count(0x212B), 1u);
  EXPECT_EQ(text(raw.at(0x212B)), U"\u00C5");
}

// The pieces of a table, each filled into a fresh map.
template <typename Map>
std::vector<Map> piecesOf(std::vector<void (*)(Map&)> const& pieces) {
  std::vector<Map> result;
  for (auto piece : pieces) {
    result.emplace_back();
    piece(result.back());
  }
  return result;
}

template <typename Map>
void expectCutByCount(const std::vector<Map>& pieces, size_t rowsAPiece,
                      size_t lastPieceRows, char32_t first, char32_t last) {
  for (size_t i = 0; i + 1 < pieces.size(); ++i) {
    EXPECT_EQ(pieces[i].size(), rowsAPiece) << "piece " << i + 1;
    ASSERT_FALSE(pieces[i + 1].empty());
    EXPECT_LT(pieces[i].rbegin()->first, pieces[i + 1].begin()->first)
        << "pieces " << i + 1 << " and " << i + 2 << " overlap";
  }
  EXPECT_EQ(pieces.back().size(), lastPieceRows);
  EXPECT_EQ(pieces.front().begin()->first, first);
  EXPECT_EQ(pieces.back().rbegin()->first, last);
}

TEST(UnicodeDataTest, CanonicalRowsAreCutIntoTenPiecesOf206) {
  auto pieces = piecesOf<std::map<char32_t, String>>(
      {data::initDecompositionPart1, data::initDecompositionPart2,
       data::initDecompositionPart3, data::initDecompositionPart4,
       data::initDecompositionPart5, data::initDecompositionPart6,
       data::initDecompositionPart7, data::initDecompositionPart8,
       data::initDecompositionPart9, data::initDecompositionPart10});
  expectCutByCount(pieces, 206, 206, 0x00C0, 0x2FA1D);
  TextMap joined;
  for (const auto& piece : pieces) {
    TextMap t = texts(piece);
    joined.insert(t.begin(), t.end());
  }
  EXPECT_EQ(joined, filled(data::initDecomposition));
}

TEST(UnicodeDataTest, CompatibilityRowsAreTheTaggedMappingsOfUnicodeData) {
  READ_OR_FAIL(ud, "UnicodeData.txt");
  CompatMap actual = filledCompat(data::initCompatibiltyDecomposition);
  EXPECT_EQ(rowDifferences(actual, compatibilityMappings(ud)), "");
  ASSERT_EQ(actual.size(), 3661u);
  EXPECT_EQ(actual.begin()->first, 0x00A0u);
  EXPECT_EQ(actual.rbegin()->first, 0x1F251u);
}

TEST(UnicodeDataTest, CompatibilityTagsAreStoredForEveryRow) {
  std::map<std::string, size_t> tags;
  size_t longest = 0;
  for (const auto& row : filledCompat(data::initCompatibiltyDecomposition)) {
    ++tags[row.second.second];
    longest = std::max(longest, row.second.first.size());
  }
  const std::map<std::string, size_t> expected = {
      {"<font>", 1184},   {"<compat>", 720},  {"<square>", 284},
      {"<final>", 240},   {"<circle>", 240},  {"<isolated>", 238},
      {"<initial>", 171}, {"<fraction>", 20}, {"<super>", 152},
      {"<narrow>", 122},  {"<wide>", 104},    {"<medial>", 82},
      {"<sub>", 38},      {"<vertical>", 35}, {"<small>", 26},
      {"<noBreak>", 5}};
  EXPECT_EQ(tags, expected);
  EXPECT_EQ(longest, 18u);
}

TEST(UnicodeDataTest, CompatibilityRowsAreCutIntoTenPiecesOf366AndOneOfOne) {
  auto pieces = piecesOf<std::map<char32_t, std::pair<String, std::string>>>(
      {data::initCompatibiltyDecompositionPart1,
       data::initCompatibiltyDecompositionPart2,
       data::initCompatibiltyDecompositionPart3,
       data::initCompatibiltyDecompositionPart4,
       data::initCompatibiltyDecompositionPart5,
       data::initCompatibiltyDecompositionPart6,
       data::initCompatibiltyDecompositionPart7,
       data::initCompatibiltyDecompositionPart8,
       data::initCompatibiltyDecompositionPart9,
       data::initCompatibiltyDecompositionPart10,
       data::initCompatibiltyDecompositionPart11});
  expectCutByCount(pieces, 366, 1, 0x00A0, 0x1F251);
  CompatMap joined;
  for (const auto& piece : pieces) {
    CompatMap t = compatTexts(piece);
    joined.insert(t.begin(), t.end());
  }
  EXPECT_EQ(joined, filledCompat(data::initCompatibiltyDecomposition));
}

// ---------------------------------------------------------------------------
// Range lists.

struct RangeListCase {
  const char* name;
  void (*filler)(std::vector<std::pair<char32_t, char32_t>>&);
  size_t ranges;
  size_t codePoints;
  Range first;
  Range last;
};

void expectRangeList(const RangeListCase& c, const Ranges& expected) {
  Ranges actual = filled(c.filler);
  EXPECT_EQ(rangeDifferences(actual, expected), "") << c.name;
  EXPECT_EQ(rangeShapeProblems(actual), "") << c.name;
  ASSERT_EQ(actual.size(), c.ranges) << c.name;
  EXPECT_EQ(codePointCount(actual), c.codePoints) << c.name;
  EXPECT_EQ(actual.front(), c.first) << c.name;
  EXPECT_EQ(actual.back(), c.last) << c.name;
}

TEST(UnicodeDataTest, CasedRangesAreThoseOfDerivedCoreProperties) {
  READ_OR_FAIL(core, "DerivedCoreProperties.txt");
  expectRangeList({"initCased",
                   data::initCased,
                   127,
                   3671,
                   {0x0041, 0x005A},
                   {0x1F170, 0x1F189}},
                  propertyRanges(core, "Cased"));
}

TEST(UnicodeDataTest, CaseIgnorableRangesAreThoseOfDerivedCoreProperties) {
  READ_OR_FAIL(core, "DerivedCoreProperties.txt");
  expectRangeList({"initCaseIgnorable",
                   data::initCaseIgnorable,
                   335,
                   1961,
                   {0x0027, 0x0027},
                   {0xE0100, 0xE01EF}},
                  propertyRanges(core, "Case_Ignorable"));
}

TEST(UnicodeDataTest, CasePropertiesAreThoseOf7) {
  Ranges cased = filled(data::initCased);
  Ranges ignorable = filled(data::initCaseIgnorable);
  EXPECT_FALSE(contains(cased, 0x10D0));
  EXPECT_FALSE(contains(cased, 0x13A0));
  EXPECT_TRUE(contains(ignorable, 0x1734));
  for (char32_t c : {0x055F, 0x1885, 0x1886, 0xA9BD}) {
    EXPECT_FALSE(contains(ignorable, c)) << hex(c);
  }
}

// Derived here from DerivedGeneralCategory.txt, a different route from the
// generator's, which reads UnicodeData.txt.
TEST(UnicodeDataTest, ValidRangesAreEveryCategoryButCnCoAndCs) {
  READ_OR_FAIL(categories, "DerivedGeneralCategory.txt");
  Ranges spans;
  for (const Record& r : categories) {
    const std::string& category = r.fields.at(0);
    if (category != "Cn" && category != "Co" && category != "Cs") {
      spans.push_back({r.first, r.last});
    }
  }
  expectRangeList({"initValidRanges",
                   data::initValidRanges,
                   598,
                   113021,
                   {0x0000, 0x0377},
                   {0xE0100, 0xE01EF}},
                  mergeSpans(spans));
}

TEST(UnicodeDataTest, ValidRangesLeaveOutNoncharacters) {
  Ranges valid = filled(data::initValidRanges);
  for (char32_t c = 0xFDD0; c <= 0xFDEF; ++c) {
    EXPECT_FALSE(contains(valid, c)) << hex(c);
  }
  for (char32_t plane = 0; plane <= 0x10; ++plane) {
    EXPECT_FALSE(contains(valid, plane * 0x10000 + 0xFFFE)) << plane;
    EXPECT_FALSE(contains(valid, plane * 0x10000 + 0xFFFF)) << plane;
  }
}

TEST(UnicodeDataTest, QuickCheckRangesAreThoseOfDerivedNormalizationProps) {
  READ_OR_FAIL(props, "DerivedNormalizationProps.txt");
  const Range last = {0x2F800, 0x2FA1D};
  expectRangeList({"initNFD_QC_NoRanges",
                   data::initNFD_QC_NoRanges,
                   231,
                   13232,
                   {0x00C0, 0x00C5},
                   last},
                  propertyRanges(props, "NFD_QC", "N"));
  expectRangeList({"initNFC_QC_NoRanges",
                   data::initNFC_QC_NoRanges,
                   73,
                   1120,
                   {0x0340, 0x0341},
                   last},
                  propertyRanges(props, "NFC_QC", "N"));
  expectRangeList({"initNFC_QC_MaybeRanges",
                   data::initNFC_QC_MaybeRanges,
                   41,
                   110,
                   {0x0300, 0x0304},
                   {0x115AF, 0x115AF}},
                  propertyRanges(props, "NFC_QC", "M"));
  expectRangeList({"initNFKD_QC_NoRanges",
                   data::initNFKD_QC_NoRanges,
                   390,
                   16893,
                   {0x00A0, 0x00A0},
                   last},
                  propertyRanges(props, "NFKD_QC", "N"));
  expectRangeList({"initNFKC_QC_NoRanges",
                   data::initNFKC_QC_NoRanges,
                   249,
                   4793,
                   {0x00A0, 0x00A0},
                   last},
                  propertyRanges(props, "NFKC_QC", "N"));
  expectRangeList({"initNFKC_QC_MaybeRanges",
                   data::initNFKC_QC_MaybeRanges,
                   41,
                   110,
                   {0x0300, 0x0304},
                   {0x115AF, 0x115AF}},
                  propertyRanges(props, "NFKC_QC", "M"));
}

TEST(UnicodeDataTest, HangulSyllablesAreOneRangeOnlyInTheDecomposedNoLists) {
  const Range syllables = {0xAC00, 0xD7A3};
  auto has = [&](const Ranges& v) {
    return std::find(v.begin(), v.end(), syllables) != v.end();
  };
  EXPECT_TRUE(has(filled(data::initNFD_QC_NoRanges)));
  EXPECT_TRUE(has(filled(data::initNFKD_QC_NoRanges)));
  EXPECT_FALSE(contains(filled(data::initNFC_QC_NoRanges), 0xAC00));
  EXPECT_FALSE(contains(filled(data::initNFKC_QC_NoRanges), 0xAC00));
}

TEST(UnicodeDataTest, ComposedMaybeListsAreIdenticalAndLeaveOut11A7) {
  Ranges nfc = filled(data::initNFC_QC_MaybeRanges);
  EXPECT_EQ(nfc, filled(data::initNFKC_QC_MaybeRanges));
  EXPECT_NE(std::find(nfc.begin(), nfc.end(), Range{0x1161, 0x1175}),
            nfc.end());
  EXPECT_NE(std::find(nfc.begin(), nfc.end(), Range{0x11A8, 0x11C2}),
            nfc.end());
  EXPECT_FALSE(contains(nfc, 0x11A7));
}

TEST(UnicodeDataTest, DecomposedMaybeFillersLeaveTheirArgumentAlone) {
  const Ranges before = {{0x0041, 0x0041}, {0x0300, 0x0304}};
  Ranges nfd = before;
  data::initNFD_QC_MaybeRanges(nfd);
  EXPECT_EQ(nfd, before);
  Ranges nfkd = before;
  data::initNFKD_QC_MaybeRanges(nfkd);
  EXPECT_EQ(nfkd, before);
  EXPECT_TRUE(filled(data::initNFD_QC_MaybeRanges).empty());
  EXPECT_TRUE(filled(data::initNFKD_QC_MaybeRanges).empty());
}

// ---------------------------------------------------------------------------
// The three tables that methods fill straight into the table set.

TEST(UnicodeDataTest, WeightMapIsTheNonZeroCombiningClasses) {
  READ_OR_FAIL(ud, "UnicodeData.txt");
  std::map<char32_t, int> expected;
  for (const Record& r : ud) {
    int ccc = std::stoi(r.fields.at(kCombiningClass));
    if (ccc != 0) {
      expected[r.first] = ccc;
    }
  }
  const auto& weights = gTransformTables.weightMap;
  EXPECT_EQ(rowDifferences(weights, expected), "");
  ASSERT_EQ(weights.size(), 745u);
  EXPECT_EQ(weights.begin()->first, 0x0300u);
}

TEST(UnicodeDataTest, WeightMapHas54ClassesFrom1To240) {
  std::set<int> classes;
  for (const auto& row : gTransformTables.weightMap) {
    classes.insert(row.second);
  }
  EXPECT_EQ(classes.size(), 54u);
  EXPECT_EQ(*classes.begin(), 1);
  EXPECT_EQ(*classes.rbegin(), 240);
  EXPECT_EQ(gTransformTables.weightMap.at(0x0345), 240);
  EXPECT_EQ(gTransformTables.weightMap.count(0x0041), 0u);
}

TEST(UnicodeDataTest, CompositionExclusionsAreTheListedCodePoints) {
  READ_OR_FAIL(exclusions, "CompositionExclusions.txt");
  std::set<char32_t> expected;
  for (const Record& r : exclusions) {
    for (char32_t c = r.first; c <= r.last; ++c) {
      expected.insert(c);
    }
  }
  const auto& actual = gTransformTables.compositionExclusions;
  EXPECT_EQ(actual, expected);
  ASSERT_EQ(actual.size(), 81u);
  EXPECT_EQ(*actual.begin(), 0x0958u);
  EXPECT_EQ(*actual.rbegin(), 0x1D1C0u);
}

TEST(UnicodeDataTest, SoftDottedRangesAreThoseOfPropList) {
  READ_OR_FAIL(props, "PropList.txt");
  const Ranges& actual = gTransformTables.softDottedRanges;
  EXPECT_EQ(rangeDifferences(actual, propertyRanges(props, "Soft_Dotted")), "");
  EXPECT_EQ(rangeShapeProblems(actual), "");
  ASSERT_EQ(actual.size(), 31u);
  EXPECT_EQ(codePointCount(actual), 46u);
  EXPECT_EQ(actual.front(), Range(0x0069, 0x006A));
  EXPECT_EQ(actual.back(), Range(0x1D692, 0x1D693));
}

}  // namespace
