// The project's fakes with the Qt status item standing in for the recording one.
#pragma once

#include "app/AppDelegate.h"
#include "app/Platform.h"
#include "fakes/BalanceBody.h"
#include "fakes/FakePlatform.h"
#include "gui/QtStatusItem.h"
#include "services/QtTimerHold.h"

#include <QDBusConnection>
#include <QString>

namespace quorvane {

struct GuiFakePlatform {
    // Without a bus no panel can host the item: the strip, as on a bare X11 screen.
    explicit GuiFakePlatform(QDBusConnection bus = QDBusConnection(QStringLiteral("none")),
                             bool wayland = false)
        : statusItem(std::move(bus), wayland, &timerHold) {}

    FakePlatform fake;
    // Held by the item while its menu or dashboard is open.
    QtTimerHold timerHold;
    QtStatusItem statusItem;

    Platform platform() { return platformWith(fake.desktop); }
    Platform platformWith(Alert& alert) {
        return Platform{statusItem, fake.settings,  fake.secrets,       fake.http,
                        fake.clock, fake.formatter, fake.textSegmenter, fake.timers,
                        alert,      fake.desktop,   fake.desktop,       fake.desktop};
    }

    // Commands from every face of the item reach `delegate`.
    void route(AppDelegate& delegate) {
        statusItem.setCommandHandler(
            [&delegate](MenuCommand command, std::int64_t tag) { delegate.perform(command, tag); });
    }

    // Launch with a key, two refreshes a minute apart with two currencies
    // (USD low at the second), then a rebuild two minutes later.
    void reachTwoCurrencyDashboard(AppDelegate& delegate) {
        fake.storeKey("sk-test");
        delegate.applicationDidFinishLaunching();
        fake.http.respond(200, balanceBody({{"CNY", "70.00"}, {"USD", "12.50"}}));
        fake.clock.advance(60);
        delegate.refreshClicked();
        fake.http.respond(200, balanceBody({{"CNY", "69.5"}, {"USD", "0.75"}}));
        fake.clock.advance(120);
        delegate.refreshIntervalClicked(60); // a rebuild that changes nothing else
    }
};

} // namespace quorvane
