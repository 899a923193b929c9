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
    QByteArray progressive;
    QBuffer buffer(&progressive);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    writer.write(sample(40, 30));
    EXPECT_NE(decoded(progressive), nullptr);
    EXPECT_NE(decoded(encoded(sample(40, 30), "webp")), nullptr);
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
    const QByteArray old("BM\x1E\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0\1\0\1\0\1\0\x18\0abc\0", 30);
    return {{"old bmp", old, {18, 20}, false},
            {"bmp", encoded(sample(9, 7), "bmp"), {18, 22}, false},
            {"png", encoded(sample(9, 7), "png"), {18, 22}, true},
            {"gif", gif({1, 2, 3}), {6, 8, 38, 40}, false},
            {"tiff", tiff({sample(9, 7), sample(3, 2)}), {18, 30, 102}, false},
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
    QImage blank(9000, 5000, QImage::Format_Mono);
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
        for (const std::size_t index : {1U, 0U, 0U, 2U}) {
            const auto image = CGImageSourceCreateImageAtIndex(source.get(), index);
            result.push_back(image ? image->height() : 0);
        }
        return result;
    };
    using Heights = std::vector<std::size_t>;
    EXPECT_EQ(heights(tiff({sample(9, 7), sample(3, 2)})), (Heights{2, 7, 7, 0}));
    EXPECT_EQ(heights(encoded(sample(9, 7), "png")), (Heights{0, 7, 7, 0}));
    EXPECT_EQ(heights(gif({1, 2})), (Heights{1, 1, 1, 0}));
    EXPECT_EQ(heights("text"), (Heights{0, 0, 0, 0}));
    EXPECT_EQ(CGImageSourceCreateWithData(nullptr), nullptr);
    EXPECT_EQ(CGImageSourceCreateImageAtIndex(nullptr, 0), nullptr);
}

} // namespace
