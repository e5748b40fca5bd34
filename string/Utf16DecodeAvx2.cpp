// The AVX2 UTF-16 decoder: blocks of 16 units, widened at once when they hold
// no surrogate, and otherwise joined in 32-bit lanes and packed to the front.
// It leans on one fact of the units: in a block whose low surrogates are
// exactly the units behind its high ones, the steps start at every unit that is
// no low surrogate. KernelSet tests in ConversionKernelsTest.cpp put every kind
// of unit at every position of a block and hold the result to the step-by-step
// reference.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include "string/KeptConstants.h"
#include "string/LeftPack.h"
#include "string/Utf16Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// The constants of the blocks, made once for a call of the kernel.
struct Constants {
  // In 16-bit lanes.
  __m256i top5, top6, surrogate, low;
  // In 32-bit lanes, for decodeEight.
  __m256i joinOffset, top6Wide, highWide;
};

ZELVO_AVX2_TARGET inline Constants makeConstants() {
  Constants k;
  k.top5 = kept(_mm256_set1_epi16(static_cast<short>(0xF800)));
  k.top6 = kept(_mm256_set1_epi16(static_cast<short>(0xFC00)));
  k.surrogate = kept(_mm256_set1_epi16(static_cast<short>(0xD800)));
  k.low = kept(_mm256_set1_epi16(static_cast<short>(0xDC00)));
  k.joinOffset = kept(_mm256_set1_epi32(0x35FDC00));
  k.top6Wide = kept(_mm256_set1_epi32(0xFC00));
  k.highWide = kept(_mm256_set1_epi32(0xD800));
  return k;
}

// What 16 units hold: bit k of each mask stands for unit k.
struct Utf16BlockPlan {
  unsigned high;  // 0xD800 to 0xDBFF
  unsigned low;   // 0xDC00 to 0xDFFF
};

ZELVO_AVX2_TARGET inline unsigned unitMask(__m256i lanes) {
  // One byte for each 16-bit lane; the halves of the packed bytes are 8 apart.
  const unsigned bits = static_cast<unsigned>(
      _mm256_movemask_epi8(_mm256_packs_epi16(lanes, _mm256_setzero_si256())));
  return (bits & 0xFF) | ((bits >> 8) & 0xFF00);
}

ZELVO_AVX2_TARGET inline Utf16BlockPlan planBlock(__m256i units,
                                                  const Constants& k) {
  const __m256i top6 = _mm256_and_si256(units, k.top6);
  return {unitMask(_mm256_cmpeq_epi16(top6, k.surrogate)),
          unitMask(_mm256_cmpeq_epi16(top6, k.low))};
}

// A block whose low surrogates are exactly the units behind its high ones
// and its carried unit, the partner of the last unit of the block before it
// (well-formed pairs, and a high surrogate in the last place whose partner
// lies past the block) has its steps at every unit that is no low surrogate.
inline bool isWhole(const Utf16BlockPlan& plan, unsigned carried) {
  return plan.low == (((plan.high << 1) | carried) & 0xFFFF);
}

ZELVO_AVX2_TARGET inline void widen16(__m256i units, char32_t* o) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o),
                      _mm256_cvtepu16_epi32(_mm256_castsi256_si128(units)));
  _mm256_storeu_si256(
      reinterpret_cast<__m256i*>(o + 8),
      _mm256_cvtepu16_epi32(_mm256_extracti128_si256(units, 1)));
}

// Decodes the steps that start at the units p[k] with bit k of starts set, k
// from 0 to 7: a high surrogate joins p[k + 1], any other unit stands alone.
ZELVO_AVX2_TARGET inline char32_t* decodeEight(const char16_t* p,
                                               unsigned starts, char32_t* o,
                                               const Constants& k) {
  const __m256i units = _mm256_cvtepu16_epi32(
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  const __m256i next = _mm256_cvtepu16_epi32(
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 1)));
  const __m256i joined = _mm256_sub_epi32(
      _mm256_add_epi32(_mm256_slli_epi32(units, 10), next), k.joinOffset);
  const __m256i high =
      _mm256_cmpeq_epi32(_mm256_and_si256(units, k.top6Wide), k.highWide);
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o),
                      _mm256_permutevar8x32_epi32(
                          _mm256_blendv_epi8(units, joined, high),
                          _mm256_load_si256(reinterpret_cast<const __m256i*>(
                              kLeftPacks[starts].data()))));
  return o + _mm_popcnt_u32(starts);
}

ZELVO_AVX2_TARGET inline __m256i load16(const char16_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

ZELVO_AVX2_TARGET inline bool hasSurrogate(__m256i units, const Constants& k) {
  const __m256i surrogate =
      _mm256_cmpeq_epi16(_mm256_and_si256(units, k.top5), k.surrogate);
  return !_mm256_testz_si256(surrogate, surrogate);
}

}  // namespace

// Blocks follow one another by 16 units, whatever they hold, and hand the
// partner of a high surrogate in the last place over to the next block as
// its carried unit: the next load never waits for the last block's plan.
// The kernel stops at the first block that is not whole, on the boundary
// behind its carried unit.
ZELVO_AVX2_TARGET void decodeUtf16Avx2(const char16_t*& p, const char16_t* end,
                                       char32_t*& o, char32_t* oEnd) {
  const char16_t* in = p;
  char32_t* out = o;
  unsigned carried = 0;
  const Constants k = makeConstants();
  // A block reads up to 17 units and writes up to 16 code points.
  while (end - in >= 17 && oEnd - out >= 16) {
    const __m256i units = load16(in);
    if (carried == 0 && !hasSurrogate(units, k)) {
      widen16(units, out);
      in += 16;
      out += 16;
      continue;
    }
    const Utf16BlockPlan plan = planBlock(units, k);
    if (!isWhole(plan, carried)) break;
    const unsigned starts = ~plan.low & 0xFFFF;
    out = decodeEight(in, starts & 0xFF, out, k);
    out = decodeEight(in + 8, starts >> 8, out, k);
    in += 16;
    carried = plan.high >> 15;
  }
  p = in + carried;
  o = out;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
