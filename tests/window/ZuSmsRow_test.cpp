// The two cells of message rows, which lay out their rows alike.

#include "platform/foundation/NSAttributedString.h"
#include "platform/graphics/NSFont.h"
#include "support/Tables.h"
#include "window/PelSmsTableCheckImageCell.h"
#include "window/ZuSmsImageCell.h"

#include <gtest/gtest.h>

namespace
{

const NSRect kFrame = NSMakeRect(10.0, 100.0, 400.0, 40.0);

template <class Cell> class ZuSmsRowTest : public testing::Test
{
protected:
    ZuSmsRowTest() { cell->setStringValue(text("Anna")); }

    static constexpr bool kIsButton = std::is_base_of_v<NSButtonCell, Cell>;

    void show(const Ref<NSImage>& image)
    {
        picture = image;
        cell->setFrontImage(image.get());
    }

    Operations drawn(NSCell& shown, NSRect frame = kFrame) { return operationsOf(shown, frame, *table); }

    double titleHeight() const { return cell->attributedStringValue()->size().height; }

    /// The title's place, with its left upper corner there, in the row.
    NSRect title(NSPoint place, NSRect frame = kFrame) const
    {
        return NSMakeRect(place.x, place.y, frame.origin.x + frame.size.width - place.x, titleHeight());
    }
    /// What the base class draws there.
    static std::string titleIn(NSRect rect)
    {
        return "drawText \"Anna\" " + NSStringFromRect(kIsButton ? rect : NSInsetRect(rect, 2.0, 0.0));
    }
    static std::string pictureIn(NSRect rect)
    {
        return "drawImage \"face\" " + NSStringFromRect(rect) +
               " from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped";
    }

    Ref<NSImage> picture;
    Ref<TableOwner> owner = make<TableOwner>(1);
    Ref<Cell> cell = make<Cell>();
    Ref<NSTableView> table = tableOf(*owner, cell);
};

struct Names {
    template <class Cell> static std::string GetName(int /*number*/) { return std::string(Cell::table.name); }
};
using Cells = testing::Types<ZuSmsImageCell, PelSmsTableCheckImageCell>;
TYPED_TEST_SUITE(ZuSmsRowTest, Cells, Names);

TYPED_TEST(ZuSmsRowTest, PutsTheTitleBesideThePicture)
{
    struct Case {
        NSSize picture;
        NSRect place;
        double x; // of the title
    };
    for (const auto& [size, place, x] : {
             Case{{30.0, 20.0}, {{10.0, 110.0}, {30.0, 20.0}}, 44.0},
             Case{{60.0, 40.0}, {{10.0, 100.0}, {60.0, 40.0}}, 74.0}, // as high as the cell
             Case{{60.0, 40.5}, {{10.0, 101.0}, {38.0, 38.0}}, 52.0},
             Case{{20.0, 80.0}, {{10.0, 101.0}, {38.0, 38.0}}, 52.0},
         }) {
        this->show(blankImage("face", size.width, size.height));
        this->cell->setIsTitleAlignCenter(false);
        EXPECT_EQ(this->drawn(*this->cell),
                  (Operations{this->pictureIn(place), this->titleIn(this->title({x, place.origin.y}))}));
        this->cell->setIsTitleAlignCenter(true);
        const double middle = 100.0 + (40.0 - this->titleHeight()) * 0.5;
        EXPECT_EQ(this->drawn(*this->cell),
                  (Operations{this->pictureIn(place), this->titleIn(this->title({x, middle}))}));
    }
}

TYPED_TEST(ZuSmsRowTest, FindsThePlaceOfTheTitleInSinglePrecision)
{
    this->show(blankImage("face", 20.3, 20.0));
    const NSRect frame = NSMakeRect(0.1, 0.0, 100.0, 20.0);
    const auto x = static_cast<double>(0.1F + 20.3F + 4.0F);
    ASSERT_NE(x, 0.1 + 20.3 + 4.0);
    EXPECT_EQ(this->drawn(*this->cell, frame).at(1), this->titleIn(this->title({x, 0.0}, frame)));
}

TYPED_TEST(ZuSmsRowTest, PutsTheTitleWithoutAPicture)
{
    const double height = this->titleHeight();
    const NSRect low = NSMakeRect(10.1, 100.0, 400.0, 10.0);
    for (const bool gone : {false, true}) {
        if (gone) { // it is not kept alive
            this->cell->setFrontImage(blankImage("face", 30.0, 20.0).get());
        }
        for (const NSRect& frame : {kFrame, low}) {
            const double left = frame.origin.x;
            const double middle = 100.0 + (frame.size.height - height) * 0.5;
            const NSPoint place = this->kIsButton
                                      ? NSPoint{static_cast<double>(static_cast<float>(left) + 4.0F),
                                                100.0 + frame.size.height * 0.5}
                                  : frame == low ? NSPoint{left, 101.0}
                                                 : NSPoint{left, middle};
            this->cell->setIsTitleAlignCenter(false);
            EXPECT_EQ(this->drawn(*this->cell, frame), Operations{this->titleIn(this->title(place, frame))});
            this->cell->setIsTitleAlignCenter(true);
            EXPECT_EQ(this->drawn(*this->cell, frame),
                      Operations{this->titleIn(this->title({place.x, middle}, frame))});
        }
    }
}

TYPED_TEST(ZuSmsRowTest, DrawsMarkAndMessage)
{
    const double height = this->titleHeight();
    this->show(blankImage("face", 30.0, 20.0));
    Operations expected = this->drawn(*this->cell);
    for (const std::int32_t sent : {0, 4, 6, -5}) {
        this->cell->setSentSmsType(sent);
        this->cell->setButtonContents(text(""));
        EXPECT_EQ(this->drawn(*this->cell), expected) << sent;
    }
    this->cell->setSentSmsType(5);
    expected.push_back("drawText \"Failed\" " + NSStringFromRect(NSMakeRect(294.0, 107.0, 366.0, height)) +
                       " font \"Arial\" 13 color calibratedRGB(1, 0, 0, 1)");
    EXPECT_EQ(this->drawn(*this->cell), expected) << "beyond the cell's edge, too";
    this->cell->setButtonContents(text("See you\nat eight"));
    const double below = 110.0 + height;
    expected.push_back("drawText \"See you\\nat eight\" " +
                       NSStringFromRect(NSMakeRect(44.0, below, 320.0, 140.0 - below)) +
                       " font \"Arial\" 12 color white(0.5, 1)");
    EXPECT_EQ(this->drawn(*this->cell), expected);
    EXPECT_EQ(utf8(this->cell->accessibilityLabel()), "Anna, Failed, See you\nat eight");

    const Ref<NSCell> copy = this->cell->copyWithZone(nullptr);
    this->cell->setButtonContents(nullptr);
    this->cell->setSentSmsType(0);
    EXPECT_EQ(this->drawn(*copy), expected) << "with texts of its own";
    EXPECT_EQ(utf8(this->cell->accessibilityLabel()), "Anna");
    this->picture = nullptr;
    EXPECT_EQ(this->drawn(*copy).size(), expected.size() - 1) << "but no picture";
}

TYPED_TEST(ZuSmsRowTest, AwakesWithoutPicture)
{
    const Operations bare = this->drawn(*this->cell);
    this->show(blankImage("face", 30.0, 20.0));
    this->cell->setIsTitleAlignCenter(true);
    this->cell->setSentSmsType(5);
    this->cell->setButtonContents(text("See you"));
    this->cell->awakeFromNib();
    EXPECT_FALSE(this->cell->isTitleAlignCenter());
    EXPECT_EQ(this->cell->sentSmsType(), 5);
    EXPECT_EQ(utf8(this->cell->buttonContents()), "See you");
    this->cell->setSentSmsType(0);
    this->cell->setButtonContents(nullptr);
    EXPECT_EQ(this->drawn(*this->cell), bare);
}

TYPED_TEST(ZuSmsRowTest, DrawsNoImageOfTheBaseClass)
{
    Operations expected = this->drawn(*this->cell);
    if (this->kIsButton) { // 16 points and the gap behind them
        expected = this->drawn(*this->cell, NSMakeRect(30.0, 100.0, 380.0, 40.0));
    }
    this->cell->setImage(blankImage("check", 16.0, 16.0));
    EXPECT_EQ(this->drawn(*this->cell), expected);
}

} // namespace
