// The constructor of the table set, which fills every table once at load in a
// fixed order, its destructor, and the range list lookup.
#include "transform/UnicodeTransformationTables.h"

#include <algorithm>

#include "normalization/LoadTimeTables.h"
#include "transform/data/Fillers.h"

namespace zelvo {
namespace unicode {

namespace data = zelvo_private::unicode;

bool rangeContains(const RangeList& ranges, char32_t c) {
  // The first range whose last code point is not below c is the only one
  // that can hold c; both of its bounds are inclusive.
  auto it =
      std::lower_bound(ranges.begin(), ranges.end(), c,
                       [](const std::pair<char32_t, char32_t>& range,
                          char32_t value) { return range.second < value; });
  if (it == ranges.end()) {
    return false;
  }
  if (it->first > c) {
    return false;
  }
  return true;
}

// The fillers run in a fixed order, and the maps derived from the raw
// mappings come out as the written derivation makes them at that point:
// - decompositionMap holds the chain of first elements of each raw row;
// - compatDecompositionMap holds expandCompat of each raw row put through
//   toNFD while weightMap is still empty, so that nothing is sorted;
// - compositionMap holds the two-element raw rows that weightMap and
//   compositionExclusions let through.
// All three stand worked out in the generated normalization data, which
// LoadTimeExpansionTest holds to that derivation from the raw rows, so the
// load copies them instead of working them out again (normalization/
// LoadTimeTables.h), and the raw rows are given back as soon as nothing at
// load reads them: the tables filled after them reuse that memory, and the
// load needs fewer fresh pages.
UnicodeTransformationTables::UnicodeTransformationTables()
    : LBase(0x1100),
      VBase(0x1161),
      TBase(0x11A7),
      LCount(19),
      VCount(21),
      TCount(28),
      NCount(588),
      deletedMarker(0xFFFFFFFF),
      SBase(0xAC00),
      SCount(11172),
      SLimit(0xD7A4) {
  // Range lists. nfkdQcMaybeRanges is handed to both Maybe fillers of the
  // decomposed forms, which add nothing, so nfdQcMaybeRanges is never written.
  data::initValidRanges(validRanges);
  data::initNFD_QC_NoRanges(nfdQcNoRanges);
  data::initNFD_QC_MaybeRanges(nfkdQcMaybeRanges);
  data::initNFC_QC_NoRanges(nfcQcNoRanges);
  data::initNFC_QC_MaybeRanges(nfcQcMaybeRanges);
  data::initNFKD_QC_NoRanges(nfkdQcNoRanges);
  data::initNFKD_QC_MaybeRanges(nfkdQcMaybeRanges);
  data::initNFKC_QC_NoRanges(nfkcQcNoRanges);
  data::initNFKC_QC_MaybeRanges(nfkcQcMaybeRanges);

  // Full case data and casing properties.
  data::initToUpperSpecial(toUpperSpecialMap);
  data::initToLowerSpecial(toLowerSpecialMap);
  data::initToTitleSpecial(toTitleSpecialMap);
  data::initToUpperSpecialCondition(toUpperSpecialConditionMap);
  data::initToLowerSpecialCondition(toLowerSpecialConditionMap);
  data::initToTitleSpecialCondition(toTitleSpecialConditionMap);
  data::initCased(casedRanges);
  data::initCaseIgnorable(caseIgnorableRanges);
  initSoftDotted();

  // Decompositions, canonical first; each raw map is left empty, and stays
  // a valid map.
  loadDecompositions(*this);               // initDecomp
  loadCompatibilityDecompositions(*this);  // initCompatDecomp

  // Simple mappings and folding, in this order.
  data::initToUpper(toUpperMap);
  data::initToLower(toLowerMap);
  data::initCCaseFolding(cCaseFoldingMap);
  data::initSCaseFolding(sCaseFoldingMap);
  data::initTCaseFolding(tCaseFoldingMap);
  data::initFCaseFolding(fCaseFoldingMap);
  data::initToTitle(toTitleMap);

  initWeightMap();
  initCompositionExclusions();
  loadCompositionMap(*this);  // initFinalCompositionMap
}

// Destroys the members in the reverse of their declared order.
UnicodeTransformationTables::~UnicodeTransformationTables() = default;

}  // namespace unicode
}  // namespace zelvo
