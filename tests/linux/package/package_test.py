#!/usr/bin/env python3
"""The Debian package, installed as a user would find it.

    package_test.py BUILD_DIR

Makes the package from BUILD_DIR with cpack, unpacks it into a throwaway
root (no change to the machine: dpkg-deb -x, then the binary run from
there against the machine's libraries), and checks that

- apt would install it here (a simulation, which resolves its Depends);
- lintian reports no error, desktop-file-validate and appstreamcli pass;
- `quorvane --help` and `quorvane --demo status` work from the root;
- the desktop entry, the icons at every hicolor size, the metainfo, the
  manual page (holding every --help page) and the completions for bash,
  zsh and fish are where a desktop and a shell look for them;
- bash completes the commands and their words.
"""
import glob
import gzip
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile

ICON_SIZES = [16, 22, 24, 32, 48, 64, 128, 256]
APP_ID = "app.quorvane.Quorvane"


class Failure(Exception):
    pass


def check(condition, message):
    if not condition:
        raise Failure(message)


def run(*command, env=None, check_status=True):
    result = subprocess.run(command, capture_output=True, text=True, env=env, timeout=300)
    if check_status and result.returncode != 0:
        raise Failure("%s exited with %d:\n%s%s" % (" ".join(command), result.returncode, result.stdout,
                                                    result.stderr))
    return result


def png_size(path):
    with open(path, "rb") as image:
        head = image.read(24)
    check(head[:8] == b"\x89PNG\r\n\x1a\n", "%s is no PNG" % path)
    return struct.unpack(">II", head[16:24])


def main():
    build = sys.argv[1]
    scratch = tempfile.mkdtemp(prefix="quorvane-package-")
    try:
        run("cpack", "-G", "DEB", "-B", scratch, "--config", os.path.join(build, "CPackConfig.cmake"))
        packages = glob.glob(os.path.join(scratch, "quorvane_*_amd64.deb")) or glob.glob(
            os.path.join(scratch, "quorvane_*.deb"))
        check(len(packages) == 1, "cpack made %r" % os.listdir(scratch))
        package = packages[0]
        check(re.fullmatch(r"quorvane_\d+\.\d+\.\d+_[a-z0-9]+\.deb", os.path.basename(package)),
              "package name %s" % os.path.basename(package))

        simulated = run("apt-get", "install", "--simulate", "--no-install-recommends", package)
        check("Inst quorvane" in simulated.stdout, "apt would not install it:\n" + simulated.stdout)

        lintian = run("lintian", "--tag-display-limit", "0", package, check_status=False)
        errors = [line for line in lintian.stdout.splitlines() if line.startswith("E:")]
        check(not errors, "lintian:\n" + "\n".join(errors))

        # GNOME users get the extension that shows the item; a desktop with a host of its own is not sent GNOME.
        recommends = [field.strip() for field in run("dpkg-deb", "-f", package, "Recommends").stdout.split(",")]
        check("wl-clipboard" in recommends and
              "gnome-shell-extension-appindicator | plasma-workspace | xfce4-panel | waybar | lxqt-panel | "
              "mate-panel | cinnamon | budgie-desktop" in recommends, "Recommends: %r" % recommends)

        root = os.path.join(scratch, "root")
        run("dpkg-deb", "-x", package, root)
        usr = os.path.join(root, "usr")
        desktop = os.path.join(usr, "share", "applications", APP_ID + ".desktop")
        metainfo = os.path.join(usr, "share", "metainfo", APP_ID + ".metainfo.xml")
        run("desktop-file-validate", desktop)
        run("appstreamcli", "validate", "--no-net", metainfo)
        with open(desktop) as entry:
            text = entry.read()
        check("\nExec=quorvane\n" in text and "\nCategories=Utility;Finance;\n" in text, "desktop entry:\n" + text)

        for size in ICON_SIZES:
            icon = os.path.join(usr, "share", "icons", "hicolor", "%dx%d" % (size, size), "apps", APP_ID + ".png")
            check(os.path.isfile(icon), "no icon " + icon)
            check(png_size(icon) == (size, size), "%s is %r" % (icon, png_size(icon)))

        binary = os.path.join(usr, "bin", "quorvane")
        home = os.path.join(scratch, "home")
        os.makedirs(home)
        env = {"PATH": os.environ["PATH"], "HOME": home, "XDG_CONFIG_HOME": os.path.join(home, "config"),
               "XDG_RUNTIME_DIR": home, "QT_QPA_PLATFORM": "offscreen", "LANG": "C.UTF-8", "TZ": "UTC",
               "QUORVANE_SECRET_STORE": "file"}
        overview = run(binary, "--help", env=env).stdout
        check(overview.startswith("Usage: quorvane [--demo] [COMMAND [ARGUMENTS]]\n"), "--help:\n" + overview)
        status = run(binary, "--demo", "status", env=env).stdout
        check(status == "\U0001F40B $26.43\n", "--demo status: %r" % status)

        # The manual page holds every help page, line for line.
        manual = os.path.join(usr, "share", "man", "man1", "quorvane.1.gz")
        with gzip.open(manual, "rb") as page:
            roff = page.read()
        shown = subprocess.run(["groff", "-k", "-man", "-Tutf8", "-P-cbou"], input=roff, capture_output=True,
                               check=True).stdout.decode()
        shown_lines = {line.strip() for line in shown.splitlines()}
        commands = re.findall(r"^  ([a-z-]+) ", overview.split("Commands:\n")[1].split("\n\n")[0], re.M)
        check(len(commands) >= 10, "commands in the overview: %r" % commands)
        for command in [None] + sorted(set(commands)):
            help_text = overview if command is None else run(binary, command, "--help", env=env).stdout
            for line in help_text.splitlines():
                check(not line.strip() or line.strip() in shown_lines,
                      "the manual page lacks %r of %s --help" % (line.strip(), command or "quorvane"))

        completions = {
            "bash": os.path.join(usr, "share", "bash-completion", "completions", "quorvane"),
            "zsh": os.path.join(usr, "share", "zsh", "vendor-completions", "_quorvane"),
            "fish": os.path.join(usr, "share", "fish", "vendor_completions.d", "quorvane.fish"),
        }
        for shell, path in completions.items():
            with open(path) as script:
                body = script.read()
            for command in set(commands):
                check(re.search(r"\b%s\b" % re.escape(command), body), "%s completion lacks %s" % (shell, command))
        cases = {"quorvane au": "auto-refresh autostart", "quorvane key ": "set remove --help",
                 "quorvane --demo interval ": "30 60 300 900 --help", "quorvane autostart o": "on off"}
        for line, expected in cases.items():
            words = line.split(" ")
            script = ("source %s\nCOMP_WORDS=(%s)\nCOMP_CWORD=%d\n_quorvane\necho \"${COMPREPLY[*]}\"\n"
                      % (completions["bash"], " ".join("'%s'" % w for w in words), len(words) - 1))
            answer = run("bash", "--norc", "-c", script).stdout.strip()
            check(answer == expected, "bash completes %r with %r, not %r" % (line, answer, expected))
        print("ok: %s: apt, lintian, desktop-file-validate and appstreamcli agree; --help and --demo status "
              "run from the unpacked root; %d icons, the manual page and three completions are in place"
              % (os.path.basename(package), len(ICON_SIZES)))
        print("1 passed, 0 failed")
        return 0
    except Failure as failure:
        print("FAILED: %s" % failure, file=sys.stderr)
        print("0 passed, 1 failed")
        return 1
    finally:
        shutil.rmtree(scratch, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
