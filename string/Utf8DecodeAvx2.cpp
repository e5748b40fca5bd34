// The AVX2 UTF-8 decoder and exact count: blocks of 64 bytes whose steps can
// be read off at once (see Utf8BlockPlan.h), the code point of every lead
// computed in parallel and packed to the front. They lean on one fact of the
// bytes: in a whole block the steps start exactly at the bytes that are no
// continuation bytes. KernelSet tests in ConversionKernelsTest.cpp put every
// byte value at every position of a block and hold the result to the
// step-by-step reference.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include <array>
#include <cstdint>

#include "string/LeftPack.h"
#include "string/ShuffleTables.h"
#include "string/Utf8BlockPlan.h"
#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// Reads 64 bytes; the bit planes come from the sign bits of the bytes
// shifted left one place at a time.
ZELVO_AVX2_TARGET inline Utf8BlockPlan planBlock(const unsigned char* p,
                                                 unsigned carried) {
  __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 32));
  if (carried == 0 && _mm256_movemask_epi8(_mm256_or_si256(low, high)) == 0)
    return asciiUtf8Block();
  std::uint64_t planes[5];
  for (std::uint64_t& plane : planes) {
    plane = static_cast<std::uint32_t>(_mm256_movemask_epi8(low)) |
            static_cast<std::uint64_t>(
                static_cast<std::uint32_t>(_mm256_movemask_epi8(high)))
                << 32;
    low = _mm256_add_epi8(low, low);
    high = _mm256_add_epi8(high, high);
  }
  return planUtf8Block(planes[0], planes[1], planes[2], planes[3], planes[4],
                       carried);
}

// Widens 16 ASCII bytes to 16 code points, 8 bytes to a load.
ZELVO_AVX2_TARGET inline void widen16(const unsigned char* p, char32_t* o) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o),
                      _mm256_cvtepu8_epi32(_mm_loadl_epi64(
                          reinterpret_cast<const __m128i*>(p))));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o + 8),
                      _mm256_cvtepu8_epi32(_mm_loadl_epi64(
                          reinterpret_cast<const __m128i*>(p + 8))));
}

// Decodes the sequences that start at the bytes p[k] with bit k of starts
// set, k from 0 to 7, reading up to p[10]. Every byte is taken as the lead
// of a sequence, with the bytes behind it in the top-down order of a 32-bit
// lane; the class of the lead gives the shift and mask that leave its value,
// and the leads' lanes are packed to the front. Stores 8 lanes at o.
ZELVO_AVX2_TARGET inline char32_t* decodeEight(const unsigned char* p,
                                               unsigned starts, char32_t* o) {
  const __m256i bytes = _mm256_broadcastsi128_si256(
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  // Lane k holds p[k] << 24 | p[k+1] << 16 | p[k+2] << 8 | p[k+3].
  const __m256i gather =
      _mm256_setr_epi8(3, 2, 1, 0, 4, 3, 2, 1, 5, 4, 3, 2, 6, 5, 4, 3,  //
                       7, 6, 5, 4, 8, 7, 6, 5, 9, 8, 7, 6, 10, 9, 8, 7);
  const __m256i d = _mm256_shuffle_epi8(bytes, gather);
  // lead << 18 | (b1 & 0x3F) << 12 | (b2 & 0x3F) << 6 | (b3 & 0x3F), by two
  // multiply-adds: pairs of bytes to 12-bit and 14-bit halves, then those.
  const __m256i six =
      _mm256_and_si256(d, _mm256_set1_epi32(static_cast<int>(0xFF3F3F3Fu)));
  const __m256i v =
      _mm256_madd_epi16(_mm256_maddubs_epi16(six, _mm256_set1_epi16(0x4001)),
                        _mm256_set1_epi32(0x10000001));
  // By the high nibble of the lead, how far to shift the value's top bit
  // to bit 31, dropping the lead's class bits, and then down to its place.
  // The other three bytes of each index are 0x80, which looks up zero.
  const __m256i nibble =
      _mm256_or_si256(_mm256_srli_epi32(d, 28), _mm256_set1_epi32(0x80808000));
  const __m256i up = _mm256_shuffle_epi8(
      _mm256_setr_epi8(7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 9, 9, 10, 11,  //
                       7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 9, 9, 10, 11),
      nibble);
  const __m256i down = _mm256_shuffle_epi8(
      _mm256_setr_epi8(25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 21, 21,
                       16, 11, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25,
                       21, 21, 16, 11),
      nibble);
  const __m256i values = _mm256_srlv_epi32(_mm256_sllv_epi32(v, up), down);
  const __m256i order =
      _mm256_srlv_epi32(_mm256_set1_epi32(static_cast<int>(kLeftPack[starts])),
                        _mm256_setr_epi32(0, 3, 6, 9, 12, 15, 18, 21));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o),
                      _mm256_permutevar8x32_epi32(values, order));
  return o + _mm_popcnt_u32(starts);
}

// For a mask of 8 lanes of 16 bits, the shuffle that packs the chosen ones
// to the front.
alignas(16) constexpr std::array<Shuffle, 256> kWordPack =
    makeShuffles<256, 8, 2, false>([](unsigned mask, unsigned lane) {
      return (mask >> lane) & 1 ? 2u : 0u;
    });

// Decodes the sequences that start at the bytes p[k] with bit k of starts
// set, k from 0 to 15, when none of them is longer than two bytes: the
// values are made in 16-bit lanes from each byte and the one behind it,
// packed to the front of each half, and widened. Reads up to p[16] and
// stores 16 code points at o.
ZELVO_AVX2_TARGET inline char32_t* decodeShortSixteen(const unsigned char* p,
                                                      unsigned starts,
                                                      char32_t* o) {
  const __m256i units = _mm256_cvtepu8_epi16(
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  const __m256i next = _mm256_cvtepu8_epi16(
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 1)));
  const __m256i twoByte = _mm256_or_si256(
      _mm256_slli_epi16(_mm256_and_si256(units, _mm256_set1_epi16(0x1F)), 6),
      _mm256_and_si256(next, _mm256_set1_epi16(0x3F)));
  const __m256i values = _mm256_blendv_epi8(
      units, twoByte, _mm256_cmpgt_epi16(units, _mm256_set1_epi16(0xBF)));
  const unsigned low = starts & 0xFF;
  const unsigned high = starts >> 8;
  const __m256i packed = _mm256_shuffle_epi8(
      values, _mm256_inserti128_si256(
                  _mm256_castsi128_si256(_mm_load_si128(
                      reinterpret_cast<const __m128i*>(kWordPack[low].data()))),
                  _mm_load_si128(
                      reinterpret_cast<const __m128i*>(kWordPack[high].data())),
                  1));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o),
                      _mm256_cvtepu16_epi32(_mm256_castsi256_si128(packed)));
  o += _mm_popcnt_u32(low);
  _mm256_storeu_si256(
      reinterpret_cast<__m256i*>(o),
      _mm256_cvtepu16_epi32(_mm256_extracti128_si256(packed, 1)));
  return o + _mm_popcnt_u32(high);
}

}  // namespace

ZELVO_AVX2_TARGET std::size_t countUtf8Avx2(const unsigned char* p,
                                            const unsigned char* end) {
  return countUtf8ByBlocks<planBlock>(p, end);
}

// Blocks follow one another by 64 bytes and carry the bytes that a sequence
// reaches into them, as in countUtf8ByBlocks; the kernel stops at the first
// block that is not whole, on the boundary behind its carried bytes.
ZELVO_AVX2_TARGET void decodeUtf8Avx2(const unsigned char*& p,
                                      const unsigned char* end, char32_t*& o,
                                      char32_t* oEnd) {
  const unsigned char* in = p;
  char32_t* out = o;
  unsigned carried = 0;
  // A block reads up to 72 bytes and writes up to 64 code points.
  while (end - in >= 72 && oEnd - out >= 64) {
    const Utf8BlockPlan plan = planBlock(in, carried);
    if (!plan.whole) break;
    if (plan.nonAscii == 0) {
      for (unsigned quarter = 0; quarter < 64; quarter += 16)
        widen16(in + quarter, out + quarter);
      in += 64;
      out += 64;
      continue;
    }
    // Each quarter by what it holds: ASCII is widened, leads of two bytes
    // at most go 16 to a step, and longer ones 8.
    for (unsigned quarter = 0; quarter < 64; quarter += 16) {
      const unsigned starts =
          static_cast<unsigned>(~plan.continuation >> quarter) & 0xFFFF;
      if (((plan.nonAscii >> quarter) & 0xFFFF) == 0) {
        widen16(in + quarter, out);
        out += 16;
      } else if (((plan.longLead >> quarter) & 0xFFFF) == 0) {
        out = decodeShortSixteen(in + quarter, starts, out);
      } else {
        out = decodeEight(in + quarter, starts & 0xFF, out);
        out = decodeEight(in + quarter + 8, starts >> 8, out);
      }
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
