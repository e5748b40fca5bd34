// Fuzzes the four normal forms, the four quick checks, canonical ordering and
// composeHelper on fuzz text, each against the plain transcription of its
// written algorithm in tests/reference/NormalizationReference.h: the results,
// and the working string that composeHelper leaves behind, must be equal.
#include <cstdint>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "tests/reference/NormalizationReference.h"
#include "transform/UnicodeOperations.h"

using namespace zelvo::unicode;
using namespace zelvo_fuzz;

namespace {

// The written composed checks compose the whole string at every Maybe code
// point: long inputs make the reference slow without reaching anything new.
constexpr size_t kMaxElements = 512;

const zelvo_reference::NormalizationReference& reference() {
  static const zelvo_reference::NormalizationReference r(gTransformTables);
  return r;
}

void checkForm(const char* form, const String& s, const String& ours,
               const String& want) {
  FUZZ_CHECK(ours == want, std::string(form) + " of " + hex(s) + " = " +
                               hex(ours) + ", want " + hex(want));
}

void checkAnswer(const char* check, const String& s, bool ours, bool want) {
  FUZZ_CHECK(ours == want, std::string(check) + " of " + hex(s) + " = " +
                               (ours ? "true" : "false"));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  String s = fuzzText(data, size);
  if (s.size() > kMaxElements) s.resize(kMaxElements);
  const String original = s;
  const auto& r = reference();

  checkForm("toNFD", s, toNFD(s), r.toNFD(s));
  checkForm("toNFKD", s, toNFKD(s), r.toNFKD(s));
  checkForm("toNFC", s, toNFC(s), r.toNFC(s));
  checkForm("toNFKC", s, toNFKC(s), r.toNFKC(s));
  checkAnswer("isNFD", s, isNFD(s), r.isNFD(s));
  checkAnswer("isNFKD", s, isNFKD(s), r.isNFKD(s));
  checkAnswer("isNFC", s, isNFC(s), r.isNFC(s));
  checkAnswer("isNFKC", s, isNFKC(s), r.isNFKC(s));
  FUZZ_CHECK(s == original, "an argument changed: " + hex(original));

  String ours = s;
  String want = s;
  gTransformTables.sortCombiningMarks(ours);
  r.sortCombiningMarks(want);
  checkForm("sortCombiningMarks", s, ours, want);

  // composeHelper on the decomposed form, as toNFC hands it over, and on
  // the text as it stands, markers and all.
  for (const String& input : {r.toNFD(s), s}) {
    if (input.size() < 2) continue;
    ours = input;
    want = input;
    checkForm("composeHelper", input, gTransformTables.composeHelper(ours),
              r.composeHelper(want));
    checkForm("composeHelper's working string", input, ours, want);
  }
  return 0;
}
