// The conditional rows that a walk in one language can reach, found once per
// walk from the condition table itself, so that a code point costs neither a
// key string nor a search of the table.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "case/ConditionKeys.h"
#include "case/ContextScans.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {
namespace reachablerows {

using contextscans::Position;

// The value of a row: code points of the table's String, which may be none.
struct Value {
  char32_t const* text;
  std::size_t length;
};

// The tests of the dispatcher, in the order in which it asks them.
enum class Test {
  kFinalSigma,
  kAfterSoftDotted,
  kMoreAbove,
  kNotBeforeDot,
  kAfterI,
  kLanguage
};

// The rows under "Final_Sigma", under the language followed directly by one
// of the four condition suffixes, and under the language text itself: the
// keys that the dispatcher builds and looks up for this language, matched
// byte for byte against the keys of the table. A language that equals a whole
// key ("Final_Sigma", "tr After_I") reaches that key's rows as rows of the
// language, without their condition, exactly as the dispatcher's last test
// finds them. The rows are gathered on the first call of apply, so a walk
// that meets no code point with a conditional row reads nothing.
class ReachableRows {
 public:
  ReachableRows(ConditionTable const& table, std::string const& language)
      : table_(table), language_(language) {}

  // The value of the first row, in the dispatcher's order, that applies to
  // the code point at current; null where none does. An empty value deletes
  // the code point. The same answer as the dispatcher, for a code point
  // whose record says it is an inner key of the condition tables.
  Value const* apply(Position begin, Position end, Position current) {
    if (!gathered_) gather();
    char32_t const c = *current;
    for (Row const& row : rows_) {
      if (row.codePoint < c) continue;
      if (row.codePoint > c) break;
      if (holds(row.test, begin, end, current)) return &row.value;
    }
    return nullptr;
  }

  // Whether c has a reachable row, and if so whether its first row, in the
  // dispatcher's order, is one of the language's, which applies whatever
  // stands around c: then that row's value is c's answer everywhere.
  enum class Reach { kNone, kContextFree, kContext };
  Reach reach(char32_t c, Value const*& value) {
    if (!gathered_) gather();
    for (Row const& row : rows_) {
      if (row.codePoint < c) continue;
      if (row.codePoint > c) break;
      if (row.test != Test::kLanguage) return Reach::kContext;
      value = &row.value;
      return Reach::kContextFree;
    }
    return Reach::kNone;
  }

  // A filter of the code points that have a reachable row: bit c % 64 is set
  // for each of them, so a clear bit proves that c has none. Every bit is
  // set until the rows are gathered.
  std::uint64_t filter() const { return filter_; }

 private:
  struct Row {
    char32_t codePoint;
    Test test;
    Value value;
  };

  static bool holds(Test test, Position begin, Position end, Position current) {
    switch (test) {
      case Test::kFinalSigma:
        return contextscans::finalSigma(begin, end, current);
      case Test::kAfterSoftDotted:
        return contextscans::afterSoftDotted(begin, current);
      case Test::kMoreAbove:
        return contextscans::moreAbove(end, current);
      case Test::kNotBeforeDot:
        return contextscans::notBeforeDot(end, current);
      case Test::kAfterI:
        return contextscans::afterI(begin, current);
      case Test::kLanguage:
        return true;
    }
    return false;
  }

  // Whether key is the language followed directly by suffix.
  bool isLanguageWith(std::string const& key, char const* suffix) const {
    std::size_t const length = language_.size();
    return key.size() == length + std::strlen(suffix) &&
           key.compare(0, length, language_) == 0 &&
           key.compare(length, std::string::npos, suffix) == 0;
  }

  void add(Test test, std::map<char32_t, String> const& rows) {
    for (auto const& row : rows) {
      rows_.push_back(
          {row.first, test, {row.second.data(), row.second.length()}});
      filter_ |= std::uint64_t{1} << (row.first % 64);
    }
  }

  void gather() {
    gathered_ = true;
    filter_ = 0;
    std::map<char32_t, String> const* byTest[6] = {};
    for (auto const& keyed : table_) {
      std::string const& key = keyed.first;
      if (key == conditionkeys::kFinalSigma)
        byTest[static_cast<int>(Test::kFinalSigma)] = &keyed.second;
      if (isLanguageWith(key, conditionkeys::kAfterSoftDotted))
        byTest[static_cast<int>(Test::kAfterSoftDotted)] = &keyed.second;
      if (isLanguageWith(key, conditionkeys::kMoreAbove))
        byTest[static_cast<int>(Test::kMoreAbove)] = &keyed.second;
      if (isLanguageWith(key, conditionkeys::kNotBeforeDot))
        byTest[static_cast<int>(Test::kNotBeforeDot)] = &keyed.second;
      if (isLanguageWith(key, conditionkeys::kAfterI))
        byTest[static_cast<int>(Test::kAfterI)] = &keyed.second;
      if (key == language_)
        byTest[static_cast<int>(Test::kLanguage)] = &keyed.second;
    }
    for (int test = 0; test < 6; ++test)
      if (byTest[test] != nullptr) add(static_cast<Test>(test), *byTest[test]);
    std::stable_sort(
        rows_.begin(), rows_.end(),
        [](Row const& a, Row const& b) { return a.codePoint < b.codePoint; });
  }

  ConditionTable const& table_;
  std::string const& language_;
  // Every reachable row, by code point, and the rows of one code point in the
  // order of the tests.
  std::vector<Row> rows_;
  std::uint64_t filter_ = ~std::uint64_t{0};
  bool gathered_ = false;
};

}  // namespace reachablerows
}  // namespace unicode
}  // namespace zelvo
