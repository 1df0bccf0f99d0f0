// The one place the Linux program's platform services are made and handed to the delegate.
#pragma once

#include "app/Platform.h"
#include "icu/IcuFormatter.h"
#include "icu/IcuTextSegmenter.h"
#include "services/QtHttpClient.h"
#include "services/QtTimerHold.h"
#include "services/QtTimerScheduler.h"
#include "services/SessionStores.h"
#include "services/SystemClock.h"

namespace quorvane {

// What a person sees and answers differs between the desktop app and a
// command: the status item, dialogs, the clipboard, the browser, the
// application object and notifications. Each front owns those and passes them in here.
struct PlatformFaces {
    StatusItem& statusItem;
    Alert& alert;
    Pasteboard& pasteboard;
    Workspace& workspace;
    Application& application;
    // None for a command, which never notifies.
    Notifier* notifier = nullptr;
};

// Everything else is the same for both fronts and made once per process:
// the clock, the user's locale, text segmentation, the network and the
// timers. Needs a QCoreApplication (or more) before it is made, and lives
// as long as every delegate built from it.
class LinuxServices {
public:
    LinuxServices();
    LinuxServices(const LinuxServices&) = delete;
    LinuxServices& operator=(const LinuxServices&) = delete;

    const Clock& clock() const { return m_clock; }
    const Formatter& formatter() const { return m_formatter; }
    // Held while a menu of the app is open, so the timer waits for it.
    QtTimerHold& timerHold() { return m_timerHold; }

    // The delegate's whole platform: these services, the stores and the front's faces.
    Platform platform(const SessionStores& stores, const PlatformFaces& faces);

private:
    const SystemClock m_clock;
    const IcuFormatter m_formatter;
    const IcuTextSegmenter m_segmenter;
    QtHttpClient m_http;
    QtTimerHold m_timerHold;
    QtTimerScheduler m_timers{&m_timerHold};
};

} // namespace quorvane
