#include "PageView.h"

#include "Look.h"

#include <platform/foundation/NSAttributes.h>
#include <platform/foundation/NSString.h>
#include <platform/graphics/NSBezierPath.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSImage.h>
#include <platform/graphics/NSParagraphStyle.h>
#include <util/UiUtil.h>

#include <utility>

namespace
{

constexpr double kHeadlineHeight = 40.0;
constexpr double kTextHeight = 48.0;
constexpr double kItemHeight = PageView::kPictureSize.height + 16.0;
constexpr double kItemTextLeft = PageView::kPictureSize.width + 12.0;
constexpr double kNoteHeight = 84.0;

void fill(NSRect rect, const Ref<NSColor>& color)
{
    color->setFill();
    NSBezierPath::fillRect(rect);
}

void draw(const Ref<NSString>& text, NSRect rect, const char* font, double size, double white)
{
    if (text) {
        text->drawInRect_withAttributes(rect, {{NSFontAttributeName, NSFont::fontWithName_size(font, size)},
                                               {NSForegroundColorAttributeName, grey(white)}});
    }
}

/// The picture in the middle of its place, its texts beside it.
void draw(const PageView::Item& item, NSRect rect)
{
    const NSSize size = item.picture->size();
    const NSRect picture = NSMakeRect(rect.origin.x + (PageView::kPictureSize.width - size.width) * 0.5,
                                      rect.origin.y + (PageView::kPictureSize.height - size.height) * 0.5,
                                      size.width, size.height);
    item.picture->drawInRect_fromRect_operation_fraction_respectFlipped_hints(
        picture, NSZeroRect, NSCompositingOperation::SourceOver, 1.0, true, nullptr);

    const Ref<NSFont> nameFont = NSFont::fontWithName_size("Arial Bold", 13.0);
    const Ref<NSFont> detailFont = NSFont::fontWithName_size("Arial", 12.0);
    NSRect text = NSMakeRect(rect.origin.x + kItemTextLeft, rect.origin.y + 8.0,
                             rect.size.width - kItemTextLeft, rect.size.height);
    UiUtil::drawStringInView_withFont_withRect_withColor_withAlign(
        item.name.get(), nameFont.get(), text, grey(0.13).get(), NSTextAlignment::Natural);
    text.origin.y += UiUtil::heightForStringDrawing_withFont_withWidth(item.name.get(), nameFont.get(),
                                                                       static_cast<float>(text.size.width));
    UiUtil::drawStringInView_withFont_withRect_withColor_withAlign(item.detail.get(), detailFont.get(), text,
                                                                   grey(0.4).get(), NSTextAlignment::Natural);
}

} // namespace

PageView::PageView() = default;

PageView::~PageView() = default;

PageView* PageView::initWithFrame(NSRect frame)
{
    NSView::initWithFrame(frame);
    return this;
}

void PageView::show(Ref<NSString>& place, const std::string& text)
{
    place = NSString::stringWithUTF8String(text.c_str());
    setNeedsDisplay();
}

void PageView::setHeadline(const std::string& headline)
{
    show(_headline, headline);
}

void PageView::setText(const std::string& text)
{
    show(_text, text);
}

void PageView::setNote(const std::string& note)
{
    show(_note, note);
}

void PageView::setItems(std::vector<Item> items)
{
    _items = std::move(items);
    setNeedsDisplay();
}

NSRect PageView::contentRect() const
{
    const auto [width, height] = bounds().size;
    const double top = kMargin + kHeadlineHeight + kTextHeight;
    return NSMakeRect(kColumnWidth, top, width - kColumnWidth, height - kMargin - kNoteHeight - top);
}

void PageView::drawRect(NSRect /*rect*/)
{
    const auto [width, height] = bounds().size;
    fill(bounds(), grey(0.96));
    fill(NSMakeRect(0.0, 0.0, kColumnWidth, height), NSColor::whiteColor());

    const double left = kColumnWidth + kMargin;
    const double column = width - left - kMargin;
    const double textTop = kMargin + kHeadlineHeight;
    const double noteTop = height - kMargin - kNoteHeight;
    draw(_headline, NSMakeRect(left, kMargin, column, kHeadlineHeight), "Arial Bold", 24.0, 0.13);
    draw(_text, NSMakeRect(left, textTop, column, noteTop - textTop), "Arial", 14.0, 0.27);
    NSRect place = NSMakeRect(left, contentRect().origin.y, column, kItemHeight);
    for (const Item& item : _items) {
        draw(item, place);
        place.origin.y += kItemHeight;
    }
    draw(_note, NSMakeRect(left, noteTop, column, kNoteHeight), "Arial", 12.0, 0.4);
}
