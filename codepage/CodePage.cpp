// zelvo::unicode::CodePage: decoding and encoding through one single-byte
// page, with ASCII passed through before any table is looked at.
#include "codepage/CodePage.h"

#include <cstdint>
#include <cstring>
#include <utility>

namespace zelvo {
namespace unicode {

namespace {

// A table entry of U+FFFD is a hole: a byte without a character.
constexpr char32_t kHole = 0xFFFD;
// What a code point without a byte becomes, on every page.
constexpr char kSubstitute = 0x3F;
// The high bit of every byte of a 64-bit word.
constexpr std::uint64_t kHighBits = 0x8080808080808080u;

std::array<char32_t, 128> latin1Table() {
  std::array<char32_t, 128> table{};
  for (std::size_t i = 0; i < table.size(); ++i)
    table[i] = static_cast<char32_t>(0x80 + i);
  return table;
}

// Byte 0x80 + i for every entry i that is no hole; a code point that stands
// twice keeps the later, higher byte.
void buildReverseMap(const std::array<char32_t, 128>& table,
                     std::unordered_map<char32_t, char>& reverse) {
  unsigned char byte = 0x80;
  for (char32_t codePoint : table) {
    if (codePoint != kHole) reverse[codePoint] = static_cast<char>(byte);
    ++byte;
  }
}

// The byte is taken as unsigned, so that with a signed char a high byte is
// not sign-extended into a negative index.
inline char32_t decodeByte(unsigned char byte,
                           const std::array<char32_t, 128>& table) {
  if (byte < 0x80) return byte;
  return table[byte - 0x80];
}

// The byte of a word that bit 8k + 7 stands for is byte k in memory only
// on a little-endian machine, which the library is built for.
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__,
              "the high-byte scan assumes little-endian words");

// The high bits of eight bytes in one word: bit 7 of byte k is bit 8k + 7.
inline std::uint64_t highBitsOf(const unsigned char* bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return word & kHighBits;
}

// Sixteen bytes at a time: all of them are first widened as if they were
// ASCII, and then each high byte, found by its bit in the word, is looked up.
constexpr std::size_t kDecodeBlock = 16;

inline void decodeBlock(const unsigned char* __restrict in,
                        const std::array<char32_t, 128>& table,
                        char32_t* __restrict out) {
  for (std::size_t j = 0; j < kDecodeBlock; ++j) out[j] = in[j];
  for (std::size_t half = 0; half < kDecodeBlock; half += 8) {
    for (std::uint64_t high = highBitsOf(in + half); high != 0;
         high &= high - 1) {
      const std::size_t j = half + __builtin_ctzll(high) / 8;
      out[j] = table[in[j] - 0x80];
    }
  }
}

// Sixteen code points at a time: all of them are first narrowed as if they
// were ASCII, and a block that holds anything else is then patched.
constexpr std::size_t kEncodeBlock = 16;

inline void narrowBlock(const char32_t* __restrict in, char* __restrict out) {
  for (std::size_t j = 0; j < kEncodeBlock; ++j)
    out[j] = static_cast<char>(in[j]);
}

// Two code points to a word: a block is ASCII when no word has a bit set
// above bit 6 of either half.
inline bool asciiBlock(const char32_t* in) {
  std::uint64_t words[kEncodeBlock / 2];
  std::memcpy(words, in, sizeof words);
  std::uint64_t any = 0;
  for (std::uint64_t word : words) any |= word;
  return (any & 0xFFFFFF80FFFFFF80u) == 0;
}

// Bit j is set when code point j of a block is not ASCII.
inline unsigned nonAsciiMask(const char32_t* in) {
  unsigned mask = 0;
  for (std::size_t j = 0; j < kEncodeBlock; ++j)
    mask |= static_cast<unsigned>(in[j] > 0x7F) << j;
  return mask;
}

}  // namespace

CodePage::CodePage() : CodePage("none", latin1Table()) {}

CodePage::CodePage(const std::string& name, std::array<char32_t, 128> table)
    : name(name), toUnicodeTable(table) {
  buildReverseMap(toUnicodeTable, fromUnicodeMap);
}

std::string CodePage::getName() const { return name; }

std::string CodePage::fromUnicode(const String& text) const {
  bool discarded = false;
  return fromUnicode(text, discarded);
}

std::string CodePage::fromUnicode(const String& text, bool& lossy) const {
  lossy = false;
  // Bad code points leave no byte behind and are no loss: they go before
  // the walk, on a copy, since the text is the caller's.
  String clean(text);
  clean.stripBadCodePoints();

  std::string encoded;
  encoded.reserve(text.size());
  // The stripped size is exact, and within what was reserved.
  encoded.resize(clean.size());

  const char32_t* in = clean.data();
  const std::size_t count = clean.size();
  char* out = count == 0 ? nullptr : &encoded[0];
  // ASCII as it stands, then the reverse map, then the substitute.
  const auto encodeCodePoint = [this](char32_t codePoint, bool& lost) {
    if (codePoint < 0x80) return static_cast<char>(codePoint);
    const auto found = fromUnicodeMap.find(codePoint);
    if (found != fromUnicodeMap.end()) return found->second;
    lost = true;
    return kSubstitute;
  };
  std::size_t i = 0;
  for (; i + kEncodeBlock <= count; i += kEncodeBlock) {
    const bool ascii = asciiBlock(in + i);
    narrowBlock(in + i, out + i);
    if (ascii) continue;
    for (unsigned mask = nonAsciiMask(in + i); mask != 0; mask &= mask - 1) {
      const std::size_t j = i + __builtin_ctz(mask);
      out[j] = encodeCodePoint(in[j], lossy);
    }
  }
  for (; i < count; ++i) out[i] = encodeCodePoint(in[i], lossy);
  return encoded;
}

String CodePage::toUnicode(const std::string& bytes) const {
  // One code point per byte, so the result is sized exactly up front and
  // handed to the String whole.
  const std::size_t count = bytes.size();
  std::u32string decoded(count, U'\0');
  const unsigned char* in =
      reinterpret_cast<const unsigned char*>(bytes.data());
  char32_t* out = count == 0 ? nullptr : &decoded[0];
  std::size_t i = 0;
  for (; i + kDecodeBlock <= count; i += kDecodeBlock)
    decodeBlock(in + i, toUnicodeTable, out + i);
  for (; i < count; ++i) out[i] = decodeByte(in[i], toUnicodeTable);
  return String(std::move(decoded));
}

}  // namespace unicode
}  // namespace zelvo
