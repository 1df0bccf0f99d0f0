// Notifications through the desktop's notification server (org.freedesktop.Notifications) on the session bus.
#pragma once

#include "platform/Notifier.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QImage>
#include <QObject>
#include <QString>

#include <functional>
#include <ostream>

namespace quorvane {

// GNOME Shell, Plasma, XFCE's notifyd, mako, dunst and the rest all serve
// this interface. Every call is asynchronous, so a slow server never stalls
// the app. A later notice replaces the earlier one where that is still
// shown. Where the server offers actions, clicking the notice opens the
// dashboard, with the activation token the server passes for it.
class FreedesktopNotifier : public QObject, public Notifier {
    Q_OBJECT

public:
    static constexpr const char* kService = "org.freedesktop.Notifications";
    static constexpr const char* kPath = "/org/freedesktop/Notifications";
    static constexpr const char* kInterface = "org.freedesktop.Notifications";
    static constexpr const char* kAppName = "Quorvane";
    // The desktop entry's name: servers take the app's name and icon from it.
    static constexpr const char* kDesktopEntry = "app.quorvane.Quorvane";
    static constexpr const char* kOpenAction = "default";

    using OpenHandler = std::function<void(const QString& activationToken)>;

    // `icon` is sent with each notice, so the whale shows where the app's
    // icon is not installed. The first failure to reach a server is written
    // to `log`, once per run, as one line.
    FreedesktopNotifier(QDBusConnection bus, QImage icon, OpenHandler onOpen, std::ostream& log,
                        QObject* parent = nullptr);

    void notify(const Notification& notification) override;

private slots:
    void actionInvoked(uint id, const QString& action);
    void activationToken(uint id, const QString& token);
    void notificationClosed(uint id, uint reason);

private:
    void send(const Notification& notification, bool withActions);
    void reportFailure(const QDBusError& error);

    QDBusConnection m_bus;
    const QImage m_icon;
    OpenHandler m_onOpen;
    std::ostream& m_log;
    // The server's id of the notice last shown, while it is shown; 0 for none.
    uint m_shownId = 0;
    QString m_activationToken;
    bool m_failureReported = false;
};

} // namespace quorvane
