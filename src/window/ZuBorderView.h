#pragma once

#include "platform/appkit/NSView.h"

class NSColor;

/// A plain view with a rectangular border, an optional shadow, and an orientation that can be switched.
///
/// The defaults below are set by `initWithFrame`. One loaded from an interface file has a border without a
/// colour and 0 wide until both are set: its `awakeFromNib` leaves everything as the file says. Setters
/// only store: a new value shows at the next redraw. `color_border_` and `width_border_` can be read and
/// written from any thread, everything else belongs to the user-interface thread.
class TESSALINE_EXPORT ZuBorderView : public NSView
{
public:
    ZuBorderView();

    ZuBorderView* initWithFrame(NSRect frame) override;

    /// Gives the view a layer and a new grey shadow that falls 4 points downwards. It is that of all that the
    /// view shows: of the border alone, or, where a background is set, of the whole face.
    void setShadow();
    using NSView::setShadow;

    /// Default no.
    bool isFlipped() const override { return _is_flipped; }
    void setFlipped(bool flipped);

    void drawRect(NSRect rect) override;

    /// Default black; with null nothing is drawn.
    Ref<NSColor> color_border_() const;
    void setColor_border_(Ref<NSColor> color);

    /// In points, half of which lies inside the view and shows; 0 or less means the thinnest line that the
    /// device shows. Default 1.
    double width_border_() const { return _width_border_.get(); }
    void setWidth_border_(double width) { _width_border_.set(width); }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuBorderView() override;

private:
    bool _is_flipped = false;
    RetainProperty<NSColor> _color_border_;
    PlainProperty<double> _width_border_;
};
