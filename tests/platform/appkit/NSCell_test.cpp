// The cells that draw texts, images and buttons in tables.

#include "platform/appkit/NSButtonCell.h"
#include "platform/appkit/NSImageCell.h"
#include "platform/appkit/NSTableHeaderCell.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/Tables.h"

#include <gtest/gtest.h>

namespace
{

class NSCellTest : public testing::Test
{
protected:
    Operations drawn(NSCell& cell, NSRect frame) { return operationsOf(cell, frame, *table); }

    static double widthOf(const Ref<NSAttributedString>& words) { return words->size().width; }

    Ref<TableOwner> owner = make<TableOwner>(3);
    Ref<NSTableView> table = tableOf(*owner, make<NSTextFieldCell>());
};

TEST_F(NSCellTest, ShowsWhateverValueItIsGiven)
{
    const auto cell = make<NSTextFieldCell>();
    const auto shown = [&](const Ref<NSObject>& value) {
        cell->setObjectValue(value.get());
        return utf8(cell->stringValue());
    };
    EXPECT_EQ(shown(text("Anna")), "Anna");
    EXPECT_EQ(shown(NSNumber::numberWithInteger(-12)), "-12");
    EXPECT_EQ(shown(NSNumber::numberWithDouble(0.5)), "0.5");
    const NSAttributes blue{{NSForegroundColorAttributeName, NSColor::grayColor()}};
    const Ref<NSAttributedString> attributed =
        make<NSAttributedString>()->initWithString_attributes(text("Ben").get(), blue);
    EXPECT_EQ(shown(attributed), "Ben");
    EXPECT_TRUE(cell->attributedStringValue()->isEqual(attributed.get()));
    EXPECT_EQ(shown(owner), "");
    EXPECT_EQ(shown(nullptr), "");

    const auto image = make<NSImageCell>();
    image->setObjectValue(blankImage("face", 10.0, 10.0).get());
    EXPECT_NE(image->image(), nullptr);
    image->setObjectValue(text("Anna").get());
    EXPECT_EQ(image->image(), nullptr);
}

TEST_F(NSCellTest, DrawsTextInOneLine)
{
    const auto cell = make<NSTextFieldCell>();
    cell->setStringValue(text("Anna"));
    const NSRect frame = NSMakeRect(10.0, 20.0, 100.0, 16.0);
    const std::string where = "drawText \"Anna\" {{12, 20}, {96, 16}}";
    EXPECT_EQ(drawn(*cell, frame), Operations{where});
    cell->setHighlighted(true);
    cell->setFont(NSFont::fontWithName_size("Arial Bold", 14.0));
    EXPECT_EQ(drawn(*cell, frame), Operations{where + " font \"Arial Bold\" 14 color white(1, 1)"});
    const Ref<NSCell> copy = cell->copyWithZone(nullptr);
    cell->setEnabled(false);
    EXPECT_EQ(drawn(*cell, frame), Operations{where + " font \"Arial Bold\" 14 color white(0.5, 1)"});
    cell->setTextColor(NSColor::blackColor());
    EXPECT_EQ(drawn(*cell, frame), Operations{where + " font \"Arial Bold\" 14 color white(0, 1)"});
    EXPECT_EQ(drawn(*copy, frame), Operations{where + " font \"Arial Bold\" 14 color white(1, 1)"})
        << "with what it had when it was made";
    cell->setAttributedStringValue(make<NSAttributedString>()->initWithString_attributes(
        text("Anna").get(), {{NSForegroundColorAttributeName, NSColor::grayColor()}}));
    EXPECT_EQ(drawn(*cell, frame), Operations{where + " color white(0.5, 1)"}) << "its own";
}

TEST_F(NSCellTest, ShortensTextToItsRoom)
{
    const auto words = [](const char* characters) -> Ref<NSAttributedString> {
        return make<NSAttributedString>()->initWithString(text(characters).get());
    };
    const Ref<NSAttributedString> name = words("Anna Katharina Lindqvist");
    const auto shortened = [](const Ref<NSAttributedString>& whole, double width) {
        return utf8(whole->truncatedToWidth(width)->string());
    };
    EXPECT_EQ(shortened(name, widthOf(name)), "Anna Katharina Lindqvist");
    for (double part : {0.99, 0.5, 0.2}) {
        const Ref<NSAttributedString> beginning = name->truncatedToWidth(widthOf(name) * part);
        EXPECT_LE(widthOf(beginning), widthOf(name) * part);
        const std::string kept = utf8(beginning->string());
        const Ref<NSAttributedString> more =
            words((utf8(name->string()).substr(0, kept.size() - 2) + "…").c_str());
        EXPECT_GT(widthOf(more), widthOf(name) * part) << "as much as there is room for: " << kept;
    }
    EXPECT_EQ(shortened(name, 0.0), "…");
    EXPECT_EQ(shortened(words(""), 0.0), "");
    EXPECT_EQ(shortened(words("👩‍👩‍👧‍👧👩‍👩‍👧‍👧"),
                        widthOf(words("👩‍👩‍👧‍👧…")) + 0.5),
              "👩‍👩‍👧‍👧…")
        << "whole characters";
    EXPECT_EQ(shortened(words("one\ntwo and three"), widthOf(words("one…")) + 1.0), "one…");

    const Ref<NSMutableAttributedString> two =
        make<NSMutableAttributedString>()->initWithString(text("black and grey").get());
    two->addAttribute_value_range(NSForegroundColorAttributeName, NSColor::grayColor(), {5, 9});
    const Ref<NSAttributedString> both = two->truncatedToWidth(widthOf(two) * 0.8);
    EXPECT_EQ(both->runs().size(), 2U);
    EXPECT_EQ(NSMaxRange(both->runs()[1].range), both->length());
}

TEST_F(NSCellTest, DrawsImagesAndButtons)
{
    const auto imageCell = make<NSImageCell>();
    const std::string how = " from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped";
    imageCell->setImage(blankImage("face", 40.0, 20.0));
    const NSRect frame = NSMakeRect(10.0, 20.0, 100.0, 30.0);
    EXPECT_EQ(drawn(*imageCell, frame), Operations{"drawImage \"face\" {{40, 25}, {40, 20}}" + how});
    imageCell->setImageAlignment(NSImageAlignment::Left);
    EXPECT_EQ(drawn(*imageCell, frame), Operations{"drawImage \"face\" {{10, 25}, {40, 20}}" + how});
    EXPECT_EQ(drawn(*imageCell, NSMakeRect(10.0, 20.0, 20.0, 30.0)),
              Operations{"drawImage \"face\" {{10, 30}, {20, 10}}" + how});
    imageCell->setImage(blankImage("nothing", 0.0, 0.0));
    EXPECT_EQ(drawn(*imageCell, frame), Operations{});

    const auto button = make<NSButtonCell>();
    button->setTitle(text("Anna"));
    const double height = button->attributedTitle()->size().height;
    const std::string top = NSStringFromNumber(20.0 + (30.0 - height) * 0.5);
    const auto title = [&](const char* x, const char* width) {
        return "drawText \"Anna\" {{" + std::string(x) + ", " + top + "}, {" + width + ", " +
               NSStringFromNumber(height) + "}}";
    };
    EXPECT_EQ(drawn(*button, frame), Operations{title("10", "100")});
    button->setImage(blankImage("check", 16.0, 16.0));
    button->setBordered(true);
    EXPECT_EQ(drawn(*button, frame),
              (Operations{"fillColor white(0.96, 1)", "fillRect {{10, 20}, {100, 30}}",
                          "strokeColor white(0.5, 1)", "strokeRect {{10, 20}, {100, 30}} width 1",
                          "drawImage \"check\" {{10, 27}, {16, 16}}" + how, title("30", "80")}));
    EXPECT_EQ(button->drawTitle_withFrame_inView(button->attributedTitle().get(), frame, table.get()), frame);

    const auto header = make<NSTableHeaderCell>();
    header->setStringValue(text("Anna"));
    const auto lines = [&](const char* face) {
        return Operations{face,
                          "fillRect {{10, 20}, {100, 30}}",
                          "fillColor white(0.8, 1)",
                          "fillRect {{109, 20}, {1, 30}}",
                          "fillRect {{10, 49}, {100, 1}}",
                          title("16", "88")};
    };
    EXPECT_EQ(drawn(*header, frame), lines("fillColor white(0.95, 1)"));
    const auto context = make<NSRecordingGraphicsContext>(true);
    const NSGraphicsContext::Scope scope(*context);
    header->drawWithFrame_highlighted_inView(frame, true, table.get());
    EXPECT_EQ(context->operations(), lines("fillColor white(0.85, 1)"));
}

} // namespace
