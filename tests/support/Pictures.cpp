#include "support/Pictures.h"

#include <QBuffer>

#include <algorithm>
#include <array>
#include <utility>

QByteArray little(unsigned number, int bytes)
{
    QByteArray result;
    for (int i = 0; i < bytes; ++i) {
        result += static_cast<char>(number >> (8 * i) & 0xFF);
    }
    return result;
}

QImage sample(int width, int height, QImage::Format format)
{
    QImage picture(width, height, QImage::Format_ARGB32);
    for (int i = 0; i < width * height; ++i) {
        picture.setPixel(i % width, i / width, qRgba(i * 7 % 256, i * 3 % 256, 255 - i % 256, i * 5 % 256));
    }
    return picture.convertToFormat(format);
}

QByteArray encoded(const QImage& picture, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, format);
    return bytes;
}

QByteArray gif(const std::vector<int>& frames)
{
    QByteArray file("GIF89a\1\0\1\0\x81\0\0\0\0\0\xFF\0\0\0\xFF\0\0\0\xFF", 25);
    for (const int colour : frames) {
        // Codes of three bits: clear, the colour, end.
        const unsigned codes = 4U | static_cast<unsigned>(colour) << 3U | 5U << 6U;
        file += QByteArray("\x21\xF9\4\0\x0A\0\0\0\x2C\0\0\0\0\1\0\1\0\0\2\2", 20) + little(codes, 2) + '\0';
    }
    return file + '\x3B';
}

QByteArray tiff(const std::vector<QImage>& pages, bool isBigEndian, bool isTiled)
{
    const auto number = [&](unsigned value, int bytes) {
        QByteArray result = little(value, bytes);
        if (isBigEndian) {
            std::ranges::reverse(result);
        }
        return result;
    };
    QByteArray file = (isBigEndian ? "MM" : "II") + number(42, 2) + number(8, 4);
    for (std::size_t page = 0; page < pages.size(); ++page) {
        const QImage picture = pages[page].convertToFormat(QImage::Format_RGBA8888);
        constexpr unsigned kTags = 10;
        const auto width = static_cast<unsigned>(picture.width());
        const auto height = static_cast<unsigned>(picture.height());
        const unsigned parts = isTiled ? 1 : height;
        const unsigned length = width * height * 4;
        const unsigned bits = static_cast<unsigned>(file.size()) + 2 + kTags * 12 + 4;
        const unsigned starts = bits + 8;
        const unsigned pixels = starts + 8 * parts;
        const std::array<std::array<unsigned, 3>, kTags> tags{
            {{256, 1, width},
             {257, 1, height},
             {258, 4, bits},
             {isTiled ? 323U : 259U, 1, isTiled ? 16U : 1U},
             {262, 1, 2},
             {isTiled ? 324U : 273U, parts, parts == 1 ? pixels : starts},
             {277, 1, 4},
             {isTiled ? 322U : 278U, 1, isTiled ? 16U : 1U},
             {isTiled ? 325U : 279U, parts, parts == 1 ? length : starts + 4 * parts},
             {338, 1, 2}}};
        file += number(kTags, 2);
        for (const auto& [tag, count, value] : tags) {
            const bool isLong = tag == 273 || tag == 279 || tag == 324 || tag == 325;
            file += number(tag, 2) + number(isLong ? 4 : 3, 2) + number(count, 4);
            file += isLong || count > 1 ? number(value, 4) : number(value, 2) + number(0, 2);
        }
        file += number(page + 1 < pages.size() ? pixels + length : 0, 4);
        file += number(8, 2) + number(8, 2) + number(8, 2) + number(8, 2);
        for (unsigned part = 0; part < parts; ++part) {
            file += number(pixels + part * (length / parts), 4);
        }
        for (unsigned part = 0; part < parts; ++part) {
            file += number(length / parts, 4);
        }
        file += QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes());
    }
    return file;
}

Ref<NSData> dataOf(const QByteArray& bytes)
{
    return NSData::dataWithBytes_length(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}
