// toNFC and toNFKC of the finished tables, through the property index and
// the normalization data, and the composed quick checks, which ask whether
// they leave a string as it is.
#pragma once

#include "string/String.h"

// Internal to the library, and hidden: calls from its other parts go
// straight to these, not through the tables of the dynamic linker.
#pragma GCC visibility push(hidden)

namespace zelvo {
namespace unicode {

// toNFC (Form CanonicalForm) or toNFKC (CompatibilityForm) of s.
template <class Form>
String composeWithIndex(const String& s);

// isNFC (Form CanonicalForm) or isNFKC (CompatibilityForm) of s: false at
// any class out of order or any No code point, and where a Maybe code point
// stands anywhere, false too if toNFC (toNFKC) of the whole changes it. Only
// the pieces of s that may change are composed, each apart, and where that
// leaves the answer open, the whole string is composed and compared.
template <class Form>
bool isComposedWithIndex(const String& s);

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
