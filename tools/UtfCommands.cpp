// utf16 and utf32: between UTF-8 and 16-bit or 32-bit units in the host's
// byte order.
#include <cstring>

#include "Commands.h"
#include "Output.h"
#include "Pieces.h"
#include "Runner.h"
#include "Sample.h"
#include "ToolError.h"

namespace zelvo {
namespace tool {

namespace {

using unicode::String;

void requireDirection(const Invocation& inv) {
  if (inv.to == inv.from) {
    throw UsageError(inv.command + ": give one of --to and --from");
  }
}

template <typename Unit>
std::basic_string<Unit> unitsOf(const std::string& bytes) {
  std::basic_string<Unit> units(bytes.size() / sizeof(Unit), Unit(0));
  if (!units.empty())
    std::memcpy(&units[0], bytes.data(), units.size() * sizeof(Unit));
  return units;
}

template <typename Unit>
std::string bytesOf(const std::basic_string<Unit>& units) {
  return std::string(reinterpret_cast<const char*>(units.data()),
                     units.size() * sizeof(Unit));
}

// Tells of bytes at the end of the input that make no whole unit.
void noteLeftover(const Invocation& inv, const Input& input,
                  std::size_t leftover) {
  if (leftover == 0) return;
  tellError("note: " + input.displayName() + ": ignored " +
            std::to_string(leftover) + (leftover == 1 ? " byte" : " bytes") +
            " at the end, too few for a " + inv.command.substr(3) +
            "-bit unit");
}

// The UTF-16 sample: the text lines, and units that are no well-formed
// UTF-16, which the decoder joins all the same.
std::vector<std::u16string> utf16Sample() {
  std::vector<std::u16string> lines;
  for (std::size_t i : {1, 2}) {
    lines.push_back(String(sampleLines()[i]).toUTF16String());
  }
  lines.push_back(u"\U0001F600 smile");
  lines.push_back({0xD800, 0x0041, 0x0020, 0x0042});
  return lines;
}

// The sample both ways, line by line: text then units for --to, units then
// the text they decode to for --from. The units shown for --to are what the
// encoder writes, which for malformed input need not be the units given.
template <typename Unit, typename Encode>
std::string sampleConversions(const Invocation& inv,
                              const std::vector<std::basic_string<Unit>>& lines,
                              Encode encode) {
  std::string out = sampleHeading(inv);
  for (const std::basic_string<Unit>& units : lines) {
    const String text(units);
    if (inv.to) {
      out += "  " + text.toUTF8String() + "\n";
      out += "  \xE2\x86\x92 " + hexUnits(encode(text)) + "\n";
    } else {
      out += "  " + hexUnits(units) + "\n";
      out += "  \xE2\x86\x92 " + text.toUTF8String() + "\n";
    }
  }
  return out;
}

}  // namespace

int runUtf16(const Invocation& inv) {
  requireDirection(inv);
  if (wantsSample(inv)) {
    writeOut(sampleConversions(inv, utf16Sample(), [](const String& text) {
      return text.toUTF16String();
    }));
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    if (inv.to) {
      forEachTextPiece(input, inv, false, [](const String& piece) {
        writeOut(bytesOf(piece.toUTF16String()));
        return true;
      });
      return 0;
    }
    Utf16Cutter cutter;
    std::size_t leftover = 0;
    forEachPiece(input, inv.blockSize, cutter, [&](const std::string& bytes) {
      // Only the last piece can hold an odd byte.
      leftover = bytes.size() % 2;
      writeOut(String(unitsOf<char16_t>(bytes)).toUTF8String());
      return true;
    });
    noteLeftover(inv, input, leftover);
    return 0;
  });
}

int runUtf32(const Invocation& inv) {
  requireDirection(inv);
  if (wantsSample(inv)) {
    std::vector<std::u32string> lines;
    for (std::size_t i : {1, 2}) {
      lines.push_back(String(sampleLines()[i]).toUTF32String());
    }
    lines.push_back(U"\U0001F600 smile");
    lines.push_back({0x41, 0xD800, 0x110000, 0x42});
    writeOut(sampleConversions(
        inv, lines, [](const String& text) { return text.toUTF32String(); }));
    return 0;
  }
  return forEachInput(inv, [&](Input& input) {
    if (inv.to) {
      forEachTextPiece(input, inv, false, [](const String& piece) {
        writeOut(bytesOf(piece.toUTF32String()));
        return true;
      });
      return 0;
    }
    Utf32Cutter cutter;
    std::size_t leftover = 0;
    forEachPiece(input, inv.blockSize, cutter, [&](const std::string& bytes) {
      leftover = bytes.size() % 4;
      String text;
      text.fromUTF32String(unitsOf<char32_t>(bytes));
      writeOut(text.toUTF8String());
      return true;
    });
    noteLeftover(inv, input, leftover);
    return 0;
  });
}

}  // namespace tool
}  // namespace zelvo
