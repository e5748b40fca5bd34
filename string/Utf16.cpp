// UTF-16 at the boundary of String: a decoder that joins any surrogate unit
// with the unit behind it, and an encoder that writes something for every
// element. The decoder counts its code points first and writes them
// straight into the result; the encoder stages chunks and appends them. The
// block kernels of ConversionKernels.h take the stretches they can, and the
// steps of Utf16Steps.h the rest.
#include <cstddef>
#include <string>

#include "string/Blocks.h"
#include "string/ConversionKernels.h"
#include "string/String.h"
#include "string/Utf16Steps.h"

namespace zelvo {
namespace unicode {

namespace {

using kernels::ConversionKernels;

// How far the steps one by one go before the kernel is asked again.
constexpr std::ptrdiff_t kUnitsByStep = 16;
constexpr std::ptrdiff_t kElementsByStep = 8;

const char32_t* encodeStep(const char32_t* p, const char32_t*, char16_t*& o) {
  o += kernels::encodeUtf16Step(*p, o);
  return p + 1;
}

}  // namespace

String::String(const std::u16string& utf16) { fromUTF16String(utf16); }

void String::fromUTF16String(const std::u16string& utf16) {
  const char16_t* const units = utf16.data();
  const char16_t* const end = units + utf16.size();
  const ConversionKernels& kernels = kernels::activeKernels();
  std::u32string decoded = decodeApart(
      kernels.countUtf16(units, end), [&](char32_t* o, char32_t* oEnd) {
        convertInPlace(units, end, o, oEnd, kernels.decodeUtf16,
                       kernels::decodeUtf16Step, kUnitsByStep);
      });
  // Install: the object takes over the new storage, and its old storage
  // leaves with the temporary.
  str_.swap(decoded);
}

std::u16string String::toUTF16String() const {
  // Every element gives at least one unit, so the result is reserved to the
  // element count; pairs grow it through the appends of chunks of 2048
  // elements, each staged in up to 8 KiB.
  std::u16string encoded;
  encoded.reserve(str_.size());
  encodeByChunks<2048, 2, char16_t>(
      str_.data(), str_.data() + str_.size(), encoded,
      kernels::activeKernels().encodeUtf16, encodeStep, kElementsByStep);
  return encoded;
}

}  // namespace unicode
}  // namespace zelvo
