#include "window/ZuTableCheckImageCell.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTableView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

namespace
{

constexpr SEL kSetCheckItem{"setCheckItem:"};

constexpr std::int32_t kUnchecked = 0;
constexpr std::int32_t kDisabled = 2;
constexpr std::int32_t kDefaultOffset = 6;
constexpr double kPressMargin = 2.0; // right of the image
constexpr double kTextGap = 4.0;     // between image and text
constexpr double kTextSize = 12.0;

constexpr std::array kProperties{
    property<&ZuTableCheckImageCell::isChecked, &ZuTableCheckImageCell::setIsChecked>("isChecked"),
    property<&ZuTableCheckImageCell::imageOffset, &ZuTableCheckImageCell::setImageOffset>("imageOffset"),
};

} // namespace

constinit const ClassTable ZuTableCheckImageCell::table{
    "ZuTableCheckImageCell", &NSCell::table, kProperties, {}, makeObject<ZuTableCheckImageCell>};

const ClassTable& ZuTableCheckImageCell::classTable() const
{
    return table;
}

ZuTableCheckImageCell::ZuTableCheckImageCell() = default;

ZuTableCheckImageCell::ZuTableCheckImageCell(const ZuTableCheckImageCell& other) = default;

ZuTableCheckImageCell::~ZuTableCheckImageCell() = default;

void ZuTableCheckImageCell::awakeFromNib()
{
    _isChecked = kUnchecked;
    _imageOffset = kDefaultOffset;
    _checkImage = {};
}

Ref<NSCell> ZuTableCheckImageCell::copyWithZone(std::nullptr_t /*zone*/) const
{
    return Ref<NSCell>::adopt(new ZuTableCheckImageCell(*this));
}

void ZuTableCheckImageCell::loadImage_withSecond_withThird(NSImage* unchecked, NSImage* checked,
                                                           NSImage* disabled)
{
    const std::array images{unchecked, checked, disabled};
    for (std::size_t state = 0; state < images.size(); ++state) {
        if (!_checkImage[state].get()) {
            _checkImage[state] = images[state];
        }
    }
}

Ref<NSImage> ZuTableCheckImageCell::imageOfState(std::int32_t state) const
{
    const auto place = static_cast<std::size_t>(state);
    return place < _checkImage.size() ? _checkImage[place].get() : nullptr;
}

void ZuTableCheckImageCell::drawWithFrame_inView(NSRect frame, NSView* /*view*/)
{
    if (!imageOfState(kUnchecked)) {
        NSLog("ZuTableCheckImageCell drawWithFrame:inView:: checkImage[0] has to be loaded before");
        return;
    }
    double x = _imageOffset;
    if (const Ref<NSImage> image = imageOfState(isEnabled() ? _isChecked : kDisabled)) {
        const auto [width, height] = image->size();
        image->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
            NSMakeRect(x, frame.origin.y + (frame.size.height - height) * 0.5, width, height), NSZeroRect,
            NSCompositingOperation::SourceOver, 1.0, true, nullptr);
        x += width;
    }
    const Ref<NSAttributedString> line = make<NSAttributedString>()->initWithString_attributes(
        stringValue().get(), {{NSFontAttributeName, NSFont::fontWithName_size("Arial", kTextSize)}});
    line->drawAtPoint({x + kTextGap, frame.origin.y + (frame.size.height - line->size().height) * 0.5});
}

NSCellHitResult ZuTableCheckImageCell::hitTestForEvent_inRect_ofView(NSEvent* event, NSRect /*frame*/,
                                                                     NSView* view)
{
    if (event->type() != NSEventType::LeftMouseDown) {
        return NSCellHitContentArea;
    }
    const NSPoint point = view->convertPoint_fromView(event->locationInWindow(), nullptr);
    auto* const rows = dynamic_cast<NSTableView*>(view);
    const std::int64_t row = rows != nullptr ? rows->rowAtPoint(point) : -1;
    const std::vector<Ref<NSView>> subviews = view->subviews();
    for (const Ref<NSView>& subview : subviews) {
        subview->removeFromSuperview();
    }
    const Ref<NSImage> image = imageOfState(_isChecked);
    const double width = image ? image->size().width : 0.0;
    if (!(_imageOffset < point.x && point.x < width + _imageOffset + kPressMargin)) {
        return NSCellHitNone;
    }
    performCheckOfRow_inView(row, rows);
    return NSCellHitContentArea;
}

void ZuTableCheckImageCell::performCheckOfRow_inView(std::int64_t row, NSTableView* view)
{
    if (const Ref<NSObject> delegate = view != nullptr ? view->delegate() : nullptr) {
        delegate->performSelector_withObject(kSetCheckItem, NSNumber::numberWithInteger(row).get());
    }
}
