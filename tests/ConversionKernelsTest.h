// Runs each kernel set of the conversions the way String runs the active one,
// and checks the contract of a single kernel call, for the kernel tests and
// the fuzz targets.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "string/Blocks.h"
#include "string/ConversionKernels.h"
#include "string/Utf16Steps.h"
#include "string/Utf8Steps.h"

namespace zelvo_kernels {

using zelvo::unicode::kernels::ConversionKernels;

// Every kernel set that this build has and this processor runs.
inline std::vector<const ConversionKernels*> availableKernelSets() {
  namespace k = zelvo::unicode::kernels;
  std::vector<const ConversionKernels*> sets{&k::portableKernels()};
  if (k::sse2Kernels() != nullptr) sets.push_back(k::sse2Kernels());
  if (k::avx2Kernels() != nullptr) sets.push_back(k::avx2Kernels());
  return sets;
}

// A value no conversion writes for these inputs' sizes: marks the places
// behind the result, which must stay untouched.
constexpr char32_t kGuard = 0xFEEDFACE;
constexpr std::size_t kGuardPlaces = 80;

struct Decoded {
  std::u32string elements;  // what was written in the counted places
  std::size_t counted;      // the set's exact count
  bool guardIntact;         // nothing written past the counted places
};

inline Decoded decodeUtf8With(const ConversionKernels& set,
                              const std::string& in) {
  const auto* p = reinterpret_cast<const unsigned char*>(in.data());
  const unsigned char* end = p + in.size();
  const std::size_t counted = set.countUtf8(p, end);
  std::vector<char32_t> out(counted + kGuardPlaces, kGuard);
  char32_t* o = out.data();
  zelvo::unicode::convertInPlace(p, end, o, out.data() + counted,
                                 set.decodeUtf8,
                                 zelvo::unicode::kernels::decodeUtf8Step, 64);
  Decoded d{std::u32string(out.data(), o), counted, true};
  for (std::size_t i = counted; i < out.size(); ++i)
    d.guardIntact = d.guardIntact && out[i] == kGuard;
  return d;
}

inline Decoded decodeUtf16With(const ConversionKernels& set,
                               const std::u16string& in) {
  const char16_t* p = in.data();
  const char16_t* end = p + in.size();
  const std::size_t counted = set.countUtf16(p, end);
  std::vector<char32_t> out(counted + kGuardPlaces, kGuard);
  char32_t* o = out.data();
  zelvo::unicode::convertInPlace(p, end, o, out.data() + counted,
                                 set.decodeUtf16,
                                 zelvo::unicode::kernels::decodeUtf16Step, 16);
  Decoded d{std::u32string(out.data(), o), counted, true};
  for (std::size_t i = counted; i < out.size(); ++i)
    d.guardIntact = d.guardIntact && out[i] == kGuard;
  return d;
}

inline const char32_t* encodeUtf8Step(const char32_t* p, const char32_t*,
                                      unsigned char*& o) {
  o += zelvo::unicode::kernels::encodeUtf8Step(*p, o);
  return p + 1;
}

inline const char32_t* encodeUtf16Step(const char32_t* p, const char32_t*,
                                       char16_t*& o) {
  o += zelvo::unicode::kernels::encodeUtf16Step(*p, o);
  return p + 1;
}

// Chunks as small as 3 elements put chunk edges everywhere; 2048 is what
// String uses.
template <std::size_t kChunk>
std::string encodeUtf8With(const ConversionKernels& set,
                           const std::u32string& in) {
  std::string out;
  zelvo::unicode::encodeByChunks<kChunk, 4, unsigned char>(
      in.data(), in.data() + in.size(), out, set.encodeUtf8, encodeUtf8Step, 8);
  return out;
}

template <std::size_t kChunk>
std::u16string encodeUtf16With(const ConversionKernels& set,
                               const std::u32string& in) {
  std::u16string out;
  zelvo::unicode::encodeByChunks<kChunk, 2, char16_t>(
      in.data(), in.data() + in.size(), out, set.encodeUtf16, encodeUtf16Step,
      8);
  return out;
}

// One call of a kernel with room for `room` units of output, into a buffer
// with guard places behind. What it consumed and what it wrote, which must
// be the reference's reading of just the consumed input.
template <typename In, typename Out>
struct KernelCall {
  std::size_t consumed;
  std::basic_string<Out> written;
  bool guardIntact;
};

template <typename In, typename Out, typename Kernel>
KernelCall<In, Out> callKernel(Kernel kernel, const std::basic_string<In>& in,
                               std::size_t room) {
  KernelCall<In, Out> call{0, {}, true};
  // Twice, behind guards of two values, so that no write can pass for one.
  for (const Out guard : {static_cast<Out>(0x5A5A5A5A), static_cast<Out>(-1)}) {
    std::vector<Out> out(room + kGuardPlaces, guard);
    const In* p = in.data();
    Out* o = out.data();
    kernel(p, in.data() + in.size(), o, out.data() + room);
    call.consumed = static_cast<std::size_t>(p - in.data());
    call.written.assign(out.data(), o);
    for (std::size_t i = room; i < out.size(); ++i)
      call.guardIntact = call.guardIntact && out[i] == guard;
  }
  return call;
}

}  // namespace zelvo_kernels
