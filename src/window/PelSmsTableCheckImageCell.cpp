#include "window/PelSmsTableCheckImageCell.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "window/ZuSmsRow.h"

#include <array>

namespace
{

constexpr double kPressMargin = 5.0;      // right of the title
constexpr double kPressedTextSize = 13.0; // of the title, whatever font it shows in

constexpr std::array kProperties{
    property<&PelSmsTableCheckImageCell::isTitleAlignCenter,
             &PelSmsTableCheckImageCell::setIsTitleAlignCenter>("isTitleAlignCenter"),
    property<&PelSmsTableCheckImageCell::editNameFlag, &PelSmsTableCheckImageCell::setEditNameFlag>(
        "editNameFlag"),
    property<&PelSmsTableCheckImageCell::sentSmsType, &PelSmsTableCheckImageCell::setSentSmsType>(
        "sentSmsType"),
    property<&PelSmsTableCheckImageCell::buttonContents, &PelSmsTableCheckImageCell::setButtonContents>(
        "buttonContents"),
};

} // namespace

constinit const ClassTable PelSmsTableCheckImageCell::table{"PelSmsTableCheckImageCell",
                                                            &NSButtonCell::table,
                                                            kProperties,
                                                            {},
                                                            makeObject<PelSmsTableCheckImageCell>};

const ClassTable& PelSmsTableCheckImageCell::classTable() const
{
    return table;
}

PelSmsTableCheckImageCell::PelSmsTableCheckImageCell() = default;

PelSmsTableCheckImageCell::PelSmsTableCheckImageCell(const PelSmsTableCheckImageCell& other) = default;

PelSmsTableCheckImageCell::~PelSmsTableCheckImageCell() = default;

void PelSmsTableCheckImageCell::awakeFromNib()
{
    _frontImage = {};
    _isTitleAlignCenter = false;
    _editNameFlag = false;
}

Ref<NSCell> PelSmsTableCheckImageCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new PelSmsTableCheckImageCell(*this));
}

void PelSmsTableCheckImageCell::setFrontImage(NSImage* image)
{
    _frontImage = image;
}

Ref<NSString> PelSmsTableCheckImageCell::buttonContents() const
{
    return _buttonContents.get();
}

void PelSmsTableCheckImageCell::setButtonContents(Ref<NSString> contents)
{
    _buttonContents.set(contents);
}

ZuSmsRow PelSmsTableCheckImageCell::row() const
{
    return {_frontImage.get(), _isTitleAlignCenter, _sentSmsType, buttonContents(),
            ZuSmsRow::WithoutPicture::Gap};
}

NSRect PelSmsTableCheckImageCell::drawTitle_withFrame_inView(NSAttributedString* title, NSRect frame,
                                                             NSView* view)
{
    const ZuSmsRow parts = row();
    const NSRect place = parts.drawPicture(frame, title->size());
    NSButtonCell::drawTitle_withFrame_inView(title, place, view);
    parts.drawTexts(frame, place);
    return frame;
}

NSCellHitResult PelSmsTableCheckImageCell::hitTestForEvent_inRect_ofView(NSEvent* event, NSRect /*frame*/,
                                                                         NSView* view)
{
    if (event->type() != NSEventType::LeftMouseDown) {
        return NSCellHitContentArea;
    }
    const double x = view->convertPoint_fromView(event->locationInWindow(), nullptr).x;
    const Ref<NSImage> picture = _frontImage.get();
    const double pictureWidth = picture ? picture->size().width : 0.0;
    const double titleWidth =
        title()
            ->sizeWithAttributes(
                {{NSFontAttributeName, NSFont::fontWithName_size("Arial", kPressedTextSize)}})
            .width;
    const Ref<NSCell> self(this); // the subviews may be the last that have a hold of the table
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): of a list that they leave
    const std::vector<Ref<NSView>> subviews = view->subviews();
    for (const Ref<NSView>& subview : subviews) {
        subview->removeFromSuperview();
    }
    return _editNameFlag && pictureWidth + kPressMargin + titleWidth >= x ? NSCellHitContentArea
                                                                          : NSCellHitNone;
}

Ref<NSString> PelSmsTableCheckImageCell::accessibilityLabel() const
{
    return row().label(*stringValue());
}
