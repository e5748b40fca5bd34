// The conversions under failing allocations: the global operator new is
// replaced so that the n-th allocation of a call throws, for every n the call
// makes. The decoders must leave the old content in place and nothing may
// leak. The same hook records the sizes of the allocations.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include "StandardCapacity.h"
#include "string/String.h"

namespace {

// The hook's state. Only calls made while it is armed are counted, so that
// the test framework's own allocations do not disturb it.
struct AllocationHook {
  bool armed = false;
  size_t count = 0;       // allocations since arming
  size_t failAt = 0;      // the allocation that throws; 0 for none
  long live = 0;          // blocks allocated through the hook and not freed
  size_t sizes[64] = {};  // sizes of the first allocations since arming
};

AllocationHook gHook;

void* allocate(size_t size) {
  if (gHook.armed) {
    if (gHook.count < std::size(gHook.sizes)) gHook.sizes[gHook.count] = size;
    ++gHook.count;
    if (gHook.count == gHook.failAt) throw std::bad_alloc();
  }
  void* p = std::malloc(size == 0 ? 1 : size);
  if (p == nullptr) throw std::bad_alloc();
  ++gHook.live;
  return p;
}

void release(void* p) noexcept {
  if (p == nullptr) return;
  --gHook.live;
  std::free(p);
}

}  // namespace

void* operator new(size_t size) { return allocate(size); }
void* operator new[](size_t size) { return allocate(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  try {
    return allocate(size);
  } catch (...) {
    return nullptr;
  }
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  try {
    return allocate(size);
  } catch (...) {
    return nullptr;
  }
}
void operator delete(void* p) noexcept { release(p); }
void operator delete[](void* p) noexcept { release(p); }
void operator delete(void* p, size_t) noexcept { release(p); }
void operator delete[](void* p, size_t) noexcept { release(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { release(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { release(p); }

namespace {

using zelvo::unicode::String;

// Runs the call with the hook armed; returns the sizes of its allocations.
std::vector<size_t> allocationsOf(const std::function<void()>& call) {
  gHook = AllocationHook{false, 0, 0, gHook.live, {}};
  gHook.armed = true;
  call();
  gHook.armed = false;
  return std::vector<size_t>(
      gHook.sizes, gHook.sizes + std::min(gHook.count, std::size(gHook.sizes)));
}

// Runs the call with its n-th allocation failing; true if bad_alloc left it.
bool failsAt(size_t n, const std::function<void()>& call) {
  gHook.count = 0;
  gHook.failAt = n;
  gHook.armed = true;
  bool threw = false;
  try {
    call();
  } catch (const std::bad_alloc&) {
    threw = true;
  }
  gHook.armed = false;
  gHook.failAt = 0;
  return threw;
}

const std::u32string kOldContent = U"the old content, long enough for the heap";

// Decodes into a String holding the old content with every allocation of the
// call failing in turn: each must throw, keep the content and the storage,
// and free whatever it had taken. A result short enough for the string's own
// storage needs no allocation at all, and then there is nothing to fail.
template <typename Input>
void expectEveryFailureKeepsTheOldContent(
    const Input& input, void (String::*decode)(const Input&)) {
  String probe(kOldContent);
  const size_t calls = allocationsOf([&] { (probe.*decode)(input); }).size();
  for (size_t n = 1; n <= calls; ++n) {
    String s(kOldContent);
    const char32_t* storage = s.data();
    const size_t capacity = s.capacity();
    const long liveBefore = gHook.live;
    EXPECT_TRUE(failsAt(n, [&] { (s.*decode)(input); }))
        << "allocation " << n << " of " << calls;
    EXPECT_EQ(gHook.live, liveBefore) << "allocation " << n << " of " << calls;
    EXPECT_TRUE(s.toUTF32String() == kOldContent) << "allocation " << n;
    EXPECT_EQ(s.data(), storage) << "allocation " << n;
    EXPECT_EQ(s.capacity(), capacity) << "allocation " << n;
  }
  // One more than the call makes: nothing fails, the result is whole, and
  // once it is gone nothing is left behind.
  const long liveBefore = gHook.live;
  {
    String s(kOldContent);
    EXPECT_FALSE(failsAt(calls + 1, [&] { (s.*decode)(input); }));
    EXPECT_TRUE(s.toUTF32String() == probe.toUTF32String());
  }
  EXPECT_EQ(gHook.live, liveBefore);
}

// Runs a const encoding with every allocation failing in turn: each must
// throw and free whatever it had taken.
void expectEveryFailureLeaksNothing(const std::function<void()>& call) {
  const size_t calls = allocationsOf(call).size();
  ASSERT_GT(calls, 0u);
  for (size_t n = 1; n <= calls; ++n) {
    const long liveBefore = gHook.live;
    EXPECT_TRUE(failsAt(n, call)) << "allocation " << n << " of " << calls;
    EXPECT_EQ(gHook.live, liveBefore) << "allocation " << n << " of " << calls;
  }
}

std::string mixedUtf8(size_t repeats) {
  std::string out;
  for (size_t i = 0; i < repeats; ++i) {
    out += "abc \xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\x80\xC3";
  }
  return out;
}

// Well-formed text of several scripts, emoji among them: long stretches of
// it go through the block kernels rather than step by step.
std::u32string wellFormedText(size_t repeats) {
  std::u32string out;
  for (size_t i = 0; i < repeats; ++i) {
    out +=
        U"Tea \u00E9t\u00E9 \u0442\u0435\u043A\u0441\u0442 "
        U"\u4E2D\u6587 \u0BA4\u0BAE\u0BBF\u0BB4\u0BCD \U0001F600\U0001F389 ";
  }
  return out;
}

std::string wellFormedUtf8(size_t repeats) {
  return String(wellFormedText(repeats)).toUTF8String();
}

std::u16string wellFormedUtf16(size_t repeats) {
  return String(wellFormedText(repeats)).toUTF16String();
}

std::u16string mixedUtf16(size_t repeats) {
  std::u16string out;
  for (size_t i = 0; i < repeats; ++i) {
    out += u"abc \u00E9\u20AC\U0001F600";
    out.push_back(static_cast<char16_t>(0xDC00));
  }
  return out;
}

// ---------------------------------------------------------------------------
// The strong guarantee of the decoders.

TEST(Utf8DecodingUnderFailure, EmptyInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(std::string(), &String::fromUTF8String);
}

TEST(Utf8DecodingUnderFailure, AsciiInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(std::string(1000, 'a'),
                                       &String::fromUTF8String);
}

TEST(Utf8DecodingUnderFailure, MixedInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(mixedUtf8(40), &String::fromUTF8String);
}

TEST(Utf8DecodingUnderFailure, WellFormedInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(wellFormedUtf8(40),
                                       &String::fromUTF8String);
}

TEST(Utf8DecodingUnderFailure, ShortInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(std::string("\xC3\xA9z"),
                                       &String::fromUTF8String);
}

TEST(Utf8DecodingUnderFailure, NativeInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(mixedUtf8(40),
                                       &String::fromNativeString);
}

TEST(Utf8DecodingUnderFailure, ConstructorLeaksNothing) {
  const std::string input = mixedUtf8(40);
  expectEveryFailureLeaksNothing([&] { String s(input); });
}

TEST(Utf16DecodingUnderFailure, EmptyInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(std::u16string(),
                                       &String::fromUTF16String);
}

TEST(Utf16DecodingUnderFailure, BmpInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(std::u16string(1000, u'\u4E2D'),
                                       &String::fromUTF16String);
}

TEST(Utf16DecodingUnderFailure, MixedInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(mixedUtf16(40),
                                       &String::fromUTF16String);
}

TEST(Utf16DecodingUnderFailure, WellFormedInputKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(wellFormedUtf16(40),
                                       &String::fromUTF16String);
}

TEST(Utf16DecodingUnderFailure, ConstructorLeaksNothing) {
  const std::u16string input = mixedUtf16(40);
  expectEveryFailureLeaksNothing([&] { String s(input); });
}

TEST(Utf32DecodingUnderFailure, FromUtf32KeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(std::u32string(500, U'x'),
                                       &String::fromUTF32String);
}

TEST(Utf32DecodingUnderFailure, FromWStringKeepsTheOldContent) {
  expectEveryFailureKeepsTheOldContent(std::wstring(500, L'x'),
                                       &String::fromWString);
}

// ---------------------------------------------------------------------------
// The encoders release their partial results.

TEST(EncodingUnderFailure, ToUtf8LeaksNothing) {
  String s;
  s.fromUTF8String(mixedUtf8(100));
  expectEveryFailureLeaksNothing([&] { (void)s.toUTF8String(); });
}

TEST(EncodingUnderFailure, WellFormedToUtf8LeaksNothing) {
  const String s(wellFormedText(100));
  expectEveryFailureLeaksNothing([&] { (void)s.toUTF8String(); });
}

TEST(EncodingUnderFailure, WellFormedToUtf16LeaksNothing) {
  const String s(wellFormedText(100));
  expectEveryFailureLeaksNothing([&] { (void)s.toUTF16String(); });
}

TEST(EncodingUnderFailure, ToUtf16LeaksNothing) {
  String s;
  s.fromUTF8String(mixedUtf8(100));
  expectEveryFailureLeaksNothing([&] { (void)s.toUTF16String(); });
}

TEST(EncodingUnderFailure, ToWStringLeaksNothing) {
  const String s(std::u32string(500, U'x'));
  expectEveryFailureLeaksNothing([&] { (void)s.toWString(); });
}

// ---------------------------------------------------------------------------
// The allocations of the conversions: each makes its result and nothing
// else.

// The decoders count the code points first and write them straight into a
// result of exactly that size: one allocation, which fits, and no staging.
// What fits is the standard library's to say: the allocation is the one it
// makes for a string of that size, and the capacity the one that reserving
// for the input, filling and shrinking to fit leave (libc++ rounds both up).
std::vector<size_t> fittedAllocation(size_t size) {
  return allocationsOf([&] { std::u32string fitted(size, U'x'); });
}

TEST(ConversionAllocations, Utf8DecoderAllocatesOnlyTheFittedResult) {
  const std::string input = mixedUtf8(100) + wellFormedUtf8(40);
  String s;
  const std::vector<size_t> sizes =
      allocationsOf([&] { s.fromUTF8String(input); });
  EXPECT_EQ(sizes, fittedAllocation(s.size()));
  EXPECT_EQ(s.capacity(), fittedCapacity(input.size(), s.size()));
}

TEST(ConversionAllocations, Utf16DecoderAllocatesOnlyTheFittedResult) {
  const std::u16string input = mixedUtf16(100) + wellFormedUtf16(40);
  String s;
  const std::vector<size_t> sizes =
      allocationsOf([&] { s.fromUTF16String(input); });
  EXPECT_EQ(sizes, fittedAllocation(s.size()));
  EXPECT_EQ(s.capacity(), fittedCapacity(input.size(), s.size()));
}

// Every small size and every rounding class of the standard library, short
// strings included: the decoded capacity is the one shrink_to_fit gives.
TEST(ConversionAllocations, DecodersFitTheirResultAtEverySize) {
  for (size_t n = 0; n <= 70; ++n) {
    const String fromUtf8(std::string(n, 'a'));
    const String fromUtf16(std::u16string(n, u'a'));
    EXPECT_EQ(fromUtf8.capacity(), fittedCapacity(n, n)) << n;
    EXPECT_EQ(fromUtf16.capacity(), fittedCapacity(n, n)) << n;
  }
}

// The encoders stage on the stack: what they allocate is their result,
// which alone is left when they return.
TEST(ConversionAllocations, EncodersLeaveOnlyTheirResult) {
  const String s(wellFormedText(300) + std::u32string(5000, U'\U0001F600'));
  std::string utf8;
  std::u16string utf16;
  long before = gHook.live;
  (void)allocationsOf([&] { utf8 = s.toUTF8String(); });
  EXPECT_EQ(gHook.live, before + 1);
  before = gHook.live;
  (void)allocationsOf([&] { utf16 = s.toUTF16String(); });
  EXPECT_EQ(gHook.live, before + 1);
}

TEST(ConversionAllocations, Utf8EncoderReservesNothing) {
  // The result grows through the appends of its chunks: the first
  // allocation is far below the 40000 bytes of the result.
  const String s(std::u32string(20000, U'\u00E9'));
  const std::vector<size_t> sizes =
      allocationsOf([&] { (void)s.toUTF8String(); });
  ASSERT_GE(sizes.size(), 2u);
  EXPECT_LT(sizes[0], 20000u);
}

TEST(ConversionAllocations, Utf16EncoderReservesTheElementCount) {
  const String s(std::u32string(1000, U'\U0001F600'));
  const std::vector<size_t> sizes =
      allocationsOf([&] { (void)s.toUTF16String(); });
  ASSERT_GE(sizes.size(), 1u);
  EXPECT_GE(sizes[0], 1000 * sizeof(char16_t));
}

TEST(ConversionAllocations, EncodersOfAnEmptyStringAllocateNothing) {
  const String s;
  EXPECT_TRUE(allocationsOf([&] { (void)s.toUTF8String(); }).empty());
  EXPECT_TRUE(allocationsOf([&] { (void)s.toUTF16String(); }).empty());
}

}  // namespace
