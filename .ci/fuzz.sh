#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (AddressSanitizer and
# UndefinedBehaviorSanitizer on, the library instrumented too), seeds them from
# the tests' examples and the shared corpus, and runs each one for a bounded
# time. Exits non-zero if any target crashes or finds a broken property.
#
#   FUZZ_SECONDS    seconds per target (default 20)
#   FUZZ_TARGETS    space-separated subset of the targets (default: all)
#   FUZZ_BUILD_DIR  build folder (default build-fuzz)
#   ZELVO_SHARED_DIR  folder with corpus/ and ucd/ (default ../shared)
#
# A longer run of one target, kept in the background at low priority:
#   FUZZ_SECONDS=600 FUZZ_TARGETS=NormalizationFuzz nice -n 19 bash .ci/fuzz.sh
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${FUZZ_SECONDS:-20}
build=${FUZZ_BUILD_DIR:-build-fuzz}
shared=${ZELVO_SHARED_DIR:-../shared}
all_targets="Utf8DecoderFuzz Utf16DecoderFuzz WideDecoderFuzz
  CodePageDecoderFuzz CodePageEncoderFuzz NormalizationFuzz
  FullCaseMappingFuzz StringOperationsFuzz"
read -r -a targets <<<"$(echo ${FUZZ_TARGETS:-$all_targets})"

cmake -S . -B "$build" -G Ninja \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
  -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZELVO_UNICODE_BUILD_FUZZERS=ON \
  -DZELVO_UNICODE_BUILD_TESTS=OFF \
  -DZELVO_UNICODE_BUILD_BENCHMARKS=OFF \
  -DZELVO_UNICODE_BUILD_TOOLS=OFF >/dev/null
cmake --build "$build" --target "${targets[@]}" -j2

work="$build/fuzz"
rm -rf "$work/seeds"
python3 fuzz/make_seeds.py "$shared" "$work/seeds"

export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}

failed=()
printf '\n%-22s %12s %8s %8s %8s  %s\n' target executions exec/s cov ft result
for target in "${targets[@]}"; do
  mkdir -p "$work/corpus/$target" "$work/artifacts"
  log="$work/$target.log"
  result=ok
  # New inputs go into the first folder, which is kept between runs.
  if ! "$work/$target" -max_total_time="$seconds" -max_len=4096 -timeout=30 \
      -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix="$work/artifacts/$target-" \
      "$work/corpus/$target" "$work/seeds/$target" >"$log" 2>&1; then
    result=FAILED
    failed+=("$target")
  fi
  executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
  cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1 | cut -d' ' -f2 || true)
  ft=$(grep -o 'ft: [0-9]*' "$log" | tail -1 | cut -d' ' -f2 || true)
  printf '%-22s %12s %8s %8s %8s  %s\n' "$target" "${executions:--}" \
    "${speed:--}" "${cov:--}" "${ft:--}" "$result"
done

if [ ${#failed[@]} -ne 0 ]; then
  for target in "${failed[@]}"; do
    echo "== $target: end of $work/$target.log"
    tail -40 "$work/$target.log"
  done
  echo "fuzzing failed: ${failed[*]} (inputs in $work/artifacts)"
  exit 1
fi
echo "fuzzing: ${#targets[@]} targets, ${seconds} s each, no failures"
