// The maps that the constructor derives from the raw mappings at load
// (decompositionMap, compatDecompositionMap, compositionMap) against the
// written derivation, worked out here from the raw rows of the fillers.
#include <gtest/gtest.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "tests/reference/NormalizationReference.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"
#include "transform/data/Fillers.h"

namespace {

namespace data = zelvo_private::unicode;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;
using zelvo::unicode::UnicodeTransformationTables;
using zelvo_reference::NormalizationReference;

using RawCanonical = std::map<char32_t, String>;
using RawCompat = std::map<char32_t, std::pair<String, std::string>>;

// The chain of first elements of each raw row, its second elements queued
// outermost first and read from the back.
std::map<char32_t, String> writtenCanonicalExpansion(const RawCanonical& raw) {
  std::map<char32_t, String> full;
  for (const auto& entry : raw) {
    const String& value = entry.second;
    std::deque<char32_t> queue;
    char32_t first = value[0];
    while (raw.count(first) != 0) {
      const String& next = raw.at(first);
      first = next[0];
      if (next.length() >= 2) queue.push_back(next[1]);
    }
    if (value.length() >= 2) queue.push_front(value[1]);
    queue.push_back(first);
    String expanded;
    while (!queue.empty()) {
      expanded.push_back(queue.back());
      queue.pop_back();
    }
    full[entry.first] = expanded;
  }
  return full;
}

String expandCompat(const RawCompat& raw, char32_t c) {
  const auto found = raw.find(c);
  if (found == raw.end()) return String(1, c);
  String result;
  for (char32_t element : found->second.first)
    result += expandCompat(raw, element);
  return result;
}

TEST(LoadTimeExpansion, DecompositionMapIsTheChainOfFirstElementsOfTheRawRows) {
  RawCanonical raw;
  data::initDecomposition(raw);
  EXPECT_EQ(gTransformTables.decompositionMap, writtenCanonicalExpansion(raw));
}

// toNFD runs with the canonical map complete but with no weights yet, so it
// replaces canonical mappings and sorts nothing.
TEST(LoadTimeExpansion,
     CompatDecompositionMapIsTheCompatExpansionThenToNfdWithoutWeights) {
  RawCanonical rawCanonical;
  data::initDecomposition(rawCanonical);
  RawCompat raw;
  data::initCompatibiltyDecomposition(raw);
  auto atLoad = std::make_unique<UnicodeTransformationTables>();
  atLoad->decompositionMap = writtenCanonicalExpansion(rawCanonical);
  atLoad->weightMap.clear();
  const NormalizationReference reference(*atLoad);
  std::map<char32_t, String> expected;
  for (const auto& entry : raw) {
    String expanded;
    for (char32_t element : entry.second.first)
      expanded += expandCompat(raw, element);
    expected[entry.first] = reference.toNFD(expanded);
  }
  EXPECT_EQ(gTransformTables.compatDecompositionMap, expected);
}

// The written methods, run on a table set brought back to the state of the
// load before each, leave what the load leaves, and keep their raw rows,
// which the constructor gives back.
TEST(LoadTimeExpansion, InitDecompOnItsOwnLeavesTheMapOfTheLoad) {
  EXPECT_TRUE(gTransformTables.rawDecompositionMap.empty());
  auto scratch = std::make_unique<UnicodeTransformationTables>();
  scratch->decompositionMap.clear();
  scratch->initDecomp();
  RawCanonical raw;
  data::initDecomposition(raw);
  EXPECT_EQ(scratch->rawDecompositionMap, raw);
  EXPECT_EQ(scratch->decompositionMap, gTransformTables.decompositionMap);
}

TEST(LoadTimeExpansion, InitCompatDecompOnItsOwnLeavesTheMapOfTheLoad) {
  EXPECT_TRUE(gTransformTables.rawCompatDecompositionMap.empty());
  auto scratch = std::make_unique<UnicodeTransformationTables>();
  scratch->compatDecompositionMap.clear();
  scratch->weightMap.clear();
  scratch->initCompatDecomp();
  RawCompat raw;
  data::initCompatibiltyDecomposition(raw);
  EXPECT_EQ(scratch->rawCompatDecompositionMap, raw);
  EXPECT_EQ(scratch->compatDecompositionMap,
            gTransformTables.compatDecompositionMap);
}

TEST(LoadTimeExpansion, InitFinalCompositionMapOnItsOwnLeavesTheMapOfTheLoad) {
  auto scratch = std::make_unique<UnicodeTransformationTables>();
  data::initDecomposition(scratch->rawDecompositionMap);
  scratch->compositionMap.clear();
  scratch->initFinalCompositionMap();
  EXPECT_EQ(scratch->compositionMap, gTransformTables.compositionMap);
}

// Called again later, the written methods work from what the tables hold
// then: an entry changed by hand is put back as the rows make it, and with
// no raw rows the composition map gains nothing.
TEST(LoadTimeExpansion, InitMethodsWorkFromWhatTheTablesHoldWhenCalled) {
  auto scratch = std::make_unique<UnicodeTransformationTables>();
  scratch->decompositionMap[0xC0] = String{0x41};
  scratch->compatDecompositionMap[0xA0] = String{0x42};
  scratch->initDecomp();
  scratch->initCompatDecomp();
  EXPECT_EQ(scratch->decompositionMap.at(0xC0),
            gTransformTables.decompositionMap.at(0xC0));
  EXPECT_EQ(scratch->compatDecompositionMap.at(0xA0),
            gTransformTables.compatDecompositionMap.at(0xA0));
  scratch->compositionMap.clear();
  scratch->rawDecompositionMap.clear();
  scratch->initFinalCompositionMap();
  EXPECT_TRUE(scratch->compositionMap.empty());
}

TEST(LoadTimeExpansion, CompositionMapIsTheSelectionOfTwoElementRawRows) {
  RawCanonical raw;
  data::initDecomposition(raw);
  const auto& weights = gTransformTables.weightMap;
  const auto& exclusions = gTransformTables.compositionExclusions;
  std::map<String, char32_t> expected;
  for (const auto& entry : raw) {
    const String& value = entry.second;
    if (value.length() == 2 && weights.count(entry.first) == 0 &&
        weights.count(value[0]) == 0 && exclusions.count(entry.first) == 0)
      expected[value] = entry.first;
  }
  EXPECT_EQ(expected.size(), 940u);
  EXPECT_EQ(gTransformTables.compositionMap, expected);
}

}  // namespace
