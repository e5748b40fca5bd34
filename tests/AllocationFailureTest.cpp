// Makes every allocation of a call fail in turn, through a global operator
// new replaced in this program, and checks that the call throws
// std::bad_alloc, leaves its argument and its object as the library
// promises, and leaks nothing. Only allocations inside the call are counted:
// the tables are built at load. fromUTF8String and fromUTF16String have their
// own test of this kind.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include "Unicode.h"

using namespace zelvo::unicode;

// ---------------------------------------------------------------------------
// The counting allocator. Each block carries a header with the window it was
// allocated in, so that blocks from before the call (the object's old
// storage) do not count when the call frees them.
namespace {

struct Window {
  bool open = false;
  uint32_t id = 0;
  long count = 0;    // allocations asked for inside the window
  long failAt = -1;  // the one to refuse, or -1
  bool refused = false;
  bool refusedNothrow = false;  // the refused one was a nothrow request
  long live = 0;                // blocks of this window not yet freed
};
Window gWindow;

constexpr size_t kHeader = 32;

struct Header {
  void* raw;
  uint32_t window;
};

void* allocate(size_t size, size_t alignment, bool nothrow) {
  if (gWindow.open) {
    if (gWindow.count++ == gWindow.failAt) {
      gWindow.refused = true;
      gWindow.refusedNothrow = nothrow;
      if (nothrow) return nullptr;
      throw std::bad_alloc();
    }
  }
  size_t offset = kHeader;
  if (alignment > offset) offset = alignment;
  void* raw = std::malloc(size + offset + alignment);
  if (raw == nullptr) {
    if (nothrow) return nullptr;
    throw std::bad_alloc();
  }
  uintptr_t user = reinterpret_cast<uintptr_t>(raw) + offset;
  if (alignment > 1) user = (user + alignment - 1) / alignment * alignment;
  Header* header = reinterpret_cast<Header*>(user - sizeof(Header));
  header->raw = raw;
  header->window = gWindow.open ? gWindow.id : 0;
  if (gWindow.open) ++gWindow.live;
  return reinterpret_cast<void*>(user);
}

void release(void* p) noexcept {
  if (p == nullptr) return;
  Header* header =
      reinterpret_cast<Header*>(static_cast<char*>(p) - sizeof(Header));
  if (header->window != 0 && header->window == gWindow.id) --gWindow.live;
  std::free(header->raw);
}

}  // namespace

void* operator new(size_t n) { return allocate(n, 1, false); }
void* operator new[](size_t n) { return allocate(n, 1, false); }
void* operator new(size_t n, const std::nothrow_t&) noexcept {
  return allocate(n, 1, true);
}
void* operator new[](size_t n, const std::nothrow_t&) noexcept {
  return allocate(n, 1, true);
}
void* operator new(size_t n, std::align_val_t a) {
  return allocate(n, static_cast<size_t>(a), false);
}
void* operator new[](size_t n, std::align_val_t a) {
  return allocate(n, static_cast<size_t>(a), false);
}
void* operator new(size_t n, std::align_val_t a,
                   const std::nothrow_t&) noexcept {
  return allocate(n, static_cast<size_t>(a), true);
}
void* operator new[](size_t n, std::align_val_t a,
                     const std::nothrow_t&) noexcept {
  return allocate(n, static_cast<size_t>(a), true);
}
void operator delete(void* p) noexcept { release(p); }
void operator delete[](void* p) noexcept { release(p); }
void operator delete(void* p, size_t) noexcept { release(p); }
void operator delete[](void* p, size_t) noexcept { release(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { release(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { release(p); }
void operator delete(void* p, std::align_val_t) noexcept { release(p); }
void operator delete[](void* p, std::align_val_t) noexcept { release(p); }
void operator delete(void* p, size_t, std::align_val_t) noexcept { release(p); }
void operator delete[](void* p, size_t, std::align_val_t) noexcept {
  release(p);
}
void operator delete(void* p, std::align_val_t,
                     const std::nothrow_t&) noexcept {
  release(p);
}
void operator delete[](void* p, std::align_val_t,
                       const std::nothrow_t&) noexcept {
  release(p);
}

// ---------------------------------------------------------------------------
// The harness.
namespace {

struct Outcome {
  bool threw = false;
  bool refused = false;
  bool refusedNothrow = false;
  long allocations = 0;
  long live = 0;
};

// Runs the call with allocation number failAt refused (-1: none).
Outcome attempt(long failAt, const std::function<void()>& call) {
  gWindow.id += 1;
  gWindow.count = 0;
  gWindow.failAt = failAt;
  gWindow.refused = gWindow.refusedNothrow = false;
  gWindow.live = 0;
  gWindow.open = true;
  Outcome outcome;
  try {
    call();
  } catch (const std::bad_alloc&) {
    outcome.threw = true;
  }
  gWindow.open = false;
  outcome.refused = gWindow.refused;
  outcome.refusedNothrow = gWindow.refusedNothrow;
  outcome.allocations = gWindow.count;
  outcome.live = gWindow.live;
  return outcome;
}

long allocationsOf(const std::function<void()>& call) {
  return attempt(-1, call).allocations;
}

// A call whose result can be compared: a value it returns, or the object it
// changes.
template <typename State, typename Result>
struct Run {
  State state;
  Result result;
  bool operator==(const Run& o) const {
    return state == o.state && result == o.result;
  }
};

struct Nothing {
  bool operator==(const Nothing&) const { return true; }
};

// For every allocation that call makes on a fresh state from make(): with
// that allocation refused, the call throws std::bad_alloc, the state is as
// it was and nothing of the call is left allocated. A refused nothrow
// request instead lets the call go on with less memory, to the same result.
// The call must allocate at least once unless mustAllocate says otherwise.
template <typename State, typename Call>
void expectEveryFailureLeavesStateAsItWas(const std::function<State()>& make,
                                          Call call, bool mustAllocate = true) {
  using Result = decltype(call(std::declval<State&>()));
  using Stored =
      std::conditional_t<std::is_void<Result>::value, Nothing, Result>;
  auto runOnce = [&](State& state, Stored& result) {
    if constexpr (std::is_void<Result>::value) {
      call(state);
      (void)result;
    } else {
      result = call(state);
    }
  };

  Run<State, Stored> expected{make(), Stored()};
  const long total =
      allocationsOf([&] { runOnce(expected.state, expected.result); });
  if (mustAllocate) {
    EXPECT_GT(total, 0) << "the call was expected to allocate";
  }
  for (long i = 0; i < total; ++i) {
    Run<State, Stored> run{make(), Stored()};
    const State before = run.state;
    const Outcome outcome = attempt(i, [&] { runOnce(run.state, run.result); });
    ASSERT_TRUE(outcome.refused) << "allocation " << i << " of " << total;
    if (outcome.refusedNothrow) {
      EXPECT_FALSE(outcome.threw) << "nothrow allocation " << i;
      EXPECT_TRUE(run == expected) << "nothrow allocation " << i;
      continue;
    }
    EXPECT_TRUE(outcome.threw) << "allocation " << i << " of " << total;
    EXPECT_TRUE(run.state == before) << "allocation " << i << " of " << total;
    EXPECT_EQ(outcome.live, 0)
        << "leak with allocation " << i << " of " << total;
  }
}

// The same for a call that must not throw at all: with any allocation
// refused it still returns, to a state equal to the one it started from or
// to the one it would have reached.
template <typename State, typename Call>
void expectEveryFailureIsAbsorbed(const std::function<State()>& make,
                                  Call call) {
  State expected = make();
  const long total = allocationsOf([&] { call(expected); });
  EXPECT_GT(total, 0) << "the call was expected to allocate";
  for (long i = 0; i < total; ++i) {
    State state = make();
    const State before = state;
    const Outcome outcome = attempt(i, [&] { call(state); });
    EXPECT_FALSE(outcome.threw) << "allocation " << i;
    EXPECT_TRUE(state == before || state == expected) << "allocation " << i;
  }
}

long allocationsWhile(const std::function<void()>& call) {
  const Outcome outcome = attempt(-1, call);
  EXPECT_FALSE(outcome.threw);
  return outcome.allocations;
}

// Content long enough to live outside the object, with capacity equal to
// size, so that any growth must allocate. The held string's standard library
// may round the capacity up (libc++ does); the rounding is filled with '.'.
String heapString(std::initializer_list<char32_t> list) {
  String s(list);
  s.shrink_to_fit();
  while (s.size() < s.capacity()) s.push_back(U'.');
  return s;
}

String sample() {
  return heapString({0x41, 0x42, 0x43, 0x44, 0x45, 0x46, 0x47, 0x48});
}

// Text that takes every path of normalization and case mapping: marks out
// of order (the stable sort), decompositions of both kinds, Hangul, a
// Maybe code point, final sigma and the Turkish dotless i.
String richText() {
  return heapString({0x0041, 0x0307, 0x0323, 0x00C5, 0xAC01, 0x1100,
                     0x1161, 0x11A8, 0xFB03, 0x00BD, 0x0391, 0x03A3,
                     0x0020, 0x0049, 0x0307, 0x0049, 0x00DF, 0x0301,
                     0x0315, 0x0345, 0x0065, 0x0301, 0xD800, 0x110000});
}

struct StringPair {
  String a, b;
  bool operator==(const StringPair& o) const { return a == o.a && b == o.b; }
};

std::array<char32_t, 128> tableOf(char32_t first) {
  std::array<char32_t, 128> t;
  for (int i = 0; i < 128; ++i) t[i] = first + i;
  t[5] = 0xFFFD;
  return t;
}

// A page whose name is too long for the short-string buffer, so that
// copying the name allocates.
CodePage longNamedPage() {
  return CodePage("a page with a name longer than any short buffer",
                  tableOf(0x0400));
}

bool samePage(const CodePage& a, const CodePage& b) {
  std::string all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  return a.getName() == b.getName() && a.toUnicode(all) == b.toUnicode(all) &&
         a.fromUnicode(a.toUnicode(all)) == b.fromUnicode(b.toUnicode(all));
}

}  // namespace

// ---------------------------------------------------------------------------
TEST(AllocationFailureTest, ReplacedOperatorNewSeesTheCallsAllocations) {
  // Without this the other tests would pass without testing anything: a
  // tool that takes over operator new (valgrind does) makes this fail.
  EXPECT_GT(allocationsWhile([] {
              String s = sample();
              (void)s;
            }),
            0);
  const Outcome outcome = attempt(0, [] {
    String s = sample();
    (void)s;
  });
  EXPECT_TRUE(outcome.threw);
  EXPECT_EQ(outcome.live, 0);
}

TEST(AllocationFailureTest, HarnessSeesALeftOverBlock) {
  int* kept = nullptr;
  const Outcome outcome = attempt(1, [&] {
    kept = new int(7);
    String s = sample();
  });
  EXPECT_TRUE(outcome.threw);
  EXPECT_EQ(outcome.allocations, 2);
  EXPECT_EQ(outcome.live, 1);
  delete kept;
}

TEST(AllocationFailureTest, HarnessSeesAllocationsMadeInsideTheLibrary) {
  const String text = richText();
  EXPECT_GE(allocationsWhile([&] { (void)toNFD(text); }), 1);
}

// Constructors: a constructor that fails leaves no object and nothing
// allocated.
TEST(AllocationFailureTest, ConstructorsReleaseWhatTheyBuiltWhenTheyFail) {
  const String source = sample();
  const std::u32string utf32(40, U'x');
  const std::wstring wide(40, L'y');
  const std::u32string pointer(40, U'z');
  const std::vector<std::function<void(String&)>> constructions = {
      [&](String& out) { out = String(source); },
      [&](String& out) { out = String(source, 1, 5); },
      [&](String& out) { out = String(pointer.c_str()); },
      [&](String& out) { out = String(size_t(50), U'q'); },
      [&](String& out) { out = String(utf32.cbegin(), utf32.cend()); },
      [&](String& out) {
        out = String({0x61, 0x62, 0x63, 0x64, 0x65, 0x66});
      },
      [&](String& out) { out = String(utf32); },
      [&](String& out) { out = String(wide); }};
  for (const auto& construct : constructions)
    expectEveryFailureLeavesStateAsItWas<String>([] { return String(); },
                                                 construct);
}

TEST(AllocationFailureTest, AssignmentsLeaveTheObjectAsItWas) {
  // Each assigns more elements than the storage of sample() holds, whatever
  // capacity the standard library gave it, so that each must allocate.
  const String source = heapString(
      {0x61, 0x62, 0x63, 0x64, 0x65, 0x66, 0x67, 0x68, 0x69, 0x6A, 0x6B, 0x6C});
  const std::u32string pointer(20, U'p');
  const std::vector<std::function<void(String&)>> assignments = {
      [&](String& s) { s = source; },
      [&](String& s) { s.assign(source); },
      [&](String& s) { s.assign(source, 1, String::npos); },
      [&](String& s) { s.assign(size_t(30), U'r'); },
      [&](String& s) { s.assign(pointer.c_str()); },
      [&](String& s) { s = pointer.c_str(); },
      [&](String& s) { s.assign(source.cbegin(), source.cend()); },
      [&](String& s) {
        s.assign({0x61, 0x62, 0x63, 0x64, 0x65, 0x66, 0x67, 0x68, 0x69, 0x6A,
                  0x6B, 0x6C});
      },
      [&](String& s) {
        s = {0x61, 0x62, 0x63, 0x64, 0x65, 0x66,
             0x67, 0x68, 0x69, 0x6A, 0x6B, 0x6C};
      }};
  for (const auto& assign : assignments)
    expectEveryFailureLeavesStateAsItWas<String>(sample, assign);
}

TEST(AllocationFailureTest, CapacityChangesLeaveTheObjectAsItWas) {
  expectEveryFailureLeavesStateAsItWas<String>(sample,
                                               [](String& s) { s.resize(40); });
  expectEveryFailureLeavesStateAsItWas<String>(
      sample, [](String& s) { s.resize(40, U'x'); });
  expectEveryFailureLeavesStateAsItWas<String>(
      sample, [](String& s) { s.reserve(100); });
}

TEST(AllocationFailureTest, ShrinkToFitNeverThrows) {
  expectEveryFailureIsAbsorbed<String>(
      [] {
        String s = sample();
        s.reserve(200);
        return s;
      },
      [](String& s) { s.shrink_to_fit(); });
}

TEST(AllocationFailureTest, AppendingLeavesTheObjectAsItWas) {
  const String other = sample();
  const std::u32string pointer(9, U'p');
  const std::vector<std::function<void(String&)>> edits = {
      [&](String& s) { s.append(other); },
      [&](String& s) { s.append(other, 2, 5); },
      [&](String& s) { s.append(pointer.c_str()); },
      [&](String& s) { s.append(size_t(7), U'c'); },
      [&](String& s) { s.append(other.cbegin(), other.cend()); },
      [&](String& s) {
        s.append({0x31, 0x32, 0x33});
      },
      [&](String& s) { s += other; },
      [&](String& s) { s += pointer.c_str(); },
      [&](String& s) { s += U'c'; },
      [&](String& s) {
        s += {0x31, 0x32};
      },
      [&](String& s) { s.push_back(0xD800); },
      [&](String& s) { s.append(s); }};
  for (const auto& edit : edits)
    expectEveryFailureLeavesStateAsItWas<String>(sample, edit);
}

TEST(AllocationFailureTest, InsertingLeavesTheObjectAsItWas) {
  const String other = sample();
  const std::u32string pointer(9, U'p');
  const std::vector<std::function<void(String&)>> edits = {
      [&](String& s) { s.insert(2, other); },
      [&](String& s) { s.insert(2, other, 1, 4); },
      [&](String& s) { s.insert(2, pointer.c_str()); },
      [&](String& s) { s.insert(2, 6, U'c'); },
      [&](String& s) { s.insert(s.cbegin() + 1, U'c'); },
      [&](String& s) { s.insert(s.cbegin() + 1, 6, U'c'); },
      [&](String& s) {
        s.insert(s.cbegin() + 1, other.cbegin(), other.cend());
      },
      [&](String& s) {
        s.insert(s.cbegin() + 1, {0x31, 0x32});
      },
      [&](String& s) { s.insert(1, s); }};
  for (const auto& edit : edits)
    expectEveryFailureLeavesStateAsItWas<String>(sample, edit);
}

TEST(AllocationFailureTest, ReplacingLeavesTheObjectAsItWas) {
  String other = heapString({0x61, 0x62, 0x63, 0x64, 0x65, 0x66, 0x67, 0x68,
                             0x69, 0x6A, 0x6B, 0x6C, 0x6D, 0x6E});
  const std::u32string pointer(20, U'p');
  const std::vector<std::function<void(String&)>> edits = {
      [&](String& s) { s.replace(1, 2, other); },
      [&](String& s) { s.replace(1, 2, other, 1, 12); },
      [&](String& s) { s.replace(1, 2, pointer.c_str()); },
      [&](String& s) { s.replace(1, 2, 20, U'c'); },
      [&](String& s) { s.replace(s.cbegin(), s.cbegin() + 2, other); },
      [&](String& s) {
        s.replace(s.cbegin(), s.cbegin() + 2, pointer.c_str());
      },
      [&](String& s) { s.replace(s.cbegin(), s.cbegin() + 2, 20, U'c'); },
      [&](String& s) { s.replace(1, 1, s); }};
  for (const auto& edit : edits)
    expectEveryFailureLeavesStateAsItWas<String>(sample, edit);
}

TEST(AllocationFailureTest,
     RangeReplaceLeavesOnlyTheOverwrittenPlacesWhenItFails) {
  // The range forms overwrite the target while they walk it, and only then
  // insert the rest of a longer source; a failure of that insertion leaves
  // the overwritten places as they were written, and nothing leaked.
  const String other = heapString({0x61, 0x62, 0x63, 0x64, 0x65, 0x66, 0x67,
                                   0x68, 0x69, 0x6A, 0x6B, 0x6C, 0x6D, 0x6E});
  const auto overwritten = [](String s, const String& source, size_t count) {
    for (size_t i = 0; i < count; ++i) s[i] = source[i];
    return s;
  };
  const String list = {0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39};
  String mutableSource = other;
  const std::vector<std::pair<std::function<void(String&)>, String>> edits = {
      {[&](String& s) {
         s.replace(s.cbegin(), s.cbegin() + 2, other.cbegin(), other.cend());
       },
       overwritten(sample(), other, 2)},
      {[&](String& s) {
         s.replace(s.cbegin(), s.cbegin() + 2, mutableSource.begin(),
                   mutableSource.end());
       },
       overwritten(sample(), other, 2)},
      {[&](String& s) {
         s.replace(s.cbegin(), s.cbegin() + 1,
                   {0x31, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39});
       },
       overwritten(sample(), list, 1)}};
  for (const auto& edit : edits) {
    String expected = sample();
    const long total = allocationsOf([&] { edit.first(expected); });
    EXPECT_GT(total, 0);
    for (long i = 0; i < total; ++i) {
      String s = sample();
      const Outcome outcome = attempt(i, [&] { edit.first(s); });
      EXPECT_TRUE(outcome.threw) << "allocation " << i;
      EXPECT_TRUE(s == edit.second) << "allocation " << i;
      EXPECT_EQ(outcome.live, 0) << "allocation " << i;
    }
  }
}

TEST(AllocationFailureTest, SubstrLeaksNothing) {
  expectEveryFailureLeavesStateAsItWas<String>(
      sample, [](String& s) { return s.substr(1, 6); });
}

TEST(AllocationFailureTest, ConcatenationOfConstOperandsLeaksNothing) {
  const std::u32string pointer(9, U'p');
  const std::vector<std::function<String(StringPair&)>> sums = {
      [](StringPair& p) { return p.a + p.b; },
      [&](StringPair& p) { return pointer.c_str() + p.b; },
      [](StringPair& p) { return U'c' + p.b; },
      [&](StringPair& p) { return p.a + pointer.c_str(); },
      [](StringPair& p) { return p.a + U'c'; }};
  for (const auto& sum : sums)
    expectEveryFailureLeavesStateAsItWas<StringPair>(
        [] {
          return StringPair{sample(), sample()};
        },
        sum);
}

TEST(AllocationFailureTest,
     ConcatenationDoesNotEmptyItsRvalueOperandWhenItFails) {
  const std::u32string pointer(9, U'p');
  const std::vector<std::function<String(StringPair&)>> sums = {
      [](StringPair& p) { return std::move(p.a) + p.b; },
      [](StringPair& p) { return p.a + std::move(p.b); },
      [](StringPair& p) { return std::move(p.a) + std::move(p.b); },
      [&](StringPair& p) { return pointer.c_str() + std::move(p.b); },
      [](StringPair& p) { return U'c' + std::move(p.b); },
      [&](StringPair& p) { return std::move(p.a) + pointer.c_str(); },
      [](StringPair& p) { return std::move(p.a) + U'c'; }};
  for (const auto& sum : sums)
    expectEveryFailureLeavesStateAsItWas<StringPair>(
        [] {
          return StringPair{sample(), sample()};
        },
        sum);
}

TEST(AllocationFailureTest, OutputConversionsLeakNothing) {
  const auto make = [] {
    return heapString({0x41, 0xE9, 0x20AC, 0x1F600, 0xD800, 0x110000, 0x42,
                       0x43, 0x44, 0x45, 0x46, 0x47, 0x48, 0x49, 0x4A, 0x4B});
  };
  expectEveryFailureLeavesStateAsItWas<String>(
      make, [](String& s) { return s.toUTF8String(); });
  expectEveryFailureLeavesStateAsItWas<String>(
      make, [](String& s) { return s.toNativeString(); });
  expectEveryFailureLeavesStateAsItWas<String>(
      make, [](String& s) { return s.toUTF16String(); });
  expectEveryFailureLeavesStateAsItWas<String>(
      make, [](String& s) { return s.toWString(); });
}

TEST(AllocationFailureTest, WideAndUtf32InputLeaveTheObjectAsItWas) {
  const std::wstring wide(30, L'w');
  const std::u32string utf32(30, U'u');
  expectEveryFailureLeavesStateAsItWas<String>(
      sample, [&](String& s) { s.fromWString(wide); });
  expectEveryFailureLeavesStateAsItWas<String>(
      sample, [&](String& s) { s.fromUTF32String(utf32); });
}

TEST(AllocationFailureTest, Utf32RvalueConstructorAllocatesNothing) {
  std::u32string storage(100, U'x');
  String taken;
  EXPECT_EQ(allocationsWhile([&] { taken = String(std::move(storage)); }), 0);
  EXPECT_EQ(taken.size(), 100u);
}

TEST(AllocationFailureTest,
     SearchComparisonAndBadCodePointMembersAllocateNothing) {
  String s = richText();
  const String needle = heapString({0x0049, 0x0307, 0x0049, 0x00DF, 0x0301});
  const std::u32string pointer = U"\u0049\u0307";
  EXPECT_EQ(allocationsWhile([&] {
              volatile size_t sink = 0;
              sink = sink + s.find(needle) + s.rfind(needle) +
                     s.find(pointer.c_str()) + s.find(U'A') +
                     s.find_first_of(needle) + s.find_last_of(needle) +
                     s.find_first_not_of(needle) + s.find_last_not_of(needle) +
                     s.rfind(U'I') + s.find_first_of(pointer.c_str(), 2);
              sink = sink + static_cast<size_t>(s.compare(needle) +
                                                s.compare(1, 3, needle) +
                                                s.compare(1, 3, needle, 1, 2) +
                                                s.compare(pointer.c_str()));
              sink = sink + (s == needle) + (s < needle) +
                     (pointer.c_str() >= s) + (s != pointer.c_str());
              sink = sink + s.hasBadCodePoints();
              String copy;  // empty: no storage
              (void)copy;
            }),
            0);
  EXPECT_EQ(allocationsWhile([&] {
              s.replaceBadCodePoints();
              s.stripReplacementCodePoints();
              s.stripBadCodePoints();
              s.erase(1, 2);
              s.erase(s.cbegin());
              s.erase(s.cbegin(), s.cbegin() + 1);
              s.erase(10);
              s.pop_back();
              s.clear();
            }),
            0);
}

// ---------------------------------------------------------------------------
// The free functions: each returns a new String and leaves its argument
// alone, also when it fails.
TEST(AllocationFailureTest, NormalFormsLeaveTheArgumentAloneWhenTheyFail) {
  const std::vector<std::function<String(String&)>> forms = {
      [](String& s) { return toNFD(s); }, [](String& s) { return toNFC(s); },
      [](String& s) { return toNFKD(s); }, [](String& s) { return toNFKC(s); }};
  for (const auto& form : forms) {
    expectEveryFailureLeavesStateAsItWas<String>(richText, form);
    // Already decomposed: toNFC takes the copy instead of toNFD.
    expectEveryFailureLeavesStateAsItWas<String>(
        [] {
          return heapString({0x61, 0x0323, 0x0307, 0x1100, 0x1161, 0x62});
        },
        form);
  }
}

TEST(AllocationFailureTest, ComposedQuickChecksOnTheirMaybePathLeakNothing) {
  // The piece of A and its marks is composed apart, into a composed form
  // (U+1EA0 and six marks) too long for the short string of libstdc++ or
  // libc++.
  const auto maybe = [] {
    return heapString({0x41, 0x323, 0x301, 0x304, 0x308, 0x30C, 0x30A, 0x306,
                       0x1100, 0x1161, 0x42});
  };
  expectEveryFailureLeavesStateAsItWas<String>(
      maybe, [](String& s) { return isNFC(s); });
  expectEveryFailureLeavesStateAsItWas<String>(
      maybe, [](String& s) { return isNFKC(s); });
}

TEST(AllocationFailureTest, QuickChecksWithoutMaybeAllocateNothing) {
  const String decomposed = heapString({0x61, 0x0323, 0x0307, 0x1100, 0x62});
  const String plain = heapString({0x41, 0xE9, 0xAC00, 0x20AC, 0x0345});
  EXPECT_EQ(allocationsWhile([&] {
              volatile bool sink = isNFD(decomposed) && isNFKD(decomposed) &&
                                   isNFD(plain) && isNFKD(plain) &&
                                   isNFC(plain) && isNFKC(plain);
              (void)sink;
            }),
            0);
}

TEST(AllocationFailureTest,
     ComposedChecksWithoutMaybeAllocateNothingWhereTextMayChange) {
  // Pieces that composition would change, or decompose and compose again,
  // but no Maybe code point to make them count.
  const String mayChange = heapString(
      {0x61, 0x0625, 0x0650, 0x0651, 0x62, 0xAC00, 0x11A7, 0xE9, 0x0315, 0x20});
  EXPECT_EQ(allocationsWhile([&] {
              volatile bool sink = isNFC(mayChange) && isNFKC(mayChange);
              (void)sink;
            }),
            0);
}

TEST(AllocationFailureTest, SimpleCaseMappingOfAStringLeavesTheArgumentAlone) {
  expectEveryFailureLeavesStateAsItWas<String>(
      richText, [](String& s) { return toUpperSimple(s); });
  expectEveryFailureLeavesStateAsItWas<String>(
      richText, [](String& s) { return toLowerSimple(s); });
}

TEST(AllocationFailureTest,
     SimpleCaseMappingInPlaceAndPerCodePointAllocateNothing) {
  String s = richText();
  EXPECT_EQ(allocationsWhile([&] {
              toUpperSimpleInPlace(s);
              toLowerSimpleInPlace(s);
              for (char32_t& c : s) {
                c = toUpperSimple(c) + toLowerSimple(c) - toTitleSimple(c);
                toTitleSimpleInPlace(c);
                c = simpleCaseFold(c);
                simpleCaseFoldInPlace(c);
                volatile bool assigned = isAssigned(c);
                (void)assigned;
              }
            }),
            0);
}

TEST(AllocationFailureTest, FullCaseMappingLeavesTheArgumentAloneWhenItFails) {
  for (const std::string language : {"", "tr", "lt", "az", "xx"}) {
    expectEveryFailureLeavesStateAsItWas<String>(
        richText, [&](String& s) { return toUpperFull(s, language); });
    expectEveryFailureLeavesStateAsItWas<String>(
        richText, [&](String& s) { return toLowerFull(s, language); });
  }
}

TEST(AllocationFailureTest, FullCaseMappingOfOneCodePointLeaksNothing) {
  for (char32_t c : {U'\u00DF', U'\uFB03', U'\u0049', U'\u0130', U'\u03A3'}) {
    for (const std::string language : {"", "tr", "lt"}) {
      const auto make = [c] { return String(1, c); };
      // A short result may fit in the String itself and need no storage.
      expectEveryFailureLeavesStateAsItWas<String>(
          make, [&](String& s) { return toUppperFull(s[0], language); }, false);
      expectEveryFailureLeavesStateAsItWas<String>(
          make, [&](String& s) { return toLowerFull(s[0], language); }, false);
      expectEveryFailureLeavesStateAsItWas<String>(
          make, [&](String& s) { return toTitleFull(s[0], language); }, false);
    }
  }
}

// ---------------------------------------------------------------------------
// Code pages.
TEST(AllocationFailureTest, CodePageConstructionAndCopyLeakNothing) {
  const std::array<char32_t, 128> table = tableOf(0x0400);
  const std::string name = "a page with a name longer than any short buffer";
  const CodePage page = longNamedPage();
  struct Holder {
    std::string name;
    bool operator==(const Holder& o) const { return name == o.name; }
  };
  const std::vector<std::function<void(Holder&)>> builds = {
      [&](Holder& h) { h.name = CodePage(name, table).getName(); },
      [](Holder& h) { h.name = CodePage().getName(); },
      [&](Holder& h) { h.name = CodePage(page).getName(); },
      [&](Holder& h) { h.name = page.getName(); }};
  for (const auto& build : builds)
    expectEveryFailureLeavesStateAsItWas<Holder>([] { return Holder(); },
                                                 build);
}

TEST(AllocationFailureTest,
     CodePageEncodingClearsTheFlagAndLeavesTheTextAlone) {
  // The flag is cleared before anything is allocated, so a failure leaves
  // it false, "as far as the loop had taken it".
  const CodePage page = CodePageTranslator::getCodePage("Windows-1252");
  struct Encoding {
    String text;
    bool lossy;
    bool operator==(const Encoding& o) const {
      return text == o.text && lossy == o.lossy;
    }
  };
  const auto make = [] { return Encoding{richText(), true}; };
  Encoding expected = make();
  const long total =
      allocationsOf([&] { page.fromUnicode(expected.text, expected.lossy); });
  ASSERT_GT(total, 0);
  for (long i = 0; i < total; ++i) {
    Encoding run = make();
    const String before = run.text;
    const Outcome outcome =
        attempt(i, [&] { page.fromUnicode(run.text, run.lossy); });
    EXPECT_TRUE(outcome.threw) << "allocation " << i;
    EXPECT_FALSE(run.lossy) << "allocation " << i;
    EXPECT_TRUE(run.text == before) << "allocation " << i;
    EXPECT_EQ(outcome.live, 0) << "allocation " << i;
  }
  expectEveryFailureLeavesStateAsItWas<String>(
      richText, [&](String& s) { return page.fromUnicode(s); });
  expectEveryFailureLeavesStateAsItWas<String>(
      [] { return String(); },
      [&](String&) {
        return page.toUnicode("bytes \x80\x81\xE9 and more bytes");
      });
}

TEST(AllocationFailureTest, TranslateLeavesTheRegistryAndTheTextAlone) {
  const std::string name = "Windows-874";
  const std::string bytes = "bytes \xA1\xDF\xFF and more bytes than fit";
  expectEveryFailureLeavesStateAsItWas<String>(richText, [&](String& s) {
    return CodePageTranslator::translate(s, name);
  });
  expectEveryFailureLeavesStateAsItWas<String>(richText, [&](String& s) {
    bool lossy = false;
    return CodePageTranslator::translate(s, name, lossy);
  });
  expectEveryFailureLeavesStateAsItWas<String>(
      [] { return String(); },
      [&](String&) { return CodePageTranslator::translate(bytes, name); });
  EXPECT_TRUE(CodePageTranslator::hasCodePage("Windows-1252"));
  EXPECT_TRUE(CodePageTranslator::hasCodePage("Windows-874"));
  EXPECT_EQ(CodePageTranslator::codePages.size(), 2u);
}

TEST(AllocationFailureTest, RegistryReadsAllocateNothing) {
  const std::string known = "Windows-1252", unknown = "windows-1252";
  EXPECT_EQ(allocationsWhile([&] {
              volatile bool sink = CodePageTranslator::hasCodePage(known) &&
                                   !CodePageTranslator::hasCodePage(unknown);
              const CodePage& page = CodePageTranslator::getCodePage(known);
              (void)page;
              (void)sink;
            }),
            0);
}

TEST(AllocationFailureTest,
     FailedRegistrationOfANewPageLeavesTheRegistryAsItWas) {
  const CodePage page = longNamedPage();
  const size_t before = CodePageTranslator::codePages.size();
  const long total =
      allocationsOf([&] { CodePageTranslator::registerCodePage(page); });
  CodePageTranslator::unregisterCodePage(page.getName());
  ASSERT_GT(total, 0);
  for (long i = 0; i < total; ++i) {
    const Outcome outcome =
        attempt(i, [&] { CodePageTranslator::registerCodePage(page); });
    EXPECT_TRUE(outcome.threw) << "allocation " << i;
    EXPECT_FALSE(CodePageTranslator::hasCodePage(page.getName()))
        << "allocation " << i;
    EXPECT_EQ(CodePageTranslator::codePages.size(), before)
        << "allocation " << i;
    EXPECT_EQ(outcome.live, 0) << "allocation " << i;
    for (const auto& entry : CodePageTranslator::codePages)
      EXPECT_EQ(entry.first, entry.second.getName()) << "allocation " << i;
    if (CodePageTranslator::hasCodePage(page.getName()))
      CodePageTranslator::unregisterCodePage(page.getName());
  }
}

TEST(AllocationFailureTest, FailedReplacementOfAPageLeavesTheOldPage) {
  const CodePage first("a registered page with a long name", tableOf(0x0400));
  const CodePage second("a registered page with a long name", tableOf(0x0500));
  CodePageTranslator::registerCodePage(first);
  const long total =
      allocationsOf([&] { CodePageTranslator::registerCodePage(second); });
  ASSERT_GT(total, 0);
  for (long i = 0; i < total; ++i) {
    CodePageTranslator::registerCodePage(first);
    const Outcome outcome =
        attempt(i, [&] { CodePageTranslator::registerCodePage(second); });
    EXPECT_TRUE(outcome.threw) << "allocation " << i;
    EXPECT_TRUE(
        samePage(CodePageTranslator::getCodePage(first.getName()), first))
        << "allocation " << i;
    EXPECT_EQ(outcome.live, 0) << "allocation " << i;
  }
  CodePageTranslator::unregisterCodePage(first.getName());
}
