// Position checks shared by the editing and searching members of String.
#pragma once

#include <cstddef>
#include <string>

namespace zelvo {
namespace unicode {
// Each file that includes this gets its own copy, with internal linkage: the
// library exports none of it.
namespace {

// A position equal to the size is valid everywhere; one past it is an error.
// The held string raises its own std::out_of_range for it, so the exception
// is exactly the standard string's and the library adds no text of its own.
// The members check before they change anything, and in their own order, so
// the object is untouched whatever order the standard string would use.
inline void checkPosition(const std::u32string& held, std::size_t pos) {
  if (pos > held.size()) static_cast<void>(held.substr(pos, 0));
}

}  // namespace
}  // namespace unicode
}  // namespace zelvo
