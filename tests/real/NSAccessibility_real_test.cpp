// What assistive technology is told of views that change. Qt tells it, and so us, nothing unless the desktop
// has such technology, which the environment of these tests claims.

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSButton.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSNumber.h"
#include "real/Desktop.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QWidget>

#include <functional>

namespace
{

class Gauge : public NSView
{
public:
    Ref<NSNumber> accessibilityValue() const override { return value; }

    Ref<NSNumber> value;
};

std::string told;

void take(QAccessibleEvent* event)
{
    const QAccessibleInterface& view = *event->accessibleInterface();
    if (event->type() == QAccessible::NameChanged) {
        told += " name:" + view.text(QAccessible::Name).toStdString();
    } else if (event->type() == QAccessible::DescriptionChanged) {
        told += " description:" + view.text(QAccessible::Description).toStdString();
    } else if (const auto* state = dynamic_cast<QAccessibleStateChangeEvent*>(event)) {
        told += state->changedStates().disabled ? " disabled:" : " state:";
        told += view.state().disabled ? "yes" : "no";
    } else if (const auto* value = dynamic_cast<QAccessibleValueChangeEvent*>(event)) {
        told += " value:" + value->value().toString().toStdString();
    }
}

TEST(NSAccessibilityRealTest, TellsOfChanges)
{
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    ASSERT_TRUE(desktop::waitUntil([] { return QAccessible::isActive(); }));
    const Ref<NSView> content = make<NSView>();
    const Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 60.0, 20.0));
    const Ref<Gauge> gauge = make<Gauge>();
    gauge->initWithFrame(NSMakeRect(0.0, 30.0, 60.0, 20.0));
    content->addSubview(button);
    content->addSubview(gauge);
    const Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(100.0, 400.0, 60.0, 50.0), 0);
    window->setContentView(content);
    window->makeKeyAndOrderFront();
    desktop::focus(content->widget()->window()->winId());
    ASSERT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow(); })); // which is told, too
    const auto redraw = [&] {
        button->setNeedsDisplay();
        gauge->setNeedsDisplay();
        EXPECT_TRUE(desktop::waitUntil([&] { return !button->needsDisplay() && !gauge->needsDisplay(); }));
    };
    redraw();

    const QAccessible::UpdateHandler before = QAccessible::installUpdateHandler(take);
    const struct {
        std::function<void()> act;
        const char* told;
    } steps[] = {
        {[] {}, ""},
        {[&] { button->setTitle(text("Done")); }, " name:Done"},
        {[&] { button->setEnabled(false); }, " disabled:yes"},
        {[&] { button->setEnabled(true); }, " disabled:no"},
        {[&] { gauge->value = NSNumber::numberWithDouble(0.25); }, " value:0.25"},
        {[&] { gauge->value = nullptr; }, " value:"},
    };
    for (const auto& [act, expected] : steps) {
        told.clear();
        act();
        redraw();
        EXPECT_EQ(told, expected);
    }
    told.clear();
    button->setToolTip(text("Helps"));
    button->setAccessibilityLabel(text("Name"));
    EXPECT_EQ(told, " description:Helps name:Name") << "without a redraw";
    QAccessible::installUpdateHandler(before);
}

} // namespace
