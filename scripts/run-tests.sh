#!/usr/bin/env bash
# Builds and runs the whole test suite, then the same suite under AddressSanitizer
# and UndefinedBehaviorSanitizer in a separate build, then the threads test alone under
# ThreadSanitizer (a static library and that one test).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
jobs=$(nproc)

cmake -S . -B _build/tests -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build _build/tests -j "$jobs"
ctest --test-dir _build/tests --output-on-failure -j "$jobs"

cmake -S . -B _build/sanitize -G Ninja -DCMAKE_BUILD_TYPE=Debug -DKOBWBX_SANITIZE=ON
cmake --build _build/sanitize -j "$jobs"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    ctest --test-dir _build/sanitize --output-on-failure -j "$jobs"

cmake -S . -B _build/threads -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKOBWBX_THREAD_SANITIZE=ON \
    -DBUILD_SHARED_LIBS=OFF -DKOBWBX_BUILD_TOOLS=OFF -DKOBWBX_BUILD_EXAMPLES=OFF
cmake --build _build/threads -j "$jobs" --target kobwbx-test-threads
TSAN_OPTIONS=halt_on_error=1 _build/threads/tests/threads/kobwbx-test-threads
