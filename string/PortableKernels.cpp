// The portable kernel set: no blocks at all, so the conversions go step by
// step, and the exact counts walk the same steps.
#include "string/ConversionKernels.h"
#include "string/Utf16Steps.h"
#include "string/Utf8Steps.h"

namespace zelvo {
namespace unicode {
namespace kernels {

namespace {

std::size_t countUtf8(const unsigned char* p, const unsigned char* end) {
  return countUtf8Steps(p, end, end);
}

std::size_t countUtf16(const char16_t* p, const char16_t* end) {
  return countUtf16Steps(p, end, end);
}

void takeNoUtf8Blocks(const unsigned char*&, const unsigned char*, char32_t*&,
                      char32_t*) {}
void takeNoUtf8EncodeBlocks(const char32_t*&, const char32_t*, unsigned char*&,
                            unsigned char*) {}
void takeNoUtf16Blocks(const char16_t*&, const char16_t*, char32_t*&,
                       char32_t*) {}
void takeNoUtf16EncodeBlocks(const char32_t*&, const char32_t*, char16_t*&,
                             char16_t*) {}

}  // namespace

const ConversionKernels& portableKernels() {
  static const ConversionKernels kernels = {"portable",
                                            countUtf8,
                                            takeNoUtf8Blocks,
                                            takeNoUtf8EncodeBlocks,
                                            countUtf16,
                                            takeNoUtf16Blocks,
                                            takeNoUtf16EncodeBlocks};
  return kernels;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
