// The tool's commands: one table gives each its help, its options and what
// it runs, and for a command that maps text, its mapping, the places where
// a text may be cut, and the view of its sample.
#pragma once

#include <string>

#include "Invocation.h"
#include "Sample.h"
#include "Stream.h"
#include "TextCuts.h"

namespace zelvo {
namespace tool {

struct Command {
  const char* name;
  const char* synopsis;     // the usage line, after "zelvo-unicode "
  const char* summary;      // one line for the tool's help
  const char* description;  // the body of the command's help
  unsigned options;         // OptionSet
  int (*run)(const Command& command, const Invocation& inv);
  // For the commands whose run is runText.
  TextMap map = nullptr;
  CutRule cut = nullptr;
  SampleView view = SampleView::casing;
};

// The command of that name, or null.
const Command* findCommand(const std::string& name);

std::string toolHelp();
std::string commandHelp(const Command& command);
std::string versionText();

// The runners.
int runText(const Command& command, const Invocation& inv);
int runCheck(const Command& command, const Invocation& inv);
int runDecode(const Command& command, const Invocation& inv);
int runEncode(const Command& command, const Invocation& inv);
int runPages(const Command& command, const Invocation& inv);
int runUtf16(const Command& command, const Invocation& inv);
int runUtf32(const Command& command, const Invocation& inv);
int runInfo(const Command& command, const Invocation& inv);
int runSample(const Command& command, const Invocation& inv);

}  // namespace tool
}  // namespace zelvo
