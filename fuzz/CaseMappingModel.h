// A model of full case mapping for the case fuzz target: the walk over a
// string, the order in which the tables answer, and the six casing context
// tests with the library's own departures from the standard, written out
// from their rules on the library's tables.
#pragma once

#include <algorithm>
#include <string>

#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo_fuzz {

using zelvo::unicode::ConditionTable;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::RangeList;
using zelvo::unicode::String;

inline bool inList(const RangeList& list, char32_t c) {
  auto it = std::lower_bound(list.begin(), list.end(), c,
                             [](const std::pair<char32_t, char32_t>& r,
                                char32_t v) { return r.second < v; });
  return it != list.end() && it->first <= c;
}

inline int cls(char32_t c) {
  auto it = gTransformTables.weightMap.find(c);
  return it == gTransformTables.weightMap.end() ? 0 : it->second;
}

inline bool cased(char32_t c) {
  return inList(gTransformTables.casedRanges, c);
}
inline bool ignorable(char32_t c) {
  return inList(gTransformTables.caseIgnorableRanges, c);
}

using Ptr = const char32_t*;

// Cased-and-ignorable counts as ignorable; an ignorable tail that runs to the
// end of the text makes the sigma not final.
inline bool finalSigma(Ptr begin, Ptr end, Ptr cur) {
  if (cur <= begin) return false;
  Ptr p = cur - 1;
  while (ignorable(*p)) {
    if (p == begin) return false;
    --p;
  }
  if (!cased(*p)) return false;
  if (cur + 1 == end) return true;
  for (Ptr q = cur + 1; q != end; ++q)
    if (!ignorable(*q)) return !cased(*q);
  return false;
}

// Starts at the code point itself, which makes it dead for U+0307.
inline bool afterSoftDotted(Ptr begin, Ptr cur) {
  if (cur <= begin) return false;
  for (Ptr p = cur;; --p) {
    if (inList(gTransformTables.softDottedRanges, *p)) return true;
    int c = cls(*p);
    if (c == 0 || c == 230) return false;
    if (p == begin) return false;
  }
}

// Exactly one class 230 code point in the run of marks that follows.
inline bool moreAbove(Ptr end, Ptr cur) {
  if (cur >= end) return false;
  Ptr p = cur + 1;
  for (;; ++p) {
    if (p == end) return false;
    int c = cls(*p);
    if (c == 0) return false;
    if (c == 230) break;
  }
  for (++p;; ++p) {
    if (p == end) return true;
    int c = cls(*p);
    if (c == 0) return true;
    if (c == 230) return false;
  }
}

// Marks of other classes that run up to the end make it fail.
inline bool notBeforeDot(Ptr end, Ptr cur) {
  if (cur >= end) return false;
  if (cur + 1 == end) return true;
  for (Ptr p = cur + 1;;) {
    if (*p == 0x0307) return false;
    int c = cls(*p);
    if (c == 230 || c == 0) return true;
    if (++p == end) return false;
  }
}

inline bool afterI(Ptr begin, Ptr cur) {
  if (cur <= begin) return false;
  for (Ptr p = cur - 1;; --p) {
    if (*p == 0x0049) return true;
    int c = cls(*p);
    if (c == 0 || c == 230) return false;
    if (p == begin) return false;
  }
}

inline const String* row(const ConditionTable& table, const std::string& key,
                         char32_t c) {
  auto outer = table.find(key);
  if (outer == table.end()) return nullptr;
  auto inner = outer->second.find(c);
  return inner == outer->second.end() ? nullptr : &inner->second;
}

inline bool modelCondition(Ptr begin, Ptr end, Ptr cur,
                           const std::string& language,
                           const ConditionTable& table, String& out) {
  const String* value;
  if ((value = row(table, "Final_Sigma", *cur)) &&
      finalSigma(begin, end, cur)) {
  } else if ((value = row(table, language + " After_Soft_Dotted", *cur)) &&
             afterSoftDotted(begin, cur)) {
  } else if ((value = row(table, language + " More_Above", *cur)) &&
             moreAbove(end, cur)) {
  } else if ((value = row(table, language + " Not_Before_Dot", *cur)) &&
             notBeforeDot(end, cur)) {
  } else if ((value = row(table, language + " After_I", *cur)) &&
             afterI(begin, cur)) {
  } else if ((value = row(table, language, *cur))) {
  } else {
    return false;
  }
  out.append(*value);
  return true;
}

inline char32_t simple(const std::map<char32_t, char32_t>& map, char32_t c) {
  auto it = map.find(c);
  return it == map.end() ? c : it->second;
}

inline String modelFull(const String& s, const std::string& language,
                        bool upper) {
  const auto& t = gTransformTables;
  const ConditionTable& table =
      upper ? t.toUpperSpecialConditionMap : t.toLowerSpecialConditionMap;
  const auto& special = upper ? t.toUpperSpecialMap : t.toLowerSpecialMap;
  const auto& simpleMap = upper ? t.toUpperMap : t.toLowerMap;
  String out;
  if (s.empty()) return out;
  Ptr begin = s.data(), end = begin + s.size();
  for (Ptr cur = begin; cur != end; ++cur) {
    if (modelCondition(begin, end, cur, language, table, out)) continue;
    auto it = special.find(*cur);
    if (it != special.end())
      out.append(it->second);
    else
      out.push_back(simple(simpleMap, *cur));
  }
  return out;
}

// No neighbour is visible: only rows under a bare language key can answer.
inline String modelTitle(char32_t c, const std::string& language) {
  const auto& t = gTransformTables;
  String out;
  if (modelCondition(&c, &c, &c, language, t.toTitleSpecialConditionMap, out))
    return out;
  auto it = t.toTitleSpecialMap.find(c);
  if (it != t.toTitleSpecialMap.end()) return it->second;
  return String(1, simple(t.toTitleMap, c));
}

}  // namespace zelvo_fuzz
