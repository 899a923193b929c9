#pragma once

#include "platform/appkit/NSButtonCell.h"
#include "platform/foundation/Property.h"
#include "platform/foundation/Weak.h"

class ZuSmsRow;

/// A message's row as a button: a small picture at the left, the title beside it, the message in grey below
/// that, and a red mark if it could not be sent. While names can be edited (`editNameFlag`) the cell tells
/// the presses on picture and title from those beside them.
///
/// As one cell serves all rows, the application sets picture, title, message and type before each is drawn.
/// The cell's own `image` does not show, but keeps its room.
class TESSALINE_EXPORT PelSmsTableCheckImageCell : public NSButtonCell
{
public:
    PelSmsTableCheckImageCell();

    /// Takes the picture away, has the title stand at the picture's upper edge again, and switches the
    /// editing of names off; `sentSmsType` and `buttonContents` stay.
    void awakeFromNib() override;

    /// Shares the picture, which the copy does not keep alive either.
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// The picture, in its own size, or if it is higher than the cell, as a square 2 points lower than that.
    /// Not kept alive: once it is gone there is none. Default null; the title then stands 4 points from the
    /// left edge, and begins in the middle of the height.
    void setFrontImage(NSImage* image);

    /// Whether the title stands in the middle of the height, rather than at the picture's upper edge. Default
    /// no.
    bool isTitleAlignCenter() const { return _isTitleAlignCenter; }
    void setIsTitleAlignCenter(bool center) { _isTitleAlignCenter = center; }

    /// Whether the user can edit the row's name. Default no.
    bool editNameFlag() const { return _editNameFlag; }
    void setEditNameFlag(bool edit) { _editNameFlag = edit; }

    /// 5 if the message could not be sent: then "Failed" shows, from 250 points right of the title's left
    /// edge. Others are for the application. Default 0.
    std::int32_t sentSmsType() const { return _sentSmsType; }
    void setSentSmsType(std::int32_t type) { _sentSmsType = type; }

    /// The message, wrapped from the title's lower edge to that of the cell. Default null, for none. Copied;
    /// can be read and written from any thread.
    Ref<NSString> buttonContents() const;
    void setButtonContents(Ref<NSString> contents);

    /// Draws nothing: the picture is drawn with the title.
    void drawImage_withFrame_inView(NSImage* /*image*/, NSRect /*frame*/, NSView* /*view*/) override {}
    /// Draws the whole row. Returns `frame`.
    NSRect drawTitle_withFrame_inView(NSAttributedString* title, NSRect frame, NSView* view) override;

    /// While names can be edited, takes a press of the left button on picture or title: as far right as the
    /// two reach from the left edge of `view`, where the column has to begin, the title in "Arial" 13, and 5
    /// points more. Any press of the left button, on them or not, takes the subviews of `view` away, such as
    /// a field in which a name is edited. Other events are taken.
    NSCellHitResult hitTestForEvent_inRect_ofView(NSEvent* event, NSRect frame, NSView* view) override;

    /// The title, the mark and the message.
    Ref<NSString> accessibilityLabel() const override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    PelSmsTableCheckImageCell(const PelSmsTableCheckImageCell& other);
    ~PelSmsTableCheckImageCell() override;

private:
    ZuSmsRow row() const;

    Weak<NSImage> _frontImage;
    bool _isTitleAlignCenter = false;
    bool _editNameFlag = false;
    std::int32_t _sentSmsType = 0;
    CopyProperty<NSString> _buttonContents;
};
