// A notice to the user outside the app's own windows: the desktop's notifications.
#pragma once

#include <string>

namespace quorvane {

struct Notification {
    // The line the desktop shows in bold, beside the app's name and icon.
    std::string summary;
    std::string body;

    bool operator==(const Notification&) const = default;
};

// Fire and forget: a desktop that cannot show it (no notification service, or
// the user refused them) drops it, and the program goes on as before. Clicking
// a shown notification opens the dashboard; each shell wires that itself.
class Notifier {
public:
    virtual ~Notifier() = default;

    virtual void notify(const Notification& notification) = 0;
};

} // namespace quorvane
