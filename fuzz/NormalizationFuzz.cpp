// Fuzzes the four normalization forms and the four quick checks on fuzz text.
// Decomposition is checked exactly against a model on the library's tables;
// composition against the standard's algorithm and by canonical equivalence
// and idempotence, except where the library's own rules part from those:
// U+11A7 taken as a trailing consonant and swallowed, and an input element
// equal to the composition's consumed-slot marker 0xFFFFFFFF. Setting
// ZELVO_FUZZ_NO_EXEMPTIONS in the environment checks those inputs too, to
// show where the two rules bite.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "fuzz/NormalizationModel.h"
#include "transform/UnicodeOperations.h"

using namespace zelvo::unicode;
using namespace zelvo_fuzz;

namespace {

// Quadratic paths (a full normalization for every Maybe code point) make
// long inputs slow without reaching anything new.
constexpr size_t kMaxElements = 512;

bool exemptionsOff() {
  static const bool off = std::getenv("ZELVO_FUZZ_NO_EXEMPTIONS") != nullptr;
  return off;
}

// Where the library's composition rules knowingly differ from a canonically
// equivalent, idempotent composition.
bool partsFromStandard(const String& decomposed) {
  if (exemptionsOff()) return false;
  for (char32_t c : decomposed)
    if (c == 0x11A7 || c == 0xFFFFFFFF) return true;
  return false;
}

void checkDecomposed(const String& s, const String& d, bool compatibility) {
  const char* form = compatibility ? "NFKD" : "NFD";
  const std::string where =
      std::string(form) + " of " + hex(s) + " = " + hex(d);
  FUZZ_CHECK(d == modelDecompose(s, compatibility), where);
  FUZZ_CHECK(d.size() >= s.size(), where);
  for (char32_t c : d) FUZZ_CHECK(!hasDecomposition(c, compatibility), where);
  FUZZ_CHECK(marksInOrder(d), where);
  const String again = compatibility ? toNFKD(d) : toNFD(d);
  FUZZ_CHECK(again == d, where);
}

void checkComposed(const String& s, const String& d, const String& c,
                   bool compatibility) {
  const std::string where = std::string(compatibility ? "NFKC" : "NFC") +
                            " of " + hex(s) + " = " + hex(c);
  auto compose = [&](const String& x) {
    return compatibility ? toNFKC(x) : toNFC(x);
  };
  auto decompose = [&](const String& x) {
    return compatibility ? toNFKD(x) : toNFD(x);
  };
  // The working string is the decomposed form however it was reached.
  FUZZ_CHECK(compose(d) == c, where);
  FUZZ_CHECK(c.size() <= d.size(), where);
  if (partsFromStandard(d)) return;
  FUZZ_CHECK(c == modelCompose(d), where + " standard " + hex(modelCompose(d)));
  FUZZ_CHECK(decompose(c) == d, where);
  FUZZ_CHECK(compose(c) == c, where);
}

void checkQuickChecks(const String& s, const String& d, const String& kd,
                      const String& c, const String& kc) {
  const std::string where = hex(s);
  const bool nfd = isNFD(s), nfkd = isNFKD(s), nfc = isNFC(s), nfkc = isNFKC(s);

  // The decomposed checks are the library's own rule exactly, and are never
  // too lax: a yes means the form leaves the string alone.
  FUZZ_CHECK(nfd == modelIsDecomposed(s, 0xC0, gTransformTables.nfdQcNoRanges),
             where);
  FUZZ_CHECK(
      nfkd == modelIsDecomposed(s, 0xA0, gTransformTables.nfkdQcNoRanges),
      where);
  if (nfd) FUZZ_CHECK(d == s, where);
  if (nfkd) FUZZ_CHECK(kd == s, where);

  // The composed checks follow toNFC and toNFKC: a string they leave alone
  // passes, and, outside the composition rules that part from the standard,
  // a string that passes is left alone.
  if (c == s) FUZZ_CHECK(nfc, where);
  if (kc == s) FUZZ_CHECK(nfkc, where);
  if (!partsFromStandard(d) && nfc) FUZZ_CHECK(c == s, where);
  if (!partsFromStandard(kd) && nfkc) FUZZ_CHECK(kc == s, where);

  // Normalized output passes the checks that the library's rules promise.
  FUZZ_CHECK(isNFC(c) == (toNFC(c) == c) || partsFromStandard(d), where);
  FUZZ_CHECK(isNFKC(kc) == (toNFKC(kc) == kc) || partsFromStandard(kd), where);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  String s = fuzzText(data, size);
  if (s.size() > kMaxElements) s.resize(kMaxElements);
  const String original = s;

  const String d = toNFD(s);
  const String kd = toNFKD(s);
  const String c = toNFC(s);
  const String kc = toNFKC(s);
  FUZZ_CHECK(s == original, "an argument changed: " + hex(original));

  checkDecomposed(s, d, false);
  checkDecomposed(s, kd, true);
  FUZZ_CHECK(toNFKD(d) == kd, hex(s));
  checkComposed(s, d, c, false);
  checkComposed(s, kd, kc, true);
  checkQuickChecks(s, d, kd, c, kc);
  return 0;
}
