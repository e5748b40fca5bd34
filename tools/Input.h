// One input of the tool, a named file or standard input, read block by block.
#pragma once

#include <cstddef>
#include <string>

namespace zelvo {
namespace tool {

// The default size of one read; memory stays within a few blocks plus the
// longest line of the text.
constexpr std::size_t kDefaultBlockSize = 64 * 1024;

class Input {
 public:
  // "-" is standard input. Opening fails with InputError: the name and the
  // system's reason.
  explicit Input(const std::string& name);
  ~Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  // Appends up to blockSize bytes to `buffer`; false at the end of the input.
  // A failed read throws InputError.
  bool readBlock(std::string& buffer, std::size_t blockSize);

  // The name to show in messages: the file name, or "standard input".
  const std::string& displayName() const { return displayName_; }

 private:
  int fd_;
  bool owned_;
  std::string displayName_;
};

// Whether standard input is a terminal, where the tool shows its sample
// instead of waiting for text to be typed.
bool standardInputIsTerminal();

}  // namespace tool
}  // namespace zelvo
