#include "tray/FreedesktopNotifier.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace quorvane {

namespace {

// The notification protocol's value for a notice with no deadline of its own: the
// server's default time.
constexpr int kServerDefaultTimeout = -1;
constexpr uchar kUrgencyNormal = 1;

QDBusMessage serverCall(const char* method) {
    return QDBusMessage::createMethodCall(
        QString::fromLatin1(FreedesktopNotifier::kService), QString::fromLatin1(FreedesktopNotifier::kPath),
        QString::fromLatin1(FreedesktopNotifier::kInterface), QString::fromLatin1(method));
}

// The "image-data" hint, (iiibiiay): width, height, row stride, alpha, bits
// per sample, channels, then the RGBA bytes.
QDBusArgument imageData(const QImage& icon) {
    const QImage rgba = icon.convertToFormat(QImage::Format_RGBA8888);
    QDBusArgument argument;
    argument.beginStructure();
    argument << rgba.width() << rgba.height() << static_cast<int>(rgba.bytesPerLine()) << true << 8 << 4
             << QByteArray(reinterpret_cast<const char*>(rgba.constBits()),
                           static_cast<int>(rgba.sizeInBytes()));
    argument.endStructure();
    return argument;
}

} // namespace

FreedesktopNotifier::FreedesktopNotifier(QDBusConnection bus, QImage icon, OpenHandler onOpen,
                                         std::ostream& log, QObject* parent)
    : QObject(parent)
    , m_bus(std::move(bus))
    , m_icon(std::move(icon))
    , m_onOpen(std::move(onOpen))
    , m_log(log) {
    const QString service = QString::fromLatin1(kService);
    const QString path = QString::fromLatin1(kPath);
    const QString interface = QString::fromLatin1(kInterface);
    m_bus.connect(service, path, interface, QStringLiteral("ActionInvoked"), this,
                  SLOT(actionInvoked(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("ActivationToken"), this,
                  SLOT(activationToken(uint, QString)));
    m_bus.connect(service, path, interface, QStringLiteral("NotificationClosed"), this,
                  SLOT(notificationClosed(uint, uint)));
}

void FreedesktopNotifier::notify(const Notification& notification) {
    if (!m_bus.isConnected()) {
        reportFailure(m_bus.lastError());
        return;
    }
    // Asked each time: the server may have been replaced since the last notice.
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(serverCall("GetCapabilities")), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this,
            [this, notification](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                const QDBusPendingReply<QStringList> reply = *finished;
                if (reply.isError()) {
                    reportFailure(reply.error());
                    return;
                }
                send(notification, reply.value().contains(QStringLiteral("actions")));
            });
}

void FreedesktopNotifier::send(const Notification& notification, bool withActions) {
    QVariantMap hints;
    hints.insert(QStringLiteral("desktop-entry"), QString::fromLatin1(kDesktopEntry));
    hints.insert(QStringLiteral("urgency"), QVariant::fromValue(kUrgencyNormal));
    if (!m_icon.isNull()) {
        hints.insert(QStringLiteral("image-data"), QVariant::fromValue(imageData(m_icon)));
    }
    QStringList actions;
    if (withActions) {
        actions << QString::fromLatin1(kOpenAction) << QStringLiteral("Open Quorvane");
    }
    QDBusMessage call = serverCall("Notify");
    call << QString::fromLatin1(kAppName) << m_shownId << QString::fromLatin1(kDesktopEntry)
         << QString::fromStdString(notification.summary) << QString::fromStdString(notification.body)
         << actions << hints << kServerDefaultTimeout;
    auto* pending = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<uint> reply = *finished;
        if (reply.isError()) {
            reportFailure(reply.error());
            return;
        }
        m_shownId = reply.value();
    });
}

void FreedesktopNotifier::actionInvoked(uint id, const QString& action) {
    if (id == 0 || id != m_shownId || action != QString::fromLatin1(kOpenAction)) {
        return;
    }
    const QString token = std::exchange(m_activationToken, QString());
    if (m_onOpen) {
        m_onOpen(token);
    }
}

void FreedesktopNotifier::activationToken(uint id, const QString& token) {
    // Sent just before ActionInvoked, for the window the action brings up.
    if (id != 0 && id == m_shownId) {
        m_activationToken = token;
    }
}

void FreedesktopNotifier::notificationClosed(uint id, uint /*reason*/) {
    if (id != 0 && id == m_shownId) {
        m_shownId = 0;
        m_activationToken.clear();
    }
}

void FreedesktopNotifier::reportFailure(const QDBusError& error) {
    if (m_failureReported) {
        return;
    }
    m_failureReported = true;
    const QString reason = error.name().isEmpty() ? QStringLiteral("no session bus") : error.name();
    m_log << "quorvane: no notification server answered (" << reason.toStdString()
          << "); a low balance shows only in the panel\n";
    m_log.flush();
}

} // namespace quorvane
