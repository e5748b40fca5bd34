// The scans of the five casing contexts, on the property index: whether the
// context of the code point at current holds, within the text from begin to
// end. Each scan includes its rule's boundary test, and they part from the
// standard's context rules where noted, on purpose.
#pragma once

#include <cstdint>

#include "transform/PropertyIndex.h"

namespace zelvo {
namespace unicode {
namespace contextscans {

using Position = char32_t const*;

// The index gives, in one record, the facts these scans read: the canonical
// combining class of weightMap (0 where it has no key) and membership of
// casedRanges, caseIgnorableRanges and softDottedRanges, for any 32-bit
// value. tests/PropertyIndexTest.cpp checks them against the tables, and
// tests/CaseShortcutsTest.cpp each scan against the range-list scans.
inline std::uint32_t recordAt(Position at) {
  return propertyindex::lookup(*at);
}

inline int classAt(Position at) {
  return propertyindex::combiningClass(recordAt(at));
}

// A cased letter before, across case-ignorable code points, and no cased
// letter after in the same way. A code point that is both cased and
// case-ignorable counts as case-ignorable on both sides. Unlike the
// standard, case-ignorable code points that run up to the end of the text
// make the sigma not final; nothing at all after it makes it final.
inline bool finalSigma(Position begin, Position end, Position current) {
  if (current <= begin) return false;
  Position before = current;
  std::uint32_t record;
  do {
    if (before == begin) return false;
    --before;
    record = recordAt(before);
  } while (record & propertyindex::kCaseIgnorable);
  if (!(record & propertyindex::kCased)) return false;

  Position after = current + 1;
  if (after == end) return true;
  for (; after != end; ++after) {
    record = recordAt(after);
    if (!(record & propertyindex::kCaseIgnorable))
      return !(record & propertyindex::kCased);
  }
  return false;
}

// The backward scan starts at the code point being mapped, not at the one
// before it. The only code point with a row under this condition, U+0307,
// is of class 230 and not soft dotted, so the rule never holds for it; a
// dot after an i stays under the Lithuanian uppercase mapping. Intended.
inline bool afterSoftDotted(Position begin, Position current) {
  if (current <= begin) return false;
  for (Position at = current;; --at) {
    std::uint32_t const record = recordAt(at);
    if (record & propertyindex::kSoftDotted) return true;
    int const weight = propertyindex::combiningClass(record);
    if (weight == 0 || weight == 230) return false;
    if (at == begin) return false;
  }
}

// The run of non-starters after the code point holds exactly one mark of
// class 230: a second one before the next starter, or before the end of the
// text, defeats the rule, unlike the standard's More_Above.
inline bool moreAbove(Position end, Position current) {
  if (current >= end) return false;
  Position at = current + 1;
  for (;; ++at) {
    if (at == end) return false;
    int const weight = classAt(at);
    if (weight == 0) return false;
    if (weight == 230) break;
  }
  for (++at;; ++at) {
    if (at == end) return true;
    int const weight = classAt(at);
    if (weight == 0) return true;
    if (weight == 230) return false;
  }
}

// Not followed by U+0307 across marks of classes other than 0 and 230.
// Unlike the standard, marks of such classes that run up to the end of the
// text make the rule fail; nothing at all after it makes it hold.
inline bool notBeforeDot(Position end, Position current) {
  if (current >= end) return false;
  if (current + 1 == end) return true;
  for (Position at = current + 1;;) {
    if (*at == 0x0307) return false;
    int const weight = classAt(at);
    if (weight == 230 || weight == 0) return true;
    ++at;
    if (at == end) return false;
  }
}

// U+0049 before, with no mark of class 0 or 230 between.
inline bool afterI(Position begin, Position current) {
  if (current <= begin) return false;
  for (Position at = current - 1;; --at) {
    if (*at == 0x0049) return true;
    int const weight = classAt(at);
    if (weight == 0 || weight == 230) return false;
    if (at == begin) return false;
  }
}

}  // namespace contextscans
}  // namespace unicode
}  // namespace zelvo
