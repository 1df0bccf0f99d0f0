#import "QVAppDelegate.h"

#import <AppKit/AppKit.h>

int main() {
    @autoreleasepool {
        NSApplication* application = [NSApplication sharedApplication];
        // The application holds its delegate weakly; this reference is the one
        // that keeps the delegate, and with it all of the program's state, alive.
        NS_VALID_UNTIL_END_OF_SCOPE QVAppDelegate* delegate = [[QVAppDelegate alloc] init];
        application.delegate = delegate;
        [application run];
    }
    return 0;
}
