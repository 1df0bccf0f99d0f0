// The command line's outputs beyond text: the card as a PNG, the copied summary, and the demo's account.
#include "ProgramHarness.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <gtest/gtest.h>

#include <ostream>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";

class ProgramCardTest : public ::testing::Test {
protected:
    ProgramHarness program;

    QString png(const char* name) const { return program.home() + "/" + name; }
};

TEST_F(ProgramCardTest, TheDashboardIsDrawnAtTheRequestedScale) {
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();

    const ProgramHarness::Result doubled = program.run({"card", "--png", png("double.png")});
    const ProgramHarness::Result single = program.run({"card", "--png", png("single.png"), "--scale", "1"});

    EXPECT_EQ(doubled.exitCode, 0) << doubled.err;
    EXPECT_EQ(doubled.out, "Wrote " + png("double.png").toStdString() + " (660x380 pixels)\n");
    EXPECT_EQ(QImage(png("double.png")).size(), QSize(660, 380));
    EXPECT_EQ(single.exitCode, 0) << single.err;
    EXPECT_EQ(QImage(png("single.png")).size(), QSize(330, 190));
}

TEST_F(ProgramCardTest, WithoutAKeyTheStatusCardIsDrawn) {
    const ProgramHarness::Result drawn = program.run({"card", "--png", png("status.png")});

    EXPECT_EQ(drawn.exitCode, 0) << drawn.err;
    EXPECT_EQ(QImage(png("status.png")).size(), QSize(620, 172));
}

TEST_F(ProgramCardTest, HoveringASampleDrawsThroughTheChartWidget) {
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();

    const ProgramHarness::Result hovered = program.run({"card", "--png", png("hover.png"), "--hover", "1"});

    EXPECT_EQ(hovered.exitCode, 0) << hovered.err;
    EXPECT_EQ(hovered.err, "") << "nothing Qt says while drawing offscreen reaches the user";
    EXPECT_EQ(QImage(png("hover.png")).size(), QSize(660, 380));
}

struct HoverCase {
    const char* name;
    bool withKey;
    bool clearHistory;
    int readingsBefore;
    const char* index;
    std::string message;
};

void PrintTo(const HoverCase& c, std::ostream* os) {
    *os << c.name;
}

class ProgramHoverTest : public ::testing::TestWithParam<HoverCase> {
protected:
    ProgramHarness program;
};

// The card's own refresh adds a reading before it is drawn.
TEST_P(ProgramHoverTest, ASampleTheChartDoesNotHaveIsAUsageError) {
    const HoverCase& c = GetParam();
    program.answerBalances({{"USD", "110.00"}});
    if (c.withKey) {
        program.saveKey();
    }
    if (c.clearHistory) {
        program.run({"history", "clear"});
    }
    for (int i = 1; i < c.readingsBefore; ++i) {
        program.run({"status"});
    }
    const QString path = program.home() + "/card.png";

    const ProgramHarness::Result refused = program.run({"card", "--png", path, "--hover", c.index});

    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, "quorvane card: --hover " + std::string(c.index) + ": " + c.message +
                               "; see 'quorvane card --help'\n");
    EXPECT_FALSE(QFile::exists(path));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ProgramHoverTest,
    ::testing::Values(HoverCase{"PastTheEnd", true, false, 2, "3",
                                "the chart has no sample 3; its samples are 0 to 2"},
                      HoverCase{"FarPastTheEnd", true, false, 1, "9223372036854775807",
                                "the chart has no sample 9223372036854775807; its samples are 0 to 1"},
                      HoverCase{"SingleSample", true, true, 0, "0",
                                "the chart has no sample 0; it draws no line to point at"},
                      HoverCase{"NoChart", false, false, 0, "0", "the card has no chart to point at"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(ProgramCardTest, AFileThatCannotBeWrittenIsReported) {
    const ProgramHarness::Result failed = program.run({"card", "--png", png("missing/folder/card.png")});

    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.err,
              "quorvane card: could not write '" + png("missing/folder/card.png").toStdString() + "'\n");
}

class ProgramCopyTest : public ::testing::Test {
protected:
    ProgramHarness program;
    QString bin = program.home() + "/bin";

    // A stand-in for a clipboard tool: records its arguments and what it was given.
    void installTool(const QString& name) {
        QDir().mkpath(bin);
        QFile tool(bin + "/" + name);
        ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
        tool.write("#!/bin/sh\necho \"$0 $*\" > \"$HOME/tool-arguments\"\n/bin/cat > \"$HOME/clipboard\"\n");
        tool.close();
        tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        program.environment().insert("PATH", bin);
    }
    QByteArray read(const char* name) {
        QFile file(program.home() + "/" + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }
};

TEST_F(ProgramCopyTest, OnX11TheSummaryGoesToXclip) {
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();
    installTool("xclip");
    installTool("xsel");
    program.environment().insert("DISPLAY", ":7");

    const ProgramHarness::Result copied = program.run({"summary", "--copy"});

    EXPECT_EQ(copied.exitCode, 0) << copied.err;
    EXPECT_EQ(read("tool-arguments"), bin.toUtf8() + "/xclip -selection clipboard -in\n");
    EXPECT_EQ(read("clipboard").toStdString() + "\n", copied.out)
        << "exactly what was printed, without a line feed";
}

TEST_F(ProgramCopyTest, OnWaylandTheSummaryGoesToWlCopy) {
    installTool("wl-copy");
    installTool("xclip");
    program.environment().insert("WAYLAND_DISPLAY", "wayland-0");
    program.environment().insert("DISPLAY", ":0");

    const ProgramHarness::Result copied = program.run({"summary", "--copy"});

    EXPECT_EQ(copied.exitCode, 0) << copied.err;
    EXPECT_EQ(copied.out, "Quorvane has no balance data yet.\n");
    EXPECT_EQ(read("tool-arguments"), bin.toUtf8() + "/wl-copy --type text/plain;charset=utf-8\n");
    EXPECT_EQ(read("clipboard"), "Quorvane has no balance data yet.");
}

TEST_F(ProgramCopyTest, WithoutADisplayTheSummaryIsPrintedButNotCopied) {
    installTool("xclip");

    const ProgramHarness::Result copied = program.run({"summary", "--copy"});

    EXPECT_EQ(copied.exitCode, 1);
    EXPECT_EQ(copied.out, "Quorvane has no balance data yet.\n");
    EXPECT_EQ(copied.err,
              "quorvane summary: no display to copy to (neither WAYLAND_DISPLAY nor DISPLAY is set); "
              "nothing was copied\n");
    EXPECT_EQ(read("clipboard"), "(missing)");
}

TEST_F(ProgramCopyTest, AFailingToolIsReported) {
    QDir().mkpath(bin);
    QFile tool(bin + "/xsel");
    ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
    tool.write("#!/bin/sh\n/bin/cat > /dev/null\nexit 3\n");
    tool.close();
    tool.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    program.environment().insert("PATH", bin);
    program.environment().insert("DISPLAY", ":0");

    const ProgramHarness::Result copied = program.run({"summary", "--copy"});

    EXPECT_EQ(copied.exitCode, 1);
    EXPECT_EQ(copied.err, "quorvane summary: xsel failed (exit status 3); nothing was copied\n");
}

// The demo's account lives in the demo: the test's server is never asked and
// nothing is written under the home folder.
class ProgramDemoTest : public ::testing::Test {
protected:
    ProgramHarness program;
};

TEST_F(ProgramDemoTest, TheDemoShowsItsOwnAccountAndTouchesNothingOfTheUsers) {
    const ProgramHarness::Result status = program.run({"--demo", "status"});
    const ProgramHarness::Result menu = program.run({"--demo", "menu"});
    const ProgramHarness::Result removed = program.run({"--demo", "key", "remove"});
    const ProgramHarness::Result other = program.run({"--demo", "key", "set"}, "sk-not-the-demo-key\n");
    program.run({"--demo", "interval", "900"});
    program.run({"--demo", "history", "clear"});
    const ProgramHarness::Result again = program.run({"--demo", "menu"});

    EXPECT_EQ(status.exitCode, 0) << status.err;
    EXPECT_EQ(status.out, kWhale + " $\xC2\xA0"
                                   "26.43\n")
        << "the seeded account's first live reading";
    EXPECT_NE(menu.out.find("  [chart 48 points]\n"), std::string::npos) << menu.out;
    EXPECT_NE(menu.out.find("  Remaining: CN\xC2\xA5\xC2\xA0"), std::string::npos) << menu.out;
    EXPECT_EQ(removed.out, "API key removed.\n");
    EXPECT_EQ(other.out, kWhale + " !\n") << "the demo's server knows only its own key";
    EXPECT_EQ(again.out.substr(0, again.out.find('\n')), kWhale + " $\xC2\xA0"
                                                                  "26.43")
        << "every run starts the same demo afresh";
    EXPECT_NE(again.out.find("  [chart 48 points]\n"), std::string::npos) << again.out;
    EXPECT_EQ(program.requestCount(), 0);
    EXPECT_EQ(program.filesUnderHome(), QStringList());
}

} // namespace
} // namespace quorvane
