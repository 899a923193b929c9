#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/Weak.h"

class NSString;
class NSView;
class NSWindow;
class WindowPeer;

using NSWindowStyleMask = unsigned long;
inline constexpr NSWindowStyleMask NSWindowStyleMaskTitled = 1 << 0;
inline constexpr NSWindowStyleMask NSWindowStyleMaskClosable = 1 << 1;
inline constexpr NSWindowStyleMask NSWindowStyleMaskMiniaturizable = 1 << 2;
inline constexpr NSWindowStyleMask NSWindowStyleMaskResizable = 1 << 3;

/// Hears of a window. To be implemented by an object (`NSObject`). Each does nothing unless it is overridden.
class TESSALINE_EXPORT NSWindowDelegate
{
public:
    /// The size of the content has changed, by whomever, while the window is on the screen.
    virtual void windowDidResize(NSWindow* window);
    /// The user, or the end of the application, closes the window. It may be let go then.
    virtual void windowWillClose(NSWindow* window);

protected:
    ~NSWindowDelegate() = default;
};

/// A window of the desktop, filled by one content view. Created hidden.
class TESSALINE_EXPORT NSWindow : public NSObject
{
public:
    NSWindow();

    /// Gives the window its content's size and, where the desktop allows it, the place of its content's
    /// bottom-left corner, from the bottom-left of the main screen. A size that is not resizable by the
    /// style is fixed; one that is is limited to the screen's. One with a title does not begin above the
    /// screen. Returns this window.
    NSWindow* initWithContentRect_styleMask(NSRect contentRect, NSWindowStyleMask style);

    /// The size of the content at present, which it has again in a window that is given it.
    NSSize contentSize() const;
    /// What the content is not made smaller than where the style lets the user size it; one that is smaller
    /// grows. (0, 0) at first; negative lengths and those that are no numbers become 0.
    void setContentMinSize(NSSize size);

    /// Hears of it (`NSWindowDelegate`). Not retained.
    Ref<NSObject> delegate() const { return _delegate.get(); }
    void setDelegate(NSObject* delegate) { _delegate = delegate; }

    /// Null for none.
    void setTitle(Ref<NSString> title);

    /// The view that fills the window: kept alive, sized with the window, null at first. Another one can take
    /// its place at any time, as in an action of one of its buttons.
    NSView* contentView() const { return _contentView.get(); }
    void setContentView(Ref<NSView> view);

    /// Shows the window on top and asks the desktop to direct the keyboard to it.
    void makeKeyAndOrderFront();
    /// Whether the keyboard is directed to this window.
    bool isKeyWindow() const;

    /// Has a view of the window asked for its cursor rectangles anew before they are needed next.
    void invalidateCursorRectsForView(NSView* view);

protected:
    ~NSWindow() override;

private:
    friend class WindowPeer;

    void placeContent();
    void didResize();
    void willClose();

    WindowPeer* _peer; // owned
    bool _resizable = false;
    Ref<NSView> _contentView;
    Weak<NSObject> _delegate;
};
