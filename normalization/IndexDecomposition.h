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

// Hands the decomposition of c by Form to put(element, record), element by
// element, each with its record in the property index: its expansion, its
// Hangul jamo, or c itself. index is the record of c.
template <class Form, class Put>
void decomposeCodePoint(char32_t c, std::uint32_t index, Put&& put) {
  using H = HangulConstants;
  if (index & Form::kDecomposes) {
    const normalizationdata::Expansion e =
        Form::expansion(normalizationdata::record(c));
    for (unsigned k = 0; k < e.length; ++k)
      put(e.data[k], propertyindex::lookup(e.data[k]));
    return;
  }
  if (c - H::SBase < H::SCount) {
    // The jamo are starters without decompositions of either kind.
    const char32_t i = c - H::SBase;
    const char32_t leading = H::LBase + i / H::NCount;
    const char32_t vowel = H::VBase + (i % H::NCount) / H::TCount;
    put(leading, propertyindex::lookup(leading));
    put(vowel, propertyindex::lookup(vowel));
    if (i % H::TCount != 0)
      put(H::TBase + i % H::TCount,
          propertyindex::lookup(H::TBase + i % H::TCount));
    return;
  }
  put(c, index);
}

// Tells from the records of a decomposition, element by element, whether
// its marks are in canonical order.
class OrderWatch {
 public:
  void take(std::uint32_t record) {
    const int weight = propertyindex::combiningClass(record);
    if (weight != 0 && last_ > weight) unordered = true;
    last_ = weight;
  }
  bool unordered = false;  // a mark of a class below the mark before it

 private:
  int last_ = 0;
};

// toNFD (Form CanonicalForm) or toNFKD (CompatibilityForm) of s.
template <class Form>
String decomposeWithIndex(const String& s);

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
