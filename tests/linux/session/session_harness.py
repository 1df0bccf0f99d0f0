"""What every desktop session test shares: the scratch home, the processes
it starts and stops, waiting, D-Bus through busctl, the local balance
endpoint, and the menu as lines a host shows.

Standard library only.
"""
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


def balance_endpoint():
    """The project's local balance endpoint (scripts/balance-server.py), in a thread."""
    path = os.path.join(os.path.dirname(__file__), "..", "..", "..", "scripts", "balance-server.py")
    found = importlib.util.spec_from_file_location("balance_server", path)
    module = importlib.util.module_from_spec(found)
    found.loader.exec_module(module)
    return module.BalanceEndpoint(KEY).start()


class Session:
    def __init__(self, args):
        self.binaries = {"quorvane": args.quorvane, "quorvane_virtual_pointer": args.pointer,
                         "quorvane_fake_watcher": args.watcher,
                         "quorvane_kwin_fake_input": args.fake_input}
        self.out = args.out
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

    def start(self, command, log, env=None, **kwargs):
        with open(self.path(log), "w") as output:
            process = subprocess.Popen(command, env=env or self.env, stdout=output,
                                       stderr=subprocess.STDOUT, **kwargs)
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
                with open(self.path(log)) as text:
                    tail = text.read()[-3000:]
                print("---- %s ----\n%s" % (log, tail), file=sys.stderr)
        shutil.rmtree(self.scratch, ignore_errors=True)

    def run(self, *command, stdin=None, env=None):
        return subprocess.run(command, env=env or self.env, input=stdin, capture_output=True,
                              text=True, check=True, timeout=30).stdout

    def quorvane(self, *arguments, stdin=None):
        env = dict(self.env, QT_QPA_PLATFORM="offscreen")
        return self.run(self.binary("quorvane"), *arguments, stdin=stdin, env=env)

    # ---- D-Bus, through busctl's JSON ----

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

    def menu_event(self, service, item_id):
        self.run("busctl", "--user", "call", service, "/MenuBar", "com.canonical.dbusmenu", "Event",
                 "isvu", "--", str(item_id), "clicked", "s", "", "0")

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


# ---- the menu as lines, from dbusmenu and from `quorvane menu --json` ----

def layout_lines(node, indent=""):
    """One line an item: what a host shows of it."""
    lines = []
    for child in node[2]:
        _, properties, _ = child["data"]
        values = {name: value["data"] for name, value in properties.items()}
        if values.get("type") == "separator":
            lines.append(indent + "---")
            continue
        line = indent + ("" if values.get("enabled", True) else "(off) ")
        if values.get("toggle-type") == "radio":
            line += "(o) " if values.get("toggle-state") == 1 else "( ) "
        line += values["label"].replace("__", "_")
        lines.append(line)
        if values.get("children-display") == "submenu":
            lines.extend(layout_lines(child["data"], indent + "  "))
    return lines


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


def item_id(node, label):
    for child in node[2]:
        child_id, properties, _ = child["data"]
        if properties.get("label", {}).get("data") == label:
            return child_id
        found = item_id(child["data"], label)
        if found is not None:
            return found
    return None
