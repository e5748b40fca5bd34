// The bad code points of a String, surrogates and values above U+10FFFF:
// finding, stripping and replacing them in one pass, in place.
#include <algorithm>

#include "string/String.h"

namespace zelvo {
namespace unicode {

namespace {

constexpr char32_t kReplacementCodePoint = 0xFFFD;

// A test on the value alone: noncharacters, unassigned and private use code
// points are all good.
bool isBad(char32_t c) { return c > 0x10FFFF || (c & 0xFFFFF800) == 0xD800; }

bool isReplacement(char32_t c) { return c == kReplacementCodePoint; }

// Removes the matching elements; nothing is written before the first match,
// and the tail is erased in place, so the capacity stays as it was.
template <typename Matches>
void stripMatching(std::u32string& held, Matches matches) {
  std::u32string::iterator write =
      std::find_if(held.begin(), held.end(), matches);
  if (write == held.end()) return;
  for (std::u32string::iterator read = write + 1; read != held.end(); ++read) {
    if (!matches(*read)) {
      *write = *read;
      ++write;
    }
  }
  held.erase(write, held.end());
}

}  // namespace

bool String::hasBadCodePoints() const {
  return std::any_of(str_.begin(), str_.end(), isBad);
}

void String::stripBadCodePoints() { stripMatching(str_, isBad); }

void String::stripReplacementCodePoints() {
  stripMatching(str_, isReplacement);
}

void String::replaceBadCodePoints() {
  for (char32_t& c : str_) {
    if (isBad(c)) c = kReplacementCodePoint;
  }
}

}  // namespace unicode
}  // namespace zelvo
