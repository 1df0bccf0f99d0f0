#include "ProgramHarness.h"

#include "EventLoopWait.h"
#include "fakes/BalanceBody.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <gtest/gtest.h>

#include <regex>

namespace quorvane {

ProgramHarness::ProgramHarness() {
    m_environment.insert("PATH", qEnvironmentVariable("PATH"));
    m_environment.insert("HOME", m_home.path());
    m_environment.insert("XDG_CONFIG_HOME", m_home.filePath("config"));
    const QString runtime = m_home.filePath("runtime");
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_environment.insert("XDG_RUNTIME_DIR", runtime);
    m_environment.insert("QT_QPA_PLATFORM", "offscreen");
    m_environment.insert("QUORVANE_SECRET_STORE", "file");
    m_environment.insert("QUORVANE_API_BASE_URL", QString::fromStdString(m_server.url("")));
    m_environment.insert("LC_ALL", "C.UTF-8");
    m_environment.insert("TZ", "UTC");
}

ProgramHarness::Result ProgramHarness::run(const QStringList& arguments, const QByteArray& input) {
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(QUORVANE_BINARY, arguments);
    Result result;
    if (!process.waitForStarted(30000)) {
        ADD_FAILURE() << "quorvane did not start";
        return result;
    }
    process.write(input);
    process.closeWriteChannel();
    // The server lives in this loop, so the wait must run it.
    if (!waitUntil([&] { return process.state() == QProcess::NotRunning; }, std::chrono::seconds(90))) {
        ADD_FAILURE() << "quorvane " << arguments.join(' ').toStdString() << " did not end";
        process.kill();
        process.waitForFinished();
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.out = process.readAllStandardOutput().toStdString();
    result.err = process.readAllStandardError().toStdString();
    m_results.push_back(result);
    return result;
}

void ProgramHarness::answer(int status, const QByteArray& body) {
    m_server.answerWith(LoopbackHttpServer::httpAnswer(status, status == 200 ? "OK" : "Error", body,
                                                       {"Content-Type: application/json"}));
}

void ProgramHarness::answerBalances(const std::vector<std::pair<std::string, std::string>>& totals,
                                    bool isAvailable) {
    answer(200, QByteArray::fromStdString(balanceBody(totals, isAvailable)));
}

void ProgramHarness::saveKey() {
    const Result saved = run({"key", "set"}, QByteArray::fromStdString(kKey));
    ASSERT_EQ(saved.exitCode, 0) << saved.err;
}

QString ProgramHarness::settingsFile() const {
    return m_home.filePath("config/Quorvane/Quorvane.conf");
}

QString ProgramHarness::secretsFile() const {
    return m_home.filePath("config/quorvane/secrets");
}

QStringList ProgramHarness::filesUnderHome() const {
    QStringList files;
    QDirIterator it(m_home.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        files << it.next();
    }
    return files;
}

void ProgramHarness::expectKeyOnlyInTheSecretStore() const {
    for (const Result& result : m_results) {
        EXPECT_EQ(result.out.find(kKey), std::string::npos) << result.out;
        EXPECT_EQ(result.err.find(kKey), std::string::npos) << result.err;
    }
    for (const QString& path : filesUnderHome()) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const bool holdsKey = file.readAll().contains(QByteArray::fromStdString(kKey));
        EXPECT_EQ(holdsKey, path == secretsFile()) << path.toStdString();
    }
}

std::string withoutTimes(const std::string& text) {
    const std::regex updated(R"(Updated: \d{4}-\d\d-\d\d \d\d:\d\d:\d\d \+0000)");
    const std::regex iso(R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z)");
    return std::regex_replace(std::regex_replace(text, updated, "Updated: <time>"), iso, "<time>");
}

} // namespace quorvane

// The whole-program tests' own event loop serves the loopback server while quorvane runs.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
