#!/usr/bin/env bash
# Line and branch coverage of core/, icu/ and linux/ by the whole test suite
# (the soak left out), measured with gcovr on a gcc build instrumented for
# gcov in build-coverage/. Prints the summary and writes
# build-coverage/coverage.txt; compare the two percentages before and after a
# change to the tests.
#
#   bash scripts/coverage.sh
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
if ! command -v gcovr >/dev/null; then
    sudo=""
    [ "$(id -u)" -ne 0 ] && sudo=sudo
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends gcovr >&2
fi

build_dir=build-coverage
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DQUORVANE_COVERAGE=ON \
    -DQUORVANE_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build "$build_dir" -j "$(nproc)"
find "$build_dir" -name '*.gcda' -delete
ctest --test-dir "$build_dir" -j "$(nproc)" -E '^(quorvane_soak|clang_tidy)$' --output-on-failure >/dev/null

# Exception branches and the compiler's own branches are no decisions of ours.
gcovr --root . --object-directory "$build_dir" \
    --filter 'core/' --filter 'icu/' --filter 'linux/' \
    --exclude-throw-branches --exclude-unreachable-branches \
    --print-summary --txt "$build_dir/coverage.txt"
