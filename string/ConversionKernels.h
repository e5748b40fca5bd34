// The block kernels behind the UTF-8 and UTF-16 conversions of String: one
// set for each instruction set, and the choice of the set that runs.
#pragma once

#include <cstddef>

namespace zelvo {
namespace unicode {
namespace kernels {

// A kernel takes whole steps of the written algorithm from the cursors, many
// at a time, where a block of input lets it give exactly what the steps one
// by one would give; it stops, having taken none or more, at the first block
// it cannot take whole, or where a block would write at or past oEnd, and
// the caller goes on step by step from there. The decoders start and stop
// at a step boundary.
struct ConversionKernels {
  // Which set this is: "avx2", "sse2" or "portable".
  const char* name;
  // The exact number of code points that decoding [p, end) gives.
  std::size_t (*countUtf8)(const unsigned char* p, const unsigned char* end);
  void (*decodeUtf8)(const unsigned char*& p, const unsigned char* end,
                     char32_t*& o, char32_t* oEnd);
  void (*encodeUtf8)(const char32_t*& p, const char32_t* end, unsigned char*& o,
                     unsigned char* oEnd);
  std::size_t (*countUtf16)(const char16_t* p, const char16_t* end);
  void (*decodeUtf16)(const char16_t*& p, const char16_t* end, char32_t*& o,
                      char32_t* oEnd);
  void (*encodeUtf16)(const char32_t*& p, const char32_t* end, char16_t*& o,
                      char16_t* oEnd);
};

// The set the conversions use: the widest this processor runs, or the
// portable one where the build forces it.
const ConversionKernels& activeKernels();

// Each set on its own, for the tests that hold every set to the written
// steps. Those that are not built, or that this processor cannot run, are
// null.
const ConversionKernels& portableKernels();
const ConversionKernels* sse2Kernels();
const ConversionKernels* avx2Kernels();

}  // namespace kernels
}  // namespace unicode
}  // namespace zelvo
