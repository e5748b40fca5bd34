// Sweeps the UTF-8 and UTF-16 conversions across the edges of their blocks
// and of the encoders' staging chunks, with runs of every encoded width on
// either side. A store past the end of a buffer (as an ASCII fast path once
// made, caught under AddressSanitizer) shows under the sanitize preset;
// everywhere the results must be the plain encodings.
#include <gtest/gtest.h>

#include <string>

#include "string/String.h"

using zelvo::unicode::String;

namespace {

// One element of each encoded width: 1, 2, 3 and 4 bytes in UTF-8.
constexpr char32_t kWidths[] = {0x41, 0xE9, 0x20AC, 0x1F600};
constexpr size_t kUtf8Length[] = {1, 2, 3, 4};
constexpr size_t kUtf16Length[] = {1, 1, 1, 2};
constexpr size_t kRunLengths[] = {1,  5,   11,  15,  16,  17,  31, 32,
                                  33, 100, 127, 128, 129, 200, 300};

template <typename Check>
void sweep(Check check) {
  for (size_t lead = 0; lead < 4; ++lead)
    for (size_t fill = 0; fill < 4; ++fill)
      for (size_t k = 0; k < 140; ++k)
        for (size_t n : kRunLengths) {
          std::u32string u(k, kWidths[lead]);
          u.append(n, kWidths[fill]);
          check(u, k * kUtf8Length[lead] + n * kUtf8Length[fill],
                k * kUtf16Length[lead] + n * kUtf16Length[fill]);
        }
}

}  // namespace

TEST(ConversionStagingBoundaryTest, Utf8RoundTripAcrossEveryFlushPoint) {
  long failures = 0;
  sweep([&](const std::u32string& u, size_t utf8Length, size_t) {
    const String s(u);
    const std::string bytes = s.toUTF8String();
    if (bytes.size() != utf8Length || String(bytes) != s) ++failures;
  });
  EXPECT_EQ(failures, 0);
}

TEST(ConversionStagingBoundaryTest, Utf16RoundTripAcrossEveryFlushPoint) {
  long failures = 0;
  sweep([&](const std::u32string& u, size_t, size_t utf16Length) {
    const String s(u);
    const std::u16string units = s.toUTF16String();
    if (units.size() != utf16Length || String(units) != s) ++failures;
  });
  EXPECT_EQ(failures, 0);
}

TEST(ConversionStagingBoundaryTest, RoundTripsAcrossTheEncoderChunkEdges) {
  // The encoders stage 2048 to 8192 elements at a time, by width.
  long failures = 0;
  for (size_t lead = 0; lead < 4; ++lead)
    for (size_t fill = 0; fill < 4; ++fill)
      for (size_t k = 0; k < 4; ++k)
        for (size_t edge : {2048, 4096, 8192})
          for (size_t n = edge - 3; n <= edge + 3; ++n) {
            std::u32string u(k, kWidths[lead]);
            u.append(n - k, kWidths[fill]);
            const String s(u);
            const std::string bytes = s.toUTF8String();
            const std::u16string units = s.toUTF16String();
            if (bytes.size() !=
                    k * kUtf8Length[lead] + (n - k) * kUtf8Length[fill] ||
                String(bytes) != s || String(units) != s)
              ++failures;
          }
  EXPECT_EQ(failures, 0);
}

TEST(ConversionStagingBoundaryTest, DroppedElementsAcrossEveryFlushPoint) {
  // Surrogates leave UTF-8 without a trace, whatever surrounds them.
  long failures = 0;
  sweep([&](const std::u32string& u, size_t utf8Length, size_t) {
    std::u32string mixed;
    for (char32_t c : u) {
      mixed.push_back(c);
      mixed.push_back(0xD800);
    }
    if (String(mixed).toUTF8String().size() != utf8Length) ++failures;
  });
  EXPECT_EQ(failures, 0);
}
