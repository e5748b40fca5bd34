// The case operations written out plainly, step by step, on the maps and
// range lists of a table set: the yardstick that the tests and the fuzz
// target hold every fast path of case/ against. Nothing here is quick: a key
// string is built for every code point, every map is searched, and every
// range list is searched by halving.
#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "transform/UnicodeTransformationTables.h"

namespace zelvo_reference {

using zelvo::unicode::ConditionTable;
using zelvo::unicode::RangeList;
using zelvo::unicode::String;
using zelvo::unicode::UnicodeTransformationTables;

using CodePointTable = std::map<char32_t, char32_t>;
using SpecialTable = std::map<char32_t, String>;
using Position = char32_t const*;

class CaseReference {
 public:
  explicit CaseReference(UnicodeTransformationTables const& tables)
      : t_(tables) {}

  // The simple mappings: the row of c, or c itself where the table has none.
  char32_t upper(char32_t c) const { return row(t_.toUpperMap, c); }
  char32_t lower(char32_t c) const { return row(t_.toLowerMap, c); }
  char32_t title(char32_t c) const { return row(t_.toTitleMap, c); }

  // A common folding row ends the search; a simple one is asked only then.
  char32_t fold(char32_t c) const {
    auto const common = t_.cCaseFoldingMap.find(c);
    if (common != t_.cCaseFoldingMap.end()) return common->second;
    return row(t_.sCaseFoldingMap, c);
  }

  String upperFull(String const& s, std::string const& language) const {
    return walk(s, language, t_.toUpperSpecialConditionMap,
                t_.toUpperSpecialMap, t_.toUpperMap);
  }
  String lowerFull(String const& s, std::string const& language) const {
    return walk(s, language, t_.toLowerSpecialConditionMap,
                t_.toLowerSpecialMap, t_.toLowerMap);
  }

  // One code point with no context and no language.
  String upperFull(char32_t c) const {
    return alone(c, t_.toUpperSpecialMap, t_.toUpperMap);
  }
  String lowerFull(char32_t c) const {
    return alone(c, t_.toLowerSpecialMap, t_.toLowerMap);
  }

  // The dispatcher with begin, end and current all at c.
  String titleFull(char32_t const& c, std::string const& language) const {
    String result;
    if (condition(&c, &c, &c, language, t_.toTitleSpecialConditionMap, result))
      return result;
    return alone(c, t_.toTitleSpecialMap, t_.toTitleMap);
  }

  // The six tests in their order; true when one applied its row.
  bool condition(Position begin, Position end, Position current,
                 std::string const& language, ConditionTable const& table,
                 String& result) const {
    return finalSigma(begin, end, current, table, result) ||
           afterSoftDotted(begin, current, language, table, result) ||
           moreAbove(end, current, language, table, result) ||
           notBeforeDot(end, current, language, table, result) ||
           afterI(begin, current, language, table, result) ||
           languageRow(*current, language, table, result);
  }

  bool finalSigma(Position begin, Position end, Position current,
                  ConditionTable const& table, String& result) const {
    String const* value = find(table, "Final_Sigma", *current);
    if (value == nullptr) return false;
    if (!(current > begin)) return false;
    Position at = current - 1;
    for (;;) {
      if (!ignorable(*at)) break;
      if (at == begin) return false;
      --at;
    }
    if (!cased(*at)) return false;
    if (current + 1 == end) return apply(*value, result);
    for (at = current + 1; at != end; ++at) {
      if (!ignorable(*at)) {
        if (cased(*at)) return false;
        return apply(*value, result);
      }
    }
    // At least one case-ignorable code point ran up to the end.
    return false;
  }

  bool afterSoftDotted(Position begin, Position current,
                       std::string const& language, ConditionTable const& table,
                       String& result) const {
    String const* value =
        find(table, language + " After_Soft_Dotted", *current);
    if (value == nullptr) return false;
    if (!(current > begin)) return false;
    for (Position at = current;;) {
      if (softDotted(*at)) return apply(*value, result);
      int const weight = weightOf(*at);
      if (weight == 0 || weight == 230) return false;
      if (at == begin) return false;
      --at;
    }
  }

  bool moreAbove(Position end, Position current, std::string const& language,
                 ConditionTable const& table, String& result) const {
    String const* value = find(table, language + " More_Above", *current);
    if (value == nullptr) return false;
    if (!(current < end)) return false;
    Position at = current + 1;
    for (;; ++at) {
      if (at == end) return false;
      int const weight = weightOf(*at);
      if (weight == 0) return false;
      if (weight == 230) break;
    }
    for (++at;; ++at) {
      if (at == end) return apply(*value, result);
      int const weight = weightOf(*at);
      if (weight == 0) return apply(*value, result);
      if (weight == 230) return false;
    }
  }

  bool notBeforeDot(Position end, Position current, std::string const& language,
                    ConditionTable const& table, String& result) const {
    String const* value = find(table, language + " Not_Before_Dot", *current);
    if (value == nullptr) return false;
    if (!(current < end)) return false;
    if (current + 1 == end) return apply(*value, result);
    for (Position at = current + 1;;) {
      if (*at == 0x0307) return false;
      int const weight = weightOf(*at);
      if (weight == 230 || weight == 0) return apply(*value, result);
      ++at;
      if (at == end) return false;
    }
  }

  bool afterI(Position begin, Position current, std::string const& language,
              ConditionTable const& table, String& result) const {
    String const* value = find(table, language + " After_I", *current);
    if (value == nullptr) return false;
    if (!(current > begin)) return false;
    for (Position at = current - 1;;) {
      if (*at == 0x0049) return apply(*value, result);
      int const weight = weightOf(*at);
      if (weight == 0 || weight == 230) return false;
      if (at == begin) return false;
      --at;
    }
  }

  bool languageRow(char32_t c, std::string const& language,
                   ConditionTable const& table, String& result) const {
    String const* value = find(table, language, c);
    if (value == nullptr) return false;
    return apply(*value, result);
  }

  // The properties as the range lists and weightMap give them.
  bool cased(char32_t c) const { return contains(t_.casedRanges, c); }
  bool ignorable(char32_t c) const {
    return contains(t_.caseIgnorableRanges, c);
  }
  bool softDotted(char32_t c) const { return contains(t_.softDottedRanges, c); }
  int weightOf(char32_t c) const {
    auto const found = t_.weightMap.find(c);
    return found == t_.weightMap.end() ? 0 : found->second;
  }

 private:
  static char32_t row(CodePointTable const& table, char32_t c) {
    auto const found = table.find(c);
    return found == table.end() ? c : found->second;
  }

  // The first range whose last code point is not below c, then its first.
  static bool contains(RangeList const& ranges, char32_t c) {
    auto const at =
        std::lower_bound(ranges.begin(), ranges.end(), c,
                         [](std::pair<char32_t, char32_t> const& range,
                            char32_t value) { return range.second < value; });
    return at != ranges.end() && !(at->first > c);
  }

  static String const* find(ConditionTable const& table, std::string const& key,
                            char32_t c) {
    auto const rows = table.find(key);
    if (rows == table.end()) return nullptr;
    auto const value = rows->second.find(c);
    if (value == rows->second.end()) return nullptr;
    return &value->second;
  }

  static bool apply(String const& value, String& result) {
    result.append(value);
    return true;
  }

  String alone(char32_t c, SpecialTable const& special,
               CodePointTable const& simple) const {
    auto const found = special.find(c);
    if (found != special.end()) return found->second;
    return String(1, row(simple, c));
  }

  String walk(String const& s, std::string const& language,
              ConditionTable const& conditions, SpecialTable const& special,
              CodePointTable const& simple) const {
    String result;
    std::size_t const n = s.length();
    if (n == 0) return result;
    Position const begin = &s[0];
    Position const end = begin + n;
    for (Position current = begin; current != end; ++current) {
      if (condition(begin, end, current, language, conditions, result))
        continue;
      result.append(alone(*current, special, simple));
    }
    return result;
  }

  UnicodeTransformationTables const& t_;
};

}  // namespace zelvo_reference
