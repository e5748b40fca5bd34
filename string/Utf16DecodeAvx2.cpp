// The AVX2 UTF-16 decoder and exact count: blocks of 16 units, widened at
// once when they hold no surrogate, and otherwise joined in 32-bit lanes and
// packed to the front. They lean on one fact of the units: in a block whose
// low surrogates are exactly the units behind its high ones, the steps start
// at every unit that is no low surrogate. KernelSet tests in
// ConversionKernelsTest.cpp put every kind of unit at every position of a
// block and hold the result to the step-by-step reference.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include "string/LeftPack.h"
#include "string/Utf16Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

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

ZELVO_AVX2_TARGET inline Utf16BlockPlan planBlock(__m256i units) {
  const __m256i top6 =
      _mm256_and_si256(units, _mm256_set1_epi16(static_cast<short>(0xFC00)));
  return {unitMask(_mm256_cmpeq_epi16(
              top6, _mm256_set1_epi16(static_cast<short>(0xD800)))),
          unitMask(_mm256_cmpeq_epi16(
              top6, _mm256_set1_epi16(static_cast<short>(0xDC00))))};
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
                                               unsigned starts, unsigned high,
                                               char32_t* o) {
  const __m256i units = _mm256_cvtepu16_epi32(
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  const __m256i next = _mm256_cvtepu16_epi32(
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 1)));
  const __m256i joined =
      _mm256_sub_epi32(_mm256_add_epi32(_mm256_slli_epi32(units, 10), next),
                       _mm256_set1_epi32(0x35FDC00));
  const __m256i isHigh = _mm256_cmpeq_epi32(
      _mm256_and_si256(
          _mm256_srlv_epi32(_mm256_set1_epi32(static_cast<int>(high)),
                            _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7)),
          _mm256_set1_epi32(1)),
      _mm256_set1_epi32(1));
  const __m256i values = _mm256_blendv_epi8(units, joined, isHigh);
  const __m256i order =
      _mm256_srlv_epi32(_mm256_set1_epi32(static_cast<int>(kLeftPack[starts])),
                        _mm256_setr_epi32(0, 3, 6, 9, 12, 15, 18, 21));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o),
                      _mm256_permutevar8x32_epi32(values, order));
  return o + _mm_popcnt_u32(starts);
}

ZELVO_AVX2_TARGET inline __m256i load16(const char16_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

// All-ones in the 16-bit lanes that hold a surrogate of either kind.
ZELVO_AVX2_TARGET inline __m256i surrogateLanes(__m256i units) {
  return _mm256_cmpeq_epi16(
      _mm256_and_si256(units, _mm256_set1_epi16(static_cast<short>(0xF800))),
      _mm256_set1_epi16(static_cast<short>(0xD800)));
}

ZELVO_AVX2_TARGET inline bool hasSurrogate(__m256i units) {
  const __m256i surrogate = surrogateLanes(units);
  return !_mm256_testz_si256(surrogate, surrogate);
}

}  // namespace

// Both loops below move from block to block by 16 units, whatever the
// blocks hold, and hand the partner of a high surrogate in the last place
// over to the next block as its carried unit: the next load never waits for
// the last block's plan. Where a block is not whole, the steps go on one at
// a time from the boundary behind its carried unit.

ZELVO_AVX2_TARGET std::size_t countUtf16Avx2(const char16_t* p,
                                             const char16_t* end) {
  std::size_t count = 0;
  unsigned carried = 0;
  while (p != end) {
    // A whole block gives a code point for every unit but its low
    // surrogates; its last pair must end before the input does.
    if (end - p >= 33 && carried == 0) {
      // Two blocks with no surrogate at all: in text of one kind or the
      // other this test goes the same way nearly every time.
      const __m256i either = _mm256_or_si256(surrogateLanes(load16(p)),
                                             surrogateLanes(load16(p + 16)));
      if (_mm256_testz_si256(either, either)) {
        count += 32;
        p += 32;
        continue;
      }
    }
    if (end - p >= 17) {
      const Utf16BlockPlan plan = planBlock(load16(p));
      if (isWhole(plan, carried)) {
        count += 16 - static_cast<std::size_t>(_mm_popcnt_u32(plan.low));
        p += 16;
        carried = plan.high >> 15;
        continue;
      }
    }
    p += carried;
    carried = 0;
    const char16_t* stop = end - p > 16 ? p + 16 : end;
    count += countUtf16Steps(p, end, stop);
  }
  return count;
}

ZELVO_AVX2_TARGET void decodeUtf16Avx2(const char16_t*& p, const char16_t* end,
                                       char32_t*& o, char32_t* oEnd) {
  const char16_t* in = p;
  char32_t* out = o;
  unsigned carried = 0;
  // A block reads up to 17 units and writes up to 16 code points.
  while (end - in >= 17 && oEnd - out >= 16) {
    const __m256i units = load16(in);
    if (carried == 0 && !hasSurrogate(units)) {
      widen16(units, out);
      in += 16;
      out += 16;
      continue;
    }
    const Utf16BlockPlan plan = planBlock(units);
    if (!isWhole(plan, carried)) break;
    const unsigned starts = ~plan.low & 0xFFFF;
    out = decodeEight(in, starts & 0xFF, plan.high & 0xFF, out);
    out = decodeEight(in + 8, starts >> 8, plan.high >> 8, out);
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
