#include "platform/qt/PopoverPeer.h"

#include "platform/appkit/NSPopover.h"
#include "platform/qt/ViewPeer.h"

#include <QCloseEvent>
#include <QScreen>

#include <algorithm>

namespace
{

/// The place for something of a size outside of a rectangle, in the middle of a side of it.
QRect placeAt(const QRect& anchor, QSize size, Qt::Edge side)
{
    QRect place({}, size);
    place.moveCenter(anchor.center());
    switch (side) {
    case Qt::LeftEdge:
        place.moveRight(anchor.left() - 1);
        break;
    case Qt::RightEdge:
        place.moveLeft(anchor.right() + 1);
        break;
    case Qt::TopEdge:
        place.moveBottom(anchor.top() - 1);
        break;
    case Qt::BottomEdge:
        place.moveTop(anchor.bottom() + 1);
        break;
    }
    return place;
}

Qt::Edge opposite(Qt::Edge side)
{
    switch (side) {
    case Qt::LeftEdge:
        return Qt::RightEdge;
    case Qt::RightEdge:
        return Qt::LeftEdge;
    case Qt::TopEdge:
        return Qt::BottomEdge;
    case Qt::BottomEdge:
        break;
    }
    return Qt::TopEdge;
}

/// Whether the side of a rectangle on which something is leaves room for it.
bool fits(const QRect& place, const QRect& screen, Qt::Edge side)
{
    return side == Qt::LeftEdge || side == Qt::RightEdge
               ? place.left() >= screen.left() && place.right() <= screen.right()
               : place.top() >= screen.top() && place.bottom() <= screen.bottom();
}

} // namespace

PopoverPeer::PopoverPeer(NSPopover& popover) : QFrame(nullptr, Qt::Popup), _popover(&popover)
{
    setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    setAttribute(Qt::WA_NoMouseReplay); // a press that closes it is no press on what is below
    _closing.setSingleShot(true);
    connect(&_closing, &QTimer::timeout, this, &QWidget::hide);
}

void PopoverPeer::abandon()
{
    _popover = nullptr;
    release();
    destroyWidget(this);
}

void PopoverPeer::release()
{
    for (QWidget* content : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        content->setParent(nullptr);
    }
}

void PopoverPeer::showBeside(QWidget& content, QWidget& beside, const QRect& anchor, Qt::Edge side)
{
    if (_beside) {
        _beside->removeEventFilter(this);
        disconnect(_beside, nullptr, &_closing, nullptr);
    }
    _closing.stop();
    _beside = &beside;
    beside.installEventFilter(this);
    connect(&beside, &QObject::destroyed, &_closing, qOverload<>(&QTimer::start));

    content.setParent(this);
    content.move(frameWidth(), frameWidth());
    content.show();
    const QSize size = content.size() + 2 * QSize(frameWidth(), frameWidth());
    const QRect around(beside.mapToGlobal(anchor.topLeft()), anchor.size());
    const QRect screen = beside.screen()->availableGeometry();
    QRect place = placeAt(around, size, side);
    if (const QRect other = placeAt(around, size, opposite(side));
        !fits(place, screen, side) && fits(other, screen, side)) {
        place = other;
    }
    place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() + 1 - size.width())));
    place.moveTop(std::max(screen.top(), std::min(place.top(), screen.bottom() + 1 - size.height())));
    setGeometry(place);
    show();
}

void PopoverPeer::setVisible(bool visible)
{
    QFrame::setVisible(visible);
    if (!visible && _popover != nullptr) {
        _popover->didClose();
    }
}

void PopoverPeer::closeEvent(QCloseEvent* event)
{
    // The toolkit would go on closing a window that the delegate shows again at once.
    event->ignore();
    hide();
}

bool PopoverPeer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide && !event->spontaneous()) {
        _closing.start();
    }
    return QFrame::eventFilter(watched, event);
}
