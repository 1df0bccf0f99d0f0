// quorvane_fake_notifications: a desktop's notification server (org.freedesktop.Notifications) that prints
// what it is asked to show, for the tests.
//
// Each Notify is one JSON line on standard output. Lines on standard input
// act as the user and the desktop: "invoke ID ACTION [TOKEN]" clicks a
// notice, "close ID" closes it (and prints {"closed":ID}), "stop" and
// "start" take the server off the bus and back (it prints {"stopped":true}
// once gone), and "plain" makes it a server that shows no actions.
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>

#include <cstdio>
#include <string>
#include <unistd.h>

namespace quorvane {

// Lives in a process of its own, as a desktop's server lives in the shell's.
class FakeNotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    bool start() {
        return m_bus.registerObject(kPath, this, QDBusConnection::ExportScriptableContents) &&
               m_bus.registerService(kService);
    }
    // One line of standard input.
    void perform(const QStringList& words) {
        const uint id = words.value(1).toUInt();
        if (words.value(0) == "invoke" && words.size() >= 3) {
            // The token first, as the notification protocol orders them.
            if (words.size() > 3) {
                emit ActivationToken(id, words[3]);
            }
            emit ActionInvoked(id, words[2]);
        } else if (words.value(0) == "close") {
            emit NotificationClosed(id, 2);
            print({{"closed", qint64{id}}});
        } else if (words.value(0) == "stop") {
            m_bus.unregisterService(kService);
            m_bus.unregisterObject(kPath);
            print({{"stopped", true}});
        } else if (words.value(0) == "plain") {
            m_actions = false;
            print({{"plain", true}});
        } else if (words.value(0) == "start") {
            start();
        }
    }

public slots:
    // "actions" lets the app offer its click.
    Q_SCRIPTABLE QStringList GetCapabilities() {
        return m_actions ? QStringList{"actions", "body"} : QStringList{"body"};
    }
    Q_SCRIPTABLE uint Notify(const QString& appName, uint replacesId, const QString& appIcon,
                             const QString& summary, const QString& body, const QStringList& actions,
                             const QVariantMap& hints, int expireTimeout) {
        const uint id = replacesId != 0 ? replacesId : ++m_lastId;
        const QString entry = hints.value("desktop-entry").toString();
        const QString image = imageSize(hints.value("image-data"));
        const int urgency = hints.value("urgency", -1).toInt();
        const QVariantList values{id,      appName, replacesId, appIcon, summary,      body,
                                  actions, entry,   urgency,    image,   expireTimeout};
        QJsonObject line;
        for (qsizetype field = 0; field < values.size(); ++field) {
            line.insert(kFields[field], QJsonValue::fromVariant(values[field]));
        }
        print(line);
        return id;
    }

signals:
    Q_SCRIPTABLE void NotificationClosed(uint id, uint reason);
    Q_SCRIPTABLE void ActionInvoked(uint id, const QString& actionKey);
    Q_SCRIPTABLE void ActivationToken(uint id, const QString& activationToken);

private:
    static constexpr auto kService = "org.freedesktop.Notifications";
    static constexpr auto kPath = "/org/freedesktop/Notifications";
    static constexpr const char* kFields[] = {"id",      "appName", "replacesId",   "appIcon",
                                              "summary", "body",    "actions",      "desktopEntry",
                                              "urgency", "image",   "expireTimeout"};

    static void print(const QJsonObject& line) {
        std::printf("%s\n", QJsonDocument(line).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
    }

    // "WIDTHxHEIGHT" of the (iiibiiay) image-data hint when its bytes are
    // exactly rows of RGBA or RGB pixels, else empty.
    static QString imageSize(const QVariant& hint) {
        int width = 0, height = 0, rowStride = 0, bitsPerSample = 0, channels = 0;
        bool hasAlpha = false;
        QByteArray bytes;
        if (hint.canConvert<QDBusArgument>()) {
            const QDBusArgument argument = hint.value<QDBusArgument>();
            argument.beginStructure();
            argument >> width >> height >> rowStride >> hasAlpha >> bitsPerSample >> channels >> bytes;
            argument.endStructure();
        }
        const bool filled = width > 0 && bitsPerSample == 8 && channels == (hasAlpha ? 4 : 3) &&
                            rowStride >= width * channels && bytes.size() == qsizetype{rowStride} * height;
        return filled ? QStringLiteral("%1x%2").arg(width).arg(height) : QString();
    }

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    uint m_lastId = 0;
    bool m_actions = true;
};

} // namespace quorvane

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    quorvane::FakeNotificationServer server;
    if (!server.start()) {
        std::fprintf(stderr, "quorvane_fake_notifications: could not take org.freedesktop.Notifications\n");
        return 1;
    }
    // Read as it comes, several lines at a time where they come together.
    QSocketNotifier input(0, QSocketNotifier::Read);
    std::string pending;
    QObject::connect(&input, &QSocketNotifier::activated, &server, [&server, &input, &pending] {
        char bytes[512];
        const ssize_t count = read(0, bytes, sizeof bytes);
        if (count <= 0) {
            input.setEnabled(false);
            return;
        }
        pending.append(bytes, static_cast<std::size_t>(count));
        for (std::size_t end; (end = pending.find('\n')) != std::string::npos; pending.erase(0, end + 1)) {
            server.perform(QString::fromStdString(pending.substr(0, end)).split(u' ', Qt::SkipEmptyParts));
        }
    });
    std::printf("ready\n");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

#include "FakeNotificationServer.moc"
