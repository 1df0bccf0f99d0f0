#!/usr/bin/env bash
# Installs what is missing, configures, builds and runs every test.
# In CI (CI set) warnings are errors.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

build_dir=${QUORVANE_BUILD_DIR:-build}
werror=OFF
if [ -n "${CI:-}" ]; then
    werror=ON
fi

cmake -S . -B "$build_dir" -G Ninja \
    -DCMAKE_BUILD_TYPE=Debug \
    -DQUORVANE_WARNINGS_AS_ERRORS="$werror"
cmake --build "$build_dir" -j "$(nproc)"
ctest --test-dir "$build_dir" --output-on-failure -j "$(nproc)"
