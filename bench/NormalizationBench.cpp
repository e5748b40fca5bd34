// Speed of the four normal forms and of isNFC and isNFKC over the corpus and
// over texts of scripts the corpus lacks, as they stand and decomposed, side
// by side with ICU, utf8proc and memcpy, in MB/s of UTF-8, with the ratio of
// ours to ICU's held to the same contract at the end; also the memory of the
// character tables.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "Corpus.h"
#include "string/String.h"
#include "transform/UnicodeOperations.h"

#if defined(ZELVO_HAVE_ICU)
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#endif

#if defined(ZELVO_HAVE_UTF8PROC)
#include <utf8proc.h>
#endif

namespace {

using zelvo::unicode::String;
using zelvo::unicode::UnicodeTransformationTables;

// One text that rows start from: a corpus file as it stands, or its NFD.
struct Text {
  std::string name;  // "english" or "english_nfd"
  std::string utf8;
  String string;
  std::u32string utf32;
#if defined(ZELVO_HAVE_ICU)
  icu::UnicodeString utf16;
#endif
};

std::vector<std::unique_ptr<Text>>& texts() {
  static std::vector<std::unique_ptr<Text>> all;
  return all;
}

// Every row reports the UTF-8 size of its text, whatever form it reads.
void setUtf8Bytes(benchmark::State& state, const Text& text) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(text.utf8.size()));
}

// The four forms, in the order of every table below.
enum Form { kNFC, kNFD, kNFKC, kNFKD };
const char* const kFormNames[] = {"NFC", "NFD", "NFKC", "NFKD"};

// ---------------------------------------------------------------------------
// The library: String in, new String out.

template <Form form>
void zelvoNormalize(benchmark::State& state, const Text* text) {
  for (auto _ : state) {
    String out = form == kNFC    ? zelvo::unicode::toNFC(text->string)
                 : form == kNFD  ? zelvo::unicode::toNFD(text->string)
                 : form == kNFKC ? zelvo::unicode::toNFKC(text->string)
                                 : zelvo::unicode::toNFKD(text->string);
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

template <Form form>
void zelvoIsNormalized(benchmark::State& state, const Text* text) {
  for (auto _ : state) {
    bool answer = form == kNFC ? zelvo::unicode::isNFC(text->string)
                               : zelvo::unicode::isNFKC(text->string);
    benchmark::DoNotOptimize(answer);
  }
  setUtf8Bytes(state, *text);
}

// ---------------------------------------------------------------------------
// memcpy of the UTF-8 bytes into a buffer made once.

void memcpyUtf8(benchmark::State& state, const Text* text) {
  std::vector<char> target(text->utf8.size());
  for (auto _ : state) {
    std::memcpy(target.data(), text->utf8.data(), text->utf8.size());
    benchmark::ClobberMemory();
  }
  setUtf8Bytes(state, *text);
}

#if defined(ZELVO_HAVE_ICU)
// ---------------------------------------------------------------------------
// ICU's Normalizer2: on UTF-16 made outside the loop, and held to the
// library's contract, UTF-32 in and a new UTF-32 string out.

const icu::Normalizer2* icuNormalizer(Form form) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* n =
      form == kNFC    ? icu::Normalizer2::getNFCInstance(status)
      : form == kNFD  ? icu::Normalizer2::getNFDInstance(status)
      : form == kNFKC ? icu::Normalizer2::getNFKCInstance(status)
                      : icu::Normalizer2::getNFKDInstance(status);
  if (U_FAILURE(status)) std::abort();
  return n;
}

template <Form form>
void icuNormalizeUtf16(benchmark::State& state, const Text* text) {
  const icu::Normalizer2* normalizer = icuNormalizer(form);
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString out = normalizer->normalize(text->utf16, status);
    benchmark::DoNotOptimize(out.getBuffer());
  }
  setUtf8Bytes(state, *text);
}

// UTF-32 to a UnicodeString, as the library's caller would hand it over.
icu::UnicodeString fromUtf32(const std::u32string& utf32) {
  icu::UnicodeString result;
  const int32_t capacity = static_cast<int32_t>(utf32.size() * 2 + 1);
  UChar* buffer = result.getBuffer(capacity);
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF32(buffer, capacity, &length,
                 reinterpret_cast<const UChar32*>(utf32.data()),
                 static_cast<int32_t>(utf32.size()), &status);
  result.releaseBuffer(U_SUCCESS(status) ? length : 0);
  return result;
}

template <Form form>
void icuNormalizeUtf32(benchmark::State& state, const Text* text) {
  const icu::Normalizer2* normalizer = icuNormalizer(form);
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString in = fromUtf32(text->utf32);
    const icu::UnicodeString normalized = normalizer->normalize(in, status);
    std::u32string out(static_cast<size_t>(normalized.length()), U'\0');
    int32_t length = 0;
    u_strToUTF32(reinterpret_cast<UChar32*>(&out[0]),
                 static_cast<int32_t>(out.size()) + 1, &length,
                 normalized.getBuffer(), normalized.length(), &status);
    out.resize(static_cast<size_t>(length));
    benchmark::DoNotOptimize(out.data());
  }
  setUtf8Bytes(state, *text);
}

template <Form form>
void icuIsNormalizedUtf16(benchmark::State& state, const Text* text) {
  const icu::Normalizer2* normalizer = icuNormalizer(form);
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    bool answer = normalizer->isNormalized(text->utf16, status);
    benchmark::DoNotOptimize(answer);
  }
  setUtf8Bytes(state, *text);
}

template <Form form>
void icuIsNormalizedUtf32(benchmark::State& state, const Text* text) {
  const icu::Normalizer2* normalizer = icuNormalizer(form);
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString in = fromUtf32(text->utf32);
    bool answer = normalizer->isNormalized(in, status);
    benchmark::DoNotOptimize(answer);
  }
  setUtf8Bytes(state, *text);
}
#endif

#if defined(ZELVO_HAVE_UTF8PROC)
// ---------------------------------------------------------------------------
// utf8proc: UTF-8 in, a new UTF-8 string out, the options of each form.

int utf8procOptions(Form form) {
  const int stable = UTF8PROC_STABLE;
  return form == kNFC    ? stable | UTF8PROC_COMPOSE
         : form == kNFD  ? stable | UTF8PROC_DECOMPOSE
         : form == kNFKC ? stable | UTF8PROC_COMPOSE | UTF8PROC_COMPAT
                         : stable | UTF8PROC_DECOMPOSE | UTF8PROC_COMPAT;
}

template <Form form>
void utf8procNormalize(benchmark::State& state, const Text* text) {
  const auto options = static_cast<utf8proc_option_t>(utf8procOptions(form));
  for (auto _ : state) {
    utf8proc_uint8_t* out = nullptr;
    utf8proc_ssize_t length = utf8proc_map(
        reinterpret_cast<const utf8proc_uint8_t*>(text->utf8.data()),
        static_cast<utf8proc_ssize_t>(text->utf8.size()), &out, options);
    benchmark::DoNotOptimize(length);
    std::free(out);
  }
  setUtf8Bytes(state, *text);
}

// utf8proc has no quick check: the nearest is NFC and a comparison.
void utf8procIsNFC(benchmark::State& state, const Text* text) {
  const auto options = static_cast<utf8proc_option_t>(utf8procOptions(kNFC));
  for (auto _ : state) {
    utf8proc_uint8_t* out = nullptr;
    utf8proc_ssize_t length = utf8proc_map(
        reinterpret_cast<const utf8proc_uint8_t*>(text->utf8.data()),
        static_cast<utf8proc_ssize_t>(text->utf8.size()), &out, options);
    bool answer = length == static_cast<utf8proc_ssize_t>(text->utf8.size()) &&
                  std::memcmp(out, text->utf8.data(), text->utf8.size()) == 0;
    benchmark::DoNotOptimize(answer);
    std::free(out);
  }
  setUtf8Bytes(state, *text);
}
#endif

// ---------------------------------------------------------------------------
// The tables: what a construction holds. ConstructorStepsBench times it.

// Measured, not estimated: the bytes in use by malloc, by mallinfo2, before
// and after one construction, with nothing else allocating in between.
void tablesMemory(benchmark::State& state) {
  size_t held = 0;
  for (auto _ : state) {
    const size_t before = mallinfo2().uordblks;
    auto tables = std::make_unique<UnicodeTransformationTables>();
    const size_t after = mallinfo2().uordblks;
    held = after - before;
    benchmark::DoNotOptimize(tables.get());
  }
  state.counters["table_bytes_mallinfo2"] = static_cast<double>(held);
  state.counters["table_KiB_mallinfo2"] = static_cast<double>(held) / 1024.0;
}

void registerRows(const Text* text) {
  auto add = [&](const std::string& row,
                 void (*fn)(benchmark::State&, const Text*)) {
    benchmark::RegisterBenchmark((text->name + "/" + row).c_str(), fn, text);
  };
  using Row = void (*)(benchmark::State&, const Text*);
  const Row zelvo[] = {zelvoNormalize<kNFC>, zelvoNormalize<kNFD>,
                       zelvoNormalize<kNFKC>, zelvoNormalize<kNFKD>};
#if defined(ZELVO_HAVE_ICU)
  const Row icu16[] = {icuNormalizeUtf16<kNFC>, icuNormalizeUtf16<kNFD>,
                       icuNormalizeUtf16<kNFKC>, icuNormalizeUtf16<kNFKD>};
  const Row icu32[] = {icuNormalizeUtf32<kNFC>, icuNormalizeUtf32<kNFD>,
                       icuNormalizeUtf32<kNFKC>, icuNormalizeUtf32<kNFKD>};
#endif
#if defined(ZELVO_HAVE_UTF8PROC)
  const Row proc[] = {utf8procNormalize<kNFC>, utf8procNormalize<kNFD>,
                      utf8procNormalize<kNFKC>, utf8procNormalize<kNFKD>};
#endif
  for (int form = kNFC; form <= kNFKD; ++form) {
    const std::string to = std::string("to") + kFormNames[form] + "/";
    add(to + "zelvo", zelvo[form]);
#if defined(ZELVO_HAVE_ICU)
    add(to + "icu_utf32_contract", icu32[form]);
    add(to + "icu_utf16", icu16[form]);
#endif
#if defined(ZELVO_HAVE_UTF8PROC)
    add(to + "utf8proc_map", proc[form]);
#endif
  }
  add("isNFC/zelvo", zelvoIsNormalized<kNFC>);
#if defined(ZELVO_HAVE_ICU)
  add("isNFC/icu_utf32_contract", icuIsNormalizedUtf32<kNFC>);
  add("isNFC/icu_utf16", icuIsNormalizedUtf16<kNFC>);
#endif
#if defined(ZELVO_HAVE_UTF8PROC)
  add("isNFC/utf8proc_map_and_compare", utf8procIsNFC);
#endif
  add("isNFKC/zelvo", zelvoIsNormalized<kNFKC>);
#if defined(ZELVO_HAVE_ICU)
  add("isNFKC/icu_utf32_contract", icuIsNormalizedUtf32<kNFKC>);
  add("isNFKC/icu_utf16", icuIsNormalizedUtf16<kNFKC>);
#endif
  add("memcpy/utf8_bytes", memcpyUtf8);
}

// The console output, and after it one line for every text and operation:
// our MB/s, ICU's held to the UTF-32 contract, and the ratio, the lowest
// ratio named last. Rates are of CPU time, as in the rows above; with
// --benchmark_repetitions, the median of the repetitions.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      const auto rate = run.counters.find("bytes_per_second");
      if (run.error_occurred || rate == run.counters.end()) continue;
      const bool median =
          run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (run.run_type == Run::RT_Aggregate && !median) continue;
      const std::string name = run.run_name.str();
      const size_t last = name.rfind('/');
      if (last == std::string::npos) continue;
      const std::string who = name.substr(last + 1);
      const std::string what = name.substr(0, last);
      // A median, once there, stands for all the repetitions.
      if (!median && medians_.count(name) != 0) continue;
      if (median) medians_.insert(name);
      if (who == "zelvo") rates_[what].first = rate->second.value;
      if (who == "icu_utf32_contract") rates_[what].second = rate->second.value;
    }
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::printf("\n%-34s %12s %12s %8s\n", "text/operation", "ours MB/s",
                "ICU MB/s", "ratio");
    std::string lowestName;
    double lowest = 0;
    for (const auto& entry : rates_) {
      const double ours = entry.second.first / 1e6;
      const double icu = entry.second.second / 1e6;
      if (ours == 0 || icu == 0) continue;
      std::printf("%-34s %12.0f %12.0f %8.2f\n", entry.first.c_str(), ours, icu,
                  ours / icu);
      if (lowestName.empty() || ours / icu < lowest) {
        lowest = ours / icu;
        lowestName = entry.first;
      }
    }
    if (!lowestName.empty())
      std::printf("lowest ratio: %.2f, %s\n", lowest, lowestName.c_str());
  }

 private:
  std::map<std::string, std::pair<double, double>> rates_;
  std::set<std::string> medians_;
};

std::unique_ptr<Text> makeText(const std::string& name, std::string utf8,
                               String decoded) {
  auto text = std::make_unique<Text>();
  text->name = name;
  text->utf8 = std::move(utf8);
  text->utf32 = decoded.toUTF32String();
  text->string = std::move(decoded);
#if defined(ZELVO_HAVE_ICU)
  text->utf16 = icu::UnicodeString::fromUTF32(
      reinterpret_cast<const UChar32*>(text->utf32.data()),
      static_cast<int32_t>(text->utf32.size()));
#endif
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  // glibc hands every block of 128 KiB or more to mmap, and so every row,
  // the peers' too, would fault the pages of its result in afresh on every
  // call: the machine's page faults, not the work of normalizing. Keeping
  // large blocks in the heap takes that out of all rows alike.
  mallopt(M_MMAP_THRESHOLD, 256 << 20);
  mallopt(M_TRIM_THRESHOLD, 512 << 20);

  const std::string suffix = ".utf8.txt";
  // The corpus, and texts of scripts it lacks, each repeated to a size like
  // that of a corpus file.
  std::vector<zelvo_bench::CorpusFile> files =
      zelvo_bench::corpusAndExtraTexts(suffix);
  for (auto& file : files) {
    const std::string name =
        file.name.substr(0, file.name.size() - suffix.size());
    // Decoded once, here, outside every timed loop.
    String decoded(file.bytes);
    String decomposed = zelvo::unicode::toNFD(decoded);
    std::string decomposedUtf8 = decomposed.toUTF8String();
    texts().push_back(
        makeText(name, std::move(file.bytes), std::move(decoded)));
    texts().push_back(makeText(name + "_nfd", std::move(decomposedUtf8),
                               std::move(decomposed)));
  }
  if (texts().empty()) {
    std::fprintf(stderr, "no *.utf8.txt files in %s\n",
                 zelvo_bench::corpusDir().c_str());
    return 1;
  }
  benchmark::RegisterBenchmark("tables/memory", tablesMemory)
      ->Unit(benchmark::kMillisecond)
      ->Iterations(1);
  for (const auto& text : texts()) registerRows(text.get());
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
