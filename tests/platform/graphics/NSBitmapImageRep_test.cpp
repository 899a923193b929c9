#include "platform/graphics/NSBitmapImageRep.h"

#include "platform/foundation/NSNumber.h"
#include "platform/graphics/CGImage.h"
#include "platform/qt/Native.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>

#include <memory>

namespace
{

Ref<NSBitmapImageRep> decoded(const QByteArray& bytes)
{
    return NSBitmapImageRep::imageRepWithData(dataOf(bytes).get());
}

Ref<NSBitmapImageRep> bitmapOf(const QImage& picture)
{
    return make<NSBitmapImageRep>(std::make_unique<NSBitmapImageRep::Native>(picture));
}

std::int64_t valueOf(const NSBitmapImageRep& bitmap, NSBitmapImageProperty property)
{
    const Ref<NSNumber> value = bitmap.valueForProperty(property);
    return value ? value->integerValue() : -1;
}

TEST(NSBitmapImageRepTest, DecodesWholeFilesExactly)
{
    for (const auto format :
         {QImage::Format_Mono, QImage::Format_Indexed8, QImage::Format_Grayscale8, QImage::Format_RGB32,
          QImage::Format_ARGB32, QImage::Format_Grayscale16, QImage::Format_RGBX64, QImage::Format_RGBA64}) {
        const QImage picture = sample(32, 32, format);
        for (const std::string_view file : {"png", "bmp", "tiff", "ico"}) {
            const auto bitmap = decoded(encoded(picture, file.data()));
            ASSERT_NE(bitmap, nullptr) << file << ' ' << format;
            EXPECT_EQ(bitmap->size(), (NSSize{32.0, 32.0}));
            EXPECT_EQ(bitmap->valueForProperty(NSImageFrameCount), nullptr);
            const bool isDeep = picture.pixelFormat().redSize() > 8;
            if (file == "png" || (file == "tiff" && (isDeep || !picture.hasAlphaChannel())) ||
                (file == "bmp" && !isDeep && !picture.hasAlphaChannel())) {
                EXPECT_EQ(bitmap->native().pixels, bitmapOf(picture)->native().pixels)
                    << file << ' ' << format;
            }
        }
    }
    EXPECT_NE(decoded(encoded(sample(40, 30), "webp")), nullptr);
}

QByteArray progressiveJpeg()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    writer.write(sample(40, 30));
    return bytes;
}

/// An icon file with the same PNG file several times.
QByteArray icon(const QByteArray& png, unsigned count)
{
    QByteArray file = QByteArray("\0\0\1\0", 4) + little(count, 2);
    for (unsigned i = 0; i < count; ++i) {
        file += QByteArray("\0\0\0\0\1\0\x20\0", 8) + little(static_cast<unsigned>(png.size()), 4) +
                little(6 + 16 * count, 4);
    }
    return file + png;
}

/// A TIFF file of one page with another directory.
QByteArray chained(QByteArray tiff, const QByteArray& directory, qsizetype next = 130)
{
    return tiff.replace(next, 4, little(static_cast<unsigned>(tiff.size()), 4)) + directory + little(0, 4);
}

/// The page several times, all with the same pixels.
QByteArray repeated(QByteArray tiff, int count)
{
    const QByteArray directory = tiff.mid(8, 122);
    qsizetype next = 130;
    for (; count > 1; --count) {
        tiff = chained(tiff, directory, next);
        next = tiff.size() - 4;
    }
    return tiff;
}

TEST(NSBitmapImageRepTest, DecodesTheForksOfItsFormats)
{
    const QImage picture = sample(9, 7, QImage::Format_RGB32);
    const QImage square = sample(16, 16, QImage::Format_RGB32);
    const QByteArray bmp = encoded(picture, "bmp");
    const QByteArray jpeg = encoded(picture, "jpeg");
    const QImage photo = QImage::fromData(jpeg);
    const QImage line = sample(9, 1, QImage::Format_RGB32);
    const QByteArray row = tiff({line});
    QImage red(1, 1, QImage::Format_RGB32);
    red.fill(Qt::red);
    QImage flat(4, 2, QImage::Format_Indexed8);
    flat.setColorTable({qRgb(0, 0, 0), qRgb(0x12, 0x34, 0x56)});
    flat.fill(1);
    QByteArray runs = encoded(flat, "bmp");
    runs.truncate(runs.size() - 8);
    runs += QByteArray("\4\x11\0\0\4\x11\0\1", 8);
    runs[30] = 2; // run lengths of four bits
    const QByteArray unsized = QByteArray(runs).replace(34, 4, QByteArray(4, '\0'));
    const QByteArray turned("\xFF\xE1\0\x22"
                            "Exif\0\0II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0\6\0\0\0\0\0\0\0",
                            36);
    struct Case {
        const char* name;
        QByteArray file;
        QImage picture; // null if refused
    };
    for (const auto& [name, file, expected] : std::initializer_list<Case>{
             {"big endian", tiff({picture}, true), picture},
             {"tile", tiff({square}, false, true), square},
             {"uncounted strip", QByteArray(row).replace(106, 1, "\x18"), line},
             {"cut uncounted strip", QByteArray(row).replace(106, 1, "\x18").chopped(1), {}},
             {"empty directory",
              chained(row, little(1, 2) + little(256, 2) + little(3, 2) + little(1, 4) + little(9, 4)), line},
             {"upside down", QByteArray(bmp).replace(22, 4, "\xF9\xFF\xFF\xFF"), picture.mirrored()},
             {"no last padding", bmp.chopped(1), picture},
             {"runs", runs, flat},
             {"cut runs", runs.chopped(1), {}},
             {"runs of no size", unsized, flat},
             {"cut runs of no size", unsized.chopped(1), {}},
             {"turned", QByteArray(jpeg).insert(2, turned), photo.transformed(QTransform().rotate(90))},
             {"trailing data", jpeg + "\xFF\xD8 and more", photo},
             {"padding", QByteArray(jpeg).insert(jpeg.indexOf("\xFF\xDB"), "abc"), photo},
             {"fill", QByteArray(jpeg).insert(jpeg.size() - 2, '\xFF'), photo},
             {"colours of a frame", gif({1}).replace(42, 1, QByteArray("\x80\0\0\0\x12\x34\x56", 7)),
              flat.copy(0, 0, 1, 1)},
             {"stray end", gif({1}).insert(48, '\0'), red},
         }) {
        const auto bitmap = decoded(file);
        ASSERT_EQ(bitmap == nullptr, expected.isNull()) << name;
        if (bitmap) {
            EXPECT_EQ(bitmap->native().pixels.convertToFormat(QImage::Format_ARGB32),
                      expected.convertToFormat(QImage::Format_ARGB32))
                << name;
        }
    }
}

TEST(NSBitmapImageRepTest, LeavesWhatCostsMuchAndShowsNothing)
{
    QImage picture = sample(9, 7);
    picture.setText("Short", "text");
    picture.setText("Long", QString(1000, 'a'));
    picture.setText("Wide", QString(1000, QChar(0x3B1)));
    const QByteArray png = encoded(picture, "png");
    EXPECT_EQ(png.count("tEXt") + png.count("zTXt") + png.count("iTXt"), 3);
    for (const auto& file : {png, icon(png, 1)}) {
        const auto bitmap = decoded(file);
        ASSERT_NE(bitmap, nullptr);
        EXPECT_EQ(bitmap->native().pixels, picture);
        EXPECT_EQ(bitmap->native().pixels.text("Long") + bitmap->native().pixels.text("Wide"), "");
    }

    const QByteArray jpeg = progressiveJpeg();
    const qsizetype scan = jpeg.lastIndexOf("\xFF\xDA");
    const auto scans = [&](qsizetype count) {
        return QByteArray(jpeg).insert(scan,
                                       jpeg.mid(scan).chopped(2).repeated(count - jpeg.count("\xFF\xDA")));
    };
    EXPECT_NE(decoded(scans(256)), nullptr);
    EXPECT_EQ(decoded(scans(257)), nullptr);

    const auto count = [](const QByteArray& file) {
        return NSBitmapImageRep::imageRepsWithData(dataOf(file).get()).size();
    };
    EXPECT_EQ(count(repeated(tiff({sample(1, 1)}), 300)), 256U);
    EXPECT_EQ(count(repeated(tiff({sample(1, 400)}), 5)), 5U);
    EXPECT_EQ(count(repeated(tiff({sample(1, 400)}), 30)), 0U) << "lists of parts longer than the file";

    const int before = QImageReader::allocationLimit();
    QImageReader::setAllocationLimit(99);
    QImage blank(8000, 8000, QImage::Format_Mono);
    blank.fill(0);
    EXPECT_EQ(count(icon(encoded(blank, "png"), 3)), 2U) << "half of the limit each";
    EXPECT_EQ(QImageReader::allocationLimit(), 99) << "put back";
    QImageReader::setAllocationLimit(before);
    QImage deep(8193, 8192, QImage::Format_Grayscale16);
    deep.fill(0);
    EXPECT_EQ(bitmapOf(deep)->native().pixels.depth(), 32);
}

/// A file and the places of its width and height, numbers of two bytes in use.
struct Sample {
    const char* name;
    QByteArray file;
    std::vector<qsizetype> sizes;
    bool isBig;
};

std::vector<Sample> samples()
{
    const QByteArray jpeg = encoded(sample(40, 30), "jpeg");
    const qsizetype frame = jpeg.indexOf("\xFF\xC0");
    const QByteArray progressive = progressiveJpeg();
    const qsizetype laterFrame = progressive.indexOf("\xFF\xC2");
    const QByteArray old("BM\0\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0\1\0\2\0\1\0\x18\0abc\0def", 33);
    return {{"old bmp", old, {18, 20}, false},
            {"bmp", encoded(sample(8, 7, QImage::Format_RGB32), "bmp"), {18, 22}, false},
            {"png", encoded(sample(9, 7), "png"), {18, 22}, true},
            {"gif", gif({1, 2, 3}), {6, 8, 38, 40}, false},
            {"tiff", tiff({sample(9, 7), sample(3, 2)}), {18, 30, 102}, false},
            {"progressive jpeg", progressive, {laterFrame + 5, laterFrame + 7}, true},
            {"jpeg", jpeg, {frame + 5, frame + 7}, true}};
}

TEST(NSBitmapImageRepTest, RefusesFilesThatAreCutOff)
{
    for (const auto& [name, file, sizes, isBig] : samples()) {
        EXPECT_NE(decoded(file), nullptr) << name;
        for (qsizetype length = 0; length < file.size(); ++length) {
            EXPECT_EQ(decoded(file.left(length)), nullptr) << name << ' ' << length << '/' << file.size();
        }
    }
    EXPECT_EQ(decoded(gif({})), nullptr);
    EXPECT_EQ(decoded("just text, as long as a header of a picture might well be in one of the formats"),
              nullptr);
    EXPECT_EQ(NSBitmapImageRep::imageRepWithData(nullptr), nullptr);
}

/// Brings the check sum of a PNG file's header up to date.
void seal(QByteArray& png)
{
    std::uint32_t sum = ~0U;
    for (const char character : png.mid(12, 17)) {
        sum ^= static_cast<unsigned char>(character);
        for (int bit = 0; bit < 8; ++bit) {
            sum = sum >> 1U ^ ((sum & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    for (int i = 0; i < 4; ++i) {
        png[29 + i] = static_cast<char>(~sum >> (24 - 8 * i) & 0xFF);
    }
}

TEST(NSBitmapImageRepTest, RefusesSizesThatTheirPixelsAreMissingFor)
{
    const int before = QImageReader::allocationLimit(); // of the process, and the program's to lift
    QImageReader::setAllocationLimit(0);
    for (auto [name, file, sizes, isBig] : samples()) {
        for (const int side : {5000, 30000}) {
            for (const qsizetype place : sizes) {
                file[place + (isBig ? 1 : 0)] = static_cast<char>(side & 0xFF);
                file[place + (isBig ? 0 : 1)] = static_cast<char>(side >> 8);
            }
            if (name == std::string_view("png")) {
                seal(file);
            }
            EXPECT_EQ(decoded(file), nullptr) << name << ' ' << side;
        }
    }
    // Pixels that are there, but too many: blank ones take little room.
    QImage blank(12000, 12000, QImage::Format_Mono);
    blank.fill(0);
    EXPECT_EQ(decoded(encoded(blank, "png")), nullptr);
    QImageReader::setAllocationLimit(before);
}

TEST(NSBitmapImageRepTest, StepsThroughAnimations)
{
    const auto bitmap = decoded(gif({1, 2, 3}));
    EXPECT_EQ(valueOf(*bitmap, NSImageFrameCount), 3);
    struct Step {
        int frame;
        int shown;
        const char* colour;
    };
    for (const auto& [frame, shown, colour] :
         {Step{0, 0, "#ff0000"}, Step{1, 1, "#00ff00"}, Step{1, 1, "#00ff00"}, Step{0, 0, "#ff0000"},
          Step{2, 2, "#0000ff"}, Step{3, 2, "#0000ff"}, Step{-1, 2, "#0000ff"}, Step{1, 1, "#00ff00"}}) {
        bitmap->setProperty_withValue(NSImageCurrentFrame, NSNumber::numberWithInteger(frame).get());
        EXPECT_EQ(valueOf(*bitmap, NSImageCurrentFrame), shown) << frame;
        EXPECT_EQ(bitmap->native().pixels.pixelColor(0, 0).name().toStdString(), colour) << frame;
    }
    bitmap->setProperty_withValue(NSImageCurrentFrame, nullptr);
    bitmap->setProperty_withValue(NSImageFrameCount, NSNumber::numberWithInteger(0).get());
    EXPECT_EQ(valueOf(*bitmap, NSImageFrameCount), 3);
    EXPECT_EQ(valueOf(*decoded(gif({2})), NSImageFrameCount), 1);
}

TEST(NSBitmapImageRepTest, KeepsEveryComponentInTIFFAndInRows)
{
    QImage picture(2, 256, QImage::Format_ARGB32);
    for (int i = 0; i < 512; ++i) {
        picture.setPixel(i % 2, i / 2, qRgba(i / 2, 255 - i % 2, 254, i % 2 == 0 ? 51 : i / 2));
    }
    const auto bitmap = NSBitmapImageRep::imageRepWithData(bitmapOf(picture)->TIFFRepresentation().get());
    ASSERT_NE(bitmap, nullptr);
    for (int y = 0; y < 256; ++y) {
        const auto full = [](int value) { return static_cast<std::uint16_t>(value * 0x101); };
        EXPECT_EQ(bitmap->row(y)[0], (NSPixel{full(y), 0xFFFF, full(254), full(51)}));
        EXPECT_EQ(bitmap->row(y)[1], (NSPixel{full(y), full(254), full(254), full(y)}));
    }
    const QImage deep = sample(9, 7, QImage::Format_RGBX64);
    EXPECT_EQ(NSBitmapImageRep::imageRepWithData(bitmapOf(deep)->TIFFRepresentation().get())->native().pixels,
              deep);

    const auto opaque = bitmapOf(sample(3, 2, QImage::Format_RGB32));
    opaque->native().forPainting();
    opaque->row(1)[2] = {0xFFFF, 0, 0, 0};
    EXPECT_EQ(opaque->native().forPainting().pixelColor(2, 1).alpha(), 0) << "written pixels show";
    EXPECT_TRUE(opaque->row(2).empty());
    EXPECT_TRUE(opaque->row(-1).empty());
}

TEST(NSBitmapImageRepTest, GivesPicturesOfAFileByNumber)
{
    const auto heights = [](const QByteArray& file) {
        const auto source = CGImageSourceCreateWithData(dataOf(file).get());
        std::vector<std::size_t> result;
        for (const std::size_t index : {1UL, 0UL, 0UL, 2UL, 1UL << 32U}) {
            const auto image = CGImageSourceCreateImageAtIndex(source.get(), index);
            result.push_back(image ? image->height() : 0);
        }
        return result;
    };
    using Heights = std::vector<std::size_t>;
    EXPECT_EQ(heights(tiff({sample(9, 7), sample(3, 2)})), (Heights{2, 7, 7, 0, 0}));
    EXPECT_EQ(heights(encoded(sample(9, 7), "png")), (Heights{0, 7, 7, 0, 0}));
    EXPECT_EQ(heights(gif({1, 2})), (Heights{1, 1, 1, 0, 0}));
    EXPECT_EQ(heights("text"), (Heights{0, 0, 0, 0, 0}));
    EXPECT_EQ(CGImageSourceCreateWithData(nullptr), nullptr);
    EXPECT_EQ(CGImageSourceCreateImageAtIndex(nullptr, 0), nullptr);
}

} // namespace
