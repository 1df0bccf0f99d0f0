#!/bin/sh
# Runs a command on a session bus of its own. With --as-user, and run as
# root, it first enters a user namespace as user 1000: sway refuses to run
# as root, and a namespace needs no change to the machine (no user to add).
# Usage: run-in-session.sh [--as-user] <command> [arguments...]
set -eu
if [ "${1:-}" = "--as-user" ]; then
    shift
    if [ "$(id -u)" -eq 0 ]; then
        exec unshare --user --map-user=1000 --map-group=1000 -- dbus-run-session -- "$@"
    fi
fi
exec dbus-run-session -- "$@"
