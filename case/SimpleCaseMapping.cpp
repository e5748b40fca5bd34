// Simple case mapping: one code point to one, with no language and no
// neighbour, through the simple fields of UnicodeData.txt.
#include "case/CaseLookup.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

// A code point that is no key of a table maps to itself, so any 32-bit
// value is accepted and an unknown one comes back unchanged.
void UnicodeTransformationTables::toUpper(char32_t& c) {
  caselookup::mapSimple(toUpperMap, caselookup::asciiUpper,
                        &caseruns::CaseRun::upper, c);
}

void UnicodeTransformationTables::toLower(char32_t& c) {
  caselookup::mapSimple(toLowerMap, caselookup::asciiLower,
                        &caseruns::CaseRun::lower, c);
}

// The four rows that map a code point to itself (U+01C5, U+01C8, U+01CB and
// U+01F2) need no care: they leave c as a missing row would.
void UnicodeTransformationTables::toTitle(char32_t& c) {
  caselookup::mapThrough(toTitleMap, c);
}

}  // namespace unicode
}  // namespace zelvo
