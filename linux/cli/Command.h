// One command of the command line: the word that names it, how it reads its arguments, what it does.
#pragma once

#include "cli/CommandArguments.h"
#include "cli/CommandIo.h"
#include "cli/Invocation.h"

#include <initializer_list>
#include <string_view>
#include <vector>

namespace quorvane {

// Each command is a small class of its own, so adding one touches only its
// class and the list in CommandSet. Exit statuses: 0 done (a failed refresh
// is a state the output shows), 1 not done, 2 usage.
class Command {
public:
    static constexpr int kDone = 0;
    static constexpr int kNotDone = 1;
    static constexpr int kUsage = 2;

    // `word` names the command; `names` are what parsing makes of it ("key"
    // gives KeySet or KeyRemove).
    Command(std::string_view word, std::initializer_list<CommandName> names);
    virtual ~Command() = default;

    std::string_view word() const { return m_word; }
    // Whether an invocation that parsing made is this command's to carry out.
    bool handles(CommandName name) const;
    // The arguments after the word, into `invocation`; or a usage error.
    virtual ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const = 0;
    virtual int execute(const Invocation& invocation, CommandIo& io) const = 0;

private:
    std::string_view m_word;
    std::vector<CommandName> m_names;
};

} // namespace quorvane
