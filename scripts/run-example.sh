#!/usr/bin/env bash
# Builds KOBWBx, installs it into ./_install and runs the example program.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake -S . -B _build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DKOBWBX_BUILD_TESTS=OFF \
    -DCMAKE_INSTALL_PREFIX="$PWD/_install"
cmake --build _build/release
cmake --install _build/release >/dev/null
LD_LIBRARY_PATH="$PWD/_install/lib${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}" \
    "$PWD/_install/bin/kobwbx-example" "$@"
