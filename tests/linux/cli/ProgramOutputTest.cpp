// The command line's outputs beyond text: the card as a PNG, the copied summary, and the demo's account.
#include "ProgramHarness.h"

#include <QDir>
#include <QFile>
#include <QImage>

namespace quorvane {
namespace {

TEST_F(ProgramTest, TheCardIsDrawnAtTheRequestedScaleAndPointsAtSamplesItHas) {
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();
    const auto png = [&](const char* name) {
        return program.home() + "/" + name;
    };

    const ProgramHarness::Result doubled = program.run({"card", "--png", png("double.png")});
    const ProgramHarness::Result single = program.run({"card", "--png", png("single.png"), "--scale", "1"});
    const ProgramHarness::Result hovered = program.run({"card", "--png", png("hover.png"), "--hover", "1"});
    // Each card's own refresh has added a reading: five samples by now.
    const ProgramHarness::Result past = program.run({"card", "--png", png("past.png"), "--hover", "5"});
    const ProgramHarness::Result unwritable = program.run({"card", "--png", png("missing/card.png")});

    EXPECT_EQ(doubled.exitCode, 0) << doubled.err;
    EXPECT_EQ(doubled.out, "Wrote " + png("double.png").toStdString() + " (660x380 pixels)\n");
    EXPECT_EQ(QImage(png("double.png")).size(), QSize(660, 380));
    EXPECT_EQ(QImage(png("single.png")).size(), QSize(330, 190));
    EXPECT_EQ(hovered.exitCode, 0);
    EXPECT_EQ(hovered.err, "") << "nothing Qt says while drawing offscreen reaches the user";
    EXPECT_EQ(QImage(png("hover.png")).size(), QSize(660, 380));
    EXPECT_EQ(past.exitCode, 2);
    EXPECT_EQ(past.out, "");
    EXPECT_EQ(past.err, "quorvane card: --hover 5: the chart has no sample 5; its samples are 0 to 4; see "
                        "'quorvane card --help'\n");
    EXPECT_FALSE(QFile::exists(png("past.png")));
    EXPECT_EQ(unwritable.exitCode, 1);
    EXPECT_EQ(unwritable.err,
              "quorvane card: could not write '" + png("missing/card.png").toStdString() + "'\n");
}

// Stand-ins for the clipboard tools record their arguments and what they were given.
TEST_F(ProgramTest, TheSummaryIsCopiedWithTheSessionsToolOrReportedWhenItCannotBe) {
    const QString bin = program.home() + "/bin";
    QDir().mkpath(bin);
    const auto install = [&](const char* script) {
        QFile tool(bin + "/xclip");
        ASSERT_TRUE(tool.open(QIODevice::WriteOnly | QIODevice::Truncate));
        tool.write(script);
        tool.close();
        tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    };
    const auto read = [&](const char* name) {
        QFile file(program.home() + "/" + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    };
    install("#!/bin/sh\necho \"$0 $*\" > \"$HOME/tool-arguments\"\n/bin/cat > \"$HOME/clipboard\"\n");
    program.environment().insert("PATH", bin);

    const ProgramHarness::Result noDisplay = program.run({"summary", "--copy"});
    program.environment().insert("DISPLAY", ":7");
    const ProgramHarness::Result copied = program.run({"summary", "--copy"});
    const QByteArray clipboard = read("clipboard");
    install("#!/bin/sh\n/bin/cat > /dev/null\nexit 3\n");
    const ProgramHarness::Result failed = program.run({"summary", "--copy"});

    EXPECT_EQ(noDisplay.exitCode, 1);
    EXPECT_EQ(noDisplay.out, "Quorvane has no balance data yet.\n");
    EXPECT_EQ(noDisplay.err,
              "quorvane summary: no display to copy to (neither WAYLAND_DISPLAY nor DISPLAY is "
              "set); nothing was copied\n");
    EXPECT_EQ(copied.exitCode, 0) << copied.err;
    EXPECT_EQ(read("tool-arguments"), bin.toUtf8() + "/xclip -selection clipboard -in\n");
    EXPECT_EQ(clipboard, "Quorvane has no balance data yet.") << "what was printed, without a line feed";
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.err, "quorvane summary: xclip failed (exit status 3); nothing was copied\n");
}

// The demo's account lives in the demo: the test's server is never asked and nothing is written under the
// home folder.
TEST_F(ProgramTest, TheDemoShowsItsOwnAccountAndTouchesNothingOfTheUsers) {
    const ProgramHarness::Result status = program.run({"--demo", "status"});
    const ProgramHarness::Result menu = program.run({"--demo", "menu"});
    const ProgramHarness::Result removed = program.run({"--demo", "key", "remove"});
    const ProgramHarness::Result other = program.run({"--demo", "key", "set"}, "sk-not-the-demo-key\n");
    program.run({"--demo", "interval", "900"});
    program.run({"--demo", "history", "clear"});
    const ProgramHarness::Result again = program.run({"--demo", "menu"});

    EXPECT_EQ(status.exitCode, 0) << status.err;
    EXPECT_EQ(status.out, "🐋 $26.43\n") << "the seeded account's first live reading";
    EXPECT_NE(menu.out.find("  [chart 48 points]\n"), std::string::npos) << menu.out;
    EXPECT_NE(menu.out.find("  Remaining: CN¥"), std::string::npos) << menu.out;
    EXPECT_EQ(removed.out, "API key removed.\n");
    EXPECT_EQ(other.out, kWhale + " !\n") << "the demo's server knows only its own key";
    EXPECT_EQ(again.out, menu.out) << "every run starts the same demo afresh";
    EXPECT_EQ(program.requestCount(), 0);
    EXPECT_EQ(program.filesUnderHome(), QStringList());
}

} // namespace
} // namespace quorvane
