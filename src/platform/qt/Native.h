#pragma once

// What fonts and bitmaps hold on Qt's side. Private to the platform layer.

#include "platform/graphics/CGImage.h"
#include "platform/graphics/NSBitmapImageRep.h"
#include "platform/graphics/NSFont.h"
#include "platform/qt/PictureFile.h"

#include <QFont>
#include <QImage>
#include <QString>

struct NSFont::Native {
    QString name; // as asked for
    double pointSize = NSFont::kDefaultSize;
    QFont font;         // of the next whole size, since Qt sets no text in others
    double scale = 1.0; // from there to the size
};

struct CGImage::Native {
    explicit Native(QImage image) : pixels(std::move(image)) {}

    QImage pixels;
};

struct NSBitmapImageRep::Native {
    explicit Native(const QImage& image);
    ~Native();

    /// Takes pixels of any format over into one of four: opaque or with alpha not multiplied in, each with
    /// 8 or 16 bits to the component.
    void setPixels(const QImage& image);
    /// The pixels in the format that is painted from, kept until they change.
    const QImage& forPainting() const;

    QImage pixels;
    mutable QImage painted;                 // null when out of date
    std::unique_ptr<PictureFile> animation; // null if there is none
    int currentFrame = 0;
};
