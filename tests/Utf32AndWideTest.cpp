// Tests of the UTF-32, wide and native conversions of String: straight
// copies of 32-bit units, and UTF-8 under the native name.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

#include "string/String.h"

namespace {

using zelvo::unicode::String;

static_assert(sizeof(wchar_t) == 4, "the wide conversions need 32-bit wchar_t");
static_assert(std::is_same<decltype(&String::fromUTF32String),
                           void (String::*)(const std::u32string&)>::value,
              "fromUTF32String takes a std::u32string and returns nothing");
static_assert(std::is_same<decltype(&String::toUTF32String),
                           const std::u32string& (String::*)() const>::value,
              "toUTF32String returns a reference to the held string");
static_assert(std::is_same<decltype(&String::fromWString),
                           void (String::*)(const std::wstring&)>::value,
              "fromWString takes a std::wstring and returns nothing");
static_assert(std::is_same<decltype(&String::toWString),
                           std::wstring (String::*)() const>::value,
              "toWString returns a std::wstring by value");
static_assert(std::is_same<decltype(&String::fromNativeString),
                           void (String::*)(const std::string&)>::value,
              "fromNativeString takes a std::string and returns nothing");
static_assert(std::is_same<decltype(&String::toNativeString),
                           std::string (String::*)() const>::value,
              "toNativeString returns a std::string by value");
static_assert(std::is_constructible<String, const std::u32string&>::value,
              "a String is copied from a std::u32string");
static_assert(std::is_nothrow_constructible<String, std::u32string&&>::value,
              "a String takes over a std::u32string without throwing");
static_assert(std::is_constructible<String, const std::wstring&>::value,
              "a String is made from a std::wstring");

// ---------------------------------------------------------------------------
// UTF-32.

TEST(Utf32Conversion, FromUtf32CopiesEveryElement) {
  const std::u32string source{0x41, 0x0, 0xD800, 0x110000, 0xFFFFFFFF};
  String s(U"old");
  s.fromUTF32String(source);
  EXPECT_TRUE(s.toUTF32String() == source);
}

TEST(Utf32Conversion, FromItsOwnHeldStringLeavesTheObjectAsItIs) {
  String s(std::u32string{0x41, 0xD800, 0x42});
  const char32_t* storage = s.data();
  s.fromUTF32String(s.toUTF32String());
  EXPECT_TRUE(s.toUTF32String() == (std::u32string{0x41, 0xD800, 0x42}));
  EXPECT_EQ(s.data(), storage);
}

TEST(Utf32Conversion, EmptyU32StringEmptiesTheObject) {
  String s(U"old content");
  s.fromUTF32String(std::u32string());
  EXPECT_TRUE(s.empty());
}

TEST(Utf32Conversion, FromUtf32KeepsStorageThatIsLargeEnough) {
  String s(std::u32string(100, U'x'));
  const char32_t* storage = s.data();
  const size_t capacity = s.capacity();
  s.fromUTF32String(std::u32string(50, U'y'));
  EXPECT_EQ(s.data(), storage);
  EXPECT_EQ(s.capacity(), capacity);
  EXPECT_EQ(s.size(), 50u);
}

TEST(Utf32Conversion, ToUtf32IsTheHeldStringItself) {
  const String s(std::u32string(40, U'x'));
  const std::u32string& held = s.toUTF32String();
  EXPECT_EQ(&held, &s.toUTF32String());
  EXPECT_EQ(held.data(), s.data());
}

TEST(Utf32Conversion, ReferenceShowsLaterEdits) {
  String s(U"ab");
  const std::u32string& held = s.toUTF32String();
  s.push_back(U'c');
  EXPECT_EQ(held, U"abc");
}

TEST(Utf32Conversion, CopyConstructorCopiesTheElements) {
  std::u32string source{0x41, 0x0, 0xDFFF};
  const String s(source);
  EXPECT_TRUE(s.toUTF32String() == source);
  EXPECT_EQ(source.size(), 3u);  // the argument is untouched
}

TEST(Utf32Conversion, MoveConstructorTakesOverTheStorage) {
  std::u32string source(100, U'x');
  const char32_t* storage = source.data();
  const String s(std::move(source));
  EXPECT_EQ(s.data(), storage);
  EXPECT_EQ(s.size(), 100u);
}

TEST(Utf32Conversion, MoveConstructorLeavesTheArgumentEmpty) {
  std::u32string longSource(100, U'x');
  const String a(std::move(longSource));
  EXPECT_TRUE(longSource.empty());
  std::u32string shortSource(U"ab");
  const String b(std::move(shortSource));
  EXPECT_TRUE(shortSource.empty());
  EXPECT_EQ(b.toUTF32String(), U"ab");
}

TEST(Utf32Conversion, NulElementsCarriedBothWays) {
  const std::u32string source{0x0, 0x41, 0x0};
  const String s(source);
  EXPECT_EQ(s.size(), 3u);
  EXPECT_TRUE(s.toUTF32String() == source);
}

// ---------------------------------------------------------------------------
// Wide strings.

TEST(WideConversion, BadCodePointsSurviveBothWays) {
  const String s(std::u32string{0xD800, 0x110000});
  const std::wstring wide = s.toWString();
  ASSERT_EQ(wide.size(), 2u);
  EXPECT_EQ(static_cast<char32_t>(wide[0]), 0xD800u);
  EXPECT_EQ(static_cast<char32_t>(wide[1]), 0x110000u);
  EXPECT_TRUE(String(wide).toUTF32String() == s.toUTF32String());
}

TEST(WideConversion, SurrogateUnitsAreNotJoined) {
  std::wstring wide;
  wide.push_back(static_cast<wchar_t>(0xD83D));
  wide.push_back(static_cast<wchar_t>(0xDE00));
  const String s(wide);
  EXPECT_EQ(s.size(), 2u);
  EXPECT_TRUE(s.hasBadCodePoints());
  EXPECT_TRUE(s.toUTF32String() == (std::u32string{0xD83D, 0xDE00}));
}

TEST(WideConversion, NegativeUnitKeepsItsBits) {
  const std::wstring wide(1, static_cast<wchar_t>(-1));
  const String s(wide);
  ASSERT_EQ(s.size(), 1u);
  EXPECT_EQ(s[0], 0xFFFFFFFFu);
  const std::wstring back = s.toWString();
  ASSERT_EQ(back.size(), 1u);
  EXPECT_EQ(back[0], static_cast<wchar_t>(-1));
}

TEST(WideConversion, EmptyWStringEmptiesTheObject) {
  String s(U"old content");
  s.fromWString(std::wstring());
  EXPECT_TRUE(s.empty());
}

TEST(WideConversion, NulUnitsCarriedBothWays) {
  std::wstring wide;
  wide.push_back(L'a');
  wide.push_back(L'\0');
  wide.push_back(L'b');
  const String s(wide);
  EXPECT_TRUE(s.toUTF32String() == (std::u32string{0x61, 0x0, 0x62}));
  EXPECT_TRUE(s.toWString() == wide);
}

TEST(WideConversion, LengthEqualsTheSourceLength) {
  const std::wstring wide = L"h\u00E9llo \U0001F600";
  const String s(wide);
  EXPECT_EQ(s.size(), wide.size());
  EXPECT_EQ(s.toWString().size(), wide.size());
}

TEST(WideConversion, FromWStringKeepsStorageThatIsLargeEnough) {
  String s(std::u32string(100, U'x'));
  const char32_t* storage = s.data();
  s.fromWString(std::wstring(50, L'y'));
  EXPECT_EQ(s.data(), storage);
  EXPECT_EQ(s.toUTF32String(), std::u32string(50, U'y'));
}

TEST(WideConversion, ToWStringLeavesTheObjectUnchanged) {
  const String s(U"abc");
  (void)s.toWString();
  EXPECT_EQ(s.toUTF32String(), U"abc");
}

// ---------------------------------------------------------------------------
// Native strings: UTF-8 under another name.

TEST(NativeConversion, FromNativeIsFromUtf8) {
  const std::string inputs[] = {
      "",
      "plain",
      std::string("\xC3\xA9\x00\x41", 4),
      "\xF4\x90\x80\x80",
      "\xC3\x41\xE2\x82",
      "\x80\xFF\xED\xA0\x80",
  };
  for (const std::string& in : inputs) {
    String native;
    native.fromNativeString(in);
    String utf8;
    utf8.fromUTF8String(in);
    EXPECT_TRUE(native.toUTF32String() == utf8.toUTF32String());
  }
}

TEST(NativeConversion, AboveLargestCodePointDecodes) {
  String s;
  s.fromNativeString("\xF4\x90\x80\x80");
  EXPECT_TRUE(s.toUTF32String() == std::u32string(1, 0x110000));
}

TEST(NativeConversion, EmptyInputEmptiesTheObject) {
  String s(U"old content");
  s.fromNativeString(std::string());
  EXPECT_TRUE(s.empty());
}

TEST(NativeConversion, ToNativeIsToUtf8) {
  const String s(std::u32string{0x41, 0xD800, 0xE9, 0x110000, 0x1F600, 0x0});
  EXPECT_EQ(s.toNativeString(), s.toUTF8String());
  EXPECT_EQ(s.toNativeString(), std::string("A\xC3\xA9\xF0\x9F\x98\x80\0", 8));
}

TEST(NativeConversion, SurrogateIsDropped) {
  const String s(std::u32string{0x41, 0xDC00, 0x42});
  EXPECT_EQ(s.toNativeString(), "AB");
}

}  // namespace
