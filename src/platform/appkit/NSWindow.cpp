#include "platform/appkit/NSWindow.h"

#include "platform/appkit/NSView.h"
#include "platform/foundation/NSString.h"
#include "platform/qt/Conversions.h"
#include "platform/qt/ViewPeer.h"

#include <QGuiApplication>
#include <QResizeEvent>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cmath>

/// The desktop's window. Belongs to the window.
class WindowPeer final : public QWidget
{
public:
    explicit WindowPeer(NSWindow& window) : _window(&window) {}

    /// Called by the window's destructor: nothing reaches it any more, and the widget is destroyed.
    void abandon()
    {
        _window = nullptr;
        destroyWidget(this);
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        if (_window != nullptr) {
            _window->placeContent();
            if (event->oldSize().isValid()) { // it did not just come on the screen
                _window->didResize();
            }
        }
    }

    void closeEvent(QCloseEvent* /*event*/) override
    {
        if (_window != nullptr) {
            _window->willClose();
        }
    }

private:
    NSWindow* _window; // null once it is gone
};

namespace
{

constexpr double kLargest = QWIDGETSIZE_MAX;

/// A length in whole points, `least` where there is none.
int lengthOf(double points, int least)
{
    return points >= least ? static_cast<int>(std::lround(std::min(points, kLargest))) : least;
}

} // namespace

void NSWindowDelegate::windowDidResize(NSWindow* /*window*/) {}

void NSWindowDelegate::windowWillClose(NSWindow* /*window*/) {}

NSWindow::NSWindow() : _peer(new WindowPeer(*this)) {}

NSWindow::~NSWindow()
{
    setContentView(nullptr);
    _peer->abandon();
}

NSWindow* NSWindow::initWithContentRect_styleMask(NSRect contentRect, NSWindowStyleMask style)
{
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint;
    flags.setFlag(Qt::WindowTitleHint, (style & NSWindowStyleMaskTitled) != 0);
    flags.setFlag(Qt::WindowSystemMenuHint, (style & NSWindowStyleMaskTitled) != 0);
    flags.setFlag(Qt::FramelessWindowHint, (style & NSWindowStyleMaskTitled) == 0);
    flags.setFlag(Qt::WindowCloseButtonHint, (style & NSWindowStyleMaskClosable) != 0);
    flags.setFlag(Qt::WindowMinimizeButtonHint, (style & NSWindowStyleMaskMiniaturizable) != 0);
    flags.setFlag(Qt::WindowMaximizeButtonHint, (style & NSWindowStyleMaskResizable) != 0);
    _peer->setWindowFlags(flags);

    const auto rounded = [](double points) {
        return std::isfinite(points) ? static_cast<int>(std::lround(std::clamp(points, -kLargest, kLargest)))
                                     : 0;
    };
    QSize size(lengthOf(contentRect.size.width, 1), lengthOf(contentRect.size.height, 1));
    QPoint corner(rounded(contentRect.origin.x), -rounded(contentRect.origin.y));
    const QScreen* screen = QGuiApplication::primaryScreen();
    _resizable = (style & NSWindowStyleMaskResizable) != 0;
    if (!_resizable) {
        _peer->setFixedSize(size);
    } else if (screen != nullptr) {
        size = size.boundedTo(screen->availableSize());
    }
    if (screen != nullptr) {
        corner += screen->geometry().topLeft() + QPoint(0, screen->geometry().height());
    }
    QRect place(corner - QPoint(0, size.height()), size);
    if (screen != nullptr && (style & NSWindowStyleMaskTitled) != 0) { // by which the user moves it
        place.moveTop(std::max(place.top(), screen->availableGeometry().top()));
    }
    _peer->setGeometry(place);
    placeContent();
    return this;
}

NSSize NSWindow::contentSize() const
{
    return fromQt(QRectF(_peer->rect())).size;
}

void NSWindow::setContentMinSize(NSSize size)
{
    if (_resizable) {
        _peer->setMinimumSize(lengthOf(size.width, 0), lengthOf(size.height, 0));
        placeContent();
    }
}

void NSWindow::setTitle(Ref<NSString> title)
{
    _peer->setWindowTitle(title ? toQt(*title) : QString());
}

void NSWindow::setContentView(Ref<NSView> view)
{
    if (_contentView == view) {
        return;
    }
    if (view) {
        view->leaveItsPlace();
    }
    while (const Ref<NSView> old = std::exchange(_contentView, nullptr)) { // which may put in another
        old->_contentWindow = nullptr;
        if (old->_peer != nullptr) {
            old->_peer->detach();
        }
    }
    if (!view) {
        return;
    }
    _contentView = std::move(view);
    _contentView->_contentWindow = this;
    QWidget* content = _contentView->widget();
    content->setParent(_peer);
    placeContent();
    content->setVisible(!_contentView->isHidden());
}

void NSWindow::placeContent()
{
    if (_contentView) {
        _contentView->widget()->setGeometry(_peer->rect());
        _contentView->setFrame(fromQt(QRectF(_peer->rect())));
    }
}

void NSWindow::didResize()
{
    const EventInProgress progress;
    const Ref<NSWindow> self(this);
    const Ref<NSObject> listener = delegate();
    if (auto* const heard = dynamic_cast<NSWindowDelegate*>(listener.get())) {
        heard->windowDidResize(this);
    }
}

void NSWindow::willClose()
{
    const EventInProgress progress;
    const Ref<NSWindow> self(this);
    const Ref<NSObject> listener = delegate();
    if (auto* const heard = dynamic_cast<NSWindowDelegate*>(listener.get())) {
        heard->windowWillClose(this);
    }
}

void NSWindow::makeKeyAndOrderFront()
{
    _peer->show();
    _peer->raise();
    _peer->activateWindow();
}

bool NSWindow::isKeyWindow() const
{
    return _peer->isActiveWindow();
}

void NSWindow::invalidateCursorRectsForView(NSView* view)
{
    if (view != nullptr) {
        view->invalidateCursorRects();
    }
}
