#pragma once

#include "platform/foundation/NSGeometry.h"

/// Fills a rectangle with the current fill colour, which takes the place of what is under it: where the
/// colour is translucent, so is the result. One without area fills nothing.
TESSALINE_EXPORT void NSRectFill(NSRect rect);
