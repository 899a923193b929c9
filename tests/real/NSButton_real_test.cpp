#include "platform/appkit/NSButton.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSWindow.h"
#include "real/Desktop.h"
#include "support/ActionTarget.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QKeyEvent>
#include <QWidget>

#include <array>

namespace
{

/// Counts what a held key sends to a widget after its first press.
class RepeatCounter : public QObject
{
public:
    int repeats = 0;

private:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        const auto* key = dynamic_cast<QKeyEvent*>(event);
        repeats += key != nullptr && key->type() == QEvent::KeyPress && key->isAutoRepeat() ? 1 : 0;
        return false;
    }
};

TEST(NSButtonRealTest, IsOperatedByKeys)
{
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<ActionTarget> target = make<ActionTarget>();
    const Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 100.0));
    std::array<Ref<NSButton>, 2> buttons;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        buttons[i] = make<NSButton>()->initWithFrame(
            NSMakeRect(10.0, 10.0 + 40.0 * static_cast<double>(i), 180.0, 30.0));
        buttons[i]->setTarget(target.get());
        buttons[i]->setAction(ActionTarget::kAction);
        content->addSubview(buttons[i]);
    }
    const Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(100.0, 400.0, 200.0, 100.0), 0);
    window->setContentView(content);
    window->makeKeyAndOrderFront();
    desktop::focus(content->widget()->window()->winId());
    EXPECT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow(); }));

    /// Waits until the button with the keyboard, and no other, shows a ring or, if it is not to, none.
    const auto showsRing = [&](std::size_t focused, bool ring) {
        return desktop::waitUntil([&] {
            bool asExpected = buttons[focused]->widget()->hasFocus();
            for (const Ref<NSButton>& button : buttons) {
                const QColor face = desktop::colorOnScreen(button->widget()->mapToGlobal(QPoint(2, 15)));
                asExpected = asExpected && (face.name() != "#f5f5f5") == (ring && button == buttons[focused]);
            }
            return asExpected;
        });
    };
    EXPECT_TRUE(showsRing(0, false)) << "the window gives it the keyboard";
    desktop::xdotool({"key", "Tab"});
    EXPECT_TRUE(showsRing(1, true));
    buttons[1]->setFocusRingType(NSFocusRingType::None);
    EXPECT_TRUE(showsRing(1, false));
    desktop::xdotool({"key", "shift+Tab"});
    EXPECT_TRUE(showsRing(0, true));
    desktop::xdotool({"key", "space"});
    EXPECT_TRUE(desktop::waitUntil([&] { return !target->senders.empty(); }));

    desktop::movePointer(buttons[1]->widget()->mapToGlobal(QPoint(150, 15)));
    desktop::press();
    desktop::release();
    EXPECT_TRUE(showsRing(1, false)) << "a press takes the keyboard";
    const std::vector<NSObject*> first{buttons[0].get(), buttons[1].get()};
    EXPECT_EQ(target->senders, first);

    RepeatCounter counter;
    buttons[1]->widget()->installEventFilter(&counter);
    desktop::xdotool({"keydown", "space"});
    EXPECT_TRUE(desktop::waitUntil([&] { return counter.repeats >= 3; }));
    desktop::xdotool({"keyup", "space"});
    EXPECT_EQ(target->senders.size(), 3U) << "once for a key that is held";
}

} // namespace
