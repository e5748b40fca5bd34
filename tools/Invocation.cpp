// Parsing a command's options and operands. Options may stand before or
// after the operands; "--" ends them, and "-" is standard input.
#include "Invocation.h"

#include <cerrno>
#include <cstdlib>

#include "ToolError.h"

namespace zelvo {
namespace tool {

namespace {

struct OptionRule {
  const char* name;
  unsigned set;
  bool takesValue;
};

const OptionRule kOptions[] = {
    {"--lang", kLanguage, true},      {"--simple", kSimple, false},
    {"--page", kPage, true},          {"--strict", kStrict, false},
    {"--to", kDirection, false},      {"--from", kDirection, false},
    {"--strip", kCleaning, false},    {"--replace", kCleaning, false},
    {"--sample", kReadsInput, false}, {"--block-size", kReadsInput, true},
    {"--help", kNoOptions, false},    {"-h", kNoOptions, false},
};

std::size_t parseBlockSize(const std::string& command,
                           const std::string& text) {
  errno = 0;
  char* end = nullptr;
  unsigned long long value = std::strtoull(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || text[0] == '-' || errno != 0 ||
      value == 0 || value > (1ull << 30)) {
    throw UsageError(command +
                     ": --block-size takes a number of bytes from 1 "
                     "to 1073741824, not '" +
                     text + "'");
  }
  return static_cast<std::size_t>(value);
}

void setOption(Invocation& inv, const std::string& name,
               const std::string& value) {
  if (name == "--lang") {
    inv.language = value;
    inv.languageGiven = true;
  } else if (name == "--simple") {
    inv.simple = true;
  } else if (name == "--page") {
    inv.page = value;
    inv.pageGiven = true;
  } else if (name == "--strict") {
    inv.strict = true;
  } else if (name == "--to") {
    inv.to = true;
  } else if (name == "--from") {
    inv.from = true;
  } else if (name == "--strip") {
    inv.strip = true;
  } else if (name == "--replace") {
    inv.replace = true;
  } else if (name == "--sample") {
    inv.sample = true;
  } else if (name == "--block-size") {
    inv.blockSize = parseBlockSize(inv.command, value);
  } else {
    inv.help = true;
  }
}

}  // namespace

Invocation parseArguments(const std::string& command, unsigned options,
                          const std::vector<std::string>& arguments) {
  Invocation inv;
  inv.command = command;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& arg = arguments[i];
    if (optionsEnded || arg == "-" || arg.empty() || arg[0] != '-') {
      inv.operands.push_back(arg);
      continue;
    }
    if (arg == "--") {
      optionsEnded = true;
      continue;
    }
    std::string name = arg;
    std::string value;
    bool valueInline = false;
    std::size_t equals = arg.find('=');
    if (arg.compare(0, 2, "--") == 0 && equals != std::string::npos) {
      name = arg.substr(0, equals);
      value = arg.substr(equals + 1);
      valueInline = true;
    }
    const OptionRule* rule = nullptr;
    for (const OptionRule& candidate : kOptions) {
      if (name == candidate.name) rule = &candidate;
    }
    if (rule == nullptr) {
      throw UsageError(command + ": unknown option '" + name + "' (see '" +
                       "zelvo-unicode " + command + " --help')");
    }
    if (rule->set != kNoOptions && (options & rule->set) == 0) {
      throw UsageError(command + ": the option " + name +
                       " does not apply to this command (see 'zelvo-unicode " +
                       command + " --help')");
    }
    if (rule->takesValue && !valueInline) {
      if (i + 1 == arguments.size()) {
        throw UsageError(command + ": the option " + name + " needs a value");
      }
      value = arguments[++i];
    } else if (!rule->takesValue && valueInline) {
      throw UsageError(command + ": the option " + name + " takes no value");
    }
    setOption(inv, name, value);
  }
  return inv;
}

}  // namespace tool
}  // namespace zelvo
