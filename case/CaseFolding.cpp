// Simple case folding of one code point, through the common (C) and simple
// (S) rows of CaseFolding.txt; the full and Turkic rows are never read.
#include "case/CaseLookup.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

// A C row ends the search: its value is not looked up again, and the S
// table is not asked. The two tables have no key in common.
void UnicodeTransformationTables::simpleCaseFold(char32_t& c) {
  if (caselookup::isAscii(c)) {
    c = caselookup::asciiLower(c);
    return;
  }
  if (caseruns::CaseRun const* run = caseruns::findRun(c)) {
    c = caseruns::move(c, run->fold);
    return;
  }
  auto const common = cCaseFoldingMap.find(c);
  if (common != cCaseFoldingMap.end()) {
    c = common->second;
    return;
  }
  caselookup::mapThrough(sCaseFoldingMap, c);
}

}  // namespace unicode
}  // namespace zelvo
