#include "gui/QtStatusItem.h"

#include "gui/UiFont.h"

#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QTextBoundaryFinder>

namespace quorvane {

namespace {

// Large enough for the tray to scale down from on any panel size.
constexpr int kIconSize = 64;
constexpr int kIconGlyphPixels = 52;

QIcon markIcon(const QString& mark) {
    QPixmap pixmap(kIconSize, kIconSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    QFont font = UiFont::emojiFont(QGuiApplication::font());
    font.setPixelSize(kIconGlyphPixels);
    painter.setFont(font);
    painter.drawText(pixmap.rect(), Qt::AlignCenter, mark);
    painter.end();
    return QIcon(pixmap);
}

} // namespace

QtStatusItem::QtStatusItem(const Formatter& formatter, const Clock& clock)
    // Looked up when a command arrives, so menus rendered before the handler was set still reach it.
    : m_renderer(formatter, clock, [this](MenuCommand command, std::int64_t tag) {
        if (m_onCommand) {
            m_onCommand(command, tag);
        }
    }) {
    QObject::connect(&m_strip, &StatusStripWidget::clicked, &m_strip, [this] { popUpMenuUnderStrip(); });
    if (QSystemTrayIcon::isSystemTrayAvailable()) {
        m_trayIcon = std::make_unique<QSystemTrayIcon>();
    }
}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::setCommandHandler(MenuRenderer::CommandHandler handler) {
    m_onCommand = std::move(handler);
}

QString QtStatusItem::mark(const QString& title) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, title);
    const qsizetype end = finder.toNextBoundary();
    return end > 0 ? title.left(end) : QString();
}

void QtStatusItem::setTitle(const std::string& title) {
    m_strip.setTitle(QString::fromStdString(title));
    updateTrayIcon();
}

void QtStatusItem::setToolTip(const std::string& toolTip) {
    const QString text = QString::fromStdString(toolTip);
    m_strip.setToolTip(text);
    if (m_trayIcon) {
        m_trayIcon->setToolTip(text);
    }
}

void QtStatusItem::attachMenu() {
    if (m_menuAttached) {
        return;
    }
    m_menuAttached = true;
    m_strip.show();
    if (m_trayIcon) {
        m_trayIcon->setContextMenu(&m_menu);
        QObject::connect(m_trayIcon.get(), &QSystemTrayIcon::activated, &m_menu,
                         [this](QSystemTrayIcon::ActivationReason reason) {
                             if (reason == QSystemTrayIcon::Trigger) {
                                 popUpMenuAtCursor();
                             }
                         });
        updateTrayIcon();
        m_trayIcon->show();
    }
}

void QtStatusItem::menuDidChange(const std::vector<MenuItem>& items) {
    m_renderer.render(items, m_menu);
}

void QtStatusItem::popUpMenuUnderStrip() {
    if (!m_menuAttached) {
        return;
    }
    const QScreen* screen = m_strip.screen();
    const QRect available = screen ? screen->availableGeometry() : m_strip.geometry();
    m_menu.popup(StatusStripWidget::popupPosition(m_strip.frameGeometry(), m_menu.sizeHint(), available));
}

void QtStatusItem::popUpMenuAtCursor() {
    m_menu.popup(QCursor::pos());
}

void QtStatusItem::updateTrayIcon() {
    if (!m_trayIcon) {
        return;
    }
    const QString current = mark(m_strip.title());
    if (!current.isEmpty() && current != m_trayMark) {
        m_trayMark = current;
        m_trayIcon->setIcon(markIcon(current));
    }
}

} // namespace quorvane
