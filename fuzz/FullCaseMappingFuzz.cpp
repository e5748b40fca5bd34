// Fuzzes case mapping and folding with the languages "", "tr", "az", "lt",
// near misses, table keys and fuzzed text: against the plain transcription
// of the walk, its context tests and the simple lookups in
// tests/reference/CaseReference.h, and by properties that hold whatever the
// tables say.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/FuzzSupport.h"
#include "tests/reference/CaseReference.h"
#include "transform/UnicodeOperations.h"

using namespace zelvo::unicode;
using namespace zelvo_fuzz;

namespace {

zelvo_reference::CaseReference const& plain() {
  static zelvo_reference::CaseReference const reference(gTransformTables);
  return reference;
}

constexpr size_t kMaxElements = 2048;

std::string chooseLanguage(Reader& in) {
  static const char* const kNamed[] = {"", "tr", "az", "lt", "TR", "tr-TR"};
  uint8_t choice = in.byte() % 8;
  if (choice < 6) return kNamed[choice];
  if (choice == 6) {
    // A whole key of a condition table, taken as a language.
    const auto& table = gTransformTables.toLowerSpecialConditionMap;
    if (table.empty()) return "";
    auto it = table.begin();
    std::advance(it, in.byte() % table.size());
    return it->first;
  }
  std::string text;
  for (size_t n = in.byte() % 8; n > 0; --n)
    text += static_cast<char>(in.byte());
  return text;
}

bool selectsRows(const std::string& language) {
  const auto& t = gTransformTables;
  if (language == "az" || language == "lt" || language == "tr") return true;
  return t.toLowerSpecialConditionMap.count(language) ||
         t.toUpperSpecialConditionMap.count(language) ||
         t.toTitleSpecialConditionMap.count(language);
}

std::u32string badOnly(const String& s) {
  std::u32string out;
  for (char32_t c : s)
    if (isBad(c)) out.push_back(c);
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Reader header(data, size < 10 ? size : 10);
  const std::string language = chooseLanguage(header);
  const size_t used = size < 10 ? size : 10;
  String s = fuzzText(data + used, size - used);
  if (s.size() > kMaxElements) s.resize(kMaxElements);
  const std::string where = "\"" + language + "\" " + hex(s);

  const String upper = toUpperFull(s, language);
  const String lower = toLowerFull(s, language);
  FUZZ_CHECK(upper == plain().upperFull(s, language),
             where + " upper " + hex(upper));
  FUZZ_CHECK(lower == plain().lowerFull(s, language),
             where + " lower " + hex(lower));

  // Bad code points are in no table and pass through in their places.
  FUZZ_CHECK(badOnly(upper) == badOnly(s), where);
  FUZZ_CHECK(badOnly(lower) == badOnly(s), where);

  // A language that selects no rows is the same as none, and then nothing
  // can delete a code point.
  if (!selectsRows(language)) {
    FUZZ_CHECK(upper == toUpperFull(s, ""), where);
    FUZZ_CHECK(lower == toLowerFull(s, ""), where);
    FUZZ_CHECK(upper.size() >= s.size() && lower.size() >= s.size(), where);
  }

  // Without a language, upper case has no context at all: the walk is the
  // concatenation of its code points mapped alone.
  if (language.empty()) {
    String joined;
    for (char32_t c : s) joined += toUppperFull(c, "");
    FUZZ_CHECK(upper == joined, where);
  }

  // The one code point forms are the walk over a string of length one, and
  // the title form sees no neighbour at all.
  for (size_t i = 0; i < s.size() && i < 16; ++i) {
    const char32_t c = s[i];
    const std::string at = where + " at " + std::to_string(i);
    FUZZ_CHECK(toUppperFull(c, language) == toUpperFull(String(1, c), language),
               at);
    FUZZ_CHECK(toLowerFull(c, language) == toLowerFull(String(1, c), language),
               at);
    FUZZ_CHECK(toTitleFull(c, language) == plain().titleFull(c, language), at);
    FUZZ_CHECK(gTransformTables.toUpperFull(c) == plain().upperFull(c), at);
    FUZZ_CHECK(gTransformTables.toLowerFull(c) == plain().lowerFull(c), at);
  }

  // Simple mappings and folding keep the length and map each element alone.
  String upperInPlace = s, lowerInPlace = s;
  toUpperSimpleInPlace(upperInPlace);
  toLowerSimpleInPlace(lowerInPlace);
  FUZZ_CHECK(toUpperSimple(s) == upperInPlace, where);
  FUZZ_CHECK(toLowerSimple(s) == lowerInPlace, where);
  FUZZ_CHECK(upperInPlace.size() == s.size(), where);
  for (size_t i = 0; i < s.size(); ++i) {
    const char32_t c = s[i];
    FUZZ_CHECK(upperInPlace[i] == plain().upper(c), where);
    FUZZ_CHECK(lowerInPlace[i] == plain().lower(c), where);
    FUZZ_CHECK(toUpperSimple(c) == plain().upper(c), where);
    FUZZ_CHECK(toLowerSimple(c) == plain().lower(c), where);
    FUZZ_CHECK(toTitleSimple(c) == plain().title(c), where);
    FUZZ_CHECK(simpleCaseFold(c) == plain().fold(c), where);
    char32_t folded = c;
    simpleCaseFoldInPlace(folded);
    FUZZ_CHECK(folded == plain().fold(c), where);
    char32_t title = c;
    toTitleSimpleInPlace(title);
    FUZZ_CHECK(title == plain().title(c), where);
  }
  return 0;
}
