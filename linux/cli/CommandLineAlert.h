// The dialogs of the command line: none is ever shown, so each one is cancelled.
#pragma once

#include "platform/Alert.h"

namespace quorvane {

// The command line asks for the key itself, before the program starts (from
// standard input or a prompt), and hands it to the delegate as a command; no
// other command opens a dialog. Should one ever be asked for, its last button
// (Cancel) is the answer, which changes nothing.
class CommandLineAlert : public Alert {
public:
    AlertResponse runModal(const AlertRequest& request) override;
};

} // namespace quorvane
