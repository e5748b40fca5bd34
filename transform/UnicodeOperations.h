// The free functions of the library's character operations: normal forms,
// case mapping, case folding and isAssigned. Each forwards to the one table
// set, gTransformTables, which is built while the library loads.
#pragma once

#include <string>

#include "string/String.h"
#include "transform/UnicodeTransformationTables.h"

namespace zelvo {
namespace unicode {

extern UnicodeTransformationTables gTransformTables;

// Normal forms. Each returns a new String and leaves its argument alone.
bool isNFD(String const& s);
bool isNFC(String const& s);
bool isNFKD(String const& s);
bool isNFKC(String const& s);
String toNFD(String const& s);
String toNFC(String const& s);
String toNFKD(String const& s);
String toNFKC(String const& s);

// Simple case mapping: one code point to one, no language, no context.
String toUpperSimple(String const& s);
String toLowerSimple(String const& s);
void toUpperSimpleInPlace(String& s);
void toLowerSimpleInPlace(String& s);
char32_t toUpperSimple(char32_t const& c);
void toUpperSimpleInPlace(char32_t& c);
char32_t toLowerSimple(char32_t const& c);
void toLowerSimpleInPlace(char32_t& c);
char32_t toTitleSimple(char32_t const& c);

// Full case mapping. Only "az", "lt" and "tr" select language rows; any
// other text, the empty string included, selects none and is no error.
String toUpperFull(String const& s, std::string const& language = "");
String toUppperFull(char32_t c, std::string const& language = "");
String toLowerFull(String const& s, std::string const& language = "");
String toLowerFull(char32_t c, std::string const& language = "");
String toTitleFull(char32_t c, std::string const& language = "");
void toTitleSimpleInPlace(char32_t& c);

// Simple case folding of one code point.
char32_t simpleCaseFold(char32_t const& c);
void simpleCaseFoldInPlace(char32_t& c);

// Whether Unicode 7.0.0 assigns c (surrogates, private use and
// noncharacters are not assigned).
bool isAssigned(char32_t c);

}  // namespace unicode
}  // namespace zelvo
