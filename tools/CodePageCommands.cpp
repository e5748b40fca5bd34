// decode, encode and pages: single-byte code pages by name.
#include "Commands.h"
#include "Output.h"
#include "codepage/CodePageTranslator.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::CodePageTranslator;
using unicode::String;

// Encodes and counts the characters that had no byte: each one leaves a
// '?' where the text had a code point above ASCII. Bad code points are
// stripped first, as the page itself does, so the positions line up.
std::string encodeCounting(const unicode::CodePage& page, const String& text,
                           std::size_t& missing) {
  String clean(text);
  clean.stripBadCodePoints();
  std::string bytes = page.fromUnicode(clean);
  for (std::size_t i = 0; i < clean.size() && i < bytes.size(); ++i) {
    if (clean[i] >= 0x80 && bytes[i] == '?') ++missing;
  }
  return bytes;
}

// With --strict, tells how many characters had no byte: status 1 if any.
int tellMissing(const Invocation& inv, const std::string& where,
                std::size_t missing) {
  if (!inv.strict || missing == 0) return 0;
  tellError("encode: " + where + ": " + std::to_string(missing) +
            (missing == 1 ? " character has" : " characters have") +
            " no byte in " + inv.page + " and became '?'");
  return 1;
}

}  // namespace

int runDecode(const Command&, const Invocation& inv) {
  const unicode::CodePage& page = CodePageTranslator::getCodePage(inv.page);
  if (wantsSample(inv)) {
    std::string out = sampleHeading(inv);
    for (const std::string& bytes : sampleCodePageLines(inv.page)) {
      out += "  " + hexUnits(bytes) + "\n";
      out += "  \xE2\x86\x92 " + page.toUnicode(bytes).toUTF8String() + "\n";
    }
    writeOut(out);
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    forEachPiece(input, inv.blockSize, 1, nullptr,
                 [&](const std::string& bytes) {
                   writeOut(page.toUnicode(bytes).toUTF8String());
                   return true;
                 });
    return 0;
  });
}

int runEncode(const Command&, const Invocation& inv) {
  const unicode::CodePage& page = CodePageTranslator::getCodePage(inv.page);
  if (wantsSample(inv)) {
    std::vector<std::string> lines = sampleLines();
    lines.push_back(
        "\xE0\xB8\xA0\xE0\xB8\xB2\xE0\xB8\xA9\xE0\xB8\xB2"
        "\xE0\xB9\x84\xE0\xB8\x97\xE0\xB8\xA2");
    std::string out = sampleHeading(inv);
    std::size_t total = 0;
    for (const std::string& line : lines) {
      std::size_t missing = 0;
      std::string bytes = encodeCounting(page, String(line), missing);
      total += missing;
      out += "  " + line + "\n  \xE2\x86\x92 " + hexUnits(bytes);
      if (missing) out += "  (" + std::to_string(missing) + " without a byte)";
      out += "\n";
    }
    writeOut(out);
    return tellMissing(inv, "the sample", total);
  }
  return forEachInput(inv, [&](Input& input) {
    std::size_t missing = 0;
    forEachTextPiece(input, inv, cutAnywhere, [&](const String& piece) {
      writeOut(encodeCounting(page, piece, missing));
      return true;
    });
    return tellMissing(inv, input.displayName(), missing);
  });
}

int runPages(const Command&, const Invocation& inv) {
  if (!inv.operands.empty()) {
    throw UsageError("pages: takes no operand, but was given '" +
                     inv.operands.front() + "'");
  }
  std::string out;
  for (const auto& entry : CodePageTranslator::codePages) {
    out += entry.first + "\n";
  }
  writeOut(out);
  return 0;
}

}  // namespace tool
}  // namespace zelvo
