// A desktop's notification server (org.freedesktop.Notifications) for the tests: records what it is asked to
// show.
#pragma once

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

namespace quorvane {

// Lives on a connection of its own, as a desktop's server lives in the
// shell's process, so its signals come from the name the app listens to.
class FakeNotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    // One Notify call, with the hints the app sends read out.
    struct Shown {
        uint id = 0;
        QString appName;
        uint replacesId = 0;
        QString appIcon;
        QString summary;
        QString body;
        QStringList actions;
        QString desktopEntry;
        int urgency = -1;
        // "WIDTHxHEIGHT" of the image-data hint when its bytes fill it, else empty.
        QString image;
        int expireTimeout = 0;
    };

    // `capabilities` are what GetCapabilities answers; "actions" lets the app offer its click.
    explicit FakeNotificationServer(QDBusConnection connection,
                                    QStringList capabilities = {QStringLiteral("actions"),
                                                                QStringLiteral("body")},
                                    QObject* parent = nullptr);
    ~FakeNotificationServer() override;

    bool start();
    void stop();

    const QList<Shown>& shown() const { return m_shown; }
    // Called with each notice as it comes in.
    void onNotify(std::function<void(const Shown&)> handler) { m_onNotify = std::move(handler); }
    // A click on the notice: the token first, as the notification protocol orders them.
    void invoke(uint id, const QString& action, const QString& activationToken = QString());
    void close(uint id);

public slots:
    Q_SCRIPTABLE QStringList GetCapabilities();
    Q_SCRIPTABLE uint Notify(const QString& appName, uint replacesId, const QString& appIcon,
                             const QString& summary, const QString& body, const QStringList& actions,
                             const QVariantMap& hints, int expireTimeout);
    Q_SCRIPTABLE void CloseNotification(uint id);
    Q_SCRIPTABLE QString GetServerInformation(QString& vendor, QString& version, QString& specVersion);

signals:
    Q_SCRIPTABLE void NotificationClosed(uint id, uint reason);
    Q_SCRIPTABLE void ActionInvoked(uint id, const QString& actionKey);
    Q_SCRIPTABLE void ActivationToken(uint id, const QString& activationToken);

private:
    QDBusConnection m_connection;
    const QStringList m_capabilities;
    QList<Shown> m_shown;
    std::function<void(const Shown&)> m_onNotify;
    uint m_lastId = 0;
    bool m_running = false;
};

} // namespace quorvane
