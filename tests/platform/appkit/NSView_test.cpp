#include "platform/appkit/NSView.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTrackingArea.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSString.h"
#include "platform/foundation/Weak.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSImage.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <limits>

namespace
{

class TestView : public NSView
{
public:
    explicit TestView(bool flipped = false) : flippedNow(flipped) {}

    bool isFlipped() const override { return flippedNow; }
    void drawRect(NSRect rect) override { drawn.push_back(rect); }
    void mouseDown(NSEvent* event) override
    {
        downs.push_back(convertPoint_fromView(event->locationInWindow(), nullptr));
        if (onMouseDown) {
            onMouseDown();
        }
    }

    bool flippedNow;
    std::vector<NSRect> drawn;
    std::vector<NSPoint> downs;
    std::function<void()> onMouseDown;
};

Ref<TestView> view(bool flipped, double x, double y, double width, double height)
{
    Ref<TestView> made = make<TestView>(flipped);
    made->initWithFrame(NSMakeRect(x, y, width, height));
    return made;
}

void press(QWidget* widget, QPointF position, QEvent::Type type = QEvent::MouseButtonPress,
           Qt::MouseButton button = Qt::LeftButton)
{
    QMouseEvent event(type, position, widget->mapToGlobal(position), button, button, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

TEST(NSViewTest, ConvertsPointsThroughFlippedAndUnflippedViews)
{
    struct Case {
        bool outer;
        bool inner;
        NSPoint inWindow; // of (1, 2) in the inner view
    };
    // The window's content is 100 by 80; the outer view lies at (10, 20), 50 by 40, the inner at (3, 4) in
    // it, 20 by 10.
    for (const auto& [outer, inner, inWindow] :
         {Case{false, false, {14.0, 26.0}}, Case{false, true, {14.0, 32.0}}, Case{true, true, {14.0, 54.0}},
          Case{true, false, {14.0, 48.0}}}) {
        const Ref<TestView> content = view(false, 0.0, 0.0, 100.0, 80.0);
        const Ref<TestView> outerView = view(outer, 10.0, 20.0, 50.0, 40.0);
        const Ref<TestView> innerView = view(inner, 3.0, 4.0, 20.0, 10.0);
        content->addSubview(outerView);
        outerView->addSubview(innerView);
        EXPECT_EQ(innerView->convertPoint_toView({1.0, 2.0}, nullptr), inWindow) << outer << inner;
        EXPECT_EQ(innerView->convertPoint_fromView(inWindow, nullptr), (NSPoint{1.0, 2.0})) << outer << inner;
        EXPECT_EQ(innerView->convertPoint_fromView({6.0, 7.0}, innerView.get()), (NSPoint{6.0, 7.0}));
        EXPECT_EQ(outerView->convertPoint_fromView({1.0, 2.0}, innerView.get()),
                  (NSPoint{4.0, outer == inner ? 6.0 : 12.0}));
    }
}

TEST(NSViewTest, PlacesWidgetsFromTheRightEdge)
{
    const Ref<TestView> parent = view(false, 0.0, 0.0, 100.0, 80.0);
    const Ref<TestView> child = view(false, 10.0, 5.4, 20.3, 10.0);
    parent->addSubview(child);
    QWidget* parentWidget = parent->widget();
    EXPECT_EQ(child->widget()->parentWidget(), parentWidget);
    EXPECT_EQ(child->widget()->geometry(), QRect(10, 65, 20, 10));
    parent->setFrame(NSMakeRect(0.0, 0.0, 100.0, 120.0));
    EXPECT_EQ(child->widget()->geometry(), QRect(10, 105, 20, 10)) << "the distance from the bottom stays";
    EXPECT_EQ(child->frame(), NSMakeRect(10.0, 5.4, 20.3, 10.0)) << "frames are not rounded";

    const Ref<TestView> flipped = view(true, 0.0, 0.0, 100.0, 80.0);
    flipped->widget();
    flipped->addSubview(child);
    EXPECT_EQ(child->superview(), flipped.get());
    EXPECT_TRUE(parent->subviews().empty());
    EXPECT_EQ(child->widget()->geometry(), QRect(10, 5, 20, 10));

    child->setFrame(NSMakeRect(0.0, 0.0, -5.0, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(child->bounds(), NSZeroRect);
}

TEST(NSViewTest, RefusesATreeThatIsNone)
{
    const Ref<TestView> outer = view(false, 0.0, 0.0, 10.0, 10.0);
    const Ref<TestView> inner = view(false, 0.0, 0.0, 10.0, 10.0);
    outer->addSubview(inner);
    testing::internal::CaptureStderr();
    inner->addSubview(outer);
    outer->addSubview(outer);
    outer->addSubview(nullptr);
    const std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 3);
    EXPECT_EQ(inner->superview(), outer.get());
    EXPECT_EQ(outer->subviews().size(), 1U);
}

TEST(NSViewTest, OwnsItsSubviewsOnly)
{
    Ref<TestView> parent = view(false, 0.0, 0.0, 10.0, 10.0);
    const Ref<TestView> child = view(false, 0.0, 0.0, 10.0, 10.0);
    const Weak<TestView> weakChild(child);
    parent->addSubview(child);
    parent->widget();
    parent = nullptr;
    EXPECT_EQ(weakChild.get(), child);
    EXPECT_EQ(child->superview(), nullptr);
    EXPECT_EQ(child->widget()->parentWidget(), nullptr) << "the parent's widget did not take it along";

    child->addSubview(view(false, 0.0, 0.0, 1.0, 1.0));
    const Weak<NSView> grandchild(child->subviews()[0]);
    grandchild.get()->removeFromSuperview();
    EXPECT_EQ(grandchild.get(), nullptr);
}

TEST(NSViewTest, OutlivesItsWidget)
{
    const Ref<TestView> parent = view(true, 0.0, 0.0, 40.0, 30.0);
    const Ref<TestView> child = view(true, 0.0, 0.0, 10.0, 10.0);
    parent->addSubview(child);
    {
        QWidget host;
        parent->widget()->setParent(&host);
    }
    parent->setNeedsDisplay();
    child->setFrame(NSMakeRect(1.0, 2.0, 3.0, 4.0));
    EXPECT_EQ(child->widget()->parentWidget(), parent->widget());
    EXPECT_EQ(child->widget()->geometry(), QRect(1, 2, 3, 4));
}

TEST(NSViewTest, RedrawsWhatWasAskedForAndElseItsWholeFace)
{
    const Ref<TestView> shown = view(true, 0.0, 0.0, 40.5, 30.0);
    EXPECT_TRUE(shown->needsDisplay()) << "a view that was never drawn";
    shown->imageOfBounds(1.0);
    EXPECT_EQ(shown->drawn, (std::vector{shown->bounds()}));
    EXPECT_FALSE(shown->needsDisplay());
    EXPECT_EQ(shown->imageOfBounds(1e9), nullptr);

    const Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(0.0, 0.0, 60.0, 50.0), 0);
    const auto application = NSApplication::sharedApplication();
    const Ref<TestView> content = view(false, 0.0, 0.0, 1.0, 1.0);
    window->setContentView(content);
    EXPECT_EQ(content->frame(), NSMakeRect(0.0, 0.0, 60.0, 50.0));
    window->makeKeyAndOrderFront();
    application->handlePendingEvents();
    ASSERT_FALSE(content->drawn.empty());
    EXPECT_EQ(content->drawn.back(), content->bounds());

    content->drawn.clear();
    content->setNeedsDisplayInRect(NSMakeRect(5.0, 6.5, 10.0, 10.0));
    content->setNeedsDisplayInRect(NSMakeRect(8.0, 6.5, 10.0, 12.0));
    EXPECT_TRUE(content->drawn.empty()) << "not before events have been dealt with";
    application->handlePendingEvents();
    EXPECT_EQ(content->drawn, (std::vector{NSMakeRect(5.0, 6.5, 13.0, 12.0)}));

    content->drawn.clear();
    content->setNeedsDisplayInRect(NSMakeRect(-50.0, -50.0, 10.0, 10.0));
    EXPECT_FALSE(content->needsDisplay()) << "nothing of it is in the bounds";
    content->setNeedsDisplayInRect(NSMakeRect(-1e10, -1e10, 2e10, 1e10 + 7.0));
    application->handlePendingEvents();
    EXPECT_EQ(content->drawn, (std::vector{NSMakeRect(0.0, 0.0, 60.0, 7.0)}));

    content->drawn.clear();
    const Ref<TestView> child = view(true, 10.0, 10.0, 5.0, 5.0);
    content->addSubview(child);
    application->handlePendingEvents();
    content->drawn.clear();
    child->setNeedsDisplay();
    application->handlePendingEvents();
    EXPECT_EQ(content->drawn, (std::vector{content->bounds()}))
        << "repainted under a subview, the whole face";
    EXPECT_EQ(child->drawn.back(), child->bounds());
    child->setNeedsDisplay();
    child->setFrame(NSMakeRect(10.0, 10.0, 4.0, 3.0));
    application->handlePendingEvents();
    EXPECT_EQ(child->drawn.back(), child->bounds()) << "and not what it was before";
}

TEST(NSViewTest, StaysWhereAHostPutsIt)
{
    const Ref<TestView> hosted = view(true, 7.0, 8.0, 40.5, 30.0);
    QWidget host;
    hosted->widget()->setParent(&host);
    hosted->widget()->setGeometry(50, 70, 150, 90);
    host.show();
    NSApplication::sharedApplication()->handlePendingEvents();
    EXPECT_EQ(hosted->widget()->geometry(), QRect(50, 70, 150, 90));
    EXPECT_EQ(hosted->frame(), NSMakeRect(7.0, 8.0, 150.0, 90.0));
}

/// Counts entries and exits, and removes an area when it is told of the pointer.
class Watcher : public TestView
{
public:
    void mouseEntered(NSEvent* /*event*/) override
    {
        ++entries;
        removeTrackingArea(doomed.get());
    }
    void mouseExited(NSEvent* /*event*/) override { ++exits; }
    void add(NSRect rect, NSTrackingAreaOptions options)
    {
        addTrackingArea(
            make<NSTrackingArea>()->initWithRect_options_owner_userInfo(rect, options, this, nullptr));
    }

    int entries = 0;
    int exits = 0;
    Ref<NSTrackingArea> doomed;
};

TEST(NSViewTest, TellsOwnersOfTrackingAreas)
{
    const Ref<Watcher> watcher = make<Watcher>();
    watcher->initWithFrame(NSMakeRect(0.0, 0.0, 40.0, 30.0));
    watcher->add(NSMakeRect(0.0, 0.0, 10.0, 30.0), NSTrackingMouseEnteredAndExited);
    watcher->add(NSMakeRect(0.0, 0.0, 40.0, 30.0), NSTrackingActiveInKeyWindow); // tells nothing
    QWidget* widget = watcher->widget();
    widget->show();
    const auto moveTo = [&](double x) {
        const QPointF place(x, 15.0);
        QMouseEvent event(QEvent::MouseMove, place, widget->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
    };
    moveTo(15.0);
    EXPECT_EQ(watcher->entries, 0);
    moveTo(9.0);
    moveTo(8.0);
    EXPECT_EQ(watcher->entries, 1);
    widget->hide();
    EXPECT_EQ(watcher->exits, 1) << "what is hidden is left";
    moveTo(9.0);
    EXPECT_EQ(watcher->entries, 1);
    widget->show();

    watcher->add(NSMakeRect(0.0, 0.0, 10.0, 30.0), NSTrackingMouseEnteredAndExited);
    watcher->doomed = watcher->trackingAreas().back();
    moveTo(9.0);
    EXPECT_EQ(watcher->entries, 2) << "the first owner removed the last area";
    moveTo(15.0);
    EXPECT_EQ(watcher->exits, 2);
}

TEST(NSViewTest, KnowsItsWindow)
{
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(0.0, 0.0, 60.0, 50.0), 0);
    const Ref<TestView> content = view(false, 0.0, 0.0, 1.0, 1.0);
    const Ref<TestView> child = view(true, 10.0, 10.0, 5.0, 5.0);
    content->addSubview(child);
    EXPECT_EQ(child->window(), nullptr);
    window->setContentView(content);
    EXPECT_EQ(child->window(), window);
    Ref<NSWindow> second = make<NSWindow>();
    second->setContentView(content);
    EXPECT_EQ(window->contentView(), nullptr) << "a view has one place";
    window = nullptr;
    EXPECT_EQ(child->window(), second);
    const Ref<TestView> parent = view(true, 0.0, 0.0, 9.0, 9.0);
    parent->widget();
    content->setHidden(true);
    parent->addSubview(content);
    EXPECT_EQ(child->window(), nullptr);
    second->setContentView(view(false, 0.0, 0.0, 1.0, 1.0));
    second = nullptr;
    EXPECT_EQ(content->widget()->parentWidget(), parent->widget());
    EXPECT_TRUE(content->widget()->isHidden());
    content->setHidden(false);
    EXPECT_FALSE(content->widget()->isHidden());
}

TEST(NSViewTest, TellsWhereAPressHappened)
{
    const Ref<TestView> parent = view(false, 0.0, 0.0, 100.0, 80.0);
    const Ref<TestView> unflipped = view(false, 10.0, 10.0, 20.0, 20.0);
    const Ref<NSView> passive = make<NSView>()->initWithFrame(NSMakeRect(50.0, 50.0, 20.0, 20.0));
    parent->addSubview(unflipped);
    parent->addSubview(passive);
    parent->widget();
    press(unflipped->widget(), {3.0, 4.0});
    EXPECT_EQ(unflipped->downs, (std::vector{NSPoint{3.0, 16.0}}));
    press(unflipped->widget(), {3.0, 4.0}, QEvent::MouseButtonDblClick);
    EXPECT_EQ(unflipped->downs.size(), 2U) << "the second of two quick presses";
    press(unflipped->widget(), {3.0, 4.0}, QEvent::MouseButtonPress, Qt::RightButton);
    EXPECT_EQ(unflipped->downs.size(), 2U);
    press(passive->widget(), {1.0, 2.0});
    EXPECT_EQ(parent->downs, (std::vector{NSPoint{51.0, 68.0}})) << "passed on to the superview";
}

TEST(NSViewTest, SurvivesItsRemovalDuringAnEvent)
{
    const Ref<TestView> parent = view(false, 0.0, 0.0, 100.0, 80.0);
    Ref<TestView> child = view(false, 10.0, 10.0, 20.0, 20.0);
    const Weak<TestView> weak(child);
    parent->addSubview(child);
    parent->widget();
    TestView* raw = child.get();
    raw->onMouseDown = [raw] { raw->removeFromSuperview(); };
    QPointer<QWidget> widget = child->widget();
    child = nullptr;
    press(widget, {3.0, 4.0});
    EXPECT_EQ(weak.get(), nullptr);
    EXPECT_FALSE(widget.isNull()) << "Qt may still be at work on it";
    NSApplication::sharedApplication()->handlePendingEvents();
    EXPECT_TRUE(widget.isNull());

    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(0.0, 0.0, 60.0, 50.0), 0);
    Ref<TestView> content = view(false, 0.0, 0.0, 1.0, 1.0);
    window->setContentView(content);
    content->onMouseDown = [&] { window = nullptr; };
    widget = content->widget();
    content = nullptr;
    press(widget, {3.0, 4.0});
    EXPECT_EQ(window, nullptr);
    NSApplication::sharedApplication()->handlePendingEvents();
}

TEST(NSViewTest, ShowsTooltipsAsTheyStand)
{
    const Ref<TestView> parent = view(false, 0.0, 0.0, 100.0, 80.0);
    parent->setToolTip(text("plain"));
    EXPECT_EQ(parent->widget()->toolTip(), "plain");
    parent->setToolTip(text("<b>5 < 6</b>"));
    EXPECT_EQ(parent->widget()->toolTip(),
              "<p style='white-space: pre-wrap'>&lt;b&gt;5 &lt; 6&lt;/b&gt;</p>");
    parent->setToolTip(nullptr);
    EXPECT_EQ(parent->widget()->toolTip(), "");
}

} // namespace
