// The built-in sample texts, on which a command runs when it has no input
// and standard input is a terminal, or when --sample is given.
#pragma once

#include <string>
#include <vector>

namespace zelvo {
namespace tool {

// Short UTF-8 lines, without line ends, each showing a feature: accents,
// combining marks, Hangul, the Turkish dotted I, final sigma, ligatures,
// compatibility characters, Lithuanian dots.
const std::vector<std::string>& sampleLines();
// The lines joined, each with its line end: the output of 'sample'.
std::string sampleText();
// UTF-8 lines that hold bad code points, for 'clean'.
const std::vector<std::string>& sampleBadLines();
// Lines of bytes in the named code page; some bytes for any other page.
std::vector<std::string> sampleCodePageLines(const std::string& page);
// Code points for 'info'.
const std::vector<char32_t>& sampleCodePoints();

}  // namespace tool
}  // namespace zelvo
