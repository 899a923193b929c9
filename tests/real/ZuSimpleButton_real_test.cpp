#include "window/ZuSimpleButton.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/graphics/NSColor.h"
#include "real/Desktop.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QWidget>

#include <cstdlib>

namespace
{

/// A button with the default colours in the middle of a window.
class ZuSimpleButtonRealTest : public testing::Test
{
protected:
    ZuSimpleButtonRealTest()
    {
        button->setTitle(text("Import"));
        button->awakeFromNib();
        button->setTarget(target.get());
        button->setAction(ActionTarget::kAction);
        content->addSubview(button);
        window->setContentView(content);
        desktop::movePointer(QPoint(0, 0));
        window->makeKeyAndOrderFront();
        desktop::focus(content->widget()->window()->winId());
        EXPECT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow(); }));
    }

    QPoint inside() const { return button->widget()->mapToGlobal(QPoint(60, 6)); }
    QPoint outside() const { return content->widget()->mapToGlobal(QPoint(5, 5)); }

    /// Waits until the screen shows the title in one colour on a face in another. The title says the same.
    bool shows(const QColor& titleColor, const QColor& face) const
    {
        const auto distance = [](const QColor& a, const QColor& b) {
            return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
                   std::abs(a.blue() - b.blue());
        };
        return desktop::waitUntil([&] {
            const auto runs = button->attributedTitle()->runs();
            const auto color = runs[0].attributes[NSForegroundColorAttributeName]->components();
            const auto component = [&](std::size_t index) { return static_cast<float>(color[index]); };
            if (QColor::fromRgbF(component(0), component(1), component(2)) != titleColor) {
                return false;
            }
            const QImage picture =
                desktop::pictureOfScreen(QRect(button->widget()->mapToGlobal(QPoint(4, 4)), QSize(112, 24)));
            int ink = 0; // more title than face
            for (int i = 0; i < picture.width() * picture.height(); ++i) {
                const QColor shown = picture.pixelColor(i % picture.width(), i / picture.width());
                ink += distance(shown, titleColor) < distance(shown, face) ? 1 : 0;
            }
            return picture.pixelColor(0, 0) == face && ink > 50 && ink < 400;
        });
    }
    bool showsNormal() const { return shows("#ffffff", "#20baea"); }
    bool showsHover() const { return shows("#20baea", "#ffffff"); }
    bool showsDisabled(const char* titleColor) const { return shows(titleColor, "#808080"); }

    Ref<NSApplication> application = NSApplication::sharedApplication();
    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(100.0, 400.0, 200.0, 80.0), 0);
    Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 80.0));
    Ref<ZuSimpleButton> button = make<ZuSimpleButton>()->initWithFrame(NSMakeRect(40.0, 24.0, 120.0, 32.0));
};

TEST_F(ZuSimpleButtonRealTest, KeepsItsTitleReadableOverTheLifeOfAPress)
{
    EXPECT_TRUE(showsNormal());
    desktop::movePointer(inside());
    EXPECT_TRUE(showsHover());
    desktop::press();
    EXPECT_TRUE(showsNormal());
    target->onAction = [&] { button->setTitle(text("Again")); };
    desktop::release();
    EXPECT_TRUE(desktop::waitUntil([&] { return target->senders.size() == 1; }));
    EXPECT_TRUE(showsHover()) << "also with a title that the action sets";
    target->onAction = nullptr;
    desktop::movePointer(outside());
    EXPECT_TRUE(showsNormal());

    desktop::movePointer(inside());
    EXPECT_TRUE(showsHover());
    desktop::press();
    EXPECT_TRUE(showsNormal());
    desktop::movePointer(outside());
    EXPECT_TRUE(desktop::waitUntil([&] { return !button->isHighlighted(); }));
    EXPECT_TRUE(showsNormal()) << "as long as the button is held";
    desktop::release();
    EXPECT_TRUE(showsNormal());
    EXPECT_EQ(target->senders.size(), 1U);

    desktop::movePointer(inside());
    EXPECT_TRUE(showsHover());
    button->setEnabled(false);
    EXPECT_TRUE(showsDisabled("#20baea"));
    desktop::press();
    EXPECT_TRUE(showsDisabled("#ffffff"));
    desktop::release();
    EXPECT_TRUE(showsDisabled("#ffffff"));
    button->setEnabled(true);
    EXPECT_TRUE(showsHover());
    desktop::press();
    EXPECT_TRUE(showsNormal());
    button->setEnabled(false);
    desktop::release();
    EXPECT_TRUE(showsDisabled("#ffffff"));
    desktop::movePointer(outside());
    EXPECT_TRUE(showsDisabled("#ffffff"));
    button->setEnabled(true);
    EXPECT_TRUE(showsNormal());
    EXPECT_EQ(target->senders.size(), 1U) << "disabled before the release";
}

} // namespace
