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

// What a code point of the input is to the composed form. A boundary starts
// a piece of text that composes apart from everything before it: toNFC (or
// toNFKC) of the whole is the pieces composed one by one, put together. A
// quick code point is a boundary that a piece of its own leaves as it is.
enum class PieceKind { kQuick, kBoundary, kInside };

template <class Form>
PieceKind pieceKind(char32_t c) {
  using H = HangulConstants;
  // Nothing above U+10FFFF has data; the one value there that is not left
  // alone is the marker, which composition removes.
  if (c >= propertyindex::kCodePoints)
    return c == H::deletedMarker ? PieceKind::kInside : PieceKind::kQuick;
  const std::uint32_t index = propertyindex::lookup(c);
  if (index & Form::kDecomposes) {
    const std::uint32_t record = normalizationdata::record(c);
    if (record & Form::kQuick) return PieceKind::kQuick;
    return (record & Form::kBoundary) ? PieceKind::kBoundary
                                      : PieceKind::kInside;
  }
  // A mark, a second element of a pair, or a vowel or trailing place of
  // Hangul (U+11A7 included) may compose with what stands before it.
  if ((index & (propertyindex::kCombiningClassMask |
                propertyindex::kComposesSecond)) != 0 ||
      c - H::VBase < H::TBase + H::TCount - H::VBase)
    return PieceKind::kInside;
  return (index & (Form::kNo | Form::kMaybe)) != 0 ? PieceKind::kBoundary
                                                   : PieceKind::kQuick;
}

}  // namespace unicode
}  // namespace zelvo
