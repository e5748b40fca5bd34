// info: what the library knows about code points given as U+XXXX, as text,
// or on standard input.
#include <cctype>

#include "Commands.h"
#include "Output.h"
#include "transform/UnicodeOperations.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::String;

bool isCodePointArgument(const std::string& arg) {
  return arg.size() > 2 && (arg[0] == 'U' || arg[0] == 'u') && arg[1] == '+';
}

char32_t parseCodePoint(const std::string& arg) {
  std::string digits = arg.substr(2);
  bool ok = !digits.empty() && digits.size() <= 8;
  for (char d : digits) ok = ok && std::isxdigit(static_cast<unsigned char>(d));
  if (!ok) {
    throw UsageError("info: '" + arg +
                     "' is no code point: write U+ and 1 to 8 hexadecimal "
                     "digits, as in U+00E9");
  }
  return static_cast<char32_t>(std::stoul(digits, nullptr, 16));
}

// Names and text; a mark at the front stands on a dotted circle, as in the
// code charts, so that it does not fall onto the space before it.
std::string shown(const String& s) {
  if (s.empty()) return "(nothing)";
  std::string text = codePointNames(s);
  std::string printable = printableText(s);
  if (printable.empty()) return text;
  if (combiningClass(s[0]) != 0) printable = "\xE2\x97\x8C" + printable;
  return text + "  " + printable;
}

std::string row(const char* label, const std::string& value) {
  std::string line = std::string("  ") + label;
  line.resize(22, ' ');
  return line + value + "\n";
}

std::string describe(char32_t c, const std::string& language) {
  String one(1, c);
  std::string text = shown(one) + "\n";
  text += row("assigned", unicode::isAssigned(c) ? "yes" : "no");
  if (one.hasBadCodePoints()) {
    text += row("note", "a bad code point: no UTF-8 form");
  }
  text += row("combining class", std::to_string(combiningClass(c)));
  text += row("simple upper", shown(String(1, unicode::toUpperSimple(c))));
  text += row("simple lower", shown(String(1, unicode::toLowerSimple(c))));
  text += row("simple title", shown(String(1, unicode::toTitleSimple(c))));
  text += row("full upper", shown(unicode::toUppperFull(c, language)));
  text += row("full lower", shown(unicode::toLowerFull(c, language)));
  text += row("full title", shown(unicode::toTitleFull(c, language)));
  text += row("simple folding", shown(String(1, unicode::simpleCaseFold(c))));
  text += row("NFD", shown(unicode::toNFD(one)));
  text += row("NFKD", shown(unicode::toNFKD(one)));
  text += row("NFC", shown(unicode::toNFC(one)));
  text += row("NFKC", shown(unicode::toNFKC(one)));
  return text;
}

// Describes each code point, with a blank line between two.
void describeAll(const String& codePoints, const std::string& language,
                 bool& first) {
  std::string out;
  for (char32_t c : codePoints) {
    if (!first) out += "\n";
    first = false;
    out += describe(c, language);
  }
  writeOut(out);
}

}  // namespace

int runInfo(const Command&, const Invocation& inv) {
  bool first = true;
  if (!inv.operands.empty() && !inv.sample) {
    String codePoints;
    for (const std::string& arg : inv.operands) {
      if (isCodePointArgument(arg)) {
        codePoints.push_back(parseCodePoint(arg));
      } else {
        codePoints += String(arg);
      }
    }
    describeAll(codePoints, inv.language, first);
    return 0;
  }
  if (wantsSample(inv)) {
    writeOut(sampleHeading(inv));
    String codePoints;
    for (char32_t c : sampleCodePoints()) codePoints.push_back(c);
    describeAll(codePoints, inv.language, first);
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    forEachTextPiece(input, inv, cutAnywhere, [&](const String& piece) {
      String codePoints;  // without the line ends
      for (char32_t c : piece) {
        if (c != U'\n' && c != U'\r') codePoints.push_back(c);
      }
      describeAll(codePoints, inv.language, first);
      return true;
    });
    return 0;
  });
}

}  // namespace tool
}  // namespace zelvo
