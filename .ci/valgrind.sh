#!/usr/bin/env bash
# Runs the test programs under valgrind's memcheck: any invalid read or
# write, use of uninitialised memory or definite leak fails the run. Slow,
# so it is a documented script rather than a step of .ci/run.
#
#   VALGRIND_BUILD_DIR  build folder (default build-valgrind), without
#                       sanitizers
#   VALGRIND_BUILD_TYPE its CMAKE_BUILD_TYPE (default Debug)
#   VALGRIND_TESTS      space-separated test programs (default: all)
#   VALGRIND_FILTER     a --gtest_filter for every program (default: all)
#   ZELVO_SHARED_DIR    folder with ucd/ and corpus/ (default ../shared)
set -euo pipefail
cd "$(dirname "$0")/.."

build=${VALGRIND_BUILD_DIR:-build-valgrind}
shared=$(cd "${ZELVO_SHARED_DIR:-../shared}" && pwd)
filter=${VALGRIND_FILTER:-*}

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE="${VALGRIND_BUILD_TYPE:-Debug}" \
  -DZELVO_UNICODE_BUILD_BENCHMARKS=OFF -DZELVO_UNICODE_BUILD_TOOLS=OFF >/dev/null
cmake --build "$build" -j2

if [ -n "${VALGRIND_TESTS:-}" ]; then
  read -r -a tests <<<"$VALGRIND_TESTS"
else
  tests=()
  for program in "$build"/tests/*Test; do tests+=("$(basename "$program")"); done
fi

export ZELVO_UCD_DIR="$shared/ucd/7.0.0"
export ZELVO_CORPUS_DIR="$shared/corpus"
mkdir -p "$build/valgrind"
failed=()
for name in "${tests[@]}"; do
  log="$build/valgrind/$name.log"
  start=$(date +%s)
  # AllocationFailureTest replaces operator new in its program; valgrind
  # must leave that one alone, or the test would see no allocation.
  if valgrind --tool=memcheck --error-exitcode=99 --leak-check=full \
      --errors-for-leak-kinds=definite,indirect --track-origins=yes \
      --soname-synonyms=somalloc=nouserintercepts \
      --log-file="$log" "$build/tests/$name" --gtest_filter="$filter" \
      >"$build/valgrind/$name.out" 2>&1; then
    result=clean
  else
    result=FAILED
    failed+=("$name")
  fi
  summary=$(grep -m1 'ERROR SUMMARY' "$log" | sed 's/^==[0-9]*== //')
  printf '%-36s %5ss  %s  %s\n' "$name" "$(($(date +%s) - start))" "$result" "$summary"
done

if [ ${#failed[@]} -ne 0 ]; then
  echo "memcheck failed: ${failed[*]} (logs in $build/valgrind)"
  exit 1
fi
echo "memcheck: ${#tests[@]} test programs clean"
