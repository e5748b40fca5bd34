// check FORM: whether text is in a normal form, told by a word and the exit
// status, with the answer of the library's check on the whole text.
#include "NormalFormCheck.h"

#include <algorithm>

#include "Commands.h"
#include "Output.h"
#include "transform/UnicodeOperations.h"

namespace zelvo {
namespace tool {

using unicode::String;

struct NormalForm {
  const char* name;
  bool (*check)(const String&);
  String (*normalize)(const String&);
  // nfc and nfkc: the code points at which the check compares the whole text
  // with its normal form.
  const unicode::RangeList* maybe;
};

namespace {

const NormalForm kForms[] = {
    {"nfc", unicode::isNFC, unicode::toNFC,
     &unicode::gTransformTables.nfcQcMaybeRanges},
    {"nfd", unicode::isNFD, unicode::toNFD, nullptr},
    {"nfkc", unicode::isNFKC, unicode::toNFKC,
     &unicode::gTransformTables.nfkcQcMaybeRanges},
    {"nfkd", unicode::isNFKD, unicode::toNFKD, nullptr},
};

const char* word(bool yes) { return yes ? "yes" : "no"; }

}  // namespace

NormalFormCheck::NormalFormCheck(const std::string& form) : form_(nullptr) {
  for (const NormalForm& candidate : kForms) {
    if (form == candidate.name) form_ = &candidate;
  }
  if (form_ == nullptr) {
    throw UsageError("check: unknown normal form '" + form +
                     "': name one of nfc, nfd, nfkc and nfkd");
  }
  if (form_->maybe) return;
  // The mark of the lowest class that the check takes on its own. A mark
  // of a lower class is refused wherever it stands.
  for (const auto& weight : unicode::gTransformTables.weightMap) {
    if ((probe_ == 0 || weight.second < combiningClass(probe_)) &&
        form_->check(String(1, weight.first))) {
      probe_ = weight.first;
    }
  }
}

// isNFD and isNFKD carry one thing from code point to code point: the class
// of the last code point they looked at, kept across the code points that
// they pass over unseen. They see every mark (ToolNormalFormCheckTest checks
// that fact), and the text checked so far has passed, so all that matters
// of it is its last mark, if its class is still carried at the end. The
// check itself tells, asked with the probe behind the mark and what followed
// it. Where it says yes to a carried class no higher than the probe's, that
// class can refuse nothing: a mark of a lower class than the probe's is
// refused wherever it stands.
String NormalFormCheck::carriedMark(const String& checked) const {
  std::size_t after = checked.size();
  while (after > 0 && combiningClass(checked[after - 1]) == 0) --after;
  if (after == 0) return String();
  String mark(1, checked[after - 1]);
  String probe = mark + checked.substr(after) + String(1, probe_);
  return form_->check(probe) ? String() : mark;
}

// isNFC and isNFKC start afresh at every code point of class 0, and every
// piece begins with one; at a Maybe code point they compare the whole text
// with its normal form, which it equals exactly when every piece equals its
// own (see cutForNormalForms). A piece that passes its own check with a Maybe
// in it equals its normal form; one without is compared here.
bool NormalFormCheck::feed(const String& piece) {
  if (failed_) return false;
  if (!form_->maybe) {
    String checked = carry_ + piece;
    failed_ = !form_->check(checked);
    if (!failed_) carry_ = carriedMark(checked);
    return !failed_;
  }
  if (!form_->check(piece)) {
    failed_ = true;
    return false;
  }
  if (std::any_of(piece.begin(), piece.end(), [&](char32_t c) {
        return unicode::rangeContains(*form_->maybe, c);
      })) {
    sawMaybe_ = true;
  } else if (!changed_ && form_->normalize(piece) != piece) {
    changed_ = true;
  }
  failed_ = sawMaybe_ && changed_;
  return !failed_;
}

int runCheck(const Command&, const Invocation& given) {
  Invocation inv = given;
  if (inv.operands.empty()) {
    throw UsageError("check: name the form to check: nfc, nfd, nfkc or nfkd");
  }
  const std::string form = inv.operands.front();
  inv.operands.erase(inv.operands.begin());
  NormalFormCheck whole(form);
  if (wantsSample(inv)) {
    std::string out = sampleHeading(inv);
    for (const std::string& line : sampleLines()) {
      NormalFormCheck one(form);
      one.feed(String(line + "\n"));
      out += std::string("  ") + word(one.answer()) + "\t" + line + "\n";
    }
    whole.feed(String(sampleText()));
    out += std::string("\nthe whole sample: ") + word(whole.answer()) + "\n";
    writeOut(out);
    return whole.answer() ? 0 : 1;
  }
  bool named = inv.operands.size() > 1;
  return forEachInput(inv, [&](Input& input) {
    NormalFormCheck check(form);
    forEachTextPiece(input, inv, cutForNormalForms,
                     [&](const String& piece) { return check.feed(piece); });
    std::string name = named ? input.displayName() + ": " : "";
    writeOut(name + word(check.answer()) + "\n");
    return check.answer() ? 0 : 1;
  });
}

}  // namespace tool
}  // namespace zelvo
