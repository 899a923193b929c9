#include "platform/qt/ViewPeer.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSShadow.h"
#include "platform/qt/AccessibleView.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/PainterGraphicsContext.h"

#include <QGraphicsDropShadowEffect>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QTextDocument> // Qt::mightBeRichText

#include <algorithm>
#include <cmath>

namespace
{

/// Events of peers that are being handled at the moment, nested ones included.
int eventsInProgress = 0;

class EventInProgress
{
public:
    EventInProgress() { ++eventsInProgress; }
    ~EventInProgress() { --eventsInProgress; }
    EventInProgress(const EventInProgress&) = delete;
    EventInProgress& operator=(const EventInProgress&) = delete;
};

/// The toolkit's shadow, with a blur that is as wide in points on every device: the toolkit counts it in
/// pixels, and four of them to the standard deviation.
class ShadowEffect final : public QGraphicsDropShadowEffect
{
public:
    explicit ShadowEffect(const NSShadow& shadow) : _blurRadius(2.0 * limited(shadow.shadowBlurRadius(), 0.0))
    {
        setColor(toQt(*shadow.shadowColor()));
        setOffset(limited(shadow.shadowOffset().width, -kFarthest),
                  -limited(shadow.shadowOffset().height, -kFarthest));
        setBlurRadius(_blurRadius);
    }

protected:
    void draw(QPainter* painter) override
    {
        setBlurRadius(_blurRadius * painter->device()->devicePixelRatioF()); // where new, asks for a redraw
        QGraphicsDropShadowEffect::draw(painter);
    }

private:
    static constexpr double kFarthest = 500.0; // beyond, pictures of shadows grow large

    /// Also for what is no number.
    static double limited(double points, double least)
    {
        return std::isnan(points) ? 0.0 : std::clamp(points, least, kFarthest);
    }

    double _blurRadius;
};

} // namespace

void destroyWidget(QWidget* widget)
{
    if (eventsInProgress == 0) {
        delete widget;
        return;
    }
    widget->hide();
    widget->setParent(nullptr);
    widget->deleteLater();
}

ViewPeer::ViewPeer(NSView& view) : _view(&view)
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
    destroyWidget(this);
}

void ViewPeer::place(const QRect& geometry)
{
    _placed = geometry.size();
    setGeometry(geometry);
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

void ViewPeer::castShadow(const NSShadow* shadow)
{
    const bool shows = shadow != nullptr && shadow->shadowColor();
    setGraphicsEffect(shows ? new ShadowEffect(*shadow) : nullptr);
}

void ViewPeer::updateFocusPolicy()
{
    const bool accepts = _view->acceptsFirstResponder();
    setFocusPolicy(accepts ? Qt::StrongFocus : Qt::NoFocus);
    if (!accepts && window()->focusWidget() == this && !focusNextChild()) {
        clearFocus();
    }
}

void ViewPeer::announceChanges()
{
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
    update(toQt(rect).toAlignedRect());
}

bool ViewPeer::event(QEvent* event)
{
    if (_view == nullptr) {
        return QWidget::event(event);
    }
    const EventInProgress progress;
    const Ref<NSView> view(_view); // may be let go by whatever the event leads to
    const bool result = QWidget::event(event);
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
    NSRect exposed = fromQt(QRectF(event->rect()));
    if (!flipped) {
        exposed.origin.y = height - exposed.origin.y - exposed.size.height;
    }
    if (flipped != _view->_placesFlipped) {
        // Later: widgets are not moved while they are painted.
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (_view != nullptr) {
                    _view->setNeedsDisplay();
                }
            },
            Qt::QueuedConnection);
    }
    {
        QPainter painter(this);
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
    QStylePainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.state |= QStyle::State_KeyboardFocusChange;
    option.backgroundColor = palette().color(backgroundRole());
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
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
    return {position.x(), _view->isFlipped() ? position.y() : height - position.y()};
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
    pointerAt(event->position());
}

void ViewPeer::leaveEvent(QEvent* /*event*/)
{
    pointerAt(std::nullopt);
}

void ViewPeer::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton) {
        pointerAt(event->position());
        return;
    }
    _pointer = event->position();
    if (_view != nullptr && event->buttons().testFlag(Qt::LeftButton)) {
        _view->mouseDragged(eventAt(event->position(), NSEventType::LeftMouseDragged).get());
    }
}

void ViewPeer::mousePressEvent(QMouseEvent* event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
    if (_view != nullptr && event->isAccepted()) {
        _view->mouseDown(eventAt(event->position(), NSEventType::LeftMouseDown).get());
    }
}

void ViewPeer::mouseReleaseEvent(QMouseEvent* event)
{
    event->setAccepted(event->button() == Qt::LeftButton);
    if (_view != nullptr && event->isAccepted()) {
        _view->mouseUp(eventAt(event->position(), NSEventType::LeftMouseUp).get());
    }
    if (event->buttons() == Qt::NoButton) {
        pointerAt(event->position());
    }
}

void ViewPeer::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event); // the second of two quick presses is a press like any other
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
        const Ref<NSEvent> key = NSEvent::keyEventWithType_characters_isARepeat_window(
            NSEventType::KeyDown, fromQt(event->text()), event->isAutoRepeat(), _view->window().get());
        event->setAccepted(_view->keyDown(key.get()));
    }
}
