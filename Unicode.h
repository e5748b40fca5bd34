// The umbrella header of the zelvo Unicode library: every public header.
#pragma once

#include "codepage/CodePage.h"
#include "codepage/CodePageTranslator.h"
#include "string/String.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"

/// @mainpage zelvo-unicode
///
/// All Unicode text handling of a program, with the character data of
/// Unicode 7.0.0 built into the library while it loads. `#include
/// "Unicode.h"` brings in every public header:
///
/// - zelvo::unicode::String, the code point string, with its UTF-8, UTF-16,
///   UTF-32, wide and native conversions and its bad code point members;
/// - zelvo::unicode::CodePage and zelvo::unicode::CodePageTranslator,
///   single-byte code pages by name;
/// - UnicodeOperations.h, the normal forms, case mapping, case folding and
///   isAssigned();
/// - zelvo::unicode::UnicodeTransformationTables, the data behind them.
///
/// Some behaviours differ on purpose from the Unicode Standard or a hardened
/// library, and are the library's contract: the decoders never reject, the
/// UTF-8 encoder drops surrogates and values above 0x10FFFF, code pages
/// write '?' for a character without a byte, composition swallows U+11A7
/// after a Hangul leading consonant and vowel, isNFD() and isNFKD() are
/// stricter than the standard's quick checks, only the languages "az", "lt"
/// and "tr" select case rows, and some casing contexts part from the
/// standard's. Each is told where a caller meets it.

/// @namespace zelvo
/// The zelvo libraries.

/// @namespace zelvo::unicode
/// Unicode text: the code point string, code pages, normal forms and case.
