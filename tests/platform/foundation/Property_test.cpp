#include "platform/foundation/Property.h"

#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSGeometry.h"
#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "window/ZuSmsImageCell.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{

/// Reads and writes its property again while it is released from it.
class Meddler : public NSObject
{
public:
    explicit Meddler(RetainProperty<NSObject>& property) : _property(property) {}

protected:
    ~Meddler() override { _property.set(_property.get()); }

private:
    RetainProperty<NSObject>& _property;
};

TEST(PropertyTest, CopiesAndReleasesOutsideOfTheLock)
{
    const Ref<NSMutableAttributedString> original = make<NSMutableAttributedString>();
    CopyProperty<NSAttributedString> copied;
    copied.set(original);
    EXPECT_NE(copied.get(), original);
    RetainProperty<NSObject> retained;
    retained.set(make<Meddler>(retained));
    retained.set(nullptr);
    EXPECT_EQ(retained.get(), nullptr);
}

TEST(PropertyTest, IsReadWholeWhileAnotherThreadWrites)
{
    const Ref<ZuToolButton> button = make<ZuToolButton>();
    const Ref<ZuSmsImageCell> cell = make<ZuSmsImageCell>();
    StructProperty<NSPoint> point;
    constexpr int kRounds = 20'000;
    const std::jthread writer([&] {
        for (int i = 0; i < kRounds; ++i) {
            button->setColor_border(NSColor::colorWithCalibratedWhite_alpha(i % 256 / 255.0, 1.0));
            button->setStr_url(NSString::stringWithUTF8String("text"));
            button->setOffset(i);
            point.set({1.0 * i, 2.0 * i});
            cell->setButtonContents(NSString::stringWithUTF8String("text"));
        }
    });
    for (int i = 0; i < kRounds; ++i) {
        if (const Ref<NSColor> color = button->color_border()) {
            EXPECT_EQ(color->components()[3], 1.0);
        }
        if (const Ref<NSString> url = button->str_url()) {
            EXPECT_EQ(url->characters(), u"text");
        }
        EXPECT_LT(button->offset(), kRounds);
        const NSPoint read = point.get();
        EXPECT_EQ(read.y, 2.0 * read.x);
        const Ref<NSCell> copy = cell->copyWithZone(nullptr);
        if (const Ref<NSString> contents = dynamic_cast<ZuSmsImageCell&>(*copy).buttonContents()) {
            EXPECT_EQ(contents->characters(), u"text");
        }
        button->setColor_border(nullptr);
    }
}

} // namespace
