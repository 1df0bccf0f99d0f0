#include "tray/StatusNotifierItem.h"

#include "tray/DBusMenuExporter.h"

namespace quorvane {

StatusNotifierItem::StatusNotifierItem(QObject* parent)
    : QObject(parent) {}

void StatusNotifierItem::setTitle(const QString& mark, const QString& label, const QString& labelGuide,
                                  const IconDrawer& drawIcon) {
    const bool markChanged = mark != m_mark;
    const bool labelChanged = label != m_label || labelGuide != m_labelGuide;
    if (!markChanged && !labelChanged) {
        return;
    }
    m_mark = mark;
    m_label = label;
    m_labelGuide = labelGuide;
    if (markChanged) {
        m_icon = drawIcon(mark);
        emit NewIcon();
    }
    if (labelChanged) {
        emit XAyatanaNewLabel(m_label, m_labelGuide);
    }
    emit NewToolTip();
}

void StatusNotifierItem::setToolTipTitle(const QString& title) {
    if (title != m_toolTipTitle) {
        m_toolTipTitle = title;
        emit NewToolTip();
    }
}

QString StatusNotifierItem::takeActivationToken() {
    return std::exchange(m_activationToken, QString());
}

SniToolTip StatusNotifierItem::toolTip() const {
    return SniToolTip{QString(), {}, m_toolTipTitle, m_mark + m_label};
}

QDBusObjectPath StatusNotifierItem::menu() const {
    return QDBusObjectPath(QString::fromLatin1(DBusMenuExporter::kObjectPath));
}

void StatusNotifierItem::Activate(int x, int y) {
    emit activateRequested(QPoint(x, y));
}

// The middle click: the same as the primary one, the only other thing the item offers.
void StatusNotifierItem::SecondaryActivate(int x, int y) {
    emit activateRequested(QPoint(x, y));
}

// Asked by hosts that draw no dbusmenu of their own.
void StatusNotifierItem::ContextMenu(int x, int y) {
    emit contextMenuRequested(QPoint(x, y));
}

void StatusNotifierItem::Scroll(int, const QString&) {}

void StatusNotifierItem::ProvideXdgActivationToken(const QString& token) {
    m_activationToken = token;
}

} // namespace quorvane
