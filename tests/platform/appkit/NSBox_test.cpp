#include "platform/appkit/NSBox.h"

#include "platform/foundation/NSAttributes.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/Accessibility.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

namespace
{

TEST(NSBoxTest, DrawsAFrameUnderItsTitle)
{
    const Ref<NSBox> box = make<NSBox>()->initWithFrame(NSMakeRect(5.0, 5.0, 200.0, 80.0));
    box->setCornerRadius(0.0);
    box->setBorderWidth(3.0);
    const auto frame = [](const char* top) {
        return std::string(" move {1.5, 1.5} line {198.5, 1.5} line {198.5, ") + top + "} line {1.5, " + top +
               "} close";
    };
    EXPECT_EQ(operationsOf(*box),
              (Operations{"fillColor white(0.97, 1)", "fillPath" + frame("78.5"),
                          "strokeColor white(0.82, 1)", "strokePath" + frame("78.5") + " width 3"}));

    box->setTitle(text("Photos"));
    box->setFillColor(nullptr);
    const NSSize size =
        text("Photos")->sizeWithAttributes({{NSFontAttributeName, NSFont::fontWithName_size("Arial", 11.0)}});
    EXPECT_EQ(operationsOf(*box),
              (Operations{"strokeColor white(0.82, 1)",
                          "strokePath" + frame(NSStringFromNumber(75.5 - size.height).c_str()) + " width 3",
                          "drawText \"Photos\" " + NSStringFromRect({{8.0, 80.0 - size.height}, size}) +
                              " font \"Arial\" 11"}));
    box->setBorderWidth(0.0);
    EXPECT_EQ(operationsOf(*box).size(), 1U);
    EXPECT_EQ(said(accessible(*box)), "group Photos");
    box->setAccessibilityLabel(text("Pictures"));
    EXPECT_EQ(said(accessible(*box)), "group Pictures");
    box->setBorderWidth(1.0);
    box->setCornerRadius(6.0);
    box->setTitle(nullptr);
    EXPECT_EQ(operationsOf(*box)[1],
              "strokePath" + roundedRect(NSMakeRect(0.5, 0.5, 199.0, 79.0), 6.0, 6.0) + " width 1");
    box->imageOfBounds(1.0);
    box->setTransparent(true);
    EXPECT_TRUE(box->needsDisplay());
    EXPECT_EQ(operationsOf(*box), Operations{});
}

} // namespace
