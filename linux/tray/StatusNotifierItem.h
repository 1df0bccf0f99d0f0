// The status item as the desktop's panel sees it: org.kde.StatusNotifierItem with the Ayatana label.
#pragma once

#include "tray/StatusNotifierTypes.h"

#include <QDBusObjectPath>
#include <QObject>
#include <QPoint>
#include <QString>

#include <functional>
#include <utility>

namespace quorvane {

// Holds what the panel reads (label, icon, tooltip) and announces each
// change with the protocol's own signals; the clicks it receives leave as Qt
// signals for the shell to answer. Panels that draw labels show the mark as
// the icon and the rest of the title beside it, like the Mac's menu bar;
// panels that draw none show the whole title in the tooltip.
class StatusNotifierItem : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconThemePath READ emptyText)
    Q_PROPERTY(QString IconName READ emptyText)
    Q_PROPERTY(quorvane::SniIconPixmapList IconPixmap READ iconPixmapForHost)
    Q_PROPERTY(QString OverlayIconName READ emptyText)
    Q_PROPERTY(quorvane::SniIconPixmapList OverlayIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionIconName READ emptyText)
    Q_PROPERTY(quorvane::SniIconPixmapList AttentionIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionMovieName READ emptyText)
    Q_PROPERTY(quorvane::SniToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)
    Q_PROPERTY(QString XAyatanaLabel READ label)
    Q_PROPERTY(QString XAyatanaLabelGuide READ labelGuide)
    Q_PROPERTY(uint XAyatanaOrderingIndex READ orderingIndex)

public:
    static constexpr const char* kObjectPath = "/StatusNotifierItem";

    explicit StatusNotifierItem(QObject* parent = nullptr);

    using IconDrawer = std::function<SniIconPixmapList(const QString& mark)>;

    // The title in its two parts, the mark as the icon (drawn by `drawIcon`
    // only when the mark changes) and the rest as the label, with the text
    // whose width the panel keeps for the label.
    void setTitle(const QString& mark, const QString& label, const QString& labelGuide,
                  const IconDrawer& drawIcon);
    void setToolTipTitle(const QString& title);

    // An activation token handed over by the host before Activate, for a
    // window that may take the focus on Wayland; taken once.
    QString takeActivationToken();

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("quorvane"); }
    QString title() const { return QStringLiteral("Quorvane"); }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString emptyText() const { return {}; }
    const QString& mark() const { return m_mark; }
    SniIconPixmapList iconPixmap() const { return m_icon; }
    // The icon as a host reads it over the bus, which it does to draw the
    // item: the one sign that the item is on screen.
    SniIconPixmapList iconPixmapForHost() {
        emit iconFetched();
        return m_icon;
    }
    SniIconPixmapList noPixmaps() const { return {}; }
    SniToolTip toolTip() const;
    // Activate opens the dashboard; the host opens the menu on the secondary click.
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const;
    QString label() const { return m_label; }
    QString labelGuide() const { return m_labelGuide; }
    uint orderingIndex() const { return 0; }

public slots:
    Q_SCRIPTABLE void Activate(int x, int y);
    Q_SCRIPTABLE void SecondaryActivate(int x, int y);
    Q_SCRIPTABLE void ContextMenu(int x, int y);
    Q_SCRIPTABLE void Scroll(int delta, const QString& orientation);
    Q_SCRIPTABLE void ProvideXdgActivationToken(const QString& token);

signals:
    Q_SCRIPTABLE void NewTitle();
    Q_SCRIPTABLE void NewIcon();
    Q_SCRIPTABLE void NewAttentionIcon();
    Q_SCRIPTABLE void NewOverlayIcon();
    Q_SCRIPTABLE void NewToolTip();
    Q_SCRIPTABLE void NewStatus(const QString& status);
    Q_SCRIPTABLE void XAyatanaNewLabel(const QString& label, const QString& guide);

    // Where the host says the click was, in screen coordinates; (0, 0) when it does not say.
    void activateRequested(const QPoint& position);
    void contextMenuRequested(const QPoint& position);
    // A host read the icon.
    void iconFetched();

private:
    QString m_mark;
    QString m_label;
    QString m_labelGuide;
    QString m_toolTipTitle;
    SniIconPixmapList m_icon;
    QString m_activationToken;
};

} // namespace quorvane
