#include "platform/appkit/NSWindow.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSButton.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QWidget>

#include <cmath>
#include <functional>

namespace
{

class Hearer : public NSObject, public NSWindowDelegate
{
public:
    void windowDidResize(NSWindow* window) override
    {
        sizes.push_back(window->contentSize());
        onEvent();
    }
    void windowWillClose(NSWindow* window) override
    {
        EXPECT_TRUE(window->contentView()->widget()->isVisible());
        ++closed;
        onEvent();
    }
    std::vector<NSSize> sizes;
    int closed = 0;
    std::function<void()> onEvent = [] {};
};

/// A view that hears of its going.
class LeavingView : public NSView
{
public:
    void viewDidHide() override { onHide(); }
    std::function<void()> onHide = [] {};
};

constexpr NSRect kPlace{{40.0, 50.0}, {200.0, 100.0}};

class NSWindowTest : public testing::Test
{
protected:
    NSWindowTest()
    {
        window->initWithContentRect_styleMask(kPlace, NSWindowStyleMaskResizable);
        window->setDelegate(hearer.get());
        window->setContentView(content);
    }

    QWidget& peer() { return *content->widget()->window(); }
    void show()
    {
        window->makeKeyAndOrderFront();
        application->handlePendingEvents();
    }

    Ref<NSApplication> application = NSApplication::sharedApplication();
    Ref<Hearer> hearer = make<Hearer>();
    Ref<LeavingView> content = make<LeavingView>();
    Ref<NSWindow> window = make<NSWindow>();
};

TEST_F(NSWindowTest, HasTheSizeThatItIsGivenAndTellsOfOthers)
{
    show();
    EXPECT_EQ(window->contentSize(), kPlace.size);
    EXPECT_TRUE(hearer->sizes.empty()) << "it only came on the screen";
    peer().resize(220, 120); // as the user does
    const NSSize grown{220.0, 120.0};
    EXPECT_EQ(hearer->sizes, (std::vector{grown}));
    EXPECT_EQ(content->frame(), (NSRect{{}, grown}));

    window->setContentMinSize({250.4, 80.0});
    const NSSize least{250.0, 120.0};
    EXPECT_EQ(hearer->sizes, (std::vector{grown, least}));
    EXPECT_EQ(content->frame(), (NSRect{{}, least}));
    peer().resize(10, 10);
    EXPECT_EQ(window->contentSize(), (NSSize{250.0, 80.0}));
    window->setContentMinSize({std::nan(""), -5.0});
    peer().resize(10, 10);
    EXPECT_EQ(window->contentSize(), (NSSize{10.0, 10.0}));

    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    window->initWithContentRect_styleMask({{}, {1e9, 90.0}}, NSWindowStyleMaskResizable);
    EXPECT_EQ(window->contentSize(), (NSSize{static_cast<double>(screen.width()), 90.0}))
        << "as after a change to a smaller screen";

    window->initWithContentRect_styleMask(kPlace, 0);
    window->setContentMinSize({500.0, 500.0});
    peer().resize(10, 10);
    EXPECT_EQ(window->contentSize(), kPlace.size) << "fixed";

    const Ref<NSWindow> hidden =
        make<NSWindow>()->initWithContentRect_styleMask(kPlace, NSWindowStyleMaskResizable);
    hidden->setContentView(content);
    hidden->setContentMinSize({300.0, 0.0});
    EXPECT_EQ(content->frame(), NSMakeRect(0.0, 0.0, 300.0, 100.0));
}

TEST_F(NSWindowTest, KeepsItsTitleOnTheScreen)
{
    const int height = QGuiApplication::primaryScreen()->geometry().height();
    const NSRect tooHigh = NSMakeRect(0.0, 100.0, 50.0, height - 40.0);
    for (const auto& [style, top] :
         {std::pair{NSWindowStyleMaskTitled, 0}, {NSWindowStyleMaskResizable, -60}}) {
        window->initWithContentRect_styleMask(tooHigh, style);
        EXPECT_EQ(peer().geometry(), QRect(0, top, 50, height - 40));
    }
}

TEST_F(NSWindowTest, MayGoWhenItTellsOfSomething)
{
    const std::vector<std::function<void()>> events{[this] { peer().resize(300, 200); },
                                                    [this] { peer().close(); }};
    for (const std::function<void()>& event : events) {
        window = make<NSWindow>()->initWithContentRect_styleMask(kPlace, NSWindowStyleMaskResizable);
        window->setDelegate(hearer.get());
        window->setContentView(content);
        show();
        const Weak<NSWindow> seen(window);
        const QPointer<QWidget> widget = &peer();
        hearer->onEvent = [&] {
            window = nullptr;
            hearer = nullptr;
        };
        event();
        EXPECT_EQ(seen.get(), nullptr);
        EXPECT_EQ(hearer, nullptr);
        application->handlePendingEvents();
        EXPECT_TRUE(widget.isNull());
        hearer = make<Hearer>();
    }

    window = make<NSWindow>()->initWithContentRect_styleMask(kPlace, 0);
    window->setDelegate(hearer.get());
    window->setContentView(content);
    show();
    peer().close();
    EXPECT_EQ(hearer->closed, 1);
    show();
    hearer = nullptr;
    peer().close();
    EXPECT_FALSE(content->widget()->isVisible());
}

TEST_F(NSWindowTest, ShowsAnotherTitleAtAnyTime)
{
    show();
    for (const char* title : {"Phone", "Telefon", ""}) {
        window->setTitle(text(title));
        EXPECT_EQ(peer().windowTitle().toStdString(), title);
    }
    window->setTitle(nullptr);
    EXPECT_EQ(peer().windowTitle(), "");
}

TEST_F(NSWindowTest, ShowsAnotherContentAtAnyTime)
{
    const Ref<NSButton> first = make<NSButton>()->initWithFrame(NSMakeRect(10.0, 10.0, 60.0, 20.0));
    const Ref<NSButton> second = make<NSButton>()->initWithFrame(NSMakeRect(10.0, 10.0, 60.0, 20.0));
    const auto pressByKey = [](QWidget* widget) {
        QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
        QCoreApplication::sendEvent(widget, &space);
    };
    const auto pressByPointer = [](QWidget* widget) {
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const bool down = type == QEvent::MouseButtonPress;
            QMouseEvent event(type, QPointF(5.0, 5.0), widget->mapToGlobal(QPointF(5.0, 5.0)), Qt::LeftButton,
                              down ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(widget, &event);
        }
    };
    show();
    for (const std::function<void(QWidget*)>& press :
         {std::function(pressByKey), std::function(pressByPointer)}) {
        Ref<NSButton> old = make<NSButton>()->initWithFrame(NSMakeRect(10.0, 10.0, 60.0, 20.0));
        const Ref<ActionTarget> target = make<ActionTarget>();
        old->setTarget(target.get());
        old->setAction(ActionTarget::kAction);
        content->addSubview(old);
        const Weak<NSView> seen(content);
        const QPointer<QWidget> oldWidget = content->widget();
        const Weak<NSButton> seenButton(old);
        QWidget* const button = old->widget();
        QWidget& top = peer();
        button->setFocus();
        target->onAction = [&] {
            const Ref<LeavingView> next = make<LeavingView>();
            next->addSubview(second);
            window->setContentView(next);
            content = next;
            old = nullptr;
        };
        press(button);
        EXPECT_EQ(target->senders.size(), 1U);
        EXPECT_EQ(seen.get(), nullptr);
        EXPECT_EQ(seenButton.get(), nullptr);
        application->handlePendingEvents();
        EXPECT_TRUE(oldWidget.isNull());
        EXPECT_EQ(window->contentView(), content.get());
        EXPECT_EQ(&peer(), &top);
        EXPECT_TRUE(content->widget()->isVisible());
        EXPECT_EQ(content->frame(), content->convertRect_toView(content->bounds(), nullptr));
        EXPECT_EQ(content->frame().size, window->contentSize());
        pressByKey(&top);
        EXPECT_EQ(target->senders.size(), 1U);
        second->removeFromSuperview();
    }

    // One that is kept can come back, and then follows the size of the window again.
    const Ref<LeavingView> kept = content;
    kept->addSubview(first);
    window->setContentView(make<NSView>());
    EXPECT_FALSE(kept->widget()->isVisible());
    EXPECT_EQ(kept->window(), nullptr);
    window->contentView()->widget()->window()->resize(400, 300);
    EXPECT_EQ(kept->frame().size, kPlace.size);
    window->setContentView(kept);
    EXPECT_TRUE(first->widget()->isVisible());
    EXPECT_EQ(kept->frame(), NSMakeRect(0.0, 0.0, 400.0, 300.0));

    // What is put in by a view that goes is not forgotten.
    const Ref<NSView> between = make<NSView>();
    kept->onHide = [&] { window->setContentView(between); };
    const Ref<NSView> last = make<NSView>();
    window->setContentView(last);
    EXPECT_EQ(window->contentView(), last.get());
    EXPECT_EQ(between->window(), nullptr);
    EXPECT_EQ(between->widget()->parentWidget(), nullptr);
}

} // namespace
