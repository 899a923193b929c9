#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"

class NSString;
class NSView;
class QWidget;

using NSWindowStyleMask = unsigned long;
inline constexpr NSWindowStyleMask NSWindowStyleMaskTitled = 1 << 0;
inline constexpr NSWindowStyleMask NSWindowStyleMaskClosable = 1 << 1;
inline constexpr NSWindowStyleMask NSWindowStyleMaskMiniaturizable = 1 << 2;
inline constexpr NSWindowStyleMask NSWindowStyleMaskResizable = 1 << 3;

/// A window of the desktop, filled by one content view. Created hidden.
class TESSALINE_EXPORT NSWindow : public NSObject
{
public:
    NSWindow();

    /// Gives the window its content's size and, where the desktop allows it, the place of its content's
    /// bottom-left corner, from the bottom-left of the main screen. A size that is not resizable by the
    /// style is fixed. Returns this window.
    NSWindow* initWithContentRect_styleMask(NSRect contentRect, NSWindowStyleMask style);

    /// Null for none.
    void setTitle(Ref<NSString> title);

    /// The view that fills the window: kept alive, sized with the window, null at first.
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
    QWidget* _peer; // owned
    Ref<NSView> _contentView;
};
