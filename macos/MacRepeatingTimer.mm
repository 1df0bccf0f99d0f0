#include "MacRepeatingTimer.h"

#import <Foundation/Foundation.h>
#include <cmath>
#include <utility>

namespace quorvane {

struct MacRepeatingTimer::Impl {
    NSTimer* timer;
};

MacRepeatingTimer::MacRepeatingTimer(double periodSeconds, std::function<void()> onFire)
    : m_periodSeconds(periodSeconds)
    , m_impl(std::make_unique<Impl>()) {
    if (!(std::isfinite(periodSeconds) && periodSeconds > 0.0)) {
        return;
    }
    std::function<void()> fire = std::move(onFire);
    NSTimer* timer = [NSTimer timerWithTimeInterval:periodSeconds
                                            repeats:YES
                                              block:^(NSTimer* firing) {
                                                  (void)firing;
                                                  fire();
                                              }];
    // Added in the default mode only: while the user holds a menu open, fires wait until it closes.
    [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
    m_impl->timer = timer;
}

MacRepeatingTimer::~MacRepeatingTimer() {
    invalidate();
}

void MacRepeatingTimer::invalidate() {
    // The run loop, which holds the timer, lets go of it (and of its block) once it is invalidated.
    [m_impl->timer invalidate];
    m_impl->timer = nil;
}

} // namespace quorvane
