#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang (AddressSanitizer and
# UndefinedBehaviorSanitizer) and runs each for SECONDS (default 60), starting from its
# committed seed corpus. A finding stops the script with the target's failure; inputs
# that crash are left in _build/fuzz/findings. The targets' standard output (the model
# scanner reports invalid characters there) is closed.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
FUZZ=1 bash scripts/setup.sh

CC=clang CXX=clang++ cmake -S . -B _build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DKOBWBX_FUZZ=ON -DBUILD_SHARED_LIBS=OFF -DKOBWBX_BUILD_TESTS=OFF -DKOBWBX_BUILD_EXAMPLES=OFF >/dev/null
cmake --build _build/fuzz -j "$(nproc)"

mkdir -p _build/fuzz/findings
for seeds in fuzz/corpus/*/; do
    name=$(basename "$seeds")
    work=_build/fuzz/corpus/$name
    mkdir -p "$work"
    ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        "_build/fuzz/fuzz/kobwbx-fuzz-$name" -max_total_time="$seconds" -print_final_stats=1 \
        -max_len=4096 -timeout=10 -close_fd_mask=1 -artifact_prefix="_build/fuzz/findings/$name-" \
        "$work" "$seeds" 2>"_build/fuzz/$name.log" || {
        tail -n 60 "_build/fuzz/$name.log"
        echo "$name: finding, input in _build/fuzz/findings" >&2
        exit 1
    }
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "_build/fuzz/$name.log")
    echo "$name: $runs executions in ${seconds} s without a finding"
done
