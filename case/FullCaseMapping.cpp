// Full case mapping: SpecialCasing.txt laid over the simple mappings, for a
// whole text with its language and context, or for one code point.
#include <map>
#include <string>

#include "case/CaseDirection.h"
#include "case/CaseWalk.h"
#include "transform/PropertyIndex.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

namespace {

using casedirection::Direction;

// The mapping of c without context: the unconditional row if c has one (a
// row that maps c to itself counts and ends the search), otherwise the
// simple mapping, otherwise c itself. The index flags the keys of the
// unconditional tables.
template <Direction d>
String alone(UnicodeTransformationTables const& tables, char32_t c) {
  std::uint32_t const record = propertyindex::lookup(c);
  if (record & propertyindex::kSpecialCasing) {
    auto const& special = casedirection::fullTables<d>(tables).special;
    auto const row = special.find(c);
    if (row != special.end()) return row->second;
  }
  return String(1,
                c + static_cast<char32_t>(casedirection::distance<d>(record)));
}

}  // namespace

String UnicodeTransformationTables::toUpperFull(String const& s,
                                                std::string const& language) {
  return casewalk::walk<Direction::kUpper>(*this, s, language);
}

String UnicodeTransformationTables::toLowerFull(String const& s,
                                                std::string const& language) {
  return casewalk::walk<Direction::kLower>(*this, s, language);
}

// One code point with no neighbour and no language: never empty.
String UnicodeTransformationTables::toUpperFull(char32_t const& c) {
  return alone<Direction::kUpper>(*this, c);
}

String UnicodeTransformationTables::toLowerFull(char32_t const& c) {
  return alone<Direction::kLower>(*this, c);
}

// Title case is offered per code point only: the library cannot tell where a
// word begins. The dispatcher is handed begin, end and current all at c, so
// every test with a context fails its boundary test, and only the rows under
// the language text itself can answer: what mapLanguage gives. Those rows
// name only inner keys of the condition tables, which the index flags. Such
// a row may be empty, and then so is the result.
String UnicodeTransformationTables::toTitleFull(char32_t const& c,
                                                std::string const& language) {
  if (propertyindex::lookup(c) & propertyindex::kConditionalCasing) {
    String result;
    if (mapLanguage(c, language, toTitleSpecialConditionMap, result))
      return result;
  }
  return alone<Direction::kTitle>(*this, c);
}

}  // namespace unicode
}  // namespace zelvo
