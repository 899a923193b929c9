#include "platform/appkit/NSCursor.h"

#include <QCoreApplication>

template <NSCursor::Shape shape> Ref<NSCursor> NSCursor::cursor()
{
    static const Ref<NSCursor> only = make<NSCursor>(shape);
    return QCoreApplication::instance() != nullptr ? only : nullptr;
}

Ref<NSCursor> NSCursor::IBeamCursor()
{
    return cursor<Shape::IBeam>();
}

Ref<NSCursor> NSCursor::pointingHandCursor()
{
    return cursor<Shape::PointingHand>();
}
