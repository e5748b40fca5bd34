// Tests of CodePage: the default page, decoding, encoding with the loss flag,
// and what becomes of holes, duplicates and odd values in a table.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <map>
#include <random>
#include <string>
#include <type_traits>

#include "codepage/CodePage.h"

namespace {

using zelvo::unicode::CodePage;
using zelvo::unicode::String;
using Table = std::array<char32_t, 128>;

// The interface, member by member.
static_assert(std::is_same<decltype(&CodePage::getName),
                           std::string (CodePage::*)() const>::value,
              "getName returns the name by value");
static_assert(
    std::is_same<decltype(static_cast<std::string (CodePage::*)(const String&)
                                          const>(&CodePage::fromUnicode)),
                 std::string (CodePage::*)(const String&) const>::value,
    "fromUnicode without a flag");
static_assert(
    std::is_same<
        decltype(static_cast<std::string (CodePage::*)(const String&, bool&)
                                 const>(&CodePage::fromUnicode)),
        std::string (CodePage::*)(const String&, bool&) const>::value,
    "fromUnicode with a flag");
static_assert(
    std::is_same<decltype(&CodePage::toUnicode),
                 String (CodePage::*)(const std::string&) const>::value,
    "toUnicode returns a String");
static_assert(std::is_default_constructible<CodePage>::value,
              "the default page");
static_assert(std::is_constructible<CodePage, const std::string&, Table>::value,
              "a page from a name and a table");
static_assert(std::is_copy_constructible<CodePage>::value &&
                  std::is_copy_assignable<CodePage>::value,
              "a page is a plain value");
static_assert(!std::is_polymorphic<CodePage>::value, "no virtual operations");

constexpr char32_t kHole = 0xFFFD;

Table allHoles() {
  Table table;
  table.fill(kHole);
  return table;
}

std::string byte(unsigned value) {
  return std::string(1, static_cast<char>(value));
}

std::u32string decode(const CodePage& page, const std::string& bytes) {
  return page.toUnicode(bytes).toUTF32String();
}

// Every code point from U+0080 to U+10FFFF except the surrogates, in order.
String everyValidCodePointFrom0x80() {
  std::u32string all;
  for (char32_t c = 0x80; c <= 0x10FFFF; ++c)
    if (c < 0xD800 || c > 0xDFFF) all.push_back(c);
  return String(all);
}

TEST(CodePageTest, DefaultPageIsNamedNone) {
  EXPECT_EQ(CodePage().getName(), "none");
}

TEST(CodePageTest, NameIsKeptAsGivenEvenEmptyOrWithOddBytes) {
  EXPECT_EQ(CodePage("", allHoles()).getName(), "");
  const std::string odd("a\0\xFF b", 5);
  EXPECT_EQ(CodePage(odd, allHoles()).getName(), odd);
}

TEST(CodePageTest, DefaultPageDecodesEveryHighByteToTheSameNumber) {
  const CodePage page;
  for (unsigned b = 0x80; b <= 0xFF; ++b)
    EXPECT_EQ(decode(page, byte(b)), std::u32string(1, char32_t(b)))
        << "byte " << b;
}

TEST(CodePageTest, DefaultPageEncodesExactlyU0080ToU00FFToBytes) {
  const CodePage page;
  bool lossy = false;
  const std::string encoded =
      page.fromUnicode(everyValidCodePointFrom0x80(), lossy);
  EXPECT_TRUE(lossy);
  std::size_t mapped = 0;
  for (char b : encoded)
    if (b != '?') ++mapped;
  EXPECT_EQ(mapped, 128u);
  for (unsigned i = 0; i < 128; ++i)
    EXPECT_EQ(static_cast<unsigned char>(encoded[i]), 0x80 + i);
}

TEST(CodePageTest, EmptyTextEncodesToNoBytesWithoutLoss) {
  bool lossy = true;
  EXPECT_EQ(CodePage().fromUnicode(String(), lossy), "");
  EXPECT_FALSE(lossy);
}

TEST(CodePageTest, EmptyBytesDecodeToEmptyText) {
  EXPECT_TRUE(CodePage().toUnicode("").empty());
}

TEST(CodePageTest, FlagThatCameInTrueComesBackFalseOnCleanText) {
  bool lossy = true;
  EXPECT_EQ(CodePage().fromUnicode(String{U'a', 0xE9}, lossy), "a\xE9");
  EXPECT_FALSE(lossy);
}

TEST(CodePageTest, OnlyBadCodePointsEncodeToNoBytesWithoutLoss) {
  bool lossy = true;
  const String bad{0xD800, 0xDFFF, 0x110000, 0xFFFFFFFF};
  EXPECT_EQ(CodePage().fromUnicode(bad, lossy), "");
  EXPECT_FALSE(lossy);
}

TEST(CodePageTest, LoneSurrogateBetweenLettersIsDroppedWithoutLoss) {
  bool lossy = true;
  EXPECT_EQ(CodePage().fromUnicode(String{U'a', 0xD800, U'b'}, lossy), "ab");
  EXPECT_FALSE(lossy);
}

TEST(CodePageTest, ReplacedSurrogateBetweenLettersBecomesQuestionMarkWithLoss) {
  String text{U'a', 0xD800, U'b'};
  text.replaceBadCodePoints();
  bool lossy = false;
  EXPECT_EQ(CodePage().fromUnicode(text, lossy), "a?b");
  EXPECT_TRUE(lossy);
}

TEST(CodePageTest, ReplacementCodePointEncodesToQuestionMarkWithLoss) {
  // The default page has no hole, and still U+FFFD has no byte on it.
  bool lossy = false;
  EXPECT_EQ(CodePage().fromUnicode(String{kHole}, lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST(CodePageTest, NulIsAnOrdinaryCodePointBothWays) {
  bool lossy = true;
  EXPECT_EQ(CodePage().fromUnicode(String{U'a', 0, U'b'}, lossy),
            std::string("a\0b", 3));
  EXPECT_FALSE(lossy);
  EXPECT_EQ(decode(CodePage(), std::string("a\0b", 3)),
            std::u32string(U"a\0b", 3));
}

TEST(CodePageTest, DefaultPageEncodesU00E9ToE9) {
  bool lossy = true;
  EXPECT_EQ(CodePage().fromUnicode(String{0xE9}, lossy), "\xE9");
  EXPECT_FALSE(lossy);
}

TEST(CodePageTest, DefaultPageDecodesE9ToU00E9) {
  EXPECT_EQ(decode(CodePage(), "\xE9"), U"\u00E9");
}

TEST(CodePageTest, DefaultPageEncodesU0100ToQuestionMarkWithLoss) {
  bool lossy = false;
  EXPECT_EQ(CodePage().fromUnicode(String{0x100}, lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST(CodePageTest, HoleByteDecodesToReplacementAndEncodesBackToQuestionMark) {
  Table table = allHoles();
  table[0] = 0x20AC;  // byte 0x80; byte 0x81 stays a hole
  const CodePage page("holes", table);
  const String decoded = page.toUnicode("\x81");
  EXPECT_EQ(decoded.toUTF32String(), U"\uFFFD");
  bool lossy = false;
  EXPECT_EQ(page.fromUnicode(decoded, lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST(CodePageTest, CodePointStandingTwiceEncodesToTheHigherByte) {
  Table table = allHoles();
  table[0] = 0x100;
  table[5] = 0x100;
  const CodePage page("twice", table);
  EXPECT_EQ(decode(page, "\x80"), U"\u0100");
  EXPECT_EQ(decode(page, "\x85"), U"\u0100");
  bool lossy = true;
  EXPECT_EQ(page.fromUnicode(String{0x100}, lossy), "\x85");
  EXPECT_FALSE(lossy);
}

TEST(CodePageTest, TableValueBelow0x80DecodesButAsciiRuleWinsOnEncoding) {
  Table table = allHoles();
  table[0] = U'A';
  const CodePage page("shadowed", table);
  EXPECT_EQ(decode(page, "\x80"), U"A");
  bool lossy = true;
  EXPECT_EQ(page.fromUnicode(String{U'A'}, lossy), "A");
  EXPECT_FALSE(lossy);
}

TEST(CodePageTest, AllHolesTableDecodesEveryHighByteToReplacement) {
  const CodePage page("empty", allHoles());
  for (unsigned b = 0x80; b <= 0xFF; ++b)
    EXPECT_EQ(decode(page, byte(b)), U"\uFFFD") << "byte " << b;
}

TEST(CodePageTest, AllHolesTableEncodesEveryCodePointAbove7FToQuestionMark) {
  const CodePage page("empty", allHoles());
  const String text = everyValidCodePointFrom0x80();
  bool lossy = false;
  const std::string encoded = page.fromUnicode(text, lossy);
  EXPECT_TRUE(lossy);
  EXPECT_EQ(encoded, std::string(text.size(), '?'));
}

TEST(CodePageTest, AsciiPassesUnchangedBothWaysWhateverTheTable) {
  const CodePage page("empty", allHoles());
  std::string bytes;
  String text;
  for (char32_t c = 0; c < 0x80; ++c) {
    bytes.push_back(static_cast<char>(c));
    text.push_back(c);
  }
  bool lossy = true;
  EXPECT_EQ(page.fromUnicode(text, lossy), bytes);
  EXPECT_FALSE(lossy);
  EXPECT_EQ(page.toUnicode(bytes).toUTF32String(), text.toUTF32String());
}

TEST(CodePageTest, BadTableValuesDecodeAsStoredAndVanishOnEncoding) {
  Table table = allHoles();
  table[0] = 0xD800;
  table[1] = 0x110000;
  const CodePage page("bad", table);
  const String decoded = page.toUnicode("\x80\x81");
  EXPECT_EQ(decoded.toUTF32String(), (std::u32string{0xD800, 0x110000}));
  bool lossy = true;
  EXPECT_EQ(page.fromUnicode(decoded, lossy), "");
  EXPECT_FALSE(lossy);
}

TEST(CodePageTest, EncodingLeavesTheTextAsItWas) {
  const String text{U'a', 0xD800, 0x100, 0x110000};
  const std::u32string before = text.toUTF32String();
  bool lossy = false;
  CodePage().fromUnicode(text, lossy);
  EXPECT_EQ(text.toUTF32String(), before);
}

TEST(CodePageTest, EncodingWithoutFlagGivesTheSameBytes) {
  const String text{U'a', 0xE9, 0x100, 0xD800, 0xFFFD, U'z'};
  bool lossy = false;
  EXPECT_EQ(CodePage().fromUnicode(text), CodePage().fromUnicode(text, lossy));
  EXPECT_EQ(CodePage().fromUnicode(text), "a\xE9??z");
}

TEST(CodePageTest, EncodingReservesForTheTextAsItWasBeforeStripping) {
  String text(100, U'a');
  text.append(100, 0xD800);
  bool lossy = true;
  const std::string encoded = CodePage().fromUnicode(text, lossy);
  EXPECT_EQ(encoded, std::string(100, 'a'));
  EXPECT_GE(encoded.capacity(), 200u);
}

TEST(CodePageTest, DecodingGivesOneCodePointPerByte) {
  std::string bytes;
  for (unsigned b = 0; b < 256; ++b) bytes.push_back(static_cast<char>(b));
  const CodePage page("empty", allHoles());
  const String decoded = page.toUnicode(bytes);
  ASSERT_EQ(decoded.size(), 256u);
  for (unsigned b = 0; b < 256; ++b)
    EXPECT_EQ(decoded[b], b < 0x80 ? char32_t(b) : kHole);
}

TEST(CodePageTest, HighBytesIndexTheTableWithoutSignExtension) {
  Table table = allHoles();
  table[0] = 0x1000;
  table[127] = 0x1234;
  const CodePage page("ends", table);
  EXPECT_EQ(decode(page, "\xFF\x80"), U"\u1234\u1000");
}

TEST(CodePageTest, CopyCarriesNameTableAndReverseMap) {
  Table table = allHoles();
  table[3] = 0x4E00;
  const CodePage original("original", table);
  const CodePage copy(original);
  EXPECT_EQ(copy.getName(), "original");
  EXPECT_EQ(decode(copy, "\x83"), U"\u4E00");
  EXPECT_EQ(copy.fromUnicode(String{0x4E00}), "\x83");
}

TEST(CodePageTest, AssignmentReplacesNameTableAndReverseMapTogether) {
  Table table = allHoles();
  table[3] = 0x4E00;
  CodePage page;
  page = CodePage("other", table);
  EXPECT_EQ(page.getName(), "other");
  EXPECT_EQ(decode(page, "\x83\xE9"), U"\u4E00\uFFFD");
  bool lossy = false;
  EXPECT_EQ(page.fromUnicode(String{0x4E00, 0xE9}, lossy), "\x83?");
  EXPECT_TRUE(lossy);
}

// A random table of distinct code points above U+0080 with a few holes.
Table randomTable(std::mt19937& random) {
  Table table;
  std::uniform_int_distribution<char32_t> value(0x80, 0x2FFF);
  for (char32_t& entry : table)
    entry = random() % 10 == 0 ? kHole : value(random);
  return table;
}

// Text of ASCII runs of every length, broken by high bytes.
std::string randomBytes(std::mt19937& random, std::size_t size) {
  std::string bytes;
  while (bytes.size() < size) {
    const std::size_t run = random() % 40;
    for (std::size_t i = 0; i < run; ++i)
      bytes.push_back(static_cast<char>(random() % 0x80));
    bytes.push_back(static_cast<char>(0x80 + random() % 0x80));
  }
  return bytes;
}

TEST(CodePageTest, DecodingAgreesWithABytewiseReference) {
  std::mt19937 random(1252);
  for (int round = 0; round < 50; ++round) {
    const Table table = randomTable(random);
    const CodePage page("random", table);
    const std::string bytes = randomBytes(random, random() % 3000);
    std::u32string expected;
    for (char c : bytes) {
      const unsigned b = static_cast<unsigned char>(c);
      expected.push_back(b < 0x80 ? char32_t(b) : table[b - 0x80]);
    }
    ASSERT_EQ(decode(page, bytes), expected) << "round " << round;
  }
}

TEST(CodePageTest, EncodingAgreesWithACodePointwiseReference) {
  std::mt19937 random(874);
  for (int round = 0; round < 50; ++round) {
    const Table table = randomTable(random);
    const CodePage page("random", table);
    std::map<char32_t, char> reverse;
    for (unsigned i = 0; i < 128; ++i)
      if (table[i] != kHole) reverse[table[i]] = static_cast<char>(0x80 + i);
    String text;
    std::string expected;
    bool expectLossy = false;
    const std::size_t size = random() % 3000;
    while (text.size() < size) {
      const std::size_t run = random() % 40;
      for (std::size_t i = 0; i < run; ++i) {
        const char32_t c = random() % 0x80;
        text.push_back(c);
        expected.push_back(static_cast<char>(c));
      }
      char32_t c;
      switch (random() % 4) {
        case 0:  // a bad code point: no byte, no loss
          c = random() % 2 == 0 ? 0xD800 + random() % 0x800
                                : 0x110000 + random() % 0x1000;
          text.push_back(c);
          continue;
        case 1:
          c = table[random() % 128];
          break;
        default:
          c = 0x80 + random() % 0x3000;
          break;
      }
      text.push_back(c);
      const auto found = reverse.find(c);
      if (found != reverse.end()) {
        expected.push_back(found->second);
      } else {
        expected.push_back('?');
        expectLossy = true;
      }
    }
    bool lossy = !expectLossy;
    ASSERT_EQ(page.fromUnicode(text, lossy), expected) << "round " << round;
    EXPECT_EQ(lossy, expectLossy) << "round " << round;
  }
}

}  // namespace
