// Canonical ordering: the marks of every run of non-starters are put in
// order of their combining class, marks of equal class keeping their order.
#include "normalization/DataSources.h"
#include "normalization/MarkOrdering.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

void UnicodeTransformationTables::sortCombiningMarks(String& s) {
  const size_t length = s.length();
  if (length == 0) return;
  // Work on the storage itself: the runs are sorted in place.
  char32_t* const text = &*s.begin();
  if (usesIndex(*this))
    orderMarks(text, text + length, IndexSource());
  else
    orderMarks(text, text + length, TableSource(*this));
}

}  // namespace unicode
}  // namespace zelvo
