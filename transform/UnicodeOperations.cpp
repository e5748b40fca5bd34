// The one table set, gTransformTables, and the free functions that front it.
// Each function passes straight to a method of the table set.
#include "transform/UnicodeOperations.h"

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
  for (char32_t& c : s) {
    gTransformTables.toUpper(c);
  }
}

void toLowerSimpleInPlace(String& s) {
  for (char32_t& c : s) {
    gTransformTables.toLower(c);
  }
}

char32_t toUpperSimple(char32_t const& c) {
  char32_t result = c;
  gTransformTables.toUpper(result);
  return result;
}

void toUpperSimpleInPlace(char32_t& c) { gTransformTables.toUpper(c); }

char32_t toLowerSimple(char32_t const& c) {
  char32_t result = c;
  gTransformTables.toLower(result);
  return result;
}

void toLowerSimpleInPlace(char32_t& c) { gTransformTables.toLower(c); }

char32_t toTitleSimple(char32_t const& c) {
  char32_t result = c;
  gTransformTables.toTitle(result);
  return result;
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

void toTitleSimpleInPlace(char32_t& c) { gTransformTables.toTitle(c); }

char32_t simpleCaseFold(char32_t const& c) {
  char32_t result = c;
  gTransformTables.simpleCaseFold(result);
  return result;
}

void simpleCaseFoldInPlace(char32_t& c) { gTransformTables.simpleCaseFold(c); }

bool isAssigned(char32_t c) {
  return rangeContains(gTransformTables.validRanges, c);
}

}  // namespace unicode
}  // namespace zelvo
