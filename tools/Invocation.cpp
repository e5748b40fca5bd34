// Parsing a command's options and operands. Options may stand before or
// after the operands; "--" ends them, and "-" is standard input.
#include "Invocation.h"

#include <cerrno>
#include <cstdlib>

#include "codepage/CodePageTranslator.h"

namespace zelvo {
namespace tool {

namespace {

// An option with neither `given` nor `value` is --block-size, whose value
// is a number.
struct OptionRule {
  const char* name;
  unsigned set;                    // the OptionSet that admits it
  bool Invocation::*given;         // set when it is given
  std::string Invocation::*value;  // where its value goes, if it takes one
};

const OptionRule kOptions[] = {
    {"--lang", kLanguage, &Invocation::languageGiven, &Invocation::language},
    {"--simple", kSimple, &Invocation::simple, nullptr},
    {"--page", kPage, &Invocation::pageGiven, &Invocation::page},
    {"--strict", kStrict, &Invocation::strict, nullptr},
    {"--to", kDirection, &Invocation::to, nullptr},
    {"--from", kDirection, &Invocation::from, nullptr},
    {"--strip", kCleaning, &Invocation::strip, nullptr},
    {"--replace", kCleaning, &Invocation::replace, nullptr},
    {"--sample", kReadsInput, &Invocation::sample, nullptr},
    {"--block-size", kReadsInput, nullptr, nullptr},
    {"--help", kNoOptions, &Invocation::help, nullptr},
    {"-h", kNoOptions, &Invocation::help, nullptr},
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

// The rules between options, which the option table cannot tell.
void checkTogether(const Invocation& inv, unsigned options) {
  const std::string& name = inv.command;
  if ((options & kDirection) && inv.to == inv.from) {
    throw UsageError(name + ": give one of --to and --from");
  }
  if ((options & kCleaning) && inv.strip == inv.replace) {
    throw UsageError(name + ": give one of --strip and --replace");
  }
  if (inv.simple && inv.languageGiven) {
    throw UsageError(name +
                     ": --simple and --lang do not go together: the simple "
                     "mappings know no language");
  }
  if ((options & kPage) && !inv.pageGiven) {
    throw UsageError(name +
                     ": name the code page with --page NAME (see "
                     "'zelvo-unicode pages')");
  }
  if ((options & kPage) &&
      !unicode::CodePageTranslator::hasCodePage(inv.page)) {
    throw UsageError(name + ": no code page named '" + inv.page +
                     "'; names are exact, and 'zelvo-unicode pages' "
                     "lists them");
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
    std::size_t equals = arg.find('=');
    bool valueInline = arg.compare(0, 2, "--") == 0 && equals != arg.npos;
    std::string name = valueInline ? arg.substr(0, equals) : arg;
    std::string value = valueInline ? arg.substr(equals + 1) : "";
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
    bool takesValue = rule->value != nullptr || rule->given == nullptr;
    if (takesValue && !valueInline) {
      if (i + 1 == arguments.size()) {
        throw UsageError(command + ": the option " + name + " needs a value");
      }
      value = arguments[++i];
    } else if (!takesValue && valueInline) {
      throw UsageError(command + ": the option " + name + " takes no value");
    }
    if (rule->given == nullptr) {
      inv.blockSize = parseBlockSize(command, value);
      continue;
    }
    inv.*(rule->given) = true;
    if (rule->value != nullptr) inv.*(rule->value) = value;
  }
  if (!inv.help) checkTogether(inv, options);
  return inv;
}

}  // namespace tool
}  // namespace zelvo
