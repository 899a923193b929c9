#include "platform/appkit/NSView.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTrackingArea.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/Weak.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSShadow.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include <cmath>
#include <functional>
#include <limits>

namespace
{

class TestView : public NSView
{
public:
    explicit TestView(bool flipped) : flippedNow(flipped) {}

    bool isFlipped() const override { return flippedNow; }
    void drawRect(NSRect rect) override { drawn.push_back(rect); }
    void mouseDown(NSEvent* event) override
    {
        downs.push_back(convertPoint_fromView(event->locationInWindow(), nullptr));
        onEvent();
    }
    void mouseEntered(NSEvent* /*event*/) override
    {
        notes += " entered";
        onEvent();
    }
    void mouseExited(NSEvent* /*event*/) override { notes += " exited"; }

    bool flippedNow;
    std::vector<NSRect> drawn;
    std::vector<NSPoint> downs;
    std::string notes;
    std::function<void()> onEvent = [] {};
};

Ref<TestView> view(bool flipped, double x, double y, double width, double height)
{
    Ref<TestView> made = make<TestView>(flipped);
    made->initWithFrame(NSMakeRect(x, y, width, height));
    return made;
}

Ref<NSWindow> windowWith(const Ref<NSView>& content)
{
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(0.0, 0.0, 60.0, 50.0), 0);
    window->setContentView(content);
    return window;
}

void send(QEvent::Type type, QWidget* widget, QPointF position, Qt::MouseButton button = Qt::LeftButton)
{
    QMouseEvent event(type, position, widget->mapToGlobal(position), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

TEST(NSViewTest, ConvertsPointsThroughFlippedAndUnflippedViews)
{
    for (const bool flipped : {true, false}) { // the outer view, not the inner
        const Ref<TestView> content = view(false, 0.0, 0.0, 100.0, 80.0);
        const Ref<TestView> outer = view(flipped, 10.0, 20.0, 50.0, 40.0);
        const Ref<TestView> inner = view(!flipped, 3.0, 4.0, 20.0, 10.0);
        content->addSubview(outer);
        outer->addSubview(inner);
        const NSPoint inWindow{14.0, flipped ? 48.0 : 32.0};
        EXPECT_EQ(inner->convertPoint_toView({1.0, 2.0}, nullptr), inWindow);
        EXPECT_EQ(inner->convertPoint_fromView(inWindow, nullptr), (NSPoint{1.0, 2.0}));
        EXPECT_EQ(outer->convertPoint_fromView({1.0, 2.0}, inner.get()), (NSPoint{4.0, 12.0}));
    }
}

TEST(NSViewTest, KnowsWhatTheViewsAroundLeaveVisible)
{
    const Ref<TestView> clip = view(false, 10.0, 10.0, 100.0, 50.0);
    const Ref<TestView> page = view(true, -20.0, 0.0, 400.0, 320.0); // its lowest 50 points show
    const Ref<TestView> item = view(false, 90.0, 290.0, 60.0, 25.0);
    clip->addSubview(page);
    page->addSubview(item);
    EXPECT_EQ(page->visibleRect(), NSMakeRect(20.0, 270.0, 100.0, 50.0));
    EXPECT_EQ(item->visibleRect(), NSMakeRect(0.0, 0.0, 30.0, 25.0));
    EXPECT_EQ(item->convertRect_toView(NSMakeRect(1.0, 2.0, 3.0, 4.0), page.get()),
              NSMakeRect(91.0, 309.0, 3.0, 4.0));
    EXPECT_EQ(item->convertRect_fromView(NSMakeRect(91.0, 309.0, 3.0, 4.0), page.get()),
              NSMakeRect(1.0, 2.0, 3.0, 4.0));
    item->setFrame(NSMakeRect(130.0, 290.0, 60.0, 25.0));
    EXPECT_TRUE(NSIsEmptyRect(item->visibleRect()));
}

TEST(NSViewTest, GivesThePointerTheCursorOfItsPlace)
{
    class CursorView final : public TestView
    {
    public:
        CursorView() : TestView(true) {}
        void resetCursorRects() override
        {
            ++resets;
            addCursorRect_cursor(link, NSCursor::pointingHandCursor());
            addCursorRect_cursor(NSMakeRect(0.0, 0.0, 100.0, 20.0), NSCursor::IBeamCursor());
            addCursorRect_cursor(NSMakeRect(0.0, 0.0, 100.0, 0.0), NSCursor::IBeamCursor());
            addCursorRect_cursor(NSMakeRect(0.0, 0.0, 100.0, 100.0), nullptr);
        }
        int resets = 0;
        NSRect link = NSMakeRect(0.0, 0.0, 10.0, 10.0);
    };
    const Ref<TestView> content = view(false, 0.0, 0.0, 200.0, 100.0);
    const auto window = make<NSWindow>();
    window->initWithContentRect_styleMask(content->frame(), NSWindowStyleMaskTitled);
    window->setContentView(content);
    const auto shown = make<CursorView>();
    shown->initWithFrame(NSMakeRect(50.0, 0.0, 100.0, 100.0));
    content->addSubview(shown);
    window->makeKeyAndOrderFront();
    QWidget* const widget = shown->widget();
    const auto cursorAt = [&](QPointF place) {
        QMouseEvent move(QEvent::MouseMove, place, widget->mapTo(widget->window(), place),
                         widget->mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &move);
        return widget->cursor().shape();
    };
    EXPECT_EQ(cursorAt({9.0, 9.0}), Qt::PointingHandCursor) << "the first counts";
    EXPECT_EQ(cursorAt({10.0, 9.0}), Qt::IBeamCursor);
    EXPECT_EQ(cursorAt({10.0, 20.0}), Qt::ArrowCursor);
    EXPECT_EQ(shown->cursorRects().size(), 2U);
    const int resets = shown->resets;
    cursorAt({9.0, 9.0});
    EXPECT_EQ(shown->resets, resets) << "as long as nothing has changed";
    shown->link = NSMakeRect(90.0, 90.0, 10.0, 10.0);
    window->invalidateCursorRectsForView(shown.get());
    QCoreApplication::processEvents();
    EXPECT_EQ(widget->cursor().shape(), Qt::IBeamCursor) << "though the pointer has not moved";
    content->setFrame(NSMakeRect(0.0, 0.0, 190.0, 100.0));
    cursorAt({9.0, 9.0});
    EXPECT_EQ(shown->resets, resets + 2) << "a view around it was placed anew";
    window->invalidateCursorRectsForView(nullptr);
}

TEST(NSViewTest, PlacesWidgetsFromTheRightEdge)
{
    const Ref<TestView> parent = view(false, 0.0, 0.0, 100.0, 80.0);
    const Ref<TestView> child = view(false, 10.0, 5.4, 20.3, 10.0);
    parent->addSubview(child);
    parent->setToolTip(text("<b>5 < 6</b>"));
    EXPECT_EQ(parent->widget()->toolTip(),
              "<p style='white-space: pre-wrap'>&lt;b&gt;5 &lt; 6&lt;/b&gt;</p>");
    parent->setToolTip(text("plain"));
    EXPECT_EQ(parent->widget()->toolTip(), "plain");
    EXPECT_EQ(child->widget()->geometry(), QRect(10, 65, 20, 10));
    parent->setFrame(NSMakeRect(0.0, 0.0, 100.0, 120.0));
    EXPECT_EQ(child->widget()->geometry(), QRect(10, 105, 20, 10)) << "the distance from the bottom stays";

    Ref<TestView> flipped = view(true, 7.0, 8.0, 40.5, 30.0);
    {
        QWidget host;
        flipped->widget()->setParent(&host);
        flipped->addSubview(child);
        EXPECT_TRUE(parent->subviews().empty());
        flipped->widget()->setGeometry(50, 70, 150, 90);
        host.show();
        NSApplication::sharedApplication()->handlePendingEvents();
        EXPECT_EQ(flipped->widget()->geometry(), QRect(50, 70, 150, 90)) << "where the host puts it";
        EXPECT_EQ(flipped->frame(), NSMakeRect(7.0, 8.0, 150.0, 90.0));
    }
    EXPECT_EQ(child->widget()->parentWidget(), flipped->widget()) << "a new one";
    EXPECT_EQ(child->widget()->geometry(), QRect(10, 5, 20, 10));
    EXPECT_EQ(child->frame(), NSMakeRect(10.0, 5.4, 20.3, 10.0)) << "frames are not rounded";
    flipped = nullptr;
    EXPECT_EQ(child->superview(), nullptr);
    EXPECT_EQ(child->widget()->parentWidget(), nullptr);
    child->setFrame(NSMakeRect(0.0, 0.0, -5.0, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(child->bounds(), NSZeroRect);
    child->setFrame(NSMakeRect(0.0, 0.0, std::numeric_limits<double>::infinity(), 0.0));
    EXPECT_EQ(child->bounds(), NSZeroRect);
}

TEST(NSViewTest, TurnsWithTheNextRedraw)
{
    const Ref<TestView> outer = view(true, 0.0, 0.0, 60.0, 50.0);
    const Ref<TestView> turning = view(false, 0.0, 0.0, 60.0, 50.0);
    const Ref<TestView> child = view(false, 5.0, 0.0, 10.0, 20.0);
    const Ref<TestView> between = view(true, 0.0, 0.0, 60.0, 50.0);
    outer->addSubview(between);
    between->addSubview(turning);
    turning->addSubview(child);
    const auto top = [&] { return child->widget()->y(); };
    EXPECT_EQ(top(), 30);
    turning->flippedNow = true;
    EXPECT_EQ(top(), 30);
    turning->setNeedsDisplay();
    EXPECT_EQ(top(), 0);
    turning->flippedNow = false;
    outer->imageOfBounds(1.0);
    EXPECT_EQ(top(), 30);
    turning->flippedNow = true;
    turning->setFrame(NSMakeRect(0.0, 0.0, 60.0, 40.0));
    EXPECT_EQ(top(), 0);

    const Ref<NSWindow> window = windowWith(outer);
    window->makeKeyAndOrderFront();
    NSApplication::sharedApplication()->handlePendingEvents();
    turning->flippedNow = false;
    outer->setNeedsDisplay(); // repaints those inside, too
    NSApplication::sharedApplication()->handlePendingEvents();
    NSApplication::sharedApplication()->handlePendingEvents();
    EXPECT_EQ(top(), 20);
}

TEST(NSViewTest, CastsAShadow)
{
    const Ref<TestView> behind = view(true, 0.0, 0.0, 60.0, 60.0);
    const Ref<NSView> caster = make<Canvas>(NSSize{20.0, 20.0}, false, [] {
        NSColor::whiteColor()->setFill();
        NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 20.0, 20.0));
    });
    caster->setFrame(NSMakeRect(20.0, 20.0, 20.0, 20.0));
    behind->addSubview(caster);
    const Ref<NSShadow> shadow = make<NSShadow>();
    shadow->setShadowColor(NSColor::colorWithSRGBRed_green_blue_alpha(0.0, 0.0, 1.0, 1.0));
    shadow->setShadowOffset({3.0, -8.0});
    caster->setShadow(shadow);
    shadow->setShadowOffset({});
    EXPECT_EQ(inkOf(pixelsOf(*behind->imageOfBounds(1.0))), QRect(20, 20, 20, 20)) << "there is no layer";
    caster->setWantsLayer(true);
    const Ref<NSImage> sharp = behind->imageOfBounds(1.0);
    EXPECT_EQ(inkOf(pixelsOf(*sharp)), QRect(20, 20, 23, 28))
        << "to the right and down, as it was when given";
    EXPECT_EQ(pixel(*sharp, 42, 47), "#fe0000ff") << "the toolkit rounds down";
    EXPECT_EQ(pixel(*sharp, 30, 30), "#ffffffff");

    shadow->setShadowOffset({0.0, -8.0});
    shadow->setShadowBlurRadius(4.0);
    caster->setShadow(shadow);
    // Across the lower edge, as far from it as the standard deviation and twice that: nearly a bell curve's
    // sums.
    constexpr double kNearly = 0.04;
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QImage picture = pixelsOf(*behind->imageOfBounds(scale));
        const auto alphaAt = [&](double y) { // between two pixels
            const int x = static_cast<int>(30.0 * scale);
            const int below = static_cast<int>(std::lround(y * scale));
            return (qAlpha(picture.pixel(x, below - 1)) + qAlpha(picture.pixel(x, below))) / 510.0;
        };
        EXPECT_NEAR(alphaAt(44.0), 0.98, kNearly) << scale;
        EXPECT_NEAR(alphaAt(46.0), 0.84, kNearly) << scale;
        EXPECT_NEAR(alphaAt(48.0), 0.5, kNearly) << scale;
        EXPECT_NEAR(alphaAt(50.0), 0.16, kNearly) << scale;
        EXPECT_NEAR(alphaAt(52.0), 0.02, kNearly) << scale;
    }
    shadow->setShadowOffset({std::nan(""), 1e300});
    shadow->setShadowBlurRadius(std::nan(""));
    caster->setShadow(shadow);
    EXPECT_EQ(inkOf(pixelsOf(*behind->imageOfBounds(1.0))), QRect(20, 20, 20, 20)) << "far away";
    shadow->setShadowOffset({});
    shadow->setShadowColor(nullptr);
    caster->setShadow(shadow);
    EXPECT_EQ(inkOf(pixelsOf(*behind->imageOfBounds(1.0))), QRect(20, 20, 20, 20));
}

TEST(NSViewTest, RedrawsWhatWasAskedForAndElseItsWholeFace)
{
    const Ref<TestView> content = view(false, 0.0, 0.0, 1.0, 1.0);
    EXPECT_EQ(content->imageOfBounds(1e9), nullptr);
    const Ref<NSWindow> window = windowWith(content);
    window->makeKeyAndOrderFront();
    const auto drawn = [&](TestView& shown) {
        content->drawn.clear();
        NSApplication::sharedApplication()->handlePendingEvents();
        return shown.drawn;
    };
    const std::vector whole{NSMakeRect(0.0, 0.0, 60.0, 50.0)};
    EXPECT_EQ(drawn(*content), whole);
    content->setNeedsDisplayInRect(NSMakeRect(5.0, 6.5, 10.0, 10.0));
    content->setNeedsDisplayInRect(NSMakeRect(8.0, 6.5, 10.0, 12.0));
    EXPECT_EQ(drawn(*content), (std::vector{NSMakeRect(5.0, 6.5, 13.0, 12.0)}));
    content->setNeedsDisplayInRect(NSMakeRect(-1e10, -1e10, 2e10, 1e10 + 7.0));
    EXPECT_EQ(drawn(*content), (std::vector{NSMakeRect(0.0, 0.0, 60.0, 7.0)}));

    const Ref<TestView> child = view(true, 10.0, 10.0, 5.0, 5.0);
    content->addSubview(child);
    drawn(*content);
    child->setNeedsDisplay();
    EXPECT_EQ(drawn(*content), whole) << "repainted under a subview";
    child->setNeedsDisplay();
    child->setFrame(NSMakeRect(10.0, 10.0, 4.0, 3.0));
    EXPECT_EQ(drawn(*child).back(), child->bounds()) << "and not what it was before";
}

TEST(NSViewTest, MayBeTakenAwayByItsDrawing)
{
    const Ref<NSShadow> nowhere = make<NSShadow>();
    const Ref<NSShadow> shadow = make<NSShadow>();
    shadow->setShadowOffset({2.0, -2.0});
    Ref<NSWindow> window;
    Ref<NSView> content;
    Ref<NSView> drawn;
    const Ref<TestView> other = view(true, 0.0, 0.0, 10.0, 10.0);
    const std::function<void()> changes[] = {
        [&] { drawn->setShadow(shadow); },
        [&] { drawn->setShadow(shadow); },
        [&] { content->setShadow(nowhere); },
        [&] { drawn->setWantsLayer(false); },
        [&] { content->setWantsLayer(false); },
        [&] { drawn->removeFromSuperview(); },
        [&] { std::exchange(drawn, nullptr)->removeFromSuperview(); },
        [&] { other->addSubview(drawn); },
        [&] { window->setContentView(nullptr); },
        [&] { window = nullptr; },
    };
    for (const std::function<void()>& change : changes) {
        bool changed = false;
        content = view(true, 0.0, 0.0, 60.0, 50.0);
        content->addSubview(other);
        drawn = make<Canvas>(NSSize{20.0, 20.0}, true, [&] {
            NSBezierPath::fillRect(NSMakeRect(0.0, 0.0, 10.0, 10.0));
            if (!std::exchange(changed, true)) {
                change();
            }
        });
        content->setWantsLayer(true);
        content->setShadow(shadow);
        drawn->setWantsLayer(true);
        if (&change != &changes[0]) { // which casts its first
            drawn->setShadow(shadow);
        }
        content->addSubview(drawn);
        window = windowWith(content);
        window->makeKeyAndOrderFront();
        while (!changed) {
            NSApplication::sharedApplication()->handlePendingEvents();
        }
        NSApplication::sharedApplication()->handlePendingEvents();
        if (drawn) {
            QWidget* around = drawn->superview() == nullptr ? nullptr : drawn->superview()->widget();
            EXPECT_EQ(drawn->widget()->parentWidget(), around);
        }
    }
}

TEST(NSViewTest, TellsOwnersOfTrackingAreas)
{
    const Ref<TestView> watcher = view(true, 0.0, 0.0, 40.0, 30.0);
    const auto add = [&](double width, NSTrackingAreaOptions options) {
        watcher->addTrackingArea(make<NSTrackingArea>()->initWithRect_options_owner_userInfo(
            NSMakeRect(0.0, 0.0, width, 30.0), options, watcher.get(), nullptr));
    };
    add(10.0, NSTrackingMouseEnteredAndExited);
    add(40.0, NSTrackingActiveInKeyWindow); // tells nothing
    QWidget* widget = watcher->widget();
    widget->show();
    const auto moveTo = [&](double x) {
        watcher->notes += ' ' + std::to_string(std::lround(x));
        send(QEvent::MouseMove, widget, {x, 15.0}, Qt::NoButton);
    };
    moveTo(15.0);
    moveTo(9.0);
    moveTo(8.0);
    watcher->notes += " hidden";
    widget->hide();
    moveTo(9.0);
    widget->show();
    add(10.0, NSTrackingMouseEnteredAndExited);
    watcher->onEvent = [&] { watcher->removeTrackingArea(watcher->trackingAreas().back().get()); };
    moveTo(9.0); // the first owner removes the last area
    moveTo(15.0);
    EXPECT_EQ(watcher->notes, " 15 9 entered 8 hidden exited 9 9 entered 15 exited");
}

TEST(NSViewTest, HasOnePlaceAndKnowsItsWindow)
{
    const Ref<TestView> content = view(false, 0.0, 0.0, 1.0, 1.0);
    const Ref<TestView> child = view(true, 10.0, 10.0, 5.0, 5.0);
    content->addSubview(child);
    child->addSubview(content); // would be no tree
    content->addSubview(content);
    content->addSubview(nullptr);
    EXPECT_EQ(child->superview(), content.get());
    EXPECT_EQ(content->superview(), nullptr);

    Ref<NSWindow> first = windowWith(content);
    EXPECT_EQ(child->window(), first);
    Ref<NSWindow> second = windowWith(content);
    EXPECT_EQ(first->contentView(), nullptr);
    first = nullptr;
    EXPECT_EQ(child->window(), second);

    const Ref<TestView> parent = view(true, 0.0, 0.0, 9.0, 9.0);
    parent->widget();
    content->setHidden(true);
    parent->addSubview(content);
    EXPECT_EQ(child->window(), nullptr);
    second = nullptr;
    EXPECT_EQ(content->widget()->parentWidget(), parent->widget());
    EXPECT_TRUE(content->widget()->isHidden());
    content->setHidden(false);
    EXPECT_FALSE(content->widget()->isHidden());
}

TEST(NSViewTest, TellsWhereAPressHappenedAndMayBeRemovedByIt)
{
    const Ref<TestView> parent = view(false, 0.0, 0.0, 100.0, 80.0);
    Ref<TestView> child = view(false, 10.0, 10.0, 20.0, 20.0);
    const Ref<NSView> passive = make<NSView>()->initWithFrame(NSMakeRect(50.0, 50.0, 20.0, 20.0));
    parent->addSubview(child);
    parent->addSubview(passive);
    parent->widget();
    send(QEvent::MouseButtonPress, child->widget(), {3.0, 4.0});
    send(QEvent::MouseButtonDblClick, child->widget(), {5.0, 4.0}); // the second of two quick presses
    send(QEvent::MouseButtonPress, child->widget(), {3.0, 4.0}, Qt::RightButton);
    EXPECT_EQ(child->downs, (std::vector{NSPoint{3.0, 16.0}, NSPoint{5.0, 16.0}}));
    send(QEvent::MouseButtonPress, passive->widget(), {1.0, 2.0});
    EXPECT_EQ(parent->downs, (std::vector{NSPoint{51.0, 68.0}})) << "passed on to the superview";

    child->onEvent = [raw = child.get()] { raw->removeFromSuperview(); };
    const Weak<TestView> weak(child);
    const QPointer<QWidget> widget = child->widget();
    child = nullptr;
    send(QEvent::MouseButtonPress, widget, {3.0, 4.0});
    EXPECT_EQ(weak.get(), nullptr);
    EXPECT_FALSE(widget.isNull()) << "Qt may still be at work on it";
    NSApplication::sharedApplication()->handlePendingEvents();
    EXPECT_TRUE(widget.isNull());
}

} // namespace
