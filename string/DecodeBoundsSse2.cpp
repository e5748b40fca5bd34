// The SSE2 bounds of the decoders' results (see ConversionKernels.h), which
// size the result before decoding: tallies in vector lanes, with no branch
// that depends on the text. KernelSet tests in ConversionKernelsTest.cpp hold
// them to a count of the bytes or units they name, on every input the
// decoders are tested on.
#include "string/Sse2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <emmintrin.h>

#include "string/Utf16Steps.h"
#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

// The continuation bytes are tallied in byte lanes, 255 blocks of 64 bytes
// at most before the tallies are summed: no branch depends on the text.
std::size_t boundUtf8Sse2(const unsigned char* p, const unsigned char* end) {
  const unsigned char* const begin = p;
  // Continuation bytes are the signed bytes -128 to -65.
  const __m128i below = _mm_set1_epi8(-64);
  const __m128i zero = _mm_setzero_si128();
  std::size_t continuation = 0;
  while (end - p >= 64) {
    const std::ptrdiff_t blocks = (end - p) / 64 < 255 ? (end - p) / 64 : 255;
    const unsigned char* const stop = p + 64 * blocks;
    __m128i tally[4] = {zero, zero, zero, zero};
    for (; p != stop; p += 64) {
      for (int k = 0; k < 4; ++k)
        tally[k] = _mm_sub_epi8(
            tally[k],
            _mm_cmpgt_epi8(
                below,
                _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * k))));
    }
    __m128i sums = zero;
    for (const __m128i t : tally)
      sums = _mm_add_epi64(sums, _mm_sad_epu8(t, zero));
    continuation += static_cast<std::size_t>(
        _mm_cvtsi128_si64(_mm_add_epi64(sums, _mm_unpackhi_epi64(sums, sums))));
  }
  return static_cast<std::size_t>(p - begin) - continuation +
         boundUtf8Bytes(p, end);
}

// The low surrogates right behind a high one are tallied in 16-bit lanes,
// each unit read beside the one before it, 32767 steps at most before the
// tallies are summed: no branch depends on the text.
std::size_t boundUtf16Sse2(const char16_t* p, const char16_t* end) {
  if (end - p < 2) return static_cast<std::size_t>(end - p);
  const char16_t* const begin = p;
  ++p;  // the first unit is behind no other
  const __m128i top6 = _mm_set1_epi16(static_cast<short>(0xFC00));
  const __m128i high = _mm_set1_epi16(static_cast<short>(0xD800));
  const __m128i low = _mm_set1_epi16(static_cast<short>(0xDC00));
  std::size_t pairs = 0;
  while (end - p >= 8) {
    const std::ptrdiff_t steps = (end - p) / 8 < 32767 ? (end - p) / 8 : 32767;
    const char16_t* const stop = p + 8 * steps;
    __m128i tally = _mm_setzero_si128();
    for (; p != stop; p += 8) {
      const __m128i before = _mm_and_si128(
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(p - 1)), top6);
      const __m128i here = _mm_and_si128(
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)), top6);
      tally = _mm_sub_epi16(tally, _mm_and_si128(_mm_cmpeq_epi16(before, high),
                                                 _mm_cmpeq_epi16(here, low)));
    }
    __m128i sums = _mm_madd_epi16(tally, _mm_set1_epi16(1));
    sums = _mm_add_epi32(sums, _mm_unpackhi_epi64(sums, sums));
    sums = _mm_add_epi32(sums, _mm_srli_epi64(sums, 32));
    pairs += static_cast<std::size_t>(_mm_cvtsi128_si32(sums));
  }
  return static_cast<std::size_t>(p - begin) - pairs +
         boundUtf16Units(p, end, p[-1]);
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
