// One scripted answer of the soak server and what the refresh must make of it.
#pragma once

#include <QByteArray>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {

struct SoakAnswer {
    enum class Kind {
        ValidOne,
        ValidTwo,
        Garbage,
        TruncatedJson,
        TruncatedTransfer,
        HugeOver,
        HugeUnder,
        WrongType,
        HttpErrorLong,
        HttpErrorNonUtf8,
        Slow,
        Dropped,
    };

    Kind kind = Kind::ValidOne;
    // The whole HTTP answer as written to the socket; empty when dropped.
    QByteArray raw;
    std::chrono::milliseconds delay{0};
    bool drop = false;
    bool expectSuccess = false;
    // On success: the totals the response must hold, in the order sent.
    std::vector<std::pair<std::string, std::string>> totals;
    bool isAvailable = true;
    // On failure: the exact error, or, when exactError is false, its required beginning
    // (empty for a transport failure whose words are Qt's).
    std::string error;
    bool exactError = false;
};

const char* soakKindName(SoakAnswer::Kind kind);

} // namespace quorvane
