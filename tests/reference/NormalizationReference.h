// The written normalization algorithms transcribed plainly, step by step, on
// the maps and range lists of a table set: the reference that the tests and
// the fuzz target compare the library's normal forms and quick checks with.
// Slow on purpose: no threshold beyond the written ones, no shortcut, no
// memory of one answer for the next.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>

#include "string/String.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo_reference {

using zelvo::unicode::RangeList;
using zelvo::unicode::String;
using zelvo::unicode::UnicodeTransformationTables;

class NormalizationReference {
 public:
  explicit NormalizationReference(const UnicodeTransformationTables& tables)
      : t_(tables) {}

  // The halving search of a range list: the first range whose last code
  // point is not below c, then its first code point.
  static bool rangeContains(const RangeList& ranges, char32_t c) {
    const auto found =
        std::lower_bound(ranges.begin(), ranges.end(), c,
                         [](const std::pair<char32_t, char32_t>& range,
                            char32_t value) { return range.second < value; });
    return found != ranges.end() && !(found->first > c);
  }

  bool hasWeight(char32_t c) const {
    return t_.weightMap.find(c) != t_.weightMap.end();
  }
  int weight(char32_t c) const { return t_.weightMap.find(c)->second; }

  // Canonical ordering.
  void sortCombiningMarks(String& s) const {
    size_t p = 0;
    while (p < s.length()) {
      const char32_t c = s[p];
      if (c < 0x0300) {
        ++p;
        continue;
      }
      if (!hasWeight(c)) {
        ++p;
        continue;
      }
      size_t end = p + 1;
      while (end < s.length() && hasWeight(s[end])) ++end;
      std::stable_sort(
          s.begin() + static_cast<std::ptrdiff_t>(p),
          s.begin() + static_cast<std::ptrdiff_t>(end),
          [this](char32_t a, char32_t b) { return weight(a) < weight(b); });
      if (end == s.length()) break;
      p = end + 1;
    }
  }

  String toNFD(const String& s) const {
    String result;
    for (const char32_t c : s) {
      if (c < 0x00C0) {
        result.push_back(c);
        continue;
      }
      const auto found = t_.decompositionMap.find(c);
      if (found != t_.decompositionMap.end()) {
        result += found->second;
        continue;
      }
      if (c < t_.SBase || c > t_.SLimit) {
        result.push_back(c);
        continue;
      }
      const char32_t i = c - t_.SBase;
      if (!(i < t_.SCount)) {
        result.push_back(c);
        continue;
      }
      const char32_t l = t_.LBase + i / t_.NCount;
      const char32_t v = t_.VBase + (i % t_.NCount) / t_.TCount;
      const char32_t t = i % t_.TCount;
      result.push_back(l);
      result.push_back(v);
      if (t != 0) result.push_back(t_.TBase + t);
    }
    sortCombiningMarks(result);
    return result;
  }

  String toNFKD(const String& s) const {
    const String d = toNFD(s);
    String result;
    for (const char32_t c : d) {
      if (c < 0x00A0) {
        result.push_back(c);
        continue;
      }
      const auto found = t_.compatDecompositionMap.find(c);
      if (found != t_.compatDecompositionMap.end())
        result += found->second;
      else
        result.push_back(c);
    }
    sortCombiningMarks(result);
    return result;
  }

  bool isStarter(char32_t c) const {
    return c != t_.deletedMarker && !hasWeight(c);
  }

  // s must have at least two elements; it is left with its markers.
  String composeHelper(String& s) const {
    size_t i = 1;
    while (i < s.length()) {
      const char32_t prev = s[i - 1];
      const char32_t cur = s[i];
      const bool prevIsL = prev >= t_.LBase && prev < t_.LBase + t_.LCount;
      const bool curIsV = cur >= t_.VBase && cur < t_.VBase + t_.VCount;
      // Case A.
      if (i + 1 < s.length()) {
        const char32_t next = s[i + 1];
        if (prevIsL && curIsV && next >= t_.TBase &&
            next < t_.TBase + t_.TCount) {
          s[i - 1] = t_.SBase + (prev - t_.LBase) * t_.NCount +
                     (cur - t_.VBase) * t_.TCount + (next - t_.TBase);
          s[i] = t_.deletedMarker;
          s[i + 1] = t_.deletedMarker;
          i += 2;
          continue;
        }
      }
      // Case B.
      if (prevIsL && curIsV) {
        s[i - 1] = t_.SBase + (prev - t_.LBase) * t_.NCount +
                   (cur - t_.VBase) * t_.TCount;
        s[i] = t_.deletedMarker;
        i += 1;
        continue;
      }
      // Case C.
      size_t st = 0;
      for (size_t k = i - 1; k >= 1; --k) {
        if (isStarter(s[k])) {
          st = k;
          break;
        }
      }
      if (isStarter(s[st])) {
        bool blocked;
        if (st == i - 1) {
          blocked = false;
        } else if (prev == t_.deletedMarker) {
          blocked = false;
        } else {
          blocked = !(hasWeight(cur) && weight(prev) < weight(cur));
        }
        if (!blocked) {
          const auto found = t_.compositionMap.find(String{s[st], cur});
          if (found != t_.compositionMap.end()) {
            s[st] = found->second;
            s[i] = t_.deletedMarker;
          }
        }
      }
      i += 1;
    }
    String result;
    for (const char32_t c : s)
      if (c != t_.deletedMarker) result.push_back(c);
    return result;
  }

  String toNFC(const String& s) const {
    String working = isNFD(s) ? s : toNFD(s);
    if (working.length() > 1) return composeHelper(working);
    return working;
  }

  String toNFKC(const String& s) const {
    String working = toNFKD(s);
    if (working.length() > 1) return composeHelper(working);
    return working;
  }

  bool isNFD(const String& s) const {
    return isDecomposed(s, 0x00C0, t_.nfdQcNoRanges);
  }
  bool isNFKD(const String& s) const {
    return isDecomposed(s, 0x00A0, t_.nfkdQcNoRanges);
  }
  bool isNFC(const String& s) const {
    return isComposed(s, t_.nfcQcNoRanges, t_.nfcQcMaybeRanges, false);
  }
  bool isNFKC(const String& s) const {
    return isComposed(s, t_.nfkcQcNoRanges, t_.nfkcQcMaybeRanges, true);
  }

 private:
  bool isDecomposed(const String& s, char32_t threshold,
                    const RangeList& no) const {
    if (s.empty()) return true;
    int last = 0;
    for (const char32_t c : s) {
      if (c < threshold) continue;
      int cls = 0;
      if (hasWeight(c)) {
        cls = weight(c);
        if (last > cls && cls != 0) return false;
      }
      if (rangeContains(no, c)) return false;
      last = cls;
    }
    return true;
  }

  // Composes and compares the whole string at every Maybe code point.
  bool isComposed(const String& s, const RangeList& no, const RangeList& maybe,
                  bool compatibility) const {
    if (s.empty()) return true;
    int last = 0;
    for (const char32_t c : s) {
      int cls = 0;
      if (hasWeight(c)) {
        cls = weight(c);
        if (last > cls && cls != 0) return false;
      }
      const bool isNo = rangeContains(no, c);
      if (!rangeContains(maybe, c)) {
        if (isNo) return false;
      } else {
        const String normalized = compatibility ? toNFKC(s) : toNFC(s);
        if (isNo || normalized != s) return false;
      }
      last = cls;
    }
    return true;
  }

  const UnicodeTransformationTables& t_;
};

}  // namespace zelvo_reference
