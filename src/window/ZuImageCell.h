#pragma once

#include "platform/appkit/NSImageCell.h"
#include "platform/foundation/Weak.h"

/// An image with a caption over it: of one line, in the middle of the height, from a fixed distance to the
/// cell's left edge. It is neither cut off nor shortened; white in the selected rows of a table, black
/// elsewhere.
///
/// As one cell serves all rows of a column, the application sets the caption before each row is drawn. The
/// cell keeps neither caption nor font alive: they are null once they are gone.
class TESSALINE_EXPORT ZuImageCell : public NSImageCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// The caption. Default null, for none.
    Ref<NSString> description() const;
    void setDescription(NSString* description);

    /// From the cell's left edge to the caption's, in points. Default 0.
    std::int64_t offset() const { return _offset; }
    void setOffset(std::int64_t offset) { _offset = offset; }

    /// The caption's font. Default null: the first drawing takes over the font of the table that it is for,
    /// and if that has none, there is no caption.
    Ref<NSFont> font() const override;
    void setFont(Ref<NSFont> font) override;

    /// Draws the image, then the caption.
    void drawWithFrame_inView(NSRect frame, NSView* view) override;

    /// The caption.
    Ref<NSString> accessibilityLabel() const override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    Weak<NSString> _description;
    std::int64_t _offset = 0;
    Weak<NSFont> _font;
};
