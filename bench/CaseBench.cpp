// Speed of the case operations over the corpus and over samples of scripts
// that it lacks, side by side with ICU and with memcpy of the same text, in
// MB/s of the UTF-8 size of each text. bench/case_ratios.py turns the JSON
// output into tables of ours / ICU.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "Corpus.h"
#include "ScriptSamples.h"
#include "string/String.h"
#include "transform/UnicodeOperations.h"

#if defined(ZELVO_HAVE_ICU)
#include <unicode/stringoptions.h>
#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#endif

namespace {

using zelvo::unicode::String;

// One text, decoded once before any timing.
struct Text {
  std::string name;  // "english", from "english.utf8.txt"
  std::string utf8;
  std::u32string utf32;
  String string;
};

// The texts are valid UTF-8; this decoder keeps the benchmark free of the
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

using FullMapping = String (*)(String const&, std::string const&);
using SimpleOfText = String (*)(String const&);
using SimpleOfCodePoint = char32_t (*)(char32_t const&);

void zelvoFull(benchmark::State& state, Text const* text, FullMapping mapping,
               std::string language) {
  for (auto _ : state) {
    String out = mapping(text->string, language);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

// toTitleFull of every code point of the text, one call each.
void zelvoTitleFull(benchmark::State& state, Text const* text,
                    std::string language) {
  for (auto _ : state) {
    std::size_t sum = 0;
    for (char32_t c : text->utf32) {
      String out = zelvo::unicode::toTitleFull(c, language);
      sum += out.size() + out[0];
    }
    benchmark::DoNotOptimize(sum);
  }
  setUtf8Bytes(state, *text);
}

void zelvoSimpleOfText(benchmark::State& state, Text const* text,
                       SimpleOfText mapping) {
  for (auto _ : state) {
    String out = mapping(text->string);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

void zelvoSimpleOfCodePoint(benchmark::State& state, Text const* text,
                            SimpleOfCodePoint mapping) {
  for (auto _ : state) {
    char32_t sum = 0;
    for (char32_t c : text->utf32) sum += mapping(c);
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
// ICU held to the library's contract: code points in, a new string of code
// points out, so the conversion to UTF-16 and back is part of each call.

using IcuCaseMapping = int32_t (*)(UChar*, int32_t, UChar const*, int32_t,
                                   char const*, UErrorCode*);
using IcuSimple = UChar32 (*)(UChar32);

void icuFull(benchmark::State& state, Text const* text, IcuCaseMapping mapping,
             std::string language) {
  auto const length = static_cast<int32_t>(text->utf32.size());
  for (auto _ : state) {
    UErrorCode error = U_ZERO_ERROR;
    std::u16string in(text->utf32.size() * 2, u'\0');
    int32_t inLength = 0;
    u_strFromUTF32(&in[0], static_cast<int32_t>(in.size()), &inLength,
                   reinterpret_cast<UChar32 const*>(text->utf32.data()), length,
                   &error);
    // Full mappings grow text by three at most.
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

// ICU's full title mapping of one code point: a case map opened once for the
// language, that takes the whole string as one word and lowercases nothing.
void icuTitleFull(benchmark::State& state, Text const* text,
                  std::string language) {
  UErrorCode error = U_ZERO_ERROR;
  UCaseMap* map =
      ucasemap_open(language.c_str(),
                    U_TITLECASE_WHOLE_STRING | U_TITLECASE_NO_LOWERCASE |
                        U_TITLECASE_NO_BREAK_ADJUSTMENT,
                    &error);
  for (auto _ : state) {
    std::size_t sum = 0;
    for (char32_t c : text->utf32) {
      UChar in[2];
      int32_t inLength = 0;
      U16_APPEND_UNSAFE(in, inLength, c);
      UChar mapped[8];
      int32_t const mappedLength =
          ucasemap_toTitle(map, mapped, 8, in, inLength, &error);
      std::u32string out;
      for (int32_t i = 0; i < mappedLength;) {
        UChar32 m;
        U16_NEXT_UNSAFE(mapped, i, m);
        out.push_back(static_cast<char32_t>(m));
      }
      sum += out.size() + out[0];
    }
    benchmark::DoNotOptimize(sum);
  }
  ucasemap_close(map);
  if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
  setUtf8Bytes(state, *text);
}

void icuSimpleOfText(benchmark::State& state, Text const* text,
                     IcuSimple mapping) {
  for (auto _ : state) {
    std::u32string out(text->utf32.size(), U'\0');
    for (std::size_t i = 0; i < out.size(); ++i)
      out[i] =
          static_cast<char32_t>(mapping(static_cast<UChar32>(text->utf32[i])));
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

void icuSimpleOfCodePoint(benchmark::State& state, Text const* text,
                          IcuSimple mapping) {
  for (auto _ : state) {
    UChar32 sum = 0;
    for (char32_t c : text->utf32) sum += mapping(static_cast<UChar32>(c));
    benchmark::DoNotOptimize(sum);
  }
  setUtf8Bytes(state, *text);
}

UChar32 icuFold(UChar32 c) { return u_foldCase(c, U_FOLD_CASE_DEFAULT); }
#define ICU_SIMPLE(function) function
#else
using IcuSimple = std::nullptr_t;
#define ICU_SIMPLE(function) nullptr
#endif

// The simple mappings and folding: ours of a code point, ours of a String
// where there is one, and ICU's of a code point, which the ICU rows of a
// text call for each code point.
struct SimpleFunction {
  char const* name;
  SimpleOfCodePoint ofCodePoint;
  SimpleOfText ofText;
  IcuSimple icu;
};

SimpleFunction const kSimpleFunctions[] = {
    {"upper_simple", zelvo::unicode::toUpperSimple,
     zelvo::unicode::toUpperSimple, ICU_SIMPLE(u_toupper)},
    {"lower_simple", zelvo::unicode::toLowerSimple,
     zelvo::unicode::toLowerSimple, ICU_SIMPLE(u_tolower)},
    {"title_simple", zelvo::unicode::toTitleSimple, nullptr,
     ICU_SIMPLE(u_totitle)},
    {"fold", zelvo::unicode::simpleCaseFold, nullptr, ICU_SIMPLE(icuFold)},
};

// Rows are named function/text/side, the language in the function's name.
void registerAll() {
  for (Text const& text : texts()) {
    Text const* t = &text;
    std::string const file = "/" + text.name + "/";
    for (std::string language : {"", "tr", "az", "lt"}) {
      std::string const suffix = language.empty() ? "" : "_" + language;
      benchmark::RegisterBenchmark(
          ("upper" + suffix + file + "zelvo").c_str(), zelvoFull, t,
          FullMapping{zelvo::unicode::toUpperFull}, language);
      benchmark::RegisterBenchmark(
          ("lower" + suffix + file + "zelvo").c_str(), zelvoFull, t,
          FullMapping{zelvo::unicode::toLowerFull}, language);
      benchmark::RegisterBenchmark(
          ("title_full" + suffix + file + "zelvo").c_str(), zelvoTitleFull, t,
          language);
#if defined(ZELVO_HAVE_ICU)
      benchmark::RegisterBenchmark(("upper" + suffix + file + "icu").c_str(),
                                   icuFull, t, IcuCaseMapping{u_strToUpper},
                                   language);
      benchmark::RegisterBenchmark(("lower" + suffix + file + "icu").c_str(),
                                   icuFull, t, IcuCaseMapping{u_strToLower},
                                   language);
      benchmark::RegisterBenchmark(
          ("title_full" + suffix + file + "icu").c_str(), icuTitleFull, t,
          language);
#endif
    }
    for (SimpleFunction const& f : kSimpleFunctions) {
      std::string const name = f.name + file;
      if (f.ofText != nullptr) {
        benchmark::RegisterBenchmark(
            (f.name + std::string("_text") + file + "zelvo").c_str(),
            zelvoSimpleOfText, t, f.ofText);
      }
      benchmark::RegisterBenchmark((name + "zelvo").c_str(),
                                   zelvoSimpleOfCodePoint, t, f.ofCodePoint);
#if defined(ZELVO_HAVE_ICU)
      if (f.ofText != nullptr) {
        benchmark::RegisterBenchmark(
            (f.name + std::string("_text") + file + "icu").c_str(),
            icuSimpleOfText, t, f.icu);
      }
      benchmark::RegisterBenchmark((name + "icu").c_str(), icuSimpleOfCodePoint,
                                   t, f.icu);
#endif
    }
    benchmark::RegisterBenchmark(("memcpy" + file + "memcpy").c_str(),
                                 copyBytes, t);
  }
}

void addText(std::string name, std::string utf8) {
  Text text;
  text.name = std::move(name);
  text.utf8 = std::move(utf8);
  text.utf32 = decodeUtf8(text.utf8);
  text.string = String(text.utf32);
  texts().push_back(std::move(text));
}

}  // namespace

int main(int argc, char** argv) {
  for (zelvo_bench::CorpusFile& file : zelvo_bench::corpusFiles(".utf8.txt"))
    addText(file.name.substr(0, file.name.find('.')), std::move(file.bytes));
  for (auto& sample : zelvo_bench::scriptSamples())
    addText(sample.first, std::move(sample.second));
  registerAll();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
