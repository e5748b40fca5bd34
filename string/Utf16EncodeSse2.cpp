// The SSE2 UTF-16 encoder: runs of elements that take one unit of their own
// value narrowed 16 at a time; any other element is left to the steps. The
// windows take their values as the steps do, so they lean on no fact of the
// text; KernelSet tests in ConversionKernelsTest.cpp put every awkward value
// in every lane.
#include "string/Sse2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <emmintrin.h>

#include <cstddef>

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// All-ones in the lanes whose elements take one unit of their own value.
__m128i singleLanes(__m128i v) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i bmp =
      _mm_cmpeq_epi32(_mm_and_si128(v, _mm_set1_epi32(~0xFFFF)), zero);
  const __m128i surrogate = _mm_cmpeq_epi32(
      _mm_and_si128(v, _mm_set1_epi32(0xF800)), _mm_set1_epi32(0xD800));
  return _mm_andnot_si128(surrogate, bmp);
}

// Sign-extends the low 16 bits so that the signed pack keeps them.
__m128i low16(__m128i v) { return _mm_srai_epi32(_mm_slli_epi32(v, 16), 16); }

// Narrows the 16 elements at p to units at o; returns the number of elements
// that lead the window and take one unit.
std::size_t narrowSingleBlock(const char32_t* p, char16_t* o) {
  const __m128i* src = reinterpret_cast<const __m128i*>(p);
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
  return static_cast<std::size_t>(__builtin_ctz(~mask));
}

}  // namespace

void encodeUtf16Sse2(const char32_t*& p, const char32_t* end, char16_t*& o,
                     char16_t* oEnd) {
  takeWholeWindows(p, end, o, oEnd, narrowSingleBlock);
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
