"""Quorvane in KDE Plasma 5.27 on Wayland, as a user meets it.

KWin runs headless (--virtual), kded5 serves the StatusNotifierWatcher and
plasmashell is the host. The test finds the item's icon in Plasma's system
tray, hovers and clicks it, and walks the menu Plasma draws from our dbusmenu
with the keyboard, through KWin's fake-input protocol
(quorvane_kwin_fake_input). KWin tells where windows are (a KWin script) and
takes the screenshots (ScreenShot2). The calls Plasma makes to the item are
read from dbus-monitor.

Each group of checks runs even when an earlier one failed; the test fails
at the end if any did. Standard library only.
"""
import json
import os
import re
import shutil
import struct
import subprocess
import threading
import time
import zlib

from session_harness import (APP_ID, HEIGHT, KEY, WIDTH, BusMonitor, Parts, balance_endpoint, check,
                             check_memory_at_rest, comparable, menu_path, model_lines, values,
                             wait_for)

# Linux key codes, as the fake keyboard sends them.
KEY_ESC, KEY_ENTER, KEY_HOME, KEY_RIGHT, KEY_DOWN = 1, 28, 102, 106, 108



def png_from_bgra(path, width, height, stride, data):
    """Writes 32-bit pixels in memory order B, G, R, A (Qt's ARGB32 on x86) as an opaque RGB PNG."""
    rows = bytearray()
    for y in range(height):
        row = data[y * stride:y * stride + 4 * width]
        rgb = bytearray(3 * width)
        rgb[0::3], rgb[1::3], rgb[2::3] = row[2::4], row[1::4], row[0::4]
        rows += b"\0" + rgb

    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
                  + chunk(b"IDAT", zlib.compress(bytes(rows), 6)) + chunk(b"IEND", b""))

class FakeInput:
    """quorvane_kwin_fake_input: one command a line, each answered once KWin has it."""

    def __init__(self, session):
        self.process = session.start([session.binary("quorvane_kwin_fake_input")], "fake-input.log",
                                     stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        check(self.process.stdout.readline() == "ready\n", "KWin refused the fake input device")

    def send(self, *commands):
        for command in commands:
            self.process.stdin.write(command + "\n")
            self.process.stdin.flush()
            answer = self.process.stdout.readline()
            check(answer == "ok\n", "fake input %r: %r" % (command, answer))

    def keys(self, *codes):
        self.send(*("key %d" % code for code in codes))


class Plasma:
    """KWin, kded5 and plasmashell, started as a login would, one step after the other."""

    def __init__(self, session):
        self.session = session
        self.scripts = 0
        env = session.env
        session.start_system_bus()
        env.update(XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="KDE", KDE_FULL_SESSION="true",
                   KDE_SESSION_VERSION="5", KWIN_COMPOSE="O2", KWIN_SCREENSHOT_NO_PERMISSION_CHECKS="1",
                   KWIN_WAYLAND_NO_PERMISSION_CHECKS="1")
        # The packaged binary carries a file capability a user namespace refuses to exec.
        kwin = shutil.copy("/usr/bin/kwin_wayland", session.path("kwin_wayland"))
        self.kwin = session.start([kwin, "--virtual", "--width", str(WIDTH), "--height", str(HEIGHT),
                                   "--no-lockscreen", "--socket", "quorvane-kde"], "kwin.log")
        wait_for("KWin's Wayland socket", lambda: os.path.exists(session.path("runtime", "quorvane-kde")), 30)
        env.update(WAYLAND_DISPLAY="quorvane-kde", QT_QPA_PLATFORM="wayland")
        wait_for("KWin on the bus", lambda: session.has_owner("org.kde.KWin"), 30)
        session.update_activation_environment(("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DBUS_SYSTEM_BUS_ADDRESS",
                                               "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_SESSION_TYPE",
                                               "XDG_CURRENT_DESKTOP", "KDE_FULL_SESSION", "KDE_SESSION_VERSION",
                                               "HOME", "LANG", "TZ"))
        session.start(["kded5"], "kded.log")
        wait_for("kded5", lambda: session.has_owner("org.kde.kded5"), 30)
        self.watcher(True)
        self.input = FakeInput(session)
        self.shell = None
        self.start_shell()

    def call(self, *arguments):
        return self.session.run("busctl", "--user", "call", *arguments)

    def watcher(self, load):
        self.call("org.kde.kded5", "/kded", "org.kde.kded5", "loadModule" if load else "unloadModule", "s",
                  "statusnotifierwatcher")
        wait_for("the watcher to %s" % ("come" if load else "go"),
                 lambda: self.session.has_owner("org.kde.StatusNotifierWatcher") == load)

    def start_shell(self):
        self.shell = self.session.start(["plasmashell", "--no-respawn"], "plasmashell.log")
        host = "org.kde.StatusNotifierHost-%d" % self.shell.pid
        wait_for("Plasma's system tray", lambda: self.session.has_owner(host), 60)

    def script(self, source):
        """Runs JavaScript in KWin; what it prints with the marker comes back."""
        self.scripts += 1
        name = "quorvane-%d" % self.scripts
        path = self.session.path(name + ".js")
        with open(path, "w") as out:
            out.write("print(%s + JSON.stringify((function () { %s })()));\n" % (json.dumps(name + " "), source))
        bus = ("org.kde.KWin", "/Scripting", "org.kde.kwin.Scripting")
        self.call(*bus, "loadScript", "ss", path, name)
        self.call(*bus, "start")
        found = wait_for("the KWin script's answer", lambda: re.search(
            "js: " + name + r" (.*)\n", open(self.session.path("kwin.log"), errors="replace").read()))
        self.call(*bus, "unloadScript", "s", name)
        return json.loads(found.group(1))

    def windows(self):
        return self.script("""var found = [], all = workspace.clientList();
            for (var i = 0; i < all.length; i++) {
                var c = all[i], g = c.frameGeometry;
                found.push({appId: c.desktopFileName, pid: c.pid, x: g.x, y: g.y, width: g.width, height: g.height,
                            active: c.active, popup: c.popupWindow, tooltip: c.tooltip, dock: c.dock,
                            frame: !c.noBorder});
            }
            return found;""")

    def menus(self):
        """Plasma's open menus, outermost first."""
        return [w for w in self.windows() if w["pid"] == self.shell.pid and w["popup"] and not w["tooltip"]]

    def capture(self, method, *arguments):
        """A ScreenShot2 capture: (width, height, stride, BGRA bytes)."""
        read, write = os.pipe()
        chunks = []
        reader = threading.Thread(target=lambda: chunks.append(os.fdopen(read, "rb").read()))
        reader.start()
        try:
            answer = subprocess.run(["gdbus", "call", "--session", "-d", "org.kde.KWin.ScreenShot2", "-o",
                                     "/org/kde/KWin/ScreenShot2", "-m", "org.kde.KWin.ScreenShot2." + method,
                                     *arguments, "{}", str(write)], env=self.session.env, pass_fds=(write,),
                                    capture_output=True, text=True, timeout=30).stdout
        finally:
            os.close(write)
            reader.join()
        value = {key: int(re.search(r"'%s': <uint32 (\d+)>" % key, answer).group(1))
                 for key in ("width", "height", "stride")}
        return value["width"], value["height"], value["stride"], chunks[0]

    def screenshot(self, name, area=None):
        image = self.capture("CaptureArea", *map(str, area)) if area else self.capture("CaptureWorkspace")
        png_from_bgra(os.path.join(self.session.out, name), *image)

    def tray_icon(self):
        """The middle of the coloured icon in Plasma's system tray (ours: the others are monochrome).
        The pointer moves away first: Plasma fades the icon under it."""
        self.input.send("move %d %d" % (WIDTH - 2, HEIGHT // 3))
        answer = self.session.busctl("call", "org.kde.plasmashell", "/PlasmaShell", "org.kde.PlasmaShell",
                                     "evaluateScript", "s", "panels()[0].widgets().forEach(function (w) {"
                                     " if (w.type == 'org.kde.plasma.systemtray') print(JSON.stringify(w.geometry)); })")
        tray = json.loads(answer["data"][0])
        panel = [w for w in self.windows() if w["dock"]][0]
        left, top = panel["x"] + int(tray["x"]), panel["y"] + int(tray["y"])
        width, height, stride, data = self.capture("CaptureArea", str(left), str(top), str(int(tray["width"])),
                                                   str(int(tray["height"])))
        coloured = [(x, y) for y in range(height) for x in range(width)
                    if max(data[y * stride + 4 * x:y * stride + 4 * x + 3])
                    - min(data[y * stride + 4 * x:y * stride + 4 * x + 3]) > 60]
        if not coloured:
            return None
        xs, ys = [x for x, _ in coloured], [y for _, y in coloured]
        return left + (min(xs) + max(xs)) // 2, top + (min(ys) + max(ys)) // 2

    def choose(self, layout, label):
        """Walks Plasma's open menu with the keyboard to the item labelled so: opens it if it is a submenu,
        takes it otherwise."""
        path = menu_path(layout, label)
        check(path, "no %r among the items the keyboard reaches in the item's menu" % label)
        for depth, (index, node) in enumerate(path):
            self.input.keys(KEY_HOME, *[KEY_DOWN] * index)
            if values(node).get("children-display") != "submenu":
                self.input.keys(KEY_ENTER)
                return
            self.input.keys(KEY_RIGHT)
            wait_for("the submenu %r" % label, lambda: len(self.menus()) == depth + 2)
            time.sleep(0.5)
            check(len(self.menus()) == depth + 2, "Plasma closed the submenu %r just after it opened" % label)

    def close_menus(self):
        for _ in range(4):
            if not self.menus():
                return
            self.input.keys(KEY_ESC)
            time.sleep(0.2)
        check(not self.menus(), "Plasma's menu does not close")


def test(session):
    plasma = Plasma(session)
    monitor = BusMonitor(session)
    parts = Parts(recover=plasma.close_menus)
    with balance_endpoint(session) as server:
        app = session.start([session.binary("quorvane")], "app.log")
        service = session.wait_for_item(app)
        wait_for("the first balance", lambda: session.item_property(service, "XAyatanaLabel") == " $12.34")
        menu = lambda: session.menu_layout(service)  # noqa: E731
        app_windows = lambda: [w for w in plasma.windows() if w["appId"] == APP_ID]  # noqa: E731
        state = {}

        def tray():
            title = session.quorvane("status").rstrip("\n")
            tooltip = session.item_property(service, "ToolTip")
            check(tooltip == ["", [], "Quorvane", title], "tooltip %r is not the title %r" % (tooltip, title))
            check(not app_windows(), "the app opened a window beside its item: %r" % app_windows())
            state["icon"] = wait_for("our icon in Plasma's tray", plasma.tray_icon)
            x, y = state["icon"]
            plasma.input.send("move %d %d" % (x, y))
            # Over the icon once it has slid into place.
            wait_for("Plasma's tooltip over the icon", lambda: [w for w in plasma.windows() if w["tooltip"]
                                                               and w["y"] + w["height"] <= y - 10
                                                               and w["x"] <= x <= w["x"] + w["width"]], 10)
            plasma.screenshot("kde-tray.png", (0, HEIGHT - 200, 640, 200))
            print("ok: the icon is in Plasma's tray at %r, its tooltip %r over it" % (state["icon"], title))
            # plasmashell 5.27 sometimes crashes (KCrash, "trying to show an empty dialog") when a
            # context menu opens while the icon's tooltip is up: the pointer leaves and the tooltip goes first.
            plasma.input.send("move %d %d" % (WIDTH - 2, HEIGHT // 3))
            wait_for("the tooltip to go", lambda: not [w for w in plasma.windows() if w["tooltip"]], 10)

        def context_menu():
            plasma.input.send("move %d %d" % state["icon"], "click right")
            opened = wait_for("Plasma's menu", plasma.menus)[0]
            check(opened["y"] >= 0 and opened["y"] + opened["height"] <= HEIGHT, "the menu is off screen: %r" % opened)
            check(["0", "opened", "", "0"] in monitor.calls("Event"), "Plasma did not announce the menu opened")
            print("ok: the right click opened Plasma's menu at %r" % opened)
            # Plasma fills a submenu as it first opens, after placing it by its
            # empty size, for every app: the first opening may run off the screen.
            plasma.choose(menu(), "Settings")
            print("ok: the Settings submenu opened first at %r" % plasma.menus()[-1])
            plasma.close_menus()

        def settings_after_refresh():
            # Refreshes rebuild the menu; the items keep their ids, so Plasma
            # keeps the submenu it filled and places it whole.
            plasma.input.send("move %d %d" % state["icon"], "click right")
            wait_for("Plasma's menu", plasma.menus)
            plasma.choose(menu(), "Settings")
            inner = plasma.menus()[-1]
            plasma.screenshot("kde-menu.png")
            check(inner["y"] >= 0 and inner["y"] + inner["height"] <= HEIGHT and inner["x"] + inner["width"] <= WIDTH,
                  "the Settings submenu runs off the %dx%d screen: %r" % (WIDTH, HEIGHT, inner))
            print("ok: after a refresh the Settings submenu fits the screen at %r" % inner)
            plasma.close_menus()

        def choose(label):
            plasma.input.send("move %d %d" % state["icon"], "click right")
            wait_for("Plasma's menu", plasma.menus)
            plasma.choose(menu(), label)
            wait_for("the menu to close", lambda: not plasma.menus())

        def refresh_now():
            before = server.requests
            choose("\U0001F504 Refresh Now")
            wait_for("the refresh", lambda: server.requests > before)
            time.sleep(1.0)
            check(server.requests == before + 1, "Refresh Now made %d requests" % (server.requests - before))
            print("ok: Refresh Now in Plasma's menu made one request")

        def interval():
            choose("5 min")
            stored = lambda: any(line.strip() == "Refresh Interval: 5 min"  # noqa: E731
                                 for line in model_lines(json.loads(session.quorvane("menu", "--json"))["menu"]))
            wait_for("the interval stored", stored, 5)
            chosen = values(menu_path(menu(), "5 min")[-1][1]).get("toggle-state")
            check(chosen == 1, "5 min is not the chosen one in the item's menu: toggle-state %r" % chosen)
            print("ok: 5 min in Plasma's menu stored the interval")

        def copy_summary():
            choose("\U0001F4CB Copy Summary")

            def pasted():
                try:
                    return session.run("timeout", "2", "wl-paste", "--no-newline")
                except subprocess.CalledProcessError:
                    return ""  # an empty clipboard: KWin never answers
            copied = wait_for("the summary on the clipboard",
                              lambda: (lambda text: "USD remaining" in text and text)(pasted()), 8)
            summary = session.quorvane("summary").rstrip("\n")
            check(comparable(copied) == comparable(summary), "clipboard %r, summary %r" % (copied, summary))
            print("ok: Copy Summary put the summary on the clipboard")

        def dashboard():
            plasma.input.send("move %d %d" % state["icon"], "click left")
            shown = wait_for("the dashboard", app_windows)
            check(len(shown) == 1, "one dashboard: %r" % shown)
            window = shown[0]
            wait_for("the dashboard in front", lambda: app_windows()[0]["active"], 5)
            check(0 <= window["x"] and window["x"] + window["width"] <= WIDTH and 0 <= window["y"]
                  and window["y"] + window["height"] <= HEIGHT, "the dashboard is off screen: %r" % window)
            tokens = monitor.calls("ProvideXdgActivationToken")
            print("ok: the primary click opened the dashboard, active, at %d,%d %dx%d; Plasma offered %d activation "
                  "token(s) %r" % (window["x"], window["y"], window["width"], window["height"], len(tokens), tokens[-1:]))
            plasma.input.keys(KEY_ESC)
            wait_for("the dashboard to close", lambda: not app_windows())

        def fallback_window():
            # The dashboard is closed by now: any window of the app is its fallback.
            return app_windows()

        def host_leaves(name, leave, come_back):
            check(not fallback_window(), "a fallback window while Plasma shows the item")
            left = time.monotonic()
            leave()
            shown = wait_for("the fallback window once %s" % name, fallback_window, 3.0 + 3.0)
            print("ok: %s: the fallback window came after %.1f s at %r" % (name, time.monotonic() - left, shown[0]))
            come_back()
            wait_for("the fallback window to go", lambda: not fallback_window(), 10)
            state["icon"] = wait_for("the icon back in the tray", plasma.tray_icon, 10)
            print("ok: %s: back again, the fallback window went" % name)

        def watcher_leaves():
            host_leaves("the watcher unloaded", lambda: plasma.watcher(False), lambda: plasma.watcher(True))

        def plasma_leaves():
            host_leaves("plasmashell ended", lambda: session.stop(plasma.shell), plasma.start_shell)

        for name, body in (("tray", tray), ("menu", context_menu), ("refresh", refresh_now),
                           ("settings", settings_after_refresh), ("interval", interval), ("copy", copy_summary), ("dashboard", dashboard),
                           ("memory", lambda: check_memory_at_rest(session, app.pid)), ("watcher leaves", watcher_leaves),
                           ("plasma leaves", plasma_leaves)):
            parts.run(name, body)

        # What Plasma asked of the menu, for the record.
        names = [name for name, _ in monitor.messages()]
        print("plasma: %s" % ", ".join("%s %d" % (n, names.count(n)) for n in sorted(set(names))))
        for log in ("app.log", "monitor.log"):
            check(KEY not in open(session.path(log), errors="replace").read(), "the API key is in %s" % log)
        parts.finish()
