#!/usr/bin/env bash
# Compares `quorvane status` with the curl-and-jq one-liner that reads the same
# balance from the same local server, and prints the command line's peak
# resident memory. Target: status within 1.5 x the one-liner, under 15 MB.
# Usage: scripts/bench-status-vs-curl.sh [BUILD_DIR]   (default build-i, Release)
set -euo pipefail

ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD="${1:-$ROOT/build-i}"
QUORVANE="$BUILD/linux/main/quorvane"
KEY="sk-bench-key"
RUNS="${RUNS:-50}"

for tool in python3 curl jq /usr/bin/time; do
    command -v "$tool" >/dev/null || { echo "missing: $tool (apt-get install curl jq time)" >&2; exit 1; }
done
if [ ! -x "$QUORVANE" ]; then
    cmake -S "$ROOT" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
    ninja -C "$BUILD" -j2 quorvane
fi

WORK="$(mktemp -d)"
SERVER_PID=""
cleanup() {
    [ -n "$SERVER_PID" ] && kill "$SERVER_PID" 2>/dev/null || true
    rm -rf "$WORK"
}
trap cleanup EXIT

# The server checks the bearer key, as the real endpoint does, so both sides
# pay for the same exchange; a wrong key gets a 401.
python3 "$ROOT/scripts/balance-server.py" "$KEY" "$WORK/port" &
SERVER_PID=$!
for _ in $(seq 100); do [ -s "$WORK/port" ] && break; sleep 0.05; done
URL="http://127.0.0.1:$(cat "$WORK/port")"

export XDG_CONFIG_HOME="$WORK/config" HOME="$WORK/home" QUORVANE_SECRET_STORE=file
export QUORVANE_API_BASE_URL="$URL" QT_QPA_PLATFORM=offscreen
mkdir -p "$XDG_CONFIG_HOME" "$HOME"
printf '%s\n' "$KEY" | "$QUORVANE" key set
STATUS_CMD="$QUORVANE status"
CURL_CMD="curl -s -H 'Authorization: Bearer $KEY' $URL/user/balance | jq -r '.balance_infos[0].total_balance'"

echo "quorvane status: $(eval "$STATUS_CMD")"
echo "curl | jq:       $(eval "$CURL_CMD")"

if command -v hyperfine >/dev/null; then
    hyperfine -N --warmup 5 --runs "$RUNS" --export-json "$WORK/hf.json" "$STATUS_CMD" >/dev/null 2>&1
    STATUS_MEAN=$(jq '.results[0].mean * 1000' "$WORK/hf.json")
    STATUS_SD=$(jq '.results[0].stddev * 1000' "$WORK/hf.json")
    hyperfine --shell=sh --warmup 5 --runs "$RUNS" --export-json "$WORK/hf2.json" "$CURL_CMD" >/dev/null 2>&1
    CURL_MEAN=$(jq '.results[0].mean * 1000' "$WORK/hf2.json")
    CURL_SD=$(jq '.results[0].stddev * 1000' "$WORK/hf2.json")
    METHOD="hyperfine, $RUNS runs after 5 warm-ups (status without a shell, the one-liner through sh)"
else
    mean_ms() { # command; prints the mean wall time in ms over RUNS runs
        local total=0 start end
        for _ in $(seq "$RUNS"); do
            start=$(date +%s%N); eval "$1" >/dev/null; end=$(date +%s%N)
            total=$((total + end - start))
        done
        echo "scale=2; $total / $RUNS / 1000000" | bc
    }
    STATUS_MEAN=$(mean_ms "$STATUS_CMD"); CURL_MEAN=$(mean_ms "$CURL_CMD"); STATUS_SD="?"; CURL_SD="?"
    METHOD="date +%s%N loop, $RUNS runs"
fi

RSS_KB=0
for _ in 1 2 3 4 5; do
    kb=$(/usr/bin/time -v "$QUORVANE" status 2>&1 >/dev/null | awk -F': ' '/Maximum resident set size/ {print $2}')
    [ "$kb" -gt "$RSS_KB" ] && RSS_KB=$kb
done

printf 'method: %s\n' "$METHOD"
printf 'quorvane status: mean %.2f ms (sd %.2f)\n' "$STATUS_MEAN" "$STATUS_SD"
printf 'curl | jq:       mean %.2f ms (sd %.2f)\n' "$CURL_MEAN" "$CURL_SD"
printf 'ratio status / one-liner: %.2f (target <= 1.5)\n' "$(echo "$STATUS_MEAN / $CURL_MEAN" | bc -l)"
printf 'quorvane status peak RSS: %d KB = %.1f MB (max of 5 runs; target < 15 MB)\n' "$RSS_KB" "$(echo "$RSS_KB / 1024" | bc -l)"
