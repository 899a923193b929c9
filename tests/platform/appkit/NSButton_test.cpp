#include "platform/appkit/NSButton.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSEvent.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/Weak.h"
#include "platform/graphics/NSColor.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include <functional>

namespace
{

TEST(NSButtonTest, SendsItsActionOnAReleaseInside)
{
    const Ref<ActionTarget> target = make<ActionTarget>();
    Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 24.0));
    button->setTarget(target.get());
    button->setAction(ActionTarget::kAction);
    const auto send = [&](void (NSButton::*handler)(NSEvent*), double x) {
        (button.get()->*handler)(
            NSEvent::mouseEventWithType_location_window(NSEventType::LeftMouseDown, {x, 5.0}, nullptr).get());
        return button && button->isHighlighted();
    };
    EXPECT_TRUE(send(&NSButton::mouseDown, 5.0));
    EXPECT_FALSE(send(&NSButton::mouseDragged, 80.0));
    EXPECT_TRUE(send(&NSButton::mouseDragged, 79.9));
    EXPECT_TRUE(target->senders.empty());
    EXPECT_FALSE(send(&NSButton::mouseUp, 79.9));
    EXPECT_EQ(target->senders, (std::vector<NSObject*>{button.get()}));
    send(&NSButton::mouseUp, 5.0); // without a press
    send(&NSButton::mouseDown, 5.0);
    send(&NSButton::mouseUp, 80.0);
    send(&NSButton::mouseDown, 5.0);
    button->setEnabled(false);
    send(&NSButton::mouseUp, 5.0);
    EXPECT_FALSE(send(&NSButton::mouseDown, 5.0));
    EXPECT_EQ(target->senders.size(), 1U);

    button->setEnabled(true);
    send(&NSButton::mouseDown, 5.0);
    button->viewDidHide();
    EXPECT_FALSE(send(&NSButton::mouseDragged, 5.0));
    target->onAction = [&] { button = nullptr; };
    button->performClick(nullptr);
    EXPECT_EQ(button, nullptr) << "it is held by nothing";
}

TEST(NSButtonTest, DrawsItsTitle)
{
    const Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 24.0));
    button->setTarget(make<ActionTarget>().get());
    EXPECT_EQ(button->target(), nullptr) << "not held";
    button->setTitle(text("OK"));
    const Operations normal = operationsOf(*button);
    ASSERT_EQ(normal.size(), 5U);
    EXPECT_EQ(normal[1], "fillRect {{0, 0}, {80, 24}}");
    EXPECT_TRUE(normal[4].starts_with("drawText \"OK\"")) << normal[4];
    button->mouseDown(nullptr);
    EXPECT_NE(operationsOf(*button)[0], normal[0]) << "the press shows";

    button->setBordered(false);
    const auto endsWith = [&](const char* color) {
        const Operations operations = operationsOf(*button);
        return operations.size() == 1 && operations[0].ends_with(color);
    };
    EXPECT_TRUE(endsWith(" color white(0, 1)"));
    button->setEnabled(false);
    EXPECT_TRUE(endsWith(" color white(0.5, 1)"));
    const Ref<NSMutableAttributedString> title =
        make<NSMutableAttributedString>()->initWithAttributedString(button->attributedTitle().get());
    title->addAttribute_value_range(NSForegroundColorAttributeName, NSColor::whiteColor(), {0, 1});
    button->setAttributedTitle(title);
    EXPECT_NE(operationsOf(*button)[0].find("[{0, 1} font \"Arial\" 13 color white(1, 1)]"),
              std::string::npos)
        << "a colour of its own is kept";
    button->setTitle(text("OK"));
    EXPECT_TRUE(endsWith(" color white(0.5, 1)")) << "and given up with the title";
}

TEST(NSButtonTest, MayEndTheWindowOfItsHost)
{
    const Ref<ActionTarget> target = make<ActionTarget>();
    const Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 80.0, 24.0));
    button->setTarget(target.get());
    button->setAction(ActionTarget::kAction);
    auto* host = new QWidget;
    button->widget()->setParent(host);
    target->onAction = [&] { delete host; };
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, QPointF(5.0, 5.0), QPointF(5.0, 5.0), Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(button->widget(), &event);
    }
    EXPECT_EQ(target->senders.size(), 1U);
    EXPECT_EQ(button->widget()->parentWidget(), nullptr) << "a new one";
}

/// A widget of a host, which writes down the keys that reach it.
class Host : public QWidget
{
public:
    QString keys;

protected:
    void keyPressEvent(QKeyEvent* event) override { keys += event->text(); }
};

/// Writes down the keys that its subviews do not use, and uses "q".
class KeyView : public NSView
{
public:
    bool keyDown(NSEvent* event) override
    {
        keys += event->characters()->UTF8String();
        return event->characters()->UTF8String() == "q";
    }

    std::string keys;
};

/// Three buttons in a host, the middle one disabled.
class NSButtonKeyboardTest : public testing::Test
{
protected:
    NSButtonKeyboardTest()
    {
        content->initWithFrame(NSMakeRect(0.0, 0.0, 300.0, 40.0));
        content->widget()->setParent(&host);
        for (const double x : {0.0, 100.0, 200.0}) {
            const Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(x, 0.0, 90.0, 40.0));
            button->setTarget(target.get());
            button->setAction(ActionTarget::kAction);
            button->setEnabled(x != 100.0);
            content->addSubview(button);
            buttons.push_back(button.get());
        }
        activate(host);
    }
    ~NSButtonKeyboardTest() override { content->widget()->setParent(nullptr); }

    static void activate(QWidget& window)
    {
        window.show();
        window.activateWindow();
        NSApplication::sharedApplication()->handlePendingEvents();
    }

    static void type(int key, const QString& characters = {}, bool repeat = false)
    {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, characters, repeat);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    }

    /// Which button has the keyboard, with a star if a ring says so.
    std::string focus() const
    {
        for (std::size_t i = 0; i < buttons.size(); ++i) {
            if (QApplication::focusWidget() == buttons[i]->widget()) {
                const bool plain = pixel(*buttons[i]->imageOfBounds(1.0), 2, 20) == "#fff5f5f5";
                return std::to_string(i) + (plain ? "" : "*");
            }
        }
        return "none";
    }

    Host host;
    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<KeyView> content = make<KeyView>();
    std::vector<NSButton*> buttons; // the content's
};

TEST_F(NSButtonKeyboardTest, HandTheKeyboardOn)
{
    QWidget other;
    const auto tab = [] { type(Qt::Key_Tab); };
    const auto enable = [&](std::size_t button, bool enabled) {
        return [this, button, enabled] { buttons[button]->setEnabled(enabled); };
    };
    const struct {
        const char* step;
        std::function<void()> act;
        const char* focus;
    } steps[] = {
        {"the window comes up", [] {}, "0"},
        {"disabled before a key was used", enable(0, false), "2"},
        {"a button before it takes the keyboard again", enable(0, true), "2"},
        {"Tab", tab, "0*"},
        {"Tab past a disabled button", tab, "2*"},
        {"the window is left", [&] { activate(other); }, "none"},
        {"the window is back", [&] { activate(host); }, "2*"},
        {"disabled", enable(2, false), "0*"},
        {"enabled", enable(2, true), "0*"},
        {"a press elsewhere", [&] { buttons[2]->widget()->setFocus(Qt::MouseFocusReason); }, "2"},
        {"the window is left and is back", [&] { activate(other), activate(host); }, "2"},
        {"a disabled button more", enable(0, false), "2"},
        {"the last one is disabled", enable(2, false), "none"},
    };
    for (const auto& [step, act, expected] : steps) {
        act();
        EXPECT_EQ(focus(), expected) << step;
    }
}

TEST_F(NSButtonKeyboardTest, ClickOnSpaceAndPassOtherKeysOn)
{
    const struct {
        QString characters;
        bool repeat;
        std::size_t actions;
        const char* superview;
        const char* inHost;
    } keys[] = {
        {" ", false, 1, "", ""}, // all counted from the beginning
        {" ", true, 1, "", ""},     {"x", false, 1, "x", "x"},
        {"q", false, 1, "xq", "x"}, // used by the superview
        {" ", false, 2, "xq", "x"},
    };
    for (const auto& [characters, repeat, actions, superview, inHost] : keys) {
        type(Qt::Key_unknown, characters, repeat);
        EXPECT_EQ(target->senders.size(), actions);
        EXPECT_EQ(content->keys, superview);
        EXPECT_EQ(host.keys, inHost);
    }
    const Ref<NSEvent> space = NSEvent::keyEventWithType_characters_isARepeat_window(
        NSEventType::KeyDown, text(" "), false, nullptr);
    EXPECT_FALSE(buttons[1]->keyDown(space.get())) << "disabled";
    EXPECT_EQ(content->keys, "xq ");

    const Weak<NSButton> removed(buttons[0]);
    target->onAction = [&] { buttons[0]->removeFromSuperview(); };
    type(Qt::Key_Space, " ");
    EXPECT_EQ(target->senders.size(), 3U);
    EXPECT_EQ(removed.get(), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), buttons[2]->widget());
}

} // namespace
