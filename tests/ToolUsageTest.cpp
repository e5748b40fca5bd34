// The tool's help, and every way of calling it wrongly: the one-line
// message on standard error, what it names, and the exit status 2.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ToolProcess.h"

namespace {

using zelvo_tool_test::runTool;
using zelvo_tool_test::StandardInput;
using zelvo_tool_test::TemporaryFile;
using zelvo_tool_test::ToolRun;

const std::vector<std::string> kCommands = {
    "nfc",   "nfd",   "nfkc",  "nfkd",   "check",  "upper",
    "lower", "title", "fold",  "decode", "encode", "pages",
    "utf16", "utf32", "clean", "info",   "sample"};

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

std::size_t lineCount(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// A usage error: nothing on standard output, one line on standard error
// that begins with the tool's name and holds `part`, and status 2.
void expectUsageError(const std::vector<std::string>& args,
                      const std::string& part,
                      const std::string& input = "x\n") {
  ToolRun run = runTool(args, input);
  EXPECT_EQ(run.status, 2) << run.err;
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(lineCount(run.err), 1u) << run.err;
  EXPECT_EQ(run.err.rfind("zelvo-unicode: ", 0), 0u) << run.err;
  EXPECT_TRUE(contains(run.err, part)) << run.err;
}

TEST(ToolHelp, ListsEveryCommandAndExitsZero) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"--help"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out.rfind("Usage: zelvo-unicode COMMAND", 0), 0u);
  for (const std::string& command : kCommands) {
    EXPECT_TRUE(contains(run.out, "\n  " + command + " ")) << command;
  }
}

TEST(ToolHelp, ShortOptionAndHelpWordGiveTheSameText) {
  REQUIRE_TOOL();
  std::string help = runTool({"--help"}).out;
  EXPECT_EQ(runTool({"-h"}).out, help);
  EXPECT_EQ(runTool({"help"}).out, help);
}

TEST(ToolHelp, EveryCommandHasItsOwnHelp) {
  REQUIRE_TOOL();
  for (const std::string& command : kCommands) {
    ToolRun run = runTool({command, "--help"});
    EXPECT_EQ(run.status, 0) << command;
    EXPECT_EQ(run.out.rfind("Usage: zelvo-unicode " + command, 0), 0u)
        << run.out;
    EXPECT_GT(lineCount(run.out), 3u) << command;
    EXPECT_EQ(runTool({"help", command}).out, run.out) << command;
  }
}

TEST(ToolHelp, HelpWinsOverOtherOptionsAndReadsNoInput) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"decode", "--page", "nonesuch", "--help"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out.rfind("Usage: zelvo-unicode decode", 0), 0u);
}

TEST(ToolHelp, VersionNamesTheUnicodeVersion) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"--version"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out.rfind("zelvo-unicode 0.", 0), 0u) << run.out;
  EXPECT_TRUE(contains(run.out, "Unicode 7.0.0"));
}

TEST(ToolUsageErrors, NoCommand) {
  REQUIRE_TOOL();
  expectUsageError({}, "name a command");
}

TEST(ToolUsageErrors, UnknownCommandIsNamed) {
  REQUIRE_TOOL();
  expectUsageError({"nfx"}, "unknown command 'nfx'");
}

TEST(ToolUsageErrors, OptionBeforeTheCommandIsNamed) {
  REQUIRE_TOOL();
  expectUsageError({"--sample", "nfc"}, "unknown option '--sample'");
}

TEST(ToolUsageErrors, HelpForAnUnknownCommand) {
  REQUIRE_TOOL();
  expectUsageError({"help", "nfx"}, "unknown command 'nfx'");
}

TEST(ToolUsageErrors, UnknownOptionIsNamed) {
  REQUIRE_TOOL();
  expectUsageError({"nfc", "--bogus"}, "unknown option '--bogus'");
}

TEST(ToolUsageErrors, UnknownOptionWithValueIsNamedWithoutIt) {
  REQUIRE_TOOL();
  expectUsageError({"nfc", "--bogus=1"}, "unknown option '--bogus'");
}

TEST(ToolUsageErrors, OptionOfAnotherCommandIsNamed) {
  REQUIRE_TOOL();
  expectUsageError({"nfc", "--lang", "tr"}, "the option --lang does not apply");
  expectUsageError({"upper", "--page", "Windows-1252"},
                   "the option --page does not apply");
  expectUsageError({"pages", "--sample"}, "the option --sample does not");
}

TEST(ToolUsageErrors, OptionWithoutItsValue) {
  REQUIRE_TOOL();
  expectUsageError({"upper", "--lang"}, "--lang needs a value");
  expectUsageError({"decode", "--page"}, "--page needs a value");
}

TEST(ToolUsageErrors, FlagGivenAValue) {
  REQUIRE_TOOL();
  expectUsageError({"upper", "--simple=yes"}, "--simple takes no value");
}

TEST(ToolUsageErrors, BlockSizeThatIsNoNumber) {
  REQUIRE_TOOL();
  expectUsageError({"nfc", "--block-size", "big"}, "'big'");
  expectUsageError({"nfc", "--block-size=0"}, "--block-size");
  expectUsageError({"nfc", "--block-size=-4"}, "--block-size");
}

TEST(ToolUsageErrors, UnknownPageIsNamed) {
  REQUIRE_TOOL();
  expectUsageError({"decode", "--page", "windows-1252"},
                   "no code page named 'windows-1252'");
  expectUsageError({"encode", "--page=cp1252"}, "no code page named 'cp1252'");
}

TEST(ToolUsageErrors, PageNotGiven) {
  REQUIRE_TOOL();
  expectUsageError({"decode"}, "--page NAME");
  expectUsageError({"encode"}, "--page NAME");
}

TEST(ToolUsageErrors, CheckWithoutForm) {
  REQUIRE_TOOL();
  expectUsageError({"check"}, "name the form");
}

TEST(ToolUsageErrors, CheckWithUnknownFormIsNamed) {
  REQUIRE_TOOL();
  expectUsageError({"check", "nfx"}, "unknown normal form 'nfx'");
}

TEST(ToolUsageErrors, UtfWithoutOrWithBothDirections) {
  REQUIRE_TOOL();
  expectUsageError({"utf16"}, "one of --to and --from");
  expectUsageError({"utf32", "--to", "--from"}, "one of --to and --from");
}

TEST(ToolUsageErrors, CleanWithoutOrWithBothWays) {
  REQUIRE_TOOL();
  expectUsageError({"clean"}, "one of --strip and --replace");
  expectUsageError({"clean", "--strip", "--replace"},
                   "one of --strip and --replace");
}

TEST(ToolUsageErrors, SimpleTogetherWithLanguage) {
  REQUIRE_TOOL();
  expectUsageError({"lower", "--simple", "--lang", "tr"},
                   "--simple and --lang");
}

TEST(ToolUsageErrors, SampleTogetherWithFile) {
  REQUIRE_TOOL();
  expectUsageError({"nfc", "--sample", "some.txt"}, "--sample takes no FILE");
}

TEST(ToolUsageErrors, CodePointArgumentThatIsNoNumber) {
  REQUIRE_TOOL();
  expectUsageError({"info", "U+12G4"}, "'U+12G4' is no code point");
  expectUsageError({"info", "U+123456789"}, "'U+123456789'");
}

TEST(ToolUsageErrors, OperandOfACommandThatTakesNone) {
  REQUIRE_TOOL();
  expectUsageError({"pages", "extra"}, "'extra'");
  expectUsageError({"sample", "extra"}, "'extra'");
}

TEST(ToolLanguageNote, UnknownLanguageIsAcceptedWithANote) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"lower", "--lang", "tr-TR"}, "I\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "i\n");
  EXPECT_EQ(lineCount(run.err), 1u);
  EXPECT_TRUE(contains(run.err, "'tr-TR'"));
  EXPECT_TRUE(contains(run.err, "\"az\", \"lt\" and \"tr\""));
}

TEST(ToolLanguageNote, KnownOrEmptyLanguageGivesNoNote) {
  REQUIRE_TOOL();
  for (const char* language : {"tr", "az", "lt", ""}) {
    ToolRun run = runTool({"upper", std::string("--lang=") + language}, "i\n");
    EXPECT_EQ(run.status, 0) << language;
    EXPECT_EQ(run.err, "") << language;
  }
}

TEST(ToolUnreadableInput, MissingFileIsNamedWithTheSystemReason) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"nfc", "/nonexistent/zelvo/notes.txt"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err,
            "zelvo-unicode: /nonexistent/zelvo/notes.txt: No such file or "
            "directory\n");
}

TEST(ToolUnreadableInput, DirectoryIsNamedWithTheSystemReason) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"upper", "/"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "zelvo-unicode: /: Is a directory\n");
}

TEST(ToolUnreadableInput, OtherFilesAreStillDone) {
  REQUIRE_TOOL();
  TemporaryFile first("one\n");
  TemporaryFile second("two\n");
  ToolRun run =
      runTool({"upper", first.path(), "/nonexistent/x", second.path()});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "ONE\nTWO\n");
  EXPECT_TRUE(contains(run.err, "/nonexistent/x: No such file"));
}

TEST(ToolUnreadableInput, CheckSaysNothingForTheUnreadableFile) {
  REQUIRE_TOOL();
  TemporaryFile file("plain\n");
  ToolRun run = runTool({"check", "nfc", file.path(), "/nonexistent/x"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, file.path() + ": yes\n");
}

TEST(ToolSampleChoice, TerminalWithoutFileRunsTheSample) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"nfc"}, "", StandardInput::terminal);
  if (run.err == zelvo_tool_test::kNoTerminal) GTEST_SKIP() << run.err;
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.rfind("zelvo-unicode nfc on the built-in sample;", 0), 0u)
      << run.out;
  EXPECT_EQ(run.out, runTool({"nfc", "--sample"}).out);
}

TEST(ToolSampleChoice, TerminalWithFileReadsTheFile) {
  REQUIRE_TOOL();
  TemporaryFile file("abc\n");
  ToolRun run = runTool({"upper", file.path()}, "", StandardInput::terminal);
  if (run.err == zelvo_tool_test::kNoTerminal) GTEST_SKIP() << run.err;
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, "ABC\n");
}

TEST(ToolSampleChoice, PipeWithoutFileReadsThePipe) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"upper"}, "abc\n");
  EXPECT_EQ(run.out, "ABC\n");
  EXPECT_EQ(runTool({"upper"}, "").out, "");
}

TEST(ToolSampleChoice, DashNamesStandardInput) {
  REQUIRE_TOOL();
  TemporaryFile file("one\n");
  ToolRun run = runTool({"upper", file.path(), "-"}, "two\n");
  EXPECT_EQ(run.out, "ONE\nTWO\n");
}

TEST(ToolSampleChoice, DoubleDashEndsTheOptions) {
  REQUIRE_TOOL();
  ToolRun run = runTool({"upper", "--", "--sample"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "zelvo-unicode: --sample: No such file or directory\n");
}

}  // namespace
