#include "MacApplication.h"

#import <AppKit/AppKit.h>

namespace quorvane {

void MacApplication::setAccessoryPolicy() {
    [[NSApplication sharedApplication] setActivationPolicy:NSApplicationActivationPolicyAccessory];
}

void MacApplication::activateIgnoringOtherApps() {
    [[NSApplication sharedApplication] activateIgnoringOtherApps:YES];
}

void MacApplication::terminate() {
    [[NSApplication sharedApplication] terminate:nil];
}

} // namespace quorvane
