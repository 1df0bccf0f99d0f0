// Runs the built quorvane as a user would: its own home and config folders, the test's server as its API.
#pragma once

#include "LoopbackHttpServer.h"

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quorvane {

inline const std::string kWhale = "🐋";

// Every run starts the binary afresh, as a shell or a status bar does, with
// a clean environment apart from PATH: HOME and XDG_CONFIG_HOME in a folder
// of the harness's own, the file secret store, no display, the offscreen Qt
// platform, the C.UTF-8 locale (money then reads as in en_US) and UTC.
// The server answers only while a run is waited for, in the test's event loop.
class ProgramHarness {
public:
    struct Result {
        int exitCode = -1;
        std::string out;
        std::string err;
    };

    // A key that looks real enough that no other text could contain it by chance.
    static inline const std::string kKey = "sk-4f9a1c2e8b7d40a6b5c3e1f0d9a8b7c6";

    ProgramHarness();

    Result run(const QStringList& arguments, const QByteArray& input = {});

    // The server answers every request this way until told otherwise.
    void answer(int status, const QByteArray& body);
    void answerBalances(const std::vector<std::pair<std::string, std::string>>& totals,
                        bool isAvailable = true);
    // Saves kKey through "key set", which also makes one request.
    void saveKey();
    const QList<QByteArray>& requestHeads() const { return m_server.requestHeads(); }
    qsizetype requestCount() const { return m_server.requestHeads().size(); }

    QProcessEnvironment& environment() { return m_environment; }
    QString home() const { return m_home.path(); }
    QString settingsFile() const;
    QString secretsFile() const;
    // Every regular file under the home folder, recursively.
    QStringList filesUnderHome() const;
    // The key in no output of any run so far and in no file but the secret store.
    void expectKeyOnlyInTheSecretStore() const;

private:
    QTemporaryDir m_home;
    LoopbackHttpServer m_server;
    QProcessEnvironment m_environment;
    std::vector<Result> m_results;
};

// Every whole-program test ends by looking for the key wherever it must not be.
class ProgramTest : public ::testing::Test {
protected:
    ProgramHarness program;

    void TearDown() override { program.expectKeyOnlyInTheSecretStore(); }
};

// The output with the moments that change from run to run replaced: the
// summary's "Updated: ..." time and ISO timestamps become "<time>".
std::string withoutTimes(const std::string& text);

} // namespace quorvane
