// Conversions between the core's UTF-8 text in std::string and NSString.
#pragma once

#import <Foundation/Foundation.h>
#include <string>
#include <string_view>

NS_ASSUME_NONNULL_BEGIN

@interface NSString (QVStdString)

// Nil when the bytes are not UTF-8. A leading U+FEFF stays a character of the
// string, so positions in the string map back onto the bytes one for one.
+ (nullable NSString*)qv_stringWithUTF8:(std::string_view)bytes;

// For AppKit properties that take no nil. The core hands over UTF-8 only;
// anything else shows as the empty string instead of stopping the program.
+ (NSString*)qv_stringWithStdString:(const std::string&)text;

// UTF-8 bytes; an unpaired surrogate, which UTF-8 cannot carry, becomes a substitute character.
- (std::string)qv_stdString;

@end

NS_ASSUME_NONNULL_END
