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

// Places behind the room given to a single kernel call, which must stay
// untouched.
constexpr std::size_t kGuardPlaces = 80;

struct Decoded {
  std::u32string elements;  // the result
  std::size_t counted;      // the set's exact count
};

// Decodes as String does, with the given set.
inline Decoded decodeUtf8With(const ConversionKernels& set,
                              const std::string& in) {
  const auto* p = reinterpret_cast<const unsigned char*>(in.data());
  const unsigned char* end = p + in.size();
  const std::size_t counted = set.countUtf8(p, end);
  return {zelvo::unicode::decodeApart(p, end, counted, set.decodeUtf8,
                                      zelvo::unicode::kernels::decodeUtf8Step,
                                      64, 64),
          counted};
}

inline Decoded decodeUtf16With(const ConversionKernels& set,
                               const std::u16string& in) {
  const char16_t* p = in.data();
  const char16_t* end = p + in.size();
  const std::size_t counted = set.countUtf16(p, end);
  return {zelvo::unicode::decodeApart(p, end, counted, set.decodeUtf16,
                                      zelvo::unicode::kernels::decodeUtf16Step,
                                      16, 16),
          counted};
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

// Encodes as String does, with the given set; the staging sizes go from as
// small as the encoders allow, which puts chunk edges everywhere, to
// String's own.
template <std::size_t kStaging>
std::string encodeUtf8With(const ConversionKernels& set,
                           const std::u32string& in) {
  std::string out;
  zelvo::unicode::convertByChunks<kStaging, unsigned char>(
      in.data(), in.data() + in.size(), out, set.encodeUtf8, encodeUtf8Step, 8,
      64);
  return out;
}

template <std::size_t kStaging>
std::u16string encodeUtf16With(const ConversionKernels& set,
                               const std::u32string& in) {
  std::u16string out;
  zelvo::unicode::convertByChunks<kStaging, char16_t>(
      in.data(), in.data() + in.size(), out, set.encodeUtf16, encodeUtf16Step,
      8, 16);
  return out;
}

// One call of a kernel on [begin, end) with room for `room` units of output,
// into a buffer with guard places behind. What it consumed and what it
// wrote, which must be the reference's reading of just the consumed input.
template <typename Out>
struct KernelCall {
  std::size_t consumed;
  std::vector<Out> written;
  bool guardIntact;
};

template <typename Out, typename In, typename Kernel>
KernelCall<Out> callKernel(Kernel kernel, const In* begin, const In* end,
                           std::size_t room) {
  KernelCall<Out> call{0, {}, true};
  // Twice, behind guards of two values, so that no write can pass for one.
  for (const Out guard : {static_cast<Out>(0x5A5A5A5A), static_cast<Out>(-1)}) {
    std::vector<Out> out(room + kGuardPlaces, guard);
    const In* p = begin;
    Out* o = out.data();
    kernel(p, end, o, out.data() + room);
    call.consumed = static_cast<std::size_t>(p - begin);
    call.written.assign(out.data(), o);
    for (std::size_t i = room; i < out.size(); ++i)
      call.guardIntact = call.guardIntact && out[i] == guard;
  }
  return call;
}

}  // namespace zelvo_kernels
