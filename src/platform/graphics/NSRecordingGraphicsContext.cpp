#include "platform/graphics/NSRecordingGraphicsContext.h"

#include "platform/foundation/NSString.h"
#include "platform/graphics/NSAttributes.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

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
        result += character == '\n' ? std::string("\\n") : std::string(1, character);
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
    _operations.push_back("strokePath" + description(path) + " width " +
                          NSStringFromNumber(path.lineWidth()));
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

void NSRecordingGraphicsContext::drawText(const NSString& text, NSRect rect, const NSAttributes& attributes)
{
    std::string line = "drawText " + quoted(text.UTF8String()) + ' ' + NSStringFromRect(rect);
    if (const NSFont* font = attributes[NSFontAttributeName]) {
        line +=
            " font " + quoted(font->fontName()->UTF8String()) + ' ' + NSStringFromNumber(font->pointSize());
    }
    if (const NSColor* color = attributes[NSForegroundColorAttributeName]) {
        line += " color " + color->description();
    }
    _operations.push_back(std::move(line));
}
