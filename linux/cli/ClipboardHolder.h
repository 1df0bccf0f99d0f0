// The detached helper that keeps a copied summary on the clipboard where no clipboard tool is installed.
#pragma once

#include <chrono>
#include <cstddef>

namespace quorvane {

// Runs in a process of its own, started by ClipboardHandoff, so the command
// that copied can exit while the text stays pasteable. It ends as soon as
// another program owns the clipboard (the user copied something else, or a
// clipboard manager took the text over), and in any case after kLifetime, so
// a forgotten copy does not keep a process around for the rest of the session.
class ClipboardHolder {
public:
    static constexpr std::chrono::minutes kLifetime{10};
    static constexpr std::size_t kMaxBytes = std::size_t{1024} * 1024;

    // Needs a QGuiApplication on the desktop's platform. Reads the text from
    // `input` to its end, takes the clipboard with it, writes one byte to
    // `ready` and closes it, then serves until it no longer owns the
    // clipboard. The exit status: 0 after serving, 1 when the clipboard could
    // not be taken (and `ready` is closed without a byte).
    static int run(int input, int ready);
};

} // namespace quorvane
