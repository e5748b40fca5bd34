// Shortcuts shared by the normalization methods: scans that test many code
// points at once, and lookups that remember their last answers.
#pragma once

#include <cstdint>
#include <iterator>

#include "transform/UnicodeTransformationTables.h"

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

// find() on a map keyed by code point, for one call's walk through a text;
// the answers are map.find()'s. A miss finds the two keys around the code
// point, and every code point between those two keys has no entry either:
// the last few such gaps are kept, so that the letters of a script, which
// fall in a few gaps between the keys of its precomposed or marked letters,
// cost a descent of the tree per gap rather than per letter. The last hits
// are kept as well, one for each value of the low bits of the key.
template <class Map>
class GapLookup {
 public:
  using const_iterator = typename Map::const_iterator;

  explicit GapLookup(const Map& map) : map_(map) { clearHits(); }

  const_iterator find(char32_t c) {
    for (int k = 0; k < kGaps; ++k)
      if (c >= gapFirst_[k] && c <= gapLast_[k]) return map_.end();
    const unsigned slot = c % kHits;
    if (hitKey_[slot] == c) return hit_[slot];
    const const_iterator next = map_.lower_bound(c);
    if (next != map_.end() && next->first == c) {
      hitKey_[slot] = c;
      hit_[slot] = next;
      return next;
    }
    gapLast_[victim_] = next == map_.end() ? ~char32_t{0} : next->first - 1;
    gapFirst_[victim_] = next == map_.begin() ? 0 : std::prev(next)->first + 1;
    victim_ = (victim_ + 1) % kGaps;
    return map_.end();
  }

  const_iterator end() const { return map_.end(); }

 private:
  static constexpr int kGaps = 4;
  static constexpr unsigned kHits = 64;
  const Map& map_;
  // Empty until filled by a miss: first above last.
  char32_t gapFirst_[kGaps] = {1, 1, 1, 1};
  char32_t gapLast_[kGaps] = {0, 0, 0, 0};
  int victim_ = 0;
  // Each slot starts with a key that belongs to the next slot, so that no
  // code point finds it before a hit has been stored there.
  char32_t hitKey_[kHits];
  const_iterator hit_[kHits];

  void clearHits() {
    for (unsigned k = 0; k < kHits; ++k) hitKey_[k] = k + 1;
  }
};

// Lookups in compositionMap for one composeHelper pass: the map is keyed by
// Strings, compared out of line element by element, and text repeats its
// few pairs, so the last answer for each of a few slots is kept, a pair that
// composes to nothing included. The answers are compositionMap.find()'s.
class PairMemo {
 public:
  // Whether (first, second) is remembered; its composite, or 0 for none,
  // goes into composite.
  bool recall(char32_t first, char32_t second, char32_t& composite) const {
    const Entry& e = entries_[slot(first, second)];
    if (!e.valid || e.first != first || e.second != second) return false;
    composite = e.composite;
    return true;
  }

  void remember(char32_t first, char32_t second, char32_t composite) {
    entries_[slot(first, second)] = {first, second, composite, true};
  }

 private:
  static constexpr unsigned kSlots = 32;
  static unsigned slot(char32_t first, char32_t second) {
    return (first * 31u + second) % kSlots;
  }
  struct Entry {
    char32_t first;
    char32_t second;
    char32_t composite;
    bool valid;
  };
  Entry entries_[kSlots] = {};
};

// rangeContains() on one range list, for one call's walk through a text:
// text repeats its few letters and marks, so the last answer for each value
// of the low bits of the code point is kept. The answers are rangeContains's.
class RangeMemo {
 public:
  explicit RangeMemo(const RangeList& ranges) : ranges_(ranges) {
    // Each slot starts with a code point that belongs to the next slot, so
    // that no code point finds it before an answer has been stored there.
    for (unsigned k = 0; k < kSlots; ++k) keys_[k] = k + 1;
  }

  bool contains(char32_t c) {
    const unsigned slot = c % kSlots;
    if (keys_[slot] == c) return answers_[slot];
    const bool answer = rangeContains(ranges_, c);
    keys_[slot] = c;
    answers_[slot] = answer;
    return answer;
  }

 private:
  static constexpr unsigned kSlots = 64;
  const RangeList& ranges_;
  char32_t keys_[kSlots];
  bool answers_[kSlots];
};

}  // namespace unicode
}  // namespace zelvo
