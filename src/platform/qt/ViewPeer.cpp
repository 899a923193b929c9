#include "platform/qt/ViewPeer.h"

#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSMenuItem.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSShadow.h"
#include "platform/qt/AccessibleView.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"
#include "platform/qt/PainterGraphicsContext.h"

#include <QAbstractScrollArea>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGraphicsDropShadowEffect>
#include <QMenu>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTextDocument> // Qt::mightBeRichText
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

namespace
{

/// Events of peers that are being handled at the moment, nested ones included.
int eventsInProgress = 0;

/// Those of them in which a view draws: Qt walks its widgets then, and none may change its place among them.
int drawingsInProgress = 0;

/// Widgets that are to be destroyed when no event is being handled any more.
std::vector<QPointer<QWidget>>& doomed()
{
    static std::vector<QPointer<QWidget>> widgets;
    return widgets;
}

class DrawingInProgress
{
public:
    DrawingInProgress() { ++drawingsInProgress; }
    ~DrawingInProgress() { --drawingsInProgress; }
    DrawingInProgress(const DrawingInProgress&) = delete;
    DrawingInProgress& operator=(const DrawingInProgress&) = delete;
};

/// The toolkit's shadow, with a blur that is as wide in points on every device. The toolkit's blur radius is
/// in pixels, and about four times the standard deviation.
class ShadowEffect final : public QGraphicsDropShadowEffect
{
public:
    explicit ShadowEffect(const NSShadow& shadow)
        : _blurRadius(2.0 * limited(shadow.shadowBlurRadius(), 0.0, kLargestBlurRadius))
    {
        setColor(toQt(*shadow.shadowColor()));
        setOffset(limited(shadow.shadowOffset().width, -kFarthest, kFarthest),
                  -limited(shadow.shadowOffset().height, -kFarthest, kFarthest));
        setBlurRadius(_blurRadius);
    }

protected:
    void draw(QPainter* painter) override
    {
        setBlurRadius(_blurRadius * painter->device()->devicePixelRatioF()); // where new, asks for a redraw
        QGraphicsDropShadowEffect::draw(painter);
    }

private:
    // Beyond, the pictures that the toolkit makes of shadows grow large and slow.
    static constexpr double kLargestBlurRadius = 100.0;
    static constexpr double kFarthest = 500.0;

    static double limited(double points, double least, double most)
    {
        return std::isnan(points) ? 0.0 : std::clamp(points, least, most);
    }

    double _blurRadius;
};

/// Shows a menu until an item is chosen or the user presses elsewhere, at the longest until `view` is gone.
/// Returns at once.
void popUp(const NSMenu& menu, QPoint place, QWidget& view)
{
    auto* const shown = new QMenu(&view);
    shown->setAttribute(Qt::WA_DeleteOnClose);
    for (const Ref<NSMenuItem>& item : menu.itemArray()) {
        QAction* const line = shown->addAction(toQt(*item->title()).replace(u'&', QStringLiteral("&&")));
        line->setEnabled(item->isEnabled());
        QObject::connect(line, &QAction::triggered, line, [item] {
            const EventInProgress progress; // the menu goes with the view, which the action may end
            item->perform();
        });
    }
    shown->popup(place);
}

/// As what a view gets an event of the pointer; none for all others.
std::optional<NSEventType> typeOf(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return NSEventType::LeftMouseDown;
    case QEvent::MouseMove:
        return NSEventType::LeftMouseDragged;
    case QEvent::MouseButtonRelease:
        return NSEventType::LeftMouseUp;
    case QEvent::ContextMenu:
        return NSEventType::RightMouseDown;
    default:
        return std::nullopt;
    }
}

/// Has a view's frame follow its widget, and the toolkit's own widgets around that up to the next view's.
class Follower final : public QObject
{
public:
    explicit Follower(ViewPeer& peer) : _peer(peer)
    {
        QWidget* widget = &peer;
        do {
            widget->installEventFilter(this);
            widget = widget->parentWidget();
        } while (widget != nullptr && dynamic_cast<ViewPeer*>(widget) == nullptr);
    }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Move || event->type() == QEvent::Resize) {
            _peer.didMove();
        }
        return false;
    }

private:
    ViewPeer& _peer;
};

} // namespace

EventInProgress::EventInProgress()
{
    ++eventsInProgress;
}

EventInProgress::~EventInProgress()
{
    if (--eventsInProgress > 0) {
        return;
    }
    // Qt's own deletion "later" may be in the middle of an event that runs an event loop, for a panel.
    for (const QPointer<QWidget>& widget : std::exchange(doomed(), {})) {
        if (widget) {
            widget->deleteLater();
        }
    }
}

Ref<NSEvent> keyEvent(const QKeyEvent& event, const NSView& view)
{
    return NSEvent::keyEventWithType_characters_isARepeat_window(NSEventType::KeyDown, fromQt(event.text()),
                                                                 event.isAutoRepeat(), view.window().get());
}

void destroyWidget(QWidget* widget)
{
    if (eventsInProgress == 0) {
        delete widget;
        return;
    }
    widget->hide();
    if (drawingsInProgress == 0) {
        widget->setParent(nullptr);
    }
    doomed().emplace_back(widget);
}

ViewPeer::ViewPeer(NSView& view) : _view(&view)
{
    setMouseTracking(true);
    AccessibleView::install();
}

ViewPeer::ViewPeer(QAbstractScrollArea& surroundings, Surroundings kind, std::function<void(QEvent*)> handle)
    : _view(nullptr), _outermost(&surroundings), _fixed(kind == Surroundings::Fixed),
      _handle(std::move(handle))
{
    setMouseTracking(true);
    AccessibleView::install();
}

ViewPeer::~ViewPeer()
{
    if (_view != nullptr) {
        // The peers of the subviews are not Qt's to destroy.
        _view->detachPeersOfSubviews();
        _view->_peer = nullptr;
    }
}

void ViewPeer::abandon()
{
    _view = nullptr;
    if (!_handle) {
        destroyWidget(this);
    }
}

void ViewPeer::show(NSView* view)
{
    if (_view != nullptr) {
        _view->detachPeersOfSubviews();
        _view->_peer = nullptr;
    }
    _view = view;
    update();
}

void ViewPeer::embed(QWidget* widget)
{
    if (_embedded) {
        destroyWidget(_embedded);
    }
    _embedded = widget;
    if (widget == nullptr) {
        return;
    }
    widget->setParent(this);
    widget->installEventFilter(this);
    for (QWidget* part : widget->findChildren<QWidget*>()) {
        if (part->window() == window()) { // others, that open, are no part of the view
            part->setMouseTracking(true);
            part->installEventFilter(this);
        }
    }
    setTabOrder(this, widget);
    updateFocusPolicy();
    widget->show();
}

void ViewPeer::handOn(NSEventType type)
{
    if (_event == nullptr || typeOf(*_event) != type) {
        return;
    }
    if (_embedded) {
        _handedOn = true;
        if (type == NSEventType::LeftMouseDown) {
            _embedded->setFocus(Qt::MouseFocusReason);
        }
        return;
    }
    const QEvent::Type handled = _event->type();
    if (!_handle || handled == QEvent::ContextMenu) {
        return;
    }
    // To the toolkit only whole points are something, of which the one that the pointer is in counts. The
    // second of two quick presses is a press like any other: the first need not have been handed on.
    const auto& mouse = static_cast<const QMouseEvent&>(*_event);
    const QPointF place = placeOf(mouse);
    QMouseEvent whole(handled == QEvent::MouseButtonDblClick ? QEvent::MouseButtonPress : handled,
                      {std::floor(place.x()), std::floor(place.y())}, mouse.scenePosition(),
                      mouse.globalPosition(), mouse.button(), mouse.buttons(), mouse.modifiers(),
                      mouse.pointingDevice());
    whole.setTimestamp(mouse.timestamp());
    _handle(&whole);
}

void ViewPeer::setHidden(bool hidden)
{
    // One without a parent would show as a window of its own.
    if (_outermost->parentWidget() != nullptr) {
        _outermost->setVisible(!hidden);
    }
}

void ViewPeer::place(const QRect& geometry)
{
    _placed = geometry.size();
    setGeometry(geometry);
}

void ViewPeer::follow()
{
    _follower = std::make_unique<Follower>(*this);
}

QRectF ViewPeer::placeInSuperview() const
{
    return {mapTo(_view->superview()->widget(), QPointF()), QSizeF(size())};
}

void ViewPeer::didMove()
{
    if (_view != nullptr && _view->superview() != nullptr) {
        _view->placePeer();
    }
}

void ViewPeer::showToolTip(const NSString* text)
{
    if (text == nullptr) {
        setToolTip({});
        return;
    }
    // Shown as it stands: what looks like mark-up must not be taken for it.
    const QString plain = toQt(*text);
    const QLatin1String paragraph("<p style='white-space: pre-wrap'>%1</p>");
    setToolTip(Qt::mightBeRichText(plain) ? QString(paragraph).arg(plain.toHtmlEscaped()) : plain);
}

void ViewPeer::castShadow()
{
    const auto castNow = [this] {
        const Ref<NSShadow> shadow = _view != nullptr && _view->wantsLayer() ? _view->shadow() : nullptr;
        auto effect = shadow && shadow->shadowColor() ? std::make_unique<ShadowEffect>(*shadow) : nullptr;
        // The toolkit leaves out a shadow that falls nowhere, and then cannot draw one inside of it.
        const bool shows = effect && (!effect->offset().isNull() || effect->blurRadius() > 0.0);
        setGraphicsEffect(shows ? effect.release() : nullptr);
    };
    if (graphicsEffect() == nullptr) {
        castNow();
    } else {
        afterDrawing(castNow); // it may be the present one that is at work
    }
}

void ViewPeer::attach()
{
    if (_fixed) {
        setHidden(_view->isHidden());
        return;
    }
    const auto attachNow = [this] {
        if (_view != nullptr && _view->superview() != nullptr) {
            if (!follows()) {
                _outermost->setParent(_view->superview()->widget());
            }
            _view->placePeer();
            if (!follows() || _view->isHidden()) { // of what is around, pages hide those that do not show
                setHidden(_view->isHidden());
            }
        }
    };
    if (_outermost->parentWidget() == nullptr) {
        attachNow();
    } else {
        afterDrawing(attachNow);
    }
}

void ViewPeer::detach()
{
    if (_fixed) {
        return;
    }
    _follower = nullptr;
    if (drawingsInProgress == 0) {
        _outermost->setParent(nullptr);
        return;
    }
    _outermost->hide();
    afterDrawing([this] {
        if (_view == nullptr || !_view->hasPlace()) {
            _outermost->setParent(nullptr);
        }
    });
}

void ViewPeer::afterDrawing(const std::function<void()>& change)
{
    if (drawingsInProgress == 0) {
        change();
    } else {
        later(change);
    }
}

void ViewPeer::later(const std::function<void()>& change)
{
    auto* timer = new QTimer(this);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    connect(timer, &QTimer::timeout, this, change);
    timer->start(0);
}

void ViewPeer::updateFocusPolicy()
{
    const bool accepts = _view->acceptsFirstResponder();
    QWidget* const taker = &keyboardTaker();
    // A press takes the keyboard to what is embedded only where it is handed on.
    taker->setFocusPolicy(!accepts ? Qt::NoFocus : _embedded ? Qt::TabFocus : Qt::StrongFocus);
    if (_embedded) {
        _outermost->setFocusPolicy(Qt::NoFocus);
    }
    if (!accepts && window()->focusWidget() == taker && !focusNextChild()) {
        taker->clearFocus();
    }
}

void ViewPeer::announceChanges()
{
    if (_outermost != this && !_fixed && _view != nullptr) { // which answers for itself, by its widget's name
        if (const Ref<NSString> label = _view->accessibilityLabel()) {
            _outermost->setAccessibleName(toQt(*label));
        }
    }
    if (_embedded && _view != nullptr) {
        const Ref<NSString> label = _view->accessibilityLabel();
        _embedded->setAccessibleName(label ? toQt(*label) : QString());
    }
    if (QAccessible::isActive()) {
        // A factory of the host may have had its own idea of this widget.
        if (auto* accessible = dynamic_cast<AccessibleView*>(QAccessible::queryAccessibleInterface(this))) {
            accessible->announceChanges();
        }
    }
}

void ViewPeer::performPress()
{
    const EventInProgress progress;
    const Ref<NSView> view(_view);
    view->accessibilityPerformPress();
}

void ViewPeer::requestRepaint(NSRect rect)
{
    if (!_view->isFlipped()) {
        rect.origin.y = _view->bounds().size.height - rect.origin.y - rect.size.height;
    }
    const NSPoint origin = _view->originOfPeer();
    rect.origin = {rect.origin.x - origin.x, rect.origin.y - origin.y};
    update(toQt(NSIntersectionRect(rect, fromQt(QRectF(this->rect())))).toAlignedRect());
}

bool ViewPeer::event(QEvent* event)
{
    if (_view == nullptr) {
        return QWidget::event(event);
    }
    const EventInProgress progress;
    const Ref<NSView> view(_view);       // may be let go by whatever the event leads to
    const QPointer<ViewPeer> self(this); // may go with a host's window
    QEvent* const outer = std::exchange(_event, event);
    const bool result = QWidget::event(event);
    if (!self) {
        return result;
    }
    _event = outer;
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate) {
        updateTracking();
    }
    return result;
}

void ViewPeer::paintEvent(QPaintEvent* event)
{
    if (_view == nullptr) {
        return;
    }
    const bool flipped = _view->isFlipped();
    const double height = _view->bounds().size.height;
    const NSPoint origin = _view->originOfPeer();
    NSRect exposed = fromQt(QRectF(event->rect()).translated(toQt(origin)));
    if (!flipped) {
        exposed.origin.y = height - exposed.origin.y - exposed.size.height;
    }
    {
        const DrawingInProgress drawing;
        if (flipped != _view->_placesFlipped) {
            afterDrawing([this] {
                if (_view != nullptr) {
                    _view->setNeedsDisplay();
                }
            });
        }
        QPainter painter(this);
        painter.translate(-toQt(origin));
        const Ref<PainterGraphicsContext> context = make<PainterGraphicsContext>(painter, flipped, height);
        _view->displayRectIgnoringOpacity_inContext(_view->takeUpdateRect(exposed), *context);
    }
    const bool ring = _view->focusRingType() != NSFocusRingType::None;
    if (ring && hasFocus() && _reachedByKey) {
        drawFocusRing();
    }
    announceChanges();
}

void ViewPeer::drawFocusRing()
{
    // In two colours, one of which shows on any face; that of the style is a tint, which need not.
    constexpr double kWidth = 2.0;
    constexpr double kInnerWidth = 1.0;
    constexpr double kRadius = 4.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto draw = [&](const QColor& color, double inset, double width) {
        const double middle = inset + width * 0.5;
        painter.setPen(QPen(color, width));
        painter.drawRoundedRect(QRectF(rect()).adjusted(middle, middle, -middle, -middle), kRadius - inset,
                                kRadius - inset);
    };
    draw(palette().color(QPalette::Highlight), 0.0, kWidth);
    draw(palette().color(QPalette::Base), kWidth, kInnerWidth);
}

void ViewPeer::resizeEvent(QResizeEvent* event)
{
    // The window sizes its content view, and a host its views; all others are sized by their frames.
    if (_view != nullptr && event->size() != _placed) {
        _placed = event->size();
        _view->takeSizeOfPeer({QSizeF(_placed).width(), QSizeF(_placed).height()});
    }
}

void ViewPeer::hideEvent(QHideEvent* /*event*/)
{
    pointerAt(std::nullopt); // Qt need not tell of the pointer's leaving later
    if (_view != nullptr) {
        _view->viewDidHide();
    }
}

NSPoint ViewPeer::toView(QPointF position) const
{
    const double height = _view->bounds().size.height;
    const auto [x, y] = _view->originOfPeer();
    return {x + position.x(), _view->isFlipped() ? y + position.y() : height - position.y()};
}

QPointF ViewPeer::placeOf(const QSinglePointEvent& event) const
{
    // In the widget, Qt rounds it to whole points, but not in the window.
    const QPointF place = mapFrom(window(), event.scenePosition());
    return place.toPoint() == event.position().toPoint() ? place : event.position();
}

Ref<NSEvent> ViewPeer::eventAt(QPointF position, NSEventType type) const
{
    const NSPoint location = _view->convertPoint_toView(toView(position), nullptr);
    return NSEvent::mouseEventWithType_location_window(type, location, _view->window().get());
}

void ViewPeer::pointerAt(std::optional<QPointF> position)
{
    _pointer = position;
    updateTracking();
    updateCursor();
}

void ViewPeer::updateCursor()
{
    if (_view == nullptr || !_pointer || _handle) { // over a viewport, the toolkit's
        return;
    }
    const EventInProgress progress;
    const Ref<NSView> view(_view);
    const Ref<NSCursor> cursor = view->cursorAtPoint(toView(*_pointer));
    setCursor(!cursor                                     ? Qt::ArrowCursor
              : cursor->shape() == NSCursor::Shape::IBeam ? Qt::IBeamCursor
                                                          : Qt::PointingHandCursor);
}

void ViewPeer::updateCursorLater()
{
    later([this] { updateCursor(); });
}

void ViewPeer::updateTracking()
{
    if (_view != nullptr) {
        const bool inside = _pointer && isVisible();
        const auto pointer = inside ? std::optional(toView(*_pointer)) : std::nullopt;
        _view->updateTrackingAreas(pointer, isActiveWindow());
    }
}

void ViewPeer::enterEvent(QEnterEvent* event)
{
    pointerAt(placeOf(*event));
}

void ViewPeer::leaveEvent(QEvent* /*event*/)
{
    pointerAt(std::nullopt);
}

void ViewPeer::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton) {
        pointerAt(placeOf(*event));
        return;
    }
    _pointer = placeOf(*event);
    if (_view != nullptr && event->buttons().testFlag(Qt::LeftButton)) {
        _view->mouseDragged(eventAt(placeOf(*event), NSEventType::LeftMouseDragged).get());
    }
}

void ViewPeer::mousePressEvent(QMouseEvent* event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
    if (_view != nullptr && event->isAccepted()) {
        _view->cursorRects(); // some views find out there what can be pressed
        _view->mouseDown(eventAt(placeOf(*event), NSEventType::LeftMouseDown).get());
    }
}

void ViewPeer::mouseReleaseEvent(QMouseEvent* event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
    const QPointer<ViewPeer> self(this); // a host's window may go, and its widgets with it
    if (_view != nullptr && event->isAccepted()) {
        _view->mouseUp(eventAt(placeOf(*event), NSEventType::LeftMouseUp).get());
    }
    if (self && event->buttons() == Qt::NoButton) {
        pointerAt(placeOf(*event));
    }
}

void ViewPeer::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event); // the second of two quick presses is a press like any other
}

void ViewPeer::contextMenuEvent(QContextMenuEvent* event)
{
    event->ignore(); // the peer of the superview is asked then
    if (_view == nullptr) {
        return;
    }
    const QPointer<ViewPeer> self(this); // a host's window may go, and its widgets with it
    _view->cursorRects();
    const Ref<NSMenu> menu = _view->menuForEvent(
        eventAt(mapFromGlobal(QPointF(event->globalPos())), NSEventType::RightMouseDown).get());
    if (menu && self && _view != nullptr) {
        popUp(*menu, event->globalPos(), *this);
        event->accept();
    }
}

bool ViewPeer::eventFilter(QObject* watched, QEvent* event)
{
    auto* const part = static_cast<QWidget*>(watched);
    switch (_view != nullptr ? event->type() : QEvent::None) {
    case QEvent::Enter:
        pointerAt(part->mapTo(this, static_cast<QEnterEvent*>(event)->position()));
        return false;
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease: {
        const auto& mouse = static_cast<const QMouseEvent&>(*event);
        QMouseEvent here(mouse.type(), part->mapTo(this, mouse.position()), mouse.scenePosition(),
                         mouse.globalPosition(), mouse.button(), mouse.buttons(), mouse.modifiers(),
                         mouse.pointingDevice());
        here.setTimestamp(mouse.timestamp());
        return takeEmbedded(here) && (mouse.buttons() | mouse.button()).testFlag(Qt::LeftButton);
    }
    case QEvent::ContextMenu:
        return takeEmbedded(*event);
    default:
        return false;
    }
}

bool ViewPeer::takeEmbedded(QEvent& event)
{
    const EventInProgress progress;
    const Ref<NSView> view(_view);
    const QPointer<ViewPeer> self(this);
    QEvent* const outer = std::exchange(_event, &event);
    const bool outerHandedOn = std::exchange(_handedOn, false);
    switch (event.type()) {
    case QEvent::MouseMove:
        mouseMoveEvent(static_cast<QMouseEvent*>(&event));
        break;
    case QEvent::MouseButtonRelease:
        mouseReleaseEvent(static_cast<QMouseEvent*>(&event));
        break;
    case QEvent::ContextMenu:
        contextMenuEvent(static_cast<QContextMenuEvent*>(&event));
        break;
    default:
        mousePressEvent(static_cast<QMouseEvent*>(&event));
    }
    if (!self) {
        return true;
    }
    _event = outer;
    return !std::exchange(_handedOn, outerHandedOn) || !_embedded;
}

void ViewPeer::focusInEvent(QFocusEvent* event)
{
    switch (event->reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        break; // it comes back from elsewhere
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
        // Qt gives these reasons, too, when it moves the focus off a widget that was taken away by a press.
        _reachedByKey = window()->testAttribute(Qt::WA_KeyboardFocusChange);
        break;
    default:
        _reachedByKey = false;
    }
    QWidget::focusInEvent(event); // repaints, as for the focus that leaves
}

void ViewPeer::keyPressEvent(QKeyEvent* event)
{
    // An event that is not accepted goes on to the parent: the peer of the superview, which the view has
    // asked already and which has not the focus, and in the end to the host's widgets.
    event->ignore();
    if (_view != nullptr && hasFocus()) {
        event->setAccepted(_view->keyDown(keyEvent(*event, *_view).get()));
    }
}

Ref<NSDraggingInfo> ViewPeer::dragAt(const QDropEvent& event)
{
    _dragLocation = _view->convertPoint_toView(toView(event.position()), nullptr);
    return make<NSDraggingInfo>(_dragged, _dragLocation);
}

void ViewPeer::answer(QDropEvent& event, NSDragOperation operation)
{
    // Where the source gives no copies away, Qt would put a move in the place of ours.
    const bool copies = event.possibleActions().testFlag(Qt::CopyAction);
    _wouldTakeDrag = copies && (operation & NSDragOperationCopy) != 0;
    event.setDropAction(_wouldTakeDrag ? Qt::CopyAction : Qt::IgnoreAction);
    event.setAccepted(_wouldTakeDrag);
}

void ViewPeer::dragEnterEvent(QDragEnterEvent* event)
{
    event->ignore();                     // one that is not accepted goes on to the parent
    const QPointer<ViewPeer> self(this); // a host's window may go, and its widgets with it
    dragDidExit();                       // had Qt not told of it
    const Ref<NSPasteboard> pasteboard = NSPasteboard::Native::ofDrag(*event->mimeData());
    if (!self || _view == nullptr || !_view->takesDrag(*pasteboard)) {
        return;
    }
    NSView* const view = _view; // which `event` keeps alive, as below
    _dragged = pasteboard;
    const NSDragOperation operation = view->draggingEntered(dragAt(*event).get());
    view->_answerToEntry = operation;
    if (self) {
        answer(*event, operation);
        event->accept(); // so that the rest comes, whatever the view has answered
    }
}

void ViewPeer::dragMoveEvent(QDragMoveEvent* event)
{
    event->ignore();
    if (_view == nullptr || !_dragged) {
        return;
    }
    const QPointer<ViewPeer> self(this);
    const NSDragOperation operation = _view->draggingUpdated(dragAt(*event).get());
    if (self) {
        answer(*event, operation);
    }
}

void ViewPeer::dragLeaveEvent(QDragLeaveEvent* /*event*/)
{
    dragDidExit();
}

void ViewPeer::dragDidExit()
{
    if (const Ref<NSPasteboard> dragged = std::exchange(_dragged, nullptr)) {
        if (_view != nullptr) {
            _view->draggingExited(make<NSDraggingInfo>(dragged, _dragLocation).get());
        }
        NSPasteboard::Native::dragDidEnd(*dragged);
    }
}

void ViewPeer::dropEvent(QDropEvent* event)
{
    event->ignore();
    event->setDropAction(Qt::IgnoreAction);
    if (_view == nullptr || !_dragged || !_wouldTakeDrag) {
        dragDidExit();
        return;
    }
    NSView* const view = _view;
    const Ref<NSDraggingInfo> drag = dragAt(*event);
    _dragged = nullptr;
    if (view->prepareForDragOperation(drag.get()) && view->performDragOperation(drag.get())) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
    NSPasteboard::Native::dragDidEnd(*drag->draggingPasteboard());
}
