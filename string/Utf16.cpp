// UTF-16 at the boundary of String: a decoder that joins any surrogate unit
// with the unit behind it, and an encoder that writes something for every
// element. The decoder counts its code points first and writes them straight
// into a result of that size; the encoder runs chunk by chunk through a
// staging buffer on the stack and appends each chunk in one block. The block
// kernels of ConversionKernels.h take the stretches they can, and the steps of
// Utf16Steps.h the rest.
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

// The encoder's staging: 4096 units (8 KiB).
constexpr std::size_t kEncodeStaging = 4096;
// How far the steps one by one go before the kernel is asked again, and the
// most that such a run or one kernel block writes: 16 code points, or 16
// units from 8 elements and the encoder's windows.
constexpr std::ptrdiff_t kUnitsByStep = 16;
constexpr std::ptrdiff_t kElementsByStep = 8;
constexpr std::ptrdiff_t kRoom = 16;

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
      units, end, kernels.countUtf16(units, end), kernels.decodeUtf16,
      kernels::decodeUtf16Step, kUnitsByStep, kRoom);
  // Install: the object takes over the new storage, and its old storage
  // leaves with the temporary.
  str_.swap(decoded);
}

std::u16string String::toUTF16String() const {
  // Every element gives at least one unit, so the result is reserved to the
  // element count; pairs make it grow through the appends.
  std::u16string encoded;
  encoded.reserve(str_.size());
  convertByChunks<kEncodeStaging, char16_t>(
      str_.data(), str_.data() + str_.size(), encoded,
      kernels::activeKernels().encodeUtf16, encodeStep, kElementsByStep, kRoom);
  return encoded;
}

}  // namespace unicode
}  // namespace zelvo
