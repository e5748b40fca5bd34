// The loop over a command's inputs, with the report of unreadable files.
#include "Runner.h"

#include <algorithm>

#include "Output.h"
#include "Pieces.h"
#include "ToolError.h"

namespace zelvo {
namespace tool {

bool wantsSample(const Invocation& inv) {
  if (inv.sample && !inv.operands.empty()) {
    throw UsageError(inv.command +
                     ": --sample takes no FILE; give one or the other");
  }
  return inv.sample || (inv.operands.empty() && standardInputIsTerminal());
}

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

void forEachTextPiece(
    Input& input, const Invocation& inv, bool atLineEnds,
    const std::function<bool(const unicode::String&)>& perPiece) {
  Utf8Cutter cutter(atLineEnds ? TextCut::atLineEnd : TextCut::atAnyCharacter);
  forEachPiece(input, inv.blockSize, cutter, [&](const std::string& bytes) {
    return perPiece(unicode::String(bytes));
  });
}

int runTextCommand(const Invocation& inv, const TextOperation& operation,
                   bool atLineEnds, SampleView view,
                   const std::vector<std::string>& sample) {
  if (wantsSample(inv)) {
    showTextSample(inv, sample, operation, view);
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    forEachTextPiece(input, inv, atLineEnds, [&](const unicode::String& piece) {
      writeOut(operation(piece).toUTF8String());
      return true;
    });
    return 0;
  });
}

}  // namespace tool
}  // namespace zelvo
