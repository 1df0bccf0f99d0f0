"""Quorvane's low-balance notification, from the whole program: the built
app on Xvfb with the tests' watcher as its panel, the tests' notification
server (quorvane_fake_notifications) on the session bus, and the local
balance endpoint, refreshed through the panel's menu as a user does.

The balance goes healthy, low, low, healthy, low: two notifications, the
second replacing the first. A restart while low tells nothing; the
command line never tells and leaves the record to the app; a click on the
notification opens the dashboard (on X11 the menu with the card); with no
server on the bus one line says so, once, and the app goes on.
"""
import json
import subprocess

from session_harness import (WARNING, WHALE, balance_endpoint, check, start_xvfb, wait_for,  # noqa: F401
                             x11_windows)

REFRESH = "\U0001F504 Refresh Now"
NO_SERVER = "quorvane: no notification server answered"


class Notifications:
    """quorvane_fake_notifications: each Notify a JSON line; clicks and stops written to it."""

    def __init__(self, session):
        self.process = session.start([session.binary("quorvane_fake_notifications")], "notifications.log",
                                     stdout=subprocess.PIPE, stdin=subprocess.PIPE, text=True)
        check(self.process.stdout.readline() == "ready\n", "the notification server did not start")
        self.shown = []

    def read(self, count):
        """The first `count` notifications shown; waits for those not yet read."""
        while len(self.shown) < count:
            line = self.process.stdout.readline()
            check(line, "the notification server stopped")
            self.shown.append(json.loads(line))
        return self.shown[:count]

    def tell(self, command):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()


def low(amount):
    return amount + " left, at or below the warning level of $1.00."


def test(session):
    start_xvfb(session)
    session.env["QT_QPA_PLATFORM"] = "xcb"
    session.start([session.binary("quorvane_fake_watcher")], "watcher.log")
    notifications = Notifications(session)
    with balance_endpoint(session) as server:
        server.total = "5.00"
        app = session.start([session.binary("quorvane")], "app.log")
        service = session.wait_for_item(app)

        def refresh_to(total):
            """Refresh Now in the panel's menu, until the label shows the balance."""
            before = server.requests
            server.total = total
            session.menu_click(service, REFRESH)
            label = " $%.2f" % float(total)
            wait_for("the label %r" % label, lambda: session.item_property(service, "XAyatanaLabel") == label)
            check(server.requests == before + 1, "Refresh Now made %d requests" % (server.requests - before))

        wait_for("the first balance", lambda: session.item_property(service, "XAyatanaLabel") == " $5.00")
        for total in ("0.80", "0.50", "1.01", "1.00"):
            refresh_to(total)
        # The server's answer to the second is read only after the first is checked.
        first, second = notifications.read(2)
        check(first == {"id": 1, "appName": "Quorvane", "replacesId": 0, "appIcon": "app.quorvane.Quorvane",
                        "summary": "DeepSeek balance is low", "body": low("$0.80"),
                        "actions": ["default", "Open Quorvane"], "desktopEntry": "app.quorvane.Quorvane",
                        "urgency": 1, "image": "64x64", "expireTimeout": -1}, "the first notification: %r" % first)
        check(second["body"] == low("$1.00") and second["replacesId"] == 1,
              "the second notification: %r" % second)
        print("ok: healthy, low, low, healthy, low told twice, the second replacing the first")

        # A click on it: the dashboard, which on X11 is the menu with the card, at the pointer.
        check(x11_windows(session) == [], "a window is open before the click: %r" % x11_windows(session))
        session.run("xdotool", "mousemove", "300", "200")
        notifications.tell("invoke 1 default")
        menu = wait_for("the dashboard at the pointer",
                        lambda: [box for box in x11_windows(session) if box[:2] == (300, 200) and box[2] > 300])
        print("ok: clicking the notification opened the dashboard at %r" % (menu[0],))
        session.run("xdotool", "key", "Escape")
        wait_for("the menu to close", lambda: x11_windows(session) == [])

        session.stop(app)
        app = session.start([session.binary("quorvane")], "app2.log")
        service = session.wait_for_item(app)
        wait_for("the balance after the restart", lambda: session.item_property(service, "XAyatanaLabel") == " $1.00")
        refresh_to("0.90")
        refresh_to("3.00")
        server.total = "0.40"
        check(session.quorvane("status") == WARNING + " $0.40\n", "the command line's title")
        refresh_to("0.40")
        # The next notice is the app's for this fall: none came after the restart, or from the command line.
        third = notifications.read(3)[2]
        check(third["body"] == low("$0.40") and third["replacesId"] == 0,
              "after the restart and the command line, the app's notice: %r" % third)
        print("ok: a restart while low tells nothing; the command line tells nothing and records nothing")

        notifications.tell("stop")
        wait_for("the server to leave the bus", lambda: not session.has_owner("org.freedesktop.Notifications"))
        for total in ("2.00", "0.30", "2.00", "0.20"):
            refresh_to(total)
        log = open(session.path("app2.log"), errors="replace").read()
        check(log.count(NO_SERVER) == 1, "lines about the missing server: %r" % log)
        check(app.poll() is None, "the app ended without a notification server")
        check(session.item_property(service, "ToolTip")[3] == WARNING + " $0.20", "the title after the falls")
        print("ok: without a server one line says so and the app goes on")
        session.stop(app)
