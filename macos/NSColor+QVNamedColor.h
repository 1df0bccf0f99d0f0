// The system colours the core names, resolved to AppKit's appearance-dependent colours.
#pragma once

#include "values/NamedColor.h"

#import <AppKit/AppKit.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSColor (QVNamedColor)

// An alpha of 1 is the colour at its own alpha, as the system defines it (the
// label colours are partly transparent already); any other alpha replaces it.
+ (NSColor*)qv_colorWithNamedColor:(const quorvane::NamedColor&)color;

@end

NS_ASSUME_NONNULL_END
