#pragma once

// What fonts and images hold on Qt's side. Private to the platform layer.

#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSImage.h"

#include <QFont>
#include <QImage>
#include <QString>

struct NSFont::Native {
    QString name; // as asked for
    double pointSize = NSFont::kDefaultSize;
    QFont font;         // of the next whole size, since Qt sets no text in others
    double scale = 1.0; // from there to the size
};

struct NSImage::Native {
    QImage image; // null for an image that shows nothing
    NSSize size;
};
