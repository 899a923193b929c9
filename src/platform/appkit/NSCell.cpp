#include "platform/appkit/NSCell.h"

#include "platform/appkit/NSTableView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&NSCell::stringValue, &NSCell::setStringValue>("stringValue"),
    property<&NSCell::font, &NSCell::setFont>("font"),
    property<&NSCell::image, &NSCell::setImage>("image"),
    property<&NSCell::isEnabled, &NSCell::setEnabled>("enabled"),
};

} // namespace

constinit const ClassTable NSCell::table{"NSCell", &NSObject::table, kProperties, {}, makeObject<NSCell>};

const ClassTable& NSCell::classTable() const
{
    return table;
}

NSCell::NSCell() : _text(NSString::stringWithCharacters(u"")) {}

NSCell::NSCell(const NSCell& other)
    : NSObject(), // NOLINT(readability-redundant-member-init): not to GCC, in a copy
      _attributedText(other._attributedText), _text(other._text), _font(other._font), _image(other._image),
      _enabled(other._enabled), _highlighted(other._highlighted)
{
}

NSCell::~NSCell() = default;

Ref<NSCell> NSCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new NSCell(*this));
}

void NSCell::setObjectValue(NSObject* value)
{
    if (auto* attributed = dynamic_cast<NSAttributedString*>(value)) {
        setAttributedStringValue(attributed);
    } else if (const auto* number = dynamic_cast<NSNumber*>(value)) {
        setStringValue(NSString::stringWithUTF8String(
            number->isInteger() ? std::to_string(number->integerValue()).c_str()
                                : NSStringFromNumber(number->doubleValue()).c_str()));
    } else {
        setStringValue(dynamic_cast<NSString*>(value));
    }
}

Ref<NSString> NSCell::stringValue() const
{
    return _attributedText ? _attributedText->string() : _text;
}

void NSCell::setStringValue(Ref<NSString> text)
{
    _attributedText = nullptr;
    _text = text ? std::move(text) : NSString::stringWithCharacters(u"");
}

Ref<NSAttributedString> NSCell::attributedStringValue() const
{
    if (_attributedText) {
        return _attributedText;
    }
    return make<NSAttributedString>()->initWithString_attributes(_text.get(),
                                                                 {{NSFontAttributeName, font()}});
}

void NSCell::setAttributedStringValue(Ref<NSAttributedString> text)
{
    setStringValue(nullptr);
    _attributedText = text ? text->copy() : nullptr;
}

Ref<NSFont> NSCell::font() const
{
    return _font;
}

void NSCell::setFont(Ref<NSFont> font)
{
    _font = std::move(font);
}

Ref<NSImage> NSCell::image() const
{
    return _image;
}

void NSCell::setImage(Ref<NSImage> image)
{
    _image = std::move(image);
}

void NSCell::drawWithFrame_inView(NSRect frame, NSView* view)
{
    drawInteriorWithFrame_inView(frame, view);
}

void NSCell::drawInteriorWithFrame_inView(NSRect /*frame*/, NSView* /*view*/) {}

Ref<NSColor> NSCell::highlightColorWithFrame_inView(NSRect /*frame*/, NSView* view) const
{
    const auto* rows = dynamic_cast<NSTableView*>(view);
    return rows != nullptr && rows->hasKeyboard() ? NSColor::alternateSelectedControlColor()
                                                  : NSColor::secondarySelectedControlColor();
}

NSCellHitResult NSCell::hitTestForEvent_inRect_ofView(NSEvent* /*event*/, NSRect /*frame*/, NSView* /*view*/)
{
    return NSCellHitTrackableArea;
}

bool NSCell::trackMouse_inRect_ofView_untilMouseUp(NSEvent* /*event*/, NSRect /*frame*/, NSView* /*view*/,
                                                   bool /*untilMouseUp*/)
{
    return false;
}

Ref<NSString> NSCell::accessibilityLabel() const
{
    return stringValue();
}

void NSCell::performCheckOfRow_inView(std::int64_t /*row*/, NSTableView* /*view*/) {}

Ref<NSAttributedString> NSCell::text_inColor(Ref<NSAttributedString> text, Ref<NSColor> color) const
{
    if (!color) {
        color = !_enabled ? NSColor::grayColor() : _highlighted ? NSColor::whiteColor() : nullptr;
    }
    if (!color) {
        return text;
    }
    const Ref<NSMutableAttributedString> colored =
        make<NSMutableAttributedString>()->initWithAttributedString(text.get());
    colored->addMissingAttribute({NSForegroundColorAttributeName, std::move(color)});
    return colored;
}

void NSCell::drawText_inFrame(const NSAttributedString& text, NSRect frame, const Ref<NSColor>& color)
{
    text_inColor(text.truncatedToWidth(frame.size.width), color)->drawInRect(frame);
}
