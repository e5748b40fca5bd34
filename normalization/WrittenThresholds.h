// The thresholds that the normalization algorithms have as rules of their
// own: below them a code point is taken as it stands, without a lookup.
#pragma once

namespace zelvo {
namespace unicode {

// They were set at the lowest keys of weightMap, decompositionMap and
// compatDecompositionMap, but they are part of the algorithms, not facts of
// the data, and they stay whatever the tables hold: canonical ordering opens
// no run of marks below kMarkRule, toNFD and isNFD look nothing up below
// kCanonicalRule, toNFKD and isNFKD nothing below kCompatibilityRule. In the
// quick checks this shows: isNFD and isNFKD carry the class of the last mark
// across a code point below their threshold, where a lookup would reset it.
constexpr char32_t kMarkRule = 0x0300;
constexpr char32_t kCanonicalRule = 0x00C0;
constexpr char32_t kCompatibilityRule = 0x00A0;

}  // namespace unicode
}  // namespace zelvo
