// A system colour by name with an alpha; each shell resolves it for light and dark appearance.
#pragma once

#include <string_view>

namespace quorvane {

enum class ColorName {
    Label,
    SecondaryLabel,
    TertiaryLabel,
    Separator,
    ControlBackground,
    WindowBackground,
    SystemGreen,
    SystemRed,
    SystemTeal,
    SystemOrange,
};

struct NamedColor {
    ColorName name = ColorName::Label;
    double alpha = 1.0;

    constexpr NamedColor withAlpha(double a) const { return NamedColor{name, a}; }
    friend constexpr bool operator==(const NamedColor&, const NamedColor&) = default;
};

// The platform's spelling without its "Color" suffix: "label", "secondaryLabel", "systemTeal".
constexpr std::string_view colorNameText(ColorName name) {
    switch (name) {
    case ColorName::Label:
        return "label";
    case ColorName::SecondaryLabel:
        return "secondaryLabel";
    case ColorName::TertiaryLabel:
        return "tertiaryLabel";
    case ColorName::Separator:
        return "separator";
    case ColorName::ControlBackground:
        return "controlBackground";
    case ColorName::WindowBackground:
        return "windowBackground";
    case ColorName::SystemGreen:
        return "systemGreen";
    case ColorName::SystemRed:
        return "systemRed";
    case ColorName::SystemTeal:
        return "systemTeal";
    case ColorName::SystemOrange:
        return "systemOrange";
    }
    return "label";
}

} // namespace quorvane
