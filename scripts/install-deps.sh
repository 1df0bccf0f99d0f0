#!/usr/bin/env bash
# Installs the Debian packages Quorvane needs to build, test and run, skipping
# those already present. Uses sudo when not run as root.
set -euo pipefail

packages=(
    # build and tests
    cmake ninja-build g++ clang git pkg-config clang-format clang-tidy
    libgtest-dev libbenchmark-dev
    # the formatting library
    libicu-dev
    # the Linux desktop app and command line
    qt6-base-dev libsecret-1-dev
    # a real Secret Service and a display for the tests and screenshots
    gnome-keyring dbus dbus-x11 libsecret-tools xvfb xauth
    # the desktop sessions the tests run the app in: X11 with a work area,
    # and Wayland (sway with waybar as panel and tray, Qt's Wayland plugin)
    x11-utils python3 sway waybar grim qt6-wayland libwayland-dev
    # XFCE: its panel with the status tray, its window manager, settings and
    # notification daemon, and the tools that click, read the clipboard and take screenshots
    xfce4-panel xfwm4 xfce4-settings xfconf xfce4-notifyd xdotool xclip imagemagick adwaita-icon-theme
    # GNOME Shell with the AppIndicator extension as the status item's host,
    # and gjs, which runs the shell's notification service (every GNOME
    # desktop has it; gnome-shell alone does not pull it in)
    gnome-shell gnome-shell-extension-appindicator gjs
    # KDE Plasma: KWin, kded's watcher, plasmashell, and the fake-input protocol
    kwin-wayland plasma-workspace plasma-desktop-data kded5 qtwayland5 plasma-wayland-protocols libglib2.0-bin
    # the clipboard on Wayland, for the app copying from a panel's menu and for the tests reading it
    wl-clipboard
    # the Debian package and the tools that judge it
    dpkg-dev fakeroot lintian desktop-file-utils appstream groff-base
    # emoji in the title, the menu and the cards
    fonts-noto-color-emoji
    # the cards' UI font, drawn to the proportions their frames were made for
    fonts-inter
    # sanitizer and fuzzer runtimes
    libclang-rt-14-dev
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi
echo "Installing: ${missing[*]}" >&2
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
