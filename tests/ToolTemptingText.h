// Texts built to put every rule of the library that looks at neighbours
// next to a place where the tool may cut, for the tests of the tool's cut
// rules and of what its checks carry across a cut.
#pragma once

#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "TextCuts.h"
#include "Unicode.h"

namespace zelvo_tool_test {

using zelvo::unicode::String;

inline std::string names(const String& s) {
  std::string text;
  for (char32_t c : s) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, " %04X", static_cast<unsigned>(c));
    text += buffer;
  }
  return text;
}

// The places where `rule` allows a cut: i for the place between text[i - 1]
// and text[i].
inline std::vector<std::size_t> allowedCuts(
    const String& text, zelvo::tool::CutRule rule,
    const zelvo::tool::Invocation& inv) {
  std::vector<std::size_t> cuts;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (rule(text[i - 1], text[i], inv)) cuts.push_back(i);
  }
  return cuts;
}

// Each piece holds one rule of the library that looks at neighbours; the
// glue between them holds places where the rules allow a cut, and places
// where they must not.
inline const std::vector<std::u32string> kTemptingPieces = {
    // Final sigma: final, not final, at the start, after and before
    // case-ignorable code points, case-ignorable up to the end, U+02B0
    // both cased and case-ignorable.
    U"\u0391\u03A3",
    U"\u0391\u03A3\u0392",
    U"\u03A3\u0391",
    U"\u0391.\u03A3",
    U"\u0391\u03A3.",
    U"\u0391\u03A3.\u0392",
    U"\u02B0\u03A3",
    U"\u0391\u03A3\u02B0",
    U"\u03A3",
    // The dots: After_I, Not_Before_Dot with marks running to the end,
    // More_Above with one and two marks above, After_Soft_Dotted.
    U"I\u0307",
    U"I\u0323\u0307",
    U"I\u0323",
    U"I\u0301\u0307",
    U"I",
    U"I\u0301",
    U"I\u0301\u0301",
    U"I\u0323\u0301",
    U"J\u0301",
    U"\u012E\u0301",
    U"i\u0307",
    U"j\u0301\u0307",
    U"\u00CC",
    U"\u0130\u0307",
    U"\u0307",
    // Marks that are not case-ignorable, of classes 216 and 226.
    U"I\U0001D165",
    U"I\U0001D165\u0301",
    U"J\U0001D16D\u0301",
    // Jamo: L V, L V T, L V U+11A7, a syllable and U+11A7 or a T, the bounds.
    U"\u1100\u1161",
    U"\u1100\u1161\u11A8",
    U"\u1100\u1161\u11A7",
    U"\uAC00\u11A7",
    U"\uAC00\u11A8",
    U"\u1112\u1175\u11C2",
    U"\u1113\u1161",
    U"\u1100\u1176",
    U"\u1100\u1161\u11C3",
    U"\u11A7",
    U"\u1161",
    // Composition: marks in and out of order, blocked marks, starters that
    // compose, an excluded composition, singletons, compatibility forms.
    U"a\u0301",
    U"a\u0307\u0323",
    U"a\u0323\u0307",
    U"\u0301\u0301",
    U"\u1100\u0301\u1161",
    U"\u0B47\u0B3E",
    U"\u0958",
    U"\u0915\u093C",
    U"\u212B",
    U"\u2126",
    U"\u0344",
    U"\u0F73",
    U"\u1E9B\u0323",
    U"\uFB01",
    U"\u00BD",
    U"\uFDFA",
    U"\U0001D160",
    U"e\u0301\u0300",
    U"\u0345a\u0315",
    // A long run of marks of many classes.
    U"a\u0301\u0316\u0334\u0345\u0315\u0323\u0307\u0301\u0316\u0334\u0345"
    U"\u0315\u0323\u0307\u05B0\u0E38\u0F71\u0F72\u0F80",
    // Values that are no code points, and an unassigned one.
    U"\U0010FFFF",
    std::u32string(1, 0xD800),
    std::u32string(1, 0x110000),
    std::u32string(1, 0xFFFFFFFF),
    U"\u0378",
};

// Glue where the tool may cut for one rule or the other, and glue where it
// must not.
inline const std::vector<std::u32string> kGlue = {
    U" ", U"", U"\u4E00", U"1", U".", U"x", U"\u0301", U" . ", U"\u3000"};

// The indices of all tempting pieces, in order.
inline std::vector<std::size_t> everyPiece() {
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < kTemptingPieces.size(); ++i) order.push_back(i);
  return order;
}

inline String joined(const std::vector<std::size_t>& order, std::size_t glue) {
  std::u32string text;
  for (std::size_t i : order) {
    text += kTemptingPieces[i % kTemptingPieces.size()];
    text += kGlue[(glue + i) % kGlue.size()];
  }
  return String(text);
}

// From 2 to `most` tempting pieces chosen at random, with glue.
inline String randomTemptingText(std::mt19937& random, std::size_t most) {
  std::vector<std::size_t> order(2 + random() % (most - 1));
  for (std::size_t& piece : order) piece = random();
  return joined(order, random());
}

}  // namespace zelvo_tool_test
