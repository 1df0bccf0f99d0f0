#include "cli/ShowMenuCommand.h"

#include "cli/MenuJson.h"
#include "json/JsonWriter.h"
#include "menu/MenuTextRenderer.h"

namespace quorvane {

ShowMenuCommand::ShowMenuCommand()
    : SessionCommand("menu", {CommandName::Menu}) {}

ParsedCommandLine ShowMenuCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    invocation.command = CommandName::Menu;
    return CommandArguments::withFlag(word(), arguments, "--json", invocation, &Invocation::json);
}

int ShowMenuCommand::run(const Invocation& invocation, CommandSession& session, CommandIo& io) const {
    const bool ended = session.launchAndWait(io.err, word());
    const HeadlessStatusItem& item = session.statusItem();
    if (invocation.json) {
        io.out << JsonWriter::write(
                      MenuJson::document(item.title(), item.toolTip(), session.delegate().menu()))
               << '\n';
    } else {
        io.out << item.title() << '\n' << MenuTextRenderer::render(session.delegate().menu());
    }
    return ended ? kDone : kNotDone;
}

} // namespace quorvane
