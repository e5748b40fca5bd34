// The AVX2 UTF-8 encoder, by the largest value of a window of 16 elements:
// ASCII narrowed at once; one- and two-byte forms built in 16-bit lanes;
// forms of U+FFFF and below, and of any value, built in 32-bit lanes. The
// bytes of each half window are gathered into place by a shuffle chosen by
// the lengths of its forms. The windows take every value as the steps do, so
// they lean on no fact of the text; KernelSet tests in
// ConversionKernelsTest.cpp put every awkward value in every lane.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include <array>
#include <cstdint>

#include "string/ShuffleTables.h"
#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// For four lengths of 0 to 4 bytes, l0 + 5 l1 + 25 l2 + 125 l3, the shuffle
// that writes the sequences one behind the other. A lane holds the bytes of
// a sequence of length n with its lead in byte n - 1 and its last byte in
// byte 0, so each is read top down.
alignas(16) constexpr std::array<Shuffle, 625> kGather =
    makeShuffles<625, 4, 4, true>([](unsigned index, unsigned lane) {
      for (unsigned k = 0; k < lane; ++k) index /= 5;
      return index % 5;
    });

ZELVO_AVX2_TARGET inline __m256i load8(const char32_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

// The length of each element's form: 4 for U+10FFFF and below, less one for
// each smaller form the value fits; 0 for what is dropped.
ZELVO_AVX2_TARGET inline __m256i formLengths(__m256i c, __m256i below80,
                                             __m256i below800,
                                             __m256i below10000) {
  const __m256i upTo10FFFF =
      _mm256_cmpgt_epi32(_mm256_set1_epi32(0x11), _mm256_srli_epi32(c, 16));
  const __m256i surrogate = _mm256_cmpeq_epi32(
      _mm256_and_si256(c, _mm256_set1_epi32(static_cast<int>(0xFFFFF800u))),
      _mm256_set1_epi32(0xD800));
  return _mm256_andnot_si256(
      surrogate,
      _mm256_add_epi32(
          _mm256_and_si256(upTo10FFFF, _mm256_set1_epi32(4)),
          _mm256_add_epi32(below80, _mm256_add_epi32(below800, below10000))));
}

ZELVO_AVX2_TARGET inline __m256i below(__m256i c, int bits) {
  return _mm256_cmpeq_epi32(_mm256_srl_epi32(c, _mm_cvtsi32_si128(bits)),
                            _mm256_setzero_si256());
}

// For a mask of which of 8 values take two bytes, the shuffle that writes
// their forms, held in 16-bit lanes lead first, one behind the other.
alignas(16) constexpr std::array<Shuffle, 256> kPairs =
    makeShuffles<256, 8, 2, false>([](unsigned mask, unsigned lane) {
      return 1 + ((mask >> lane) & 1);
    });

// For the masks of which of 4 values are 0x80 and above (low nibble) and
// 0x800 and above (high nibble), the shuffle that writes their one- to
// three-byte forms, held as in kGather, one behind the other.
alignas(16) constexpr std::array<Shuffle, 256> kShort =
    makeShuffles<256, 4, 4, true>([](unsigned masks, unsigned lane) {
      return 1 + ((masks >> lane) & 1) + ((masks >> (lane + 4)) & 1);
    });

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

// The 8 elements c, all below U+10000 and none a surrogate, as one- to
// three-byte forms.
ZELVO_AVX2_TARGET inline std::size_t encodeBelow10000(__m256i c,
                                                      unsigned char* o) {
  const __m256i from80 = _mm256_cmpgt_epi32(c, _mm256_set1_epi32(0x7F));
  const __m256i from800 = _mm256_cmpgt_epi32(c, _mm256_set1_epi32(0x7FF));
  const __m256i six = _mm256_or_si256(
      _mm256_and_si256(c, _mm256_set1_epi32(0x3F)),
      _mm256_or_si256(
          _mm256_and_si256(_mm256_slli_epi32(c, 2), _mm256_set1_epi32(0x3F00)),
          _mm256_and_si256(_mm256_slli_epi32(c, 4),
                           _mm256_set1_epi32(0x3F0000))));
  const __m256i marks = _mm256_blendv_epi8(
      _mm256_set1_epi32(0xC080), _mm256_set1_epi32(0xE08080), from800);
  const __m256i forms =
      _mm256_blendv_epi8(c, _mm256_or_si256(six, marks), from80);
  const unsigned at80 =
      static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(from80)));
  const unsigned at800 =
      static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(from800)));
  const unsigned low = (at80 & 0xF) | ((at800 & 0xF) << 4);
  const unsigned high = (at80 >> 4) | (at800 & 0xF0);
  const __m256i bytes = _mm256_shuffle_epi8(
      forms, pairShuffles(kShort[low].data(), kShort[high].data()));
  return storeHalves(bytes, 4 + _mm_popcnt_u32(low), 4 + _mm_popcnt_u32(high),
                     o);
}

// True if the 8 elements c are all below U+10000 and none is a surrogate.
ZELVO_AVX2_TARGET inline bool allBelow10000(__m256i c) {
  const __m256i surrogate = _mm256_cmpeq_epi32(
      _mm256_and_si256(c, _mm256_set1_epi32(static_cast<int>(0xFFFFF800u))),
      _mm256_set1_epi32(0xD800));
  const __m256i outside = _mm256_or_si256(
      surrogate, _mm256_and_si256(c, _mm256_set1_epi32(~0xFFFF)));
  return _mm256_testz_si256(outside, outside);
}

// Encodes the 8 elements at p: the sequences of the first four go to o and
// those of the others right behind them, each half stored as 16 bytes.
// Returns the number of bytes of the 8 sequences.
ZELVO_AVX2_TARGET inline std::size_t encodeEight(const char32_t* p,
                                                 unsigned char* o) {
  const __m256i c = load8(p);
  const __m256i below80 = below(c, 7);
  const __m256i below800 = below(c, 11);
  const __m256i below10000 = below(c, 16);
  const __m256i lengths = formLengths(c, below80, below800, below10000);
  // Six bits of the value in each byte, lowest first; then the marks of the
  // continuation bytes and the lead for the value's length.
  const __m256i six = _mm256_or_si256(
      _mm256_or_si256(
          _mm256_and_si256(c, _mm256_set1_epi32(0x3F)),
          _mm256_and_si256(_mm256_slli_epi32(c, 2), _mm256_set1_epi32(0x3F00))),
      _mm256_or_si256(_mm256_and_si256(_mm256_slli_epi32(c, 4),
                                       _mm256_set1_epi32(0x3F0000)),
                      _mm256_and_si256(_mm256_slli_epi32(c, 6),
                                       _mm256_set1_epi32(0x3F000000))));
  const __m256i marks = _mm256_blendv_epi8(
      _mm256_blendv_epi8(_mm256_set1_epi32(static_cast<int>(0xF0808080u)),
                         _mm256_set1_epi32(0xE08080), below10000),
      _mm256_set1_epi32(0xC080), below800);
  const __m256i forms =
      _mm256_blendv_epi8(_mm256_or_si256(six, marks), c, below80);

  const __m128i words = _mm_packus_epi32(_mm256_castsi256_si128(lengths),
                                         _mm256_extracti128_si256(lengths, 1));
  const std::uint64_t low =
      static_cast<std::uint64_t>(_mm_cvtsi128_si64(words));
  const std::uint64_t high =
      static_cast<std::uint64_t>(_mm_extract_epi64(words, 1));
  const std::uint64_t base5 = 125 | (25ull << 16) | (5ull << 32) | (1ull << 48);
  const std::uint64_t sum4 = 0x0001000100010001ull;
  const __m256i shuffle = _mm256_inserti128_si256(
      _mm256_castsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(
          kGather[(low * base5) >> 48].data()))),
      _mm_load_si128(reinterpret_cast<const __m128i*>(
          kGather[(high * base5) >> 48].data())),
      1);
  const __m256i bytes = _mm256_shuffle_epi8(forms, shuffle);
  const std::size_t firstHalf = static_cast<std::size_t>((low * sum4) >> 48);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o),
                   _mm256_castsi256_si128(bytes));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o + firstHalf),
                   _mm256_extracti128_si256(bytes, 1));
  return firstHalf + static_cast<std::size_t>((high * sum4) >> 48);
}

}  // namespace

ZELVO_AVX2_TARGET void encodeUtf8Avx2(const char32_t*& p, const char32_t* end,
                                      unsigned char*& o, unsigned char* oEnd) {
  const char32_t* in = p;
  unsigned char* out = o;
  // A window of 16 elements writes up to 64 bytes, whatever it takes.
  while (end - in >= 16 && oEnd - out >= 64) {
    const __m256i a = load8(in);
    const __m256i b = load8(in + 8);
    const __m256i any = _mm256_or_si256(a, b);
    if (_mm256_testz_si256(any, _mm256_set1_epi32(~0x7F))) {
      out += narrowAscii(a, b, out);
    } else if (_mm256_testz_si256(any, _mm256_set1_epi32(~0x7FF))) {
      out += encodeBelow800(a, b, out);
    } else if (allBelow10000(a) && allBelow10000(b)) {
      out += encodeBelow10000(a, out);
      out += encodeBelow10000(b, out);
    } else {
      out += encodeEight(in, out);
      out += encodeEight(in + 8, out);
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
