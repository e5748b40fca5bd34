// isNFC and isNFKC of the finished tables: the checks of every code point
// on the walk over pieces, and where a Maybe code point stands, the pieces
// that may change composed and compared, each apart.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "normalization/ComposedPiece.h"
#include "normalization/Forms.h"
#include "normalization/IndexComposition.h"
#include "normalization/PieceWalk.h"

namespace zelvo {
namespace unicode {

namespace {

// The walk of isNFC (isNFKC): the checks of every code point, and the
// comparison of the pieces that may change, stopping as soon as the answer
// is false.
//
// Pieces matter only where a Maybe code point stands, so they are passed
// over until the first one, and nothing is composed or allocated for a
// string without one. The first few pieces passed over are kept and compared
// at the first Maybe; if there were more, the walk stops there with restart
// set, to be walked again from the first piece not kept.
//
// Each piece is compared with its composed form. The text before a piece is
// its own composed form, so a piece that differs from its composed form at
// some place that both reach makes the whole differ there. A piece whose
// composed form is a proper beginning of it, or the other way round, leaves
// that open, for the whole string to settle.
template <class Form>
class QuickChecker {
 public:
  explicit QuickChecker(const char32_t* text) : text_(text) {}
  // A No code point says false, and the first Maybe has work to do.
  std::uint32_t seen() const { return Form::kNo | (maybe ? 0 : Form::kMaybe); }
  bool code(char32_t, std::uint32_t index, bool disordered) {
    if (disordered || (index & Form::kNo)) return false;
    if ((index & Form::kMaybe) != 0 && !maybe) {
      maybe = true;
      for (size_t k = 0; k < kept_; ++k) compare(keptPieces_[k]);
      if (!differs && notKept) {
        restart = true;
        return false;
      }
    }
    return !(maybe && differs);
  }
  bool piece(size_t start, size_t end) {
    if (maybe) {
      compare({start, end});
      return !differs;
    }
    if (notKept) return true;
    if (kept_ == kKept) {
      notKept = true;
      notKeptFrom = start;
      return true;
    }
    keptPieces_[kept_++] = {start, end};
    return true;
  }
  bool maybe = false;      // a Maybe code point was met
  bool differs = false;    // the composed whole differs from the text
  bool undecided = false;  // a piece changed its length only
  bool notKept = false;    // a piece was passed over and not kept
  size_t notKeptFrom = 0;  // where the first of them starts
  bool restart = false;    // the walk stopped to go back there

 private:
  struct Piece {
    size_t start, end;
  };
  [[gnu::noinline]] void compare(Piece piece) {
    // Past a piece that changed its length, the places no longer match.
    if (differs || undecided) return;
    composed_.clear();
    appendComposedPiece<Form>(text_ + piece.start, text_ + piece.end,
                              composed_);
    const size_t size = piece.end - piece.start;
    const size_t common = std::min(size, composed_.size());
    if (std::memcmp(composed_.data(), text_ + piece.start,
                    common * sizeof(char32_t)) != 0)
      differs = true;
    else if (composed_.size() != size)
      undecided = true;
  }

  const char32_t* text_;
  std::u32string composed_;
  static constexpr size_t kKept = 16;
  Piece keptPieces_[kKept];
  size_t kept_ = 0;
};

}  // namespace

template <class Form>
bool isComposedWithIndex(const String& s) {
  const size_t length = s.length();
  const char32_t plainBelow =
      std::min(Form::checkedBelow(), Form::composedCopiedBelow());
  QuickChecker<Form> checker(s.data());
  if (!walkPieces<Form>(s.data(), 0, length, plainBelow, checker)) {
    if (!checker.restart) return false;
    // Everything before the first piece not kept is checked, and composes
    // to itself.
    checker.restart = false;
    if (!walkPieces<Form>(s.data(), checker.notKeptFrom, length, plainBelow,
                          checker))
      return false;
  }
  if (!checker.maybe) return true;
  if (length < 2) return composeShort<Form>(s) == s;
  if (checker.differs) return false;
  return !checker.undecided || composeWithIndex<Form>(s) == s;
}

template bool isComposedWithIndex<CanonicalForm>(const String& s);
template bool isComposedWithIndex<CompatibilityForm>(const String& s);

}  // namespace unicode
}  // namespace zelvo
