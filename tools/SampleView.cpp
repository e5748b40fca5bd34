// Writing a command's sample run: the line in, the line out.
#include "SampleView.h"

#include "Output.h"

namespace zelvo {
namespace tool {

namespace {

std::string viewOf(const unicode::String& s, SampleView view) {
  switch (view) {
    case SampleView::escaped:
      return escapedText(s);
    case SampleView::codePoints:
      return codePointNames(s);
    default:
      return s.toUTF8String();
  }
}

}  // namespace

std::string sampleHeading(const Invocation& inv) {
  return "zelvo-unicode " + inv.command +
         " on the built-in sample; name a FILE or pipe text in for yours.\n\n";
}

void showTextSample(const Invocation& inv,
                    const std::vector<std::string>& lines,
                    const TextOperation& operation, SampleView view) {
  std::string out = sampleHeading(inv);
  for (const std::string& line : lines) {
    unicode::String in(line + "\n");
    unicode::String result = operation(in);
    in.pop_back();
    if (!result.empty() && result.back() == U'\n') result.pop_back();
    if (view == SampleView::text) {
      out += "  " + viewOf(in, view) + "\n";
      out += "  \xE2\x86\x92 " + viewOf(result, view) + "\n";
    } else {
      out += "  " + in.toUTF8String() + "\n";
      out += "    in:  " + viewOf(in, view) + "\n";
      out += "    out: " + viewOf(result, view) + "\n";
    }
  }
  writeOut(out);
}

}  // namespace tool
}  // namespace zelvo
