// quorvane_fake_notifications: a notification server that prints what it is asked to show, for whole-program
// tests.
//
// Each Notify is one JSON line on standard output. Lines on standard input
// act as the user and the desktop: "invoke ID ACTION [TOKEN]" clicks a
// notice, "stop" and "start" take the server off the bus and back.
#include "FakeNotificationServer.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <cstdio>
#include <iostream>
#include <string>

namespace {

void print(const quorvane::FakeNotificationServer::Shown& shown) {
    const QJsonObject line{
        {"id", static_cast<qint64>(shown.id)},
        {"appName", shown.appName},
        {"replacesId", static_cast<qint64>(shown.replacesId)},
        {"appIcon", shown.appIcon},
        {"summary", shown.summary},
        {"body", shown.body},
        {"actions", QJsonArray::fromStringList(shown.actions)},
        {"desktopEntry", shown.desktopEntry},
        {"urgency", shown.urgency},
        {"image", shown.image},
        {"expireTimeout", shown.expireTimeout},
    };
    std::printf("%s\n", QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    quorvane::FakeNotificationServer server(QDBusConnection::sessionBus());
    if (!server.start()) {
        std::fprintf(stderr, "quorvane_fake_notifications: could not take org.freedesktop.Notifications\n");
        return 1;
    }
    server.onNotify(print);
    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &server, [&server, &input] {
        std::string command;
        if (!std::getline(std::cin, command)) {
            input.setEnabled(false);
            return;
        }
        const QStringList words = QString::fromStdString(command).split(u' ', Qt::SkipEmptyParts);
        if (words.value(0) == "invoke" && words.size() >= 3) {
            server.invoke(words[1].toUInt(), words[2], words.value(3));
        } else if (words.value(0) == "stop") {
            server.stop();
        } else if (words.value(0) == "start") {
            server.start();
        } else {
            std::fprintf(stderr, "quorvane_fake_notifications: unknown command: %s\n", command.c_str());
        }
    });
    std::printf("ready\n");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
