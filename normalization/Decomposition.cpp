// Decomposition: the full decompositions of the published mappings, worked
// out as written, and toNFD and toNFKD, with Hangul syllables by arithmetic.
#include <deque>
#include <map>
#include <string>
#include <utility>

#include "normalization/DataSources.h"
#include "normalization/Forms.h"
#include "normalization/IndexDecomposition.h"
#include "normalization/WrittenThresholds.h"
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

}  // namespace

void UnicodeTransformationTables::initDecomp() {
  zelvo_private::unicode::initDecomposition(rawDecompositionMap);
  // One queue serves every entry: each one leaves it empty.
  std::deque<char32_t> queue;
  for (const auto& entry : rawDecompositionMap) {
    const String& value = entry.second;
    // Follow the chain of first elements to its end. The second elements
    // gathered on the way are final as they stand: none of them has a
    // mapping of its own. The queue keeps the outermost at the front.
    char32_t first = value[0];
    for (auto next = rawDecompositionMap.find(first);
         next != rawDecompositionMap.end();
         next = rawDecompositionMap.find(first)) {
      first = next->second[0];
      if (next->second.length() >= 2) queue.push_back(next->second[1]);
    }
    if (value.length() >= 2) queue.push_front(value[1]);
    queue.push_back(first);
    // Read from the back: the deepest first element, then every second
    // element from the innermost outward.
    String full;
    while (!queue.empty()) {
      full.push_back(queue.back());
      queue.pop_back();
    }
    // Keys come in ascending order, so each one goes in at the end.
    decompositionMap.insert_or_assign(decompositionMap.end(), entry.first,
                                      std::move(full));
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
    String expanded;
    for (char32_t element : entry.second.first)
      expanded += expandCompat(element);
    // weightMap is still empty here, so this replaces canonical mappings
    // but sorts nothing: the values keep the order of their expansion.
    compatDecompositionMap.insert_or_assign(compatDecompositionMap.end(),
                                            entry.first, toNFD(expanded));
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
