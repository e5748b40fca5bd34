// The AVX2 bounds of the decoders' results (see ConversionKernels.h), which
// size the result before decoding: tallies in vector lanes, with no branch
// that depends on the text. KernelSet tests in ConversionKernelsTest.cpp hold
// them to a count of the bytes or units they name, on every input the
// decoders are tested on.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include "string/Utf16Steps.h"
#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

// The continuation bytes are tallied in byte lanes, 255 blocks of 64 bytes
// at most before the tallies are summed: no branch depends on the text.
ZELVO_AVX2_TARGET std::size_t boundUtf8Avx2(const unsigned char* p,
                                            const unsigned char* end) {
  const unsigned char* const begin = p;
  // Continuation bytes are the signed bytes -128 to -65.
  const __m256i below = _mm256_set1_epi8(-64);
  const __m256i zero = _mm256_setzero_si256();
  std::size_t continuation = 0;
  while (end - p >= 64) {
    const std::ptrdiff_t blocks = (end - p) / 64 < 255 ? (end - p) / 64 : 255;
    const unsigned char* const stop = p + 64 * blocks;
    __m256i low = zero;
    __m256i high = zero;
    for (; p != stop; p += 64) {
      low = _mm256_sub_epi8(
          low,
          _mm256_cmpgt_epi8(
              below, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p))));
      high = _mm256_sub_epi8(
          high, _mm256_cmpgt_epi8(
                    below, _mm256_loadu_si256(
                               reinterpret_cast<const __m256i*>(p + 32))));
    }
    const __m256i sums = _mm256_add_epi64(_mm256_sad_epu8(low, zero),
                                          _mm256_sad_epu8(high, zero));
    const __m128i half = _mm_add_epi64(_mm256_castsi256_si128(sums),
                                       _mm256_extracti128_si256(sums, 1));
    continuation += static_cast<std::size_t>(
        _mm_cvtsi128_si64(_mm_add_epi64(half, _mm_unpackhi_epi64(half, half))));
  }
  return static_cast<std::size_t>(p - begin) - continuation +
         boundUtf8Bytes(p, end);
}

// The low surrogates right behind a high one are tallied in 16-bit lanes,
// each unit read beside the one before it, 32767 steps at most before the
// tallies are summed: no branch depends on the text.
ZELVO_AVX2_TARGET std::size_t boundUtf16Avx2(const char16_t* p,
                                             const char16_t* end) {
  if (end - p < 2) return static_cast<std::size_t>(end - p);
  const char16_t* const begin = p;
  ++p;  // the first unit is behind no other
  const __m256i top6 = _mm256_set1_epi16(static_cast<short>(0xFC00));
  const __m256i high = _mm256_set1_epi16(static_cast<short>(0xD800));
  const __m256i low = _mm256_set1_epi16(static_cast<short>(0xDC00));
  std::size_t pairs = 0;
  while (end - p >= 16) {
    const std::ptrdiff_t steps =
        (end - p) / 16 < 32767 ? (end - p) / 16 : 32767;
    const char16_t* const stop = p + 16 * steps;
    __m256i tally = _mm256_setzero_si256();
    for (; p != stop; p += 16) {
      const __m256i before = _mm256_and_si256(
          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p - 1)), top6);
      const __m256i here = _mm256_and_si256(
          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)), top6);
      tally = _mm256_sub_epi16(
          tally, _mm256_and_si256(_mm256_cmpeq_epi16(before, high),
                                  _mm256_cmpeq_epi16(here, low)));
    }
    const __m256i sums = _mm256_madd_epi16(tally, _mm256_set1_epi16(1));
    __m128i half = _mm_add_epi32(_mm256_castsi256_si128(sums),
                                 _mm256_extracti128_si256(sums, 1));
    half = _mm_add_epi32(half, _mm_unpackhi_epi64(half, half));
    half = _mm_add_epi32(half, _mm_srli_epi64(half, 32));
    pairs += static_cast<std::size_t>(_mm_cvtsi128_si32(half));
  }
  return static_cast<std::size_t>(p - begin) - pairs +
         boundUtf16Units(p, end, p[-1]);
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
