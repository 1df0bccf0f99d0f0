// quorvane_fake_watcher: a StatusNotifierWatcher with a host, for desktop sessions that have no panel.
#include "FakeStatusNotifierWatcher.h"

#include <QCoreApplication>
#include <QDBusConnection>

#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    quorvane::FakeStatusNotifierWatcher watcher(QDBusConnection::sessionBus());
    if (!watcher.start()) {
        std::fprintf(stderr, "quorvane_fake_watcher: could not take org.kde.StatusNotifierWatcher\n");
        return 1;
    }
    std::printf("ready\n");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
