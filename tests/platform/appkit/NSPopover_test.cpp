#include "platform/appkit/NSPopover.h"

#include "platform/appkit/NSButton.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSNotification.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWidget>

#include <functional>

namespace
{

class Hearer : public NSObject, public NSPopoverDelegate
{
public:
    void popoverDidClose(NSNotification* notification) override
    {
        EXPECT_EQ(utf8(notification->name()), "NSPopoverDidCloseNotification");
        EXPECT_FALSE(dynamic_cast<NSPopover&>(*notification->object()).isShown());
        ++closed;
        onClose();
    }
    int closed = 0;
    std::function<void()> onClose = [] {};
};

class NSPopoverTest : public testing::Test
{
protected:
    NSPopoverTest()
    {
        content->addSubview(anchor);
        window->setContentView(content);
        window->makeKeyAndOrderFront();
        QCoreApplication::processEvents();
        popover->setContentView(face);
        popover->setDelegate(hearer.get());
    }

    void show(NSRectEdge edge = NSRectEdge::MaxX)
    {
        popover->showRelativeToRect_ofView_preferredEdge(NSZeroRect, anchor.get(), edge);
        EXPECT_TRUE(popover->isShown());
        EXPECT_TRUE(face->widget()->isVisible());
    }
    QWidget& peer() const { return *face->widget()->window(); }
    int frameWidth() const { return static_cast<QFrame&>(peer()).frameWidth(); }
    void pressAt(QPointF place) const
    {
        QMouseEvent press(QEvent::MouseButtonPress, place, peer().mapToGlobal(place), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&peer(), &press);
    }
    static QRect onScreen(const QWidget& widget) { return {widget.mapToGlobal(QPoint()), widget.size()}; }

    Ref<Hearer> hearer = make<Hearer>();
    Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(200.0, 300.0, 200.0, 100.0));
    Ref<NSView> anchor = make<NSView>()->initWithFrame(NSMakeRect(50.0, 40.0, 100.0, 20.0));
    Ref<NSWindow> window = make<NSWindow>()->initWithContentRect_styleMask(content->frame(), 0);
    Ref<NSView> face = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 40.0));
    Ref<NSPopover> popover = make<NSPopover>();
};

TEST_F(NSPopoverTest, TellsOnceHoweverItIsClosed)
{
    const std::vector<std::function<void()>> ways{
        [this] { popover->close(); },
        [this] { popover->performClose(nullptr); },
        [this] { pressAt(QPointF(-5.0, 5.0)); },
        [this] {
            QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            QCoreApplication::sendEvent(face->widget(), &escape);
        },
        [this] { popover->setContentView(face); },
        [this] { anchor->setHidden(true); },
        [this] { anchor->removeFromSuperview(); },
        [this] { delete anchor->widget(); }, // as a host can, with its window
        [this] { anchor = nullptr; },
    };
    for (std::size_t way = 0; way < ways.size(); ++way) {
        anchor->removeFromSuperview();
        content->addSubview(anchor);
        anchor->setHidden(false);
        show();
        pressAt(QPointF(5.0, 5.0));
        EXPECT_EQ(hearer->closed, 0) << "a press inside does not";
        if (way + 1 == ways.size()) {
            anchor->removeFromSuperview();
        }
        ways[way]();
        QCoreApplication::processEvents();
        EXPECT_FALSE(popover->isShown()) << way;
        popover->close();
        EXPECT_EQ(std::exchange(hearer->closed, 0), 1) << way;
    }
}

TEST_F(NSPopoverTest, ShowsOutsideOfItsRectangleAndOnTheScreen)
{
    EXPECT_EQ(popover->contentSize(), (NSSize{80.0, 40.0}));
    const QRect around = onScreen(*anchor->widget());
    show(NSRectEdge::MaxX);
    EXPECT_EQ(onScreen(*face->widget()).left(), around.right() + 1 + frameWidth())
        << "a frame is between them";
    EXPECT_EQ(onScreen(*face->widget()).center(),
              QPoint(onScreen(*face->widget()).center().x(), around.center().y()));
    show(NSRectEdge::MinX);
    EXPECT_EQ(onScreen(*face->widget()).right(), around.left() - 1 - frameWidth());
    show(NSRectEdge::MaxY);
    EXPECT_EQ(onScreen(*face->widget()).bottom(), around.top() - 1 - frameWidth());
    show(NSRectEdge::MinY);
    EXPECT_EQ(onScreen(*face->widget()).top(), around.bottom() + 1 + frameWidth());
    popover->showRelativeToRect_ofView_preferredEdge(NSMakeRect(10.0, 4.0, 20.0, 6.0), anchor.get(),
                                                     NSRectEdge::MinY);
    EXPECT_EQ(onScreen(*face->widget()).top(), around.bottom() - 4 + 1 + frameWidth())
        << "the view's y grows upwards";
    EXPECT_EQ(onScreen(*face->widget()).center().x(), around.left() + 19);
    EXPECT_EQ(hearer->closed, 0) << "it only moved";

    const QRect screen = peer().screen()->geometry();
    window->contentView()->widget()->window()->move(screen.right() - 200, screen.bottom() - 70);
    show(NSRectEdge::MinY);
    EXPECT_EQ(peer().frameGeometry().bottom(), onScreen(*anchor->widget()).top() - 1)
        << "there is no room below";
    face->setFrame(NSMakeRect(0.0, 0.0, 300.0, 40.0));
    show(NSRectEdge::MaxY);
    EXPECT_EQ(peer().frameGeometry().right(), screen.right());
    face->setFrame(NSMakeRect(0.0, 0.0, 5000.0, 40.0));
    show(NSRectEdge::MaxX);
    EXPECT_EQ(peer().frameGeometry().left(), screen.left());
}

TEST_F(NSPopoverTest, LivesWhileItShows)
{
    const Weak<NSPopover> seen(popover);
    const Weak<NSView> seenFace(face);
    show();
    popover = nullptr;
    EXPECT_TRUE(seen.get());
    hearer->onClose = [this] { hearer = nullptr; };
    face->widget()->window()->close();
    EXPECT_FALSE(seen.get());
    EXPECT_EQ(hearer, nullptr);

    popover = make<NSPopover>();
    popover->setContentView(face);
    hearer = make<Hearer>();
    hearer->onClose = [this] { show(); };
    popover->setDelegate(hearer.get());
    show();
    popover->close();
    EXPECT_TRUE(popover->isShown()) << "the delegate shows it again";
    hearer = nullptr;
    popover->close();
    EXPECT_FALSE(popover->isShown());

    const Ref<NSButton> button = make<NSButton>()->initWithFrame(face->bounds());
    const Ref<ActionTarget> target = make<ActionTarget>();
    button->setTarget(target.get());
    button->setAction(ActionTarget::kAction);
    face->addSubview(button);
    show();
    target->onAction = [this] {
        popover->close();
        popover = nullptr;
        face = nullptr;
    };
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
    button->widget()->setFocus();
    QCoreApplication::sendEvent(button->widget(), &space);
    EXPECT_EQ(target->senders.size(), 1U);
    EXPECT_EQ(face, nullptr);
}

TEST_F(NSPopoverTest, NeedsSomethingToShowBesideSomething)
{
    testing::internal::CaptureStderr();
    popover->showRelativeToRect_ofView_preferredEdge(NSZeroRect, nullptr, NSRectEdge::MinY);
    popover->showRelativeToRect_ofView_preferredEdge(NSZeroRect, make<NSView>().get(), NSRectEdge::MinY);
    popover->setContentView(nullptr);
    popover->showRelativeToRect_ofView_preferredEdge(NSZeroRect, anchor.get(), NSRectEdge::MinY);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "showRelativeToRect: the view is not on the screen\n"
              "showRelativeToRect: the view is not on the screen\n"
              "showRelativeToRect: the pop-over has no content view\n");
    EXPECT_FALSE(popover->isShown());
    EXPECT_EQ(popover->contentSize(), NSSize{});
    popover->close();
    EXPECT_EQ(hearer->closed, 0);
}

} // namespace
