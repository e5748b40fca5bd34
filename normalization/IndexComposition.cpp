// toNFC and toNFKC of the finished tables, piece by piece. The decomposition
// of a string is that of its code points put together, with the marks of
// each run ordered; composition reaches back from a code point only to the
// last starter before it, and only a second element of a pair or a Hangul
// vowel or trailing place composes with what stands before it. So a boundary
// (see Forms.h), whose decomposition begins with a starter that is neither,
// cuts the string into pieces that compose apart. A piece of code points
// that no decomposition and no Hangul case touches, with its marks in order
// and no first and second element of a pair together, stays as it is; only
// the other pieces are decomposed and composed, each by the composition pass
// itself.
#include "normalization/IndexComposition.h"

#include <algorithm>
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

// Walks text[0, length) and hands every piece that composition may change to
// visit.piece(start, end), in order; every code point that is not plain goes
// to visit.code(c, index, disordered) first, with its record in the property
// index and whether its class is below that of the mark before it. Code
// points below plainBelow must be plain. Either call may stop the walk by
// returning false; then so does the walk.
template <class Form, class Visitor>
bool walkPieces(const char32_t* text, size_t length, char32_t plainBelow,
                Visitor& visit) {
  using propertyindex::kComposesFirst;
  size_t start = 0;      // where the current piece starts
  bool work = false;     // whether it may change
  bool starter = false;  // whether it starts with a starter that stays alone
  bool first = false;    // whether it holds a first element of a pair
  bool second = false;   // whether it holds a second element of a pair
  int last = 0;          // the class of the code point before
  size_t j = 0;
  while (j < length) {
    // A run of plain code points, each of which starts a piece that stays
    // as it is; the last of them starts the piece that goes on.
    size_t k = j;
    while (k < length) {
      if (text[k] < plainBelow) {
        k = static_cast<size_t>(skipBelow(text + k, text + length, plainBelow) -
                                text);
      } else if (isPlain<Form>(text[k])) {
        ++k;
      } else {
        break;
      }
    }
    if (k != j) {
      if ((work || (first && second)) && !visit.piece(start, j)) return false;
      j = k;
      if (j == length) return true;
      start = j - 1;
      work = false;
      starter = false;
      first = (propertyindex::lookup(text[start]) & kComposesFirst) != 0;
      second = false;
      last = 0;
    }
    std::uint32_t index = 0;
    const Role role = roleOf<Form>(text[j], index);
    const int weight = propertyindex::combiningClass(index);
    const bool disordered = weight != 0 && last > weight;
    if (!visit.code(text[j], index, disordered)) return false;
    last = weight;
    switch (role) {
      case Role::kPlain:
      case Role::kStarter:
      case Role::kStarterWork:
        if ((work || (first && second)) && !visit.piece(start, j)) return false;
        start = j;
        work = role == Role::kStarterWork;
        starter = role == Role::kStarter;
        first = (index & kComposesFirst) != 0;
        second = false;
        break;
      case Role::kSecond:
        second = true;
        first = first || (index & kComposesFirst) != 0;
        work = work || starter || disordered;
        break;
      case Role::kMark:
        work = work || starter || disordered;
        break;
      case Role::kInside:
        work = true;
        break;
    }
    ++j;
  }
  return !(work || (first && second)) || visit.piece(start, length);
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

// Writes the composed form: the text between pieces as it stands, each
// piece composed.
template <class Form>
class Composer {
 public:
  explicit Composer(const char32_t* text) : text_(text) {}
  bool code(char32_t, std::uint32_t, bool) { return true; }
  bool piece(size_t start, size_t end) {
    out.append(text_ + copied, start - copied);
    appendComposedPiece<Form>(text_ + start, text_ + end, out);
    copied = end;
    return true;
  }
  std::u32string out;
  size_t copied = 0;

 private:
  const char32_t* text_;
};

// Compares each piece with its composed form. The text before the piece is
// its own composed form, so a piece that differs from its composed form at
// some place that both reach makes the whole differ there. A piece whose
// composed form is a proper beginning of it, or the other way round, leaves
// that open, for the whole string to settle.
template <class Form>
class PieceComparer {
 public:
  explicit PieceComparer(const char32_t* text) : text_(text) {}
  bool code(char32_t, std::uint32_t, bool) { return true; }
  bool piece(size_t start, size_t end) {
    // Past a piece that changed its length, the places no longer match.
    if (differs || undecided) return true;
    composed_.clear();
    appendComposedPiece<Form>(text_ + start, text_ + end, composed_);
    const size_t size = end - start;
    const size_t common = std::min(size, composed_.size());
    if (std::memcmp(composed_.data(), text_ + start,
                    common * sizeof(char32_t)) != 0)
      differs = true;
    else if (composed_.size() != size)
      undecided = true;
    return true;
  }
  bool differs = false;    // the composed whole differs from the text
  bool undecided = false;  // a piece changed its length only

 private:
  const char32_t* text_;
  std::u32string composed_;
};

// The walk of isNFC (isNFKC): the checks of every code point, and the
// comparison of the pieces that may change, stopping as soon as the answer
// is false.
template <class Form>
class QuickChecker : public PieceComparer<Form> {
 public:
  using PieceComparer<Form>::PieceComparer;
  bool code(char32_t, std::uint32_t index, bool disordered) {
    if (disordered || (index & Form::kNo)) return false;
    maybe = maybe || (index & Form::kMaybe) != 0;
    return !(maybe && this->differs);
  }
  bool piece(size_t start, size_t end) {
    PieceComparer<Form>::piece(start, end);
    return !(maybe && this->differs);
  }
  bool maybe = false;  // a Maybe code point was met
};

}  // namespace

template <class Form>
String composeWithIndex(const String& s) {
  const size_t length = s.length();
  if (length < 2) return composeShort<Form>(s);
  Composer<Form> composer(s.data());
  composer.out.reserve(length + length / 16 + 4);
  walkPieces<Form>(s.data(), length, Form::composedCopiedBelow(), composer);
  composer.out.append(s.data() + composer.copied, length - composer.copied);
  return String(std::move(composer.out));
}

template <class Form>
bool isComposedWithIndex(const String& s) {
  const size_t length = s.length();
  QuickChecker<Form> checker(s.data());
  if (!walkPieces<Form>(
          s.data(), length,
          std::min(Form::checkedBelow(), Form::composedCopiedBelow()), checker))
    return false;
  if (!checker.maybe) return true;
  if (length < 2) return composeShort<Form>(s) == s;
  if (checker.differs) return false;
  return !checker.undecided || composeWithIndex<Form>(s) == s;
}

template String composeWithIndex<CanonicalForm>(const String& s);
template String composeWithIndex<CompatibilityForm>(const String& s);
template bool isComposedWithIndex<CanonicalForm>(const String& s);
template bool isComposedWithIndex<CompatibilityForm>(const String& s);

}  // namespace unicode
}  // namespace zelvo
