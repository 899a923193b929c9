#include "window/ZuCheckTableHeaderView.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTableView.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSImage.h"

namespace
{

constexpr SEL kSetHeaderCheckItem{"setHeaderCheckItem:"};

constexpr std::int32_t kUnchecked = 0;
constexpr std::int32_t kChecked = 1;
constexpr std::int32_t kDefaultOffset = 6;
constexpr double kPressMargin = 2.0; // right of the image

constexpr std::array kProperties{
    property<&ZuCheckTableHeaderView::showChecked, &ZuCheckTableHeaderView::setShowChecked>("showChecked"),
    property<&ZuCheckTableHeaderView::isChecked, &ZuCheckTableHeaderView::setIsChecked>("isChecked"),
    property<&ZuCheckTableHeaderView::imageOffset, &ZuCheckTableHeaderView::setImageOffset>("imageOffset"),
};

/// A picture among the main bundle's resources, with its name; null if there is none.
Ref<NSImage> resource(const char* name)
{
    const Ref<NSString> path = NSBundle::mainBundle()->pathForResource_ofType(
        NSString::stringWithUTF8String(name).get(), NSString::stringWithUTF8String("png").get());
    Ref<NSImage> image = make<NSImage>()->initByReferencingFile(path.get());
    if (image) {
        image->setName(name);
    }
    return image;
}

} // namespace

constinit const ClassTable ZuCheckTableHeaderView::table{
    "ZuCheckTableHeaderView", &NSTableHeaderView::table, kProperties, {}, makeObject<ZuCheckTableHeaderView>};

const ClassTable& ZuCheckTableHeaderView::classTable() const
{
    return table;
}

ZuCheckTableHeaderView::ZuCheckTableHeaderView() = default;

ZuCheckTableHeaderView::~ZuCheckTableHeaderView() = default;

ZuCheckTableHeaderView* ZuCheckTableHeaderView::initWithFrame(NSRect frame)
{
    NSTableHeaderView::initWithFrame(frame);
    return this;
}

void ZuCheckTableHeaderView::awakeFromNib()
{
    _checkImage[kChecked] = resource("content-check-yes");
    _checkImage[kUnchecked] = resource("content-check-no");
    _isChecked = kUnchecked;
    _imageOffset = kDefaultOffset;
    setShowChecked(true);
}

Ref<NSImage> ZuCheckTableHeaderView::image() const
{
    const auto place = static_cast<std::size_t>(_isChecked);
    return place < _checkImage.size() ? _checkImage[place] : nullptr;
}

void ZuCheckTableHeaderView::drawRect(NSRect rect)
{
    NSTableHeaderView::drawRect(rect);
    const Ref<NSImage> shown = _showChecked ? image() : nullptr;
    if (!shown) {
        return;
    }
    const auto [width, height] = shown->size();
    shown->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
        NSMakeRect(_imageOffset, rect.origin.y + (rect.size.height - height) * 0.5, width, height),
        NSZeroRect, NSCompositingOperation::SourceOver, 1.0, true, nullptr);
}

void ZuCheckTableHeaderView::mouseDown(NSEvent* event)
{
    const Ref<NSImage> shown = image();
    const double width = shown ? shown->size().width : 0.0;
    const NSPoint point = convertPoint_fromView(event->locationInWindow(), nullptr);
    if (_showChecked && point.x < _imageOffset + width + kPressMargin) {
        toggle();
    } else {
        NSTableHeaderView::mouseDown(event);
    }
}

void ZuCheckTableHeaderView::toggle()
{
    const Ref<ZuCheckTableHeaderView> self(this); // the delegate may let it go
    _isChecked = _isChecked == kUnchecked ? kChecked : kUnchecked;
    const NSTableView* rows = tableView();
    if (const Ref<NSObject> delegate = rows != nullptr ? rows->delegate() : nullptr) {
        delegate->performSelector_withObject(kSetHeaderCheckItem,
                                             NSNumber::numberWithInteger(_isChecked).get());
    }
    setNeedsDisplay(true);
}

NSAccessibilityRole ZuCheckTableHeaderView::accessibilityRole() const
{
    return _showChecked ? NSAccessibilityRole::CheckBox : NSTableHeaderView::accessibilityRole();
}

std::optional<bool> ZuCheckTableHeaderView::accessibilityChecked() const
{
    return _showChecked ? std::optional(_isChecked != kUnchecked) : std::nullopt;
}

bool ZuCheckTableHeaderView::accessibilityPerformPress()
{
    if (_showChecked) {
        toggle();
    }
    return _showChecked;
}
