"""XFCE 4.18 on Xvfb: the panel's status tray plugin is the watcher and the host, drawing the item's icon and its
menu (whose clicks come back as EventGroup); xfce4-notifyd shows the notice. Driven with xdotool, read with import."""
import glob
import re
import time

from session_harness import (COPY, HEIGHT, REFRESH, WIDTH, check, menu_path, start_xvfb, wait_for, x11_screenshot,
                             x11_windows)

PANEL_SIZE = 32
# Outside PATH, in the multiarch library folder.
NOTIFYD = (glob.glob("/usr/lib/*/xfce4/notifyd/xfce4-notifyd") + ["xfce4-notifyd"])[0]
# One panel along the top: a separator that takes the free room, then the tray at the right end.
PANEL_XML = """<?xml version="1.0" encoding="UTF-8"?><channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/><property name="panels" type="array"><value type="int" value="1"/>
    <property name="panel-1" type="empty"><property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/><property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="%d"/><property name="plugin-ids" type="array">
        <value type="int" value="1"/><value type="int" value="2"/></property></property></property>
  <property name="plugins" type="empty"><property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/><property name="style" type="uint" value="0"/></property>
    <property name="plugin-2" type="string" value="systray"/></property></channel>""" % PANEL_SIZE


def start_xfce(session):
    session.start_system_bus()
    start_xvfb(session)
    session.env.update(XDG_CURRENT_DESKTOP="XFCE", XDG_SESSION_TYPE="x11")
    session.update_activation_environment()
    session.write(PANEL_XML, "config", "xfce4", "xfconf", "xfce-perchannel-xml", "xfce4-panel.xml")
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


def click(session, box, button):
    session.run("xdotool", "mousemove", str(box[0] + box[2] // 2), str(box[1] + box[3] // 2), "click", str(button))


def choose(session, service, icon, label, shot=None):
    """Opens the item's menu in the panel and goes to the item with the keys, through its submenus, and takes it."""
    path = menu_path(session.menu_layout(service), label)
    check(path is not None, "no %r in the menu the panel reads" % label)
    click(session, icon, 3)
    opened = []
    for depth, (index, _, _) in enumerate(path):
        opened.append(wait_for("the panel's menu, level %d" % depth,
                               lambda: [box for box in host_menus(session) if box not in opened])[0])
        last = depth + 1 == len(path)
        if shot and last:
            time.sleep(0.5)
            x11_screenshot(session, shot)
        # The menu the click opened has nothing selected; one opened with Right, its first item.
        session.run("xdotool", "key", *["Down"] * (index + (depth == 0)), "Return" if last else "Right")
    wait_for("the panel's menu to close", lambda: not host_menus(session))


def test(session):
    panel = start_xfce(session)
    session.endpoint()
    session.quorvane("interval", "900")  # no timer refresh while the requests are counted
    app, service = session.start_app()
    session.wait_for_label(service, " $12.34")
    icon = wait_for("the icon in the panel", lambda: tray_icon(session))
    check(icon[0] + icon[2] <= WIDTH and icon[1] + icon[3] <= PANEL_SIZE and x11_windows(session) == [],
          "the icon %r is off the panel, or a window is beside it: %r" % (icon, x11_windows(session)))
    x11_screenshot(session, "xfce-panel.png")

    session.refresh(lambda: choose(session, service, icon, REFRESH))
    choose(session, service, icon, "5 min", "xfce-menu.png")
    session.check_interval_stored()
    choose(session, service, icon, COPY)
    session.check_summary_copied(lambda: session.run("xclip", "-o", "-selection", "clipboard"))

    click(session, icon, 1)
    dashboard = wait_for("the dashboard", lambda: x11_windows(session))
    x, y, width, height = dashboard[0]
    check(len(dashboard) == 1 and abs(y - PANEL_SIZE) <= 3 and x <= icon[0] and x + width >= icon[0] + icon[2]
          and x + width <= WIDTH and y + height <= HEIGHT, "the dashboard is off the icon %r: %r" % (icon, dashboard))
    x11_screenshot(session, "xfce-dashboard.png")
    session.run("xdotool", "key", "Escape")
    wait_for("the dashboard to close", lambda: not x11_windows(session))

    # The balance falls low: XFCE's notification daemon shows the notice.
    session.refresh(lambda: choose(session, service, icon, REFRESH), "0.80")
    notice = wait_for("xfce4-notifyd's notice", lambda: x11_windows(session, "xfce4-notifyd"))
    time.sleep(1.0)
    x11_screenshot(session, "xfce-notification.png")
    print("ok: the icon in the panel at %r, the dashboard at %r, the notice at %r" % (icon, dashboard[0], notice[0]))
    session.check_memory_at_rest(app.pid)

    def panel_leaves():
        session.stop(panel)
        wait_for("the panel's watcher to go", lambda: not session.has_owner("org.kde.StatusNotifierWatcher"))

    def strip_at_top_right(strip):
        check(strip[1] <= 2 and WIDTH - 2 <= strip[0] + strip[2] <= WIDTH, "the strip is off the corner: %r" % (strip,))
        x11_screenshot(session, "xfce-strip.png")

    session.check_host_leaves(panel_leaves, lambda: start_panel(session), lambda: x11_windows(session),
                              strip_at_top_right)
    session.wait_for_item(app)
    wait_for("the icon in the new panel", lambda: tray_icon(session))
