// Reads the API key for "key set": all of standard input, or one line typed at the terminal without echo.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvane {

struct KeyReading {
    // What was read, untouched: trimming is the key dialog's rule, not this one's.
    std::optional<std::string> text;
    // Why nothing could be read, for one line on standard error.
    std::string error;
};

// The text is read from file descriptors so that nothing is left in a
// stream's buffer; the terminal's echo is restored on every way out,
// including Ctrl-C.
class KeyInput {
public:
    // Far beyond any key; more is not a key but a file piped in by mistake.
    static constexpr std::size_t kMaxBytes = std::size_t{64} * 1024;

    // A terminal on `input` gets `prompt` on `promptOutput` and one line with
    // echo off; anything else is read to its end.
    static KeyReading read(int input, int promptOutput, std::string_view prompt);

    static KeyReading readAll(int input);
    static KeyReading readLineWithoutEcho(int input, int promptOutput, std::string_view prompt);
};

} // namespace quorvane
