#include "platform/graphics/NSLayoutManager.h"

#include "platform/graphics/NSGraphicsContext.h"
#include "platform/graphics/NSTextContainer.h"
#include "platform/graphics/NSTextStorage.h"
#include "platform/qt/TextLayout.h"

#include <algorithm>
#include <span>

NSLayoutManager::NSLayoutManager() = default;

NSLayoutManager::~NSLayoutManager() = default;

void NSLayoutManager::addTextContainer(Ref<NSTextContainer> container)
{
    _textContainer = std::move(container);
}

const TextLayout& NSLayoutManager::layout() const
{
    const bool complete = _textStorage != nullptr && _textContainer;
    const std::size_t changeCount = complete ? _textStorage->changeCount() : 0;
    const double width =
        complete ? _textContainer->containerSize().width - 2.0 * _textContainer->lineFragmentPadding() : 0.0;
    if (_layout == nullptr || changeCount != _changeCount || width != _width) {
        _layout = TextLayout::of(complete ? *_textStorage : *make<NSAttributedString>(), width);
        _changeCount = changeCount;
        _width = width;
    }
    return *_layout;
}

std::size_t NSLayoutManager::numberOfGlyphs() const
{
    return NSMaxRange(layout().lines().back().characters);
}

std::size_t NSLayoutManager::linesIn(const NSTextContainer* container) const
{
    if (container == nullptr || _textContainer != container || _textStorage == nullptr) {
        return 0;
    }
    constexpr double kRounding = 1.0 / 64.0; // a height that was measured for the text holds it
    const double height = container->containerSize().height + kRounding;
    const auto tooLow = std::ranges::partition_point(
        layout().lines(), [&](const TextLayout::Line& line) { return line.bottom() <= height; });
    return static_cast<std::size_t>(tooLow - layout().lines().begin());
}

NSRange NSLayoutManager::glyphRangeForTextContainer(const NSTextContainer* container) const
{
    const std::size_t count = linesIn(container);
    return count == 0 ? NSRange{} : NSRange{0, NSMaxRange(layout().lines()[count - 1].characters)};
}

NSRect NSLayoutManager::usedRectForTextContainer(const NSTextContainer* container) const
{
    const std::size_t count = linesIn(container);
    if (count == 0) {
        return NSZeroRect;
    }
    const auto lines = std::span(layout().lines()).first(count);
    double left = lines[0].left;
    double right = left;
    for (const TextLayout::Line& line : lines) {
        left = std::min(left, line.left);
        right = std::max(right, line.left + line.width);
    }
    const double padding = _textContainer->lineFragmentPadding();
    return NSMakeRect(left, 0.0, right - left + 2.0 * padding, lines.back().bottom());
}

NSRange NSLayoutManager::glyphRangeForCharacterRange_actualCharacterRange(NSRange characters,
                                                                          NSRange* actual) const
{
    const NSRange whole = layout().wholeCharacters(characters);
    if (actual != nullptr) {
        *actual = whole;
    }
    return whole;
}

NSRect NSLayoutManager::lineFragmentRectForGlyphAtIndex_effectiveRange(std::size_t glyph,
                                                                       NSRange* effective) const
{
    NSRect rect = lineFragmentUsedRectForGlyphAtIndex_effectiveRange(glyph, effective);
    if (_textContainer && _textStorage != nullptr) {
        rect.origin.x = 0.0;
        rect.size.width = _textContainer->containerSize().width;
    }
    return rect;
}

NSRect NSLayoutManager::lineFragmentUsedRectForGlyphAtIndex_effectiveRange(std::size_t glyph,
                                                                           NSRange* effective) const
{
    const TextLayout::Line& line = layout().lineOfCharacter(glyph);
    if (effective != nullptr) {
        *effective = line.characters;
    }
    if (!_textContainer || _textStorage == nullptr) {
        return NSZeroRect;
    }
    const double padding = _textContainer->lineFragmentPadding();
    return NSMakeRect(line.left, line.top, line.width + 2.0 * padding, line.height);
}

std::vector<NSRect>
NSLayoutManager::enclosingRectsForGlyphRange_inTextContainer(NSRange glyphs,
                                                             const NSTextContainer* container) const
{
    std::vector<NSRect> rects =
        layout().rectsOf(NSIntersectionRange(glyphs, glyphRangeForTextContainer(container)));
    for (NSRect& rect : rects) {
        rect.origin.x += _textContainer->lineFragmentPadding();
    }
    return rects;
}

NSRect NSLayoutManager::boundingRectForGlyphRange_inTextContainer(NSRange glyphs,
                                                                  const NSTextContainer* container) const
{
    NSRect bounds;
    for (const NSRect& rect : enclosingRectsForGlyphRange_inTextContainer(glyphs, container)) {
        bounds = NSUnionRect(bounds, rect);
    }
    return bounds;
}

std::size_t NSLayoutManager::glyphIndexForPoint_inTextContainer(NSPoint point,
                                                                const NSTextContainer* container) const
{
    const std::size_t lines = linesIn(container);
    return lines == 0 ? 0
                      : layout().characterAt({point.x - container->lineFragmentPadding(), point.y}, lines);
}

void NSLayoutManager::drawGlyphsForGlyphRange_atPoint(NSRange glyphs, NSPoint origin) const
{
    NSGraphicsContext* context = NSGraphicsContext::currentContext();
    if (context != nullptr && _textStorage != nullptr && _textContainer) {
        context->drawGlyphs(*this, glyphs, origin);
    }
}
