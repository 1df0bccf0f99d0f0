"""KDE Plasma 5.27 on Wayland: KWin headless, kded5's StatusNotifierWatcher and plasmashell as the host, which draws
the icon and the tooltip, no label. Pointer and keys go through KWin's fake input (quorvane_kwin_fake_input)."""
import json
import os
import re
import shutil
import struct
import subprocess
import threading
import time
import zlib

from session_harness import APP_ID, COPY, HEIGHT, REFRESH, WIDTH, check, menu_path, wait_for

KEY_ESC, KEY_ENTER, KEY_HOME, KEY_RIGHT, KEY_DOWN = 1, 28, 102, 106, 108  # Linux key codes
# Every window, as a KWin script prints it to KWin's log after a marker.
WINDOWS_SCRIPT = """print("%s " + JSON.stringify(workspace.clientList().map(function (c) { var g = c.frameGeometry;
    return {appId: c.desktopFileName, pid: c.pid, x: g.x, y: g.y, width: g.width, height: g.height, active: c.active,
            popup: c.popupWindow, tooltip: c.tooltip, dock: c.dock}; })));"""


def png_from_bgra(path, width, height, stride, data):
    """Writes 32-bit pixels in memory order B, G, R, A (Qt's ARGB32 on x86) as an opaque RGB PNG."""
    rows = bytearray()
    for y in range(height):
        row, rgb = data[y * stride:y * stride + 4 * width], bytearray(3 * width)
        rgb[0::3], rgb[1::3], rgb[2::3] = row[2::4], row[1::4], row[0::4]
        rows += b"\0" + rgb
    chunks = [(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)), (b"IDAT", zlib.compress(bytes(rows))),
              (b"IEND", b"")]
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + b"".join(struct.pack(">I", len(body)) + kind + body + struct.pack(
            ">I", zlib.crc32(kind + body)) for kind, body in chunks))


class Plasma:
    """KWin, kded5 and plasmashell, started as a login would, one step after the other."""

    def __init__(self, session):
        self.session, self.scripts = session, 0
        session.start_system_bus()
        session.env.update(XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="KDE", KDE_FULL_SESSION="true",
                           KDE_SESSION_VERSION="5", KWIN_COMPOSE="O2", KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1",
                           KWIN_WAYLAND_NO_PERMISSION_CHECKS="1")
        # The packaged binary carries a file capability a user namespace refuses to exec.
        kwin = shutil.copy("/usr/bin/kwin_wayland", session.path("kwin_wayland"))
        session.start([kwin, "--virtual", "--width", str(WIDTH), "--height", str(HEIGHT), "--no-lockscreen",
                       "--socket", "quorvane-kde"], "kwin.log")
        wait_for("KWin's Wayland socket", lambda: os.path.exists(session.path("runtime", "quorvane-kde")), 30)
        session.env.update(WAYLAND_DISPLAY="quorvane-kde", QT_QPA_PLATFORM="wayland")
        wait_for("KWin on the bus", lambda: session.has_owner("org.kde.KWin"), 30)
        session.update_activation_environment()
        session.start(["kded5"], "kded.log")
        wait_for("kded5", lambda: session.has_owner("org.kde.kded5"), 30)
        self.watcher(True)
        # One command a line, each answered once KWin has it.
        self.input = session.start([session.args.fake_input], "fake-input.log", stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, text=True)
        check(self.input.stdout.readline() == "ready\n", "KWin refused the fake input device")
        self.start_shell()

    def send(self, *commands):
        for command in commands:
            self.input.stdin.write(command + "\n")
            self.input.stdin.flush()
            answer = self.input.stdout.readline()
            check(answer == "ok\n", "fake input %r: %r" % (command, answer))

    def keys(self, *codes):
        self.send(*("key %d" % code for code in codes))

    def call(self, *arguments):
        return self.session.run("busctl", "--user", "call", *arguments)

    def watcher(self, load):
        self.call("org.kde.kded5", "/kded", "org.kde.kded5", "loadModule" if load else "unloadModule", "s",
                  "statusnotifierwatcher")
        wait_for("the watcher to come or go", lambda: self.session.has_owner("org.kde.StatusNotifierWatcher") == load)

    def start_shell(self):
        self.shell = self.session.start(["plasmashell", "--no-respawn"], "plasmashell.log")
        host = "org.kde.StatusNotifierHost-%d" % self.shell.pid
        wait_for("Plasma's system tray", lambda: self.session.has_owner(host), 60)

    def windows(self):
        self.scripts += 1
        name, bus = "quorvane-%d" % self.scripts, ("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting")
        self.call(*bus, "loadScript", "ss", self.session.write(WINDOWS_SCRIPT % name, name + ".js"), name)
        self.call(*bus, "start")
        found = wait_for("the KWin script's answer", lambda: re.search(
            "js: " + name + r" (.*)\n", open(self.session.path("kwin.log"), errors="replace").read()))
        self.call(*bus, "unloadScript", "s", name)
        return json.loads(found.group(1))

    def menus(self):
        """Plasma's open menus, outermost first."""
        return [w for w in self.windows() if w["pid"] == self.shell.pid and w["popup"] and not w["tooltip"]]

    def capture(self, *area):
        """KWin's capture of the area, or of the workspace: (width, height, stride, BGRA bytes)."""
        read, write = os.pipe()
        chunks = []
        reader = threading.Thread(target=lambda: chunks.append(os.fdopen(read, "rb").read()))
        reader.start()
        try:
            answer = subprocess.run(["gdbus", "call", "--session", "-d", "org.kde.KWin.ScreenShot2", "-o",
                                     "/org/kde/KWin/ScreenShot2", "-m", "org.kde.KWin.ScreenShot2.Capture"
                                     + ("Area" if area else "Workspace"), *map(str, area), "{}", str(write)],
                                    env=self.session.env, pass_fds=(write,), capture_output=True, text=True, timeout=30)
        finally:
            os.close(write)
            reader.join()
        return (*[int(re.search(r"'%s': <uint32 (\d+)>" % key, answer.stdout).group(1))
                  for key in ("width", "height", "stride")], chunks[0])

    def tray_icon(self):
        """The middle of the coloured icon (ours: the rest are grey) in Plasma's tray; the pointer away, or it fades."""
        self.send("move %d %d" % (WIDTH - 2, HEIGHT // 3))
        tray = json.loads(self.session.busctl(
            "call", "org.kde.plasmashell", "/PlasmaShell", "org.kde.PlasmaShell", "evaluateScript", "s",
            "panels()[0].widgets().forEach(function (w) {"
            " if (w.type == 'org.kde.plasma.systemtray') print(JSON.stringify(w.geometry)); })")["data"][0])
        panel = [w for w in self.windows() if w["dock"]][0]
        left, top = panel["x"] + int(tray["x"]), panel["y"] + int(tray["y"])
        width, height, stride, data = self.capture(left, top, int(tray["width"]), int(tray["height"]))
        pixels = [(x, y, data[y * stride + 4 * x:y * stride + 4 * x + 3]) for y in range(height) for x in range(width)]
        coloured = [(x, y) for x, y, pixel in pixels if max(pixel) - min(pixel) > 60]
        xs, ys = [x for x, _ in coloured], [y for _, y in coloured]
        return coloured and (left + (min(xs) + max(xs)) // 2, top + (min(ys) + max(ys)) // 2)

    def choose(self, service, icon, label):
        """Right-clicks the icon and walks Plasma's menu with the keys to the item: opens a submenu, takes the rest."""
        path = menu_path(self.session.menu_layout(service), label)
        check(path, "no %r among the items the keyboard reaches in the item's menu" % label)
        self.send("move %d %d" % icon, "click right")
        wait_for("Plasma's menu", self.menus)
        for depth, (index, _, value) in enumerate(path):
            if value.get("children-display") != "submenu":
                self.keys(KEY_HOME, *[KEY_DOWN] * index, KEY_ENTER)
                wait_for("the menu to close", lambda: not self.menus())
                return
            self.keys(KEY_HOME, *[KEY_DOWN] * index, KEY_RIGHT)
            wait_for("the submenu %r" % label, lambda: len(self.menus()) == depth + 2)
            time.sleep(0.5)
            check(len(self.menus()) == depth + 2, "Plasma closed the submenu %r just after it opened" % label)


def test(session):
    plasma = Plasma(session)
    session.endpoint()
    app, service = session.start_app()
    session.wait_for_label(service, " $12.34")
    app_windows = lambda: [w for w in plasma.windows() if w["appId"] == APP_ID]  # noqa: E731
    check(not app_windows(), "the app opened a window beside its item: %r" % app_windows())
    x, y = icon = wait_for("our icon in Plasma's tray", plasma.tray_icon)
    # Over the icon once it has slid into place, Plasma's tooltip shows the title.
    plasma.send("move %d %d" % icon)
    wait_for("Plasma's tooltip over the icon", lambda: [w for w in plasma.windows() if w["tooltip"] and w["x"] <= x
                                                       <= w["x"] + w["width"] and w["y"] + w["height"] <= y - 10], 10)
    png_from_bgra(session.shot("kde-tray.png"), *plasma.capture(0, HEIGHT - 200, 640, 200))
    # plasmashell 5.27 sometimes crashes (KCrash, "trying to show an empty dialog") when a context menu
    # opens while the icon's tooltip is up: the pointer leaves and the tooltip goes first.
    plasma.send("move %d %d" % (WIDTH - 2, HEIGHT // 3))
    wait_for("the tooltip to go", lambda: not [w for w in plasma.windows() if w["tooltip"]], 10)

    # Plasma fills a submenu as it first opens, after placing it by its empty size, for every app: the first
    # opening may run off the screen. Refreshes rebuild the menu; the items keep their ids, so Plasma keeps the
    # submenu it filled and places it whole.
    for step in ("first", "after a refresh"):
        if step != "first":
            session.refresh(lambda: plasma.choose(service, icon, REFRESH))
        plasma.choose(service, icon, "Settings")
        inner = plasma.menus()[-1]
        png_from_bgra(session.shot("kde-menu.png"), *plasma.capture())
        plasma.keys(KEY_ESC, KEY_ESC)
        wait_for("Plasma's menus to close", lambda: not plasma.menus())
    check(inner["y"] >= 0 and inner["y"] + inner["height"] <= HEIGHT and inner["x"] + inner["width"] <= WIDTH,
          "the Settings submenu runs off the %dx%d screen: %r" % (WIDTH, HEIGHT, inner))
    plasma.choose(service, icon, "5 min")
    session.check_interval_stored()
    plasma.choose(service, icon, COPY)
    session.check_summary_copied(lambda: session.run("timeout", "2", "wl-paste", "--no-newline"))

    plasma.send("move %d %d" % icon, "click left")
    shown = wait_for("the dashboard", app_windows)
    window = shown[0]
    check(len(shown) == 1 and 0 <= window["x"] and window["x"] + window["width"] <= WIDTH and 0 <= window["y"]
          and window["y"] + window["height"] <= HEIGHT, "the dashboard is not one window on the screen: %r" % shown)
    wait_for("the dashboard in front", lambda: app_windows()[0]["active"], 5)
    plasma.keys(KEY_ESC)
    wait_for("the dashboard to close", lambda: not app_windows())
    print("ok: the icon in Plasma's tray at %r; Settings at %r; the dashboard at %r" % (icon, inner, window))
    session.check_memory_at_rest(app.pid)

    # The dashboard is closed by now: any window of the app is its fallback.
    session.check_host_leaves(lambda: plasma.watcher(False), lambda: plasma.watcher(True), app_windows)
    wait_for("the icon back in the tray", plasma.tray_icon, 10)
    session.check_host_leaves(lambda: session.stop(plasma.shell), plasma.start_shell, app_windows)
    wait_for("the icon back in the tray", plasma.tray_icon, 10)
