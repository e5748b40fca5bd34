// What the command line asked for, and the two kinds of trouble the tool
// reports: a wrong command line, which stops it at once, and an input it
// cannot read, after which it goes on with the others.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace zelvo {
namespace tool {

// The exit status for any trouble; 1 is kept for a "no" answer.
constexpr int kTroubleStatus = 2;

// A wrong command, option, operand or page name. The message is one line,
// without the program's name, and names what was wrong.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// An input that could not be opened or read: the name and the system's
// reason, as in "notes.txt: No such file or directory".
struct InputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The options a command accepts besides --help.
enum OptionSet : unsigned {
  kNoOptions = 0,
  kLanguage = 1u << 0,   // --lang LANG
  kSimple = 1u << 1,     // --simple
  kPage = 1u << 2,       // --page NAME
  kStrict = 1u << 3,     // --strict
  kDirection = 1u << 4,  // --to | --from
  kCleaning = 1u << 5,   // --strip | --replace
  kReadsInput = 1u << 6  // FILE operands, --sample and --block-size
};

// The default size of one read.
constexpr std::size_t kDefaultBlockSize = 64 * 1024;

struct Invocation {
  std::string command;
  // FILE operands; for info the code points and texts; for check the form,
  // then the FILEs.
  std::vector<std::string> operands;
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
// `options`, and checks that the options given go together, unless --help
// is among them: help wins over everything. A wrong, misplaced or missing
// option, or an unknown page name, throws UsageError.
Invocation parseArguments(const std::string& command, unsigned options,
                          const std::vector<std::string>& arguments);

}  // namespace tool
}  // namespace zelvo
