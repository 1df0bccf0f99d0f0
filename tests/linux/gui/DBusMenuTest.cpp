#include "GuiFakePlatform.h"
#include "app/AppDelegate.h"
#include "tray/DBusMenuExporter.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace quorvane {
namespace {

// One line an item, children indented by two blanks: "---" a separator,
// "(off) " before an item that is not enabled, "(o) "/"( ) " a radio item,
// "  <Control+r>" its shortcut, " >" a submenu.
void render(const DBusMenuLayoutItem& node, const std::string& indent, std::string& out) {
    for (const DBusMenuLayoutItem& child : node.children) {
        const QVariantMap& p = child.properties;
        if (p.value("type").toString() == "separator") {
            out += indent + "---\n";
            continue;
        }
        out += indent;
        if (!p.value("enabled", true).toBool()) {
            out += "(off) ";
        }
        if (p.value("toggle-type").toString() == "radio") {
            out += p.value("toggle-state").toInt() == 1 ? "(o) " : "( ) ";
        }
        out += p.value("label").toString().toStdString();
        for (const QStringList& chord : p.value("shortcut").value<DBusMenuShortcut>()) {
            out += "  <" + chord.join('+').toStdString() + ">";
        }
        if (p.value("children-display").toString() == "submenu") {
            out += " >\n";
            render(child, indent + "  ", out);
        } else {
            out += "\n";
        }
    }
}

std::string text(const DBusMenuModel& model) {
    DBusMenuLayoutItem root;
    model.layout(DBusMenuModel::kRootId, -1, {}, root);
    std::string out;
    render(root, "", out);
    return out;
}

// The id of the first item whose label is `label`, anywhere in the tree.
int idOf(const DBusMenuModel& model, const QString& label) {
    DBusMenuLayoutItem root;
    model.layout(DBusMenuModel::kRootId, -1, {"label"}, root);
    QList<DBusMenuLayoutItem> pending = root.children;
    while (!pending.isEmpty()) {
        const DBusMenuLayoutItem node = pending.takeFirst();
        if (node.properties.value("label").toString() == label) {
            return node.id;
        }
        pending.append(node.children);
    }
    ADD_FAILURE() << "no item " << label.toStdString();
    return -1;
}

Card cardOf(const std::vector<std::string>& lines) {
    Card card;
    for (const std::string& line : lines) {
        CardLabel label;
        label.text = line;
        card.subviews.emplace_back(label);
    }
    return card;
}

std::vector<MenuItem> oneOfEachKind(const std::string& balance, bool fiveMinutes) {
    const Card card = cardOf({"\xF0\x9F\x90\x8B Quorvane", "", balance});
    return {
        MenuItem::cardItem(card), MenuItem::separator(), MenuItem::informational("Today: " + balance),
        MenuItem::commandItem("\xF0\x9F\x94\x84 Refresh Now", MenuCommand::Refresh, "r"),
        MenuItem::submenuItem(
            "Settings",
            {MenuItem::commandItem("Set API Key...", MenuCommand::SetAPIKey, ","),
             MenuItem::submenuItem(
                 fiveMinutes ? "Refresh Interval: 5 min" : "Refresh Interval: 1 min",
                 {MenuItem::choice("1 min", 60, !fiveMinutes), MenuItem::choice("5 min", 300, fiveMinutes)}),
             MenuItem::separator(), MenuItem::commandItem("Rock_n_Roll", MenuCommand::OpenBilling, ".")})};
}

TEST(DBusMenuModelTest, TheHostsTreeHasCardLinesThatOpenTheDashboardAndNoSubmenuInASubmenu) {
    DBusMenuIds ids;
    std::vector<MenuItem> items = oneOfEachKind("$0.75", false);
    items.push_back(MenuItem::separator());
    const DBusMenuModel model(items, ids);
    // A status card keeps its lines; the submenu in Settings comes out after it.
    EXPECT_EQ(text(model), "\xF0\x9F\x90\x8B Quorvane\n"
                           "$0.75\n"
                           "---\n"
                           "(off) Today: $0.75\n"
                           "\xF0\x9F\x94\x84 Refresh Now  <Control+r>\n"
                           "Settings >\n"
                           "  Set API Key...  <Control+comma>\n"
                           "  ---\n"
                           "  Rock__n__Roll  <Control+period>\n"
                           "Refresh Interval: 1 min >\n"
                           "  (o) 1 min\n"
                           "  ( ) 5 min\n"
                           "---\n");

    // A dashboard is one line: its title and balance.
    Card dashboard = cardOf({"\xF0\x9F\x90\x8B Quorvane", "$0.75", "Today $0.00", "Ready"});
    dashboard.kind = Card::Kind::Dashboard;
    const DBusMenuModel withDashboard({MenuItem::cardItem(dashboard), MenuItem::separator()}, ids);
    EXPECT_EQ(text(withDashboard), "\xF0\x9F\x90\x8B Quorvane \xC2\xB7 $0.75\n---\n");
    const auto action = [&](const QString& label) {
        return model.find(idOf(model, label))->action;
    };
    EXPECT_EQ(action("$0.75"), DBusMenuModel::Action::ShowDashboard);
    EXPECT_EQ(action("Today: $0.75"), DBusMenuModel::Action::None);
    EXPECT_EQ(action("Refresh Interval: 1 min"), DBusMenuModel::Action::None);
    EXPECT_EQ(withDashboard.find(idOf(withDashboard, "\xF0\x9F\x90\x8B Quorvane \xC2\xB7 $0.75"))->action,
              DBusMenuModel::Action::ShowDashboard);
    const DBusMenuModel::Entry& five = *model.find(idOf(model, "5 min"));
    EXPECT_EQ(five.action, DBusMenuModel::Action::Command);
    EXPECT_EQ(five.command, MenuCommand::RefreshInterval);
    EXPECT_EQ(five.tag, 300);
}

TEST(DBusMenuModelTest, ARebuildKeepsEachItemsIdAndTellsOnlyWhatChanged) {
    DBusMenuIds ids;
    const DBusMenuModel before(oneOfEachKind("$0.75", false), ids);
    const DBusMenuModel after(oneOfEachKind("$0.50", true), ids);
    for (const char* label : {"\xF0\x9F\x94\x84 Refresh Now", "Settings", "1 min", "5 min"}) {
        EXPECT_EQ(idOf(after, label), idOf(before, label)) << label;
    }
    EXPECT_TRUE(after.hasLayoutOf(before));

    DBusMenuItemKeysList removed;
    const DBusMenuItemPropertiesList changed = after.changesSince(before, removed);
    std::map<int, QVariantMap> byId;
    for (const DBusMenuItemProperties& item : changed) {
        byId[item.id] = item.properties;
    }
    EXPECT_EQ(byId, (std::map<int, QVariantMap>{
                        {idOf(before, "$0.75"), {{"label", "$0.50"}}},
                        {idOf(before, "Today: $0.75"), {{"label", "Today: $0.50"}}},
                        {idOf(before, "Refresh Interval: 1 min"), {{"label", "Refresh Interval: 5 min"}}},
                        {idOf(before, "1 min"), {{"toggle-state", 0}}},
                        {idOf(before, "5 min"), {{"toggle-state", 1}}},
                    }));
    EXPECT_TRUE(removed.isEmpty());

    // Another tree: the card with one line less, the shortcut gone. New items get new ids.
    std::vector<MenuItem> other = oneOfEachKind("$0.50", true);
    other[0].card = std::make_shared<Card>(cardOf({"Quorvane"}));
    other[3].keyEquivalent.clear();
    other.push_back(MenuItem::commandItem("\xE2\x8C\x98 Quit", MenuCommand::Quit, "q"));
    const DBusMenuModel third(other, ids);
    EXPECT_FALSE(third.hasLayoutOf(after));
    EXPECT_EQ(third.find(idOf(before, "$0.75")), nullptr);
    EXPECT_EQ(idOf(third, "\xE2\x8C\x98 Quit"), static_cast<int>(ids.size())) << "the one new item";
    third.changesSince(after, removed);
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(removed[0].id, idOf(before, "\xF0\x9F\x94\x84 Refresh Now"));
    EXPECT_EQ(removed[0].names, QStringList{"shortcut"});
}

TEST(DBusMenuModelTest, TitlesAndKeysAreSpelledForTheHost) {
    EXPECT_EQ(DBusMenuModel::label("Rock_n_Roll & more"), "Rock__n__Roll & more");
    const std::pair<std::string, DBusMenuShortcut> keys[] = {
        {"", {}},
        {"r", {{"Control", "r"}}},
        {",", {{"Control", "comma"}}},
        {".", {{"Control", "period"}}},
    };
    for (const auto& [key, expected] : keys) {
        EXPECT_EQ(DBusMenuModel::shortcut(key), expected) << key;
    }
}

class DBusMenuTest : public ::testing::Test {
protected:
    GuiFakePlatform gui;
    AppDelegate delegate{gui.platform()};
    DBusMenuExporter& exporter = gui.statusItem.trayMenu();

    DBusMenuTest() {
        gui.route(delegate);
        gui.reachTwoCurrencyDashboard(delegate);
    }

    int idOf(const QString& label) { return quorvane::idOf(exporter.model(), label); }
    void click(int id) { exporter.Event(id, "clicked", QDBusVariant(QString()), 0); }
};

TEST_F(DBusMenuTest, ARefreshReachesTheHostAsChangedPropertiesAndAnErrorAsANewLayout) {
    QSignalSpy layoutUpdated(&exporter, &DBusMenuExporter::LayoutUpdated);
    QSignalSpy propertiesUpdated(&exporter, &DBusMenuExporter::ItemsPropertiesUpdated);
    const int refresh = idOf("\xF0\x9F\x94\x84 Refresh Now");
    const uint revision = exporter.revision();

    click(refresh);
    EXPECT_EQ(gui.fake.http.requests().size(), 2u) << "not while the host waits for the answer";
    QCoreApplication::processEvents();
    ASSERT_EQ(gui.fake.http.requests().size(), 3u);
    gui.fake.http.respond(200, balanceBody({{"CNY", "69.5"}, {"USD", "0.50"}}));
    EXPECT_EQ(layoutUpdated.size(), 0);
    EXPECT_EQ(exporter.revision(), revision);
    ASSERT_EQ(propertiesUpdated.size(), 1) << "the start of a refresh changes no line of the menu";
    const auto changed = propertiesUpdated.last().at(0).value<DBusMenuItemPropertiesList>();
    const auto has = [&](const QString& label) {
        return std::any_of(changed.begin(), changed.end(), [&](const DBusMenuItemProperties& item) {
            return item.properties.value("label") == label;
        });
    };
    EXPECT_TRUE(has("\xF0\x9F\x90\x8B Quorvane \xC2\xB7 $0.50"));
    EXPECT_TRUE(has("Remaining: $0.50"));
    EXPECT_EQ(idOf("\xF0\x9F\x94\x84 Refresh Now"), refresh);

    // A failed refresh puts a status card in the dashboard's place: another tree.
    click(refresh);
    QCoreApplication::processEvents();
    gui.fake.http.respond(500, "down");
    ASSERT_EQ(layoutUpdated.size(), 1);
    EXPECT_EQ(layoutUpdated.last().at(0).toUInt(), revision + 1);
    EXPECT_EQ(layoutUpdated.last().at(1).toInt(), 0);
    EXPECT_EQ(idOf("\xF0\x9F\x94\x84 Refresh Now"), refresh);
}

TEST_F(DBusMenuTest, ClicksRunTheirCommandOrOpenTheDashboardAndLinesToReadDoNothing) {
    click(idOf("5 min"));
    EXPECT_TRUE(exporter.EventGroup({DBusMenuEvent{idOf("15 min"), "hovered", QDBusVariant(0), 0},
                                     DBusMenuEvent{987654, "clicked", QDBusVariant(0), 0}}) ==
                QList<int>{987654});
    for (const QString& label :
         {QString("Today: $11.75"), QString("Details"), QString("Refresh Interval: 1 min")}) {
        click(idOf(label));
    }
    exporter.Event(idOf("\xE2\x8C\x98 Quit"), "opened", QDBusVariant(0), 0);
    EXPECT_EQ(gui.fake.timers.activePeriod(), 60.0) << "not while the host waits for the answer";
    QCoreApplication::processEvents();
    EXPECT_EQ(gui.fake.timers.activePeriod(), 300.0);
    EXPECT_EQ(gui.fake.desktop.log(), std::vector<std::string>{"accessory policy"});
    EXPECT_EQ(gui.fake.http.requests().size(), 2u);
    EXPECT_EQ(exporter.model().find(idOf("5 min"))->properties.value("toggle-state"), 1);

    ASSERT_EQ(gui.statusItem.popover(), nullptr);
    click(idOf("\xF0\x9F\x90\x8B Quorvane \xC2\xB7 $0.75"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(gui.statusItem.menu().isVisible()) << "on X11 the dashboard is the menu with its card";
    gui.statusItem.menu().hide();
}

TEST_F(DBusMenuTest, LayoutsAreCutToTheAskedDepthAndProperties) {
    const int settings = idOf("Settings");
    DBusMenuLayoutItem node;
    exporter.GetLayout(settings, 1, {"label", "toggle-state"}, node);
    EXPECT_EQ(node.id, settings);
    EXPECT_EQ(node.properties, (QVariantMap{{"label", "Settings"}}));
    ASSERT_EQ(node.children.size(), 8);
    EXPECT_EQ(node.children[2].properties, (QVariantMap{{"label", "Set API Key..."}}));
    exporter.GetLayout(idOf("Refresh Interval: 1 min"), 1, {"label", "toggle-state"}, node);
    ASSERT_EQ(node.children.size(), 4);
    EXPECT_EQ(node.children[1].properties, (QVariantMap{{"label", "1 min"}, {"toggle-state", 1}}));

    exporter.GetLayout(settings, 0, {}, node);
    EXPECT_TRUE(node.children.isEmpty());
    EXPECT_EQ(exporter.GetLayout(987654, -1, {}, node), exporter.revision());
    EXPECT_EQ(node.id, 987654);
    EXPECT_TRUE(node.properties.isEmpty());

    const int quit = idOf("\xE2\x8C\x98 Quit");
    const DBusMenuItemPropertiesList group = exporter.GetGroupProperties({quit, 987654}, {"label"});
    ASSERT_EQ(group.size(), 1);
    EXPECT_EQ(group[0].id, quit);
    EXPECT_EQ(exporter.GetProperty(quit, "label").variant().toString(), "\xE2\x8C\x98 Quit");
    QList<int> errors;
    exporter.AboutToShowGroup({quit, 987654}, errors);
    EXPECT_EQ(errors, QList<int>{987654});
}

} // namespace
} // namespace quorvane
