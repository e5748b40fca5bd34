// Where the library's load goes: every step of the constructor of the table
// set timed on its own, in the constructor's order, and the destructor that
// runs at exit. Each step runs on a scratch table set (or a fresh container)
// brought into the state the constructor leaves it in before that step.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <utility>

#include "normalization/LoadTimeTables.h"
#include "transform/UnicodeTransformationTables.h"
#include "transform/data/Fillers.h"

namespace {

namespace data = zelvo_private::unicode;
using zelvo::unicode::UnicodeTransformationTables;

UnicodeTransformationTables& scratch() {
  static UnicodeTransformationTables tables;
  return tables;
}

// A filler of zelvo_private::unicode into a fresh container; the
// container's destruction is not timed.
template <class Container, void (*fill)(Container&)>
void filler(benchmark::State& state) {
  for (auto _ : state) {
    auto container = std::make_unique<Container>();
    fill(*container);
    benchmark::DoNotOptimize(container.get());
    state.PauseTiming();
    container.reset();
    state.ResumeTiming();
  }
}

using CharMap = std::map<char32_t, char32_t>;
using StringMap = std::map<char32_t, zelvo::unicode::String>;
using CompatMap =
    std::map<char32_t, std::pair<zelvo::unicode::String, std::string>>;
using Ranges = zelvo::unicode::RangeList;
using Conditions = zelvo::unicode::ConditionTable;

void initSoftDotted(benchmark::State& state) {
  auto& t = scratch();
  for (auto _ : state) {
    state.PauseTiming();
    t.softDottedRanges.clear();
    t.softDottedRanges.shrink_to_fit();
    state.ResumeTiming();
    t.initSoftDotted();
  }
}

// The constructor's initDecomp: the filler, the full rows copied from the
// generated data, the raw rows given back.
void loadDecompositions(benchmark::State& state) {
  auto& t = scratch();
  for (auto _ : state) {
    state.PauseTiming();
    t.decompositionMap.clear();
    state.ResumeTiming();
    zelvo::unicode::loadDecompositions(t);
  }
}

// The constructor's initCompatDecomp, each raw row given back as its full
// row stands.
void loadCompatibilityDecompositions(benchmark::State& state) {
  auto& t = scratch();
  for (auto _ : state) {
    state.PauseTiming();
    t.compatDecompositionMap.clear();
    state.ResumeTiming();
    zelvo::unicode::loadCompatibilityDecompositions(t);
  }
}

void initWeightMap(benchmark::State& state) {
  auto& t = scratch();
  for (auto _ : state) {
    state.PauseTiming();
    t.weightMap.clear();
    state.ResumeTiming();
    t.initWeightMap();
  }
}

void initCompositionExclusions(benchmark::State& state) {
  auto& t = scratch();
  for (auto _ : state) {
    state.PauseTiming();
    t.compositionExclusions.clear();
    state.ResumeTiming();
    t.initCompositionExclusions();
  }
}

// The constructor's initFinalCompositionMap.
void loadCompositionMap(benchmark::State& state) {
  auto& t = scratch();
  for (auto _ : state) {
    state.PauseTiming();
    t.compositionMap.clear();
    state.ResumeTiming();
    zelvo::unicode::loadCompositionMap(t);
  }
}

void wholeConstructor(benchmark::State& state) {
  for (auto _ : state) {
    auto tables = std::make_unique<UnicodeTransformationTables>();
    benchmark::DoNotOptimize(tables.get());
    state.PauseTiming();
    tables.reset();
    state.ResumeTiming();
  }
}

void destructor(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    auto tables = std::make_unique<UnicodeTransformationTables>();
    state.ResumeTiming();
    tables.reset();
  }
}

#define STEP(name, ...) \
  BENCHMARK(__VA_ARGS__)->Name(name)->Unit(benchmark::kMicrosecond)

// In the order of the constructor.
STEP("1 initValidRanges", filler<Ranges, data::initValidRanges>);
STEP("1 initNFD_QC_NoRanges", filler<Ranges, data::initNFD_QC_NoRanges>);
STEP("1 initNFC_QC_NoRanges", filler<Ranges, data::initNFC_QC_NoRanges>);
STEP("1 initNFC_QC_MaybeRanges", filler<Ranges, data::initNFC_QC_MaybeRanges>);
STEP("1 initNFKD_QC_NoRanges", filler<Ranges, data::initNFKD_QC_NoRanges>);
STEP("1 initNFKC_QC_NoRanges", filler<Ranges, data::initNFKC_QC_NoRanges>);
STEP("1 initNFKC_QC_MaybeRanges",
     filler<Ranges, data::initNFKC_QC_MaybeRanges>);
STEP("2 initToUpperSpecial", filler<StringMap, data::initToUpperSpecial>);
STEP("2 initToLowerSpecial", filler<StringMap, data::initToLowerSpecial>);
STEP("2 initToTitleSpecial", filler<StringMap, data::initToTitleSpecial>);
STEP("2 initToUpperSpecialCondition",
     filler<Conditions, data::initToUpperSpecialCondition>);
STEP("2 initToLowerSpecialCondition",
     filler<Conditions, data::initToLowerSpecialCondition>);
STEP("2 initToTitleSpecialCondition",
     filler<Conditions, data::initToTitleSpecialCondition>);
STEP("2 initCased", filler<Ranges, data::initCased>);
STEP("2 initCaseIgnorable", filler<Ranges, data::initCaseIgnorable>);
STEP("2 initSoftDotted", initSoftDotted);
STEP("3 initDecomposition (filler)",
     filler<StringMap, data::initDecomposition>);
STEP("3 loadDecompositions (initDecomp at load)", loadDecompositions);
STEP("3 initCompatibiltyDecomposition (filler)",
     filler<CompatMap, data::initCompatibiltyDecomposition>);
STEP("3 loadCompatibilityDecompositions (initCompatDecomp at load)",
     loadCompatibilityDecompositions);
STEP("4 initToUpper", filler<CharMap, data::initToUpper>);
STEP("4 initToLower", filler<CharMap, data::initToLower>);
STEP("4 initCCaseFolding", filler<CharMap, data::initCCaseFolding>);
STEP("4 initSCaseFolding", filler<CharMap, data::initSCaseFolding>);
STEP("4 initTCaseFolding", filler<CharMap, data::initTCaseFolding>);
STEP("4 initFCaseFolding", filler<StringMap, data::initFCaseFolding>);
STEP("4 initToTitle", filler<CharMap, data::initToTitle>);
STEP("5 initWeightMap", initWeightMap);
STEP("5 initCompositionExclusions", initCompositionExclusions);
STEP("5 loadCompositionMap (initFinalCompositionMap at load)",
     loadCompositionMap);
STEP("6 whole constructor", wholeConstructor);
STEP("7 destructor, at exit", destructor);

}  // namespace

BENCHMARK_MAIN();
