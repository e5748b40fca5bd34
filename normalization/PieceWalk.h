// The walk of the composed forms and of their quick checks: the text cut
// into pieces that compose apart, each code point looked up once.
#pragma once

#include <cstddef>
#include <cstdint>

#include "normalization/DataSources.h"
#include "normalization/Forms.h"
#include "normalization/Scans.h"
#include "transform/NormalizationData.h"
#include "transform/PropertyIndex.h"

// Internal to the library, and hidden: calls from its other parts go
// straight to these, not through the tables of the dynamic linker.
#pragma GCC visibility push(hidden)

namespace zelvo {
namespace unicode {

// Where a walk stands: the piece it is in and the code point before.
struct WalkState {
  const char32_t* start;  // where the current piece starts
  int last;               // the class of the code point before
  bool pending;           // whether the piece may change
  bool starter;           // whether it starts with a starter that stays alone
};

// The record of a code point below U+110000 in the property index: lookup
// without its test of the limit, which the walk has made already.
inline std::uint32_t recordBelowLimit(char32_t c) {
  using namespace propertyindex;
  return kBlocks[kBlockOf[c >> kBlockShift]][c & (kBlockSize - 1)];
}

// Takes the code points from p on that need no more than their record in
// the property index, for as long as no piece has to be handed over: plain
// ones, below plainBelow or not, each of which starts a piece that stays as
// it is; starters that decompose and stay as they are alone, which start a
// piece that may change only if marks follow; marks and second elements of
// pairs in order, which leave the piece as it is unless it starts with a
// starter that decomposes or, for a second element, with a first one; and
// Hangul vowels and trailing places, which make the piece one that may
// change. Nearly every code point of any text is one of them. A record with any
// of the flags seen is not taken, for the visitor to see it. Returns where it
// stopped: at end, or at a code point that the walk has to take itself. Out of
// line, so that its few values stay in registers.
template <class Form>
[[gnu::noinline]] const char32_t* takeSimpleRoles(const char32_t* p,
                                                  const char32_t* const end,
                                                  const char32_t plainBelow,
                                                  const std::uint32_t seen,
                                                  WalkState& state) {
  using propertyindex::kComposesFirst;
  // One test for the two ends: below plainBelow, and above U+10FFFF.
  const auto outside = [plainBelow](char32_t c) {
    return c - plainBelow >= propertyindex::kCodePoints - plainBelow;
  };
  constexpr std::uint32_t kNotPlain =
      kSpecialFlags<Form> | propertyindex::kCombiningClassMask;
  const char32_t* start = state.start;
  int last = state.last;
  bool pending = state.pending;
  bool starter = state.starter;
  while (p != end) {
    char32_t c = *p;
    if (outside(c)) {
      if (c >= plainBelow || pending) break;
      // A run below plainBelow: the last of it starts the piece that goes
      // on.
      p = skipBelow(p, end, plainBelow);
      start = p - 1;
      last = 0;
      starter = false;
      continue;
    }
    std::uint32_t index = recordBelowLimit(c);
    if ((index & kNotPlain) == 0 && !isVowelOrTrailing(c)) {
      if (pending) break;
      // A run of plain code points, each of which starts a piece that stays
      // as it is; the last of them starts the piece that goes on. The one
      // that ends the run is taken below with its record.
      while (++p != end) {
        c = *p;
        if (outside(c)) break;
        index = recordBelowLimit(c);
        if ((index & kNotPlain) != 0 || isVowelOrTrailing(c)) break;
      }
      start = p - 1;
      last = 0;
      starter = false;
      if (p == end || outside(c)) continue;
    }
    if ((index & (Form::kDecomposes | seen)) != 0) {
      // A starter that decomposes, and stays as it is when it stands alone,
      // starts a piece that may change if marks follow it.
      if ((index & seen) != 0 || pending ||
          (normalizationdata::record(c) & Form::kQuick) == 0)
        break;
      start = p;
      last = 0;
      starter = true;
      ++p;
      continue;
    }
    // A mark, a second element, a Hangul vowel or trailing place, or a
    // starter in a quick check list.
    const bool second = (index & propertyindex::kComposesSecond) != 0;
    const int weight = propertyindex::combiningClass(index);
    if (weight == 0) {
      // A Hangul vowel or trailing place may compose with what stands
      // before it by arithmetic; a starter in a list and no second element
      // is left to the walk.
      if (isVowelOrTrailing(c))
        pending = true;
      else if (!second)
        break;
    } else if (last > weight) {
      break;
    }
    pending = pending || starter ||
              (second &&
               ((index | propertyindex::lookup(*start)) & kComposesFirst) != 0);
    last = weight;
    ++p;
  }
  state = {start, last, pending, starter};
  return p;
}

// Walks text[from, length) and hands every piece that composition may change
// to visit.piece(start, end), in order. A code point that is not plain goes
// to visit.code(c, index, disordered) first, with its record in the property
// index and whether its class is below that of the code point before it; but
// not a code point that takeSimpleRoles takes, whose record has none of the
// flags visit.seen() and which is in order, for which code would say true
// and do nothing. Code points below plainBelow must be plain, and
// text[from] must start a piece: from is 0 or a start that an earlier walk
// handed over. Either call may stop the walk by returning false; then so
// does the walk.
//
// A piece may change if a code point in it may (kInside), if it starts with
// a boundary that changes (kStarterWork), or with one that decomposes and is
// followed by marks that may then be reordered or composed (kStarter), if
// its marks are out of order, or if a second element of a pair stands in it
// together with a first one. First elements are starters (a key of
// compositionMap begins with a starter, by the rule that builds the map), so
// only the start of a piece and the second elements that are starters can
// be one; NormalizationDataTest checks it, and that Hangul vowels and
// trailing places have class 0.
template <class Form, class Visitor>
bool walkPieces(const char32_t* text, size_t from, size_t length,
                char32_t plainBelow, Visitor& visit) {
  using propertyindex::kComposesFirst;
  const char32_t* const end = text + length;
  const char32_t* p = text + from;
  WalkState state = {p, 0, false, false};
  const auto endPiece = [&](const char32_t* at) {
    return !state.pending ||
           visit.piece(static_cast<size_t>(state.start - text),
                       static_cast<size_t>(at - text));
  };
  // Ends the current piece at p, and starts one there.
  const auto startPiece = [&](bool pending, bool starter) {
    if (!endPiece(p)) return false;
    state = {p, 0, pending, starter};
    return true;
  };
  while (true) {
    p = takeSimpleRoles<Form>(p, end, plainBelow, visit.seen(), state);
    if (p == end) return endPiece(end);
    const char32_t c = *p;
    std::uint32_t index = 0;
    Role role = Role::kPlain;
    if (c < plainBelow) {
      // A run of plain code points, each of which starts a piece that stays
      // as it is; the last of them starts the piece that goes on.
      if (!endPiece(p)) return false;
      p = skipBelow(p, end, plainBelow);
      state = {p - 1, 0, false, false};
      continue;
    }
    if (c < propertyindex::kCodePoints) {
      index = propertyindex::lookup(c);
      role = roleOfRecord<Form>(c, index);
    } else if (c == HangulConstants::deletedMarker) {
      // The one value above U+10FFFF that is not left alone: composition
      // removes it.
      role = Role::kInside;
    }
    const int weight = propertyindex::combiningClass(index);
    const bool disordered = weight != 0 && state.last > weight;
    if (role != Role::kPlain && !visit.code(c, index, disordered)) return false;
    switch (role) {
      case Role::kPlain:
        if (!startPiece(false, false)) return false;
        break;
      case Role::kStarter:
      case Role::kStarterWork:
        if (!startPiece(role == Role::kStarterWork, role == Role::kStarter))
          return false;
        break;
      case Role::kSecond:
        // Whether the piece starts with a first element is asked only here,
        // where it matters.
        state.pending = state.pending || state.starter || disordered ||
                        ((index | propertyindex::lookup(*state.start)) &
                         kComposesFirst) != 0;
        break;
      case Role::kMark:
        state.pending = state.pending || state.starter || disordered;
        break;
      case Role::kInside:
        state.pending = true;
        break;
    }
    state.last = weight;
    ++p;
    if (p == end) return endPiece(end);
  }
}

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
