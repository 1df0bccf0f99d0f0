#include "cli/ManPage.h"

#include "cli/CommandHelp.h"

namespace quorvane {

std::string ManPage::preformatted(std::string_view text) {
    std::string out = ".nf\n";
    bool lineStart = true;
    for (const char c : text) {
        if (lineStart && (c == '.' || c == '\'')) {
            out += "\\&";
        }
        lineStart = c == '\n';
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else {
            out += c;
        }
    }
    if (!lineStart) {
        out += '\n';
    }
    return out + ".fi\n";
}

std::string ManPage::render(std::string_view version) {
    std::string page = ".TH QUORVANE 1 \"\" \"quorvane " + std::string(version) + "\" \"User Commands\"\n";
    page += ".SH NAME\nquorvane \\- DeepSeek API balance in the menu bar\n";
    page += ".SH SYNOPSIS\n.B quorvane\n[\\-\\-demo] [\\fICOMMAND\\fR [\\fIARGUMENTS\\fR]]\n";
    page += ".SH DESCRIPTION\n" + preformatted(CommandHelp::overview());
    page += ".SH COMMANDS\n";
    for (const std::string_view command : CommandHelp::commands()) {
        page += ".SS " + std::string(command) + "\n" +
                preformatted(CommandHelp::forCommand(command).value_or(""));
    }
    page +=
        ".SH FILES\n.TP\n$XDG_CONFIG_HOME/Quorvane/Quorvane.conf\nsettings, spend baselines and the balance "
        "history\n.TP\n$XDG_CONFIG_HOME/quorvane/secrets\nthe API key, where no Secret Service answers\n"
        ".TP\n$XDG_CONFIG_HOME/autostart/app.quorvane.Quorvane.desktop\nthe entry that starts the desktop "
        "app "
        "at login\n";
    return page;
}

} // namespace quorvane
