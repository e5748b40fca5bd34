// Which vector kernels this build has: the SSE2 and AVX2 sets are built for
// x86-64 with GCC or clang, unless ZELVO_UNICODE_PORTABLE forces the portable
// set everywhere. AVX2 code is compiled per function and runs only after a
// check of the processor.
#pragma once

#if !defined(ZELVO_UNICODE_PORTABLE) && defined(__x86_64__) && \
    defined(__SSE2__) && (defined(__GNUC__) || defined(__clang__))
#define ZELVO_X86_KERNELS 1
#define ZELVO_AVX2_TARGET __attribute__((target("avx2,bmi,bmi2,popcnt")))
#endif
