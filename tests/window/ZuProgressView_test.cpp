#include "window/ZuProgressView.h"

#include "platform/graphics/NSColor.h"
#include "support/Accessibility.h"
#include "support/Drawing.h"
#include "support/Looks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

const char* const kTrack = "fillColor white(1, 1)";
const std::string kUsed = "sRGB(0.12549019607843137, 0.7294117647058823, 0.9176470588235294, 1)";
const std::string kBorder = "strokeColor sRGB(0.5490196078431373, 0.5882352941176471, 0.6274509803921569, 1)";

/// What a bar draws in `bar`, with `done` as its done part, or none if that is empty.
Operations bar(NSRect bar, const char* done, double radius = 0.0)
{
    const std::string path = roundedRect(bar, radius, radius);
    Operations operations{kTrack, "fillPath" + path};
    if (done != nullptr) {
        operations.insert(operations.end(), {"fillColor " + kUsed, "strokeColor " + kUsed});
        if (*done != '\0') {
            operations.push_back(std::string("replaceRect ") + done);
        }
    }
    operations.insert(operations.end(), {kBorder, "strokePath" + path + " width 1"});
    return operations;
}

TEST(ZuProgressViewTest, DrawsItsLooks)
{
    const NSRect whole = NSMakeRect(0.0, 0.0, 200.0, 10.0);
    EXPECT_EQ(operationsOf(*shown<ZuProgressView>("nothing known")), bar(whole, nullptr));
    EXPECT_EQ(operationsOf(*shown<ZuProgressView>("a quarter")), bar(whole, "{{1, 1}, {49.5, 8}}"));
    EXPECT_EQ(operationsOf(*shown<ZuProgressView>("all")), bar(whole, "{{1, 1}, {198, 8}}"));
    EXPECT_EQ(operationsOf(*shown<ZuProgressView>("beyond")), bar(whole, "{{1, 1}, {297, 8}}"));
    EXPECT_EQ(operationsOf(*shown<ZuProgressView>("round")), bar(whole, "{{1, 1}, {118.8, 8}}", 5.0));
    const NSRect part = NSMakeRect(10.0, 2.0, 100.6, 6.0);
    EXPECT_EQ(operationsOf(*shown<ZuProgressView>("a quarter"), part), bar(part, "{{11, 3}, {24.5, 4}}"))
        << "the part's width less 2, in whole points";
}

TEST(ZuProgressViewTest, TakesAnyNumbers)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    struct Case {
        double step;
        double total;
        const char* done;
    };
    const Ref<ZuProgressView> view = shown<ZuProgressView>("a quarter");
    const Ref<NSView> behind = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 220.0, 30.0));
    behind->addSubview(view);
    view->setFrame(NSMakeRect(10.0, 10.0, 200.6, 10.0));
    for (const auto& [step, total, done] : {Case{25.0, 100.0, "{{1, 1}, {49.5, 8}}"},
                                            {25.0, -0.0, nullptr},
                                            {-25.0, 100.0, ""},
                                            {25.0, -100.0, ""},
                                            {-25.0, -100.0, "{{1, 1}, {49.5, 8}}"},
                                            {0.0, 100.0, ""},
                                            {25.0, std::nan(""), ""},
                                            {std::nan(""), 100.0, ""},
                                            {1e300, 1e-300, "{{1, 1}, {inf, 8}}"},
                                            {kInfinity, 100.0, "{{1, 1}, {inf, 8}}"},
                                            {25.0, kInfinity, ""}}) {
        view->setStep_(step);
        view->setTotal_(total);
        EXPECT_EQ(operationsOf(*view), bar(view->bounds(), done)) << step << " of " << total;
        behind->imageOfBounds(1.0);
    }
    view->setStep_(kInfinity);
    view->setTotal_(1.0);
    const Ref<NSImage> full = behind->imageOfBounds(1.0);
    EXPECT_EQ(pixel(*full, 208, 15), "#ff20baea");
    EXPECT_EQ(pixel(*full, 212, 15), "#00000000") << "cut off at the right edge";

    view->setStep_(-25.0);
    view->setTotal_(100.0);
    for (const NSSize size : {NSSize{1.5, 10.0}, {2.5, 10.0}, {10.0, 1.5}, {0.0, 0.0}}) {
        view->setFrame({{}, size});
        EXPECT_EQ(operationsOf(*view), bar(view->bounds(), "")) << "no room within the border";
        behind->imageOfBounds(1.0);
    }
}

TEST(ZuProgressViewTest, SaysHowFarTheTaskHasCome)
{
    const Ref<ZuProgressView> view = shown<ZuProgressView>("a quarter");
    view->setAccessibilityLabel(text("Copying"));
    struct Case {
        double step;
        double total;
        const char* said;
    };
    for (const auto& [step, total, words] :
         {Case{25.0, 100.0, "progress Copying 0 25 100"},
          {0.5, 0.75, "progress Copying 0 0.5 0.75"},
          {150.0, 100.0, "progress Copying 0 100 100"},
          {-1.0, 100.0, "progress Copying 0 0 100"},
          {25.0, 0.0, "progress Copying"},
          {-25.0, -100.0, "progress Copying"},
          {25.0, std::nan(""), "progress Copying"},
          {25.0, std::numeric_limits<double>::infinity(), "progress Copying"},
          {std::nan(""), 100.0, "progress Copying"}}) {
        view->setStep_(step);
        view->setTotal_(total);
        EXPECT_EQ(said(accessible(*view)), words) << step << " of " << total;
    }
}

TEST(ZuProgressViewTest, LeavesOutWhatHasNoColour)
{
    const Ref<ZuProgressView> view = make<ZuProgressView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 10.0));
    view->setTotal_(100.0);
    view->setStep_(25.0);
    EXPECT_EQ(operationsOf(*view), Operations{});
    view->setColor_used_(NSColor::whiteColor());
    EXPECT_EQ(operationsOf(*view)[2], "replaceRect {{1, 1}, {49.5, 8}}");
    view->setColor_unuse_(NSColor::whiteColor());
    EXPECT_EQ(operationsOf(*view).size(), 5U);
    view->setColor_used_(nullptr);
    view->setColor_unuse_(nullptr);
    view->setColor_border_(NSColor::whiteColor());
    EXPECT_EQ(operationsOf(*view)[0], "strokeColor white(1, 1)");
}

TEST(ZuProgressViewTest, AwakesWithSquareCorners)
{
    const Ref<ZuProgressView> view = shown<ZuProgressView>("round");
    view->imageOfBounds(1.0);
    view->awakeFromNib();
    EXPECT_EQ(view->yRadius_(), 0.0);
    view->setStep_(100.0);
    EXPECT_FALSE(view->needsDisplay()) << "stored without a redraw";
    EXPECT_EQ(operationsOf(*view), bar(view->bounds(), "{{1, 1}, {198, 8}}"));
    view->setXRadius_(4.0);
    view->setYRadius_(2.0);
    EXPECT_EQ(operationsOf(*view)[1], "fillPath" + roundedRect(view->bounds(), 4.0, 2.0));
}

} // namespace
