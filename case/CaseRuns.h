// Runs of code points over which the simple upper, simple lower and simple
// folding mappings move each code point by a fixed distance, so that text in
// the common alphabets and in scripts without case needs no table search.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zelvo {
namespace unicode {
namespace caseruns {

// Within a run, a code point c maps to c plus the distance of its parity
// (index c & 1: alphabets such as Latin Extended-A alternate capital and
// small letter), and no unconditional full row names it. A distance of 0
// means that the table has no row there. These are facts of the 7.0.0
// tables, taken from them; the case tests check every code point of every
// run against the tables. A code point outside every run is looked up.
struct CaseRun {
  char32_t first;
  char32_t last;
  std::int32_t upper[2];
  std::int32_t lower[2];
  std::int32_t fold[2];
};

constexpr CaseRun kRuns[] = {
    {0x0000, 0x0040, {0, 0}, {0, 0}, {0, 0}},
    {0x0041, 0x005A, {0, 0}, {32, 32}, {32, 32}},
    {0x0061, 0x007A, {-32, -32}, {0, 0}, {0, 0}},
    {0x007B, 0x00B4, {0, 0}, {0, 0}, {0, 0}},
    {0x00B6, 0x00BF, {0, 0}, {0, 0}, {0, 0}},
    {0x00C0, 0x00D6, {0, 0}, {32, 32}, {32, 32}},
    {0x00E0, 0x00F6, {-32, -32}, {0, 0}, {0, 0}},
    {0x0100, 0x012F, {0, -1}, {1, 0}, {1, 0}},
    {0x0139, 0x0148, {-1, 0}, {0, 1}, {0, 1}},
    {0x014A, 0x0177, {0, -1}, {1, 0}, {1, 0}},
    {0x01CD, 0x01DC, {-1, 0}, {0, 1}, {0, 1}},
    {0x01DE, 0x01EF, {0, -1}, {1, 0}, {1, 0}},
    {0x01F8, 0x021F, {0, -1}, {1, 0}, {1, 0}},
    {0x0222, 0x0233, {0, -1}, {1, 0}, {1, 0}},
    {0x0246, 0x024F, {0, -1}, {1, 0}, {1, 0}},
    {0x0293, 0x029D, {0, 0}, {0, 0}, {0, 0}},
    {0x029F, 0x0344, {0, 0}, {0, 0}, {0, 0}},
    {0x0346, 0x036F, {0, 0}, {0, 0}, {0, 0}},
    {0x0391, 0x03A1, {0, 0}, {32, 32}, {32, 32}},
    {0x03A3, 0x03AB, {0, 0}, {32, 32}, {32, 32}},
    {0x03B1, 0x03C1, {-32, -32}, {0, 0}, {0, 0}},
    {0x03C3, 0x03CB, {-32, -32}, {0, 0}, {0, 0}},
    {0x03D8, 0x03EF, {0, -1}, {1, 0}, {1, 0}},
    {0x0400, 0x040F, {0, 0}, {80, 80}, {80, 80}},
    {0x0410, 0x042F, {0, 0}, {32, 32}, {32, 32}},
    {0x0430, 0x044F, {-32, -32}, {0, 0}, {0, 0}},
    {0x0450, 0x045F, {-80, -80}, {0, 0}, {0, 0}},
    {0x0460, 0x0481, {0, -1}, {1, 0}, {1, 0}},
    {0x0482, 0x0489, {0, 0}, {0, 0}, {0, 0}},
    {0x048A, 0x04BF, {0, -1}, {1, 0}, {1, 0}},
    {0x04C1, 0x04CE, {-1, 0}, {0, 1}, {0, 1}},
    {0x04D0, 0x052F, {0, -1}, {1, 0}, {1, 0}},
    {0x0531, 0x0556, {0, 0}, {48, 48}, {48, 48}},
    {0x0557, 0x0560, {0, 0}, {0, 0}, {0, 0}},
    {0x0561, 0x0586, {-48, -48}, {0, 0}, {0, 0}},
    {0x0588, 0x109F, {0, 0}, {0, 0}, {0, 0}},
    {0x10A0, 0x10C5, {0, 0}, {7264, 7264}, {7264, 7264}},
    {0x10CE, 0x1D78, {0, 0}, {0, 0}, {0, 0}},
    {0x1D7E, 0x1DFF, {0, 0}, {0, 0}, {0, 0}},
    {0x1E00, 0x1E95, {0, -1}, {1, 0}, {1, 0}},
    {0x1EA0, 0x1EFF, {0, -1}, {1, 0}, {1, 0}},
    {0x1F00, 0x1F07, {8, 8}, {0, 0}, {0, 0}},
    {0x1F08, 0x1F0F, {0, 0}, {-8, -8}, {-8, -8}},
    {0x1F20, 0x1F27, {8, 8}, {0, 0}, {0, 0}},
    {0x1F28, 0x1F2F, {0, 0}, {-8, -8}, {-8, -8}},
    {0x1F30, 0x1F37, {8, 8}, {0, 0}, {0, 0}},
    {0x1F38, 0x1F3F, {0, 0}, {-8, -8}, {-8, -8}},
    {0x1F58, 0x1F5F, {0, 0}, {0, -8}, {0, -8}},
    {0x1F60, 0x1F67, {8, 8}, {0, 0}, {0, 0}},
    {0x1F68, 0x1F6F, {0, 0}, {-8, -8}, {-8, -8}},
    {0x1FFD, 0x2125, {0, 0}, {0, 0}, {0, 0}},
    {0x2133, 0x214D, {0, 0}, {0, 0}, {0, 0}},
    {0x214F, 0x215F, {0, 0}, {0, 0}, {0, 0}},
    {0x2160, 0x216F, {0, 0}, {16, 16}, {16, 16}},
    {0x2170, 0x217F, {-16, -16}, {0, 0}, {0, 0}},
    {0x2185, 0x24B5, {0, 0}, {0, 0}, {0, 0}},
    {0x24B6, 0x24CF, {0, 0}, {26, 26}, {26, 26}},
    {0x24D0, 0x24E9, {-26, -26}, {0, 0}, {0, 0}},
    {0x24EA, 0x2BFF, {0, 0}, {0, 0}, {0, 0}},
    {0x2C00, 0x2C2E, {0, 0}, {48, 48}, {48, 48}},
    {0x2C30, 0x2C5E, {-48, -48}, {0, 0}, {0, 0}},
    {0x2C80, 0x2CE3, {0, -1}, {1, 0}, {1, 0}},
    {0x2CF4, 0x2CFF, {0, 0}, {0, 0}, {0, 0}},
    {0x2D00, 0x2D25, {-7264, -7264}, {0, 0}, {0, 0}},
    {0x2D2E, 0xA63F, {0, 0}, {0, 0}, {0, 0}},
    {0xA640, 0xA66D, {0, -1}, {1, 0}, {1, 0}},
    {0xA66E, 0xA67F, {0, 0}, {0, 0}, {0, 0}},
    {0xA680, 0xA69B, {0, -1}, {1, 0}, {1, 0}},
    {0xA69C, 0xA721, {0, 0}, {0, 0}, {0, 0}},
    {0xA722, 0xA72F, {0, -1}, {1, 0}, {1, 0}},
    {0xA732, 0xA76F, {0, -1}, {1, 0}, {1, 0}},
    {0xA770, 0xA778, {0, 0}, {0, 0}, {0, 0}},
    {0xA77E, 0xA787, {0, -1}, {1, 0}, {1, 0}},
    {0xA796, 0xA7A9, {0, -1}, {1, 0}, {1, 0}},
    {0xA7B2, 0xFAFF, {0, 0}, {0, 0}, {0, 0}},
    {0xFB07, 0xFB12, {0, 0}, {0, 0}, {0, 0}},
    {0xFB18, 0xFF20, {0, 0}, {0, 0}, {0, 0}},
    {0xFF21, 0xFF3A, {0, 0}, {32, 32}, {32, 32}},
    {0xFF41, 0xFF5A, {-32, -32}, {0, 0}, {0, 0}},
    {0xFF5B, 0x103FF, {0, 0}, {0, 0}, {0, 0}},
    {0x10400, 0x10427, {0, 0}, {40, 40}, {40, 40}},
    {0x10428, 0x1044F, {-40, -40}, {0, 0}, {0, 0}},
    {0x10450, 0x1189F, {0, 0}, {0, 0}, {0, 0}},
    {0x118A0, 0x118BF, {0, 0}, {32, 32}, {32, 32}},
    {0x118C0, 0x118DF, {-32, -32}, {0, 0}, {0, 0}},
    {0x118E0, 0x10FFFF, {0, 0}, {0, 0}, {0, 0}},
};

constexpr std::size_t kRunCount = sizeof(kRuns) / sizeof(kRuns[0]);

// The run that holds c, or null. A halving search on the first code points
// of the runs, which are ascending and disjoint.
inline CaseRun const* findRun(char32_t c) {
  std::size_t low = 0;
  std::size_t count = kRunCount;
  while (count > 1) {
    std::size_t const half = count / 2;
    if (kRuns[low + half].first <= c) low += half;
    count -= half;
  }
  CaseRun const& run = kRuns[low];
  return c >= run.first && c <= run.last ? &run : nullptr;
}

inline char32_t move(char32_t c, std::int32_t const (&distance)[2]) {
  return c + static_cast<char32_t>(distance[c & 1]);
}

}  // namespace caseruns
}  // namespace unicode
}  // namespace zelvo
