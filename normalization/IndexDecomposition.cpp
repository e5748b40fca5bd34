// toNFD and toNFKD of the finished tables: runs that need nothing are copied
// whole, and only code points that the index marks are looked up.
#include "normalization/IndexDecomposition.h"

#include <cstdint>
#include <string>
#include <utility>

#include "normalization/MarkOrdering.h"
#include "normalization/Scans.h"

namespace zelvo {
namespace unicode {

// toNFKD is toNFD, then one pass of compatibility values, then canonical
// ordering. Here each code point goes to its final expansion in one step
// and the marks are ordered once. That is the same: only starters have
// compatibility values (NormalizationDataTest checks it), so the first
// ordering moves nothing that the compatibility pass replaces, and a second
// stable ordering by class gives what one gives. The written rules that take
// code points below U+00C0 and U+00A0 as they stand never bite: no key of
// either map lies below them (checked there too).
template <class Form>
String decomposeWithIndex(const String& s) {
  const size_t length = s.length();
  const char32_t* p = s.data();
  const char32_t* const end = p + length;
  std::u32string out;
  // Room for some growth, so that text with a few decompositions is written
  // into one block.
  out.reserve(length + length / 8 + 4);
  // Code points that stay as they are gather in a run that is copied in one
  // piece when something else has to be appended, or at the end.
  const char32_t* run = p;
  int last = 0;
  bool unordered = false;
  while (true) {
    const char32_t* const next =
        skipBelow(p, end, Form::decomposedCopiedBelow());
    if (next != p) last = 0;
    p = next;
    if (p == end) break;
    const char32_t c = *p;
    const std::uint32_t index = propertyindex::lookup(c);
    if ((index & Form::kDecomposes) == 0 &&
        c - HangulConstants::SBase >= HangulConstants::SCount) {
      const int weight = propertyindex::combiningClass(index);
      if (weight != 0 && last > weight) unordered = true;
      last = weight;
      ++p;
      continue;
    }
    out.append(run, static_cast<size_t>(p - run));
    run = ++p;
    appendDecomposition<Form>(out, c, index, last, unordered);
  }
  out.append(run, static_cast<size_t>(end - run));
  // Marks already in order in every run: the ordering would leave them.
  if (unordered) orderMarks(&out[0], &out[0] + out.size(), IndexSource());
  return String(std::move(out));
}

template String decomposeWithIndex<CanonicalForm>(const String& s);
template String decomposeWithIndex<CompatibilityForm>(const String& s);

}  // namespace unicode
}  // namespace zelvo
