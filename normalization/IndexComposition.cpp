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

#include <cstdint>
#include <string>
#include <utility>

#include "normalization/ComposedPiece.h"
#include "normalization/Forms.h"
#include "normalization/PieceWalk.h"

namespace zelvo {
namespace unicode {

namespace {

// Writes the composed form: the text between pieces as it stands, each
// piece composed.
template <class Form>
class Composer {
 public:
  explicit Composer(const char32_t* text) : text_(text) {}
  std::uint32_t seen() const { return 0; }
  bool code(char32_t, std::uint32_t, bool) { return true; }
  // Out of line: it keeps the walk's loop small.
  [[gnu::noinline]] bool piece(size_t start, size_t end) {
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

}  // namespace

template <class Form>
String composeWithIndex(const String& s) {
  const size_t length = s.length();
  if (length < 2) return composeShort<Form>(s);
  Composer<Form> composer(s.data());
  composer.out.reserve(length + length / 16 + 4);
  walkPieces<Form>(s.data(), 0, length, Form::composedCopiedBelow(), composer);
  composer.out.append(s.data() + composer.copied, length - composer.copied);
  return String(std::move(composer.out));
}

template String composeWithIndex<CanonicalForm>(const String& s);
template String composeWithIndex<CompatibilityForm>(const String& s);

}  // namespace unicode
}  // namespace zelvo
