#include "cli/AutostartEntry.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>

namespace quorvane {

namespace {

bool isPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '/' ||
           c == '.' || c == '_' || c == '+' || c == '-';
}

// Written beside the entry and renamed over it, so a desktop reading the
// folder at login never sees half an entry.
bool writeWhole(const std::filesystem::path& target, const std::string& text) {
    const std::filesystem::path temporary = target.string() + ".new";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file << text;
        file.close();
        if (!file) {
            std::error_code ignored;
            std::filesystem::remove(temporary, ignored);
            return false;
        }
    }
    std::error_code error;
    std::filesystem::rename(temporary, target, error);
    if (error) {
        std::filesystem::remove(temporary, error);
        return false;
    }
    return true;
}

} // namespace

std::optional<std::filesystem::path> AutostartEntry::path() {
    const char* configHome = std::getenv("XDG_CONFIG_HOME");
    // The XDG base directories ignore a relative XDG_CONFIG_HOME.
    if (configHome != nullptr && configHome[0] == '/') {
        return std::filesystem::path(configHome) / "autostart" / kFileName;
    }
    const char* home = std::getenv("HOME");
    if (home != nullptr && home[0] == '/') {
        return std::filesystem::path(home) / ".config" / "autostart" / kFileName;
    }
    return std::nullopt;
}

std::string AutostartEntry::execArgument(const std::string& executable) {
    bool plain = !executable.empty();
    for (const char c : executable) {
        plain = plain && isPlain(c);
    }
    if (plain) {
        return executable;
    }
    // Inside double quotes, '"', '`', '$' and '\' take a backslash; the
    // key's value itself is a string, where a backslash is written twice.
    std::string quoted = "\"";
    for (const char c : executable) {
        if (c == '"' || c == '`' || c == '$') {
            quoted += "\\\\";
        } else if (c == '\\') {
            quoted += "\\\\\\";
        }
        quoted += c;
    }
    return quoted + "\"";
}

std::string AutostartEntry::text(const std::string& executable) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Quorvane\n"
           "Comment=DeepSeek API balance in the menu bar\n"
           "Exec=" +
           execArgument(executable) +
           "\n"
           "Icon=app.quorvane.Quorvane\n"
           "Terminal=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

int AutostartEntry::run(Action action, const std::string& executable, std::ostream& out, std::ostream& err) {
    const std::optional<std::filesystem::path> entry = path();
    if (!entry) {
        err << "quorvane autostart: neither XDG_CONFIG_HOME nor HOME names a folder for the entry\n";
        return 1;
    }
    std::error_code error;
    switch (action) {
    case Action::Status:
        if (std::filesystem::exists(*entry, error)) {
            out << "Quorvane starts at login (" << entry->string() << ").\n";
        } else {
            out << "Quorvane does not start at login.\n";
        }
        return 0;
    case Action::On:
        std::filesystem::create_directories(entry->parent_path(), error);
        if (error || !writeWhole(*entry, text(executable))) {
            err << "quorvane autostart: could not write " << entry->string() << "\n";
            return 1;
        }
        out << "Quorvane starts at login (" << entry->string() << ").\n";
        return 0;
    case Action::Off:
        std::filesystem::remove(*entry, error);
        if (error) {
            err << "quorvane autostart: could not remove " << entry->string() << "\n";
            return 1;
        }
        out << "Quorvane does not start at login.\n";
        return 0;
    }
    return 1;
}

} // namespace quorvane
