// Capacities as the held string's standard library chooses them, for tests
// that compare with those instead of with a number: libstdc++ gives what was
// asked for, libc++ rounds it up.
#pragma once

#include <cstddef>
#include <string>

// The capacity of a std::u32string that reserves `reserved`, then receives
// `size` elements and is shrunk to fit, as the decoders build their result.
inline std::size_t fittedCapacity(std::size_t reserved, std::size_t size) {
  std::u32string s;
  s.reserve(reserved);
  s.append(size, U'x');
  s.shrink_to_fit();
  return s.capacity();
}
