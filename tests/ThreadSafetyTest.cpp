// Runs the free functions of every subsystem, the const members of a shared
// String and the code page reads from several threads at once on shared
// input. Every result must equal the one computed on a single thread; under
// the tsan preset the same runs must show no data race.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "Unicode.h"

using namespace zelvo::unicode;

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 2;

// Text with something for every rule: marks out of order, Hangul jamo and
// syllables, U+11A7, final sigma, Turkish and Lithuanian dots, expansions,
// compatibility forms, code page holes, and bad code points.
String mixedSample() {
  String s{0x0041,     0x030A, 0x0323,  0x1E0B, 0x0323, 0x0061, 0x0307,
           0x0323,     0x1100, 0x1161,  0x11A8, 0x1100, 0x1161, 0x11A7,
           0xAC00,     0x11A8, 0x0391,  0x03A3, 0x0020, 0x0049, 0x0307,
           0x0130,     0x0069, 0x0049,  0x0323, 0x0301, 0x00DF, 0xFB03,
           0x0149,     0xFDFA, 0x00BD,  0x212B, 0x0344, 0x0B47, 0x0B3E,
           0x0958,     0x20AC, 0x0E01,  0x0081, 0xFFFD, 0xD800, 0x110000,
           0xFFFFFFFF, 0x0000, 0x1F600, 0x0345, 0x0315};
  return s;
}

// The mixed sample, and pieces of the corpus when it is there: the test does
// not need the corpus, it only gets more varied with it.
String sharedText() {
  String text = mixedSample();
  const char* dir = std::getenv("ZELVO_CORPUS_DIR");
  if (dir == nullptr) return text;
  for (const char* name :
       {"greek.utf8.txt", "turkish.utf8.txt", "vietnamese.utf8.txt",
        "korean.utf8.txt", "hindi.utf8.txt", "thai.utf8.txt",
        "french.utf8.txt"}) {
    std::ifstream in(std::string(dir) + "/" + name, std::ios::binary);
    std::string bytes(1500, '\0');
    in.read(&bytes[0], static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<size_t>(in.gcount()));
    text += String(bytes);
    text += mixedSample();
  }
  return text;
}

// Starts all threads together and waits for them; body gets the thread's
// index.
void runTogether(const std::function<void(int)>& body) {
  std::atomic<int> ready{0};
  std::atomic<bool> go{false};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      ready.fetch_add(1);
      while (!go.load()) std::this_thread::yield();
      body(t);
    });
  }
  while (ready.load() != kThreads) std::this_thread::yield();
  go.store(true);
  for (auto& thread : threads) thread.join();
}

struct Normalized {
  String nfd, nfc, nfkd, nfkc;
  bool isNfd, isNfc, isNfkd, isNfkc;
  bool operator==(const Normalized& o) const {
    return nfd == o.nfd && nfc == o.nfc && nfkd == o.nfkd && nfkc == o.nfkc &&
           isNfd == o.isNfd && isNfc == o.isNfc && isNfkd == o.isNfkd &&
           isNfkc == o.isNfkc;
  }
};

Normalized normalize(const String& s) {
  return {toNFD(s), toNFC(s), toNFKD(s), toNFKC(s),
          isNFD(s), isNFC(s), isNFKD(s), isNFKC(s)};
}

std::vector<String> fullCase(const String& s) {
  std::vector<String> out;
  for (const char* language : {"", "tr", "az", "lt", "TR"}) {
    out.push_back(toUpperFull(s, language));
    out.push_back(toLowerFull(s, language));
    for (size_t i = 0; i < s.size() && i < 64; ++i) {
      out.push_back(toUppperFull(s[i], language));
      out.push_back(toLowerFull(s[i], language));
      out.push_back(toTitleFull(s[i], language));
    }
  }
  return out;
}

std::vector<char32_t> perCodePoint(const String& s) {
  std::vector<char32_t> out;
  for (char32_t c : s) {
    out.push_back(toUpperSimple(c));
    out.push_back(toLowerSimple(c));
    out.push_back(toTitleSimple(c));
    out.push_back(simpleCaseFold(c));
    out.push_back(isAssigned(c));
    char32_t x = c;
    toUpperSimpleInPlace(x);
    toLowerSimpleInPlace(x);
    toTitleSimpleInPlace(x);
    simpleCaseFoldInPlace(x);
    out.push_back(x);
  }
  return out;
}

std::vector<String> simpleStrings(const String& s) {
  String upper = s, lower = s;
  toUpperSimpleInPlace(upper);
  toLowerSimpleInPlace(lower);
  return {toUpperSimple(s), toLowerSimple(s), upper, lower};
}

// Const members of one String that all threads read at once.
std::vector<std::string> stringReads(const String& s) {
  std::vector<std::string> out;
  out.push_back(s.toUTF8String());
  out.push_back(s.toNativeString());
  const std::u16string utf16 = s.toUTF16String();
  out.emplace_back(reinterpret_cast<const char*>(utf16.data()),
                   utf16.size() * sizeof(char16_t));
  const std::wstring wide = s.toWString();
  out.emplace_back(reinterpret_cast<const char*>(wide.data()),
                   wide.size() * sizeof(wchar_t));
  const String needle = s.substr(s.size() / 2, 3);
  out.push_back(
      std::to_string(s.find(needle)) + " " + std::to_string(s.rfind(needle)) +
      " " + std::to_string(s.find_first_of(needle)) + " " +
      std::to_string(s.find_last_not_of(needle)) + " " +
      std::to_string(s.compare(needle)) + " " +
      std::to_string(s.hasBadCodePoints()) + " " + std::to_string(s < needle) +
      " " + std::to_string(s.toUTF32String().size()));
  String copy = s;  // a thread's own copy, changed freely
  copy.replaceBadCodePoints();
  copy.append(needle).erase(0, 5);
  out.push_back(copy.toUTF8String());
  return out;
}

// Every read of the registry and of the pages it holds; the unknown name
// throws the same way on every thread.
std::vector<std::string> codePageReads(const String& text,
                                       const std::string& bytes) {
  std::vector<std::string> out;
  for (const char* name : {"Windows-1252", "Windows-874", "none"}) {
    const bool has = CodePageTranslator::hasCodePage(name);
    out.push_back(std::string(name) + (has ? " yes" : " no"));
    if (!has) {
      bool lossy = true;
      try {
        CodePageTranslator::translate(text, name, lossy);
        out.push_back("no exception");
      } catch (CodePageTranslator::exceptions e) {
        out.push_back("threw " + std::to_string(e) + (lossy ? " kept" : ""));
      }
      continue;
    }
    const CodePage& page = CodePageTranslator::getCodePage(name);
    bool lossy = false;
    out.push_back(page.getName());
    out.push_back(CodePageTranslator::translate(text, name, lossy));
    out.push_back(lossy ? "lossy" : "exact");
    out.push_back(CodePageTranslator::translate(text, name));
    out.push_back(page.fromUnicode(text));
    out.push_back(CodePageTranslator::translate(bytes, name).toUTF8String());
    out.push_back(page.toUnicode(bytes).toUTF8String());
  }
  return out;
}

std::string allBytes() {
  std::string bytes;
  for (int b = 0; b < 256; ++b) bytes += static_cast<char>(b);
  return bytes + "plain ASCII\x80\x81\xE9\xFF";
}

template <typename Result>
void expectSameEverywhere(const std::function<Result()>& compute) {
  const Result expected = compute();
  std::atomic<int> mismatches{0};
  runTogether([&](int) {
    for (int round = 0; round < kRounds; ++round)
      if (!(compute() == expected)) mismatches.fetch_add(1);
  });
  EXPECT_EQ(mismatches.load(), 0);
}

}  // namespace

TEST(ThreadSafetyTest, NormalizationFromManyThreadsMatchesOneThread) {
  const String text = sharedText();
  expectSameEverywhere<Normalized>([&] { return normalize(text); });
}

TEST(ThreadSafetyTest, FullCaseMappingFromManyThreadsMatchesOneThread) {
  const String text = sharedText();
  expectSameEverywhere<std::vector<String>>([&] { return fullCase(text); });
}

TEST(ThreadSafetyTest, SimpleCaseOfStringsFromManyThreadsMatchesOneThread) {
  const String text = sharedText();
  expectSameEverywhere<std::vector<String>>(
      [&] { return simpleStrings(text); });
}

TEST(ThreadSafetyTest, CodePointFunctionsFromManyThreadsMatchOneThread) {
  const String text = sharedText();
  expectSameEverywhere<std::vector<char32_t>>(
      [&] { return perCodePoint(text); });
}

TEST(ThreadSafetyTest, ConstMembersOfOneStringFromManyThreadsMatchOneThread) {
  const String text = sharedText();
  expectSameEverywhere<std::vector<std::string>>(
      [&] { return stringReads(text); });
}

TEST(ThreadSafetyTest, CodePageReadsFromManyThreadsMatchOneThread) {
  const String text = sharedText();
  const std::string bytes = allBytes();
  expectSameEverywhere<std::vector<std::string>>(
      [&] { return codePageReads(text, bytes); });
}

TEST(ThreadSafetyTest, AllSubsystemsAtOnceMatchOneThread) {
  // Each thread runs every subsystem, each starting with a different one,
  // so that all of them are in use at the same moment.
  const String text = sharedText();
  const std::string bytes = allBytes();
  const Normalized normalized = normalize(text);
  const std::vector<String> cased = fullCase(text);
  const std::vector<char32_t> single = perCodePoint(text);
  const std::vector<std::string> reads = stringReads(text);
  const std::vector<std::string> pages = codePageReads(text, bytes);
  const std::vector<std::function<bool()>> tasks = {
      [&] { return normalize(text) == normalized; },
      [&] { return fullCase(text) == cased; },
      [&] { return perCodePoint(text) == single; },
      [&] { return stringReads(text) == reads; },
      [&] { return codePageReads(text, bytes) == pages; }};
  std::atomic<int> mismatches{0};
  runTogether([&](int t) {
    for (size_t k = 0; k < tasks.size(); ++k)
      if (!tasks[(t + k) % tasks.size()]()) mismatches.fetch_add(1);
  });
  EXPECT_EQ(mismatches.load(), 0);
}
