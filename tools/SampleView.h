// How a command shows its work on the built-in sample: each line, then what
// the command made of it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Invocation.h"
#include "string/String.h"

namespace zelvo {
namespace tool {

enum class SampleView {
  text,        // the lines as text: for case mapping
  escaped,     // text, with the code points escaped: for normal forms
  codePoints,  // U+XXXX names: for bad code points
};

using TextOperation = std::function<unicode::String(const unicode::String&)>;

// The heading of a sample run.
std::string sampleHeading(const Invocation& inv);

// Runs `operation` on each line, with its line end as in a file, and writes
// the line and the result in the chosen view.
void showTextSample(const Invocation& inv,
                    const std::vector<std::string>& lines,
                    const TextOperation& operation, SampleView view);

}  // namespace tool
}  // namespace zelvo
