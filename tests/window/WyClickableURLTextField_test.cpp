#include "window/WyClickableURLTextField.h"

#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSMenu.h"
#include "platform/appkit/NSMenuItem.h"
#include "platform/appkit/NSPasteboard.h"
#include "platform/appkit/NSTextFieldCell.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSNumber.h"
#include "support/Links.h"
#include "support/Tables.h" // eventAt

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace
{

/// A cell whose text stands in from each edge by a distance of its own.
class InsetCell final : public NSTextFieldCell
{
public:
    NSRect drawingRectForBounds(NSRect bounds) const override
    {
        return NSMakeRect(bounds.origin.x + 17.0, bounds.origin.y + 9.0, bounds.size.width - 30.0,
                          bounds.size.height - 12.0);
    }
};

class Delegate final : public NSObject, public WyClickableURLTextFieldDelegate
{
public:
    bool textField_openURL(NSTextField* field, NSObject* url) override
    {
        const auto* link = dynamic_cast<NSURL*>(url);
        asked.push_back(link != nullptr ? utf8(link->absoluteString()) : "something else");
        onOpen(field);
        return answer;
    }

    std::vector<std::string> asked;
    std::function<void(NSTextField* field)> onOpen = [](NSTextField*) {};
    bool answer = true;
};

class WyClickableURLTextFieldTest : public testing::Test
{
protected:
    WyClickableURLTextFieldTest()
    {
        field->setBezeled(false);
        surroundings->addSubview(field);
        window->initWithContentRect_styleMask(surroundings->frame(), NSWindowStyleMaskTitled);
        window->setContentView(surroundings);
    }

    static double widthOf(const char* words) { return text(words)->sizeWithAttributes({}).width; }

    static std::vector<NSRect> rectsOf(WyClickableURLTextField& field)
    {
        std::vector<NSRect> rects;
        for (const NSView::CursorRect& each : field.cursorRects()) {
            EXPECT_EQ(each.cursor, NSCursor::pointingHandCursor());
            rects.push_back(each.rect);
        }
        return rects;
    }
    std::vector<NSRect> rects() { return rectsOf(*field); }

    /// What there is at a point of the field: a URL, "something else" or "".
    std::string linkAt(NSPoint point, NSEventType type = NSEventType::LeftMouseDown)
    {
        const Ref<NSObject> found = field->urlAtMouse(eventAt(*field, point, type).get());
        const auto* const link = dynamic_cast<NSURL*>(found.get());
        return link != nullptr ? utf8(link->absoluteString()) : found ? "something else" : "";
    }

    void click(NSPoint down, NSPoint up)
    {
        field->mouseDown(eventAt(*field, down).get());
        field->mouseUp(eventAt(*field, up, NSEventType::LeftMouseUp).get());
    }
    void click(NSPoint place) { click(place, place); }

    Ref<NSWindow> window = make<NSWindow>();
    Ref<NSView> surroundings = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 400.0, 300.0));
    Ref<WyClickableURLTextField> field =
        make<WyClickableURLTextField>()->initWithFrame(NSMakeRect(20.0, 30.0, 300.0, 80.0));
    const double line = text("x")->sizeWithAttributes({}).height;
    static constexpr double kPadding = 2.0;
    OpenedLinks opened;
};

using Opened = std::vector<std::string>;

TEST_F(WyClickableURLTextFieldTest, IsToBeRead)
{
    EXPECT_FALSE(field->isEditable());
    EXPECT_FALSE(field->isSelectable());
    EXPECT_FALSE(field->canCopyURLs());
    const auto fromFile = make<WyClickableURLTextField>();
    fromFile->setEditable(true);
    fromFile->awakeFromNib();
    EXPECT_FALSE(fromFile->isEditable());
    EXPECT_FALSE(fromFile->isSelectable());
}

TEST_F(WyClickableURLTextFieldTest, FindsLinksOnceThereIsAText)
{
    EXPECT_TRUE(rects().empty());
    EXPECT_EQ(linkAt({10.0, 5.0}), "");
    field->setAttributedStringValue(LinkedText().link("go", url("a:1")).text());
    EXPECT_EQ(linkAt({10.0, 5.0}), "") << "the text system is not built yet";
    EXPECT_EQ(rects(), std::vector{NSMakeRect(kPadding, 0.0, widthOf("go"), line)});
    EXPECT_EQ(linkAt({10.0, 5.0}), "a:1");

    field->setAttributedStringValue(LinkedText().plain("go ").link("on", url("a:2")).text());
    EXPECT_EQ(linkAt({kPadding + widthOf("go ") + 1.0, 5.0}), "a:2") << "kept in step";
    field->setStringValue(text("go on"));
    EXPECT_EQ(linkAt({10.0, 5.0}), "") << "a plain text has no links";
    EXPECT_EQ(utf8(field->stringValue()), "go on");
    field->setStringValue(nullptr);
    EXPECT_EQ(linkAt({10.0, 5.0}), "");
}

TEST_F(WyClickableURLTextFieldTest, GivesEachLineOfALinkARectangle)
{
    field->setFrame(NSMakeRect(0.0, 0.0, kPadding * 2.0 + widthOf("go there") + 1.0, 80.0));
    field->setAttributedStringValue(
        LinkedText().plain("go ").link("there now", url("a:1")).plain(" or").text());
    EXPECT_EQ(rects(), (std::vector{NSMakeRect(kPadding + widthOf("go "), 0.0, widthOf("there"), line),
                                    NSMakeRect(kPadding, line, widthOf("now"), line)}));
    EXPECT_EQ(linkAt({kPadding + widthOf("go ") + 1.0, line - 1.0}), "a:1");
    EXPECT_EQ(linkAt({kPadding + 1.0, line - 1.0}), "");
    EXPECT_EQ(linkAt({kPadding + 1.0, line + 1.0}), "a:1");
    EXPECT_EQ(linkAt({kPadding + widthOf("now") + 1.0, line + 1.0}), "");
}

TEST_F(WyClickableURLTextFieldTest, IsPointedAtWhereTheTextIsDrawn)
{
    field->setCell(make<InsetCell>());
    field->setFrame(NSMakeRect(20.5, 30.25, 300.0, 80.0));
    field->setAttributedStringValue(
        LinkedText().plain("see ").link("the page", url("a:1")).plain(" there").text());
    EXPECT_EQ(operationsOf(*field),
              Operations{"drawText \"see the page there\" {{19, 9}, {266, 68}} [{0, 4}] [{4, 8}] [{12, 6}]"});

    const double left = 19.0 + widthOf("see ");
    const double right = left + widthOf("the page");
    ASSERT_EQ(rects().size(), 1U);
    EXPECT_DOUBLE_EQ(rects()[0].origin.x, left);
    EXPECT_EQ(rects()[0].origin.y, 9.0);
    // The exact limits: upper and left edges belong to the link, the others do not.
    const NSRect rect = rects()[0];
    const double last = rect.origin.x + rect.size.width;
    EXPECT_NEAR(last, right, 1.0 / 64.0);
    const double bottom = rect.origin.y + rect.size.height;
    EXPECT_EQ(linkAt({rect.origin.x, rect.origin.y}), "a:1");
    EXPECT_EQ(linkAt({rect.origin.x - 1.0 / 64.0, rect.origin.y}), "");
    EXPECT_EQ(linkAt({rect.origin.x, rect.origin.y - 1.0 / 64.0}), "");
    EXPECT_EQ(linkAt({last - 1.0 / 64.0, bottom - 1.0 / 64.0}), "a:1");
    EXPECT_EQ(linkAt({last, bottom - 1.0 / 64.0}), "");
    EXPECT_EQ(linkAt({last - 1.0 / 64.0, bottom}), "");
}

TEST_F(WyClickableURLTextFieldTest, ClipsLinksToTheTextRectangle)
{
    field->setBezeled(true);
    field->setFrame(NSMakeRect(0.0, 0.0, 300.0, 6.0 + line * 1.5));
    field->setAttributedStringValue(LinkedText().link("one\ntwo\nthree", url("a:1")).text());
    EXPECT_EQ(rects(), (std::vector{NSMakeRect(5.0, 3.0, widthOf("one"), line),
                                    NSMakeRect(5.0, 3.0 + line, widthOf("two"), line * 0.5)}));
    EXPECT_EQ(linkAt({6.0, 2.5 + line * 1.5}), "a:1");
    EXPECT_EQ(linkAt({6.0, 3.0 + line * 1.5}), "") << "in the border";
}

TEST_F(WyClickableURLTextFieldTest, ShowsTheHandOnlyWhereAScrolledSuperviewLeavesTheLinkVisible)
{
    // A page that is scrolled in a view of 100 points by 60: only that much of it is visible.
    const Ref<NSView> view = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 60.0));
    view->addSubview(surroundings);
    field->setFrame(NSMakeRect(50.0, 200.0, 200.0, 3.0 * line));
    field->setAttributedStringValue(LinkedText().link("a long first line\nb\nc", url("a:1")).text());
    const auto scrollTo = [&](double x, double y) {
        surroundings->setFrame(NSMakeRect(-x, -y, 400.0, 300.0));
    };
    scrollTo(0.0, 0.0);
    EXPECT_TRUE(rects().empty());
    scrollTo(60.0, 200.0 + line * 1.5); // the field's upper half, from 10 points in
    const double width = kPadding + widthOf("a long first line") - 10.0;
    EXPECT_EQ(rects(), (std::vector{NSMakeRect(10.0, 0.0, width, line)}));
    scrollTo(50.0 + kPadding, 200.0);
    EXPECT_EQ(rects().size(), 3U);
    EXPECT_EQ(rects()[1], NSMakeRect(kPadding, line, widthOf("b"), line));

    field->removeFromSuperview();
    EXPECT_TRUE(rects().empty());
}

TEST_F(WyClickableURLTextFieldTest, TellsLinksApartThatTouch)
{
    field->setAttributedStringValue(
        LinkedText().link("one", url("a:1")).link("two", url("a:2")).link("three", text("a:2")).text());
    const double first = kPadding + widthOf("one");
    const double second = kPadding + widthOf("onetwo");
    EXPECT_EQ(rects().size(), 3U);
    EXPECT_EQ(linkAt({first - 0.5, 5.0}), "a:1");
    EXPECT_EQ(linkAt({first + 0.5, 5.0}), "a:2");
    click({first - 0.5, 5.0}, {first + 0.5, 5.0});
    EXPECT_EQ(opened.take(), Opened{});
    click({first + 0.5, 5.0}, {second + 0.5, 5.0});
    EXPECT_EQ(opened.take(), Opened{"a:2"}) << "equal URLs, however the text holds them";
}

TEST_F(WyClickableURLTextFieldTest, OpensALinkThatIsPressedAndReleased)
{
    const auto target = make<Delegate>();
    field->setAttributedStringValue(
        LinkedText().link("one", url("a:1")).plain(" and ").link("one again", text("a:1")).text());
    rects();
    const NSPoint one{4.0, 5.0};
    const NSPoint between{kPadding + widthOf("one a"), 5.0};
    const NSPoint again{kPadding + widthOf("one and o"), 5.0};
    click(one);
    EXPECT_EQ(opened.take(), Opened{"a:1"});
    click(one, again);
    EXPECT_EQ(opened.take(), Opened{"a:1"});
    field->mouseUp(eventAt(*field, again, NSEventType::LeftMouseUp).get());
    EXPECT_EQ(opened.take(), Opened{}) << "a release alone opens nothing";
    click(one, between);
    click(between, one);
    EXPECT_EQ(opened.take(), Opened{});
    field->setEnabled(false);
    click(one);
    EXPECT_EQ(opened.take(), Opened{});
    EXPECT_TRUE(rects().empty());
    field->setEnabled(true);
    EXPECT_EQ(rects().size(), 2U);

    field->setDelegate(target.get());
    click(one);
    EXPECT_EQ(std::exchange(target->asked, {}), Opened{"a:1"});
    EXPECT_EQ(opened.take(), Opened{});
    target->answer = false;
    click(one);
    EXPECT_EQ(target->asked, Opened{"a:1"});
    EXPECT_EQ(opened.take(), Opened{"a:1"});
    field->setDelegate(surroundings.get()); // which knows nothing of links
    click(one);
    EXPECT_EQ(opened.take(), Opened{"a:1"});
}

TEST_F(WyClickableURLTextFieldTest, HandsOnWhatIsNoURL)
{
    const auto target = make<Delegate>();
    field->setDelegate(target.get());
    field->setAttributedStringValue(LinkedText()
                                        .link("bad", text("no url at all"))
                                        .link("number", NSNumber::numberWithInteger(7))
                                        .text());
    EXPECT_EQ(rects().size(), 2U);
    EXPECT_EQ(linkAt({4.0, 5.0}), "");
    click({4.0, 5.0});
    EXPECT_EQ(target->asked, Opened{});
    click({kPadding + widthOf("badn"), 5.0});
    EXPECT_EQ(target->asked, Opened{"something else"});
    EXPECT_EQ(opened.take(), Opened{});
}

TEST_F(WyClickableURLTextFieldTest, SurvivesWhatItsDelegateDoes)
{
    const NSPoint place{4.0, 5.0};
    const auto linked = [] { return LinkedText().link("link", url("a:1")).text(); };
    field->setAttributedStringValue(linked());
    rects();
    auto target = make<Delegate>();
    field->setDelegate(target.get());
    field->mouseDown(eventAt(*field, place).get());
    target = nullptr;
    field->mouseUp(eventAt(*field, place, NSEventType::LeftMouseUp).get());
    EXPECT_EQ(opened.take(), Opened{"a:1"}) << "the delegate is gone, the workspace opens it";

    target = make<Delegate>();
    field->setDelegate(target.get());
    target->answer = false;
    target->onOpen = [&](NSTextField* sender) { sender->setStringValue(text("nothing")); };
    click(place);
    EXPECT_EQ(opened.take(), Opened{"a:1"}) << "what was clicked, not what is there now";
    EXPECT_EQ(linkAt(place), "");

    field->setAttributedStringValue(linked());
    const Weak<WyClickableURLTextField> watched(field.get());
    const Ref<NSEvent> down = eventAt(*field, place);
    const Ref<NSEvent> up = eventAt(*field, place, NSEventType::LeftMouseUp);
    target->onOpen = [&](NSTextField* sender) {
        sender->removeFromSuperview();
        field = nullptr;
        target = nullptr;
    };
    WyClickableURLTextField* const borrowed = field.get();
    borrowed->mouseDown(down.get());
    borrowed->mouseUp(up.get());
    EXPECT_FALSE(watched.get());
    EXPECT_EQ(opened.take(), Opened{"a:1"});
}

TEST_F(WyClickableURLTextFieldTest, CopiesALinkFromItsMenu)
{
    field->setAttributedStringValue(
        LinkedText().link("go", text("http://example.org/ü")).plain(" on").text());
    rects();
    const auto menuAt = [&](double x) {
        return field->menuForEvent(eventAt(*field, {x, 5.0}, NSEventType::RightMouseDown).get());
    };
    EXPECT_FALSE(menuAt(4.0));
    field->setCanCopyURLs(true);
    EXPECT_FALSE(menuAt(kPadding + widthOf("go o")));
    const Ref<NSMenu> menu = menuAt(4.0);
    ASSERT_TRUE(menu);
    EXPECT_EQ(utf8(menu->title()), "Copy URL");
    ASSERT_EQ(menu->itemArray().size(), 1U);
    const Ref<NSMenuItem> item = menu->itemArray()[0];
    EXPECT_EQ(utf8(item->title()), "Copy URL");
    EXPECT_EQ(item->action(), SEL{"copyURL:"});
    EXPECT_EQ(utf8(item->keyEquivalent()), "");
    EXPECT_EQ(item->target(), field);
    item->perform();
    const Ref<NSPasteboard> pasteboard = NSPasteboard::pasteboardWithName(NSGeneralPboard);
    EXPECT_EQ(pasteboard->types(), (std::vector{NSURLPboardType, NSStringPboardType}));
    EXPECT_EQ(utf8(pasteboard->stringForType(NSStringPboardType)), "http://example.org/ü");

    item->setRepresentedObject(NSNumber::numberWithInteger(7));
    item->perform();
    field->copyURL(nullptr);
    EXPECT_EQ(utf8(pasteboard->stringForType(NSStringPboardType)), "http://example.org/ü")
        << "nothing to copy leaves what was there";
    field->removeFromSuperview();
    field = nullptr;
    EXPECT_FALSE(item->isEnabled());
    item->perform();
}

TEST_F(WyClickableURLTextFieldTest, FindsLinksInAWindowOfAHost)
{
    window->setContentView(nullptr);
    EXPECT_TRUE(rects().empty());
    field->setAttributedStringValue(LinkedText().link("go", url("a:1")).text());
    EXPECT_EQ(rects().size(), 1U);
    EXPECT_EQ(linkAt({4.0, 5.0}), "a:1");
}

TEST_F(WyClickableURLTextFieldTest, KeepsTheWidthOfItsTextSystem)
{
    field->setAttributedStringValue(LinkedText().link("two words", url("a:1")).text());
    EXPECT_EQ(rects().size(), 1U);
    field->setFrame(NSMakeRect(0.0, 0.0, kPadding * 2.0 + widthOf("words"), 80.0));
    EXPECT_EQ(rects().size(), 1U) << "though the text is drawn in two lines now";
    EXPECT_EQ(rects()[0].size.width, kPadding + widthOf("words"));

    const auto oneLine = make<WyClickableURLTextField>();
    oneLine->setFrame(NSMakeRect(0.0, 0.0, kPadding * 2.0 + widthOf("words"), 80.0));
    oneLine->setBezeled(false);
    oneLine->cell()->setScrollable(true);
    oneLine->setAttributedStringValue(field->attributedStringValue());
    surroundings->addSubview(oneLine);
    EXPECT_EQ(rectsOf(*oneLine).size(), 1U) << "unlimited";
}

} // namespace
