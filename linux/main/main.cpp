// quorvane: the desktop app without arguments, one command with them.
#include "cli/AutostartEntry.h"
#include "cli/ClipboardHolder.h"
#include "cli/CommandLine.h"
#include "cli/CommandRunner.h"
#include "icu/IcuFormatter.h"
#include "main/DesktopApp.h"
#include "main/StateBackend.h"
#include "services/SystemClock.h"

#include <QApplication>
#include <QCoreApplication>
#include <QGuiApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace quorvane;

// Qt ends the process on a fatal message (a display it cannot open, for one)
// with an abort and a core dump; a user should get one line and a status.
[[noreturn]] void reportFatal(const QString& message) {
    const QString firstLine = message.section(QLatin1Char('\n'), 0, 0);
    std::fprintf(stderr, "quorvane: %s\n", firstLine.toLocal8Bit().constData());
    std::fflush(stderr);
    std::_Exit(CommandRunner::kNotDone);
}

// The desktop app passes Qt's warnings on, as any desktop program does.
void reportAppMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtFatalMsg) {
        reportFatal(message);
    }
    if (type != QtDebugMsg) {
        std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, message).toLocal8Bit().constData());
    }
}

// A command's standard error is for its own messages, which scripts read:
// what Qt says in passing (a platform plugin that cannot raise an offscreen
// tooltip, a runtime folder it had to pick) stays out of it. A failure that
// matters reaches the command as a refresh error or a result it reports.
void reportCommandMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtFatalMsg) {
        reportFatal(message);
    }
    if (type == QtCriticalMsg) {
        std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, message).toLocal8Bit().constData());
    }
}

bool hasDisplay() {
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// Only what the command needs: most commands need no display at all, the
// card draws widgets (offscreen unless asked otherwise) and the clipboard's
// holder needs the desktop's clipboard.
std::unique_ptr<QCoreApplication> makeApplication(CommandName command, int& argc, char** argv) {
    switch (command) {
    case CommandName::DesktopApp: {
        auto app = std::make_unique<QApplication>(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        // Wayland compositors and panels know the app's windows by this name.
        QGuiApplication::setDesktopFileName(QStringLiteral("app.quorvane.Quorvane"));
        return app;
    }
    case CommandName::Card:
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        return std::make_unique<QApplication>(argc, argv);
    case CommandName::HoldClipboard:
        return std::make_unique<QGuiApplication>(argc, argv);
    default:
        return std::make_unique<QCoreApplication>(argc, argv);
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const ParsedCommandLine parsed = CommandLine::parse(arguments);
    if (parsed.outcome == ParsedCommandLine::Outcome::Help) {
        std::cout << parsed.text;
        return CommandRunner::kDone;
    }
    if (parsed.outcome == ParsedCommandLine::Outcome::UsageError) {
        std::cerr << parsed.text << '\n';
        return CommandRunner::kUsage;
    }
    const Invocation& invocation = parsed.invocation;
    if (invocation.command == CommandName::DesktopApp && !hasDisplay()) {
        std::cerr << "quorvane: no display (neither DISPLAY nor WAYLAND_DISPLAY is set) for the desktop app; "
                     "'quorvane status' and the other commands work without one\n";
        return CommandRunner::kNotDone;
    }

    qInstallMessageHandler(invocation.command == CommandName::DesktopApp ? reportAppMessage
                                                                         : reportCommandMessage);
    std::unique_ptr<QCoreApplication> application = makeApplication(invocation.command, argc, argv);
    // Qt has set every category of the C locale to the user's; number
    // conversions anywhere in the process must keep reading and writing a period.
    std::setlocale(LC_NUMERIC, "C");

    if (invocation.command == CommandName::HoldClipboard) {
        return ClipboardHolder::run(STDIN_FILENO, STDOUT_FILENO);
    }
    // Touches neither the settings nor the key: no store is opened for it.
    if (invocation.command == CommandName::Autostart) {
        const auto action = invocation.autostart == "on"    ? AutostartEntry::Action::On
                            : invocation.autostart == "off" ? AutostartEntry::Action::Off
                                                            : AutostartEntry::Action::Status;
        return AutostartEntry::run(action, QCoreApplication::applicationFilePath().toStdString(), std::cout,
                                   std::cerr);
    }

    const SystemClock clock;
    const IcuFormatter formatter(IcuFormatter::defaultLocaleId());
    std::string error;
    std::unique_ptr<StateBackend> backend = invocation.demo ? StateBackend::forDemo(clock, formatter, error)
                                                            : StateBackend::forUser(std::cerr, error);
    if (!backend) {
        std::cerr << "quorvane: " << error << '\n';
        return CommandRunner::kNotDone;
    }
    const SessionStores stores = backend->stores();
    if (invocation.command == CommandName::DesktopApp) {
        DesktopApp app(stores, clock, formatter);
        return app.run();
    }
    CommandRunner runner(std::cout, std::cerr, QCoreApplication::applicationFilePath().toStdString());
    const int status = runner.run(invocation, stores, clock, formatter);
    std::cout.flush();
    return status;
}
