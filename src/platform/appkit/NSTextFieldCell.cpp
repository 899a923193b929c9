#include "platform/appkit/NSTextFieldCell.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

#include <array>

namespace
{

constexpr double kTextInset = 2.0;

constexpr std::array kProperties{
    property<&NSTextFieldCell::textColor, &NSTextFieldCell::setTextColor>("textColor"),
};

} // namespace

constinit const ClassTable NSTextFieldCell::table{"NSTextFieldCell", &NSCell::table, kProperties, {}};

const ClassTable& NSTextFieldCell::classTable() const
{
    return table;
}

NSTextFieldCell::NSTextFieldCell() = default;

NSTextFieldCell::NSTextFieldCell(const NSTextFieldCell& other) = default;

NSTextFieldCell::~NSTextFieldCell() = default;

Ref<NSCell> NSTextFieldCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new NSTextFieldCell(*this));
}

Ref<NSColor> NSTextFieldCell::textColor() const
{
    return _textColor;
}

void NSTextFieldCell::setTextColor(Ref<NSColor> color)
{
    _textColor = std::move(color);
}

void NSTextFieldCell::drawInteriorWithFrame_inView(NSRect frame, NSView* /*view*/)
{
    drawText_inFrame(*attributedStringValue(), NSInsetRect(frame, kTextInset, 0.0), _textColor);
}
