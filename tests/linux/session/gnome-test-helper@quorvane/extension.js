/* exported init */
// Loaded only into the headless shell of the session test. It turns on the
// shell's unsafe mode, so org.gnome.Shell.Eval and org.gnome.Shell.Screenshot
// answer, and puts its helpers at global.quorvaneTest for Eval to call.
'use strict';

const { Clutter, GLib, St } = imports.gi;
const Main = imports.ui.main;
const PopupMenu = imports.ui.popupMenu;

function rect(actor) {
    const [x, y] = actor.get_transformed_position();
    const [width, height] = actor.get_transformed_size();
    return [Math.round(x), Math.round(y), Math.round(width), Math.round(height)];
}

// Mapped and not clipped away: a submenu inside a submenu is mapped with no height.
function shown(actor) {
    if (!actor.mapped)
        return false;
    for (let parent = actor; parent; parent = parent.get_parent()) {
        if (parent.width <= 0 || parent.height <= 0)
            return false;
    }
    return true;
}

// Every item of a menu, submenus' items indented under theirs.
function menuItems(menu, depth) {
    const items = [];
    for (const item of menu._getMenuItems()) {
        if (!item.visible)
            continue;
        const entry = {
            depth,
            label: item.label ? item.label.text : null,
            separator: item instanceof PopupMenu.PopupSeparatorMenuItem,
            sensitive: item.getSensitive(),
            ornament: item._ornament,
            shown: shown(item),
            rect: rect(item),
        };
        items.push(entry);
        if (item instanceof PopupMenu.PopupSubMenuMenuItem) {
            entry.open = item.menu.isOpen;
            items.push(...menuItems(item.menu, depth + 1));
        }
    }
    return items;
}

class Helper {
    constructor() {
        this.clipboard = null;
        // A headless seat has no keyboard; without one no client can take keyboard focus or the clipboard.
        this._keyboard = Clutter.get_default_backend().get_default_seat()
            .create_virtual_device(Clutter.InputDeviceType.KEYBOARD_DEVICE);
    }

    // The top bar's items from the AppIndicator extension: label, geometry, menu.
    indicators() {
        return Object.entries(Main.panel.statusArea)
            .filter(([key, button]) => key.startsWith('appindicator-') && button)
            .map(([key, button]) => ({
                key,
                visible: button.visible && button.mapped,
                label: button._label ? button._label.text : null,
                rect: rect(button),
                menuOpen: button.menu.isOpen,
                menuItems: button.menu.numMenuItems,
            }));
    }

    menu(key) {
        const button = Main.panel.statusArea[key];
        if (!button || !button.menu.isOpen)
            return null;
        return { rect: rect(button.menu.actor), items: menuItems(button.menu, 0) };
    }

    windows() {
        return global.get_window_actors().map(actor => actor.meta_window).map(window => {
            const frame = window.get_frame_rect();
            return {
                title: window.get_title(),
                wmClass: window.get_wm_class(),
                appId: window.get_gtk_application_id(),
                pid: window.get_pid(),
                shown: !window.minimized && window.showing_on_its_workspace(),
                focus: window.has_focus(),
                rect: [frame.x, frame.y, frame.width, frame.height],
            };
        });
    }

    _device() {
        if (!this._pointer) {
            const seat = Clutter.get_default_backend().get_default_seat();
            this._pointer = seat.create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
        }
        return this._pointer;
    }

    move(x, y) {
        this._device().notify_absolute_motion(GLib.get_monotonic_time(), x, y);
        return true;
    }

    click(x, y, button = Clutter.BUTTON_PRIMARY, count = 1) {
        const pointer = this._device();
        pointer.notify_absolute_motion(GLib.get_monotonic_time(), x, y);
        for (let i = 0; i < count; i++) {
            pointer.notify_button(GLib.get_monotonic_time(), button, Clutter.ButtonState.PRESSED);
            pointer.notify_button(GLib.get_monotonic_time(), button, Clutter.ButtonState.RELEASED);
        }
        return true;
    }

    // Asks for the clipboard's text; the answer lands in this.clipboard.
    readClipboard() {
        this.clipboard = null;
        St.Clipboard.get_default().get_text(St.ClipboardType.CLIPBOARD, (_clipboard, text) => {
            this.clipboard = { text };
        });
        return true;
    }

    destroy() {
        for (const device of [this._pointer, this._keyboard]) {
            if (device)
                device.run_dispose();
        }
        this._pointer = this._keyboard = null;
    }
}

class Extension {
    enable() {
        global.context.unsafe_mode = true;
        global.quorvaneTest = new Helper();
    }

    disable() {
        if (global.quorvaneTest)
            global.quorvaneTest.destroy();
        delete global.quorvaneTest;
    }
}

function init() {
    return new Extension();
}
