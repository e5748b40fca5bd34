// The table set after construction: its constants and member types, what each
// member holds once the constructor has run, the raw maps it has emptied,
// and the range lookup behind isAssigned.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"
#include "transform/data/Fillers.h"

namespace {

namespace data = zelvo_private::unicode;
using zelvo::unicode::ConditionTable;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::isAssigned;
using zelvo::unicode::rangeContains;
using zelvo::unicode::RangeList;
using zelvo::unicode::String;
using zelvo::unicode::UnicodeTransformationTables;
using T = UnicodeTransformationTables;

// ---------------------------------------------------------------------------
// Member types.

template <typename A, typename B>
constexpr bool same = std::is_same<A, B>::value;

using CharMap = std::map<char32_t, char32_t>;
using StringMap = std::map<char32_t, String>;
using Ranges = std::vector<std::pair<char32_t, char32_t>>;
using Conditions = std::map<std::string, std::map<char32_t, String>>;

static_assert(same<RangeList, Ranges>, "a range list is a vector of pairs");
static_assert(same<ConditionTable, Conditions>, "condition table");

static_assert(same<decltype(T::LBase), char32_t>, "LBase");
static_assert(same<decltype(T::VBase), char32_t>, "VBase");
static_assert(same<decltype(T::TBase), char32_t>, "TBase");
static_assert(same<decltype(T::LCount), char32_t>, "LCount");
static_assert(same<decltype(T::VCount), char32_t>, "VCount");
static_assert(same<decltype(T::TCount), char32_t>, "TCount");
static_assert(same<decltype(T::NCount), char32_t>, "NCount");
static_assert(same<decltype(T::deletedMarker), char32_t>, "deletedMarker");
static_assert(same<decltype(T::SBase), char32_t>, "SBase");
static_assert(same<decltype(T::SCount), char32_t>, "SCount");
static_assert(same<decltype(T::SLimit), char32_t>, "SLimit");
static_assert(same<decltype(T::rawDecompositionMap), StringMap>, "raw");
static_assert(same<decltype(T::rawCompatDecompositionMap),
                   std::map<char32_t, std::pair<String, std::string>>>,
              "rawCompat");
static_assert(same<decltype(T::decompositionMap), StringMap>, "decomposition");
static_assert(same<decltype(T::compatDecompositionMap), StringMap>, "compat");
static_assert(same<decltype(T::compositionMap), std::map<String, char32_t>>,
              "composition");
static_assert(same<decltype(T::toUpperMap), CharMap>, "toUpperMap");
static_assert(same<decltype(T::toLowerMap), CharMap>, "toLowerMap");
static_assert(same<decltype(T::toTitleMap), CharMap>, "toTitleMap");
static_assert(same<decltype(T::weightMap), std::map<char32_t, int>>, "weights");
static_assert(same<decltype(T::cCaseFoldingMap), CharMap>, "C folding");
static_assert(same<decltype(T::sCaseFoldingMap), CharMap>, "S folding");
static_assert(same<decltype(T::fCaseFoldingMap), StringMap>, "F folding");
static_assert(same<decltype(T::tCaseFoldingMap), CharMap>, "T folding");
static_assert(same<decltype(T::compositionExclusions), std::set<char32_t>>,
              "exclusions");
static_assert(same<decltype(T::validRanges), Ranges>, "validRanges");
static_assert(same<decltype(T::nfdQcNoRanges), Ranges>, "nfdQcNoRanges");
static_assert(same<decltype(T::nfdQcMaybeRanges), Ranges>, "nfdQcMaybe");
static_assert(same<decltype(T::nfcQcNoRanges), Ranges>, "nfcQcNoRanges");
static_assert(same<decltype(T::nfcQcMaybeRanges), Ranges>, "nfcQcMaybe");
static_assert(same<decltype(T::nfkdQcNoRanges), Ranges>, "nfkdQcNoRanges");
static_assert(same<decltype(T::nfkdQcMaybeRanges), Ranges>, "nfkdQcMaybe");
static_assert(same<decltype(T::nfkcQcNoRanges), Ranges>, "nfkcQcNoRanges");
static_assert(same<decltype(T::nfkcQcMaybeRanges), Ranges>, "nfkcQcMaybe");
static_assert(same<decltype(T::toUpperSpecialMap), StringMap>, "upper full");
static_assert(same<decltype(T::toLowerSpecialMap), StringMap>, "lower full");
static_assert(same<decltype(T::toTitleSpecialMap), StringMap>, "title full");
static_assert(same<decltype(T::toUpperSpecialConditionMap), Conditions>, "u");
static_assert(same<decltype(T::toLowerSpecialConditionMap), Conditions>, "l");
static_assert(same<decltype(T::toTitleSpecialConditionMap), Conditions>, "t");
static_assert(same<decltype(T::casedRanges), Ranges>, "casedRanges");
static_assert(same<decltype(T::caseIgnorableRanges), Ranges>, "ignorable");
static_assert(same<decltype(T::softDottedRanges), Ranges>, "softDotted");

// The class is a plain one: no base, nothing virtual.
static_assert(!std::is_polymorphic<T>::value, "no virtual operations");
static_assert(std::is_default_constructible<T>::value, "built by default");
static_assert(same<decltype(gTransformTables), T>, "the one table set");

// The table methods of this module and their signatures.
static_assert(same<decltype(&T::initSoftDotted), void (T::*)()>, "soft");
static_assert(same<decltype(&T::initWeightMap), void (T::*)()>, "weights");
static_assert(same<decltype(&T::initCompositionExclusions), void (T::*)()>,
              "exclusions");
static_assert(
    same<decltype(&rangeContains), bool (*)(const RangeList&, char32_t)>,
    "rangeContains");
static_assert(same<decltype(&isAssigned), bool (*)(char32_t)>, "isAssigned");

// The fillers and their one argument.
static_assert(same<decltype(&data::initToUpper), void (*)(CharMap&)>, "");
static_assert(same<decltype(&data::initToUpperSpecial), void (*)(StringMap&)>,
              "");
static_assert(
    same<decltype(&data::initToUpperSpecialCondition), void (*)(Conditions&)>,
    "");
static_assert(same<decltype(&data::initFCaseFolding), void (*)(StringMap&)>,
              "");
static_assert(
    same<decltype(&data::initDecompositionPart10), void (*)(StringMap&)>, "");
static_assert(
    same<decltype(&data::initCompatibiltyDecompositionPart11),
         void (*)(std::map<char32_t, std::pair<String, std::string>>&)>,
    "");
static_assert(same<decltype(&data::initNFKD_QC_MaybeRanges), void (*)(Ranges&)>,
              "");

// ---------------------------------------------------------------------------
// Constants.

TEST(TransformationTablesTest, HangulConstantsHaveTheirValues) {
  const T& t = gTransformTables;
  EXPECT_EQ(t.LBase, 0x1100u);
  EXPECT_EQ(t.VBase, 0x1161u);
  EXPECT_EQ(t.TBase, 0x11A7u);
  EXPECT_EQ(t.LCount, 19u);
  EXPECT_EQ(t.VCount, 21u);
  EXPECT_EQ(t.TCount, 28u);
  EXPECT_EQ(t.NCount, 588u);
  EXPECT_EQ(t.SBase, 0xAC00u);
  EXPECT_EQ(t.SCount, 11172u);
  EXPECT_EQ(t.SLimit, 0xD7A4u);
}

TEST(TransformationTablesTest, HangulConstantsAgreeWithEachOther) {
  const T& t = gTransformTables;
  EXPECT_EQ(t.NCount, t.VCount * t.TCount);
  EXPECT_EQ(t.SCount, t.LCount * t.NCount);
  EXPECT_EQ(t.SLimit, t.SBase + t.SCount);
  EXPECT_EQ(t.TBase + 1, 0x11A8u);
}

TEST(TransformationTablesTest, DeletedMarkerHasAllBitsSet) {
  EXPECT_EQ(gTransformTables.deletedMarker, 0xFFFFFFFFu);
}

// ---------------------------------------------------------------------------
// The members after construction.

TEST(TransformationTablesTest, RawMappingsAreEmptyAfterConstruction) {
  EXPECT_TRUE(gTransformTables.rawDecompositionMap.empty());
  EXPECT_TRUE(gTransformTables.rawCompatDecompositionMap.empty());
  EXPECT_EQ(gTransformTables.rawDecompositionMap.begin(),
            gTransformTables.rawDecompositionMap.end());
}

// The emptied maps are valid maps: a row can go in and out again.
TEST(TransformationTablesTest, EmptiedRawMappingsAreUsable) {
  T& t = gTransformTables;
  t.rawDecompositionMap[0x212B] = String{0x00C5};
  t.rawCompatDecompositionMap[0x00A0] = {String{0x0020}, "<noBreak>"};
  EXPECT_EQ(t.rawDecompositionMap.size(), 1u);
  EXPECT_EQ(t.rawCompatDecompositionMap.at(0x00A0).second, "<noBreak>");
  t.rawDecompositionMap.clear();
  t.rawCompatDecompositionMap.clear();
  EXPECT_TRUE(t.rawDecompositionMap.empty());
  EXPECT_TRUE(t.rawCompatDecompositionMap.empty());
}

TEST(TransformationTablesTest, DecomposedMaybeListsAreEmpty) {
  EXPECT_TRUE(gTransformTables.nfdQcMaybeRanges.empty());
  EXPECT_TRUE(gTransformTables.nfkdQcMaybeRanges.empty());
}

TEST(TransformationTablesTest, CompositionMapHas940Pairs) {
  EXPECT_EQ(gTransformTables.compositionMap.size(), 940u);
  for (const auto& entry : gTransformTables.compositionMap) {
    EXPECT_EQ(entry.first.length(), 2u);
  }
}

TEST(TransformationTablesTest, ExpandedDecompositionsKeepTheKeysOfTheFiles) {
  StringMap canonical;
  data::initDecomposition(canonical);
  std::map<char32_t, std::pair<String, std::string>> compat;
  data::initCompatibiltyDecomposition(compat);
  std::set<char32_t> canonicalKeys, compatKeys, expandedKeys, expandedCompat;
  for (const auto& row : canonical) canonicalKeys.insert(row.first);
  for (const auto& row : compat) compatKeys.insert(row.first);
  for (const auto& row : gTransformTables.decompositionMap) {
    expandedKeys.insert(row.first);
  }
  for (const auto& row : gTransformTables.compatDecompositionMap) {
    expandedCompat.insert(row.first);
  }
  EXPECT_EQ(expandedKeys, canonicalKeys);
  EXPECT_EQ(expandedCompat, compatKeys);
}

// The constructor hands each filler the member it names.
TEST(TransformationTablesTest, RangeListsHoldWhatTheirFillersAdd) {
  const T& t = gTransformTables;
  const std::vector<std::pair<const Ranges*, void (*)(Ranges&)>> lists = {
      {&t.validRanges, data::initValidRanges},
      {&t.nfdQcNoRanges, data::initNFD_QC_NoRanges},
      {&t.nfcQcNoRanges, data::initNFC_QC_NoRanges},
      {&t.nfcQcMaybeRanges, data::initNFC_QC_MaybeRanges},
      {&t.nfkdQcNoRanges, data::initNFKD_QC_NoRanges},
      {&t.nfkcQcNoRanges, data::initNFKC_QC_NoRanges},
      {&t.nfkcQcMaybeRanges, data::initNFKC_QC_MaybeRanges},
      {&t.casedRanges, data::initCased},
      {&t.caseIgnorableRanges, data::initCaseIgnorable},
  };
  for (size_t i = 0; i < lists.size(); ++i) {
    Ranges expected;
    lists[i].second(expected);
    EXPECT_FALSE(expected.empty()) << "list " << i;
    EXPECT_EQ(*lists[i].first, expected) << "list " << i;
  }
}

TEST(TransformationTablesTest,
     SimpleMappingsAndFoldingHoldWhatTheirFillersAdd) {
  const T& t = gTransformTables;
  const std::vector<std::pair<const CharMap*, void (*)(CharMap&)>> maps = {
      {&t.toUpperMap, data::initToUpper},
      {&t.toLowerMap, data::initToLower},
      {&t.toTitleMap, data::initToTitle},
      {&t.cCaseFoldingMap, data::initCCaseFolding},
      {&t.sCaseFoldingMap, data::initSCaseFolding},
      {&t.tCaseFoldingMap, data::initTCaseFolding},
  };
  for (size_t i = 0; i < maps.size(); ++i) {
    CharMap expected;
    maps[i].second(expected);
    EXPECT_FALSE(expected.empty()) << "map " << i;
    EXPECT_EQ(*maps[i].first, expected) << "map " << i;
  }
}

std::map<char32_t, std::u32string> texts(const StringMap& m) {
  std::map<char32_t, std::u32string> result;
  for (const auto& row : m) {
    result[row.first] = std::u32string(row.second.begin(), row.second.end());
  }
  return result;
}

TEST(TransformationTablesTest, FullMappingsAndFoldingHoldWhatTheirFillersAdd) {
  const T& t = gTransformTables;
  const std::vector<std::pair<const StringMap*, void (*)(StringMap&)>> maps = {
      {&t.toUpperSpecialMap, data::initToUpperSpecial},
      {&t.toLowerSpecialMap, data::initToLowerSpecial},
      {&t.toTitleSpecialMap, data::initToTitleSpecial},
      {&t.fCaseFoldingMap, data::initFCaseFolding},
  };
  for (size_t i = 0; i < maps.size(); ++i) {
    StringMap expected;
    maps[i].second(expected);
    EXPECT_FALSE(expected.empty()) << "map " << i;
    EXPECT_EQ(texts(*maps[i].first), texts(expected)) << "map " << i;
  }
}

std::map<std::string, std::map<char32_t, std::u32string>> texts(
    const Conditions& table) {
  std::map<std::string, std::map<char32_t, std::u32string>> result;
  for (const auto& outer : table) {
    result[outer.first] = texts(outer.second);
  }
  return result;
}

TEST(TransformationTablesTest, ConditionTablesHoldWhatTheirFillersAdd) {
  const T& t = gTransformTables;
  const std::vector<std::pair<const Conditions*, void (*)(Conditions&)>>
      tables = {
          {&t.toUpperSpecialConditionMap, data::initToUpperSpecialCondition},
          {&t.toLowerSpecialConditionMap, data::initToLowerSpecialCondition},
          {&t.toTitleSpecialConditionMap, data::initToTitleSpecialCondition},
      };
  for (size_t i = 0; i < tables.size(); ++i) {
    Conditions expected;
    tables[i].second(expected);
    EXPECT_EQ(expected.size(), 10u) << "table " << i;
    EXPECT_EQ(texts(*tables[i].first), texts(expected)) << "table " << i;
  }
}

// During construction the raw canonical map holds the one-level mappings:
// the Angstrom sign maps to U+00C5 alone, not to its full decomposition.
TEST(TransformationTablesTest, RawCanonicalMappingOfAngstromSignIsOneLevel) {
  StringMap raw;
  data::initDecomposition(raw);
  ASSERT_EQ(raw.count(0x212B), 1u);
  const String& value = raw.at(0x212B);
  ASSERT_EQ(value.length(), 1u);
  EXPECT_EQ(value[0], 0x00C5u);
}

// ---------------------------------------------------------------------------
// isAssigned and the range lookup.

TEST(TransformationTablesTest, IsAssignedIsTrueForAssignedCodePoints) {
  for (char32_t c :
       {0x0000, 0x007F, 0x00AD, 0x0377, 0x9FCC, 0xD7A3, 0xE0001, 0xE01EF}) {
    EXPECT_TRUE(isAssigned(c)) << std::hex << static_cast<unsigned>(c);
  }
}

TEST(TransformationTablesTest, IsAssignedIsFalseForUnassignedCodePoints) {
  for (char32_t c : {0x0378, 0x9FCD, 0xD800, 0xE000, 0xFDD0, 0xFFFE, 0xFFFF,
                     0xF0000, 0x10FFFF}) {
    EXPECT_FALSE(isAssigned(c)) << std::hex << static_cast<unsigned>(c);
  }
}

TEST(TransformationTablesTest, IsAssignedIsFalseAboveTheCodeSpace) {
  for (char32_t c : {0x110000u, 0x110041u, 0x7FFFFFFFu, 0x80000000u,
                     0xFFFFFFFEu, 0xFFFFFFFFu}) {
    EXPECT_FALSE(isAssigned(c)) << std::hex << static_cast<unsigned>(c);
  }
}

TEST(TransformationTablesTest, IsAssignedTakesBothBoundsOfARange) {
  EXPECT_TRUE(isAssigned(0x0000));
  EXPECT_TRUE(isAssigned(0x0377));
  EXPECT_FALSE(isAssigned(0x0378));
  EXPECT_TRUE(isAssigned(0x037A));
  EXPECT_TRUE(isAssigned(0x037F));
}

TEST(TransformationTablesTest, IsAssignedAnswersFromValidRanges) {
  const RangeList& valid = gTransformTables.validRanges;
  for (const auto& range : valid) {
    EXPECT_TRUE(isAssigned(range.first));
    EXPECT_TRUE(isAssigned(range.second));
    EXPECT_FALSE(isAssigned(range.second + 1))
        << std::hex << static_cast<unsigned>(range.second + 1);
  }
  size_t assigned = 0;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    assigned += isAssigned(c);
  }
  EXPECT_EQ(assigned, 113021u);
}

TEST(TransformationTablesTest, RangeContainsFindsNothingInAnEmptyList) {
  EXPECT_FALSE(rangeContains(RangeList{}, 0));
  EXPECT_FALSE(rangeContains(RangeList{}, 0x41));
}

TEST(TransformationTablesTest, RangeContainsTakesBothBoundsAsInclusive) {
  const RangeList ranges = {{0x10, 0x20}, {0x30, 0x30}, {0x40, 0x50}};
  EXPECT_FALSE(rangeContains(ranges, 0x0F));
  EXPECT_TRUE(rangeContains(ranges, 0x10));
  EXPECT_TRUE(rangeContains(ranges, 0x18));
  EXPECT_TRUE(rangeContains(ranges, 0x20));
  EXPECT_FALSE(rangeContains(ranges, 0x21));
  EXPECT_FALSE(rangeContains(ranges, 0x2F));
  EXPECT_TRUE(rangeContains(ranges, 0x30));
  EXPECT_FALSE(rangeContains(ranges, 0x31));
  EXPECT_TRUE(rangeContains(ranges, 0x40));
  EXPECT_TRUE(rangeContains(ranges, 0x50));
  EXPECT_FALSE(rangeContains(ranges, 0x51));
  EXPECT_FALSE(rangeContains(ranges, 0xFFFFFFFF));
}

}  // namespace
