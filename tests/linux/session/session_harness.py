"""What every desktop session test shares: the scratch home and its processes, waiting, the buses, the item and its
menu over D-Bus, the balance endpoint, the checks of a refresh, the clipboard and memory, a bare X server."""
import json
import os
import re
import runpy
import shutil
import subprocess
import sys
import tempfile
import time

WIDTH, HEIGHT = 1280, 800
APP_ID = "app.quorvane.Quorvane"
KEY = "sk-session-test"
REFRESH, COPY = "\U0001F504 Refresh Now", "\U0001F4CB Copy Summary"
LOW_TITLE, LOW_BODY = "DeepSeek balance is low", "$0.80 left, at or below the warning level of $1.00."
# A system bus of our own that lets anyone own, call and watch anything.
SYSTEM_BUS_CONF = """<busconfig><type>system</type><listen>unix:path=%s</listen><auth>EXTERNAL</auth><policy context=
  "default"><allow user="*"/><allow own="*"/><allow send_type="method_call"/><allow send_destination="*" eavesdrop=
  "true"/><allow receive_sender="*"/><allow eavesdrop="true"/></policy></busconfig>"""


class Failure(Exception):
    pass


def check(condition, message):
    if not condition:
        raise Failure(message)


def wait_for(what, probe, timeout=15.0):
    """The first truthy answer of probe() within the timeout."""
    deadline, last = time.monotonic() + timeout, None
    while time.monotonic() < deadline:
        try:
            last = probe()
            if last:
                return last
        except (subprocess.CalledProcessError, ValueError, KeyError, IndexError) as error:
            last = error
        time.sleep(0.1)
    raise Failure("timed out waiting for %s (last: %r)" % (what, last))


class Session:
    def __init__(self, args):
        self.args, self.processes = args, []
        self.scratch = tempfile.mkdtemp(prefix="quorvane-session-")
        for name in ("home", "config", "runtime"):
            os.makedirs(self.path(name), mode=0o700)
        self.env = {name: value for name, value in os.environ.items()
                    if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "SWAYSOCK", "LC_ALL")}
        self.env.update(HOME=self.path("home"), XDG_CONFIG_HOME=self.path("config"), LANG="en_US.UTF-8", TZ="UTC",
                        XDG_RUNTIME_DIR=self.path("runtime"), QUORVANE_SECRET_STORE="file")
        os.makedirs(args.out, exist_ok=True)

    def path(self, *parts):
        return os.path.join(self.scratch, *parts)

    def write(self, text, *parts):
        """Writes a file in the scratch folder, and the folders it lies in; gives its path."""
        os.makedirs(os.path.dirname(self.path(*parts)), exist_ok=True)
        with open(self.path(*parts), "w") as out:
            out.write(text)
        return out.name

    def shot(self, name):
        return os.path.join(self.args.out, name)

    def start(self, command, log, env=None, stdout=None, **kwargs):
        """Starts a process that close() stops; what it prints goes to the log unless stdout is piped."""
        with open(self.path(log), "w") as output:
            process = subprocess.Popen(command, env=env or self.env, stdout=stdout or output,
                                       stderr=subprocess.STDOUT if stdout is None else output, **kwargs)
        self.processes.append((process, log))
        return process

    def stop(self, process):
        process.terminate()
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()

    def close(self, failed):
        for process, log in reversed(self.processes):
            self.stop(process)
            if failed:
                tail = open(self.path(log), errors="replace").read()[-3000:]
                print("---- %s ----\n%s" % (log, tail), file=sys.stderr)
        shutil.rmtree(self.scratch, ignore_errors=True)

    def run(self, *command, stdin=None, env=None):
        return subprocess.run(command, env=env or self.env, input=stdin, capture_output=True, text=True, check=True,
                              timeout=30).stdout

    def quorvane(self, *arguments, stdin=None):
        return self.run(self.args.quorvane, *arguments, stdin=stdin, env=dict(self.env, QT_QPA_PLATFORM="offscreen"))

    def endpoint(self):
        """scripts/balance-server.py's endpoint in a daemon thread, the app pointed at it and its key stored."""
        script = os.path.join(os.path.dirname(__file__), "..", "..", "..", "scripts", "balance-server.py")
        self.server = runpy.run_path(script)["BalanceEndpoint"](KEY).start()
        self.env["QUORVANE_API_BASE_URL"] = self.server.url
        self.quorvane("key", "set", stdin=KEY + "\n")
        return self.server

    def wait_for_wayland(self, whose, timeout=15.0):
        """The compositor's Wayland socket, once it is there, as the session's WAYLAND_DISPLAY."""
        self.env["WAYLAND_DISPLAY"] = wait_for(whose + " Wayland socket", lambda: [
            name for name in os.listdir(self.path("runtime")) if re.fullmatch(r"wayland-\d+", name)], timeout)[0]

    def start_system_bus(self):
        """Desktops talk to a system bus too; this one is ours, in DBUS_SYSTEM_BUS_ADDRESS."""
        socket = self.path("runtime", "system_bus_socket")
        config = self.write(SYSTEM_BUS_CONF % socket, "system-bus.conf")
        self.start(["dbus-daemon", "--nofork", "--nosyslog", "--config-file=" + config], "system-bus.log")
        self.env["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + socket
        wait_for("the system bus", lambda: self.run("busctl", "--system", "call", "org.freedesktop.DBus",
                                                    "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId"))

    def update_activation_environment(self):
        """What the services the session bus starts on demand need to know of the session."""
        pairs = [text for pair in self.env.items() for text in pair]
        self.run("busctl", "--user", "call", "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                 "UpdateActivationEnvironment", "a{ss}", str(len(pairs) // 2), *pairs)

    def busctl(self, *arguments):
        return json.loads(self.run("busctl", "--user", "--json=short", *arguments))

    def has_owner(self, name):
        return self.busctl("call", "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "NameHasOwner", "s", name)["data"][0]

    def item_property(self, service, name):
        return self.busctl("get-property", service, "/StatusNotifierItem", "org.kde.StatusNotifierItem", name)["data"]

    def wait_for_label(self, service, label, timeout=15.0):
        wait_for("the label %r" % label, lambda: self.item_property(service, "XAyatanaLabel") == label, timeout)

    def menu_layout(self, service):
        return self.busctl("call", service, "/MenuBar", "com.canonical.dbusmenu", "GetLayout", "iias", "--", "0", "-1",
                           "0")["data"][1]

    def menu_click(self, service, label):
        """Clicks the item labelled so through dbusmenu, as a host does."""
        path = menu_path(self.menu_layout(service), label)
        check(path, "no %r in the item's menu" % label)
        self.run("busctl", "--user", "call", service, "/MenuBar", "com.canonical.dbusmenu", "Event", "isvu", "--",
                 str(path[-1][1][0]), "clicked", "s", "", "0")

    def item_of(self, pid):
        """The process's item among those the watcher holds (a bus name, and maybe a path after "/" or "@"), or None."""
        names = {entry["name"] for entry in self.busctl("list") if entry["pid"] == pid}
        items = self.busctl("get-property", "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                            "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems")["data"]
        return next((name for name in (re.split(r"[/@]", item)[0] for item in items) if name in names), None)

    def wait_for_item(self, app):
        return wait_for("the item to register with the watcher", lambda: self.item_of(app.pid))

    def start_app(self, *arguments, log="app.log", env=None):
        """The desktop app and, once the watcher holds it, its item's bus name."""
        app = self.start([self.args.quorvane, *arguments], log, env=env)
        return app, self.wait_for_item(app)

    def refresh(self, click, total=None):
        """Refresh Now, clicked in the host's menu by click(): one request to the endpoint, for the balance total."""
        before = self.server.requests
        self.server.total = total or self.server.total
        click()
        wait_for("Refresh Now's request", lambda: self.server.requests > before)
        time.sleep(1.0)
        check(self.server.requests == before + 1, "Refresh Now made %d requests" % (self.server.requests - before))

    def check_interval_stored(self):
        wait_for("5 min stored", lambda: "Refresh Interval: 5 min" in self.quorvane("menu"), 5)

    def check_summary_copied(self, paste):
        """paste() gives the summary; two processes' summaries, moments apart, differ only in the time of update."""
        def comparable(summary):
            return re.sub(r"^Updated: \d{4}-\d\d-\d\d \d\d:\d\d:\d\d [+-]\d{4}$", "T", summary.strip("\n"), flags=re.M)
        summary = comparable(self.quorvane("summary"))
        wait_for("the summary on the clipboard", lambda: comparable(paste() or "") == summary, 8)

    def check_host_leaves(self, leave, come_back, windows, then=None):
        """The host leaves: 2.5 to 5 s later the app shows a face of its own (in windows()); it goes when it is back."""
        check(not windows(), "a window of the app while the host shows the item: %r" % windows())
        leave()
        left = time.monotonic()
        shown = wait_for("the app's own face once the host left", windows, 8)
        after = time.monotonic() - left
        check(2.5 <= after <= 5.0 and len(shown) == 1, "%r came %.1f s after the host left" % (shown, after))
        if then:
            then(shown[0])
        come_back()
        wait_for("the app's own face to go", lambda: not windows(), 10)
        print("ok: while the host was away, %r, which came after %.1f s" % (shown[0], after))

    def check_memory_at_rest(self, pid):
        """A tray app lives all day: at rest it stays small. A sanitized build's shadow memory is not judged."""
        time.sleep(2.0)
        rss = int(re.search(r"VmRSS:\s+(\d+) kB", open("/proc/%d/status" % pid).read()).group(1)) / 1024.0
        print("rss: %.1f MB" % rss)
        check(self.args.sanitized or rss < 50.0, "%.1f MB resident at rest, over 50 MB" % rss)


def menu_path(node, label):
    """The way to the item labelled so in a dbusmenu layout, menu by menu: [(its place among the items the keyboard
    reaches, its node)], or None. The keyboard skips separators and what is disabled or hidden."""
    values = [(child["data"], {name: value["data"] for name, value in child["data"][1].items()}) for child in node[2]]
    reachable = [(item, value) for item, value in values if value.get("type") != "separator"
                 and value.get("enabled", True) and value.get("visible", True)]
    for index, (item, value) in enumerate(reachable):
        inner = [] if value.get("label") == label else menu_path(item, label)
        if inner is not None:
            return [(index, item, value)] + inner
    return None


# ---- a bare X server ----

def start_xvfb(session):
    """Xvfb on a free display, which it names once it is ready, as the session's DISPLAY."""
    read, write = os.pipe()
    # Without -noreset the server resets, properties and all, when its last client (xprop) leaves.
    session.start(["Xvfb", "-displayfd", str(write), "-screen", "0", "%dx%dx24" % (WIDTH, HEIGHT), "-nolisten", "tcp",
                   "-noreset"], "xvfb.log", pass_fds=(write,))
    os.close(write)
    display = os.fdopen(read).readline().strip()
    check(display, "Xvfb did not start")
    session.env.update(DISPLAY=":" + display, QT_QPA_PLATFORM="xcb")


def x11_windows(session, wm_class="quorvane"):
    """Mapped windows of a class (ours unless told), at any depth as window managers reparent: (x, y, w, h)."""
    pattern = (r'(0x[0-9a-f]+) (?:"[^"]*"|\(has no name\)): \("%s" "[^"]*"\)\s+(\d+)x(\d+)\+-?\d+\+-?\d+'
               r'\s+\+(-?\d+)\+(-?\d+)' % re.escape(wm_class))
    return [tuple(int(n) for n in match.group(4, 5, 2, 3))
            for match in re.finditer(pattern, session.run("xwininfo", "-root", "-tree"))
            if "IsViewable" in session.run("xwininfo", "-id", match.group(1))]


def x11_screenshot(session, path):
    """The whole screen as a PNG; a bare name goes to --out."""
    session.run("import", "-window", "root", path if os.path.isabs(path) else session.shot(path))
    return path
