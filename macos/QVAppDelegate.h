// The application's delegate: runs the program's launch and receives every menu command.
#pragma once

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// Owns the macOS services and the core's delegate, which keeps all of the
// program's state; each action here hands one command to the core. The
// selectors are the ones the core names for the menu's commands.
@interface QVAppDelegate : NSObject <NSApplicationDelegate>

- (void)refreshClicked;
- (void)copySummaryClicked;
- (void)toggleAutoRefreshClicked;
// Reads the interval, in whole seconds, from the chosen item's tag.
- (void)refreshIntervalClicked:(NSMenuItem*)sender;
- (void)setAPIKeyClicked;
- (void)removeAPIKeyClicked;
- (void)resetBaselineClicked;
- (void)clearHistoryClicked;
- (void)openBillingClicked;
- (void)quitClicked;

@end

NS_ASSUME_NONNULL_END
