// A plain reader of the Unicode data files for the table tests: it parses
// `code[..code]; field; ... # comment` lines itself, so that the tables are
// checked against the files and not against what the generator made of them.
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "string/String.h"

namespace ucdtest {

using Range = std::pair<char32_t, char32_t>;
using Ranges = std::vector<Range>;

struct Record {
  char32_t first = 0;
  char32_t last = 0;
  std::vector<std::string> fields;  // after the code, trimmed, empty ones kept
  int line = 0;
};

inline std::string hex(char32_t c) {
  char buffer[16];
  std::snprintf(buffer, sizeof buffer, "U+%04X", static_cast<unsigned>(c));
  return buffer;
}

inline std::string trim(const std::string& s) {
  size_t begin = s.find_first_not_of(" \t\r");
  if (begin == std::string::npos) {
    return "";
  }
  size_t end = s.find_last_not_of(" \t\r");
  return s.substr(begin, end - begin + 1);
}

// Full path of a data file, or "" when ZELVO_UCD_DIR is unset or the file
// cannot be opened.
inline std::string dataFile(const std::string& name) {
  const char* dir = std::getenv("ZELVO_UCD_DIR");
  if (dir == nullptr || *dir == '\0') {
    return "";
  }
  std::string path = std::string(dir) + "/" + name;
  std::ifstream probe(path);
  return probe ? path : "";
}

// Parses one code point; throws std::runtime_error on anything else.
inline char32_t parseCode(const std::string& text, const std::string& where) {
  if (text.size() < 4 || text.size() > 6 ||
      text.find_first_not_of("0123456789ABCDEF") != std::string::npos) {
    throw std::runtime_error(where + ": not a code point: '" + text + "'");
  }
  return static_cast<char32_t>(std::stoul(text, nullptr, 16));
}

// A blank-separated list of code points; "" gives an empty string.
inline std::u32string parseSequence(const std::string& text,
                                    const std::string& where) {
  std::u32string result;
  std::istringstream in(text);
  std::string part;
  while (in >> part) {
    result.push_back(parseCode(part, where));
  }
  return result;
}

// Every data line of the file, comment and blank lines left out.
inline std::vector<Record> readRecords(const std::string& path) {
  std::ifstream in(path);
  std::vector<Record> records;
  std::string line;
  int number = 0;
  while (std::getline(in, line)) {
    ++number;
    std::string data = trim(line.substr(0, line.find('#')));
    if (data.empty()) {
      continue;
    }
    Record record;
    record.line = number;
    std::string where = path + ":" + std::to_string(number);
    std::vector<std::string> fields;
    size_t start = 0;
    while (true) {
      size_t semicolon = data.find(';', start);
      fields.push_back(trim(data.substr(start, semicolon - start)));
      if (semicolon == std::string::npos) {
        break;
      }
      start = semicolon + 1;
    }
    std::string code = fields[0];
    size_t dots = code.find("..");
    record.first = parseCode(code.substr(0, dots), where);
    record.last = dots == std::string::npos
                      ? record.first
                      : parseCode(code.substr(dots + 2), where);
    record.fields.assign(fields.begin() + 1, fields.end());
    records.push_back(record);
  }
  return records;
}

// Spans of code points as ascending ranges of which no two touch.
inline Ranges mergeSpans(Ranges spans) {
  std::sort(spans.begin(), spans.end());
  Ranges merged;
  for (const Range& span : spans) {
    if (!merged.empty() && span.first <= merged.back().second + 1) {
      if (span.second > merged.back().second) {
        merged.back().second = span.second;
      }
    } else {
      merged.push_back(span);
    }
  }
  return merged;
}

inline size_t codePointCount(const Ranges& ranges) {
  size_t count = 0;
  for (const Range& range : ranges) {
    count += range.second - range.first + 1;
  }
  return count;
}

inline bool contains(const Ranges& ranges, char32_t c) {
  for (const Range& range : ranges) {
    if (range.first <= c && c <= range.second) {
      return true;
    }
  }
  return false;
}

inline std::u32string text(const zelvo::unicode::String& s) {
  return std::u32string(s.begin(), s.end());
}

inline std::map<char32_t, std::u32string> texts(
    const std::map<char32_t, zelvo::unicode::String>& m) {
  std::map<char32_t, std::u32string> result;
  for (const auto& entry : m) {
    result[entry.first] = text(entry.second);
  }
  return result;
}

// Readable forms of keys and values, for the messages of rowDifferences.
inline std::string show(char32_t c) { return hex(c); }
inline std::string show(int i) { return std::to_string(i); }
inline std::string show(size_t i) { return "element " + std::to_string(i); }
inline std::string show(const std::string& s) { return "\"" + s + "\""; }
inline std::string show(const std::u32string& s) {
  std::string result = "{";
  for (char32_t c : s) {
    result += (result.size() > 1 ? " " : "") + hex(c);
  }
  return result + "}";
}
template <typename A, typename B>
std::string show(const std::pair<A, B>& p) {
  return show(p.first) + " " + show(p.second);
}

// "" when the two maps hold the same rows; otherwise the number of rows that
// differ and the first twenty of them, as "key: got ..., want ...".
template <typename K, typename V>
std::string rowDifferences(const std::map<K, V>& actual,
                           const std::map<K, V>& expected) {
  std::ostringstream out;
  int count = 0;
  auto note = [&](const std::string& line) {
    if (++count <= 20) {
      out << "\n  " << line;
    }
  };
  for (const auto& row : expected) {
    auto found = actual.find(row.first);
    if (found == actual.end()) {
      note(show(row.first) + ": missing, want " + show(row.second));
    } else if (!(found->second == row.second)) {
      note(show(row.first) + ": got " + show(found->second) + ", want " +
           show(row.second));
    }
  }
  for (const auto& row : actual) {
    if (expected.find(row.first) == expected.end()) {
      note(show(row.first) + ": not in the file, got " + show(row.second));
    }
  }
  if (count == 0) {
    return "";
  }
  return std::to_string(count) + " rows differ:" + out.str();
}

// The same for range lists, which must be equal element by element.
inline std::string rangeDifferences(const Ranges& actual,
                                    const Ranges& expected) {
  std::map<size_t, Range> a, e;
  for (size_t i = 0; i < actual.size(); ++i) a[i] = actual[i];
  for (size_t i = 0; i < expected.size(); ++i) e[i] = expected[i];
  return rowDifferences(a, e);
}

}  // namespace ucdtest
