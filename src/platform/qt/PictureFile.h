#pragma once

// Decoding of picture files. Private to the platform layer.

#include "platform/foundation/Ref.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>

#include <memory>
#include <span>

class NSData;
class QImageReader;

/// Pictures that take more decoded are refused. Photos of phones come with 50 million pixels and more.
inline constexpr qint64 kMostPictureBytes = qint64{512} * 1024 * 1024;

/// A whole picture file. Its bytes are hostile: the structure is checked before a reader is let at them,
/// since readers take what is cut off for a picture, and make room for any size that a header declares.
class PictureFile
{
public:
    /// Null if the bytes are in no known format, or cut off.
    static std::unique_ptr<PictureFile> open(Ref<NSData> data);
    ~PictureFile();
    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;

    const Ref<NSData>& data() const { return _data; }

    /// Whether the pictures are the frames of an animation, in a format that has such.
    bool isAnimation() const { return _isAnimation; }
    /// Frames, or pictures side by side, of which 256 count.
    int count() const { return _count; }

    /// A picture counted from 0; null if it cannot be decoded or exceeds `mostBytes` with four bytes to
    /// the pixel. A frame is made of those before it: the next one is cheap, an earlier one starts from
    /// the first.
    QImage picture(int index, qint64 mostBytes = kMostPictureBytes);

private:
    PictureFile(Ref<NSData> data, QByteArray bytes, const char* format);
    void restart();

    Ref<NSData> _data;
    QByteArray _bytes; // those of _data, not copied unless prepared for the reader
    QByteArray _format;
    QBuffer _buffer;
    std::unique_ptr<QImageReader> _reader;
    bool _isAnimation = false;
    int _count = 0;
    int _next = 0; // the frame that the reader gives next
};
