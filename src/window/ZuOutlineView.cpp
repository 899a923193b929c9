#include "window/ZuOutlineView.h"

#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSImage.h"

#include <array>

namespace
{

constexpr std::array kProperties{
    property<&ZuOutlineView::backgroundImage_, &ZuOutlineView::setBackgroundImage_>("backgroundImage_"),
};

} // namespace

constinit const ClassTable ZuOutlineView::table{
    "ZuOutlineView", &NSOutlineView::table, kProperties, {}, makeObject<ZuOutlineView>};

const ClassTable& ZuOutlineView::classTable() const
{
    return table;
}

ZuOutlineView* ZuOutlineView::initWithFrame(NSRect frame)
{
    NSOutlineView::initWithFrame(frame);
    return this;
}

Ref<NSImage> ZuOutlineView::backgroundImage_() const
{
    return _backgroundImage_.get();
}

void ZuOutlineView::setBackgroundImage_(NSImage* image)
{
    _backgroundImage_ = image;
}
