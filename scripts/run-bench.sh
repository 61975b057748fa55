#!/usr/bin/env bash
# Builds the benchmarks in release mode and runs them.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B _build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DKOBWBX_BUILD_TESTS=OFF \
    -DKOBWBX_BUILD_BENCH=ON
cmake --build _build/bench
for program in _build/bench/bench/kobwbx-bench-*; do
    "$program" "$@"
done
# The cost of Python calls, when the module was built.
python=$(sed -n 's/^Python_EXECUTABLE:[A-Z]*=//p' _build/bench/CMakeCache.txt)
if [ -n "$python" ] && [ -d _build/bench/python/kobwbx ]; then
    PYTHONPATH=_build/bench/python "$python" python/bench/EvaluationBench.py
fi
