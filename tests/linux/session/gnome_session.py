"""GNOME Shell 43 on Wayland, headless, with the AppIndicator extension as
the host, driven as a user drives it: the item's label in the top bar, a
click that opens its menu, Refresh Now, an interval and Copy Summary chosen
in that menu, the dashboard, the fallback window while the host is away,
the low-balance notice in the shell's message tray and its click, resident
memory at rest, and screenshots of the top bar, the menu and the notice.

A small extension of the test's own (gnome-test-helper@quorvane) turns on
the shell's unsafe mode, so Eval and Screenshot answer, and offers a virtual
pointer and what the top bar and its menus show.
"""
import json
import os
import shutil
import time

from session_harness import (APP_ID, WHALE, Failure, Parts, balance_endpoint, check, check_memory_at_rest,
                             comparable, wait_for)

HOST = "ubuntu-appindicators@ubuntu.com"
HELPER = "gnome-test-helper@quorvane"
# The shell's PopupMenu.Ornament: none, and the dot of a radio item.
NONE, DOT = 0, 1


def write_settings(session, groups):
    """GSettings in a keyfile of the scratch home (GSETTINGS_BACKEND=keyfile)."""
    folder = os.path.join(session.env["XDG_CONFIG_HOME"], "glib-2.0", "settings")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "keyfile"), "w") as out:
        for group, values in groups.items():
            out.write("[%s]\n" % group + "".join("%s=%s\n" % item for item in values.items()) + "\n")
    session.env["GSETTINGS_BACKEND"] = "keyfile"


class Shell:
    def __init__(self, session):
        self.session = session
        session.start_system_bus()
        extensions = os.path.join(session.env["HOME"], ".local", "share", "gnome-shell", "extensions")
        shutil.copytree(os.path.join(os.path.dirname(os.path.abspath(__file__)), HELPER),
                        os.path.join(extensions, HELPER))
        write_settings(session, {
            "org/gnome/shell": {"disable-user-extensions": "false", "welcome-dialog-last-shown-version": "'99'",
                                "enabled-extensions": "['%s', '%s']" % (HOST, HELPER)},
            "org/gnome/desktop/interface": {"enable-animations": "false"}})
        session.env.update(XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="GNOME")
        session.update_activation_environment(["HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "LANG", "TZ",
                                               "DBUS_SYSTEM_BUS_ADDRESS", "GSETTINGS_BACKEND",
                                               "XDG_SESSION_TYPE", "XDG_CURRENT_DESKTOP"])
        env = dict(session.env, LIBGL_ALWAYS_SOFTWARE="1", MUTTER_DEBUG_DUMMY_MODE_SPECS="1280x800",
                   G_MESSAGES_DEBUG="Ubuntu-AppIndicators")
        self.process = session.start(["gnome-shell", "--wayland", "--headless", "--virtual-monitor", "1280x800",
                                      "--no-x11"], "gnome-shell.log", env=env)
        session.wait_for_wayland("the shell's", 60)
        session.update_activation_environment(["WAYLAND_DISPLAY"])
        # Eval answers once the helper extension has turned on unsafe mode.
        wait_for("the shell to finish starting", lambda: self.eval(
            "!imports.ui.main.layoutManager._startingUp && !!global.quorvaneTest"), 60)
        # The shell starts in the overview; the test wants the desktop.
        self.eval("imports.ui.main.overview.hide(); true")
        wait_for("the overview to close", lambda: self.eval("!imports.ui.main.overview.visible"))
        wait_for("the AppIndicator extension's watcher", lambda: session.has_owner("org.kde.StatusNotifierWatcher"))

    def eval(self, code):
        check(self.process.poll() is None, "gnome-shell exited:\n" + self.log()[-2000:])
        ok, result = self.session.busctl("call", "org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell",
                                         "Eval", "s", code)["data"]
        if not ok:
            raise ValueError("Eval failed: %s" % result)
        return json.loads(result) if result else None

    def helper(self, call):
        return self.eval("global.quorvaneTest." + call)

    def log(self):
        with open(self.session.path("gnome-shell.log"), errors="replace") as text:
            return text.read()

    def indicator(self, label):
        """The visible top-bar item from the AppIndicator extension with this label."""
        found = [item for item in self.helper("indicators()") if item["visible"] and item["label"] == label]
        return found[0] if len(found) == 1 else None

    def click(self, rect, count=1):
        x, y, width, height = rect
        self.helper("move(%d, %d)" % (x + width // 2, y + height // 2))
        # A double click's presses go in one call: the host counts them within 400 ms.
        self.helper("click(%d, %d, 1, %d)" % (x + width // 2, y + height // 2, count))

    def open_menu(self, item):
        if not self.helper("menu(%s)" % json.dumps(item["key"])):
            self.click(item["rect"])
        return wait_for("the item's menu to open", lambda: self.helper("menu(%s)" % json.dumps(item["key"])))

    def choose(self, item, label):
        """Clicks a menu entry by its label, opening the submenus it lies in."""
        menu = self.open_menu(item)
        for _ in range(3):
            entries = [entry for entry in menu["items"] if entry["label"] == label]
            if entries and entries[0]["shown"]:
                self.click(entries[0]["rect"])
                return
            # Open the first closed submenu that comes before the entry.
            parents = [entry for entry in menu["items"] if "open" in entry and not entry["open"] and entry["shown"]
                       and entries and menu["items"].index(entry) < menu["items"].index(entries[0])]
            check(parents, "no entry %r shown in the menu: %r" % (label, [e["label"] for e in menu["items"]]))
            self.click(parents[-1]["rect"])
            time.sleep(0.3)
            menu = self.helper("menu(%s)" % json.dumps(item["key"]))
        raise Failure("could not reach the entry %r" % label)

    def app_windows(self, pid):
        return [window for window in self.helper("windows()") if window["pid"] == pid and window["shown"]]

    def screenshot(self, name, rect):
        path = os.path.join(self.session.out, name)
        x, y, width, height = rect
        done = self.session.busctl("call", "org.gnome.Shell", "/org/gnome/Shell/Screenshot",
                                   "org.gnome.Shell.Screenshot", "ScreenshotArea", "iiiibs",
                                   str(x), str(y), str(width), str(height), "false", path)["data"]
        check(done[0] and os.path.getsize(path) > 0, "no screenshot %s: %r" % (name, done))
        return path


def test(session):
    shell = Shell(session)
    parts = Parts()
    with balance_endpoint(session) as server:
        app = session.start([session.binary("quorvane")], "app.log", env=dict(session.env, QT_QPA_PLATFORM="wayland"))
        title = session.quorvane("status").rstrip("\n")
        check(title == WHALE + " $12.34", "the command line's title is %r" % title)
        label = title[len(WHALE):]
        state = {}

        def label_in_top_bar():
            item = wait_for("the item with label %r in the top bar" % label, lambda: shell.indicator(label), 30)
            # Held for two seconds: a host that drops the item drops it within that.
            time.sleep(2.0)
            dropped = [line for line in shell.log().splitlines()
                       if "While initalizing proxy" in line or "Impossible to get basic properties" in line]
            check(not dropped, "the host failed to read the item:\n" + "\n".join(dropped))
            state["item"] = shell.indicator(label)
            check(state["item"] is not None and state["item"]["menuItems"] > 0,
                  "the item left the top bar or has no menu: %r" % shell.helper("indicators()"))
            check(shell.app_windows(app.pid) == [], "a window opened beside the item: %r" % shell.app_windows(app.pid))
            print("ok: the top bar shows the item with label %r at %r, no window" % (label, state["item"]["rect"]))
        parts.run("label", label_in_top_bar)

        def click_opens_menu():
            check("item" in state, "no item to click")
            shell.click(state["item"]["rect"])
            menu = wait_for("the menu to open", lambda: shell.helper("menu(%s)" % json.dumps(state["item"]["key"])))
            labels = [entry["label"] for entry in menu["items"] if not entry["separator"]]
            for expected in ("\U0001F504 Refresh Now", "\U0001F4CB Copy Summary", "Settings", "\u2318 Quit"):
                check(expected in labels, "the menu has no %r: %r" % (expected, labels))
            check(shell.app_windows(app.pid) == [], "the click opened a window: %r" % shell.app_windows(app.pid))
            time.sleep(0.5)
            shell.screenshot("gnome-topbar.png", [0, 0, 1280, 40])
            x, y, width, height = menu["rect"]
            left = max(0, x - 20)
            shell.screenshot("gnome-menu.png", [left, 0, min(1280 - left, width + 40), min(800, y + height + 20)])
            print("ok: a click on the item opened its menu of %d entries at %r" % (len(labels), menu["rect"]))
        parts.run("click", click_opens_menu)

        def settings_fit():
            # GNOME opens a submenu inside the menu: open, Settings must still
            # fit below the top bar, down to its last entry, with no scrolling.
            key = json.dumps(state["item"]["key"])
            menu = shell.open_menu(state["item"])
            settings = [entry for entry in menu["items"] if entry["label"] == "Settings"]
            check(settings and settings[0]["shown"], "no Settings in the menu")
            shell.click(settings[0]["rect"])
            menu = wait_for("Settings to open", lambda: (lambda m: m if any(
                e.get("open") for e in m["items"] if e["label"] == "Settings") else None)(shell.helper("menu(%s)" % key)))
            time.sleep(0.5)
            menu = shell.helper("menu(%s)" % key)
            x, y, width, height = menu["rect"]
            check(y >= 26 and y + height <= 800, "the menu with Settings open runs off the screen: %r" % menu["rect"])
            for label in ("Remove API Key", "Open DeepSeek Billing"):
                entry = [e for e in menu["items"] if e["label"] == label]
                check(entry and entry[0]["shown"] and y <= entry[0]["rect"][1]
                      and entry[0]["rect"][1] + entry[0]["rect"][3] <= y + height,
                      "%r is not in view with Settings open: %r in %r" % (label, entry, menu["rect"]))
            left = max(0, x - 20)
            shell.screenshot("gnome-settings.png", [left, 0, min(1280 - left, width + 40), 800])
            print("ok: with Settings open the menu fits at %r, its last entries in view" % menu["rect"])
        parts.run("settings", settings_fit)

        def menu_commands():
            check("item" in state, "no item")
            before = server.requests
            shell.choose(state["item"], "\U0001F504 Refresh Now")
            wait_for("the refresh's request", lambda: server.requests > before)
            time.sleep(1.5)
            check(server.requests == before + 1, "Refresh Now made %d requests" % (server.requests - before))
            print("ok: Refresh Now in the top bar's menu made one request")
            # The intervals are a radio group inside Settings, under a heading naming the chosen one.
            shell.choose(state["item"], "5 min")
            wait_for("the stored interval", lambda: "Refresh Interval: 5 min" in session.quorvane("menu"))
            menu = shell.open_menu(state["item"])
            marked = [(entry["label"], entry["ornament"]) for entry in menu["items"]
                      if entry["label"] in ("30 sec", "1 min", "5 min", "15 min")]
            heading = [entry["label"] for entry in menu["items"] if (entry["label"] or "").startswith("Refresh Interval")]
            check(heading == ["Refresh Interval: 5 min"], "the interval's heading in the menu: %r" % heading)
            check(marked == [("30 sec", NONE), ("1 min", NONE), ("5 min", DOT), ("15 min", NONE)],
                  "the intervals' marks (0 none, 1 radio dot): %r" % marked)
            print("ok: 5 min chosen in the top bar's menu is stored and marked")
            shell.choose(state["item"], "\U0001F4CB Copy Summary")
            summary = session.quorvane("summary").rstrip("\n")

            def clipboard():
                shell.helper("readClipboard()")
                copied = wait_for("the clipboard's answer", lambda: shell.helper("clipboard"))["text"]
                return comparable(copied or "") or None
            copied = wait_for("the summary on the clipboard", clipboard, 5)
            check(copied == comparable(summary), "the clipboard holds %r, the summary is %r" % (copied, summary))
            print("ok: Copy Summary put the %d-line summary on the clipboard" % len(summary.splitlines()))
        parts.run("menu", menu_commands)

        def dashboard():
            check("item" in state, "no item")
            shell.eval("imports.ui.main.panel.menuManager.activeMenu?.close(); true")
            # The host calls Activate on a double click.
            shell.click(state["item"]["rect"], 2)
            # Listed as soon as it exists, placed once the compositor has its first frame.
            windows = wait_for("the dashboard after a double click",
                               lambda: [w for w in shell.app_windows(app.pid) if w["rect"][2] > 0], 8)
            check(len(windows) == 1 and windows[0]["wmClass"] == APP_ID and windows[0]["title"] == "Quorvane",
                  "the dashboard: %r" % windows)
            x, y, width, height = windows[0]["rect"]
            check(x >= 0 and y >= 32 and x + width <= 1280 and y + height <= 800, "off the work area: %r" % windows)
            # In front: the host hands the app an activation token, which Qt passes on.
            wait_for("the dashboard to take the focus", lambda: shell.app_windows(app.pid)[0]["focus"], 5)
            print("ok: a double click on the item opened the dashboard at %r, in front" % windows[0]["rect"])
            # The app takes activations within a double click's time of the last as the same gesture.
            time.sleep(0.5)
            shell.click(state["item"]["rect"], 2)
            wait_for("the dashboard to close on the next double click", lambda: shell.app_windows(app.pid) == [], 8)
            # The card's lines in the menu open it too.
            shell.eval("imports.ui.main.panel.menuManager.activeMenu?.close(); true")
            shell.choose(state["item"], "\U0001F40B Quorvane \u00B7 $12.34")
            windows = wait_for("the dashboard from the card's line", lambda: shell.app_windows(app.pid), 8)
            check(windows[0]["title"] == "Quorvane", "the dashboard: %r" % windows)
            print("ok: the card's line in the menu opened the dashboard")
            time.sleep(0.5)
            shell.click(state["item"]["rect"], 2)
            wait_for("the dashboard to close", lambda: shell.app_windows(app.pid) == [], 8)
        parts.run("dashboard", dashboard)

        def host_leaves_and_returns():
            session.run("gnome-extensions", "disable", HOST)
            try:
                left = time.monotonic()
                windows = wait_for("the fallback window", lambda: shell.app_windows(app.pid), 8)
                delay = time.monotonic() - left
                check(len(windows) == 1 and windows[0]["wmClass"] == APP_ID and windows[0]["title"] == "Quorvane",
                      "the fallback window: %r" % windows)
                check(delay <= 5.0, "the fallback window came %.1f s after the host left" % delay)
                print("ok: the host left, the fallback window %r came after %.1f s" % (windows[0]["title"], delay))
            finally:
                session.run("gnome-extensions", "enable", HOST)
            wait_for("the fallback window to go", lambda: shell.app_windows(app.pid) == [], 10)
            state["item"] = wait_for("the item back in the top bar", lambda: shell.indicator(label), 15)
            print("ok: the host came back, the window went and the item returned")
        parts.run("host", host_leaves_and_returns)

        def low_balance_notification():
            # The balance falls low through Refresh Now: the shell's own
            # notification server shows the app's notice, and its click opens the dashboard.
            check("item" in state, "no item")
            server.total, before = "0.80", server.requests
            shell.choose(state["item"], "\U0001F504 Refresh Now")
            wait_for("Refresh Now's request", lambda: server.requests > before, 5)
            state["item"] = wait_for("the low balance in the top bar", lambda: shell.indicator(" $0.80"), 10)
            notices = wait_for("the notice in the message tray", lambda: [
                notice for source in shell.eval(
                    "imports.ui.main.messageTray.getSources().map(s => ({source: s.title, notices: "
                    "s.notifications.map(n => ({title: n.title, body: n.bannerBodyText}))}))")
                for notice in source["notices"] if source["source"] == "Quorvane"], 10)
            check(notices == [{"title": "DeepSeek balance is low",
                               "body": "$0.80 left, at or below the warning level of $1.00."}],
                  "the shell's notices from Quorvane: %r" % notices)
            time.sleep(1.0)
            shell.screenshot("gnome-notification.png", [320, 0, 640, 140])
            print("ok: the shell shows the notice %r" % notices[0]["body"])
            shell.eval("imports.ui.main.messageTray.getSources().find(s => s.title == 'Quorvane')"
                       ".notifications[0].activate(); true")
            windows = wait_for("the dashboard from the notice", lambda: shell.app_windows(app.pid), 8)
            check(windows[0]["title"] == "Quorvane", "the dashboard: %r" % windows)
            wait_for("the dashboard to take the focus", lambda: shell.app_windows(app.pid)[0]["focus"], 5)
            print("ok: a click on the notice opened the dashboard, in front")
            shell.click(state["item"]["rect"], 2)
            wait_for("the dashboard to close", lambda: shell.app_windows(app.pid) == [], 8)
        parts.run("notification", low_balance_notification)

        def memory_at_rest():
            wait_for("no window", lambda: shell.app_windows(app.pid) == [])
            check_memory_at_rest(session, app.pid)
        parts.run("memory", memory_at_rest)
        session.stop(app)
        parts.finish()
