// decode, encode and pages: single-byte code pages by name.
#include "Commands.h"
#include "Output.h"
#include "Pieces.h"
#include "Runner.h"
#include "Sample.h"
#include "ToolError.h"
#include "codepage/CodePageTranslator.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::CodePageTranslator;
using unicode::String;

// The page of --page; a missing or unknown name is a UsageError.
const unicode::CodePage& pageOf(const Invocation& inv) {
  if (!inv.pageGiven) {
    throw UsageError(inv.command +
                     ": name the code page with --page NAME (see "
                     "'zelvo-unicode pages')");
  }
  if (!CodePageTranslator::hasCodePage(inv.page)) {
    throw UsageError(inv.command + ": no code page named '" + inv.page +
                     "'; names are exact, and 'zelvo-unicode pages' "
                     "lists them");
  }
  return CodePageTranslator::getCodePage(inv.page);
}

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

std::string missingMessage(std::size_t missing, const std::string& page) {
  return std::to_string(missing) +
         (missing == 1 ? " character has" : " characters have") +
         " no byte in " + page + " and became '?'";
}

}  // namespace

int runDecode(const Invocation& inv) {
  const unicode::CodePage& page = pageOf(inv);
  if (wantsSample(inv)) {
    std::string out = sampleHeading(inv);
    for (const std::string& bytes : sampleCodePageLines(inv.page)) {
      out += "  " + hexBytes(bytes) + "\n";
      out += "  \xE2\x86\x92 " + page.toUnicode(bytes).toUTF8String() + "\n";
    }
    writeOut(out);
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    ByteCutter cutter;
    forEachPiece(input, inv.blockSize, cutter, [&](const std::string& bytes) {
      writeOut(CodePageTranslator::translate(bytes, inv.page).toUTF8String());
      return true;
    });
    return 0;
  });
}

int runEncode(const Invocation& inv) {
  const unicode::CodePage& page = pageOf(inv);
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
      out += "  " + line + "\n";
      out += "  \xE2\x86\x92 " + hexBytes(bytes);
      if (missing) out += "  (" + std::to_string(missing) + " without a byte)";
      out += "\n";
    }
    writeOut(out);
    if (inv.strict && total) {
      tellError("encode: the sample: " + missingMessage(total, inv.page));
      return 1;
    }
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    std::size_t missing = 0;
    forEachTextPiece(input, inv, false, [&](const String& piece) {
      writeOut(encodeCounting(page, piece, missing));
      return true;
    });
    if (inv.strict && missing) {
      tellError("encode: " + input.displayName() + ": " +
                missingMessage(missing, inv.page));
      return 1;
    }
    return 0;
  });
}

int runPages(const Invocation& inv) {
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
