// Canonical ordering: the marks of every run of non-starters are put in
// order of their combining class, marks of equal class keeping their order.
#include <algorithm>
#include <cstddef>
#include <map>

#include "normalization/FastPaths.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

namespace {

// No code point below U+0300 has a combining class (checked against
// weightMap by CanonicalOrderingTest), so text below it needs no lookup.
constexpr char32_t kFirstPossibleMark = 0x0300;

// Runs up to this length are sorted by insertion.
constexpr std::ptrdiff_t kShortRun = 16;

// A stable sort of [first, last) by less. Runs of marks are short, and an
// insertion sort orders a short run as std::stable_sort would, with no
// buffer to ask for; a longer run goes to std::stable_sort. Either way the
// sort can not fail for lack of memory: std::stable_sort asks for its buffer
// without an exception and does with less.
template <class Less>
void stableSort(char32_t* first, char32_t* last, Less less) {
  if (last - first > kShortRun) {
    std::stable_sort(first, last, less);
    return;
  }
  for (char32_t* next = first; next != last; ++next) {
    const char32_t value = *next;
    char32_t* hole = next;
    // Only past elements that are strictly greater: equal ones keep their
    // order.
    for (; hole != first && less(value, hole[-1]); --hole) *hole = hole[-1];
    *hole = value;
  }
}

}  // namespace

void UnicodeTransformationTables::sortCombiningMarks(String& s) {
  const size_t length = s.length();
  if (length == 0) return;
  // Work on the storage itself: the runs are sorted in place.
  char32_t* const text = &*s.begin();
  char32_t* const end = text + length;
  GapLookup<std::map<char32_t, int>> weights(weightMap);

  char32_t* p = text;
  while (p != end) {
    p = skipBelow(p, end, kFirstPossibleMark);
    if (p == end) break;
    if (weights.find(*p) == weights.end()) {
      ++p;
      continue;
    }
    // *p opens a run of non-starters; only a starter (a code point without
    // a weight) ends it, whatever the weights inside. Here every element is
    // looked up, below U+0300 too.
    char32_t* runEnd = p + 1;
    while (runEnd != end && weights.find(*runEnd) != weights.end()) ++runEnd;
    // Every element of the run has a weight, so the index operator never
    // inserts. A run of one element goes through the sort all the same.
    stableSort(p, runEnd, [this](char32_t a, char32_t b) {
      return weightMap[a] < weightMap[b];
    });
    if (runEnd == end) break;
    // *runEnd is a starter and needs no second look.
    p = runEnd + 1;
  }
}

}  // namespace unicode
}  // namespace zelvo
