#!/usr/bin/env bash
# Builds every target and test with clang under AddressSanitizer and
# UndefinedBehaviorSanitizer in build-asan and runs CTest there. The first
# report stops the process that made it, so any finding fails its test.
# The Linux shell's targets and tests are included wherever they are built.
#
#   bash scripts/sanitize.sh
#
# QUORVANE_JOBS sets the parallelism of the build and of CTest (default: the
# machine's cores). With CI set, compiler warnings are errors.
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=build-asan
jobs=${QUORVANE_JOBS:-$(nproc)}
werror=OFF
if [ -n "${CI:-}" ]; then
    werror=ON
fi

# Leaks count as findings; reports name their source lines. Set before the
# build too, which runs each test executable to list its tests.
export ASAN_OPTIONS=halt_on_error=1:abort_on_error=1:detect_leaks=1:detect_stack_use_after_return=1:check_initialization_order=1:strict_init_order=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1

# Optimised with debug information: every check stays and reports still
# name their lines, in a fraction of an unoptimised instrumented build's time.
cmake -S . -B "$build_dir" -G Ninja \
    -DCMAKE_CXX_COMPILER="${CLANGXX:-clang++}" \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUORVANE_SANITIZE=address,undefined \
    -DQUORVANE_BUILD_BENCHMARKS=OFF \
    -DQUORVANE_WARNINGS_AS_ERRORS="$werror"
cmake --build "$build_dir" -j "$jobs"

ctest --test-dir "$build_dir" --output-on-failure -j "$jobs" -LE tidy
