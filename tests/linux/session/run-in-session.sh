#!/bin/sh
# Runs a command on a session bus of its own. With --as-user, and run as
# root, it first enters a user namespace as user 1000: sway refuses to run
# as root, and a namespace needs no change to the machine (no user to add).
# With --config-file=FILE the bus is configured by FILE instead of the
# system's session.conf (a bus that starts no services on demand, say).
# Usage: run-in-session.sh [--as-user] [--config-file=FILE] <command> [arguments...]
set -eu
as_user=""
config=""
while :; do
    case "${1:-}" in
    --as-user) as_user=1 ;;
    --config-file=*) config="$1" ;;
    *) break ;;
    esac
    shift
done
if [ -n "$as_user" ] && [ "$(id -u)" -eq 0 ]; then
    exec unshare --user --map-user=1000 --map-group=1000 -- dbus-run-session ${config:+"$config"} -- "$@"
fi
exec dbus-run-session ${config:+"$config"} -- "$@"
