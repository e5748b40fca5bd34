// Casing contexts: whether a conditional row of SpecialCasing.txt applies to
// one code point of a text, and if so the row's value appended to a result.
// The tests look at the input code points on both sides of the one being
// mapped, never at mapped ones, and they part from the standard's context
// rules in a few places on purpose (noted at each test).
#include <map>
#include <string>

#include "case/ConditionKeys.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

namespace {

// The row of c under key, or null when the key or the code point is absent.
// A row may hold an empty value, which deletes the code point: that is not
// the same as a missing row.
String const* findRow(ConditionTable const& table, std::string const& key,
                      char32_t c) {
  auto const rows = table.find(key);
  if (rows == table.end()) return nullptr;
  auto const row = rows->second.find(c);
  if (row == rows->second.end()) return nullptr;
  return &row->second;
}

// The canonical combining class; a code point that is no key is class 0.
int combiningClass(std::map<char32_t, int> const& weights, char32_t c) {
  auto const found = weights.find(c);
  return found == weights.end() ? 0 : found->second;
}

bool applyRow(String const& row, String& result) {
  result += row;
  return true;
}

}  // namespace

// The six tests are asked in a fixed order, whatever the language; the first
// that applies a row ends the search.
bool UnicodeTransformationTables::mapSpecialCondition(
    char32_t const* begin, char32_t const* end, char32_t const* current,
    std::string const& language, ConditionTable const& table, String& result) {
  return mapFinalSigma(begin, end, current, table, result) ||
         mapAfterSoftDotted(begin, current, language, table, result) ||
         mapMoreAbove(end, current, language, table, result) ||
         mapNotBeforeDot(end, current, language, table, result) ||
         mapAfterI(begin, current, language, table, result) ||
         mapLanguage(*current, language, table, result);
}

// A sigma is final when a cased letter stands before it, across
// case-ignorable code points, and no cased letter follows in the same way.
// A code point that is both cased and case-ignorable counts as
// case-ignorable on both sides. Unlike the standard's rule, a run of
// case-ignorable code points up to the end of the text makes the sigma not
// final; nothing at all after it makes it final.
bool UnicodeTransformationTables::mapFinalSigma(char32_t const* begin,
                                                char32_t const* end,
                                                char32_t const* current,
                                                ConditionTable const& table,
                                                String& result) {
  String const* row = findRow(table, conditionkeys::kFinalSigma, *current);
  if (row == nullptr) return false;
  if (current <= begin) return false;

  char32_t const* before = current;
  do {
    if (before == begin) return false;
    --before;
  } while (rangeContains(caseIgnorableRanges, *before));
  if (!rangeContains(casedRanges, *before)) return false;

  if (current + 1 == end) return applyRow(*row, result);
  char32_t const* after = current + 1;
  while (after != end && rangeContains(caseIgnorableRanges, *after)) ++after;
  if (after == end) return false;
  if (rangeContains(casedRanges, *after)) return false;
  return applyRow(*row, result);
}

// The backward scan starts at the code point being mapped, not at the one
// before it. The only code point with a row here, U+0307, is of class 230
// and not soft dotted, so the test never applies, and a dot after an i
// stays under the Lithuanian uppercase mapping. That is intended.
bool UnicodeTransformationTables::mapAfterSoftDotted(
    char32_t const* begin, char32_t const* current, std::string const& language,
    ConditionTable const& table, String& result) {
  String const* row =
      findRow(table, language + conditionkeys::kAfterSoftDotted, *current);
  if (row == nullptr) return false;
  if (current <= begin) return false;

  for (char32_t const* at = current;; --at) {
    if (rangeContains(softDottedRanges, *at)) return applyRow(*row, result);
    int const weight = combiningClass(weightMap, *at);
    if (weight == 0 || weight == 230) return false;
    if (at == begin) return false;
  }
}

// The run of non-starters after the code point must hold exactly one mark
// of class 230: a second one before the next starter, or the end of the
// text, defeats the rule, unlike the standard's More_Above.
bool UnicodeTransformationTables::mapMoreAbove(char32_t const* end,
                                               char32_t const* current,
                                               std::string const& language,
                                               ConditionTable const& table,
                                               String& result) {
  String const* row =
      findRow(table, language + conditionkeys::kMoreAbove, *current);
  if (row == nullptr) return false;
  if (current >= end) return false;

  char32_t const* at = current + 1;
  for (;; ++at) {
    if (at == end) return false;
    int const weight = combiningClass(weightMap, *at);
    if (weight == 0) return false;
    if (weight == 230) break;
  }
  for (++at;; ++at) {
    if (at == end) return applyRow(*row, result);
    int const weight = combiningClass(weightMap, *at);
    if (weight == 0) return applyRow(*row, result);
    if (weight == 230) return false;
  }
}

// Not followed by U+0307 across marks of classes other than 0 and 230.
// Unlike the standard, marks of such classes that run up to the end of the
// text make the condition fail; nothing at all after it makes it hold.
bool UnicodeTransformationTables::mapNotBeforeDot(char32_t const* end,
                                                  char32_t const* current,
                                                  std::string const& language,
                                                  ConditionTable const& table,
                                                  String& result) {
  String const* row =
      findRow(table, language + conditionkeys::kNotBeforeDot, *current);
  if (row == nullptr) return false;
  if (current >= end) return false;
  if (current + 1 == end) return applyRow(*row, result);

  for (char32_t const* at = current + 1;;) {
    if (*at == 0x0307) return false;
    int const weight = combiningClass(weightMap, *at);
    if (weight == 230 || weight == 0) return applyRow(*row, result);
    ++at;
    if (at == end) return false;
  }
}

// U+0049 before, with no mark of class 0 or 230 between.
bool UnicodeTransformationTables::mapAfterI(char32_t const* begin,
                                            char32_t const* current,
                                            std::string const& language,
                                            ConditionTable const& table,
                                            String& result) {
  String const* row =
      findRow(table, language + conditionkeys::kAfterI, *current);
  if (row == nullptr) return false;
  if (current <= begin) return false;

  for (char32_t const* at = current - 1;; --at) {
    if (*at == 0x0049) return applyRow(*row, result);
    int const weight = combiningClass(weightMap, *at);
    if (weight == 0 || weight == 230) return false;
    if (at == begin) return false;
  }
}

// The rows under the language text itself, taken as it stands: no case is
// folded and no region is stripped, so only an exact key selects anything.
// A language that equals a whole key with a condition applies that key's
// rows without their condition.
bool UnicodeTransformationTables::mapLanguage(char32_t c,
                                              std::string const& language,
                                              ConditionTable const& table,
                                              String& result) {
  String const* row = findRow(table, language, c);
  if (row == nullptr) return false;
  return applyRow(*row, result);
}

}  // namespace unicode
}  // namespace zelvo
