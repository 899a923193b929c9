#pragma once

#include "platform/foundation/NSData.h"

#include <QByteArray>
#include <QColor>
#include <QImage>

#include <vector>

/// A picture whose pixels differ in every component.
QImage sample(int width, int height, QImage::Format format = QImage::Format_ARGB32);

/// The picture as a file in a format that Qt writes.
QByteArray encoded(const QImage& picture, const char* format);

/// A number as so many bytes, the lowest first.
QByteArray little(unsigned number, int bytes);

/// A GIF file with frames of one pixel in the given ones of the colours black, red, green and blue.
QByteArray gif(const std::vector<int>& frames);

/// A TIFF file with a page of eight bits to the component and alpha for each picture, the directory of
/// each before its pixels: a strip for each row, or a tile, of 16 pixels a side as the picture then is.
QByteArray tiff(const std::vector<QImage>& pages, bool isBigEndian = false, bool isTiled = false);

Ref<NSData> dataOf(const QByteArray& bytes);
