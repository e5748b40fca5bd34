// Scans of the normalization fast paths that test many code points at once.
#pragma once

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zelvo {
namespace unicode {

// The first position from p on whose value is not below limit, or end.
// Text below the limit costs a fraction of a comparison a code point: with
// SSE2, which every x86-64 processor has, sixteen values are compared at
// once; elsewhere one at a time.
inline const char32_t* skipBelow(const char32_t* p, const char32_t* end,
                                 char32_t limit) {
  // Text of other scripts stops at once: no block compare for one element.
  if (p == end || *p >= limit) return p;
#if defined(__SSE2__)
  // SSE2 compares signed values only: flipping the top bit of both sides
  // turns the unsigned order into the signed one.
  const __m128i flip = _mm_set1_epi32(static_cast<int>(0x80000000u));
  const __m128i bound = _mm_set1_epi32(
      static_cast<int>(static_cast<std::uint32_t>(limit) ^ 0x80000000u));
  while (end - p >= 16) {
    int below = 0;
    for (int k = 0; k < 4; ++k) {
      const __m128i values = _mm_xor_si128(
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 4 * k)), flip);
      below |= _mm_movemask_ps(_mm_castsi128_ps(_mm_cmplt_epi32(values, bound)))
               << (4 * k);
    }
    if (below != 0xFFFF) return p + __builtin_ctz(~below);
    p += 16;
  }
#endif
  while (p != end && *p < limit) ++p;
  return p;
}

inline char32_t* skipBelow(char32_t* p, char32_t* end, char32_t limit) {
  return const_cast<char32_t*>(
      skipBelow(static_cast<const char32_t*>(p), end, limit));
}

// The first position from p on that holds value, or end: std::find, sixteen
// values at a time where SSE2 is at hand.
inline const char32_t* findValue(const char32_t* p, const char32_t* end,
                                 char32_t value) {
#if defined(__SSE2__)
  const __m128i wanted = _mm_set1_epi32(static_cast<int>(value));
  while (end - p >= 16) {
    int equal = 0;
    for (int k = 0; k < 4; ++k) {
      const __m128i values =
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 4 * k));
      equal |=
          _mm_movemask_ps(_mm_castsi128_ps(_mm_cmpeq_epi32(values, wanted)))
          << (4 * k);
    }
    if (equal != 0) return p + __builtin_ctz(equal);
    p += 16;
  }
#endif
  while (p != end && *p != value) ++p;
  return p;
}

}  // namespace unicode
}  // namespace zelvo
