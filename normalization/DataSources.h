// Where the normalization algorithms read their character data: the tables
// of the object they run on, or the generated data that describes the
// finished tables in constant arrays.
#pragma once

#include <cstddef>
#include <cstdint>

#include "transform/NormalizationData.h"
#include "transform/PropertyIndex.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

// The tables of any object, as the written algorithms read them: trees and
// range lists. Any object: one being built, or a copy with other contents.
class TableSource {
 public:
  explicit TableSource(UnicodeTransformationTables& tables)
      : LBase(tables.LBase),
        VBase(tables.VBase),
        TBase(tables.TBase),
        LCount(tables.LCount),
        VCount(tables.VCount),
        TCount(tables.TCount),
        NCount(tables.NCount),
        SBase(tables.SBase),
        deletedMarker(tables.deletedMarker),
        tables_(tables) {}

  // The Hangul constants and the marker, as the object holds them.
  const char32_t LBase, VBase, TBase, LCount, VCount, TCount, NCount, SBase;
  const char32_t deletedMarker;

  // Whether c has an entry in weightMap; if so its weight goes into weight.
  bool weight(char32_t c, int& weight) const {
    const auto found = tables_.weightMap.find(c);
    if (found == tables_.weightMap.end()) return false;
    weight = found->second;
    return true;
  }

  // The weight of a code point known to have one, by the index operator of
  // the map, which inserts nothing for a key that is there.
  int weightOf(char32_t c) const { return tables_.weightMap[c]; }

  bool isStarter(char32_t c) const {
    return c != deletedMarker &&
           tables_.weightMap.find(c) == tables_.weightMap.end();
  }

  // Whether c may be the second element of a compositionMap key: here, any.
  bool maySecond(char32_t) const { return true; }

  // The same of the element at position at of s, as the composition pass
  // asks them.
  bool isStarterAt(const char32_t* s, size_t at) const {
    return isStarter(s[at]);
  }
  bool weightAt(const char32_t* s, size_t at, int& weight) const {
    return this->weight(s[at], weight);
  }
  bool maySecondAt(const char32_t*, size_t) const { return true; }

  bool composite(char32_t first, char32_t second, char32_t& composite) const {
    const auto found = tables_.compositionMap.find(String{first, second});
    if (found == tables_.compositionMap.end()) return false;
    composite = found->second;
    return true;
  }

 private:
  UnicodeTransformationTables& tables_;
};

// The Hangul constants and the marker that the constructor gives every
// object; NormalizationDataTest checks that gTransformTables holds them.
struct HangulConstants {
  static constexpr char32_t LBase = 0x1100;
  static constexpr char32_t VBase = 0x1161;
  static constexpr char32_t TBase = 0x11A7;
  static constexpr char32_t LCount = 19;
  static constexpr char32_t VCount = 21;
  static constexpr char32_t TCount = 28;
  static constexpr char32_t NCount = VCount * TCount;
  static constexpr char32_t SBase = 0xAC00;
  static constexpr char32_t SCount = LCount * NCount;
  static constexpr char32_t deletedMarker = 0xFFFFFFFF;
};

// The finished gTransformTables, through the property index and the
// normalization data, which tests/PropertyIndexTest.cpp and
// tests/NormalizationDataTest.cpp check against every table: a weight is
// the combining class of the index (an entry is a class other than 0), a
// composite comes from the hash table of pairs.
class IndexSource : public HangulConstants {
 public:
  static int classOf(char32_t c) {
    return propertyindex::combiningClass(propertyindex::lookup(c));
  }

  bool weight(char32_t c, int& weight) const {
    weight = classOf(c);
    return weight != 0;
  }

  int weightOf(char32_t c) const { return classOf(c); }

  bool isStarter(char32_t c) const {
    return c != deletedMarker && classOf(c) == 0;
  }

  bool maySecond(char32_t c) const {
    return (propertyindex::lookup(c) & propertyindex::kComposesSecond) != 0;
  }

  // The same of the element at position at of s, as the composition pass
  // asks them.
  bool isStarterAt(const char32_t* s, size_t at) const {
    return isStarter(s[at]);
  }
  bool weightAt(const char32_t* s, size_t at, int& weight) const {
    return this->weight(s[at], weight);
  }
  bool maySecondAt(const char32_t* s, size_t at) const {
    return maySecond(s[at]);
  }

  // Only asked after maySecond(second) said yes.
  bool composite(char32_t first, char32_t second, char32_t& composite) const {
    if (!(propertyindex::lookup(first) & propertyindex::kComposesFirst))
      return false;
    composite = normalizationdata::composite(first, second);
    return composite != 0;
  }
};

// The generated data, as IndexSource, for a range of which the record of
// every element in the property index is known by its position: the records
// the range had before the composition pass began. The pass writes into a
// position only a marker, or a composite or syllable in place of a starter,
// which is a starter too (NormalizationDataTest checks it), so the class of
// a record still holds for whatever stands there but a marker.
class RecordSource : public IndexSource {
 public:
  explicit RecordSource(const std::uint32_t* records) : records_(records) {}

  bool isStarterAt(const char32_t* s, size_t at) const {
    return s[at] != deletedMarker &&
           propertyindex::combiningClass(records_[at]) == 0;
  }
  // Not asked of a marker.
  bool weightAt(const char32_t*, size_t at, int& weight) const {
    weight = propertyindex::combiningClass(records_[at]);
    return weight != 0;
  }
  // Asked only of an element the pass has not written.
  bool maySecondAt(const char32_t*, size_t at) const {
    return (records_[at] & propertyindex::kComposesSecond) != 0;
  }

 private:
  const std::uint32_t* records_;
};

// Whether an algorithm running on tables may read the generated data in
// place of the tables: only for gTransformTables, and only once its
// constructor has finished (the raw mappings are emptied last, after the
// weights are in), since the data describe the tables as they stand then.
inline bool usesIndex(const UnicodeTransformationTables& tables) {
  return &tables == &gTransformTables && tables.rawDecompositionMap.empty() &&
         !tables.weightMap.empty();
}

}  // namespace unicode
}  // namespace zelvo
