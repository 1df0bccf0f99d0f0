#include "services/ClipboardTool.h"

#include <QProcess>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

namespace quorvane {

namespace {

constexpr int kToolWaitMs = 10000;

bool isSet(const char* name) {
    return !qEnvironmentVariableIsEmpty(name);
}

} // namespace

ClipboardTool::ClipboardTool(std::string program, std::vector<std::string> arguments)
    : m_program(std::move(program))
    , m_arguments(std::move(arguments)) {}

ClipboardTool::Session ClipboardTool::currentSession() {
    return Session{isSet("WAYLAND_DISPLAY"), isSet("DISPLAY")};
}

std::optional<ClipboardTool> ClipboardTool::forSession(const Session& session, const Finder& find) {
    std::vector<ClipboardTool> candidates;
    if (session.wayland) {
        candidates.push_back({"wl-copy", {"--type", "text/plain;charset=utf-8"}});
    }
    if (session.x11) {
        candidates.push_back({"xclip", {"-selection", "clipboard", "-in"}});
        candidates.push_back({"xsel", {"--clipboard", "--input"}});
    }
    for (ClipboardTool& tool : candidates) {
        const std::string path = find(tool.m_program);
        if (!path.empty()) {
            tool.m_program = path;
            return tool;
        }
    }
    return std::nullopt;
}

std::optional<ClipboardTool> ClipboardTool::installedFor(const Session& session) {
    return forSession(session, [](std::string_view name) {
        return QStandardPaths::findExecutable(
                   QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())))
            .toStdString();
    });
}

std::string ClipboardTool::name() const {
    return m_program.substr(m_program.find_last_of('/') + 1);
}

std::string ClipboardTool::copy(const std::string& text) const {
    QStringList arguments;
    for (const std::string& argument : m_arguments) {
        arguments << QString::fromStdString(argument);
    }
    QProcess process;
    // The tool's background half keeps running after this returns; it must
    // not hold this program's output open for whoever reads it.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QString::fromStdString(m_program), arguments);
    if (!process.waitForStarted(kToolWaitMs)) {
        return name() + " could not be started; nothing was copied";
    }
    process.write(text.data(), static_cast<qint64>(text.size()));
    process.closeWriteChannel();
    if (!process.waitForFinished(kToolWaitMs)) {
        process.kill();
        process.waitForFinished(kToolWaitMs);
        return name() + " did not take the text in time; nothing was copied";
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        return name() + " failed (exit status " + std::to_string(process.exitCode()) +
               "); nothing was copied";
    }
    return {};
}

} // namespace quorvane
