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

/// A set of code points as inclusive (first, last) ranges, strictly
/// ascending and disjoint; a lone code point is a range of two equal values.
using RangeList = std::vector<std::pair<char32_t, char32_t>>;

/// The conditional rows of SpecialCasing.txt: condition text ("Final_Sigma",
/// "tr", "lt More_Above" and so on) to code point to mapping. An empty
/// mapping deletes the code point, which differs from a missing row.
using ConditionTable = std::map<std::string, std::map<char32_t, String>>;

/// Whether `c` lies in one of the ranges, found by halving on their last
/// code points; both bounds are inclusive.
bool rangeContains(const RangeList& ranges, char32_t c);

/// All character data of the library, Unicode 7.0.0, and the normalization
/// and case algorithms that read it.
///
/// Its one instance is gTransformTables, which the free functions of
/// UnicodeOperations.h front; hosts call those. Every member is public, and
/// after the constructor has returned nothing writes to any table, so any
/// number of threads may call the methods at once, although none is `const`.
/// A code point that a map lacks maps to itself, or has class 0.
class UnicodeTransformationTables {
 public:
  /// First leading consonant, U+1100.
  char32_t LBase;
  /// First vowel, U+1161.
  char32_t VBase;
  /// U+11A7, one before the first trailing consonant U+11A8. Composition
  /// counts U+11A7 itself as a trailing consonant of value 0.
  char32_t TBase;
  /// Number of leading consonants, 19.
  char32_t LCount;
  /// Number of vowels, 21.
  char32_t VCount;
  /// Number of trailing places, the empty one included: 28.
  char32_t TCount;
  /// Syllables for each leading consonant, `VCount * TCount`.
  char32_t NCount;
  /// 0xFFFFFFFF, which composition writes into a slot whose code point has
  /// been consumed, and removes at the end.
  char32_t deletedMarker;
  /// First precomposed syllable, U+AC00.
  char32_t SBase;
  /// Number of precomposed syllables, 11172.
  char32_t SCount;
  /// U+D7A4, one above the last syllable U+D7A3.
  char32_t SLimit;

  /// Canonical mappings of UnicodeData.txt, one level deep. Used to build
  /// the final maps, and empty once the constructor has returned.
  std::map<char32_t, String> rawDecompositionMap;
  /// Compatibility mappings of UnicodeData.txt, one level deep, with their
  /// tags ("<font>" and so on). Empty once the constructor has returned.
  std::map<char32_t, std::pair<String, std::string>> rawCompatDecompositionMap;
  /// Full canonical decompositions, expanded at load, for code points with
  /// a canonical mapping. Hangul syllables have no row.
  std::map<char32_t, String> decompositionMap;
  /// Full compatibility decompositions, expanded at load, for code points
  /// with a compatibility mapping; the tags are gone.
  std::map<char32_t, String> compatDecompositionMap;
  /// Two-element keys (first, second) to their primary composite.
  std::map<String, char32_t> compositionMap;
  /// Simple uppercase mappings of UnicodeData.txt.
  std::map<char32_t, char32_t> toUpperMap;
  /// Simple lowercase mappings of UnicodeData.txt.
  std::map<char32_t, char32_t> toLowerMap;
  /// Simple titlecase mappings of UnicodeData.txt, four of which map a code
  /// point to itself.
  std::map<char32_t, char32_t> toTitleMap;
  /// Canonical combining classes other than 0: an absent key is a starter.
  std::map<char32_t, int> weightMap;
  /// Case foldings of status C (common) of CaseFolding.txt.
  std::map<char32_t, char32_t> cCaseFoldingMap;
  /// Case foldings of status S (simple) of CaseFolding.txt.
  std::map<char32_t, char32_t> sCaseFoldingMap;
  /// Case foldings of status F (full); kept, but read by no operation.
  std::map<char32_t, String> fCaseFoldingMap;
  /// Case foldings of status T (Turkic); kept, but read by no operation.
  std::map<char32_t, char32_t> tCaseFoldingMap;
  /// The code points of CompositionExclusions.txt, used to build
  /// compositionMap.
  std::set<char32_t> compositionExclusions;
  /// Every code point that Unicode 7.0.0 assigns, less surrogates, private
  /// use and noncharacters: what isAssigned() reads.
  RangeList validRanges;
  /// Code points whose NFD_QC is No.
  RangeList nfdQcNoRanges;
  /// Always empty: NFD has no Maybe values.
  RangeList nfdQcMaybeRanges;
  /// Code points whose NFC_QC is No.
  RangeList nfcQcNoRanges;
  /// Code points whose NFC_QC is Maybe.
  RangeList nfcQcMaybeRanges;
  /// Code points whose NFKD_QC is No.
  RangeList nfkdQcNoRanges;
  /// Always empty: NFKD has no Maybe values.
  RangeList nfkdQcMaybeRanges;
  /// Code points whose NFKC_QC is No.
  RangeList nfkcQcNoRanges;
  /// Code points whose NFKC_QC is Maybe.
  RangeList nfkcQcMaybeRanges;
  /// Unconditional uppercase rows of SpecialCasing.txt. Rows that map a code
  /// point to itself are kept, and a present row wins over the simple map.
  std::map<char32_t, String> toUpperSpecialMap;
  /// Unconditional lowercase rows of SpecialCasing.txt, identity rows kept.
  std::map<char32_t, String> toLowerSpecialMap;
  /// Unconditional titlecase rows of SpecialCasing.txt, identity rows kept.
  std::map<char32_t, String> toTitleSpecialMap;
  /// Conditional uppercase rows of SpecialCasing.txt.
  ConditionTable toUpperSpecialConditionMap;
  /// Conditional lowercase rows of SpecialCasing.txt.
  ConditionTable toLowerSpecialConditionMap;
  /// Conditional titlecase rows of SpecialCasing.txt.
  ConditionTable toTitleSpecialConditionMap;
  /// Code points with the property Cased.
  RangeList casedRanges;
  /// Code points with the property Case_Ignorable.
  RangeList caseIgnorableRanges;
  /// Code points with the property Soft_Dotted.
  RangeList softDottedRanges;

  /// Fills every table, in a fixed order in which later steps depend on
  /// earlier ones. Throws only `std::bad_alloc`.
  UnicodeTransformationTables();
  /// Destroys the tables.
  ~UnicodeTransformationTables();

  /// Construction steps that fill softDottedRanges, weightMap and
  /// compositionExclusions; the constructor calls each once.
  ///@{
  void initSoftDotted();
  void initWeightMap();
  void initCompositionExclusions();
  ///@}

  /// Puts each run of non-starters of `s` into canonical order by a stable
  /// sort on their classes; no mark moves across a starter.
  void sortCombiningMarks(String& s);

  /// Construction steps that expand the raw mappings into decompositionMap
  /// and compatDecompositionMap, in this order.
  ///@{
  void initDecomp();
  void initCompatDecomp();
  ///@}
  /// The compatibility mapping of `c`, expanded to the end; of use only
  /// while the constructor runs.
  String expandCompat(char32_t const& c);
  /// The algorithm behind the free function of the same name.
  ///@{
  String toNFD(String const& s);
  String toNFKD(String const& s);
  ///@}

  /// Construction step that builds compositionMap from the raw canonical
  /// mappings.
  void initFinalCompositionMap();
  /// Composes `s`, which must hold at least two elements, and returns the
  /// result; `s` is left with deletedMarker in the consumed slots.
  String composeHelper(String& s);
  /// The algorithm behind the free function of the same name.
  ///@{
  String toNFC(String const& s);
  String toNFKC(String const& s);
  bool isNFD(String const& s);
  bool isNFC(String const& s);
  bool isNFKD(String const& s);
  bool isNFKC(String const& s);
  ///@}

  /// Maps `c` in place by toUpperMap, toLowerMap or toTitleMap.
  ///@{
  void toUpper(char32_t& c);
  void toLower(char32_t& c);
  void toTitle(char32_t& c);
  ///@}

  /// The algorithm behind the free function of the same name.
  ///@{
  String toUpperFull(String const& s, std::string const& language);
  String toLowerFull(String const& s, std::string const& language);
  String toTitleFull(char32_t const& c, std::string const& language);
  ///@}
  /// One code point with no context and no language: its unconditional
  /// row, or else its simple mapping.
  ///@{
  String toUpperFull(char32_t const& c);
  String toLowerFull(char32_t const& c);
  ///@}

  /// Tries the conditional rows of `table` for `*current` in the text
  /// `[begin, end)`: Final_Sigma, After_Soft_Dotted, More_Above,
  /// Not_Before_Dot, After_I, then the bare language. True means that a row
  /// applied and its value, perhaps empty, was appended to `result`; false
  /// leaves `result` as it was.
  bool mapSpecialCondition(char32_t const* begin, char32_t const* end,
                           char32_t const* current, std::string const& language,
                           ConditionTable const& table, String& result);
  /// Final_Sigma, for every language. Unlike the standard, case-ignorable
  /// code points that run up to the end of the text keep the sigma from
  /// being final.
  bool mapFinalSigma(char32_t const* begin, char32_t const* end,
                     char32_t const* current, ConditionTable const& table,
                     String& result);
  /// After_Soft_Dotted. The scan starts at `current` itself, so the rule
  /// never applies to U+0307, its only row.
  bool mapAfterSoftDotted(char32_t const* begin, char32_t const* current,
                          std::string const& language,
                          ConditionTable const& table, String& result);
  /// More_Above, which here wants exactly one mark of class 230 before the
  /// next starter or the end.
  bool mapMoreAbove(char32_t const* end, char32_t const* current,
                    std::string const& language, ConditionTable const& table,
                    String& result);
  /// Not_Before_Dot, which fails when marks of classes other than 0 and 230
  /// run up to the end of the text.
  bool mapNotBeforeDot(char32_t const* end, char32_t const* current,
                       std::string const& language, ConditionTable const& table,
                       String& result);
  /// After_I: U+0049 before, with no code point of class 0 or 230 between.
  bool mapAfterI(char32_t const* begin, char32_t const* current,
                 std::string const& language, ConditionTable const& table,
                 String& result);
  /// The rows under the language itself, with no context.
  bool mapLanguage(char32_t c, std::string const& language,
                   ConditionTable const& table, String& result);

  /// Folds `c` in place by cCaseFoldingMap, or else sCaseFoldingMap.
  void simpleCaseFold(char32_t& c);
};

}  // namespace unicode
}  // namespace zelvo
