// Tests of the scans of the normalization fast paths against what they stand
// for: skipBelow and findValue against plain loops.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "normalization/Scans.h"

namespace {

using zelvo::unicode::skipBelow;

const char32_t* plainSkip(const char32_t* p, const char32_t* end,
                          char32_t limit) {
  while (p != end && *p < limit) ++p;
  return p;
}

TEST(ScansTest, SkipBelowStopsAtTheFirstValueNotBelowTheLimit) {
  std::mt19937 random(7);
  for (char32_t limit : {char32_t{0xA0}, char32_t{0xC0}, char32_t{0x300}}) {
    for (int trial = 0; trial < 2000; ++trial) {
      // Mostly ASCII, now and then a value at, above or just below the limit,
      // in strings of every length around the block size.
      std::vector<char32_t> text(random() % 70);
      for (char32_t& c : text) {
        const unsigned pick = random() % 40;
        c = pick == 0   ? limit
            : pick == 1 ? limit - 1
            : pick == 2 ? 0xFFFFFFFF
            : pick == 3 ? limit + random() % 0x1000
                        : random() % 0x80;
      }
      const char32_t* begin = text.data();
      const char32_t* end = begin + text.size();
      for (size_t from = 0; from <= text.size(); ++from)
        ASSERT_EQ(skipBelow(begin + from, end, limit),
                  plainSkip(begin + from, end, limit))
            << "limit " << std::hex << limit << " trial " << std::dec << trial;
    }
  }
}

TEST(ScansTest, FindValueFindsTheFirstEqualValue) {
  std::mt19937 random(5);
  for (int trial = 0; trial < 2000; ++trial) {
    std::vector<char32_t> text(random() % 70);
    for (char32_t& c : text)
      c = random() % 30 == 0 ? 0xFFFFFFFF : random() % 0x400;
    const char32_t* begin = text.data();
    const char32_t* end = begin + text.size();
    for (size_t from = 0; from <= text.size(); ++from)
      ASSERT_EQ(zelvo::unicode::findValue(begin + from, end, 0xFFFFFFFF),
                std::find(begin + from, end, 0xFFFFFFFF))
          << "trial " << trial;
  }
}

TEST(ScansTest, SkipBelowOfAnEmptyRangeIsItsEnd) {
  const char32_t text[1] = {0x41};
  EXPECT_EQ(skipBelow(text, text, 0x300), text);
}

}  // namespace
