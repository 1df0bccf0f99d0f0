// Renders the core's menu tree as AppKit menu items, all of them new at every rebuild.
#pragma once

#include "menu/MenuItem.h"
#include "platform/Clock.h"
#include "platform/Formatter.h"

#import <AppKit/AppKit.h>
#include <vector>

NS_ASSUME_NONNULL_BEGIN

// Command and choice items send the selector the core names for their command
// to the target, held weakly; the menu's automatic enabling stays on, so an
// item is enabled exactly when the target answers its action. The formatter
// and clock (which the chart in the dashboard card uses) must outlive the menus.
@interface QVMenuRenderer : NSObject

- (instancetype)initWithTarget:(id)target
                     formatter:(const quorvane::Formatter&)formatter
                         clock:(const quorvane::Clock&)clock NS_DESIGNATED_INITIALIZER;

- (instancetype)init NS_UNAVAILABLE;

// Appends one menu item per entry of the tree, submenus built afresh.
- (void)fillMenu:(NSMenu*)menu withItems:(const std::vector<quorvane::MenuItem>&)items;

@end

NS_ASSUME_NONNULL_END
