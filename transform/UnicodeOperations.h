// The free functions of the library's character operations: normal forms,
// case mapping, case folding and isAssigned. Each forwards to the one table
// set, gTransformTables, which is built while the library loads.
#pragma once

#include <string>

#include "string/String.h"
#include "transform/UnicodeTransformationTables.h"

/// @file
/// The free functions take any 32-bit values and report no error: a code
/// point without data (unassigned, a surrogate, a value above 0x10FFFF) maps
/// to itself. The only exception is `std::bad_alloc`, and the argument is
/// then as it was. All data is that of Unicode 7.0.0.

namespace zelvo {
namespace unicode {

/// The one table set, built in full while the library loads and read-only
/// from then on, so the functions here may be called from any number of
/// threads at once. Hosts call the functions; this object is their data.
extern UnicodeTransformationTables gTransformTables;

/// Whether `s` is in NFD, by the quick check, building no string. Stricter
/// than the standard's check: a code point below U+00C0 does not reset the
/// class of the mark before it, so text in NFD such as U+0345 U+0061 U+0315
/// can give false, while text not in NFD never gives true.
bool isNFD(String const& s);
/// Whether `s` is in NFC. At each code point whose quick check is Maybe the
/// whole of `s` goes through toNFC() and is compared, so the answer follows
/// toNFC(), its treatment of U+11A7 included.
bool isNFC(String const& s);
/// Whether `s` is in NFKD: isNFD() with the compatibility data and the
/// threshold U+00A0, and as strict.
bool isNFKD(String const& s);
/// Whether `s` is in NFKC: isNFC() with the compatibility data and toNFKC().
bool isNFKC(String const& s);
/// The canonical decomposition of `s`, marks in canonical order, as a new
/// string; `s` is left alone. Hangul syllables are decomposed by arithmetic.
String toNFD(String const& s);
/// The canonical composition of toNFD(`s`), as a new string. Unlike the
/// standard, U+11A7 after a leading consonant and a vowel is swallowed:
/// U+1100 U+1161 U+11A7 gives U+AC00. In a string of two or more elements
/// the value 0xFFFFFFFF is taken for a consumed slot and removed.
String toNFC(String const& s);
/// The compatibility decomposition of `s`, marks in canonical order, as a
/// new string.
String toNFKD(String const& s);
/// The canonical composition of toNFKD(`s`), as a new string, with U+11A7
/// and 0xFFFFFFFF treated as by toNFC().
String toNFKC(String const& s);

/// A copy of `s` with each element mapped by its simple uppercase mapping,
/// one code point to one, with no language and no context. There is no
/// title form for a String: titlecase exists for single code points only.
String toUpperSimple(String const& s);
/// A copy of `s` with each element mapped by its simple lowercase mapping.
String toLowerSimple(String const& s);
/// Maps each element of `s` in place by its simple uppercase mapping.
void toUpperSimpleInPlace(String& s);
/// Maps each element of `s` in place by its simple lowercase mapping.
void toLowerSimpleInPlace(String& s);
/// The simple uppercase of `c`: U+00DF stays U+00DF.
char32_t toUpperSimple(char32_t const& c);
/// Maps `c` in place to its simple uppercase.
void toUpperSimpleInPlace(char32_t& c);
/// The simple lowercase of `c`: U+0130 gives U+0069 alone.
char32_t toLowerSimple(char32_t const& c);
/// Maps `c` in place to its simple lowercase.
void toLowerSimpleInPlace(char32_t& c);
/// The simple titlecase of `c`.
char32_t toTitleSimple(char32_t const& c);

/// The full uppercase of `s`: the rows of SpecialCasing.txt over the simple
/// mapping, so one code point may give several (U+00DF gives "SS"), with
/// every context read from `s` itself. `language` selects rows only when it
/// is exactly "az", "lt" or "tr"; any other text, the empty one, "TR" and
/// "tr-TR" included, selects none and is no error.
String toUpperFull(String const& s, std::string const& language = "");
/// toUpperFull() of the one-element string of `c`. The name, with three p,
/// is the exported one: keep it letter for letter. No toUpperFull() takes a
/// single code point.
String toUppperFull(char32_t c, std::string const& language = "");
/// The full lowercase of `s`, contexts and languages as in toUpperFull().
/// The result may be longer or shorter than `s`: with "az" or "tr" a U+0307
/// after U+0049 is deleted. A sigma is final only after a cased letter and
/// before no cased one; case-ignorable code points up to the end of the text
/// keep it from being final.
String toLowerFull(String const& s, std::string const& language = "");
/// toLowerFull() of the one-element string of `c`, which stands at the end
/// of a text: with "tr", U+0049 gives U+0131.
String toLowerFull(char32_t c, std::string const& language = "");
/// The full titlecase of `c` (U+00DF gives "Ss"). It sees no neighbours, so
/// of the conditional rows only those of a bare language apply. There is no
/// title-casing of a String: where words begin is the caller's choice.
String toTitleFull(char32_t c, std::string const& language = "");
/// Maps `c` in place to its simple titlecase; a simple mapping, whatever
/// its place in this list.
void toTitleSimpleInPlace(char32_t& c);

/// The simple case folding of `c`, from the rows of status C and S of
/// CaseFolding.txt: U+0049 gives U+0069 whatever the language, and U+00DF,
/// which folds only in full, stays. There is no full or Turkic folding.
char32_t simpleCaseFold(char32_t const& c);
/// Folds `c` in place, as simpleCaseFold() does.
void simpleCaseFoldInPlace(char32_t& c);

/// Whether Unicode 7.0.0 assigns `c`: false for surrogates, private use,
/// noncharacters, unassigned code points and values above 0x10FFFF.
bool isAssigned(char32_t c);

}  // namespace unicode
}  // namespace zelvo
