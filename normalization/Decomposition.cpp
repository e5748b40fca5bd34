// Decomposition: the full decompositions of the published mappings at load,
// and toNFD and toNFKD, with Hangul syllables by arithmetic.
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "normalization/DataSources.h"
#include "normalization/Forms.h"
#include "normalization/IndexDecomposition.h"
#include "normalization/WrittenThresholds.h"
#include "transform/NormalizationData.h"
#include "transform/UnicodeTransformationTables.h"
#include "transform/data/Fillers.h"

namespace zelvo {
namespace unicode {

namespace {

// Appends the elements of value to out.
void appendString(std::u32string& out, const String& value) {
  out.append(value.data(), value.length());
}

// toNFD on the maps themselves: one lookup in decompositionMap, or Hangul
// arithmetic, for each code point from kCanonicalRule up.
std::u32string decomposeCanonically(UnicodeTransformationTables& tables,
                                    const String& s) {
  std::u32string out;
  out.reserve(s.length());
  for (const char32_t c : s) {
    if (c < kCanonicalRule) {
      out.push_back(c);
      continue;
    }
    const auto found = tables.decompositionMap.find(c);
    if (found != tables.decompositionMap.end()) {
      appendString(out, found->second);
      continue;
    }
    // SLimit itself gets past the bound, which is inclusive; the test of
    // the index stops it.
    if (c < tables.SBase || c > tables.SLimit ||
        c - tables.SBase >= tables.SCount) {
      out.push_back(c);
      continue;
    }
    const char32_t index = c - tables.SBase;
    const char32_t t = index % tables.TCount;
    out.push_back(tables.LBase + index / tables.NCount);
    out.push_back(tables.VBase + (index % tables.NCount) / tables.TCount);
    if (t != 0) out.push_back(tables.TBase + t);
  }
  return out;
}

// A value of the generated pool as a String.
String pooled(normalizationdata::Expansion expansion) {
  return String(std::u32string(expansion.data, expansion.length));
}

}  // namespace

// The full decompositions of both maps stand expanded in the generated pool
// of the normalization data, so the load copies them rather than working
// them out: the raw rows are filled first, as ever, and each key of a raw
// map takes its full value from the pool, in ascending order at the end of
// the map. LoadTimeExpansionTest holds both maps to the written expansion of
// the raw rows: the chain of first elements for decompositionMap, and
// expandCompat then toNFD with no weights yet for compatDecompositionMap.
void UnicodeTransformationTables::initDecomp() {
  zelvo_private::unicode::initDecomposition(rawDecompositionMap);
  for (const auto& entry : rawDecompositionMap) {
    const std::uint32_t record = normalizationdata::record(entry.first);
    decompositionMap.emplace_hint(decompositionMap.end(), entry.first,
                                  pooled(normalizationdata::canonical(record)));
  }
}

String UnicodeTransformationTables::expandCompat(char32_t const& c) {
  const auto found = rawCompatDecompositionMap.find(c);
  if (found == rawCompatDecompositionMap.end()) return String(1, c);
  String result;
  for (char32_t element : found->second.first) result += expandCompat(element);
  return result;
}

void UnicodeTransformationTables::initCompatDecomp() {
  zelvo_private::unicode::initCompatibiltyDecomposition(
      rawCompatDecompositionMap);
  for (const auto& entry : rawCompatDecompositionMap) {
    const std::uint32_t record = normalizationdata::record(entry.first);
    compatDecompositionMap.emplace_hint(
        compatDecompositionMap.end(), entry.first,
        pooled(normalizationdata::compatibility(record)));
  }
}

String UnicodeTransformationTables::toNFD(String const& s) {
  if (usesIndex(*this)) return decomposeWithIndex<CanonicalForm>(s);
  String result(decomposeCanonically(*this, s));
  sortCombiningMarks(result);
  return result;
}

String UnicodeTransformationTables::toNFKD(String const& s) {
  if (usesIndex(*this)) return decomposeWithIndex<CompatibilityForm>(s);
  const String canonical = toNFD(s);
  std::u32string out;
  out.reserve(canonical.length());
  // One pass: a compatibility value is final and is not looked up again.
  for (const char32_t c : canonical) {
    const auto found = c < kCompatibilityRule ? compatDecompositionMap.end()
                                              : compatDecompositionMap.find(c);
    if (found == compatDecompositionMap.end())
      out.push_back(c);
    else
      appendString(out, found->second);
  }
  String result(std::move(out));
  // The marks that the compatibility values brought in are ordered here.
  sortCombiningMarks(result);
  return result;
}

}  // namespace unicode
}  // namespace zelvo
