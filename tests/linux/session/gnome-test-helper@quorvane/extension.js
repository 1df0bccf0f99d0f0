/* exported init, enable, disable */
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
    return [x, y, width, height].map(Math.round);
}

// Mapped and not clipped away: a submenu inside a submenu is mapped with no height.
function shown(actor) {
    for (let parent = actor; parent; parent = parent.get_parent()) {
        if (parent.width <= 0 || parent.height <= 0)
            return false;
    }
    return actor.mapped;
}

// Every visible item of a menu, a submenu's items after it.
function menuItems(menu) {
    return menu._getMenuItems().filter(item => item.visible).flatMap(item => {
        const entry = { label: item.label ? item.label.text : null, ornament: item._ornament, shown: shown(item),
            rect: rect(item) };
        if (!(item instanceof PopupMenu.PopupSubMenuMenuItem))
            return [entry];
        entry.open = item.menu.isOpen;
        return [entry, ...menuItems(item.menu)];
    });
}

class Helper {
    constructor() {
        this.clipboard = null;
        const seat = Clutter.get_default_backend().get_default_seat();
        // A headless seat has no keyboard; without one no client can take keyboard focus or the clipboard.
        this._keyboard = seat.create_virtual_device(Clutter.InputDeviceType.KEYBOARD_DEVICE);
        this._pointer = seat.create_virtual_device(Clutter.InputDeviceType.POINTER_DEVICE);
    }

    // The top bar's items from the AppIndicator extension.
    indicators() {
        return Object.entries(Main.panel.statusArea)
            .filter(([key, button]) => key.startsWith('appindicator-') && button)
            .map(([key, button]) => ({ key, visible: button.visible && button.mapped, rect: rect(button),
                label: button._label ? button._label.text : null, menuItems: button.menu.numMenuItems }));
    }

    menu(key) {
        const button = Main.panel.statusArea[key];
        return button && button.menu.isOpen ? { rect: rect(button.menu.actor), items: menuItems(button.menu) } : null;
    }

    windows() {
        return global.get_window_actors().map(actor => actor.meta_window).map(window => {
            const frame = window.get_frame_rect();
            return { title: window.get_title(), wmClass: window.get_wm_class(), pid: window.get_pid(),
                shown: !window.minimized && window.showing_on_its_workspace(), focus: window.has_focus(),
                rect: [frame.x, frame.y, frame.width, frame.height] };
        });
    }

    move(x, y) {
        this._pointer.notify_absolute_motion(GLib.get_monotonic_time(), x, y);
        return true;
    }

    // Presses and releases, count times, all at once: the shell counts a double click's within 400 ms.
    click(x, y, button, count) {
        this.move(x, y);
        for (let i = 0; i < 2 * count; i++) {
            this._pointer.notify_button(GLib.get_monotonic_time(), button,
                i % 2 ? Clutter.ButtonState.RELEASED : Clutter.ButtonState.PRESSED);
        }
        return true;
    }

    // Asks for the clipboard's text; the answer lands in this.clipboard.
    readClipboard() {
        this.clipboard = null;
        St.Clipboard.get_default().get_text(St.ClipboardType.CLIPBOARD,
            (_clipboard, text) => (this.clipboard = { text }));
        return true;
    }

    destroy() {
        this._pointer.run_dispose();
        this._keyboard.run_dispose();
    }
}

function init() {}

function enable() {
    global.context.unsafe_mode = true;
    global.quorvaneTest = new Helper();
}

function disable() {
    global.quorvaneTest.destroy();
    delete global.quorvaneTest;
}
