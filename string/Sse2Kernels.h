// The SSE2 kernels, which every x86-64 processor runs: the kernel set for
// processors without AVX2.
#pragma once

#include <cstddef>

#include "string/KernelTargets.h"

#if defined(ZELVO_X86_KERNELS)
namespace zelvo {
namespace unicode {
namespace kernels {

std::size_t countUtf8Sse2(const unsigned char* p, const unsigned char* end);
void decodeUtf8Sse2(const unsigned char*& p, const unsigned char* end,
                    char32_t*& o, char32_t* oEnd);
void encodeUtf8Sse2(const char32_t*& p, const char32_t* end, unsigned char*& o,
                    unsigned char* oEnd);
std::size_t countUtf16Sse2(const char16_t* p, const char16_t* end);
void decodeUtf16Sse2(const char16_t*& p, const char16_t* end, char32_t*& o,
                     char32_t* oEnd);
void encodeUtf16Sse2(const char32_t*& p, const char32_t* end, char16_t*& o,
                     char16_t* oEnd);

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
