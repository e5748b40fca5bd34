// The answers of one walk for the ASCII code points, each found the first
// time the walk meets it, so that letters such as "i" under "tr", whose
// answer there is a row of the language, cost a load like any other letter.
#pragma once

#include <array>
#include <cstdint>

#include "case/CaseDirection.h"
#include "case/ReachableRows.h"
#include "transform/PropertyIndex.h"

namespace zelvo {
namespace unicode {
namespace asciianswers {

// The answer of an ASCII code point in a walk, where it needs no look at the
// code points around it and is one code point long: the row of the language
// if that is the code point's first reachable row, or, with no reachable row
// and no unconditional row, its simple mapping. Any other code point is
// answered kAsk and goes the way of all others; so is any answer that
// happens to equal kAsk or kUnknown, which only makes it slower.
template <casedirection::Direction d>
class AsciiAnswers {
 public:
  static constexpr char32_t kAsk = 0xFFFFFFFF;

  AsciiAnswers() { answers_.fill(kUnknown); }

  // For c below U+0080 only.
  char32_t answer(char32_t c, reachablerows::ReachableRows& reachable) {
    char32_t const known = answers_[c];
    if (known != kUnknown) return known;
    return answers_[c] = find(c, reachable);
  }

 private:
  static constexpr char32_t kUnknown = 0xFFFFFFFE;

  static char32_t find(char32_t c, reachablerows::ReachableRows& reachable) {
    std::uint32_t const record = propertyindex::lookup(c);
    if (record & propertyindex::kSpecialCasing) return kAsk;
    if (record & propertyindex::kConditionalCasing) {
      reachablerows::Value const* value = nullptr;
      switch (reachable.reach(c, value)) {
        case reachablerows::ReachableRows::Reach::kContext:
          return kAsk;
        case reachablerows::ReachableRows::Reach::kContextFree:
          if (value->length != 1 || value->text[0] == kUnknown) return kAsk;
          return value->text[0];
        case reachablerows::ReachableRows::Reach::kNone:
          break;
      }
    }
    return c + static_cast<char32_t>(casedirection::distance<d>(record));
  }

  std::array<char32_t, 128> answers_;
};

}  // namespace asciianswers
}  // namespace unicode
}  // namespace zelvo
