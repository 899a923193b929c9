#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

class NSButton;
class NSColor;
class NSFont;
class NSString;
class NSView;
enum class NSTextAlignment : long;

/// Helpers for text and colour, for drawing and layout on the user-interface thread. Arguments are borrowed;
/// where one that is needed is null, nothing happens. Colours by components are sRGB and opaque: each
/// component, meant as 0..255, is divided by 255 and not limited. Hexadecimal ones are six digits RRGGBB.
class TESSALINE_EXPORT UiUtil final : public NSObject
{
public:
    /// Draws `text` into the current graphics context, wrapped and aligned in the width of `rect` less 5
    /// points at either side. Its top-left corner stands at the origin of `rect`, and its lines follow
    /// downwards on the screen, as many as there are: the height of `rect` does not limit them. Without a
    /// font the text is in "Arial" 12, without a colour black.
    static void drawStringInView_withFont_withRect_withColor_withAlign(NSString* text, NSFont* font,
                                                                       NSRect rect, NSColor* color,
                                                                       NSTextAlignment align);

    /// The height of `text` in points when wrapped at exactly `width`, never more at a greater width. An
    /// empty text has the height of a line, none (null) has 0. Lines are as high as their font, without
    /// a gap between them.
    static float heightForStringDrawing_withFont_withWidth(NSString* text, NSFont* font, float width);

    /// Change the colour of a button's whole title and leave everything else about it. A null colour changes
    /// nothing.
    static void setButton_red_green_blue(NSButton* button, int red, int green, int blue);
    static void setButton_fontColorHex(NSButton* button, NSString* digits);
    static void setButton_fontColor(NSButton* button, NSColor* color);

    /// Give a view a layer, unless it has one, and the layer a background. A null colour takes the
    /// background away. Colours of every kind are taken.
    static void changeBackgroundColor_red_green_blue(NSView* view, int red, int green, int blue);
    static void changeBackgroundColor_withColor(NSView* view, NSColor* color);
    static void changeBackgroundColor_withRGB(NSView* view, NSString* digits);
};
