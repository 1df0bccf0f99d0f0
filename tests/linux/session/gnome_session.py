"""GNOME Shell 43 on Wayland, headless, with the AppIndicator extension as the host; our test-only extension lets
Eval and Screenshot answer, and offers a virtual pointer and what the top bar and its menus show."""
import json
import os
import shutil
import time

from session_harness import APP_ID, COPY, LOW_BODY, LOW_TITLE, REFRESH, check, wait_for

HOST = "ubuntu-appindicators@ubuntu.com"
HELPER = "gnome-test-helper@quorvane"


class Shell:
    def __init__(self, session):
        self.session, self.pid = session, None
        session.start_system_bus()
        shutil.copytree(os.path.join(os.path.dirname(os.path.abspath(__file__)), HELPER), os.path.join(
            session.env["HOME"], ".local", "share", "gnome-shell", "extensions", HELPER))
        # GSettings from a keyfile in the scratch home.
        session.write("[org/gnome/shell]\ndisable-user-extensions=false\nwelcome-dialog-last-shown-version='99'\n"
                      "enabled-extensions=['%s', '%s']\n[org/gnome/desktop/interface]\nenable-animations=false\n"
                      % (HOST, HELPER), "config", "glib-2.0", "settings", "keyfile")
        session.env.update(GSETTINGS_BACKEND="keyfile", XDG_SESSION_TYPE="wayland", XDG_CURRENT_DESKTOP="GNOME")
        session.update_activation_environment()
        self.process = session.start(["gnome-shell", "--wayland", "--headless", "--virtual-monitor", "1280x800",
                                      "--no-x11"], "gnome-shell.log", env=dict(
            session.env, LIBGL_ALWAYS_SOFTWARE="1", MUTTER_DEBUG_DUMMY_MODE_SPECS="1280x800",
            G_MESSAGES_DEBUG="Ubuntu-AppIndicators"))
        session.wait_for_wayland("the shell's", 60)
        session.update_activation_environment()
        # Eval answers once the helper extension has turned on unsafe mode. The shell starts in the overview.
        wait_for("the shell to finish starting", lambda: self.eval(
            "!imports.ui.main.layoutManager._startingUp && !!global.quorvaneTest"), 60)
        self.eval("imports.ui.main.overview.hide(); true")
        wait_for("the overview to close", lambda: self.eval("!imports.ui.main.overview.visible"))
        wait_for("the AppIndicator extension's watcher", lambda: session.has_owner("org.kde.StatusNotifierWatcher"))

    def eval(self, code):
        check(self.process.poll() is None, "gnome-shell exited")
        ok, result = self.session.busctl("call", "org.gnome.Shell", "/org/gnome/Shell", "org.gnome.Shell", "Eval",
                                         "s", code)["data"]
        if not ok:
            raise ValueError("Eval failed: %s" % result)
        return json.loads(result) if result else None

    def helper(self, call, *arguments):
        return self.eval("global.quorvaneTest.%s(%s)" % (call, ", ".join(map(json.dumps, arguments))))

    def indicator(self, label):
        """The visible top-bar item from the AppIndicator extension with this label."""
        found = [item for item in self.helper("indicators") if item["visible"] and item["label"] == label]
        return found[0] if len(found) == 1 else None

    def click(self, rect, count=1):
        """A move, then the presses; a double click's go in one call, as the host counts them within 400 ms."""
        x, y = rect[0] + rect[2] // 2, rect[1] + rect[3] // 2
        self.helper("move", x, y)
        self.helper("click", x, y, 1, count)

    def menu(self, item):
        return self.helper("menu", item["key"])  # None while it is closed

    def choose(self, item, label):
        """Clicks a menu entry by its label, opening its menu and the submenu it lies in."""
        if not self.menu(item):
            self.click(item["rect"])
            time.sleep(0.5)  # a menu just opened may miss a click
        menu = wait_for("the item's menu", lambda: self.menu(item))
        entries = [entry for entry in menu["items"] if entry["label"] == label]
        check(entries, "no entry %r in the menu: %r" % (label, [entry["label"] for entry in menu["items"]]))
        if not entries[0]["shown"]:
            # The last submenu that comes before the entry holds it.
            place = menu["items"].index(entries[0])
            self.click([entry for entry in menu["items"][:place] if "open" in entry][-1]["rect"])
            entries = wait_for("the submenu holding %r" % label, lambda: [
                entry for entry in self.menu(item)["items"] if entry["label"] == label and entry["shown"]])
        self.click(entries[0]["rect"])

    def app_windows(self):
        return [window for window in self.helper("windows") if window["pid"] == self.pid and window["shown"]]

    def screenshot(self, name, rect):
        done = self.session.busctl("call", "org.gnome.Shell", "/org/gnome/Shell/Screenshot",
                                   "org.gnome.Shell.Screenshot", "ScreenshotArea", "iiiibs", *map(str, rect), "false",
                                   self.session.shot(name))["data"]
        check(done[0] and os.path.getsize(self.session.shot(name)) > 0, "no screenshot %s: %r" % (name, done))

    def dashboard(self, label):
        """The dashboard just asked for opens in front, on the work area; a double click on the item closes it."""
        windows = wait_for("the dashboard", lambda: [w for w in self.app_windows() if w["rect"][2] > 0], 8)
        x, y, width, height = windows[0]["rect"]
        check(len(windows) == 1 and windows[0]["wmClass"] == APP_ID and windows[0]["title"] == "Quorvane" and x >= 0
              and y >= 32 and x + width <= 1280 and y + height <= 800, "the dashboard: %r" % windows)
        # In front: the host hands the app an activation token, which Qt passes on.
        wait_for("the dashboard to take the focus", lambda: self.app_windows()[0]["focus"], 5)
        time.sleep(0.5)  # the app takes activations within a double click's time of the last as the same gesture
        self.click(self.indicator(label)["rect"], 2)
        wait_for("the dashboard to close", lambda: self.app_windows() == [], 8)


def test(session):
    shell = Shell(session)
    session.endpoint()
    shell.pid = session.start([session.args.quorvane], "app.log", env=dict(session.env, QT_QPA_PLATFORM="wayland")).pid
    wait_for("the item with label ' $12.34' in the top bar", lambda: shell.indicator(" $12.34"), 30)
    # Held for two seconds: a host that drops the item drops it within that.
    time.sleep(2.0)
    dropped = [line for line in open(session.path("gnome-shell.log"), errors="replace")
               if "While initalizing proxy" in line or "Impossible to get basic properties" in line]
    item = shell.indicator(" $12.34")
    check(not dropped and item and item["menuItems"] > 0 and shell.app_windows() == [], "the host failed to read "
          "the item, it left the top bar or a window opened beside it: %r %r %r" % (dropped, item, shell.app_windows()))

    # GNOME opens a submenu inside the menu: with Settings open it must still fit below the top bar.
    shell.choose(item, "Settings")
    wait_for("Settings to open", lambda: [entry for entry in shell.menu(item)["items"]
                                          if entry["label"] == "Settings" and entry.get("open")])
    time.sleep(0.5)
    menu = shell.menu(item)
    x, y, width, height = menu["rect"]
    last = [entry["rect"] for entry in menu["items"] if entry["label"] == "Open DeepSeek Billing" and entry["shown"]]
    check(y >= 26 and y + height <= 800 and last and y <= last[0][1] and last[0][1] + last[0][3] <= y + height,
          "with Settings open the menu %r runs off the screen or hides its last entry %r" % (menu["rect"], last))
    shell.screenshot("gnome-menu.png", [max(0, x - 20), 0, min(1280 - max(0, x - 20), width + 40), 800])
    print("ok: the top bar shows ' $12.34'; its menu, with Settings open, fits at %r" % menu["rect"])

    session.refresh(lambda: shell.choose(item, REFRESH))
    # The intervals are a radio group in a submenu of their own, under a heading naming the chosen one.
    shell.choose(item, "5 min")
    session.check_interval_stored()
    shell.click(item["rect"])
    marked = [(entry["label"], entry["ornament"]) for entry in wait_for("the menu", lambda: shell.menu(item))["items"]
              if entry["label"] in ("Refresh Interval: 5 min", "30 sec", "1 min", "5 min", "15 min")]
    # The shell's PopupMenu.Ornament: 0 none, 1 the dot of a radio item.
    check(marked == [("Refresh Interval: 5 min", 0), ("30 sec", 0), ("1 min", 0), ("5 min", 1), ("15 min", 0)],
          "the interval's heading and marks: %r" % marked)
    shell.choose(item, COPY)
    session.check_summary_copied(lambda: shell.helper("readClipboard") and wait_for(
        "the clipboard's answer", lambda: shell.eval("global.quorvaneTest.clipboard"))["text"])
    shell.click(item["rect"], 2)  # the host calls Activate on a double click
    shell.dashboard(" $12.34")

    session.check_host_leaves(lambda: session.run("gnome-extensions", "disable", HOST),
                              lambda: session.run("gnome-extensions", "enable", HOST), shell.app_windows)
    item = wait_for("the item back in the top bar", lambda: shell.indicator(" $12.34"), 15)

    # The balance falls low through Refresh Now: the shell's notification server shows the notice.
    session.refresh(lambda: shell.choose(item, REFRESH), "0.80")
    wait_for("the low balance in the top bar", lambda: shell.indicator(" $0.80"), 10)
    notices = wait_for("the notice in the message tray", lambda: shell.eval(
        "[].concat(...imports.ui.main.messageTray.getSources().filter(s => s.title == 'Quorvane').map(s => "
        "s.notifications.map(n => ({title: n.title, body: n.bannerBodyText}))))"), 10)
    check(notices == [{"title": LOW_TITLE, "body": LOW_BODY}], "the shell's notices from Quorvane: %r" % notices)
    time.sleep(1.0)
    shell.screenshot("gnome-notification.png", [320, 0, 640, 140])
    shell.eval("imports.ui.main.messageTray.getSources().find(s => s.title == 'Quorvane').notifications[0].activate(); "
               "true")
    shell.dashboard(" $0.80")
    session.check_memory_at_rest(shell.pid)
