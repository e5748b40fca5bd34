// Construction, assignment, iterators, element access, capacity, swap and
// npos of String.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

#include "string/String.h"

namespace {

using zelvo::unicode::String;

std::u32string elements(const String& s) {
  return std::u32string(s.begin(), s.end());
}

// Long enough that the held string keeps it outside the object, so that a
// transfer of storage shows in data().
String longText() { return String(40, U'x'); }

const char32_t kWithEmbeddedZero[] = {U'a', U'b', 0, U'c', U'd', 0};

TEST(StringNpos, HasAllBitsSet) {
  EXPECT_EQ(String::npos, std::numeric_limits<size_t>::max());
  EXPECT_EQ(String::npos, static_cast<size_t>(-1));
  EXPECT_EQ(String::npos, static_cast<size_t>(0xFFFFFFFFFFFFFFFFull));
}

TEST(StringNpos, IsDefinedInTheLibraryWithAnAddress) {
  const size_t* address = &String::npos;
  ASSERT_NE(address, nullptr);
  EXPECT_EQ(*address, static_cast<size_t>(-1));
}

TEST(StringConstruction, DefaultIsEmptyAndTerminated) {
  const String s;
  EXPECT_TRUE(s.empty());
  EXPECT_EQ(s.size(), 0u);
  EXPECT_EQ(s.data()[0], U'\0');
}

TEST(StringConstruction, PointerStopsAtFirstZero) {
  const String s(kWithEmbeddedZero);
  EXPECT_EQ(s.size(), 2u);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringConstruction, InitializerListKeepsEmbeddedZero) {
  const String s{U'a', U'b', 0, U'c', U'd'};
  ASSERT_EQ(s.size(), 5u);
  EXPECT_EQ(elements(s), std::u32string(kWithEmbeddedZero, 5));
}

TEST(StringConstruction, PointerToZeroIsEmpty) {
  const char32_t zero[] = {0};
  EXPECT_TRUE(String(zero).empty());
}

TEST(StringConstruction, CountAndElement) {
  const String s(4, U'z');
  EXPECT_EQ(elements(s), U"zzzz");
  EXPECT_TRUE(String(0, U'z').empty());
}

TEST(StringConstruction, IteratorRangeCopiesTheRange) {
  const String source{U'a', U'b', U'c', U'd'};
  const String s(source.cbegin() + 1, source.cend() - 1);
  EXPECT_EQ(elements(s), U"bc");
}

TEST(StringConstruction, CopyIsDeep) {
  String original{U'a', U'b'};
  String copy(original);
  copy[0] = U'q';
  EXPECT_EQ(elements(original), U"ab");
  EXPECT_EQ(elements(copy), U"qb");
  EXPECT_NE(original.data(), copy.data());
}

TEST(StringConstruction, MoveTakesOverStorageAndEmptiesSource) {
  String source = longText();
  const char32_t* storage = source.data();
  String target(std::move(source));
  EXPECT_EQ(target.data(), storage);
  EXPECT_EQ(target.size(), 40u);
  EXPECT_EQ(source.size(), 0u);
  EXPECT_EQ(source.data()[0], U'\0');
}

TEST(StringConstruction, MovedFromSourceIsReadyForUse) {
  String source{U'a', U'b'};
  String target(std::move(source));
  source.append({U'c'});
  EXPECT_EQ(elements(source), U"c");
  EXPECT_EQ(elements(target), U"ab");
}

TEST(StringConstruction, SubstringAtSizeIsEmptyForAnyCount) {
  const String source{U'a', U'b', U'c'};
  EXPECT_TRUE(String(source, 3).empty());
  EXPECT_TRUE(String(source, 3, 0).empty());
  EXPECT_TRUE(String(source, 3, 5).empty());
  EXPECT_TRUE(String(source, 3, String::npos).empty());
}

TEST(StringConstruction, SubstringPastSizeThrows) {
  const String source{U'a', U'b', U'c'};
  EXPECT_THROW(String(source, 4), std::out_of_range);
  EXPECT_THROW(String(source, 4, 0), std::out_of_range);
  EXPECT_EQ(elements(source), U"abc");
}

TEST(StringConstruction, SubstringFromOneToNposTakesTheRest) {
  const String source{U'a', U'b', U'c'};
  EXPECT_EQ(elements(String(source, 1, String::npos)), U"bc");
}

TEST(StringConstruction, SubstringCountIsCutDown) {
  const String source{U'a', U'b', U'c', U'd'};
  EXPECT_EQ(elements(String(source, 1, 2)), U"bc");
  EXPECT_EQ(elements(String(source, 2, 100)), U"cd");
}

TEST(StringConstruction, BadValuesAreStoredAsTheyAre) {
  const char32_t bad[] = {0xD800, 0x110000, 0xFFFFFFFF, 0};
  const String fromList{0xD800, 0x110000};
  const String fromPointer(bad);
  const String fromCount(2, 0xDFFF);
  EXPECT_EQ(elements(fromList), std::u32string({0xD800, 0x110000}));
  EXPECT_EQ(elements(fromPointer), std::u32string(bad, 3));
  EXPECT_EQ(elements(fromCount), std::u32string(2, 0xDFFF));
}

TEST(StringAssignment, MoveAssignTakesOverStorageAndEmptiesSource) {
  String source = longText();
  const char32_t* storage = source.data();
  String target{U'a'};
  String& result = (target = std::move(source));
  EXPECT_EQ(&result, &target);
  EXPECT_EQ(target.data(), storage);
  EXPECT_EQ(target.size(), 40u);
  EXPECT_EQ(source.size(), 0u);
  source.push_back(U'b');
  EXPECT_EQ(elements(source), U"b");
}

TEST(StringAssignment, AssignFromRvalueTakesOverStorageAndEmptiesSource) {
  String source = longText();
  const char32_t* storage = source.data();
  String target = longText();
  const char32_t* oldTargetStorage = target.data();
  String& result = target.assign(std::move(source));
  EXPECT_EQ(&result, &target);
  EXPECT_EQ(target.data(), storage);
  EXPECT_EQ(source.size(), 0u);
  // The target's old storage is released, not handed to the source.
  EXPECT_NE(source.data(), oldTargetStorage);
  EXPECT_EQ(source.data()[0], U'\0');
}

TEST(StringAssignment, MoveAssignToSelfChangesNothing) {
  String s{U'a', U'b', U'c'};
  const char32_t* storage = s.data();
  String& alias = s;
  String& result = (s = std::move(alias));
  EXPECT_EQ(&result, &s);
  EXPECT_EQ(elements(s), U"abc");
  EXPECT_EQ(s.data(), storage);
}

TEST(StringAssignment, AssignRvalueToSelfChangesNothing) {
  String s = longText();
  const char32_t* storage = s.data();
  String& alias = s;
  String& result = s.assign(std::move(alias));
  EXPECT_EQ(&result, &s);
  EXPECT_EQ(elements(s), std::u32string(40, U'x'));
  EXPECT_EQ(s.data(), storage);
}

TEST(StringAssignment, CopyAssignIsDeep) {
  const String source{U'a', U'b'};
  String target{U'z'};
  String& result = (target = source);
  EXPECT_EQ(&result, &target);
  EXPECT_EQ(elements(target), U"ab");
  EXPECT_NE(target.data(), source.data());
}

TEST(StringAssignment, InitializerListReplacesContent) {
  String s{U'z', U'z', U'z'};
  EXPECT_EQ(&(s = {U'a', 0, U'b'}), &s);
  EXPECT_EQ(elements(s), std::u32string({U'a', 0, U'b'}));
  EXPECT_EQ(&s.assign({U'c'}), &s);
  EXPECT_EQ(elements(s), U"c");
}

TEST(StringAssignment, PointerStopsAtFirstZero) {
  String s{U'z'};
  EXPECT_EQ(&(s = kWithEmbeddedZero), &s);
  EXPECT_EQ(elements(s), U"ab");
  s = U"zzzz";
  EXPECT_EQ(&s.assign(kWithEmbeddedZero), &s);
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringAssignment, SingleElementBecomesTheContent) {
  String s{U'a', U'b'};
  EXPECT_EQ(&(s = U'q'), &s);
  EXPECT_EQ(elements(s), U"q");
  s = char32_t{0};
  EXPECT_EQ(s.size(), 1u);
  EXPECT_EQ(s[0], U'\0');
}

TEST(StringAssignment, CountAndElement) {
  String s{U'a'};
  EXPECT_EQ(&s.assign(3, U'k'), &s);
  EXPECT_EQ(elements(s), U"kkk");
  s.assign(0, U'k');
  EXPECT_TRUE(s.empty());
}

TEST(StringAssignment, AssignCopiesTheArgument) {
  const String source{U'a', U'b'};
  String target{U'z'};
  EXPECT_EQ(&target.assign(source), &target);
  EXPECT_EQ(elements(target), U"ab");
}

TEST(StringAssignment, AssignSelfLeavesItAsItWas) {
  String s{U'a', U'b', U'c'};
  EXPECT_EQ(&s.assign(s), &s);
  EXPECT_EQ(elements(s), U"abc");
}

TEST(StringAssignment, AssignSubstring) {
  const String source{U'a', U'b', U'c', U'd'};
  String target;
  EXPECT_EQ(&target.assign(source, 1, 2), &target);
  EXPECT_EQ(elements(target), U"bc");
  target.assign(source, 1);
  EXPECT_EQ(elements(target), U"bcd");
  target.assign(source, 1, String::npos);
  EXPECT_EQ(elements(target), U"bcd");
}

TEST(StringAssignment, AssignSubstringAtSizeIsEmpty) {
  const String source{U'a', U'b', U'c'};
  String target{U'z'};
  target.assign(source, 3, 5);
  EXPECT_TRUE(target.empty());
}

TEST(StringAssignment, AssignSubstringPastSizeThrowsAndKeepsTarget) {
  const String source{U'a', U'b', U'c'};
  String target{U'z', U'y'};
  EXPECT_THROW(target.assign(source, 4, 5), std::out_of_range);
  EXPECT_EQ(elements(target), U"zy");
}

TEST(StringAssignment, AssignIteratorRange) {
  const String source{U'a', U'b', U'c', U'd'};
  String target{U'z'};
  EXPECT_EQ(&target.assign(source.cbegin() + 2, source.cend()), &target);
  EXPECT_EQ(elements(target), U"cd");
}

TEST(StringAssignment, BadValuesAreStoredAsTheyAre) {
  String s;
  s.assign({0xD800});
  EXPECT_EQ(s[0], char32_t{0xD800});
  s.assign(1, 0x110000);
  EXPECT_EQ(s[0], char32_t{0x110000});
  s = char32_t{0xFFFFFFFF};
  EXPECT_EQ(s[0], char32_t{0xFFFFFFFF});
}

TEST(StringIterators, ForwardWalksTheElements) {
  const String s{U'a', U'b', U'c'};
  EXPECT_EQ(std::u32string(s.begin(), s.end()), U"abc");
  EXPECT_EQ(std::u32string(s.cbegin(), s.cend()), U"abc");
  EXPECT_EQ(s.end() - s.begin(), 3);
}

TEST(StringIterators, ReverseWalksBackwards) {
  String s{U'a', U'b', U'c'};
  const String& constant = s;
  EXPECT_EQ(std::u32string(s.rbegin(), s.rend()), U"cba");
  EXPECT_EQ(std::u32string(constant.rbegin(), constant.rend()), U"cba");
  EXPECT_EQ(std::u32string(s.crbegin(), s.crend()), U"cba");
}

TEST(StringIterators, MutableIteratorsWriteElements) {
  String s{U'a', U'b', U'c'};
  *s.begin() = U'x';
  *(s.end() - 1) = U'y';
  *s.rbegin() = U'z';
  *(s.rend() - 1) = U'w';
  EXPECT_EQ(elements(s), U"wbz");
}

TEST(StringIterators, PointIntoTheStorage) {
  const String s{U'a', U'b'};
  EXPECT_EQ(&*s.begin(), s.data());
  EXPECT_EQ(&*s.cbegin(), s.data());
}

TEST(StringAccess, AtReadsAndWrites) {
  String s{U'a', U'b'};
  s.at(1) = U'q';
  const String& constant = s;
  EXPECT_EQ(constant.at(0), U'a');
  EXPECT_EQ(constant.at(1), U'q');
  EXPECT_EQ(&constant.at(1), s.data() + 1);
}

TEST(StringAccess, AtSizeThrowsWhileDataAtSizeIsZero) {
  String s{U'a', U'b'};
  const String& constant = s;
  EXPECT_THROW(s.at(s.size()), std::out_of_range);
  EXPECT_THROW(constant.at(constant.size()), std::out_of_range);
  EXPECT_THROW(s.at(String::npos), std::out_of_range);
  EXPECT_EQ(s.data()[s.size()], U'\0');
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringAccess, AtOnEmptyThrows) {
  String s;
  EXPECT_THROW(s.at(0), std::out_of_range);
}

TEST(StringAccess, SubscriptReturnsReferences) {
  String s{U'a', U'b'};
  s[0] = U'x';
  const String& constant = s;
  EXPECT_EQ(&constant[1], s.data() + 1);
  EXPECT_EQ(elements(s), U"xb");
}

TEST(StringAccess, SubscriptStoresBadValues) {
  String s{U'a', U'b'};
  s[0] = 0xD800;
  s[1] = 0x110000;
  EXPECT_EQ(elements(s), std::u32string({0xD800, 0x110000}));
}

TEST(StringAccess, FrontAndBack) {
  String s{U'a', U'b', U'c'};
  s.front() = U'x';
  s.back() = U'z';
  const String& constant = s;
  EXPECT_EQ(&constant.front(), s.data());
  EXPECT_EQ(&constant.back(), s.data() + 2);
  EXPECT_EQ(elements(s), U"xbz");
}

TEST(StringAccess, DataIsTerminatedWhateverTheContent) {
  const String s{U'a', 0, 0xFFFFFFFF};
  EXPECT_EQ(s.data()[1], U'\0');
  EXPECT_EQ(s.data()[2], char32_t{0xFFFFFFFF});
  EXPECT_EQ(s.data()[3], U'\0');
}

TEST(StringCapacity, SizeAndLengthCountElements) {
  const String s{U'a', 0, 0x10FFFF, 0xFFFFFFFF};
  EXPECT_EQ(s.size(), 4u);
  EXPECT_EQ(s.length(), 4u);
  EXPECT_FALSE(s.empty());
}

TEST(StringCapacity, MaxSizeIsThatOfTheHeldString) {
  EXPECT_EQ(String().max_size(), std::u32string().max_size());
}

TEST(StringCapacity, ResizeLengthensWithZeros) {
  String s{U'a', U'b'};
  s.resize(5);
  EXPECT_EQ(s.size(), 5u);
  EXPECT_EQ(elements(s), std::u32string({U'a', U'b', 0, 0, 0}));
  EXPECT_EQ(s.data()[5], U'\0');
}

TEST(StringCapacity, ResizeLengthensWithElement) {
  String s{U'a'};
  s.resize(3, U'q');
  EXPECT_EQ(elements(s), U"aqq");
}

TEST(StringCapacity, ResizeShortens) {
  String s{U'a', U'b', U'c'};
  s.resize(1);
  EXPECT_EQ(elements(s), U"a");
  s.resize(0, U'q');
  EXPECT_TRUE(s.empty());
}

TEST(StringCapacity, ResizeAboveMaxSizeThrowsLengthError) {
  String s{U'a'};
  EXPECT_THROW(s.resize(s.max_size() + 1), std::length_error);
  EXPECT_EQ(elements(s), U"a");
}

TEST(StringCapacity, ReserveGivesAtLeastTheCapacity) {
  String s{U'a'};
  s.reserve(100);
  EXPECT_GE(s.capacity(), 100u);
  EXPECT_EQ(elements(s), U"a");
}

TEST(StringCapacity, ReserveAboveMaxSizeThrowsLengthError) {
  String s{U'a'};
  EXPECT_THROW(s.reserve(s.max_size() + 1), std::length_error);
}

TEST(StringCapacity, ShrinkToFitGivesSpareStorageBack) {
  String s{U'a', U'b'};
  s.reserve(200);
  const size_t before = s.capacity();
  s.shrink_to_fit();
  EXPECT_LT(s.capacity(), before);
  EXPECT_GE(s.capacity(), s.size());
  EXPECT_EQ(elements(s), U"ab");
}

TEST(StringCapacity, ClearKeepsStorage) {
  String s = longText();
  const size_t capacity = s.capacity();
  s.clear();
  EXPECT_TRUE(s.empty());
  EXPECT_EQ(s.capacity(), capacity);
  EXPECT_EQ(s.data()[0], U'\0');
}

TEST(StringSwap, MemberExchangesContentAndStorage) {
  String a = longText();
  String b{U'b'};
  b.reserve(80);
  const char32_t* storageA = a.data();
  const char32_t* storageB = b.data();
  const size_t capacityB = b.capacity();
  a.swap(b);
  EXPECT_EQ(elements(a), U"b");
  EXPECT_EQ(elements(b), std::u32string(40, U'x'));
  EXPECT_EQ(a.data(), storageB);
  EXPECT_EQ(b.data(), storageA);
  EXPECT_EQ(a.capacity(), capacityB);
}

TEST(StringSwap, FreeFunctionDoesTheSame) {
  String a = longText();
  String b{U'b', U'c'};
  const char32_t* storageA = a.data();
  zelvo::unicode::swap(a, b);
  EXPECT_EQ(elements(a), U"bc");
  EXPECT_EQ(b.data(), storageA);
  EXPECT_EQ(b.size(), 40u);
}

TEST(StringSwap, FoundByArgumentDependentLookup) {
  String a{U'a'};
  String b{U'b'};
  using std::swap;
  swap(a, b);
  EXPECT_EQ(elements(a), U"b");
  EXPECT_EQ(elements(b), U"a");
}

}  // namespace
