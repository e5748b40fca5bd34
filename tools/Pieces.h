// Cutting a stream of input into pieces that give, one by one, the same
// result as the whole input, so that memory stays bounded.
//
// Where a piece may end depends on what reads it. The library's UTF-8
// decoder takes the length of a sequence from its lead byte alone and
// swallows whatever follows, so a cut is made only behind a complete
// sequence counted from the start, never at a byte that merely looks like a
// line end. The UTF-16 decoder joins any surrogate unit with the unit behind
// it, so a cut never falls between the two.
#pragma once

#include <cstddef>
#include <string>

#include "Input.h"

namespace zelvo {
namespace tool {

// Where text may be cut for the operation at hand.
enum class TextCut {
  // Behind a line end (U+000A). Normalization and the context rules of full
  // case mapping look at neighbours, but none of them across a line end: it
  // is a starter of class 0, composes with nothing, and is neither cased nor
  // case-ignorable, so every scan stops at it.
  atLineEnd,
  // Behind any complete sequence, for operations on one code point at a time.
  atAnyCharacter,
};

// Finds cut points in UTF-8 bytes that begin at a sequence boundary. It
// remembers how far it has scanned, so a long line is scanned once.
class Utf8Cutter {
 public:
  explicit Utf8Cutter(TextCut cut) : cut_(cut) {}
  // The length of the longest prefix of `bytes` that may be handed on.
  std::size_t cutPoint(const std::string& bytes);
  // The caller has removed the first n bytes, n being a cut point.
  void dropped(std::size_t n);

 private:
  TextCut cut_;
  std::size_t scanned_ = 0;
  std::size_t lastCut_ = 0;
};

// Hands on every byte: code page bytes decode one by one.
class ByteCutter {
 public:
  std::size_t cutPoint(const std::string& bytes) { return bytes.size(); }
  void dropped(std::size_t) {}
};

// UTF-16 in the host's order: an even number of bytes, never between a
// surrogate unit and the unit that the decoder joins with it.
class Utf16Cutter {
 public:
  std::size_t cutPoint(const std::string& bytes);
  void dropped(std::size_t) {}
};

// UTF-32 in the host's order: whole units of four bytes.
class Utf32Cutter {
 public:
  std::size_t cutPoint(const std::string& bytes) {
    return bytes.size() - bytes.size() % 4;
  }
  void dropped(std::size_t) {}
};

// Reads the whole input and calls piece(bytes) for each piece the cutter
// allows; what is left at the end of the input is the last piece, handed on
// if it is not empty. `piece` returns false to stop reading early.
template <typename Cutter, typename PieceFunction>
void forEachPiece(Input& input, std::size_t blockSize, Cutter& cutter,
                  PieceFunction piece) {
  std::string pending;
  while (input.readBlock(pending, blockSize)) {
    std::size_t cut = cutter.cutPoint(pending);
    if (cut == 0) continue;
    bool more = piece(pending.substr(0, cut));
    pending.erase(0, cut);
    cutter.dropped(cut);
    if (!more) return;
  }
  if (!pending.empty()) piece(pending);
}

}  // namespace tool
}  // namespace zelvo
