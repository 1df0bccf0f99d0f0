#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (ASan + UBSan) in build-fuzz and runs
# each for a number of seconds, starting from its committed seeds in
# fuzz/corpus/<name>/. Fails when any fuzzer finds a crash, a leak, a slow
# input or a broken property; the input that did it is kept in
# build-fuzz/findings/<name>/ and the command to replay it is printed.
#
#   bash scripts/fuzz.sh [seconds per fuzzer, default 60] [name ...]
#
# Names: balance_response amount double_text history_codec (all by default).
# QUORVANE_JOBS sets the build's parallelism (default: the machine's cores).
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
if [ $# -gt 0 ]; then
    shift
fi
names=("$@")
if [ ${#names[@]} -eq 0 ]; then
    names=(balance_response amount double_text history_codec)
fi

build_dir=build-fuzz
jobs=${QUORVANE_JOBS:-$(nproc)}

cmake -S . -B "$build_dir" -G Ninja \
    -DCMAKE_CXX_COMPILER="${CLANGXX:-clang++}" \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUORVANE_FUZZ=ON \
    -DQUORVANE_SANITIZE=address,undefined \
    -DQUORVANE_BUILD_TESTS=OFF \
    -DQUORVANE_BUILD_BENCHMARKS=OFF
targets=()
for name in "${names[@]}"; do
    targets+=("quorvane_fuzz_$name")
done
cmake --build "$build_dir" -j "$jobs" --target "${targets[@]}"

# A UBSan report must name where it happened; ASan must stop at the first error.
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
export ASAN_OPTIONS=${ASAN_OPTIONS:-halt_on_error=1:detect_leaks=1}

failed=()
for name in "${names[@]}"; do
    fuzzer="$build_dir/fuzz/quorvane_fuzz_$name"
    # New inputs go to the first folder, so the committed seeds stay as they are.
    corpus="$build_dir/corpus/$name"
    findings="$build_dir/findings/$name/"
    mkdir -p "$corpus" "$findings"
    options=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1
        -artifact_prefix="$findings")
    case "$name" in
    balance_response | history_codec) options+=(-dict=fuzz/json.dict) ;;
    esac
    echo "== $name: ${seconds}s"
    if ! "$fuzzer" "${options[@]}" "$corpus" "fuzz/corpus/$name"; then
        failed+=("$name")
        echo "== $name FAILED; replay with: $fuzzer $findings<file>" >&2
    fi
done

if [ ${#failed[@]} -gt 0 ]; then
    echo "Fuzzers with findings: ${failed[*]}" >&2
    exit 1
fi
echo "No findings in ${names[*]}."
