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
#include <QPointer>
#include <QTextDocument> // Qt::mightBeRichText
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <memory>

namespace
{

/// Events of peers that are being handled at the moment, nested ones included.
int eventsInProgress = 0;

/// Those of them in which a view draws: Qt walks its widgets then, and none may change its place among them.
int drawingsInProgress = 0;

class InProgress
{
public:
    explicit InProgress(int& count) : _count(count) { ++_count; }
    ~InProgress() { --_count; }
    InProgress(const InProgress&) = delete;
    InProgress& operator=(const InProgress&) = delete;

private:
    int& _count;
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

} // namespace

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
    const auto attachNow = [this] {
        if (_view != nullptr && _view->superview() != nullptr) {
            setParent(_view->superview()->widget());
            _view->placePeer();
            setVisible(!_view->isHidden());
        }
    };
    if (parentWidget() == nullptr) {
        attachNow();
    } else {
        afterDrawing(attachNow);
    }
}

void ViewPeer::detach()
{
    if (drawingsInProgress == 0) {
        setParent(nullptr);
        return;
    }
    hide();
    afterDrawing([this] {
        if (_view == nullptr || !_view->hasPlace()) {
            setParent(nullptr);
        }
    });
}

void ViewPeer::afterDrawing(const std::function<void()>& change)
{
    if (drawingsInProgress == 0) {
        change();
        return;
    }
    auto* timer = new QTimer(this);
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, timer, &QObject::deleteLater);
    connect(timer, &QTimer::timeout, this, change);
    timer->start(0);
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
    const InProgress progress(eventsInProgress);
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
    const InProgress progress(eventsInProgress);
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
    {
        const InProgress drawing(drawingsInProgress);
        if (flipped != _view->_placesFlipped) {
            afterDrawing([this] {
                if (_view != nullptr) {
                    _view->setNeedsDisplay();
                }
            });
        }
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
    const QPointer<ViewPeer> self(this); // a host's window may go, and its widgets with it
    if (_view != nullptr && event->isAccepted()) {
        _view->mouseUp(eventAt(event->position(), NSEventType::LeftMouseUp).get());
    }
    if (self && event->buttons() == Qt::NoButton) {
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
