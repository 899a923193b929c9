#pragma once

#include "platform/appkit/NSCell.h"
#include "platform/foundation/Weak.h"

#include <array>

/// The first column of a table with checks: in each row an image that shows whether the row is checked, and
/// perhaps a text right of it. A press on the image tells the table's delegate, by the message
/// `setCheckItem:` with the number of the row, which the delegate has to understand; the cell itself changes
/// nothing.
///
/// Image and text keep their distance from the table's left edge, whatever the cell's frame. As one cell
/// serves all rows, the delegate, who keeps which are checked, sets `isChecked` before each is drawn.
class TESSALINE_EXPORT ZuTableCheckImageCell : public NSCell
{
public:
    ZuTableCheckImageCell();

    /// Takes the images away and sets the properties to their defaults; in a cell made in code all are 0.
    void awakeFromNib() override;

    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// Sets the images of unchecked, checked and disabled rows, each unless there is one already. The cell
    /// does not keep them alive: once one is gone, its place can be taken by another.
    void loadImage_withSecond_withThird(NSImage* unchecked, NSImage* checked, NSImage* disabled);

    /// Whether the row is checked: 0 for no, 1 for yes; 2 shows it like a disabled one. With any other there
    /// is no image. Default 0.
    std::int32_t isChecked() const { return _isChecked; }
    void setIsChecked(std::int32_t checked) { _isChecked = checked; }

    /// From the table's left edge to the image's, in points. Default 6.
    std::int32_t imageOffset() const { return _imageOffset; }
    void setImageOffset(std::int32_t offset) { _imageOffset = offset; }

    /// Draws the image in the middle of the height, and the text, black in "Arial" 12, behind it. Without an
    /// image of unchecked rows, which is reported, nothing is drawn; without another, the text alone.
    void drawWithFrame_inView(NSRect frame, NSView* view) override;

    /// Takes a press of the left button on the image or less than 2 points right of it. Any press of the left
    /// button, on the image or not, takes the subviews of `view` away, such as a field in which a text is
    /// edited. In a view that is no table there is no one to be told.
    NSCellHitResult hitTestForEvent_inRect_ofView(NSEvent* event, NSRect frame, NSView* view) override;

    /// Of disabled cells, too.
    std::optional<bool> accessibilityChecked() const override { return _isChecked != 0; }
    /// Tells the table's delegate.
    void performCheckOfRow_inView(std::int64_t row, NSTableView* view) override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ZuTableCheckImageCell(const ZuTableCheckImageCell& other);
    ~ZuTableCheckImageCell() override;

private:
    /// Null for none.
    Ref<NSImage> imageOfState(std::int32_t state) const;

    std::array<Weak<NSImage>, 3> _checkImage; // by state
    std::int32_t _isChecked = 0;
    std::int32_t _imageOffset = 0;
};
