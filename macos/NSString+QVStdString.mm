#import "NSString+QVStdString.h"

#include <cstddef>
#include <limits>

@implementation NSString (QVStdString)

+ (nullable NSString*)qv_stringWithUTF8:(std::string_view)bytes {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<CFIndex>::max())) {
        return nil;
    }
    // Not an external representation: no byte-order mark is looked for or dropped.
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
