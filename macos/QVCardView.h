// A card of the status item's menu as an AppKit view: labels and, on the dashboard, the chart.
#pragma once

#include "menu/Card.h"

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// An unflipped view of the card's size whose subviews sit at the card's
// frames, which already have AppKit's origin at the bottom left. It keeps no
// state: the menu replaces the whole card at every rebuild.
@interface QVCardView : NSView

- (instancetype)initWithCard:(const quorvane::Card&)card NS_DESIGNATED_INITIALIZER;

- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithFrame:(NSRect)frameRect NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
