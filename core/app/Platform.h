// Every platform service the program uses, handed to the delegate at construction.
#pragma once

#include "menu/StatusItem.h"
#include "platform/Alert.h"
#include "platform/Application.h"
#include "platform/Clock.h"
#include "platform/Formatter.h"
#include "platform/HttpClient.h"
#include "platform/Notifier.h"
#include "platform/Pasteboard.h"
#include "platform/RepeatingTimer.h"
#include "platform/SecretStore.h"
#include "platform/SettingsStore.h"
#include "platform/TextSegmenter.h"
#include "platform/Workspace.h"

namespace quorvane {

// References, not ownership: each shell owns its implementations for the
// life of the process, and the tests own their fakes for the life of a test.
struct Platform {
    StatusItem& statusItem;
    SettingsStore& settings;
    SecretStore& secrets;
    HttpClient& http;
    const Clock& clock;
    const Formatter& formatter;
    const TextSegmenter& textSegmenter;
    TimerScheduler& timers;
    Alert& alert;
    Pasteboard& pasteboard;
    Workspace& workspace;
    Application& application;
    // None where nobody would see a notice (the command line): the delegate
    // then leaves the low-balance record to the app that tells the user.
    Notifier* notifier = nullptr;
};

} // namespace quorvane
