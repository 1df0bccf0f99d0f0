#import "QVChartView.h"

#include "MacCanvas.h"
#import "NSString+QVStdString.h"

#include <optional>

@implementation QVChartView {
    // Engaged from the end of the initializer on; empty only while NSView's own initializer runs.
    std::optional<quorvane::UsageChartView> m_chart;
    NSTrackingArea* m_trackingArea;
}

- (instancetype)initWithChart:(const quorvane::UsageChartView&)chart {
    const quorvane::Rect& chartFrame = chart.frame();
    self = [super initWithFrame:NSMakeRect(chartFrame.x, chartFrame.y, chartFrame.width, chartFrame.height)];
    if (self != nil) {
        m_chart.emplace(chart);
        [self forwardBoundsSize];
        if (m_chart->needsDisplay()) {
            self.needsDisplay = YES;
        }
    }
    return self;
}

- (BOOL)isFlipped {
    return YES;
}

- (void)setFrameSize:(NSSize)newSize {
    [super setFrameSize:newSize];
    [self forwardBoundsSize];
}

- (void)setBoundsSize:(NSSize)newSize {
    [super setBoundsSize:newSize];
    [self forwardBoundsSize];
}

- (void)forwardBoundsSize {
    if (m_chart) {
        const NSSize size = self.bounds.size;
        m_chart->setBoundsSize(quorvane::Size{size.width, size.height});
    }
}

- (void)updateTrackingAreas {
    [super updateTrackingAreas];
    if (m_trackingArea != nil) {
        [self removeTrackingArea:m_trackingArea];
    }
    // Active whether or not Quorvane is the frontmost app (a menu-bar app seldom
    // is), and kept to the part of the view that is visible.
    const NSTrackingAreaOptions options = NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved |
                                          NSTrackingActiveAlways | NSTrackingInVisibleRect;
    m_trackingArea = [[NSTrackingArea alloc] initWithRect:self.bounds
                                                  options:options
                                                    owner:self
                                                 userInfo:nil];
    [self addTrackingArea:m_trackingArea];
}

// The chart is the only one that answers the pointer here, so the events go no further up the chain.
- (void)mouseMoved:(NSEvent*)event {
    const NSPoint location = [self convertPoint:event.locationInWindow fromView:nil];
    m_chart->mouseMoved(quorvane::Point{location.x, location.y});
    [self showChartState];
}

- (void)mouseExited:(NSEvent*)event {
    (void)event;
    m_chart->mouseExited();
    [self showChartState];
}

- (void)showChartState {
    const std::optional<std::string>& toolTip = m_chart->toolTip();
    self.toolTip = toolTip ? [NSString qv_stringWithStdString:*toolTip] : nil;
    if (m_chart->needsDisplay()) {
        self.needsDisplay = YES;
    }
}

- (void)drawRect:(NSRect)dirtyRect {
    [super drawRect:dirtyRect];
    quorvane::MacCanvas canvas;
    m_chart->draw(canvas);
    m_chart->clearNeedsDisplay();
}

@end
