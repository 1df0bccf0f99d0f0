#include "ProgramHarness.h"
#include "cli/AutostartEntry.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

// The autostart folder as a listing of names and contents.
QStringList folder(const QString& path) {
    QStringList listing;
    for (const QString& name : QDir(path).entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
        QFile file(path + "/" + name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        listing << name + ": " + QString::fromUtf8(file.readAll());
    }
    return listing;
}

TEST_F(ProgramTest, AutostartOnWritesTheEntryThatStartsTheAppAndOffLeavesTheFolderAsItWas) {
    const QString autostart = program.environment().value("XDG_CONFIG_HOME") + "/autostart";
    ASSERT_TRUE(QDir().mkpath(autostart));
    QFile other(autostart + "/other.desktop");
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.write("[Desktop Entry]\nType=Application\nName=Other\nExec=other\n");
    other.close();
    const QStringList before = folder(autostart);
    const std::string entry = (autostart + "/app.quorvane.Quorvane.desktop").toStdString();

    const ProgramHarness::Result first = program.run({"autostart", "status"});
    const ProgramHarness::Result on = program.run({"autostart", "on"});
    const QStringList during = folder(autostart);
    const ProgramHarness::Result now = program.run({"autostart", "status"});
    const ProgramHarness::Result off = program.run({"autostart", "off"});
    const ProgramHarness::Result offAgain = program.run({"autostart", "off"});

    EXPECT_EQ(first.out, "Quorvane does not start at login.\n");
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(now.exitCode, 0) << "asking is no failure, whatever the answer";
    EXPECT_EQ(on.exitCode, 0) << on.err;
    EXPECT_EQ(on.out, "Quorvane starts at login (" + entry + ").\n");
    EXPECT_EQ(during.join("\n").toStdString(),
              ("app.quorvane.Quorvane.desktop: " +
               QString::fromStdString(AutostartEntry::text(QUORVANE_BINARY)) + "\n" + before.join("\n"))
                  .toStdString());
    EXPECT_EQ(now.out, on.out);
    EXPECT_EQ(off.out, "Quorvane does not start at login.\n");
    EXPECT_EQ(offAgain.exitCode, 0) << "nothing to remove is no error";
    EXPECT_EQ(folder(autostart).join("\n").toStdString(), before.join("\n").toStdString());
    EXPECT_EQ(program.requestCount(), 0) << "no balance is read";

    const ProgramHarness::Result demo = program.run({"--demo", "autostart", "on"});
    EXPECT_EQ(demo.exitCode, 2);
    EXPECT_EQ(demo.err, "quorvane autostart: the demo changes nothing of yours; leave out --demo; see "
                        "'quorvane autostart --help'\n");
    EXPECT_EQ(folder(autostart).join("\n").toStdString(), before.join("\n").toStdString());
}

TEST(AutostartEntryTest, TheExecKeyQuotesWhatTheDesktopEntrySpecificationAsksFor) {
    const std::pair<std::string, std::string> cases[] = {
        {"/usr/bin/quorvane", "/usr/bin/quorvane"},
        {"/opt/My Apps/quorvane", "\"/opt/My Apps/quorvane\""},
        {"/home/a$b/quorvane", "\"/home/a\\\\$b/quorvane\""},
        {"/home/a\"b\\c/quorvane", "\"/home/a\\\\\"b\\\\\\\\c/quorvane\""},
    };
    for (const auto& [path, exec] : cases) {
        EXPECT_EQ(AutostartEntry::execArgument(path), exec) << path;
    }
}

} // namespace
} // namespace quorvane
