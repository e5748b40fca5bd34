// The AVX2 UTF-16 encoder: 16 elements narrowed at once when each takes one
// unit of its own value, and otherwise split into their units in 32-bit lanes,
// 8 at a time, and packed into place. The windows take every value as the steps
// do, so they lean on no fact of the text; KernelSet tests in
// ConversionKernelsTest.cpp put every awkward value in every lane.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include <array>
#include <cstdint>

#include "string/KeptConstants.h"
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

// The constants of the windows, made once for a call of the kernel.
struct Constants {
  __m256i top21, surrogate, sixteen, pairBase, low10, next10, pairMarks;
};

ZELVO_AVX2_TARGET inline Constants makeConstants() {
  Constants k;
  k.top21 = kept(_mm256_set1_epi32(static_cast<int>(0xFFFFF800u)));
  k.surrogate = kept(_mm256_set1_epi32(0xD800));
  k.sixteen = kept(_mm256_set1_epi32(0x10));
  k.pairBase = kept(_mm256_set1_epi32(0x10000));
  k.low10 = kept(_mm256_set1_epi32(0x3FF));
  k.next10 = kept(_mm256_set1_epi32(0x3FF0000));
  k.pairMarks = kept(_mm256_set1_epi32(static_cast<int>(0xDC00D800u)));
  return k;
}

// All-ones in the lanes whose elements take one unit of their own value:
// below 0xD800, or 0xE000 to 0xFFFF.
ZELVO_AVX2_TARGET inline __m256i singleUnitLanes(__m256i c,
                                                 const Constants& k) {
  const __m256i bmp =
      _mm256_cmpeq_epi32(_mm256_srli_epi32(c, 16), _mm256_setzero_si256());
  const __m256i surrogate =
      _mm256_cmpeq_epi32(_mm256_and_si256(c, k.top21), k.surrogate);
  return _mm256_andnot_si256(surrogate, bmp);
}

// Encodes the 8 elements c, of which those in the lanes of single take one
// unit of their own value, into o: the units of the first four and of the
// others each stored as 16 bytes. Returns the number of units.
ZELVO_AVX2_TARGET inline std::size_t encodeEight(__m256i c, __m256i single,
                                                 char16_t* o,
                                                 const Constants& k) {
  const __m256i tooLarge =
      _mm256_cmpgt_epi32(_mm256_srli_epi32(c, 16), k.sixteen);
  // The pair of every other element, lead in the low 16 bits of its lane
  // and trail in the high: for a surrogate element the subtraction wraps.
  const __m256i d = _mm256_sub_epi32(c, k.pairBase);
  const __m256i pair = _mm256_or_si256(
      _mm256_or_si256(_mm256_and_si256(_mm256_srli_epi32(d, 10), k.low10),
                      _mm256_and_si256(_mm256_slli_epi32(d, 16), k.next10)),
      k.pairMarks);
  // A lane of one unit holds it in its low 16 bits: the value itself, or
  // the constant 0xD800 for a value above U+10FFFF.
  const __m256i units = _mm256_blendv_epi8(
      _mm256_blendv_epi8(pair, k.surrogate, tooLarge), c, single);
  const unsigned pairs =
      ~static_cast<unsigned>(_mm256_movemask_ps(
          _mm256_castsi256_ps(_mm256_or_si256(single, tooLarge)))) &
      0xFF;
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
  return 8 + static_cast<std::size_t>(_mm_popcnt_u32(pairs));
}

}  // namespace

ZELVO_AVX2_TARGET void encodeUtf16Avx2(const char32_t*& p, const char32_t* end,
                                       char16_t*& o, char16_t* oEnd) {
  const char32_t* in = p;
  char16_t* out = o;
  const Constants k = makeConstants();
  // A window of 16 elements writes up to 32 units, whatever it takes.
  while (end - in >= 16 && oEnd - out >= 32) {
    const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in));
    const __m256i b =
        _mm256_loadu_si256(reinterpret_cast<const __m256i*>(in + 8));
    const __m256i singleA = singleUnitLanes(a, k);
    const __m256i singleB = singleUnitLanes(b, k);
    if (_mm256_movemask_epi8(_mm256_and_si256(singleA, singleB)) == -1) {
      // One unit each, the value itself.
      _mm256_storeu_si256(
          reinterpret_cast<__m256i*>(out),
          _mm256_permute4x64_epi64(_mm256_packus_epi32(a, b), 0xD8));
      out += 16;
    } else {
      out += encodeEight(a, singleA, out, k);
      out += encodeEight(b, singleB, out, k);
    }
    in += 16;
  }
  p = in;
  o = out;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
