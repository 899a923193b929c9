#include "platform/foundation/Property.h"

#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{

class Text : public NSObject
{
public:
    Ref<Text> copy() const { return make<Text>(); }
};

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

TEST(PropertyTest, RetainsOrCopiesAndReleasesOutsideOfTheLock)
{
    const Ref<Text> original = make<Text>();
    RetainProperty<NSObject> retained;
    CopyProperty<Text> copied;
    retained.set(make<Meddler>(retained));
    retained.set(original);
    copied.set(original);
    EXPECT_EQ(retained.get(), original);
    EXPECT_NE(copied.get(), original);
    EXPECT_NE(copied.get(), nullptr);
    copied.set(nullptr);
    EXPECT_EQ(copied.get(), nullptr);
}

TEST(PropertyTest, IsReadWholeWhileAnotherThreadWrites)
{
    const Ref<ZuToolButton> button = make<ZuToolButton>();
    constexpr int kRounds = 20'000;
    std::thread writer([&] {
        for (int i = 0; i < kRounds; ++i) {
            const double level = i % 256 / 255.0;
            button->setColor_border(NSColor::colorWithSRGBRed_green_blue_alpha(level, level, level, 1.0));
            button->setStr_url(
                NSString::stringWithCharacters(std::u16string(static_cast<std::size_t>(i % 50), u'x')));
            button->setOffset(i % 2 == 0 ? 0x01010101 : 0x7F7F7F7F);
        }
    });
    for (int i = 0; i < kRounds; ++i) {
        if (const Ref<NSColor> color = button->color_border()) {
            const auto [red, green, blue, alpha] = color->components();
            EXPECT_TRUE(red == green && green == blue && alpha == 1.0);
        }
        if (const Ref<NSString> url = button->str_url()) {
            EXPECT_EQ(url->characters().find_first_not_of(u'x'), std::u16string_view::npos);
        }
        const std::int32_t offset = button->offset();
        EXPECT_TRUE(offset == 0 || offset == 0x01010101 || offset == 0x7F7F7F7F);
        button->setColor_border(nullptr);
    }
    writer.join();
}

} // namespace
