// The alert on Qt: each request runs in a key dialog of its own, made and dropped in the call.
#pragma once

#include "platform/Alert.h"

namespace quorvane {

// Needs a QApplication. The dialog is modal to the whole application and
// gone when runModal returns, with the typed text cleared from its field.
class QtAlert : public Alert {
public:
    AlertResponse runModal(const AlertRequest& request) override;
};

} // namespace quorvane
