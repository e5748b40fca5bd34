// The cut rules, each with the reason why no rule of the library can tell
// the pieces from the whole text. ToolTextCutsTest checks each rule at every
// place it allows, on texts built to put the library's rules at a cut.
#include "TextCuts.h"

#include <set>

#include "Invocation.h"
#include "transform/UnicodeOperations.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::gTransformTables;
using unicode::String;

// Whether c is an element of a pair that composition joins by the table.
bool inCompositionPair(char32_t c) {
  static const std::set<char32_t> elements = [] {
    std::set<char32_t> found;
    for (const auto& pair : gTransformTables.compositionMap) {
      found.insert(pair.first.begin(), pair.first.end());
    }
    return found;
  }();
  return elements.count(c) != 0;
}

// Whether c is a conjoining jamo that composition joins by arithmetic: a
// leading consonant, a vowel, or a trailing consonant counted from TBase,
// which composition takes as a trailing consonant too.
bool isComposedJamo(char32_t c) {
  const auto& t = gTransformTables;
  auto in = [c](char32_t base, char32_t count) {
    return c >= base && c - base < count;
  };
  return in(t.LBase, t.LCount) || in(t.VBase, t.VCount) ||
         in(t.TBase, t.TCount);
}

// A code point that every normal form leaves where it is, as it is: no
// decomposition moves or changes it, and no composition joins it to a
// neighbour on either side.
bool standsAloneInNormalForms(char32_t c) {
  const String one(1, c);
  return unicode::isAssigned(c) && combiningClass(c) == 0 &&
         !inCompositionPair(c) && !isComposedJamo(c) &&
         unicode::toNFD(one) == one && unicode::toNFKD(one) == one;
}

bool hasConditionalRow(char32_t c) {
  for (const unicode::ConditionTable* table :
       {&gTransformTables.toUpperSpecialConditionMap,
        &gTransformTables.toLowerSpecialConditionMap}) {
    for (const auto& rows : *table) {
      if (rows.second.count(c) != 0) return true;
    }
  }
  return false;
}

// A code point that every casing context stops at, and that none tests.
bool standsAloneInCasing(char32_t c) {
  return combiningClass(c) == 0 &&
         !unicode::rangeContains(gTransformTables.caseIgnorableRanges, c) &&
         !hasConditionalRow(c);
}

}  // namespace

int combiningClass(char32_t c) {
  const auto& weights = gTransformTables.weightMap;
  auto found = weights.find(c);
  return found == weights.end() ? 0 : found->second;
}

bool cutAnywhere(char32_t, char32_t, const Invocation&) { return true; }

// A text A c B is cut into A and c B before a code point c that stands
// alone in the normal forms, after an assigned code point.
//  - toNFD and toNFKD map each code point on its own, then sort each run of
//    marks. c maps to itself and has class 0, so no run reaches across it.
//  - toNFC composes what toNFD makes of the text (its shortcut through isNFD
//    changes nothing, as isNFD says yes only to text that toNFD leaves
//    alone: ToolTextCutsTest checks that fact of the data), and toNFKC what
//    toNFKD makes. The composition walk never joins c to what stands before
//    it: c is no second element of a pair, no vowel after a leading
//    consonant, no trailing consonant after a vowel. Before c, the walk looks
//    ahead only for a trailing consonant, which c is not; from c on, every
//    look back for a starter stops at c, so the walk goes on as that of c B.
//  - A piece of one code point is not composed at all, where the whole text
//    is; but the walk changes no assigned code point that nothing joins to,
//    and both code points at the cut are assigned.
//  - isNFC and isNFKC start afresh at c, of class 0, and at a Maybe code
//    point compare the whole text with its normal form. Normalization keeps
//    every code point like c, in order, and the normal form of a piece that
//    begins with c begins with c. So where the whole text equals its normal
//    form, counting those code points shows that no piece's normal form
//    holds more of them than the piece, that each cut falls at the same
//    place in the text and in its normal form, and so that every piece
//    equals its own normal form; the other way round is plain.
//    NormalFormCheck leans on this.
bool cutForNormalForms(char32_t before, char32_t after, const Invocation&) {
  return unicode::isAssigned(before) && standsAloneInNormalForms(after);
}

// With --simple each code point maps on its own. Full case mapping maps
// each code point on its own too, but for the conditional rows, whose tests
// look at the neighbours (final sigma, the dots of i and I). A text is cut
// between two code points of class 0 that are not case-ignorable and have
// no conditional row:
//  - The two are never tested themselves, so they map alike in the whole
//    text and in the pieces: no test can see where their piece ends.
//  - Every test of another code point scans over case-ignorable code points
//    (final sigma) or over marks of classes other than 0 and 230 (the dot
//    rules), in either direction and up to the end of the text if nothing
//    stops it; both code points at a cut stop every scan, which then
//    decides by that code point alone. So no scan reaches the end of a
//    piece, nor across it, and none of the rules that fail at the end of the
//    text can fail at a cut.
bool cutForCasing(char32_t before, char32_t after, const Invocation& inv) {
  return inv.simple ||
         (standsAloneInCasing(before) && standsAloneInCasing(after));
}

}  // namespace tool
}  // namespace zelvo
