#include "MacStatusItem.h"

#import "NSString+QVStdString.h"
#import "QVMenuRenderer.h"

#import <AppKit/AppKit.h>

namespace quorvane {

struct MacStatusItem::Impl {
    NSStatusItem* statusItem;
    NSMenu* menu;
    QVMenuRenderer* renderer;
};

MacStatusItem::MacStatusItem(id menuTarget)
    : m_impl(std::make_unique<Impl>()) {
    m_impl->statusItem = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
    m_impl->menu = [[NSMenu alloc] initWithTitle:@""];
    m_impl->renderer = [[QVMenuRenderer alloc] initWithTarget:menuTarget];
}

MacStatusItem::~MacStatusItem() = default;

bool MacStatusItem::hasButton() const {
    return m_impl->statusItem.button != nil;
}

void MacStatusItem::setTitle(const StatusTitle& title) {
    // The button draws the mark and the text as one line.
    m_impl->statusItem.button.title = [NSString qv_stringWithStdString:title.full()];
}

void MacStatusItem::setToolTip(const std::string& toolTip) {
    m_impl->statusItem.button.toolTip = [NSString qv_stringWithStdString:toolTip];
}

void MacStatusItem::attachMenu() {
    m_impl->statusItem.menu = m_impl->menu;
}

void MacStatusItem::openMenu() {
    [m_impl->statusItem.button performClick:nil];
}

void MacStatusItem::menuDidChange(const std::vector<MenuItem>& items) {
    [m_impl->menu removeAllItems];
    [m_impl->renderer fillMenu:m_impl->menu withItems:items];
}

} // namespace quorvane
