#!/usr/bin/env bash
# Installs what a fresh Debian machine lacks to build KOBWBx and run its tests.
set -euo pipefail

missing=()
command -v cmake >/dev/null || missing+=(cmake)
command -v ninja >/dev/null || missing+=(ninja-build)
command -v g++ >/dev/null || missing+=(g++)
command -v flex >/dev/null || missing+=(flex)
command -v bison >/dev/null || missing+=(bison)
command -v pkg-config >/dev/null || missing+=(pkg-config)
[ -f /usr/include/gtest/gtest.h ] || missing+=(libgtest-dev)
[ -f /usr/include/benchmark/benchmark.h ] || missing+=(libbenchmark-dev)
# clang and its libFuzzer only when fuzzing is asked for (FUZZ=1, scripts/run-fuzz.sh).
if [ "${FUZZ:-0}" = 1 ]; then
    command -v clang++ >/dev/null || missing+=(clang)
    ls /usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.fuzzer-x86_64.a >/dev/null 2>&1 ||
        ls /usr/lib/llvm-*/lib/clang/*/lib/x86_64-pc-linux-gnu/libclang_rt.fuzzer.a >/dev/null 2>&1 ||
        missing+=(libclang-rt-dev)
fi
# The Python module: Debian's interpreter with its headers, pybind11, pytest.
[ -f /usr/lib/cmake/pybind11/pybind11Config.cmake ] || missing+=(pybind11-dev)
/usr/bin/python3 -c 'import pybind11' 2>/dev/null || missing+=(python3-pybind11)
/usr/bin/python3 -c 'import pytest' 2>/dev/null || missing+=(python3-pytest)
ls /usr/include/python3*/Python.h >/dev/null 2>&1 || missing+=(python3-dev)
{ [ -f /usr/include/gmp.h ] || ls /usr/include/*/gmp.h >/dev/null 2>&1; } || missing+=(libgmp-dev)
[ -f /usr/include/flint/fmpz_mpoly_factor.h ] || missing+=(libflint-dev)
[ -f /usr/include/arb_fmpz_poly.h ] || missing+=(libflint-arb-dev)
[ -f /usr/include/eigen3/Eigen/Sparse ] || missing+=(libeigen3-dev)
[ -f /usr/include/suitesparse/SuiteSparseQR.hpp ] || missing+=(libsuitesparse-dev)

if [ ${#missing[@]} -gt 0 ]; then
    if [ "$(id -u)" -eq 0 ]; then
        echo "Installing: ${missing[*]}"
        apt-get update -qq
        DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}" >/dev/null
    else
        echo "Missing: ${missing[*]} (run as root, or install them with apt-get)" >&2
        exit 1
    fi
fi
