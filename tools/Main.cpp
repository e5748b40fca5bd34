// zelvo-unicode: the library's operations on text, for shell pipelines.
#include <cstdio>
#include <new>
#include <string>
#include <vector>

#include "Commands.h"
#include "Output.h"
#include "codepage/CodePageTranslator.h"
#include "transform/UnicodeOperations.h"

using namespace zelvo::tool;

namespace {

// A language has case rules of its own where the library's conditional
// rows stand under its name.
bool languageHasRules(const std::string& language) {
  return zelvo::unicode::gTransformTables.toLowerSpecialConditionMap.count(
             language) != 0;
}

int run(const std::vector<std::string>& args) {
  if (args.empty()) {
    throw UsageError(
        "name a command, as in 'zelvo-unicode nfc FILE' (see "
        "'zelvo-unicode --help')");
  }
  const std::string& first = args[0];
  if (first == "--help" || first == "-h" || first == "help") {
    if (first == "help" && args.size() > 1) {
      const Command* command = findCommand(args[1]);
      if (command == nullptr) {
        throw UsageError("help: unknown command '" + args[1] + "'");
      }
      writeOut(commandHelp(*command));
    } else {
      writeOut(toolHelp());
    }
    return 0;
  }
  if (first == "--version") {
    writeOut(versionText());
    return 0;
  }
  if (!first.empty() && first[0] == '-') {
    throw UsageError("unknown option '" + first +
                     "'; a command comes first (see 'zelvo-unicode --help')");
  }
  const Command* command = findCommand(first);
  if (command == nullptr) {
    throw UsageError("unknown command '" + first +
                     "' (see 'zelvo-unicode --help')");
  }
  std::vector<std::string> rest(args.begin() + 1, args.end());
  Invocation inv = parseArguments(command->name, command->options, rest);
  if (inv.help) {
    writeOut(commandHelp(*command));
    return 0;
  }
  if (inv.languageGiven && !inv.language.empty() &&
      !languageHasRules(inv.language)) {
    tellError("note: the language '" + inv.language +
              "' has no case rules of its own; only \"az\", \"lt\" and "
              "\"tr\" have any, so the text maps as with no language");
  }
  return command->run(*command, inv);
}

}  // namespace

int main(int argc, char** argv) {
  static char outputBuffer[1 << 16];
  std::setvbuf(stdout, outputBuffer, _IOFBF, sizeof outputBuffer);
  int status;
  try {
    status = run(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const UsageError& error) {
    tellError(error.what());
    status = kTroubleStatus;
  } catch (zelvo::unicode::CodePageTranslator::exceptions) {
    tellError("no code page of that name ('zelvo-unicode pages' lists them)");
    status = kTroubleStatus;
  } catch (const std::bad_alloc&) {
    tellError("out of memory");
    status = kTroubleStatus;
  }
  if (!finishOutput()) status = kTroubleStatus;
  return status;
}
