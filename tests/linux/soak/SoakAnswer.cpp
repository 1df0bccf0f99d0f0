#include "SoakAnswer.h"

namespace quorvane {

const char* soakKindName(SoakAnswer::Kind kind) {
    switch (kind) {
    case SoakAnswer::Kind::ValidOne:
        return "valid, one currency";
    case SoakAnswer::Kind::ValidTwo:
        return "valid, two currencies";
    case SoakAnswer::Kind::Garbage:
        return "garbage";
    case SoakAnswer::Kind::TruncatedJson:
        return "truncated JSON";
    case SoakAnswer::Kind::TruncatedTransfer:
        return "truncated transfer";
    case SoakAnswer::Kind::HugeOver:
        return "huge body over the limit";
    case SoakAnswer::Kind::HugeUnder:
        return "huge body just under the limit";
    case SoakAnswer::Kind::WrongType:
        return "wrong types";
    case SoakAnswer::Kind::HttpErrorLong:
        return "HTTP error, long body";
    case SoakAnswer::Kind::HttpErrorNonUtf8:
        return "HTTP error, non-UTF-8 body";
    case SoakAnswer::Kind::Slow:
        return "slow";
    case SoakAnswer::Kind::Dropped:
        return "dropped";
    }
    return "?";
}

} // namespace quorvane
