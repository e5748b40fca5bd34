// Decomposition: the load-time expansion of the published mappings into full
// decompositions, and toNFD and toNFKD, with Hangul syllables by arithmetic.
#include <deque>
#include <map>
#include <string>
#include <utility>

#include "normalization/FastPaths.h"
#include "transform/UnicodeTransformationTables.h"
#include "transform/data/Fillers.h"

namespace zelvo {
namespace unicode {

namespace {

// The lowest keys of decompositionMap and compatDecompositionMap: text below
// them is copied without a lookup.
constexpr char32_t kFirstCanonicalDecomposable = 0x00C0;
constexpr char32_t kFirstCompatDecomposable = 0x00A0;

// Appends the elements of value to out.
void appendString(std::u32string& out, const String& value) {
  out.append(value.data(), value.length());
}

}  // namespace

void UnicodeTransformationTables::initDecomp() {
  zelvo_private::unicode::initDecomposition(rawDecompositionMap);
  // One queue serves every entry: each one leaves it empty.
  std::deque<char32_t> queue;
  for (const auto& entry : rawDecompositionMap) {
    const String& value = entry.second;
    // Follow the chain of first elements to its end. The second elements
    // gathered on the way are final as they stand: none of them has a
    // mapping of its own. The queue keeps the outermost at the front.
    char32_t first = value[0];
    for (auto next = rawDecompositionMap.find(first);
         next != rawDecompositionMap.end();
         next = rawDecompositionMap.find(first)) {
      first = next->second[0];
      if (next->second.length() >= 2) queue.push_back(next->second[1]);
    }
    if (value.length() >= 2) queue.push_front(value[1]);
    queue.push_back(first);
    // Read from the back: the deepest first element, then every second
    // element from the innermost outward.
    String full;
    while (!queue.empty()) {
      full.push_back(queue.back());
      queue.pop_back();
    }
    // Keys come in ascending order, so each one goes in at the end.
    decompositionMap.insert_or_assign(decompositionMap.end(), entry.first,
                                      std::move(full));
  }
}

String UnicodeTransformationTables::expandCompat(char32_t const& c) {
  const auto found = rawCompatDecompositionMap.find(c);
  if (found == rawCompatDecompositionMap.end()) return String(1, c);
  String result;
  for (char32_t element : found->second.first) result += expandCompat(element);
  return result;
}

void UnicodeTransformationTables::initCompatDecomp() {
  zelvo_private::unicode::initCompatibiltyDecomposition(
      rawCompatDecompositionMap);
  for (const auto& entry : rawCompatDecompositionMap) {
    String expanded;
    for (char32_t element : entry.second.first)
      expanded += expandCompat(element);
    // weightMap is still empty here, so this replaces canonical mappings
    // but sorts nothing: the values keep the order of their expansion.
    compatDecompositionMap.insert_or_assign(compatDecompositionMap.end(),
                                            entry.first, toNFD(expanded));
  }
}

String UnicodeTransformationTables::toNFD(String const& s) {
  const size_t length = s.length();
  const char32_t* p = s.data();
  const char32_t* const end = p + length;
  GapLookup<std::map<char32_t, String>> decompositions(decompositionMap);
  std::u32string out;
  // Room for some growth, so that text with a few decompositions is written
  // into one block without being moved when it outgrows the input's size.
  out.reserve(length + length / 8);
  // Code points that stay as they are gather in a run that is copied in one
  // piece when something else has to be appended, or at the end.
  const char32_t* run = p;
  while (p != end) {
    p = skipBelow(p, end, kFirstCanonicalDecomposable);
    if (p == end) break;
    const char32_t c = *p;
    const auto found = decompositions.find(c);
    if (found == decompositions.end()) {
      // SLimit itself gets past the bound, which is inclusive; the test of
      // the index stops it.
      if (c < SBase || c > SLimit || c - SBase >= SCount) {
        ++p;
        continue;
      }
    }
    out.append(run, static_cast<size_t>(p - run));
    run = ++p;
    if (found != decompositions.end()) {
      appendString(out, found->second);
      continue;
    }
    // A Hangul syllable, by arithmetic.
    const char32_t index = c - SBase;
    const char32_t t = index % TCount;
    out.push_back(LBase + index / NCount);
    out.push_back(VBase + (index % NCount) / TCount);
    if (t != 0) out.push_back(TBase + t);
  }
  out.append(run, static_cast<size_t>(end - run));
  String result(std::move(out));
  sortCombiningMarks(result);
  return result;
}

String UnicodeTransformationTables::toNFKD(String const& s) {
  String canonical = toNFD(s);
  const size_t length = canonical.length();
  const char32_t* p = canonical.data();
  const char32_t* const end = p + length;
  GapLookup<std::map<char32_t, String>> decompositions(compatDecompositionMap);
  std::u32string out;  // made only once something is replaced
  const char32_t* run = p;
  while (p != end) {
    p = skipBelow(p, end, kFirstCompatDecomposable);
    if (p == end) break;
    // One pass: a compatibility value is final and is not looked up again.
    const auto found = decompositions.find(*p);
    if (found == decompositions.end()) {
      ++p;
      continue;
    }
    if (out.empty()) out.reserve(length + length / 8 + found->second.length());
    out.append(run, static_cast<size_t>(p - run));
    run = ++p;
    appendString(out, found->second);
  }
  // With nothing replaced, the result is the canonical string as it stands.
  String result;
  if (run == canonical.data()) {
    result = std::move(canonical);
  } else {
    out.append(run, static_cast<size_t>(end - run));
    result = String(std::move(out));
  }
  // The marks that the compatibility values brought in are ordered here.
  sortCombiningMarks(result);
  return result;
}

}  // namespace unicode
}  // namespace zelvo
