#include "cli/TerminalDesktop.h"

#include <QCoreApplication>

namespace quorvane {

TerminalDesktop::TerminalDesktop(std::ostream& out)
    : m_out(out) {}

void TerminalDesktop::terminate() {
    QCoreApplication::quit();
}

void TerminalDesktop::openUrl(const std::string& url) {
    m_out << url << '\n' << std::flush;
}

} // namespace quorvane
