// Canonical ordering over a range of code points, on either data source:
// within every run of non-starters, marks in order of their weights, marks
// of equal weight keeping their order.
#pragma once

#include <algorithm>
#include <cstddef>

#include "normalization/Scans.h"
#include "normalization/WrittenThresholds.h"

// Internal to the library, and hidden: calls from its other parts go
// straight to these, not through the tables of the dynamic linker.
#pragma GCC visibility push(hidden)

namespace zelvo {
namespace unicode {

// Runs up to this length are sorted by insertion.
constexpr std::ptrdiff_t kShortRun = 16;

// A stable sort of [first, last) by weight, the weights compared as signed
// integers. Runs of marks are short, and an insertion sort orders a short
// run as std::stable_sort would, with no buffer to ask for; a longer run
// goes to std::stable_sort. Either way the sort cannot fail for lack of
// memory: std::stable_sort asks for its buffer without an exception and
// does with less.
template <class Source>
void sortByWeight(char32_t* first, char32_t* last, const Source& source) {
  const auto less = [&source](char32_t a, char32_t b) {
    return source.weightOf(a) < source.weightOf(b);
  };
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

// Orders the marks of [p, end) in place. A run opens at a code point with a
// weight, never below kMarkRule, and only a code point without a weight ends
// it; inside a run every element is looked up.
template <class Source>
void orderMarks(char32_t* p, char32_t* const end, const Source& source) {
  int weight = 0;
  while (p != end) {
    p = skipBelow(p, end, kMarkRule);
    if (p == end) break;
    if (!source.weight(*p, weight)) {
      ++p;
      continue;
    }
    char32_t* runEnd = p + 1;
    while (runEnd != end && source.weight(*runEnd, weight)) ++runEnd;
    // A run of one element goes through the sort all the same.
    sortByWeight(p, runEnd, source);
    if (runEnd == end) break;
    // *runEnd is a starter and needs no second look.
    p = runEnd + 1;
  }
}

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
