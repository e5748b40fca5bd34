// Normal form checks over a text in pieces, with the same answer as a check
// of the whole text.
#include "NormalFormCheck.h"

#include "transform/UnicodeOperations.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::String;

bool decomposedCheck(NormalForm form, const String& s) {
  return form == NormalForm::nfd ? unicode::isNFD(s) : unicode::isNFKD(s);
}

bool composedCheck(NormalForm form, const String& s) {
  return form == NormalForm::nfc ? unicode::isNFC(s) : unicode::isNFKC(s);
}

String composed(NormalForm form, const String& s) {
  return form == NormalForm::nfc ? unicode::toNFC(s) : unicode::toNFKC(s);
}

// The code points whose quick check value is Maybe, from the library's own
// tables, for the same answer as the library's check.
bool hasMaybe(NormalForm form, const String& s) {
  const unicode::RangeList& maybe =
      form == NormalForm::nfc ? unicode::gTransformTables.nfcQcMaybeRanges
                              : unicode::gTransformTables.nfkcQcMaybeRanges;
  for (char32_t c : s) {
    if (unicode::rangeContains(maybe, c)) return true;
  }
  return false;
}

}  // namespace

bool NormalFormCheck::feed(const String& piece) {
  if (failed_) return false;
  if (form_ == NormalForm::nfd || form_ == NormalForm::nfkd) {
    const char32_t threshold = form_ == NormalForm::nfd ? 0xC0 : 0xA0;
    String checked;
    if (haveCarry_) checked.push_back(carry_);
    checked += piece;
    if (!decomposedCheck(form_, checked)) {
      failed_ = true;
      return false;
    }
    for (auto it = piece.rbegin(); it != piece.rend(); ++it) {
      if (*it >= threshold) {
        carry_ = *it;
        haveCarry_ = true;
        break;
      }
    }
    return true;
  }
  if (!composedCheck(form_, piece)) {
    failed_ = true;
    return false;
  }
  // A piece that passes its check with a Maybe in it is unchanged by
  // normalization; one without must be compared here.
  if (hasMaybe(form_, piece)) {
    sawMaybe_ = true;
  } else if (allUnchanged_ && composed(form_, piece) != piece) {
    allUnchanged_ = false;
  }
  if (sawMaybe_ && !allUnchanged_) failed_ = true;
  return !failed_;
}

bool NormalFormCheck::answer() const { return !failed_; }

}  // namespace tool
}  // namespace zelvo
