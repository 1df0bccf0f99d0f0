#!/usr/bin/env bash
# Builds quorvane_<version>_<arch>.deb in build-package/ with CPack from a
# Release build, then has Debian's tools judge it: lintian, desktop-file-validate
# and appstreamcli. Install it with: sudo apt install ./build-package/quorvane_*.deb
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh

build_dir=build-package
cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUORVANE_BUILD_TESTS=OFF \
    -DQUORVANE_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build "$build_dir" -j "$(nproc)"
(cd "$build_dir" && cpack -G DEB >/dev/null)
package=$(ls "$build_dir"/quorvane_*.deb)

lintian --tag-display-limit 0 "$package" 2>/dev/null | { ! grep '^E:'; }
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
dpkg-deb -x "$package" "$root"
desktop-file-validate "$root"/usr/share/applications/app.quorvane.Quorvane.desktop
appstreamcli validate --no-net "$root"/usr/share/metainfo/app.quorvane.Quorvane.metainfo.xml >/dev/null
echo "$package"
