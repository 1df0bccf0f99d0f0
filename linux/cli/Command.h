// One command of the command line: the word that names it, how it reads its arguments, what it does.
#pragma once

#include "cli/CommandArguments.h"
#include "cli/CommandIo.h"
#include "cli/Invocation.h"

#include <string_view>

namespace quorvane {

// Each command is a small class of its own, so adding one touches only its
// class and the list in CommandSet. Exit statuses: 0 done (a failed refresh
// is a state the output shows), 1 not done, 2 usage.
class Command {
public:
    static constexpr int kDone = 0;
    static constexpr int kNotDone = 1;
    static constexpr int kUsage = 2;

    virtual ~Command() = default;

    virtual std::string_view word() const = 0;
    // Whether an invocation that parsing made is this command's to carry out.
    virtual bool handles(CommandName name) const = 0;
    // The arguments after the word, into `invocation`; or a usage error.
    virtual ParsedCommandLine parse(CommandArguments::List arguments, Invocation invocation) const = 0;
    virtual int execute(const Invocation& invocation, CommandIo& io) const = 0;
};

} // namespace quorvane
