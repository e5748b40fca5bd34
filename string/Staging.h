// How much the conversions of String stage on the stack before each block
// append: 8 KiB in each direction, which stays in the first-level cache.
#pragma once

#include <cstddef>

namespace zelvo {
namespace unicode {

constexpr std::size_t kDecodeStaging = 2048;       // code points
constexpr std::size_t kUtf8EncodeStaging = 8192;   // bytes
constexpr std::size_t kUtf16EncodeStaging = 4096;  // units

}  // namespace unicode
}  // namespace zelvo
