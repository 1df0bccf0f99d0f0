#!/usr/bin/env bash
# Shows Quorvane on a simulated account: installs what is missing, builds a
# Release in build-release/ and starts the desktop app with --demo. Without a
# display it prints the demo's menu instead and draws its card into a PNG.
# Nothing of yours is read or written: the demo keeps its key and settings in
# memory and talks only to its own server on 127.0.0.1.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

build_dir=build-release
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUORVANE_BUILD_TESTS=OFF >/dev/null
cmake --build "$build_dir" --target quorvane -j "$(nproc)"
quorvane="$build_dir/linux/main/quorvane"

if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    echo "Starting the demo: click the whale in your panel's status area for the dashboard, right-click it for the menu (on X11 with no panel: the strip at the top right)."
    exec "$quorvane" --demo
fi

echo "No display (neither DISPLAY nor WAYLAND_DISPLAY is set): the demo's menu as text instead."
echo
"$quorvane" --demo menu
echo
card="$build_dir/demo-card.png"
"$quorvane" --demo card --png "$card" >/dev/null
echo "The demo's card, as the menu shows it: $card"
