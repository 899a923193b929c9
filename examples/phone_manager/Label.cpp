#include "Label.h"

#include "Look.h"
#include "Texts.h"

#include <platform/graphics/NSColor.h>
#include <platform/graphics/NSFont.h>
#include <platform/graphics/NSParagraphStyle.h>
#include <util/UiUtil.h>

Label::Label(const char* font, double size, double white, NSTextAlignment align)
    : _font(NSFont::fontWithName_size(font, size)), _color(grey(white)), _align(align)
{
}

Label::~Label() = default;

void Label::setText(const std::string& utf8)
{
    _text = text(utf8);
    setNeedsDisplay();
}

void Label::drawRect(NSRect /*rect*/)
{
    constexpr double kInset = 5.0; // that text drawing leaves at either side
    UiUtil::drawStringInView_withFont_withRect_withColor_withAlign(
        _text.get(), _font.get(), NSInsetRect(bounds(), -kInset, 0.0), _color.get(), _align);
}
