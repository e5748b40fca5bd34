// toNFC and toNFKC of the finished tables, piece by piece. The decomposition
// of a string is that of its code points put together, with the marks of
// each run ordered; composition reaches back from a code point only to the
// last starter before it, and only a second element of a pair or a Hangul
// vowel or trailing place composes with what stands before it. So a boundary
// (see Forms.h), whose decomposition begins with a starter that is neither,
// cuts the string into pieces that compose apart, and a quick code point
// followed by a boundary is a piece that stays as it is. Only the other
// pieces are decomposed and composed, each by the composition pass itself.
#include "normalization/IndexComposition.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

#include "normalization/CompositionPass.h"
#include "normalization/Forms.h"
#include "normalization/IndexDecomposition.h"
#include "normalization/MarkOrdering.h"
#include "normalization/Scans.h"

namespace zelvo {
namespace unicode {

namespace {

// A piece of the input, [start, end).
struct Piece {
  size_t start;
  size_t end;
};

// From i, a piece start (0, or a boundary), finds the first piece that
// composition may change; everything before it stays as it is. False when
// there is none.
template <class Form>
bool findPiece(const char32_t* text, size_t length, size_t i, Piece& piece) {
  size_t j = i;
  PieceKind kind;
  while (true) {
    j = static_cast<size_t>(
        skipBelow(text + j, text + length, Form::composedCopiedBelow()) - text);
    if (j == length) return false;
    kind = pieceKind<Form>(text[j]);
    if (kind != PieceKind::kQuick) break;
    ++j;
  }
  // A code point that is no boundary belongs to the piece of the quick one
  // before it; only the first piece of the string may start with one.
  piece.start = kind == PieceKind::kInside && j > i ? j - 1 : j;
  piece.end = j + 1;
  while (piece.end < length &&
         pieceKind<Form>(text[piece.end]) == PieceKind::kInside)
    ++piece.end;
  return true;
}

// Appends the composed form of the piece [first, last) to out. The string
// has at least two elements, so the pass runs, and removes markers, whatever
// the length of the piece.
template <class Form>
void appendComposedPiece(const char32_t* first, const char32_t* last,
                         std::u32string& out) {
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

}  // namespace

template <class Form>
String composeWithIndex(const String& s) {
  const size_t length = s.length();
  if (length < 2) return composeShort<Form>(s);
  const char32_t* const text = s.data();
  std::u32string out;
  out.reserve(length + length / 16 + 4);
  size_t copied = 0;
  Piece piece;
  for (size_t i = 0; findPiece<Form>(text, length, i, piece); i = piece.end) {
    out.append(text + copied, piece.start - copied);
    appendComposedPiece<Form>(text + piece.start, text + piece.end, out);
    copied = piece.end;
  }
  out.append(text + copied, length - copied);
  return String(std::move(out));
}

template <class Form>
bool composesToItself(const String& s) {
  const size_t length = s.length();
  if (length < 2) return composeShort<Form>(s) == s;
  const char32_t* const text = s.data();
  std::u32string composed;
  Piece piece;
  for (size_t i = 0; findPiece<Form>(text, length, i, piece); i = piece.end) {
    composed.clear();
    appendComposedPiece<Form>(text + piece.start, text + piece.end, composed);
    const size_t size = piece.end - piece.start;
    // A piece that changes makes the whole string compare; the result
    // decides, whatever else may stand around the piece.
    if (composed.size() != size ||
        std::memcmp(composed.data(), text + piece.start,
                    size * sizeof(char32_t)) != 0)
      return composeWithIndex<Form>(s) == s;
  }
  return true;
}

template String composeWithIndex<CanonicalForm>(const String& s);
template String composeWithIndex<CompatibilityForm>(const String& s);
template bool composesToItself<CanonicalForm>(const String& s);
template bool composesToItself<CompatibilityForm>(const String& s);

}  // namespace unicode
}  // namespace zelvo
