#include "platform/foundation/ClassTable.h"

#include "platform/graphics/NSColor.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

TEST(ClassTableTest, CallsMethodsBySelector)
{
    const Ref<ActionTarget> target = make<ActionTarget>();
    const Ref<NSNumber> number = NSNumber::numberWithInteger(5);
    EXPECT_TRUE(target->respondsToSelector(SEL{"pushed:"}));
    EXPECT_TRUE(target->performSelector_withObject(SEL{"pushed:"}, number.get()));
    EXPECT_EQ(target->senders, (std::vector<NSObject*>{number.get()}));

    EXPECT_FALSE(target->respondsToSelector(SEL{"pushed"}));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(target->performSelector_withObject(SEL{"pushed"}, nullptr));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "performSelector: ActionTarget does not respond to \"pushed\"\n");
}

TEST(ClassTableTest, SetsNumbersThatFit)
{
    const Ref<ZuToolButton> button = make<ZuToolButton>();
    EXPECT_TRUE(button->setValue_forKey(NSNumber::numberWithDouble(-12.0).get(), "offset"));
    EXPECT_EQ(button->offset(), -12);
    for (const double value : {0.5, 2147483648.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(button->setValue_forKey(NSNumber::numberWithDouble(value).get(), "offset")) << value;
    }
    EXPECT_FALSE(button->setValue_forKey(nullptr, "offset"));
    EXPECT_FALSE(button->setValue_forKey(text("5").get(), "offset"));
    EXPECT_EQ(button->offset(), -12);
    EXPECT_TRUE(button->setValue_forKey(NSNumber::numberWithInteger(0).get(), "enabled"));
    EXPECT_FALSE(button->isEnabled());
}

TEST(ClassTableTest, ReachesEveryPropertyOfTheToolButtonAndItsBases)
{
    const Ref<ZuToolButton> button = make<ZuToolButton>();
    const Ref<NSColor> color = NSColor::grayColor();
    for (const char* key : {"color_border", "color_background", "color_desc", "color_border_normal",
                            "color_name_hover", "color_desc_hover"}) {
        EXPECT_TRUE(button->setValue_forKey(color.get(), key)) << key;
        EXPECT_FALSE(button->setValue_forKey(text("red").get(), key)) << key;
        EXPECT_EQ(button->valueForKey(key), color) << key;
        EXPECT_TRUE(button->setValue_forKey(nullptr, key)) << key;
        EXPECT_EQ(button->valueForKey(key), nullptr) << key;
    }
    for (const char* key : {"str_url", "title", "alternateTitle", "toolTip"}) {
        EXPECT_TRUE(button->setValue_forKey(text("text").get(), key)) << key;
        EXPECT_TRUE(button->valueForKey(key)->isEqual(text("text").get())) << key;
    }
    EXPECT_FALSE(button->setValue_forKey(color.get(), "color_nothing"));
    EXPECT_EQ(button->valueForKey("color_nothing"), nullptr);
}

} // namespace
