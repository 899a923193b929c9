#pragma once

#include "platform/appkit/NSAccessibility.h"
#include "platform/appkit/NSDragging.h"
#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSObject.h"
#include "platform/foundation/Property.h"

#include <cstdint>
#include <optional>
#include <vector>

class CALayer;
class NSCursor;
class NSEvent;
class NSGraphicsContext;
class NSImage;
class NSMenu;
class NSNumber;
class NSShadow;
class NSString;
class NSTrackingArea;
class NSWindow;
class QWidget;
class ViewPeer;

/// Whether a ring is drawn over a view that has the keyboard and was reached by keys.
enum class NSFocusRingType : unsigned long { Default = 0, None = 1 };

/// A rectangle of a window that draws itself and takes events. A view keeps its subviews alive; its
/// superview and its window it only knows. Everything here happens on the user-interface thread.
class TESSALINE_EXPORT NSView : public NSObject
{
public:
    NSView();

    /// Set-up in code: places the view. Returns this view.
    virtual NSView* initWithFrame(NSRect frame);

    /// Set-up after loading from an interface file, when the whole tree exists.
    virtual void awakeFromNib() {}

    // Geometry

    /// Whether the view's own y grows downwards from its top edge. The answer may change: the view's drawing
    /// and the places of its subviews follow at the next redraw or change of its size.
    virtual bool isFlipped() const { return false; }

    /// The view's place in its superview's coordinates. On screen it covers whole points: its edges are
    /// rounded.
    NSRect frame() const { return _frame; }
    /// Places the view again; subviews keep their frames. Coordinates and sizes that are not finite become
    /// 0, as do negative sizes. A view from an interface file that a layout has placed there stays where it
    /// is.
    void setFrame(NSRect frame);
    /// The view's rectangle in its own coordinates: its frame's size at (0, 0).
    NSRect bounds() const { return {{}, _frame.size}; }

    /// Convert from or to the coordinates of `view`, or of the window (origin bottom-left of its content)
    /// if it is null. Outside of any window, the topmost superview's frame stands for its place in one.
    NSPoint convertPoint_fromView(NSPoint point, const NSView* view) const;
    NSPoint convertPoint_toView(NSPoint point, const NSView* view) const;
    NSRect convertRect_fromView(NSRect rect, const NSView* view) const;
    NSRect convertRect_toView(NSRect rect, const NSView* view) const;

    /// What the views around it leave of the bounds to be seen, whatever lies over it. Empty if that is
    /// nothing.
    virtual NSRect visibleRect() const;

    // The tree

    /// Puts `view` on top of the other subviews, taking it from the superview it had. A view cannot
    /// become a subview of itself or of a view inside it: that is reported and nothing happens.
    void addSubview(Ref<NSView> view);
    /// Takes the view from its superview, which may have been what kept it alive.
    void removeFromSuperview();
    const std::vector<Ref<NSView>>& subviews() const { return _subviews; }
    /// Borrowed; null for a view without superview.
    NSView* superview() const { return _superview; }
    /// The window that the view is in; null if there is none.
    Ref<NSWindow> window() const;

    bool isHidden() const { return _hidden; }
    void setHidden(bool hidden);

    /// The text that shows when the pointer rests on the view; copied, null for none.
    Ref<NSString> toolTip() const;
    void setToolTip(Ref<NSString> text);

    // Drawing

    /// Draws the view in the current graphics context. `rect` is what must be redrawn: the bounds, or the
    /// smallest rectangle around all that `setNeedsDisplayInRect` asked for since the last redraw. The
    /// base class draws nothing.
    virtual void drawRect(NSRect rect);

    /// Whether the view has a layer behind its own drawing; initially not. Without, what the layer showed
    /// is gone.
    bool wantsLayer() const { return _layer != nullptr; }
    void setWantsLayer(bool wantsLayer);
    /// Borrowed; null unless the view wants one.
    CALayer* layer() const { return _layer.get(); }

    /// The shadow that the view with its subviews casts on what is behind it, also beyond its bounds; copied,
    /// null (the default) for none. It shows while the view has a layer. Each redraw costs by the size of the
    /// whole view, whatever is visible of it. Offsets are limited to 500 points, the blur to 100.
    Ref<NSShadow> shadow() const;
    void setShadow(Ref<NSShadow> shadow);

    /// Draws into `context`, in this view's coordinates, what the view shows when `rect` is redrawn: the
    /// layer, then its own drawing. Subviews do not draw.
    void displayRectIgnoringOpacity_inContext(NSRect rect, NSGraphicsContext& context);

    /// Ask for a redraw of all or of a part, to happen when events have been dealt with. What lies outside
    /// of the bounds does not count.
    void setNeedsDisplay(bool needed = true);
    void setNeedsDisplayInRect(NSRect rect);
    /// Whether a redraw was asked for that has not happened yet.
    bool needsDisplay() const { return !NSIsEmptyRect(_dirtyRect); }

    /// A picture of the view and its subviews as they would show, with `scale` pixels to the point. Null
    /// if the view has no area or the picture would exceed 16384 pixels in a direction.
    Ref<NSImage> imageOfBounds(double scale);

    // Events: the base class passes a press, its drags and its release on to the superview and ignores
    // entry and exit.

    virtual void mouseDown(NSEvent* event);
    virtual void mouseDragged(NSEvent* event);
    virtual void mouseUp(NSEvent* event);
    virtual void mouseEntered(NSEvent* event);
    virtual void mouseExited(NSEvent* event);

    /// The menu that a press of the secondary button opens, at the place of `event`, which is such a press;
    /// null, as here, to leave that to the superview.
    virtual Ref<NSMenu> menuForEvent(NSEvent* event);

    /// Called when the view is no longer on the screen: hidden, taken away or its window closed.
    virtual void viewDidHide();

    void addTrackingArea(Ref<NSTrackingArea> area);
    /// Takes the area away without telling its owner; nothing happens if the view has no such area.
    void removeTrackingArea(NSTrackingArea* area);
    const std::vector<Ref<NSTrackingArea>>& trackingAreas() const { return _trackingAreas; }

    // Dragging: of all views that a drag is over, the innermost is asked that takes one of its types, whether
    // or not the window is key.

    /// Has drags that offer one of `types` come to the view from now on. None, as initially, for no drags.
    void registerForDraggedTypes(std::vector<NSPasteboardType> types);
    /// Whether, once registered, drags that offer none of those types come, too. Initially not.
    virtual bool wantsAllDrags() const { return false; }

    /// Called when a drag comes over the view; answers what would become of what is dragged. Where the drag's
    /// source gives no copies away, that is nothing, whatever is answered. Here: nothing.
    virtual NSDragOperation draggingEntered(NSDraggingInfo* drag);
    /// Called when the drag moves on, with an answer that counts from then on. Here: as at the entry.
    virtual NSDragOperation draggingUpdated(NSDraggingInfo* drag);
    /// Called when the drag has left, or ends without a drop. Here nothing happens.
    virtual void draggingExited(NSDraggingInfo* drag);
    /// Called at a drop, if the last answer was not "nothing", and then, unless that answers false, the
    /// other; its answer, whether something was taken, is what the source learns. Here: true, and false.
    virtual bool prepareForDragOperation(NSDraggingInfo* drag);
    virtual bool performDragOperation(NSDraggingInfo* drag);

    // Cursors: the pointer shows as an arrow, but for rectangles of the view that have another cursor.

    struct CursorRect {
        NSRect rect; // in the view's coordinates
        Ref<NSCursor> cursor;
    };

    /// Adds the rectangles, with `addCursorRect_cursor`. Called before they are needed where they are out of
    /// date: at first, after `NSWindow::invalidateCursorRectsForView`, and when any view has been placed,
    /// shown, hidden, put into another or taken from it. The base class adds none.
    virtual void resetCursorRects();
    /// Nothing happens if the rectangle is empty or the cursor null. Where several overlap, the first counts.
    void addCursorRect_cursor(NSRect rect, Ref<NSCursor> cursor);
    /// Those that there are, brought up to date.
    const std::vector<CursorRect>& cursorRects();

    // The keyboard

    /// Whether the view takes the keyboard: by a press, and by Tab, which goes through the views that do in
    /// the order in which they came into the window. Initially not.
    virtual bool acceptsFirstResponder() const { return false; }
    /// Called with each key while the view has the keyboard, except for those that move it on. True if the
    /// view used the key; one that no view uses goes to what the views are in. The base class passes it on
    /// to the superview.
    virtual bool keyDown(NSEvent* event);

    /// The setter asks for a redraw.
    NSFocusRingType focusRingType() const { return _focusRingType; }
    void setFocusRingType(NSFocusRingType type);

    // Assistive technology: what the view says of itself to those who do not see it. What has changed is told
    // with the next redraw, so that a setter need only ask for one.

    virtual NSAccessibilityRole accessibilityRole() const { return NSAccessibilityRole::Unknown; }
    /// The view's name in a word or two; copied, null, the default, for none. A new one is told at once.
    virtual Ref<NSString> accessibilityLabel() const;
    void setAccessibilityLabel(Ref<NSString> label);
    /// What the view is for: its tool tip, of which a new one is told at once.
    virtual Ref<NSString> accessibilityHelp() const;
    /// Whether the view can be operated.
    virtual bool isAccessibilityEnabled() const { return true; }
    /// What the view measures, and from where to where that can go. Null, as in the base class, for nothing.
    virtual Ref<NSNumber> accessibilityValue() const;
    virtual Ref<NSNumber> accessibilityMinValue() const;
    virtual Ref<NSNumber> accessibilityMaxValue() const;
    /// Whether the view is checked. Without a value, as in the base class, if it has no check.
    virtual std::optional<bool> accessibilityChecked() const { return std::nullopt; }
    /// Does what a press on the view would, which is offered for buttons and check boxes. False, as in the
    /// base class, if that is nothing.
    virtual bool accessibilityPerformPress();

    /// The Qt widget that stands for this view, made at the first call together with those of its
    /// subviews. It belongs to the view. A host application that is built on Qt itself can place it in
    /// its own widgets.
    QWidget* widget();

    const ClassTable& classTable() const override;
    static const ClassTable table;

protected:
    ~NSView() override;

    /// To be called when `acceptsFirstResponder` has changed its answer. A view that has the keyboard and
    /// takes it no longer hands it to the next one.
    void acceptsFirstResponderDidChange();

private:
    friend class NSPopover;
    friend class NSTableHeaderView;
    friend class NSTableView;
    friend class NSTextField;
    friend class NSWindow;
    friend class ViewPeer;

    NSPoint convertToSuperview(NSPoint point) const;
    NSPoint convertFromSuperview(NSPoint point) const;
    NSPoint convertToWindow(NSPoint point) const;
    NSPoint convertFromWindow(NSPoint point) const;
    bool isSelfOrInside(const NSView& other) const;

    void sizeDidChange();
    /// Places the peers of the subviews again if the view has turned upside down since they were placed.
    void turnSubviews();
    void turnAllInside();
    void placePeersOfSubviews();
    void castShadow();
    /// Takes a size that a window or host has given the peer.
    void takeSizeOfPeer(NSSize size);
    /// Takes the place in the superview that a layout or a widget of the toolkit's has given the peer.
    void takePlaceOfPeer();
    /// Whether the view is in another or is a window's content view.
    bool hasPlace() const { return _superview != nullptr || _contentWindow != nullptr; }
    /// Leaves the superview, or the window whose content view this is.
    void leaveItsPlace();

    /// The peer: a widget, or the viewport of one of the toolkit's.
    virtual ViewPeer* makePeer();
    /// The place in the view's coordinates of its peer's top-left corner, for flipped views.
    virtual NSPoint originOfPeer() const { return {}; }
    /// Gives the peer its place, or takes it from one that follows others.
    virtual void placePeer();
    /// Takes the peers of the subviews out of this view's, so that they outlive it.
    void detachPeersOfSubviews();

    /// What to redraw when the toolkit repaints `exposed`; the redraw that was asked for is then done.
    virtual NSRect takeUpdateRect(NSRect exposed);
    /// Tells the owners of tracking areas of entries and exits. `pointer` is in this view's coordinates,
    /// without a value if the pointer is elsewhere.
    void updateTrackingAreas(std::optional<NSPoint> pointer, bool inKeyWindow);
    /// Whether a drag comes to the view.
    bool takesDrag(const NSPasteboard& pasteboard) const;
    void invalidateCursorRects();
    /// Null for the arrow.
    virtual Ref<NSCursor> cursorAtPoint(NSPoint point);

    NSRect _frame;
    NSRect _dirtyRect;
    bool _hidden = false;
    NSFocusRingType _focusRingType = NSFocusRingType::Default;
    bool _placesFlipped = false; // the way up that the peers of the subviews are placed for
    NSView* _superview = nullptr;
    NSWindow* _contentWindow = nullptr; // the window whose content view this is
    std::vector<Ref<NSView>> _subviews;
    std::vector<Ref<NSTrackingArea>> _trackingAreas;
    std::vector<NSPasteboardType> _draggedTypes;
    NSDragOperation _answerToEntry = NSDragOperationNone; // of the last drag
    std::vector<CursorRect> _cursorRects;
    std::uint64_t _cursorRectsPlacing = 0; // of the views, that these are for; 0 if they are out of date
    CopyProperty<NSString> _toolTip;
    CopyProperty<NSString> _accessibilityLabel;
    Ref<CALayer> _layer;
    CopyProperty<NSShadow> _shadow;
    ViewPeer* _peer = nullptr; // owned; null until needed, or when its Qt parent destroyed it
};
