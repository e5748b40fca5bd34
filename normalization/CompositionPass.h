// The composition pass over a decomposed range, on either data source: Hangul
// by arithmetic, pairs by the composites of the data, consumed slots marked
// and removed at the end.
#pragma once

#include <cstddef>

#include "normalization/Scans.h"

// Internal to the library, and hidden: calls from its other parts go
// straight to these, not through the tables of the dynamic linker.
#pragma GCC visibility push(hidden)

namespace zelvo {
namespace unicode {

// Composes s[0, length) in place in one pass of an index i from 1. Case A, a
// leading consonant, a vowel and a trailing place (U+11A7, the place before
// the first trailing consonant, counts as one of value 0 and is swallowed);
// case B, a leading consonant and a vowel; case C, cur with the last starter
// before it, unless blocked. Consumed slots become deletedMarker; nothing
// moves. An element of the input equal to deletedMarker reads as a consumed
// slot.
template <class Source>
void composePass(char32_t* s, size_t length, const Source& source) {
  const char32_t marker = source.deletedMarker;
  size_t i = 1;
  while (i < length) {
    const char32_t prev = s[i - 1];
    const char32_t cur = s[i];
    const bool leading =
        prev >= source.LBase && prev < source.LBase + source.LCount;
    const bool vowel =
        cur >= source.VBase && cur < source.VBase + source.VCount;
    if (leading && vowel) {
      const char32_t syllable = source.SBase +
                                (prev - source.LBase) * source.NCount +
                                (cur - source.VBase) * source.TCount;
      if (i + 1 < length && s[i + 1] >= source.TBase &&
          s[i + 1] < source.TBase + source.TCount) {
        s[i - 1] = syllable + (s[i + 1] - source.TBase);
        s[i] = marker;
        s[i + 1] = marker;
        i += 2;
      } else {
        s[i - 1] = syllable;
        s[i] = marker;
        i += 1;
      }
      continue;
    }
    // Case C changes the string only where cur is the second element of a
    // pair, so a code point that is none is passed over at once.
    if (source.maySecondAt(s, i)) {
      size_t st = i - 1;
      while (st >= 1 && !source.isStarterAt(s, st)) --st;
      // A range that begins with non-starters or a marker has nothing to
      // compose with.
      if (source.isStarterAt(s, st)) {
        // Only the code point just before cur is looked at. A consumed slot
        // there blocks nothing, whatever stands further back.
        bool blocked = false;
        if (st != i - 1 && prev != marker) {
          int prevWeight = 0;
          int curWeight = 0;
          source.weightAt(s, i - 1, prevWeight);
          blocked =
              !source.weightAt(s, i, curWeight) || !(prevWeight < curWeight);
        }
        char32_t composite = 0;
        if (!blocked && source.composite(s[st], cur, composite)) {
          s[st] = composite;
          s[i] = marker;
        }
      }
    }
    i += 1;
  }
}

// Removes every element equal to marker from s[0, length) in place, keeping
// the order of the rest; returns how many are left.
inline size_t removeMarkers(char32_t* s, size_t length, char32_t marker) {
  char32_t* const end = s + length;
  char32_t* out = s + (findValue(s, end, marker) - s);
  for (const char32_t* in = out; in != end; ++in)
    if (*in != marker) *out++ = *in;
  return static_cast<size_t>(out - s);
}

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
