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

/// The process-wide registry of code pages by name, and translation through
/// a named page.
///
/// Static members only. The registry holds "Windows-1252" and "Windows-874"
/// before any host code runs, and the host may add, replace and remove
/// pages, the built-in ones too. A name matches only byte for byte: there
/// are no aliases and no case folding, and no page stands in for a missing
/// one. There is no lock: hasCodePage(), getCodePage() and translate() may
/// run side by side, while registerCodePage() and unregisterCodePage() need
/// the registry to themselves, which is the host's to ensure.
class CodePageTranslator {
 public:
  /// The library's one exception of its own: thrown by value, with no text
  /// and not derived from `std::exception`, by getCodePage(),
  /// unregisterCodePage() and the three translate() for an unknown name.
  enum exceptions : std::uint32_t {
    /// No page is registered under the name.
    unknownCodePage = 0
  };

  /// The load-time filler of the registry; its one instance is initizlizer.
  class Initializer {
   public:
    /// Registers "Windows-1252", then "Windows-874", through
    /// registerCodePage().
    Initializer();
  };

  /// Adds a copy of `page` under its own name, or replaces the page of that
  /// name in place, so that earlier references from getCodePage() show the
  /// new page. Never fails on a name.
  static void registerCodePage(const CodePage& page);
  /// Whether a page is registered under exactly `name`. The one query that
  /// does not throw for an unknown name.
  static bool hasCodePage(const std::string& name);
  /// The page held in the registry, not a copy. The reference ends when that
  /// page is removed; replacing the page keeps it valid.
  /// @throws exceptions `unknownCodePage` if no page has that name.
  static const CodePage& getCodePage(const std::string& name);
  /// Decodes `bytes` with the named page, as CodePage::toUnicode() does.
  /// @throws exceptions `unknownCodePage` if no page has that name.
  static String translate(const std::string& bytes, const std::string& name);
  /// Encodes `text` with the named page, as CodePage::fromUnicode() does,
  /// without telling of a loss.
  /// @throws exceptions `unknownCodePage` if no page has that name.
  static std::string translate(const String& text, const std::string& name);
  /// Encodes `text` with the named page, and sets `lossy` as
  /// CodePage::fromUnicode() does.
  /// @throws exceptions `unknownCodePage` if no page has that name; `lossy`
  /// then keeps the value the caller gave it.
  static std::string translate(const String& text, const std::string& name,
                               bool& lossy);
  /// Removes the page of that name.
  /// @throws exceptions `unknownCodePage` if no page has that name, so a
  /// second removal throws.
  static void unregisterCodePage(const std::string& name);

  /// The registry, by name. Built and filled while the library loads, before
  /// the character tables, and destroyed after them at unload.
  static std::map<std::string, CodePage> codePages;
  /// The instance whose construction fills the registry at load. Its name,
  /// misplaced z and all, is the exported one: keep it letter for letter.
  static Initializer initizlizer;
};

}  // namespace unicode
}  // namespace zelvo
