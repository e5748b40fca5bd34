// check FORM: whether text is in a normal form, told by a word and the exit
// status.
#include "Commands.h"
#include "NormalFormCheck.h"
#include "Output.h"
#include "Runner.h"
#include "Sample.h"
#include "ToolError.h"

namespace zelvo {
namespace tool {

namespace {

NormalForm formNamed(const std::string& name) {
  if (name == "nfc") return NormalForm::nfc;
  if (name == "nfd") return NormalForm::nfd;
  if (name == "nfkc") return NormalForm::nfkc;
  if (name == "nfkd") return NormalForm::nfkd;
  throw UsageError("check: unknown normal form '" + name +
                   "': name one of nfc, nfd, nfkc and nfkd");
}

const char* word(bool yes) { return yes ? "yes" : "no"; }

}  // namespace

int runCheck(const Invocation& given) {
  Invocation inv = given;
  if (inv.operands.empty()) {
    throw UsageError("check: name the form to check: nfc, nfd, nfkc or nfkd");
  }
  NormalForm form = formNamed(inv.operands.front());
  inv.operands.erase(inv.operands.begin());

  if (wantsSample(inv)) {
    std::string out = sampleHeading(inv);
    NormalFormCheck whole(form);
    for (const std::string& line : sampleLines()) {
      unicode::String text(line + "\n");
      NormalFormCheck one(form);
      one.feed(text);
      whole.feed(text);
      out += std::string("  ") + word(one.answer()) + "\t" + line + "\n";
    }
    out += std::string("\nthe whole sample: ") + word(whole.answer()) + "\n";
    writeOut(out);
    return whole.answer() ? 0 : 1;
  }

  bool named = inv.operands.size() > 1;
  return forEachInput(inv, [&](Input& input) {
    NormalFormCheck check(form);
    forEachTextPiece(input, inv, true, [&](const unicode::String& piece) {
      return check.feed(piece);
    });
    std::string line = named ? input.displayName() + ": " : "";
    writeOut(line + word(check.answer()) + "\n");
    return check.answer() ? 0 : 1;
  });
}

}  // namespace tool
}  // namespace zelvo
