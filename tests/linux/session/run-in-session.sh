#!/bin/sh
# Usage: run-in-session.sh [--as-user] [--config-file=FILE] <command> [arguments...]
# Runs a command on a session bus of its own, configured by FILE if given (a
# bus that starts no services on demand, say). With --as-user, run as root, it
# first enters a user namespace as user 1000: desktops refuse to run as root,
# and a namespace needs no change to the machine (no user to add).
set -eu
user=""
if [ "${1:-}" = --as-user ]; then
    shift
    if [ "$(id -u)" -eq 0 ]; then user="unshare --user --map-user=1000 --map-group=1000 --"; fi
fi
case "${1:-}" in --config-file=*) config="$1" && shift ;; *) config="" ;; esac
exec $user dbus-run-session ${config:+"$config"} -- "$@"
