#!/usr/bin/env bash
# Installs what is missing, then runs every check the project has:
#   1. the whole build with g++ and CTest (unit, widget, Secret Service,
#      whole-program and soak tests);
#   2. the same suite built with clang under AddressSanitizer and
#      UndefinedBehaviorSanitizer (scripts/sanitize.sh);
#   3. each libFuzzer target for 60 seconds from its seed corpus
#      (scripts/fuzz.sh);
# and then prints the lines of tests against the lines of the product
# (scripts/test-ratio.py).
# With CI set, compiler warnings are errors. QUORVANE_SKIP_SANITIZERS=1 and
# QUORVANE_SKIP_FUZZ=1 leave out stages 2 and 3 for a quicker local run.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

build_dir=${QUORVANE_BUILD_DIR:-build}
werror=OFF
if [ -n "${CI:-}" ]; then
    werror=ON
fi

echo "== Build and test (g++)"
cmake -S . -B "$build_dir" -G Ninja \
    -DCMAKE_BUILD_TYPE=Debug \
    -DQUORVANE_WARNINGS_AS_ERRORS="$werror"
cmake --build "$build_dir" -j "$(nproc)"
ctest --test-dir "$build_dir" --output-on-failure -j "$(nproc)"

if [ "${QUORVANE_SKIP_SANITIZERS:-}" != 1 ]; then
    echo "== Build and test under ASan and UBSan (clang)"
    bash scripts/sanitize.sh
fi

if [ "${QUORVANE_SKIP_FUZZ:-}" != 1 ]; then
    echo "== Fuzz each decoder for 60 seconds"
    bash scripts/fuzz.sh 60
fi

echo "== Tests against the product"
python3 scripts/test-ratio.py
