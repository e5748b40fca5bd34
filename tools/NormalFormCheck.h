// The answer of a normal form check on a whole text, worked out piece by
// piece.
#pragma once

#include <string>

#include "string/String.h"

namespace zelvo {
namespace tool {

struct NormalForm;

// Feeds pieces cut by cutForNormalForms and gives the answer that the
// library's isNFC, isNFD, isNFKC or isNFKD gives for the whole text.
class NormalFormCheck {
 public:
  // The form by the name of its command: nfc, nfd, nfkc or nfkd; any other
  // name throws UsageError.
  explicit NormalFormCheck(const std::string& form);
  // Takes the next piece; false once the answer is known to be no.
  bool feed(const unicode::String& piece);
  // The answer for all pieces fed so far.
  bool answer() const { return !failed_; }

 private:
  unicode::String carriedMark(const unicode::String& checked) const;

  const NormalForm* form_;
  bool failed_ = false;
  // nfd and nfkd: what the check carries into the next piece, and the mark
  // that asks it whether a class is still carried.
  unicode::String carry_;
  char32_t probe_ = 0;
  // nfc and nfkc.
  bool sawMaybe_ = false;
  bool changed_ = false;
};

}  // namespace tool
}  // namespace zelvo
