// The answer of a normal form check on a whole text, worked out piece by
// piece.
#pragma once

#include "string/String.h"

namespace zelvo {
namespace tool {

enum class NormalForm { nfc, nfd, nfkc, nfkd };

// Feeds pieces cut at line ends and gives the answer that the library's
// isNFC, isNFD, isNFKC or isNFKD gives for the whole text. Two things of
// the quick checks reach across a line end, and are carried here:
//  - isNFD and isNFKD look nothing up below their thresholds (U+00C0 and
//    U+00A0), a line end among them, and keep the combining class of the
//    last code point at or above the threshold. That code point is put in
//    front of the next piece, which then starts in the same state.
//  - isNFC and isNFKC, at a code point whose value is Maybe, compare the
//    whole text with its normalized form. The text is unchanged by
//    normalization exactly when each piece is, so each piece is checked on
//    its own, and the pieces without a Maybe code point are also compared
//    with their normalized form, since a Maybe anywhere makes that count.
class NormalFormCheck {
 public:
  explicit NormalFormCheck(NormalForm form) : form_(form) {}
  // Takes the next piece; false once the answer is known to be no.
  bool feed(const unicode::String& piece);
  // The answer for all pieces fed so far.
  bool answer() const;

 private:
  NormalForm form_;
  bool failed_ = false;
  // NFD and NFKD: the last code point at or above the threshold, if any.
  bool haveCarry_ = false;
  char32_t carry_ = 0;
  // NFC and NFKC.
  bool sawMaybe_ = false;
  bool allUnchanged_ = true;
};

}  // namespace tool
}  // namespace zelvo
