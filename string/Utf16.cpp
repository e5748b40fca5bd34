// UTF-16 at the boundary of String: a decoder that joins any surrogate unit
// with the unit behind it, and an encoder that writes something for every
// element. Both run chunk by chunk through a staging buffer on the stack and
// append each chunk in one block, the decoder to a result reserved to a bound
// of its code points that is exact for well-formed text. The block kernels of
// ConversionKernels.h take the stretches they can, and the steps of
// Utf16Steps.h the rest.
#include <cstddef>
#include <string>

#include "string/Blocks.h"
#include "string/ConversionKernels.h"
#include "string/Staging.h"
#include "string/String.h"
#include "string/Utf16Steps.h"

namespace zelvo {
namespace unicode {

namespace {

using kernels::ConversionKernels;

const char32_t* encodeStep(const char32_t* p, const char32_t*, char16_t*& o) {
  o += kernels::encodeUtf16Step(*p, o);
  return p + 1;
}

}  // namespace

String::String(const std::u16string& utf16) { fromUTF16String(utf16); }

void String::fromUTF16String(const std::u16string& utf16) {
  const ConversionKernels& kernels = kernels::activeKernels();
  std::u32string decoded = decodeApart<kDecodeStaging>(
      utf16.data(), utf16.data() + utf16.size(), kernels.boundUtf16,
      kernels.decodeUtf16, kernels::decodeUtf16Step, kUtf16DecodePace);
  // Install: the object takes over the new storage, and its old storage
  // leaves with the temporary.
  str_.swap(decoded);
}

std::u16string String::toUTF16String() const {
  // Every element gives at least one unit, so the result is reserved to the
  // element count; pairs make it grow through the appends.
  std::u16string encoded;
  encoded.reserve(str_.size());
  convertByChunks<kUtf16EncodeStaging, char16_t, false>(
      str_.data(), str_.data() + str_.size(), encoded,
      kernels::activeKernels().encodeUtf16, encodeStep, kUtf16EncodePace);
  return encoded;
}

}  // namespace unicode
}  // namespace zelvo
