// The facts of the tables that the shortcuts of the case operations rest on:
// ASCII, the runs of case/CaseRuns.h, and the code points that the
// conditional rows name. Each is checked against the loaded tables.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "case/CaseRuns.h"
#include "case/ConditionalRows.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace {

using zelvo::unicode::ConditionTable;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::caseruns::CaseRun;
using zelvo::unicode::caseruns::findRun;
using zelvo::unicode::caseruns::kRunCount;
using zelvo::unicode::caseruns::kRuns;

// The value of c's row, or c itself where it has none.
char32_t rowOf(std::map<char32_t, char32_t> const& table, char32_t c) {
  auto const found = table.find(c);
  return found == table.end() ? c : found->second;
}

char32_t foldRowOf(char32_t c) {
  auto const common = gTransformTables.cCaseFoldingMap.find(c);
  if (common != gTransformTables.cCaseFoldingMap.end()) return common->second;
  return rowOf(gTransformTables.sCaseFoldingMap, c);
}

// ---------------------------------------------------------------------------
// ASCII.

TEST(AsciiShortcut, SimpleRowsAreExactlyTheLettersOfTheOtherCase) {
  for (char32_t c = 0; c < 0x80; ++c) {
    bool const small = c >= U'a' && c <= U'z';
    bool const capital = c >= U'A' && c <= U'Z';
    ASSERT_EQ(gTransformTables.toUpperMap.count(c), small ? 1u : 0u) << c;
    ASSERT_EQ(gTransformTables.toLowerMap.count(c), capital ? 1u : 0u) << c;
    if (small) {
      EXPECT_EQ(gTransformTables.toUpperMap.at(c), c - 0x20);
    }
    if (capital) {
      EXPECT_EQ(gTransformTables.toLowerMap.at(c), c + 0x20);
    }
  }
}

TEST(AsciiShortcut, CommonFoldingRowsAreTheCapitalsAndNoSimpleRows) {
  for (char32_t c = 0; c < 0x80; ++c) {
    bool const capital = c >= U'A' && c <= U'Z';
    ASSERT_EQ(gTransformTables.cCaseFoldingMap.count(c), capital ? 1u : 0u)
        << c;
    if (capital) {
      EXPECT_EQ(gTransformTables.cCaseFoldingMap.at(c), c + 0x20);
    }
  }
  ASSERT_FALSE(gTransformTables.sCaseFoldingMap.empty());
  EXPECT_GE(gTransformTables.sCaseFoldingMap.begin()->first, 0x80u);
}

TEST(AsciiShortcut, NoUnconditionalFullRowBelow0080) {
  for (auto const* table : {&gTransformTables.toUpperSpecialMap,
                            &gTransformTables.toLowerSpecialMap}) {
    ASSERT_FALSE(table->empty());
    EXPECT_GE(table->begin()->first, 0x80u);
  }
}

TEST(AsciiShortcut, MembersAgreeWithTheTables) {
  for (char32_t c = 0; c < 0x80; ++c) {
    char32_t upper = c, lower = c, fold = c;
    gTransformTables.toUpper(upper);
    gTransformTables.toLower(lower);
    gTransformTables.simpleCaseFold(fold);
    EXPECT_EQ(upper, rowOf(gTransformTables.toUpperMap, c));
    EXPECT_EQ(lower, rowOf(gTransformTables.toLowerMap, c));
    EXPECT_EQ(fold, foldRowOf(c));
  }
}

// ---------------------------------------------------------------------------
// The runs.

TEST(CaseRuns, AreAscendingAndDisjoint) {
  ASSERT_GT(kRunCount, 0u);
  for (std::size_t i = 0; i < kRunCount; ++i) {
    EXPECT_LE(kRuns[i].first, kRuns[i].last) << i;
    if (i > 0) {
      EXPECT_GT(kRuns[i].first, kRuns[i - 1].last) << i;
    }
  }
}

TEST(CaseRuns, EveryCodePointOfEveryRunMovesAsTheTablesSay) {
  int failures = 0;
  for (std::size_t i = 0; i < kRunCount; ++i) {
    CaseRun const& run = kRuns[i];
    for (char32_t c = run.first; c <= run.last && c <= 0x10FFFF; ++c) {
      int const parity = c & 1;
      bool const ok =
          c + static_cast<char32_t>(run.upper[parity]) ==
              rowOf(gTransformTables.toUpperMap, c) &&
          c + static_cast<char32_t>(run.lower[parity]) ==
              rowOf(gTransformTables.toLowerMap, c) &&
          c + static_cast<char32_t>(run.fold[parity]) == foldRowOf(c);
      if (!ok && ++failures <= 10)
        ADD_FAILURE() << "run " << i << ": U+" << std::hex << c
                      << " does not move as its run says";
    }
  }
  EXPECT_EQ(failures, 0);
}

TEST(CaseRuns, NoUnconditionalFullRowLiesInARun) {
  for (auto const* table : {&gTransformTables.toUpperSpecialMap,
                            &gTransformTables.toLowerSpecialMap})
    for (auto const& row : *table)
      EXPECT_EQ(findRun(row.first), nullptr) << std::hex << row.first;
}

TEST(CaseRuns, NoTableHasAKeyAboveTheLastRun) {
  char32_t const last = kRuns[kRunCount - 1].last;
  EXPECT_LE(gTransformTables.toUpperMap.rbegin()->first, last);
  EXPECT_LE(gTransformTables.toLowerMap.rbegin()->first, last);
  EXPECT_LE(gTransformTables.cCaseFoldingMap.rbegin()->first, last);
  EXPECT_LE(gTransformTables.sCaseFoldingMap.rbegin()->first, last);
}

TEST(CaseRuns, FindRunFindsExactlyTheRunThatHoldsACodePoint) {
  std::size_t next = 0;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    while (next < kRunCount && kRuns[next].last < c) ++next;
    CaseRun const* expected =
        next < kRunCount && kRuns[next].first <= c ? &kRuns[next] : nullptr;
    ASSERT_EQ(findRun(c), expected) << std::hex << c;
  }
  EXPECT_EQ(findRun(0x110000), nullptr);
  EXPECT_EQ(findRun(0xFFFFFFFF), nullptr);
}

// ---------------------------------------------------------------------------
// The code points that conditional rows name. The walk asks the dispatcher
// only for these.

TEST(ConditionalRowShortcut, NamedCodePointsAreExactlyTheInnerKeys) {
  std::set<char32_t> inner;
  for (ConditionTable const* table :
       {&gTransformTables.toLowerSpecialConditionMap,
        &gTransformTables.toUpperSpecialConditionMap,
        &gTransformTables.toTitleSpecialConditionMap})
    for (auto const& keyed : *table)
      for (auto const& row : keyed.second) inner.insert(row.first);
  std::set<char32_t> named;
  for (char32_t c = 0; c <= 0x10FFFF; ++c)
    if (zelvo::unicode::conditionalrows::isNamed(c)) named.insert(c);
  EXPECT_EQ(named, inner);
  for (char32_t c : {0x110000u, 0xFFFFFFFFu, 0x80000049u})
    EXPECT_FALSE(zelvo::unicode::conditionalrows::isNamed(c));
}

using zelvo::unicode::conditionalrows::Reach;
using zelvo::unicode::conditionalrows::ReachableRows;

TEST(ConditionalRowShortcut, WithoutLanguageOnlyTheSigmaReachesARow) {
  std::string const language;
  ReachableRows rows(gTransformTables.toLowerSpecialConditionMap, language);
  EXPECT_EQ(rows.reach(0x03A3), Reach::kContext);
  for (char32_t c :
       {0x0049u, 0x004Au, 0x0069u, 0x00CCu, 0x0130u, 0x0307u, 0x0041u, 0x03C3u})
    EXPECT_EQ(rows.reach(c), Reach::kNone) << std::hex << c;
}

TEST(ConditionalRowShortcut, TurkishReachesItsLanguageAndContextRows) {
  std::string const language = "tr";
  ReachableRows rows(gTransformTables.toLowerSpecialConditionMap, language);
  EXPECT_EQ(rows.reach(0x0069), Reach::kLanguageOnly);
  EXPECT_EQ(rows.reach(0x0130), Reach::kLanguageOnly);
  EXPECT_EQ(rows.reach(0x0049), Reach::kContext);
  EXPECT_EQ(rows.reach(0x0307), Reach::kContext);
  EXPECT_EQ(rows.reach(0x03A3), Reach::kContext);
  EXPECT_EQ(rows.reach(0x00CC), Reach::kNone);
}

TEST(ConditionalRowShortcut, LanguageEqualToAKeyReachesItsRowsAsLanguageRows) {
  std::string const language = "lt After_Soft_Dotted";
  ReachableRows rows(gTransformTables.toUpperSpecialConditionMap, language);
  EXPECT_EQ(rows.reach(0x0307), Reach::kLanguageOnly);
  EXPECT_EQ(rows.reach(0x0049), Reach::kNone);
}

}  // namespace
