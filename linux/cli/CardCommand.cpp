#include "cli/CardCommand.h"

#include "cli/CardImage.h"
#include "cli/CommandLine.h"

#include <QString>

namespace quorvane {

CardCommand::CardCommand()
    : SessionCommand("card", {CommandName::Card}) {}

ParsedCommandLine CardCommand::parse(CommandArguments::List arguments, Invocation invocation) const {
    constexpr int kMaxScale = 8;
    invocation.command = CommandName::Card;
    CommandArguments::Options options;
    options.values = {{"--png", std::nullopt}, {"--hover", std::nullopt}, {"--scale", std::nullopt}};
    if (auto error = CommandArguments::readOptions(word(), arguments, options)) {
        return *error;
    }
    const std::optional<std::string>& png = options.values["--png"];
    if (!png) {
        return CommandArguments::usageError(word(), "--png FILE is required");
    }
    if (png->empty()) {
        return CommandArguments::usageError(word(), "--png needs a file name");
    }
    invocation.pngPath = *png;
    if (const std::optional<std::string>& hover = options.values["--hover"]) {
        invocation.hoverIndex = CommandArguments::wholeNumber(*hover);
        if (!invocation.hoverIndex) {
            return CommandArguments::usageError(word(),
                                                "--hover needs a sample index, a whole number from 0, not " +
                                                    CommandLine::quoted(*hover));
        }
    }
    if (const std::optional<std::string>& scale = options.values["--scale"]) {
        const std::optional<std::int64_t> factor = CommandArguments::wholeNumber(*scale);
        if (!factor || *factor < 1 || *factor > kMaxScale) {
            return CommandArguments::usageError(word(), "--scale needs a whole number from 1 to " +
                                                            std::to_string(kMaxScale) + ", not " +
                                                            CommandLine::quoted(*scale));
        }
        invocation.scale = static_cast<int>(*factor);
    }
    return CommandArguments::run(invocation);
}

int CardCommand::run(const Invocation& invocation, CommandSession& session, CommandIo& io) const {
    // A path is quoted whole unless it is absurd: the user needs to see which file.
    constexpr std::size_t kPathBytes = 4096;
    const bool ended = session.launchAndWait(io.err, word());
    // Every menu the delegate builds starts with its card: the dashboard, or the status card.
    const CardImage::Drawing drawing =
        CardImage::draw(*session.delegate().menu().front().card, invocation.hoverIndex, invocation.scale);
    if (drawing.outcome == CardImage::Outcome::NoSuchSample) {
        io.err << "quorvane card: --hover " << *invocation.hoverIndex << ": " << drawing.message
               << "; see 'quorvane card --help'\n";
        return kUsage;
    }
    if (!drawing.image.save(QString::fromStdString(invocation.pngPath), "PNG")) {
        io.err << "quorvane card: could not write " << CommandLine::quoted(invocation.pngPath, kPathBytes)
               << '\n';
        return kNotDone;
    }
    io.out << "Wrote " << invocation.pngPath << " (" << drawing.image.width() << "x" << drawing.image.height()
           << " pixels)\n";
    return ended ? kDone : kNotDone;
}

} // namespace quorvane
