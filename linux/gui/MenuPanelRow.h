// One row of the menu panel: a line to read, a command, a choice, a submenu or a separator, drawn as a menu
// item.
#pragma once

#include "menu/MenuItem.h"

#include <QString>
#include <QWidget>

namespace quorvane {

// The style draws the row as it draws an item of a QMenu (background,
// highlight, check mark, submenu arrow), so the panel reads as the menu it
// is; the text goes through EmojiTextLayout so the marks keep their colour.
// Lines to read take no focus and never highlight.
class MenuPanelRow : public QWidget {
    Q_OBJECT

public:
    MenuPanelRow(const MenuItem& item, QWidget* parent = nullptr);

    const MenuItem& item() const { return m_item; }
    // Commands, choices and submenus that are enabled.
    bool isActionable() const;
    // "Ctrl+R" for "r"; empty without a key equivalent.
    QString shortcutText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    // A click, Return, Enter or Space on an actionable row.
    void triggered();

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool isHighlighted() const;

    MenuItem m_item;
    bool m_hovered = false;
};

} // namespace quorvane
