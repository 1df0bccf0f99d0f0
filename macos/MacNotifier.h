// Notifications through the user notification center (UserNotifications), asking leave on first need.
#pragma once

#include "platform/Notifier.h"

#include <functional>
#include <memory>

namespace quorvane {

// Made before the application finishes launching, as the center asks of its
// delegate, so that a click on a notice that launched the app is not lost.
// Leave is asked for only when the first notice is due; once refused, the
// center's answer is the same each time and nothing is shown.
class MacNotifier : public Notifier {
public:
    // `onOpen` runs on the main thread when the user clicks a notice.
    explicit MacNotifier(std::function<void()> onOpen);
    ~MacNotifier() override;

    MacNotifier(const MacNotifier&) = delete;
    MacNotifier& operator=(const MacNotifier&) = delete;

    void notify(const Notification& notification) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace quorvane
