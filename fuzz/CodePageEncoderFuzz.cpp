// Fuzzes the code page encoders, and the registry on a page built from a
// fuzzed table: any text encodes as the model says (bad code points dropped,
// '?' and the flag for what has no byte), and a fuzzed page decodes one code
// point a byte whatever its table holds.
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

uint64_t next(uint64_t& state) {
  uint64_t z = (state += 0x9E3779B97F4A7C15ull);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

// Holes, duplicates, ASCII values, surrogates and values above U+10FFFF are
// all allowed in a table and stored as they stand.
Table fuzzedTable(uint64_t seed) {
  Table t;
  for (int i = 0; i < 128; ++i) {
    uint64_t r = next(seed);
    switch (r % 8) {
      case 0:
        t[i] = kHole;
        break;
      case 1:
        t[i] = 0x80 + i;
        break;
      case 2:
        t[i] = (r >> 8) % 0x80;
        break;
      case 3:
        t[i] = i ? t[(r >> 8) % i] : 0x100;
        break;
      case 4:
        t[i] = 0xD800 + (r >> 8) % 0x800;
        break;
      case 5:
        t[i] = 0x110000 + static_cast<uint32_t>(r >> 8);
        break;
      case 6:
        t[i] = (r >> 8) % 0x10000;
        break;
      default:
        t[i] = 0x80 + (r >> 8) % 0x280;
        break;
    }
  }
  return t;
}

void checkEncoder(const CodePage& page, const Table& table,
                  const String& text) {
  const std::string where = page.getName() + " " + hex(text);
  bool wantLossy;
  const std::string want = modelEncode(table, text, wantLossy);

  bool lossy = !wantLossy;  // the call sets it whatever it held
  const String before = text;
  FUZZ_CHECK(page.fromUnicode(text, lossy) == want, where);
  FUZZ_CHECK(lossy == wantLossy, where);
  FUZZ_CHECK(text == before, where);
  FUZZ_CHECK(page.fromUnicode(text) == want, where);

  size_t good = 0;
  for (char32_t c : text) good += !isBad(c);
  FUZZ_CHECK(want.size() == good, where);
}

void checkDecoder(const CodePage& page, const Table& table,
                  const std::string& bytes) {
  const String decoded = page.toUnicode(bytes);
  FUZZ_CHECK(decoded.size() == bytes.size(), page.getName() + hexBytes(bytes));
  FUZZ_CHECK(decoded == modelDecode(table, bytes),
             page.getName() + hexBytes(bytes));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  uint64_t seed = 0;
  for (size_t i = 0; i < 8 && i < size; ++i)
    seed |= uint64_t(data[i]) << (8 * i);
  const size_t skip = size < 8 ? size : 8;
  const String text = fuzzText(data + skip, size - skip);
  const std::string bytes(reinterpret_cast<const char*>(data), size);

  checkEncoder(CodePageTranslator::getCodePage("Windows-1252"), windows1252(),
               text);
  checkEncoder(CodePageTranslator::getCodePage("Windows-874"), windows874(),
               text);
  checkEncoder(CodePage(), defaultTable(), text);

  const Table table = fuzzedTable(seed);
  const CodePage page("fuzzed page", table);
  checkEncoder(page, table, text);
  checkDecoder(page, table, bytes);

  // Through the registry the page behaves as it does on its own, and it is
  // gone again after it is removed.
  CodePageTranslator::registerCodePage(page);
  bool lossy = true, wantLossy;
  FUZZ_CHECK(CodePageTranslator::translate(text, "fuzzed page", lossy) ==
                 modelEncode(table, text, wantLossy),
             hex(text));
  FUZZ_CHECK(lossy == wantLossy, hex(text));
  FUZZ_CHECK(CodePageTranslator::translate(text, "fuzzed page") ==
                 page.fromUnicode(text),
             hex(text));
  FUZZ_CHECK(CodePageTranslator::translate(bytes, "fuzzed page") ==
                 modelDecode(table, bytes),
             hexBytes(bytes));
  CodePageTranslator::unregisterCodePage("fuzzed page");
  FUZZ_CHECK(!CodePageTranslator::hasCodePage("fuzzed page"), "unregistered");

  // An unknown name leaves the flag as the caller gave it.
  lossy = true;
  bool threw = false;
  try {
    CodePageTranslator::translate(text, "fuzzed page", lossy);
  } catch (CodePageTranslator::exceptions) {
    threw = true;
  }
  FUZZ_CHECK(threw && lossy, "unknown page keeps the flag");
  return 0;
}
