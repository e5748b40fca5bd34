// The conversions side by side: how each output conversion treats bad code
// points, and how each input conversion treats malformed input.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "string/String.h"

namespace {

using zelvo::unicode::String;

String elements(std::initializer_list<char32_t> list) {
  return String(std::u32string(list));
}

String fromUtf8(const std::string& in) {
  String s;
  s.fromUTF8String(in);
  return s;
}

String fromNative(const std::string& in) {
  String s;
  s.fromNativeString(in);
  return s;
}

String fromUtf16(std::initializer_list<unsigned> in) {
  std::u16string units;
  for (unsigned u : in) units.push_back(static_cast<char16_t>(u));
  String s;
  s.fromUTF16String(units);
  return s;
}

String fromWide(std::initializer_list<uint32_t> in) {
  std::wstring wide;
  for (uint32_t u : in) wide.push_back(static_cast<wchar_t>(u));
  String s;
  s.fromWString(wide);
  return s;
}

bool isWellFormedUtf16(const std::u16string& units) {
  for (size_t i = 0; i < units.size(); ++i) {
    const char16_t u = units[i];
    if (u >= 0xDC00 && u <= 0xDFFF) return false;
    if (u >= 0xD800 && u <= 0xDBFF) {
      if (i + 1 == units.size() || units[i + 1] < 0xDC00 ||
          units[i + 1] > 0xDFFF)
        return false;
      ++i;
    }
  }
  return true;
}

// Shortest forms only, no surrogates, nothing above U+10FFFF.
bool isWellFormedUtf8(const std::string& bytes) {
  size_t i = 0;
  while (i < bytes.size()) {
    const unsigned lead = static_cast<unsigned char>(bytes[i]);
    size_t length;
    uint32_t value;
    if (lead < 0x80) {
      ++i;
      continue;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
      length = 2;
      value = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      length = 3;
      value = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      length = 4;
      value = lead & 0x07;
    } else {
      return false;
    }
    if (bytes.size() - i < length) return false;
    for (size_t k = 1; k < length; ++k) {
      const unsigned b = static_cast<unsigned char>(bytes[i + k]);
      if ((b & 0xC0) != 0x80) return false;
      value = (value << 6) | (b & 0x3F);
    }
    const uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (value < smallest[length] || value > 0x10FFFF ||
        (value >= 0xD800 && value <= 0xDFFF))
      return false;
    i += length;
  }
  return true;
}

bool containsReplacement(const std::u32string& s) {
  return s.find(U'\uFFFD') != std::u32string::npos;
}

// ---------------------------------------------------------------------------
// Bad code points going out.

const char32_t kSurrogates[] = {0xD800, 0xDBFF, 0xDC00, 0xDFFF};
const char32_t kTooLarge[] = {0x110000,   0x1FFFFF,   0x211FFF,
                              0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

TEST(OutgoingPolicy, SurrogateIsDroppedByUtf8AndNative) {
  for (char32_t c : kSurrogates) {
    const String s = elements({0x41, c, 0x42});
    EXPECT_EQ(s.toUTF8String(), "AB") << std::hex << c;
    EXPECT_EQ(s.toNativeString(), "AB") << std::hex << c;
  }
}

TEST(OutgoingPolicy, SurrogateBecomesAWellFormedPairForValuePlus100000) {
  for (char32_t c : kSurrogates) {
    const std::u16string units = elements({c}).toUTF16String();
    ASSERT_EQ(units.size(), 2u);
    EXPECT_TRUE(isWellFormedUtf16(units)) << std::hex << c;
    const char32_t read =
        0x10000 + ((units[0] - 0xD800u) << 10) + (units[1] - 0xDC00u);
    EXPECT_EQ(read, c + 0x100000) << std::hex << c;
  }
}

TEST(OutgoingPolicy, SurrogateIsUnchangedInUtf32AndWide) {
  for (char32_t c : kSurrogates) {
    const String s = elements({c});
    EXPECT_TRUE(s.toUTF32String() == std::u32string(1, c));
    EXPECT_EQ(s.toWString(), std::wstring(1, static_cast<wchar_t>(c)));
  }
}

TEST(OutgoingPolicy, TooLargeIsDroppedByUtf8AndNative) {
  for (char32_t c : kTooLarge) {
    const String s = elements({0x41, c, 0x42});
    EXPECT_EQ(s.toUTF8String(), "AB") << std::hex << c;
    EXPECT_EQ(s.toNativeString(), "AB") << std::hex << c;
  }
}

TEST(OutgoingPolicy, TooLargeBecomesALoneHighSurrogateInUtf16) {
  for (char32_t c : kTooLarge) {
    EXPECT_TRUE(elements({c}).toUTF16String() ==
                std::u16string(1, static_cast<char16_t>(0xD800)))
        << std::hex << c;
  }
}

TEST(OutgoingPolicy, TooLargeIsUnchangedInUtf32AndWide) {
  for (char32_t c : kTooLarge) {
    const String s = elements({c});
    EXPECT_TRUE(s.toUTF32String() == std::u32string(1, c));
    EXPECT_EQ(s.toWString(), std::wstring(1, static_cast<wchar_t>(c)));
  }
}

TEST(OutgoingPolicy, NoncharactersUnassignedAndReplacementEncodeNormally) {
  struct Row {
    char32_t element;
    std::string utf8;
    std::u16string utf16;
  };
  const Row rows[] = {
      {0xFDD0, "\xEF\xB7\x90", u"\uFDD0"},
      {0xFFFE, "\xEF\xBF\xBE", u"\uFFFE"},
      {0xFFFF, "\xEF\xBF\xBF", u"\uFFFF"},
      {0x1FFFE, "\xF0\x9F\xBF\xBE", u"\U0001FFFE"},
      {0x10FFFF, "\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
      {0x0378, "\xCD\xB8", u"\u0378"},
      {0xE0000, "\xF3\xA0\x80\x80", u"\U000E0000"},
      {0xFFFD, "\xEF\xBF\xBD", u"\uFFFD"},
  };
  for (const Row& row : rows) {
    const String s = elements({row.element});
    EXPECT_EQ(s.toUTF8String(), row.utf8) << std::hex << row.element;
    EXPECT_EQ(s.toNativeString(), row.utf8) << std::hex << row.element;
    EXPECT_TRUE(s.toUTF16String() == row.utf16) << std::hex << row.element;
    EXPECT_TRUE(s.toUTF32String() == std::u32string(1, row.element));
    EXPECT_EQ(s.toWString(),
              std::wstring(1, static_cast<wchar_t>(row.element)));
  }
}

TEST(OutgoingPolicy, NoEncoderWritesAReplacementOfItsOwn) {
  const String s = elements({0xD800, 0xDFFF, 0x110000, 0xFFFFFFFF});
  EXPECT_EQ(s.toUTF8String().find("\xEF\xBF\xBD"), std::string::npos);
  EXPECT_EQ(s.toUTF16String().find(u'\uFFFD'), std::u16string::npos);
  EXPECT_EQ(s.toWString().find(L'\uFFFD'), std::wstring::npos);
}

TEST(OutgoingPolicy, AfterStrippingEveryEncoderAgreesAndIsWellFormed) {
  String s = elements({0x41, 0xD800, 0xE9, 0x110000, 0x1F600, 0xDFFF, 0xFFFD});
  s.stripBadCodePoints();
  const std::string utf8 = s.toUTF8String();
  const std::u16string utf16 = s.toUTF16String();
  EXPECT_TRUE(isWellFormedUtf8(utf8));
  EXPECT_TRUE(isWellFormedUtf16(utf16));
  EXPECT_TRUE(fromUtf8(utf8).toUTF32String() == s.toUTF32String());
  String back;
  back.fromUTF16String(utf16);
  EXPECT_TRUE(back.toUTF32String() == s.toUTF32String());
}

TEST(OutgoingPolicy, AfterReplacingEveryEncoderAgreesAndIsWellFormed) {
  String s = elements({0x41, 0xD800, 0xE9, 0x110000, 0x1F600, 0xDFFF});
  s.replaceBadCodePoints();
  const std::string utf8 = s.toUTF8String();
  const std::u16string utf16 = s.toUTF16String();
  EXPECT_TRUE(isWellFormedUtf8(utf8));
  EXPECT_TRUE(isWellFormedUtf16(utf16));
  EXPECT_TRUE(fromUtf8(utf8).toUTF32String() == s.toUTF32String());
  String back;
  back.fromUTF16String(utf16);
  EXPECT_TRUE(back.toUTF32String() == s.toUTF32String());
  EXPECT_EQ(s.size(), 6u);
}

// ---------------------------------------------------------------------------
// Malformed input coming in.

TEST(IncomingPolicy, Utf8SkipsEveryByteThatCannotStartASequence) {
  for (int b = 0x80; b <= 0xFF; ++b) {
    if (b >= 0xC0 && b <= 0xF7) continue;
    const std::string in{static_cast<char>(b), 'A'};
    EXPECT_TRUE(fromUtf8(in).toUTF32String() == U"A") << std::hex << b;
    EXPECT_TRUE(fromNative(in).toUTF32String() == U"A") << std::hex << b;
  }
}

TEST(IncomingPolicy, Utf16HasNoUnitThatCannotStartAPair) {
  // Surrogates of either kind start a pair with whatever follows.
  for (unsigned u : {0xD800u, 0xDBFFu, 0xDC00u, 0xDFFFu}) {
    EXPECT_EQ(fromUtf16({u, 0x41}).size(), 1u) << std::hex << u;
  }
}

TEST(IncomingPolicy, WideHasNoUnitThatCannotStartAnElement) {
  const String s = fromWide({0xDC00, 0xD800, 0x110000, 0xFFFFFFFF, 0x80});
  EXPECT_TRUE(s.toUTF32String() ==
              (std::u32string{0xDC00, 0xD800, 0x110000, 0xFFFFFFFF, 0x80}));
}

TEST(IncomingPolicy, TruncatedSequenceIsDropped) {
  EXPECT_TRUE(fromUtf8("A\xF0\x9F\x98").toUTF32String() == U"A");
  EXPECT_TRUE(fromNative("A\xE2\x82").toUTF32String() == U"A");
  EXPECT_TRUE(fromUtf16({0x41, 0xD83D}).toUTF32String() == U"A");
  EXPECT_TRUE(fromUtf16({0x41, 0xDE00}).toUTF32String() == U"A");
}

TEST(IncomingPolicy, Utf32AndWideHaveNoTruncation) {
  const std::u32string halfPair{0x41, 0xD83D};
  EXPECT_TRUE(String(halfPair).toUTF32String() == halfPair);
  EXPECT_TRUE(fromWide({0x41, 0xD83D}).toUTF32String() == halfPair);
}

TEST(IncomingPolicy, MalformedSequenceIsTakenAsItStands) {
  // UTF-8: the low bits of the swallowed bytes give the value.
  EXPECT_TRUE(fromUtf8("\xC3\x41").toUTF32String() == U"\u00C1");
  EXPECT_TRUE(fromNative("\xE2\x41\x42").toUTF32String() == U"\u2042");
  // UTF-16: the pair sum gives the value.
  EXPECT_TRUE(fromUtf16({0xD800, 0x41}).toUTF32String() == U"\u2441");
  EXPECT_TRUE(fromUtf16({0xDC00, 0xDC00}).toUTF32String() ==
              std::u32string(1, 0x110000));
}

TEST(IncomingPolicy, EveryDecoderCanGiveASurrogateElement) {
  const std::u32string surrogate(1, 0xD800);
  EXPECT_TRUE(fromUtf8("\xED\xA0\x80").toUTF32String() == surrogate);
  EXPECT_TRUE(fromNative("\xED\xA0\x80").toUTF32String() == surrogate);
  EXPECT_TRUE(fromUtf16({0xD800, 0xB400}).toUTF32String() == surrogate);
  EXPECT_TRUE(String(surrogate).toUTF32String() == surrogate);
  EXPECT_TRUE(fromWide({0xD800}).toUTF32String() == surrogate);
}

TEST(IncomingPolicy, Utf8GivesNothingAbove1FFFFF) {
  // Every four-byte lead with every pattern of low bits behind it, in one
  // input: no value passes the one that F7 BF BF BF gives.
  std::string in;
  for (unsigned lead = 0xF0; lead <= 0xF7; ++lead) {
    for (unsigned bits = 0; bits < 64 * 64 * 64; ++bits) {
      in.push_back(static_cast<char>(lead));
      in.push_back(static_cast<char>(0x80 | (bits >> 12)));
      in.push_back(static_cast<char>(0x80 | ((bits >> 6) & 0x3F)));
      in.push_back(static_cast<char>(0x80 | (bits & 0x3F)));
    }
  }
  const std::u32string out = fromUtf8(in).toUTF32String();
  ASSERT_EQ(out.size(), 8u * 64 * 64 * 64);
  EXPECT_EQ(*std::max_element(out.begin(), out.end()), 0x1FFFFFu);
  EXPECT_TRUE(fromUtf8("\xF7\xBF\xBF\xBF").toUTF32String() ==
              std::u32string(1, 0x1FFFFF));
}

TEST(IncomingPolicy, Utf16GivesNothingAbove211FFF) {
  std::u16string in;
  for (uint32_t u = 0xD800; u <= 0xDFFF; ++u) {
    in.push_back(static_cast<char16_t>(u));
    in.push_back(static_cast<char16_t>(0xFFFF));
  }
  String s;
  s.fromUTF16String(in);
  const std::u32string& out = s.toUTF32String();
  ASSERT_EQ(out.size(), 0x800u);
  EXPECT_EQ(*std::max_element(out.begin(), out.end()), 0x211FFFu);
}

TEST(IncomingPolicy, Utf32AndWideGiveEveryValueUpToFFFFFFFF) {
  EXPECT_TRUE(String(std::u32string(1, 0xFFFFFFFF)).toUTF32String() ==
              std::u32string(1, 0xFFFFFFFF));
  EXPECT_TRUE(fromWide({0xFFFFFFFF}).toUTF32String() ==
              std::u32string(1, 0xFFFFFFFF));
}

TEST(IncomingPolicy, NoDecoderCreatesAReplacement) {
  EXPECT_FALSE(containsReplacement(
      fromUtf8("\x80\xBF\xF8\xFF\xC3\x41\xED\xA0\x80\xE2\x82")
          .toUTF32String()));
  EXPECT_FALSE(containsReplacement(
      fromUtf16({0xDC00, 0x41, 0xD800, 0xD800, 0xDFFF}).toUTF32String()));
  EXPECT_FALSE(
      containsReplacement(fromWide({0xD800, 0xFFFFFFFF}).toUTF32String()));
}

}  // namespace
