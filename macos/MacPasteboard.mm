#include "MacPasteboard.h"

#import "NSString+QVStdString.h"

#import <AppKit/AppKit.h>

namespace quorvane {

void MacPasteboard::clearContents() {
    [[NSPasteboard generalPasteboard] clearContents];
}

void MacPasteboard::writeString(const std::string& text) {
    [[NSPasteboard generalPasteboard] setString:[NSString qv_stringWithStdString:text]
                                        forType:NSPasteboardTypeString];
}

} // namespace quorvane
