#pragma once

#include "platform/appkit/NSButton.h"
#include "platform/foundation/Property.h"

class NSColor;
class NSTrackingArea;

/// A flat push button with a rounded face, filled and bordered, and a coloured title; with an image, both
/// are centred as one group, the image at the left.
///
/// There are four looks: normal; hover, while the pointer is inside and the window is the key window;
/// pressed, in the normal colours, while moreover the left button is down; and disabled, with a grey face.
/// The title's colour is part of the attributed title. An entry of the pointer makes it `color_hover_font`,
/// as do a release and an enabling if the hover look follows; all other events, `setTitle` and
/// `setColor_normal_font` make it `color_normal_font`. The action is sent by the base class, on a release
/// inside or by the space key; a title that it sets takes the colour of the look that follows.
///
/// The defaults below are set by `awakeFromNib`, in place of what was set before. A button made in code has
/// no colours and square corners, and does not watch the pointer. Setters only store, but for
/// `setColor_normal_font`: a new value shows at the next redraw. The properties at the end can be read and
/// written from any thread, everything else belongs to the user-interface thread.
class TESSALINE_EXPORT ZuSimpleButton : public NSButton
{
public:
    ZuSimpleButton();

    ZuSimpleButton* initWithFrame(NSRect frame) override;
    /// Also begins to watch the pointer over the present bounds.
    void awakeFromNib() override;

    void setEnabled(bool enabled) override;

    /// The new title is in `color_normal_font`.
    void setTitle(Ref<NSString> title) override;

    void mouseEntered(NSEvent* event) override;
    void mouseExited(NSEvent* event) override;
    void mouseDown(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    void performClick(NSObject* sender) override;
    /// Ends a press.
    void viewDidHide() override;

    /// Draws the face that fills `rect`, and image and title in the middle of a face of that size.
    void drawRect(NSRect rect) override;

    /// Title outside of the hover look. Setting it colours the title at once. Default white. A null colour
    /// leaves the title's colour as it is; what else has none is not drawn.
    Ref<NSColor> getColor_normal_font() const;
    void setColor_normal_font(Ref<NSColor> color);

    // Properties

    /// Whatever the application attaches; not owned, never looked at here, and not reached by name. Default
    /// null.
    void* userdata() const { return _userdata.get(); }
    void setUserdata(void* data) { _userdata.set(data); }

    /// Title in the hover look, where a new one shows with the next event. Default the accent colour,
    /// #20BAEA.
    Ref<NSColor> color_hover_font() const;
    void setColor_hover_font(Ref<NSColor> color);

    /// Face in the normal and pressed looks. Default the accent colour.
    Ref<NSColor> color_normal_background() const;
    void setColor_normal_background(Ref<NSColor> color);

    /// Border in the hover look. Default the accent colour.
    Ref<NSColor> color_hover_border() const;
    void setColor_hover_border(Ref<NSColor> color);

    /// Border in all other looks. Default the accent colour.
    Ref<NSColor> color_normal_border() const;
    void setColor_normal_border(Ref<NSColor> color);

    /// Face in the hover look. Default white.
    Ref<NSColor> color_hover_background() const;
    void setColor_hover_background(Ref<NSColor> color);

    /// Radii of the face's corners, in points. Default 4.
    double xRadius_() const { return _xRadius_.get(); }
    void setXRadius_(double radius) { _xRadius_.set(radius); }
    double yRadius_() const { return _yRadius_.get(); }
    void setYRadius_(double radius) { _yRadius_.set(radius); }

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~ZuSimpleButton() override;

private:
    struct Layout;

    bool isHoverLook() const { return isEnabled() && _entered && !_leftDown; }
    /// Gives the title the colour that goes with the look.
    void colorTitle();
    Layout layout(NSSize face) const;

    Ref<NSTrackingArea> _area; // the bounds at set-up; not moved with the button
    bool _entered = false;
    bool _leftDown = false;
    RetainProperty<NSColor> _color_normal_font;
    PlainProperty<void*> _userdata;
    RetainProperty<NSColor> _color_hover_background;
    RetainProperty<NSColor> _color_hover_font;
    RetainProperty<NSColor> _color_hover_border;
    RetainProperty<NSColor> _color_normal_background;
    RetainProperty<NSColor> _color_normal_border;
    PlainProperty<double> _xRadius_;
    PlainProperty<double> _yRadius_;
};
