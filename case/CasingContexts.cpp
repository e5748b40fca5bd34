// Casing contexts: whether a conditional row of SpecialCasing.txt applies to
// one code point of a text, and if so the row's value appended to a result.
// The tests look at the input code points on both sides of the one being
// mapped, never at mapped ones; case/ContextScans.h holds their scans.
#include <string>

#include "case/ConditionKeys.h"
#include "case/ContextScans.h"
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

bool apply(String const& row, String& result) {
  result += row;
  return true;
}

}  // namespace

// The six tests are asked in a fixed order, whatever the language; the first
// that applies a row ends the search. Each test looks for its row before it
// scans the context, so a code point without a row costs no scan.
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

// The final sigma rule holds in every language, so its key has none.
bool UnicodeTransformationTables::mapFinalSigma(char32_t const* begin,
                                                char32_t const* end,
                                                char32_t const* current,
                                                ConditionTable const& table,
                                                String& result) {
  String const* row = findRow(table, conditionkeys::kFinalSigma, *current);
  if (row == nullptr || !contextscans::finalSigma(begin, end, current))
    return false;
  return apply(*row, result);
}

bool UnicodeTransformationTables::mapAfterSoftDotted(
    char32_t const* begin, char32_t const* current, std::string const& language,
    ConditionTable const& table, String& result) {
  String const* row =
      findRow(table, language + conditionkeys::kAfterSoftDotted, *current);
  if (row == nullptr || !contextscans::afterSoftDotted(begin, current))
    return false;
  return apply(*row, result);
}

bool UnicodeTransformationTables::mapMoreAbove(char32_t const* end,
                                               char32_t const* current,
                                               std::string const& language,
                                               ConditionTable const& table,
                                               String& result) {
  String const* row =
      findRow(table, language + conditionkeys::kMoreAbove, *current);
  if (row == nullptr || !contextscans::moreAbove(end, current)) return false;
  return apply(*row, result);
}

bool UnicodeTransformationTables::mapNotBeforeDot(char32_t const* end,
                                                  char32_t const* current,
                                                  std::string const& language,
                                                  ConditionTable const& table,
                                                  String& result) {
  String const* row =
      findRow(table, language + conditionkeys::kNotBeforeDot, *current);
  if (row == nullptr || !contextscans::notBeforeDot(end, current)) return false;
  return apply(*row, result);
}

bool UnicodeTransformationTables::mapAfterI(char32_t const* begin,
                                            char32_t const* current,
                                            std::string const& language,
                                            ConditionTable const& table,
                                            String& result) {
  String const* row =
      findRow(table, language + conditionkeys::kAfterI, *current);
  if (row == nullptr || !contextscans::afterI(begin, current)) return false;
  return apply(*row, result);
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
  return apply(*row, result);
}

}  // namespace unicode
}  // namespace zelvo
