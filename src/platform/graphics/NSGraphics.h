#pragma once

#include "platform/foundation/NSGeometry.h"

enum class NSCompositingOperation;

/// Fills a rectangle with the current fill colour, which takes the place of what is under it: where the
/// colour is translucent, so is the result. One without area fills nothing.
TESSALINE_EXPORT void NSRectFill(NSRect rect);

/// Fills a rectangle with the current fill colour over what is there, which shows through where the colour
/// is translucent; there is no operation but source-over. One without area fills nothing.
TESSALINE_EXPORT void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation operation);
