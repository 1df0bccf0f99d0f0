// The modal alert with a secure text field, on NSAlert: the API key dialog.
#pragma once

#include "platform/Alert.h"

namespace quorvane {

// Buttons are added in the order given, so the first answers Return and
// returns NSAlertFirstButtonReturn. The field masks what is typed; its text
// exists only inside this call and the answer it returns.
class MacAlert : public Alert {
public:
    AlertResponse runModal(const AlertRequest& request) override;
};

} // namespace quorvane
