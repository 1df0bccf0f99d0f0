#include "MacRepeatingTimer.h"

#import <Foundation/Foundation.h>
#include <cmath>
#include <memory>
#include <utility>

namespace quorvane {

struct MacRepeatingTimer::Impl {
    NSTimer* timer;
    // Shared with every fire queued on the main queue, which checks it when it runs.
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

MacRepeatingTimer::MacRepeatingTimer(double periodSeconds, std::function<void()> onFire)
    : m_periodSeconds(periodSeconds)
    , m_impl(std::make_unique<Impl>()) {
    if (!(std::isfinite(periodSeconds) && periodSeconds > 0.0)) {
        return;
    }
    std::function<void()> fire = std::move(onFire);
    std::shared_ptr<bool> alive = m_impl->alive;
    // Each fire is a task of its own on the main queue, not work inside the
    // timer's callout; one still queued when the timer is invalidated does nothing.
    NSTimer* timer = [NSTimer timerWithTimeInterval:periodSeconds
                                            repeats:YES
                                              block:^(NSTimer* firing) {
                                                  (void)firing;
                                                  dispatch_async(dispatch_get_main_queue(), ^{
                                                      if (*alive) {
                                                          fire();
                                                      }
                                                  });
                                              }];
    // Added in the default mode only: while the user holds a menu open, fires wait until it closes.
    [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
    m_impl->timer = timer;
}

MacRepeatingTimer::~MacRepeatingTimer() {
    invalidate();
}

void MacRepeatingTimer::invalidate() {
    *m_impl->alive = false;
    // The run loop, which holds the timer, lets go of it (and of its block) once it is invalidated.
    [m_impl->timer invalidate];
    m_impl->timer = nil;
}

} // namespace quorvane
