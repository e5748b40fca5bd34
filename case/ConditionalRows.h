// Which code points of a walk can meet a conditional row, so that a code
// point that no row names never pays for building the condition keys.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

#include "case/ConditionKeys.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {
namespace conditionalrows {

// The code points that are inner keys of the condition tables of the 7.0.0
// data: U+0049, U+004A, U+0069, U+00CC, U+00CD, U+0128, U+012E, U+0130,
// U+0307 and U+03A3. The case tests check that this is exactly the union of
// the inner keys of all three tables.
inline bool isNamed(char32_t c) {
  if (c < 0x80) {
    // U+0049, U+004A and U+0069, as bits of the code points 0x40 to 0x7F.
    constexpr std::uint64_t kAsciiNamed = (std::uint64_t{1} << 0x09) |
                                          (std::uint64_t{1} << 0x0A) |
                                          (std::uint64_t{1} << 0x29);
    return c >= 0x40 && ((kAsciiNamed >> (c - 0x40)) & 1) != 0;
  }
  switch (c) {
    case 0x00CC:
    case 0x00CD:
    case 0x0128:
    case 0x012E:
    case 0x0130:
    case 0x0307:
    case 0x03A3:
      return true;
    default:
      return false;
  }
}

// Which of the dispatcher's tests could find a row of a code point.
enum class Reach {
  kNone,          // none: every test returns false
  kLanguageOnly,  // only the rows under the bare language key
  kContext,       // a key with a condition, so the dispatcher must decide
};

// The rows of one condition table that the tests of a walk in one language
// can reach: those under "Final_Sigma", under the language followed by one of
// the four condition suffixes, and under the language itself. They are
// gathered from the table on the first named code point of the walk, so a
// walk that meets none reads nothing, and a code point with no reachable
// row needs no key at all.
class ReachableRows {
 public:
  ReachableRows(ConditionTable const& table, std::string const& language)
      : table_(table), language_(language) {}

  Reach reach(char32_t c) {
    if (!isNamed(c)) return Reach::kNone;
    if (!gathered_) gather();
    for (std::size_t i = 0; i < contextCount_; ++i)
      if (contextRows_[i]->find(c) != contextRows_[i]->end())
        return Reach::kContext;
    if (languageRows_ != nullptr &&
        languageRows_->find(c) != languageRows_->end())
      return Reach::kLanguageOnly;
    return Reach::kNone;
  }

 private:
  using Rows = std::map<char32_t, String>;

  void gather() {
    gathered_ = true;
    addContext(conditionkeys::kFinalSigma);
    addContext(language_ + conditionkeys::kAfterSoftDotted);
    addContext(language_ + conditionkeys::kMoreAbove);
    addContext(language_ + conditionkeys::kNotBeforeDot);
    addContext(language_ + conditionkeys::kAfterI);
    auto const found = table_.find(language_);
    if (found != table_.end()) languageRows_ = &found->second;
  }

  void addContext(std::string const& key) {
    auto const found = table_.find(key);
    if (found != table_.end()) contextRows_[contextCount_++] = &found->second;
  }

  ConditionTable const& table_;
  std::string const& language_;
  std::array<Rows const*, 5> contextRows_{};
  std::size_t contextCount_ = 0;
  Rows const* languageRows_ = nullptr;
  bool gathered_ = false;
};

}  // namespace conditionalrows
}  // namespace unicode
}  // namespace zelvo
