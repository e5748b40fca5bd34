// Reading inputs in blocks, finding where the decoders' sequences end, and
// cutting decoded text where the command's rule allows.
#include "Stream.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "Output.h"

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

int forEachInput(const Invocation& inv,
                 const std::function<int(Input&)>& perInput) {
  std::vector<std::string> names = inv.operands;
  if (names.empty()) names.push_back("-");
  int status = 0;
  for (const std::string& name : names) {
    try {
      Input input(name);
      status = std::max(status, perInput(input));
    } catch (const InputError& error) {
      tellError(error.what());
      status = std::max(status, kTroubleStatus);
    }
  }
  return status;
}

std::size_t utf8SequenceUnits(const char* first) {
  unsigned char lead = static_cast<unsigned char>(*first);
  if (lead < 0xC0 || lead >= 0xF8) return 1;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

std::size_t utf16SequenceUnits(const char* first) {
  char16_t unit;
  std::memcpy(&unit, first, sizeof unit);
  return unit >= 0xD800 && unit <= 0xDFFF ? 2 : 1;
}

std::size_t forEachPiece(Input& input, std::size_t blockSize,
                         std::size_t unitSize,
                         std::size_t (*sequenceUnits)(const char*),
                         const std::function<bool(const std::string&)>& piece) {
  std::string pending;
  std::size_t whole = 0;  // the bytes of `pending` in whole sequences
  while (input.readBlock(pending, blockSize)) {
    while (pending.size() - whole >= unitSize) {
      std::size_t length =
          unitSize * (sequenceUnits ? sequenceUnits(&pending[whole]) : 1);
      if (pending.size() - whole < length) break;
      whole += length;
    }
    if (whole == 0) continue;
    if (!piece(pending.substr(0, whole))) return 0;
    pending.erase(0, whole);
    whole = 0;
  }
  std::size_t leftover = pending.size() % unitSize;
  pending.resize(pending.size() - leftover);
  if (!pending.empty()) piece(pending);
  return leftover;
}

void forEachTextPiece(
    Input& input, const Invocation& inv, CutRule mayCut,
    const std::function<bool(const unicode::String&)>& piece) {
  unicode::String text;  // decoded, not yet handed on
  // The places before text[1] to text[tried - 1] have been tried and may not
  // be cut, so text that holds no place to cut is looked at only once.
  std::size_t tried = 1;
  bool stopped = false;
  forEachPiece(
      input, inv.blockSize, 1, utf8SequenceUnits,
      [&](const std::string& bytes) {
        text += unicode::String(bytes);
        if (text.size() > tried) {
          // The last place that may be cut: between text[place - 1]
          // and text[place].
          std::size_t place = text.size() - 1;
          while (place >= tried && !mayCut(text[place - 1], text[place], inv)) {
            --place;
          }
          if (place >= tried) {
            if (!piece(text.substr(0, place))) {
              stopped = true;
              return false;
            }
            text.erase(0, place);
          }
        }
        tried = std::max<std::size_t>(text.size(), 1);
        return true;
      });
  if (!stopped && !text.empty()) piece(text);
}

}  // namespace tool
}  // namespace zelvo
