#import "NSColor+QVNamedColor.h"

namespace {

NSColor* systemColor(quorvane::ColorName name) {
    using quorvane::ColorName;
    switch (name) {
    case ColorName::Label:
        return [NSColor labelColor];
    case ColorName::SecondaryLabel:
        return [NSColor secondaryLabelColor];
    case ColorName::TertiaryLabel:
        return [NSColor tertiaryLabelColor];
    case ColorName::Separator:
        return [NSColor separatorColor];
    case ColorName::ControlBackground:
        return [NSColor controlBackgroundColor];
    case ColorName::WindowBackground:
        return [NSColor windowBackgroundColor];
    case ColorName::SystemGreen:
        return [NSColor systemGreenColor];
    case ColorName::SystemRed:
        return [NSColor systemRedColor];
    case ColorName::SystemTeal:
        return [NSColor systemTealColor];
    case ColorName::SystemOrange:
        return [NSColor systemOrangeColor];
    }
    return [NSColor labelColor];
}

} // namespace

@implementation NSColor (QVNamedColor)

+ (NSColor*)qv_colorWithNamedColor:(const quorvane::NamedColor&)color {
    NSColor* resolved = systemColor(color.name);
    if (color.alpha == 1.0) {
        return resolved;
    }
    return [resolved colorWithAlphaComponent:color.alpha];
}

@end
