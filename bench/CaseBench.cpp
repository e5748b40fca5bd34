// Speed of the case operations over the corpus, side by side with ICU and
// with memcpy of the same text, in MB/s of the UTF-8 size of each file.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "Corpus.h"
#include "string/String.h"
#include "transform/UnicodeOperations.h"

#if defined(ZELVO_HAVE_ICU)
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#endif

namespace {

using zelvo::unicode::String;

// One corpus file, decoded once before any timing.
struct Text {
  std::string name;  // "english", from "english.utf8.txt"
  std::string utf8;
  std::u32string utf32;
  String string;
  std::u16string utf16;
};

// The corpus is valid UTF-8; this decoder keeps the benchmark free of the
// library's own conversions.
std::u32string decodeUtf8(std::string const& bytes) {
  std::u32string out;
  for (std::size_t i = 0; i < bytes.size();) {
    unsigned char const lead = static_cast<unsigned char>(bytes[i]);
    int const length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t c = length == 1   ? lead
                 : length == 2 ? lead & 0x1F
                 : length == 3 ? lead & 0x0F
                               : lead & 0x07;
    for (int k = 1; k < length && i + k < bytes.size(); ++k)
      c = (c << 6) | (static_cast<unsigned char>(bytes[i + k]) & 0x3F);
    out.push_back(c);
    i += length;
  }
  return out;
}

std::u16string encodeUtf16(std::u32string const& s) {
  std::u16string out;
  for (char32_t c : s) {
    if (c < 0x10000) {
      out.push_back(static_cast<char16_t>(c));
    } else {
      out.push_back(static_cast<char16_t>(0xD7C0 + (c >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 | (c & 0x3FF)));
    }
  }
  return out;
}

std::vector<Text>& texts() {
  static std::vector<Text> all;
  return all;
}

void setUtf8Bytes(benchmark::State& state, Text const& text) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(text.utf8.size()));
}

// ---------------------------------------------------------------------------
// The library. Each call makes its whole result, allocation included.

void zelvoUpperFull(benchmark::State& state, Text const* text,
                    std::string language) {
  for (auto _ : state) {
    String out = zelvo::unicode::toUpperFull(text->string, language);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

void zelvoLowerFull(benchmark::State& state, Text const* text,
                    std::string language) {
  for (auto _ : state) {
    String out = zelvo::unicode::toLowerFull(text->string, language);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

void zelvoUpperSimple(benchmark::State& state, Text const* text) {
  for (auto _ : state) {
    String out = zelvo::unicode::toUpperSimple(text->string);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

void zelvoSimpleCaseFold(benchmark::State& state, Text const* text) {
  for (auto _ : state) {
    char32_t sum = 0;
    for (char32_t c : text->utf32) sum += zelvo::unicode::simpleCaseFold(c);
    benchmark::DoNotOptimize(sum);
  }
  setUtf8Bytes(state, *text);
}

void copyBytes(benchmark::State& state, Text const* text) {
  std::string out(text->utf8.size(), '\0');
  for (auto _ : state) {
    std::memcpy(&out[0], text->utf8.data(), text->utf8.size());
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  setUtf8Bytes(state, *text);
}

#if defined(ZELVO_HAVE_ICU)
// ---------------------------------------------------------------------------
// ICU on its own UTF-16, converted before timing, into a buffer that is
// made anew for each call.

using IcuCaseMapping = int32_t (*)(UChar*, int32_t, UChar const*, int32_t,
                                   char const*, UErrorCode*);

void icuMapping(benchmark::State& state, Text const* text,
                IcuCaseMapping mapping, std::string language) {
  auto const length = static_cast<int32_t>(text->utf16.size());
  for (auto _ : state) {
    // Full mappings grow text by three at most.
    std::u16string out(text->utf16.size() * 3, u'\0');
    UErrorCode error = U_ZERO_ERROR;
    int32_t const written =
        mapping(&out[0], static_cast<int32_t>(out.size()), text->utf16.data(),
                length, language.c_str(), &error);
    benchmark::DoNotOptimize(written);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

// ICU held to the library's contract: code points in, a new string of code
// points out, so the conversion to UTF-16 and back is part of the call.
void icuMappingOfCodePoints(benchmark::State& state, Text const* text,
                            IcuCaseMapping mapping, std::string language) {
  auto const length = static_cast<int32_t>(text->utf32.size());
  for (auto _ : state) {
    UErrorCode error = U_ZERO_ERROR;
    std::u16string in(text->utf32.size() * 2, u'\0');
    int32_t inLength = 0;
    u_strFromUTF32(&in[0], static_cast<int32_t>(in.size()), &inLength,
                   reinterpret_cast<UChar32 const*>(text->utf32.data()), length,
                   &error);
    std::u16string mapped(static_cast<std::size_t>(inLength) * 3, u'\0');
    int32_t const mappedLength =
        mapping(&mapped[0], static_cast<int32_t>(mapped.size()), in.data(),
                inLength, language.c_str(), &error);
    std::u32string out(static_cast<std::size_t>(mappedLength), U'\0');
    int32_t outLength = 0;
    u_strToUTF32(reinterpret_cast<UChar32*>(&out[0]),
                 static_cast<int32_t>(out.size()), &outLength, mapped.data(),
                 mappedLength, &error);
    benchmark::DoNotOptimize(outLength);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

void icuFoldCase(benchmark::State& state, Text const* text) {
  for (auto _ : state) {
    UChar32 sum = 0;
    for (char32_t c : text->utf32)
      sum += u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT);
    benchmark::DoNotOptimize(sum);
  }
  setUtf8Bytes(state, *text);
}
#endif

void registerAll() {
  for (Text const& text : texts()) {
    Text const* t = &text;
    std::string const file = "/" + text.name + "/";
    for (std::string language : {"", "tr"}) {
      std::string const suffix = language.empty() ? "" : "_" + language;
      benchmark::RegisterBenchmark(("upper" + suffix + file + "zelvo").c_str(),
                                   zelvoUpperFull, t, language);
#if defined(ZELVO_HAVE_ICU)
      benchmark::RegisterBenchmark(
          ("upper" + suffix + file + "icu_same_contract").c_str(),
          icuMappingOfCodePoints, t, IcuCaseMapping{u_strToUpper}, language);
      benchmark::RegisterBenchmark(("upper" + suffix + file + "icu").c_str(),
                                   icuMapping, t, IcuCaseMapping{u_strToUpper},
                                   language);
#endif
      benchmark::RegisterBenchmark(("lower" + suffix + file + "zelvo").c_str(),
                                   zelvoLowerFull, t, language);
#if defined(ZELVO_HAVE_ICU)
      benchmark::RegisterBenchmark(
          ("lower" + suffix + file + "icu_same_contract").c_str(),
          icuMappingOfCodePoints, t, IcuCaseMapping{u_strToLower}, language);
      benchmark::RegisterBenchmark(("lower" + suffix + file + "icu").c_str(),
                                   icuMapping, t, IcuCaseMapping{u_strToLower},
                                   language);
#endif
    }
    benchmark::RegisterBenchmark(("upper_simple" + file + "zelvo").c_str(),
                                 zelvoUpperSimple, t);
    benchmark::RegisterBenchmark(("fold" + file + "zelvo").c_str(),
                                 zelvoSimpleCaseFold, t);
#if defined(ZELVO_HAVE_ICU)
    benchmark::RegisterBenchmark(("fold" + file + "icu").c_str(), icuFoldCase,
                                 t);
#endif
    benchmark::RegisterBenchmark(("memcpy" + file).c_str(), copyBytes, t);
  }
}

}  // namespace

int main(int argc, char** argv) {
  for (zelvo_bench::CorpusFile& file : zelvo_bench::corpusFiles(".utf8.txt")) {
    Text text;
    text.name = file.name.substr(0, file.name.find('.'));
    text.utf8 = std::move(file.bytes);
    text.utf32 = decodeUtf8(text.utf8);
    text.string = String(text.utf32);
    text.utf16 = encodeUtf16(text.utf32);
    texts().push_back(std::move(text));
  }
  registerAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
