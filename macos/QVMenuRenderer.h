// Renders the core's menu tree as AppKit menu items, all of them new at every rebuild.
#pragma once

#include "menu/MenuItem.h"

#import <AppKit/AppKit.h>
#include <vector>

NS_ASSUME_NONNULL_BEGIN

// Command and choice items send the selector the core names for their command
// to the target, held weakly; the menu's automatic enabling stays on, so an
// item is enabled exactly when the target answers its action.
@interface QVMenuRenderer : NSObject

- (instancetype)initWithTarget:(id)target NS_DESIGNATED_INITIALIZER;

- (instancetype)init NS_UNAVAILABLE;

// Appends one menu item per entry of the tree, submenus built afresh.
- (void)fillMenu:(NSMenu*)menu withItems:(const std::vector<quorvane::MenuItem>&)items;

@end

NS_ASSUME_NONNULL_END
