// The tool's inputs, files or standard input, read block by block and handed
// on in pieces that can each be worked on alone, so that memory stays
// bounded however long the input is.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "Invocation.h"
#include "TextCuts.h"
#include "string/String.h"

namespace zelvo {
namespace tool {

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

// Opens each FILE operand in turn (standard input if there is none) and
// calls `perInput` on it. An input that cannot be opened or read is told on
// standard error with its name and the system's reason, and the others are
// still done. Returns the highest status: that of perInput, or 2 for an
// unreadable input.
int forEachInput(const Invocation& inv,
                 const std::function<int(Input&)>& perInput);

// How many units the library's decoders take for a sequence that begins
// with the unit at `first`. The UTF-8 decoder reads the length from the lead
// byte alone and swallows whatever bytes follow; a byte that begins no
// sequence is skipped on its own. The UTF-16 decoder joins any surrogate
// unit with the unit behind it. This is the tool's one statement of either;
// ToolTextCutsTest holds it against the decoders.
std::size_t utf8SequenceUnits(const char* first);
std::size_t utf16SequenceUnits(const char* first);

// Hands on the bytes of `input` in pieces of whole sequences: units of
// `unitSize` bytes, a sequence being as many units as `sequenceUnits` says
// for its first (null: one). What is left at the end is the last piece,
// without the bytes too few for a unit, whose count is returned. `piece`
// returns false to stop reading.
std::size_t forEachPiece(Input& input, std::size_t blockSize,
                         std::size_t unitSize,
                         std::size_t (*sequenceUnits)(const char*),
                         const std::function<bool(const std::string&)>& piece);

// Reads UTF-8 text and hands it on decoded, in pieces cut only where
// `mayCut` allows, so that the pieces taken one by one give what the whole
// text gives. A text with no such place is handed on whole. `piece` returns
// false to stop reading.
void forEachTextPiece(Input& input, const Invocation& inv, CutRule mayCut,
                      const std::function<bool(const unicode::String&)>& piece);

}  // namespace tool
}  // namespace zelvo
