#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

#include <cstddef>
#include <cstdint>
#include <optional>

class NSAttributedString;
class NSColor;
class NSEvent;
class NSFont;
class NSImage;
class NSString;
class NSTableView;
class NSView;

/// What a press on a cell hits, and what its table then does.
using NSCellHitResult = std::uint64_t;
/// Nothing that takes presses: the row is selected.
inline constexpr NSCellHitResult NSCellHitNone = 0;
/// Something that has dealt with the press by now: nothing more is done.
inline constexpr NSCellHitResult NSCellHitContentArea = 1;
/// The cell is asked to track the press (`trackMouse`), and the row is selected unless that answers yes.
inline constexpr NSCellHitResult NSCellHitTrackableArea = 4;

/// Draws the rows of a column, one after the other, and takes the presses on them: one cell serves all rows.
/// Before each use the table gives it the row's value (`setObjectValue`), whether it is `highlighted`, and
/// the delegate its say. Setters ask for no redraw.
class TESSALINE_EXPORT NSCell : public NSObject
{
public:
    NSCell();

    /// Set-up after loading from an interface file.
    virtual void awakeFromNib() {}

    /// A cell that is like this one; no zones exist.
    virtual Ref<NSCell> copyWithZone(std::nullptr_t zone) const;

    /// Takes the value of a row over: an `NSString` or `NSAttributedString` as text, an `NSNumber` as the
    /// text of that number, null and all others as an empty text.
    virtual void setObjectValue(NSObject* value);

    /// The cell's text. Empty by default and for null.
    Ref<NSString> stringValue() const;
    virtual void setStringValue(Ref<NSString> text);
    /// The text with the attributes that it was given, or else in the cell's font. Null empties it.
    Ref<NSAttributedString> attributedStringValue() const;
    void setAttributedStringValue(Ref<NSAttributedString> text);

    /// The font of a text that comes without attributes. Default null, for "Arial" 12.
    virtual Ref<NSFont> font() const;
    virtual void setFont(Ref<NSFont> font);

    /// Default null, for none.
    Ref<NSImage> image() const;
    void setImage(Ref<NSImage> image);

    /// Initially enabled.
    bool isEnabled() const { return _enabled; }
    void setEnabled(bool enabled) { _enabled = enabled; }

    /// Whether the row is drawn as a selected one. Default no.
    bool isHighlighted() const { return _highlighted; }
    void setHighlighted(bool highlighted) { _highlighted = highlighted; }

    /// Draws the cell into `frame`, in the coordinates of `view`: its interior, which here is nothing.
    virtual void drawWithFrame_inView(NSRect frame, NSView* view);
    virtual void drawInteriorWithFrame_inView(NSRect frame, NSView* view);

    /// The background of selected rows in `view`: `alternateSelectedControlColor` while that is a table which
    /// has the keyboard, else `secondarySelectedControlColor`.
    virtual Ref<NSColor> highlightColorWithFrame_inView(NSRect frame, NSView* view) const;

    /// What a press hits. Here, `NSCellHitTrackableArea`.
    virtual NSCellHitResult hitTestForEvent_inRect_ofView(NSEvent* event, NSRect frame, NSView* view);
    /// Takes a press. Whether that is all that it does; here no.
    virtual bool trackMouse_inRect_ofView_untilMouseUp(NSEvent* event, NSRect frame, NSView* view,
                                                       bool untilMouseUp);

    // Assistive technology, and the keyboard.

    /// What the row says: here, the cell's text. Null for nothing.
    virtual Ref<NSString> accessibilityLabel() const;
    /// Whether the row is checked. Without a value, as here, if it has no check.
    virtual std::optional<bool> accessibilityChecked() const { return std::nullopt; }
    /// Does what a press on the check of a row does, for a cell that has one.
    virtual void performCheckOfRow_inView(std::int64_t row, NSTableView* view);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    NSCell(const NSCell& other);
    ~NSCell() override;

    /// A text in `color` where it has none of its own, or if that is null in black, grey while the cell is
    /// disabled, white while it is highlighted.
    Ref<NSAttributedString> text_inColor(Ref<NSAttributedString> text, Ref<NSColor> color) const;
    /// Draws a text in one line from the top of `frame`, with an ellipsis where there is not enough room,
    /// in that colour.
    void drawText_inFrame(const NSAttributedString& text, NSRect frame, const Ref<NSColor>& color);

private:
    Ref<NSAttributedString> _attributedText; // null if `_text` counts
    Ref<NSString> _text;                     // never null
    Ref<NSFont> _font;
    Ref<NSImage> _image;
    bool _enabled = true;
    bool _highlighted = false;
};
