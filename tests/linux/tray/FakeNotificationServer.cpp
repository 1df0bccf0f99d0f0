#include "FakeNotificationServer.h"

#include <QDBusArgument>
#include <QVariant>

namespace quorvane {

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
constexpr uint kClosedByCall = 3;

// (iiibiiay) as the notification protocol lays it out; empty unless the bytes are
// exactly rows of RGBA or RGB pixels.
QString imageSize(const QVariant& hint) {
    if (!hint.canConvert<QDBusArgument>()) {
        return QString();
    }
    const QDBusArgument argument = hint.value<QDBusArgument>();
    int width = 0;
    int height = 0;
    int rowStride = 0;
    bool hasAlpha = false;
    int bitsPerSample = 0;
    int channels = 0;
    QByteArray bytes;
    argument.beginStructure();
    argument >> width >> height >> rowStride >> hasAlpha >> bitsPerSample >> channels >> bytes;
    argument.endStructure();
    const bool filled = width > 0 && bitsPerSample == 8 && channels == (hasAlpha ? 4 : 3) &&
                        rowStride >= width * channels && bytes.size() == qsizetype{rowStride} * height;
    return filled ? QStringLiteral("%1x%2").arg(width).arg(height) : QString();
}

} // namespace

FakeNotificationServer::FakeNotificationServer(QDBusConnection connection, QStringList capabilities,
                                               QObject* parent)
    : QObject(parent)
    , m_connection(std::move(connection))
    , m_capabilities(std::move(capabilities)) {}

FakeNotificationServer::~FakeNotificationServer() {
    stop();
}

bool FakeNotificationServer::start() {
    m_running = m_connection.registerObject(kPath, this, QDBusConnection::ExportScriptableContents) &&
                m_connection.registerService(kService);
    return m_running;
}

void FakeNotificationServer::stop() {
    if (m_running) {
        m_connection.unregisterService(kService);
        m_connection.unregisterObject(kPath);
        m_running = false;
    }
}

void FakeNotificationServer::invoke(uint id, const QString& action, const QString& activationToken) {
    if (!activationToken.isEmpty()) {
        emit ActivationToken(id, activationToken);
    }
    emit ActionInvoked(id, action);
}

void FakeNotificationServer::close(uint id) {
    emit NotificationClosed(id, kClosedByCall);
}

QStringList FakeNotificationServer::GetCapabilities() {
    return m_capabilities;
}

uint FakeNotificationServer::Notify(const QString& appName, uint replacesId, const QString& appIcon,
                                    const QString& summary, const QString& body, const QStringList& actions,
                                    const QVariantMap& hints, int expireTimeout) {
    Shown shown;
    shown.id = replacesId != 0 ? replacesId : ++m_lastId;
    shown.appName = appName;
    shown.replacesId = replacesId;
    shown.appIcon = appIcon;
    shown.summary = summary;
    shown.body = body;
    shown.actions = actions;
    shown.desktopEntry = hints.value(QStringLiteral("desktop-entry")).toString();
    const QVariant urgency = hints.value(QStringLiteral("urgency"));
    shown.urgency = urgency.isValid() ? urgency.toInt() : -1;
    shown.image = imageSize(hints.value(QStringLiteral("image-data")));
    shown.expireTimeout = expireTimeout;
    m_shown.append(shown);
    if (m_onNotify) {
        m_onNotify(shown);
    }
    return shown.id;
}

void FakeNotificationServer::CloseNotification(uint id) {
    close(id);
}

QString FakeNotificationServer::GetServerInformation(QString& vendor, QString& version,
                                                     QString& specVersion) {
    vendor = QStringLiteral("Quorvane tests");
    version = QStringLiteral("1");
    specVersion = QStringLiteral("1.2");
    return QStringLiteral("fake");
}

} // namespace quorvane
