#pragma once

// What fonts, bitmaps and pasteboards hold on Qt's side. Private to the platform layer.

#include "platform/appkit/NSPasteboard.h"
#include "platform/graphics/CGImage.h"
#include "platform/graphics/NSBitmapImageRep.h"
#include "platform/graphics/NSFont.h"
#include "platform/qt/PictureFile.h"

#include <QFont>
#include <QImage>
#include <QMimeData>
#include <QPointer>
#include <QString>

#include <map>

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

struct NSPasteboard::Native {
    /// The pasteboard of a drag that begins. Its file names are read now, once, since they may be many.
    static Ref<NSPasteboard> ofDrag(const QMimeData& data);
    /// The data of its drag are Qt's again.
    static void dragDidEnd(NSPasteboard& pasteboard);

    bool isDrag = false;

    // Of a drag
    QPointer<const QMimeData> data;   // null when it has ended
    Ref<NSArray<NSString>> fileNames; // null for none

    // Of the clipboard
    std::vector<NSPasteboardType> declared;
    std::map<NSPasteboardType, QString> put; // since then
};
