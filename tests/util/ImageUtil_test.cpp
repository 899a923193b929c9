#include "util/ImageUtil.h"

#include "platform/graphics/CGImage.h"
#include "platform/graphics/NSBitmapImageRep.h"
#include "platform/graphics/NSImage.h"
#include "support/Drawing.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

namespace
{

Ref<NSImage> loaded(const QByteArray& bytes)
{
    return ImageUtil::loadData_withLength(bytes.constData(), bytes.size());
}

TEST(ImageUtilTest, LoadsPicturesOnly)
{
    const Ref<NSImage> image = loaded(encoded(sample(6, 4), "png"));
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->size(), (NSSize{6.0, 4.0}));
    EXPECT_EQ(pixelsOf(*image), sample(6, 4));
    EXPECT_EQ(loaded("This is the text of a message, and no picture."), nullptr);
    for (const std::int64_t length : {std::int64_t{0}, std::int64_t{-1}, INT64_MIN}) {
        EXPECT_EQ(ImageUtil::loadData_withLength("GIF89a", length), nullptr);
    }
    EXPECT_EQ(ImageUtil::loadData_withLength(nullptr, 5), nullptr);
}

TEST(ImageUtilTest, SqueezesImagesIntoASize)
{
    QImage picture(100, 50, QImage::Format_RGB32); // red left, blue right; the bottom half darker
    for (int i = 0; i < 100 * 50; ++i) {
        const int light = i / 100 < 25 ? 255 : 128;
        picture.setPixelColor(i % 100, i / 100, i % 100 < 50 ? QColor(light, 0, 0) : QColor(0, 0, light));
    }
    const Ref<NSImage> small =
        ImageUtil::resizeImage_size(loaded(encoded(picture, "png")).get(), {10.0, 10.0});
    EXPECT_EQ(small->size(), (NSSize{10.0, 10.0}));
    EXPECT_EQ(pixelsOf(*small).size(), QSize(10, 10));
    EXPECT_EQ(pixel(*small, 0, 0), "#ffff0000");
    EXPECT_EQ(pixel(*small, 4, 4), "#ffff0000");
    EXPECT_EQ(pixel(*small, 5, 4), "#ff0000ff");
    EXPECT_EQ(pixel(*small, 4, 5), "#ff800000");
    EXPECT_EQ(pixel(*small, 9, 9), "#ff000080");
    const Ref<NSImage> large = ImageUtil::resizeImage_size(small.get(), {40.0, 5.0});
    EXPECT_EQ(pixelsOf(*large).size(), QSize(40, 5));
    EXPECT_EQ(pixel(*large, 2, 1), "#ffff0000");
    EXPECT_EQ(pixel(*large, 37, 4), "#ff000080");

    EXPECT_EQ(
        pixelsOf(*ImageUtil::resizeImage_size(loaded(tiff({sample(8, 8), picture})).get(), {100.0, 50.0})),
        picture.convertToFormat(QImage::Format_ARGB32))
        << "from the best representation";
    for (const auto& image : {ImageUtil::resizeImage_size(nullptr, {3.0, 2.0}),
                              ImageUtil::resizeImage_size(blankImage("", 9.0, 9.0).get(), {3.0, 2.0})}) {
        EXPECT_EQ(image->size(), (NSSize{3.0, 2.0}));
        EXPECT_FALSE(image->isValid());
    }
    EXPECT_FALSE(ImageUtil::resizeImage_size(small.get(), {0.0, 2.0})->isValid());
}

TEST(ImageUtilTest, FitsSizesKeepingProportions)
{
    struct Case {
        CGSize bounds, image, fitting;
    };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const auto& [bounds, image, fitting] : {
             Case{{100, 100}, {400, 200}, {100, 50}},
             Case{{100, 100}, {50, 200}, {25, 100}},
             Case{{100, 100}, {80, 60}, {80, 60}},
             Case{{100, 100}, {100, 100}, {100, 100}},
             Case{{100, 100}, {200, 50}, {100, 25}},
             Case{{100, 100}, {200, 200}, {100, 100}},
             Case{{100, 100}, {0.1, 0.2}, {0.1, 0.2}}, // unchanged, not rounded
             Case{{0.1, 100}, {1, 1}, {0.1F, 0.1F}},
             Case{{3, 3},
                  {10, 7},
                  {3, static_cast<float>(7 / static_cast<double>(static_cast<float>(10.0 / 3.0)))}},
             Case{{7, 7}, {8, 8}, {7, std::nextafter(7.0F, 0.0F)}}, // of equal factors, the first
             Case{{0, 100}, {10, 10}, {0, 0}},
             Case{{100, 100}, {kInfinity, 10}, {100, 0}},
         }) {
        EXPECT_EQ(ImageUtil::getEqualScaleImageSize_imageSize(bounds, image), fitting)
            << image.width << ' ' << image.height;
    }
}

TEST(ImageUtilTest, GraysAllThatIsNotFullyRed)
{
    QImage picture(4, 2, QImage::Format_ARGB32);
    const QList<QColor> before{{255, 255, 255, 255}, {0, 0, 0, 255}, {255, 10, 20, 51}, {254, 10, 20, 51},
                               {0, 0, 0, 0},         {255, 1, 2, 1}, {254, 255, 255},   {255, 0, 0}};
    const QColor gray(127, 127, 127, 51);
    const QList<QColor> after{before[0], gray, before[2], gray, gray, before[5], gray, before[7]};
    for (int i = 0; i < 8; ++i) {
        picture.setPixelColor(i % 4, i / 4, before[i]);
    }
    const auto image = loaded(encoded(picture, "png"));
    const auto grayed = ImageUtil::convertToGray(image.get());
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(pixelsOf(*grayed).pixelColor(i % 4, i / 4).rgba64(), after[i].rgba64()) << i;
    }
    EXPECT_EQ(pixelsOf(*image), picture) << "the image itself stays";

    // Of four pixels to the point, those within the size in points: here 1.5 by 1.
    const auto source = ImageUtil::nsImageToCGImageRef(image.get());
    const Ref<NSImage> dense = make<NSImage>()->initWithCGImage_size(source.get(), {1.5, 0.5});
    const auto part = ImageUtil::convertToGray(dense.get());
    EXPECT_EQ(part->size(), dense->size());
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(pixelsOf(*part).pixelColor(i % 4, i / 4).rgba64(), (i < 2 ? after : before)[i].rgba64())
            << i;
    }
    const Ref<NSImage> sparse = make<NSImage>()->initWithCGImage_size(source.get(), {1e9, 1e9});
    EXPECT_EQ(pixelsOf(*ImageUtil::convertToGray(sparse.get())), pixelsOf(*grayed));

    const Ref<NSImage> blank = ImageUtil::convertToGray(blankImage("", 9.0, 8.0).get());
    EXPECT_EQ(blank->size(), (NSSize{9.0, 8.0}));
    EXPECT_FALSE(blank->isValid());
    EXPECT_EQ(ImageUtil::convertToGray(nullptr), nullptr);
}

TEST(ImageUtilTest, MakesPixelsOfImages)
{
    const auto pixels = ImageUtil::nsImageToCGImageRef(loaded(encoded(sample(6, 4), "bmp")).get());
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(pixels->width(), 6U);
    EXPECT_EQ(pixels->height(), 4U);
    EXPECT_EQ(ImageUtil::nsImageToCGImageRef(blankImage("", 9.0, 9.0).get()), nullptr);
    EXPECT_EQ(ImageUtil::nsImageToCGImageRef(nullptr), nullptr);
}

TEST(ImageUtilTest, StepsThroughAnimations)
{
    const auto image = loaded(gif({1, 2, 3}));
    struct Step {
        int before, after;
        const char* shown;
    };
    for (const auto& [before, after, shown] :
         {Step{0, 1, "#ffff0000"}, Step{1, 2, "#ff00ff00"}, Step{2, 0, "#ff0000ff"}, Step{0, 1, "#ffff0000"},
          Step{3, 4, "#ffff0000"}, Step{-1, 0, "#ffff0000"}, Step{INT_MAX, INT_MIN, "#ffff0000"}}) {
        int frame = before;
        ImageUtil::sepatateGifAnimation_withFrameCount(image.get(), &frame);
        EXPECT_EQ(frame, after);
        EXPECT_EQ(pixel(*image, 0, 0), shown) << before;
    }

    // Two animations behind a drawing, and one that a still picture hides.
    const Ref<NSImage> mixed = make<NSImage>()->initWithSize({1.0, 1.0});
    mixed->addRepresentation(make<NSImageRep>());
    for (const auto& file : {gif({1, 2, 3}), gif({1, 2, 3}), encoded(sample(6, 4), "png"), gif({1, 2, 3})}) {
        mixed->addRepresentation(NSBitmapImageRep::imageRepWithData(dataOf(file).get()));
    }
    int frame = 0;
    ImageUtil::sepatateGifAnimation_withFrameCount(mixed.get(), &frame);
    EXPECT_EQ(frame, 2);
    frame = 7;
    for (const auto& still :
         {loaded(encoded(sample(6, 4), "png")), blankImage("", 1.0, 1.0), Ref<NSImage>()}) {
        ImageUtil::sepatateGifAnimation_withFrameCount(still.get(), &frame);
        EXPECT_EQ(frame, 7);
    }
    ImageUtil::sepatateGifAnimation_withFrameCount(image.get(), nullptr);
    ImageUtil::sepatateGifAnimation_withFrameCount(loaded(gif({2})).get(), &(frame = 0));
    EXPECT_EQ(frame, 0) << "a single frame";
}

} // namespace
