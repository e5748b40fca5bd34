// The loop over a command's inputs, the choice of the built-in sample, and
// the whole run of a command that maps text to text.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Input.h"
#include "Invocation.h"
#include "SampleView.h"
#include "string/String.h"

namespace zelvo {
namespace tool {

// True with --sample, or with no FILE while standard input is a terminal.
// --sample together with a FILE is a UsageError.
bool wantsSample(const Invocation& inv);

// Opens each FILE operand in turn (standard input if there is none) and
// calls `perInput` on it. An input that cannot be opened or read is told on
// standard error with its name and the system's reason, and the others are
// still done. Returns the highest status: that of perInput, or 2 for an
// unreadable input.
int forEachInput(const Invocation& inv,
                 const std::function<int(Input&)>& perInput);

// Reads UTF-8 text in pieces cut at line ends, or after any character, and
// hands each piece, decoded, to `perPiece`, which returns false to stop.
void forEachTextPiece(
    Input& input, const Invocation& inv, bool atLineEnds,
    const std::function<bool(const unicode::String&)>& perPiece);

// The whole of a command that maps UTF-8 text to UTF-8 text: the sample
// run, or every input in pieces, each piece mapped and written.
int runTextCommand(const Invocation& inv, const TextOperation& operation,
                   bool atLineEnds, SampleView view,
                   const std::vector<std::string>& sample);

}  // namespace tool
}  // namespace zelvo
