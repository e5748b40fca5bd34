// The generated normalization data of transform/NormalizationData.h against
// the tables of gTransformTables, for every code point, and the facts of the
// data that the fast paths of the normal forms lean on.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "NormalizationTestSupport.h"
#include "normalization/DataSources.h"
#include "normalization/Forms.h"
#include "normalization/WrittenThresholds.h"
#include "reference/NormalizationReference.h"
#include "transform/NormalizationData.h"
#include "transform/UnicodeOperations.h"

namespace {

namespace data = zelvo::unicode::normalizationdata;
using zelvo::unicode::CanonicalForm;
using zelvo::unicode::CompatibilityForm;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::HangulConstants;
using zelvo::unicode::rangeContains;
using zelvo::unicode::Role;
using zelvo::unicode::String;

String toString(data::Expansion e) {
  String s;
  for (unsigned k = 0; k < e.length; ++k) s.push_back(e.data[k]);
  return s;
}

bool hasWeight(char32_t c) { return gTransformTables.weightMap.count(c) != 0; }

bool isSyllable(char32_t c) { return c >= 0xAC00 && c <= 0xD7A3; }

const std::set<char32_t>& secondElements() {
  static const std::set<char32_t> all = [] {
    std::set<char32_t> seconds;
    for (const auto& entry : gTransformTables.compositionMap)
      seconds.insert(entry.first[1]);
    return seconds;
  }();
  return all;
}

// What toNFKD makes of c, sorting aside, by the maps.
String nfkdOf(char32_t c) {
  const auto& compat = gTransformTables.compatDecompositionMap;
  const auto canonical = gTransformTables.decompositionMap.find(c);
  if (canonical == gTransformTables.decompositionMap.end())
    return compat.count(c) ? compat.at(c) : String{c};
  String out;
  for (char32_t e : canonical->second)
    out += e >= 0x00A0 && compat.count(e) ? compat.at(e) : String{e};
  return out;
}

// The role of c by the maps and range lists, as Forms.h defines it.
Role roleByTables(char32_t c, bool compatibility) {
  const auto& t = gTransformTables;
  const bool decomposes = t.decompositionMap.count(c) ||
                          (compatibility && t.compatDecompositionMap.count(c));
  const auto& no = compatibility ? t.nfkcQcNoRanges : t.nfcQcNoRanges;
  const auto& maybe = compatibility ? t.nfkcQcMaybeRanges : t.nfcQcMaybeRanges;
  const bool listed = rangeContains(no, c) || rangeContains(maybe, c);
  const auto composesBack = [](char32_t x) {
    return hasWeight(x) || secondElements().count(x) ||
           (x >= 0x1161 && x < 0x11C3) || x == 0xFFFFFFFF;
  };
  if (decomposes) {
    const char32_t first =
        compatibility ? nfkdOf(c)[0] : t.decompositionMap.at(c)[0];
    if (hasWeight(c) || composesBack(first)) return Role::kInside;
    return listed ? Role::kStarterWork : Role::kStarter;
  }
  if ((c >= 0x1161 && c < 0x11C3) || c == 0xFFFFFFFF) return Role::kInside;
  if (secondElements().count(c)) return Role::kSecond;
  if (hasWeight(c)) return Role::kMark;
  return listed ? Role::kStarterWork : Role::kPlain;
}

TEST(NormalizationDataTest, EveryRecordHoldsTheDecompositionsOfTheMaps) {
  const auto& canonical = gTransformTables.decompositionMap;
  const auto& compat = gTransformTables.compatDecompositionMap;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    const std::uint32_t record = data::record(c);
    const bool keyed = canonical.count(c) || compat.count(c);
    ASSERT_EQ(record != 0, keyed) << std::hex << c;
    if (!keyed) continue;
    ASSERT_EQ(toString(data::canonical(record)),
              canonical.count(c) ? canonical.at(c) : String())
        << std::hex << c;
    ASSERT_EQ(toString(data::compatibility(record)), nfkdOf(c))
        << std::hex << c;
  }
  EXPECT_EQ(data::record(0x110000), 0u);
  EXPECT_EQ(data::record(0xFFFFFFFF), 0u);
}

TEST(NormalizationDataTest, EveryCodePointHasTheRoleItsDataGive) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    std::uint32_t index = 0;
    ASSERT_EQ(zelvo::unicode::roleOf<CanonicalForm>(c, index),
              roleByTables(c, false))
        << std::hex << c;
    ASSERT_EQ(zelvo::unicode::roleOf<CompatibilityForm>(c, index),
              roleByTables(c, true))
        << std::hex << c;
  }
  for (char32_t c : {char32_t{0x110000}, char32_t{0xFFFFFFFE}}) {
    std::uint32_t index = 0;
    EXPECT_EQ(zelvo::unicode::roleOf<CanonicalForm>(c, index), Role::kPlain);
    EXPECT_EQ(zelvo::unicode::roleOf<CompatibilityForm>(c, index),
              Role::kPlain);
  }
  std::uint32_t index = 0;
  EXPECT_EQ(zelvo::unicode::roleOf<CanonicalForm>(0xFFFFFFFF, index),
            Role::kInside);
  EXPECT_EQ(zelvo::unicode::roleOf<CompatibilityForm>(0xFFFFFFFF, index),
            Role::kInside);
}

// A starter that stays alone: toNFC (toNFKC) of it alone is itself, by the
// written algorithms.
TEST(NormalizationDataTest, EveryPlainOrStayingStarterComposesToItself) {
  const zelvo_reference::NormalizationReference reference(gTransformTables);
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    std::uint32_t index = 0;
    const Role nfc = zelvo::unicode::roleOf<CanonicalForm>(c, index);
    if (nfc == Role::kPlain || nfc == Role::kStarter) {
      ASSERT_EQ(reference.toNFC({c}), String{c}) << std::hex << c;
    }
    const Role nfkc = zelvo::unicode::roleOf<CompatibilityForm>(c, index);
    if (nfkc == Role::kPlain || nfkc == Role::kStarter) {
      ASSERT_EQ(reference.toNFKC({c}), String{c}) << std::hex << c;
    }
  }
}

TEST(NormalizationDataTest, EveryPairOfTheMapIsInTheHashTable) {
  for (const auto& entry : gTransformTables.compositionMap) {
    ASSERT_LE(entry.first[0], char32_t{0x10FFFF});
    ASSERT_LE(entry.first[1], char32_t{0x10FFFF});
    EXPECT_EQ(data::composite(entry.first[0], entry.first[1]), entry.second)
        << zelvo_test::hex(entry.first);
  }
  size_t filled = 0;
  for (std::uint64_t slot : data::kCompositionSlots) filled += slot != 0;
  EXPECT_EQ(filled, gTransformTables.compositionMap.size());
}

TEST(NormalizationDataTest, NoOtherPairOfFirstAndSecondElementsComposes) {
  std::set<char32_t> firsts;
  for (const auto& entry : gTransformTables.compositionMap)
    firsts.insert(entry.first[0]);
  for (char32_t first : firsts)
    for (char32_t second : secondElements())
      if (!gTransformTables.compositionMap.count(String{first, second})) {
        ASSERT_EQ(data::composite(first, second), 0u)
            << std::hex << first << " " << second;
      }
}

TEST(NormalizationDataTest, ThresholdsAreTheFirstCodePointsWithWork) {
  const auto firstWhere = [](auto test) {
    char32_t c = 0;
    while (c <= 0x10FFFF && !test(c)) ++c;
    return c;
  };
  const auto& t = gTransformTables;
  EXPECT_EQ(data::kNfdCopiedBelow, firstWhere([&](char32_t c) {
              return hasWeight(c) || t.decompositionMap.count(c) ||
                     isSyllable(c);
            }));
  EXPECT_EQ(data::kNfkdCopiedBelow, firstWhere([&](char32_t c) {
              return hasWeight(c) || t.decompositionMap.count(c) ||
                     t.compatDecompositionMap.count(c) || isSyllable(c);
            }));
  EXPECT_EQ(data::kNfcCopiedBelow, firstWhere([&](char32_t c) {
              return roleByTables(c, false) != Role::kPlain ||
                     t.decompositionMap.count(c);
            }));
  EXPECT_EQ(data::kNfkcCopiedBelow, firstWhere([&](char32_t c) {
              return roleByTables(c, true) != Role::kPlain ||
                     t.decompositionMap.count(c) ||
                     t.compatDecompositionMap.count(c);
            }));
  EXPECT_EQ(data::kNfcCheckedBelow, firstWhere([&](char32_t c) {
              return hasWeight(c) || rangeContains(t.nfcQcNoRanges, c) ||
                     rangeContains(t.nfcQcMaybeRanges, c);
            }));
  EXPECT_EQ(data::kNfkcCheckedBelow, firstWhere([&](char32_t c) {
              return hasWeight(c) || rangeContains(t.nfkcQcNoRanges, c) ||
                     rangeContains(t.nfkcQcMaybeRanges, c);
            }));
}

// toNFC composes the decomposition of every string, not only of those that
// fail isNFD: a string that passes holds nothing to decompose.
TEST(NormalizationDataTest, EveryDecomposableCodePointFailsIsNfd) {
  for (const auto& entry : gTransformTables.decompositionMap)
    EXPECT_TRUE(rangeContains(gTransformTables.nfdQcNoRanges, entry.first))
        << std::hex << entry.first;
  for (char32_t c = 0xAC00; c <= 0xD7A3; ++c)
    ASSERT_TRUE(rangeContains(gTransformTables.nfdQcNoRanges, c))
        << std::hex << c;
}

// toNFKD puts each code point into its final form at once and orders the
// marks once: the compatibility pass replaces only starters.
TEST(NormalizationDataTest, OnlyStartersHaveCompatibilityDecompositions) {
  for (const auto& entry : gTransformTables.compatDecompositionMap)
    EXPECT_FALSE(hasWeight(entry.first)) << std::hex << entry.first;
}

// Composites, syllables and jamo are starters, and the jamo have no
// decomposition: a piece begins with a starter that stays one.
TEST(NormalizationDataTest, CompositesSyllablesAndJamoAreStarters) {
  for (const auto& entry : gTransformTables.compositionMap) {
    EXPECT_FALSE(hasWeight(entry.second)) << std::hex << entry.second;
    EXPECT_EQ(secondElements().count(entry.second), 0u);
  }
  for (char32_t c = 0x1100; c < 0x1200; ++c) {
    EXPECT_FALSE(hasWeight(c)) << std::hex << c;
    EXPECT_EQ(gTransformTables.decompositionMap.count(c), 0u) << std::hex << c;
    EXPECT_EQ(gTransformTables.compatDecompositionMap.count(c), 0u)
        << std::hex << c;
  }
  for (char32_t c = 0xAC00; c <= 0xD7A3; ++c) ASSERT_FALSE(hasWeight(c));
}

// The walk over pieces looks for a first element of a pair only at the start
// of a piece and among the second elements: no mark is a first element.
TEST(NormalizationDataTest, FirstElementsOfPairsAreStarters) {
  for (const auto& entry : gTransformTables.compositionMap)
    EXPECT_FALSE(hasWeight(entry.first[0])) << std::hex << entry.first[0];
}

// The written thresholds never bite on these tables: no key lies below them.
TEST(NormalizationDataTest, NoKeyLiesBelowTheWrittenThresholds) {
  EXPECT_GE(gTransformTables.weightMap.begin()->first,
            zelvo::unicode::kMarkRule);
  EXPECT_GE(gTransformTables.decompositionMap.begin()->first,
            zelvo::unicode::kCanonicalRule);
  EXPECT_GE(gTransformTables.compatDecompositionMap.begin()->first,
            zelvo::unicode::kCompatibilityRule);
}

TEST(NormalizationDataTest, TheTablesHoldTheHangulConstantsOfTheFastPaths) {
  const auto& t = gTransformTables;
  EXPECT_EQ(t.LBase, HangulConstants::LBase);
  EXPECT_EQ(t.VBase, HangulConstants::VBase);
  EXPECT_EQ(t.TBase, HangulConstants::TBase);
  EXPECT_EQ(t.LCount, HangulConstants::LCount);
  EXPECT_EQ(t.VCount, HangulConstants::VCount);
  EXPECT_EQ(t.TCount, HangulConstants::TCount);
  EXPECT_EQ(t.NCount, HangulConstants::NCount);
  EXPECT_EQ(t.SBase, HangulConstants::SBase);
  EXPECT_EQ(t.SCount, HangulConstants::SCount);
  EXPECT_EQ(t.deletedMarker, HangulConstants::deletedMarker);
}

TEST(NormalizationDataTest, OnlyTheFinishedGlobalTablesReadTheData) {
  EXPECT_TRUE(zelvo::unicode::usesIndex(gTransformTables));
  const zelvo::unicode::UnicodeTransformationTables copy = gTransformTables;
  EXPECT_FALSE(zelvo::unicode::usesIndex(copy));
}

}  // namespace
