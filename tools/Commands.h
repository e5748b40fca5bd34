// The tool's commands: their names, help texts, options and runners.
#pragma once

#include <string>
#include <vector>

#include "Invocation.h"

namespace zelvo {
namespace tool {

struct Command {
  const char* name;
  const char* synopsis;     // the usage line, after "zelvo-unicode "
  const char* summary;      // one line for the tool's help
  const char* description;  // the body of the command's help
  unsigned options;         // OptionSet
  int (*run)(const Invocation&);
};

const std::vector<Command>& allCommands();
// The command of that name, or null.
const Command* findCommand(const std::string& name);

std::string toolHelp();
std::string commandHelp(const Command& command);
std::string versionText();

// Tells on standard error, in one line, that a language given with --lang
// has no case rules of its own; the run goes on.
void noteLanguage(const Invocation& inv);

// The runners.
int runNormalization(const Invocation& inv);
int runCheck(const Invocation& inv);
int runCaseMapping(const Invocation& inv);
int runClean(const Invocation& inv);
int runDecode(const Invocation& inv);
int runEncode(const Invocation& inv);
int runPages(const Invocation& inv);
int runUtf16(const Invocation& inv);
int runUtf32(const Invocation& inv);
int runInfo(const Invocation& inv);
int runSample(const Invocation& inv);

}  // namespace tool
}  // namespace zelvo
