# The packages `cpack` makes from the install rules: a Debian package on
# Linux, Quorvane.dmg (the bundle beside a link to /Applications) on a Mac.
set(CPACK_PACKAGE_NAME quorvane)
set(CPACK_PACKAGE_VENDOR "The Quorvane developers")
set(CPACK_PACKAGE_CONTACT "The Quorvane developers <developers@quorvane.app>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "DeepSeek API balance in the panel")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://quorvane.app")
if(APPLE)
    # Stripping the installed binary would break its signature.
    set(CPACK_STRIP_FILES OFF)
    # A drag-and-drop disk image of the bundle. The generator puts a link to
    # /Applications beside it unless told not to.
    set(CPACK_GENERATOR DragNDrop)
    set(CPACK_PACKAGE_FILE_NAME Quorvane)
    set(CPACK_DMG_VOLUME_NAME Quorvane)
    set(CPACK_DMG_FORMAT UDZO)
else()
    set(CPACK_STRIP_FILES ON)
    set(CPACK_GENERATOR DEB)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    # quorvane_<version>_<architecture>.deb
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_RELEASE "")
    # The libraries the binary links, found by dpkg-shlibdeps.
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SECTION utils)
    set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
    set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
    set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${CPACK_PACKAGE_HOMEPAGE_URL}")
    # Colour emoji for the marks, the cards' font, the Wayland platform, a
    # keyring, wl-copy for copying from a panel's menu on Wayland, and a host
    # for the status item: GNOME's AppIndicator extension, unless the desktop
    # already brings one (Plasma, Xfce, waybar, ...), which then satisfies
    # the recommendation without pulling GNOME Shell in.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
        "fonts-noto-color-emoji, fonts-inter, qt6-wayland, gnome-keyring, wl-clipboard, \
gnome-shell-extension-appindicator | plasma-workspace | xfce4-panel | waybar | lxqt-panel | mate-panel \
| cinnamon | budgie-desktop")
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS "xclip | xsel")
    set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)
    # The long description; the summary above is its first line.
    set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Quorvane keeps the balance of a DeepSeek API account in the desktop's
status area (KDE Plasma, GNOME with the AppIndicator extension, Xfce,
waybar and others) and turns successive readings into what was spent
today and since a baseline the user resets. Its dashboard draws a
seven-day chart. It refreshes on a timer, keeps the API key in the
Secret Service and copies a plain-text summary. The same program is a
command line for scripts and status bars.")
endif()

include(CPack)
