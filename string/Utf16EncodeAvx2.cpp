// The AVX2 UTF-16 encoder: 16 elements narrowed at once when each takes one
// unit of its own value, and otherwise 8 at a time split into their units in
// 32-bit lanes and packed into place. The windows take every value as the
// steps do, so they lean on no fact of the text; KernelSet tests in
// ConversionKernelsTest.cpp put every awkward value in every lane.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include <array>
#include <cstdint>

#include "string/ShuffleTables.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// For the four pair flags of a half window, the shuffle that writes the
// units one behind the other: the low 16 bits of a lane first, then, for a
// pair, the high 16 bits.
alignas(16) constexpr std::array<Shuffle, 16> kSplit =
    makeShuffles<16, 4, 4, false>([](unsigned pairs, unsigned lane) {
      return (pairs >> lane) & 1 ? 4u : 2u;
    });

// All-ones in the lanes whose elements take one unit of their own value:
// below 0xD800, or 0xE000 to 0xFFFF.
ZELVO_AVX2_TARGET inline __m256i singleUnitLanes(__m256i c) {
  const __m256i bmp =
      _mm256_cmpeq_epi32(_mm256_srli_epi32(c, 16), _mm256_setzero_si256());
  const __m256i surrogate = _mm256_cmpeq_epi32(
      _mm256_and_si256(c, _mm256_set1_epi32(static_cast<int>(0xFFFFF800u))),
      _mm256_set1_epi32(0xD800));
  return _mm256_andnot_si256(surrogate, bmp);
}

// All-ones in the lanes whose elements take a pair: neither one unit of
// their own value nor above U+10FFFF.
ZELVO_AVX2_TARGET inline __m256i pairLanes(__m256i c) {
  const __m256i tooLarge =
      _mm256_cmpgt_epi32(_mm256_srli_epi32(c, 16), _mm256_set1_epi32(0x10));
  return _mm256_andnot_si256(_mm256_or_si256(singleUnitLanes(c), tooLarge),
                             _mm256_set1_epi32(-1));
}

// Encodes the 8 elements at p into o, the units of the first four and of
// the others each stored as 16 bytes; returns the mask of those that take a
// pair.
ZELVO_AVX2_TARGET inline unsigned encodeEight(const char32_t* p, char16_t* o) {
  const __m256i c = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  const __m256i single = singleUnitLanes(c);
  const __m256i tooLarge =
      _mm256_cmpgt_epi32(_mm256_srli_epi32(c, 16), _mm256_set1_epi32(0x10));
  const __m256i pair = pairLanes(c);
  const __m256i d = _mm256_sub_epi32(c, _mm256_set1_epi32(0x10000));
  const __m256i lead = _mm256_or_si256(
      _mm256_set1_epi32(0xD800),
      _mm256_and_si256(_mm256_srli_epi32(d, 10), _mm256_set1_epi32(0x3FF)));
  const __m256i trail = _mm256_or_si256(
      _mm256_set1_epi32(0xDC00), _mm256_and_si256(d, _mm256_set1_epi32(0x3FF)));
  // A value above U+10FFFF is the constant 0xD800 alone.
  const __m256i first = _mm256_blendv_epi8(
      _mm256_blendv_epi8(lead, _mm256_set1_epi32(0xD800), tooLarge), c, single);
  const __m256i units = _mm256_or_si256(
      first, _mm256_and_si256(pair, _mm256_slli_epi32(trail, 16)));
  const unsigned pairs =
      static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(pair)));
  const __m256i shuffle = _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_load_si128(
          reinterpret_cast<const __m128i*>(kSplit[pairs & 0xF].data()))),
      _mm_load_si128(
          reinterpret_cast<const __m128i*>(kSplit[pairs >> 4].data())),
      1);
  const __m256i packed = _mm256_shuffle_epi8(units, shuffle);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o),
                   _mm256_castsi256_si128(packed));
  _mm_storeu_si128(
      reinterpret_cast<__m128i*>(o + 4 + _mm_popcnt_u32(pairs & 0xF)),
      _mm256_extracti128_si256(packed, 1));
  return pairs;
}

}  // namespace

ZELVO_AVX2_TARGET void encodeUtf16Avx2(const char32_t*& p, const char32_t* end,
                                       char16_t*& o, char16_t* oEnd) {
  const char32_t* in = p;
  char16_t* out = o;
  // A window writes up to 16 units, whatever it takes.
  while (end - in >= 8 && oEnd - out >= 16) {
    if (end - in >= 16) {
      const __m256i a =
          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
      const __m256i b =
          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + 8));
      // All below 0xD800 or from 0xE000 to 0xFFFF: one unit each.
      const __m256i single =
          _mm256_and_si256(singleUnitLanes(a), singleUnitLanes(b));
      if (_mm256_movemask_epi8(single) == -1) {
        _mm256_storeu_si256(
            reinterpret_cast<__m256i*>(out),
            _mm256_permute4x64_epi64(_mm256_packus_epi32(a, b), 0xD8));
        in += 16;
        out += 16;
        continue;
      }
    }
    const unsigned pairs = encodeEight(in, out);
    in += 8;
    out += 8 + _mm_popcnt_u32(pairs);
  }
  p = in;
  o = out;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
