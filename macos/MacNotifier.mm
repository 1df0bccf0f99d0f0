#include "MacNotifier.h"

#import "NSString+QVStdString.h"

#import <Foundation/Foundation.h>
#import <UserNotifications/UserNotifications.h>
#include <utility>

// One identifier for every low-balance notice: a new one replaces the one
// still in Notification Centre instead of piling up beside it.
static NSString* const QVLowBalanceRequestIdentifier = @"app.quorvane.Quorvane.low-balance";

// The center's delegate: hands a click on a notice back to the program, and
// shows a notice even while the app is the active one (it is while its menu
// is open), which the center would otherwise keep to itself.
@interface QVNotificationCenterDelegate : NSObject <UNUserNotificationCenterDelegate>
- (instancetype)initWithOpenHandler:(std::function<void()>)onOpen NS_DESIGNATED_INITIALIZER;
- (instancetype)init NS_UNAVAILABLE;
@end

@implementation QVNotificationCenterDelegate {
    std::function<void()> m_onOpen;
}

- (instancetype)initWithOpenHandler:(std::function<void()>)onOpen {
    self = [super init];
    if (self != nil) {
        m_onOpen = std::move(onOpen);
    }
    return self;
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler {
    (void)center;
    (void)notification;
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList);
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
    (void)center;
    if ([response.actionIdentifier isEqualToString:UNNotificationDefaultActionIdentifier]) {
        // The menu is AppKit's: it opens from the main thread only.
        std::function<void()> onOpen = m_onOpen;
        dispatch_async(dispatch_get_main_queue(), ^{
            if (onOpen) {
                onOpen();
            }
        });
    }
    completionHandler();
}

@end

namespace quorvane {

struct MacNotifier::Impl {
    // The center holds its delegate weakly.
    QVNotificationCenterDelegate* delegate;
};

MacNotifier::MacNotifier(std::function<void()> onOpen)
    : m_impl(std::make_unique<Impl>()) {
    m_impl->delegate = [[QVNotificationCenterDelegate alloc] initWithOpenHandler:std::move(onOpen)];
    [UNUserNotificationCenter currentNotificationCenter].delegate = m_impl->delegate;
}

MacNotifier::~MacNotifier() {
    [UNUserNotificationCenter currentNotificationCenter].delegate = nil;
}

void MacNotifier::notify(const Notification& notification) {
    UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
    content.title = [NSString qv_stringWithStdString:notification.summary];
    content.body = [NSString qv_stringWithStdString:notification.body];
    // No trigger: delivered at once.
    UNNotificationRequest* request =
        [UNNotificationRequest requestWithIdentifier:QVLowBalanceRequestIdentifier
                                             content:content
                                             trigger:nil];
    UNUserNotificationCenter* center = [UNUserNotificationCenter currentNotificationCenter];
    // Asks the user the first time only; later calls answer with the choice made.
    [center requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                          completionHandler:^(BOOL granted, NSError* error) {
                              (void)error;
                              if (granted) {
                                  [center addNotificationRequest:request withCompletionHandler:nil];
                              }
                          }];
}

} // namespace quorvane
