#include "window/ZuOutlineRow.h"

#include "platform/appkit/NSCell.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSOutlineView.h"
#include "platform/foundation/NSAttributes.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"
#include "window/ZuOutlineItem.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace
{

constexpr double kOutdent = 8.0; // of a row, against the outline's indentation
constexpr NSPoint kCountInset{10.0, 2.0};

/// What is left of a number without the digits behind its point. 0 for NaN; beyond the type, its limit.
std::int32_t truncated(double number)
{
    constexpr double kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr double kGreatest = std::numeric_limits<std::int32_t>::max();
    return std::isnan(number) ? 0 : static_cast<std::int32_t>(std::clamp(number, kLeast, kGreatest));
}

Ref<NSString> textOfCount(std::int64_t number)
{
    return NSString::stringWithUTF8String(('(' + std::to_string(number) + ')').c_str());
}

} // namespace

ZuOutlineRow::ZuOutlineRow(const NSCell& cell, Ref<ZuOutlineItem> item) : _cell(cell), _item(std::move(item))
{
}

ZuOutlineRow::~ZuOutlineRow() = default;

std::int64_t ZuOutlineRow::number() const
{
    return _item ? _item->number() : 0;
}

NSRect ZuOutlineRow::drawLogo(NSRect frame, NSSize textSize, const NSOutlineView& view) const
{
    const auto [left, top] = frame.origin;
    double x = truncated(view.indentationPerLevel() - kOutdent);
    if (_item) {
        x += static_cast<double>(_item->indent_item());
    }
    if (const Ref<NSImage> logo = _item ? _item->logo() : nullptr) {
        const auto [width, height] = logo->size();
        // Whole points only; a logo higher than the row begins above it, a text does not.
        const std::int32_t above = truncated(frame.size.height - height) / 2;
        logo->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
            NSMakeRect(x, top + above, width, height), NSZeroRect, NSCompositingOperation::SourceOver, 1.0,
            true, nullptr);
        x += width + static_cast<double>(_item->gap_logo_to_text());
    }
    const std::int32_t above = std::max(0, truncated(frame.size.height - textSize.height)) / 2;
    return {{x, top + above}, textSize};
}

std::optional<NSRect> ZuOutlineRow::placeOfCount(NSRect text) const
{
    if (number() < 0) {
        return std::nullopt;
    }
    text.origin.x += text.size.width;
    return text;
}

NSAttributes ZuOutlineRow::attributesOfCount(NSRect frame, NSOutlineView& view) const
{
    const bool isSelected = view.selectedRow() == view.rowForItem(_item.get());
    const Ref<NSColor> highlight = _cell.highlightColorWithFrame_inView(frame, &view);
    if (!isSelected || !NSColor::alternateSelectedControlColor()->isEqual(highlight.get())) {
        return {};
    }
    return {{NSForegroundColorAttributeName, NSColor::whiteColor()}};
}

void ZuOutlineRow::drawCount(NSRect rect, const NSAttributes& attributes) const
{
    textOfCount(number())->drawAtPoint_withAttributes(
        {rect.origin.x + kCountInset.x, rect.origin.y + kCountInset.y}, attributes);
}

Ref<NSString> ZuOutlineRow::label() const
{
    Ref<NSString> text = _cell.stringValue();
    if (!placeOfCount({})) {
        return text;
    }
    const std::u16string words(text->characters());
    return NSString::stringWithCharacters(words + u' ' + std::u16string(textOfCount(number())->characters()));
}

std::optional<bool> ZuOutlineRow::isChecked() const
{
    return _item ? std::optional(_item->isChecked() != 0) : std::nullopt;
}

void ZuOutlineRow::takePress(NSCell& cell, const NSEvent& event, NSRect frame, NSView* view)
{
    auto* outline = dynamic_cast<NSOutlineView*>(view);
    const Ref<NSImage> image = cell.image();
    if (outline == nullptr || !image) {
        return;
    }
    // At any height of the row: the point is put at that of the image's upper edge.
    const NSPoint point = outline->convertPoint_fromView(event.locationInWindow(), nullptr);
    if (NSPointInRect({point.x, frame.origin.y}, {frame.origin, image->size()})) {
        cell.performCheckOfRow_inView(outline->clickedRow(), outline);
    }
}

void ZuOutlineRow::toggle(std::int64_t row, const NSView* view)
{
    const auto* outline = dynamic_cast<const NSOutlineView*>(view);
    const Ref<NSObject> shown = outline != nullptr ? outline->itemAtRow(row) : nullptr;
    if (auto* const item = dynamic_cast<ZuOutlineItem*>(shown.get())) {
        item->setIsChecked(item->isChecked() == 0 ? 1 : 0);
    }
}
