"""The low-balance notification from the whole program: the app on Xvfb, the tests' watcher as its panel and the
tests' notification server (quorvane_fake_notifications), refreshed through the item's menu as a user does."""
import json
import subprocess

from session_harness import LOW_BODY, LOW_TITLE, REFRESH, check, start_xvfb, wait_for, x11_screenshot, x11_windows


def test(session):
    start_xvfb(session)
    session.start([session.args.watcher], "watcher.log")
    # It writes each Notify as a JSON line; "invoke ID ACTION" clicks a notification.
    server = session.start([session.args.notifications], "notifications.log", stdout=subprocess.PIPE,
                           stdin=subprocess.PIPE, text=True, bufsize=1)
    check(server.stdout.readline() == "ready\n", "the notification server did not start")
    session.endpoint().total = "5.00"
    _, service = session.start_app()
    session.wait_for_label(service, " $5.00")

    session.refresh(lambda: session.menu_click(service, REFRESH), "0.80")
    first = json.loads(server.stdout.readline())
    check(first == {"id": 1, "appName": "Quorvane", "replacesId": 0, "appIcon": "app.quorvane.Quorvane",
                    "summary": LOW_TITLE, "body": LOW_BODY, "actions": ["default", "Open Quorvane"],
                    "desktopEntry": "app.quorvane.Quorvane", "urgency": 1, "image": "64x64", "expireTimeout": -1},
          "the notification: %r" % first)

    # A click on it: the dashboard, which on X11 is the menu with the card, at the pointer.
    check(x11_windows(session) == [], "a window is open before the click: %r" % x11_windows(session))
    session.run("xdotool", "mousemove", "300", "200")
    server.stdin.write("invoke 1 default\n")
    menu = wait_for("the dashboard at the pointer",
                    lambda: [box for box in x11_windows(session) if box[:2] == (300, 200) and box[2] > 300])
    x11_screenshot(session, "notifications-dashboard.png")
    session.run("xdotool", "key", "Escape")
    wait_for("the menu to close", lambda: x11_windows(session) == [])
    print("ok: the notice told of the fall; its click opened the dashboard at %r" % (menu[0],))
