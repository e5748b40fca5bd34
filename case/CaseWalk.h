// The walk of a full case mapping over a whole text, with the property index
// in front of the tables: a code point that the index shows to have no
// unconditional row and no conditional row costs one record and one
// distance, and only the others reach the maps.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "case/AsciiAnswers.h"
#include "case/CaseDirection.h"
#include "case/ReachableRows.h"
#include "transform/PropertyIndex.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {
namespace casewalk {

// Makes room in text for `needed` code points after next, which points into
// it, and returns where next stands after that. The room at least doubles,
// so a text that grows by many expansions is copied a few times only.
inline char32_t* makeRoom(std::u32string& text, char32_t* next,
                          std::size_t needed) {
  std::size_t const used = static_cast<std::size_t>(next - &text[0]);
  text.resize(std::max(2 * text.size(), used + needed));
  return &text[0] + used;
}

// Whether a row answers for the code point at current, whose record has
// one of the two flags: first a reachable conditional row whose context
// holds (or a row of the language), then a row of the unconditional table,
// which may map the code point to itself. The row's value is put in value.
inline bool rowAnswers(std::uint32_t record, contextscans::Position begin,
                       contextscans::Position end,
                       contextscans::Position current,
                       reachablerows::ReachableRows& reachable,
                       std::map<char32_t, String> const& special,
                       reachablerows::Value& value) {
  if (record & propertyindex::kConditionalCasing) {
    if (reachablerows::Value const* row =
            reachable.apply(begin, end, current)) {
      value = *row;
      return true;
    }
  }
  if (record & propertyindex::kSpecialCasing) {
    auto const row = special.find(*current);
    if (row != special.end()) {
      value = {row->second.data(), row->second.length()};
      return true;
    }
  }
  return false;
}

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
  // The room left in the result always holds one code point for each input
  // code point still to come, so a mapping to one code point is a plain
  // store; only a longer value checks for room.
  std::u32string text(n, U'\0');
  char32_t* next = &text[0];
  char32_t* limit = next + n;
  // Most code points that are inner keys of the condition tables ("i" and
  // "I" among them) have no row that this walk can reach; the filter lets
  // them pass as plain code points once the rows are gathered.
  std::uint64_t filter = reachable.filter();
  asciianswers::AsciiAnswers<d> ascii;
  for (contextscans::Position current = begin; current != end; ++current) {
    char32_t const c = *current;
    if (c < 0x80) {
      char32_t const answer = ascii.answer(c, reachable);
      if (answer != ascii.kAsk) {
        *next++ = answer;
        continue;
      }
    }
    std::uint32_t const record = propertyindex::lookup(c);
    std::uint32_t const conditional =
        (filter >> (c % 64)) & 1
            ? std::uint32_t{propertyindex::kConditionalCasing}
            : std::uint32_t{0};
    if (record & (propertyindex::kSpecialCasing | conditional)) {
      reachablerows::Value value;
      bool const answered = rowAnswers(record, begin, end, current, reachable,
                                       full.special, value);
      filter = reachable.filter();
      if (answered) {
        std::size_t const needed =
            value.length + static_cast<std::size_t>(end - current - 1);
        if (needed > static_cast<std::size_t>(limit - next)) {
          next = makeRoom(text, next, needed);
          limit = &text[0] + text.size();
        }
        next = std::copy(value.text, value.text + value.length, next);
        continue;
      }
    }
    *next++ = c + static_cast<char32_t>(casedirection::distance<d>(record));
  }
  text.resize(static_cast<std::size_t>(next - &text[0]));
  return String(std::move(text));
}

}  // namespace casewalk
}  // namespace unicode
}  // namespace zelvo
