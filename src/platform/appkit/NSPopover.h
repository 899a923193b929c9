#pragma once

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/Weak.h"

#include <string_view>

class NSNotification;
class NSView;
class PopoverPeer;

/// Hears of a pop-over. To be implemented by an object (`NSObject`).
class TESSALINE_EXPORT NSPopoverDelegate
{
public:
    /// Called once each time that the pop-over closes, whatever closed it. The notification's object is the
    /// pop-over. Does nothing unless it is overridden.
    virtual void popoverDidClose(NSNotification* notification);

protected:
    ~NSPopoverDelegate() = default;
};

inline constexpr std::u16string_view NSPopoverDidCloseNotification = u"NSPopoverDidCloseNotification";

/// A view that shows beside another one, over all else, until the user presses elsewhere, which does nothing
/// else, or presses the escape key. It keeps itself alive for that time. It closes, too, with the next turn
/// of the event loop, when the view beside which it shows disappears. Views in it are in no window
/// (`NSView::window`).
class TESSALINE_EXPORT NSPopover : public NSObject
{
public:
    NSPopover();

    /// What is shown, kept alive; not to be put into another view while it is. Default null. The setter
    /// closes the pop-over and takes the view from its superview.
    NSView* contentView() const { return _contentView.get(); }
    void setContentView(Ref<NSView> view);
    /// The size of that view's frame; when the pop-over is shown, it takes this size.
    NSSize contentSize() const;

    /// Hears of it (`NSPopoverDelegate`). Not retained.
    Ref<NSObject> delegate() const { return _delegate.get(); }
    void setDelegate(NSObject* delegate) { _delegate = delegate; }

    /// Shows the pop-over at an edge of a rectangle of `view`, of its bounds if the rectangle is empty:
    /// outside of it, in the middle of the edge; at the opposite edge where only that one leaves room; but
    /// always on the screen. One that is shown already moves there. That there is no content view, or `view`
    /// is null or not on the screen, is reported, and nothing happens.
    void showRelativeToRect_ofView_preferredEdge(NSRect rect, NSView* view, NSRectEdge edge);
    bool isShown() const { return static_cast<bool>(_shown); }

    /// Nothing happens unless the pop-over is shown.
    void close();
    /// Does that. `sender` does not count.
    void performClose(NSObject* sender);

protected:
    ~NSPopover() override;

private:
    friend class PopoverPeer;

    void didClose();

    PopoverPeer* _peer; // owned
    Ref<NSView> _contentView;
    Weak<NSObject> _delegate;
    Ref<NSPopover> _shown; // the pop-over itself, while it is shown
};
