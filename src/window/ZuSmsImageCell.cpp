#include "window/ZuSmsImageCell.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSImage.h"
#include "window/ZuSmsRow.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&ZuSmsImageCell::isTitleAlignCenter, &ZuSmsImageCell::setIsTitleAlignCenter>(
        "isTitleAlignCenter"),
    property<&ZuSmsImageCell::sentSmsType, &ZuSmsImageCell::setSentSmsType>("sentSmsType"),
    property<&ZuSmsImageCell::buttonContents, &ZuSmsImageCell::setButtonContents>("buttonContents"),
};

} // namespace

constinit const ClassTable ZuSmsImageCell::table{
    "ZuSmsImageCell", &NSTextFieldCell::table, kProperties, {}, makeObject<ZuSmsImageCell>};

const ClassTable& ZuSmsImageCell::classTable() const
{
    return table;
}

ZuSmsImageCell::ZuSmsImageCell() = default;

ZuSmsImageCell::ZuSmsImageCell(const ZuSmsImageCell& other) = default;

ZuSmsImageCell::~ZuSmsImageCell() = default;

void ZuSmsImageCell::awakeFromNib()
{
    _frontImage = {};
    _isTitleAlignCenter = false;
    NSTextFieldCell::awakeFromNib();
}

Ref<NSCell> ZuSmsImageCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new ZuSmsImageCell(*this));
}

void ZuSmsImageCell::setFrontImage(NSImage* image)
{
    _frontImage = image;
}

Ref<NSString> ZuSmsImageCell::buttonContents() const
{
    return _buttonContents.get();
}

void ZuSmsImageCell::setButtonContents(Ref<NSString> contents)
{
    _buttonContents.set(contents);
}

ZuSmsRow ZuSmsImageCell::row() const
{
    return {_frontImage.get(), _isTitleAlignCenter, _sentSmsType, buttonContents(),
            ZuSmsRow::WithoutPicture::Nothing};
}

void ZuSmsImageCell::drawWithFrame_inView(NSRect frame, NSView* view)
{
    const ZuSmsRow parts = row();
    const NSRect title = parts.drawPicture(frame, attributedStringValue()->size());
    NSTextFieldCell::drawWithFrame_inView(title, view);
    parts.drawTexts(frame, title);
}

Ref<NSString> ZuSmsImageCell::accessibilityLabel() const
{
    return row().label(*stringValue());
}
