#include "MacFormatter.h"

#import "NSString+QVStdString.h"

#import <Foundation/Foundation.h>
#include <algorithm>
#include <cmath>

namespace quorvane {

namespace {

NSUInteger fractionDigits(int digits) {
    return static_cast<NSUInteger>(std::max(digits, 0));
}

// The decimal's own text has a period as separator whatever the user's locale.
NSDecimalNumber* decimalNumber(const Decimal& amount) {
    return [NSDecimalNumber decimalNumberWithString:[NSString qv_stringWithStdString:amount.toString()]
                                             locale:[NSLocale localeWithLocaleIdentifier:@"en_US_POSIX"]];
}

std::optional<std::string> formatted(NSNumberFormatter* formatter, const Decimal& amount) {
    NSDecimalNumber* number = decimalNumber(amount);
    if ([number isEqualToNumber:[NSDecimalNumber notANumber]]) {
        return std::nullopt;
    }
    NSString* text = [formatter stringFromNumber:number];
    if (text.length == 0) {
        return std::nullopt;
    }
    return [text qv_stdString];
}

NSDate* dateOf(Timestamp time) {
    return [NSDate dateWithTimeIntervalSinceReferenceDate:time.secondsSinceReferenceDate];
}

NSTimeZone* timeZone(const std::string& timeZoneId) {
    NSTimeZone* zone = [NSTimeZone timeZoneWithName:[NSString qv_stringWithStdString:timeZoneId]];
    return zone != nil ? zone : [NSTimeZone timeZoneForSecondsFromGMT:0];
}

NSDateFormatterStyle formatterStyle(DateStyle style) {
    switch (style) {
    case DateStyle::None:
        return NSDateFormatterNoStyle;
    case DateStyle::Short:
        return NSDateFormatterShortStyle;
    case DateStyle::Medium:
        return NSDateFormatterMediumStyle;
    }
    return NSDateFormatterNoStyle;
}

NSDateFormatterStyle formatterStyle(TimeStyle style) {
    switch (style) {
    case TimeStyle::None:
        return NSDateFormatterNoStyle;
    case TimeStyle::Short:
        return NSDateFormatterShortStyle;
    case TimeStyle::Medium:
        return NSDateFormatterMediumStyle;
    }
    return NSDateFormatterNoStyle;
}

} // namespace

std::optional<std::string> MacFormatter::currency(const Decimal& amount, const std::string& code,
                                                  int maxFractionDigits) const {
    NSNumberFormatter* formatter = [[NSNumberFormatter alloc] init];
    formatter.locale = [NSLocale currentLocale];
    formatter.numberStyle = NSNumberFormatterCurrencyStyle;
    formatter.currencyCode = [NSString qv_stringWithStdString:code];
    // The currency code brings the currency's standard fraction digits as the
    // minimum; a smaller maximum lowers it with it. The minimum is never
    // written: a value read back and written would pin the digits of the
    // currency the formatter had before (two for JPY, which has none).
    formatter.maximumFractionDigits = fractionDigits(maxFractionDigits);
    formatter.roundingMode = NSNumberFormatterRoundHalfEven;
    return formatted(formatter, amount);
}

std::optional<std::string> MacFormatter::decimal(const Decimal& amount, int maxFractionDigits) const {
    NSNumberFormatter* formatter = [[NSNumberFormatter alloc] init];
    formatter.locale = [NSLocale currentLocale];
    formatter.numberStyle = NSNumberFormatterDecimalStyle;
    formatter.maximumFractionDigits = fractionDigits(maxFractionDigits);
    formatter.roundingMode = NSNumberFormatterRoundHalfEven;
    return formatted(formatter, amount);
}

std::string MacFormatter::dayKey(Timestamp time, const std::string& timeZoneId) const {
    if (!std::isfinite(time.secondsSinceReferenceDate)) {
        return {};
    }
    NSDateFormatter* formatter = [[NSDateFormatter alloc] init];
    formatter.locale = [NSLocale currentLocale];
    // After the locale, which brings its own calendar (Buddhist years in Thai,
    // for one): the key must name the same day on every Mac.
    formatter.calendar = [NSCalendar calendarWithIdentifier:NSCalendarIdentifierGregorian];
    formatter.timeZone = timeZone(timeZoneId);
    formatter.dateFormat = @"yyyy-MM-dd";
    return [[formatter stringFromDate:dateOf(time)] qv_stdString];
}

std::string MacFormatter::dateTime(Timestamp time, DateStyle date, TimeStyle timeStyle,
                                   const std::string& timeZoneId) const {
    if (!std::isfinite(time.secondsSinceReferenceDate)) {
        return {};
    }
    NSDateFormatter* formatter = [[NSDateFormatter alloc] init];
    formatter.locale = [NSLocale currentLocale];
    formatter.dateStyle = formatterStyle(date);
    formatter.timeStyle = formatterStyle(timeStyle);
    formatter.timeZone = timeZone(timeZoneId);
    return [[formatter stringFromDate:dateOf(time)] qv_stdString];
}

std::string MacFormatter::relativeTime(Timestamp time, Timestamp now) const {
    if (!std::isfinite(time.secondsSinceReferenceDate) || !std::isfinite(now.secondsSinceReferenceDate)) {
        return {};
    }
    NSRelativeDateTimeFormatter* formatter = [[NSRelativeDateTimeFormatter alloc] init];
    formatter.locale = [NSLocale currentLocale];
    formatter.unitsStyle = NSRelativeDateTimeFormatterUnitsStyleShort;
    return [[formatter localizedStringForDate:dateOf(time) relativeToDate:dateOf(now)] qv_stdString];
}

} // namespace quorvane
