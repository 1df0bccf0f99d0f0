// The dashboard's balance chart as an AppKit view around the core's chart value.
#pragma once

#include "chart/UsageChartView.h"
#include "platform/Clock.h"
#include "platform/Formatter.h"

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

// Forwards its size, the pointer (in its own flipped coordinates) and paint
// requests to a copy of the core's chart; everything it shows, the tooltip
// included, is the chart's. The formatter and clock must outlive the view.
@interface QVChartView : NSView

- (instancetype)initWithChart:(const quorvane::UsageChartView&)chart
                    formatter:(const quorvane::Formatter&)formatter
                        clock:(const quorvane::Clock&)clock NS_DESIGNATED_INITIALIZER;

- (instancetype)init NS_UNAVAILABLE;
- (instancetype)initWithFrame:(NSRect)frameRect NS_UNAVAILABLE;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

@end

NS_ASSUME_NONNULL_END
