#include "window/ZuProgressView.h"

#include "platform/foundation/ClassTable.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphics.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr double kBorderWidth = 1.0;
constexpr double kInset = 1.0; // of the done part, on each side

constexpr std::array kProperties{
    property<&ZuProgressView::color_border_, &ZuProgressView::setColor_border_>("color_border_"),
    property<&ZuProgressView::color_unuse_, &ZuProgressView::setColor_unuse_>("color_unuse_"),
    property<&ZuProgressView::color_used_, &ZuProgressView::setColor_used_>("color_used_"),
    property<&ZuProgressView::xRadius_, &ZuProgressView::setXRadius_>("xRadius_"),
    property<&ZuProgressView::yRadius_, &ZuProgressView::setYRadius_>("yRadius_"),
    property<&ZuProgressView::total_, &ZuProgressView::setTotal_>("total_"),
    property<&ZuProgressView::step_, &ZuProgressView::setStep_>("step_"),
};

} // namespace

constinit const ClassTable ZuProgressView::table{
    "ZuProgressView", &NSView::table, kProperties, {}, makeObject<ZuProgressView>};

const ClassTable& ZuProgressView::classTable() const
{
    return table;
}

ZuProgressView::ZuProgressView() = default;

ZuProgressView::~ZuProgressView() = default;

ZuProgressView* ZuProgressView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

void ZuProgressView::awakeFromNib()
{
    setXRadius_(0.0);
    setYRadius_(0.0);
}

NSRect ZuProgressView::doneRect(NSRect bar, double total) const
{
    const double full = std::trunc(bar.size.width - 2.0 * kInset);
    return NSMakeRect(bar.origin.x + kInset, bar.origin.y + kInset, full * step_() / total,
                      bar.size.height - 2.0 * kInset);
}

void ZuProgressView::drawRect(NSRect rect)
{
    NSView::drawRect(rect);
    const Ref<NSBezierPath> track =
        NSBezierPath::bezierPathWithRoundedRect_xRadius_yRadius(rect, xRadius_(), yRadius_());
    track->setLineWidth(kBorderWidth);
    if (const Ref<NSColor> color = color_unuse_()) {
        color->setFill();
        track->fill();
    }
    const double total = total_();
    if (const Ref<NSColor> color = color_used_(); color && total != 0.0) {
        color->set();
        NSRectFill(doneRect(rect, total));
    }
    if (const Ref<NSColor> color = color_border_()) {
        color->setStroke();
        track->stroke();
    }
}

NSAccessibilityRole ZuProgressView::accessibilityRole() const
{
    return NSAccessibilityRole::ProgressIndicator;
}

Ref<NSNumber> ZuProgressView::accessibilityValue() const
{
    const double total = total_();
    const double step = step_();
    const bool known = total > 0.0 && std::isfinite(total) && !std::isnan(step);
    return known ? NSNumber::numberWithDouble(std::clamp(step, 0.0, total)) : nullptr;
}

Ref<NSNumber> ZuProgressView::accessibilityMinValue() const
{
    return NSNumber::numberWithDouble(0.0);
}

Ref<NSNumber> ZuProgressView::accessibilityMaxValue() const
{
    return NSNumber::numberWithDouble(total_());
}

Ref<NSColor> ZuProgressView::color_border_() const
{
    return _color_border_.get();
}

void ZuProgressView::setColor_border_(Ref<NSColor> color)
{
    _color_border_.set(std::move(color));
}

Ref<NSColor> ZuProgressView::color_unuse_() const
{
    return _color_unuse_.get();
}

void ZuProgressView::setColor_unuse_(Ref<NSColor> color)
{
    _color_unuse_.set(std::move(color));
}

Ref<NSColor> ZuProgressView::color_used_() const
{
    return _color_used_.get();
}

void ZuProgressView::setColor_used_(Ref<NSColor> color)
{
    _color_used_.set(std::move(color));
}
