#include "tray/DBusMenuExporter.h"

#include <QTimer>

namespace quorvane {

DBusMenuExporter::DBusMenuExporter(CommandHandler onCommand, DashboardHandler onShowDashboard,
                                   QObject* parent)
    : QObject(parent)
    , m_onCommand(std::move(onCommand))
    , m_onShowDashboard(std::move(onShowDashboard)) {}

void DBusMenuExporter::setMenu(const std::vector<MenuItem>& items) {
    DBusMenuModel next(items, m_ids);
    if (next.hasLayoutOf(m_model)) {
        DBusMenuItemKeysList removed;
        const DBusMenuItemPropertiesList changed = next.changesSince(m_model, removed);
        m_model = std::move(next);
        if (!changed.isEmpty() || !removed.isEmpty()) {
            emit ItemsPropertiesUpdated(changed, removed);
        }
        return;
    }
    m_previousModel = std::move(m_model);
    m_model = std::move(next);
    ++m_revision;
    emit LayoutUpdated(m_revision, DBusMenuModel::kRootId);
}

uint DBusMenuExporter::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                                 DBusMenuLayoutItem& layout) {
    // An id the host kept from an older tree gets an empty node, not an
    // error: it refetches the root on the LayoutUpdated that is on its way.
    if (!m_model.layout(parentId, recursionDepth, propertyNames, layout)) {
        layout = DBusMenuLayoutItem{parentId, {}, {}};
    }
    return m_revision;
}

DBusMenuItemPropertiesList DBusMenuExporter::GetGroupProperties(const QList<int>& ids,
                                                                const QStringList& propertyNames) {
    DBusMenuItemPropertiesList answer;
    for (const int id : ids) {
        if (m_model.find(id)) {
            answer.append(DBusMenuItemProperties{id, m_model.properties(id, propertyNames)});
        }
    }
    return answer;
}

QDBusVariant DBusMenuExporter::GetProperty(int id, const QString& name) {
    return QDBusVariant(m_model.properties(id, {name}).value(name));
}

void DBusMenuExporter::Event(int id, const QString& eventId, const QDBusVariant&, uint) {
    handleEvent(id, eventId);
}

QList<int> DBusMenuExporter::EventGroup(const DBusMenuEventList& events) {
    QList<int> idErrors;
    for (const DBusMenuEvent& event : events) {
        if (!handleEvent(event.id, event.eventId)) {
            idErrors.append(event.id);
        }
    }
    return idErrors;
}

bool DBusMenuExporter::AboutToShow(int) {
    // The tree is always current: it is rebuilt whenever what it shows changes.
    return false;
}

QList<int> DBusMenuExporter::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    idErrors.clear();
    for (const int id : ids) {
        if (!m_model.find(id)) {
            idErrors.append(id);
        }
    }
    return {};
}

const DBusMenuModel::Entry* DBusMenuExporter::findForEvent(int id) const {
    const DBusMenuModel::Entry* entry = m_model.find(id);
    return entry ? entry : m_previousModel.find(id);
}

bool DBusMenuExporter::handleEvent(int id, const QString& eventId) {
    const DBusMenuModel::Entry* entry = findForEvent(id);
    if (!entry) {
        return false;
    }
    const bool enabled = entry->properties.value(QStringLiteral("enabled"), true).toBool();
    if (eventId != QLatin1String("clicked") || !enabled) {
        return true;
    }
    if (entry->action == DBusMenuModel::Action::Command && m_onCommand) {
        QTimer::singleShot(0, this, [onCommand = m_onCommand, command = entry->command, tag = entry->tag] {
            onCommand(command, tag);
        });
    } else if (entry->action == DBusMenuModel::Action::ShowDashboard && m_onShowDashboard) {
        QTimer::singleShot(0, this, m_onShowDashboard);
    }
    return true;
}

} // namespace quorvane
