// The command line's stand-ins for what a person sees: the key dialog, the key's input, the clipboard and the
// browser.
#include "cli/ClipboardHandoff.h"
#include "cli/CommandLineAlert.h"
#include "cli/HeadlessStatusItem.h"
#include "cli/KeyInput.h"
#include "cli/TerminalDesktop.h"
#include "menu/KeyDialog.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <map>
#include <ostream>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace quorvane {
namespace {

TEST(CommandLineAlertTest, TheGivenKeyAnswersSaveOnceAndThenCancel) {
    CommandLineAlert alert("  sk-typed \n");
    const AlertRequest request = KeyDialog::request("sk-stored");

    const AlertResponse first = alert.runModal(request);
    const AlertResponse second = alert.runModal(request);

    EXPECT_EQ(first.button, kAlertFirstButtonReturn);
    EXPECT_EQ(first.fieldText, "  sk-typed \n") << "the program trims, not the dialog";
    EXPECT_EQ(KeyDialog::acceptedKey(first), std::optional<std::string>("sk-typed"));
    EXPECT_EQ(second.button, kAlertFirstButtonReturn + 1);
    EXPECT_EQ(KeyDialog::acceptedKey(second), std::nullopt);
    EXPECT_EQ(alert.requests(), 2);
}

TEST(CommandLineAlertTest, WithoutAKeyEveryRequestIsCancelled) {
    CommandLineAlert alert;

    const AlertResponse answer = alert.runModal(KeyDialog::request(""));

    EXPECT_EQ(answer.button, kAlertFirstButtonReturn + 1);
    EXPECT_EQ(answer.fieldText, "");
}

TEST(HeadlessStatusItemTest, KeepsWhatTheProgramLastSet) {
    HeadlessStatusItem item;
    item.setTitle("first");
    item.setTitle("second");
    item.setToolTip("Quorvane");
    item.attachMenu();
    item.menuDidChange({MenuItem::separator(), MenuItem::informational("line")});

    EXPECT_TRUE(item.hasButton());
    EXPECT_EQ(item.title(), "second");
    EXPECT_EQ(item.toolTip(), "Quorvane");
    EXPECT_TRUE(item.menuAttached());
    ASSERT_EQ(item.menu().size(), 2u);
    EXPECT_EQ(item.menu()[1].title, "line");
}

TEST(TerminalDesktopTest, AWebPageIsPrintedForTheUserToOpen) {
    std::ostringstream out;
    TerminalDesktop desktop(out);

    desktop.setAccessoryPolicy();
    desktop.activateIgnoringOtherApps();
    desktop.openUrl("https://platform.deepseek.com/usage");

    EXPECT_EQ(out.str(), "https://platform.deepseek.com/usage\n");
}

// Standard input as a pipe the test writes, from a thread so a large write cannot block it.
KeyReading readFromPipe(const std::string& input) {
    int fds[2];
    if (::pipe(fds) != 0) {
        ADD_FAILURE() << "no pipe";
        return {};
    }
    std::thread writer([&] {
        std::string_view rest = input;
        while (!rest.empty()) {
            const ssize_t written = ::write(fds[1], rest.data(), rest.size());
            if (written <= 0) {
                break;
            }
            rest.remove_prefix(static_cast<std::size_t>(written));
        }
        ::close(fds[1]);
    });
    KeyReading reading = KeyInput::read(fds[0], -1, "unused: ");
    ::close(fds[0]);
    writer.join();
    return reading;
}

TEST(KeyInputTest, StandardInputIsReadWholeAndUntouched) {
    const KeyReading reading = readFromPipe(" sk-key\r\n\nsecond line\n");

    ASSERT_TRUE(reading.text);
    EXPECT_EQ(*reading.text, " sk-key\r\n\nsecond line\n");
    EXPECT_EQ(reading.error, "");
}

TEST(KeyInputTest, EmptyInputIsAnEmptyKey) {
    const KeyReading reading = readFromPipe("");

    EXPECT_EQ(reading.text, std::optional<std::string>(""));
}

TEST(KeyInputTest, InputBeyondTheLimitIsRefused) {
    EXPECT_TRUE(readFromPipe(std::string(KeyInput::kMaxBytes, 'k')).text);

    const KeyReading tooLong = readFromPipe(std::string(KeyInput::kMaxBytes + 1, 'k'));

    EXPECT_FALSE(tooLong.text);
    EXPECT_EQ(tooLong.error, "the key is longer than 65536 bytes; nothing changed");
}

TEST(KeyInputTest, AnUnreadableInputSaysWhy) {
    const int closed = ::open("/dev/null", O_WRONLY);
    ASSERT_GE(closed, 0);

    const KeyReading reading = KeyInput::readAll(closed);
    ::close(closed);

    EXPECT_FALSE(reading.text);
    EXPECT_EQ(reading.error, "could not read the key (Bad file descriptor); nothing changed");
}

struct ToolCase {
    const char* name;
    ClipboardHandoff::Session session;
    std::vector<std::string> installed;
    std::string expected;
};

void PrintTo(const ToolCase& c, std::ostream* os) {
    *os << c.name;
}

class ClipboardToolTest : public ::testing::TestWithParam<ToolCase> {};

TEST_P(ClipboardToolTest, TheToolFitsTheSession) {
    const ToolCase& c = GetParam();
    const auto find = [&](std::string_view name) {
        for (const std::string& tool : c.installed) {
            if (tool == name) {
                return "/usr/bin/" + tool;
            }
        }
        return std::string();
    };

    const std::optional<ClipboardHandoff::Tool> tool = ClipboardHandoff::toolFor(c.session, find);

    std::string described = "none";
    if (tool) {
        described = tool->program;
        for (const std::string& argument : tool->arguments) {
            described += " " + argument;
        }
    }
    EXPECT_EQ(described, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Sessions, ClipboardToolTest,
    ::testing::Values(
        ToolCase{"X11WithXclip", {false, true}, {"xclip", "xsel"}, "/usr/bin/xclip -selection clipboard -in"},
        ToolCase{"X11WithXselOnly", {false, true}, {"xsel", "wl-copy"}, "/usr/bin/xsel --clipboard --input"},
        ToolCase{"X11WithNone", {false, true}, {"wl-copy"}, "none"},
        ToolCase{"Wayland",
                 {true, true},
                 {"xclip", "wl-copy"},
                 "/usr/bin/wl-copy --type text/plain;charset=utf-8"},
        ToolCase{"WaylandFallsBackToX11Tools", {true, true}, {"xsel"}, "/usr/bin/xsel --clipboard --input"},
        ToolCase{"WaylandAlone", {true, false}, {"xclip"}, "none"},
        ToolCase{"NoDisplay", {false, false}, {"xclip", "xsel", "wl-copy"}, "none"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ClipboardHandoffTest, KeepsOnlyTheLastText) {
    ClipboardHandoff clipboard;
    EXPECT_EQ(clipboard.text(), std::nullopt);

    clipboard.clearContents();
    clipboard.writeString("first");
    clipboard.clearContents();
    clipboard.writeString("second");

    EXPECT_EQ(clipboard.text(), std::optional<std::string>("second"));
}

} // namespace
} // namespace quorvane
