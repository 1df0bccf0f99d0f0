// The system font at the size and weight the core gives.
#pragma once

#include "values/Font.h"

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFont (QVFont)

+ (NSFont*)qv_systemFontWithFont:(const quorvane::Font&)font;

@end

NS_ASSUME_NONNULL_END
