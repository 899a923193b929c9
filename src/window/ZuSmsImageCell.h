#pragma once

#include "platform/appkit/NSTextFieldCell.h"
#include "platform/foundation/Property.h"
#include "platform/foundation/Weak.h"

class ZuSmsRow;

/// A message's row in a column of texts: a small picture at the left, the cell's text as title beside it, the
/// message in grey below that, and a red mark if it could not be sent.
///
/// As one cell serves all rows, the application sets picture, text, message and type before each is drawn.
/// The cell's own `image` does not show.
class TESSALINE_EXPORT ZuSmsImageCell : public NSTextFieldCell
{
public:
    ZuSmsImageCell();

    /// Takes the picture away and has the title stand at the picture's upper edge again; `sentSmsType` and
    /// `buttonContents` stay.
    void awakeFromNib() override;

    /// Shares the picture, which the copy does not keep alive either.
    Ref<NSCell> copyWithZone(std::nullptr_t zone) const override;

    /// The picture, in its own size, or if it is higher than the cell, as a square 2 points lower than that.
    /// Not kept alive: once it is gone there is none. Default null; the title then stands at the left edge,
    /// in the middle of the height.
    void setFrontImage(NSImage* image);

    /// Whether the title stands in the middle of the height, rather than at the picture's upper edge. Default
    /// no.
    bool isTitleAlignCenter() const { return _isTitleAlignCenter; }
    void setIsTitleAlignCenter(bool center) { _isTitleAlignCenter = center; }

    /// 5 if the message could not be sent: then "Failed" shows, from 250 points right of the title's left
    /// edge. Others are for the application. Default 0.
    std::int32_t sentSmsType() const { return _sentSmsType; }
    void setSentSmsType(std::int32_t type) { _sentSmsType = type; }

    /// The message, wrapped from the title's lower edge to that of the cell. Default null, for none. Copied;
    /// can be read and written from any thread.
    Ref<NSString> buttonContents() const;
    void setButtonContents(Ref<NSString> contents);

    void drawWithFrame_inView(NSRect frame, NSView* view) override;

    /// The title, the mark and the message.
    Ref<NSString> accessibilityLabel() const override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ZuSmsImageCell(const ZuSmsImageCell& other);
    ~ZuSmsImageCell() override;

private:
    ZuSmsRow row() const;

    Weak<NSImage> _frontImage;
    bool _isTitleAlignCenter = false;
    std::int32_t _sentSmsType = 0;
    CopyProperty<NSString> _buttonContents;
};
