// UTF-8 at the boundary of String: a lax decoder that classifies each sequence
// by its lead byte alone, and an encoder that drops what it cannot write. Both
// run chunk by chunk through a staging buffer on the stack and append each
// chunk in one block, the decoder to a result reserved to a bound of its code
// points that is exact for well-formed text. The block kernels of
// ConversionKernels.h take the stretches they can, and the steps of Utf8Steps.h
// the rest.
#include <cstddef>
#include <string>

#include "string/Blocks.h"
#include "string/ConversionKernels.h"
#include "string/Staging.h"
#include "string/String.h"
#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {

namespace {

using kernels::ConversionKernels;

const char32_t* encodeStep(const char32_t* p, const char32_t*,
                           unsigned char*& o) {
  o += kernels::encodeUtf8Step(*p, o);
  return p + 1;
}

}  // namespace

String::String(const std::string& utf8) { fromUTF8String(utf8); }

void String::fromUTF8String(const std::string& utf8) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(utf8.data());
  const ConversionKernels& kernels = kernels::activeKernels();
  std::u32string decoded = decodeApart<kDecodeStaging>(
      bytes, bytes + utf8.size(), kernels.boundUtf8, kernels.decodeUtf8,
      kernels::decodeUtf8Step, kUtf8DecodePace);
  // Install: the object takes over the new storage, and its old storage
  // leaves with the temporary.
  str_.swap(decoded);
}

std::string String::toUTF8String() const {
  // The result is reserved by the rate of its first chunk.
  std::string encoded;
  convertByChunks<kUtf8EncodeStaging, unsigned char, true>(
      str_.data(), str_.data() + str_.size(), encoded,
      kernels::activeKernels().encodeUtf8, encodeStep, kUtf8EncodePace);
  return encoded;
}

}  // namespace unicode
}  // namespace zelvo
