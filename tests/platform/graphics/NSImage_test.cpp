#include "platform/graphics/NSImage.h"

#include "support/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

namespace
{

QByteArray encoded(int width, int height, const char* format)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(QColor(255, 0, 0, 128));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

Ref<NSImage> decoded(const QByteArray& bytes)
{
    return make<NSImage>()->initWithData(
        std::as_bytes(std::span(bytes.constData(), static_cast<std::size_t>(bytes.size()))));
}

TEST(NSImageTest, DecodesFilesWithTheirSizeInPoints)
{
    const TemporaryFolder folder;
    for (const char* name : {"icon.png", "icon@2x.png", "misnamed.jpg"}) {
        folder.write(name, encoded(32, 16, "PNG").toStdString());
        const Ref<NSImage> image =
            make<NSImage>()->initWithContentsOfFile(text((folder.path() / name).c_str()).get());
        ASSERT_NE(image, nullptr) << name;
        const double scale = std::string(name).find("@2x") == std::string::npos ? 1.0 : 2.0;
        EXPECT_EQ(image->size(), (NSSize{32.0 / scale, 16.0 / scale})) << name;
        EXPECT_EQ(pixel(*image, 3, 3), "#80ff0000") << name;
    }
    EXPECT_EQ(make<NSImage>()->initWithContentsOfFile(text("/nowhere.png").get()), nullptr);
    EXPECT_EQ(make<NSImage>()->initWithContentsOfFile(text(folder.path().c_str()).get()), nullptr);
    EXPECT_EQ(make<NSImage>()->initWithContentsOfFile(nullptr), nullptr);
}

TEST(NSImageTest, RefusesBytesThatAreNoPicture)
{
    const QByteArray whole = encoded(32, 32, "PNG");
    EXPECT_NE(decoded(whole), nullptr);
    EXPECT_EQ(decoded(whole.left(40)), nullptr);
    EXPECT_EQ(decoded({}), nullptr);
    EXPECT_EQ(decoded("not a picture"), nullptr);

    // A bitmap of 30,000 by 30,000 pixels, so its header says.
    QByteArray huge = encoded(1, 1, "BMP");
    for (const qsizetype offset : {18, 22}) {
        huge[offset] = '\x30';
        huge[offset + 1] = '\x75';
    }
    EXPECT_EQ(decoded(huge), nullptr);
}

} // namespace
