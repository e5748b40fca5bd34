// toNFD and toNFKD of the finished tables, through the property index and
// the normalization data.
#pragma once

#include <cstdint>
#include <string>

#include "normalization/DataSources.h"
#include "normalization/Forms.h"
#include "string/String.h"

// Internal to the library, and hidden: calls from its other parts go
// straight to these, not through the tables of the dynamic linker.
#pragma GCC visibility push(hidden)

namespace zelvo {
namespace unicode {

// Appends the decomposition of c by Form to out: its expansion, its Hangul
// jamo, or c itself; index is its record in the property index. last is the
// combining class of the element before, and becomes that of the last
// element appended; unordered is set when an appended mark has a lower class
// than the mark before it, so that canonical ordering has work to do.
template <class Form>
void appendDecomposition(std::u32string& out, char32_t c, std::uint32_t index,
                         int& last, bool& unordered) {
  using H = HangulConstants;
  if (index & Form::kDecomposes) {
    const normalizationdata::Expansion e =
        Form::expansion(normalizationdata::record(c));
    for (unsigned k = 0; k < e.length; ++k) {
      const int weight = IndexSource::classOf(e.data[k]);
      if (weight != 0 && last > weight) unordered = true;
      last = weight;
    }
    out.append(e.data, e.length);
    return;
  }
  if (c - H::SBase < H::SCount) {
    // The jamo are starters without decompositions of either kind.
    const char32_t i = c - H::SBase;
    const char32_t jamo[3] = {H::LBase + i / H::NCount,
                              H::VBase + (i % H::NCount) / H::TCount,
                              H::TBase + i % H::TCount};
    out.append(jamo, i % H::TCount != 0 ? 3 : 2);
    last = 0;
    return;
  }
  const int weight = propertyindex::combiningClass(index);
  if (weight != 0 && last > weight) unordered = true;
  last = weight;
  out.push_back(c);
}

// toNFD (Form CanonicalForm) or toNFKD (CompatibilityForm) of s.
template <class Form>
String decomposeWithIndex(const String& s);

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
