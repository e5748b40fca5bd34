// nfc, nfd, nfkc and nfkd: the four normal forms, text cut at line ends.
#include "Commands.h"
#include "Runner.h"
#include "Sample.h"
#include "transform/UnicodeOperations.h"

namespace zelvo {
namespace tool {

int runNormalization(const Invocation& inv) {
  using unicode::String;
  TextOperation operation;
  if (inv.command == "nfc") {
    operation = [](const String& s) { return unicode::toNFC(s); };
  } else if (inv.command == "nfd") {
    operation = [](const String& s) { return unicode::toNFD(s); };
  } else if (inv.command == "nfkc") {
    operation = [](const String& s) { return unicode::toNFKC(s); };
  } else {
    operation = [](const String& s) { return unicode::toNFKD(s); };
  }
  // Marks are ordered and composed within runs that start at a starter; a
  // line end is one and composes with nothing, so a piece that ends with
  // one normalizes as it would inside the whole text.
  return runTextCommand(inv, operation, true, SampleView::escaped,
                        sampleLines());
}

}  // namespace tool
}  // namespace zelvo
