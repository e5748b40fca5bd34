// Composition: the map of primary composites built at load, composeHelper
// with its Hangul cases and its blocking rule, and toNFC and toNFKC.
#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "normalization/FastPaths.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

namespace {

// No code point below U+0300 has a combining class: below it, every value
// is a starter without a lookup.
constexpr char32_t kFirstPossibleMark = 0x0300;

// Whether c is a real starter: neither a consumed slot nor a code point
// with a combining class.
bool isStarter(UnicodeTransformationTables& tables, char32_t c) {
  if (c < kFirstPossibleMark) return true;
  return c != tables.deletedMarker &&
         tables.weightMap.find(c) == tables.weightMap.end();
}

// Whether c can be the second element of a compositionMap key. Every second
// element lies in the NFC Maybe list, which is what that list means, and so
// at or above U+0300; both facts are checked against the tables by
// CompositionTest. For any other c no lookup can succeed, so the whole of
// case C leaves the string as it is and can be passed over.
bool mayComposeWithPrevious(RangeMemo& maybe, char32_t c) {
  return c >= kFirstPossibleMark && maybe.contains(c);
}

// The composite of the pair (first, second), or 0 when compositionMap has
// none: U+0000 is never a composite.
char32_t findComposite(const std::map<String, char32_t>& compositions,
                       PairMemo& memo, char32_t first, char32_t second) {
  char32_t composite = 0;
  if (memo.recall(first, second, composite)) return composite;
  const auto found = compositions.find(String{first, second});
  composite = found == compositions.end() ? 0 : found->second;
  memo.remember(first, second, composite);
  return composite;
}

}  // namespace

void UnicodeTransformationTables::initFinalCompositionMap() {
  // The one-level mappings, not the full decompositions: so a composite can
  // be the first element of another pair, and compositions build on each
  // other. Singletons, non-starter composites and mappings that begin with
  // a non-starter stay out by the first three tests, the exclusion list
  // keeps out the rest.
  for (const auto& entry : rawDecompositionMap) {
    const char32_t key = entry.first;
    const String& value = entry.second;
    if (value.length() == 2 && isStarter(*this, key) &&
        isStarter(*this, value[0]) && compositionExclusions.count(key) == 0)
      compositionMap[value] = key;
  }
}

String UnicodeTransformationTables::composeHelper(String& s) {
  const size_t length = s.length();
  // The caller guarantees at least two elements. Consumed slots are marked
  // rather than erased, so nothing moves during the pass.
  char32_t* const text = &*s.begin();
  PairMemo pairs;
  RangeMemo maybe(nfcQcMaybeRanges);
  // Markers in the string, counted as they are written or met, so that the
  // compaction knows the size of the result; the pass meets every element
  // from U+0300 up except the first.
  size_t markers = text[0] == deletedMarker ? 1 : 0;

  size_t i = 1;
  while (i < length) {
    // Below U+0300 nothing can happen at i: no vowel is there for a Hangul
    // case, and no second element of a pair for case C.
    i = static_cast<size_t>(
        skipBelow(text + i, text + length, kFirstPossibleMark) - text);
    if (i == length) break;

    const char32_t prev = text[i - 1];
    const char32_t cur = text[i];
    if (cur == deletedMarker) {
      // Looks like a consumed slot already: it composes with nothing.
      markers += 1;
      i += 1;
      continue;
    }
    const bool prevIsLeading = prev >= LBase && prev < LBase + LCount;
    const bool curIsVowel = cur >= VBase && cur < VBase + VCount;

    // Case A: leading consonant, vowel, trailing consonant. The trailing
    // bound starts at TBase itself, so U+11A7 is taken as the empty
    // trailing place and disappears into the syllable.
    if (prevIsLeading && curIsVowel && i + 1 < length) {
      const char32_t next = text[i + 1];
      if (next >= TBase && next < TBase + TCount) {
        text[i - 1] = SBase + (prev - LBase) * NCount + (cur - VBase) * TCount +
                      (next - TBase);
        text[i] = deletedMarker;
        text[i + 1] = deletedMarker;
        markers += 2;
        i += 2;
        continue;
      }
    }

    // Case B: leading consonant and vowel.
    if (prevIsLeading && curIsVowel) {
      text[i - 1] = SBase + (prev - LBase) * NCount + (cur - VBase) * TCount;
      text[i] = deletedMarker;
      markers += 1;
      i += 1;
      continue;
    }

    // Case C: compose with the last starter, unless blocked.
    if (mayComposeWithPrevious(maybe, cur)) {
      size_t starter = i - 1;
      while (starter >= 1 && !isStarter(*this, text[starter])) --starter;

      // A string that begins with non-starters or a marker has nothing to
      // compose with.
      if (isStarter(*this, text[starter])) {
        // Only the code point just before cur is looked at. A consumed slot
        // there blocks nothing, whatever stands further back.
        bool blocked = false;
        if (starter != i - 1 && prev != deletedMarker) {
          const auto curWeight = weightMap.find(cur);
          blocked = curWeight == weightMap.end() ||
                    !(weightMap.find(prev)->second < curWeight->second);
        }
        if (!blocked) {
          const char32_t composite =
              findComposite(compositionMap, pairs, text[starter], cur);
          if (composite != 0) {
            text[starter] = composite;
            text[i] = deletedMarker;
            markers += 1;
          }
        }
      }
    }
    i += 1;
  }

  // Compact: every element that is not a marker, in order.
  std::u32string out;
  out.reserve(length - markers);
  const char32_t* run = text;
  const char32_t* const end = text + length;
  while (markers != 0) {
    const char32_t* const stop = findValue(run, end, deletedMarker);
    out.append(run, static_cast<size_t>(stop - run));
    run = stop + 1;
    --markers;
  }
  out.append(run, static_cast<size_t>(end - run));
  return String(std::move(out));
}

String UnicodeTransformationTables::toNFC(String const& s) {
  // A string that passes the quick check is already decomposed; a false
  // answer that is too strict only costs a decomposition that changes
  // nothing.
  String working = isNFD(s) ? s : toNFD(s);
  if (working.length() > 1) return composeHelper(working);
  return working;
}

String UnicodeTransformationTables::toNFKC(String const& s) {
  String working = toNFKD(s);
  if (working.length() > 1) return composeHelper(working);
  return working;
}

}  // namespace unicode
}  // namespace zelvo
