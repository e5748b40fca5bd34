#!/usr/bin/env bash
# Runs the test programs, and the command-line tool on sample and corpus
# text, under valgrind's memcheck: any invalid read or write, use of
# uninitialised memory or definite or indirect leak fails the run. Slow
# (about half an hour: the programs run one after another), so it is a
# documented script rather than a step of .ci/run.
#
#   VALGRIND_BUILD_DIR  build folder (default build-valgrind), without
#                       sanitizers
#   VALGRIND_BUILD_TYPE its CMAKE_BUILD_TYPE (default RelWithDebInfo; Debug
#                       gives finer stacks and runs several times longer)
#   VALGRIND_TESTS      space-separated test programs (default: all)
#   VALGRIND_FILTER     a --gtest_filter for every program (default: all)
#   VALGRIND_TOOL       0 to leave out the tool runs (default 1)
#   ZELVO_SHARED_DIR    folder with ucd/ and corpus/ (default ../shared)
set -euo pipefail
cd "$(dirname "$0")/.."

build=${VALGRIND_BUILD_DIR:-build-valgrind}
shared=$(cd "${ZELVO_SHARED_DIR:-../shared}" && pwd)
filter=${VALGRIND_FILTER:-*}

cmake -S . -B "$build" -G Ninja \
  -DCMAKE_BUILD_TYPE="${VALGRIND_BUILD_TYPE:-RelWithDebInfo}" \
  -DZELVO_UNICODE_BUILD_BENCHMARKS=OFF -DZELVO_UNICODE_BUILD_TOOLS=ON >/dev/null
cmake --build "$build" -j2

if [ -n "${VALGRIND_TESTS:-}" ]; then
  read -r -a tests <<<"$VALGRIND_TESTS"
else
  tests=()
  for program in "$build"/tests/*Test; do tests+=("$(basename "$program")"); done
fi

export ZELVO_UCD_DIR="$shared/ucd/7.0.0"
export ZELVO_CORPUS_DIR="$shared/corpus"
logs="$build/valgrind"
mkdir -p "$logs"
failed=()
runs=0

# memcheck NAME HIGHEST COMMAND...: runs the command under memcheck, its
# output in $logs/NAME.out and valgrind's report in $logs/NAME.log, and
# prints a line. The run fails on any memcheck error, or an exit status
# above HIGHEST: 0 for a test program, 1 for the tool, which answers 1 when
# "check" says no or "encode --strict" meets a character without a byte.
memcheck() {
  local name=$1 highest=$2
  shift 2
  local log="$logs/$name.log" start result status=0
  start=$(date +%s)
  # AllocationFailureTest replaces operator new in its program; valgrind
  # must leave that one alone, or the test would see no allocation.
  valgrind --tool=memcheck --error-exitcode=99 --leak-check=full \
    --errors-for-leak-kinds=definite,indirect --track-origins=yes \
    --soname-synonyms=somalloc=nouserintercepts \
    --log-file="$log" "$@" >"$logs/$name.out" 2>&1 || status=$?
  if [ "$status" -eq 99 ] || ! grep -q 'ERROR SUMMARY: 0 errors' "$log"; then
    result=FAILED
    failed+=("$name")
  elif [ "$status" -gt "$highest" ]; then
    result="FAILED (exit $status)"
    failed+=("$name")
  else
    result=clean
  fi
  runs=$((runs + 1))
  printf '%-36s %5ss  %s  %s\n' "$name" "$(($(date +%s) - start))" \
    "$result" "$(grep -m1 'ERROR SUMMARY' "$log" | sed 's/^==[0-9]*== //')"
}

for name in "${tests[@]}"; do
  memcheck "$name" 0 "$build/tests/$name" --gtest_filter="$filter"
done

if [ "${VALGRIND_TOOL:-1}" != 0 ]; then
  tool="$build/tools/zelvo-unicode"
  corpus="$shared/corpus"
  "$tool" utf16 --to --sample >"$logs/sample.utf16"
  "$tool" utf32 --to --sample >"$logs/sample.utf32"
  tool_runs=(
    "nfc $corpus/korean.utf8.txt" "nfd $corpus/vietnamese.utf8.txt"
    "nfkc $corpus/japanese.utf8.txt" "nfkd --sample"
    "check nfc $corpus/french.utf8.txt" "check nfd --sample"
    "check nfkc --sample" "check nfkd --sample"
    "upper $corpus/greek.utf8.txt" "lower --lang tr $corpus/turkish.utf8.txt"
    "lower --lang lt --sample" "upper --simple --sample" "title --sample"
    "fold $corpus/russian.utf8.txt" "pages"
    "decode --page Windows-1252 $corpus/french.latin1.txt"
    "encode --page Windows-874 $corpus/thai.utf8.txt"
    "encode --page Windows-1252 --strict --sample"
    "utf16 --from $logs/sample.utf16" "utf32 --from $logs/sample.utf32"
    "clean --strip --sample" "clean --replace --sample"
    "info U+00DF U+1E9E U+AC01" "info --sample"
  )
  for words in "${tool_runs[@]}"; do
    read -r -a arguments <<<"$words"
    memcheck "tool-${arguments[0]}-$runs" 1 "$tool" "${arguments[@]}"
  done
fi

if [ ${#failed[@]} -ne 0 ]; then
  echo "memcheck failed: ${failed[*]} (logs in $logs)"
  exit 1
fi
echo "memcheck: $runs runs clean"
