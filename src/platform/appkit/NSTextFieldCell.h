#pragma once

#include "platform/appkit/NSCell.h"

/// A cell that shows its text from the top of its frame, with a border around it and a background behind it
/// if it has such. There are 2 points of room at either side of the text; without wrapping, an ellipsis
/// stands where there is not enough. The text is black, white in a highlighted row, grey while the cell is
/// disabled, if it has no colour of its own.
class TESSALINE_EXPORT NSTextFieldCell : public NSCell
{
public:
    /// Points left and right of the text, within the rectangle that it is drawn in.
    static constexpr double kTextInset = 2.0;

    NSTextFieldCell();

    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// The colour of a text that comes without one. Default null, for those above.
    Ref<NSColor> textColor() const;
    void setTextColor(Ref<NSColor> color);

    /// Whether there is a border that takes 3 points at each edge. Default no.
    bool isBezeled() const { return _bezeled; }
    void setBezeled(bool bezeled) { _bezeled = bezeled; }

    /// Whether the background is filled. Default no.
    bool drawsBackground() const { return _drawsBackground; }
    void setDrawsBackground(bool draws) { _drawsBackground = draws; }
    /// Default white. Null fills with nothing.
    Ref<NSColor> backgroundColor() const;
    void setBackgroundColor(Ref<NSColor> color);

    /// Whether the text is broken into lines. Default no.
    bool wraps() const { return _wraps; }
    void setWraps(bool wraps) { _wraps = wraps; }
    /// Whether the text is one line that moves with the caret while it is edited, whatever `wraps` says.
    /// Default no.
    bool isScrollable() const { return _scrollable; }
    void setScrollable(bool scrollable) { _scrollable = scrollable; }

    /// What a border leaves of a cell's bounds for the text and the room at its sides.
    virtual NSRect drawingRectForBounds(NSRect bounds) const;

    /// Draws background and border, then the text.
    void drawWithFrame_inView(NSRect frame, NSView* view) override;
    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    NSTextFieldCell(const NSTextFieldCell& other);
    ~NSTextFieldCell() override;

private:
    friend class NSTextField;

    void drawFaceWithFrame(NSRect frame) const;

    Ref<NSColor> _textColor;
    Ref<NSColor> _backgroundColor;
    bool _bezeled = false;
    bool _drawsBackground = false;
    bool _wraps = false;
    bool _scrollable = false;
};
