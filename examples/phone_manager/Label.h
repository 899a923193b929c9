#pragma once

#include <platform/appkit/NSView.h>

#include <string>

class NSColor;
class NSFont;
class NSString;
enum class NSTextAlignment : long;

/// A text that wraps, and is cut off at the lower edge.
class Label final : public NSView
{
public:
    /// `white` goes from 0, for a black text, to 1.
    Label(const char* font, double size, double white, NSTextAlignment align);

    bool isFlipped() const override { return true; }

    /// In UTF-8. Default empty. Asks for a redraw.
    void setText(const std::string& utf8);

    void drawRect(NSRect rect) override;

protected:
    ~Label() override;

private:
    Ref<NSFont> _font;
    Ref<NSColor> _color;
    NSTextAlignment _align;
    Ref<NSString> _text;
};
