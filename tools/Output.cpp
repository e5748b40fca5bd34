// Standard output and the readable forms of code points and bytes.
#include "Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace zelvo {
namespace tool {

namespace {

bool isBad(char32_t c) { return unicode::String(1, c).hasBadCodePoints(); }

}  // namespace

void writeOut(const std::string& bytes) {
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

bool finishOutput() {
  errno = 0;
  if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return true;
  int reason = errno;
  tellError(std::string("standard output: ") +
            (reason ? std::strerror(reason) : "write failed"));
  return false;
}

void tellError(const std::string& line) {
  std::fflush(stdout);
  std::fprintf(stderr, "zelvo-unicode: %s\n", line.c_str());
}

std::string hex(unsigned long value, int digits) {
  char buffer[24];
  std::snprintf(buffer, sizeof buffer, "%0*lX", digits, value);
  return buffer;
}

std::string codePointName(char32_t c) {
  return (isBad(c) ? "0x" : "U+") + hex(c, 4);
}

std::string codePointNames(const unicode::String& s) {
  std::string names;
  for (char32_t c : s) {
    if (!names.empty()) names += ' ';
    names += codePointName(c);
  }
  return names;
}

std::string escapedText(const unicode::String& s) {
  std::string text;
  for (char32_t c : s) {
    if (c >= 0x20 && c < 0x7F && c != '\\') {
      text += static_cast<char>(c);
    } else if (c == '\\') {
      text += "\\\\";
    } else {
      text += c <= 0xFFFF ? "\\u" + hex(c, 4) : "\\U" + hex(c, 8);
    }
  }
  return text;
}

std::string printableText(const unicode::String& s) {
  for (char32_t c : s) {
    if (c < 0x20 || (c >= 0x7F && c < 0xA0) || isBad(c)) return "";
  }
  return s.toUTF8String();
}

}  // namespace tool
}  // namespace zelvo
