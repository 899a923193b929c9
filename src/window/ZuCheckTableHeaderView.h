#pragma once

#include "platform/appkit/NSTableHeaderView.h"

#include <array>

/// The header of a table with checks: over the headers of its columns, at a fixed distance from the left
/// edge, an image that shows whether all rows are checked. A press on it turns that round and tells the
/// table's delegate, by the message `setHeaderCheckItem:` with the new `isChecked`, which the delegate has to
/// understand; the rows are the application's affair.
///
/// The defaults below are set by `awakeFromNib`, in place of what was set before; in a header made in code
/// all are 0, and there are no images. Setters only store: a new value shows at the next redraw.
class TESSALINE_EXPORT ZuCheckTableHeaderView : public NSTableHeaderView
{
public:
    ZuCheckTableHeaderView();

    ZuCheckTableHeaderView* initWithFrame(NSRect frame) override;
    /// Also loads the images, "content-check-no" and "content-check-yes", which are resources of type "png"
    /// of the main bundle. One that is not there or cannot be read does not show.
    void awakeFromNib() override;

    /// Whether there is an image at all, and a press on it. Default yes.
    bool showChecked() const { return _showChecked; }
    void setShowChecked(bool shows) { _showChecked = shows; }

    /// Whether all rows are checked: 0 for no, 1 for yes. With any other there is no image, and a press makes
    /// it 0. Default 0.
    std::int32_t isChecked() const { return _isChecked; }
    void setIsChecked(std::int32_t checked) { _isChecked = checked; }

    /// From the left edge to the image's, in points. Default 6.
    std::int32_t imageOffset() const { return _imageOffset; }
    void setImageOffset(std::int32_t offset) { _imageOffset = offset; }

    /// Draws the headers, and over them the image in the middle of the height of `rect`.
    void drawRect(NSRect rect) override;

    /// Takes presses on the image, left of it, and less than 2 points right of it. All others are for the
    /// headers.
    void mouseDown(NSEvent* event) override;

    // Assistive technology meets a check box while there is an image; what it is for, `setAccessibilityLabel`
    // tells.

    NSAccessibilityRole accessibilityRole() const override;
    std::optional<bool> accessibilityChecked() const override;
    /// Does what a press on the image does.
    bool accessibilityPerformPress() override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuCheckTableHeaderView() override;

private:
    /// Null for none.
    Ref<NSImage> image() const;
    void toggle();

    std::array<Ref<NSImage>, 2> _checkImage; // by `isChecked`
    std::int32_t _isChecked = 0;
    std::int32_t _imageOffset = 0;
    bool _showChecked = false;
};
