// Lookups shared by the case operations: one row of a code point table, with
// the shortcuts for ASCII and for the runs of case/CaseRuns.h in front of it.
#pragma once

#include <map>

#include "case/CaseRuns.h"

namespace zelvo {
namespace unicode {
namespace caselookup {

using Distance = std::int32_t const (caseruns::CaseRun::*)[2];

// Replaces c by its row of table, if it has one. The row is read only after
// it was found, so a lookup never adds a key to a table that every thread
// shares.
inline void mapThrough(std::map<char32_t, char32_t> const& table, char32_t& c) {
  auto const found = table.find(c);
  if (found != table.end()) c = found->second;
}

// Below U+0080 the simple upper and lower tables and the common folding
// rows hold exactly the 26 letters of the other case, each 0x20 away, the
// simple folding rows and the unconditional full tables hold nothing; the
// case tests check these facts against the tables.
inline bool isAscii(char32_t c) { return c < 0x80; }
inline char32_t asciiUpper(char32_t c) {
  return c - U'a' < 26u ? static_cast<char32_t>(c - 0x20) : c;
}
inline char32_t asciiLower(char32_t c) {
  return c - U'A' < 26u ? static_cast<char32_t>(c + 0x20) : c;
}

// The simple mapping of c: by ASCII, by its run, or by the table.
inline void mapSimple(std::map<char32_t, char32_t> const& table,
                      char32_t (*ascii)(char32_t), Distance distance,
                      char32_t& c) {
  if (isAscii(c)) {
    c = ascii(c);
    return;
  }
  if (caseruns::CaseRun const* run = caseruns::findRun(c)) {
    c = caseruns::move(c, run->*distance);
    return;
  }
  mapThrough(table, c);
}

}  // namespace caselookup
}  // namespace unicode
}  // namespace zelvo
