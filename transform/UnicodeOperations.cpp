// The one table set, gTransformTables, and the free functions that front it.
// Each function passes straight to a method of the table set.
#include "transform/UnicodeOperations.h"

#include "case/CaseDirection.h"

namespace zelvo {
namespace unicode {

// Built by this module's static initialiser when the library is loaded, after
// the code page registry (see the source order in CMakeLists.txt), and
// destroyed at unload before it.
UnicodeTransformationTables gTransformTables;

bool isNFD(String const& s) { return gTransformTables.isNFD(s); }

bool isNFC(String const& s) { return gTransformTables.isNFC(s); }

bool isNFKD(String const& s) { return gTransformTables.isNFKD(s); }

bool isNFKC(String const& s) { return gTransformTables.isNFKC(s); }

String toNFD(String const& s) { return gTransformTables.toNFD(s); }

String toNFC(String const& s) { return gTransformTables.toNFC(s); }

String toNFKD(String const& s) { return gTransformTables.toNFKD(s); }

String toNFKC(String const& s) { return gTransformTables.toNFKC(s); }

// The simple mappings and folding give what the members toUpper, toLower,
// toTitle and simpleCaseFold give, through the same inline lookup of the
// property index, without a call through an exported symbol for each code
// point.
using casedirection::Direction;
using casedirection::mapSimple;

String toUpperSimple(String const& s) {
  String result(s);
  toUpperSimpleInPlace(result);
  return result;
}

String toLowerSimple(String const& s) {
  String result(s);
  toLowerSimpleInPlace(result);
  return result;
}

void toUpperSimpleInPlace(String& s) {
  for (char32_t& c : s) c = mapSimple<Direction::kUpper>(c);
}

void toLowerSimpleInPlace(String& s) {
  for (char32_t& c : s) c = mapSimple<Direction::kLower>(c);
}

char32_t toUpperSimple(char32_t const& c) {
  return mapSimple<Direction::kUpper>(c);
}

void toUpperSimpleInPlace(char32_t& c) { c = mapSimple<Direction::kUpper>(c); }

char32_t toLowerSimple(char32_t const& c) {
  return mapSimple<Direction::kLower>(c);
}

void toLowerSimpleInPlace(char32_t& c) { c = mapSimple<Direction::kLower>(c); }

char32_t toTitleSimple(char32_t const& c) {
  return mapSimple<Direction::kTitle>(c);
}

String toUpperFull(String const& s, std::string const& language) {
  return gTransformTables.toUpperFull(s, language);
}

String toUppperFull(char32_t c, std::string const& language) {
  return gTransformTables.toUpperFull(String(1, c), language);
}

String toLowerFull(String const& s, std::string const& language) {
  return gTransformTables.toLowerFull(s, language);
}

String toLowerFull(char32_t c, std::string const& language) {
  return gTransformTables.toLowerFull(String(1, c), language);
}

String toTitleFull(char32_t c, std::string const& language) {
  return gTransformTables.toTitleFull(c, language);
}

void toTitleSimpleInPlace(char32_t& c) { c = mapSimple<Direction::kTitle>(c); }

char32_t simpleCaseFold(char32_t const& c) {
  return mapSimple<Direction::kFold>(c);
}

void simpleCaseFoldInPlace(char32_t& c) { c = mapSimple<Direction::kFold>(c); }

bool isAssigned(char32_t c) {
  return rangeContains(gTransformTables.validRanges, c);
}

}  // namespace unicode
}  // namespace zelvo
