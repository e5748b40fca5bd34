// sample: the built-in sample text, for pipelines.
#include "Commands.h"
#include "Output.h"
#include "Sample.h"
#include "ToolError.h"

namespace zelvo {
namespace tool {

int runSample(const Invocation& inv) {
  if (!inv.operands.empty()) {
    throw UsageError("sample: takes no operand, but was given '" +
                     inv.operands.front() + "'");
  }
  writeOut(sampleText());
  return 0;
}

}  // namespace tool
}  // namespace zelvo
