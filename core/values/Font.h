// The system font at a size in points and a weight.
#pragma once

#include <string_view>

namespace quorvane {

enum class FontWeight { Regular, Medium, Semibold, Bold };

struct Font {
    double size = 13.0;
    FontWeight weight = FontWeight::Regular;

    friend constexpr bool operator==(const Font&, const Font&) = default;
};

constexpr std::string_view fontWeightText(FontWeight weight) {
    switch (weight) {
    case FontWeight::Regular:
        return "regular";
    case FontWeight::Medium:
        return "medium";
    case FontWeight::Semibold:
        return "semibold";
    case FontWeight::Bold:
        return "bold";
    }
    return "regular";
}

} // namespace quorvane
