#include "platform/graphics/NSRecordingGraphicsContext.h"

#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSBitmapImageRep.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"
#include "platform/graphics/NSLayoutManager.h"
#include "platform/graphics/NSParagraphStyle.h"
#include "platform/graphics/NSTextContainer.h"
#include "platform/graphics/NSTextStorage.h"

namespace
{

/// In quotation marks and on one line, whatever it holds.
std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') {
            result += '\\';
        }
        result += character == '\n'   ? std::string("\\n")
                  : character == '\r' ? std::string("\\r")
                                      : std::string(1, character);
    }
    return result + '"';
}

std::string description(const NSBezierPath& path)
{
    std::string text;
    for (const NSBezierPath::Element& element : path.elements()) {
        switch (element.type) {
        case NSBezierPath::ElementType::MoveTo:
            text += " move " + NSStringFromPoint(element.points[0]);
            break;
        case NSBezierPath::ElementType::LineTo:
            text += " line " + NSStringFromPoint(element.points[0]);
            break;
        case NSBezierPath::ElementType::CurveTo:
            text += " curve " + NSStringFromPoint(element.points[0]) + ' ' +
                    NSStringFromPoint(element.points[1]) + ' ' + NSStringFromPoint(element.points[2]);
            break;
        case NSBezierPath::ElementType::Close:
            text += " close";
            break;
        }
    }
    return text;
}

std::string description(NSRange range)
{
    return '{' + std::to_string(range.location) + ", " + std::to_string(range.length) + '}';
}

std::string description(const NSAttributes& attributes)
{
    std::string text;
    if (const NSFont* font = attributes[NSFontAttributeName]) {
        text +=
            " font " + quoted(font->fontName()->UTF8String()) + ' ' + NSStringFromNumber(font->pointSize());
    }
    if (const NSColor* color = attributes[NSForegroundColorAttributeName]) {
        text += " color " + color->description();
    }
    if (const NSNumber* underline = attributes[NSUnderlineStyleAttributeName]) {
        text += " underline " + std::to_string(underline->integerValue());
    }
    if (const NSParagraphStyle* style = attributes[NSParagraphStyleAttributeName]) {
        text += " alignment " + std::to_string(static_cast<long>(style->alignment()));
    }
    return text;
}

/// The attributes of a text, by stretches if there are several.
std::string description(const NSAttributedString& text)
{
    if (text.runs().size() == 1) {
        return description(text.runs().front().attributes);
    }
    std::string runs;
    for (const NSAttributedString::Run& run : text.runs()) {
        runs += " [" + description(run.range) + description(run.attributes) + ']';
    }
    return runs;
}

} // namespace

void NSRecordingGraphicsContext::saveGraphicsState()
{
    _operations.emplace_back("save");
}

void NSRecordingGraphicsContext::restoreGraphicsState()
{
    _operations.emplace_back("restore");
}

void NSRecordingGraphicsContext::setFillColor(const NSColor& color)
{
    _operations.push_back("fillColor " + color.description());
}

void NSRecordingGraphicsContext::setStrokeColor(const NSColor& color)
{
    _operations.push_back("strokeColor " + color.description());
}

void NSRecordingGraphicsContext::fillRect(NSRect rect)
{
    _operations.push_back("fillRect " + NSStringFromRect(rect));
}

void NSRecordingGraphicsContext::replaceRect(NSRect rect)
{
    _operations.push_back("replaceRect " + NSStringFromRect(rect));
}

void NSRecordingGraphicsContext::strokeRect(NSRect rect, double lineWidth)
{
    _operations.push_back("strokeRect " + NSStringFromRect(rect) + " width " + NSStringFromNumber(lineWidth));
}

void NSRecordingGraphicsContext::fillPath(const NSBezierPath& path)
{
    _operations.push_back("fillPath" + description(path));
}

void NSRecordingGraphicsContext::strokePath(const NSBezierPath& path)
{
    std::string dash;
    for (const double length : path.lineDash()) {
        dash += (dash.empty() ? " dash " : ", ") + NSStringFromNumber(length);
    }
    if (!dash.empty()) {
        dash += " phase " + NSStringFromNumber(path.lineDashPhase());
    }
    _operations.push_back("strokePath" + description(path) + " width " +
                          NSStringFromNumber(path.lineWidth()) + dash);
}

void NSRecordingGraphicsContext::drawGradient(const NSColor& starting, const NSColor& ending, NSRect rect,
                                              double angle)
{
    _operations.push_back("drawGradient " + starting.description() + " to " + ending.description() + ' ' +
                          NSStringFromRect(rect) + " angle " + NSStringFromNumber(angle));
}

void NSRecordingGraphicsContext::drawImage(const NSImage& image, NSRect rect, NSRect fromRect,
                                           NSCompositingOperation operation, double fraction,
                                           bool respectFlipped)
{
    _operations.push_back("drawImage " + quoted(image.name()) + ' ' + NSStringFromRect(rect) + " from " +
                          NSStringFromRect(fromRect) + " operation " +
                          std::to_string(static_cast<int>(operation)) + " fraction " +
                          NSStringFromNumber(fraction) + (respectFlipped ? " respectFlipped" : ""));
}

void NSRecordingGraphicsContext::drawBitmap(const NSBitmapImageRep& bitmap, NSRect rect)
{
    _operations.push_back("drawBitmap " + std::to_string(bitmap.pixelsWide()) + "x" +
                          std::to_string(bitmap.pixelsHigh()) + ' ' + NSStringFromRect(rect));
}

void NSRecordingGraphicsContext::drawText(const NSAttributedString& text, NSRect rect)
{
    _operations.push_back("drawText " + quoted(text.string()->UTF8String()) + ' ' + NSStringFromRect(rect) +
                          description(text));
}

void NSRecordingGraphicsContext::drawTextAtPoint(const NSAttributedString& text, NSPoint point)
{
    _operations.push_back("drawText " + quoted(text.string()->UTF8String()) + " at " +
                          NSStringFromPoint(point) + description(text));
}

void NSRecordingGraphicsContext::drawGlyphs(const NSLayoutManager& layout, NSRange glyphs, NSPoint origin)
{
    const NSAttributedString& text = *layout.textStorage();
    const NSSize size = layout.textContainer()->containerSize();
    _operations.push_back(
        "drawGlyphs " + description(glyphs) + ' ' + quoted(text.string()->UTF8String()) + " at " +
        NSStringFromPoint(origin) + " container " + NSStringFromPoint({size.width, size.height}) +
        " padding " + NSStringFromNumber(layout.textContainer()->lineFragmentPadding()) + description(text));
}
