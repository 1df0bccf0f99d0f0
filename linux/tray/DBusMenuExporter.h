// The status item's menu on the session bus, as com.canonical.dbusmenu, for the host's context menu.
#pragma once

#include "menu/MenuCommand.h"
#include "menu/MenuItem.h"
#include "tray/DBusMenuModel.h"
#include "tray/DBusMenuTypes.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <vector>

namespace quorvane {

// Hosts fetch the layout when they open the menu and again after each
// LayoutUpdated. A rebuild that leaves every item in its place (a refresh,
// a chosen interval) reaches the host as ItemsPropertiesUpdated with what
// changed, so the host keeps the menu it drew; any other sends a new layout.
// Clicks are carried out after the D-Bus call has been answered: a command
// usually rebuilds this very menu.
class DBusMenuExporter : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    using CommandHandler = std::function<void(MenuCommand command, std::int64_t tag)>;
    using DashboardHandler = std::function<void()>;

    static constexpr const char* kObjectPath = "/MenuBar";

    DBusMenuExporter(CommandHandler onCommand, DashboardHandler onShowDashboard, QObject* parent = nullptr);

    void setMenu(const std::vector<MenuItem>& items);
    uint revision() const { return m_revision; }
    const DBusMenuModel& model() const { return m_model; }

    uint version() const { return 3; }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

public slots:
    Q_SCRIPTABLE uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                                quorvane::DBusMenuLayoutItem& layout);
    Q_SCRIPTABLE quorvane::DBusMenuItemPropertiesList GetGroupProperties(const QList<int>& ids,
                                                                         const QStringList& propertyNames);
    Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString& name);
    Q_SCRIPTABLE void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    Q_SCRIPTABLE QList<int> EventGroup(const quorvane::DBusMenuEventList& events);
    Q_SCRIPTABLE bool AboutToShow(int id);
    Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

signals:
    Q_SCRIPTABLE void ItemsPropertiesUpdated(const quorvane::DBusMenuItemPropertiesList& updatedProps,
                                             const quorvane::DBusMenuItemKeysList& removedProps);
    Q_SCRIPTABLE void LayoutUpdated(uint revision, int parent);
    Q_SCRIPTABLE void ItemActivationRequested(int id, uint timestamp);

private:
    // The item in the current tree, or in the one it replaced when a click
    // was sent just before a new layout reached the host.
    const DBusMenuModel::Entry* findForEvent(int id) const;
    bool handleEvent(int id, const QString& eventId);

    CommandHandler m_onCommand;
    DashboardHandler m_onShowDashboard;
    DBusMenuIds m_ids;
    DBusMenuModel m_model;
    DBusMenuModel m_previousModel;
    uint m_revision = 1;
};

} // namespace quorvane
