// Tests of the shortcuts of the normalization methods against what they
// stand for: skipBelow and findValue against plain loops, GapLookup against
// map.find() and RangeMemo against rangeContains() on the library's tables.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include "normalization/FastPaths.h"
#include "transform/UnicodeOperations.h"

namespace {

using zelvo::unicode::GapLookup;
using zelvo::unicode::gTransformTables;
using zelvo::unicode::skipBelow;
using zelvo::unicode::String;

const char32_t* plainSkip(const char32_t* p, const char32_t* end,
                          char32_t limit) {
  while (p != end && *p < limit) ++p;
  return p;
}

TEST(FastPathsTest, SkipBelowStopsAtTheFirstValueNotBelowTheLimit) {
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

TEST(FastPathsTest, FindValueFindsTheFirstEqualValue) {
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

TEST(FastPathsTest, SkipBelowOfAnEmptyRangeIsItsEnd) {
  const char32_t text[1] = {0x41};
  EXPECT_EQ(skipBelow(text, text, 0x300), text);
}

template <class Map>
void expectSameAnswersAsFind(const Map& map,
                             const std::vector<char32_t>& keys) {
  GapLookup<Map> lookup(map);
  for (char32_t c : keys) {
    const auto expected = map.find(c);
    ASSERT_EQ(lookup.find(c) == lookup.end(), expected == map.end())
        << std::hex << c;
    if (expected != map.end()) {
      ASSERT_EQ(lookup.find(c), expected) << std::hex << c;
    }
  }
}

std::vector<char32_t> everyCodePointAndSome() {
  std::vector<char32_t> all;
  for (char32_t c = 0; c <= 0x10FFFF; ++c) all.push_back(c);
  for (char32_t c :
       {char32_t{0x110000}, char32_t{0xFFFFFFFE}, char32_t{0xFFFFFFFF}})
    all.push_back(c);
  return all;
}

TEST(FastPathsTest, GapLookupAnswersAsFindInAscendingOrder) {
  const std::vector<char32_t> all = everyCodePointAndSome();
  expectSameAnswersAsFind(gTransformTables.weightMap, all);
  expectSameAnswersAsFind(gTransformTables.decompositionMap, all);
  expectSameAnswersAsFind(gTransformTables.compatDecompositionMap, all);
}

TEST(FastPathsTest, GapLookupAnswersAsFindInAnyOrder) {
  std::vector<char32_t> all = everyCodePointAndSome();
  std::shuffle(all.begin(), all.end(), std::mt19937(11));
  expectSameAnswersAsFind(gTransformTables.weightMap, all);
  expectSameAnswersAsFind(gTransformTables.decompositionMap, all);
  // Keys and their neighbours over and over, as text repeats letters.
  std::vector<char32_t> near;
  std::mt19937 random(13);
  for (int k = 0; k < 200000; ++k) {
    auto it = gTransformTables.weightMap.begin();
    std::advance(it, random() % gTransformTables.weightMap.size());
    near.push_back(it->first + random() % 3 - 1);
  }
  expectSameAnswersAsFind(gTransformTables.weightMap, near);
}

TEST(FastPathsTest, RangeMemoAnswersAsRangeContains) {
  std::vector<char32_t> all = everyCodePointAndSome();
  const std::vector<char32_t> ascending = all;
  std::shuffle(all.begin(), all.end(), std::mt19937(17));
  for (const zelvo::unicode::RangeList* ranges :
       {&gTransformTables.nfcQcMaybeRanges, &gTransformTables.nfdQcNoRanges,
        &gTransformTables.nfkcQcNoRanges}) {
    for (const std::vector<char32_t>* order :
         {&ascending, static_cast<const std::vector<char32_t>*>(&all)}) {
      zelvo::unicode::RangeMemo memo(*ranges);
      for (char32_t c : *order)
        ASSERT_EQ(memo.contains(c), zelvo::unicode::rangeContains(*ranges, c))
            << std::hex << c;
      // Asked again, from the memo where it still holds the answer.
      for (char32_t c : *order)
        ASSERT_EQ(memo.contains(c), zelvo::unicode::rangeContains(*ranges, c))
            << std::hex << c;
    }
  }
}

TEST(FastPathsTest, GapLookupOnAnEmptyMapFindsNothing) {
  const std::map<char32_t, int> empty;
  GapLookup<std::map<char32_t, int>> lookup(empty);
  for (char32_t c :
       {char32_t{0}, char32_t{1}, char32_t{0x300}, char32_t{0xFFFFFFFF}})
    EXPECT_EQ(lookup.find(c), lookup.end());
}

TEST(FastPathsTest, GapLookupFindsTheLowestAndHighestKeys) {
  const std::map<char32_t, int> map{{0, 1}, {5, 2}, {0xFFFFFFFF, 3}};
  GapLookup<std::map<char32_t, int>> lookup(map);
  for (char32_t c :
       {char32_t{3}, char32_t{0}, char32_t{4}, char32_t{5}, char32_t{6},
        char32_t{0xFFFFFFFE}, char32_t{0xFFFFFFFF}, char32_t{1}, char32_t{0}})
    EXPECT_EQ(lookup.find(c), map.find(c)) << c;
}

}  // namespace
