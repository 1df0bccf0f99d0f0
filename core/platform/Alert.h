// A modal alert with a masked text field: the API key dialog.
#pragma once

#include "values/Rect.h"

#include <string>
#include <vector>

namespace quorvane {

// The platform's return value for the first button; the n-th answers 1000 + n − 1.
constexpr int kAlertFirstButtonReturn = 1000;

struct AlertRequest {
    std::string messageText;
    std::string informativeText;
    // In the order added; the first is the default and answers Return.
    std::vector<std::string> buttons;
    Size fieldSize;
    std::string placeholder;
    std::string initialText;
};

struct AlertResponse {
    int button = kAlertFirstButtonReturn + 1;
    std::string fieldText;
};

class Alert {
public:
    virtual ~Alert() = default;

    // Runs modally and returns when a button is pressed or the alert is dismissed.
    virtual AlertResponse runModal(const AlertRequest& request) = 0;
};

} // namespace quorvane
