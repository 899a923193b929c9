#include "platform/graphics/NSImage.h"

#include "platform/foundation/NSNumber.h"
#include "platform/graphics/CGImage.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSBitmapImageRep.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSGraphicsContext.h"
#include "platform/graphics/NSRecordingGraphicsContext.h"
#include "support/Drawing.h"
#include "support/Pictures.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{

Ref<NSImage> decoded(const QByteArray& bytes)
{
    return make<NSImage>()->initWithData(dataOf(bytes).get());
}

void draw(const NSImage& image, NSRect rect, double fraction = 1.0)
{
    image.drawInRect_fromRect_operation_fraction_respectFlipped_hints(
        rect, NSZeroRect, NSCompositingOperation::SourceOver, fraction, true, nullptr);
}

void fill(const Ref<NSColor>& color, NSRect rect)
{
    color->setFill();
    NSBezierPath::fillRect(rect);
}

TEST(NSImageTest, DecodesFilesWithTheirSizeInPoints)
{
    QImage picture(32, 16, QImage::Format_ARGB32);
    picture.fill(QColor(255, 0, 0, 128));
    const TemporaryFolder folder;
    for (const char* name : {"icon.png", "icon@2x.png", "misnamed.jpg"}) {
        folder.write(name, encoded(picture, "PNG").toStdString());
        const Ref<NSImage> image =
            make<NSImage>()->initWithContentsOfFile(text((folder.path() / name).c_str()).get());
        ASSERT_NE(image, nullptr) << name;
        const double scale = std::string(name).find("@2x") == std::string::npos ? 1.0 : 2.0;
        EXPECT_EQ(image->size(), (NSSize{32.0 / scale, 16.0 / scale})) << name;
        EXPECT_EQ(pixel(*image, 3, 3), "#80ff0000") << name;
    }
    for (const char* path : {"/nowhere.png", "/dev/zero", folder.path().c_str()}) {
        EXPECT_EQ(make<NSImage>()->initWithContentsOfFile(text(path).get()), nullptr) << path;
    }
    EXPECT_EQ(make<NSImage>()->initWithContentsOfFile(nullptr), nullptr);
    EXPECT_EQ(make<NSImage>()->initWithData(nullptr), nullptr);
    EXPECT_EQ(decoded("text"), nullptr);
}

TEST(NSImageTest, TakesTheSharperPictureBesideAFile)
{
    const TemporaryFolder folder;
    folder.write("a.b.png", encoded(sample(16, 8), "PNG").toStdString());
    const auto read = [&](const char* name) {
        return Ref<NSImage>(
            make<NSImage>()->initByReferencingFile(text((folder.path() / name).c_str()).get()));
    };
    EXPECT_EQ(read("a.b.png")->representations().size(), 1U);
    folder.write("a.b@2x.png", encoded(sample(32, 16), "PNG").toStdString());
    const Ref<NSImage> image = read("a.b.png");
    EXPECT_EQ(image->size(), (NSSize{16.0, 8.0}));
    ASSERT_EQ(image->representations().size(), 2U);
    EXPECT_EQ(image->representations()[1]->pixelsWide(), 32);
    EXPECT_EQ(image->representations()[1]->size(), image->size());
    EXPECT_EQ(read("b.png"), nullptr);
    EXPECT_EQ(make<NSImage>()->initByReferencingFile(nullptr), nullptr);
}

/// Red, whatever the number of pixels.
class Drawing : public NSImageRep
{
public:
    bool drawInRect(NSRect rect) override
    {
        fill(NSColor::colorWithSRGBRed_green_blue_alpha(1.0, 0.0, 0.0, 1.0), rect);
        return true;
    }
};

TEST(NSImageTest, ChoosesTheRepresentationThatFits)
{
    const Ref<NSImage> image = decoded(tiff({sample(48, 48), sample(16, 16), sample(32, 32)}));
    ASSERT_EQ(image->representations().size(), 3U);
    EXPECT_EQ(image->size(), (NSSize{48.0, 48.0}));
    const auto best = [&](double width, double height, NSGraphicsContext* context = nullptr) {
        return image
            ->bestRepresentationForRect_context_hints(NSMakeRect(0.0, 0.0, width, height), context, nullptr)
            ->pixelsWide();
    };
    const auto tests = [&](int beyond) {
        EXPECT_EQ(best(0.0, 0.0), 16);
        EXPECT_EQ(best(16.0, 16.0), 16);
        EXPECT_EQ(best(10.0, 17.0), 32);
        EXPECT_EQ(best(33.0, 10.0), 48);
        EXPECT_EQ(best(49.0, 10.0), beyond);
    };
    tests(48);
    image->addRepresentation(make<Drawing>());
    image->addRepresentation(nullptr);
    tests(0);

    const Ref<NSImage> blank = make<NSImage>()->initWithSize({5.0, 5.0});
    EXPECT_EQ(blank->bestRepresentationForRect_context_hints({}, nullptr, nullptr), nullptr);
    EXPECT_FALSE(blank->isValid());
    EXPECT_EQ(blank->TIFFRepresentation(), nullptr);
    EXPECT_FALSE(blank->writePNGToFile("/dev/null"));
}

TEST(NSImageTest, CopiesWhatItShows)
{
    const Ref<NSImage> image = decoded(gif({1, 2, 3}));
    image->setName("flash");
    const auto bitmapOf = [](const NSImage& shown) -> NSBitmapImageRep& {
        return dynamic_cast<NSBitmapImageRep&>(*shown.representations().front());
    };
    const auto step = [&](const NSImage& shown, int frame) {
        bitmapOf(shown).setProperty_withValue(NSImageCurrentFrame, NSNumber::numberWithInteger(frame).get());
    };
    step(*image, 1);
    bitmapOf(*image).setSize({4.0, 4.0});
    const Ref<NSImage> copy = image->copy();
    EXPECT_EQ(copy->name(), "flash");
    EXPECT_EQ(copy->size(), image->size());
    EXPECT_EQ(bitmapOf(*copy).size(), (NSSize{4.0, 4.0}));
    EXPECT_EQ(bitmapOf(*copy).valueForProperty(NSImageCurrentFrame)->integerValue(), 1);
    step(*image, 2);
    EXPECT_EQ(pixel(*copy, 0, 0), "#ff00ff00");
    step(*copy, 0);
    EXPECT_EQ(pixel(*copy, 0, 0), "#ffff0000");
    EXPECT_EQ(pixel(*image, 0, 0), "#ff0000ff");
    bitmapOf(*image).row(0)[0] = {};
    EXPECT_EQ(pixel(*image->copy(), 0, 0), "#00000000");

    image->addRepresentation(make<Drawing>());
    EXPECT_EQ(copy->representations().size(), 1U);
    EXPECT_EQ(image->copy()->representations().back(), image->representations().back());
}

TEST(NSImageTest, TakesDrawingUpFromTheBottom)
{
    const Ref<NSImage> image = make<NSImage>()->initWithSize({10.4, 20.0});
    const Ref<NSImage> other = make<NSImage>()->initWithSize({4.0, 4.0});
    image->lockFocus();
    fill(NSColor::whiteColor(), NSMakeRect(0.0, 0.0, 10.4, 20.0));
    EXPECT_DOUBLE_EQ(NSGraphicsContext::currentContext()->scale(), std::sqrt(10.0 / 10.4));
    other->lockFocus();
    fill(NSColor::blackColor(), NSMakeRect(0.0, 0.0, 4.0, 2.0));
    image->unlockFocus(); // not its turn
    image->lockFocus();
    fill(NSColor::blackColor(), NSMakeRect(0.0, 0.0, 5.2, 10.0));
    image->unlockFocus();
    other->unlockFocus();
    EXPECT_FALSE(image->isValid()) << "still locked";
    image->unlockFocus();
    image->unlockFocus(); // once too often
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
    EXPECT_EQ(pixelsOf(*image).size(), QSize(10, 20));
    EXPECT_EQ(image->representations().front()->size(), image->size());
    EXPECT_EQ(pixel(*image, 4, 10), "#ff000000");
    EXPECT_EQ(pixel(*image, 4, 9), "#ffffffff");
    EXPECT_EQ(pixel(*image, 5, 10), "#ffffffff");
    EXPECT_EQ(pixel(*image, 9, 0), "#ffffffff") << "points cover all pixels";
    EXPECT_EQ(pixel(*other, 0, 3), "#ff000000");
    EXPECT_EQ(pixel(*other, 0, 1), "#00000000");

    other->lockFocus(); // over what is there, with an image that draws by commands
    const Ref<NSImage> drawn = make<NSImage>()->initWithSize({1.0, 1.0});
    drawn->addRepresentation(make<Drawing>());
    NSColor::whiteColor()->setFill();
    draw(*drawn, NSMakeRect(0.0, 0.0, 2.0, 4.0), 0.6);
    NSBezierPath::fillRect(NSMakeRect(2.0, 3.0, 2.0, 1.0));
    other->unlockFocus();
    EXPECT_EQ(other->representations().size(), 1U);
    EXPECT_EQ(pixel(*other, 0, 3), "#ff980000") << "rounded down";
    EXPECT_EQ(pixel(*other, 3, 3), "#ff000000");
    EXPECT_EQ(pixel(*other, 3, 0), "#ffffffff") << "colours are brought back";

    for (const NSSize size : {NSSize{0.0, 5.0}, NSSize{-1.0, 5.0}, NSSize{NAN, 5.0}, NSSize{16385.0, 1.0},
                              NSSize{16000.0, 16000.0}}) {
        const Ref<NSImage> none = make<NSImage>()->initWithSize(size);
        none->lockFocus();
        fill(NSColor::whiteColor(), NSMakeRect(0.0, 0.0, 5.0, 5.0));
        none->unlockFocus();
        EXPECT_FALSE(none->isValid());
    }
}

TEST(NSImageTest, AveragesWhatIsDrawnMuchSmaller)
{
    QImage stripes(64, 64, QImage::Format_RGB32); // a white column in eight
    for (int i = 0; i < 64 * 64; ++i) {
        stripes.setPixelColor(i % 64, i / 64, i % 8 == 0 ? Qt::white : Qt::black);
    }
    const auto image = decoded(encoded(stripes, "png"));
    const Ref<NSImage> small = make<NSImage>()->initWithSize({8.0, 8.0});
    small->lockFocus();
    draw(*image, NSMakeRect(0.0, 0.0, 8.0, 8.0));
    small->unlockFocus();
    for (int i = 0; i < 64; ++i) {
        EXPECT_NEAR(pixelsOf(*small).pixelColor(i % 8, i / 8).red(), 32, 2);
    }
}

TEST(NSImageTest, TakesPixelsOverAndRecordsThem)
{
    const auto source = CGImageSourceCreateWithData(dataOf(encoded(sample(6, 4), "png")).get());
    const auto pixels = CGImageSourceCreateImageAtIndex(source.get(), 0);
    EXPECT_EQ(make<NSImage>()->initWithCGImage_size(pixels.get(), {3.0, 2.0})->size(), (NSSize{3.0, 2.0}));
    const Ref<NSImage> image = make<NSImage>()->initWithCGImage_size(pixels.get(), {});
    EXPECT_EQ(image->size(), (NSSize{6.0, 4.0}));
    EXPECT_EQ(pixelsOf(*image), sample(6, 4));
    EXPECT_EQ(make<NSImage>()->initWithCGImage_size(nullptr, {3.0, 2.0}), nullptr);

    NSImageRep& bitmap = *image->representations().front();
    EXPECT_FALSE(bitmap.drawInRect(NSMakeRect(0.0, 0.0, 1.0, 1.0))) << "nowhere";
    EXPECT_FALSE(make<NSImageRep>()->drawInRect(NSZeroRect));
    const auto record = make<NSRecordingGraphicsContext>(true);
    const NSGraphicsContext::Scope scope(*record);
    EXPECT_TRUE(bitmap.drawInRect(NSMakeRect(1.0, 2.0, 3.0, 4.0)));
    EXPECT_EQ(record->operations(), Operations{"drawBitmap 6x4 {{1, 2}, {3, 4}}"});
}

} // namespace
