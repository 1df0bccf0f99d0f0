// The dashboard's balance chart as an AppKit view around the core's chart value.
#pragma once

#include "chart/UsageChartView.h"

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// Forwards its size, the pointer (in its own flipped coordinates) and paint
// requests to a copy of the core's chart; everything it shows, the tooltip
// included, is the chart's.
@interface QVChartView : NSView

- (instancetype)initWithChart:(const quorvane::UsageChartView&)chart NS_DESIGNATED_INITIALIZER;

- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithFrame:(NSRect)frameRect NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
