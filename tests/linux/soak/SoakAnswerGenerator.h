// Seeded, reproducible random answers for the soak server: good, broken, huge, slow and dropped.
#pragma once

#include "SoakAnswer.h"

#include <QByteArray>

#include <cstdint>
#include <random>
#include <string>

namespace quorvane {

// The same seed gives the same answers on every machine: only the engine's raw
// output is used, never a standard distribution, whose results the library may vary.
class SoakAnswerGenerator {
public:
    explicit SoakAnswerGenerator(std::uint32_t seed);

    SoakAnswer next();

private:
    std::uint32_t below(std::uint32_t bound);
    std::string amount();
    QByteArray randomBytes(std::size_t length, bool allowLineBreaks);
    QByteArray paddedBody(std::size_t bodySize) const;

    SoakAnswer valid(std::size_t currencies);
    SoakAnswer garbage();
    SoakAnswer truncatedJson();
    SoakAnswer truncatedTransfer();
    SoakAnswer huge(bool over);
    SoakAnswer wrongType();
    SoakAnswer httpErrorLong();
    SoakAnswer httpErrorNonUtf8();

    std::mt19937 m_engine;
};

} // namespace quorvane
