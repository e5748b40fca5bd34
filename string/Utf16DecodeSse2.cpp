// The SSE2 UTF-16 decoder and exact count: runs of units that are no
// surrogates widened 16 at a time; any surrogate is left to the steps. They
// lean on one fact of the units: a unit that is no surrogate, behind a step
// boundary, is a step of its own. KernelSet tests in
// ConversionKernelsTest.cpp put every kind of unit at every position of a
// block and hold the result to the step-by-step reference.
#include "string/Sse2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <emmintrin.h>

#include "string/Utf16Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// Widens the 16 units at p to code points at o; returns the number of units
// that lead the window and are no surrogates.
std::size_t widenPlainBlock(const char16_t* p, char32_t* o) {
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
  return static_cast<std::size_t>(__builtin_ctz(mask));
}

}  // namespace

std::size_t countUtf16Sse2(const char16_t* p, const char16_t* end) {
  std::size_t count = 0;
  while (p != end) {
    if (end - p >= 16) {
      const __m128i* src = reinterpret_cast<const __m128i*>(p);
      const __m128i high5 = _mm_set1_epi16(-0x800);
      const __m128i surrogate = _mm_set1_epi16(-0x2800);
      const __m128i any = _mm_or_si128(
          _mm_cmpeq_epi16(_mm_and_si128(_mm_loadu_si128(src), high5),
                          surrogate),
          _mm_cmpeq_epi16(_mm_and_si128(_mm_loadu_si128(src + 1), high5),
                          surrogate));
      if (_mm_movemask_epi8(any) == 0) {
        count += 16;
        p += 16;
        continue;
      }
    }
    const char16_t* stop = end - p > 16 ? p + 16 : end;
    count += countUtf16Steps(p, end, stop);
  }
  return count;
}

void decodeUtf16Sse2(const char16_t*& p, const char16_t* end, char32_t*& o,
                     char32_t* oEnd) {
  takeWholeWindows(p, end, o, oEnd, widenPlainBlock);
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
