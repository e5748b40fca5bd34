// UTF-8 at the boundary of String: a lax decoder that classifies each
// sequence by its lead byte alone, and an encoder that drops what it cannot
// write. The decoder counts its code points first and writes them straight
// into the result; the encoder stages chunks and appends them. The block
// kernels of ConversionKernels.h take the stretches they can, and the steps
// of Utf8Steps.h the rest.
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

// How far the steps one by one go before the kernel is asked again.
constexpr std::ptrdiff_t kBytesByStep = 64;
constexpr std::ptrdiff_t kElementsByStep = 8;

const char32_t* encodeStep(const char32_t* p, const char32_t*,
                           unsigned char*& o) {
  o += kernels::encodeUtf8Step(*p, o);
  return p + 1;
}

}  // namespace

String::String(const std::string& utf8) { fromUTF8String(utf8); }

void String::fromUTF8String(const std::string& utf8) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(utf8.data());
  const unsigned char* const end = bytes + utf8.size();
  const ConversionKernels& kernels = kernels::activeKernels();
  std::u32string decoded = decodeApart(
      kernels.countUtf8(bytes, end), [&](char32_t* o, char32_t* oEnd) {
        convertInPlace(bytes, end, o, oEnd, kernels.decodeUtf8,
                       kernels::decodeUtf8Step, kBytesByStep);
      });
  // Install: the object takes over the new storage, and its old storage
  // leaves with the temporary.
  str_.swap(decoded);
}

std::string String::toUTF8String() const {
  // The result reserves nothing: it grows through the appends of chunks of
  // 2048 elements, each staged in up to 8 KiB.
  std::string encoded;
  encodeByChunks<2048, 4, unsigned char>(
      str_.data(), str_.data() + str_.size(), encoded,
      kernels::activeKernels().encodeUtf8, encodeStep, kElementsByStep);
  return encoded;
}

}  // namespace unicode
}  // namespace zelvo
