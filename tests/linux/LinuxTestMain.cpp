// Runs the Linux platform tests inside a QGuiApplication with a throwaway home.
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);

    // Nothing a test writes may reach the real user's settings or keys, even
    // through a default path the test did not mean to use.
    QTemporaryDir home;
    if (!home.isValid()) {
        std::fprintf(stderr, "no temporary home folder: %s\n", qPrintable(home.errorString()));
        return 1;
    }
    qputenv("HOME", QFile::encodeName(home.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.filePath(QStringLiteral("config"))));
    qunsetenv("QUORVANE_SECRET_STORE");
    // Qt wants one and warns without it; an empty one also holds no session
    // bus socket for the secret-store probe to find.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        QString runtime = home.filePath(QStringLiteral("runtime"));
        QDir().mkpath(runtime);
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime));
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    QGuiApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
