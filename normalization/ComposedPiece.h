// The composed form of one piece of text, by the composition pass itself,
// and of a string too short for the walk over pieces.
#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "normalization/CompositionPass.h"
#include "normalization/DataSources.h"
#include "normalization/IndexDecomposition.h"
#include "normalization/MarkOrdering.h"
#include "string/String.h"
#include "transform/PropertyIndex.h"

// Internal to the library, and hidden: calls from its other parts go
// straight to these, not through the tables of the dynamic linker.
#pragma GCC visibility push(hidden)

namespace zelvo {
namespace unicode {

// Appends the composed form of the piece [first, last) to out. The string
// has at least two elements, so the pass runs, and removes markers, whatever
// the length of the piece.
template <class Form>
void appendComposedPiece(const char32_t* first, const char32_t* last,
                         std::u32string& out) {
  using H = HangulConstants;
  // Jamo text: a leading consonant, a vowel and perhaps a trailing place
  // are a piece of their own, which cases A and B of the pass make one
  // syllable; the jamo have no decomposition.
  const size_t size = static_cast<size_t>(last - first);
  if ((size == 2 || size == 3) && first[0] - H::LBase < H::LCount &&
      first[1] - H::VBase < H::VCount &&
      (size == 2 || first[2] - H::TBase < H::TCount)) {
    out.push_back(H::SBase + (first[0] - H::LBase) * H::NCount +
                  (first[1] - H::VBase) * H::TCount +
                  (size == 3 ? first[2] - H::TBase : 0));
    return;
  }
  const size_t base = out.size();
  int weight = 0;
  bool unordered = false;
  for (const char32_t* p = first; p != last; ++p)
    appendDecomposition<Form>(out, *p, propertyindex::lookup(*p), weight,
                              unordered);
  char32_t* const piece = &out[base];
  const size_t length = out.size() - base;
  if (unordered) orderMarks(piece, piece + length, IndexSource());
  composePass(piece, length, IndexSource());
  out.resize(base + removeMarkers(piece, length, IndexSource::deletedMarker));
}

// toNFC (toNFKC) of a string of fewer than two elements: its decomposition,
// composed only if that has two elements or more.
template <class Form>
String composeShort(const String& s) {
  std::u32string out;
  int weight = 0;
  bool unordered = false;
  if (!s.empty())
    appendDecomposition<Form>(out, s[0], propertyindex::lookup(s[0]), weight,
                              unordered);
  if (out.size() > 1) {
    if (unordered) orderMarks(&out[0], &out[0] + out.size(), IndexSource());
    composePass(&out[0], out.size(), IndexSource());
    out.resize(removeMarkers(&out[0], out.size(), IndexSource::deletedMarker));
  }
  return String(std::move(out));
}

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
