// The AVX2 kernels, one file for each direction; only the kernel set of
// AVX2 calls them, after checking the processor.
#pragma once

#include <cstddef>

#include "string/KernelTargets.h"

#if defined(ZELVO_X86_KERNELS)
namespace zelvo {
namespace unicode {
namespace kernels {

std::size_t countUtf8Avx2(const unsigned char* p, const unsigned char* end);
void decodeUtf8Avx2(const unsigned char*& p, const unsigned char* end,
                    char32_t*& o, char32_t* oEnd);
void encodeUtf8Avx2(const char32_t*& p, const char32_t* end, unsigned char*& o,
                    unsigned char* oEnd);
std::size_t countUtf16Avx2(const char16_t* p, const char16_t* end);
void decodeUtf16Avx2(const char16_t*& p, const char16_t* end, char32_t*& o,
                     char32_t* oEnd);
void encodeUtf16Avx2(const char32_t*& p, const char32_t* end, char16_t*& o,
                     char16_t* oEnd);

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
