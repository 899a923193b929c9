#pragma once

#include "platform/foundation/NSObject.h"

class NSColor;
class NSView;

/// What lies behind a view's own drawing.
class TESSALINE_EXPORT CALayer final : public NSObject
{
public:
    /// Fills the view's bounds before the view draws; null, the default, for none. A new colour asks for a
    /// redraw.
    Ref<NSColor> backgroundColor() const;
    void setBackgroundColor(Ref<NSColor> color);

private:
    template <class T, class... Arguments> friend Ref<T> make(Arguments&&... arguments);
    friend class NSView;

    explicit CALayer(NSView* view);
    ~CALayer() override;

    NSView* _view; // borrowed: cleared by the view
    Ref<NSColor> _backgroundColor;
};
