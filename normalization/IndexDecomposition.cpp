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

namespace {

// Skips the code points from p on that the decomposition leaves as they are
// and that keep the marks in order: returns the first that decomposes, is a
// syllable or is a mark of a class below that of the code point before it.
// last is the class of the code point before p, and becomes that of the
// code point before the one returned. Out of line, so that its few values
// stay in registers.
template <class Form>
[[gnu::noinline]] const char32_t* skipUnchanged(const char32_t* p,
                                                const char32_t* const end,
                                                int& last) {
  using H = HangulConstants;
  const char32_t copiedBelow = Form::decomposedCopiedBelow();
  int before = last;
  while (p != end) {
    const char32_t c = *p;
    if (c < copiedBelow) {
      p = skipBelow(p, end, copiedBelow);
      before = 0;
      continue;
    }
    const std::uint32_t index = propertyindex::lookup(c);
    if ((index & Form::kDecomposes) != 0 || c - H::SBase < H::SCount) break;
    const int weight = propertyindex::combiningClass(index);
    if (weight != 0 && before > weight) break;
    before = weight;
    ++p;
  }
  last = before;
  return p;
}

}  // namespace

// toNFKD is toNFD, then one pass of compatibility values, then canonical
// ordering. Here each code point goes to its final expansion in one step
// and the marks are ordered once. That is the same: only starters have
// compatibility values (NormalizationDataTest checks it), so the first
// ordering moves nothing that the compatibility pass replaces, and a second
// stable ordering by class gives what one gives. The written rules that take
// code points below U+00C0 and U+00A0 as they stand never bite: no key of
// either map lies below them (checked there too).
//
// Canonical ordering sorts each run of marks apart, and a run in order stays
// as it is; so a run is sorted where it ends, and only if it is out of
// order, while the output is written.
template <class Form>
String decomposeWithIndex(const String& s) {
  using H = HangulConstants;
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
  int last = 0;            // the class of the last code point of the output
  bool unordered = false;  // whether its last run of marks is out of order
  const auto flush = [&](const char32_t* upTo) {
    out.append(run, static_cast<size_t>(upTo - run));
    run = upTo;
  };
  // Sorts the run of marks that ends at the output's position at, which
  // holds a starter or is its end, if it is out of order.
  const auto endMarks = [&](size_t at) {
    if (!unordered) return;
    char32_t* const runEnd = &out[0] + at;
    char32_t* first = runEnd;
    while (first != &out[0] && IndexSource::classOf(first[-1]) != 0) --first;
    sortByWeight(first, runEnd, IndexSource());
    unordered = false;
  };
  while (p != end) {
    // Only a run of marks out of order is taken one by one, up to its end.
    if (!unordered && *p - H::SBase >= H::SCount) {
      p = skipUnchanged<Form>(p, end, last);
      if (p == end) break;
    }
    const char32_t c = *p;
    if (c - H::SBase < H::SCount) {
      // A syllable: jamo, which are starters without decompositions.
      flush(p);
      run = ++p;
      endMarks(out.size());
      last = 0;
      const char32_t i = c - H::SBase;
      const char32_t jamo[3] = {H::LBase + i / H::NCount,
                                H::VBase + (i % H::NCount) / H::TCount,
                                H::TBase + i % H::TCount};
      out.append(jamo, i % H::TCount != 0 ? 3 : 2);
      continue;
    }
    const std::uint32_t index = propertyindex::lookup(c);
    if ((index & Form::kDecomposes) == 0) {
      const int weight = propertyindex::combiningClass(index);
      if (weight == 0) {
        flush(p);
        endMarks(out.size());
      } else if (last > weight) {
        unordered = true;
      }
      last = weight;
      ++p;
      continue;
    }
    flush(p);
    run = ++p;
    const normalizationdata::Expansion e =
        Form::expansion(normalizationdata::record(c));
    const size_t at = out.size();
    out.append(e.data, e.length);
    for (unsigned k = 0; k < e.length; ++k) {
      const int weight = IndexSource::classOf(e.data[k]);
      if (weight == 0)
        endMarks(at + k);
      else if (last > weight)
        unordered = true;
      last = weight;
    }
  }
  flush(end);
  endMarks(out.size());
  return String(std::move(out));
}

template String decomposeWithIndex<CanonicalForm>(const String& s);
template String decomposeWithIndex<CompatibilityForm>(const String& s);

}  // namespace unicode
}  // namespace zelvo
