// Speed of the UTF-8 and UTF-16 conversions of String over the corpus, the
// texts of bench/texts/ and built texts of scripts the corpus lacks, side by
// side with ICU and
// with memcpy of the same text, in MB/s of UTF-8; the kernel set that ran is
// in the context, and a table of ratios closes the report.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "BuiltTexts.h"
#include "Corpus.h"
#include "RatioReporter.h"
#include "string/ConversionKernels.h"
#include "string/String.h"

#if defined(ZELVO_HAVE_ICU)
#include <unicode/ustring.h>
#include <unicode/utf8.h>
#endif

namespace {

using zelvo::unicode::String;

// Every form of one corpus file that a row starts from.
struct Text {
  std::string name;  // "english", from "english.utf8.txt"
  std::string utf8;
  std::u16string utf16;
  std::u32string utf32;
};

std::vector<Text>& texts() {
  static std::vector<Text> all;
  return all;
}

// Every row reports the UTF-8 size of its text per iteration, whatever form
// it reads or writes, so that all rows of a file compare directly.
void setUtf8Bytes(benchmark::State& state, const Text& text) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(text.utf8.size()));
}

// ---------------------------------------------------------------------------
// The library. Each call makes its whole result, allocation included.

void zelvoFromUtf8(benchmark::State& state, const Text* text) {
  String s;
  for (auto _ : state) {
    s.fromUTF8String(text->utf8);
    benchmark::DoNotOptimize(s.data());
  }
  setUtf8Bytes(state, *text);
}

void zelvoToUtf8(benchmark::State& state, const Text* text) {
  const String s(text->utf32);
  for (auto _ : state) {
    std::string out = s.toUTF8String();
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

void zelvoFromUtf16(benchmark::State& state, const Text* text) {
  String s;
  for (auto _ : state) {
    s.fromUTF16String(text->utf16);
    benchmark::DoNotOptimize(s.data());
  }
  setUtf8Bytes(state, *text);
}

void zelvoToUtf16(benchmark::State& state, const Text* text) {
  const String s(text->utf32);
  for (auto _ : state) {
    std::u16string out = s.toUTF16String();
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

// ---------------------------------------------------------------------------
// memcpy of the text's UTF-8 bytes, and of its UTF-32 form (4 bytes a code
// point), into a buffer made once.

void memcpyUtf8(benchmark::State& state, const Text* text) {
  std::vector<char> target(text->utf8.size());
  for (auto _ : state) {
    std::memcpy(target.data(), text->utf8.data(), text->utf8.size());
    benchmark::ClobberMemory();
  }
  setUtf8Bytes(state, *text);
}

void memcpyUtf32(benchmark::State& state, const Text* text) {
  std::vector<char32_t> target(text->utf32.size());
  for (auto _ : state) {
    std::memcpy(target.data(), text->utf32.data(),
                text->utf32.size() * sizeof(char32_t));
    benchmark::ClobberMemory();
  }
  setUtf8Bytes(state, *text);
}

#if defined(ZELVO_HAVE_ICU)
// ---------------------------------------------------------------------------
// ICU. Most of its rows write into a buffer made once, large enough for any
// result, so that they time the conversion alone, while the library's rows
// also pay for allocating their results; the rows named "to_new_..." make a
// new string each time, as the library does.

// UTF-8 to UTF-32 one code point at a time with U8_NEXT.
void icuU8NextLoop(benchmark::State& state, const Text* text) {
  const auto* src = reinterpret_cast<const uint8_t*>(text->utf8.data());
  const auto length = static_cast<int32_t>(text->utf8.size());
  std::vector<UChar32> target(text->utf8.size());
  for (auto _ : state) {
    int32_t i = 0;
    size_t j = 0;
    while (i < length) {
      UChar32 c;
      U8_NEXT(src, i, length, c);
      target[j++] = c;
    }
    benchmark::DoNotOptimize(target.data());
    benchmark::DoNotOptimize(j);
  }
  setUtf8Bytes(state, *text);
}

// UTF-32 to UTF-8 one code point at a time with U8_APPEND_UNSAFE.
void icuU8AppendUnsafeLoop(benchmark::State& state, const Text* text) {
  std::vector<uint8_t> target(text->utf32.size() * 4);
  for (auto _ : state) {
    int32_t i = 0;
    for (char32_t c : text->utf32) {
      U8_APPEND_UNSAFE(target.data(), i, c);
    }
    benchmark::DoNotOptimize(target.data());
    benchmark::DoNotOptimize(i);
  }
  setUtf8Bytes(state, *text);
}

// The same two loops with the library's contract: a new string of exactly
// the result's size each time, made from a scratch buffer allocated for the
// largest result.
void icuU8NextLoopNewString(benchmark::State& state, const Text* text) {
  const auto* src = reinterpret_cast<const uint8_t*>(text->utf8.data());
  const auto length = static_cast<int32_t>(text->utf8.size());
  for (auto _ : state) {
    std::unique_ptr<char32_t[]> scratch(new char32_t[text->utf8.size()]);
    int32_t i = 0;
    size_t j = 0;
    while (i < length) {
      UChar32 c;
      U8_NEXT(src, i, length, c);
      scratch[j++] = static_cast<char32_t>(c);
    }
    std::u32string out(scratch.get(), j);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

void icuU8AppendUnsafeLoopNewString(benchmark::State& state, const Text* text) {
  for (auto _ : state) {
    std::unique_ptr<uint8_t[]> scratch(new uint8_t[text->utf32.size() * 4]);
    int32_t i = 0;
    for (char32_t c : text->utf32) {
      U8_APPEND_UNSAFE(scratch.get(), i, c);
    }
    std::string out(reinterpret_cast<const char*>(scratch.get()),
                    static_cast<size_t>(i));
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

// UTF-8 to UTF-16.
void icuFromUtf8(benchmark::State& state, const Text* text) {
  std::vector<UChar> target(text->utf8.size() + 1);
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF8(target.data(), static_cast<int32_t>(target.size()), &length,
                  text->utf8.data(), static_cast<int32_t>(text->utf8.size()),
                  &status);
    benchmark::DoNotOptimize(length);
  }
  setUtf8Bytes(state, *text);
}

// UTF-16 to UTF-8.
void icuToUtf8(benchmark::State& state, const Text* text) {
  std::vector<char> target(text->utf8.size() + 1);
  const auto* src = reinterpret_cast<const UChar*>(text->utf16.data());
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strToUTF8(target.data(), static_cast<int32_t>(target.size()), &length,
                src, static_cast<int32_t>(text->utf16.size()), &status);
    benchmark::DoNotOptimize(length);
  }
  setUtf8Bytes(state, *text);
}

// UTF-16 to UTF-32: the work of decoding UTF-16 into a String.
void icuToUtf32(benchmark::State& state, const Text* text) {
  std::vector<UChar32> target(text->utf16.size() + 1);
  const auto* src = reinterpret_cast<const UChar*>(text->utf16.data());
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strToUTF32(target.data(), static_cast<int32_t>(target.size()), &length,
                 src, static_cast<int32_t>(text->utf16.size()), &status);
    benchmark::DoNotOptimize(length);
  }
  setUtf8Bytes(state, *text);
}

// UTF-32 to UTF-16: the work of encoding a String as UTF-16.
void icuFromUtf32(benchmark::State& state, const Text* text) {
  std::vector<UChar> target(text->utf16.size() + 1);
  const auto* src = reinterpret_cast<const UChar32*>(text->utf32.data());
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strFromUTF32(target.data(), static_cast<int32_t>(target.size()), &length,
                   src, static_cast<int32_t>(text->utf32.size()), &status);
    benchmark::DoNotOptimize(length);
  }
  setUtf8Bytes(state, *text);
}
#endif

void registerRows(const Text* text) {
  const std::string& n = text->name;
  auto add = [&](const std::string& row,
                 void (*fn)(benchmark::State&, const Text*)) {
    benchmark::RegisterBenchmark((n + "/" + row).c_str(), fn, text);
  };
  add("utf8_decode/zelvo_fromUTF8String", zelvoFromUtf8);
#if defined(ZELVO_HAVE_ICU)
  add("utf8_decode/icu_U8_NEXT_loop_to_utf32", icuU8NextLoop);
  add("utf8_decode/icu_U8_NEXT_loop_to_new_u32string", icuU8NextLoopNewString);
  add("utf8_decode/icu_u_strFromUTF8_to_utf16", icuFromUtf8);
#endif
  add("utf8_encode/zelvo_toUTF8String", zelvoToUtf8);
#if defined(ZELVO_HAVE_ICU)
  add("utf8_encode/icu_U8_APPEND_UNSAFE_loop_from_utf32",
      icuU8AppendUnsafeLoop);
  add("utf8_encode/icu_U8_APPEND_UNSAFE_loop_to_new_string",
      icuU8AppendUnsafeLoopNewString);
  add("utf8_encode/icu_u_strToUTF8_from_utf16", icuToUtf8);
#endif
  add("utf16_decode/zelvo_fromUTF16String", zelvoFromUtf16);
#if defined(ZELVO_HAVE_ICU)
  add("utf16_decode/icu_u_strToUTF32", icuToUtf32);
#endif
  add("utf16_encode/zelvo_toUTF16String", zelvoToUtf16);
#if defined(ZELVO_HAVE_ICU)
  add("utf16_encode/icu_u_strFromUTF32", icuFromUtf32);
#endif
  add("memcpy/utf8_bytes", memcpyUtf8);
  add("memcpy/utf32_form", memcpyUtf32);
}

void addText(std::string name, std::string utf8) {
  Text text;
  text.name = std::move(name);
  text.utf8 = std::move(utf8);
  const String decoded(text.utf8);
  text.utf16 = decoded.toUTF16String();
  text.utf32 = decoded.toUTF32String();
  texts().push_back(std::move(text));
}

}  // namespace

int main(int argc, char** argv) {
  const std::string suffix = ".utf8.txt";
  for (auto& file : zelvo_bench::corpusAndExtraTexts(suffix))
    addText(file.name.substr(0, file.name.size() - suffix.size()),
            std::move(file.bytes));
  if (texts().empty()) {
    fprintf(stderr, "no *.utf8.txt files in %s\n",
            zelvo_bench::corpusDir().c_str());
    return 1;
  }
  for (auto& built : zelvo_bench::builtTexts())
    addText(std::move(built.first), std::move(built.second));
  for (const Text& text : texts()) registerRows(&text);
  benchmark::AddCustomContext("conversion_kernels",
                              zelvo::unicode::kernels::activeKernels().name);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  zelvo_bench::RatioReporter reporter({
      {"fromUTF8/U8_NEXT", "utf8_decode/zelvo_fromUTF8String",
       "utf8_decode/icu_U8_NEXT_loop_to_utf32"},
      {"toUTF8/U8_APPEND", "utf8_encode/zelvo_toUTF8String",
       "utf8_encode/icu_U8_APPEND_UNSAFE_loop_from_utf32"},
      {"fromUTF16/u_strToUTF32", "utf16_decode/zelvo_fromUTF16String",
       "utf16_decode/icu_u_strToUTF32"},
      {"toUTF16/u_strFromUTF32", "utf16_encode/zelvo_toUTF16String",
       "utf16_encode/icu_u_strFromUTF32"},
      {"fromUTF8/memcpy32", "utf8_decode/zelvo_fromUTF8String",
       "memcpy/utf32_form"},
  });
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
