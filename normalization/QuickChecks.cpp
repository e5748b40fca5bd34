// The quick checks isNFD, isNFKD, isNFC and isNFKC: answers from the quick
// check lists and the combining classes, normalizing only on a Maybe.
#include <cstdint>

#include "normalization/DataSources.h"
#include "normalization/Forms.h"
#include "normalization/IndexComposition.h"
#include "normalization/Scans.h"
#include "normalization/WrittenThresholds.h"
#include "transform/PropertyIndex.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

namespace {

// What the quick checks ask of a code point: its weight (0 for none) and
// whether it is in the No and Maybe lists of the form. On the tables, from
// weightMap and the range lists.
class TableQuickData {
 public:
  TableQuickData(UnicodeTransformationTables& tables, const RangeList& no,
                 const RangeList& maybe)
      : tables_(tables), no_(no), maybe_(maybe) {}
  int weight(char32_t c) const {
    const auto found = tables_.weightMap.find(c);
    return found == tables_.weightMap.end() ? 0 : found->second;
  }
  bool isNo(char32_t c) const { return rangeContains(no_, c); }
  bool isMaybe(char32_t c) const { return rangeContains(maybe_, c); }

 private:
  UnicodeTransformationTables& tables_;
  const RangeList& no_;
  const RangeList& maybe_;
};

// isNFD and isNFKD. Below the threshold nothing is looked up, and `last`
// is left as it stands rather than reset: a code point there is a starter,
// but the check carries the class of the mark before it across. That can
// only make the answer stricter, never laxer.
template <class Lookup>
bool isDecomposed(const String& s, char32_t threshold, Lookup lookup) {
  const char32_t* p = s.data();
  const char32_t* const end = p + s.length();
  int last = 0;
  while (true) {
    p = skipBelow(p, end, threshold);
    if (p == end) return true;
    int weight = 0;
    bool isNo = false;
    lookup(*p++, weight, isNo);
    if (weight != 0 && last > weight) return false;
    if (isNo) return false;
    last = weight;
  }
}

// isNFC and isNFKC on the tables. Every code point is looked up, so a
// starter resets `last`. The written check composes the whole string and
// compares at every Maybe code point, always with the same answer, so one
// comparison serves them all; and as any class out of order, any No and,
// with a Maybe anywhere, any change make the answer false wherever they
// stand, the comparison is left for the end of the scan.
bool isComposedOnTables(
    UnicodeTransformationTables& tables, const String& s,
    const RangeList& noRanges, const RangeList& maybeRanges,
    String (UnicodeTransformationTables::*normalize)(String const&)) {
  const TableQuickData data(tables, noRanges, maybeRanges);
  int last = 0;
  bool maybe = false;
  for (const char32_t c : s) {
    const int weight = data.weight(c);
    if (weight != 0 && last > weight) return false;
    if (data.isNo(c)) return false;
    maybe = maybe || data.isMaybe(c);
    last = weight;
  }
  return !maybe || (tables.*normalize)(s) == s;
}

bool isDecomposedOnTables(UnicodeTransformationTables& tables, const String& s,
                          char32_t threshold, const RangeList& no) {
  const TableQuickData data(tables, no, no);
  return isDecomposed(s, threshold, [&data](char32_t c, int& w, bool& isNo) {
    w = data.weight(c);
    isNo = data.isNo(c);
  });
}

bool isDecomposedWithIndex(const String& s, char32_t threshold,
                           std::uint32_t noFlag) {
  return isDecomposed(s, threshold, [noFlag](char32_t c, int& w, bool& isNo) {
    const std::uint32_t index = propertyindex::lookup(c);
    w = propertyindex::combiningClass(index);
    isNo = (index & noFlag) != 0;
  });
}

}  // namespace

bool UnicodeTransformationTables::isNFD(String const& s) {
  if (usesIndex(*this))
    return isDecomposedWithIndex(s, kCanonicalRule, propertyindex::kNfdNo);
  return isDecomposedOnTables(*this, s, kCanonicalRule, nfdQcNoRanges);
}

bool UnicodeTransformationTables::isNFKD(String const& s) {
  if (usesIndex(*this))
    return isDecomposedWithIndex(s, kCompatibilityRule, propertyindex::kNfkdNo);
  return isDecomposedOnTables(*this, s, kCompatibilityRule, nfkdQcNoRanges);
}

bool UnicodeTransformationTables::isNFC(String const& s) {
  if (usesIndex(*this)) return isComposedWithIndex<CanonicalForm>(s);
  return isComposedOnTables(*this, s, nfcQcNoRanges, nfcQcMaybeRanges,
                            &UnicodeTransformationTables::toNFC);
}

bool UnicodeTransformationTables::isNFKC(String const& s) {
  if (usesIndex(*this)) return isComposedWithIndex<CompatibilityForm>(s);
  return isComposedOnTables(*this, s, nfkcQcNoRanges, nfkcQcMaybeRanges,
                            &UnicodeTransformationTables::toNFKC);
}

}  // namespace unicode
}  // namespace zelvo
