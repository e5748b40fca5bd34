// Code page throughput over the corpus: the Latin-1 files through
// "Windows-1252" and the Thai text through "Windows-874", both ways, beside
// ICU's converters and memcpy. Rates count bytes of single-byte text.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "Corpus.h"
#include "codepage/CodePageTranslator.h"

#ifdef ZELVO_HAVE_ICU
#include <unicode/ucnv.h>
#endif

namespace {

using zelvo::unicode::CodePageTranslator;
using zelvo::unicode::String;

// One piece of work: the page, the single-byte text, and the same text as
// code points (ours) and as UTF-16 (ICU's).
struct Case {
  std::string page;
  std::string bytes;
  String text;
  std::u16string utf16;
};

void reportRate(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(bytes));
  state.counters["MB/s"] =
      benchmark::Counter(static_cast<double>(bytes) / 1e6,
                         benchmark::Counter::kIsIterationInvariantRate);
}

void zelvoDecode(benchmark::State& state, const Case* work) {
  for (auto _ : state) {
    String decoded = CodePageTranslator::translate(work->bytes, work->page);
    benchmark::DoNotOptimize(decoded);
  }
  reportRate(state, work->bytes.size());
}

void zelvoEncode(benchmark::State& state, const Case* work) {
  for (auto _ : state) {
    bool lossy = false;
    std::string encoded =
        CodePageTranslator::translate(work->text, work->page, lossy);
    benchmark::DoNotOptimize(encoded);
    benchmark::DoNotOptimize(lossy);
  }
  reportRate(state, work->bytes.size());
}

void copyBytes(benchmark::State& state, const Case* work) {
  std::string copy(work->bytes.size(), '\0');
  for (auto _ : state) {
    std::memcpy(&copy[0], work->bytes.data(), work->bytes.size());
    benchmark::DoNotOptimize(copy);
    benchmark::ClobberMemory();
  }
  reportRate(state, work->bytes.size());
}

#ifdef ZELVO_HAVE_ICU

// ICU held to our contract: '?' for a code point without a byte, and each
// call returns a string of its own.
struct IcuConverterClose {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using IcuConverter = std::unique_ptr<UConverter, IcuConverterClose>;

IcuConverter openIcu(const std::string& page) {
  UErrorCode status = U_ZERO_ERROR;
  IcuConverter converter(ucnv_open(page.c_str(), &status));
  if (U_FAILURE(status)) return nullptr;
  ucnv_setSubstChars(converter.get(), "?", 1, &status);
  return converter;
}

void icuDecode(benchmark::State& state, const Case* work) {
  IcuConverter converter = openIcu(work->page);
  if (!converter) return state.SkipWithError("ICU lacks the converter");
  for (auto _ : state) {
    std::u16string decoded(work->bytes.size(), u'\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = ucnv_toUChars(
        converter.get(), &decoded[0], static_cast<int32_t>(decoded.size()),
        work->bytes.data(), static_cast<int32_t>(work->bytes.size()), &status);
    decoded.resize(static_cast<std::size_t>(length));
    benchmark::DoNotOptimize(decoded);
  }
  reportRate(state, work->bytes.size());
}

void icuEncode(benchmark::State& state, const Case* work) {
  IcuConverter converter = openIcu(work->page);
  if (!converter) return state.SkipWithError("ICU lacks the converter");
  for (auto _ : state) {
    std::string encoded(work->utf16.size(), '\0');
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = ucnv_fromUChars(
        converter.get(), &encoded[0], static_cast<int32_t>(encoded.size()),
        work->utf16.data(), static_cast<int32_t>(work->utf16.size()), &status);
    encoded.resize(static_cast<std::size_t>(length));
    benchmark::DoNotOptimize(encoded);
  }
  reportRate(state, work->bytes.size());
}

#endif

std::vector<std::unique_ptr<Case>> gCases;

void registerCase(const std::string& label, std::unique_ptr<Case> work) {
  const Case* c = work.get();
  gCases.push_back(std::move(work));
  const std::string decode = "Decode/" + c->page + "/" + label + "/";
  const std::string encode = "Encode/" + c->page + "/" + label + "/";
  benchmark::RegisterBenchmark((decode + "zelvo").c_str(), zelvoDecode, c);
#ifdef ZELVO_HAVE_ICU
  benchmark::RegisterBenchmark((decode + "icu").c_str(), icuDecode, c);
#endif
  benchmark::RegisterBenchmark((decode + "memcpy").c_str(), copyBytes, c);
  benchmark::RegisterBenchmark((encode + "zelvo").c_str(), zelvoEncode, c);
#ifdef ZELVO_HAVE_ICU
  benchmark::RegisterBenchmark((encode + "icu").c_str(), icuEncode, c);
#endif
  benchmark::RegisterBenchmark((encode + "memcpy").c_str(), copyBytes, c);
}

void registerAll() {
  for (auto& file : zelvo_bench::corpusFiles(".latin1.txt")) {
    auto work = std::make_unique<Case>();
    work->page = "Windows-1252";
    work->bytes = std::move(file.bytes);
    work->text = CodePageTranslator::translate(work->bytes, work->page);
    work->utf16 = work->text.toUTF16String();
    registerCase(file.name, std::move(work));
  }
  // The Thai text is encoded first; what it decodes from is that encoding,
  // with '?' wherever the page has no byte.
  for (auto& file : zelvo_bench::corpusFiles(".utf8.txt")) {
    if (file.name != "thai.utf8.txt") continue;
    auto work = std::make_unique<Case>();
    work->page = "Windows-874";
    work->text = String(file.bytes);
    work->bytes = CodePageTranslator::translate(work->text, work->page);
    work->utf16 = work->text.toUTF16String();
    registerCase(file.name, std::move(work));
  }
  if (gCases.empty())
    std::fprintf(stderr, "no corpus files in %s\n",
                 zelvo_bench::corpusDir().c_str());
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  registerAll();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
