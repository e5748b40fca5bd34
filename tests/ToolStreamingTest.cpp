// The tool reads large inputs in pieces; these tests hold that the pieces
// give the result of the whole input, whatever the block size, on text made
// to tempt a wrong cut, and that memory stays bounded.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "ToolProcess.h"
#include "Unicode.h"

namespace {

using namespace zelvo::unicode;
using zelvo_tool_test::corpusFiles;
using zelvo_tool_test::NamedText;
using zelvo_tool_test::runTool;
using zelvo_tool_test::ToolRun;

const std::vector<std::string> kBlockSizes = {"1", "2",  "3",  "5",
                                              "7", "13", "64", "4096"};

// Text whose neighbours across each line end would change the result if
// the tool cut in the wrong place or ignored what the cut carries.
std::string temptingText() {
  return
      // Final sigma before a line end, after a full stop, at a line start.
      "\xCE\x9F\xCE\x94\xCE\xA5\xCE\xA3\xCE\xA3\xCE\x95\xCE\xA5\xCE\xA3\n"
      "\xCE\x91\xCE\xA3.\n\xCE\xA3\xCE\x91\n"
      // A mark at the start of a line, and jamo parted by a line end.
      "e\n\xCC\x81\n\xE1\x84\x80\n\xE1\x85\xA1\n"
      "\xE1\x84\x80\xE1\x85\xA1\n\xE1\x86\xA8\n"
      // Turkish and Lithuanian: I, then a line end, then marks.
      "I\n\xCC\x87 I\xCC\xA3\n\xCC\x87 I\n\xCC\x81\n"
      // Bytes that swallow a line end: C3 0A is U+00CA, E2 0A 0A is one
      // character, C0 8A is a line end in overlong form.
      "x\xC3\n\xCC\x81y\n\xE2\n\nz\n\xC0\x8A\xCC\x81\n"
      // Four-byte sequences and stray bytes.
      "\xF0\x9F\x98\x80\n\x80\n\xFF\xF0\x9F\n\xCC\x81\xCC\xA3\n"
      // Marks out of order on both sides of a line end.
      "a\xCC\x87\n\xCC\xA3\xCC\x87\n";
}

// The text that makes isNFD and isNFKD carry a class across a line end:
// U+0345 (class 240) is still in mind when U+0315 (class 232) comes.
std::string decomposedCheckText() {
  return "\xCD\x85\nabc\n\xCC\x95\nplain text\n";
}

// The text that makes isNFC and isNFKC compare the whole text at a Maybe
// code point: U+093C is one, and U+AC00 U+11A7 is changed by composition
// without any No or Maybe code point.
std::string composedCheckText() {
  return "\xE0\xA4\x95\xE0\xA4\xBC\nmore text\n\xEA\xB0\x80\xE1\x86\xA7\n";
}

struct Operation {
  std::vector<std::string> args;
  std::function<std::string(const std::string&)> library;
};

std::vector<Operation> textOperations() {
  auto utf8 = [](const String& s) { return s.toUTF8String(); };
  return {
      {{"nfc"}, [=](const std::string& t) { return utf8(toNFC(String(t))); }},
      {{"nfd"}, [=](const std::string& t) { return utf8(toNFD(String(t))); }},
      {{"nfkc"}, [=](const std::string& t) { return utf8(toNFKC(String(t))); }},
      {{"nfkd"}, [=](const std::string& t) { return utf8(toNFKD(String(t))); }},
      {{"lower"},
       [=](const std::string& t) { return utf8(toLowerFull(String(t), "")); }},
      {{"lower", "--lang", "tr"},
       [=](const std::string& t) {
         return utf8(toLowerFull(String(t), "tr"));
       }},
      {{"lower", "--lang", "lt"},
       [=](const std::string& t) {
         return utf8(toLowerFull(String(t), "lt"));
       }},
      {{"upper", "--lang", "lt"},
       [=](const std::string& t) {
         return utf8(toUpperFull(String(t), "lt"));
       }},
      {{"fold"},
       [=](const std::string& t) {
         String s(t);
         for (char32_t& c : s) c = simpleCaseFold(c);
         return utf8(s);
       }},
      {{"clean", "--replace"},
       [=](const std::string& t) {
         String s(t);
         s.replaceBadCodePoints();
         return utf8(s);
       }},
      {{"utf16", "--to"},
       [](const std::string& t) {
         std::u16string u = String(t).toUTF16String();
         return std::string(reinterpret_cast<const char*>(u.data()),
                            u.size() * 2);
       }},
      {{"encode", "--page", "Windows-1252"},
       [](const std::string& t) {
         return CodePageTranslator::translate(String(t), "Windows-1252");
       }},
  };
}

void expectSameAtEveryBlockSize(const std::string& text) {
  for (const Operation& operation : textOperations()) {
    std::string want = operation.library(text);
    for (const std::string& size : kBlockSizes) {
      std::vector<std::string> args = operation.args;
      args.push_back("--block-size=" + size);
      ToolRun run = runTool(args, text);
      EXPECT_EQ(run.status, 0) << args[0] << " " << size << ": " << run.err;
      EXPECT_TRUE(run.out == want)
          << args[0] << (args.size() > 2 ? " " + args[2] : "")
          << " at block size " << size;
    }
  }
}

void expectCheckAtEveryBlockSize(const std::string& text) {
  struct Form {
    const char* name;
    bool (*check)(const String&);
  };
  for (const Form& form : {Form{"nfc", isNFC}, Form{"nfd", isNFD},
                           Form{"nfkc", isNFKC}, Form{"nfkd", isNFKD}}) {
    std::string want = form.check(String(text)) ? "yes\n" : "no\n";
    for (const std::string& size : kBlockSizes) {
      ToolRun run = runTool({"check", form.name, "--block-size", size}, text);
      EXPECT_EQ(run.out, want) << form.name << " at block size " << size;
    }
  }
}

TEST(ToolStreaming, TemptingTextGivesTheWholeResultAtEveryBlockSize) {
  REQUIRE_TOOL();
  expectSameAtEveryBlockSize(temptingText());
}

TEST(ToolStreaming, SampleGivesTheWholeResultAtEveryBlockSize) {
  REQUIRE_TOOL();
  expectSameAtEveryBlockSize(runTool({"sample"}).out);
}

TEST(ToolStreaming, CheckOfTemptingTextAtEveryBlockSize) {
  REQUIRE_TOOL();
  expectCheckAtEveryBlockSize(temptingText());
  expectCheckAtEveryBlockSize(toNFD(String(temptingText())).toUTF8String());
  expectCheckAtEveryBlockSize(toNFC(String(temptingText())).toUTF8String());
}

TEST(ToolStreaming, DecomposedCheckCarriesTheLastClassAcrossLineEnds) {
  REQUIRE_TOOL();
  std::string text = decomposedCheckText();
  // Each line alone passes; the whole does not.
  ASSERT_TRUE(isNFD(String(std::string("\xCD\x85\nabc\n"))));
  ASSERT_TRUE(isNFD(String(std::string("\xCC\x95\nplain text\n"))));
  ASSERT_FALSE(isNFD(String(text)));
  ASSERT_FALSE(isNFKD(String(text)));
  expectCheckAtEveryBlockSize(text);
}

TEST(ToolStreaming, ComposedCheckComparesTheWholeTextAtAMaybe) {
  REQUIRE_TOOL();
  std::string text = composedCheckText();
  ASSERT_TRUE(isNFC(String(std::string("\xE0\xA4\x95\xE0\xA4\xBC\n"))));
  ASSERT_TRUE(isNFC(String(std::string("\xEA\xB0\x80\xE1\x86\xA7\n"))));
  ASSERT_FALSE(isNFC(String(text)));
  ASSERT_FALSE(isNFKC(String(text)));
  expectCheckAtEveryBlockSize(text);
}

TEST(ToolStreaming, LineLongerThanManyBlocksIsKeptWhole) {
  REQUIRE_TOOL();
  std::string line;
  while (line.size() < 300000) {
    line +=
        "\xCE\x9F\xCE\x94\xCE\xA5\xCE\xA3\xCE\xA3\xCE\x95\xCE\xA5\xCE\xA3."
        " cafe\xCC\x81 I\xCC\x87 ";
  }
  ToolRun run = runTool({"lower", "--lang", "tr", "--block-size=4096"}, line);
  EXPECT_TRUE(run.out == toLowerFull(String(line), "tr").toUTF8String());
}

TEST(ToolStreaming, CorpusLargerThanTheDefaultBlockGivesTheWholeResult) {
  REQUIRE_TOOL();
  std::string text;
  for (const NamedText& file : corpusFiles(".utf8.txt")) {
    text += file.bytes;
    if (text.size() > 1000000) break;
  }
  const std::string sample = runTool({"sample"}).out;
  while (text.size() < 300000) text += sample;
  for (const Operation& operation : textOperations()) {
    ToolRun run = runTool(operation.args, text);
    EXPECT_TRUE(run.out == operation.library(text)) << operation.args[0];
  }
}

TEST(ToolStreaming, Utf16FromNeverPartsASurrogateFromItsUnit) {
  REQUIRE_TOOL();
  std::u16string units =
      u"a\xD83D\xDE00"
      u"b\xD800\xD800\xDC00\x0041\xDBFF\xDFFF\xDC00"
      u"\x0042 \xD83D";
  units = units + units + u"z" + units;
  std::string bytes(reinterpret_cast<const char*>(units.data()),
                    units.size() * 2);
  std::string want = String(units).toUTF8String();
  for (const std::string& size : kBlockSizes) {
    ToolRun run = runTool({"utf16", "--from", "--block-size", size}, bytes);
    EXPECT_EQ(run.out, want) << "block size " << size;
  }
}

TEST(ToolStreaming, Utf32FromKeepsWholeUnits) {
  REQUIRE_TOOL();
  std::u32string units = U"a\U0001F600\xD800 b\x110000\n\xE9";
  std::string bytes(reinterpret_cast<const char*>(units.data()),
                    units.size() * 4);
  std::string want = String(units).toUTF8String();
  for (const std::string& size : kBlockSizes) {
    ToolRun run = runTool({"utf32", "--from", "--block-size", size}, bytes);
    EXPECT_EQ(run.out, want) << "block size " << size;
  }
}

TEST(ToolStreaming, DecodeCutsAnywhere) {
  REQUIRE_TOOL();
  std::string bytes;
  for (int round = 0; round < 3; ++round) {
    for (int b = 0; b < 256; ++b) bytes += static_cast<char>(b);
  }
  for (const char* page : {"Windows-1252", "Windows-874"}) {
    std::string want =
        CodePageTranslator::translate(bytes, page).toUTF8String();
    for (const std::string& size : kBlockSizes) {
      ToolRun run =
          runTool({"decode", "--page", page, "--block-size", size}, bytes);
      EXPECT_EQ(run.out, want) << page << " at block size " << size;
    }
  }
}

TEST(ToolStreaming, MemoryStaysBoundedOnALargeInput) {
  REQUIRE_TOOL();
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "AddressSanitizer keeps freed memory, so resident size "
                  "says nothing here";
#endif
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
  GTEST_SKIP() << "AddressSanitizer keeps freed memory";
#endif
#endif
  const std::string line =
      "Cr\xC3\xA8me br\xC3\xBBl\xC3\xA9"
      "e and a plain line of text, 0123\n";
  std::string small;
  for (int i = 0; i < 100; ++i) small += line;
  std::string large;
  large.reserve(24u << 20);
  while (large.size() < (24u << 20)) large += small;
  ToolRun smallRun = runTool({"nfd"}, small);
  ToolRun largeRun = runTool({"nfd"}, large);
  ASSERT_EQ(largeRun.status, 0);
  std::string nfdLine = toNFD(String(line)).toUTF8String();
  EXPECT_EQ(largeRun.out.size(), large.size() / line.size() * nfdLine.size());
  EXPECT_EQ(largeRun.out.substr(0, nfdLine.size()), nfdLine);
  // The whole input as code points would take 96 MiB; the pieces take a
  // few blocks.
  EXPECT_LT(largeRun.maxResidentKiB - smallRun.maxResidentKiB, 16 * 1024)
      << "small " << smallRun.maxResidentKiB << " KiB, large "
      << largeRun.maxResidentKiB << " KiB";
}

}  // namespace
