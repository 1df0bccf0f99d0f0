#include "MacAlert.h"

#import "NSString+QVStdString.h"

#import <AppKit/AppKit.h>

namespace quorvane {

AlertResponse MacAlert::runModal(const AlertRequest& request) {
    NSAlert* alert = [[NSAlert alloc] init];
    alert.messageText = [NSString qv_stringWithStdString:request.messageText];
    alert.informativeText = [NSString qv_stringWithStdString:request.informativeText];
    for (const std::string& title : request.buttons) {
        [alert addButtonWithTitle:[NSString qv_stringWithStdString:title]];
    }

    NSSecureTextField* field = [[NSSecureTextField alloc]
        initWithFrame:NSMakeRect(0, 0, request.fieldSize.width, request.fieldSize.height)];
    field.placeholderString = [NSString qv_stringWithStdString:request.placeholder];
    field.stringValue = [NSString qv_stringWithStdString:request.initialText];
    alert.accessoryView = field;

    AlertResponse response;
    response.button = static_cast<int>([alert runModal]);
    response.fieldText = [field.stringValue qv_stdString];
    return response;
}

} // namespace quorvane
