#pragma once

// The widget behind a view. Private to the platform layer.

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/Ref.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class NSDraggingInfo;
class NSEvent;
class NSPasteboard;
class NSString;
class NSView;
class QAbstractScrollArea;
class QDropEvent;
class QContextMenuEvent;
class QKeyEvent;
class QSinglePointEvent;
enum class NSEventType : unsigned long;

/// Destroys a widget that belongs to a view or window: at once, or, while an event of some view is being
/// handled, as soon as that is done.
void destroyWidget(QWidget* widget);

/// To be alive while a widget that may lead to anything handles an event: none is destroyed meanwhile.
class EventInProgress
{
public:
    EventInProgress();
    ~EventInProgress();
    EventInProgress(const EventInProgress&) = delete;
    EventInProgress& operator=(const EventInProgress&) = delete;
};

/// A key as `view` gets it.
Ref<NSEvent> keyEvent(const QKeyEvent& event, const NSView& view);

/// Shows a view and hands it what happens to it. Belongs to the view; should Qt destroy it first (with a
/// host's window), the view is told and makes a new one when needed.
class ViewPeer final : public QWidget
{
public:
    explicit ViewPeer(NSView& view);

    /// What a viewport stands in: `Movable` surroundings take the place of the view in the widget of its
    /// superview, `Fixed` ones stay where they are.
    enum class Surroundings { Movable, Fixed };
    /// The viewport of one of the toolkit's widgets, which it belongs to: shows a view from `show` on, and
    /// hands events on to that widget (`handle`) where the view leaves them to the toolkit.
    ViewPeer(QAbstractScrollArea& surroundings, Surroundings kind, std::function<void(QEvent*)> handle);
    ~ViewPeer() override;

    /// Shows another view, null for none. Only for viewports.
    void show(NSView* view);
    using QWidget::show;

    /// Has one of the toolkit's widgets, which belongs to this one from here on, do over a part of the view
    /// (`place`) what it does by itself. What the pointer does there, the view hears first, and the toolkit
    /// only if it is handed on; a press that is takes the keyboard there. Null to have none any more.
    void embed(QWidget* widget);

    /// Has the toolkit do what it does by itself with the event of that type that is being handled, if one
    /// is; what is embedded gets it when the view is done with it.
    void handOn(NSEventType type);

    /// Borrowed; null once the view is gone.
    NSView* view() const { return _view; }

    /// Gives the pointer the cursor that the view has for it, when the present event is done with.
    void updateCursorLater();

    /// Called by the view's destructor: nothing reaches the view any more, and the widget is destroyed unless
    /// it is a viewport.
    void abandon();

    /// Gives the widget the place of the view's frame.
    void place(const QRect& geometry);

    /// From now on, until the widget is taken from where it is, others place it: a layout, or widgets of the
    /// toolkit's own between it and that of the superview. The view's frame follows.
    void follow();
    bool follows() const { return _follower != nullptr; }
    /// The widget's place in that of the superview.
    QRectF placeInSuperview() const;
    /// Called when the widget that is followed has moved.
    void didMove();

    void showToolTip(const NSString* text);

    /// Shows or hides the widget, where it is in another.
    void setHidden(bool hidden);

    /// Puts the widget into that of the view's superview.
    void attach();
    /// Takes the widget out of the one that it is in.
    void detach();

    /// Casts the view's shadow from now on.
    void castShadow();

    /// Takes the keyboard from now on if the view does, or else hands it to the next widget.
    void updateFocusPolicy();
    /// What takes it for the view: the widget, what is embedded, or what the viewport stands in.
    QWidget& keyboardTaker() const { return _embedded ? *_embedded : *_outermost; }

    /// Tells assistive technology, if there is any, what is new about the view.
    void announceChanges();
    /// Has the view, which may end by it, do what a press on it would.
    void performPress();

    /// Asks for a repaint of `rect`, in the view's coordinates.
    void requestRepaint(NSRect rect);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Makes a change when the present event is done with.
    void later(const std::function<void()>& change);
    /// Makes a change to widgets, at once or, while a view draws, as soon as that is done.
    void afterDrawing(const std::function<void()>& change);
    NSPoint toView(QPointF position) const;
    /// Where the pointer is in the widget, to the fraction of a point.
    QPointF placeOf(const QSinglePointEvent& event) const;
    Ref<NSEvent> eventAt(QPointF position, NSEventType type) const;
    void pointerAt(std::optional<QPointF> position);
    void updateTracking();
    void updateCursor();
    /// Takes the pointer's event on what is embedded. Whether the toolkit does not get it.
    bool takeEmbedded(QEvent& event);
    void drawFocusRing();
    /// The drag at its place in the view, of which note is taken.
    Ref<NSDraggingInfo> dragAt(const QDropEvent& event);
    /// Gives the view's answer, an operation, to the source.
    void answer(QDropEvent& event, unsigned long operation);
    void dragDidExit();

    NSView* _view;                        // null once the view is gone
    QWidget* _outermost = this;           // what the widget stands in, if it is a viewport
    bool _fixed = false;                  // whether that stays where it is
    std::function<void(QEvent*)> _handle; // empty unless this is a viewport
    QPointer<QWidget> _embedded;          // null for none
    QEvent* _event = nullptr;             // that is being handled
    bool _handedOn = false;               // whether what is embedded gets it
    std::unique_ptr<QObject> _follower;   // null unless the frame follows
    QSize _placed;                        // the size that the view's frame asks for
    std::optional<QPointF> _pointer; // where the pointer is, in the widget's coordinates, if it is inside
    bool _reachedByKey = false;      // the way in which the focus came last
    Ref<NSPasteboard> _dragged;      // by the drag over the view; null for none
    NSPoint _dragLocation;           // in the window's coordinates
    bool _wouldTakeDrag = false;     // what the view has answered to it last
};
