// The AVX2 UTF-8 encoder, by what a window of 16 elements holds: ASCII
// narrowed at once; one- and two-byte forms built in 16-bit lanes; forms of
// any length built in 32-bit lanes, whose bytes each half window gathers
// into place by a shuffle chosen by the lengths of its forms. A window with
// an element that the encoder drops is left to the steps. The windows take
// every value as the steps do, so they lean on no fact of the text;
// KernelSet tests in ConversionKernelsTest.cpp put every awkward value in
// every lane.
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

// The length of the form in lane k of four, for an index that holds b0 in
// bit k and b1 in bit 4 + k: 1 + b0 + 2 b1 bytes.
constexpr unsigned formLength(unsigned index, unsigned lane) {
  return 1 + ((index >> lane) & 1) + 2 * ((index >> (lane + 4)) & 1);
}

// For each index, the shuffle that writes the forms of four lanes one behind
// the other. A lane holds a form of length n with its lead in byte n - 1 and
// its last byte in byte 0, so each is read top down.
alignas(16) constexpr std::array<Shuffle, 256> kForms =
    makeShuffles<256, 4, 4, true>(formLength);

// For each index, the bytes of the four forms together.
constexpr std::array<std::uint8_t, 256> makeFormBytes() {
  std::array<std::uint8_t, 256> table{};
  for (unsigned index = 0; index < 256; ++index) {
    unsigned bytes = 0;
    for (unsigned lane = 0; lane < 4; ++lane) bytes += formLength(index, lane);
    table[index] = static_cast<std::uint8_t>(bytes);
  }
  return table;
}

constexpr std::array<std::uint8_t, 256> kFormBytes = makeFormBytes();

// For a mask of which of 8 values take two bytes, the shuffle that writes
// their forms, held in 16-bit lanes lead first, one behind the other.
alignas(16) constexpr std::array<Shuffle, 256> kPairs =
    makeShuffles<256, 8, 2, false>([](unsigned mask, unsigned lane) {
      return 1 + ((mask >> lane) & 1);
    });

// The constants of the windows, made once for a call of the kernel.
struct Constants {
  __m256i notAscii, notBelow800;
  __m256i top21, surrogate, sixteen;
  __m256i x7F, x7FF, xFFFF, low12, next9, low6Twice, high6Twice;
  __m256i marks2, marks2To3, marks3To4;
};

ZELVO_AVX2_TARGET inline Constants makeConstants() {
  Constants k;
  k.notAscii = kept(_mm256_set1_epi32(~0x7F));
  k.notBelow800 = kept(_mm256_set1_epi32(~0x7FF));
  k.top21 = kept(_mm256_set1_epi32(static_cast<int>(0xFFFFF800u)));
  k.surrogate = kept(_mm256_set1_epi32(0xD800));
  k.sixteen = kept(_mm256_set1_epi32(0x10));
  k.x7F = kept(_mm256_set1_epi32(0x7F));
  k.x7FF = kept(_mm256_set1_epi32(0x7FF));
  k.xFFFF = kept(_mm256_set1_epi32(0xFFFF));
  k.low12 = kept(_mm256_set1_epi32(0xFFF));
  k.next9 = kept(_mm256_set1_epi32(0x1FF0000));
  k.low6Twice = kept(_mm256_set1_epi32(0x003F003F));
  k.high6Twice = kept(_mm256_set1_epi32(0x3F003F00));
  k.marks2 = kept(_mm256_set1_epi32(0xC080));
  k.marks2To3 = kept(_mm256_set1_epi32(0xE04000));
  k.marks3To4 = kept(_mm256_set1_epi32(static_cast<int>(0xF0600000u)));
  return k;
}

ZELVO_AVX2_TARGET inline __m256i load8(const char32_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

ZELVO_AVX2_TARGET inline __m256i pairShuffles(const std::uint8_t* first,
                                              const std::uint8_t* second) {
  return _mm256_inserti128_si256(
      _mm256_castsi128_si256(
          _mm_load_si128(reinterpret_cast<const __m128i*>(first))),
      _mm_load_si128(reinterpret_cast<const __m128i*>(second)), 1);
}

// Stores the bytes of the two halves of a window one behind the other:
// returns their number. Each half is stored whole, so up to 32 bytes are
// written.
ZELVO_AVX2_TARGET inline std::size_t storeHalves(__m256i bytes,
                                                 std::size_t firstHalf,
                                                 std::size_t secondHalf,
                                                 unsigned char* o) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o),
                   _mm256_castsi256_si128(bytes));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o + firstHalf),
                   _mm256_extracti128_si256(bytes, 1));
  return firstHalf + secondHalf;
}

// The 16 elements a and b, all ASCII, as 16 bytes.
ZELVO_AVX2_TARGET inline std::size_t narrowAscii(__m256i a, __m256i b,
                                                 unsigned char* o) {
  const __m256i words = _mm256_packus_epi32(a, b);
  const __m128i bytes = _mm_packus_epi16(_mm256_castsi256_si128(words),
                                         _mm256_extracti128_si256(words, 1));
  // The packs interleave the halves: a0-3 b0-3 a4-7 b4-7.
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o),
                   _mm_shuffle_epi32(bytes, 0xD8));
  return 16;
}

// The 16 elements a and b, all below U+0800, as one- and two-byte forms.
ZELVO_AVX2_TARGET inline std::size_t encodeBelow800(__m256i a, __m256i b,
                                                    unsigned char* o) {
  // Elements 0 to 7 in the low 128 bits, 8 to 15 in the high.
  const __m256i v = _mm256_permute4x64_epi64(_mm256_packus_epi32(a, b), 0xD8);
  const __m256i two = _mm256_cmpgt_epi16(v, _mm256_set1_epi16(0x7F));
  const __m256i lead =
      _mm256_or_si256(_mm256_srli_epi16(v, 6), _mm256_set1_epi16(0xC0));
  const __m256i trail = _mm256_or_si256(
      _mm256_and_si256(v, _mm256_set1_epi16(0x3F)), _mm256_set1_epi16(0x80));
  const __m256i forms = _mm256_blendv_epi8(
      v, _mm256_or_si256(lead, _mm256_slli_epi16(trail, 8)), two);
  const unsigned mask =
      static_cast<unsigned>(_mm256_movemask_epi8(_mm256_packs_epi16(two, two)));
  const unsigned low = mask & 0xFF;
  const unsigned high = (mask >> 16) & 0xFF;
  const __m256i bytes = _mm256_shuffle_epi8(
      forms, pairShuffles(kPairs[low].data(), kPairs[high].data()));
  return storeHalves(bytes, 8 + _mm_popcnt_u32(low), 8 + _mm_popcnt_u32(high),
                     o);
}

// True if any of the 16 elements a and b is one the encoder drops: a
// surrogate or a value above U+10FFFF.
ZELVO_AVX2_TARGET inline bool anyDropped(__m256i a, __m256i b,
                                         const Constants& k) {
  const __m256i large = _mm256_cmpgt_epi32(
      _mm256_srli_epi32(_mm256_max_epu32(a, b), 16), k.sixteen);
  const __m256i dropped = _mm256_or_si256(
      large,
      _mm256_or_si256(
          _mm256_cmpeq_epi32(_mm256_and_si256(a, k.top21), k.surrogate),
          _mm256_cmpeq_epi32(_mm256_and_si256(b, k.top21), k.surrogate)));
  return !_mm256_testz_si256(dropped, dropped);
}

// The 8 elements c, none of them dropped, as forms of one to four bytes: the
// sequences of the first four go to o and those of the others right behind
// them, each half stored as 16 bytes. Returns the number of bytes of the 8.
ZELVO_AVX2_TARGET inline std::size_t encodeEight(__m256i c, unsigned char* o,
                                                 const Constants& k) {
  // No element is above U+10FFFF, so the signed comparisons hold.
  const __m256i from80 = _mm256_cmpgt_epi32(c, k.x7F);
  const __m256i from800 = _mm256_cmpgt_epi32(c, k.x7FF);
  const __m256i from10000 = _mm256_cmpgt_epi32(c, k.xFFFF);
  // The value in six-bit groups, one to a byte, lowest first: split at bit
  // 12 into 16-bit halves, then each half at bit 6.
  const __m256i halves =
      _mm256_or_si256(_mm256_and_si256(c, k.low12),
                      _mm256_and_si256(_mm256_slli_epi32(c, 4), k.next9));
  const __m256i six = _mm256_or_si256(
      _mm256_and_si256(halves, k.low6Twice),
      _mm256_and_si256(_mm256_slli_epi16(halves, 2), k.high6Twice));
  // The marks of two bytes, C0 80, turned into those of three, E0 80 80,
  // and of four, F0 80 80 80, each by an exclusive or.
  const __m256i marks = _mm256_xor_si256(
      _mm256_and_si256(from80, k.marks2),
      _mm256_xor_si256(_mm256_and_si256(from800, k.marks2To3),
                       _mm256_and_si256(from10000, k.marks3To4)));
  const __m256i forms =
      _mm256_blendv_epi8(c, _mm256_or_si256(six, marks), from80);
  // A form takes 1 + b0 + 2 b1 bytes: b1 says 0x800 and above, and b0 that
  // an odd number of the three bounds is passed.
  const unsigned odd =
      static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(
          _mm256_xor_si256(_mm256_xor_si256(from80, from800), from10000))));
  const unsigned two =
      static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(from800)));
  const unsigned low = (odd & 0xF) | ((two & 0xF) << 4);
  const unsigned high = (odd >> 4) | (two & 0xF0);
  const __m256i bytes = _mm256_shuffle_epi8(
      forms, pairShuffles(kForms[low].data(), kForms[high].data()));
  return storeHalves(bytes, kFormBytes[low], kFormBytes[high], o);
}

}  // namespace

ZELVO_AVX2_TARGET void encodeUtf8Avx2(const char32_t*& p, const char32_t* end,
                                      unsigned char*& o, unsigned char* oEnd) {
  const char32_t* in = p;
  unsigned char* out = o;
  const Constants k = makeConstants();
  // A window of 16 elements writes up to 64 bytes, whatever it takes.
  while (end - in >= 16 && oEnd - out >= 64) {
    const __m256i a = load8(in);
    const __m256i b = load8(in + 8);
    const __m256i any = _mm256_or_si256(a, b);
    if (_mm256_testz_si256(any, k.notAscii)) {
      out += narrowAscii(a, b, out);
    } else if (_mm256_testz_si256(any, k.notBelow800)) {
      out += encodeBelow800(a, b, out);
    } else if (anyDropped(a, b, k)) {
      break;  // the steps drop it
    } else {
      out += encodeEight(a, out, k);
      out += encodeEight(b, out, k);
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
