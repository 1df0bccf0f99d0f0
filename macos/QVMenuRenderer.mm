#import "QVMenuRenderer.h"

#import "NSString+QVStdString.h"
#import "QVCardView.h"
#include "menu/MenuCommand.h"

#include <string_view>

@implementation QVMenuRenderer {
    __weak id m_target;
}

- (instancetype)initWithTarget:(id)target {
    self = [super init];
    if (self != nil) {
        m_target = target;
    }
    return self;
}

- (void)fillMenu:(NSMenu*)menu withItems:(const std::vector<quorvane::MenuItem>&)items {
    for (const quorvane::MenuItem& item : items) {
        [menu addItem:[self menuItemFor:item]];
    }
}

- (NSMenuItem*)menuItemFor:(const quorvane::MenuItem&)item {
    using Kind = quorvane::MenuItem::Kind;
    if (item.kind == Kind::Separator) {
        return [NSMenuItem separatorItem];
    }

    NSString* title = [NSString qv_stringWithStdString:item.title];
    // A key equivalent without a modifier mask carries AppKit's default, Command.
    NSString* keyEquivalent = [NSString qv_stringWithStdString:item.keyEquivalent];
    const std::string_view selector = quorvane::commandSelector(item.command);
    SEL action = selector.empty() ? nullptr : NSSelectorFromString([NSString qv_stringWithUTF8:selector]);

    NSMenuItem* menuItem = [[NSMenuItem alloc] initWithTitle:title action:action keyEquivalent:keyEquivalent];
    if (action != nullptr) {
        menuItem.target = m_target;
    }
    menuItem.enabled = item.enabled;
    menuItem.tag = static_cast<NSInteger>(item.tag);
    menuItem.state = item.checked ? NSControlStateValueOn : NSControlStateValueOff;

    if (item.kind == Kind::Submenu) {
        NSMenu* submenu = [[NSMenu alloc] initWithTitle:title];
        [self fillMenu:submenu withItems:item.submenu];
        menuItem.submenu = submenu;
    }
    if (item.card) {
        menuItem.view = [[QVCardView alloc] initWithCard:*item.card];
    }
    return menuItem;
}

@end
