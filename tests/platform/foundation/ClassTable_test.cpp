#include "platform/foundation/ClassTable.h"

#include "platform/graphics/NSColor.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace
{

class Controller final : public NSObject
{
public:
    Ref<NSColor> color;
    Ref<NSObject> helper;
    double width = 1.0;

    const ClassTable& classTable() const override { return table; }
    static const ClassTable table;
};

constexpr std::array kOutlets{outlet<&Controller::color>("color"), outlet<&Controller::helper>("helper"),
                              outlet<&Controller::width>("width")};
constinit const ClassTable Controller::table{"Controller", &NSObject::table, kOutlets, {}};

TEST(ClassTableTest, ReachesOutlets)
{
    const Ref<Controller> controller = make<Controller>();
    EXPECT_TRUE(controller->setValue_forKey(NSColor::grayColor().get(), "color"));
    EXPECT_TRUE(controller->setValue_forKey(NSNumber::numberWithDouble(2.5).get(), "width"));
    EXPECT_FALSE(controller->setValue_forKey(text("grey").get(), "color"));
    EXPECT_FALSE(controller->setValue_forKey(nullptr, "width"));
    EXPECT_EQ(controller->valueForKey("color"), controller->color);
    EXPECT_EQ(controller->color->description(), NSColor::grayColor()->description());
    EXPECT_EQ(controller->width, 2.5);
    EXPECT_TRUE(Controller::table.findProperty("helper")->takesAnyObject);
    EXPECT_FALSE(Controller::table.findProperty("color")->takesAnyObject);
}

TEST(ClassTableTest, ReportsAMethodThatIsMissing)
{
    testing::internal::CaptureStderr();
    EXPECT_FALSE(make<ActionTarget>()->performSelector_withObject(SEL{"pushed"}, nullptr));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "performSelector: ActionTarget does not respond to \"pushed\"\n");
}

TEST(ClassTableTest, ReachesEveryPropertyOfTheToolButtonAndItsBases)
{
    const Ref<ZuToolButton> button = make<ZuToolButton>();
    const auto set = [&](const char* key, const Ref<NSObject>& value) {
        return button->setValue_forKey(value.get(), key);
    };
    const Ref<NSColor> color = NSColor::grayColor();
    for (const char* key : {"color_border", "color_background", "color_desc", "color_border_normal",
                            "color_name_hover", "color_desc_hover"}) {
        EXPECT_EQ(button->valueForKey(key), nullptr) << key;
        EXPECT_TRUE(set(key, color)) << key;
        EXPECT_EQ(button->valueForKey(key), color) << key;
    }
    EXPECT_FALSE(set("color_desc", text("red")));
    EXPECT_TRUE(set("color_desc", nullptr));
    EXPECT_EQ(button->color_desc(), nullptr);
    for (const char* key : {"str_url", "title", "alternateTitle", "toolTip"}) {
        EXPECT_TRUE(set(key, text("text"))) << key;
        EXPECT_TRUE(button->valueForKey(key)->isEqual(text("text").get())) << key;
    }
    EXPECT_FALSE(set("color_nothing", color));
    EXPECT_EQ(button->valueForKey("color_nothing"), nullptr);

    EXPECT_TRUE(set("offset", NSNumber::numberWithDouble(-12.0)));
    for (const double value : {0.5, 2147483648.0, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(set("offset", NSNumber::numberWithDouble(value))) << value;
    }
    EXPECT_FALSE(set("offset", nullptr));
    EXPECT_EQ(button->offset(), -12);
    EXPECT_TRUE(set("enabled", NSNumber::numberWithInteger(0)));
    EXPECT_FALSE(button->isEnabled());
}

} // namespace
