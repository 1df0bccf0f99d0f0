#import "NSString+QVStdString.h"

#include <cstddef>
#include <limits>

@implementation NSString (QVStdString)

+ (nullable NSString*)qv_stringWithUTF8:(std::string_view)bytes {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<CFIndex>::max())) {
        return nil;
    }
    // CFStringCreateWithBytes drops a leading UTF-8 byte-order mark even from
    // bytes that are no external representation, and positions would then be
    // three bytes short of the text's. U+FEFF stays the first character, as
    // ICU reads it on Linux.
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark)) {
        NSString* rest = [NSString qv_stringWithUTF8:bytes.substr(kByteOrderMark.size())];
        const unichar zeroWidthNoBreakSpace = 0xFEFF;
        return rest == nil ? nil
                           : [[NSString stringWithCharacters:&zeroWidthNoBreakSpace
                                                      length:1] stringByAppendingString:rest];
    }
    return CFBridgingRelease(
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(bytes.data()),
                                static_cast<CFIndex>(bytes.size()), kCFStringEncodingUTF8, false));
}

+ (NSString*)qv_stringWithStdString:(const std::string&)text {
    NSString* string = [NSString qv_stringWithUTF8:text];
    return string != nil ? string : @"";
}

- (std::string)qv_stdString {
    NSData* data = [self dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
    if (data.length == 0) {
        return {};
    }
    return std::string(static_cast<const char*>(data.bytes), data.length);
}

@end
