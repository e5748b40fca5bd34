// Composition: the map of primary composites built at load, composeHelper
// with its Hangul cases and its blocking rule, and toNFC and toNFKC.
#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "normalization/CompositionPass.h"
#include "normalization/DataSources.h"
#include "normalization/Forms.h"
#include "normalization/IndexComposition.h"
#include "transform/NormalizationData.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

void UnicodeTransformationTables::initFinalCompositionMap() {
  // The pairs that the one-level mappings give (two elements, a starter
  // composite, a starter first element, no exclusion) stand in the generated
  // hash table of the normalization data; LoadTimeExpansionTest holds this
  // map to that selection from the raw rows. An entry reads first << 42 |
  // second << 21 | composite, so entries sort in the order of the keys, and
  // each pair goes in at the end of the map.
  std::vector<std::uint64_t> pairs;
  pairs.reserve(normalizationdata::kCompositionSlotCount);
  for (const std::uint64_t entry : normalizationdata::kCompositionSlots)
    if (entry != 0) pairs.push_back(entry);
  std::sort(pairs.begin(), pairs.end());
  constexpr std::uint64_t kCodePointMask = 0x1FFFFF;
  for (const std::uint64_t entry : pairs)
    compositionMap.emplace_hint(
        compositionMap.end(),
        String{static_cast<char32_t>(entry >> 42),
               static_cast<char32_t>((entry >> 21) & kCodePointMask)},
        static_cast<char32_t>(entry & kCodePointMask));
}

String UnicodeTransformationTables::composeHelper(String& s) {
  // The caller guarantees at least two elements. Consumed slots are marked
  // rather than erased, so nothing moves during the pass, and the string is
  // left with its markers.
  char32_t* const text = &*s.begin();
  const size_t length = s.length();
  if (usesIndex(*this))
    composePass(text, length, IndexSource());
  else
    composePass(text, length, TableSource(*this));
  std::u32string out(s.data(), length);
  out.resize(removeMarkers(&out[0], length, deletedMarker));
  return String(std::move(out));
}

String UnicodeTransformationTables::toNFC(String const& s) {
  if (usesIndex(*this)) return composeWithIndex<CanonicalForm>(s);
  // A string that passes the quick check is already decomposed; a false
  // answer that is too strict only costs a decomposition that changes
  // nothing.
  String working = isNFD(s) ? s : toNFD(s);
  if (working.length() > 1) return composeHelper(working);
  return working;
}

String UnicodeTransformationTables::toNFKC(String const& s) {
  if (usesIndex(*this)) return composeWithIndex<CompatibilityForm>(s);
  String working = toNFKD(s);
  if (working.length() > 1) return composeHelper(working);
  return working;
}

}  // namespace unicode
}  // namespace zelvo
