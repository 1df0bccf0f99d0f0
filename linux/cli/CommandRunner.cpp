#include "cli/CommandRunner.h"

#include "cli/CardImage.h"
#include "cli/CommandLine.h"
#include "cli/KeyInput.h"
#include "cli/MenuJson.h"
#include "cli/StatusJson.h"
#include "json/JsonWriter.h"
#include "menu/KeyDialog.h"
#include "menu/MenuTextRenderer.h"

#include <QString>

#include <unistd.h>

namespace quorvane {

namespace {

// A path is quoted whole unless it is absurd: the user needs to see which file.
constexpr std::size_t kPathBytes = 4096;

} // namespace

CommandRunner::CommandRunner(std::ostream& out, std::ostream& err, std::string self)
    : m_out(out)
    , m_err(err)
    , m_self(std::move(self)) {}

int CommandRunner::run(const Invocation& invocation, const SessionStores& stores, const Clock& clock,
                       const Formatter& formatter) {
    std::optional<std::string> key;
    if (invocation.command == CommandName::KeySet) {
        key = readKey();
        if (!key) {
            return kNotDone;
        }
    }
    CommandSession session(stores, clock, formatter, m_out);
    if (key) {
        session.delegate().saveAPIKey(*key);
        return finish(session, "key set");
    }
    switch (invocation.command) {
    case CommandName::Status:
        return status(session, invocation.json);
    case CommandName::Summary:
        return summary(session, invocation.copy);
    case CommandName::Menu:
        return menu(session, invocation.json);
    case CommandName::Card:
        return card(session, invocation);
    default:
        return perform(session, invocation);
    }
}

bool CommandRunner::wait(CommandSession& session, const char* command) {
    if (session.waitForRefresh()) {
        return true;
    }
    m_err << "quorvane " << command << ": the balance refresh did not end within "
          << CommandSession::kRefreshWait.count() << " seconds\n";
    return false;
}

bool CommandRunner::launchAndWait(CommandSession& session, const char* command) {
    session.launch();
    return wait(session, command);
}

int CommandRunner::status(CommandSession& session, bool json) {
    const bool ended = launchAndWait(session, "status");
    const AppDelegate& delegate = session.delegate();
    const std::string& title = session.statusItem().title();
    if (json) {
        m_out << JsonWriter::write(StatusJson::document(title, delegate.appMark(), delegate.balanceSummary()))
              << '\n';
    } else {
        m_out << title << '\n';
    }
    return ended ? kDone : kNotDone;
}

int CommandRunner::summary(CommandSession& session, bool copy) {
    const bool ended = launchAndWait(session, "summary");
    m_out << session.delegate().balanceSummary() << '\n' << std::flush;
    if (copy) {
        session.delegate().copySummaryClicked();
        const std::string failure = session.clipboard().deliver(m_self);
        if (!failure.empty()) {
            m_err << "quorvane summary: " << failure << '\n';
            return kNotDone;
        }
    }
    return ended ? kDone : kNotDone;
}

int CommandRunner::menu(CommandSession& session, bool json) {
    const bool ended = launchAndWait(session, "menu");
    const HeadlessStatusItem& item = session.statusItem();
    if (json) {
        m_out << JsonWriter::write(
                     MenuJson::document(item.title(), item.toolTip(), session.delegate().menu()))
              << '\n';
    } else {
        m_out << item.title() << '\n' << MenuTextRenderer::render(session.delegate().menu());
    }
    return ended ? kDone : kNotDone;
}

int CommandRunner::card(CommandSession& session, const Invocation& invocation) {
    const bool ended = launchAndWait(session, "card");
    const std::vector<MenuItem>& items = session.delegate().menu();
    if (items.empty() || !items.front().card) {
        m_err << "quorvane card: the menu has no card to draw\n";
        return kNotDone;
    }
    const CardImage::Drawing drawing = CardImage::draw(
        *items.front().card, session.formatter(), session.clock(), invocation.hoverIndex, invocation.scale);
    if (drawing.outcome == CardImage::Outcome::NoSuchSample) {
        m_err << "quorvane card: --hover " << *invocation.hoverIndex << ": " << drawing.message
              << "; see 'quorvane card --help'\n";
        return kUsage;
    }
    if (!drawing.image.save(QString::fromStdString(invocation.pngPath), "PNG")) {
        m_err << "quorvane card: could not write " << CommandLine::quoted(invocation.pngPath, kPathBytes)
              << '\n';
        return kNotDone;
    }
    m_out << "Wrote " << invocation.pngPath << " (" << drawing.image.width() << "x" << drawing.image.height()
          << " pixels)\n";
    return ended ? kDone : kNotDone;
}

std::optional<std::string> CommandRunner::readKey() {
    const KeyReading reading =
        KeyInput::read(STDIN_FILENO, STDERR_FILENO, std::string(KeyDialog::kMessage) + ": ");
    if (!reading.text) {
        m_err << "quorvane key set: " << reading.error << '\n';
        return std::nullopt;
    }
    std::optional<std::string> key = KeyDialog::acceptedText(*reading.text);
    if (!key) {
        m_err << "quorvane key set: no key given; nothing changed\n";
    }
    return key;
}

int CommandRunner::perform(CommandSession& session, const Invocation& invocation) {
    AppDelegate& delegate = session.delegate();
    switch (invocation.command) {
    case CommandName::KeyRemove:
        delegate.removeAPIKeyClicked();
        m_out << "API key removed.\n";
        return kDone;
    case CommandName::BaselineReset:
        delegate.resetBaselineClicked();
        return finish(session, "baseline reset");
    case CommandName::HistoryClear:
        delegate.clearHistoryClicked();
        m_out << "Usage history cleared.\n";
        return kDone;
    case CommandName::AutoRefresh:
        if (delegate.autoRefreshEnabled() != invocation.autoRefreshOn) {
            delegate.toggleAutoRefreshClicked();
        }
        m_out << (delegate.autoRefreshEnabled() ? "Auto-refresh: on, every " + delegate.refreshIntervalLabel()
                                                : std::string("Auto-refresh: off"))
              << '\n';
        return kDone;
    case CommandName::Interval:
        delegate.refreshIntervalClicked(invocation.intervalSeconds);
        m_out << "Refresh interval: " << delegate.refreshIntervalLabel()
              << (delegate.autoRefreshEnabled() ? "" : " (auto-refresh is off)") << '\n';
        return kDone;
    default:
        return kUsage;
    }
}

int CommandRunner::finish(CommandSession& session, const char* command) {
    const bool ended = wait(session, command);
    m_out << session.statusItem().title() << '\n';
    return ended ? kDone : kNotDone;
}

} // namespace quorvane
