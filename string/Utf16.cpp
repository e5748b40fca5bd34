// UTF-16 at the boundary of String: a decoder that joins any surrogate unit
// with the unit behind it, and an encoder that writes something for every
// element. Both stage their output and append it in blocks.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "string/Blocks.h"
#include "string/String.h"

namespace zelvo {
namespace unicode {

namespace {

// (U << 10) + V - 0x35FDC00 is the usual surrogate pair formula with its
// constants folded. It is applied to any surrogate U and whatever unit V
// follows, so malformed pairs give odd values rather than errors.
inline char32_t joinUnits(char32_t first, char32_t second) {
  return (first << 10) + second - 0x35FDC00u;
}

inline bool isSurrogateUnit(char32_t unit) { return (unit & 0xF800) == 0xD800; }

// The block kernels look at a window of 16 units or elements and report how
// many steps at its front they took. They write the whole window's output;
// the places behind the steps taken hold leftovers that the following steps
// overwrite, so callers give them room for all of it.

// Widens the 16 units at p to code points at o; returns the number of units
// that lead the window and are no surrogates.
inline size_t widenPlainBlock(const char16_t* p, char32_t* o) {
#if defined(ZELVO_SSE2_BLOCKS)
  const __m128i* src = reinterpret_cast<const __m128i*>(p);
  const __m128i a = _mm_loadu_si128(src);
  const __m128i b = _mm_loadu_si128(src + 1);
  const __m128i zero = _mm_setzero_si128();
  __m128i* dst = reinterpret_cast<__m128i*>(o);
  _mm_storeu_si128(dst, _mm_unpacklo_epi16(a, zero));
  _mm_storeu_si128(dst + 1, _mm_unpackhi_epi16(a, zero));
  _mm_storeu_si128(dst + 2, _mm_unpacklo_epi16(b, zero));
  _mm_storeu_si128(dst + 3, _mm_unpackhi_epi16(b, zero));
  // (unit AND 0xF800) == 0xD800, in signed 16-bit terms.
  const __m128i high5 = _mm_set1_epi16(-0x800);
  const __m128i surrogate = _mm_set1_epi16(-0x2800);
  const __m128i surrogates =
      _mm_packs_epi16(_mm_cmpeq_epi16(_mm_and_si128(a, high5), surrogate),
                      _mm_cmpeq_epi16(_mm_and_si128(b, high5), surrogate));
  const unsigned mask =
      static_cast<unsigned>(_mm_movemask_epi8(surrogates)) | 0x10000u;
  return static_cast<size_t>(__builtin_ctz(mask));
#else
  size_t n = 0;
  while (n < 16 && !isSurrogateUnit(p[n])) {
    o[n] = p[n];
    ++n;
  }
  return n;
#endif
}

// Narrows the 16 elements at p to units at o; returns the number of elements
// that lead the window and take one unit: below 0xD800, or 0xE000 to 0xFFFF.
inline size_t narrowSingleBlock(const char32_t* p, char16_t* o) {
#if defined(ZELVO_SSE2_BLOCKS)
  const __m128i* src = reinterpret_cast<const __m128i*>(p);
  const __m128i zero = _mm_setzero_si128();
  auto singleLanes = [&](__m128i v) {
    const __m128i bmp =
        _mm_cmpeq_epi32(_mm_and_si128(v, _mm_set1_epi32(~0xFFFF)), zero);
    const __m128i surrogate = _mm_cmpeq_epi32(
        _mm_and_si128(v, _mm_set1_epi32(0xF800)), _mm_set1_epi32(0xD800));
    return _mm_andnot_si128(surrogate, bmp);
  };
  // Sign-extend the low 16 bits so that the signed pack keeps them.
  auto low16 = [](__m128i v) {
    return _mm_srai_epi32(_mm_slli_epi32(v, 16), 16);
  };
  const __m128i a = _mm_loadu_si128(src);
  const __m128i b = _mm_loadu_si128(src + 1);
  const __m128i c = _mm_loadu_si128(src + 2);
  const __m128i d = _mm_loadu_si128(src + 3);
  __m128i* dst = reinterpret_cast<__m128i*>(o);
  _mm_storeu_si128(dst, _mm_packs_epi32(low16(a), low16(b)));
  _mm_storeu_si128(dst + 1, _mm_packs_epi32(low16(c), low16(d)));
  const __m128i single =
      _mm_packs_epi16(_mm_packs_epi32(singleLanes(a), singleLanes(b)),
                      _mm_packs_epi32(singleLanes(c), singleLanes(d)));
  const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(single));
  return static_cast<size_t>(__builtin_ctz(~mask));
#else
  size_t n = 0;
  while (n < 16 && (p[n] < 0xD800 || (p[n] >= 0xE000 && p[n] <= 0xFFFF))) {
    o[n] = static_cast<char16_t>(p[n]);
    ++n;
  }
  return n;
#endif
}

// Runs the decoding steps over [p, end), storing into the staging buffer and
// appending it to out whenever it is full before a step.
void decodeUtf16(const char16_t* p, const char16_t* const end,
                 char32_t* const staging, const size_t capacity,
                 std::u32string& out) {
  char32_t* const stagingEnd = staging + capacity;
  char32_t* o = staging;
  while (p != end) {
    if (o == stagingEnd) {
      appendBlock(out, staging, capacity);
      o = staging;
    }
    while (o != stagingEnd && p != end) {
      const char32_t unit = *p;
      if (!isSurrogateUnit(unit)) {
        if (stagingEnd - o + kStagingSpare >= 16 && end - p >= 16) {
          takeWindows<16, 1>(p, end, o, stagingEnd, widenPlainBlock);
        } else {
          *o++ = unit;
          ++p;
        }
      } else if (end - p >= 2) {
        *o++ = joinUnits(unit, p[1]);
        p += 2;
      } else {
        // A surrogate in the last place has no partner: it is discarded.
        p = end;
      }
    }
  }
  appendBlock(out, staging, static_cast<size_t>(o - staging));
}

// Runs the encoding steps over [p, end), staging units and appending them to
// out whenever the buffer holds its capacity or more before a step.
void encodeUtf16(const char32_t* p, const char32_t* const end,
                 char16_t* const staging, const size_t capacity,
                 std::u16string& out) {
  char16_t* const stagingLimit = staging + capacity;
  char16_t* o = staging;
  while (p != end) {
    if (o >= stagingLimit) {
      appendBlock(out, staging, static_cast<size_t>(o - staging));
      o = staging;
    }
    // A step starts only below the capacity and writes at most 2 units. A
    // block stores 16 units, so it runs only where they fit the buffer and
    // its spare places, and takes only the steps that start below the
    // capacity.
    while (o < stagingLimit && p != end) {
      const char32_t c = *p;
      if (c < 0xD800 || (c >= 0xE000 && c <= 0xFFFF)) {
        if (stagingLimit - o + kStagingSpare >= 16 && end - p >= 16) {
          takeWindows<16, 1>(p, end, o, stagingLimit, narrowSingleBlock);
          continue;
        }
        *o++ = static_cast<char16_t>(c);
      } else if (c > 0x10FFFF) {
        // Too large for any pair: a lone high surrogate stands in for it.
        *o++ = 0xD800;
      } else {
        // Supplementary code points, and surrogate elements too: for these
        // the subtraction wraps, and the pair stands for value + 0x100000.
        const char32_t d = c - 0x10000;
        o[0] = static_cast<char16_t>(0xD800 | ((d >> 10) & 0x3FF));
        o[1] = static_cast<char16_t>(0xDC00 | (d & 0x3FF));
        o += 2;
      }
      ++p;
    }
  }
  appendBlock(out, staging, static_cast<size_t>(o - staging));
}

}  // namespace

String::String(const std::u16string& utf16) { fromUTF16String(utf16); }

void String::fromUTF16String(const std::u16string& utf16) {
  const size_t unitCount = utf16.size();
  // Every code point takes at least one unit.
  std::u32string decoded =
      decodeApart(unitCount, stagingCapacity(unitCount),
                  [&](char32_t* staging, size_t capacity, std::u32string& out) {
                    decodeUtf16(utf16.data(), utf16.data() + unitCount, staging,
                                capacity, out);
                  });
  // Install: the object takes over the new storage, and its old storage
  // leaves with the temporary.
  str_.swap(decoded);
}

std::u16string String::toUTF16String() const {
  const size_t capacity = stagingCapacity(str_.size());
  std::unique_ptr<char16_t[]> staging(new char16_t[capacity + kStagingSpare]);
  // Every element gives at least one unit, so the element count is a floor
  // for the result; it is not shrunk afterwards.
  std::u16string encoded;
  encoded.reserve(str_.size());
  encodeUtf16(str_.data(), str_.data() + str_.size(), staging.get(), capacity,
              encoded);
  return encoded;
}

}  // namespace unicode
}  // namespace zelvo
