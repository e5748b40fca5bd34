// Holds every kernel set of the conversions (portable, SSE2, AVX2: each that
// this processor runs) to the step-by-step reference: every byte or unit
// value at every position of a block, malformed sequences and truncated
// tails at every offset of long texts of many scripts, every awkward value in
// every lane of an encoder window, random input, the corpus, and each single
// kernel call near the end of its room.
#include "tests/ConversionKernelsTest.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/CorpusTexts.h"
#include "tests/reference/Utf16Reference.h"
#include "tests/reference/Utf8Reference.h"

namespace {

using zelvo::unicode::kernels::ConversionKernels;
using zelvo_kernels::callKernel;
using zelvo_kernels::decodeUtf16With;
using zelvo_kernels::decodeUtf8With;
using zelvo_kernels::encodeUtf16With;
using zelvo_kernels::encodeUtf8With;

// Samples of many scripts, right-to-left and emoji sequences among them.
const std::u32string kScripts[] = {
    U"The quick brown fox jumps over the lazy dog; 0123456789.\n",
    U"Ça a été déjà vu: naïve façade, «Übergrößenträger» ñandú. ",
    U"Съешь же ещё этих мягких французских булок. Ελληνικά κείμενα. ",
    U"中文测试，日本語のテキストです。한국어 텍스트입니다. ",
    U"हिन्दी पाठ ภาษาไทย தமிழ் உரை Հայերեն տեքստ ქართული ტექსტი ",
    U"עברית טקסט النص العربي متن فارسی ",
    U"😀🎉👍🏽 👨‍👩‍👧 🇫🇷🇯🇵 𝄞𝕏 ",
    U"abc\u00E9\u20AC\U0001F600\u0430\u4E2D\u05D0 \U0010FFFF\uFFFD\uFEFF\u0000",
};

std::u32string repeated(const std::u32string& sample, std::size_t length) {
  std::u32string out;
  while (out.size() < length) out += sample;
  out.resize(length);
  return out;
}

std::string hexBytes(const std::string& s) {
  std::string out;
  char buf[4];
  for (std::size_t i = 0; i < s.size() && i < 200; ++i) {
    std::snprintf(buf, sizeof buf, "%02X ",
                  static_cast<unsigned>(static_cast<unsigned char>(s[i])));
    out += buf;
  }
  return out;
}

class KernelSet : public ::testing::TestWithParam<const ConversionKernels*> {
 protected:
  const ConversionKernels& set() const { return *GetParam(); }

  // Decodes through the set and checks the result and the exact count
  // against the reference; returns false on the first miss.
  bool decodesAsReference(const std::string& in) {
    const std::u32string expected = zelvo_reference::decodeUtf8(in);
    const zelvo_kernels::Decoded d = decodeUtf8With(set(), in);
    if (d.elements == expected && d.counted == expected.size()) return true;
    ADD_FAILURE() << set().name << ": " << in.size()
                  << " bytes: " << hexBytes(in);
    return false;
  }

  bool decodesAsReference(const std::u16string& in) {
    const std::u32string expected = zelvo_reference::decodeUtf16(in);
    const zelvo_kernels::Decoded d = decodeUtf16With(set(), in);
    if (d.elements == expected && d.counted == expected.size()) return true;
    ADD_FAILURE() << set().name << ": " << in.size() << " units";
    return false;
  }

  // Encodes through the set, staging as little as the encoders allow and
  // as much as String does, and checks the results against the reference.
  bool encodesAsReference(const std::u32string& in) {
    const std::string utf8 = zelvo_reference::encodeUtf8(in);
    const std::u16string utf16 = zelvo_reference::encodeUtf16(in);
    if (encodeUtf8With<8192>(set(), in) == utf8 &&
        encodeUtf8With<64>(set(), in) == utf8 &&
        encodeUtf16With<4096>(set(), in) == utf16 &&
        encodeUtf16With<16>(set(), in) == utf16)
      return true;
    ADD_FAILURE() << set().name << ": " << in.size() << " elements";
    return false;
  }
};

// ---------------------------------------------------------------------------
// UTF-8 decoding.

TEST_P(KernelSet, Utf8DecodingOfEveryByteValueAtEveryPositionMatches) {
  for (const std::u32string& script : kScripts) {
    const std::string base =
        zelvo_reference::encodeUtf8(repeated(script, 200)).substr(0, 200);
    for (std::size_t at = 0; at < 150; ++at) {
      for (int value = 0; value < 256; ++value) {
        std::string in = base;
        in[at] = static_cast<char>(value);
        if (!decodesAsReference(in)) return;
      }
    }
  }
}

TEST_P(KernelSet, Utf8DecodingOfEveryTruncationOfEveryScriptMatches) {
  for (const std::u32string& script : kScripts) {
    const std::string text = zelvo_reference::encodeUtf8(repeated(script, 400));
    for (std::size_t length = 0; length <= text.size(); ++length)
      if (!decodesAsReference(text.substr(0, length))) return;
  }
}

TEST_P(KernelSet, Utf8DecodingWithMalformedSequencesAtEveryOffsetMatches) {
  const std::string kMalformed[] = {"\x80",
                                    "\xBF",
                                    "\xC3",
                                    "\xE2\x82",
                                    "\xF0\x9F\x98",
                                    "\xF8",
                                    "\xFF",
                                    "\xC0\x80",
                                    "\xED\xA0\x80",
                                    "\xF4\x90\x80\x80",
                                    "\xF7\xBF\xBF\xBF",
                                    "\xC3\xC3\xA9",
                                    "\xE2\x41\x42"};
  for (const std::u32string& script : kScripts) {
    const std::string text = zelvo_reference::encodeUtf8(repeated(script, 150));
    for (const std::string& bad : kMalformed) {
      for (std::size_t at = 0; at <= text.size(); ++at) {
        std::string in = text;
        in.insert(at, bad);
        if (!decodesAsReference(in)) return;
      }
    }
  }
}

TEST_P(KernelSet, Utf8DecodingOfRandomBytesMatches) {
  std::mt19937 random(11);
  for (int trial = 0; trial < 3000; ++trial) {
    // Runs of bytes of one class at a time, so that whole blocks, broken
    // blocks and blocks with a single odd byte all occur.
    std::string in;
    const std::size_t length = random() % 600;
    while (in.size() < length) {
      const unsigned kind = random() % 8;
      const std::size_t run = 1 + random() % 40;
      for (std::size_t i = 0; i < run; ++i) {
        unsigned b;
        switch (kind) {
          case 0:
            b = random() % 0x80;
            break;
          case 1:
            b = 0x80 + random() % 0x40;
            break;
          case 2:
            b = 0xC0 + random() % 0x40;
            break;
          case 3:
            b = random() % 256;
            break;
          default: {
            const std::u32string piece(
                1, kScripts[kind][random() % kScripts[kind].size()]);
            in += zelvo_reference::encodeUtf8(piece);
            continue;
          }
        }
        in.push_back(static_cast<char>(b));
      }
    }
    if (!decodesAsReference(in)) return;
  }
}

TEST_P(KernelSet, ConversionsOfTheCorpusMatch) {
  const std::vector<std::string> texts = corpusTexts();
  if (texts.empty()) GTEST_FAIL() << "ZELVO_CORPUS_DIR is not set or empty";
  std::mt19937 random(3);
  for (std::string text : texts) {
    ASSERT_TRUE(decodesAsReference(text));
    const std::u32string elements = zelvo_reference::decodeUtf8(text);
    ASSERT_TRUE(encodesAsReference(elements));
    ASSERT_TRUE(decodesAsReference(zelvo_reference::encodeUtf16(elements)));
    // A few bytes spoiled deep inside.
    for (int i = 0; i < 50; ++i)
      text[random() % text.size()] = static_cast<char>(random() % 256);
    ASSERT_TRUE(decodesAsReference(text));
  }
}

TEST_P(KernelSet, Utf8DecodeKernelWritesOnlyTheReadingOfWhatItTakes) {
  std::mt19937 random(5);
  for (const std::u32string& script : kScripts) {
    const std::string text = zelvo_reference::encodeUtf8(repeated(script, 300));
    for (std::size_t room = 0; room <= 200; room += 1 + random() % 9) {
      for (std::size_t from = 0; from < 8; ++from) {
        std::string in = text.substr(from);
        if (random() % 2) in[random() % in.size()] = static_cast<char>(0x80);
        const auto* bytes = reinterpret_cast<const unsigned char*>(in.data());
        const auto call = callKernel<char32_t>(set().decodeUtf8, bytes,
                                               bytes + in.size(), room);
        const std::u32string expected =
            zelvo_reference::decodeUtf8(in.substr(0, call.consumed));
        ASSERT_TRUE(call.guardIntact) << set().name << " room " << room;
        ASSERT_LE(call.written.size(), room);
        ASSERT_TRUE(std::u32string(call.written.begin(), call.written.end()) ==
                    expected)
            << set().name << " room " << room << " took " << call.consumed;
        // What follows is decoded as from the start of a step: the kernel
        // stopped on a step boundary.
        ASSERT_TRUE(expected +
                        zelvo_reference::decodeUtf8(in.substr(call.consumed)) ==
                    zelvo_reference::decodeUtf8(in));
      }
    }
  }
}

// ---------------------------------------------------------------------------
// Encoding, both forms.

const char32_t kAwkward[] = {
    0x0,      0x7F,       0x80,       0x7FF,     0x800,    0xD7FF,
    0xD800,   0xDBFF,     0xDC00,     0xDFFF,    0xE000,   0xFFFD,
    0xFFFF,   0x10000,    0x1F600,    0x10FFFF,  0x110000, 0x1FFFFF,
    0x211FFF, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

TEST_P(KernelSet, EncodingOfEveryAwkwardValueInEveryLaneMatches) {
  for (const std::u32string& script : kScripts) {
    const std::u32string base = repeated(script, 100);
    for (const char32_t value : kAwkward) {
      for (std::size_t at = 0; at < 72; ++at) {
        std::u32string in = base;
        in[at] = value;
        if (!encodesAsReference(in)) return;
        in.resize(at + 1);  // and as the last element
        if (!encodesAsReference(in)) return;
      }
    }
  }
}

TEST_P(KernelSet, EncodingOfRandomValuesMatches) {
  std::mt19937 random(17);
  for (int trial = 0; trial < 3000; ++trial) {
    std::u32string in;
    const std::size_t length = random() % 300;
    while (in.size() < length) {
      const unsigned kind = random() % 6;
      const std::size_t run = 1 + random() % 30;
      for (std::size_t i = 0; i < run; ++i) {
        switch (kind) {
          case 0:
            in.push_back(random() % 0x80);
            break;
          case 1:
            in.push_back(random() % 0x800);
            break;
          case 2:
            in.push_back(random() % 0x10000);
            break;
          case 3:
            in.push_back(random() % 0x110000);
            break;
          case 4:
            in.push_back(kAwkward[random() % std::size(kAwkward)]);
            break;
          default:
            in.push_back(static_cast<char32_t>(random()));
            break;
        }
      }
    }
    if (!encodesAsReference(in)) return;
  }
}

TEST_P(KernelSet, EncodeKernelsWriteOnlyTheFormsOfWhatTheyTake) {
  std::mt19937 random(23);
  for (const std::u32string& script : kScripts) {
    for (std::size_t room = 0; room <= 120; room += 1 + random() % 5) {
      std::u32string in = repeated(script, 60 + random() % 40);
      if (random() % 2) in[random() % in.size()] = kAwkward[random() % 22];
      const auto utf8 = callKernel<unsigned char>(set().encodeUtf8, in.data(),
                                                  in.data() + in.size(), room);
      const std::string expected8 =
          zelvo_reference::encodeUtf8(in.substr(0, utf8.consumed));
      ASSERT_TRUE(utf8.guardIntact) << set().name << " room " << room;
      ASSERT_EQ(std::string(utf8.written.begin(), utf8.written.end()),
                expected8)
          << set().name << " room " << room;
      const auto utf16 = callKernel<char16_t>(set().encodeUtf16, in.data(),
                                              in.data() + in.size(), room);
      ASSERT_TRUE(utf16.guardIntact) << set().name << " room " << room;
      ASSERT_TRUE(std::u16string(utf16.written.begin(), utf16.written.end()) ==
                  zelvo_reference::encodeUtf16(in.substr(0, utf16.consumed)))
          << set().name << " room " << room;
    }
  }
}

// ---------------------------------------------------------------------------
// UTF-16 decoding.

const char16_t kAwkwardUnits[] = {0x0000, 0x0041, 0xD7FF, 0xD800, 0xDBFF,
                                  0xDC00, 0xDFFF, 0xE000, 0xFEFF, 0xFFFF};

TEST_P(KernelSet, Utf16DecodingOfEveryAwkwardUnitAtEveryPositionMatches) {
  for (const std::u32string& script : kScripts) {
    const std::u16string base =
        zelvo_reference::encodeUtf16(repeated(script, 60)).substr(0, 60);
    for (std::size_t at = 0; at < base.size(); ++at) {
      for (const char16_t unit : kAwkwardUnits) {
        std::u16string in = base;
        in[at] = unit;
        if (!decodesAsReference(in)) return;
        // And two in a row, which joins differently.
        if (at + 1 < in.size()) in[at + 1] = unit;
        if (!decodesAsReference(in)) return;
      }
    }
  }
}

TEST_P(KernelSet, Utf16DecodingOfEveryTruncationOfEveryScriptMatches) {
  for (const std::u32string& script : kScripts) {
    const std::u16string text =
        zelvo_reference::encodeUtf16(repeated(script, 300));
    for (std::size_t length = 0; length <= text.size(); ++length)
      if (!decodesAsReference(text.substr(0, length))) return;
  }
}

TEST_P(KernelSet, Utf16DecodingOfRandomUnitsMatches) {
  std::mt19937 random(29);
  for (int trial = 0; trial < 3000; ++trial) {
    std::u16string in;
    const std::size_t length = random() % 300;
    while (in.size() < length) {
      const unsigned kind = random() % 4;
      const std::size_t run = 1 + random() % 30;
      for (std::size_t i = 0; i < run; ++i) {
        switch (kind) {
          case 0:
            in.push_back(static_cast<char16_t>(random() % 0xD800));
            break;
          case 1:
            in.push_back(static_cast<char16_t>(0xD800 + random() % 0x400));
            in.push_back(static_cast<char16_t>(0xDC00 + random() % 0x400));
            break;
          case 2:
            in.push_back(kAwkwardUnits[random() % std::size(kAwkwardUnits)]);
            break;
          default:
            in.push_back(static_cast<char16_t>(random()));
            break;
        }
      }
    }
    if (!decodesAsReference(in)) return;
  }
}

TEST_P(KernelSet, Utf16DecodeKernelWritesOnlyTheReadingOfWhatItTakes) {
  std::mt19937 random(31);
  for (const std::u32string& script : kScripts) {
    const std::u16string text =
        zelvo_reference::encodeUtf16(repeated(script, 200));
    for (std::size_t room = 0; room <= 80; room += 1 + random() % 5) {
      for (std::size_t from = 0; from < 4; ++from) {
        std::u16string in = text.substr(from);
        if (random() % 2) in[random() % in.size()] = 0xDC00;
        const auto call = callKernel<char32_t>(set().decodeUtf16, in.data(),
                                               in.data() + in.size(), room);
        const std::u32string expected =
            zelvo_reference::decodeUtf16(in.substr(0, call.consumed));
        ASSERT_TRUE(call.guardIntact) << set().name << " room " << room;
        ASSERT_TRUE(std::u32string(call.written.begin(), call.written.end()) ==
                    expected)
            << set().name << " room " << room << " took " << call.consumed;
        ASSERT_TRUE(
            expected + zelvo_reference::decodeUtf16(in.substr(call.consumed)) ==
            zelvo_reference::decodeUtf16(in));
      }
    }
  }
}

TEST(ActiveKernelSet, IsTheWidestSetThisBuildAndProcessorOffer) {
  namespace k = zelvo::unicode::kernels;
  const ConversionKernels* expected =
      k::avx2Kernels() != nullptr   ? k::avx2Kernels()
      : k::sse2Kernels() != nullptr ? k::sse2Kernels()
                                    : &k::portableKernels();
  EXPECT_EQ(&k::activeKernels(), expected) << k::activeKernels().name;
}

std::string setName(
    const ::testing::TestParamInfo<const ConversionKernels*>& info) {
  return info.param->name;
}

INSTANTIATE_TEST_SUITE_P(
    EverySet, KernelSet,
    ::testing::ValuesIn(zelvo_kernels::availableKernelSets()), setName);

}  // namespace
