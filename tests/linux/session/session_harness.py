"""What every desktop session test shares: the scratch home, the processes
it starts and stops, waiting, the buses, the local balance endpoint, a bare
X server, resident memory, and the menu as lines a host shows.

Standard library only.
"""
import contextlib
import importlib.util
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time

WHALE = "\U0001F40B"
WARNING = "\u26A0\uFE0F"
WIDTH, HEIGHT = 1280, 800
APP_ID = "app.quorvane.Quorvane"
KEY = "sk-session-test"
RSS_LIMIT_MB = 50.0

# A system bus of our own that lets anyone own, call and watch anything.
SYSTEM_BUS_CONF = """<busconfig><type>system</type><listen>unix:path=%s</listen><auth>EXTERNAL</auth>
  <policy context="default"><allow user="*"/><allow own="*"/><allow send_type="method_call"/>
    <allow send_destination="*" eavesdrop="true"/><allow receive_sender="*"/><allow eavesdrop="true"/></policy>
</busconfig>
"""


class Failure(Exception):
    pass


def check(condition, message):
    if not condition:
        raise Failure(message)


def wait_for(what, probe, timeout=15.0):
    """The first truthy answer of probe() within the timeout."""
    deadline = time.monotonic() + timeout
    last = None
    while time.monotonic() < deadline:
        try:
            last = probe()
        except (subprocess.CalledProcessError, ValueError, KeyError, IndexError) as error:
            last = error
        else:
            if last:
                return last
        time.sleep(0.1)
    raise Failure("timed out waiting for %s (last: %r)" % (what, last))


class Parts:
    """Runs each group of checks even when an earlier one failed, so one run
    tells all that is wrong; finish() then fails naming each group that did."""

    def __init__(self, recover=None):
        self.failed, self.recover = [], recover  # recover: puts the desktop back for the next group

    def run(self, name, body):
        try:
            body()
        except Failure as failure:
            print("FAILED: %s: %s" % (name, failure))
            self.failed.append("%s: %s" % (name, failure))
            if self.recover:
                with contextlib.suppress(Failure):
                    self.recover()

    def finish(self):
        check(not self.failed, "failed: " + "; ".join(self.failed))


@contextlib.contextmanager
def balance_endpoint(session):
    """The project's local balance endpoint (scripts/balance-server.py) in a
    thread, with the app pointed at it and its key stored."""
    path = os.path.join(os.path.dirname(__file__), "..", "..", "..", "scripts", "balance-server.py")
    found = importlib.util.spec_from_file_location("balance_server", path)
    module = importlib.util.module_from_spec(found)
    found.loader.exec_module(module)
    server = module.BalanceEndpoint(KEY).start()
    try:
        session.env["QUORVANE_API_BASE_URL"] = server.url
        session.quorvane("key", "set", stdin=KEY + "\n")
        yield server
    finally:
        server.stop()


class Session:
    def __init__(self, args):
        self.binaries = {"quorvane": args.quorvane, "quorvane_virtual_pointer": args.pointer,
                         "quorvane_fake_watcher": args.watcher,
                         "quorvane_fake_notifications": args.notifications,
                         "quorvane_kwin_fake_input": args.fake_input}
        self.out = args.out
        self.sanitized = args.sanitized
        self.scratch = tempfile.mkdtemp(prefix="quorvane-session-")
        self.processes = []
        self.env = dict(os.environ)
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "SWAYSOCK", "LC_ALL"):
            self.env.pop(name, None)
        for name in ("home", "config", "runtime"):
            os.makedirs(self.path(name), mode=0o700)
        self.env.update(HOME=self.path("home"), XDG_CONFIG_HOME=self.path("config"),
                        XDG_RUNTIME_DIR=self.path("runtime"), LANG="en_US.UTF-8", TZ="UTC",
                        QUORVANE_SECRET_STORE="file")
        os.makedirs(self.out, exist_ok=True)

    def path(self, *parts):
        return os.path.join(self.scratch, *parts)

    def binary(self, name):
        return self.binaries[name]

    def start(self, command, log, env=None, stdout=None, **kwargs):
        """Starts a process that close() stops; what it prints goes to the log unless stdout is piped."""
        with open(self.path(log), "w") as output:
            process = subprocess.Popen(command, env=env or self.env, stdout=stdout or output,
                                       stderr=subprocess.STDOUT if stdout is None else output, **kwargs)
        self.processes.append((process, log))
        return process

    def stop(self, process):
        if process.poll() is None:
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
                with open(self.path(log), errors="replace") as text:
                    tail = text.read()[-3000:]
                print("---- %s ----\n%s" % (log, tail), file=sys.stderr)
        shutil.rmtree(self.scratch, ignore_errors=True)

    def run(self, *command, stdin=None, env=None):
        return subprocess.run(command, env=env or self.env, input=stdin, capture_output=True,
                              text=True, check=True, timeout=30).stdout

    def quorvane(self, *arguments, stdin=None):
        env = dict(self.env, QT_QPA_PLATFORM="offscreen")
        return self.run(self.binary("quorvane"), *arguments, stdin=stdin, env=env)

    def wait_for_wayland(self, whose, timeout=15.0):
        """The compositor's Wayland socket, once it is there, as the session's WAYLAND_DISPLAY."""
        runtime = self.path("runtime")
        found = wait_for(whose + " Wayland socket", lambda: [name for name in os.listdir(runtime)
                                                             if re.fullmatch(r"wayland-\d+", name)], timeout)
        self.env["WAYLAND_DISPLAY"] = found[0]

    # ---- D-Bus, through busctl's JSON ----

    def start_system_bus(self):
        """Desktops talk to a system bus too; this one is ours, in DBUS_SYSTEM_BUS_ADDRESS."""
        socket, config = self.path("runtime", "system_bus_socket"), self.path("system-bus.conf")
        with open(config, "w") as out:
            out.write(SYSTEM_BUS_CONF % socket)
        self.start(["dbus-daemon", "--nofork", "--nosyslog", "--config-file=" + config], "system-bus.log")
        self.env["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + socket
        wait_for("the system bus", lambda: self.run("busctl", "--system", "call", "org.freedesktop.DBus",
                                                    "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetId"))

    def update_activation_environment(self, names):
        """Services the session bus starts on demand get the session's variables."""
        pairs = [text for name in names if name in self.env for text in (name, self.env[name])]
        self.run("busctl", "--user", "call", "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                 "UpdateActivationEnvironment", "a{ss}", str(len(pairs) // 2), *pairs)

    def busctl(self, *arguments):
        return json.loads(self.run("busctl", "--user", "--json=short", *arguments))

    def has_owner(self, name):
        return self.busctl("call", "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "NameHasOwner", "s", name)["data"][0]

    def registered_items(self):
        return self.busctl("get-property", "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                           "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems")["data"]

    def item_property(self, service, name):
        return self.busctl("get-property", service, "/StatusNotifierItem", "org.kde.StatusNotifierItem",
                           name)["data"]

    def menu_layout(self, service):
        return self.busctl("call", service, "/MenuBar", "com.canonical.dbusmenu", "GetLayout",
                           "iias", "--", "0", "-1", "0")["data"][1]

    def menu_click(self, service, label):
        """Clicks the item labelled so through dbusmenu, as a host does."""
        path = menu_path(self.menu_layout(service), label)
        check(path, "no %r in the item's menu" % label)
        self.run("busctl", "--user", "call", service, "/MenuBar", "com.canonical.dbusmenu", "Event",
                 "isvu", "--", str(path[-1][1][0]), "clicked", "s", "", "0")

    def item_of(self, pid):
        """The bus name of the process's item among those the watcher holds, or None.

        Watchers write an item as its bus name, with its object path joined
        by nothing or by "@"."""
        for item in self.registered_items():
            name = re.split(r"[/@]", item, maxsplit=1)[0]
            try:
                owner = self.busctl("call", "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                    "GetConnectionUnixProcessID", "s", name)["data"][0]
            except subprocess.CalledProcessError:
                continue  # an item whose process has gone, not yet forgotten
            if owner == pid:
                return name
        return None

    def wait_for_item(self, app):
        return wait_for("the item to register with the watcher", lambda: self.item_of(app.pid))


class BusMonitor:
    """What the host asks of the item and what the item announces, from dbus-monitor."""

    def __init__(self, session):
        self.log = session.path("monitor.log")
        session.start(["dbus-monitor", "--session", "interface='com.canonical.dbusmenu'",
                       "interface='org.kde.StatusNotifierItem'", "interface='org.kde.StatusNotifierWatcher'"],
                      "monitor.log")
        wait_for("dbus-monitor", lambda: "NameAcquired" in open(self.log, errors="replace").read())

    def messages(self):
        """[(member, [argument, ...])], oldest first."""
        found = []
        for line in open(self.log, errors="replace"):
            member = re.search(r"member=(\w+)", line)
            if member and not line.startswith(" "):
                found.append((member.group(1), []))
            else:
                value = re.match(r"\s+(?:variant\s+)?(?:string|int32|uint32|boolean) (.*)", line)
                if found and value:
                    found[-1][1].append(value.group(1).strip('"'))
        return found

    def calls(self, member):
        return [arguments for name, arguments in self.messages() if name == member]


# ---- a bare X server ----

def start_xvfb(session):
    """Xvfb on the first free display, as the session's DISPLAY."""
    number = 90
    while os.path.exists("/tmp/.X11-unix/X%d" % number) or os.path.exists("/tmp/.X%d-lock" % number):
        number += 1
    # Without -noreset the server resets, properties and all, when its last client (xprop) leaves.
    session.start(["Xvfb", ":%d" % number, "-screen", "0", "%dx%dx24" % (WIDTH, HEIGHT), "-nolisten", "tcp",
                   "-noreset"], "xvfb.log")
    session.env["DISPLAY"] = ":%d" % number
    wait_for("Xvfb", lambda: os.path.exists("/tmp/.X11-unix/X%d" % number) and session.run("xprop", "-root"))


def x11_windows(session, wm_class="quorvane"):
    """Mapped windows of a class (ours unless told), at any depth as window managers reparent:
    (x, y, width, height)."""
    pattern = (r'(0x[0-9a-f]+) (?:"[^"]*"|\(has no name\)): \("%s" "[^"]*"\)\s+(\d+)x(\d+)\+-?\d+\+-?\d+'
               r'\s+\+(-?\d+)\+(-?\d+)' % re.escape(wm_class))
    found = []
    for match in re.finditer(pattern, session.run("xwininfo", "-root", "-tree")):
        if "IsViewable" in session.run("xwininfo", "-id", match.group(1)):
            width, height, x, y = (int(number) for number in match.group(2, 3, 4, 5))
            found.append((x, y, width, height))
    return found


def x11_screenshot(session, path):
    """The whole screen as a PNG; a bare name goes to the screenshots folder."""
    session.run("import", "-window", "root", path if os.path.isabs(path) else os.path.join(session.out, path))
    return path


def x11_click(session, box, button):
    x, y, width, height = box
    session.run("xdotool", "mousemove", str(x + width // 2), str(y + height // 2), "click", str(button))


# ---- the app's footprint ----

def check_memory_at_rest(session, pid):
    """A tray app lives all day: at rest, once what a closed window freed is given back, it stays small.
    What holds the most of it, file by file (or kind of memory), goes to the log. A binary built with
    sanitizers is measured but not judged: their shadow memory is not the program's."""
    time.sleep(2.0)
    with open("/proc/%d/status" % pid) as status:
        rss = int(re.search(r"VmRSS:\s+(\d+) kB", status.read()).group(1)) / 1024.0
    by_file, name = {}, None
    with open("/proc/%d/smaps" % pid) as smaps:
        for line in smaps:
            if re.match(r"[0-9a-f]+-[0-9a-f]+ ", line):
                fields = line.split(None, 5)
                name = os.path.basename(fields[5].strip()) if len(fields) > 5 else "[anonymous]"
            elif line.startswith("Rss:"):
                by_file[name] = by_file.get(name, 0) + int(line.split()[1])
    top = sorted(by_file.items(), key=lambda item: -item[1])[:8]
    print("rss: %.1f MB (%s)" % (rss, ", ".join("%s %.1f" % (name, kb / 1024.0) for name, kb in top)))
    check(session.sanitized or rss < RSS_LIMIT_MB, "%.1f MB resident at rest, over %.0f MB" % (rss, RSS_LIMIT_MB))


# ---- the menu, from dbusmenu and from `quorvane menu --json` ----

def values(node):
    """A dbusmenu layout node's properties, as plain values."""
    return {name: value["data"] for name, value in node[1].items()}


def layout_lines(node, indent=""):
    """One line an item: what a host shows of it."""
    lines = []
    for child in node[2]:
        item = values(child["data"])
        if item.get("type") == "separator":
            lines.append(indent + "---")
            continue
        line = indent + ("" if item.get("enabled", True) else "(off) ")
        if item.get("toggle-type") == "radio":
            line += "(o) " if item.get("toggle-state") == 1 else "( ) "
        line += item["label"].replace("__", "_")
        lines.append(line)
        if item.get("children-display") == "submenu":
            lines.extend(layout_lines(child["data"], indent + "  "))
    return lines


def reachable(node):
    """The items of a menu the keyboard moves through: no separators, nothing disabled or hidden."""
    items = [(child["data"], values(child["data"])) for child in node[2]]
    return [item for item, value in items
            if value.get("type") != "separator" and value.get("enabled", True) and value.get("visible", True)]


def menu_path(node, label):
    """The way to the item labelled so, menu by menu: [(its place among the reachable items, its node)],
    or None."""
    for index, child in enumerate(reachable(node)):
        inner = [] if values(child).get("label") == label else menu_path(child, label)
        if inner is not None:
            return [(index, child)] + inner
    return None


def model_lines(items, indent=""):
    """The same lines from the core's model as the command line prints it."""
    lines = []
    for item in items:
        if item.get("separator"):
            lines.append(indent + "---")
        elif "card" in item:
            lines.extend(indent + "(off) " + label["text"] for label in item["card"]["labels"])
        elif "submenu" in item:
            lines.append(indent + item["title"])
            lines.extend(model_lines(item["submenu"], indent + "  "))
        elif not item["command"]:
            lines.append(indent + "(off) " + item["title"])
        else:
            line = indent + ("" if item["enabled"] else "(off) ")
            if item["command"] == "refreshIntervalClicked:":
                line += "[x] " if item["state"] == "on" else "[ ] "
            lines.append(line + item["title"])
    return lines


def model_item(items, title):
    """The item of the core's model with this title, at any depth, or None."""
    for item in items:
        found = item if item.get("title") == title else model_item(item.get("submenu", []), title)
        if found:
            return found
    return None


def comparable(summary):
    """Two processes refresh moments apart: their summaries differ only in the time of update."""
    return re.sub(r"^Updated: \d{4}-\d\d-\d\d \d\d:\d\d:\d\d [+-]\d{4}$", "Updated: T", summary.strip("\n"), flags=re.M)
