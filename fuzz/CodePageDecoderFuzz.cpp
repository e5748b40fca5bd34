// Fuzzes the code page decoders: every registered built-in page and the
// default page turn each byte into exactly one code point of their table,
// and every byte that is no hole comes back through the encoder.
#include <cstdint>
#include <string>

#include "codepage/CodePage.h"
#include "codepage/CodePageTranslator.h"
#include "fuzz/CodePageModel.h"
#include "fuzz/FuzzSupport.h"

using zelvo::unicode::CodePage;
using zelvo::unicode::CodePageTranslator;
using zelvo::unicode::String;
using namespace zelvo_fuzz;

namespace {

void checkPage(const CodePage& page, const Table& table,
               const std::string& bytes) {
  const String decoded = page.toUnicode(bytes);
  FUZZ_CHECK(decoded.size() == bytes.size(), page.getName() + hexBytes(bytes));
  FUZZ_CHECK(decoded == modelDecode(table, bytes),
             page.getName() + hexBytes(bytes));

  // Back again: each byte is itself unless it was a hole, which comes back
  // as '?' and is the only thing that makes the trip lossy.
  bool lossy = false;
  const std::string encoded = page.fromUnicode(decoded, lossy);
  std::string want = bytes;
  bool anyHole = false;
  for (char& ch : want) {
    uint8_t b = static_cast<uint8_t>(ch);
    if (b >= 0x80 && table[b - 0x80] == kHole) {
      ch = '?';
      anyHole = true;
    }
  }
  FUZZ_CHECK(encoded == want, page.getName() + hexBytes(bytes));
  FUZZ_CHECK(lossy == anyHole, page.getName() + hexBytes(bytes));

  // Removing the holes leaves exactly the bytes that had a character.
  String clean = decoded;
  clean.stripReplacementCodePoints();
  size_t holes = 0;
  for (char32_t c : decoded) holes += (c == kHole);
  FUZZ_CHECK(clean.size() + holes == decoded.size(),
             page.getName() + hexBytes(bytes));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);

  const struct {
    const char* name;
    Table table;
  } builtIns[] = {{"Windows-1252", windows1252()},
                  {"Windows-874", windows874()}};
  for (const auto& builtIn : builtIns) {
    FUZZ_CHECK(CodePageTranslator::hasCodePage(builtIn.name), builtIn.name);
    const CodePage& page = CodePageTranslator::getCodePage(builtIn.name);
    checkPage(page, builtIn.table, bytes);
    FUZZ_CHECK(CodePageTranslator::translate(bytes, builtIn.name) ==
                   page.toUnicode(bytes),
               builtIn.name + hexBytes(bytes));
  }

  checkPage(CodePage(), defaultTable(), bytes);

  // A name is found only as it stands, so the decoder of a near name is
  // never reached.
  bool threw = false;
  try {
    CodePageTranslator::translate(bytes, std::string("windows-1252"));
  } catch (CodePageTranslator::exceptions e) {
    threw = (e == CodePageTranslator::unknownCodePage);
  }
  FUZZ_CHECK(threw, "lower-case page name");
  return 0;
}
