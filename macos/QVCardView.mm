#import "QVCardView.h"

#import "NSColor+QVNamedColor.h"
#import "NSFont+QVFont.h"
#import "NSString+QVStdString.h"
#import "QVChartView.h"

#include <variant>

namespace {

NSTextField* labelField(const quorvane::CardLabel& label) {
    NSTextField* field = [NSTextField labelWithString:[NSString qv_stringWithStdString:label.text]];
    field.font = [NSFont qv_systemFontWithFont:label.font];
    field.textColor = [NSColor qv_colorWithNamedColor:label.color];
    field.alignment =
        label.alignment == quorvane::TextAlignment::Right ? NSTextAlignmentRight : NSTextAlignmentNatural;
    if (label.truncatesTail) {
        field.lineBreakMode = NSLineBreakByTruncatingTail;
    }
    field.frame = NSMakeRect(label.frame.x, label.frame.y, label.frame.width, label.frame.height);
    return field;
}

} // namespace

@implementation QVCardView

- (instancetype)initWithCard:(const quorvane::Card&)card {
    self = [super initWithFrame:NSMakeRect(0, 0, card.size.width, card.size.height)];
    if (self != nil) {
        // In the card's order: later subviews draw above earlier ones.
        for (const quorvane::CardSubview& subview : card.subviews) {
            if (const auto* label = std::get_if<quorvane::CardLabel>(&subview)) {
                [self addSubview:labelField(*label)];
            } else if (const auto* chart = std::get_if<quorvane::UsageChartView>(&subview)) {
                [self addSubview:[[QVChartView alloc] initWithChart:*chart]];
            }
        }
    }
    return self;
}

@end
