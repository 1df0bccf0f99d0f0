#include "GuiFakePlatform.h"
#include "app/AppDelegate.h"
#include "fakes/ExpectedMenu.h"
#include "tray/DBusMenuExporter.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace quorvane {
namespace {

// One line an item, children indented by two blanks: "---" a separator,
// "(off) " before an item that is not enabled, "[x] "/"[ ] " a check mark,
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
        if (p.value("toggle-type").toString() == "checkmark") {
            out += p.value("toggle-state").toInt() == 1 ? "[x] " : "[ ] ";
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

class DBusMenuTest : public ::testing::Test {
protected:
    GuiFakePlatform gui;
    AppDelegate delegate{gui.platform()};
    DBusMenuExporter& exporter = gui.statusItem.trayMenu();

    DBusMenuTest() {
        gui.route(delegate);
        gui.reachTwoCurrencyDashboard(delegate);
    }

    std::string text() {
        DBusMenuLayoutItem root;
        exporter.GetLayout(0, -1, {}, root);
        std::string out;
        render(root, "", out);
        return out;
    }

    // The id of the first item whose label is `label`, anywhere in the tree.
    int idOf(const QString& label) {
        DBusMenuLayoutItem root;
        exporter.GetLayout(0, -1, {"label"}, root);
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

    void click(int id) { exporter.Event(id, "clicked", QDBusVariant(QString()), 0); }
};

TEST_F(DBusMenuTest, TheHostsMenuIsTheDelegatesMenuWithTheCardAsLinesToRead) {
    // The card's labels as inert lines, "(off) " before each of those, freedesktop's key names.
    const MenuNotation dbusmenu{"", "(off) ", "[x] ", "[ ] ", [](std::string_view key) {
                                    return "  <Control+" + std::string(key == "," ? "comma" : key) + ">";
                                }};
    EXPECT_EQ(text(), expectedTwoCurrencyMenu(dbusmenu));
}

TEST_F(DBusMenuTest, ClicksRunTheirCommandAfterTheCallEvenAcrossOneRebuild) {
    QSignalSpy layoutUpdated(&exporter, &DBusMenuExporter::LayoutUpdated);
    const uint revision = exporter.revision();

    click(idOf("\xF0\x9F\x94\x84 Refresh Now"));
    EXPECT_EQ(gui.fake.http.requests().size(), 2u) << "not while the host waits for the answer";
    QCoreApplication::processEvents();
    ASSERT_EQ(gui.fake.http.requests().size(), 3u);
    gui.fake.http.respond(200, balanceBody({{"USD", "0.75"}}));

    // The refresh rebuilt the menu twice; ids of the tree before the last rebuild still work.
    ASSERT_EQ(layoutUpdated.size(), 2);
    EXPECT_EQ(layoutUpdated.last().at(0).toUInt(), revision + 2);
    EXPECT_EQ(layoutUpdated.last().at(1).toInt(), 0);
    const int fiveMinutes = idOf("5 min");
    delegate.refreshIntervalClicked(60); // a rebuild that changes nothing else
    EXPECT_EQ(exporter.model().find(fiveMinutes), nullptr) << "ids are never reused";
    EXPECT_TRUE(exporter.EventGroup({DBusMenuEvent{fiveMinutes, "clicked", QDBusVariant(0), 0}}).isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(gui.fake.timers.activePeriod(), 300.0);
    EXPECT_NE(text().find("    [x] 5 min\n"), std::string::npos);

    // Two rebuilds later the id means nothing, and the host is told so.
    delegate.refreshIntervalClicked(60); // a rebuild that changes nothing else
    EXPECT_EQ(exporter.EventGroup({DBusMenuEvent{fiveMinutes, "clicked", QDBusVariant(0), 0}}),
              QList<int>{fiveMinutes});
}

TEST_F(DBusMenuTest, LinesToReadAndEventsOtherThanClicksDoNothing) {
    const std::size_t requests = gui.fake.http.requests().size();
    for (const QString& label : {QString("$0.75"), QString("Today: $11.75"), QString("Details")}) {
        click(idOf(label));
    }
    exporter.Event(idOf("\xF0\x9F\x94\x84 Refresh Now"), "hovered", QDBusVariant(0), 0);
    exporter.Event(idOf("\xE2\x8C\x98 Quit"), "opened", QDBusVariant(0), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(gui.fake.http.requests().size(), requests);
    EXPECT_EQ(gui.fake.desktop.log(), std::vector<std::string>{"accessory policy"});
}

TEST_F(DBusMenuTest, LayoutsAreCutToTheAskedDepthAndProperties) {
    const int settings = idOf("Settings");
    DBusMenuLayoutItem node;
    exporter.GetLayout(settings, 1, {"label", "toggle-state"}, node);
    EXPECT_EQ(node.id, settings);
    EXPECT_EQ(node.properties, (QVariantMap{{"label", "Settings"}}));
    ASSERT_EQ(node.children.size(), 9);
    EXPECT_EQ(node.children[1].properties, (QVariantMap{{"label", "Refresh Interval: 1 min"}}));
    EXPECT_TRUE(node.children[1].children.isEmpty()) << "one level only";

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

} // namespace
} // namespace quorvane
