// The AVX2 UTF-8 decoder: blocks of 64 bytes whose steps can be read off at
// once (see Utf8BlockPlan.h), each half of them by what it holds: ASCII
// widened; sequences of three bytes at most decoded 32 positions at a time,
// the low and high byte of every value made in byte lanes; and with a
// four-byte lead, 8 positions at a time in 32-bit lanes. It leans on one fact
// of the bytes: in a whole block the steps start exactly at the bytes that are
// no continuation bytes. KernelSet tests in ConversionKernelsTest.cpp put every
// byte value at every position of a block and hold the result to the
// step-by-step reference.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include <array>
#include <cstdint>

#include "string/KeptConstants.h"
#include "string/LeftPack.h"
#include "string/Utf8BlockPlan.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// The sign bits of 64 bytes.
ZELVO_AVX2_TARGET inline std::uint64_t signBits(__m256i low, __m256i high) {
  return static_cast<std::uint32_t>(_mm256_movemask_epi8(low)) |
         static_cast<std::uint64_t>(
             static_cast<std::uint32_t>(_mm256_movemask_epi8(high)))
             << 32;
}

// Reads 64 bytes; the bit planes come from the sign bits of the bytes
// shifted left one place at a time. Bits 4 and 3 matter only for bytes of
// 0xF0 and above, and where there are none their planes are left out.
ZELVO_AVX2_TARGET inline Utf8BlockPlan planBlock(const unsigned char* p,
                                                 unsigned carried) {
  const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  const __m256i high =
      _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 32));
  if (carried == 0 && _mm256_movemask_epi8(_mm256_or_si256(low, high)) == 0)
    return asciiUtf8Block();
  const std::uint64_t bit7 = signBits(low, high);
  const __m256i lowBy1 = _mm256_add_epi8(low, low);
  const __m256i highBy1 = _mm256_add_epi8(high, high);
  const std::uint64_t bit6 = signBits(lowBy1, highBy1);
  const __m256i lowBy2 = _mm256_add_epi8(lowBy1, lowBy1);
  const __m256i highBy2 = _mm256_add_epi8(highBy1, highBy1);
  const std::uint64_t bit5 = signBits(lowBy2, highBy2);
  const __m256i xEF = _mm256_set1_epi8(static_cast<char>(0xEF));
  const __m256i fromF0 =
      _mm256_or_si256(_mm256_subs_epu8(low, xEF), _mm256_subs_epu8(high, xEF));
  if (_mm256_testz_si256(fromF0, fromF0))
    return planUtf8Block(bit7, bit6, bit5, 0, 0, carried);
  const __m256i lowBy3 = _mm256_add_epi8(lowBy2, lowBy2);
  const __m256i highBy3 = _mm256_add_epi8(highBy2, highBy2);
  return planUtf8Block(bit7, bit6, bit5, signBits(lowBy3, highBy3),
                       signBits(_mm256_add_epi8(lowBy3, lowBy3),
                                _mm256_add_epi8(highBy3, highBy3)),
                       carried);
}

// The constants of the blocks, made once for a call of the kernel.
struct Constants {
  // Of decodeEight.
  __m256i gather, sixBits, pairWeights, halfWeights, nibbleIndex, up, down;
  // Of decodeBmpThirtyTwo.
  __m256i low6, top2, low3, top4, low4;
};

ZELVO_AVX2_TARGET inline Constants makeConstants() {
  Constants k;
  // Lane k holds p[k] << 24 | p[k+1] << 16 | p[k+2] << 8 | p[k+3].
  k.gather =
      kept(_mm256_setr_epi8(3, 2, 1, 0, 4, 3, 2, 1, 5, 4, 3, 2, 6, 5, 4, 3,  //
                            7, 6, 5, 4, 8, 7, 6, 5, 9, 8, 7, 6, 10, 9, 8, 7));
  k.sixBits = kept(_mm256_set1_epi32(static_cast<int>(0xFF3F3F3Fu)));
  k.pairWeights = kept(_mm256_set1_epi16(0x4001));
  k.halfWeights = kept(_mm256_set1_epi32(0x10000001));
  k.nibbleIndex = kept(_mm256_set1_epi32(static_cast<int>(0x80808000u)));
  // By the high nibble of the lead, how far to shift the value's top bit to
  // bit 31, dropping the lead's class bits, and then down to its place.
  k.up = kept(
      _mm256_setr_epi8(7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 9, 9, 10, 11,  //
                       7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 7, 9, 9, 10, 11));
  k.down = kept(_mm256_setr_epi8(25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25, 25,
                                 21, 21, 16, 11, 25, 25, 25, 25, 25, 25, 25, 25,
                                 25, 25, 25, 25, 21, 21, 16, 11));
  k.low6 = kept(_mm256_set1_epi8(0x3F));
  k.top2 = kept(_mm256_set1_epi8(static_cast<char>(0xC0)));
  k.low3 = kept(_mm256_set1_epi8(0x07));
  k.top4 = kept(_mm256_set1_epi8(static_cast<char>(0xF0)));
  k.low4 = kept(_mm256_set1_epi8(0x0F));
  return k;
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
                                               unsigned starts, char32_t* o,
                                               const Constants& k) {
  const __m256i bytes = _mm256_broadcastsi128_si256(
      _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  const __m256i d = _mm256_shuffle_epi8(bytes, k.gather);
  // lead << 18 | (b1 & 0x3F) << 12 | (b2 & 0x3F) << 6 | (b3 & 0x3F), by two
  // multiply-adds: pairs of bytes to 12-bit and 14-bit halves, then those.
  const __m256i v = _mm256_madd_epi16(
      _mm256_maddubs_epi16(_mm256_and_si256(d, k.sixBits), k.pairWeights),
      k.halfWeights);
  // The shifts by the high nibble of the lead; the other three bytes of
  // each index are 0x80, which looks up zero.
  const __m256i nibble =
      _mm256_or_si256(_mm256_srli_epi32(d, 28), k.nibbleIndex);
  const __m256i values =
      _mm256_srlv_epi32(_mm256_sllv_epi32(v, _mm256_shuffle_epi8(k.up, nibble)),
                        _mm256_shuffle_epi8(k.down, nibble));
  _mm256_storeu_si256(
      reinterpret_cast<__m256i*>(o),
      _mm256_permutevar8x32_epi32(
          values, _mm256_load_si256(reinterpret_cast<const __m256i*>(
                      kLeftPacks[starts].data()))));
  return o + _mm_popcnt_u32(starts);
}

using Spread = std::array<std::uint8_t, 32>;

// For a mask of which of 8 positions start a sequence, the shuffle that
// writes the code point of each start as 32 bits, one behind the other, from
// a 16-byte lane that holds the low byte of each position's value in bytes 0
// to 7 and its high byte in bytes 8 to 15.
constexpr std::array<Spread, 256> makeSpreads() {
  std::array<Spread, 256> table{};
  for (unsigned mask = 0; mask < 256; ++mask) {
    Spread spread{};
    for (std::uint8_t& b : spread) b = 0x80;
    unsigned slot = 0;
    for (unsigned k = 0; k < 8; ++k) {
      if (((mask >> k) & 1) == 0) continue;
      // Slots 4 to 7 sit in the upper lane, which holds the same bytes.
      spread[4 * slot] = static_cast<std::uint8_t>(k);
      spread[4 * slot + 1] = static_cast<std::uint8_t>(8 + k);
      ++slot;
    }
    table[mask] = spread;
  }
  return table;
}

alignas(32) constexpr std::array<Spread, 256> kSpreads = makeSpreads();

// Writes the code points of the starts among the 8 positions whose value
// bytes the lower lane of lowHigh holds (low bytes, then high bytes).
ZELVO_AVX2_TARGET inline char32_t* spreadEight(__m256i lowHigh, unsigned starts,
                                               char32_t* o) {
  _mm256_storeu_si256(
      reinterpret_cast<__m256i*>(o),
      _mm256_shuffle_epi8(_mm256_permute4x64_epi64(lowHigh, 0x44),
                          _mm256_load_si256(reinterpret_cast<const __m256i*>(
                              kSpreads[starts].data()))));
  return o + _mm_popcnt_u32(starts);
}

// Decodes the sequences that start at the bytes p[k] with bit k of starts
// set, k from 0 to 31, when none of them is longer than three bytes. The low
// and the high byte of the value at every position are made from the byte
// and the two behind it in byte lanes, where a shift of 16-bit lanes masked
// to the bits that stay in their byte stands for a shift of bytes; then 8
// positions at a time are spread to 32-bit code points. Reads up to p[33]
// and stores up to 32 code points at o.
ZELVO_AVX2_TARGET inline char32_t* decodeBmpThirtyTwo(const unsigned char* p,
                                                      std::uint32_t starts,
                                                      char32_t* o,
                                                      const Constants& k) {
  const __m256i lead = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  const __m256i b1 =
      _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 1));
  const __m256i b2 =
      _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 2));
  // Two bytes: (lead & 0x1F) << 6 | (b1 & 0x3F).
  const __m256i low2 =
      _mm256_or_si256(_mm256_and_si256(_mm256_slli_epi16(lead, 6), k.top2),
                      _mm256_and_si256(b1, k.low6));
  const __m256i high2 = _mm256_and_si256(_mm256_srli_epi16(lead, 2), k.low3);
  // Three bytes: (lead & 0x0F) << 12 | (b1 & 0x3F) << 6 | (b2 & 0x3F).
  const __m256i low3 =
      _mm256_or_si256(_mm256_and_si256(_mm256_slli_epi16(b1, 6), k.top2),
                      _mm256_and_si256(b2, k.low6));
  const __m256i high3 =
      _mm256_or_si256(_mm256_and_si256(_mm256_slli_epi16(lead, 4), k.top4),
                      _mm256_and_si256(_mm256_srli_epi16(b1, 2), k.low4));
  // Bit 7 of a lead tells a sequence from ASCII, and its bit 5, moved to
  // bit 7, three bytes from two.
  const __m256i three = _mm256_slli_epi16(lead, 2);
  const __m256i low =
      _mm256_blendv_epi8(lead, _mm256_blendv_epi8(low2, low3, three), lead);
  const __m256i high = _mm256_blendv_epi8(
      _mm256_setzero_si256(), _mm256_blendv_epi8(high2, high3, three), lead);
  // Positions 0 to 7 and 16 to 23, then 8 to 15 and 24 to 31.
  const __m256i first = _mm256_unpacklo_epi64(low, high);
  const __m256i second = _mm256_unpackhi_epi64(low, high);
  o = spreadEight(first, starts & 0xFF, o);
  o = spreadEight(second, (starts >> 8) & 0xFF, o);
  o = spreadEight(_mm256_permute4x64_epi64(first, 0xEE), (starts >> 16) & 0xFF,
                  o);
  return spreadEight(_mm256_permute4x64_epi64(second, 0xEE), starts >> 24, o);
}

}  // namespace

// Blocks follow one another by 64 bytes, whatever they hold, and carry the
// bytes that the last sequence of the one before reaches into them, so that
// the next load never waits for the last plan; the kernel stops at the first
// block that is not whole, on the boundary behind its carried bytes.
ZELVO_AVX2_TARGET void decodeUtf8Avx2(const unsigned char*& p,
                                      const unsigned char* end, char32_t*& o,
                                      char32_t* oEnd) {
  const unsigned char* in = p;
  char32_t* out = o;
  unsigned carried = 0;
  const Constants k = makeConstants();
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
    // Each half by what it holds: ASCII is widened, leads of three bytes at
    // most go 32 to a step, and with a four-byte lead 8.
    for (unsigned half = 0; half < 64; half += 32) {
      const std::uint32_t starts =
          static_cast<std::uint32_t>(~plan.continuation >> half);
      if (static_cast<std::uint32_t>(plan.nonAscii >> half) == 0) {
        widen16(in + half, out);
        widen16(in + half + 16, out + 16);
        out += 32;
      } else if (static_cast<std::uint32_t>(plan.fourByteLead >> half) == 0) {
        out = decodeBmpThirtyTwo(in + half, starts, out, k);
      } else {
        for (unsigned eighth = 0; eighth < 32; eighth += 8)
          out = decodeEight(in + half + eighth, (starts >> eighth) & 0xFF, out,
                            k);
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
