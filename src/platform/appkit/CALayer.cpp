#include "platform/appkit/CALayer.h"

#include "platform/appkit/NSView.h"
#include "platform/graphics/NSColor.h"

CALayer::CALayer(NSView* view) : _view(view) {}

CALayer::~CALayer() = default;

Ref<NSColor> CALayer::backgroundColor() const
{
    return _backgroundColor;
}

void CALayer::setBackgroundColor(Ref<NSColor> color)
{
    _backgroundColor = std::move(color);
    if (_view != nullptr) {
        _view->setNeedsDisplay();
    }
}
