#!/usr/bin/env python3
"""package_test.py BUILD_DIR: the build's Debian package, unpacked into a throwaway root and checked as apt, lintian,
a desktop, a user and a shell would find it."""
import glob
import gzip
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "session"))
from session_harness import APP_ID, Failure, check  # noqa: E402


def run(*command, env=None, check_status=True):
    result = subprocess.run(command, capture_output=True, text=True, env=env, timeout=300)
    check(not check_status or result.returncode == 0, "%s exited with %d:\n%s%s" % (
        " ".join(command), result.returncode, result.stdout, result.stderr))
    return result.stdout


def test(scratch):
    run("cpack", "-G", "DEB", "-B", scratch, "--config", os.path.join(sys.argv[1], "CPackConfig.cmake"))
    packages = glob.glob(os.path.join(scratch, "quorvane_*.deb"))
    package = packages[0] if len(packages) == 1 else ""
    check(re.fullmatch(r"quorvane_\d+\.\d+\.\d+_[a-z0-9]+\.deb", os.path.basename(package)), "cpack made %r" % packages)
    simulated = run("apt-get", "install", "--simulate", "--no-install-recommends", package)
    check("Inst quorvane" in simulated, "apt would not install it:\n" + simulated)
    errors = [line for line in run("lintian", "--tag-display-limit", "0", package, check_status=False).splitlines()
              if line.startswith("E:")]
    check(not errors, "lintian:\n" + "\n".join(errors))
    # GNOME users get the extension that shows the item; a desktop with a host of its own is not sent GNOME.
    recommends = [field.strip() for field in run("dpkg-deb", "-f", package, "Recommends").split(",")]
    check("wl-clipboard" in recommends and "gnome-shell-extension-appindicator | plasma-workspace | xfce4-panel | "
          "waybar | lxqt-panel | mate-panel | cinnamon | budgie-desktop" in recommends, "Recommends: %r" % recommends)

    root = os.path.join(scratch, "root")
    run("dpkg-deb", "-x", package, root)
    share = os.path.join(root, "usr", "share")
    desktop = os.path.join(share, "applications", APP_ID + ".desktop")
    run("desktop-file-validate", desktop)
    run("appstreamcli", "validate", "--no-net", os.path.join(share, "metainfo", APP_ID + ".metainfo.xml"))
    entry = open(desktop).read()
    check("\nExec=quorvane\n" in entry and "\nCategories=Utility;Finance;\n" in entry, "desktop entry:\n" + entry)
    for size in (16, 22, 24, 32, 48, 64, 128, 256):
        icon = os.path.join(share, "icons", "hicolor", "%dx%d" % (size, size), "apps", APP_ID + ".png")
        head = open(icon, "rb").read(24) if os.path.isfile(icon) else b""
        check(head[:8] == b"\x89PNG\r\n\x1a\n" and struct.unpack(">II", head[16:24]) == (size, size),
              "%s is no %dx%d PNG" % (icon, size, size))

    # The binary from the root, against the machine's libraries.
    binary, home = os.path.join(root, "usr", "bin", "quorvane"), tempfile.mkdtemp(dir=scratch)
    env = dict(PATH=os.environ["PATH"], HOME=home, XDG_CONFIG_HOME=os.path.join(home, "config"), XDG_RUNTIME_DIR=home,
               QT_QPA_PLATFORM="offscreen", LANG="C.UTF-8", TZ="UTC", QUORVANE_SECRET_STORE="file")
    overview = run(binary, "--help", env=env)
    check(overview.startswith("Usage: quorvane [--demo] [COMMAND [ARGUMENTS]]\n"), "--help:\n" + overview)
    status = run(binary, "--demo", "status", env=env)
    check(status == "\U0001F40B $26.43\n", "--demo status: %r" % status)

    # The manual page holds every help page, line for line.
    with gzip.open(os.path.join(share, "man", "man1", "quorvane.1.gz"), "rt") as page:
        shown = subprocess.run(["groff", "-k", "-man", "-Tutf8", "-P-cbou"], input=page.read(), capture_output=True,
                               text=True, check=True).stdout
    shown = {line.strip() for line in shown.splitlines()}
    commands = sorted(set(re.findall(r"^  ([a-z-]+) ", overview.split("Commands:\n")[1].split("\n\n")[0], re.M)))
    check(len(commands) >= 10, "commands in the overview: %r" % commands)
    for command in [None] + commands:
        for line in (overview if command is None else run(binary, command, "--help", env=env)).splitlines():
            check(not line.strip() or line.strip() in shown,
                  "the manual page lacks %r of %s --help" % (line.strip(), command or "quorvane"))

    completions = {"bash": os.path.join(share, "bash-completion", "completions", "quorvane"),
                   "zsh": os.path.join(share, "zsh", "vendor-completions", "_quorvane"),
                   "fish": os.path.join(share, "fish", "vendor_completions.d", "quorvane.fish")}
    for shell, path in completions.items():
        body = open(path).read()
        for command in commands:
            check(re.search(r"\b%s\b" % re.escape(command), body), "%s completion lacks %s" % (shell, command))
    for line, expected in (("quorvane au", "auto-refresh autostart"), ("quorvane key ", "set remove --help"),
                           ("quorvane --demo interval ", "30 60 300 900 --help"), ("quorvane autostart o", "on off")):
        words = line.split(" ")
        answer = run("bash", "--norc", "-c", "source %s\nCOMP_WORDS=(%s)\nCOMP_CWORD=%d\n_quorvane\necho \"%s\"" % (
            completions["bash"], " ".join("'%s'" % word for word in words), len(words) - 1, "${COMPREPLY[*]}")).strip()
        check(answer == expected, "bash completes %r with %r, not %r" % (line, answer, expected))
    print("ok: %s: apt, lintian and the validators agree; it runs from its root; icons, manual, completions in place"
          % os.path.basename(package))


if __name__ == "__main__":
    scratch = tempfile.mkdtemp(prefix="quorvane-package-")
    try:
        test(scratch)
        print("1 passed, 0 failed")
    except Failure as failure:
        print("FAILED: %s" % failure, file=sys.stderr)
        print("0 passed, 1 failed")
        sys.exit(1)
    finally:
        shutil.rmtree(scratch, ignore_errors=True)
