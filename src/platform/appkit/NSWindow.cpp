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

namespace
{

/// The desktop's window: keeps its one child as large as itself.
class WindowPeer final : public QWidget
{
protected:
    void resizeEvent(QResizeEvent* event) override
    {
        for (QWidget* content : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            content->resize(event->size());
        }
    }
};

} // namespace

NSWindow::NSWindow() : _peer(new WindowPeer) {}

NSWindow::~NSWindow()
{
    setContentView(nullptr);
    destroyWidget(_peer);
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

    static constexpr double kLargest = QWIDGETSIZE_MAX;
    const auto length = [](double points) {
        return points >= 1.0 ? static_cast<int>(std::lround(std::min(points, kLargest))) : 1;
    };
    const auto place = [](double points) {
        return std::isfinite(points) ? static_cast<int>(std::lround(std::clamp(points, -kLargest, kLargest)))
                                     : 0;
    };
    const QSize size(length(contentRect.size.width), length(contentRect.size.height));
    if ((style & NSWindowStyleMaskResizable) == 0) {
        _peer->setFixedSize(size);
    }
    QPoint corner(place(contentRect.origin.x), -place(contentRect.origin.y) - size.height());
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        corner += screen->geometry().topLeft() + QPoint(0, screen->geometry().height());
    }
    _peer->setGeometry(QRect(corner, size));
    return this;
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
    if (const Ref<NSView> old = std::exchange(_contentView, nullptr)) {
        old->_contentWindow = nullptr;
        if (old->_peer != nullptr) {
            old->_peer->detach();
        }
    }
    if (!view) {
        return;
    }
    view->leaveItsPlace();
    _contentView = std::move(view);
    _contentView->_contentWindow = this;
    QWidget* content = _contentView->widget();
    content->setParent(_peer);
    content->setGeometry(_peer->rect());
    _contentView->setFrame(fromQt(QRectF(_peer->rect())));
    content->setVisible(!_contentView->isHidden());
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
