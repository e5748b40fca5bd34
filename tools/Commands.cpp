// The command table, the mappings of the commands that map text, and the
// help texts of the tool and of each command.
#include "Commands.h"

#include "Output.h"
#include "transform/UnicodeOperations.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::String;

// A normal form takes no option.
template <String (*normalize)(const String&)>
String mapNormalForm(const String& s, const Invocation&) {
  return normalize(s);
}

String mapUpper(const String& s, const Invocation& inv) {
  return inv.simple ? unicode::toUpperSimple(s)
                    : unicode::toUpperFull(s, inv.language);
}

String mapLower(const String& s, const Invocation& inv) {
  return inv.simple ? unicode::toLowerSimple(s)
                    : unicode::toLowerFull(s, inv.language);
}

// The library knows no word boundaries: every code point is titlecased.
String mapTitle(const String& s, const Invocation& inv) {
  String result;
  for (char32_t c : s) {
    result += inv.simple ? String(1, unicode::toTitleSimple(c))
                         : unicode::toTitleFull(c, inv.language);
  }
  return result;
}

String mapFold(const String& s, const Invocation&) {
  String result(s);
  for (char32_t& c : result) c = unicode::simpleCaseFold(c);
  return result;
}

String mapClean(const String& s, const Invocation& inv) {
  String result(s);
  inv.strip ? result.stripBadCodePoints() : result.replaceBadCodePoints();
  return result;
}

const char kInputNote[] =
    "Text is read from each FILE in turn, or from standard input when there\n"
    "is none (\"-\" names it too), and written to standard output. Each FILE\n"
    "is a text of its own. With no FILE and a terminal on standard input, or\n"
    "with --sample, the command runs on a built-in sample text instead.\n"
    "Long texts are read in pieces, cut only where nothing that the command\n"
    "does reaches across, so the output is that of the whole input.\n";

const char kCommonOptions[] =
    "  --sample            run on the built-in sample text\n"
    "  --block-size BYTES  read in blocks of this size (default 65536); "
    "memory\n"
    "                      stays within a few blocks, however long the lines\n"
    "  -h, --help          show this help\n";

const Command kCommands[] = {
    {"nfc", "nfc [FILE...]", "Normalization Form C: decompose, then compose",
     "Puts UTF-8 text into Normalization Form C: every character is\n"
     "decomposed canonically, and then composed again where a precomposed\n"
     "character exists, so that \"e\" followed by U+0301 becomes U+00E9 and\n"
     "Hangul jamo become syllables.\n",
     kReadsInput, runText, mapNormalForm<unicode::toNFC>, cutForNormalForms,
     SampleView::normalForm},
    {"nfd", "nfd [FILE...]", "Normalization Form D: canonical decomposition",
     "Puts UTF-8 text into Normalization Form D: every character is\n"
     "decomposed canonically (U+00E9 becomes \"e\" and U+0301, a Hangul\n"
     "syllable its jamo), and runs of combining marks are put in canonical\n"
     "order.\n",
     kReadsInput, runText, mapNormalForm<unicode::toNFD>, cutForNormalForms,
     SampleView::normalForm},
    {"nfkc", "nfkc [FILE...]",
     "Normalization Form KC: compatibility decomposition, then compose",
     "Puts UTF-8 text into Normalization Form KC: compatibility characters\n"
     "are replaced by their plain forms (the ligature U+FB01 by \"fi\", "
     "U+00BD\n"
     "by \"1/2\" with a fraction slash), and the result is composed.\n",
     kReadsInput, runText, mapNormalForm<unicode::toNFKC>, cutForNormalForms,
     SampleView::normalForm},
    {"nfkd", "nfkd [FILE...]",
     "Normalization Form KD: compatibility decomposition",
     "Puts UTF-8 text into Normalization Form KD: canonical and compatibility\n"
     "decomposition, with the combining marks in canonical order.\n",
     kReadsInput, runText, mapNormalForm<unicode::toNFKD>, cutForNormalForms,
     SampleView::normalForm},
    {"check", "check FORM [FILE...]",
     "is the text in FORM (nfc, nfd, nfkc or nfkd)? says yes or no",
     "Tells whether UTF-8 text is in the normal form FORM, one of nfc, nfd,\n"
     "nfkc and nfkd, by the library's quick checks. It writes \"yes\" or\n"
     "\"no\" (with several FILEs, \"FILE: yes\" for each) and exits with\n"
     "status 0 for yes and 1 for no.\n"
     "\n"
     "The quick checks of nfd and nfkd are stricter than the Unicode\n"
     "Standard's: a mark of a lower class after one of a higher class, with\n"
     "only code points below U+00C0 (U+00A0 for nfkd) between them, such as\n"
     "ASCII letters and line ends, gives \"no\" although the text is in the\n"
     "form. They never say \"yes\" to text that is not.\n",
     kReadsInput, runCheck},
    {"upper", "upper [--lang LANG | --simple] [FILE...]",
     "uppercase (full mapping, or --simple), with --lang LANG",
     "Maps UTF-8 text to uppercase with the full case mapping: one character\n"
     "may become several (\"\xC3\x9F\" becomes \"SS\", the ligature U+FB03\n"
     "\"FFI\"). With --simple every code point maps to exactly one, by the\n"
     "simple mapping (\"\xC3\x9F\" stays), and no language applies.\n"
     "\n"
     "--lang LANG  the language whose rules apply: only \"az\", \"lt\" and\n"
     "             \"tr\" have any, and they are matched exactly (\"tr\", not\n"
     "             \"TR\" or \"tr-TR\"). Another language is accepted and "
     "maps\n"
     "             as no language does; a note on standard error says so.\n",
     kReadsInput | kLanguage | kSimple, runText, mapUpper, cutForCasing,
     SampleView::casing},
    {"lower", "lower [--lang LANG | --simple] [FILE...]",
     "lowercase (full mapping, or --simple), with --lang LANG",
     "Maps UTF-8 text to lowercase with the full case mapping and its context\n"
     "rules: a capital sigma at the end of a word becomes the final sigma\n"
     "U+03C2, and with --lang tr or az a capital I becomes the dotless\n"
     "U+0131 unless a combining dot above follows it. With --simple every\n"
     "code point maps to exactly one, with no context and no language.\n"
     "\n"
     "--lang LANG  the language whose rules apply: only \"az\", \"lt\" and\n"
     "             \"tr\" have any, and they are matched exactly (\"tr\", not\n"
     "             \"TR\" or \"tr-TR\"). Another language is accepted and "
     "maps\n"
     "             as no language does; a note on standard error says so.\n",
     kReadsInput | kLanguage | kSimple, runText, mapLower, cutForCasing,
     SampleView::casing},
    {"title", "title [--lang LANG | --simple] [FILE...]",
     "titlecase of every code point on its own",
     "Maps every code point of UTF-8 text to its titlecase form, each on its\n"
     "own: the library knows no word boundaries, so \"hello\" becomes\n"
     "\"HELLO\", while the digraph U+01C6 becomes U+01C5 and U+00DF \"Ss\".\n"
     "Pick the code points that begin words yourself and run them through\n"
     "this. With --simple each maps to exactly one code point.\n"
     "\n"
     "--lang LANG  as for upper: with \"tr\" or \"az\", \"i\" becomes "
     "U+0130.\n",
     kReadsInput | kLanguage | kSimple, runText, mapTitle, cutAnywhere,
     SampleView::casing},
    {"fold", "fold [FILE...]", "simple case folding, for caseless comparison",
     "Folds the case of UTF-8 text with the simple case folding, one code\n"
     "point to one, for comparing text without regard to case:\n"
     "\"Stra\xC3\x9F"
     "e\" and \"STRA\xC3\x9F"
     "E\" both fold to \"stra\xC3\x9F"
     "e\". \"\xC3\x9F\" itself stays,\n"
     "since its folding to \"ss\" is a full one, which the library does not\n"
     "offer. No language applies.\n",
     kReadsInput, runText, mapFold, cutAnywhere, SampleView::casing},
    {"decode", "decode --page NAME [FILE...]", "bytes of a code page to UTF-8",
     "Reads bytes of the single-byte code page NAME and writes them as\n"
     "UTF-8. ASCII stays as it is; a byte that the page leaves undefined\n"
     "becomes U+FFFD. 'zelvo-unicode pages' lists the page names, which are\n"
     "matched exactly (\"Windows-1252\", not \"windows-1252\" or "
     "\"cp1252\").\n",
     kReadsInput | kPage, runDecode},
    {"encode", "encode --page NAME [--strict] [FILE...]",
     "UTF-8 to a code page; --strict fails on characters it lacks",
     "Reads UTF-8 text and writes it in the single-byte code page NAME. A\n"
     "character that the page has no byte for is written as \"?\". Surrogates\n"
     "and values above U+10FFFF are left out without counting as a loss.\n"
     "\n"
     "--strict  after writing, say on standard error how many characters had\n"
     "          no byte, and exit with status 1 if there were any.\n",
     kReadsInput | kPage | kStrict, runEncode},
    {"pages", "pages", "list the code pages, one name a line",
     "Lists the names of the registered code pages, one a line, for\n"
     "decode --page and encode --page.\n",
     kNoOptions, runPages},
    {"utf16", "utf16 --to | --from [FILE...]",
     "UTF-8 to UTF-16 (--to) or back (--from), host byte order",
     "--to   reads UTF-8 text and writes UTF-16 in the host's byte order,\n"
     "       with no byte order mark.\n"
     "--from reads UTF-16 in the host's byte order and writes UTF-8.\n"
     "\n"
     "Neither direction rejects anything. --from joins any surrogate unit\n"
     "with the unit after it, well-formed or not, and a byte order mark is\n"
     "an ordinary character. A surrogate or a value above U+10FFFF cannot be\n"
     "written as UTF-8 and is left out. An odd byte at the end of the input\n"
     "is ignored, with a note.\n",
     kReadsInput | kDirection, runUtf16},
    {"utf32", "utf32 --to | --from [FILE...]",
     "UTF-8 to UTF-32 (--to) or back (--from), host byte order",
     "--to   reads UTF-8 text and writes UTF-32 in the host's byte order,\n"
     "       with no byte order mark.\n"
     "--from reads UTF-32 in the host's byte order and writes UTF-8.\n"
     "\n"
     "Values that are no code point (surrogates, above U+10FFFF) cannot be\n"
     "written as UTF-8 and are left out. Bytes at the end of the input that\n"
     "make no whole unit are ignored, with a note.\n",
     kReadsInput | kDirection, runUtf32},
    {"clean", "clean --strip | --replace [FILE...]",
     "remove bad code points, or put U+FFFD in their place",
     "Reads UTF-8 text and treats its bad code points: encoded surrogates\n"
     "(ED A0 80 is U+D800) and values above U+10FFFF (F4 90 80 80), which the\n"
     "reader takes in as they stand.\n"
     "\n"
     "--strip    removes them.\n"
     "--replace  puts U+FFFD in the place of each.\n"
     "\n"
     "Bytes that begin no sequence are skipped when the text is read, and\n"
     "are gone before clean sees the text.\n",
     kReadsInput | kCleaning, runText, mapClean, cutAnywhere,
     SampleView::badCodePoints},
    {"info", "info [--lang LANG] [U+XXXX | TEXT]...",
     "what the library knows about code points",
     "Describes code points: value, whether Unicode 7.0.0 assigns it, its\n"
     "canonical combining class, its simple and full case mappings, its case\n"
     "folding and its decompositions. An argument U+XXXX (1 to 8\n"
     "hexadecimal digits) names one code point; any other argument is text,\n"
     "and each of its code points is described. With no argument the text\n"
     "comes from standard input (line ends are skipped), or is the sample.\n"
     "\n"
     "--lang LANG  the language of the full mappings; see 'upper --help'.\n",
     kLanguage | kReadsInput, runInfo},
    {"sample", "sample", "print the built-in sample text",
     "Prints the built-in sample text as UTF-8, one example a line, for\n"
     "trying the other commands in a pipeline:\n"
     "  zelvo-unicode sample | zelvo-unicode nfd | zelvo-unicode check nfc\n",
     kNoOptions, runSample},
};

}  // namespace

const Command* findCommand(const std::string& name) {
  for (const Command& command : kCommands) {
    if (name == command.name) return &command;
  }
  return nullptr;
}

int runText(const Command& command, const Invocation& inv) {
  if (wantsSample(inv)) {
    showTextSample(inv, command.map, command.view);
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    forEachTextPiece(input, inv, command.cut, [&](const String& piece) {
      writeOut(command.map(piece, inv).toUTF8String());
      return true;
    });
    return 0;
  });
}

std::string versionText() {
  return std::string("zelvo-unicode ") + ZELVO_UNICODE_VERSION +
         ", the command-line tool of the zelvo Unicode library "
         "(Unicode 7.0.0 data)\n";
}

std::string toolHelp() {
  std::string text =
      "Usage: zelvo-unicode COMMAND [OPTIONS] [FILE...]\n"
      "\n"
      "Runs one operation of the zelvo Unicode library on text, with the\n"
      "character data of Unicode 7.0.0.\n"
      "\n";
  text += kInputNote;
  text +=
      "\nTry 'zelvo-unicode nfd --sample' or 'zelvo-unicode lower --lang tr "
      "--sample'.\n"
      "\nCommands:\n";
  for (const Command& command : kCommands) {
    std::string name = std::string("  ") + command.name;
    name.resize(10, ' ');
    text += name + command.summary + "\n";
  }
  text +=
      "\n"
      "Common options:\n";
  text += kCommonOptions;
  text +=
      "  --version           show the version\n"
      "\n"
      "UTF-8 is read as the library reads it, without rejecting anything: a\n"
      "byte that begins no sequence is skipped, a malformed sequence gives\n"
      "the value of its bits, and a sequence cut off by the end of the input\n"
      "is dropped. What cannot be written as UTF-8 (surrogates, values above\n"
      "U+10FFFF) is left out of the output. 'clean' shows and treats such\n"
      "values.\n"
      "\n"
      "Exit status: 0 when done; 1 when check says no or encode --strict met\n"
      "characters without a byte; 2 on trouble: a wrong command, option or\n"
      "page name, or an input that cannot be read.\n"
      "\n"
      "'zelvo-unicode COMMAND --help' describes a command, and the manual\n"
      "page zelvo-unicode(1) describes them all, with examples.\n";
  return text;
}

std::string commandHelp(const Command& command) {
  std::string text =
      std::string("Usage: zelvo-unicode ") + command.synopsis + "\n\n";
  text += command.description;
  if (command.options & kReadsInput) {
    if (command.run != runInfo) text += std::string("\n") + kInputNote;
    text += "\nCommon options:\n";
    text += kCommonOptions;
  } else {
    text += "\nOptions:\n  -h, --help          show this help\n";
  }
  return text;
}

}  // namespace tool
}  // namespace zelvo
