// Measuring and drawing of texts.

#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/qt/TextLayout.h"

NSSize NSAttributedString::size() const
{
    return TextLayout::of(*this, TextLayout::kUnlimited)->size();
}

Ref<NSAttributedString> NSAttributedString::truncatedToWidth(double width) const
{
    constexpr double kRounding = 1.0 / 64.0; // of a width that was measured and calculated with
    const auto layout = TextLayout::of(*this, TextLayout::kUnlimited);
    if (layout->size().width <= width + kRounding || length() == 0) {
        return copy();
    }
    const Ref<NSString> ellipsis = NSString::stringWithCharacters(u"…");
    const auto widthOf = [&](std::size_t count) { // with the ellipsis in the attributes there
        double sum = ellipsis->sizeWithAttributes(attributesAtIndex_effectiveRange(count, nullptr)).width;
        for (const NSRect& rect : layout->rectsOf({0, count})) {
            sum += rect.size.width;
        }
        return sum;
    };
    std::size_t count = 0;
    for (std::size_t tooMany = layout->lines().front().characters.length; tooMany > count + 1;) {
        const std::size_t middle = count + (tooMany - count) / 2;
        (widthOf(middle) <= width ? count : tooMany) = middle;
    }
    count = layout->wholeCharacters({count, 1}).location;
    const Run last{{count, 1}, attributesAtIndex_effectiveRange(count, nullptr)};

    Ref<NSAttributedString> beginning = make<NSAttributedString>();
    beginning->_string = NSString::stringWithCharacters(
        std::u16string(string()->characters().substr(0, count)).append(ellipsis->characters()));
    beginning->_runs.clear();
    for (const Run& run : _runs) {
        const NSRange part = NSIntersectionRange(run.range, {0, count});
        if (part.length != 0) {
            beginning->_runs.push_back({part, run.attributes});
        }
    }
    if (!beginning->_runs.empty() && beginning->_runs.back().attributes == last.attributes) {
        ++beginning->_runs.back().range.length;
    } else {
        beginning->_runs.push_back(last);
    }
    return beginning;
}

void NSAttributedString::drawInRect(NSRect rect) const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->drawText(*this, rect);
    }
}

void NSAttributedString::drawAtPoint(NSPoint point) const
{
    if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) {
        context->drawTextAtPoint(*this, point);
    }
}

NSSize NSString::sizeWithAttributes(const NSAttributes& attributes) const
{
    return withAttributes(attributes)->size();
}

void NSString::drawInRect_withAttributes(NSRect rect, const NSAttributes& attributes) const
{
    withAttributes(attributes)->drawInRect(rect);
}

void NSString::drawAtPoint_withAttributes(NSPoint point, const NSAttributes& attributes) const
{
    withAttributes(attributes)->drawAtPoint(point);
}

Ref<NSAttributedString> NSString::withAttributes(const NSAttributes& attributes) const
{
    return make<NSAttributedString>()->initWithString_attributes(copy().get(), attributes);
}
