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

// Takes windows of 16 units while each is taken whole: window(p, o) writes
// 16 outputs at o and says how many of the steps at the front of the window
// at p are its to take, one unit and one output each.
template <typename In, typename Out, typename Window>
inline void takeWholeWindows(const In*& p, const In* end, Out*& o, Out* oEnd,
                             Window window) {
  while (end - p >= 16 && oEnd - o >= 16) {
    const std::size_t run = window(p, o);
    p += run;
    o += run;
    if (run < 16) break;
  }
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
