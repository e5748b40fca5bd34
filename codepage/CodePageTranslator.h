// zelvo::unicode::CodePageTranslator: the process-wide registry of code pages
// by name, and translation through a named page.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "codepage/CodePage.h"
#include "string/String.h"

namespace zelvo {
namespace unicode {

// Static members only. Reads (hasCodePage, getCodePage, translate) may run
// side by side; registerCodePage and unregisterCodePage need exclusive use.
class CodePageTranslator {
 public:
  // Thrown by value for a name that no page is registered under.
  enum exceptions : std::uint32_t { unknownCodePage = 0 };

  // Registers the built-in pages "Windows-1252" and "Windows-874" at load.
  class Initializer {
   public:
    Initializer();
  };

  // Adds a copy of the page under its own name, or replaces the page of
  // that name in place, so that earlier references see the new page.
  static void registerCodePage(const CodePage& page);
  static bool hasCodePage(const std::string& name);
  static const CodePage& getCodePage(const std::string& name);
  static String translate(const std::string& bytes, const std::string& name);
  static std::string translate(const String& text, const std::string& name);
  static std::string translate(const String& text, const std::string& name,
                               bool& lossy);
  static void unregisterCodePage(const std::string& name);

  static std::map<std::string, CodePage> codePages;
  static Initializer initizlizer;
};

}  // namespace unicode
}  // namespace zelvo
