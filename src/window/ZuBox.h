#pragma once

#include "platform/appkit/NSBox.h"

/// A box with a line along its lower edge.
///
/// The defaults below are set by `awakeFromNib`, in place of what was set before; of a box made in code the
/// line has no colour until it is given one. Setters only store: a new value shows at the next redraw. The
/// two properties can be read and written from any thread, everything else belongs to the user-interface
/// thread.
class TESSALINE_EXPORT ZuBox : public NSBox
{
public:
    ZuBox();

    ZuBox* initWithFrame(NSRect frame) override;
    void awakeFromNib() override;

    /// Draws the box as configured, and over it the line, from the box's origin as far as `rect` is wide.
    void drawRect(NSRect rect) override;

    /// The line's colour. Default a light grey; with null there is no line.
    Ref<NSColor> color() const;
    void setColor(Ref<NSColor> color);

    /// The line's thickness in points, half of which lies inside the box and shows; 0 or less means the
    /// thinnest line that the device shows. Default 1.
    std::int64_t height() const { return _height.get(); }
    void setHeight(std::int64_t height) { _height.set(height); }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuBox() override;

private:
    RetainProperty<NSColor> _color;
    PlainProperty<std::int64_t> _height;
};
