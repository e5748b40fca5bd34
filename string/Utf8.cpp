// UTF-8 at the boundary of String: a lax decoder that classifies each
// sequence by its lead byte alone, and an encoder that drops what it cannot
// write. Both stage their output and append it in blocks.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "string/Blocks.h"
#include "string/String.h"

namespace zelvo {
namespace unicode {

namespace {

// The block kernels below each look at a fixed window of 16 units and
// report how many steps at its front they took. They may write a full
// window's worth of output; places behind the steps taken hold leftovers
// that the following steps overwrite, so callers give them room for it.

// Widens the 16 bytes at p to code points at o; returns the number of ASCII
// bytes that lead the window.
inline size_t widenAsciiBlock(const unsigned char* p, char32_t* o) {
#if defined(ZELVO_SSE2_BLOCKS)
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i zero = _mm_setzero_si128();
  const __m128i low = _mm_unpacklo_epi8(bytes, zero);
  const __m128i high = _mm_unpackhi_epi8(bytes, zero);
  __m128i* dst = reinterpret_cast<__m128i*>(o);
  _mm_storeu_si128(dst, _mm_unpacklo_epi16(low, zero));
  _mm_storeu_si128(dst + 1, _mm_unpackhi_epi16(low, zero));
  _mm_storeu_si128(dst + 2, _mm_unpacklo_epi16(high, zero));
  _mm_storeu_si128(dst + 3, _mm_unpackhi_epi16(high, zero));
  const unsigned nonAscii = static_cast<unsigned>(_mm_movemask_epi8(bytes));
  return static_cast<size_t>(__builtin_ctz(nonAscii | 0x10000u));
#else
  size_t n = 0;
  while (n < 16 && p[n] < 0x80) {
    o[n] = p[n];
    ++n;
  }
  return n;
#endif
}

// Decodes the 16 bytes at p as eight two-byte sequences into o; returns how
// many of them lead the window with a lead byte 0xC0 to 0xDF. The second
// byte of each is taken as it stands, as the decoder always does.
inline size_t decodeTwoByteBlock(const unsigned char* p, char32_t* o) {
#if defined(ZELVO_SSE2_BLOCKS)
  const __m128i pairs = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  const __m128i leads = _mm_cmpeq_epi16(
      _mm_and_si128(pairs, _mm_set1_epi16(0xE0)), _mm_set1_epi16(0xC0));
  const __m128i values = _mm_or_si128(
      _mm_slli_epi16(_mm_and_si128(pairs, _mm_set1_epi16(0x1F)), 6),
      _mm_and_si128(_mm_srli_epi16(pairs, 8), _mm_set1_epi16(0x3F)));
  const __m128i zero = _mm_setzero_si128();
  __m128i* dst = reinterpret_cast<__m128i*>(o);
  _mm_storeu_si128(dst, _mm_unpacklo_epi16(values, zero));
  _mm_storeu_si128(dst + 1, _mm_unpackhi_epi16(values, zero));
  const unsigned notLead = ~static_cast<unsigned>(_mm_movemask_epi8(leads));
  return static_cast<size_t>(__builtin_ctz(notLead)) / 2;
#else
  size_t n = 0;
  while (n < 8 && (p[2 * n] & 0xE0) == 0xC0) {
    o[n] = ((p[2 * n] & 0x1F) << 6) | (p[2 * n + 1] & 0x3F);
    ++n;
  }
  return n;
#endif
}

// Runs the decoding steps over [p, end), storing into the staging buffer of
// the given capacity and appending it to out whenever it is full before a
// step. What is left in the buffer at the end is appended too.
void decodeUtf8(const unsigned char* p, const unsigned char* const end,
                char32_t* const staging, const size_t capacity,
                std::u32string& out) {
  char32_t* const stagingEnd = staging + capacity;
  char32_t* o = staging;
  for (;;) {
    // The flush test before each step: the loops below run a step only
    // while o is short of stagingEnd. A block stores a whole window, so it
    // runs only where the buffer and its spare places hold that, and it
    // takes only the steps that start below the capacity.
    if (o == stagingEnd) {
      appendBlock(out, staging, capacity);
      o = staging;
    }
    // With 16 bytes left, any step or block has all the bytes it reads.
    // The bytes behind a lead are consumed as they stand, never inspected.
    while (o != stagingEnd && end - p >= 16) {
      const unsigned lead = *p;
      if (lead < 0x80) {
        if (p[1] < 0x80 && stagingEnd - o + kStagingSpare >= 16) {
          takeWindows<16, 1>(p, end, o, stagingEnd, widenAsciiBlock);
        } else {
          *o++ = lead;
          ++p;
        }
      } else if (lead < 0xC0) {
        ++p;  // a stray continuation byte is skipped
      } else if (lead < 0xE0) {
        if (stagingEnd - o + kStagingSpare >= 8) {
          takeWindows<8, 2>(p, end, o, stagingEnd, decodeTwoByteBlock);
        } else {
          *o++ = ((lead & 0x1F) << 6) | (p[1] & 0x3F);
          p += 2;
        }
      } else if (lead < 0xF0) {
        *o++ = ((lead & 0x0F) << 12) | ((p[1] & 0x3F) << 6) | (p[2] & 0x3F);
        p += 3;
      } else if (lead < 0xF8) {
        *o++ = ((lead & 0x07) << 18) | ((p[1] & 0x3F) << 12) |
               ((p[2] & 0x3F) << 6) | (p[3] & 0x3F);
        p += 4;
      } else {
        ++p;  // 0xF8 to 0xFF cannot start a sequence and are skipped
      }
    }
    // The last 15 bytes, one step at a time. A lead whose sequence runs past
    // the end stops decoding, and it and the bytes behind it are dropped.
    while (o != stagingEnd && p != end) {
      const unsigned lead = *p;
      const size_t remaining = static_cast<size_t>(end - p);
      if (lead < 0x80) {
        *o++ = lead;
        ++p;
      } else if (lead < 0xC0 || lead >= 0xF8) {
        ++p;
      } else if (lead < 0xE0) {
        if (remaining < 2) {
          p = end;
          break;
        }
        *o++ = ((lead & 0x1F) << 6) | (p[1] & 0x3F);
        p += 2;
      } else if (lead < 0xF0) {
        if (remaining < 3) {
          p = end;
          break;
        }
        *o++ = ((lead & 0x0F) << 12) | ((p[1] & 0x3F) << 6) | (p[2] & 0x3F);
        p += 3;
      } else {
        if (remaining < 4) {
          p = end;
          break;
        }
        *o++ = ((lead & 0x07) << 18) | ((p[1] & 0x3F) << 12) |
               ((p[2] & 0x3F) << 6) | (p[3] & 0x3F);
        p += 4;
      }
    }
    if (p == end) break;
  }
  appendBlock(out, staging, static_cast<size_t>(o - staging));
}

// One encoding step: the element, by the table, into o. Returns the number
// of bytes written, 0 for a dropped element.
inline size_t encodeOne(char32_t c, unsigned char* o) {
  if (c < 0x80) {
    o[0] = static_cast<unsigned char>(c);
    return 1;
  }
  if (c < 0x800) {
    o[0] = static_cast<unsigned char>(0xC0 | ((c >> 6) & 0x1F));
    o[1] = static_cast<unsigned char>(0x80 | (c & 0x3F));
    return 2;
  }
  if (c < 0x10000) {
    // Surrogates have no UTF-8 form here: they are dropped unannounced.
    if ((c & 0xF800) == 0xD800) return 0;
    o[0] = static_cast<unsigned char>(0xE0 | ((c >> 12) & 0x0F));
    o[1] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
    o[2] = static_cast<unsigned char>(0x80 | (c & 0x3F));
    return 3;
  }
  if (c < 0x110000) {
    o[0] = static_cast<unsigned char>(0xF0 | ((c >> 18) & 0x07));
    o[1] = static_cast<unsigned char>(0x80 | ((c >> 12) & 0x3F));
    o[2] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
    o[3] = static_cast<unsigned char>(0x80 | (c & 0x3F));
    return 4;
  }
  return 0;  // beyond U+10FFFF: dropped as well
}

#if defined(ZELVO_SSE2_BLOCKS)
// The window kernels of the encoder. Each encodes a fixed number of elements
// of one known kind with no branch on the elements themselves: every form is
// computed, one is picked by mask, and the sequences are stored one behind
// the other at offsets summed from their lengths. Stores may reach a few
// bytes past the last sequence; the next step overwrites them.

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

// Of the 8 steps of a window whose running offsets are at, the ones that
// start below room, as single steps would take them before the next flush
// test stops them. Returns their number and sets *bytes to their length.
inline size_t stepsBelow(uint64_t at, size_t room, size_t* bytes) {
  const size_t total = static_cast<size_t>(at >> 56);
  if (total <= room) {
    *bytes = total;
    return 8;
  }
  // Byte k of at is the start of step k + 1; it is below room exactly when
  // 0x80 + room - 1 - it keeps its high bit (offsets and room are small, so
  // no byte borrows from the next).
  const uint64_t ones = 0x0101010101010101ull;
  const uint64_t below = ((0x80 * ones + (room - 1) * ones) - at) &
                         (0x80 * ones) & 0x00FFFFFFFFFFFFFFull;
  const size_t steps = 1 + static_cast<size_t>(__builtin_popcountll(below));
  *bytes = static_cast<size_t>((at >> (8 * (steps - 1))) & 0xFF);
  return steps;
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
#endif

// Runs the encoding steps over [p, end), staging bytes and appending them to
// out whenever the buffer holds its capacity or more before a step.
//
// A window of several steps stores all of its sequences, so it runs only
// where those stores fit the staging buffer with its spare places, and only
// its steps that start below the capacity are taken: the flushes fall where
// single steps would put them.
void encodeUtf8(const char32_t* p, const char32_t* const end,
                unsigned char* const staging, const size_t capacity,
                std::string& out) {
  unsigned char* const stagingLimit = staging + capacity;
  unsigned char* o = staging;
  while (p != end) {
    if (o >= stagingLimit) {
      appendBlock(out, reinterpret_cast<const char*>(staging),
                  static_cast<size_t>(o - staging));
      o = staging;
    }
#if defined(ZELVO_SSE2_BLOCKS)
    // The window kernels store a whole window, so they run only where those
    // stores fit the staging buffer and its spare places; of a window that
    // reaches the capacity, only the steps that start below it are taken.
    // Runs of ASCII go 16 elements at a time.
    if (end - p >= 16 && stagingLimit - o >= 11) {
      bool full = false;
      while (narrowAscii16(p, o)) {
        const size_t room = static_cast<size_t>(stagingLimit - o);
        if (room <= 16) {
          p += room;
          o += room;
          full = true;
          break;
        }
        p += 16;
        o += 16;
        if (end - p < 16 || stagingLimit - o < 11) break;
      }
      if (full) continue;
    }
    // Otherwise a window of 8 elements, by the largest form among them.
    if (end - p >= 8 && stagingLimit - o >= 20) {
      const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
      const __m128i b =
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 4));
      const __m128i above7FF =
          _mm_and_si128(_mm_or_si128(a, b), _mm_set1_epi32(~0x7FF));
      uint64_t at = 0;
      if (_mm_movemask_epi8(_mm_cmpeq_epi32(above7FF, _mm_setzero_si128())) ==
          0xFFFF) {
        at = encodeBelow800(a, b, o);
      } else if (allShort(a) && allShort(b)) {
        at = encodeBelow10000(a, b, o);
      }
      if (at != 0) {
        size_t bytes;
        p += stepsBelow(at, static_cast<size_t>(stagingLimit - o), &bytes);
        o += bytes;
        continue;
      }
    }
#endif
    // One step: near the end of the input or of the staging buffer, or at
    // a window with an element of four bytes or none. A step starts only
    // below the capacity and writes at most 4 bytes, which the spare places
    // hold. (The runs above may have taken the input to its end, or the
    // staging buffer to its capacity.)
    if (p != end && o < stagingLimit) o += encodeOne(*p++, o);
  }
  appendBlock(out, reinterpret_cast<const char*>(staging),
              static_cast<size_t>(o - staging));
}

}  // namespace

String::String(const std::string& utf8) { fromUTF8String(utf8); }

void String::fromUTF8String(const std::string& utf8) {
  const size_t byteCount = utf8.size();
  const auto* bytes = reinterpret_cast<const unsigned char*>(utf8.data());
  // The byte count is the most code points the input can give. The staging
  // buffer holds 128 code points, or half the byte count when that is
  // smaller.
  std::u32string decoded = decodeApart(
      byteCount, stagingCapacity(byteCount / 2),
      [&](char32_t* staging, size_t capacity, std::u32string& out) {
        decodeUtf8(bytes, bytes + byteCount, staging, capacity, out);
      });
  // Install: the object takes over the new storage, and its old storage
  // leaves with the temporary.
  str_.swap(decoded);
}

std::string String::toUTF8String() const {
  const size_t capacity = stagingCapacity(str_.size());
  std::unique_ptr<unsigned char[]> staging(
      new unsigned char[capacity + kStagingSpare]);
  std::string encoded;
  encodeUtf8(str_.data(), str_.data() + str_.size(), staging.get(), capacity,
             encoded);
  return encoded;
}

}  // namespace unicode
}  // namespace zelvo
