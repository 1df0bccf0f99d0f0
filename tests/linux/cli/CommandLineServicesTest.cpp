// The command line's stand-ins for what a person sees: the clipboard tool and the key's input.
#include "cli/KeyInput.h"
#include "services/ClipboardTool.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace quorvane {
namespace {

TEST(ClipboardToolTest, TheToolFitsTheSession) {
    const struct {
        ClipboardTool::Session session;
        std::vector<std::string> installed;
        std::string expected;
    } cases[] = {
        {{false, true}, {"xclip", "xsel"}, "/usr/bin/xclip -selection clipboard -in"},
        {{false, true}, {"xsel", "wl-copy"}, "/usr/bin/xsel --clipboard --input"},
        {{false, true}, {"wl-copy"}, "none"},
        {{true, true}, {"xclip", "wl-copy"}, "/usr/bin/wl-copy --type text/plain;charset=utf-8"},
        {{true, true}, {"xsel"}, "/usr/bin/xsel --clipboard --input"},
        {{true, false}, {"xclip"}, "none"},
        {{false, false}, {"xclip", "xsel", "wl-copy"}, "none"},
    };
    for (const auto& c : cases) {
        const auto find = [&](std::string_view name) {
            for (const std::string& tool : c.installed) {
                if (tool == name) {
                    return "/usr/bin/" + tool;
                }
            }
            return std::string();
        };

        const std::optional<ClipboardTool> tool = ClipboardTool::forSession(c.session, find);

        std::string described = tool ? tool->program() : "none";
        for (const std::string& argument : tool ? tool->arguments() : std::vector<std::string>{}) {
            described += " " + argument;
        }
        EXPECT_EQ(described, c.expected);
    }
}

TEST(KeyInputTest, AnUnreadableInputSaysWhy) {
    const int closed = ::open("/dev/null", O_WRONLY);
    ASSERT_GE(closed, 0);

    const KeyReading reading = KeyInput::readAll(closed);
    ::close(closed);

    EXPECT_FALSE(reading.text);
    EXPECT_EQ(reading.error, "could not read the key (Bad file descriptor); nothing changed");
}

} // namespace
} // namespace quorvane
