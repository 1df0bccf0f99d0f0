// The key's way in and out through the command line, and the answers to what the command line cannot do.
#include "ProgramHarness.h"

#include <QImage>

namespace quorvane {
namespace {

TEST_F(ProgramTest, WithoutAKeyNothingIsSentAndEveryCommandSaysSo) {
    program.answerBalances({{"USD", "110.00"}});
    const QString png = program.home() + "/status.png";

    const ProgramHarness::Result status = program.run({"status"});
    const ProgramHarness::Result json = program.run({"status", "--json"});
    const ProgramHarness::Result menu = program.run({"menu", "--json"});
    const ProgramHarness::Result card = program.run({"card", "--png", png});
    const ProgramHarness::Result hover = program.run({"card", "--png", png, "--hover", "0"});

    EXPECT_EQ(status.exitCode, 0);
    EXPECT_EQ(status.out, kWhale + " Key?\n");
    EXPECT_EQ(status.err, "");
    EXPECT_EQ(json.out, R"({"text":"🐋 Key?","tooltip":"Quorvane has no balance data yet.","class":"nokey"})"
                        "\n");
    EXPECT_EQ(
        menu.out.rfind(R"({"title":"🐋 Key?","toolTip":"Quorvane","menu":[{"card":{"kind":"status",)", 0), 0u)
        << menu.out;
    EXPECT_EQ(card.exitCode, 0) << card.err;
    EXPECT_EQ(QImage(png).size(), QSize(620, 172));
    EXPECT_EQ(hover.exitCode, 2);
    EXPECT_EQ(hover.err,
              "quorvane card: --hover 0: the card has no chart to point at; see 'quorvane card --help'\n");
    EXPECT_EQ(program.requestCount(), 0);
}

// The store keeps the trimmed key; a refused input keeps the earlier one; removing it stops the requests.
TEST_F(ProgramTest, AKeyIsReadTrimmedFromStandardInputKeptAndRemoved) {
    program.answerBalances({{"USD", "110.00"}});
    const std::string bearer = "Authorization: Bearer " + ProgramHarness::kKey + "\r";

    const ProgramHarness::Result saved =
        program.run({"key", "set"}, QByteArray::fromStdString(" \t " + ProgramHarness::kKey + "\r\n\n"));
    ASSERT_EQ(program.requestCount(), 1);
    const QList<QByteArray> head = program.requestHeads().front().split('\n');
    const ProgramHarness::Result blank = program.run({"key", "set"}, " \t \r\n \n");
    const ProgramHarness::Result tooLong = program.run({"key", "set"}, QByteArray(65537, 'k'));
    const ProgramHarness::Result status = program.run({"status"});
    const QList<QByteArray> again = program.requestHeads().back().split('\n');
    const ProgramHarness::Result removed = program.run({"key", "remove"});
    const ProgramHarness::Result removedAgain = program.run({"key", "remove"});
    const ProgramHarness::Result keyless = program.run({"status"});

    EXPECT_EQ(saved.exitCode, 0) << saved.err;
    EXPECT_EQ(saved.out, "🐋 $110.00\n");
    EXPECT_EQ(head.front(), "GET /user/balance HTTP/1.1\r");
    EXPECT_TRUE(head.contains(QByteArray::fromStdString(bearer)));
    EXPECT_TRUE(head.contains("Accept: application/json\r"));
    EXPECT_EQ(blank.exitCode, 1);
    EXPECT_EQ(blank.out, "");
    EXPECT_EQ(blank.err, "quorvane key set: no key given; nothing changed\n");
    EXPECT_EQ(tooLong.exitCode, 1);
    EXPECT_EQ(tooLong.err, "quorvane key set: the key is longer than 65536 bytes; nothing changed\n");
    EXPECT_EQ(status.out, "🐋 $110.00\n");
    EXPECT_TRUE(again.contains(QByteArray::fromStdString(bearer))) << "the earlier key is still in use";
    EXPECT_EQ(removed.out, "API key removed.\n");
    EXPECT_EQ(removedAgain.exitCode, 0) << "removing no key is no error";
    EXPECT_EQ(keyless.out, kWhale + " Key?\n");
    EXPECT_EQ(program.requestCount(), 2) << "one request by key set and one by status";
}

// A mistake is one line on standard error, nothing on standard output and status 2; help is printed on
// standard output. Neither sends a request or writes a file.
TEST_F(ProgramTest, MistakesAndHelpChangeNothing) {
    program.answerBalances({{"USD", "110.00"}});
    const struct {
        QStringList arguments;
        int exitCode;
        std::string out;
        std::string err;
    } cases[] = {
        {{"balance"}, 2, "", "quorvane: unknown command 'balance'; see 'quorvane --help'"},
        {{"key", "set", QString::fromStdString(ProgramHarness::kKey)},
         2,
         "",
         "quorvane key set: takes no arguments: the key is read from standard input, never from the command "
         "line; see 'quorvane key set --help'"},
        {{"--demo", "status", "--help"}, 0, "Usage: quorvane [--demo] status [--json]\n", ""},
    };
    for (const auto& c : cases) {
        const ProgramHarness::Result result = program.run(c.arguments);

        EXPECT_EQ(result.exitCode, c.exitCode) << c.err;
        EXPECT_EQ(result.out.substr(0, c.exitCode == 0 ? c.out.size() : std::string::npos), c.out);
        EXPECT_EQ(result.err, c.err.empty() ? "" : c.err + "\n");
    }
    EXPECT_EQ(program.requestCount(), 0);
    EXPECT_EQ(program.filesUnderHome(), QStringList());
}

TEST_F(ProgramTest, AnEnvironmentItCannotWorkInIsOneLineAndStatusOne) {
    const std::string badAddress =
        "quorvane: QUORVANE_API_BASE_URL is not an http:// or https:// address of a "
        "server; unset it to use the DeepSeek API\n";
    for (const char* address : {"ftp://private.example/", "http://user:pw@private.example"}) {
        program.environment().insert("QUORVANE_API_BASE_URL", address);
        const ProgramHarness::Result refused = program.run({"status"});
        EXPECT_EQ(refused.exitCode, 1) << address;
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(refused.err, badAddress);
    }
    program.environment().remove("QT_QPA_PLATFORM");
    const ProgramHarness::Result desktop = program.run({});
    EXPECT_EQ(desktop.exitCode, 1);
    EXPECT_EQ(desktop.err,
              "quorvane: no display (neither DISPLAY nor WAYLAND_DISPLAY is set) for the desktop "
              "app; 'quorvane status' and the other commands work without one\n");
}

} // namespace
} // namespace quorvane
