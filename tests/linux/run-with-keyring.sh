#!/bin/sh
# Runs a command in a private session bus with an unlocked gnome-keyring that
# serves org.freedesktop.secrets, in a throwaway home, so nothing touches the
# user's own keyrings. Usage: run-with-keyring.sh <command> [arguments...]
set -eu

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT INT TERM
mkdir -m 700 "$scratch/home" "$scratch/data" "$scratch/config" "$scratch/cache" "$scratch/runtime"

HOME="$scratch/home" \
XDG_DATA_HOME="$scratch/data" \
XDG_CONFIG_HOME="$scratch/config" \
XDG_CACHE_HOME="$scratch/cache" \
XDG_RUNTIME_DIR="$scratch/runtime" \
dbus-run-session -- sh -c '
    # The password creates and unlocks the login keyring, the default collection.
    printf pw | gnome-keyring-daemon --unlock --components=secrets >/dev/null
    # The daemon claims its bus name a moment after it returns.
    tries=0
    until dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
            org.freedesktop.DBus.NameHasOwner string:org.freedesktop.secrets 2>/dev/null | grep -q "boolean true"; do
        tries=$((tries + 1))
        if [ "$tries" -ge 100 ]; then
            echo "gnome-keyring did not take org.freedesktop.secrets" >&2
            exit 1
        fi
        sleep 0.1
    done
    exec "$@"
' sh "$@"
