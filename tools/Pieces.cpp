// Cut points for UTF-8 and UTF-16 input, following the library's decoders.
#include "Pieces.h"

#include <cstring>

namespace zelvo {
namespace tool {

namespace {

// The length of a sequence by its lead byte, as the library's decoder reads
// it: stray continuation bytes and impossible leads are skipped one by one.
std::size_t sequenceLength(unsigned char lead) {
  if (lead < 0xC0) return 1;
  if (lead < 0xE0) return 2;
  if (lead < 0xF0) return 3;
  if (lead < 0xF8) return 4;
  return 1;
}

// The value the decoder gives a complete sequence. Overlong and malformed
// forms count: C0 8A is a line end to the decoder as much as 0A is.
char32_t sequenceValue(const unsigned char* p, std::size_t length) {
  switch (length) {
    case 2:
      return ((p[0] & 0x1Fu) << 6) | (p[1] & 0x3Fu);
    case 3:
      return ((p[0] & 0x0Fu) << 12) | ((p[1] & 0x3Fu) << 6) | (p[2] & 0x3Fu);
    case 4:
      return ((p[0] & 0x07u) << 18) | ((p[1] & 0x3Fu) << 12) |
             ((p[2] & 0x3Fu) << 6) | (p[3] & 0x3Fu);
    default:
      return p[0] < 0x80 ? p[0] : 0xFFFFFFFF;  // a skipped byte is no value
  }
}

}  // namespace

std::size_t Utf8Cutter::cutPoint(const std::string& bytes) {
  const unsigned char* data =
      reinterpret_cast<const unsigned char*>(bytes.data());
  while (scanned_ < bytes.size()) {
    std::size_t length = sequenceLength(data[scanned_]);
    if (bytes.size() - scanned_ < length) break;  // wait for the rest
    char32_t value = sequenceValue(data + scanned_, length);
    scanned_ += length;
    if (cut_ == TextCut::atAnyCharacter || value == U'\n') lastCut_ = scanned_;
  }
  return lastCut_;
}

void Utf8Cutter::dropped(std::size_t n) {
  scanned_ -= n;
  lastCut_ -= n;
}

std::size_t Utf16Cutter::cutPoint(const std::string& bytes) {
  std::size_t at = 0;
  while (at + 2 <= bytes.size()) {
    char16_t unit;
    std::memcpy(&unit, bytes.data() + at, 2);
    std::size_t length = (unit & 0xF800) == 0xD800 ? 4 : 2;
    if (at + length > bytes.size()) break;
    at += length;
  }
  return at;
}

}  // namespace tool
}  // namespace zelvo
