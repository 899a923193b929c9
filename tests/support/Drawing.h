#pragma once

#include "platform/foundation/NSString.h"
#include "platform/graphics/NSImage.h"

#include <string>
#include <vector>

class NSView;
class QImage;

using Operations = std::vector<std::string>;

/// What `view` draws when asked to redraw `rect`.
Operations operationsOf(NSView& view, NSRect rect);
/// What `view` draws when it is redrawn whole.
Operations operationsOf(NSView& view);

/// The pixels of the first representation, a bitmap.
QImage pixelsOf(const NSImage& image);
/// The colour of one of them, from the top-left, as "#aarrggbb".
std::string pixel(const NSImage& image, int x, int y);

Ref<NSString> text(const char* utf8);

/// An image of the given size that shows nothing, with a name for the record.
Ref<NSImage> blankImage(const char* name, double width, double height);
