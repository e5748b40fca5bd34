// The built-in sample texts and how a command shows its work on them. Escapes
// keep the source ASCII and show which characters are precomposed and which
// are built of marks.
#include "Sample.h"

#include "Commands.h"
#include "Output.h"

namespace zelvo {
namespace tool {

namespace {

// UTF-8 lines that hold bad code points, for 'clean'.
const std::vector<std::string>& sampleBadLines() {
  static const std::vector<std::string> lines = {
      // ED A0 80 is the surrogate U+D800, encoded as if it were a character.
      "A\xED\xA0\x80"
      "B",
      // F4 90 80 80 is 0x110000, one above the last code point.
      "\xF4\x90\x80\x80"
      "!",
      // A U+FFFD that was there before is no bad code point.
      "caf\u00E9 \uFFFD",
  };
  return lines;
}

}  // namespace

const std::vector<std::string>& sampleLines() {
  static const std::vector<std::string> lines = {
      // Precomposed accents, and the same letter built of a mark.
      "Cr\u00E8me br\u00FBl\u00E9e, d\u00E9j\u00E0 vu",
      "cafe\u0301 or caf\u00E9",
      // Hangul syllables, and conjoining jamo that compose into them.
      "\uD55C\uAE00 and \u1112\u1161\u11AB\u1100\u1173\u11AF",
      // The Turkish dotted capital I and dotless small i.
      "\u0130zmir, D\u0130YARBAKIR, \u0131I i\u0130",
      // Capital sigma, final at the end of a word.
      "\u039F\u0394\u03A5\u03A3\u03A3\u0395\u03A5\u03A3, "
      "\u03A3\u039F\u03A6\u039F\u03A3.",
      // Ligatures, the sharp s, a titlecase digraph, compatibility forms.
      "\uFB01ne \uFB02our, Stra\u00DFe, \u01C5, \u00BD, \u2460",
      // Singletons, and marks to be put in canonical order.
      "\u212B \u2126 \u1E9B\u0323 q\u0307\u0323",
      // Lithuanian keeps the dot of i under an accent.
      "\u012E\u017DANGA: \u00CC \u00CD \u0128",
  };
  return lines;
}

std::string sampleText() {
  std::string text;
  for (const std::string& line : sampleLines()) text += line + "\n";
  return text;
}

std::vector<std::string> sampleCodePageLines(const std::string& page) {
  if (page == "Windows-1252") {
    return {
        "Cr\xE8me br\xFBl\xE9"
        "e, \x80"
        "5, \x93quoted\x94",
        // 0x81 is a byte that the page leaves undefined.
        "hole: \x81",
    };
  }
  if (page == "Windows-874") {
    return {
        // Thai, "the Thai language".
        "\xC0\xD2\xC9\xD2\xE4\xB7\xC2 \x85",
        "hole: \xDB",
    };
  }
  return {"A \x80 \xA9 \xE9 \xFF"};
}

const std::vector<char32_t>& sampleCodePoints() {
  static const std::vector<char32_t> codePoints = {
      0x00E9, 0x0301, 0x00DF, 0x0130, 0x03A3,
      0x01C5, 0xFB01, 0xAC01, 0x212B, 0x0378,
  };
  return codePoints;
}

bool wantsSample(const Invocation& inv) {
  if (inv.sample && !inv.operands.empty()) {
    throw UsageError(inv.command +
                     ": --sample takes no FILE; give one or the other");
  }
  return inv.sample || (inv.operands.empty() && standardInputIsTerminal());
}

std::string sampleHeading(const Invocation& inv) {
  return "zelvo-unicode " + inv.command +
         " on the built-in sample; name a FILE or pipe text in for yours.\n\n";
}

void showTextSample(const Invocation& inv, TextMap map, SampleView view) {
  auto shown = [view](const unicode::String& s) {
    if (view == SampleView::normalForm) return escapedText(s);
    if (view == SampleView::badCodePoints) return codePointNames(s);
    return s.toUTF8String();
  };
  std::string out = sampleHeading(inv);
  for (const std::string& line :
       view == SampleView::badCodePoints ? sampleBadLines() : sampleLines()) {
    unicode::String in(line + "\n");
    unicode::String result = map(in, inv);
    in.pop_back();
    if (!result.empty() && result.back() == U'\n') result.pop_back();
    if (view == SampleView::casing) {
      out += "  " + shown(in) + "\n  \xE2\x86\x92 " + shown(result) + "\n";
    } else {
      out += "  " + in.toUTF8String() + "\n    in:  " + shown(in) +
             "\n    out: " + shown(result) + "\n";
    }
  }
  writeOut(out);
}

int runSample(const Command&, const Invocation& inv) {
  if (!inv.operands.empty()) {
    throw UsageError("sample: takes no operand, but was given '" +
                     inv.operands.front() + "'");
  }
  writeOut(sampleText());
  return 0;
}

}  // namespace tool
}  // namespace zelvo
