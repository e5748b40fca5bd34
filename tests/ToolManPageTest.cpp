// The manual page zelvo-unicode(1): it renders without a warning, and it
// says what the tool's --help says, so that the two cannot drift apart:
// every paragraph of every help text and every usage line stand in it word
// for word, and it names no option that the tool does not have.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ToolProcess.h"

namespace {

using zelvo_tool_test::runTool;

#define REQUIRE_GROFF()                                                 \
  do {                                                                  \
    REQUIRE_TOOL();                                                     \
    if (std::system("groff --version > /dev/null 2>&1") != 0)           \
      GTEST_SKIP() << "groff is not installed: nothing to render with"; \
  } while (0)

// What a shell command writes on standard output and standard error.
std::string outputOf(const std::string& command, int& status) {
  std::string output;
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) return output;
  char buffer[4096];
  std::size_t n;
  while ((n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) {
    output.append(buffer, n);
  }
  status = pclose(pipe);
  return output;
}

std::string manPagePath() { return ZELVO_UNICODE_MAN_PAGE; }

// Text as a person reads it: the hyphens, minus signs and quotes that
// groff sets stand for the ASCII ones of the help, and every run of blanks
// and line ends is one blank.
std::string plain(const std::string& text) {
  static const std::pair<std::string, char> kTypeset[] = {
      {"\u2010", '-'}, {"\u2212", '-'}, {"\u2018", '\''}, {"\u2019", '\''}};
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    for (const auto& typeset : kTypeset) {
      if (text.compare(i, typeset.first.size(), typeset.first) == 0) {
        c = typeset.second;
        i += typeset.first.size() - 1;
      }
    }
    if (std::isspace(static_cast<unsigned char>(c))) {
      if (!out.empty() && out.back() != ' ') out += ' ';
    } else {
      out += c;
    }
  }
  if (!out.empty() && out.back() == ' ') out.pop_back();
  return out;
}

// The manual page as text, on lines long enough that no paragraph breaks.
std::string renderedManPage() {
  int status = 0;
  std::string text = outputOf(
      "groff -man -Tutf8 -rLL=3000n -P-cbu '" + manPagePath() + "'", status);
  EXPECT_EQ(status, 0) << text;
  return plain(text);
}

std::vector<std::string> paragraphs(const std::string& text) {
  std::vector<std::string> found;
  std::size_t at = 0;
  while (at < text.size()) {
    std::size_t end = text.find("\n\n", at);
    if (end == std::string::npos) end = text.size();
    found.push_back(text.substr(at, end - at));
    at = end + 2;
  }
  return found;
}

// The command names, from the list of the tool's help: each line there is
// two blanks, the name, a blank and what the command does.
std::vector<std::string> commandNames(const std::string& help) {
  std::vector<std::string> names;
  const std::size_t at = help.find("\nCommands:\n");
  const std::size_t end = help.find("\n\n", at + 1);
  for (std::size_t line = help.find("\n  ", at + 1); line < end;
       line = help.find("\n  ", line + 1)) {
    const std::size_t first = line + 3;
    std::size_t last = first;
    while (last < end &&
           (std::islower(static_cast<unsigned char>(help[last])) ||
            std::isdigit(static_cast<unsigned char>(help[last]))))
      ++last;
    if (last != first && help[last] == ' ')
      names.push_back(help.substr(first, last - first));
  }
  return names;
}

// The options named in text: a dash or two and a lowercase name, not inside
// a word.
std::set<std::string> optionsIn(const std::string& text) {
  const auto inName = [](char c) { return (c >= 'a' && c <= 'z') || c == '-'; };
  std::set<std::string> found;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '-' || (i > 0 && inName(text[i - 1]))) continue;
    std::size_t j = i + 1;
    if (j < text.size() && text[j] == '-') ++j;
    if (j == text.size() || text[j] < 'a' || text[j] > 'z') continue;
    while (j < text.size() && inName(text[j])) ++j;
    found.insert(text.substr(i, j - i));
    i = j - 1;
  }
  return found;
}

TEST(ToolManPage, RendersWithoutAWarning) {
  REQUIRE_GROFF();
  int status = 0;
  std::string warnings =
      outputOf("groff -man -ww -z '" + manPagePath() + "'", status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(warnings, "");
}

TEST(ToolManPage, HoldsEveryParagraphOfTheHelp) {
  REQUIRE_GROFF();
  const std::string page = renderedManPage();
  const std::string help = runTool({"--help"}).out;
  std::vector<std::string> texts = {help};
  for (const std::string& name : commandNames(help)) {
    texts.push_back(runTool({name, "--help"}).out);
  }
  for (const std::string& text : texts) {
    for (std::string paragraph : paragraphs(text)) {
      // The usage lines and the list of commands have their own form in the
      // page, and the help's pointer to the page is not in it.
      if (paragraph.rfind("Usage: ", 0) == 0 ||
          paragraph.rfind("Commands:", 0) == 0 ||
          paragraph.find("zelvo-unicode(1)") != std::string::npos) {
        continue;
      }
      if (paragraph.rfind("Options:\n", 0) == 0) paragraph.erase(0, 9);
      EXPECT_NE(page.find(plain(paragraph)), std::string::npos)
          << "not in the manual page:\n"
          << paragraph;
    }
  }
}

TEST(ToolManPage, GivesEveryCommandsUsageLine) {
  REQUIRE_GROFF();
  const std::string page = renderedManPage();
  const std::string help = runTool({"--help"}).out;
  std::vector<std::string> names = commandNames(help);
  EXPECT_EQ(names.size(), 17u);
  for (const std::string& name : names) {
    std::string usage = runTool({name, "--help"}).out;
    usage = usage.substr(7, usage.find('\n') - 7);  // after "Usage: "
    EXPECT_NE(page.find(plain(usage)), std::string::npos) << usage;
  }
  EXPECT_NE(page.find("zelvo-unicode COMMAND [OPTIONS] [FILE...]"),
            std::string::npos);
}

TEST(ToolManPage, NamesOnlyOptionsThatTheToolHas) {
  REQUIRE_GROFF();
  const std::string page = renderedManPage();
  std::string help = runTool({"--help"}).out;
  for (const std::string& name : commandNames(help)) {
    help += runTool({name, "--help"}).out;
  }
  const std::set<std::string> named = optionsIn(page);
  EXPECT_GE(named.size(), 13u);
  for (const std::string& name : named) {
    EXPECT_NE(help.find(name), std::string::npos) << name;
  }
}

}  // namespace
