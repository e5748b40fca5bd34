// Full case mapping: SpecialCasing.txt laid over the simple mappings, for a
// whole text with its language and context, or for one code point.
#include <array>
#include <cstddef>
#include <map>
#include <string>

#include "case/CaseLookup.h"
#include "case/ConditionalRows.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

namespace {

using SpecialTable = std::map<char32_t, String>;
using SimpleTable = std::map<char32_t, char32_t>;

// What tells the upper walk from the lower one, apart from the tables.
struct Upper {
  static char32_t ascii(char32_t c) { return caselookup::asciiUpper(c); }
  static char32_t move(caseruns::CaseRun const& run, char32_t c) {
    return caseruns::move(c, run.upper);
  }
};

struct Lower {
  static char32_t ascii(char32_t c) { return caselookup::asciiLower(c); }
  static char32_t move(caseruns::CaseRun const& run, char32_t c) {
    return caseruns::move(c, run.lower);
  }
};

// Grows a String by appending, a chunk of code points at a time, so that a
// walk calls into String once per chunk rather than once per code point.
// The chunk is appended as a U+0000-terminated text, so a U+0000 of the
// result goes through push_back on its own.
class Appender {
 public:
  explicit Appender(String& out) : out_(out) {}

  // Room for one more code point; flushes when the chunk is full.
  void pushNonZero(char32_t c) {
    chunk_[size_++] = c;
    if (size_ == kChunk) flush();
  }

  void push(char32_t c) {
    if (c == 0) {
      flush();
      out_.push_back(0);
      return;
    }
    pushNonZero(c);
  }

  void push(String const& s) {
    for (std::size_t i = 0; i < s.length(); ++i) push(s[i]);
  }

  // Everything pushed so far is in the String when this returns.
  void flush() {
    if (size_ == 0) return;
    chunk_[size_] = 0;
    size_ = 0;
    out_ += chunk_.data();
  }

  // Pushes the mapping of each code point from current on while it is
  // ASCII other than U+0000 and named by no conditional row, which is most
  // text; returns the first code point that is not. The count of the chunk
  // stays in a register throughout.
  template <typename Direction>
  char32_t const* pushPlainAscii(char32_t const* current, char32_t const* end) {
    std::size_t size = size_;
    for (; current != end; ++current) {
      char32_t const c = *current;
      if (c - 1 >= 0x7F || conditionalrows::isNamed(c)) break;
      chunk_[size++] = Direction::ascii(c);
      if (size == kChunk) {
        size_ = size;
        flush();
        size = 0;
      }
    }
    size_ = size;
    return current;
  }

 private:
  static constexpr std::size_t kChunk = 256;
  String& out_;
  std::array<char32_t, kChunk + 1> chunk_;
  std::size_t size_ = 0;
};

// The mapping of c without context: the unconditional row if c has one (a
// row that maps c to itself counts and ends the search), otherwise the
// simple mapping, otherwise c itself. The same answer as the one-code-point
// members, without a String for each code point. No unconditional row lies
// below U+0080 or in a run.
template <typename Direction>
void pushWithoutContext(char32_t c, SpecialTable const& special,
                        SimpleTable const& simple, Appender& out) {
  if (caselookup::isAscii(c)) {
    out.push(Direction::ascii(c));
    return;
  }
  if (caseruns::CaseRun const* run = caseruns::findRun(c)) {
    out.push(Direction::move(*run, c));
    return;
  }
  auto const row = special.find(c);
  if (row != special.end()) {
    out.push(row->second);
    return;
  }
  caselookup::mapThrough(simple, c);
  out.push(c);
}

// The walk over a text. The three pointers always point into the input, so
// every context test sees the input code points on both sides of the one
// being mapped, never mapped ones. For each code point the conditional rows
// are asked first (with their context tests, then the language's own rows),
// then the unconditional table, then the simple table.
template <typename Direction>
String walk(UnicodeTransformationTables& tables, String const& s,
            std::string const& language, ConditionTable const& conditions,
            SpecialTable const& special, SimpleTable const& simple) {
  String result;
  std::size_t const n = s.length();
  if (n == 0) return result;
  char32_t const* const begin = &s[0];
  char32_t const* const end = begin + n;
  conditionalrows::ReachableRows reachable(conditions, language);
  Appender out(result);
  for (char32_t const* current = begin;; ++current) {
    current = out.pushPlainAscii<Direction>(current, end);
    if (current == end) break;
    char32_t const c = *current;
    // A row that applies appends its value to the result, which the
    // Appender must have brought up to date; an empty value deletes the
    // code point.
    switch (reachable.reach(c)) {
      case conditionalrows::Reach::kNone:
        break;
      case conditionalrows::Reach::kLanguageOnly:
        // Every test with a context would miss the code point's row at
        // once, so only the language's own rows can answer.
        out.flush();
        if (tables.mapLanguage(c, language, conditions, result)) continue;
        break;
      case conditionalrows::Reach::kContext:
        out.flush();
        if (tables.mapSpecialCondition(begin, end, current, language,
                                       conditions, result))
          continue;
        break;
    }
    pushWithoutContext<Direction>(c, special, simple, out);
  }
  out.flush();
  return result;
}

}  // namespace

String UnicodeTransformationTables::toUpperFull(String const& s,
                                                std::string const& language) {
  return walk<Upper>(*this, s, language, toUpperSpecialConditionMap,
                     toUpperSpecialMap, toUpperMap);
}

String UnicodeTransformationTables::toLowerFull(String const& s,
                                                std::string const& language) {
  return walk<Lower>(*this, s, language, toLowerSpecialConditionMap,
                     toLowerSpecialMap, toLowerMap);
}

// One code point with no neighbour and no language: never empty.
String UnicodeTransformationTables::toUpperFull(char32_t const& c) {
  auto const row = toUpperSpecialMap.find(c);
  if (row != toUpperSpecialMap.end()) return row->second;
  char32_t mapped = c;
  toUpper(mapped);
  return String(1, mapped);
}

String UnicodeTransformationTables::toLowerFull(char32_t const& c) {
  auto const row = toLowerSpecialMap.find(c);
  if (row != toLowerSpecialMap.end()) return row->second;
  char32_t mapped = c;
  toLower(mapped);
  return String(1, mapped);
}

// Title case is offered per code point only: the library cannot tell where a
// word begins. With the three pointers equal, no test sees a neighbour, so
// only rows under a bare language key (or a language that equals a whole
// key) can answer; such a row may be empty, and then so is the result.
String UnicodeTransformationTables::toTitleFull(char32_t const& c,
                                                std::string const& language) {
  String result;
  if (conditionalrows::isNamed(c) &&
      mapSpecialCondition(&c, &c, &c, language, toTitleSpecialConditionMap,
                          result))
    return result;
  auto const row = toTitleSpecialMap.find(c);
  if (row != toTitleSpecialMap.end()) return row->second;
  char32_t mapped = c;
  toTitle(mapped);
  return String(1, mapped);
}

}  // namespace unicode
}  // namespace zelvo
