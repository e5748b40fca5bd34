// What a call throws, as text, for tests that check the exception itself.
#pragma once

#include <stdexcept>
#include <string>

// The what() of the std::out_of_range that a call raises, or "none" if it
// raises nothing.
template <typename Call>
std::string outOfRangeText(Call call) {
  try {
    call();
  } catch (const std::out_of_range& e) {
    return e.what();
  }
  return "none";
}
