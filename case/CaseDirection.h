// Which mapping a case operation makes, and everything that follows from
// that choice: the distance of the property index, and the tables that the
// full mapping asks. The one place where upper, lower, title and folding are
// told apart.
#pragma once

#include <cstdint>
#include <map>

#include "transform/PropertyIndex.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {
namespace casedirection {

enum class Direction { kUpper, kLower, kTitle, kFold };

// What the simple mapping of direction d adds to the code point whose
// record this is: 0 where the table has no row, or a row that maps the code
// point to itself (so toTitleMap's four identity rows act as missing rows).
template <Direction d>
inline std::int32_t distance(std::uint32_t record) {
  propertyindex::CaseDistances const& row =
      propertyindex::caseDistances(record);
  if constexpr (d == Direction::kUpper) {
    return row.upper;
  } else if constexpr (d == Direction::kLower) {
    return row.lower;
  } else if constexpr (d == Direction::kTitle) {
    return row.title;
  } else {
    return row.fold;
  }
}

// The simple mapping (or, for kFold, the simple folding) of any 32-bit
// value: the row of toUpperMap, toLowerMap or toTitleMap, or of
// cCaseFoldingMap and then sCaseFoldingMap, or the value itself. Surrogates
// and values above U+10FFFF have the empty record and stay as they are.
// tests/PropertyIndexTest.cpp checks the distances against the tables, and
// tests/CaseShortcutsTest.cpp every value against the plain lookups.
template <Direction d>
inline char32_t mapSimple(char32_t c) {
  return c + static_cast<char32_t>(distance<d>(propertyindex::lookup(c)));
}

// The tables of the full mapping in direction d.
struct FullTables {
  ConditionTable const& conditions;
  std::map<char32_t, String> const& special;
};

template <Direction d>
inline FullTables fullTables(UnicodeTransformationTables const& t) {
  static_assert(d != Direction::kFold, "there is no full folding");
  if constexpr (d == Direction::kUpper) {
    return {t.toUpperSpecialConditionMap, t.toUpperSpecialMap};
  } else if constexpr (d == Direction::kLower) {
    return {t.toLowerSpecialConditionMap, t.toLowerSpecialMap};
  } else {
    return {t.toTitleSpecialConditionMap, t.toTitleSpecialMap};
  }
}

}  // namespace casedirection
}  // namespace unicode
}  // namespace zelvo
