// Helpers shared by the normalization tests: hex notation of code point
// strings, and a reader of UnicodeData.txt that trusts none of the tables.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "string/String.h"

namespace zelvo {
namespace unicode {

// Failure messages show a String as its code points in hex.
inline void PrintTo(const String& s, std::ostream* out) {
  *out << '"';
  bool first = true;
  for (char32_t c : s) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, first ? "%04X" : " %04X",
                  static_cast<unsigned>(c));
    *out << buffer;
    first = false;
  }
  *out << '"';
}

}  // namespace unicode
}  // namespace zelvo

namespace zelvo_test {

using zelvo::unicode::String;

// "0061 0301" for the String U+0061 U+0301.
inline std::string hex(const String& s) {
  std::ostringstream out;
  bool first = true;
  for (char32_t c : s) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, first ? "%04X" : " %04X",
                  static_cast<unsigned>(c));
    out << buffer;
    first = false;
  }
  return out.str();
}

// The String of the blank-separated hex code points in text.
inline String fromHex(const std::string& text) {
  String result;
  std::istringstream in(text);
  std::string word;
  while (in >> word)
    result.push_back(static_cast<char32_t>(std::stoul(word, nullptr, 16)));
  return result;
}

// The path of a file of the Unicode 7.0.0 data, or "" when $ZELVO_UCD_DIR is
// unset or the file is not there.
inline std::string ucdFile(const std::string& name) {
  const char* dir = std::getenv("ZELVO_UCD_DIR");
  if (dir == nullptr) return "";
  const std::string path = std::string(dir) + "/" + name;
  std::ifstream probe(path);
  return probe ? path : "";
}

// Splits a line of a data file at its semicolons.
inline std::vector<std::string> splitFields(const std::string& line) {
  std::vector<std::string> fields;
  std::string::size_type start = 0;
  for (;;) {
    const auto semicolon = line.find(';', start);
    fields.push_back(line.substr(start, semicolon - start));
    if (semicolon == std::string::npos) break;
    start = semicolon + 1;
  }
  return fields;
}

// What UnicodeData.txt says about normalization, read straight from the file.
struct UnicodeDataFile {
  std::map<char32_t, int> combiningClass;  // only classes other than 0
  std::map<char32_t, String> canonical;    // mappings without a tag
  std::map<char32_t, String> compat;       // mappings with a tag

  int classOf(char32_t c) const {
    const auto found = combiningClass.find(c);
    return found == combiningClass.end() ? 0 : found->second;
  }
};

// Reads UnicodeData.txt; false when the file cannot be read.
inline bool readUnicodeData(const std::string& path, UnicodeDataFile& data) {
  std::ifstream in(path);
  if (!in) return false;
  std::string line;
  while (std::getline(in, line)) {
    const std::vector<std::string> fields = splitFields(line);
    if (fields.size() < 6) continue;
    const char32_t c =
        static_cast<char32_t>(std::stoul(fields[0], nullptr, 16));
    const int cls = std::stoi(fields[3]);
    if (cls != 0) data.combiningClass[c] = cls;
    const std::string& mapping = fields[5];
    if (mapping.empty()) continue;
    if (mapping[0] == '<')
      data.compat[c] = fromHex(mapping.substr(mapping.find('>') + 1));
    else
      data.canonical[c] = fromHex(mapping);
  }
  return true;
}

}  // namespace zelvo_test
