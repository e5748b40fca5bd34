// The maps derived at load, copied from the generated normalization data.
#include "normalization/LoadTimeTables.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "transform/NormalizationData.h"
#include "transform/data/Fillers.h"

namespace zelvo {
namespace unicode {

namespace {

// A value of the generated pool as a String.
String pooled(normalizationdata::Expansion expansion) {
  return String(std::u32string(expansion.data, expansion.length));
}

}  // namespace

void loadDecompositions(UnicodeTransformationTables& tables) {
  auto& raw = tables.rawDecompositionMap;
  zelvo_private::unicode::initDecomposition(raw);
  for (const auto& entry : raw)
    tables.decompositionMap.emplace_hint(
        tables.decompositionMap.end(), entry.first,
        pooled(normalizationdata::canonical(
            normalizationdata::record(entry.first))));
  raw.clear();
}

void loadCompatibilityDecompositions(UnicodeTransformationTables& tables) {
  auto& raw = tables.rawCompatDecompositionMap;
  zelvo_private::unicode::initCompatibiltyDecomposition(raw);
  for (auto entry = raw.begin(); entry != raw.end(); entry = raw.erase(entry))
    tables.compatDecompositionMap.emplace_hint(
        tables.compatDecompositionMap.end(), entry->first,
        pooled(normalizationdata::compatibility(
            normalizationdata::record(entry->first))));
}

void loadCompositionMap(UnicodeTransformationTables& tables) {
  // An entry of the pair table reads first << 42 | second << 21 | composite,
  // so entries sort in the order of the keys, and each pair goes in at the
  // end of the map.
  std::vector<std::uint64_t> pairs;
  pairs.reserve(normalizationdata::kCompositionSlotCount);
  for (const std::uint64_t entry : normalizationdata::kCompositionSlots)
    if (entry != 0) pairs.push_back(entry);
  std::sort(pairs.begin(), pairs.end());
  constexpr std::uint64_t kCodePointMask = 0x1FFFFF;
  for (const std::uint64_t entry : pairs)
    tables.compositionMap.emplace_hint(
        tables.compositionMap.end(),
        String{static_cast<char32_t>(entry >> 42),
               static_cast<char32_t>((entry >> 21) & kCodePointMask)},
        static_cast<char32_t>(entry & kCodePointMask));
}

}  // namespace unicode
}  // namespace zelvo
