// The system colours by name as Qt colours, for the light or the dark appearance.
#pragma once

#include "values/NamedColor.h"

#include <QColor>
#include <QPalette>

namespace quorvane {

// The core names its colours after the macOS system colours; these are
// Apple's published values for each, so the cards and the chart read the
// same on both desktops. Resolved on every use, so a theme change shows at
// the next paint.
class ColorPalette {
public:
    enum class Appearance { Light, Dark };

    explicit ColorPalette(Appearance appearance);

    // Dark when the palette's window colour is dark, whatever the style calls itself.
    static Appearance appearanceOf(const QPalette& palette);
    static ColorPalette forPalette(const QPalette& palette) { return ColorPalette(appearanceOf(palette)); }

    Appearance appearance() const { return m_appearance; }
    // The named colour at the requested alpha, which replaces the colour's own
    // unless it is 1 (the colour as the system defines it).
    QColor color(const NamedColor& color) const;

private:
    Appearance m_appearance;
};

} // namespace quorvane
