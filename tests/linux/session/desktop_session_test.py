#!/usr/bin/env python3
"""Quorvane in a real desktop session, as a user meets it; run inside run-in-session.sh. The desktops: wayland
(sway and waybar), x11 (bare Xvfb), notifications, xfce, gnome and kde (each in a module of its own)."""
import argparse
import json
import os
import re
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import gnome_session, kde_session, notification_session, xfce_session  # noqa: E401, E402
from session_harness import (APP_ID, HEIGHT, KEY, REFRESH, WIDTH, Failure, Session, check, start_xvfb,  # noqa: E402
                             wait_for, x11_screenshot, x11_windows)

BAR_HEIGHT = 30


def start_sway(session):
    """sway (headless, software rendering) with waybar as its panel and tray, and a pointer on its seat."""
    waybar = session.write(json.dumps({
        "layer": "top", "position": "top", "height": BAR_HEIGHT, "modules-left": ["tray"],
        "modules-right": ["custom/quorvane"], "tray": {"icon-size": 20, "spacing": 8},
        "custom/quorvane": {"exec": "%s --demo status --json" % session.args.quorvane, "return-type": "json",
                            "interval": 60}}), "waybar.json")
    session.write("output HEADLESS-1 resolution %dx%d\nexec waybar -c %s\n" % (WIDTH, HEIGHT, waybar), "sway.conf")
    session.env["SWAYSOCK"] = session.path("runtime", "sway-ipc.sock")  # where sway puts it, if it is not there yet
    session.start(["sway", "-c", session.path("sway.conf")], "sway.log", env=dict(
        session.env, WLR_BACKENDS="headless", WLR_RENDERER="pixman", WLR_LIBINPUT_NO_DEVICES="1"))
    wait_for("sway's IPC socket", lambda: os.path.exists(session.env["SWAYSOCK"]))
    session.wait_for_wayland("sway's")
    # A headless seat has no pointer until one is added; panels then see clicks.
    pointer = session.start([session.args.pointer], "pointer.log", stdout=subprocess.PIPE, text=True)
    check(pointer.stdout.readline() == "ready\n", "the virtual pointer could not be created")
    wait_for("waybar's StatusNotifierWatcher", lambda: session.has_owner("org.kde.StatusNotifierWatcher"))


def sway_views(session):
    """Every window in sway's tree: (floating, app_id, rect)."""
    def walk(node, floating):
        if node.get("app_id") is not None or node.get("window") is not None:
            yield floating, node.get("app_id"), node["rect"]
        for key in ("nodes", "floating_nodes"):
            for child in node.get(key, []):
                yield from walk(child, key == "floating_nodes")
    return list(walk(json.loads(session.run("swaymsg", "-t", "get_tree")), False))


def click_tray_icon(session):
    for command in (("set", "20", str(BAR_HEIGHT // 2)), ("press", "button1"), ("release", "button1")):
        session.run("swaymsg", "seat", "-", "cursor", *command)


def test_wayland(session):
    start_sway(session)
    session.endpoint()
    app, service = session.start_app(env=dict(session.env, QT_QPA_PLATFORM="wayland"))
    session.wait_for_label(service, " $12.34")
    check(sway_views(session) == [], "the app opened a window by itself: %r" % sway_views(session))
    session.refresh(lambda: session.menu_click(service, REFRESH), "0.50")
    session.wait_for_label(service, " $0.50")
    session.menu_click(service, "5 min")
    session.check_interval_stored()

    # The tray icon's click opens the dashboard, the next one closes it.
    click_tray_icon(session)
    views = wait_for("the dashboard", lambda: [view for view in sway_views(session) if view[1] == APP_ID])
    floating, _, rect = views[0]
    check(len(views) == 1 and floating and rect["x"] >= 0 and rect["y"] >= 0 and rect["width"] >= 330
          and rect["height"] >= 190 and rect["x"] + rect["width"] <= WIDTH and rect["y"] + rect["height"] <= HEIGHT,
          "the dashboard is not one floating window wholly on the output: %r" % views)
    time.sleep(1.0)  # the app takes a click within a double click's time of the last as the same gesture
    session.run("grim", session.shot("wayland-dashboard.png"))
    click_tray_icon(session)
    wait_for("the dashboard to close", lambda: not [view for view in sway_views(session) if view[1] == APP_ID])
    print("ok: in waybar, Refresh Now made one request, 5 min was stored, the icon toggled the dashboard at %r" % rect)
    session.check_memory_at_rest(app.pid)


def test_x11(session):
    """Xvfb whose work area leaves room for a 32-pixel top panel, and the test's watcher coming later."""
    start_xvfb(session)
    session.run("xprop", "-root", "-f", "_NET_SUPPORTED", "32a", "-set", "_NET_SUPPORTED", "_NET_WORKAREA")
    session.run("xprop", "-root", "-f", "_NET_WORKAREA", "32c", "-set", "_NET_WORKAREA",
                "0,32,%d,%d" % (WIDTH, HEIGHT - 32))
    app = session.start([session.args.quorvane, "--demo"], "app.log")
    strip = wait_for("the strip", lambda: x11_windows(session))
    x, y, width, height = strip[0]
    check(len(strip) == 1 and y >= 32 and x >= 0 and x + width <= WIDTH, "one strip in the work area: %r" % strip)
    # Task lists and window switchers take a window's icon from the window on X11.
    ids = re.findall(r'(0x[0-9a-f]+) [^\n]*\("quorvane" "[^"]*"\)', session.run("xwininfo", "-root", "-tree"))
    icons = [session.run("xprop", "-id", window, "_NET_WM_ICON") for window in ids]
    check(any("Icon (16 x 16)" in icon and "Icon (64 x 64)" in icon for icon in icons),
          "no window of the app has an icon: %r" % [icon[:60] for icon in icons])

    session.start([session.args.watcher], "watcher.log")
    service = session.wait_for_item(app)
    wait_for("the strip to go", lambda: x11_windows(session) == [])
    session.run("busctl", "--user", "call", service, "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                "Activate", "ii", "1200", "32")
    x, y, width, height = menu = wait_for("the menu", lambda: x11_windows(session))[0]
    check(x + width <= WIDTH and x <= 1200 and abs(y - 32) <= 2, "the menu is not at the tray icon: %r" % (menu,))
    x11_screenshot(session, "x11-menu.png")
    print("ok: the strip lay in the work area at %r; with a watcher the menu opened at %r" % (strip[0], menu))

    # With no clipboard program installed, a detached copy of the app holds the
    # copied summary until another program takes the clipboard.
    summary = session.run(session.args.quorvane, "--demo", "summary", "--copy", env=dict(session.env, PATH="/nowhere"))
    pasted = session.run("xclip", "-selection", "clipboard", "-o")
    check(pasted == summary.rstrip("\n"), "the clipboard holds %r, not the summary %r" % (pasted, summary))
    def holding():
        return subprocess.run(["pgrep", "-f", "quorvane --hold-clipboard"], stdout=subprocess.DEVNULL).returncode == 0
    check(holding(), "no clipboard holder is running")
    taker = session.start(["xclip", "-selection", "clipboard", "-in", "-quiet"], "xclip.log", stdin=subprocess.PIPE)
    taker.stdin.close()
    wait_for("the clipboard holder to quit once another program took the clipboard", lambda: not holding())
    print("ok: the holder served the summary and quit when xclip took the clipboard")


DESKTOPS = {"wayland": test_wayland, "x11": test_x11, "notifications": notification_session.test,
            "xfce": xfce_session.test, "gnome": gnome_session.test, "kde": kde_session.test}


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("desktop", choices=sorted(DESKTOPS))
    # The app, the screenshots' folder, and the test programs a desktop needs.
    for name in ("quorvane", "out", "pointer", "watcher", "notifications", "fake-input"):
        parser.add_argument("--" + name, required=name in ("quorvane", "out"))
    parser.add_argument("--sanitized", action="store_true", help="the app carries sanitizers: no memory ceiling")
    session, failed = Session(parser.parse_args()), True
    try:
        # All that is said on the session bus, where the API key must not be.
        session.start(["dbus-monitor", "--session"], "monitor.log")
        wait_for("dbus-monitor", lambda: "NameAcquired" in open(session.path("monitor.log"), errors="replace").read())
        DESKTOPS[session.args.desktop](session)
        for _, log in session.processes:
            check(KEY not in open(session.path(log), errors="replace").read(), "the API key is in " + log)
        failed = False
    except Failure as failure:
        print("FAILED: %s" % failure, file=sys.stderr)
    finally:
        session.close(failed)
    print("0 passed, 1 failed" if failed else "1 passed, 0 failed")
    sys.exit(int(failed))
