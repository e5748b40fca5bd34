// The two kinds of trouble the tool reports: a wrong command line, which
// stops it at once, and an input it cannot read, after which it goes on.
#pragma once

#include <stdexcept>
#include <string>

namespace zelvo {
namespace tool {

// The exit status for any trouble; 1 is kept for a "no" answer.
constexpr int kTroubleStatus = 2;

// A wrong command, option, operand or page name. The message is one line,
// without the program's name, and names what was wrong.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const std::string& message)
      : std::runtime_error(message) {}
};

// An input that could not be opened or read: the name and the system's
// reason, as in "notes.txt: No such file or directory".
class InputError : public std::runtime_error {
 public:
  explicit InputError(const std::string& message)
      : std::runtime_error(message) {}
};

}  // namespace tool
}  // namespace zelvo
