// Models for the normalization fuzz target, built on the library's tables:
// decomposition with canonical ordering, the standard's canonical composition
// (its blocking rule, and U+11A7 not a trailing consonant), and the quick
// checks as the library defines them.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo_fuzz {

using zelvo::unicode::gTransformTables;
using zelvo::unicode::String;

constexpr char32_t kSBase = 0xAC00, kLBase = 0x1100, kVBase = 0x1161,
                   kTBase = 0x11A7;
constexpr char32_t kLCount = 19, kVCount = 21, kTCount = 28,
                   kNCount = kVCount * kTCount, kSCount = kLCount * kNCount;

inline int weight(char32_t c) {
  auto it = gTransformTables.weightMap.find(c);
  return it == gTransformTables.weightMap.end() ? 0 : it->second;
}

inline bool isSyllable(char32_t c) {
  return c >= kSBase && c < kSBase + kSCount;
}

// Stable sort of every run of code points with a nonzero weight.
inline void orderMarks(std::u32string& s) {
  size_t i = 0;
  while (i < s.size()) {
    if (weight(s[i]) == 0) {
      ++i;
      continue;
    }
    size_t end = i;
    while (end < s.size() && weight(s[end]) != 0) ++end;
    std::stable_sort(
        s.begin() + i, s.begin() + end,
        [](char32_t a, char32_t b) { return weight(a) < weight(b); });
    i = end;
  }
}

inline bool marksInOrder(const String& s) {
  for (size_t i = 1; i < s.size(); ++i) {
    int a = weight(s[i - 1]), b = weight(s[i]);
    if (a != 0 && b != 0 && a > b) return false;
  }
  return true;
}

// Every table lookup is made, with none of the library's thresholds, so
// that a threshold that hides a key shows as a difference.
inline String modelDecompose(const String& s, bool compatibility) {
  const auto& canonical = gTransformTables.decompositionMap;
  const auto& compat = gTransformTables.compatDecompositionMap;
  std::u32string out;
  for (char32_t c : s) {
    auto it = canonical.find(c);
    if (it != canonical.end()) {
      out.append(it->second.begin(), it->second.end());
    } else if (isSyllable(c)) {
      char32_t i = c - kSBase;
      out.push_back(kLBase + i / kNCount);
      out.push_back(kVBase + (i % kNCount) / kTCount);
      if (i % kTCount) out.push_back(kTBase + i % kTCount);
    } else {
      out.push_back(c);
    }
  }
  if (compatibility) {
    std::u32string expanded;
    for (char32_t c : out) {
      auto it = compat.find(c);
      if (it != compat.end())
        expanded.append(it->second.begin(), it->second.end());
      else
        expanded.push_back(c);
    }
    out.swap(expanded);
  }
  orderMarks(out);
  return String(std::move(out));
}

inline bool hasDecomposition(char32_t c, bool compatibility) {
  if (isSyllable(c) || gTransformTables.decompositionMap.count(c)) return true;
  return compatibility && gTransformTables.compatDecompositionMap.count(c);
}

inline bool composePair(char32_t first, char32_t second, char32_t& composite) {
  if (first >= kLBase && first < kLBase + kLCount && second >= kVBase &&
      second < kVBase + kVCount) {
    composite =
        kSBase + ((first - kLBase) * kVCount + (second - kVBase)) * kTCount;
    return true;
  }
  if (isSyllable(first) && (first - kSBase) % kTCount == 0 && second > kTBase &&
      second < kTBase + kTCount) {
    composite = first + (second - kTBase);
    return true;
  }
  auto it = gTransformTables.compositionMap.find(String{first, second});
  if (it == gTransformTables.compositionMap.end()) return false;
  composite = it->second;
  return true;
}

// The canonical composition algorithm of the standard on a decomposed
// string: a code point is blocked from the last starter if anything
// uncomposed between them has class 0 or a class not below its own.
inline String modelCompose(const String& d) {
  std::u32string out(d.begin(), d.end());
  if (out.empty()) return String();
  size_t starter = 0, length = 1;
  int lastClass = weight(out[0]) ? 256 : 0;
  for (size_t i = 1; i < out.size(); ++i) {
    char32_t c = out[i];
    int cls = weight(c);
    char32_t composite;
    if ((lastClass < cls || lastClass == 0) &&
        composePair(out[starter], c, composite)) {
      out[starter] = composite;
      continue;
    }
    if (cls == 0) starter = length;
    lastClass = cls;
    out[length++] = c;
  }
  out.resize(length);
  return String(std::move(out));
}

// The library's quick check of a decomposed form: a code point below the
// threshold is skipped without resetting the last class.
inline bool modelIsDecomposed(const String& s, char32_t threshold,
                              const zelvo::unicode::RangeList& no) {
  int last = 0;
  for (char32_t c : s) {
    if (c < threshold) continue;
    int cls = weight(c);
    if (cls != 0 && last > cls) return false;
    if (zelvo::unicode::rangeContains(no, c)) return false;
    last = cls;
  }
  return true;
}

}  // namespace zelvo_fuzz
