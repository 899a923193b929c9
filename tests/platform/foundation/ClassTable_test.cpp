#include "platform/foundation/ClassTable.h"

#include "platform/foundation/NSString.h"
#include "platform/graphics/NSColor.h"
#include "support/Drawing.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace
{

class Listener : public NSObject
{
public:
    void received(NSObject* argument) { last = argument; }
    void stop() { stopped = true; }

    bool flag() const { return _flag; }
    void setFlag(bool flag) { _flag = flag; }
    double ratio() const { return _ratio; }
    void setRatio(double ratio) { _ratio = ratio; }

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;

    Ref<NSObject> last;
    bool stopped = false;

private:
    bool _flag = false;
    double _ratio = 0.0;
};

constexpr std::array kProperties{property<&Listener::flag, &Listener::setFlag>("flag"),
                                 property<&Listener::ratio, &Listener::setRatio>("ratio")};
constexpr std::array kSelectors{selector<&Listener::received>("received:"),
                                selector<&Listener::stop>("stop")};
constinit const ClassTable Listener::table{"Listener", &NSObject::table, kProperties, kSelectors};

TEST(ClassTableTest, CallsMethodsBySelector)
{
    const Ref<Listener> listener = make<Listener>();
    const Ref<NSNumber> number = NSNumber::numberWithInteger(5);
    EXPECT_TRUE(listener->respondsToSelector(SEL{"received:"}));
    EXPECT_TRUE(listener->performSelector_withObject(SEL{"received:"}, number.get()));
    EXPECT_EQ(listener->last, number);
    EXPECT_TRUE(listener->performSelector_withObject(SEL{"stop"}, nullptr));
    EXPECT_TRUE(listener->stopped);

    EXPECT_FALSE(listener->respondsToSelector(SEL{"received"}));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(listener->performSelector_withObject(SEL{"received"}, nullptr));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "performSelector: Listener does not respond to \"received\"\n");
}

TEST(ClassTableTest, SetsNumbersThatFit)
{
    const Ref<Listener> listener = make<Listener>();
    EXPECT_TRUE(listener->setValue_forKey(NSNumber::numberWithInteger(1).get(), "flag"));
    EXPECT_TRUE(listener->flag());
    EXPECT_TRUE(listener->setValue_forKey(NSNumber::numberWithInteger(3).get(), "ratio"));
    EXPECT_EQ(listener->ratio(), 3.0);
    EXPECT_FALSE(listener->setValue_forKey(nullptr, "ratio"));
    EXPECT_FALSE(listener->setValue_forKey(text("").get(), "ratio"));
    EXPECT_EQ(listener->ratio(), 3.0);

    const Ref<ZuToolButton> button = make<ZuToolButton>();
    EXPECT_TRUE(button->setValue_forKey(NSNumber::numberWithDouble(-12.0).get(), "offset"));
    EXPECT_EQ(button->offset(), -12);
    for (const double value : {0.5, 2147483648.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(button->setValue_forKey(NSNumber::numberWithDouble(value).get(), "offset")) << value;
    }
    EXPECT_EQ(button->offset(), -12);
}

TEST(ClassTableTest, ReachesEveryPropertyOfTheToolButtonAndItsBases)
{
    const Ref<ZuToolButton> button = make<ZuToolButton>();
    const Ref<NSColor> color = NSColor::grayColor();
    for (const char* key : {"color_border", "color_background", "color_desc", "color_border_normal",
                            "color_name_hover", "color_desc_hover"}) {
        EXPECT_TRUE(button->setValue_forKey(color.get(), key)) << key;
        EXPECT_EQ(button->valueForKey(key), color) << key;
        EXPECT_FALSE(button->setValue_forKey(text("red").get(), key)) << key;
        EXPECT_EQ(button->valueForKey(key), color) << key;
        EXPECT_TRUE(button->setValue_forKey(nullptr, key)) << key;
        EXPECT_EQ(button->valueForKey(key), nullptr) << key;
    }
    for (const char* key : {"str_url", "title", "alternateTitle", "toolTip"}) {
        EXPECT_TRUE(button->setValue_forKey(text("text").get(), key)) << key;
        EXPECT_TRUE(button->valueForKey(key)->isEqual(text("text").get())) << key;
        EXPECT_FALSE(button->setValue_forKey(color.get(), key)) << key;
    }
    EXPECT_TRUE(button->setValue_forKey(NSNumber::numberWithInteger(0).get(), "enabled"));
    EXPECT_FALSE(button->isEnabled());
    EXPECT_FALSE(button->setValue_forKey(color.get(), "color_nothing"));
    EXPECT_EQ(button->valueForKey("color_nothing"), nullptr);
}

} // namespace
