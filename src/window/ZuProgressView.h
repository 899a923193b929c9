#pragma once

#include "platform/appkit/NSView.h"

class NSColor;
class NSNumber;

/// Shows how far a task has come: a rounded track, over it the done part, which grows from the left edge in
/// proportion to `step_` out of `total_` and has square corners, and a rounded border on top.
///
/// The proportion is not limited: beyond the total the done part is cut off at the view's right edge, and
/// below zero there is none. Setters only store: after a change the application asks for a redraw. The
/// properties can be read and written from any thread, everything else belongs to the user-interface thread.
class TESSALINE_EXPORT ZuProgressView : public NSView
{
public:
    ZuProgressView();

    ZuProgressView* initWithFrame(NSRect frame) override;
    /// Sets both radii to 0; everything else stays as the interface file says.
    void awakeFromNib() override;

    /// Draws the bar that fills `rect`.
    void drawRect(NSRect rect) override;

    // Assistive technology learns `step_` of `total_`, from 0, as far as the bar can show it; nothing while
    // there is no total above 0. What the task is, `setAccessibilityLabel` tells.

    NSAccessibilityRole accessibilityRole() const override;
    Ref<NSNumber> accessibilityValue() const override;
    Ref<NSNumber> accessibilityMinValue() const override;
    Ref<NSNumber> accessibilityMaxValue() const override;

    // Colours: default null; what has none is not drawn.

    Ref<NSColor> color_border_() const;
    void setColor_border_(Ref<NSColor> color);

    /// Of the track, which is seen where nothing is done yet.
    Ref<NSColor> color_unuse_() const;
    void setColor_unuse_(Ref<NSColor> color);

    /// Of the done part. A translucent one takes the track's place, too: it does not tint it, but
    /// shows as if on black where the window is opaque.
    Ref<NSColor> color_used_() const;
    void setColor_used_(Ref<NSColor> color);

    /// Radii of the corners of track and border, in points. Default 0.
    double xRadius_() const { return _xRadius_.get(); }
    void setXRadius_(double radius) { _xRadius_.set(radius); }
    double yRadius_() const { return _yRadius_.get(); }
    void setYRadius_(double radius) { _yRadius_.set(radius); }

    /// The amount that means a full bar. Default 0: nothing is known, and nothing shows as done.
    double total_() const { return _total_.get(); }
    void setTotal_(double total) { _total_.set(total); }

    /// The amount done so far. Default 0.
    double step_() const { return _step_.get(); }
    void setStep_(double step) { _step_.set(step); }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuProgressView() override;

private:
    NSRect doneRect(NSRect bar, double total) const;

    PlainProperty<double> _total_;
    PlainProperty<double> _step_;
    RetainProperty<NSColor> _color_border_;
    RetainProperty<NSColor> _color_unuse_;
    RetainProperty<NSColor> _color_used_;
    PlainProperty<double> _xRadius_;
    PlainProperty<double> _yRadius_;
};
