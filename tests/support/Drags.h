#pragma once

#include <QMimeData>
#include <QPoint>
#include <QPointer>
#include <QWidget>

class NSView;

/// A drag over a view as the desktop tells of it, by a source that lets what is dragged be copied and moved
/// unless `actions` says otherwise.
class Drag
{
public:
    explicit Drag(NSView& view, Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction);

    QMimeData data;

    /// Whether the view, or one that it is in, takes part.
    bool enter(QPoint place = {1, 1});
    /// What the source learns would become of what is dragged, or has.
    Qt::DropAction moveTo(QPoint place = {2, 2});
    Qt::DropAction drop(QPoint place = {3, 3});
    void leave();

private:
    bool send(QEvent& event);

    QPointer<QWidget> _widget;
    Qt::DropActions _actions;
};
