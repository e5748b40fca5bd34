// utf16 and utf32: between UTF-8 and 16-bit or 32-bit units in the host's
// byte order.
#include <cstring>

#include "Commands.h"
#include "Output.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::String;

template <typename Unit>
std::basic_string<Unit> unitsOf(const std::string& bytes) {
  std::basic_string<Unit> units(bytes.size() / sizeof(Unit), Unit(0));
  if (!units.empty()) std::memcpy(&units[0], bytes.data(), bytes.size());
  return units;
}

template <typename Unit>
std::string bytesOf(const std::basic_string<Unit>& units) {
  return std::string(reinterpret_cast<const char*>(units.data()),
                     units.size() * sizeof(Unit));
}

std::u16string encoded(const String& text, char16_t) {
  return text.toUTF16String();
}
std::u32string encoded(const String& text, char32_t) {
  return text.toUTF32String();
}

// The sample both ways, line by line: text then units for --to, units then
// the text they decode to for --from. The units shown for --to are what the
// encoder writes, which for malformed input need not be the units given.
// After two lines of the text sample and one beyond U+FFFF come `odd`
// units, no well-formed text, which the decoder takes all the same.
template <typename Unit>
std::string sample(const Invocation& inv, const std::basic_string<Unit>& odd) {
  std::vector<std::basic_string<Unit>> lines;
  for (const std::string& line : {sampleLines()[1], sampleLines()[2],
                                  std::string("\xF0\x9F\x98\x80 smile")}) {
    lines.push_back(encoded(String(line), Unit()));
  }
  lines.push_back(odd);
  std::string out = sampleHeading(inv);
  for (const std::basic_string<Unit>& units : lines) {
    const String text(units);
    if (inv.to) {
      out += "  " + text.toUTF8String() + "\n  \xE2\x86\x92 " +
             hexUnits(encoded(text, Unit())) + "\n";
    } else {
      out += "  " + hexUnits(units) + "\n  \xE2\x86\x92 " +
             text.toUTF8String() + "\n";
    }
  }
  return out;
}

template <typename Unit>
int runUtf(const Invocation& inv, std::size_t (*sequenceUnits)(const char*),
           const std::basic_string<Unit>& odd) {
  if (wantsSample(inv)) {
    writeOut(sample(inv, odd));
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    if (inv.to) {
      forEachTextPiece(input, inv, cutAnywhere, [](const String& piece) {
        writeOut(bytesOf(encoded(piece, Unit())));
        return true;
      });
      return 0;
    }
    std::size_t leftover =
        forEachPiece(input, inv.blockSize, sizeof(Unit), sequenceUnits,
                     [](const std::string& bytes) {
                       writeOut(String(unitsOf<Unit>(bytes)).toUTF8String());
                       return true;
                     });
    if (leftover != 0) {
      tellError(
          "note: " + input.displayName() + ": ignored " +
          std::to_string(leftover) + (leftover == 1 ? " byte" : " bytes") +
          " at the end, too few for a " + inv.command.substr(3) + "-bit unit");
    }
    return 0;
  });
}

}  // namespace

int runUtf16(const Command&, const Invocation& inv) {
  return runUtf<char16_t>(inv, utf16SequenceUnits,
                          {0xD800, 0x0041, 0x0020, 0x0042});
}

int runUtf32(const Command&, const Invocation& inv) {
  return runUtf<char32_t>(inv, nullptr, {0x41, 0xD800, 0x110000, 0x42});
}

}  // namespace tool
}  // namespace zelvo
