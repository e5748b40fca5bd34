// Vector constants made once, before a kernel's loop, that stay put through
// it.
#pragma once

#include "string/KernelTargets.h"

#if defined(ZELVO_X86_KERNELS)
#include <immintrin.h>

namespace zelvo {
namespace unicode {
namespace kernels {

// The value, which the compiler may keep in a register or on the stack but
// may not build again: GCC otherwise makes some constants anew in every round
// of a loop, through a general register and a broadcast on the shuffle port,
// at a cost above that of the work they serve.
inline __m128i kept(__m128i v) {
  __asm__("" : "+x"(v));
  return v;
}

ZELVO_AVX2_TARGET inline __m256i kept(__m256i v) {
  __asm__("" : "+x"(v));
  return v;
}

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
#endif
