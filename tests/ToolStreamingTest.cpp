// The tool reads large inputs in pieces; these tests hold that the pieces
// give the result of the whole input, whatever the block size, on text made
// to tempt a wrong cut, and that memory stays bounded on a long text of one
// line.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cctype>
#include <cstring>
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
using zelvo_tool_test::TemporaryFile;
using zelvo_tool_test::ToolRun;

const std::vector<std::string> kBlockSizes = {"1", "2", "3",  "4",  "5",   "6",
                                              "7", "8", "13", "64", "4096"};

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

// The same kind of text on one line: every rule of normalization and casing
// that looks at neighbours, with blanks and CJK ideographs next to each, where
// the tool may cut.
std::string oneLineTemptingText() {
  return
      // Final sigma: at the end of a word, after and before case-ignorable
      // code points, followed by case-ignorable code points up to the end.
      "\xCE\x91\xCE\xA3 \xCE\x91\xCE\xA3. \xCE\x91.\xCE\xA3\xE4\xB8\x80"
      "\xCE\xA3\xCE\x91 \xCA\xB0\xCE\xA3 \xCE\x91\xCE\xA3\xCA\xB0 "
      // The dots of I and i: After_I, Not_Before_Dot, More_Above.
      "I\xCC\x87 I\xCC\xA3\xCC\x87 I\xCC\xA3 I\xCC\x81\xCC\x87 i\xCC\x81 "
      "J\xCC\x81\xCC\x81 \xC4\xAE\xCC\x81 \xC3\x8C\xE4\xB8\x80I\xE4\xB8\x80"
      // A mark of class 216 that is not case-ignorable, after I.
      "I\xF0\x9D\x85\xA5x I\xF0\x9D\x85\xA5\xCC\x81x "
      // Jamo, U+11A7 after L V and after a syllable, and jamo by a blank.
      "\xE1\x84\x80\xE1\x85\xA1\xE1\x86\xA7 \xEA\xB0\x80\xE1\x86\xA7 "
      "\xE1\x84\x80 \xE1\x85\xA1\xE4\xB8\x80\xE1\x86\xA8 "
      // Starters that compose, an excluded composition, singletons.
      "\xE0\xAD\x87\xE0\xAC\xBE \xE0\xA5\x98 \xE2\x84\xAB\xE2\x84\xA6 "
      "\xEF\xAC\x81 \xC2\xA0\xC2\xBD "
      // A long run of marks out of order, then a Maybe code point.
      "a\xCC\x87\xCC\xA3\xCC\x87\xCC\xA3\xCC\x87\xCC\xA3\xCC\x87\xCC\xA3"
      "\xCC\x87\xCC\xA3\xCC\x87\xCC\xA3 \xCD\x85 abc \xCC\x95 "
      "\xE0\xA4\x95\xE0\xA4\xBC\xE4\xB8\x80"
      "e\xCC\x81\xE4\xB8\x80\xCE\xA3";
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
      {{"upper"},
       [=](const std::string& t) { return utf8(toUpperFull(String(t), "")); }},
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

TEST(ToolStreaming, OneLineTemptingTextGivesTheWholeResultAtEveryBlockSize) {
  REQUIRE_TOOL();
  expectSameAtEveryBlockSize(oneLineTemptingText());
}

TEST(ToolStreaming, CheckOfOneLineTemptingTextAtEveryBlockSize) {
  REQUIRE_TOOL();
  const std::string text = oneLineTemptingText();
  expectCheckAtEveryBlockSize(text);
  expectCheckAtEveryBlockSize(toNFD(String(text)).toUTF8String());
  expectCheckAtEveryBlockSize(toNFC(String(text)).toUTF8String());
  expectCheckAtEveryBlockSize(toNFKC(String(text)).toUTF8String());
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

TEST(ToolStreaming, RunOfMarksWithNoPlaceToCutIsKeptWhole) {
  REQUIRE_TOOL();
  std::string text = "x a";
  for (int i = 0; i < 5000; ++i) text += i % 3 ? "\xCC\x81" : "\xCC\xA3";
  text += " I\xCC\xA3\xCC\x87 b\xCC\x81";
  for (const Operation& operation : textOperations()) {
    std::vector<std::string> args = operation.args;
    args.push_back("--block-size=64");
    ToolRun run = runTool(args, text);
    EXPECT_TRUE(run.out == operation.library(text)) << args[0];
  }
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

// A text of one line of at least `size` bytes, as minified data or a book
// without line ends would be: the words of the corpus texts, one of each
// language in turn, joined by blanks. Empty without the corpus.
std::string oneLineText(std::size_t size) {
  std::vector<std::vector<std::string>> words;
  for (const NamedText& file : corpusFiles(".utf8.txt")) {
    words.emplace_back();
    std::size_t at = 0;
    while (at < file.bytes.size()) {
      std::size_t end = at;
      while (end < file.bytes.size() &&
             !std::isspace(static_cast<unsigned char>(file.bytes[end]))) {
        ++end;
      }
      if (end > at) words.back().push_back(file.bytes.substr(at, end - at));
      at = end + 1;
    }
  }
  std::string text;
  for (std::size_t i = 0; !words.empty() && text.size() < size; ++i) {
    for (const std::vector<std::string>& language : words) {
      if (!text.empty()) text += ' ';
      text += language[i % language.size()];
    }
  }
  return text;
}

// The resident size of this process, for the message of a failure: a child
// counts it too, until it runs the tool.
long residentKiB() {
  std::string status = zelvo_tool_test::readFile("/proc/self/status");
  std::size_t at = status.find("VmRSS:");
  return at == std::string::npos ? 0 : std::atol(status.c_str() + at + 6);
}

TEST(ToolStreaming, EveryCommandReadsALongOneLineTextInBoundedMemory) {
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
  const TemporaryFile input(oneLineText(16u << 20));
  const TemporaryFile output("");
  {
    std::string text = zelvo_tool_test::readFile(input.path());
    if (text.empty()) GTEST_SKIP() << "no corpus in $ZELVO_CORPUS_DIR";
    ASSERT_EQ(text.find('\n'), std::string::npos);
  }
  std::vector<Operation> operations = textOperations();
  operations.push_back({{"check", "nfc"}, [](const std::string& t) {
                          return isNFC(String(t)) ? "yes\n" : "no\n";
                        }});
  operations.push_back({{"check", "nfd"}, [](const std::string& t) {
                          return isNFD(String(t)) ? "yes\n" : "no\n";
                        }});
  operations.push_back({{"check", "nfkc"}, [](const std::string& t) {
                          return isNFKC(String(t)) ? "yes\n" : "no\n";
                        }});
  operations.push_back({{"check", "nfkd"}, [](const std::string& t) {
                          return isNFKD(String(t)) ? "yes\n" : "no\n";
                        }});
  operations.push_back(
      {{"decode", "--page", "Windows-874"}, [](const std::string& t) {
         return CodePageTranslator::translate(t, "Windows-874").toUTF8String();
       }});
  operations.push_back({{"utf16", "--from"}, [](const std::string& t) {
                          std::u16string units(t.size() / 2, u'\0');
                          std::memcpy(&units[0], t.data(), units.size() * 2);
                          return String(units).toUTF8String();
                        }});
  // Each the tool's peak, which the whole input as code points would pass
  // four times over.
  const long boundKiB = 32 * 1024;
  for (const Operation& operation : operations) {
    std::string name;
    for (const std::string& arg : operation.args) name += " " + arg;
    // The tool runs while this process works out the library's result.
    malloc_trim(0);
    long ownKiB = residentKiB();
    pid_t child =
        zelvo_tool_test::startTool(operation.args, input.path(), output.path());
    std::string want =
        operation.library(zelvo_tool_test::readFile(input.path()));
    ToolRun run = zelvo_tool_test::finishTool(child);
    EXPECT_LE(run.status, 1) << name;
    EXPECT_LT(run.maxResidentKiB, boundKiB)
        << name << ": the test itself held " << ownKiB << " KiB";
    EXPECT_TRUE(zelvo_tool_test::readFile(output.path()) == want) << name;
  }
}

}  // namespace
