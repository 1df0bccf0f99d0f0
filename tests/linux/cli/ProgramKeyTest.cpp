// The key's way in and out through the command line, and that it never shows.
#include "ProgramHarness.h"

#include <QFile>
#include <gtest/gtest.h>

#include <ostream>

namespace quorvane {
namespace {

const std::string kWhale = "\xF0\x9F\x90\x8B";

class ProgramKeyTest : public ::testing::Test {
protected:
    ProgramHarness program;
};

TEST_F(ProgramKeyTest, WithoutAKeyStatusAsksForOneAndSendsNothing) {
    program.answerBalances({{"USD", "110.00"}});

    const ProgramHarness::Result plain = program.run({"status"});
    const ProgramHarness::Result json = program.run({"status", "--json"});

    EXPECT_EQ(plain.exitCode, 0);
    EXPECT_EQ(plain.out, kWhale + " Key?\n");
    EXPECT_EQ(plain.err, "");
    EXPECT_EQ(json.exitCode, 0);
    EXPECT_EQ(json.out,
              "{\"text\":\"" + kWhale +
                  " Key?\",\"tooltip\":\"Quorvane has no balance data yet.\",\"class\":\"nokey\"}\n");
    EXPECT_EQ(program.requestCount(), 0);
}

TEST_F(ProgramKeyTest, WithoutAKeyTheMenuOffersToAddOne) {
    const ProgramHarness::Result menu = program.run({"menu"});

    EXPECT_EQ(menu.exitCode, 0);
    EXPECT_EQ(menu.out, kWhale +
                            " Key?\n"
                            "[card status]\n"
                            "  " +
                            kWhale +
                            " Quorvane\n"
                            "  No API key yet\n"
                            "  \xF0\x9F\x94\x90 Add your key to start tracking\n"
                            "---\n"
                            "\xF0\x9F\x94\x84 Refresh Now  (r)\n"
                            "\xF0\x9F\x93\x8B Copy Summary  (c)\n"
                            "Settings >\n"
                            "  \xE2\x8F\xB1 Auto-refresh: On\n"
                            "  Refresh Interval: 1 min >\n"
                            "      30 sec\n"
                            "    \xE2\x9C\x93 1 min\n"
                            "      5 min\n"
                            "      15 min\n"
                            "  ---\n"
                            "  Set API Key...  (,)\n"
                            "  Reset Spend Baseline\n"
                            "  Clear Usage History\n"
                            "  Remove API Key\n"
                            "  ---\n"
                            "  Open DeepSeek Billing  (b)\n"
                            "---\n"
                            "\xE2\x8C\x98 Quit  (q)\n");
    EXPECT_EQ(program.requestCount(), 0);
}

TEST_F(ProgramKeyTest, AKeyFromStandardInputIsTrimmedAndSentExactlyOnce) {
    program.answerBalances({{"USD", "110.00"}});

    const ProgramHarness::Result saved =
        program.run({"key", "set"}, QByteArray::fromStdString(" \t " + ProgramHarness::kKey + "\r\n\n"));

    EXPECT_EQ(saved.exitCode, 0) << saved.err;
    EXPECT_EQ(saved.out, kWhale + " $\xC2\xA0"
                                  "110.00\n");
    ASSERT_EQ(program.requestCount(), 1);
    const QList<QByteArray> head = program.server().requestHeads().front().split('\n');
    EXPECT_EQ(head.front(), "GET /user/balance HTTP/1.1\r");
    EXPECT_TRUE(
        head.contains(QByteArray::fromStdString("Authorization: Bearer " + ProgramHarness::kKey + "\r")));
    EXPECT_TRUE(head.contains("Accept: application/json\r"));

    // The next run reads the same key back from the store.
    EXPECT_EQ(program.run({"status"}).out, kWhale + " $\xC2\xA0"
                                                    "110.00\n");
    EXPECT_TRUE(program.server().requestHeads().back().contains(
        QByteArray::fromStdString("Authorization: Bearer " + ProgramHarness::kKey + "\r\n")));
}

TEST_F(ProgramKeyTest, AnInnerBlankStaysInTheKey) {
    program.answerBalances({{"USD", "110.00"}});

    ASSERT_EQ(program.run({"key", "set"}, "  sk-two words \n").exitCode, 0);

    EXPECT_TRUE(program.server().requestHeads().back().contains("Authorization: Bearer sk-two words\r\n"));
}

struct BlankKeyCase {
    const char* name;
    QByteArray input;
};

void PrintTo(const BlankKeyCase& c, std::ostream* os) {
    *os << c.name;
}

class ProgramBlankKeyTest : public ::testing::TestWithParam<BlankKeyCase> {
protected:
    ProgramHarness program;
};

TEST_P(ProgramBlankKeyTest, ABlankKeyChangesNothingAndSaysSo) {
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();
    const qsizetype requests = program.requestCount();

    const ProgramHarness::Result refused = program.run({"key", "set"}, GetParam().input);

    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, "quorvane key set: no key given; nothing changed\n");
    EXPECT_EQ(program.requestCount(), requests);
    program.run({"status"});
    EXPECT_TRUE(program.server().requestHeads().back().contains(
        QByteArray::fromStdString("Bearer " + ProgramHarness::kKey + "\r\n")))
        << "the earlier key is still the one in use";
}

INSTANTIATE_TEST_SUITE_P(Inputs, ProgramBlankKeyTest,
                         ::testing::Values(BlankKeyCase{"Nothing", ""}, BlankKeyCase{"LineBreak", "\n"},
                                           BlankKeyCase{"Blanks", " \t \r\n \n"},
                                           BlankKeyCase{"NoBreakSpace", "\xC2\xA0\n"}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(ProgramKeyTest, RemovingTheKeyStopsTheRequests) {
    program.answerBalances({{"USD", "110.00"}});
    program.saveKey();

    const ProgramHarness::Result removed = program.run({"key", "remove"});
    const ProgramHarness::Result again = program.run({"key", "remove"});
    const qsizetype requests = program.requestCount();
    const ProgramHarness::Result status = program.run({"status"});

    EXPECT_EQ(removed.exitCode, 0);
    EXPECT_EQ(removed.out, "API key removed.\n");
    EXPECT_EQ(again.exitCode, 0) << "removing no key is no error";
    EXPECT_EQ(again.out, "API key removed.\n");
    EXPECT_EQ(status.out, kWhale + " Key?\n");
    EXPECT_EQ(program.requestCount(), requests);
}

TEST_F(ProgramKeyTest, AKeyGivenAsAnArgumentIsRefusedWithoutBeingRepeated) {
    const ProgramHarness::Result refused =
        program.run({"key", "set", QString::fromStdString(ProgramHarness::kKey)});

    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_EQ(refused.err, "quorvane key set: takes no arguments: the key is read from standard input, never "
                           "from the command line; see 'quorvane key set --help'\n");
    EXPECT_FALSE(QFile::exists(program.secretsFile()));
}

// The key goes to the server and the secret store and nowhere else: not to
// any output of any command, not into the settings or any other file.
TEST_F(ProgramKeyTest, TheKeyAppearsInNoOutputAndNoFileButTheSecretStore) {
    program.answerBalances({{"USD", "110.00"}, {"CNY", "20.00"}});
    program.saveKey();
    program.run({"status"});
    program.run({"status", "--json"});
    program.run({"summary"});
    program.run({"menu"});
    program.run({"menu", "--json"});
    program.run({"card", "--png", program.home() + "/card.png"});
    program.run({"baseline", "reset"});
    program.run({"interval", "300"});
    program.run({"auto-refresh", "off"});
    program.answer(401, R"({"error":{"message":"Authentication Fails"}})");
    program.run({"menu"});
    program.run({"summary"});

    for (const ProgramHarness::Result& result : program.results()) {
        EXPECT_EQ(result.out.find(ProgramHarness::kKey), std::string::npos) << result.out;
        EXPECT_EQ(result.err.find(ProgramHarness::kKey), std::string::npos) << result.err;
    }
    const QStringList files = program.filesUnderHome();
    ASSERT_TRUE(files.contains(program.secretsFile()));
    ASSERT_TRUE(files.contains(program.settingsFile()));
    for (const QString& path : files) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const bool holdsKey = file.readAll().contains(QByteArray::fromStdString(ProgramHarness::kKey));
        EXPECT_EQ(holdsKey, path == program.secretsFile()) << path.toStdString();
    }
}

} // namespace
} // namespace quorvane
