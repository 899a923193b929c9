#pragma once

#include "platform/appkit/NSCell.h"

/// A cell that looks like a button: its image at the left, its title right of that, each in the middle of the
/// height.
class TESSALINE_EXPORT NSButtonCell : public NSCell
{
public:
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// The title is the cell's text.
    Ref<NSString> title() const;
    void setTitle(Ref<NSString> title);
    Ref<NSAttributedString> attributedTitle() const;
    void setAttributedTitle(Ref<NSAttributedString> title);

    /// Whether a face is drawn behind both. Default no.
    bool isBordered() const { return _bordered; }
    void setBordered(bool bordered) { _bordered = bordered; }

    /// Draws the face of a button.
    static void drawBezelWithFrame(NSRect frame, bool pressed);
    /// Draws the face if there is one, then the image, then the title.
    void drawWithFrame_inView(NSRect frame, NSView* view) override;
    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override;

    /// Draws `image` into `frame`.
    virtual void drawImage_withFrame_inView(NSImage* image, NSRect frame, NSView* view);
    /// Draws `title` into `frame`, in one line and in the colours of a text field's cell. Returns what it
    /// takes: `frame`.
    virtual NSRect drawTitle_withFrame_inView(NSAttributedString* title, NSRect frame, NSView* view);

    const ClassTable& classTable() const override;
    static const ClassTable table;

private:
    bool _bordered = false;
};
