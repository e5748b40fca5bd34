// Tests of the built-in pages "Windows-1252" and "Windows-874": what is
// registered at load, their holes, their round trips, and every defined
// position against ICU's converters of the same names.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include "codepage/CodePageTranslator.h"

#ifdef ZELVO_HAVE_ICU
#include <unicode/ucnv.h>
#endif

namespace {

using zelvo::unicode::CodePage;
using zelvo::unicode::CodePageTranslator;
using zelvo::unicode::String;

static_assert(std::is_empty<CodePageTranslator::Initializer>::value,
              "the initializer has no data");
static_assert(
    std::is_default_constructible<CodePageTranslator::Initializer>::value,
    "the initializer takes no argument");
static_assert(std::is_same<decltype(CodePageTranslator::initizlizer),
                           CodePageTranslator::Initializer>::value,
              "the one instance of the initializer");

constexpr char32_t kHole = 0xFFFD;

std::string byte(unsigned value) {
  return std::string(1, static_cast<char>(value));
}

char32_t decodeByte(const std::string& page, unsigned value) {
  const String decoded = CodePageTranslator::translate(byte(value), page);
  EXPECT_EQ(decoded.size(), 1u);
  return decoded.empty() ? 0 : decoded[0];
}

std::string encode(const std::string& page, char32_t codePoint, bool& lossy) {
  return CodePageTranslator::translate(String{codePoint}, page, lossy);
}

std::string allBytes() {
  std::string bytes;
  for (unsigned b = 0; b < 256; ++b) bytes.push_back(static_cast<char>(b));
  return bytes;
}

std::vector<unsigned> holesOf(const std::string& page) {
  std::vector<unsigned> holes;
  for (unsigned b = 0x80; b <= 0xFF; ++b)
    if (decodeByte(page, b) == kHole) holes.push_back(b);
  return holes;
}

// How many code points from U+0080 up have a byte on the page: the size of
// its reverse map, seen from outside.
std::size_t codePointsWithAByte(const std::string& page) {
  std::u32string all;
  for (char32_t c = 0x80; c <= 0x10FFFF; ++c)
    if (c < 0xD800 || c > 0xDFFF) all.push_back(c);
  const std::string encoded = CodePageTranslator::translate(String(all), page);
  std::size_t count = 0;
  for (char b : encoded)
    if (b != '?') ++count;
  return count;
}

TEST(BuiltInCodePagesTest, ExactlyTheTwoPagesAreRegisteredAtLoad) {
  std::vector<std::string> names;
  for (const auto& entry : CodePageTranslator::codePages)
    names.push_back(entry.first);
  EXPECT_EQ(names, (std::vector<std::string>{"Windows-1252", "Windows-874"}));
}

TEST(BuiltInCodePagesTest, HasCodePageKnowsOnlyTheExactNames) {
  EXPECT_TRUE(CodePageTranslator::hasCodePage("Windows-1252"));
  EXPECT_TRUE(CodePageTranslator::hasCodePage("Windows-874"));
  EXPECT_FALSE(CodePageTranslator::hasCodePage("none"));
  EXPECT_FALSE(CodePageTranslator::hasCodePage("windows-1252"));
  EXPECT_FALSE(CodePageTranslator::hasCodePage("windows-874"));
  EXPECT_FALSE(CodePageTranslator::hasCodePage(""));
}

TEST(BuiltInCodePagesTest, PagesCarryTheirNames) {
  EXPECT_EQ(CodePageTranslator::getCodePage("Windows-1252").getName(),
            "Windows-1252");
  EXPECT_EQ(CodePageTranslator::getCodePage("Windows-874").getName(),
            "Windows-874");
}

TEST(BuiltInCodePagesTest, Windows1252EuroSignBothWays) {
  EXPECT_EQ(decodeByte("Windows-1252", 0x80), 0x20ACu);
  bool lossy = true;
  EXPECT_EQ(encode("Windows-1252", 0x20AC, lossy), "\x80");
  EXPECT_FALSE(lossy);
}

TEST(BuiltInCodePagesTest, Windows1252Byte81IsAHoleNotAC1Control) {
  EXPECT_EQ(decodeByte("Windows-1252", 0x81), kHole);
  bool lossy = false;
  EXPECT_EQ(encode("Windows-1252", 0x81, lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST(BuiltInCodePagesTest, Windows1252EncodesReplacementToQuestionMark) {
  bool lossy = false;
  EXPECT_EQ(encode("Windows-1252", kHole, lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST(BuiltInCodePagesTest, Windows1252EncodesU00FFAndU0152) {
  bool lossy = true;
  EXPECT_EQ(encode("Windows-1252", 0xFF, lossy), "\xFF");
  EXPECT_FALSE(lossy);
  lossy = true;
  EXPECT_EQ(encode("Windows-1252", 0x152, lossy), "\x8C");
  EXPECT_FALSE(lossy);
}

TEST(BuiltInCodePagesTest, Windows874ThaiLetterKoKaiBothWays) {
  EXPECT_EQ(decodeByte("Windows-874", 0xA1), 0x0E01u);
  bool lossy = true;
  EXPECT_EQ(encode("Windows-874", 0x0E01, lossy), "\xA1");
  EXPECT_FALSE(lossy);
}

TEST(BuiltInCodePagesTest, Windows874DecodesTheEndsOfTheThaiRuns) {
  EXPECT_EQ(decodeByte("Windows-874", 0xDF), 0x0E3Fu);
  EXPECT_EQ(decodeByte("Windows-874", 0xFB), 0x0E5Bu);
}

TEST(BuiltInCodePagesTest, Windows874BytesDBAndFFAreHoles) {
  EXPECT_EQ(decodeByte("Windows-874", 0xDB), kHole);
  EXPECT_EQ(decodeByte("Windows-874", 0xFF), kHole);
}

TEST(BuiltInCodePagesTest, Windows874HasNoByteForU0E3BOrU00A1) {
  bool lossy = false;
  EXPECT_EQ(encode("Windows-874", 0x0E3B, lossy), "?");
  EXPECT_TRUE(lossy);
  lossy = false;
  EXPECT_EQ(encode("Windows-874", 0xA1, lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST(BuiltInCodePagesTest, Windows874EncodesU00A0AndEllipsis) {
  bool lossy = true;
  EXPECT_EQ(encode("Windows-874", 0xA0, lossy), "\xA0");
  EXPECT_FALSE(lossy);
  lossy = true;
  EXPECT_EQ(encode("Windows-874", 0x2026, lossy), "\x85");
  EXPECT_FALSE(lossy);
}

TEST(BuiltInCodePagesTest, Windows874EncodesReplacementToQuestionMark) {
  bool lossy = false;
  EXPECT_EQ(encode("Windows-874", kHole, lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST(BuiltInCodePagesTest, Windows1252HasExactlyFiveHoles) {
  EXPECT_EQ(holesOf("Windows-1252"),
            (std::vector<unsigned>{0x81, 0x8D, 0x8F, 0x90, 0x9D}));
}

TEST(BuiltInCodePagesTest, Windows874HasExactlyThirtyOneHoles) {
  std::vector<unsigned> expected;
  for (unsigned b = 0x81; b <= 0x84; ++b) expected.push_back(b);
  for (unsigned b = 0x86; b <= 0x90; ++b) expected.push_back(b);
  for (unsigned b = 0x98; b <= 0x9F; ++b) expected.push_back(b);
  for (unsigned b = 0xDB; b <= 0xDE; ++b) expected.push_back(b);
  for (unsigned b = 0xFC; b <= 0xFF; ++b) expected.push_back(b);
  ASSERT_EQ(expected.size(), 31u);
  EXPECT_EQ(holesOf("Windows-874"), expected);
}

TEST(BuiltInCodePagesTest, Windows1252Gives123CodePointsAByte) {
  EXPECT_EQ(codePointsWithAByte("Windows-1252"), 123u);
}

TEST(BuiltInCodePagesTest, Windows874Gives97CodePointsAByte) {
  EXPECT_EQ(codePointsWithAByte("Windows-874"), 97u);
}

TEST(BuiltInCodePagesTest, TablesHoldNoCodePointTwiceAndNoneBelow0x80) {
  for (const std::string page : {"Windows-1252", "Windows-874"}) {
    std::set<char32_t> seen;
    for (unsigned b = 0x80; b <= 0xFF; ++b) {
      const char32_t c = decodeByte(page, b);
      if (c == kHole) continue;
      EXPECT_GE(c, 0x80u) << page << " byte " << b;
      EXPECT_TRUE(seen.insert(c).second) << page << " byte " << b;
    }
  }
}

TEST(BuiltInCodePagesTest, EveryByteThatIsNoHoleComesBackUnchanged) {
  for (const std::string page : {"Windows-1252", "Windows-874"}) {
    for (unsigned b = 0; b <= 0xFF; ++b) {
      const String decoded = CodePageTranslator::translate(byte(b), page);
      if (decoded[0] == kHole) continue;
      bool lossy = true;
      EXPECT_EQ(CodePageTranslator::translate(decoded, page, lossy), byte(b))
          << page << " byte " << b;
      EXPECT_FALSE(lossy) << page << " byte " << b;
    }
  }
}

// Decodes all 256 bytes in one string and encodes the result again; counts
// the bytes that came back as they were, and checks that all others are '?'.
std::size_t survivorsOfARoundTrip(const std::string& page) {
  const std::string bytes = allBytes();
  bool lossy = false;
  const std::string back = CodePageTranslator::translate(
      CodePageTranslator::translate(bytes, page), page, lossy);
  EXPECT_EQ(back.size(), 256u);
  EXPECT_TRUE(lossy);
  std::size_t survivors = 0;
  for (std::size_t i = 0; i < back.size() && i < bytes.size(); ++i) {
    if (back[i] == bytes[i])
      ++survivors;
    else
      EXPECT_EQ(back[i], '?') << page << " byte " << i;
  }
  return survivors;
}

TEST(BuiltInCodePagesTest, Windows1252RoundTrip251Of256Bytes) {
  EXPECT_EQ(survivorsOfARoundTrip("Windows-1252"), 251u);
}

TEST(BuiltInCodePagesTest, Windows874RoundTrip225Of256Bytes) {
  EXPECT_EQ(survivorsOfARoundTrip("Windows-874"), 225u);
}

TEST(BuiltInCodePagesTest, InitializerRegistersBothPagesAgain) {
  const CodePage w1252 = CodePageTranslator::getCodePage("Windows-1252");
  const CodePage w874 = CodePageTranslator::getCodePage("Windows-874");
  CodePageTranslator::unregisterCodePage("Windows-1252");
  CodePageTranslator::unregisterCodePage("Windows-874");
  ASSERT_TRUE(CodePageTranslator::codePages.empty());

  CodePageTranslator::Initializer again;
  (void)again;
  ASSERT_EQ(CodePageTranslator::codePages.size(), 2u);
  const std::string bytes = allBytes();
  EXPECT_EQ(
      CodePageTranslator::translate(bytes, "Windows-1252").toUTF32String(),
      w1252.toUnicode(bytes).toUTF32String());
  EXPECT_EQ(CodePageTranslator::translate(bytes, "Windows-874").toUTF32String(),
            w874.toUnicode(bytes).toUTF32String());
}

#ifdef ZELVO_HAVE_ICU

// One ICU converter, closed at the end of the scope.
class IcuConverter {
 public:
  explicit IcuConverter(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    converter = ucnv_open(name, &status);
    if (U_FAILURE(status)) converter = nullptr;
  }
  ~IcuConverter() {
    if (converter != nullptr) ucnv_close(converter);
  }
  IcuConverter(const IcuConverter&) = delete;
  IcuConverter& operator=(const IcuConverter&) = delete;

  bool open() const { return converter != nullptr; }

  std::u16string decode(const std::string& bytes) {
    UChar buffer[16];
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        ucnv_toUChars(converter, buffer, 16, bytes.data(),
                      static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) return u"<error>";
    return std::u16string(buffer, buffer + length);
  }

  std::string encode(const std::u16string& text) {
    char buffer[16];
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        ucnv_fromUChars(converter, buffer, 16, text.data(),
                        static_cast<int32_t>(text.size()), &status);
    if (U_FAILURE(status)) return "<error>";
    return std::string(buffer, buffer + length);
  }

 private:
  UConverter* converter = nullptr;
};

// Every position that our table defines must be ICU's in both directions.
// The holes are ours: ICU fills some of them, and that is not compared.
void expectDefinedPositionsAsIcu(const std::string& page, const char* icuName,
                                 std::size_t expectedDefined) {
  IcuConverter icu(icuName);
  ASSERT_TRUE(icu.open()) << "ICU has no converter " << icuName;
  std::size_t defined = 0;
  for (unsigned b = 0x80; b <= 0xFF; ++b) {
    const char32_t ours = decodeByte(page, b);
    if (ours == kHole) continue;
    ++defined;
    ASSERT_LT(ours, 0x10000u);  // both pages stay in the BMP
    const std::u16string expected(1, static_cast<char16_t>(ours));
    EXPECT_EQ(icu.decode(byte(b)), expected) << page << " byte " << b;
    EXPECT_EQ(icu.encode(expected), byte(b)) << page << " byte " << b;
  }
  EXPECT_EQ(defined, expectedDefined);
}

TEST(BuiltInCodePagesTest, Windows1252AgreesWithIcuInEveryDefinedPosition) {
  expectDefinedPositionsAsIcu("Windows-1252", "windows-1252", 123);
}

TEST(BuiltInCodePagesTest, Windows874AgreesWithIcuInEveryDefinedPosition) {
  expectDefinedPositionsAsIcu("Windows-874", "windows-874", 97);
}

#else

TEST(BuiltInCodePagesTest, Windows1252AgreesWithIcuInEveryDefinedPosition) {
  GTEST_SKIP() << "built without ICU";
}

TEST(BuiltInCodePagesTest, Windows874AgreesWithIcuInEveryDefinedPosition) {
  GTEST_SKIP() << "built without ICU";
}

#endif

}  // namespace
