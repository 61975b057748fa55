#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang (AddressSanitizer and
# UndefinedBehaviorSanitizer) and runs each from its committed seed corpus:
#
#   scripts/run-fuzz.sh [SECONDS]   each target for SECONDS (default 60), keeping what it
#                                   learns in _build/fuzz/corpus for the next run
#   scripts/run-fuzz.sh --smoke     each target for a fixed number of executions from a
#                                   fixed seed, starting from the seed corpus alone, so
#                                   that every machine runs the same inputs (CI does)
#
# A finding stops the script with the target's failure; inputs that crash are left in
# _build/fuzz/findings. The targets' standard output (the model scanner reports invalid
# characters there) is closed.
set -euo pipefail
cd "$(dirname "$0")/.."

# Executions of each target in the smoke, about 15 to 20 seconds each on two cores.
declare -A smokeRuns=(
    [Algebra]=45000
    [CallSequence]=130000
    [ModelText]=65000
    [PrinterRoundTrip]=110000
    [SymbolicTransformations]=20000
)
smokeSeed=1

smoke=0
seconds=60
case "${1:-}" in
--smoke) smoke=1 ;;
'') ;;
*) seconds=$1 ;;
esac

FUZZ=1 bash scripts/setup.sh
CC=clang CXX=clang++ cmake -S . -B _build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DKOBWBX_FUZZ=ON -DBUILD_SHARED_LIBS=OFF -DKOBWBX_BUILD_TESTS=OFF -DKOBWBX_BUILD_EXAMPLES=OFF >/dev/null
cmake --build _build/fuzz -j "$(nproc)"

mkdir -p _build/fuzz/findings
for seeds in fuzz/corpus/*/; do
    name=$(basename "$seeds")
    if [ "$smoke" = 1 ]; then
        # A fresh working corpus: what earlier runs found must not change the inputs.
        work=_build/fuzz/smoke/$name
        rm -rf "$work"
        limit=(-seed="$smokeSeed" -runs="${smokeRuns[$name]:?no smoke count for $name}")
    else
        work=_build/fuzz/corpus/$name
        limit=(-max_total_time="$seconds")
    fi
    mkdir -p "$work"
    start=$SECONDS
    # An input may take 30 s: under the sanitizers the symbolic operator's expansion of
    # products of sums, bounded by the polynomial context's term budget, takes about ten
    # times the second it takes uninstrumented.
    ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        "_build/fuzz/fuzz/kobwbx-fuzz-$name" "${limit[@]}" -print_final_stats=1 \
        -max_len=4096 -timeout=30 -close_fd_mask=1 -artifact_prefix="_build/fuzz/findings/$name-" \
        "$work" "$seeds" 2>"_build/fuzz/$name.log" || {
        tail -n 60 "_build/fuzz/$name.log"
        echo "$name: finding, input in _build/fuzz/findings" >&2
        exit 1
    }
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "_build/fuzz/$name.log")
    echo "$name: $runs executions in $((SECONDS - start)) s without a finding"
done
