// The walk of a full case mapping over a whole text, with the property index
// in front of the tables: a code point that the index shows to have no
// unconditional row and no conditional row costs one record and one
// distance, and only the others reach the maps.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "case/CaseDirection.h"
#include "case/ReachableRows.h"
#include "transform/PropertyIndex.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {
namespace casewalk {

// The result as it grows. The buffer always has room for one code point for
// each input code point still to come, so a mapping to one code point is a
// plain store; only a longer value checks for room.
class Output {
 public:
  explicit Output(std::size_t inputLength) : text_(inputLength, U'\0') {}

  void put(char32_t c) { text_[size_++] = c; }

  // A value of any length, the empty one included, with `still` input code
  // points left after this one.
  void put(char32_t const* value, std::size_t length, std::size_t still) {
    if (size_ + length + still > text_.size())
      text_.resize(std::max(2 * text_.size(), size_ + length + still));
    for (std::size_t i = 0; i < length; ++i) text_[size_++] = value[i];
  }

  String take() {
    text_.resize(size_);
    return String(std::move(text_));
  }

 private:
  std::u32string text_;
  std::size_t size_ = 0;
};

// The walk over s in direction d (upper or lower). For each code point the
// sources are asked in this order, and the first that answers ends the
// search: the conditional rows with their context tests, then the rows of
// the language, the unconditional table, the simple mapping, and the code
// point itself. The context tests see the input on both sides of the code
// point, never mapped text. The index's flags say which code points have a
// row in the unconditional tables (kSpecialCasing) or are an inner key of
// the condition tables (kConditionalCasing); tests/PropertyIndexTest.cpp
// checks both against the tables, and tests/CaseShortcutsTest.cpp the walk
// against the plain one.
template <casedirection::Direction d>
String walk(UnicodeTransformationTables const& tables, String const& s,
            std::string const& language) {
  std::size_t const n = s.length();
  if (n == 0) return String();
  contextscans::Position const begin = &s[0];
  contextscans::Position const end = begin + n;
  casedirection::FullTables const full = casedirection::fullTables<d>(tables);
  reachablerows::ReachableRows reachable(full.conditions, language);
  Output out(n);
  // Most code points that are inner keys of the condition tables ("i" and
  // "I" among them) have no row that this walk can reach; the filter lets
  // them pass as plain code points once the rows are gathered.
  std::uint64_t filter = reachable.filter();
  for (contextscans::Position current = begin; current != end; ++current) {
    char32_t const c = *current;
    std::uint32_t const record = propertyindex::lookup(c);
    std::uint32_t const conditional =
        (filter >> (c % 64)) & 1
            ? std::uint32_t{propertyindex::kConditionalCasing}
            : std::uint32_t{0};
    if (record & (propertyindex::kSpecialCasing | conditional)) {
      std::size_t const still = static_cast<std::size_t>(end - current - 1);
      if (record & propertyindex::kConditionalCasing) {
        reachablerows::Value const* value =
            reachable.apply(begin, end, current);
        filter = reachable.filter();
        if (value != nullptr) {
          out.put(value->text, value->length, still);
          continue;
        }
      }
      if (record & propertyindex::kSpecialCasing) {
        auto const row = full.special.find(c);
        if (row != full.special.end()) {
          out.put(row->second.data(), row->second.length(), still);
          continue;
        }
      }
    }
    out.put(c + static_cast<char32_t>(casedirection::distance<d>(record)));
  }
  return out.take();
}

}  // namespace casewalk
}  // namespace unicode
}  // namespace zelvo
