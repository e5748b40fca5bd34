// The kernel sets of SSE2 and AVX2, and the choice of the one that runs: AVX2
// where the processor has it, SSE2 on any other x86-64 processor, and the
// portable set everywhere else or where the build forces it.
#include "string/Avx2Kernels.h"
#include "string/ConversionKernels.h"
#include "string/Sse2Kernels.h"

namespace zelvo {
namespace unicode {
namespace kernels {

#if defined(ZELVO_X86_KERNELS)

const ConversionKernels* sse2Kernels() {
  static const ConversionKernels kernels = {
      "sse2",         countUtf8Sse2,   decodeUtf8Sse2, encodeUtf8Sse2,
      countUtf16Sse2, decodeUtf16Sse2, encodeUtf16Sse2};
  return &kernels;
}

const ConversionKernels* avx2Kernels() {
  static const ConversionKernels kernels = {
      "avx2",         countUtf8Avx2,   decodeUtf8Avx2, encodeUtf8Avx2,
      countUtf16Avx2, decodeUtf16Avx2, encodeUtf16Avx2};
  // Asked on every call: the answer is a read of what the runtime found out
  // at load, and caching it here would need a guarded static.
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
      __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt")) {
    return &kernels;
  }
  return nullptr;
}

const ConversionKernels& activeKernels() {
  if (const ConversionKernels* avx2 = avx2Kernels()) return *avx2;
  return *sse2Kernels();
}

#else

const ConversionKernels* sse2Kernels() { return nullptr; }
const ConversionKernels* avx2Kernels() { return nullptr; }
const ConversionKernels& activeKernels() { return portableKernels(); }

#endif

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
