// What sets the canonical forms (NFD, NFC) apart from the compatibility
// forms (NFKD, NFKC) in the fast paths: the flags of the index and of the
// normalization data that each reads, and the thresholds below which each
// copies without a lookup.
#pragma once

#include <cstdint>

#include "normalization/DataSources.h"
#include "transform/NormalizationData.h"
#include "transform/PropertyIndex.h"

// Internal to the library, and hidden: calls from its other parts go
// straight to these, not through the tables of the dynamic linker.
#pragma GCC visibility push(hidden)

namespace zelvo {
namespace unicode {

struct CanonicalForm {
  // A code point that the decomposition replaces.
  static constexpr std::uint32_t kDecomposes =
      propertyindex::kCanonicalDecomposition;
  static constexpr std::uint32_t kNo = propertyindex::kNfcNo;
  static constexpr std::uint32_t kMaybe = propertyindex::kNfcMaybe;
  static constexpr std::uint32_t kBoundary = normalizationdata::kNfcBoundary;
  static constexpr std::uint32_t kQuick = normalizationdata::kNfcQuick;
  static normalizationdata::Expansion expansion(std::uint32_t record) {
    return normalizationdata::canonical(record);
  }
  static char32_t decomposedCopiedBelow() {
    return normalizationdata::kNfdCopiedBelow;
  }
  static char32_t composedCopiedBelow() {
    return normalizationdata::kNfcCopiedBelow;
  }
  static char32_t checkedBelow() { return normalizationdata::kNfcCheckedBelow; }
};

struct CompatibilityForm {
  static constexpr std::uint32_t kDecomposes =
      propertyindex::kCanonicalDecomposition |
      propertyindex::kCompatDecomposition;
  static constexpr std::uint32_t kNo = propertyindex::kNfkcNo;
  static constexpr std::uint32_t kMaybe = propertyindex::kNfkcMaybe;
  static constexpr std::uint32_t kBoundary = normalizationdata::kNfkcBoundary;
  static constexpr std::uint32_t kQuick = normalizationdata::kNfkcQuick;
  static normalizationdata::Expansion expansion(std::uint32_t record) {
    return normalizationdata::compatibility(record);
  }
  static char32_t decomposedCopiedBelow() {
    return normalizationdata::kNfkdCopiedBelow;
  }
  static char32_t composedCopiedBelow() {
    return normalizationdata::kNfkcCopiedBelow;
  }
  static char32_t checkedBelow() {
    return normalizationdata::kNfkcCheckedBelow;
  }
};

// What a code point of the input is to composition. A boundary starts a
// piece of text that composes apart from everything before it: toNFC (or
// toNFKC) of the whole is the pieces composed one by one, put together. A
// piece of a plain boundary and marks in canonical order stays as it is if
// no first element of a pair stands with a second one: a Hangul syllable is
// decomposed and composed again, nothing else is decomposed, and nothing
// composes.
enum class Role {
  kPlain,        // a boundary that stays, and so do marks after it
  kStarter,      // a boundary that stays alone, not with what follows it
  kStarterWork,  // a boundary that changes even alone
  kMark,         // a mark that is never decomposed and composes with nothing
  kSecond,       // the second element of a pair, never decomposed
  kInside,       // no boundary, and it may change or make others change
};

// The flags of a record that give a code point a role other than kPlain and
// kMark.
template <class Form>
constexpr std::uint32_t kSpecialFlags =
    Form::kDecomposes | propertyindex::kComposesSecond | Form::kNo |
    Form::kMaybe;

// A vowel or trailing place of Hangul (U+11A7 included), which may compose
// with what stands before it.
inline bool isVowelOrTrailing(char32_t c) {
  using H = HangulConstants;
  return c - H::VBase < H::TBase + H::TCount - H::VBase;
}

// Whether the record index of a code point c below U+110000 settles its
// role alone: kPlain if its class is 0, kMark if not.
template <class Form>
inline bool hasSimpleRole(char32_t c, std::uint32_t index) {
  return (index & kSpecialFlags<Form>) == 0 && !isVowelOrTrailing(c);
}

// The role of a code point c below U+110000 whose record in the property
// index is index.
template <class Form>
Role roleOfRecord(char32_t c, std::uint32_t index) {
  if (hasSimpleRole<Form>(c, index))
    return propertyindex::combiningClass(index) != 0 ? Role::kMark
                                                     : Role::kPlain;
  if (index & Form::kDecomposes) {
    const std::uint32_t record = normalizationdata::record(c);
    if (record & Form::kQuick) return Role::kStarter;
    return (record & Form::kBoundary) ? Role::kStarterWork : Role::kInside;
  }
  if (isVowelOrTrailing(c)) return Role::kInside;
  // A second element of a pair may compose with what stands before it.
  if (index & propertyindex::kComposesSecond) return Role::kSecond;
  if (propertyindex::combiningClass(index) != 0) return Role::kMark;
  return Role::kStarterWork;
}

// The role of any 32-bit value c; index becomes its record in the property
// index.
template <class Form>
Role roleOf(char32_t c, std::uint32_t& index) {
  // Nothing above U+10FFFF has data; the one value there that is not left
  // alone is the marker, which composition removes.
  if (c >= propertyindex::kCodePoints) {
    index = 0;
    return c == HangulConstants::deletedMarker ? Role::kInside : Role::kPlain;
  }
  index = propertyindex::lookup(c);
  return roleOfRecord<Form>(c, index);
}

}  // namespace unicode
}  // namespace zelvo

#pragma GCC visibility pop
