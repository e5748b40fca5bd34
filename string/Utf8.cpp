// UTF-8 at the boundary of String: a lax decoder that classifies each
// sequence by its lead byte alone, and an encoder that drops what it cannot
// write. The decoder counts its code points first and writes them straight
// into a result of that size; the encoder runs chunk by chunk through a
// staging buffer on the stack and appends each chunk in one block. The block
// kernels of ConversionKernels.h take the stretches they can, and the steps of
// Utf8Steps.h the rest.
#include <cstddef>
#include <string>

#include "string/Blocks.h"
#include "string/ConversionKernels.h"
#include "string/String.h"
#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {

namespace {

using kernels::ConversionKernels;

// The encoder's staging: 8 KiB.
constexpr std::size_t kEncodeStaging = 8192;
// How far the steps one by one go before the kernel is asked again, and the
// most that such a run or one kernel block writes: 64 code points, or 64
// bytes from 8 elements and the encoder's windows.
constexpr std::ptrdiff_t kBytesByStep = 64;
constexpr std::ptrdiff_t kElementsByStep = 8;
constexpr std::ptrdiff_t kRoom = 64;

const char32_t* encodeStep(const char32_t* p, const char32_t*,
                           unsigned char*& o) {
  o += kernels::encodeUtf8Step(*p, o);
  return p + 1;
}

}  // namespace

String::String(const std::string& utf8) { fromUTF8String(utf8); }

bool gAbInPlace = false;
void String::fromUTF8String(const std::string& utf8) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(utf8.data());
  const unsigned char* const end = bytes + utf8.size();
  const ConversionKernels& kernels = kernels::activeKernels();
  if (gAbInPlace) {
    std::u32string decoded;
    decoded.resize(kernels.countUtf8(bytes, end));
    char32_t* o = &decoded[0];
    const unsigned char* p = bytes;
    convertChunk(p, end, o, o + decoded.size(), kernels.decodeUtf8,
                 kernels::decodeUtf8Step, kBytesByStep, kRoom);
    while (p < end) p = kernels::decodeUtf8Step(p, end, o);
    str_.swap(decoded);
    return;
  }
  std::u32string decoded =
      decodeApart(bytes, end, kernels.countUtf8(bytes, end), kernels.decodeUtf8,
                  kernels::decodeUtf8Step, kBytesByStep, kRoom);
  // Install: the object takes over the new storage, and its old storage
  // leaves with the temporary.
  str_.swap(decoded);
}

std::string String::toUTF8String() const {
  // The result reserves nothing: it grows through the appends.
  std::string encoded;
  convertByChunks<kEncodeStaging, unsigned char>(
      str_.data(), str_.data() + str_.size(), encoded,
      kernels::activeKernels().encodeUtf8, encodeStep, kElementsByStep, kRoom);
  return encoded;
}

}  // namespace unicode
}  // namespace zelvo
