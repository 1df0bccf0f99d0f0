#!/usr/bin/env python3
"""Quorvane in real desktop sessions, as a user meets it.

    desktop_session_test.py wayland|x11|notifications|xfce|gnome|kde --quorvane BIN [--pointer BIN]
        [--watcher BIN] [--notifications BIN] --out DIR

wayland: sway (headless, software rendering) with waybar as its panel and
tray. The desktop app must open no window of its own, register its item
with waybar's watcher, carry the title as its label and tooltip, carry out
clicks on its dbusmenu, change its icon when the balance goes low, and open the dashboard
as a floating window wholly on the output when its tray icon is clicked.
Screenshots of the panel and of the dashboard go to --out.

x11: Xvfb whose work area leaves room for a 32-pixel top panel. With no
watcher the strip lies inside the work area; a watcher that appears takes
the strip away; with one from the start no window appears, and the primary
click opens the menu at the tray icon.

Runs inside a session bus of its own (run-in-session.sh) and stops every
process it started. Standard library only.
"""
import argparse
import importlib
import json
import os
import re
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from session_harness import (APP_ID, HEIGHT, WARNING, WHALE, WIDTH, Failure, Session,  # noqa: E402
                             balance_endpoint, check, check_memory_at_rest, layout_lines, model_lines,
                             start_xvfb, wait_for,
                             x11_windows)

BAR_HEIGHT = 30


# ---- Wayland: sway and waybar ----

class Sway:
    def __init__(self, session):
        self.session = session
        config = session.path("sway.conf")
        with open(config, "w") as out:
            out.write("output HEADLESS-1 resolution %dx%d\n" % (WIDTH, HEIGHT))
            out.write("exec waybar -c %s\n" % session.path("waybar.json"))
        with open(session.path("waybar.json"), "w") as out:
            json.dump({"layer": "top", "position": "top", "height": BAR_HEIGHT,
                       "modules-left": ["tray"], "modules-right": ["custom/quorvane"],
                       "tray": {"icon-size": 20, "spacing": 8},
                       "custom/quorvane": {"exec": "%s --demo status --json" % session.binary("quorvane"),
                                           "return-type": "json", "interval": 60}}, out)
        env = dict(session.env, WLR_BACKENDS="headless", WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1")
        self.process = session.start(["sway", "-c", config], "sway.log", env=env)
        runtime = session.path("runtime")
        socket = wait_for("sway's IPC socket", lambda: [name for name in os.listdir(runtime)
                                                         if name.startswith("sway-ipc.")])
        session.env["SWAYSOCK"] = os.path.join(runtime, socket[0])
        session.wait_for_wayland("sway's")
        # A headless seat has no pointer until one is added; panels then see clicks.
        pointer = session.start([session.binary("quorvane_virtual_pointer")], "pointer.log")
        wait_for("the virtual pointer", lambda: open(session.path("pointer.log")).read().startswith("ready")
                 or pointer.poll() is not None)
        check(pointer.poll() is None, "the virtual pointer could not be created")
        wait_for("waybar's StatusNotifierWatcher", lambda: session.has_owner("org.kde.StatusNotifierWatcher"))

    def tree(self):
        return json.loads(self.session.run("swaymsg", "-t", "get_tree"))

    def views(self):
        """Every window of an app: (floating, app_id, rect)."""
        found = []

        def walk(node, floating):
            if node.get("app_id") is not None or node.get("window") is not None:
                found.append((floating, node.get("app_id"), node["rect"]))
            for child in node.get("nodes", []):
                walk(child, False)
            for child in node.get("floating_nodes", []):
                walk(child, True)

        walk(self.tree(), False)
        return found

    def cursor(self, *command):
        self.session.run("swaymsg", "seat", "-", "cursor", *command)

    def click(self, x, y):
        self.cursor("set", str(x), str(y))
        self.cursor("press", "button1")
        self.cursor("release", "button1")

    def screenshot(self, name, region=None):
        path = os.path.join(self.session.out, name)
        command = ["grim"] + (["-g", region] if region else []) + [path]
        self.session.run(*command)
        return path


def test_wayland(session):
    sway = Sway(session)
    with balance_endpoint(session) as server:
        app_env = dict(session.env, QT_QPA_PLATFORM="wayland")
        app = session.start([session.binary("quorvane")], "app.log", env=app_env)
        service = session.wait_for_item(app)
        wait_for("the balance in the label", lambda: session.item_property(service, "XAyatanaLabel") == " $12.34")
        label = session.item_property(service, "XAyatanaLabel")

        # The title, as the command line prints it, is the item's label and tooltip.
        title = session.quorvane("status").rstrip("\n")
        check(title == WHALE + label, "label %r is not the title %r after its mark" % (label, title))
        check(session.item_property(service, "ToolTip") == ["", [], "Quorvane", title],
              "tooltip: %r" % session.item_property(service, "ToolTip"))
        check(sway.views() == [], "the app opened a window by itself: %r" % sway.views())
        print("ok: registered, label %r, tooltip %r, no window" % (label, title))

        # Clicks in the host's menu: one request for Refresh Now, a stored interval.
        before = server.requests
        icon = session.item_property(service, "IconPixmap")
        server.total = "0.50"
        session.menu_click(service, "\U0001F504 Refresh Now")
        wait_for("the low balance in the label",
                 lambda: session.item_property(service, "XAyatanaLabel") == " $0.50")
        time.sleep(1.0)
        check(server.requests == before + 1, "Refresh Now made %d requests" % (server.requests - before))
        check(session.item_property(service, "ToolTip")[3] == WARNING + " $0.50", "the tooltip is not marked low")
        check(session.item_property(service, "IconPixmap") != icon, "the icon did not change for a low balance")
        session.menu_click(service, "5 min")
        wait_for("the chosen interval in the menu",
                 lambda: "Refresh Interval: 5 min" in layout_lines(session.menu_layout(service)))
        stored = json.loads(session.quorvane("menu", "--json"))["menu"]
        check("  Refresh Interval: 5 min" in model_lines(stored), "the interval was not stored")
        print("ok: one request per Refresh Now, the warning icon when low, the interval stored")
        session.stop(app)

        # The demo, clicked in the panel as a user would.
        demo = session.start([session.binary("quorvane"), "--demo"], "demo.log", env=app_env)
        service = session.wait_for_item(demo)
        wait_for("the demo's balance", lambda: session.item_property(service, "XAyatanaLabel") == " $26.43")
        check(sway.views() == [], "the demo opened a window by itself: %r" % sway.views())
        sway.cursor("set", "20", str(BAR_HEIGHT // 2))
        time.sleep(2.0)
        sway.screenshot("wayland-panel.png", "0,0 %dx160" % WIDTH)

        sway.click(20, BAR_HEIGHT // 2)
        views = wait_for("the dashboard", lambda: [view for view in sway.views() if view[1] == APP_ID])
        check(len(views) == 1, "more than one window: %r" % views)
        floating, _, rect = views[0]
        check(floating, "the dashboard was tiled: %r" % rect)
        on_output = (rect["x"] >= 0 and rect["y"] >= 0 and rect["x"] + rect["width"] <= WIDTH
                     and rect["y"] + rect["height"] <= HEIGHT)
        check(on_output, "the dashboard is not wholly on the output: %r" % rect)
        check(rect["width"] >= 330 and rect["height"] >= 190, "the dashboard is too small: %r" % rect)
        print("ok: the tray icon's click opened the dashboard, floating at %r" % rect)
        # The pointer over the chart's right half: the marker, the bubble and the tooltip.
        # A warp only enters the window; the chart follows the moves after it.
        sway.cursor("set", str(rect["x"] + 4 + 18 + 150), str(rect["y"] + 4 + 96 + 30))
        time.sleep(0.3)
        sway.cursor("move", "4", "0")
        time.sleep(2.0)
        sway.screenshot("wayland-dashboard.png")
        # A second click on the icon closes it; then the app is at rest, as it is most of the day.
        sway.click(20, BAR_HEIGHT // 2)
        wait_for("the dashboard to close", lambda: not [view for view in sway.views() if view[1] == APP_ID])
        check_memory_at_rest(session, demo.pid)
        session.stop(demo)


# ---- X11: Xvfb with a work area ----

def test_x11(session):
    start_xvfb(session)
    session.env["QT_QPA_PLATFORM"] = "xcb"
    # A 32-pixel panel at the top, as a window manager announces it.
    session.run("xprop", "-root", "-f", "_NET_SUPPORTED", "32a", "-set", "_NET_SUPPORTED", "_NET_WORKAREA")
    session.run("xprop", "-root", "-f", "_NET_WORKAREA", "32c", "-set", "_NET_WORKAREA",
                "0,32,%d,%d" % (WIDTH, HEIGHT - 32))

    app = session.start([session.binary("quorvane"), "--demo"], "app.log")
    strip = wait_for("the strip", lambda: x11_windows(session))
    check(len(strip) == 1, "one strip: %r" % strip)
    x, y, width, height = strip[0]
    check(y >= 32 and x + width <= WIDTH and x >= 0, "the strip lies outside the work area: %r" % (strip[0],))
    print("ok: without a watcher the strip lies inside the work area at %r" % (strip[0],))
    # Task lists and window switchers take a window's icon from the window on X11.
    ids = re.findall(r'(0x[0-9a-f]+) [^\n]*\("quorvane" "[^"]*"\)', session.run("xwininfo", "-root", "-tree"))
    icons = [session.run("xprop", "-id", window, "_NET_WM_ICON") for window in ids]
    check(any("Icon (16 x 16)" in icon and "Icon (64 x 64)" in icon for icon in icons),
          "no window of the app has an icon: %r" % [icon[:60] for icon in icons])
    print("ok: the app's windows carry its icon")

    watcher = session.start([session.binary("quorvane_fake_watcher")], "watcher.log")
    service = session.wait_for_item(app)
    wait_for("the strip to go", lambda: x11_windows(session) == [])
    print("ok: a watcher that appears takes the strip away")
    session.stop(app)

    app = session.start([session.binary("quorvane"), "--demo"], "app2.log")
    service = session.wait_for_item(app)
    time.sleep(1.5)
    check(x11_windows(session) == [], "a window appeared beside the item: %r" % x11_windows(session))
    session.run("busctl", "--user", "call", service, "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                "Activate", "ii", "1200", "32")
    menu = wait_for("the menu", lambda: x11_windows(session))
    x, y, width, height = menu[0]
    check(x + width <= WIDTH and y >= 32 and x <= 1200 and abs(y - 32) <= 2,
          "the menu is not at the tray icon: %r" % (menu[0],))
    print("ok: with a watcher no window appears, and the click opens the menu at %r" % (menu[0],))
    session.stop(app)
    session.stop(watcher)


# Each desktop's test: a function here, or test(session) in a module of its own.
DESKTOPS = {"wayland": test_wayland, "x11": test_x11, "notifications": "notification_session",
            "xfce": "xfce_session", "gnome": "gnome_session", "kde": "kde_session"}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("desktop", choices=sorted(DESKTOPS))
    parser.add_argument("--quorvane", required=True)
    parser.add_argument("--pointer", help="quorvane_virtual_pointer, for wayland")
    parser.add_argument("--watcher", help="quorvane_fake_watcher, for x11 and notifications")
    parser.add_argument("--notifications", help="quorvane_fake_notifications, for notifications")
    parser.add_argument("--fake-input", help="quorvane_kwin_fake_input, for kde")
    parser.add_argument("--out", required=True)
    parser.add_argument("--sanitized", action="store_true", help="the app carries sanitizers: no memory ceiling")
    args = parser.parse_args()
    test = DESKTOPS[args.desktop]
    if isinstance(test, str):
        test = importlib.import_module(test).test
    session = Session(args)
    failed = True
    try:
        test(session)
        failed = False
    except Failure as failure:
        print("FAILED: %s" % failure, file=sys.stderr)
    finally:
        session.close(failed)
    print("1 passed, 0 failed" if not failed else "0 passed, 1 failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
