// The SSE2 UTF-8 decoder and exact count: blocks of 64 bytes whose steps
// can be read off at once (see Utf8BlockPlan.h), with ASCII widened 16 bytes
// at a time. They lean on one fact of the bytes: in a whole block the steps
// start exactly at the bytes that are no continuation bytes. KernelSet tests
// in ConversionKernelsTest.cpp put every byte value at every position of a
// block and hold the result to the step-by-step reference.
#include "string/Sse2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <emmintrin.h>

#include <cstdint>

#include "string/Utf8BlockPlan.h"
#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// Reads 64 bytes; the bit planes come from the sign bits of the bytes
// shifted left one place at a time.
Utf8BlockPlan planBlock(const unsigned char* p, unsigned carried) {
  __m128i quarters[4];
  for (int k = 0; k < 4; ++k)
    quarters[k] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * k));
  const __m128i any = _mm_or_si128(_mm_or_si128(quarters[0], quarters[1]),
                                   _mm_or_si128(quarters[2], quarters[3]));
  if (carried == 0 && _mm_movemask_epi8(any) == 0) return asciiUtf8Block();
  std::uint64_t planes[5];
  for (std::uint64_t& plane : planes) {
    plane = 0;
    for (int k = 0; k < 4; ++k) {
      plane |= static_cast<std::uint64_t>(
                   static_cast<std::uint32_t>(_mm_movemask_epi8(quarters[k])))
               << (16 * k);
      quarters[k] = _mm_add_epi8(quarters[k], quarters[k]);
    }
  }
  return planUtf8Block(planes[0], planes[1], planes[2], planes[3], planes[4],
                       carried);
}

// Widens 16 ASCII bytes to 16 code points.
inline void widen16(const unsigned char* p, char32_t* o) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i zero = _mm_setzero_si128();
  const __m128i low = _mm_unpacklo_epi8(bytes, zero);
  const __m128i high = _mm_unpackhi_epi8(bytes, zero);
  __m128i* dst = reinterpret_cast<__m128i*>(o);
  _mm_storeu_si128(dst, _mm_unpacklo_epi16(low, zero));
  _mm_storeu_si128(dst + 1, _mm_unpackhi_epi16(low, zero));
  _mm_storeu_si128(dst + 2, _mm_unpacklo_epi16(high, zero));
  _mm_storeu_si128(dst + 3, _mm_unpackhi_epi16(high, zero));
}

}  // namespace

std::size_t countUtf8Sse2(const unsigned char* p, const unsigned char* end) {
  return countUtf8ByBlocks<planBlock>(p, end);
}

// Blocks follow one another by 64 bytes and carry the bytes that a sequence
// reaches into them, as in countUtf8ByBlocks; the kernel stops at the first
// block that is not whole, on the boundary behind its carried bytes.
void decodeUtf8Sse2(const unsigned char*& p, const unsigned char* end,
                    char32_t*& o, char32_t* oEnd) {
  const unsigned char* in = p;
  char32_t* out = o;
  unsigned carried = 0;
  // A block reads up to 67 bytes and writes up to 64 code points.
  while (end - in >= 72 && oEnd - out >= 64) {
    const Utf8BlockPlan plan = planBlock(in, carried);
    if (!plan.whole) break;
    // Quarters of ASCII at a step boundary are widened; the steps of the
    // others are taken one by one, and none is cut short by the end.
    const unsigned char* cursor = in + carried;
    for (unsigned quarter = 0; quarter < 64; quarter += 16) {
      const unsigned char* quarterEnd = in + quarter + 16;
      if (cursor == in + quarter &&
          ((plan.nonAscii >> quarter) & 0xFFFF) == 0) {
        widen16(cursor, out);
        out += 16;
        cursor = quarterEnd;
        continue;
      }
      while (cursor < quarterEnd) cursor = decodeUtf8Step(cursor, end, out);
    }
    in += 64;
    carried = plan.spill;
  }
  p = in + carried;
  o = out;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
