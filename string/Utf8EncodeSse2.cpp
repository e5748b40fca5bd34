// The SSE2 UTF-8 encoder: windows of 16 ASCII elements narrowed at once, and
// of 8 elements below U+0800, or below U+10000 and no surrogate, whose forms
// are built in lanes and stored one behind the other. Windows with a larger
// value or a surrogate are left to the steps. The windows take their values
// as the steps do, so they lean on no fact of the text; KernelSet tests in
// ConversionKernelsTest.cpp put every awkward value in every lane.
#include "string/Sse2Kernels.h"

#if defined(ZELVO_X86_KERNELS)
#include <emmintrin.h>

#include <cstdint>
#include <cstring>

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

// The prefix sums of eight byte-sized lengths: byte k of the result is the
// sum of the lengths 0 to k, so byte 7 is the total.
inline uint64_t runningOffsets(__m128i lengthBytes) {
  return static_cast<uint64_t>(_mm_cvtsi128_si64(lengthBytes)) *
         0x0101010101010101ull;
}

inline void store16(unsigned char* o, int value) {
  const uint16_t unit = static_cast<uint16_t>(value);
  std::memcpy(o, &unit, sizeof unit);
}

inline void store32(unsigned char* o, __m128i lane0) {
  const int32_t word = _mm_cvtsi128_si32(lane0);
  std::memcpy(o, &word, sizeof word);
}

// 16 ASCII elements narrowed to 16 bytes; false, with nothing written, if
// any element is not ASCII.
inline bool narrowAscii16(const char32_t* p, unsigned char* o) {
  const __m128i* src = reinterpret_cast<const __m128i*>(p);
  const __m128i a = _mm_loadu_si128(src);
  const __m128i b = _mm_loadu_si128(src + 1);
  const __m128i c = _mm_loadu_si128(src + 2);
  const __m128i d = _mm_loadu_si128(src + 3);
  const __m128i any = _mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d));
  const __m128i high = _mm_and_si128(any, _mm_set1_epi32(~0x7F));
  if (_mm_movemask_epi8(_mm_cmpeq_epi32(high, _mm_setzero_si128())) != 0xFFFF)
    return false;
  _mm_storeu_si128(
      reinterpret_cast<__m128i*>(o),
      _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d)));
  return true;
}

// 8 elements below U+0800, in the halves a and b, as one- and two-byte
// sequences; returns the running offsets of their ends (8 to 16 bytes in
// all). Stores reach o + 16.
inline uint64_t encodeBelow800(__m128i a, __m128i b, unsigned char* o) {
  const __m128i v = _mm_packs_epi32(a, b);  // eight 16-bit values
  const __m128i twoBytes = _mm_cmpgt_epi16(v, _mm_set1_epi16(0x7F));
  const __m128i lead = _mm_or_si128(_mm_srli_epi16(v, 6), _mm_set1_epi16(0xC0));
  const __m128i trail = _mm_or_si128(_mm_and_si128(v, _mm_set1_epi16(0x3F)),
                                     _mm_set1_epi16(0x80));
  const __m128i pair = _mm_or_si128(lead, _mm_slli_epi16(trail, 8));
  const __m128i units = _mm_or_si128(_mm_andnot_si128(twoBytes, v),
                                     _mm_and_si128(twoBytes, pair));
  const __m128i lengths = _mm_sub_epi16(_mm_set1_epi16(1), twoBytes);
  const uint64_t at = runningOffsets(_mm_packus_epi16(lengths, lengths));
  store16(o, _mm_extract_epi16(units, 0));
  store16(o + (at & 0xFF), _mm_extract_epi16(units, 1));
  store16(o + ((at >> 8) & 0xFF), _mm_extract_epi16(units, 2));
  store16(o + ((at >> 16) & 0xFF), _mm_extract_epi16(units, 3));
  store16(o + ((at >> 24) & 0xFF), _mm_extract_epi16(units, 4));
  store16(o + ((at >> 32) & 0xFF), _mm_extract_epi16(units, 5));
  store16(o + ((at >> 40) & 0xFF), _mm_extract_epi16(units, 6));
  store16(o + ((at >> 48) & 0xFF), _mm_extract_epi16(units, 7));
  return at;
}

// The one- to three-byte forms of four elements below U+10000, each in the
// low bytes of its 32-bit lane, and their lengths.
inline __m128i shortForms(__m128i v, __m128i* lengths) {
  const __m128i low6 = _mm_set1_epi32(0x3F);
  const __m128i mark = _mm_set1_epi32(0x80);
  const __m128i trail = _mm_or_si128(_mm_and_si128(v, low6), mark);
  const __m128i middle =
      _mm_or_si128(_mm_and_si128(_mm_srli_epi32(v, 6), low6), mark);
  const __m128i two =
      _mm_or_si128(_mm_or_si128(_mm_srli_epi32(v, 6), _mm_set1_epi32(0xC0)),
                   _mm_slli_epi32(trail, 8));
  const __m128i three = _mm_or_si128(
      _mm_or_si128(_mm_srli_epi32(v, 12), _mm_set1_epi32(0xE0)),
      _mm_or_si128(_mm_slli_epi32(middle, 8), _mm_slli_epi32(trail, 16)));
  const __m128i atLeastTwo = _mm_cmpgt_epi32(v, _mm_set1_epi32(0x7F));
  const __m128i atLeastThree = _mm_cmpgt_epi32(v, _mm_set1_epi32(0x7FF));
  *lengths =
      _mm_sub_epi32(_mm_sub_epi32(_mm_set1_epi32(1), atLeastTwo), atLeastThree);
  const __m128i upToTwo = _mm_or_si128(_mm_andnot_si128(atLeastTwo, v),
                                       _mm_and_si128(atLeastTwo, two));
  return _mm_or_si128(_mm_andnot_si128(atLeastThree, upToTwo),
                      _mm_and_si128(atLeastThree, three));
}

// 8 elements below U+10000 and no surrogate, in the halves a and b, as one-
// to three-byte sequences; returns the running offsets of their ends (8 to
// 24 bytes in all). Stores reach o + 25.
inline uint64_t encodeBelow10000(__m128i a, __m128i b, unsigned char* o) {
  __m128i lengthsA;
  __m128i lengthsB;
  const __m128i formsA = shortForms(a, &lengthsA);
  const __m128i formsB = shortForms(b, &lengthsB);
  const __m128i lengths16 = _mm_packs_epi32(lengthsA, lengthsB);
  const uint64_t at = runningOffsets(_mm_packus_epi16(lengths16, lengths16));
  store32(o, formsA);
  store32(o + (at & 0xFF), _mm_shuffle_epi32(formsA, 0x55));
  store32(o + ((at >> 8) & 0xFF), _mm_shuffle_epi32(formsA, 0xAA));
  store32(o + ((at >> 16) & 0xFF), _mm_shuffle_epi32(formsA, 0xFF));
  store32(o + ((at >> 24) & 0xFF), formsB);
  store32(o + ((at >> 32) & 0xFF), _mm_shuffle_epi32(formsB, 0x55));
  store32(o + ((at >> 40) & 0xFF), _mm_shuffle_epi32(formsB, 0xAA));
  store32(o + ((at >> 48) & 0xFF), _mm_shuffle_epi32(formsB, 0xFF));
  return at;
}

// True if all four elements lie below U+10000 and none is a surrogate.
inline bool allShort(__m128i v) {
  const __m128i zero = _mm_setzero_si128();
  const __m128i bmp =
      _mm_cmpeq_epi32(_mm_and_si128(v, _mm_set1_epi32(~0xFFFF)), zero);
  const __m128i surrogate = _mm_cmpeq_epi32(
      _mm_and_si128(v, _mm_set1_epi32(0xF800)), _mm_set1_epi32(0xD800));
  return _mm_movemask_epi8(_mm_andnot_si128(surrogate, bmp)) == 0xFFFF;
}

}  // namespace

void encodeUtf8Sse2(const char32_t*& p, const char32_t* end, unsigned char*& o,
                    unsigned char* oEnd) {
  const char32_t* in = p;
  unsigned char* out = o;
  // A window writes up to 25 bytes, whatever it takes.
  while (end - in >= 8 && oEnd - out >= 25) {
    if (end - in >= 16 && narrowAscii16(in, out)) {
      in += 16;
      out += 16;
      continue;
    }
    const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in));
    const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + 4));
    const __m128i above7FF =
        _mm_and_si128(_mm_or_si128(a, b), _mm_set1_epi32(~0x7FF));
    std::uint64_t ends = 0;
    if (_mm_movemask_epi8(_mm_cmpeq_epi32(above7FF, _mm_setzero_si128())) ==
        0xFFFF) {
      ends = encodeBelow800(a, b, out);
    } else if (allShort(a) && allShort(b)) {
      ends = encodeBelow10000(a, b, out);
    } else {
      break;  // an element of four bytes or none: the caller steps
    }
    in += 8;
    out += ends >> 56;
  }
  p = in;
  o = out;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
