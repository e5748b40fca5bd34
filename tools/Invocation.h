// What the command line asked for: the command, its options and operands.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Input.h"

namespace zelvo {
namespace tool {

// The options a command accepts besides the common ones (--sample, --help,
// --block-size).
enum OptionSet : unsigned {
  kNoOptions = 0,
  kLanguage = 1u << 0,   // --lang LANG
  kSimple = 1u << 1,     // --simple
  kPage = 1u << 2,       // --page NAME
  kStrict = 1u << 3,     // --strict
  kDirection = 1u << 4,  // --to | --from
  kCleaning = 1u << 5,   // --strip | --replace
  kReadsInput = 1u << 6  // takes FILE operands and the common options
};

struct Invocation {
  std::string command;
  // FILE operands, or for info the code points and texts; for check, the
  // form has been taken off the front.
  std::vector<std::string> operands;
  std::string form;
  std::string language;
  bool languageGiven = false;
  bool simple = false;
  std::string page;
  bool pageGiven = false;
  bool strict = false;
  bool to = false;
  bool from = false;
  bool strip = false;
  bool replace = false;
  bool sample = false;
  bool help = false;
  std::size_t blockSize = kDefaultBlockSize;
};

// Parses the arguments after the command name for a command that accepts
// `options`. A wrong or misplaced option throws UsageError.
Invocation parseArguments(const std::string& command, unsigned options,
                          const std::vector<std::string>& arguments);

}  // namespace tool
}  // namespace zelvo
