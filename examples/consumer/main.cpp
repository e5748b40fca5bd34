// Uses the installed library the way a host program does, prints what it
// got, and fails if an answer is not the library's documented one.
#include <iostream>
#include <string>

#include "Unicode.h"

using namespace zelvo::unicode;

namespace {

int failures = 0;

void show(const std::string& what, const std::string& got,
          const std::string& expected) {
  std::cout << what << ": " << got << "\n";
  if (got != expected) {
    std::cout << "  expected: " << expected << "\n";
    ++failures;
  }
}

}  // namespace

int main() {
  // UTF-8 in, NFC and NFD, and the lengths in code points.
  String decomposed(std::string("cafe\xCC\x81"));
  String composed = toNFC(decomposed);
  show("NFC of \"cafe\" + U+0301", composed.toUTF8String(), "caf\xC3\xA9");
  show("code points before and after",
       std::to_string(decomposed.length()) + " -> " +
           std::to_string(composed.length()),
       "5 -> 4");

  // Full case mapping with context and language.
  String greek(
      std::string("\xCE\x9F\xCE\x94\xCE\xA5\xCE\xA3\xCE\xA3\xCE\x95"
                  "\xCE\xA5\xCE\xA3"));
  show("lower of ODYSSEUS in Greek", toLowerFull(greek).toUTF8String(),
       "\xCE\xBF\xCE\xB4\xCF\x85\xCF\x83\xCF\x83\xCE\xB5\xCF\x85\xCF\x82");
  show("lower of \"DIYARBAKIR\" in Turkish",
       toLowerFull(String(std::string("D\xC4\xB0YARBAKIR")), "tr")
           .toUTF8String(),
       "diyarbak\xC4\xB1r");
  show(
      "upper of \"stra\xC3\x9F"
      "e\"",
      toUpperFull(String(std::string("stra\xC3\x9F"
                                     "e")))
          .toUTF8String(),
      "STRASSE");

  // A code page by name.
  bool lossy = false;
  std::string bytes = CodePageTranslator::translate(
      String(std::string("\xE2\x82\xAC 5")), "Windows-1252", lossy);
  show("\"\xE2\x82\xAC 5\" in Windows-1252, first byte",
       std::to_string(static_cast<unsigned char>(bytes[0])), "128");

  show("U+0378 assigned", isAssigned(0x378) ? "yes" : "no", "no");

  if (failures) {
    std::cout << failures << " answer(s) differ\n";
    return 1;
  }
  std::cout << "all answers as expected\n";
  return 0;
}
