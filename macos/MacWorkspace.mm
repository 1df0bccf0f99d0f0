#include "MacWorkspace.h"

#import "NSString+QVStdString.h"

#import <AppKit/AppKit.h>

namespace quorvane {

void MacWorkspace::openUrl(const std::string& url) {
    NSURL* address = [NSURL URLWithString:[NSString qv_stringWithStdString:url]];
    if (address != nil) {
        [[NSWorkspace sharedWorkspace] openURL:address];
    }
}

} // namespace quorvane
