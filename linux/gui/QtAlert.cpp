#include "gui/QtAlert.h"

#include "gui/QtKeyDialog.h"

namespace quorvane {

AlertResponse QtAlert::runModal(const AlertRequest& request) {
    QtKeyDialog dialog(request);
    // The program has no window of its own to be in front of; the dialog
    // should come up in front of whatever the user was doing.
    dialog.setWindowFlag(Qt::WindowStaysOnTopHint, true);
    dialog.exec();
    AlertResponse response;
    response.button = dialog.buttonAnswer();
    response.fieldText = dialog.takeFieldText();
    return response;
}

} // namespace quorvane
