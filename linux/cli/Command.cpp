#include "cli/Command.h"

#include <algorithm>

namespace quorvane {

Command::Command(std::string_view word, std::initializer_list<CommandName> names)
    : m_word(word)
    , m_names(names) {}

bool Command::handles(CommandName name) const {
    return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
}

} // namespace quorvane
