#pragma once

// Between the layer's types and Qt's. Private to the platform layer.

#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/Ref.h"

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>

class NSColor;
class NSString;
class NSURL;
class QUrl;

QString toQt(const NSString& text);
QColor toQt(const NSColor& color);
/// Not valid if it is not well-formed.
QUrl toQt(const NSURL& url);
inline QPointF toQt(NSPoint point)
{
    return {point.x, point.y};
}
inline QRectF toQt(NSRect rect)
{
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

Ref<NSString> fromQt(const QString& text);
inline NSPoint fromQt(QPointF point)
{
    return {point.x(), point.y()};
}
inline NSRect fromQt(const QRectF& rect)
{
    return NSMakeRect(rect.x(), rect.y(), rect.width(), rect.height());
}
