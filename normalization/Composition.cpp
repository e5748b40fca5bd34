// Composition: the map of primary composites built at load, composeHelper
// with its Hangul cases and its blocking rule, and toNFC and toNFKC.
#include <string>
#include <utility>

#include "normalization/CompositionPass.h"
#include "normalization/DataSources.h"
#include "normalization/Forms.h"
#include "normalization/IndexComposition.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

void UnicodeTransformationTables::initFinalCompositionMap() {
  // The one-level mappings, not the full decompositions: so a composite can
  // be the first element of another pair, and compositions build on each
  // other. Singletons, non-starter composites and mappings that begin with
  // a non-starter stay out by the first three tests, the exclusion list
  // keeps out the rest.
  const TableSource tables(*this);
  for (const auto& entry : rawDecompositionMap) {
    const char32_t key = entry.first;
    const String& value = entry.second;
    if (value.length() == 2 && tables.isStarter(key) &&
        tables.isStarter(value[0]) && compositionExclusions.count(key) == 0)
      compositionMap[value] = key;
  }
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
