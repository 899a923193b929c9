#include "window/ZuToolButton.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/Weak.h"
#include "platform/graphics/NSBezierPath.h"
#include "platform/graphics/NSColor.h"
#include "real/Desktop.h"
#include "support/ActionTarget.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QWidget>

namespace
{

class Background : public NSView
{
    void drawRect(NSRect rect) override
    {
        NSColor::grayColor()->setFill();
        NSBezierPath::fillRect(rect);
    }
};

Ref<NSWindow> windowAt(double x, double y)
{
    return make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(x, y, 300.0, 160.0), 0);
}

/// A button in the middle of a window, and a second window that can take the keyboard away.
class ZuToolButtonRealTest : public testing::Test
{
protected:
    ZuToolButtonRealTest()
    {
        content->addSubview(button);
        button->setTarget(target.get());
        button->setAction(ActionTarget::kAction);
        window->setContentView(content);
        other->setContentView(make<NSView>());
        desktop::movePointer(outside());
        other->makeKeyAndOrderFront();
        window->makeKeyAndOrderFront();
        EXPECT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow() || other->isKeyWindow(); }));
        makeKey(*window);
    }

    static void makeKey(NSWindow& which)
    {
        desktop::focus(which.contentView()->widget()->window()->winId());
        EXPECT_TRUE(desktop::waitUntil([&] { return which.isKeyWindow(); }));
    }

    QPoint inside() const { return button->widget()->mapToGlobal(QPoint(190, 50)); }
    QPoint outside() const { return content->widget()->mapToGlobal(QPoint(5, 5)); }

    /// Waits for the colours in the middle of the face's free part and of its frame.
    bool looks(const char* face, const char* frame) const
    {
        const QPoint edge = button->widget()->mapToGlobal(QPoint(100, 0));
        return desktop::waitUntil([&] {
            return desktop::colorOnScreen(inside()).name() == face &&
                   desktop::colorOnScreen(edge).name() == frame;
        });
    }
    // The content is grey 0.5; a frame covers half of the outermost points.
    bool looksNormal() const { return looks("#808080", "#c0c0c0"); }
    bool looksHover() const { return looks("#808080", "#4040c0"); }
    bool looksPressed() const { return looks("#0000ff", "#0000ff"); }

    Ref<NSApplication> application = NSApplication::sharedApplication();
    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<NSWindow> window = windowAt(100.0, 400.0);
    Ref<NSWindow> other = windowAt(600.0, 400.0);
    Ref<NSView> content = make<Background>()->initWithFrame(NSMakeRect(0.0, 0.0, 300.0, 160.0));
    Ref<ZuToolButton> button = make<ZuToolButton>()->initWithFrame(NSMakeRect(50.0, 50.0, 200.0, 60.0));
};

TEST_F(ZuToolButtonRealTest, FollowsThePointerAndTheKeyboard)
{
    EXPECT_TRUE(looksNormal());
    desktop::movePointer(inside());
    EXPECT_TRUE(looksHover());
    desktop::press();
    EXPECT_TRUE(looksPressed());
    EXPECT_TRUE(target->senders.empty());
    desktop::release();
    EXPECT_TRUE(looksHover());
    EXPECT_EQ(target->senders.size(), 1U);

    desktop::press();
    EXPECT_TRUE(looksPressed());
    desktop::movePointer(outside());
    EXPECT_TRUE(desktop::waitUntil([&] { return !button->isHighlighted(); }));
    desktop::release();
    EXPECT_TRUE(looksNormal());
    EXPECT_EQ(target->senders.size(), 1U) << "nothing for a release outside";
    desktop::movePointer(inside());
    EXPECT_TRUE(looksHover()) << "the press has been forgotten";

    makeKey(*other);
    EXPECT_TRUE(looksNormal());
    makeKey(*window);
    EXPECT_TRUE(looksHover());
    makeKey(*other);
    EXPECT_TRUE(looksNormal());
    desktop::press();
    EXPECT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow(); })) << "as with any press";
    EXPECT_TRUE(looksPressed());
    desktop::release();
    EXPECT_TRUE(looksHover());
    EXPECT_EQ(target->senders.size(), 2U);

    const Weak<NSWindow> gone(window);
    target->onAction = [&] {
        window = nullptr;
        content = nullptr;
        button = nullptr;
    };
    desktop::press();
    desktop::release();
    EXPECT_TRUE(desktop::waitUntil([&] { return button == nullptr; }));
    EXPECT_EQ(gone.get(), nullptr) << "an action may end its window";
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    return RUN_ALL_TESTS();
}
