// Simple case folding of one code point, through the common (C) and simple
// (S) rows of CaseFolding.txt; the full and Turkic rows are never read.
#include "case/CaseDirection.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

// A C row ends the search: its value is not folded again, and the S table is
// not asked. The two tables have no key in common, and the index holds, for
// every code point, what the first of them to have a row gives.
void UnicodeTransformationTables::simpleCaseFold(char32_t& c) {
  c = casedirection::mapSimple<casedirection::Direction::kFold>(c);
}

}  // namespace unicode
}  // namespace zelvo
