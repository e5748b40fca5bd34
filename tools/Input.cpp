// Reading a file or standard input in blocks, with the system's reason for
// any failure.
#include "Input.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "ToolError.h"

namespace zelvo {
namespace tool {

Input::Input(const std::string& name)
    : fd_(STDIN_FILENO), owned_(false), displayName_("standard input") {
  if (name == "-") return;
  displayName_ = name;
  do {
    fd_ = ::open(name.c_str(), O_RDONLY | O_CLOEXEC);
  } while (fd_ < 0 && errno == EINTR);
  if (fd_ < 0) throw InputError(name + ": " + std::strerror(errno));
  owned_ = true;
}

Input::~Input() {
  if (owned_) ::close(fd_);
}

bool Input::readBlock(std::string& buffer, std::size_t blockSize) {
  std::size_t old = buffer.size();
  buffer.resize(old + blockSize);
  ssize_t got;
  do {
    got = ::read(fd_, &buffer[old], blockSize);
  } while (got < 0 && errno == EINTR);
  if (got < 0) {
    int reason = errno;
    buffer.resize(old);
    throw InputError(displayName_ + ": " + std::strerror(reason));
  }
  buffer.resize(old + static_cast<std::size_t>(got));
  return got > 0;
}

bool standardInputIsTerminal() { return ::isatty(STDIN_FILENO) == 1; }

}  // namespace tool
}  // namespace zelvo
