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

// The decision of isNFC and isNFKC, with the question of step three left to
// the caller: false at any class out of order or any No code point; with
// neither, true if no code point is Maybe, and otherwise whatever the
// composed form of the whole says. The written check composes and compares
// at every Maybe, always the same whole string with the same answer, so one
// answer serves them all, and the order of the scan does not matter.
enum class Scan { kNo, kYes, kMaybe };

template <class Lookup>
Scan scanComposed(const String& s, char32_t copiedBelow, Lookup lookup) {
  const char32_t* p = s.data();
  const char32_t* const end = p + s.length();
  int last = 0;
  bool maybe = false;
  while (true) {
    const char32_t* const next = skipBelow(p, end, copiedBelow);
    if (next != p) last = 0;
    p = next;
    if (p == end) return maybe ? Scan::kMaybe : Scan::kYes;
    int weight = 0;
    bool isNo = false;
    bool isMaybe = false;
    lookup(*p++, weight, isNo, isMaybe);
    if (weight != 0 && last > weight) return Scan::kNo;
    if (isNo) return Scan::kNo;
    maybe = maybe || isMaybe;
    last = weight;
  }
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

bool isComposedOnTables(
    UnicodeTransformationTables& tables, const String& s,
    const RangeList& noRanges, const RangeList& maybeRanges,
    String (UnicodeTransformationTables::*normalize)(String const&)) {
  const TableQuickData data(tables, noRanges, maybeRanges);
  const Scan scan =
      scanComposed(s, 0, [&data](char32_t c, int& w, bool& no, bool& maybe) {
        w = data.weight(c);
        no = data.isNo(c);
        maybe = data.isMaybe(c);
      });
  if (scan != Scan::kMaybe) return scan == Scan::kYes;
  return (tables.*normalize)(s) == s;
}

template <class Form>
bool isComposedWithIndex(const String& s) {
  const Scan scan = scanComposed(
      s, Form::checkedBelow(), [](char32_t c, int& w, bool& no, bool& maybe) {
        const std::uint32_t index = propertyindex::lookup(c);
        w = propertyindex::combiningClass(index);
        no = (index & Form::kNo) != 0;
        maybe = (index & Form::kMaybe) != 0;
      });
  if (scan != Scan::kMaybe) return scan == Scan::kYes;
  return composesToItself<Form>(s);
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
