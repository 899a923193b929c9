#include "platform/appkit/NSView.h"

#include "platform/appkit/CALayer.h"
#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSTrackingArea.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/Diagnostics.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/graphics/NSImage.h"
#include "platform/graphics/NSShadow.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/Native.h"
#include "platform/qt/ViewPeer.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

constexpr std::array kProperties{
    property<&NSView::isHidden, &NSView::setHidden>("hidden"),
    property<&NSView::toolTip, &NSView::setToolTip>("toolTip"),
    property<&NSView::accessibilityLabel, &NSView::setAccessibilityLabel>("accessibilityLabel"),
};

/// Counts the changes to the places of views, by which cursor rectangles go out of date.
std::uint64_t placing = 1;

} // namespace

constinit const ClassTable NSView::table{"NSView", &NSObject::table, kProperties, {}, makeObject<NSView>};

const ClassTable& NSView::classTable() const
{
    return table;
}

NSView::NSView() = default;

NSView::~NSView()
{
    if (_layer) {
        _layer->_view = nullptr;
    }
    detachPeersOfSubviews();
    for (const Ref<NSView>& subview : _subviews) {
        subview->_superview = nullptr;
    }
    if (_peer != nullptr) {
        std::exchange(_peer, nullptr)->abandon();
    }
}

NSView* NSView::initWithFrame(NSRect frame)
{
    setFrame(frame);
    return this;
}

// Geometry

void NSView::setFrame(NSRect frame)
{
    const auto finite = [](double number) { return std::isfinite(number) ? number : 0.0; };
    const NSSize size{std::max(finite(frame.size.width), 0.0), std::max(finite(frame.size.height), 0.0)};
    const bool resized = _frame.size != size;
    ++placing;
    _frame = {{finite(frame.origin.x), finite(frame.origin.y)}, size};
    placePeer();
    if (resized) {
        sizeDidChange();
    }
}

void NSView::takeSizeOfPeer(NSSize size)
{
    ++placing;
    _frame.size = size;
    sizeDidChange();
}

void NSView::takePlaceOfPeer()
{
    NSRect place = fromQt(_peer->placeInSuperview());
    const NSPoint origin = _superview->originOfPeer();
    place.origin.x += origin.x;
    place.origin.y = _superview->isFlipped()
                         ? place.origin.y + origin.y
                         : _superview->_frame.size.height - place.origin.y - place.size.height;
    const bool resized = _frame.size != place.size;
    ++placing;
    _frame = place;
    if (resized) {
        sizeDidChange();
    }
}

void NSView::sizeDidChange()
{
    _dirtyRect = NSZeroRect;
    setNeedsDisplay();
    placePeersOfSubviews(); // unflipped, their distance from the bottom edge stays
}

void NSView::placePeersOfSubviews()
{
    _placesFlipped = isFlipped();
    for (const Ref<NSView>& subview : _subviews) {
        subview->placePeer();
    }
}

void NSView::turnSubviews()
{
    if (_placesFlipped != isFlipped()) {
        placePeersOfSubviews();
    }
}

void NSView::turnAllInside()
{
    turnSubviews();
    for (const Ref<NSView>& subview : _subviews) {
        subview->turnAllInside();
    }
}

NSPoint NSView::convertToSuperview(NSPoint point) const
{
    const bool superviewFlipped = _superview != nullptr && _superview->isFlipped();
    const double y = isFlipped() == superviewFlipped ? point.y : _frame.size.height - point.y;
    return {_frame.origin.x + point.x, _frame.origin.y + y};
}

NSPoint NSView::convertFromSuperview(NSPoint point) const
{
    const bool superviewFlipped = _superview != nullptr && _superview->isFlipped();
    const double y = point.y - _frame.origin.y;
    return {point.x - _frame.origin.x, isFlipped() == superviewFlipped ? y : _frame.size.height - y};
}

NSPoint NSView::convertToWindow(NSPoint point) const
{
    for (const NSView* view = this; view != nullptr; view = view->_superview) {
        point = view->convertToSuperview(point);
    }
    return point;
}

NSPoint NSView::convertFromWindow(NSPoint point) const
{
    if (_superview != nullptr) {
        point = _superview->convertFromWindow(point);
    }
    return convertFromSuperview(point);
}

NSPoint NSView::convertPoint_fromView(NSPoint point, const NSView* view) const
{
    return convertFromWindow(view == nullptr ? point : view->convertToWindow(point));
}

NSPoint NSView::convertPoint_toView(NSPoint point, const NSView* view) const
{
    const NSPoint inWindow = convertToWindow(point);
    return view == nullptr ? inWindow : view->convertFromWindow(inWindow);
}

NSRect NSView::convertRect_fromView(NSRect rect, const NSView* view) const
{
    const auto [x, y] = convertPoint_fromView(rect.origin, view);
    const double otherY = convertPoint_fromView({x, rect.origin.y + rect.size.height}, view).y;
    return {{x, std::min(y, otherY)}, rect.size};
}

NSRect NSView::convertRect_toView(NSRect rect, const NSView* view) const
{
    const auto [x, y] = convertPoint_toView(rect.origin, view);
    const double otherY = convertPoint_toView({x, rect.origin.y + rect.size.height}, view).y;
    return {{x, std::min(y, otherY)}, rect.size};
}

NSRect NSView::visibleRect() const
{
    return _superview == nullptr
               ? bounds()
               : NSIntersectionRect(bounds(), convertRect_fromView(_superview->visibleRect(), _superview));
}

// The tree

bool NSView::isSelfOrInside(const NSView& other) const
{
    for (const NSView* view = this; view != nullptr; view = view->_superview) {
        if (view == &other) {
            return true;
        }
    }
    return false;
}

void NSView::addSubview(Ref<NSView> view)
{
    if (!view || isSelfOrInside(*view)) {
        diagnose("addSubview", "a view cannot be put into itself, and null is no view");
        return;
    }
    view->leaveItsPlace();
    ++placing;
    view->_superview = this;
    _subviews.push_back(view);
    if (_peer != nullptr) {
        view->widget();
        view->_peer->attach();
    }
}

void NSView::removeFromSuperview()
{
    if (_superview == nullptr) {
        return;
    }
    const Ref<NSView> self(this);
    ++placing;
    std::erase(std::exchange(_superview, nullptr)->_subviews, self);
    if (_peer != nullptr) {
        _peer->detach();
    }
}

void NSView::leaveItsPlace()
{
    removeFromSuperview();
    if (_contentWindow != nullptr) {
        _contentWindow->setContentView(nullptr);
    }
}

Ref<NSWindow> NSView::window() const
{
    const NSView* top = this;
    while (top->_superview != nullptr) {
        top = top->_superview;
    }
    return top->_contentWindow;
}

void NSView::setHidden(bool hidden)
{
    ++placing;
    _hidden = hidden;
    if (_peer != nullptr) {
        _peer->setHidden(hidden);
    }
}

Ref<NSString> NSView::toolTip() const
{
    return _toolTip.get();
}

void NSView::setToolTip(Ref<NSString> text)
{
    _toolTip.set(text);
    if (_peer != nullptr) {
        _peer->showToolTip(text.get());
        _peer->announceChanges();
    }
}

// Drawing

void NSView::drawRect(NSRect /*rect*/) {}

void NSView::setWantsLayer(bool wantsLayer)
{
    if (wantsLayer == this->wantsLayer()) {
        return;
    }
    if (_layer) {
        _layer->_view = nullptr;
    }
    _layer = wantsLayer ? make<CALayer>(this) : nullptr;
    castShadow();
    setNeedsDisplay();
}

Ref<NSShadow> NSView::shadow() const
{
    return _shadow.get();
}

void NSView::setShadow(Ref<NSShadow> shadow)
{
    _shadow.set(shadow);
    castShadow();
}

void NSView::castShadow()
{
    if (_peer != nullptr) {
        _peer->castShadow();
    }
}

void NSView::displayRectIgnoringOpacity_inContext(NSRect rect, NSGraphicsContext& context)
{
    const NSGraphicsContext::Scope scope(context);
    if (const Ref<NSColor> background = _layer ? _layer->backgroundColor() : nullptr) {
        context.saveGraphicsState();
        context.setFillColor(*background);
        context.fillRect(bounds());
        context.restoreGraphicsState();
    }
    drawRect(rect);
}

void NSView::setNeedsDisplay(bool needed)
{
    if (needed) {
        setNeedsDisplayInRect(bounds());
    }
}

void NSView::setNeedsDisplayInRect(NSRect rect)
{
    turnSubviews();
    const NSRect visible = NSIntersectionRect(rect, bounds());
    _dirtyRect = NSUnionRect(_dirtyRect, visible);
    if (_peer != nullptr && !NSIsEmptyRect(visible)) {
        _peer->requestRepaint(visible);
    }
}

NSRect NSView::takeUpdateRect(NSRect exposed)
{
    // What the toolkit repaints by itself (a subview changed, a window was uncovered) is no reason to
    // have a view draw a smaller face than its own: views may take the rectangle for their size. The
    // toolkit repaints whole points, hence the margin.
    const NSRect dirty = std::exchange(_dirtyRect, NSZeroRect);
    const bool asked = !NSIsEmptyRect(dirty) && NSContainsRect(NSInsetRect(dirty, -1.0, -1.0), exposed);
    return asked ? dirty : bounds();
}

Ref<NSImage> NSView::imageOfBounds(double scale)
{
    constexpr double kLargestImage = 16384.0;
    const double width = std::round(_frame.size.width * scale);
    const double height = std::round(_frame.size.height * scale);
    if (!(width >= 1.0 && height >= 1.0 && width <= kLargestImage && height <= kLargestImage)) {
        return nullptr;
    }
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    turnAllInside();
    widget()->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);

    Ref<NSImage> picture = make<NSImage>()->initWithSize(_frame.size);
    const auto bitmap = make<NSBitmapImageRep>(std::make_unique<NSBitmapImageRep::Native>(image));
    bitmap->setSize(_frame.size);
    picture->addRepresentation(bitmap);
    return picture;
}

// Events

void NSView::viewDidHide() {}

void NSView::mouseDown(NSEvent* event)
{
    if (_superview != nullptr) {
        _superview->mouseDown(event);
    }
}

void NSView::mouseDragged(NSEvent* event)
{
    if (_superview != nullptr) {
        _superview->mouseDragged(event);
    }
}

void NSView::mouseUp(NSEvent* event)
{
    if (_superview != nullptr) {
        _superview->mouseUp(event);
    }
}

Ref<NSMenu> NSView::menuForEvent(NSEvent* /*event*/)
{
    return nullptr;
}

void NSView::mouseEntered(NSEvent* /*event*/) {}

void NSView::mouseExited(NSEvent* /*event*/) {}

void NSView::addTrackingArea(Ref<NSTrackingArea> area)
{
    if (area) {
        _trackingAreas.push_back(std::move(area));
    }
}

void NSView::removeTrackingArea(NSTrackingArea* area)
{
    const Ref<NSTrackingArea> removed(area);
    if (std::erase(_trackingAreas, removed) != 0) {
        removed->_entered = false;
    }
}

void NSView::updateTrackingAreas(std::optional<NSPoint> pointer, bool inKeyWindow)
{
    const std::vector<Ref<NSTrackingArea>> areas = _trackingAreas; // owners may change the view's
    for (const Ref<NSTrackingArea>& area : areas) {
        if (std::ranges::find(_trackingAreas, area) == _trackingAreas.end()) {
            continue;
        }
        const bool active = (area->_options & NSTrackingMouseEnteredAndExited) != 0 &&
                            (inKeyWindow || (area->_options & NSTrackingActiveInKeyWindow) == 0);
        const bool inside = active && pointer && NSMouseInRect(*pointer, bounds(), isFlipped()) &&
                            NSMouseInRect(*pointer, area->_rect, isFlipped());
        const Ref<NSView> owner = area->owner();
        if (inside == std::exchange(area->_entered, inside) || !owner) {
            continue;
        }
        const NSPoint location = pointer ? convertPoint_toView(*pointer, nullptr) : NSPoint{};
        const auto type = inside ? NSEventType::MouseEntered : NSEventType::MouseExited;
        const Ref<NSEvent> event =
            NSEvent::mouseEventWithType_location_window(type, location, window().get());
        if (inside) {
            owner->mouseEntered(event.get());
        } else {
            owner->mouseExited(event.get());
        }
    }
}

// Dragging

void NSView::registerForDraggedTypes(std::vector<NSPasteboardType> types)
{
    _draggedTypes = std::move(types);
    if (_peer != nullptr) {
        _peer->setAcceptDrops(!_draggedTypes.empty());
    }
}

bool NSView::takesDrag(const NSPasteboard& pasteboard) const
{
    const std::vector<NSPasteboardType> offered = pasteboard.types();
    return wantsAllDrags() || std::ranges::find_first_of(offered, _draggedTypes) != offered.end();
}

NSDragOperation NSView::draggingEntered(NSDraggingInfo* /*drag*/)
{
    return NSDragOperationNone;
}

NSDragOperation NSView::draggingUpdated(NSDraggingInfo* /*drag*/)
{
    return _answerToEntry;
}

void NSView::draggingExited(NSDraggingInfo* /*drag*/) {}

bool NSView::prepareForDragOperation(NSDraggingInfo* /*drag*/)
{
    return true;
}

bool NSView::performDragOperation(NSDraggingInfo* /*drag*/)
{
    return false;
}

// Cursors

void NSView::resetCursorRects() {}

void NSView::addCursorRect_cursor(NSRect rect, Ref<NSCursor> cursor)
{
    if (!NSIsEmptyRect(rect) && cursor) {
        _cursorRects.push_back({rect, std::move(cursor)});
    }
}

const std::vector<NSView::CursorRect>& NSView::cursorRects()
{
    if (_cursorRectsPlacing != placing) {
        _cursorRects.clear();
        _cursorRectsPlacing = placing;
        resetCursorRects();
    }
    return _cursorRects;
}

void NSView::invalidateCursorRects()
{
    _cursorRectsPlacing = 0;
    if (_peer != nullptr) {
        _peer->updateCursorLater();
    }
}

Ref<NSCursor> NSView::cursorAtPoint(NSPoint point)
{
    for (const auto& [rect, cursor] : cursorRects()) {
        if (NSMouseInRect(point, rect, isFlipped())) {
            return cursor;
        }
    }
    return nullptr;
}

// The keyboard

bool NSView::keyDown(NSEvent* event)
{
    return _superview != nullptr && _superview->keyDown(event);
}

void NSView::setFocusRingType(NSFocusRingType type)
{
    _focusRingType = type;
    setNeedsDisplay();
}

void NSView::acceptsFirstResponderDidChange()
{
    if (_peer != nullptr) {
        _peer->updateFocusPolicy();
    }
}

// Assistive technology

Ref<NSString> NSView::accessibilityLabel() const
{
    return _accessibilityLabel.get();
}

void NSView::setAccessibilityLabel(Ref<NSString> label)
{
    _accessibilityLabel.set(label);
    if (_peer != nullptr) {
        _peer->announceChanges();
    }
}

Ref<NSString> NSView::accessibilityHelp() const
{
    return toolTip();
}

Ref<NSNumber> NSView::accessibilityValue() const
{
    return nullptr;
}

Ref<NSNumber> NSView::accessibilityMinValue() const
{
    return nullptr;
}

Ref<NSNumber> NSView::accessibilityMaxValue() const
{
    return nullptr;
}

bool NSView::accessibilityPerformPress()
{
    return false;
}

// The peer

QWidget* NSView::widget()
{
    if (_peer != nullptr) {
        return _peer;
    }
    _peer = makePeer();
    _peer->showToolTip(toolTip().get());
    _peer->updateFocusPolicy();
    _peer->setAcceptDrops(!_draggedTypes.empty());
    placePeer();
    castShadow();
    _placesFlipped = isFlipped();
    for (const Ref<NSView>& subview : _subviews) {
        subview->widget();
        subview->_peer->attach();
    }
    return _peer;
}

ViewPeer* NSView::makePeer()
{
    return new ViewPeer(*this);
}

void NSView::placePeer()
{
    if (_peer == nullptr) {
        return;
    }
    if (_superview != nullptr && _peer->follows()) {
        takePlaceOfPeer();
        return;
    }
    const auto [x, y] = _frame.origin;
    const auto [width, height] = _frame.size;
    const bool fromBottom = _superview != nullptr && !_superview->isFlipped();
    const NSPoint origin = _superview != nullptr ? _superview->originOfPeer() : NSPoint{};
    const double left = x - origin.x;
    const double top = fromBottom ? _superview->_frame.size.height - y - height : y - origin.y;
    const auto edge = [](double position) {
        constexpr double kFarthest = 1 << 23; // beyond any screen, within what the toolkit takes
        return static_cast<int>(std::lround(std::clamp(position, -kFarthest, kFarthest)));
    };
    const QSize size(edge(left + width) - edge(left), edge(top + height) - edge(top));
    // Without a superview, the window or the host has put the peer where it is.
    const QPoint corner = _superview == nullptr ? _peer->pos() : QPoint(edge(left), edge(top));
    _peer->place(QRect(corner, size));
}

void NSView::detachPeersOfSubviews()
{
    for (const Ref<NSView>& subview : _subviews) {
        if (subview->_peer != nullptr) {
            subview->_peer->detach();
        }
    }
}
