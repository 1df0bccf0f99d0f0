#include "cli/CommandSet.h"

#include "cli/AutoRefreshCommand.h"
#include "cli/AutostartCommand.h"
#include "cli/BaselineCommand.h"
#include "cli/CardCommand.h"
#include "cli/HistoryCommand.h"
#include "cli/IntervalCommand.h"
#include "cli/KeyCommand.h"
#include "cli/NotificationsCommand.h"
#include "cli/ShowMenuCommand.h"
#include "cli/StatusCommand.h"
#include "cli/SummaryCommand.h"

namespace quorvane {

CommandSet::CommandSet() {
    m_commands.push_back(std::make_unique<StatusCommand>());
    m_commands.push_back(std::make_unique<SummaryCommand>());
    m_commands.push_back(std::make_unique<ShowMenuCommand>());
    m_commands.push_back(std::make_unique<CardCommand>());
    m_commands.push_back(std::make_unique<KeyCommand>());
    m_commands.push_back(std::make_unique<BaselineCommand>());
    m_commands.push_back(std::make_unique<HistoryCommand>());
    m_commands.push_back(std::make_unique<AutoRefreshCommand>());
    m_commands.push_back(std::make_unique<IntervalCommand>());
    m_commands.push_back(std::make_unique<NotificationsCommand>());
    m_commands.push_back(std::make_unique<AutostartCommand>());
}

const Command* CommandSet::forWord(std::string_view word) const {
    for (const std::unique_ptr<Command>& command : m_commands) {
        if (command->word() == word) {
            return command.get();
        }
    }
    return nullptr;
}

const Command* CommandSet::forName(CommandName name) const {
    for (const std::unique_ptr<Command>& command : m_commands) {
        if (command->handles(name)) {
            return command.get();
        }
    }
    return nullptr;
}

} // namespace quorvane
