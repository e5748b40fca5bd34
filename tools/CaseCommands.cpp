// upper, lower, title and fold: case mapping and folding of UTF-8 text.
#include "Commands.h"
#include "Output.h"
#include "Runner.h"
#include "Sample.h"
#include "ToolError.h"
#include "transform/UnicodeOperations.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::String;

// The languages with rows of their own in the library's special casing.
bool languageHasRules(const std::string& language) {
  return language == "az" || language == "lt" || language == "tr";
}

TextOperation perCodePoint(char32_t (*map)(const char32_t&)) {
  return [map](const String& s) {
    String result(s);
    for (char32_t& c : result) c = map(c);
    return result;
  };
}

}  // namespace

void noteLanguage(const Invocation& inv) {
  if (inv.languageGiven && !inv.language.empty() &&
      !languageHasRules(inv.language)) {
    tellError("note: the language '" + inv.language +
              "' has no case rules of its own; only \"az\", \"lt\" and "
              "\"tr\" have any, so the text maps as with no language");
  }
}

int runCaseMapping(const Invocation& inv) {
  if (inv.simple && inv.languageGiven) {
    throw UsageError(inv.command +
                     ": --simple and --lang do not go together: the simple "
                     "mappings know no language");
  }
  noteLanguage(inv);
  const std::string language = inv.language;
  TextOperation operation;
  // Full upper and lower look at neighbours (final sigma, the dots of i);
  // every other mapping takes one code point at a time.
  bool contextual = false;
  if (inv.command == "upper" && inv.simple) {
    operation = [](const String& s) { return unicode::toUpperSimple(s); };
  } else if (inv.command == "upper") {
    operation = [language](const String& s) {
      return unicode::toUpperFull(s, language);
    };
    contextual = true;
  } else if (inv.command == "lower" && inv.simple) {
    operation = [](const String& s) { return unicode::toLowerSimple(s); };
  } else if (inv.command == "lower") {
    operation = [language](const String& s) {
      return unicode::toLowerFull(s, language);
    };
    contextual = true;
  } else if (inv.command == "title" && inv.simple) {
    operation = perCodePoint(unicode::toTitleSimple);
  } else if (inv.command == "title") {
    operation = [language](const String& s) {
      String result;
      for (char32_t c : s) result += unicode::toTitleFull(c, language);
      return result;
    };
  } else {
    operation = perCodePoint(unicode::simpleCaseFold);
  }
  return runTextCommand(inv, operation, contextual, SampleView::text,
                        sampleLines());
}

}  // namespace tool
}  // namespace zelvo
