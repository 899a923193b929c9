#include "support/Drags.h"

#include "platform/appkit/NSView.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QWidget>

Drag::Drag(NSView& view, Qt::DropActions actions) : _widget(view.widget()), _actions(actions) {}

bool Drag::enter(QPoint place)
{
    QDragEnterEvent event(place, _actions, &data, Qt::LeftButton, Qt::NoModifier);
    return send(event) && event.isAccepted();
}

Qt::DropAction Drag::moveTo(QPoint place)
{
    QDragMoveEvent event(place, _actions, &data, Qt::LeftButton, Qt::NoModifier);
    return send(event) && event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

Qt::DropAction Drag::drop(QPoint place)
{
    QDropEvent event(place, _actions, &data, Qt::LeftButton, Qt::NoModifier);
    return send(event) && event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
}

void Drag::leave()
{
    QDragLeaveEvent event;
    send(event);
}

bool Drag::send(QEvent& event)
{
    return _widget && QCoreApplication::sendEvent(_widget, &event);
}
