#include "PageView.h"

#include <platform/foundation/NSAttributes.h>
#include <platform/foundation/NSString.h>
#include <platform/graphics/NSBezierPath.h>
#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSFont.h>

namespace
{

constexpr double kMargin = 28.0;
constexpr double kHeadlineHeight = 40.0;
constexpr double kNoteHeight = 84.0;

Ref<NSColor> grey(double white)
{
    return NSColor::colorWithCalibratedWhite_alpha(white, 1.0);
}

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
    draw(_note, NSMakeRect(left, noteTop, column, kNoteHeight), "Arial", 12.0, 0.4);
}
