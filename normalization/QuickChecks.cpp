// The quick checks isNFD, isNFKD, isNFC and isNFKC: answers from the quick
// check lists and the combining classes, normalizing only on a Maybe.
#include <map>

#include "normalization/FastPaths.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

namespace {

// No code point below U+0300 has a combining class or stands in an NFC or
// NFKC Maybe list or in the NFC No list, and nothing below U+00A0 stands in
// the NFKC No list. QuickChecksTest checks these facts against the tables.
constexpr char32_t kFirstPossibleMark = 0x0300;
constexpr char32_t kFirstNfkcNo = 0x00A0;

// isNFD and isNFKD. Below the threshold nothing is looked up, and `last`
// is left as it stands rather than reset: a code point there is a starter,
// but the check carries the class of the mark before it across. That can
// only make the answer stricter, never laxer.
bool isDecomposed(UnicodeTransformationTables& tables, const String& s,
                  char32_t threshold, const RangeList& noRanges) {
  const size_t length = s.length();
  if (length == 0) return true;
  const char32_t* p = s.data();
  const char32_t* const end = p + length;
  GapLookup<std::map<char32_t, int>> weights(tables.weightMap);
  RangeMemo no(noRanges);
  int last = 0;
  while (true) {
    p = skipBelow(p, end, threshold);
    if (p == end) break;
    const char32_t c = *p++;
    int weight = 0;
    if (c >= kFirstPossibleMark) {
      const auto found = weights.find(c);
      if (found != weights.end()) {
        weight = found->second;
        if (last > weight && weight != 0) return false;
      }
    }
    if (no.contains(c)) return false;
    last = weight;
  }
  return true;
}

// isNFC and isNFKC. Every code point takes part, so a starter resets
// `last`. The first Maybe code point settles nothing by itself: the whole
// string is normalized and compared, and so again at every further Maybe.
bool isComposed(
    UnicodeTransformationTables& tables, const String& s, char32_t firstNo,
    const RangeList& noRanges, const RangeList& maybeRanges,
    String (UnicodeTransformationTables::*normalize)(String const&)) {
  const size_t length = s.length();
  if (length == 0) return true;
  const char32_t* p = s.data();
  const char32_t* const end = p + length;
  GapLookup<std::map<char32_t, int>> weights(tables.weightMap);
  RangeMemo no(noRanges);
  RangeMemo maybe(maybeRanges);
  int last = 0;
  while (true) {
    // Below firstNo every code point is a starter in neither list.
    const char32_t* const next = skipBelow(p, end, firstNo);
    if (next != p) last = 0;
    p = next;
    if (p == end) break;
    const char32_t c = *p++;
    int weight = 0;
    if (c >= kFirstPossibleMark) {
      const auto found = weights.find(c);
      if (found != weights.end()) {
        weight = found->second;
        if (last > weight && weight != 0) return false;
      }
    }
    const bool isNo = no.contains(c);
    if (c < kFirstPossibleMark || !maybe.contains(c)) {
      if (isNo) return false;
    } else if (isNo || (tables.*normalize)(s) != s) {
      return false;
    }
    last = weight;
  }
  return true;
}

}  // namespace

bool UnicodeTransformationTables::isNFD(String const& s) {
  return isDecomposed(*this, s, 0x00C0, nfdQcNoRanges);
}

bool UnicodeTransformationTables::isNFKD(String const& s) {
  return isDecomposed(*this, s, 0x00A0, nfkdQcNoRanges);
}

bool UnicodeTransformationTables::isNFC(String const& s) {
  return isComposed(*this, s, kFirstPossibleMark, nfcQcNoRanges,
                    nfcQcMaybeRanges, &UnicodeTransformationTables::toNFC);
}

bool UnicodeTransformationTables::isNFKC(String const& s) {
  return isComposed(*this, s, kFirstNfkcNo, nfkcQcNoRanges, nfkcQcMaybeRanges,
                    &UnicodeTransformationTables::toNFKC);
}

}  // namespace unicode
}  // namespace zelvo
