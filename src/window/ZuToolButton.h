#pragma once

#include "platform/appkit/NSButton.h"
#include "platform/foundation/Property.h"

class NSColor;
class NSFont;
class NSTrackingArea;

/// A push button that draws itself completely: an icon, centred vertically; on the icon's top-right
/// corner an optional badge with a text; to the right the name, and under it a description that wraps.
///
/// The content is that of any button: `image` is the icon, `alternateImage` the badge (null for none),
/// `alternateTitle` the badge's text, `title` the name and `toolTip` the description, which also shows as
/// the tooltip. What is absent is not drawn.
///
/// Two flags choose among three looks: normal; hover, while the pointer is inside and the window is the
/// key window; and pressed, while moreover the left button is down. Whether the button is enabled does
/// not show, nor, unless the application gives it a focus ring, whether it has the keyboard. The action is
/// sent by the base class, on a release inside or by the space key.
///
/// `initWithFrame` and `awakeFromNib` both set the defaults below, replacing what was set before. Setters
/// only store: a new value shows at the next redraw. The eight properties below can be read and written from
/// any thread, everything else belongs to the user-interface thread.
class TESSALINE_EXPORT ZuToolButton : public NSButton
{
public:
    ZuToolButton();

    ZuToolButton* initWithFrame(NSRect frame) override;
    void awakeFromNib() override;
    /// Sets the defaults and begins to watch the pointer over the present bounds; both set-ups call it.
    virtual void initData();
    bool isFlipped() const override { return true; }

    void mouseEntered(NSEvent* event) override;
    void mouseExited(NSEvent* event) override;
    void mouseDown(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    /// Ends a press.
    void viewDidHide() override;

    /// Draws the face; `rect` is filled and framed, everything else is laid out from the bounds.
    void drawRect(NSRect rect) override;

    /// Points from the content's left edge to the icon; may be negative. Default 4.
    std::int32_t offset() const;
    void setOffset(std::int32_t offset);

    /// Border in the hover and pressed looks. Default blue. As with all colours here, with null
    /// that part takes the colour that is current, and a text is black.
    Ref<NSColor> color_border() const;
    void setColor_border(Ref<NSColor> color);

    /// Fill in the pressed look. Default blue.
    Ref<NSColor> color_background() const;
    void setColor_background(Ref<NSColor> color);

    /// Name in the pressed look; otherwise it is black. Default white.
    Ref<NSColor> color_name_hover() const;
    void setColor_name_hover(Ref<NSColor> color);

    /// Description in the pressed look. Default: the same as `color_desc`.
    Ref<NSColor> color_desc_hover() const;
    void setColor_desc_hover(Ref<NSColor> color);

    /// A URL that the application keeps with the button; copied, never read here. Default null.
    Ref<NSString> str_url() const;
    void setStr_url(Ref<NSString> url);

    /// Border in the normal look. Default white.
    Ref<NSColor> color_border_normal() const;
    void setColor_border_normal(Ref<NSColor> color);

    /// Description in the normal and hover looks. Default a middle grey.
    Ref<NSColor> color_desc() const;
    void setColor_desc(Ref<NSColor> color);

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuToolButton() override;

private:
    struct Layout;

    bool isPressedLook() const { return _entered && _leftDown; }
    Layout layout() const;

    Ref<NSTrackingArea> _area; // the bounds at set-up; not moved with the button
    bool _entered = false;
    bool _leftDown = false;
    Ref<NSFont> _font_hot; // of the badge's text
    Ref<NSFont> _font_name;
    Ref<NSFont> _font_desc;
    PlainProperty<std::int32_t> _offset;
    RetainProperty<NSColor> _color_border;
    RetainProperty<NSColor> _color_background;
    RetainProperty<NSColor> _color_name_hover;
    RetainProperty<NSColor> _color_desc_hover;
    CopyProperty<NSString> _str_url;
    RetainProperty<NSColor> _color_border_normal;
    RetainProperty<NSColor> _color_desc;
};
