#!/usr/bin/env python3
"""Every #include points down the layers, never up or sideways.

    include_directions.py SOURCE_DIR

The build links each layer only to the ones below it, but a header-only
include reaches anywhere the include paths do; this reads the include
lines of every source and header and fails on any that goes the wrong
way. It then plants a back edge in a copy of a small tree and checks that
it fails on that too, so the check itself cannot rot.
"""
import os
import re
import shutil
import sys
import tempfile

CORE = ["values", "platform", "json", "balance", "keychain", "tracking", "chart", "menu", "app"]

# What each folder may include besides itself, as "<folder>/<Name>.h".
ALLOWED = {
    "core/values": set(),
    "core/platform": {"values"},
    "core/json": {"values"},
    "core/balance": {"json", "platform", "values"},
    "core/keychain": {"platform", "values"},
    "core/tracking": {"balance", "json", "platform", "values"},
    "core/chart": {"tracking", "balance", "json", "platform", "values"},
    "core/menu": {"chart", "keychain", "tracking", "balance", "json", "platform", "values"},
    "core/app": {"menu", "chart", "keychain", "tracking", "balance", "json", "platform", "values"},
    "icu": {"platform", "values"},
    "linux/services": set(CORE) | {"icu"},
    "linux/tray": set(CORE),
    "linux/gui": set(CORE) | {"tray", "services"},
    "linux/demo": set(CORE) | {"services"},
    "linux/cli": set(CORE) | {"gui", "services", "icu"},
    "linux/main": set(CORE) | {"cli", "demo", "gui", "services", "tray", "icu"},
    "linux/tools": set(CORE) | {"cli", "gui"},
    "macos": set(CORE),
}

# Toolkits the core and the ICU layer never see.
FOREIGN = re.compile(r"^(Q[A-Za-z]|AppKit/|Foundation/|CoreFoundation/|Security/|glib|gio/|libsecret/|wayland)")
QUOTED = re.compile(r'^\s*#\s*(?:include|import)\s+"([^"]+)"')
ANGLED = re.compile(r"^\s*#\s*(?:include|import)\s+<([^>]+)>")


def layer_of(path):
    for layer in sorted(ALLOWED, key=len, reverse=True):
        if path == layer or path.startswith(layer + "/"):
            return layer
    return None


def violations(root):
    found = []
    for folder in ["core", "icu", "linux", "macos"]:
        for directory, _, names in os.walk(os.path.join(root, folder)):
            for name in names:
                if not name.endswith((".h", ".cpp", ".mm")):
                    continue
                path = os.path.relpath(os.path.join(directory, name), root)
                layer = layer_of(os.path.dirname(path))
                if layer is None:
                    found.append("%s: in no known layer" % path)
                    continue
                own = layer.split("/")[-1]
                with open(os.path.join(root, path), encoding="utf-8") as source:
                    for number, line in enumerate(source, 1):
                        quoted = QUOTED.match(line)
                        if quoted and "/" in quoted.group(1):
                            target = quoted.group(1).split("/")[0]
                            if target != own and target not in ALLOWED[layer]:
                                found.append("%s:%d: %s includes %s" % (path, number, layer, quoted.group(1)))
                        angled = ANGLED.match(line)
                        if angled and (layer.startswith("core/") or layer == "icu") and FOREIGN.match(angled.group(1)):
                            found.append("%s:%d: %s includes <%s>" % (path, number, layer, angled.group(1)))
    return found


def main():
    root = sys.argv[1]
    found = violations(root)
    for line in found:
        print(line)

    # The check must fail on a back edge: platform reaching up into the menu.
    scratch = tempfile.mkdtemp(prefix="quorvane-layers-")
    try:
        for folder in ["core/platform", "core/menu"]:
            os.makedirs(os.path.join(scratch, folder))
        with open(os.path.join(scratch, "core/menu/MenuItem.h"), "w") as header:
            header.write('#pragma once\n#include "values/Rect.h"\n')
        with open(os.path.join(scratch, "core/platform/StatusItem.h"), "w") as header:
            header.write('#pragma once\n#include "menu/MenuItem.h"\n#include <QString>\n')
        planted = violations(scratch)
    finally:
        shutil.rmtree(scratch, ignore_errors=True)
    expected = ["core/platform/StatusItem.h:2: core/platform includes menu/MenuItem.h",
                "core/platform/StatusItem.h:3: core/platform includes <QString>"]
    if planted != expected:
        print("the check missed a planted back edge: %r" % planted)
        found.append("self-check")

    print("%d passed, %d failed" % (0 if found else 1, 1 if found else 0))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
