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

// A piece whose decomposition has no more elements than this is composed
// in buffers of this size on the stack.
constexpr size_t kPieceBuffer = 64;

// Composes the decomposition s[0, length), whose marks are in order unless
// unordered is set, in place; returns how many elements are left.
inline size_t composeDecomposed(char32_t* s, size_t length, bool unordered) {
  if (unordered) orderMarks(s, s + length, IndexSource());
  composePass(s, length, IndexSource());
  return removeMarkers(s, length, IndexSource::deletedMarker);
}

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
  // The decomposition, with the record of every element, so that the pass
  // asks no element's record again.
  char32_t elements[kPieceBuffer];
  std::uint32_t records[kPieceBuffer];
  size_t length = 0;
  OrderWatch order;
  for (const char32_t* p = first; p != last && length <= kPieceBuffer; ++p)
    decomposeCodePoint<Form>(*p, propertyindex::lookup(*p),
                             [&](char32_t element, std::uint32_t record) {
                               if (length < kPieceBuffer) {
                                 elements[length] = element;
                                 records[length] = record;
                                 order.take(record);
                               }
                               ++length;
                             });
  if (length <= kPieceBuffer) {
    if (order.unordered) {
      orderMarks(elements, elements + length, IndexSource());
      for (size_t k = 0; k < length; ++k)
        records[k] = propertyindex::lookup(elements[k]);
    }
    composePass(elements, length, RecordSource(records));
    for (size_t k = 0; k < length; ++k)
      if (elements[k] != IndexSource::deletedMarker) out.push_back(elements[k]);
    return;
  }
  // A longer one is composed in the output itself.
  const size_t base = out.size();
  OrderWatch longOrder;
  for (const char32_t* p = first; p != last; ++p)
    decomposeCodePoint<Form>(*p, propertyindex::lookup(*p),
                             [&](char32_t element, std::uint32_t record) {
                               out.push_back(element);
                               longOrder.take(record);
                             });
  out.resize(base + composeDecomposed(&out[base], out.size() - base,
                                      longOrder.unordered));
}

// toNFC (toNFKC) of a string of fewer than two elements: its decomposition,
// composed only if that has two elements or more.
template <class Form>
String composeShort(const String& s) {
  std::u32string out;
  OrderWatch order;
  if (!s.empty())
    decomposeCodePoint<Form>(s[0], propertyindex::lookup(s[0]),
                             [&](char32_t element, std::uint32_t record) {
                               out.push_back(element);
                               order.take(record);
                             });
  if (out.size() > 1)
    out.resize(composeDecomposed(&out[0], out.size(), order.unordered));
  return String(std::move(out));
}

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
