// Free operator+ and relational operators of String: values, the storage
// the rvalue forms hand on, and the unsigned order of the comparisons.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "string/String.h"

// Global allocation hooks for this test program: they count allocations and
// can be told to fail, so that the tests can see how often an operator
// allocates and what an exception leaves behind. The library's strings
// allocate through them as well. They are kept out of line so that the
// compiler pairs each delete with the new and not with the malloc inside it.
namespace {
bool gFailAllocations = false;
size_t gAllocations = 0;
}  // namespace

[[gnu::noinline]] void* operator new(size_t size) {
  if (gFailAllocations) throw std::bad_alloc();
  ++gAllocations;
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* p) noexcept { std::free(p); }
[[gnu::noinline]] void operator delete(void* p, size_t) noexcept {
  std::free(p);
}

namespace {

using zelvo::unicode::String;

std::u32string elements(const String& s) {
  return std::u32string(s.begin(), s.end());
}

size_t roomOf(const String& s) { return s.capacity() - s.size(); }

// A String of at least n elements, all c, with exactly `room` elements of
// storage to spare. The held string's standard library chooses the capacity
// and may round it up (libc++ does), so the size takes up what the rounding
// adds: it is n where the capacity is what was asked for.
String withRoom(size_t n, char32_t c, size_t room) {
  String s(n + room, c);
  s.resize(s.capacity() - room, c);
  return s;
}

// Runs f with every allocation failing; true if it threw std::bad_alloc.
template <typename F>
bool failsWithoutMemory(F f) {
  gFailAllocations = true;
  bool threw = false;
  try {
    f();
  } catch (const std::bad_alloc&) {
    threw = true;
  }
  gFailAllocations = false;
  return threw;
}

const char32_t kZero[] = {0};
const char32_t kAZero[] = {U'A', 0};

// ---- Values of the twelve forms ------------------------------------------

TEST(StringConcatenation, EmptyPlusEmptyIsEmpty) {
  EXPECT_TRUE((String() + String()).empty());
  const String a;
  const String b;
  EXPECT_TRUE((a + b).empty());
}

TEST(StringConcatenation, ZeroElementWithEmptyIsOneElement) {
  const String empty;
  const char32_t zero = 0;
  EXPECT_EQ(elements(String() + zero), std::u32string(1, 0));
  EXPECT_EQ(elements(zero + String()), std::u32string(1, 0));
  EXPECT_EQ(elements(empty + zero), std::u32string(1, 0));
  EXPECT_EQ(elements(zero + empty), std::u32string(1, 0));
}

TEST(StringConcatenation, ElementOnEitherSideOfConstString) {
  const String a{U'A', U'B'};
  EXPECT_EQ(elements(a + U'C'), U"ABC");
  EXPECT_EQ(elements(U'C' + a), U"CAB");
  EXPECT_EQ(elements(a), U"AB");
}

TEST(StringConcatenation, PointerToZeroAddsNothingWhileZeroElementAddsOne) {
  const String a{U'A', U'B'};
  EXPECT_EQ(elements(a + kZero), U"AB");
  EXPECT_EQ(elements(kZero + a), U"AB");
  EXPECT_EQ(elements(a + char32_t{0}), std::u32string({U'A', U'B', 0}));
}

TEST(StringConcatenation, ConstStringPlusConstString) {
  const String a{U'A', 0};
  const String b{U'B'};
  EXPECT_EQ(elements(a + b), std::u32string({U'A', 0, U'B'}));
}

TEST(StringConcatenation, PointerForms) {
  const String b{U'B'};
  EXPECT_EQ(elements(kAZero + b), U"AB");
  EXPECT_EQ(elements(b + kAZero), U"BA");
  EXPECT_EQ(elements(kAZero + String{U'B'}), U"AB");
  EXPECT_EQ(elements(String{U'B'} + kAZero), U"BA");
}

TEST(StringConcatenation, RvalueForms) {
  const String b{U'B'};
  EXPECT_EQ(elements(String{U'A'} + b), U"AB");
  EXPECT_EQ(elements(b + String{U'A'}), U"BA");
  EXPECT_EQ(elements(String{U'A'} + String{U'B'}), U"AB");
  EXPECT_EQ(elements(U'C' + String{U'A'}), U"CA");
  EXPECT_EQ(elements(String{U'A'} + U'C'), U"AC");
}

TEST(StringConcatenation, SameObjectOnBothSides) {
  String s{U'a', U'b'};
  EXPECT_EQ(elements(s + s), U"abab");
  EXPECT_EQ(elements(std::move(s) + s), U"abab");
}

TEST(StringConcatenation, ChainsLeftToRight) {
  const String a{U'a'};
  const String b{U'b'};
  EXPECT_EQ(elements(a + U'-' + b + U"!" + a), U"a-b!a");
}

// ---- Storage taken over by the rvalue forms ------------------------------

TEST(StringConcatenationStorage, RvalueLeftWithConstRight) {
  String a = withRoom(20, U'a', 20);
  const String b{U'b'};
  const std::u32string valueA = elements(a);
  const char32_t* storage = a.data();
  const String result = std::move(a) + b;
  EXPECT_EQ(result.data(), storage);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(elements(result), valueA + U"b");
}

TEST(StringConcatenationStorage, ConstLeftWithRvalueRight) {
  const String a{U'a'};
  String b = withRoom(20, U'b', 20);
  const std::u32string valueB = elements(b);
  const char32_t* storage = b.data();
  const String result = a + std::move(b);
  EXPECT_EQ(result.data(), storage);
  EXPECT_TRUE(b.empty());
  EXPECT_EQ(elements(result), U"a" + valueB);
}

TEST(StringConcatenationStorage, PointerWithRvalueRight) {
  String b = withRoom(20, U'b', 20);
  const std::u32string valueB = elements(b);
  const char32_t* storage = b.data();
  const String result = U"xy" + std::move(b);
  EXPECT_EQ(result.data(), storage);
  EXPECT_TRUE(b.empty());
  EXPECT_EQ(elements(result), U"xy" + valueB);
}

TEST(StringConcatenationStorage, ElementWithRvalueRight) {
  String b = withRoom(20, U'b', 20);
  const std::u32string valueB = elements(b);
  const char32_t* storage = b.data();
  const String result = U'x' + std::move(b);
  EXPECT_EQ(result.data(), storage);
  EXPECT_TRUE(b.empty());
  EXPECT_EQ(elements(result), U"x" + valueB);
}

TEST(StringConcatenationStorage, RvalueLeftWithPointer) {
  String a = withRoom(20, U'a', 20);
  const std::u32string valueA = elements(a);
  const char32_t* storage = a.data();
  const String result = std::move(a) + U"xy";
  EXPECT_EQ(result.data(), storage);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(elements(result), valueA + U"xy");
}

TEST(StringConcatenationStorage, RvalueLeftWithElement) {
  String a = withRoom(20, U'a', 20);
  const std::u32string valueA = elements(a);
  const char32_t* storage = a.data();
  const String result = std::move(a) + U'x';
  EXPECT_EQ(result.data(), storage);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(elements(result), valueA + U"x");
}

TEST(StringConcatenationStorage, TwoRvaluesRightChosenWhenOnlyItHasRoom) {
  String a = withRoom(3, U'a', 1);
  String b = withRoom(10, U'b', 3);
  ASSERT_GT(b.size(), roomOf(a));
  ASSERT_LE(a.size(), roomOf(b));
  const std::u32string valueA = elements(a);
  const std::u32string valueB = elements(b);
  const char32_t* storageB = b.data();
  const String result = std::move(a) + std::move(b);
  EXPECT_EQ(result.data(), storageB);
  EXPECT_TRUE(b.empty());
  EXPECT_EQ(elements(a), valueA);
  EXPECT_EQ(elements(result), valueA + valueB);
}

TEST(StringConcatenationStorage, TwoRvaluesLeftChosenWhenItHasRoom) {
  String a = withRoom(3, U'a', 40);
  String b = withRoom(10, U'b', 40);
  ASSERT_LE(b.size(), roomOf(a));
  ASSERT_LE(a.size(), roomOf(b));
  const std::u32string valueA = elements(a);
  const std::u32string valueB = elements(b);
  const char32_t* storageA = a.data();
  const String result = std::move(a) + std::move(b);
  EXPECT_EQ(result.data(), storageA);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(elements(b), valueB);
  EXPECT_EQ(elements(result), valueA + valueB);
}

TEST(StringConcatenationStorage, TwoRvaluesLeftChosenWhateverTheRightRoom) {
  String a = withRoom(5, U'a', 12);
  String b = withRoom(10, U'b', 0);
  ASSERT_LE(b.size(), roomOf(a));
  const std::u32string valueB = elements(b);
  const char32_t* storageA = a.data();
  const String result = std::move(a) + std::move(b);
  EXPECT_EQ(result.data(), storageA);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(elements(b), valueB);
}

TEST(StringConcatenationStorage, TwoRvaluesSizeEqualToRoomFits) {
  String a = withRoom(3, U'a', 0);
  String b = withRoom(10, U'b', a.size());
  ASSERT_EQ(roomOf(a), 0u);
  ASSERT_EQ(a.size(), roomOf(b));
  const std::u32string valueA = elements(a);
  const char32_t* storageB = b.data();
  const String result = std::move(a) + std::move(b);
  EXPECT_EQ(result.data(), storageB);
  EXPECT_TRUE(b.empty());
  EXPECT_EQ(elements(a), valueA);
}

TEST(StringConcatenationStorage, TwoRvaluesNeitherFitsAppendsToLeft) {
  String a = withRoom(10, U'a', 1);
  String b = withRoom(10, U'b', 1);
  ASSERT_GT(b.size(), roomOf(a));
  ASSERT_GT(a.size(), roomOf(b));
  const std::u32string valueA = elements(a);
  const std::u32string valueB = elements(b);
  const char32_t* storageA = a.data();
  const size_t capacityA = a.capacity();
  const String result = std::move(a) + std::move(b);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(elements(b), valueB);
  EXPECT_GT(result.capacity(), capacityA);
  EXPECT_NE(result.data(), storageA);
  EXPECT_EQ(elements(result), valueA + valueB);
}

TEST(StringConcatenationStorage, ConstFormsAllocateOnce) {
  const String a(30, U'a');
  const String b(30, U'b');
  const size_t before = gAllocations;
  const String result = a + b;
  EXPECT_EQ(gAllocations - before, 1u);
  EXPECT_EQ(result.size(), 60u);
}

// ---- An exception leaves the rvalue operand as it was --------------------

TEST(StringConcatenationFailure, RvalueLeftKeepsValue) {
  String a = withRoom(20, U'a', 0);
  const String b(20, U'b');
  const std::u32string valueA = elements(a);
  EXPECT_TRUE(failsWithoutMemory([&] { (void)(std::move(a) + b); }));
  EXPECT_EQ(elements(a), valueA);
  EXPECT_TRUE(failsWithoutMemory([&] { (void)(std::move(a) + U"xyz"); }));
  EXPECT_TRUE(failsWithoutMemory([&] { (void)(std::move(a) + U'x'); }));
  EXPECT_EQ(elements(a), valueA);
}

TEST(StringConcatenationFailure, RvalueRightKeepsValue) {
  const String a(20, U'a');
  String b = withRoom(20, U'b', 0);
  const std::u32string valueB = elements(b);
  EXPECT_TRUE(failsWithoutMemory([&] { (void)(a + std::move(b)); }));
  EXPECT_TRUE(failsWithoutMemory([&] { (void)(U"xyz" + std::move(b)); }));
  EXPECT_TRUE(failsWithoutMemory([&] { (void)(U'x' + std::move(b)); }));
  EXPECT_EQ(elements(b), valueB);
}

TEST(StringConcatenationFailure, TwoRvaluesKeepValues) {
  String a = withRoom(20, U'a', 0);
  String b = withRoom(20, U'b', 0);
  const std::u32string valueA = elements(a);
  const std::u32string valueB = elements(b);
  EXPECT_TRUE(failsWithoutMemory([&] { (void)(std::move(a) + std::move(b)); }));
  EXPECT_EQ(elements(a), valueA);
  EXPECT_EQ(elements(b), valueB);
}

// ---- Relational operators ------------------------------------------------

TEST(StringRelational, StringWithEmbeddedZeroAgainstPointer) {
  const String a{U'A', 0};
  EXPECT_FALSE(a == kAZero);
  EXPECT_FALSE(kAZero == a);
  EXPECT_TRUE(a != kAZero);
  EXPECT_TRUE(a > kAZero);
  EXPECT_TRUE(kAZero < a);
  EXPECT_TRUE(String{U'A'} == kAZero);
}

TEST(StringRelational, EqualityNeedsSameLengthAndElements) {
  const String ab{U'a', U'b'};
  EXPECT_TRUE(ab == (String{U'a', U'b'}));
  EXPECT_FALSE(ab == (String{U'a'}));
  EXPECT_FALSE(ab == (String{U'a', U'c'}));
  EXPECT_TRUE(ab != (String{U'a', U'b', 0}));
  EXPECT_TRUE(String() == String());
  EXPECT_TRUE(String() == kZero);
}

TEST(StringRelational, IsUnsigned) {
  EXPECT_TRUE(String{0xE000} < String{0x10000});
  EXPECT_TRUE(String{0xFFFFFFFF} > String{0x10FFFF});
  EXPECT_TRUE(String{0xD800} > String{0xD7FF});
  EXPECT_TRUE(String{0xD800} < String{0xE000});
  EXPECT_TRUE(String{0x80000000} > String{0x7FFFFFFF});
}

TEST(StringRelational, NoEquivalence) {
  const String composed{0x00E9};
  const String decomposed{U'e', 0x0301};
  EXPECT_TRUE(composed != decomposed);
  EXPECT_TRUE(composed > decomposed);
}

TEST(StringRelational, ShorterPrefixIsLess) {
  const String a{U'a'};
  const String ab{U'a', U'b'};
  EXPECT_TRUE(a < ab);
  EXPECT_TRUE(a <= ab);
  EXPECT_FALSE(a >= ab);
  EXPECT_TRUE(ab > a);
}

// Every form of every operator against the order given by compare.
TEST(StringRelational, AllFormsFollowCompare) {
  const std::vector<std::u32string> texts = {U"",
                                             U"a",
                                             U"ab",
                                             U"b",
                                             U"\uE000",
                                             U"\U00010000",
                                             U"\U0010FFFF",
                                             std::u32string(1, 0xD800),
                                             std::u32string(1, 0xFFFFFFFF),
                                             std::u32string({U'a', 0xFFFFFFFF}),
                                             U"\uFF61"};
  size_t failures = 0;
  for (const std::u32string& left : texts) {
    for (const std::u32string& right : texts) {
      const String a(left.cbegin(), left.cend());
      const String b(right.cbegin(), right.cend());
      const int order = a.compare(b);
      const char32_t* p = right.c_str();
      const bool ok = (a == b) == (order == 0) && (a != b) == (order != 0) &&
                      (a < b) == (order < 0) && (a > b) == (order > 0) &&
                      (a <= b) == (order <= 0) && (a >= b) == (order >= 0) &&
                      (a == p) == (order == 0) && (p == a) == (order == 0) &&
                      (a != p) == (order != 0) && (p != a) == (order != 0) &&
                      (a < p) == (order < 0) && (p > a) == (order < 0) &&
                      (a > p) == (order > 0) && (p < a) == (order > 0) &&
                      (a <= p) == !(a > p) && (p >= a) == (a <= p) &&
                      (a >= p) == !(a < p) && (p <= a) == (a >= p);
      if (!ok && ++failures <= 10) {
        ADD_FAILURE() << "operators disagree with compare for element counts "
                      << left.size() << " and " << right.size();
      }
    }
  }
  EXPECT_EQ(failures, 0u);
}

// The order is that of code point values, not of UTF-16 units.
TEST(StringRelational, CodePointOrderNotUtf16Order) {
  EXPECT_TRUE(String{0xFF61} < String{0x10000});
}

TEST(StringRelational, OperandsUnchanged) {
  const String a{U'a', U'b'};
  const String b{U'a', U'c'};
  (void)(a < b);
  (void)(a == U"ab");
  EXPECT_EQ(elements(a), U"ab");
  EXPECT_EQ(elements(b), U"ac");
}

}  // namespace
