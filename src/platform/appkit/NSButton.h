#pragma once

#include "platform/appkit/NSControl.h"

class NSAttributedString;
class NSImage;
class NSString;

/// A push button: tracks a press from the mouse going down inside to its release, and sends its action if
/// that happens inside, too; while it has the keyboard, the space key sends it as well. Draws its title in
/// the middle of a plain face.
class TESSALINE_EXPORT NSButton : public NSControl
{
public:
    NSButton();

    NSButton* initWithFrame(NSRect frame) override;

    /// The button's texts and images, null by default; texts are copied. Each setter asks for a redraw.
    Ref<NSString> title() const;
    virtual void setTitle(Ref<NSString> title);
    /// The title with its attributes: those that it was given, or after `setTitle` the button's own font.
    /// Without a colour of its own, it is black, and grey while the button is disabled.
    Ref<NSAttributedString> attributedTitle() const;
    void setAttributedTitle(Ref<NSAttributedString> title);
    Ref<NSString> alternateTitle() const;
    void setAlternateTitle(Ref<NSString> title);
    Ref<NSImage> image() const;
    void setImage(Ref<NSImage> image);
    Ref<NSImage> alternateImage() const;
    void setAlternateImage(Ref<NSImage> image);

    /// Whether the button draws a face behind its title. Initially it does. The setter asks for a redraw.
    bool isBordered() const { return _bordered; }
    void setBordered(bool bordered);

    /// Whether a press is being tracked whose pointer is inside.
    bool isHighlighted() const { return _highlighted; }

    /// Sends the action as a click would, unless the button is disabled.
    virtual void performClick(NSObject* sender);

    void drawRect(NSRect rect) override;
    void mouseDown(NSEvent* event) override;
    void mouseDragged(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    /// Enabled buttons take the keyboard.
    bool acceptsFirstResponder() const override { return isEnabled(); }
    bool keyDown(NSEvent* event) override;
    NSAccessibilityRole accessibilityRole() const override { return NSAccessibilityRole::Button; }
    /// The title unless another label was set.
    Ref<NSString> accessibilityLabel() const override;
    /// Performs a click if the button is enabled.
    bool accessibilityPerformPress() override;
    /// Ends a press without an action.
    void viewDidHide() override;

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSButton() override;

private:
    void drawTitle() const;
    bool contains(const NSEvent& event) const;
    void setHighlighted(bool highlighted);

    CopyProperty<NSAttributedString> _title;
    CopyProperty<NSString> _alternateTitle;
    RetainProperty<NSImage> _image;
    RetainProperty<NSImage> _alternateImage;
    bool _bordered = true;
    bool _pressed = false; // a press is being tracked
    bool _highlighted = false;
};
