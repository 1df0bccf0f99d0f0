#include "MacTextSegmenter.h"

#import "NSString+QVStdString.h"

#import <Foundation/Foundation.h>
#include <algorithm>

namespace quorvane {

std::size_t MacTextSegmenter::prefixLength(std::string_view utf8, std::size_t count) const {
    if (count == 0 || utf8.empty()) {
        return 0;
    }
    NSString* text = [NSString qv_stringWithUTF8:utf8];
    if (text == nil) {
        return utf8.size();
    }
    NSUInteger end = 0;
    for (std::size_t taken = 0; taken < count && end < text.length; ++taken) {
        end = NSMaxRange([text rangeOfComposedCharacterSequenceAtIndex:end]);
    }
    // The string was decoded without byte-order-mark handling, so the prefix's
    // UTF-8 length is its length in the bytes given.
    const NSUInteger bytes = [[text substringToIndex:end] lengthOfBytesUsingEncoding:NSUTF8StringEncoding];
    return std::min<std::size_t>(bytes, utf8.size());
}

} // namespace quorvane
