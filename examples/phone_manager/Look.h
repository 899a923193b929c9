#pragma once

#include <platform/foundation/NSObject.h>

#include <string>

class NSColor;
class NSImage;

/// From 0, black, to 1, white.
Ref<NSColor> grey(double white);

/// A picture of the application's own by its name, with what there is of it for screens with one and with two
/// pixels to the point. Null if there is none.
Ref<NSImage> icon(const std::string& name);
