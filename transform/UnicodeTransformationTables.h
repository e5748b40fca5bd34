// UnicodeTransformationTables: the one owner of all character data, and of
// the normalization and case algorithms that read it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "string/String.h"

namespace zelvo {
namespace unicode {

// Inclusive first and last code points, strictly ascending and disjoint.
using RangeList = std::vector<std::pair<char32_t, char32_t>>;

// The conditional rows of SpecialCasing.txt, under the text of their
// condition. An empty value deletes the code point, unlike a missing row.
using ConditionTable = std::map<std::string, std::map<char32_t, String>>;

// Whether c lies in one of the ranges: a halving search on the last code
// points, then a test of the first. Both bounds are inclusive.
bool rangeContains(const RangeList& ranges, char32_t c);

// Every member is public and, after the constructor has returned, read-only.
// The constructor fills the tables in a fixed order in which later steps
// depend on earlier ones; see UnicodeTransformationTables.cpp.
class UnicodeTransformationTables {
 public:
  // Hangul arithmetic. Data members, read from the object by the algorithms.
  char32_t LBase;
  char32_t VBase;
  char32_t TBase;  // one before the first trailing consonant U+11A8
  char32_t LCount;
  char32_t VCount;
  char32_t TCount;  // trailing places, the empty one included
  char32_t NCount;
  // Written by composition into a slot whose code point has been consumed.
  char32_t deletedMarker;
  char32_t SBase;
  char32_t SCount;
  char32_t SLimit;  // one above the last syllable U+D7A3

  // One-level published mappings; only alive during construction.
  std::map<char32_t, String> rawDecompositionMap;
  std::map<char32_t, std::pair<String, std::string>> rawCompatDecompositionMap;
  // Full decompositions, expanded at load.
  std::map<char32_t, String> decompositionMap;
  std::map<char32_t, String> compatDecompositionMap;
  // Two-element keys (first, second) to their primary composite.
  std::map<String, char32_t> compositionMap;
  std::map<char32_t, char32_t> toUpperMap;
  std::map<char32_t, char32_t> toLowerMap;
  std::map<char32_t, char32_t> toTitleMap;
  // Canonical combining class; an absent key is class 0, a starter.
  std::map<char32_t, int> weightMap;
  std::map<char32_t, char32_t> cCaseFoldingMap;
  std::map<char32_t, char32_t> sCaseFoldingMap;
  std::map<char32_t, String> fCaseFoldingMap;    // kept, read by nothing
  std::map<char32_t, char32_t> tCaseFoldingMap;  // kept, read by nothing
  std::set<char32_t> compositionExclusions;
  RangeList validRanges;
  RangeList nfdQcNoRanges;
  RangeList nfdQcMaybeRanges;
  RangeList nfcQcNoRanges;
  RangeList nfcQcMaybeRanges;
  RangeList nfkdQcNoRanges;
  RangeList nfkdQcMaybeRanges;
  RangeList nfkcQcNoRanges;
  RangeList nfkcQcMaybeRanges;
  std::map<char32_t, String> toUpperSpecialMap;
  std::map<char32_t, String> toLowerSpecialMap;
  std::map<char32_t, String> toTitleSpecialMap;
  ConditionTable toUpperSpecialConditionMap;
  ConditionTable toLowerSpecialConditionMap;
  ConditionTable toTitleSpecialConditionMap;
  RangeList casedRanges;
  RangeList caseIgnorableRanges;
  RangeList softDottedRanges;

  UnicodeTransformationTables();
  ~UnicodeTransformationTables();

  // Tables filled straight into their members.
  void initSoftDotted();
  void initWeightMap();
  void initCompositionExclusions();

  // Canonical ordering.
  void sortCombiningMarks(String& s);

  // Decomposition.
  void initDecomp();
  void initCompatDecomp();
  String expandCompat(char32_t const& c);
  String toNFD(String const& s);
  String toNFKD(String const& s);

  // Composition.
  void initFinalCompositionMap();
  String composeHelper(String& s);
  String toNFC(String const& s);
  String toNFKC(String const& s);

  // Quick checks.
  bool isNFD(String const& s);
  bool isNFC(String const& s);
  bool isNFKD(String const& s);
  bool isNFKC(String const& s);

  // Simple case mapping.
  void toUpper(char32_t& c);
  void toLower(char32_t& c);
  void toTitle(char32_t& c);

  // Full case mapping.
  String toUpperFull(String const& s, std::string const& language);
  String toLowerFull(String const& s, std::string const& language);
  String toTitleFull(char32_t const& c, std::string const& language);
  String toUpperFull(char32_t const& c);
  String toLowerFull(char32_t const& c);

  // Casing contexts: true means a row applied and its value was appended.
  bool mapSpecialCondition(char32_t const* begin, char32_t const* end,
                           char32_t const* current, std::string const& language,
                           ConditionTable const& table, String& result);
  bool mapFinalSigma(char32_t const* begin, char32_t const* end,
                     char32_t const* current, ConditionTable const& table,
                     String& result);
  bool mapAfterSoftDotted(char32_t const* begin, char32_t const* current,
                          std::string const& language,
                          ConditionTable const& table, String& result);
  bool mapMoreAbove(char32_t const* end, char32_t const* current,
                    std::string const& language, ConditionTable const& table,
                    String& result);
  bool mapNotBeforeDot(char32_t const* end, char32_t const* current,
                       std::string const& language, ConditionTable const& table,
                       String& result);
  bool mapAfterI(char32_t const* begin, char32_t const* current,
                 std::string const& language, ConditionTable const& table,
                 String& result);
  bool mapLanguage(char32_t c, std::string const& language,
                   ConditionTable const& table, String& result);

  // Simple case folding.
  void simpleCaseFold(char32_t& c);
};

}  // namespace unicode
}  // namespace zelvo
