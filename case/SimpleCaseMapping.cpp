// Simple case mapping: one code point to one, with no language and no
// neighbour, through the simple fields of UnicodeData.txt.
#include "case/CaseDirection.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

using casedirection::Direction;

// A code point that is no key of a table maps to itself, so any 32-bit
// value is accepted and an unknown one comes back unchanged. The four rows
// of toTitleMap that map a code point to itself (U+01C5, U+01C8, U+01CB and
// U+01F2) leave c as a missing row would.
void UnicodeTransformationTables::toUpper(char32_t& c) {
  c = casedirection::mapSimple<Direction::kUpper>(c);
}

void UnicodeTransformationTables::toLower(char32_t& c) {
  c = casedirection::mapSimple<Direction::kLower>(c);
}

void UnicodeTransformationTables::toTitle(char32_t& c) {
  c = casedirection::mapSimple<Direction::kTitle>(c);
}

}  // namespace unicode
}  // namespace zelvo
