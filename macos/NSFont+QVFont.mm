#import "NSFont+QVFont.h"

namespace {

NSFontWeight systemWeight(quorvane::FontWeight weight) {
    using quorvane::FontWeight;
    switch (weight) {
    case FontWeight::Regular:
        return NSFontWeightRegular;
    case FontWeight::Medium:
        return NSFontWeightMedium;
    case FontWeight::Semibold:
        return NSFontWeightSemibold;
    case FontWeight::Bold:
        return NSFontWeightBold;
    }
    return NSFontWeightRegular;
}

} // namespace

@implementation NSFont (QVFont)

+ (NSFont*)qv_systemFontWithFont:(const quorvane::Font&)font {
    return [NSFont systemFontOfSize:font.size weight:systemWeight(font.weight)];
}

@end
