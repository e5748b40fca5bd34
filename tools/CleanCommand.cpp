// clean: strip bad code points from UTF-8 text, or replace them by U+FFFD.
#include "Commands.h"
#include "Runner.h"
#include "Sample.h"
#include "ToolError.h"

namespace zelvo {
namespace tool {

int runClean(const Invocation& inv) {
  using unicode::String;
  if (inv.strip == inv.replace) {
    throw UsageError("clean: give one of --strip and --replace");
  }
  TextOperation operation;
  if (inv.strip) {
    operation = [](const String& s) {
      String result(s);
      result.stripBadCodePoints();
      return result;
    };
  } else {
    operation = [](const String& s) {
      String result(s);
      result.replaceBadCodePoints();
      return result;
    };
  }
  return runTextCommand(inv, operation, false, SampleView::codePoints,
                        sampleBadLines());
}

}  // namespace tool
}  // namespace zelvo
