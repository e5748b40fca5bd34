// Capacities as the held string's standard library chooses them, for tests
// that compare with those instead of with a number: libstdc++ gives what was
// asked for, libc++ rounds it up.
#pragma once

#include <cstddef>
#include <string>

// The capacity the standard string gives a new string of exactly n
// elements: the most a result of n elements may keep.
inline std::size_t freshCapacity(std::size_t n) {
  return std::u32string(n, U'x').capacity();
}
