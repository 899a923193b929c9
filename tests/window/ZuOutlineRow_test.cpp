// The two cells of outlines with checks, which lay out their rows and take presses alike.

#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSIndexSet.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/Tables.h"
#include "window/ZuCheckImageCell.h"
#include "window/ZuOutlineImageCell.h"
#include "window/ZuOutlineView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

const NSRect kFrame = NSMakeRect(30.0, 40.0, 200.0, 20.0);
const char* const kHow = " from {{0, 0}, {0, 0}} operation 2 fraction 1 respectFlipped";

/// With the highlight that selected rows have in the outline that has the keyboard.
template <class Cell> class Lit : public Cell
{
public:
    Ref<NSColor> highlightColorWithFrame_inView(NSRect frame, NSView* /*view*/) const override
    {
        return frame == kFrame ? NSColor::alternateSelectedControlColor() : nullptr;
    }
};

struct Kind {
    const char* name;
    Ref<NSCell> (*make)();
    Ref<NSCell> (*makeLit)();
    double margin; // left of the text
};

template <class Cell> constexpr Kind kindOf(const char* name, double margin)
{
    return {name, [] { return Ref<NSCell>(make<Cell>()); }, [] { return Ref<NSCell>(make<Lit<Cell>>()); },
            margin};
}

class ZuOutlineRowTest : public testing::TestWithParam<Kind>
{
protected:
    ZuOutlineRowTest()
    {
        item->setIndent_item(20);
        item->setNumber(7);
        setUp(*cell);
    }

    void setUp(NSCell& shown) const
    {
        shown.setStringValue(text("Lake"));
        shown.setValue_forKey(item.get(), "item");
    }

    /// What is drawn of logo, text and count into a row.
    Operations drawn(NSCell& shown, NSView& view, NSRect frame = kFrame)
    {
        auto* const button = dynamic_cast<ZuCheckImageCell*>(&shown);
        if (button == nullptr) {
            return operationsOf(shown, frame, view);
        }
        const auto context = make<NSRecordingGraphicsContext>(true);
        const NSGraphicsContext::Scope scope(*context);
        answer = button->drawTitle_withFrame_inView(button->attributedTitle().get(), frame, &view);
        return context->operations();
    }
    Operations drawn(double rowHeight = kFrame.size.height)
    {
        return drawn(*cell, *outline, {kFrame.origin, {kFrame.size.width, rowHeight}});
    }

    /// The text from `place` on, and the count behind it, unless that is null.
    Operations expected(NSPoint place, const char* count, const std::string& countColor = "") const
    {
        const NSSize size = cell->attributedStringValue()->size();
        const double margin = GetParam().margin;
        const Ref<NSFont> font = cell->font();
        Operations operations{"drawText \"Lake\" " + NSStringFromRect({{place.x + margin, place.y}, size}) +
                              (font ? " font \"Arial\" " + NSStringFromNumber(font->pointSize()) : "")};
        if (count != nullptr) {
            const NSPoint at{place.x + size.width + margin + 10.0, place.y + 2.0};
            operations.push_back(std::string("drawText \"") + count + "\" at " + NSStringFromPoint(at) +
                                 countColor);
        }
        return operations;
    }

    Ref<OutlineOwner> owner = make<OutlineOwner>();
    Ref<ZuOutlineItem> item = owner->add("Lake");
    Ref<ZuOutlineItem> second = owner->add("Sea");
    Ref<NSCell> cell = GetParam().make();
    Ref<ZuOutlineView> outline = tableOf<ZuOutlineView>(*owner, cell);
    NSRect answer; // of the last drawing of a title
};

INSTANTIATE_TEST_SUITE_P(Cells, ZuOutlineRowTest,
                         testing::Values(kindOf<ZuOutlineImageCell>("ZuOutlineImageCell", 2.0),
                                         kindOf<ZuCheckImageCell>("ZuCheckImageCell", 0.0)),
                         [](const testing::TestParamInfo<Kind>& kind) { return kind.param.name; });

TEST_P(ZuOutlineRowTest, LaysOutLogoTextAndCount)
{
    struct Case {
        double logoHeight; // 0 for none
        double logoTop;
        std::int64_t number;
        const char* count;
    };
    for (const auto& [logoHeight, logoTop, number, count] :
         {Case{16.0, 42.0, 7, "(7)"},
          {0.0, 0.0, 0, "(0)"},
          {17.5, 41.0, 123, "(123)"},
          {25.0, 38.0, -1, nullptr},
          {21.5, 40.0, std::numeric_limits<std::int64_t>::max(), "(9223372036854775807)"}}) {
        const Ref<NSImage> logo = logoHeight > 0.0 ? blankImage("logo", 16.0, logoHeight) : nullptr;
        item->setLogo(logo);
        item->setGap_logo_to_text(21);
        item->setNumber(number);
        const NSPoint place{logo ? 65.0 : 28.0, 43.0};
        Operations operations = expected(place, count);
        if (logo) {
            const NSRect rect = NSMakeRect(28.0, logoTop, 16.0, logoHeight);
            operations.insert(operations.begin(), "drawImage \"logo\" " + NSStringFromRect(rect) + kHow);
        }
        EXPECT_EQ(drawn(), operations) << logoHeight;
        if (dynamic_cast<ZuCheckImageCell*>(cell.get()) != nullptr) {
            const NSSize size = cell->attributedStringValue()->size();
            const double behind = count != nullptr ? size.width : 0.0;
            EXPECT_EQ(answer, (NSRect{{place.x + behind, place.y}, size}));
        }
    }
}

TEST_P(ZuOutlineRowTest, CountsWholePoints)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr std::int64_t kFarthest = std::numeric_limits<std::int64_t>::max();
    struct Indent {
        double perLevel;
        std::int64_t item;
        double x;
    };
    for (const auto& [perLevel, ofItem, x] : {Indent{7.5, 20, 20.0},
                                              {4.5, 20, 17.0},
                                              {16.9, -30, -22.0},
                                              {std::nan(""), 20, 20.0},
                                              {-kInfinity, 0, -2147483648.0},
                                              {1e300, 0, 2147483647.0},
                                              {16.0, 20, 28.0}}) {
        outline->setIndentationPerLevel(perLevel);
        item->setIndent_item(ofItem);
        EXPECT_EQ(drawn(), expected({x, 43.0}, "(7)")) << perLevel;
    }
    // Of a text 13.8 high.
    EXPECT_EQ(drawn(19.0), expected({28.0, 42.0}, "(7)"));
    EXPECT_EQ(drawn(10.0), expected({28.0, 40.0}, "(7)")) << "it does not begin above the row";
    EXPECT_EQ(drawn(kInfinity), expected({28.0, 40.0 + 1073741823.0}, "(7)"));

    item->setLogo(blankImage("logo", 16.0, 16.0));
    item->setIndent_item(kFarthest);
    item->setGap_logo_to_text(kFarthest);
    EXPECT_EQ(drawn().size(), 3U);
}

TEST_P(ZuOutlineRowTest, ShowsNoItemButItsCount)
{
    cell->setValue_forKey(make<ZuOutlineItem>().get(), "item");
    EXPECT_EQ(cell->valueForKey("item"), nullptr) << "it is not kept alive";
    EXPECT_EQ(drawn(), expected({8.0, 43.0}, "(0)"));
    EXPECT_EQ(cell->accessibilityChecked(), std::nullopt);
}

TEST_P(ZuOutlineRowTest, DrawsTheCountWhiteInTheHighlightOfTheKeyboard)
{
    const Operations plain = expected({28.0, 43.0}, "(7)");
    const Ref<NSCell> lit = GetParam().makeLit();
    setUp(*lit);
    const auto select = [&](std::size_t row) {
        outline->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(row).get(), false);
    };
    select(1);
    EXPECT_EQ(drawn(*lit, *outline), plain) << "another row is selected";
    outline->setAllowsMultipleSelection(true);
    outline->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndexesInRange({0, 2}).get(),
                                                   false);
    outline->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(1).get(), true);
    EXPECT_EQ(drawn(*lit, *outline), plain) << "it is another that was selected last";
    select(0);
    EXPECT_EQ(drawn(*lit, *outline), expected({28.0, 43.0}, "(7)", " color white(1, 1)"));
    EXPECT_EQ(drawn(), plain) << "the keyboard is elsewhere";
}

TEST_P(ZuOutlineRowTest, TogglesTheItemOfThePressedRow)
{
    outline->setRowHeight(20.0);
    const auto press = [&](NSPoint point) { outline->mouseDown(eventAt(*outline, point).get()); };
    press({20.0, 30.0});
    EXPECT_EQ(second->isChecked(), 1) << "there is no image";
    cell->setImage(blankImage("check", 16.0, 5.0));
    press({20.0, 30.0});
    EXPECT_EQ(second->isChecked(), 0);
    EXPECT_EQ(item->isChecked(), 1) << "the cell's own item, but not the row's";

    // That row stays pressed.
    const auto toggles = [&](NSView& view, NSPoint point) {
        const auto before = second->isChecked();
        const NSRect frame = NSMakeRect(30.0, 20.0, 100.0, 20.0);
        EXPECT_FALSE(
            cell->trackMouse_inRect_ofView_untilMouseUp(eventAt(view, point).get(), frame, &view, true));
        return second->isChecked() != before;
    };
    EXPECT_FALSE(toggles(*outline, {29.5, 20.0}));
    EXPECT_TRUE(toggles(*outline, {30.0, 20.0}));
    EXPECT_EQ(second->isChecked(), 1);
    EXPECT_TRUE(toggles(*outline, {45.5, 39.5})) << "at any height";
    EXPECT_FALSE(toggles(*outline, {46.0, 20.0}));
    second->setIsChecked(2);
    EXPECT_TRUE(toggles(*outline, {40.0, 20.0}));
    EXPECT_EQ(second->isChecked(), 0);
    EXPECT_FALSE(toggles(*make<NSTableView>(), {40.0, 20.0}));
    cell->setImage(blankImage("check", 16.0, 0.0));
    EXPECT_FALSE(toggles(*outline, {40.0, 20.0}));
    cell->setImage(blankImage("check", 16.0, 16.0));
    outline->mouseUp(eventAt(*outline, {20.0, 30.0}, NSEventType::LeftMouseUp).get());
    EXPECT_FALSE(toggles(*outline, {40.0, 20.0})) << "no row is pressed";
}

TEST_P(ZuOutlineRowTest, SaysTextCountAndCheck)
{
    EXPECT_EQ(utf8(cell->accessibilityLabel()), "Lake (7)");
    item->setNumber(-1);
    EXPECT_EQ(utf8(cell->accessibilityLabel()), "Lake");
    EXPECT_EQ(cell->accessibilityChecked(), true);
    cell->performCheckOfRow_inView(0, outline.get());
    cell->performCheckOfRow_inView(2, outline.get());
    cell->performCheckOfRow_inView(0, make<NSTableView>().get());
    EXPECT_EQ(cell->copyWithZone(nullptr)->accessibilityChecked(), false);
}

TEST_P(ZuOutlineRowTest, DrawsItsTextAloneInOtherViews)
{
    const Operations operations = drawn(*cell, *make<NSTableView>());
    ASSERT_EQ(operations.size(), 1U);
    EXPECT_TRUE(operations[0].starts_with("drawText \"Lake\" {{3")) << operations[0];
}

TEST(ZuCheckImageCellTest, LeavesItsImageToTheBaseClass)
{
    const Ref<OutlineOwner> owner = make<OutlineOwner>();
    const Ref<ZuCheckImageCell> cell = make<ZuCheckImageCell>();
    const Ref<ZuOutlineView> outline = tableOf<ZuOutlineView>(*owner, cell);
    cell->setImage(blankImage("check", 16.0, 10.0));
    const Operations operations = operationsOf(*cell, kFrame, *outline);
    ASSERT_EQ(operations.size(), 3U);
    EXPECT_EQ(operations[0], "drawImage \"check\" {{30, 45}, {16, 10}}" + std::string(kHow));
    EXPECT_TRUE(operations[1].starts_with("drawText \"\" {{8, ")) << operations[1];
}

} // namespace
