// quorvane_virtual_pointer: gives a headless Wayland seat a pointer, so that
// `swaymsg seat - cursor ...` can move and click it. A headless compositor
// has no input devices, and a seat without a pointer device never offers
// clients a wl_pointer: a panel would not see a single click. This adds one
// through wlr-virtual-pointer-unstable-v1 and holds it until it is ended.
//
// The protocol's two interfaces are spelled out here (Debian ships no XML of
// the wlr protocols to generate them from); requests are numbered as the
// protocol declares them.
#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>
#include <wayland-client.h>

namespace {

extern const wl_interface virtualPointerInterface;

const wl_interface* noTypes[] = {nullptr, nullptr, nullptr, nullptr, nullptr};
const wl_interface* createTypes[] = {&wl_seat_interface, &virtualPointerInterface};

const wl_message managerRequests[] = {
    {"create_virtual_pointer", "?on", createTypes},
    {"destroy", "", noTypes},
};
const wl_interface managerInterface = {"zwlr_virtual_pointer_manager_v1", 1, 2, managerRequests, 0, nullptr};

const wl_message pointerRequests[] = {
    {"motion", "uff", noTypes},   {"motion_absolute", "uuuuu", noTypes},
    {"button", "uuu", noTypes},   {"axis", "uuf", noTypes},
    {"frame", "", noTypes},       {"axis_source", "u", noTypes},
    {"axis_stop", "uu", noTypes}, {"axis_discrete", "uufi", noTypes},
    {"destroy", "", noTypes},
};
const wl_interface virtualPointerInterface = {"zwlr_virtual_pointer_v1", 1, 9, pointerRequests, 0, nullptr};

constexpr uint32_t kCreateVirtualPointer = 0;
constexpr uint32_t kMotionAbsolute = 1;
constexpr uint32_t kFrame = 4;

wl_proxy* manager = nullptr;

void global(void*, wl_registry* registry, uint32_t name, const char* interface, uint32_t) {
    if (std::strcmp(interface, managerInterface.name) == 0) {
        manager = static_cast<wl_proxy*>(wl_registry_bind(registry, name, &managerInterface, 1));
    }
}

void globalRemove(void*, wl_registry*, uint32_t) {}

const wl_registry_listener registryListener = {global, globalRemove};

volatile std::sig_atomic_t stopping = 0;

void stop(int) {
    stopping = 1;
}

} // namespace

int main() {
    wl_display* display = wl_display_connect(nullptr);
    if (!display) {
        std::fprintf(stderr, "quorvane_virtual_pointer: no Wayland display\n");
        return 1;
    }
    wl_registry* registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &registryListener, nullptr);
    wl_display_roundtrip(display);
    if (!manager) {
        std::fprintf(stderr, "quorvane_virtual_pointer: the compositor offers no virtual pointers\n");
        return 1;
    }
    wl_proxy* pointer = wl_proxy_marshal_constructor(manager, kCreateVirtualPointer, &virtualPointerInterface,
                                                     nullptr, nullptr);
    // One event, so that the compositor counts the device as a pointer at once.
    wl_proxy_marshal(pointer, kMotionAbsolute, 0u, 0u, 0u, 1u, 1u);
    wl_proxy_marshal(pointer, kFrame);
    wl_display_roundtrip(display);
    std::printf("ready\n");
    std::fflush(stdout);

    std::signal(SIGTERM, stop);
    std::signal(SIGINT, stop);
    while (!stopping) {
        pause();
    }
    wl_display_disconnect(display);
    return 0;
}
