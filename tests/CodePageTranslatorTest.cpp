// Tests of CodePageTranslator: registering, finding, replacing and removing
// pages by name, translating through them, and the unknown-name exception.
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <exception>
#include <map>
#include <string>
#include <type_traits>

#include "codepage/CodePageTranslator.h"

namespace {

using zelvo::unicode::CodePage;
using zelvo::unicode::CodePageTranslator;
using zelvo::unicode::String;
using Table = std::array<char32_t, 128>;
using Exceptions = CodePageTranslator::exceptions;

// The exception type: a bare 32-bit enumeration, thrown by value.
static_assert(std::is_enum<Exceptions>::value, "exceptions is an enumeration");
static_assert(sizeof(Exceptions) * CHAR_BIT == 32, "exceptions is 32 bits");
static_assert(sizeof(std::underlying_type<Exceptions>::type) * CHAR_BIT == 32,
              "exceptions has a 32-bit underlying type");
static_assert(static_cast<std::underlying_type<Exceptions>::type>(
                  CodePageTranslator::unknownCodePage) == 0,
              "unknownCodePage is 0");
static_assert(!std::is_class<Exceptions>::value &&
                  !std::is_base_of<std::exception, Exceptions>::value,
              "exceptions is not derived from std::exception");

// The static members and their types.
static_assert(std::is_same<decltype(CodePageTranslator::codePages),
                           std::map<std::string, CodePage>>::value,
              "the registry is an ordered map by name");
static_assert(std::is_same<decltype(&CodePageTranslator::registerCodePage),
                           void (*)(const CodePage&)>::value,
              "registerCodePage");
static_assert(std::is_same<decltype(&CodePageTranslator::hasCodePage),
                           bool (*)(const std::string&)>::value,
              "hasCodePage");
static_assert(std::is_same<decltype(&CodePageTranslator::getCodePage),
                           const CodePage& (*)(const std::string&)>::value,
              "getCodePage returns a reference into the registry");
static_assert(
    std::is_same<decltype(static_cast<String (*)(const std::string&,
                                                 const std::string&)>(
                     &CodePageTranslator::translate)),
                 String (*)(const std::string&, const std::string&)>::value,
    "translate decoding");
static_assert(
    std::is_same<decltype(static_cast<std::string (*)(const String&,
                                                      const std::string&)>(
                     &CodePageTranslator::translate)),
                 std::string (*)(const String&, const std::string&)>::value,
    "translate encoding");
static_assert(
    std::is_same<
        decltype(static_cast<std::string (*)(const String&, const std::string&,
                                             bool&)>(
            &CodePageTranslator::translate)),
        std::string (*)(const String&, const std::string&, bool&)>::value,
    "translate encoding with a flag");
static_assert(std::is_same<decltype(&CodePageTranslator::unregisterCodePage),
                           void (*)(const std::string&)>::value,
              "unregisterCodePage");

const std::string kUnknown = "No Such Page";

Table tableWith(std::size_t entry, char32_t codePoint) {
  Table table;
  table.fill(0xFFFD);
  table[entry] = codePoint;
  return table;
}

// The names and, for each, the decoding of all 256 bytes: enough to tell
// whether the registry changed.
std::map<std::string, std::u32string> snapshot() {
  std::string everyByte;
  for (unsigned b = 0; b < 256; ++b) everyByte.push_back(static_cast<char>(b));
  std::map<std::string, std::u32string> result;
  for (const auto& entry : CodePageTranslator::codePages)
    result[entry.first] = entry.second.toUnicode(everyByte).toUTF32String();
  return result;
}

// Runs call and expects exactly unknownCodePage, thrown by value as the bare
// enumeration.
template <typename Call>
void expectUnknownCodePage(Call call) {
  try {
    call();
    ADD_FAILURE() << "nothing was thrown";
  } catch (const std::exception&) {
    ADD_FAILURE() << "a std::exception was thrown";
  } catch (Exceptions thrown) {
    EXPECT_EQ(thrown, CodePageTranslator::unknownCodePage);
  } catch (...) {
    ADD_FAILURE() << "something else was thrown";
  }
}

// Each test leaves the registry as it found it.
class CodePageTranslatorTest : public ::testing::Test {
 protected:
  void SetUp() override { saved = CodePageTranslator::codePages; }
  void TearDown() override { CodePageTranslator::codePages = saved; }

 private:
  std::map<std::string, CodePage> saved;
};

TEST_F(CodePageTranslatorTest, HasCodePageIsFalseForAnUnknownName) {
  const auto before = snapshot();
  EXPECT_FALSE(CodePageTranslator::hasCodePage(kUnknown));
  EXPECT_EQ(snapshot(), before);
}

TEST_F(CodePageTranslatorTest, GetCodePageThrowsForAnUnknownName) {
  const auto before = snapshot();
  expectUnknownCodePage([] { CodePageTranslator::getCodePage(kUnknown); });
  EXPECT_EQ(snapshot(), before);
}

TEST_F(CodePageTranslatorTest, DecodingTranslateThrowsForAnUnknownName) {
  const auto before = snapshot();
  expectUnknownCodePage(
      [] { CodePageTranslator::translate(std::string("abc"), kUnknown); });
  EXPECT_EQ(snapshot(), before);
}

TEST_F(CodePageTranslatorTest, EncodingTranslateThrowsForAnUnknownName) {
  const auto before = snapshot();
  expectUnknownCodePage(
      [] { CodePageTranslator::translate(String{U'a'}, kUnknown); });
  EXPECT_EQ(snapshot(), before);
}

TEST_F(CodePageTranslatorTest, EncodingTranslateWithFlagThrowsAndKeepsTrue) {
  const auto before = snapshot();
  bool lossy = true;
  expectUnknownCodePage(
      [&] { CodePageTranslator::translate(String{U'a'}, kUnknown, lossy); });
  EXPECT_TRUE(lossy);
  EXPECT_EQ(snapshot(), before);
}

TEST_F(CodePageTranslatorTest, EncodingTranslateWithFlagThrowsAndKeepsFalse) {
  bool lossy = false;
  expectUnknownCodePage(
      [&] { CodePageTranslator::translate(String{0xFFFD}, kUnknown, lossy); });
  EXPECT_FALSE(lossy);
}

TEST_F(CodePageTranslatorTest, UnregisterThrowsForAnUnknownName) {
  const auto before = snapshot();
  expectUnknownCodePage(
      [] { CodePageTranslator::unregisterCodePage(kUnknown); });
  EXPECT_EQ(snapshot(), before);
}

TEST_F(CodePageTranslatorTest, UnregisteringTwiceThrowsTheSecondTime) {
  CodePageTranslator::registerCodePage(CodePage("Twice", tableWith(0, 0x100)));
  CodePageTranslator::unregisterCodePage("Twice");
  const auto before = snapshot();
  expectUnknownCodePage(
      [] { CodePageTranslator::unregisterCodePage("Twice"); });
  EXPECT_EQ(snapshot(), before);
}

TEST_F(CodePageTranslatorTest, NamesDifferByCase) {
  ASSERT_TRUE(CodePageTranslator::hasCodePage("Windows-1252"));
  EXPECT_FALSE(CodePageTranslator::hasCodePage("windows-1252"));
  expectUnknownCodePage(
      [] { CodePageTranslator::translate(std::string("a"), "windows-1252"); });
}

TEST_F(CodePageTranslatorTest, DefaultPageIsNotRegistered) {
  EXPECT_FALSE(CodePageTranslator::hasCodePage("none"));
  expectUnknownCodePage(
      [] { CodePageTranslator::translate(std::string("a"), "none"); });
}

TEST_F(CodePageTranslatorTest, RegisteredDefaultPageWorksUnderNone) {
  CodePageTranslator::registerCodePage(CodePage());
  EXPECT_TRUE(CodePageTranslator::hasCodePage("none"));
  EXPECT_EQ(CodePageTranslator::translate(std::string("\xE9"), "none")
                .toUTF32String(),
            U"\u00E9");
  bool lossy = false;
  EXPECT_EQ(CodePageTranslator::translate(String{0x100}, "none", lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST_F(CodePageTranslatorTest, EmptyNameIsAValidKey) {
  CodePageTranslator::registerCodePage(CodePage("", tableWith(1, 0x3A9)));
  EXPECT_TRUE(CodePageTranslator::hasCodePage(""));
  EXPECT_EQ(CodePageTranslator::getCodePage("").getName(), "");
  EXPECT_EQ(CodePageTranslator::translate(String{0x3A9}, ""), "\x81");
}

TEST_F(CodePageTranslatorTest, ReRegisteringAKnownNameReplacesItsTable) {
  CodePageTranslator::registerCodePage(CodePage("Host", tableWith(0, 0x100)));
  const std::size_t size = CodePageTranslator::codePages.size();
  CodePageTranslator::registerCodePage(CodePage("Host", tableWith(0, 0x200)));
  EXPECT_TRUE(CodePageTranslator::hasCodePage("Host"));
  EXPECT_EQ(CodePageTranslator::codePages.size(), size);
  EXPECT_EQ(CodePageTranslator::translate(std::string("\x80"), "Host")
                .toUTF32String(),
            U"\u0200");
  bool lossy = false;
  EXPECT_EQ(CodePageTranslator::translate(String{0x100}, "Host", lossy), "?");
  EXPECT_TRUE(lossy);
}

TEST_F(CodePageTranslatorTest, ReferenceFromGetCodePageFollowsReRegistration) {
  CodePageTranslator::registerCodePage(CodePage("Host", tableWith(0, 0x100)));
  const CodePage& held = CodePageTranslator::getCodePage("Host");
  CodePageTranslator::registerCodePage(CodePage("Host", tableWith(7, 0x200)));
  EXPECT_EQ(&held, &CodePageTranslator::getCodePage("Host"));
  EXPECT_EQ(held.toUnicode("\x80\x87").toUTF32String(), U"\uFFFD\u0200");
  EXPECT_EQ(held.fromUnicode(String{0x200}), "\x87");
}

TEST_F(CodePageTranslatorTest, ReRegisteringABuiltInPageReplacesIt) {
  const CodePage& held = CodePageTranslator::getCodePage("Windows-1252");
  CodePageTranslator::registerCodePage(
      CodePage("Windows-1252", tableWith(0, 0x100)));
  EXPECT_EQ(held.toUnicode("\x80").toUTF32String(), U"\u0100");
  EXPECT_EQ(CodePageTranslator::translate(String{0x20AC}, "Windows-1252"), "?");
}

TEST_F(CodePageTranslatorTest,
       RegisteringThePageFromGetCodePageChangesNothing) {
  const auto before = snapshot();
  const CodePage& held = CodePageTranslator::getCodePage("Windows-874");
  CodePageTranslator::registerCodePage(held);
  EXPECT_EQ(snapshot(), before);
  EXPECT_EQ(&held, &CodePageTranslator::getCodePage("Windows-874"));
  EXPECT_EQ(held.fromUnicode(String{0x0E01}), "\xA1");
}

TEST_F(CodePageTranslatorTest, UnregisteredPageIsGoneUntilRegisteredAgain) {
  const CodePage page = CodePageTranslator::getCodePage("Windows-1252");
  CodePageTranslator::unregisterCodePage("Windows-1252");
  EXPECT_FALSE(CodePageTranslator::hasCodePage("Windows-1252"));
  expectUnknownCodePage([] {
    CodePageTranslator::translate(std::string("\x80"), "Windows-1252");
  });
  CodePageTranslator::registerCodePage(page);
  EXPECT_TRUE(CodePageTranslator::hasCodePage("Windows-1252"));
  EXPECT_EQ(CodePageTranslator::translate(std::string("\x80"), "Windows-1252")
                .toUTF32String(),
            U"\u20AC");
}

TEST_F(CodePageTranslatorTest, PageIsFoundOnlyUnderItsOwnName) {
  const CodePage alpha("Alpha", tableWith(2, 0x391));
  CodePageTranslator::registerCodePage(alpha);
  EXPECT_TRUE(CodePageTranslator::hasCodePage("Alpha"));
  EXPECT_FALSE(CodePageTranslator::hasCodePage("alpha"));
  EXPECT_FALSE(CodePageTranslator::hasCodePage("Alpha "));
  // A second name takes a second page.
  CodePageTranslator::registerCodePage(CodePage("Beta", tableWith(2, 0x391)));
  EXPECT_EQ(CodePageTranslator::getCodePage("Beta").getName(), "Beta");
  EXPECT_EQ(CodePageTranslator::getCodePage("Alpha").getName(), "Alpha");
  for (const auto& entry : CodePageTranslator::codePages)
    EXPECT_EQ(entry.first, entry.second.getName());
}

TEST_F(CodePageTranslatorTest, RegistryHoldsACopyOfThePage) {
  CodePage page("Host", tableWith(0, 0x100));
  CodePageTranslator::registerCodePage(page);
  page = CodePage("Host", tableWith(0, 0x200));
  EXPECT_EQ(CodePageTranslator::translate(std::string("\x80"), "Host")
                .toUTF32String(),
            U"\u0100");
}

TEST_F(CodePageTranslatorTest, DecodingTranslateIsToUnicodeOfThePage) {
  const CodePage page("Host", tableWith(0x21, 0x0E01));
  CodePageTranslator::registerCodePage(page);
  const std::string bytes("a\xA1\x80\0z", 5);
  EXPECT_EQ(CodePageTranslator::translate(bytes, "Host").toUTF32String(),
            std::u32string(U"a\u0E01\uFFFD\0z", 5));
}

TEST_F(CodePageTranslatorTest, EncodingTranslateIsFromUnicodeOfThePage) {
  CodePageTranslator::registerCodePage(
      CodePage("Host", tableWith(0x21, 0x0E01)));
  const String text{U'a', 0x0E01, 0xD800, 0x0E02};
  EXPECT_EQ(CodePageTranslator::translate(text, "Host"), "a\xA1?");
}

TEST_F(CodePageTranslatorTest, EncodingTranslateWithFlagTellsOfLoss) {
  CodePageTranslator::registerCodePage(
      CodePage("Host", tableWith(0x21, 0x0E01)));
  bool lossy = false;
  EXPECT_EQ(CodePageTranslator::translate(String{0x0E02, U'a'}, "Host", lossy),
            "?a");
  EXPECT_TRUE(lossy);
}

TEST_F(CodePageTranslatorTest, EncodingTranslateWithFlagClearsItOnCleanText) {
  CodePageTranslator::registerCodePage(
      CodePage("Host", tableWith(0x21, 0x0E01)));
  bool lossy = true;
  EXPECT_EQ(CodePageTranslator::translate(String{0x0E01, U'a'}, "Host", lossy),
            "\xA1"
            "a");
  EXPECT_FALSE(lossy);
}

}  // namespace
