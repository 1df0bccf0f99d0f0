// The menu's three faces over the sample menu: the QMenu, the dashboard panel, the host's dbusmenu.
#include "SampleMenu.h"
#include "gui/MenuPanel.h"
#include "gui/MenuPanelRow.h"
#include "gui/MenuRenderer.h"
#include "linux/EventLoopWait.h"
#include "tray/DBusMenuExporter.h"

#include <QApplication>
#include <QDBusMessage>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <map>

namespace quorvane {
namespace {

TEST(MenuRendererTest, EachKindOfItemBecomesItsActionAndARebuildLeavesNothingBehind) {
    Commands commands;
    const MenuRenderer renderer(recorder(commands));
    QMenu menu;
    renderer.render(sampleMenu(), menu);
    const std::string expected = "[card 330x60]\n"
                                 "---\n"
                                 "(off) Today: $0.75\n"
                                 "\xF0\x9F\x94\x84 Refresh Now  [Ctrl+R]\n"
                                 "Settings >\n"
                                 "  Set API Key...  [Ctrl+,]\n"
                                 "  Refresh Interval: 1 min >\n"
                                 "    [x] 1 min\n"
                                 "    [ ] 5 min\n"
                                 "  ---\n"
                                 "  Fish_&&_Chips  [Ctrl+.]\n";
    EXPECT_EQ(text(menu), expected);
    const auto widgets = QApplication::allWidgets().size();
    renderer.render(sampleMenu(), menu);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(QApplication::allWidgets().size(), widgets) << "the old cards and submenus are gone";
    EXPECT_EQ(text(menu), expected);

    menu.actions()[4]->menu()->actions()[1]->menu()->actions()[1]->trigger();
    EXPECT_TRUE(commands.empty()) << "not before the menu is done with the click";
    QCoreApplication::processEvents();
    EXPECT_EQ(commands, (Commands{{MenuCommand::RefreshInterval, 300}}));
}

class MenuPanelTest : public ::testing::Test {
protected:
    Commands commands;
    MenuPanel panel{MenuPanel::Role::Popover, recorder(commands)};

    MenuPanelTest() { panel.setMenu(sampleMenu()); }

    MenuPanelRow& row(int index) { return *panel.rows().at(index); }
};

TEST_F(MenuPanelTest, ARowForEachItemButTheCardWhereACommandClosesThePopoverThenRuns) {
    panel.setMenu(sampleMenu());
    EXPECT_EQ(panel.findChildren<CardWidget*>().size(), 1);
    std::string rows;
    for (const MenuPanelRow* candidate : panel.rows()) {
        rows += candidate->item().kind == MenuItem::Kind::Separator ? "---" : candidate->item().title;
        rows += candidate->focusPolicy() == Qt::StrongFocus ? " (focus)" : "";
        rows += candidate->shortcutText().isEmpty() ? "\n"
                                                    : "  [" + candidate->shortcutText().toStdString() + "]\n";
    }
    EXPECT_EQ(rows, "---\nToday: $0.75\n\xF0\x9F\x94\x84 Refresh Now (focus)  [Ctrl+R]\nSettings (focus)\n");

    panel.show();
    QTest::mouseClick(&row(1), Qt::LeftButton);
    EXPECT_TRUE(panel.isVisible()) << "a line to read does nothing";
    QTest::mouseClick(&row(2), Qt::LeftButton);
    EXPECT_FALSE(panel.isVisible());
    EXPECT_TRUE(commands.empty()) << "after the click has been handled";
    QCoreApplication::processEvents();
    EXPECT_EQ(commands, (Commands{{MenuCommand::Refresh, 0}}));
    panel.show();
    QTest::keyClick(&panel, Qt::Key_R, Qt::ControlModifier);
    QCoreApplication::processEvents();
    EXPECT_FALSE(panel.isVisible());
    EXPECT_EQ(commands.size(), 2u);
}

TEST_F(MenuPanelTest, ASubmenuOpensAsAMenuBesideItsRowAndTheFocusElsewhereClosesThePopover) {
    panel.show();
    QTest::mouseClick(&row(3), Qt::LeftButton);
    ASSERT_NE(panel.openSubmenu(), nullptr);
    EXPECT_EQ(panel.openSubmenu()->pos(), row(3).mapToGlobal(QPoint(row(3).width(), 0)));
    panel.openSubmenu()->actions().at(1)->menu()->actions().at(1)->trigger();
    drainPostedEvents();
    EXPECT_EQ(commands, (Commands{{MenuCommand::RefreshInterval, 300}}));
    EXPECT_FALSE(panel.isVisible());

    panel.show();
    panel.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return panel.isActiveWindow(); }));
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return !panel.isVisible(); }));
}

TEST(MenuPanelWindowTest, TheWindowShowsTheTitleAndAHintAndOnlyClosingItQuits) {
    MenuPanel window(MenuPanel::Role::Window, {});
    EXPECT_EQ(window.windowTitle(), "Quorvane");
    window.setTitle(QString::fromUtf8("\xF0\x9F\x90\x8B $12.50"));
    QStringList texts;
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    EXPECT_EQ(texts, (QStringList{QString::fromUtf8("\xF0\x9F\x90\x8B $12.50"),
                                  MenuPanel::hintFor(qEnvironmentVariable("XDG_CURRENT_DESKTOP"))}));
    QSignalSpy closed(&window, &MenuPanel::closed);
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_EQ(closed.size(), 1);

    EXPECT_EQ(MenuPanel::hintFor("ubuntu:GNOME"),
              "For the balance in the top bar, install "
              "gnome-shell-extension-appindicator and turn it on in Extensions.");
}

// The exporter over the sample menu, with what it asks of the app written down.
class DBusMenuTest : public ::testing::Test {
protected:
    Commands commands;
    DBusMenuExporter exporter{recorder(commands), {}};

    DBusMenuTest() { exporter.setMenu(sampleMenu()); }

    // One line an item, its id first and its children indented by two blanks:
    // "---" a separator, "(off) " before an item that is not enabled,
    // "(o) "/"( ) " a radio item, "  <Control+r>" its shortcut, " >" a submenu.
    static std::string text(const DBusMenuLayoutItem& node, const std::string& indent = "") {
        std::string out;
        for (const DBusMenuLayoutItem& child : node.children) {
            const QVariantMap& p = child.properties;
            out += indent + std::to_string(child.id) + (p.value("enabled", true).toBool() ? " " : " (off) ");
            if (p.value("toggle-type") == "radio") {
                out += p.value("toggle-state").toInt() == 1 ? "(o) " : "( ) ";
            }
            out += p.value("type") == "separator" ? "---" : p.value("label").toString().toStdString();
            for (const QStringList& chord : p.value("shortcut").value<DBusMenuShortcut>()) {
                out += "  <" + chord.join('+').toStdString() + ">";
            }
            out += p.value("children-display") == "submenu" ? " >\n" + text(child, indent + "  ") : "\n";
        }
        return out;
    }
    std::string tree() {
        DBusMenuLayoutItem root;
        exporter.GetLayout(DBusMenuModel::kRootId, -1, {}, root);
        return text(root);
    }
    void click(int id) { exporter.Event(id, "clicked", QDBusVariant(QString()), 0); }
};

TEST_F(DBusMenuTest, TheHostsTreeHasTheCardsLinesAndNoSubmenuInASubmenu) {
    // A status card keeps its lines; the submenu in Settings comes out after it.
    EXPECT_EQ(tree(), "1 \xF0\x9F\x90\x8B Quorvane\n"
                      "2 $0.75\n"
                      "3 ---\n"
                      "4 (off) Today: $0.75\n"
                      "5 \xF0\x9F\x94\x84 Refresh Now  <Control+r>\n"
                      "6 Settings >\n"
                      "  7 Set API Key...  <Control+comma>\n"
                      "  8 ---\n"
                      "  9 Fish__&__Chips  <Control+period>\n"
                      "10 Refresh Interval: 1 min >\n"
                      "  11 (o) 1 min\n"
                      "  12 ( ) 5 min\n");
    // A dashboard is one line: its title and balance.
    exporter.setMenu(
        {MenuItem::cardItem(cardOf({"\xF0\x9F\x90\x8B Quorvane", "$0.75", "Ready"}, Card::Kind::Dashboard))});
    EXPECT_EQ(tree(), "1 \xF0\x9F\x90\x8B Quorvane \xC2\xB7 $0.75\n");
}

TEST_F(DBusMenuTest, ARebuildKeepsEachItemsIdAndTellsTheHostOnlyWhatChanged) {
    QSignalSpy layoutUpdated(&exporter, &DBusMenuExporter::LayoutUpdated);
    QSignalSpy propertiesUpdated(&exporter, &DBusMenuExporter::ItemsPropertiesUpdated);
    const uint revision = exporter.revision();
    std::vector<MenuItem> later = sampleMenu("$0.50", true);
    later[3].keyEquivalent.clear();
    exporter.setMenu(later);
    exporter.setMenu(later);
    EXPECT_EQ(layoutUpdated.size(), 0);
    ASSERT_EQ(propertiesUpdated.size(), 1) << "once: the second time nothing changed";
    std::map<int, QVariantMap> changed;
    for (const DBusMenuItemProperties& item : propertiesUpdated[0][0].value<DBusMenuItemPropertiesList>()) {
        changed[item.id] = item.properties;
    }
    EXPECT_EQ(changed, (std::map<int, QVariantMap>{{2, {{"label", "$0.50"}}},
                                                   {4, {{"label", "Today: $0.50"}}},
                                                   {10, {{"label", "Refresh Interval: 5 min"}}},
                                                   {11, {{"toggle-state", 0}}},
                                                   {12, {{"toggle-state", 1}}}}));
    const auto removed = propertiesUpdated[0][1].value<DBusMenuItemKeysList>();
    ASSERT_EQ(removed.size(), 1);
    EXPECT_EQ(std::make_pair(removed[0].id, removed[0].names), std::make_pair(5, QStringList{"shortcut"}));

    // Another tree: the card a line short, and Quit. Kept items keep their ids.
    later[0].card = std::make_shared<Card>(cardOf({"Quorvane"}));
    later.push_back(MenuItem::commandItem("Quit", MenuCommand::Quit, "q"));
    exporter.setMenu(later);
    ASSERT_EQ(layoutUpdated.size(), 1);
    EXPECT_EQ(layoutUpdated[0], (QList<QVariant>{revision + 1, 0}));
    EXPECT_EQ(exporter.GetProperty(5, "label").variant(), QString::fromUtf8("\xF0\x9F\x94\x84 Refresh Now"));
    EXPECT_EQ(exporter.GetProperty(13, "label").variant(), "Quit");
}

TEST_F(DBusMenuTest, ClicksRunTheirCommandOnceAnsweredAndOtherEventsAndLinesToReadDoNothing) {
    click(4);
    click(6);
    EXPECT_EQ(exporter.EventGroup({DBusMenuEvent{5, "hovered", QDBusVariant(0), 0},
                                   DBusMenuEvent{987654, "clicked", QDBusVariant(0), 0}}),
              QList<int>{987654});
    // The host may click in the tree it shows before it has fetched the new one.
    exporter.setMenu({sampleMenu()[3]});
    click(12);
    EXPECT_TRUE(commands.empty()) << "not while the host waits for the answer";
    QCoreApplication::processEvents();
    EXPECT_EQ(commands, (Commands{{MenuCommand::RefreshInterval, 300}}));
}

TEST_F(DBusMenuTest, LayoutsAndPropertiesAreCutToWhatTheHostAsksFor) {
    DBusMenuLayoutItem node;
    exporter.GetLayout(10, 1, {"toggle-state"}, node);
    EXPECT_EQ(node.children.value(0).properties, (QVariantMap{{"toggle-state", 1}}));
    EXPECT_EQ(exporter.GetLayout(987654, -1, {}, node), exporter.revision());
    EXPECT_EQ(node.id, 987654) << "an item gone is an empty node";
    const DBusMenuItemPropertiesList group = exporter.GetGroupProperties({7, 987654}, {"label"});
    ASSERT_EQ(group.size(), 1);
    EXPECT_EQ(std::make_pair(group[0].id, group[0].properties),
              std::make_pair(7, QVariantMap{{"label", "Set API Key..."}}));
}

} // namespace
} // namespace quorvane
