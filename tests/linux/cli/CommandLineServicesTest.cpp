// The command line's stand-ins for what a person sees: the clipboard tool and the key's input.
#include "cli/ClipboardHandoff.h"
#include "cli/KeyInput.h"
#include "services/ClipboardTool.h"

#include <QFile>
#include <QTemporaryDir>
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

// With a display but no clipboard program, the text goes to a holder started
// from this program's path; only its "r" on the ready pipe counts as copied.
TEST(ClipboardHandoffTest, WithoutAToolTheTextIsCopiedOnlyWhenTheHolderSaysItOwnsTheClipboard) {
    const QTemporaryDir folder;
    const std::string held = folder.filePath(QStringLiteral("held")).toStdString();
    const std::string holder = folder.filePath(QStringLiteral("holder")).toStdString();
    QFile script(QString::fromStdString(holder));
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write(QByteArray::fromStdString("#!/bin/sh\n[ \"$1\" = --hold-clipboard ] && /bin/cat > " + held +
                                           " && printf r\n"));
    script.close();
    script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const QByteArray path = qgetenv("PATH");
    qunsetenv("QT_QPA_PLATFORM");
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("DISPLAY", ":97");
    qputenv("PATH", folder.path().toLocal8Bit());
    ClipboardHandoff handoff;
    handoff.writeString("USD remaining: $1.00");

    const std::string copied = handoff.deliver(holder);
    const std::string silent = handoff.deliver("/bin/true");
    const std::string missing =
        handoff.deliver(folder.filePath(QStringLiteral("no-such-holder")).toStdString());
    qputenv("QT_QPA_PLATFORM", platform);
    qputenv("PATH", path);
    qunsetenv("DISPLAY");

    EXPECT_EQ(copied, "");
    QFile text(QString::fromStdString(held));
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    EXPECT_EQ(text.readAll(), "USD remaining: $1.00");
    EXPECT_EQ(silent, "the clipboard could not be taken; nothing was copied");
    EXPECT_EQ(missing, "the clipboard could not be taken; nothing was copied");
}

// The only test of a failing read: taken for the end of input, it would save an empty key.
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
