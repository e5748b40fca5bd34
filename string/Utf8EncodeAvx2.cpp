// The AVX2 UTF-8 encoder: runs of 32 ASCII elements narrowed at once, and
// windows of 8 elements of any values, each encoded in its 32-bit lane and
// the bytes gathered into place by a shuffle chosen by the four lengths of a
// half window.
#include "string/Avx2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

#include <array>
#include <cstdint>

#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// For four lengths of 0 to 4 bytes, l0 + 5 l1 + 25 l2 + 125 l3, the shuffle
// that writes the sequences one behind the other. A lane holds the bytes of
// a sequence of length n with its lead in byte n - 1 and its last byte in
// byte 0, so each is read top down.
constexpr std::array<std::array<std::uint8_t, 16>, 625> makeGatherTable() {
  std::array<std::array<std::uint8_t, 16>, 625> table{};
  for (unsigned index = 0; index < 625; ++index) {
    std::array<std::uint8_t, 16> shuffle{};
    for (std::uint8_t& b : shuffle) b = 0x80;
    unsigned at = 0;
    unsigned rest = index;
    for (unsigned lane = 0; lane < 4; ++lane, rest /= 5) {
      const unsigned length = rest % 5;
      for (unsigned k = 0; k < length; ++k)
        shuffle[at++] = static_cast<std::uint8_t>(4 * lane + length - 1 - k);
    }
    table[index] = shuffle;
  }
  return table;
}

alignas(16) constexpr std::array<std::array<std::uint8_t, 16>, 625> kGather =
    makeGatherTable();

ZELVO_AVX2_TARGET inline __m256i load8(const char32_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}

// Narrows 32 elements to bytes in o, if all are ASCII; false otherwise.
ZELVO_AVX2_TARGET inline bool narrowAscii32(const char32_t* p,
                                            unsigned char* o) {
  const __m256i a = load8(p);
  const __m256i b = load8(p + 8);
  const __m256i c = load8(p + 16);
  const __m256i d = load8(p + 24);
  const __m256i any =
      _mm256_or_si256(_mm256_or_si256(a, b), _mm256_or_si256(c, d));
  if (!_mm256_testz_si256(any, _mm256_set1_epi32(~0x7F))) return false;
  const __m256i bytes =
      _mm256_packus_epi16(_mm256_packus_epi32(a, b), _mm256_packus_epi32(c, d));
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o),
                      _mm256_permutevar8x32_epi32(
                          bytes, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)));
  return true;
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

ZELVO_AVX2_TARGET std::size_t utf8LengthAvx2(const char32_t* p,
                                             const char32_t* end) {
  std::size_t length = 0;
  while (end - p >= 8) {
    // Each lane sums at most 4 a window, so a run of 2^20 windows cannot
    // overflow it.
    __m256i sums = _mm256_setzero_si256();
    const char32_t* runEnd = end - p >= (8 << 20) ? p + (8 << 20) : end - 7;
    for (; p < runEnd; p += 8) {
      const __m256i c = load8(p);
      sums = _mm256_add_epi32(
          sums, formLengths(c, below(c, 7), below(c, 11), below(c, 16)));
    }
    alignas(32) std::uint32_t lanes[8];
    _mm256_store_si256(reinterpret_cast<__m256i*>(lanes), sums);
    for (const std::uint32_t lane : lanes) length += lane;
  }
  for (; p != end; ++p) length += utf8Length(*p);
  return length;
}

ZELVO_AVX2_TARGET void encodeUtf8Avx2(const char32_t*& p, const char32_t* end,
                                      unsigned char*& o, unsigned char* oEnd) {
  const char32_t* in = p;
  unsigned char* out = o;
  // A window writes up to 32 bytes, whatever it takes.
  while (end - in >= 8 && oEnd - out >= 32) {
    if (*in < 0x80 && end - in >= 32 && narrowAscii32(in, out)) {
      in += 32;
      out += 32;
      continue;
    }
    out += encodeEight(in, out);
    in += 8;
  }
  p = in;
  o = out;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
