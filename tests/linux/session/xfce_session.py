"""Quorvane in a real XFCE 4.18 session on Xvfb, as a user meets it.

The panel's status tray plugin is the StatusNotifierWatcher and host: it
draws the item's icon in the panel and the item's menu from dbusmenu, and
sends the clicks on that menu back as EventGroup. Everything here goes
through the panel: pointer and keys from xdotool, screenshots from
`import -window root`, the clipboard read with xclip. xfce4-notifyd shows
the low-balance notice. Screenshots of the panel, its menu, the dashboard,
the notice and the strip go to --out.
"""
import glob
import json
import os
import re
import time

from session_harness import (HEIGHT, WIDTH, balance_endpoint, check, check_memory_at_rest, comparable, menu_path,
                             model_item, start_xvfb, wait_for, x11_click, x11_screenshot, x11_windows)

PANEL_SIZE = 32
# Outside PATH, in the multiarch library folder.
NOTIFYD = (glob.glob("/usr/lib/*/xfce4/notifyd/xfce4-notifyd") + ["xfce4-notifyd"])[0]
REFRESH, COPY = "\U0001F504 Refresh Now", "\U0001F4CB Copy Summary"

# One panel along the top: a separator that takes the free room, then the tray at the right end.
PANEL_XML = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="%d"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
      <property name="style" type="uint" value="0"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
""" % PANEL_SIZE


def start_xfce(session):
    session.start_system_bus()
    start_xvfb(session)
    session.env.update(XDG_CURRENT_DESKTOP="XFCE", XDG_SESSION_TYPE="x11")
    session.update_activation_environment(["DISPLAY", "HOME", "XDG_CONFIG_HOME", "XDG_RUNTIME_DIR", "LANG",
                                           "DBUS_SYSTEM_BUS_ADDRESS", "XDG_CURRENT_DESKTOP"])
    channel = session.path("config", "xfce4", "xfconf", "xfce-perchannel-xml")
    os.makedirs(channel)
    with open(os.path.join(channel, "xfce4-panel.xml"), "w") as out:
        out.write(PANEL_XML)
    session.start(["xfsettingsd", "--no-daemon", "--disable-wm-check"], "xfsettingsd.log")
    wait_for("xfsettingsd", lambda: session.has_owner("org.xfce.SettingsDaemon"))
    session.start(["xfwm4", "--compositor=off"], "xfwm4.log")
    wait_for("xfwm4", lambda: "window id #" in session.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))
    # The session starts its notification daemon at login (its autostart entry, for XFCE only).
    session.start([NOTIFYD], "notifyd.log")
    wait_for("xfce4-notifyd", lambda: session.has_owner("org.freedesktop.Notifications"))
    return start_panel(session)


def start_panel(session):
    panel = session.start(["xfce4-panel"], "panel-%d.log" % len(session.processes))
    wait_for("the panel's StatusNotifierWatcher", lambda: session.has_owner("org.kde.StatusNotifierWatcher"))
    return panel


def host_menus(session):
    """The menus the tray plugin (its own process, wrapper-2.0) draws below the panel."""
    return [box for box in x11_windows(session, "wrapper-2.0") if box[1] >= PANEL_SIZE - 1]


def tray_icon(session):
    """What the tray plugin drew in the panel: the box where it differs from the panel's background."""
    plugins = [box for box in x11_windows(session, "wrapper-2.0") if box[1] + box[3] <= PANEL_SIZE + 1]
    if len(plugins) != 1:
        return None
    x, y, width, height = plugins[0]
    trimmed = session.run("convert", x11_screenshot(session, session.path("shot.png")), "-crop",
                          "%dx%d+%d+%d" % (width, height, x, y), "+repage", "-fuzz", "10%", "-trim", "info:-")
    found = re.search(r" (\d+)x(\d+) \d+x\d+\+(\d+)\+(\d+) ", trimmed)
    if not found:
        return None  # nothing drawn yet: trimming a plain box gives a negative offset
    w, h, dx, dy = (int(n) for n in found.groups())
    return (x + dx, y + dy, w, h) if w >= 8 and h >= 8 else None


def selected_rows(session, menu):
    """The rows of the menu's selected item: the tallest band where its left margin is not the menu's colour."""
    x, y, width, height = menu
    column = session.run("convert", x11_screenshot(session, session.path("shot.png")), "-crop",
                         "1x%d+%d+%d" % (height, x + 4, y), "+repage", "txt:-")
    colours = re.findall(r"^0,\d+: \S+\s+(#[0-9A-F]{6})", column, re.M)
    background = max(set(colours), key=colours.count)
    bands, start = [], None
    for row, colour in enumerate(colours + [background]):
        if colour != background and start is None:
            start = row
        elif colour == background and start is not None:
            bands.append((start, row - 1))
            start = None
    first, last = max(bands, key=lambda band: band[1] - band[0], default=(0, -1))
    return (y + first, y + last) if last - first >= 10 else None


def choose(session, service, icon, label):
    """Opens the item's menu in the panel, goes down to the item with the keys and clicks its row."""
    path = menu_path(session.menu_layout(service), label)
    check(path is not None, "no %r in the menu the panel reads" % label)
    x11_click(session, icon, 3)
    opened = []
    for depth, (index, _) in enumerate(path):
        opened.append(wait_for("the panel's menu, level %d" % depth,
                               lambda: [box for box in host_menus(session) if box not in opened])[0])
        # The menu the click opened has nothing selected; one opened with Right, its first item.
        for _ in range(index + 1 if depth == 0 else index):
            session.run("xdotool", "key", "Down")
        if depth < len(path) - 1:
            session.run("xdotool", "key", "Right")
    menu = opened[-1]
    # The panel handles the keys in its own time: the selection has settled when two looks agree.
    rows = wait_for("%r selected" % label, lambda: selected_rows(session, menu) == selected_rows(session, menu)
                    and selected_rows(session, menu))
    session.run("xdotool", "mousemove", str(menu[0] + menu[2] // 2), str(sum(rows) // 2), "click", "1")
    wait_for("the panel's menu to close", lambda: not host_menus(session))


def test(session):
    panel = start_xfce(session)
    with balance_endpoint(session) as server:
        session.quorvane("interval", "900")  # no timer refresh while the requests are counted
        app = session.start([session.binary("quorvane")], "app.log", env=dict(session.env, QT_QPA_PLATFORM="xcb"))
        service = session.wait_for_item(app)
        wait_for("the balance", lambda: session.item_property(service, "XAyatanaLabel") == " $12.34")
        icon = wait_for("the icon in the panel", lambda: tray_icon(session))
        check(icon[0] + icon[2] <= WIDTH and icon[1] + icon[3] <= PANEL_SIZE, "the icon is off the panel: %r" % (icon,))
        check(x11_windows(session) == [], "a window beside the item: %r" % x11_windows(session))
        x11_screenshot(session, "xfce-panel.png")
        print("ok: the item registered with the panel's watcher, its icon drawn at %r" % (icon,))

        x11_click(session, icon, 3)
        menu = wait_for("the panel's menu", lambda: host_menus(session))[0]
        check(menu[1] <= PANEL_SIZE + 2 and menu[0] <= icon[0] and menu[0] + menu[2] <= WIDTH,
              "the panel's menu is not under the icon %r: %r" % (icon, menu))
        x11_screenshot(session, "xfce-menu.png")
        session.run("xdotool", "key", "Escape")
        wait_for("the panel's menu to close", lambda: not host_menus(session))
        print("ok: the right click opened the panel's own menu at %r" % (menu,))

        before = server.requests
        choose(session, service, icon, REFRESH)
        wait_for("the refresh", lambda: server.requests > before)
        time.sleep(1.5)
        check(server.requests == before + 1, "Refresh Now made %d requests" % (server.requests - before))
        choose(session, service, icon, "5 min")
        wait_for("5 min stored", lambda: model_item(json.loads(session.quorvane("menu", "--json"))["menu"],
                                                   "5 min")["state"] == "on")
        expected = comparable(session.quorvane("summary"))
        choose(session, service, icon, COPY)
        copied = wait_for("the summary on the clipboard", lambda: session.run("xclip", "-o", "-selection", "clipboard"))
        check(comparable(copied) == expected, "the clipboard holds %r, not %r" % (copied, expected))
        print("ok: through the panel's menu, one request per Refresh Now, 5 min stored, the summary copied")

        x11_click(session, icon, 1)
        dashboard = wait_for("the dashboard", lambda: x11_windows(session))
        x, y, width, height = dashboard[0]
        check(len(dashboard) == 1 and abs(y - PANEL_SIZE) <= 3 and x <= icon[0] and x + width >= icon[0] + icon[2]
              and x + width <= WIDTH and y + height <= HEIGHT,
              "the dashboard is not under the icon %r: %r" % (icon, dashboard))
        x11_screenshot(session, "xfce-dashboard.png")
        session.run("xdotool", "key", "Escape")
        wait_for("the dashboard to close", lambda: not x11_windows(session))
        print("ok: the primary click opened the dashboard under the icon at %r" % (dashboard[0],))

        # The balance falls low: XFCE's notification daemon shows the notice; its click opens the dashboard.
        server.total = "0.80"
        choose(session, service, icon, REFRESH)
        wait_for("the low balance", lambda: session.item_property(service, "XAyatanaLabel") == " $0.80")
        notice = wait_for("xfce4-notifyd's notice", lambda: x11_windows(session, "xfce4-notifyd"), 15)
        time.sleep(1.0)
        x11_screenshot(session, "xfce-notification.png")
        # notifyd draws the offered click as a button at the notice's bottom right.
        x, y, width, height = notice[0]
        session.run("xdotool", "mousemove", str(x + width - 70), str(y + height - 30), "click", "1")
        dashboard = wait_for("the dashboard from the notice", lambda: x11_windows(session))
        check(not x11_windows(session, "xfce4-notifyd"), "the notice stayed after its click")
        session.run("xdotool", "key", "Escape")
        wait_for("the dashboard to close", lambda: not x11_windows(session))
        print("ok: xfce4-notifyd showed the notice at %r; its click opened the dashboard at %r"
              % (notice[0], dashboard[0]))

        check_memory_at_rest(session, app.pid)

        session.stop(panel)
        wait_for("the panel's watcher to leave", lambda: not session.has_owner("org.kde.StatusNotifierWatcher"))
        left = time.monotonic()
        strip = wait_for("the strip", lambda: x11_windows(session), timeout=10)
        after = time.monotonic() - left
        x, y, width, height = strip[0]
        check(2.5 <= after <= 5.0, "the strip came %.1f s after the panel left" % after)
        check(len(strip) == 1 and y <= 2 and WIDTH - 2 <= x + width <= WIDTH,
              "the strip is not at the top right: %r" % strip)
        x11_screenshot(session, "xfce-strip.png")
        print("ok: %.1f s after the panel left, the strip at %r" % (after, strip[0]))
        start_panel(session)
        session.wait_for_item(app)
        wait_for("the strip to go", lambda: not x11_windows(session))
        icon = wait_for("the icon in the new panel", lambda: tray_icon(session))
        print("ok: the panel's return took the strip away and drew the icon again at %r" % (icon,))
        lines = [line.rstrip() for line in open(session.path("app.log")) if line.strip()]
        print("app log: %d lines" % len(lines) + "".join("\n  " + line for line in lines[:20]))
