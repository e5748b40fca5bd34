// The built-in sample, on which a command runs when it has no input and
// standard input is a terminal, or when --sample is given.
#pragma once

#include <string>
#include <vector>

#include "Invocation.h"
#include "string/String.h"

namespace zelvo {
namespace tool {

// A mapping of one piece of text by a command.
using TextMap = unicode::String (*)(const unicode::String& text,
                                    const Invocation& inv);

// How a command that maps text shows its work on the sample.
enum class SampleView {
  casing,         // each line, then the result
  normalForm,     // each line, then both with the code points escaped
  badCodePoints,  // lines that hold bad code points, by code point names
};

// Short UTF-8 lines, without line ends, each showing a feature: accents,
// combining marks, Hangul, the Turkish dotted I, final sigma, ligatures,
// compatibility characters, Lithuanian dots.
const std::vector<std::string>& sampleLines();
// The lines joined, each with its line end: the output of 'sample'.
std::string sampleText();
// Lines of bytes in the named code page; some bytes for any other page.
std::vector<std::string> sampleCodePageLines(const std::string& page);
// Code points for 'info'.
const std::vector<char32_t>& sampleCodePoints();

// True with --sample, or with no FILE while standard input is a terminal.
// --sample together with a FILE is a UsageError.
bool wantsSample(const Invocation& inv);
// The heading of a sample run.
std::string sampleHeading(const Invocation& inv);
// Runs `map` on each line of the sample, with its line end as in a file, and
// writes the line and the result in the chosen view.
void showTextSample(const Invocation& inv, TextMap map, SampleView view);

}  // namespace tool
}  // namespace zelvo
