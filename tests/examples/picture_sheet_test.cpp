#include "picture_sheet/Scenes.h"
#include "picture_sheet/SheetView.h"

#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QImage>

namespace
{

TEST(PictureSheetTest, ShowsEveryLookAtEveryScale)
{
    for (const Scene& scene : scenes()) {
        const Ref<SheetView> sheet = make<SheetView>()->initWithLooks(scene.looks);
        EXPECT_EQ(sheet->subviews().size(), scene.looks.size());
        const NSSize size = sheet->bounds().size;
        for (const double scale : {1.0, 1.5, 2.0}) {
            const QImage picture = pixelsOf(*sheet->imageOfBounds(scale));
            EXPECT_EQ(picture.width(), std::lround(size.width * scale)) << scene.control;
            EXPECT_EQ(picture.height(), std::lround(size.height * scale)) << scene.control;
            for (const Look& look : scene.looks) {
                EXPECT_TRUE(NSContainsRect(sheet->bounds(), look.view->frame())) << look.name;
                // Something else than the sheet's own face shows where the look is.
                const NSRect frame = look.view->frame();
                const QRectF place(frame.origin.x * scale, frame.origin.y * scale, frame.size.width * scale,
                                   frame.size.height * scale);
                const QImage part = picture.copy(place.toAlignedRect());
                QImage face(part.size(), part.format());
                face.fill(picture.pixelColor(0, 0));
                EXPECT_NE(part, face) << scene.control << ", " << look.name << " at " << scale;
            }
        }
    }
}

} // namespace
