// The tool's commands on real text (the corpus where present, the built-in
// sample otherwise), each output compared with what the library's own
// functions give for the same text.
#include <gtest/gtest.h>

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

// The UTF-8 texts to run on.
std::vector<NamedText> texts() {
  std::vector<NamedText> found = corpusFiles(".utf8.txt");
  if (found.empty()) found.push_back({"sample", runTool({"sample"}).out});
  return found;
}

// The first lines of each text, some 24 KiB, for the tests that run many
// variants: with a small --block-size they are still read in many pieces.
std::vector<NamedText> excerpts() {
  std::vector<NamedText> found = texts();
  for (NamedText& text : found) {
    std::size_t end = text.bytes.find('\n', 24 * 1024);
    if (end != std::string::npos) text.bytes.resize(end + 1);
  }
  return found;
}

// Where two outputs part, for a message that does not print megabytes.
std::string firstDifference(const std::string& got, const std::string& want) {
  std::size_t at = 0;
  while (at < got.size() && at < want.size() && got[at] == want[at]) ++at;
  return "lengths " + std::to_string(got.size()) + " and " +
         std::to_string(want.size()) + ", first difference at byte " +
         std::to_string(at);
}

using TextFunction = std::function<String(const String&)>;

// The tool with `args`, on every text (or excerpt), gives the library's
// result.
void expectSameAsLibrary(const std::vector<std::string>& args,
                         const TextFunction& library, bool whole = true) {
  for (const NamedText& text : whole ? texts() : excerpts()) {
    ToolRun run = runTool(args, text.bytes);
    std::string want = library(String(text.bytes)).toUTF8String();
    EXPECT_EQ(run.status, 0) << text.name << ": " << run.err;
    EXPECT_TRUE(run.out == want)
        << text.name << ": " << firstDifference(run.out, want);
  }
}

TextFunction perCodePoint(const std::function<String(char32_t)>& map) {
  return [map](const String& s) {
    String result;
    for (char32_t c : s) result += map(c);
    return result;
  };
}

std::string bytesOf(const std::u16string& units) {
  return std::string(reinterpret_cast<const char*>(units.data()),
                     units.size() * 2);
}

std::string bytesOf(const std::u32string& units) {
  return std::string(reinterpret_cast<const char*>(units.data()),
                     units.size() * 4);
}

// Text with the bad sequences that the lax reader takes in: an encoded
// surrogate, a value above U+10FFFF, and stray bytes.
std::string textWithBadCodePoints() {
  std::string text = runTool({"sample"}).out;
  return "A\xED\xA0\x80"
         "B\n\xF4\x90\x80\x80!\xBF\xFF\n" +
         text + "\xED\xBF\xBF\n";
}

TEST(ToolNormalization, NfcGivesTheLibrarysResult) {
  REQUIRE_TOOL();
  expectSameAsLibrary({"nfc"}, [](const String& s) { return toNFC(s); });
}

TEST(ToolNormalization, NfdGivesTheLibrarysResult) {
  REQUIRE_TOOL();
  expectSameAsLibrary({"nfd"}, [](const String& s) { return toNFD(s); });
}

TEST(ToolNormalization, NfkcGivesTheLibrarysResult) {
  REQUIRE_TOOL();
  expectSameAsLibrary({"nfkc"}, [](const String& s) { return toNFKC(s); });
}

TEST(ToolNormalization, NfkdGivesTheLibrarysResult) {
  REQUIRE_TOOL();
  expectSameAsLibrary({"nfkd"}, [](const String& s) { return toNFKD(s); });
}

TEST(ToolNormalization, NfcComposesDecomposedTextAsTheLibraryDoes) {
  REQUIRE_TOOL();
  for (const NamedText& text : texts()) {
    std::string decomposed = toNFD(String(text.bytes)).toUTF8String();
    ToolRun run = runTool({"nfc"}, decomposed);
    std::string want = toNFC(String(decomposed)).toUTF8String();
    EXPECT_TRUE(run.out == want)
        << text.name << ": " << firstDifference(run.out, want);
  }
}

TEST(ToolCheck, AnswersAsTheLibraryOnEachText) {
  REQUIRE_TOOL();
  struct Form {
    const char* name;
    bool (*check)(const String&);
    String (*normalize)(const String&);
  };
  const Form forms[] = {{"nfc", isNFC, toNFC},
                        {"nfd", isNFD, toNFD},
                        {"nfkc", isNFKC, toNFKC},
                        {"nfkd", isNFKD, toNFKD}};
  for (const Form& form : forms) {
    for (const NamedText& text : excerpts()) {
      // The text as it is, and the text put into the form.
      for (const std::string& input :
           {text.bytes, form.normalize(String(text.bytes)).toUTF8String()}) {
        bool want = form.check(String(input));
        ToolRun run = runTool({"check", form.name, "--block-size=4096"}, input);
        EXPECT_EQ(run.out, want ? "yes\n" : "no\n")
            << form.name << " " << text.name;
        EXPECT_EQ(run.status, want ? 0 : 1) << form.name << " " << text.name;
      }
    }
  }
}

TEST(ToolCheck, NamesEachFileWhenThereAreSeveral) {
  REQUIRE_TOOL();
  TemporaryFile composed("caf\xC3\xA9\n");
  TemporaryFile decomposed("cafe\xCC\x81\n");
  ToolRun run = runTool({"check", "nfc", composed.path(), decomposed.path()});
  EXPECT_EQ(run.out,
            composed.path() + ": yes\n" + decomposed.path() + ": no\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(runTool({"check", "nfd", decomposed.path()}).out, "yes\n");
}

TEST(ToolCheck, EmptyTextIsInEveryForm) {
  REQUIRE_TOOL();
  for (const char* form : {"nfc", "nfd", "nfkc", "nfkd"}) {
    ToolRun run = runTool({"check", form}, "");
    EXPECT_EQ(run.out, "yes\n");
    EXPECT_EQ(run.status, 0);
  }
}

TEST(ToolCase, UpperGivesTheLibrarysFullMapping) {
  REQUIRE_TOOL();
  expectSameAsLibrary({"upper"},
                      [](const String& s) { return toUpperFull(s, ""); });
}

TEST(ToolCase, LowerGivesTheLibrarysFullMapping) {
  REQUIRE_TOOL();
  expectSameAsLibrary({"lower"},
                      [](const String& s) { return toLowerFull(s, ""); });
}

TEST(ToolCase, LanguagesGiveTheLibrarysMappings) {
  REQUIRE_TOOL();
  for (const char* language : {"tr", "az", "lt"}) {
    expectSameAsLibrary(
        {"lower", "--lang", language},
        [&](const String& s) { return toLowerFull(s, language); }, false);
    expectSameAsLibrary(
        {"upper", std::string("--lang=") + language},
        [&](const String& s) { return toUpperFull(s, language); }, false);
  }
}

TEST(ToolCase, SimpleGivesTheLibrarysSimpleMapping) {
  REQUIRE_TOOL();
  expectSameAsLibrary({"upper", "--simple"},
                      [](const String& s) { return toUpperSimple(s); });
  expectSameAsLibrary({"lower", "--simple"},
                      [](const String& s) { return toLowerSimple(s); });
}

TEST(ToolCase, TitleMapsEveryCodePointOnItsOwn) {
  REQUIRE_TOOL();
  expectSameAsLibrary(
      {"title"}, perCodePoint([](char32_t c) { return toTitleFull(c, ""); }));
  expectSameAsLibrary(
      {"title", "--lang", "tr"},
      perCodePoint([](char32_t c) { return toTitleFull(c, "tr"); }), false);
  expectSameAsLibrary({"title", "--simple"}, perCodePoint([](char32_t c) {
                        return String(1, toTitleSimple(c));
                      }),
                      false);
}

TEST(ToolCase, FoldGivesTheLibrarysSimpleFolding) {
  REQUIRE_TOOL();
  expectSameAsLibrary({"fold"}, perCodePoint([](char32_t c) {
                        return String(1, simpleCaseFold(c));
                      }));
}

TEST(ToolCase, TurkishSampleLineLowersWithDotlessI) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"lower", "--lang", "tr"}, "DIYARBAKIR I\xCC\x87\n");
  EXPECT_EQ(run.out,
            toLowerFull(String(std::string("DIYARBAKIR I\xCC\x87\n")), "tr")
                .toUTF8String());
  EXPECT_EQ(run.out, "d\xC4\xB1yarbak\xC4\xB1r i\n");
}

TEST(ToolCodePages, PagesListsTheRegistry) {
  REQUIRE_TOOL();
  std::string want;
  for (const auto& entry : CodePageTranslator::codePages) {
    want += entry.first + "\n";
  }
  ToolRun run = runTool({"pages"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, want);
  EXPECT_NE(run.out.find("Windows-1252\n"), std::string::npos);
  EXPECT_NE(run.out.find("Windows-874\n"), std::string::npos);
}

TEST(ToolCodePages, DecodeGivesTheLibrarysTranslation) {
  REQUIRE_TOOL();
  std::vector<NamedText> latin1 = corpusFiles(".latin1.txt");
  std::string every;
  for (int b = 0; b < 256; ++b) every += static_cast<char>(b);
  latin1.push_back({"all bytes", every});
  for (const char* page : {"Windows-1252", "Windows-874"}) {
    for (const NamedText& text : latin1) {
      ToolRun run = runTool({"decode", "--page", page}, text.bytes);
      std::string want =
          CodePageTranslator::translate(text.bytes, page).toUTF8String();
      EXPECT_EQ(run.status, 0);
      EXPECT_TRUE(run.out == want)
          << page << " " << text.name << ": " << firstDifference(run.out, want);
    }
  }
}

TEST(ToolCodePages, EncodeGivesTheLibrarysTranslation) {
  REQUIRE_TOOL();
  for (const char* page : {"Windows-1252", "Windows-874"}) {
    for (const NamedText& text : texts()) {
      ToolRun run = runTool({"encode", "--page", page}, text.bytes);
      std::string want =
          CodePageTranslator::translate(String(text.bytes), page);
      EXPECT_EQ(run.status, 0) << run.err;
      EXPECT_EQ(run.err, "");
      EXPECT_TRUE(run.out == want)
          << page << " " << text.name << ": " << firstDifference(run.out, want);
    }
  }
}

TEST(ToolCodePages, StrictEncodeCountsTheCharactersWithoutAByte) {
  REQUIRE_TOOL();
  for (const NamedText& text : texts()) {
    String s(text.bytes);
    s.stripBadCodePoints();
    std::size_t missing = 0;
    for (char32_t c : s) {
      bool lossy = false;
      CodePageTranslator::translate(String(1, c), "Windows-1252", lossy);
      if (lossy) ++missing;
    }
    ToolRun run =
        runTool({"encode", "--page", "Windows-1252", "--strict"}, text.bytes);
    EXPECT_TRUE(run.out == CodePageTranslator::translate(s, "Windows-1252"));
    if (missing == 0) {
      EXPECT_EQ(run.status, 0) << text.name;
      EXPECT_EQ(run.err, "");
    } else {
      EXPECT_EQ(run.status, 1) << text.name;
      EXPECT_EQ(
          run.err,
          "zelvo-unicode: encode: standard input: " + std::to_string(missing) +
              (missing == 1 ? " character has" : " characters have") +
              " no byte in Windows-1252 and became '?'\n");
    }
  }
}

TEST(ToolCodePages, StrictEncodeOfTextThatFitsSucceeds) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"encode", "--page=Windows-1252", "--strict"},
                        "caf\xC3\xA9 \xE2\x82\xAC\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "caf\xE9 \x80\n");
  EXPECT_EQ(run.err, "");
}

TEST(ToolCodePages, EncodeLeavesBadCodePointsOutWithoutCountingThem) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"encode", "--page=Windows-1252", "--strict"},
                        "A\xED\xA0\x80"
                        "B\xEF\xBF\xBD\n");
  EXPECT_EQ(run.out, "AB?\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find(" 1 character has no byte"), std::string::npos);
}

TEST(ToolEncodings, Utf16ToGivesTheLibrarysUnits) {
  REQUIRE_TOOL();
  for (const NamedText& text : texts()) {
    ToolRun run = runTool({"utf16", "--to"}, text.bytes);
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out == bytesOf(String(text.bytes).toUTF16String()))
        << text.name;
  }
}

TEST(ToolEncodings, Utf16FromGivesTheLibrarysText) {
  REQUIRE_TOOL();
  for (const NamedText& text : texts()) {
    std::u16string units = String(text.bytes).toUTF16String();
    // Units that are no well-formed UTF-16, which the decoder joins.
    units += u"\xD800\x0041 \xDC00\xDC00 \xD83D\xDE00 end\xD800";
    ToolRun run = runTool({"utf16", "--from"}, bytesOf(units));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(run.out == String(units).toUTF8String()) << text.name;
  }
}

TEST(ToolEncodings, Utf16FromNotesAnOddByteAtTheEnd) {
  REQUIRE_TOOL();
  std::string bytes = bytesOf(std::u16string(u"ab")) + "x";
  ToolRun run = runTool({"utf16", "--from"}, bytes);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "ab");
  EXPECT_EQ(run.err,
            "zelvo-unicode: note: standard input: ignored 1 byte at the end, "
            "too few for a 16-bit unit\n");
}

TEST(ToolEncodings, Utf32ToGivesTheLibrarysUnits) {
  REQUIRE_TOOL();
  for (const NamedText& text : texts()) {
    ToolRun run = runTool({"utf32", "--to"}, text.bytes);
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out == bytesOf(String(text.bytes).toUTF32String()))
        << text.name;
  }
}

TEST(ToolEncodings, Utf32FromGivesTheLibrarysText) {
  REQUIRE_TOOL();
  for (const NamedText& text : texts()) {
    std::u32string units = String(text.bytes).toUTF32String();
    units += U" \xD800 \x110000 \xFFFFFFFF end";
    ToolRun run = runTool({"utf32", "--from"}, bytesOf(units));
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out == String(units).toUTF8String()) << text.name;
  }
}

TEST(ToolEncodings, Utf32FromNotesBytesShortOfAUnit) {
  REQUIRE_TOOL();
  std::string bytes = bytesOf(std::u32string(U"a")) + "xyz";
  ToolRun run = runTool({"utf32", "--from"}, bytes);
  EXPECT_EQ(run.out, "a");
  EXPECT_EQ(run.err,
            "zelvo-unicode: note: standard input: ignored 3 bytes at the end, "
            "too few for a 32-bit unit\n");
}

TEST(ToolClean, StripGivesTheLibrarysResult) {
  REQUIRE_TOOL();
  std::string input = textWithBadCodePoints();
  String want(input);
  want.stripBadCodePoints();
  ToolRun run = runTool({"clean", "--strip"}, input);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, want.toUTF8String());
}

TEST(ToolClean, ReplaceGivesTheLibrarysResult) {
  REQUIRE_TOOL();
  std::string input = textWithBadCodePoints();
  String want(input);
  want.replaceBadCodePoints();
  ToolRun run = runTool({"clean", "--replace"}, input);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, want.toUTF8String());
  EXPECT_EQ(run.out.rfind("A\xEF\xBF\xBD"
                          "B\n\xEF\xBF\xBD!\n",
                          0),
            0u);
}

TEST(ToolInfo, DescribesTheFullMappingsOfACodePoint) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"info", "U+00DF"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out.rfind("U+00DF  \xC3\x9F\n", 0), 0u) << run.out;
  String upper = toUppperFull(0xDF, "");
  std::string names;
  for (char32_t c : upper) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, names.empty() ? "U+%04X" : " U+%04X",
                  static_cast<unsigned>(c));
    names += buffer;
  }
  EXPECT_NE(run.out.find("  full upper          " + names + "  SS\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("  simple upper        U+00DF"), std::string::npos);
  EXPECT_NE(run.out.find("  assigned            yes\n"), std::string::npos);
}

TEST(ToolInfo, SaysWhetherACodePointIsAssigned) {
  REQUIRE_TOOL();
  for (char32_t c : {0x0377u, 0x0378u, 0x9FCCu, 0x9FCDu, 0xE000u}) {
    char arg[16];
    std::snprintf(arg, sizeof arg, "u+%X", static_cast<unsigned>(c));
    ToolRun run = runTool({"info", arg});
    std::string want = isAssigned(c) ? "yes" : "no";
    EXPECT_NE(run.out.find("  assigned            " + want + "\n"),
              std::string::npos)
        << arg;
  }
}

TEST(ToolInfo, GivesTheCombiningClassAndDecompositions) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"info", "U+0301", "U+212B"});
  EXPECT_NE(run.out.find("U+0301  \xE2\x97\x8C\xCC\x81\n"
                         "  assigned            yes\n"
                         "  combining class     230\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("  NFD                 U+0041 U+030A"),
            std::string::npos);
  EXPECT_NE(run.out.find("  NFC                 U+00C5"), std::string::npos);
}

TEST(ToolInfo, TakesTextArgumentsCodePointByCodePoint) {
  REQUIRE_TOOL();
  ToolRun byText = runTool({"info", "a\xC3\xA9"});
  ToolRun byValue = runTool({"info", "U+0061", "U+00E9"});
  EXPECT_EQ(byText.status, 0);
  EXPECT_EQ(byText.out, byValue.out);
}

TEST(ToolInfo, ReadsStandardInputWithoutLineEnds) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"info"}, "a\xC3\xA9\n");
  EXPECT_EQ(run.out, runTool({"info", "U+0061", "U+00E9"}).out);
}

TEST(ToolInfo, LanguageChangesTheFullMappings) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"info", "--lang", "tr", "U+0069"});
  EXPECT_NE(run.out.find("  full upper          U+0130"), std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("  simple upper        U+0049"), std::string::npos);
}

TEST(ToolInfo, ShowsABadCodePointWithoutText) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"info", "U+D800"});
  EXPECT_EQ(run.out.rfind("0xD800\n  assigned            no\n"
                          "  note                a bad code point",
                          0),
            0u)
      << run.out;
}

TEST(ToolSample, SampleCommandTextNormalizesAsTheLibrarySays) {
  REQUIRE_TOOL();
  std::string sample = runTool({"sample"}).out;
  ASSERT_GT(sample.size(), 100u);
  EXPECT_EQ(runTool({"nfkc"}, sample).out,
            toNFKC(String(sample)).toUTF8String());
  EXPECT_EQ(runTool({"lower", "--lang", "tr"}, sample).out,
            toLowerFull(String(sample), "tr").toUTF8String());
}

TEST(ToolSample, SampleShowsEachLineThenTheLibrarysResult) {
  REQUIRE_TOOL();
  std::string sample = runTool({"sample"}).out;
  ToolRun run = runTool({"lower", "--lang", "tr", "--sample"});
  EXPECT_EQ(run.status, 0);
  std::size_t start = 0;
  while (start < sample.size()) {
    std::size_t end = sample.find('\n', start);
    std::string line = sample.substr(start, end - start);
    std::string lowered = toLowerFull(String(line + "\n"), "tr").toUTF8String();
    lowered.pop_back();
    EXPECT_NE(run.out.find("  " + line + "\n  \xE2\x86\x92 " + lowered + "\n"),
              std::string::npos)
        << line;
    start = end + 1;
  }
}

TEST(ToolSample, NormalFormSampleShowsTheCodePoints) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"nfd", "--sample"});
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("    in:  cafe\\u0301 or caf\\u00E9\n"
                         "    out: cafe\\u0301 or cafe\\u0301\n"),
            std::string::npos)
      << run.out;
}

TEST(ToolSample, EveryCommandThatReadsInputHasASample) {
  REQUIRE_TOOL();
  const std::vector<std::vector<std::string>> commands = {
      {"nfc"},
      {"nfd"},
      {"nfkc"},
      {"nfkd"},
      {"check", "nfc"},
      {"upper"},
      {"lower"},
      {"title"},
      {"fold"},
      {"decode", "--page", "Windows-1252"},
      {"decode", "--page", "Windows-874"},
      {"encode", "--page", "Windows-1252"},
      {"utf16", "--to"},
      {"utf16", "--from"},
      {"utf32", "--to"},
      {"utf32", "--from"},
      {"clean", "--strip"},
      {"clean", "--replace"},
      {"info"}};
  for (std::vector<std::string> args : commands) {
    args.push_back("--sample");
    ToolRun run = runTool(args);
    EXPECT_LE(run.status, 1) << args[0] << ": " << run.err;
    EXPECT_EQ(run.out.rfind(
                  "zelvo-unicode " + args[0] + " on the built-in sample;", 0),
              0u)
        << args[0];
    EXPECT_GT(run.out.size(), 100u) << args[0];
  }
}

TEST(ToolSample, CheckSampleAnswersForTheWholeSample) {
  REQUIRE_TOOL();
  std::string sample = runTool({"sample"}).out;
  ToolRun run = runTool({"check", "nfc", "--sample"});
  bool whole = isNFC(String(sample));
  EXPECT_NE(run.out.find(std::string("\nthe whole sample: ") +
                         (whole ? "yes" : "no") + "\n"),
            std::string::npos);
  EXPECT_EQ(run.status, whole ? 0 : 1);
}

}  // namespace
