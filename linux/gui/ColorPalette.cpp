#include "gui/ColorPalette.h"

namespace quorvane {

namespace {

struct Rgba {
    int red;
    int green;
    int blue;
    double alpha;
};

struct Entry {
    Rgba light;
    Rgba dark;
};

// The label and separator colours are black or white at a partial alpha, so
// they tint whatever lies beneath them as AppKit's do.
Entry entryFor(ColorName name) {
    switch (name) {
    case ColorName::Label:
        return {{0, 0, 0, 0.85}, {255, 255, 255, 0.85}};
    case ColorName::SecondaryLabel:
        return {{0, 0, 0, 0.50}, {255, 255, 255, 0.55}};
    case ColorName::TertiaryLabel:
        return {{0, 0, 0, 0.26}, {255, 255, 255, 0.25}};
    case ColorName::Separator:
        return {{0, 0, 0, 0.10}, {255, 255, 255, 0.10}};
    case ColorName::ControlBackground:
        return {{255, 255, 255, 1.0}, {30, 30, 30, 1.0}};
    case ColorName::WindowBackground:
        return {{236, 236, 236, 1.0}, {50, 50, 50, 1.0}};
    case ColorName::SystemGreen:
        return {{52, 199, 89, 1.0}, {48, 209, 88, 1.0}};
    case ColorName::SystemRed:
        return {{255, 59, 48, 1.0}, {255, 69, 58, 1.0}};
    case ColorName::SystemTeal:
        return {{48, 176, 199, 1.0}, {64, 200, 224, 1.0}};
    case ColorName::SystemOrange:
        return {{255, 149, 0, 1.0}, {255, 159, 10, 1.0}};
    }
    return {{0, 0, 0, 0.85}, {255, 255, 255, 0.85}};
}

} // namespace

ColorPalette::ColorPalette(Appearance appearance)
    : m_appearance(appearance) {}

ColorPalette::Appearance ColorPalette::appearanceOf(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5 ? Appearance::Dark : Appearance::Light;
}

QColor ColorPalette::color(const NamedColor& color) const {
    const Entry entry = entryFor(color.name);
    const Rgba& rgba = m_appearance == Appearance::Dark ? entry.dark : entry.light;
    QColor result(rgba.red, rgba.green, rgba.blue);
    // As AppKit's colorWithAlphaComponent: an asked alpha replaces the colour's
    // own; 1 asks for the system colour as it is (labels keep their 0.85).
    const double alpha = color.alpha == 1.0 ? rgba.alpha : color.alpha;
    result.setAlphaF(static_cast<float>(qBound(0.0, alpha, 1.0)));
    return result;
}

} // namespace quorvane
