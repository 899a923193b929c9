#pragma once

#include "platform/appkit/NSView.h"

class NSColor;

/// A frame around views that belong together, with a title above its top-left corner. The frame takes what
/// the title leaves of the bounds, and all of them if there is none.
class TESSALINE_EXPORT NSBox : public NSView
{
public:
    NSBox();

    NSBox* initWithFrame(NSRect frame) override;

    // Each setter asks for a redraw.

    /// Copied. Default null, for none.
    Ref<NSString> title() const;
    void setTitle(Ref<NSString> title);

    /// Whether nothing is drawn, neither frame nor title. Default no.
    bool isTransparent() const { return _transparent; }
    void setTransparent(bool transparent);

    /// What the frame is filled with; null for nothing. Default a very light grey.
    Ref<NSColor> fillColor() const;
    void setFillColor(Ref<NSColor> color);

    /// The frame's line; null for none. Default a light grey.
    Ref<NSColor> borderColor() const;
    void setBorderColor(Ref<NSColor> color);

    /// The width of the frame's line, which lies inside of the bounds, in points; 0 or less for none.
    /// Default 1.
    double borderWidth() const { return _borderWidth; }
    void setBorderWidth(double width);

    /// The radius of the frame's corners, in points. Default 5.
    double cornerRadius() const { return _cornerRadius; }
    void setCornerRadius(double radius);

    void drawRect(NSRect rect) override;

    NSAccessibilityRole accessibilityRole() const override { return NSAccessibilityRole::Group; }
    /// The title unless another label was set.
    Ref<NSString> accessibilityLabel() const override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSBox() override;

private:
    struct Layout;

    Layout layout() const;

    CopyProperty<NSString> _title;
    bool _transparent = false;
    RetainProperty<NSColor> _fillColor;
    RetainProperty<NSColor> _borderColor;
    double _borderWidth = 1.0;
    double _cornerRadius = 5.0;
};
