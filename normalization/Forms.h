// What sets the canonical forms (NFD, NFC) apart from the compatibility
// forms (NFKD, NFKC) in the fast paths: the flags of the index and of the
// normalization data that each reads, and the thresholds below which each
// copies without a lookup.
#pragma once

#include <cstdint>

#include "normalization/DataSources.h"
#include "transform/NormalizationData.h"
#include "transform/PropertyIndex.h"

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

// Whether c is kPlain, with no more than one lookup: a code point without
// data, or a starter in no quick check list of Form that does not compose
// with what stands before it and is decomposed by Hangul arithmetic or not
// at all.
template <class Form>
inline bool isPlain(char32_t c) {
  using H = HangulConstants;
  if (c >= propertyindex::kCodePoints) return c != H::deletedMarker;
  constexpr std::uint32_t kChanges =
      Form::kDecomposes | propertyindex::kComposesSecond |
      propertyindex::kCombiningClassMask | Form::kNo | Form::kMaybe;
  return (propertyindex::lookup(c) & kChanges) == 0 &&
         c - H::VBase >= H::TBase + H::TCount - H::VBase;
}

// The role of c; index becomes its record in the property index.
template <class Form>
Role roleOf(char32_t c, std::uint32_t& index) {
  using H = HangulConstants;
  // Nothing above U+10FFFF has data; the one value there that is not left
  // alone is the marker, which composition removes.
  if (c >= propertyindex::kCodePoints) {
    index = 0;
    return c == H::deletedMarker ? Role::kInside : Role::kPlain;
  }
  index = propertyindex::lookup(c);
  if (index & Form::kDecomposes) {
    const std::uint32_t record = normalizationdata::record(c);
    if (record & Form::kQuick) return Role::kStarter;
    return (record & Form::kBoundary) ? Role::kStarterWork : Role::kInside;
  }
  // A vowel or trailing place of Hangul (U+11A7 included) may compose with
  // what stands before it, and so may a second element of a pair.
  if (c - H::VBase < H::TBase + H::TCount - H::VBase) return Role::kInside;
  if (index & propertyindex::kComposesSecond) return Role::kSecond;
  if (propertyindex::combiningClass(index) != 0) return Role::kMark;
  return (index & (Form::kNo | Form::kMaybe)) != 0 ? Role::kStarterWork
                                                   : Role::kPlain;
}

}  // namespace unicode
}  // namespace zelvo
