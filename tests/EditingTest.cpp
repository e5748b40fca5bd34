// Editing members of String: append, operator+=, push_back, pop_back,
// insert, erase and replace, with the positions they check.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "ExceptionText.h"
#include "string/String.h"

namespace {

using zelvo::unicode::String;

std::u32string elements(const String& s) {
  return std::u32string(s.begin(), s.end());
}

const char32_t kAZeroB[] = {U'a', 0, U'b', 0};
const char32_t kEmptyArray[] = {0};

// A String of size 5 with spare room behind it, so that an iterator one
// past end() still points into its storage.
String fiveWithRoom() {
  String s{U'a', U'b', U'c', U'd', U'e'};
  s.reserve(64);
  return s;
}

// ---- append and operator+= -----------------------------------------------

TEST(StringAppend, StringAppendsAll) {
  String s{U'a'};
  const String t{U'b', U'c'};
  EXPECT_EQ(&s.append(t), &s);
  EXPECT_EQ(elements(s), U"abc");
}

TEST(StringAppend, SubstringAppendsFromPosition) {
  String s{U'x'};
  const String t{U'a', U'b', U'c', U'd'};
  EXPECT_EQ(&s.append(t, 1, 2), &s);
  EXPECT_EQ(elements(s), U"xbc");
}

TEST(StringAppend, SubstringAtSizeAppendsNothing) {
  String s{U'x'};
  const String t{U'a', U'b'};
  s.append(t, t.size(), 5);
  EXPECT_EQ(elements(s), U"x");
}

TEST(StringAppend, SubstringPastSizeThrowsAndKeepsObject) {
  String s{U'x'};
  const String t{U'a', U'b'};
  EXPECT_THROW(s.append(t, t.size() + 1, 5), std::out_of_range);
  EXPECT_EQ(elements(s), U"x");
}

TEST(StringAppend, SubstringFromOneToNposAppendsAllButFirst) {
  String s{U'x'};
  const String t{U'a', U'b', U'c'};
  s.append(t, 1, String::npos);
  EXPECT_EQ(elements(s), U"xbc");
}

TEST(StringAppend, PointerStopsAtFirstZeroWhileListKeepsIt) {
  String viaPointer{U'x'};
  String viaList{U'x'};
  EXPECT_EQ(&viaPointer.append(kAZeroB), &viaPointer);
  EXPECT_EQ(&viaList.append({U'a', 0, U'b'}), &viaList);
  EXPECT_EQ(viaPointer.size(), 2u);
  EXPECT_EQ(viaList.size(), 4u);
  EXPECT_EQ(elements(viaList), std::u32string({U'x', U'a', 0, U'b'}));
}

TEST(StringAppend, CountAndElement) {
  String s{U'x'};
  EXPECT_EQ(&s.append(3, U'y'), &s);
  EXPECT_EQ(elements(s), U"xyyy");
  s.append(0, U'z');
  EXPECT_EQ(elements(s), U"xyyy");
}

TEST(StringAppend, IteratorRange) {
  String s{U'x'};
  const String t{U'a', U'b', U'c'};
  EXPECT_EQ(&s.append(t.cbegin() + 1, t.cend()), &s);
  EXPECT_EQ(elements(s), U"xbc");
}

TEST(StringAppend, SelfDoubles) {
  String s{U'a', U'b', U'c'};
  s.append(s);
  EXPECT_EQ(elements(s), U"abcabc");
}

TEST(StringAppend, SelfDoublesAcrossReallocation) {
  String s(20, U'q');
  s.shrink_to_fit();
  s.push_back(U'r');
  s.shrink_to_fit();
  const size_t capacity = s.capacity();
  s.append(s);
  ASSERT_GT(s.capacity(), capacity);
  std::u32string expected(20, U'q');
  expected += U'r';
  expected += expected;
  EXPECT_EQ(elements(s), expected);
}

TEST(StringAppend, SelfSubstring) {
  String s{U'a', U'b', U'c'};
  s.append(s, 1, 5);
  EXPECT_EQ(elements(s), U"abcbc");
}

TEST(StringAppend, PlusEqualSelfDoubles) {
  String s{U'a', U'b'};
  s += s;
  EXPECT_EQ(elements(s), U"abab");
}

TEST(StringAppend, PlusEqualForms) {
  String s;
  const String t{U'a'};
  EXPECT_EQ(&(s += t), &s);
  EXPECT_EQ(&(s += kAZeroB), &s);
  EXPECT_EQ(&(s += U'c'), &s);
  EXPECT_EQ(&(s += {U'd', 0}), &s);
  EXPECT_EQ(elements(s), std::u32string({U'a', U'a', U'c', U'd', 0}));
}

TEST(StringAppend, PlusEqualZeroElementAddsOne) {
  String s{U'a'};
  s += char32_t{0};
  EXPECT_EQ(s.size(), 2u);
  EXPECT_EQ(s[1], U'\0');
}

TEST(StringAppend, PlusEqualEmptyArrayAddsNothing) {
  String s{U'a'};
  s += kEmptyArray;
  EXPECT_EQ(s.size(), 1u);
}

TEST(StringAppend, BadValuesGoInWithoutComplaint) {
  String s{U'a'};
  ASSERT_FALSE(s.hasBadCodePoints());
  s.push_back(0xD800);
  EXPECT_TRUE(s.hasBadCodePoints());
  String t{U'a'};
  t += char32_t{0x110000};
  EXPECT_TRUE(t.hasBadCodePoints());
  EXPECT_EQ(elements(t), std::u32string({U'a', 0x110000}));
}

TEST(StringPushPop, PushBackAppendsOne) {
  String s;
  s.push_back(U'a');
  s.push_back(0);
  EXPECT_EQ(elements(s), std::u32string({U'a', 0}));
}

TEST(StringPushPop, PopBackRemovesLast) {
  String s{U'a', U'b'};
  s.pop_back();
  EXPECT_EQ(elements(s), U"a");
}

TEST(StringPushPop, PopBackOfLastLeavesTerminatedEmpty) {
  String s{U'a'};
  s.pop_back();
  EXPECT_TRUE(s.empty());
  EXPECT_EQ(s.data()[0], U'\0');
}

// ---- insert --------------------------------------------------------------

TEST(StringInsert, StringBeforePosition) {
  String s{U'a', U'd'};
  const String t{U'b', U'c'};
  EXPECT_EQ(&s.insert(1, t), &s);
  EXPECT_EQ(elements(s), U"abcd");
}

TEST(StringInsert, AtSizeIsAnAppend) {
  String s{U'a', U'b'};
  const String t{U'c'};
  s.insert(s.size(), t);
  EXPECT_EQ(elements(s), U"abc");
}

TEST(StringInsert, PastSizeThrowsAndKeepsObject) {
  String s{U'a', U'b'};
  const String t{U'c'};
  EXPECT_THROW(s.insert(s.size() + 1, t), std::out_of_range);
  EXPECT_THROW(s.insert(3, kAZeroB), std::out_of_range);
  EXPECT_THROW(s.insert(3, 2, U'z'), std::out_of_range);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringInsert, SubstringFromSecondPosition) {
  String s{U'a', U'e'};
  const String t{U'x', U'b', U'c', U'd', U'y'};
  EXPECT_EQ(&s.insert(1, t, 1, 3), &s);
  EXPECT_EQ(elements(s), U"abcde");
  s.insert(0, t, 4, String::npos);
  EXPECT_EQ(elements(s), U"yabcde");
  s.insert(0, t, 5, 2);
  EXPECT_EQ(elements(s), U"yabcde");
}

TEST(StringInsert, SubstringSecondPositionPastItsSizeThrows) {
  String s{U'a', U'b'};
  const String t{U'x', U'y'};
  EXPECT_THROW(s.insert(0, t, 3, 1), std::out_of_range);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringInsert, SubstringPositionPastSizeThrows) {
  String s{U'a', U'b'};
  const String t{U'x', U'y'};
  EXPECT_THROW(s.insert(3, t, 0, 1), std::out_of_range);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringInsert, SubstringBothPositionsPastSizeThrows) {
  String s{U'a', U'b'};
  const String t{U'x', U'y'};
  EXPECT_THROW(s.insert(3, t, 3, 1), std::out_of_range);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringInsert, PointerStopsAtFirstZero) {
  String s{U'x', U'y'};
  EXPECT_EQ(&s.insert(1, kAZeroB), &s);
  EXPECT_EQ(elements(s), U"xay");
}

TEST(StringInsert, CountAndElement) {
  String s{U'x', U'y'};
  EXPECT_EQ(&s.insert(1, 3, U'k'), &s);
  EXPECT_EQ(elements(s), U"xkkky");
  s.insert(0, 0, U'k');
  EXPECT_EQ(elements(s), U"xkkky");
}

TEST(StringInsert, SelfTakesAFirstCopy) {
  String s{U'a', U'b', U'c'};
  s.insert(1, s);
  EXPECT_EQ(elements(s), U"aabcbc");
}

TEST(StringInsert, SelfAcrossReallocation) {
  String s(30, U'a');
  s.push_back(U'z');
  s.shrink_to_fit();
  s.insert(1, s);
  std::u32string old(30, U'a');
  old += U'z';
  EXPECT_EQ(elements(s), old.substr(0, 1) + old + old.substr(1));
}

TEST(StringInsert, SelfSubstring) {
  String s{U'a', U'b', U'c'};
  s.insert(0, s, 1, 2);
  EXPECT_EQ(elements(s), U"bcabc");
}

TEST(StringInsert, ElementAtIteratorReturnsIt) {
  String s{U'a', U'c'};
  String::iterator it = s.insert(s.cbegin() + 1, U'b');
  EXPECT_EQ(it - s.begin(), 1);
  EXPECT_EQ(*it, U'b');
  EXPECT_EQ(elements(s), U"abc");
}

TEST(StringInsert, CountAtIteratorReturnsFirstInserted) {
  String s{U'a', U'c'};
  String::iterator it = s.insert(s.cbegin() + 1, 2, U'b');
  EXPECT_EQ(it - s.begin(), 1);
  EXPECT_EQ(elements(s), U"abbc");
}

TEST(StringInsert, NothingAtIteratorReturnsThePlace) {
  String s{U'a', U'c'};
  String::iterator it = s.insert(s.cbegin() + 1, 0, U'b');
  EXPECT_EQ(it - s.begin(), 1);
  const String empty;
  it = s.insert(s.cbegin() + 2, empty.cbegin(), empty.cend());
  EXPECT_EQ(it - s.begin(), 2);
  it = s.insert(s.cbegin(), {});
  EXPECT_EQ(it - s.begin(), 0);
  EXPECT_EQ(elements(s), U"ac");
}

TEST(StringInsert, CountAtIteratorPastEndThrowsAndKeepsObject) {
  String s = fiveWithRoom();
  EXPECT_THROW(s.insert(s.cend() + 1, 2, U'z'), std::out_of_range);
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringInsert, CountAtEndIteratorAppends) {
  String s = fiveWithRoom();
  String::iterator it = s.insert(s.cend(), 2, U'z');
  EXPECT_EQ(it - s.begin(), 5);
  EXPECT_EQ(elements(s), U"abcdezz");
}

TEST(StringInsert, RangeAtIteratorReturnsFirstInserted) {
  String s{U'a', U'd'};
  const String t{U'b', U'c'};
  String::iterator it = s.insert(s.cbegin() + 1, t.cbegin(), t.cend());
  EXPECT_EQ(it - s.begin(), 1);
  EXPECT_EQ(elements(s), U"abcd");
}

TEST(StringInsert, ListAtIteratorReturnsFirstInserted) {
  String s{U'a', U'd'};
  String::iterator it = s.insert(s.cbegin() + 1, {U'b', 0, U'c'});
  EXPECT_EQ(it - s.begin(), 1);
  EXPECT_EQ(elements(s), std::u32string({U'a', U'b', 0, U'c', U'd'}));
}

// ---- erase ---------------------------------------------------------------

TEST(StringErase, AtSizeChangesNothing) {
  String s = fiveWithRoom();
  EXPECT_EQ(&s.erase(5), &s);
  EXPECT_EQ(&s.erase(5, 3), &s);
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringErase, PastSizeThrowsAndKeepsObject) {
  String s = fiveWithRoom();
  EXPECT_THROW(s.erase(6), std::out_of_range);
  EXPECT_THROW(s.erase(6, 0), std::out_of_range);
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringErase, SinglePositionCutsToTheEnd) {
  String s = fiveWithRoom();
  s.erase(2);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringErase, PositionAndCountRemovesThatMany) {
  String s = fiveWithRoom();
  s.erase(2, 1);
  EXPECT_EQ(elements(s), U"abde");
}

TEST(StringErase, CountIsCutDown) {
  String s = fiveWithRoom();
  s.erase(2, String::npos);
  EXPECT_EQ(elements(s), U"ab");
  String t = fiveWithRoom();
  t.erase(3, 100);
  EXPECT_EQ(elements(t), U"abc");
}

TEST(StringErase, NoArgumentClears) {
  String s = fiveWithRoom();
  s.erase();
  EXPECT_TRUE(s.empty());
}

TEST(StringErase, IteratorRemovesOneAndReturnsSamePlace) {
  String s = fiveWithRoom();
  String::iterator it = s.erase(s.cbegin() + 1);
  EXPECT_EQ(it - s.begin(), 1);
  EXPECT_EQ(*it, U'c');
  EXPECT_EQ(elements(s), U"acde");
}

TEST(StringErase, EndIteratorChangesNothing) {
  String s = fiveWithRoom();
  String::iterator it = s.erase(s.cend());
  EXPECT_EQ(it, s.end());
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringErase, IteratorPastEndThrowsAndKeepsObject) {
  String s = fiveWithRoom();
  EXPECT_THROW(s.erase(s.cend() + 1), std::out_of_range);
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringErase, RangeReturnsPlaceOfFirst) {
  String s = fiveWithRoom();
  String::iterator it = s.erase(s.cbegin() + 1, s.cbegin() + 3);
  EXPECT_EQ(it - s.begin(), 1);
  EXPECT_EQ(elements(s), U"ade");
}

TEST(StringErase, EmptyRangeAtEndChangesNothing) {
  String s = fiveWithRoom();
  String::iterator it = s.erase(s.cend(), s.cend());
  EXPECT_EQ(it, s.end());
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringErase, RangePastEndThrowsAndKeepsObject) {
  String s = fiveWithRoom();
  EXPECT_THROW(s.erase(s.cend() + 1, s.cend() + 2), std::out_of_range);
  EXPECT_EQ(elements(s), U"abcde");
}

// ---- replace by position -------------------------------------------------

TEST(StringReplace, StringInPlaceOfCount) {
  String s = fiveWithRoom();
  const String t{U'x', U'y', U'z'};
  EXPECT_EQ(&s.replace(1, 2, t), &s);
  EXPECT_EQ(elements(s), U"axyzde");
}

TEST(StringReplace, CountRunningPastEndReplacesTheRest) {
  String s = fiveWithRoom();
  const String t{U'x'};
  s.replace(2, 100, t);
  EXPECT_EQ(elements(s), U"abx");
}

TEST(StringReplace, AtSizeAppends) {
  String s = fiveWithRoom();
  const String t{U'x', U'y'};
  s.replace(5, 0, t);
  EXPECT_EQ(elements(s), U"abcdexy");
}

TEST(StringReplace, PastSizeThrowsAndKeepsObject) {
  String s = fiveWithRoom();
  const String t{U'x'};
  EXPECT_THROW(s.replace(6, 0, t), std::out_of_range);
  EXPECT_THROW(s.replace(6, 0, kAZeroB), std::out_of_range);
  EXPECT_THROW(s.replace(6, 0, 2, U'x'), std::out_of_range);
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringReplace, SubstringOfArgument) {
  String s = fiveWithRoom();
  const String t{U'v', U'w', U'x', U'y'};
  EXPECT_EQ(&s.replace(1, 3, t, 1, 2), &s);
  EXPECT_EQ(elements(s), U"awxe");
  s.replace(0, 1, t, 2);
  EXPECT_EQ(elements(s), U"xywxe");
  s.replace(0, 0, t, 4, 9);
  EXPECT_EQ(elements(s), U"xywxe");
}

TEST(StringReplace, SubstringSecondPositionPastItsSizeThrows) {
  String s = fiveWithRoom();
  const String t{U'x'};
  EXPECT_THROW(s.replace(0, 1, t, 2, 1), std::out_of_range);
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringReplace, SubstringPositionPastSizeThrows) {
  String s = fiveWithRoom();
  const String t{U'x'};
  EXPECT_THROW(s.replace(6, 1, t, 0, 1), std::out_of_range);
  EXPECT_THROW(s.replace(6, 1, t, 2, 1), std::out_of_range);
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringReplace, PointerStopsAtFirstZero) {
  String s = fiveWithRoom();
  EXPECT_EQ(&s.replace(1, 3, kAZeroB), &s);
  EXPECT_EQ(elements(s), U"aae");
}

TEST(StringReplace, CountOfElement) {
  String s = fiveWithRoom();
  EXPECT_EQ(&s.replace(1, 1, 3, U'k'), &s);
  EXPECT_EQ(elements(s), U"akkkcde");
  s.replace(0, 4, 0, U'k');
  EXPECT_EQ(elements(s), U"cde");
}

TEST(StringReplace, SelfTakesAFirstCopy) {
  String s{U'a', U'b', U'c'};
  s.replace(1, 1, s);
  EXPECT_EQ(elements(s), U"aabcc");
}

TEST(StringReplace, SelfSubstring) {
  String s{U'a', U'b', U'c', U'd'};
  s.replace(0, 2, s, 2, 2);
  EXPECT_EQ(elements(s), U"cdcd");
}

TEST(StringReplace, SelfAcrossReallocation) {
  String s(25, U'a');
  s.push_back(U'z');
  s.shrink_to_fit();
  s.replace(0, 1, s);
  std::u32string old(25, U'a');
  old += U'z';
  EXPECT_EQ(elements(s), old + old.substr(1));
}

// ---- replace by iterators ------------------------------------------------

TEST(StringReplace, IteratorsWithString) {
  String s = fiveWithRoom();
  const String t{U'x'};
  EXPECT_EQ(&s.replace(s.cbegin() + 1, s.cbegin() + 4, t), &s);
  EXPECT_EQ(elements(s), U"axe");
}

TEST(StringReplace, IteratorsWithPointer) {
  String s = fiveWithRoom();
  EXPECT_EQ(&s.replace(s.cbegin(), s.cbegin() + 2, kAZeroB), &s);
  EXPECT_EQ(elements(s), U"acde");
}

TEST(StringReplace, IteratorsWithCountOfElement) {
  String s = fiveWithRoom();
  EXPECT_EQ(&s.replace(s.cbegin() + 4, s.cend(), 2, U'q'), &s);
  EXPECT_EQ(elements(s), U"abcdqq");
}

TEST(StringReplace, IteratorsPastEndThrowAndKeepObject) {
  String s = fiveWithRoom();
  const String t{U'x'};
  EXPECT_THROW(s.replace(s.cend() + 1, s.cend() + 1, t), std::out_of_range);
  EXPECT_THROW(s.replace(s.cend() + 1, s.cend() + 1, kAZeroB),
               std::out_of_range);
  EXPECT_THROW(s.replace(s.cend() + 1, s.cend() + 1, 1, U'x'),
               std::out_of_range);
  EXPECT_EQ(elements(s), U"abcde");
}

TEST(StringReplace, IteratorsAtEndAppend) {
  String s = fiveWithRoom();
  const String t{U'x'};
  s.replace(s.cend(), s.cend(), t);
  EXPECT_EQ(elements(s), U"abcdex");
}

TEST(StringReplace, RangeWithShorterSourceShrinks) {
  String s = fiveWithRoom();
  const String t{U'x', U'y'};
  EXPECT_EQ(&s.replace(s.cbegin() + 1, s.cbegin() + 4, t.cbegin(), t.cend()),
            &s);
  EXPECT_EQ(elements(s), U"axye");
}

TEST(StringReplace, RangeWithLongerSourceGrows) {
  String s = fiveWithRoom();
  const String t{U'v', U'w', U'x', U'y'};
  s.replace(s.cbegin() + 1, s.cbegin() + 3, t.cbegin(), t.cend());
  EXPECT_EQ(elements(s), U"avwxyde");
}

TEST(StringReplace, RangeWithEqualSourceOverwrites) {
  String s = fiveWithRoom();
  const char32_t* storage = s.data();
  const String t{U'x', U'y'};
  s.replace(s.cbegin() + 3, s.cend(), t.cbegin(), t.cend());
  EXPECT_EQ(elements(s), U"abcxy");
  EXPECT_EQ(s.data(), storage);
}

TEST(StringReplace, RangeWithEmptySourceIsErase) {
  String replaced = fiveWithRoom();
  String erased = fiveWithRoom();
  const String empty;
  replaced.replace(replaced.cbegin() + 1, replaced.cbegin() + 3, empty.cbegin(),
                   empty.cend());
  erased.erase(erased.cbegin() + 1, erased.cbegin() + 3);
  EXPECT_EQ(elements(replaced), elements(erased));
  EXPECT_EQ(elements(replaced), U"ade");
}

TEST(StringReplace, RangeIntoEmptyTargetInserts) {
  String s = fiveWithRoom();
  const String t{U'x', U'y'};
  s.replace(s.cbegin() + 2, s.cbegin() + 2, t.cbegin(), t.cend());
  EXPECT_EQ(elements(s), U"abxycde");
}

TEST(StringReplace, MutableSourceIterators) {
  String s = fiveWithRoom();
  String t{U'x', U'y', U'z'};
  EXPECT_EQ(&s.replace(s.cbegin(), s.cbegin() + 1, t.begin(), t.end()), &s);
  EXPECT_EQ(elements(s), U"xyzbcde");
  s.replace(s.cbegin(), s.cend(), t.begin() + 1, t.begin() + 2);
  EXPECT_EQ(elements(s), U"y");
}

TEST(StringReplace, ListSource) {
  String s = fiveWithRoom();
  EXPECT_EQ(&s.replace(s.cbegin() + 1, s.cbegin() + 2, {U'x', 0, U'y'}), &s);
  EXPECT_EQ(elements(s),
            std::u32string({U'a', U'x', 0, U'y', U'c', U'd', U'e'}));
  s.replace(s.cbegin(), s.cbegin() + 4, {U'q'});
  EXPECT_EQ(elements(s), U"qcde");
  s.replace(s.cbegin(), s.cbegin() + 2, {});
  EXPECT_EQ(elements(s), U"de");
}

TEST(StringEditing, BadValuesAreInsertedLikeAnyOther) {
  String s{U'a', U'b'};
  s.insert(1, 1, 0xDFFF);
  s.replace(0, 1, 1, 0xFFFFFFFF);
  EXPECT_EQ(elements(s), std::u32string({0xFFFFFFFF, 0xDFFF, U'b'}));
  EXPECT_TRUE(s.hasBadCodePoints());
}

// ---- the exception a bad position raises ---------------------------------

// The library adds no message of its own: a position past the end fails with
// exactly the exception the standard string raises for that position.
TEST(StringPositionErrors, CarryTheStandardStringsOwnException) {
  const std::u32string held(5, U'a');
  const std::string standard =
      outOfRangeText([&] { static_cast<void>(held.substr(6, 0)); });
  ASSERT_NE(standard, "none");
  String s{U'a', U'b', U'c', U'd', U'e'};
  const String t{U'v', U'w', U'x', U'y', U'z'};
  EXPECT_EQ(outOfRangeText([&] { s.insert(6, t); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.insert(0, t, 6, 1); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.insert(6, kAZeroB); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.insert(6, 2, U'z'); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.erase(6); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.erase(6, 1); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.replace(6, 0, t); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.replace(0, 1, t, 6, 1); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.replace(6, 0, kAZeroB); }), standard);
  EXPECT_EQ(outOfRangeText([&] { s.replace(6, 0, 2, U'z'); }), standard);
  EXPECT_EQ(elements(s), U"abcde");
}

}  // namespace
