#import "QVAppDelegate.h"

#include "MacPlatform.h"
#include "app/AppDelegate.h"

#include <cstdint>
#include <memory>

@implementation QVAppDelegate {
    std::unique_ptr<quorvane::MacPlatform> m_platform;
    std::unique_ptr<quorvane::AppDelegate> m_delegate;
}

- (instancetype)init {
    self = [super init];
    if (self != nil) {
        m_platform = std::make_unique<quorvane::MacPlatform>(self);
        m_delegate = std::make_unique<quorvane::AppDelegate>(m_platform->platform());
    }
    return self;
}

- (void)dealloc {
    // The core's delegate refers to the services: it goes first.
    m_delegate.reset();
    m_platform.reset();
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    (void)notification;
    m_delegate->applicationDidFinishLaunching();
}

- (void)refreshClicked {
    m_delegate->refreshClicked();
}

- (void)copySummaryClicked {
    m_delegate->copySummaryClicked();
}

- (void)toggleAutoRefreshClicked {
    m_delegate->toggleAutoRefreshClicked();
}

- (void)refreshIntervalClicked:(NSMenuItem*)sender {
    m_delegate->refreshIntervalClicked(static_cast<std::int64_t>(sender.tag));
}

- (void)setAPIKeyClicked {
    m_delegate->setAPIKeyClicked();
}

- (void)removeAPIKeyClicked {
    m_delegate->removeAPIKeyClicked();
}

- (void)resetBaselineClicked {
    m_delegate->resetBaselineClicked();
}

- (void)clearHistoryClicked {
    m_delegate->clearHistoryClicked();
}

- (void)openBillingClicked {
    m_delegate->openBillingClicked();
}

- (void)quitClicked {
    m_delegate->quitClicked();
}

@end
