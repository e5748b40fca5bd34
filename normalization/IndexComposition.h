// toNFC and toNFKC of the finished tables, through the property index and
// the normalization data, and the test of whether they leave a string as it
// is, which the composed quick checks ask.
#pragma once

#include "string/String.h"

namespace zelvo {
namespace unicode {

// toNFC (Form CanonicalForm) or toNFKC (CompatibilityForm) of s.
template <class Form>
String composeWithIndex(const String& s);

// Whether toNFC (toNFKC) of s equals s. Only the pieces of s that can change
// are composed, each apart; a piece that changes has the whole string
// composed and compared, so that the answer is always that of the whole.
template <class Form>
bool composesToItself(const String& s);

}  // namespace unicode
}  // namespace zelvo
