// Every macOS service the program uses, made together and kept for the life of the process.
#pragma once

#include "KeychainSecretStore.h"
#include "MacAlert.h"
#include "MacApplication.h"
#include "MacClock.h"
#include "MacFormatter.h"
#include "MacHttpClient.h"
#include "MacPasteboard.h"
#include "MacSettingsStore.h"
#include "MacStatusItem.h"
#include "MacTextSegmenter.h"
#include "MacTimerScheduler.h"
#include "MacWorkspace.h"
#include "app/Platform.h"

#if QUORVANE_HAS_USER_NOTIFICATIONS
#include "MacNotifier.h"
#endif

#include <objc/objc.h>

namespace quorvane {

// Made at the application delegate's construction, before launch completes,
// so the status item is in the menu bar from the start. The formatter comes
// first: the charts of the status item's menus format their tooltips with it.
class MacPlatform {
public:
    // Menu commands are sent to `menuTarget`, held weakly.
    explicit MacPlatform(id menuTarget)
        : m_statusItem(menuTarget) {}

    MacPlatform(const MacPlatform&) = delete;
    MacPlatform& operator=(const MacPlatform&) = delete;

    // References into this object, valid while it lives.
    Platform platform() {
        return Platform{m_statusItem, m_settings,      m_secrets, m_http,  m_clock,
                        m_formatter,  m_textSegmenter, m_timers,  m_alert, m_pasteboard,
                        m_workspace,  m_application,   notifier()};
    }

private:
    MacFormatter m_formatter;
    MacClock m_clock;
    MacTextSegmenter m_textSegmenter;
    MacStatusItem m_statusItem;
    MacSettingsStore m_settings;
    KeychainSecretStore m_secrets;
    MacHttpClient m_http;
    MacTimerScheduler m_timers;
    MacAlert m_alert;
    MacPasteboard m_pasteboard;
    MacWorkspace m_workspace;
    MacApplication m_application;
#if QUORVANE_HAS_USER_NOTIFICATIONS
    // A click on the low-balance notice opens the status item's menu.
    MacNotifier m_notifier{[this] {
        m_statusItem.openMenu();
    }};
    Notifier* notifier() {
        return &m_notifier;
    }
#else
    // Built where the SDK has no UserNotifications: no notices, and no
    // record of a fall told, as on the command line.
    static Notifier* notifier() {
        return nullptr;
    }
#endif
};

} // namespace quorvane
