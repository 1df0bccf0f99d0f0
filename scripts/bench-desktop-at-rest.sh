#!/usr/bin/env bash
# The desktop app at rest: resident memory, CPU time and wake-ups over two
# minutes with auto-refresh every 30 seconds, on a private Xvfb display.
# Targets: resident memory under 60 MB, no CPU use between timer fires.
#
# `quorvane --demo` keeps its settings in memory and always starts at the
# default 60-second interval, with no option to change it, so this runs the
# real desktop app instead, against a local balance server, with a fresh
# XDG_CONFIG_HOME where `quorvane interval 30` was stored first. The server
# logs each request's time: those are the timer's fires.
# Usage: scripts/bench-desktop-at-rest.sh [BUILD_DIR]   (default build-i, Release)
#        DURATION=120 (seconds sampled)
set -euo pipefail

ROOT="$(cd "$(dirname "$0")/.." && pwd)"
BUILD="${1:-$ROOT/build-i}"
QUORVANE="$BUILD/linux/main/quorvane"
DURATION="${DURATION:-120}"
SETTLE=5
KEY="sk-bench-key"

command -v Xvfb >/dev/null || { echo "missing: Xvfb (apt-get install xvfb)" >&2; exit 1; }
if [ ! -x "$QUORVANE" ]; then
    cmake -S "$ROOT" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
    ninja -C "$BUILD" -j2 quorvane
fi

WORK="$(mktemp -d)"
PIDS=()
cleanup() {
    for pid in "${PIDS[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$WORK"
}
trap cleanup EXIT

: >"$WORK/requests"
python3 "$ROOT/scripts/balance-server.py" "$KEY" "$WORK/port" "$WORK/requests" &
PIDS+=($!)
for _ in $(seq 100); do [ -s "$WORK/port" ] && break; sleep 0.05; done

# A free display: the first without a lock file.
DISPLAY_NUMBER=90
while [ -e "/tmp/.X$DISPLAY_NUMBER-lock" ] || [ -e "/tmp/.X11-unix/X$DISPLAY_NUMBER" ]; do
    DISPLAY_NUMBER=$((DISPLAY_NUMBER + 1))
done
Xvfb ":$DISPLAY_NUMBER" -screen 0 1280x800x24 -nolisten tcp >/dev/null 2>&1 &
PIDS+=($!)
for _ in $(seq 100); do [ -e "/tmp/.X11-unix/X$DISPLAY_NUMBER" ] && break; sleep 0.05; done

export DISPLAY=":$DISPLAY_NUMBER" XDG_CONFIG_HOME="$WORK/config" HOME="$WORK/home"
export QUORVANE_SECRET_STORE=file QUORVANE_API_BASE_URL="http://127.0.0.1:$(cat "$WORK/port")"
export XDG_RUNTIME_DIR="$WORK/runtime"
unset QT_QPA_PLATFORM WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS
mkdir -p "$XDG_CONFIG_HOME" "$HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
printf '%s\n' "$KEY" | QT_QPA_PLATFORM=offscreen "$QUORVANE" key set
QT_QPA_PLATFORM=offscreen "$QUORVANE" auto-refresh on
QT_QPA_PLATFORM=offscreen "$QUORVANE" interval 30
: >"$WORK/requests"

"$QUORVANE" >"$WORK/app.log" 2>&1 &
APP=$!
PIDS+=("$APP")
sleep "$SETTLE"
kill -0 "$APP" || { echo "the app exited:" >&2; cat "$WORK/app.log" >&2; exit 1; }

HZ=$(getconf CLK_TCK)
cpu_ticks() { awk '{print $14 + $15}' "/proc/$APP/stat"; }
# Voluntary and involuntary switches of every thread: each is the thread
# waking up (or being preempted) at least once.
switches() { cat /proc/"$APP"/task/*/status 2>/dev/null |
    awk '/^(voluntary|nonvoluntary)_ctxt_switches/ {s += $2} END {print s}'; }
field() { awk -v k="$1:" '$1 == k {print $2}' "/proc/$APP/status"; }

echo "t_unix cpu_ticks switches vmrss_kb vmhwm_kb threads" >"$WORK/samples"
START_TICKS=$(cpu_ticks)
START_TIME=$(date +%s.%N)
for _ in $(seq "$DURATION"); do
    echo "$(date +%s.%N) $(cpu_ticks) $(switches) $(field VmRSS) $(field VmHWM) $(field Threads)" >>"$WORK/samples"
    sleep 1
done
END_TICKS=$(cpu_ticks)
END_TIME=$(date +%s.%N)

# A second is "between fires" when no request arrived in it or in the second before.
awk -v hz="$HZ" -v start="$START_TIME" -v end="$END_TIME" '
    FNR == NR { fire[n++] = $1; next }
    FNR == 1 { next }
    {
        t = $1; if (prev != "") {
            busy = 0
            for (i = 0; i < n; i++) if (fire[i] >= pt - 1 && fire[i] <= t + 0.5) busy = 1
            if (busy) { bcs += $3 - pcs; bcpu += $2 - pcpu; bs++ } else { qcs += $3 - pcs; qcpu += $2 - pcpu; qs++ }
        }
        prev = 1; pt = t; pcs = $3; pcpu = $2; rss = $4; hwm = $5; thr = $6
        if ($4 > maxrss) maxrss = $4
        if (minrss == "" || $4 < minrss) minrss = $4
    }
    END {
        fires = 0; for (i = 0; i < n; i++) if (fire[i] >= start && fire[i] <= end) fires++
        printf "sampled: %.0f s, %d timer fires (requests) in that time, threads %d\n", end - start, fires, thr
        printf "VmRSS: %.1f MB at the end (min %.1f, max %.1f MB); VmHWM %.1f MB (target < 60 MB)\n", rss/1024, minrss/1024, maxrss/1024, hwm/1024
        printf "seconds around a fire: %d, with %d context switches and %d CPU ticks\n", bs, bcs, bcpu
        printf "seconds between fires: %d, with %d context switches (%.2f/s) and %d CPU ticks (%.0f ms)\n", qs, qcs, (qs ? qcs/qs : 0), qcpu, qcpu * 1000 / hz
    }' "$WORK/requests" "$WORK/samples"
printf 'CPU time over the whole window: %.0f ms (utime+stime, %s ticks/s)\n' \
    "$(echo "($END_TICKS - $START_TICKS) * 1000 / $HZ" | bc -l)" "$HZ"
echo "timer fires at (s after sampling began):" \
    $(awk -v s="$START_TIME" '$1 >= s {printf "%.1f ", $1 - s}' "$WORK/requests")
