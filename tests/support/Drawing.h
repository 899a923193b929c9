#pragma once

#include "platform/appkit/NSView.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSImage.h"

#include <functional>
#include <string>
#include <vector>

class QImage;
class QRect;

using Operations = std::vector<std::string>;

/// What `view` draws when asked to redraw `rect`.
Operations operationsOf(NSView& view, NSRect rect);
/// What `view` draws when it is redrawn whole.
Operations operationsOf(NSView& view);

/// How the record shows a path that is a rectangle with round corners, after "fillPath" or "strokePath".
std::string roundedRect(NSRect rect, double xRadius, double yRadius);

/// A view that draws what it is told to.
class Canvas final : public NSView
{
public:
    Canvas(NSSize size, bool flipped, std::function<void()> draw);

    bool isFlipped() const override { return _flipped; }
    void drawRect(NSRect) override { _draw(); }

private:
    bool _flipped;
    std::function<void()> _draw;
};

/// The pixels of the first representation, a bitmap.
QImage pixelsOf(const NSImage& image);
/// The colour of one of them, from the top-left, as "#aarrggbb".
std::string pixel(const NSImage& image, int x, int y);
/// The rectangle around those that are painted on.
QRect inkOf(const QImage& picture);

Ref<NSString> text(const char* utf8);
/// "null" for null.
std::string utf8(const Ref<NSString>& string);

/// An image of the given size that shows nothing, with a name for the record.
Ref<NSImage> blankImage(const char* name, double width, double height);
