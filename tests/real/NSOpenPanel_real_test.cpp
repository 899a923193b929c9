// A panel under a real pointer and keyboard.

#include "platform/appkit/NSOpenPanel.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSButton.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSURL.h"
#include "real/Desktop.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTimer>
#include <QWidget>

namespace
{

TEST(NSOpenPanelRealTest, TakesATypedPathAndNothingElseMeanwhile)
{
    const TemporaryFolder folder;
    const std::string photo = (folder.path() / "photo 1.JPG").string();
    folder.write("photo 1.JPG", "");
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString((folder.path() / "settings").string()));
    const Ref<NSApplication> application = NSApplication::sharedApplication();
    const Ref<NSOpenPanel> panel = NSOpenPanel::openPanel();
    panel->setAllowedFileTypes(NSArray<NSString>::arrayWithObjects({text("jpg")}));
    const Ref<ActionTarget> target = make<ActionTarget>();
    const Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 30.0));
    button->setTarget(target.get());
    button->setAction(ActionTarget::kAction);
    const Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(0.0, 0.0, 100.0, 30.0), 0);
    window->setContentView(button);
    window->makeKeyAndOrderFront();
    desktop::focus(button->widget()->window()->winId());
    EXPECT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow(); }));
    const auto click = [&] {
        desktop::movePointer(button->widget()->mapToGlobal(QPoint(50, 15)));
        desktop::xdotool({"click", "1"});
    };

    const auto operate = [&] {
        QWidget* shown = nullptr;
        EXPECT_TRUE(desktop::waitUntil([&] {
            shown = QApplication::activeModalWidget();
            return shown != nullptr && shown->isVisible();
        }));
        click();
        desktop::focus(shown->winId());
        EXPECT_TRUE(desktop::waitUntil([&] { return shown->isActiveWindow(); }));
        desktop::xdotool({"type", photo});
        desktop::xdotool({"key", "Return"});
        EXPECT_TRUE(desktop::waitUntil([&] { return !shown->isVisible(); }));
    };
    target->onAction = [&] {
        QTimer::singleShot(0, operate);
        EXPECT_EQ(panel->runModal(), NSModalResponseOK);
    };
    click();
    EXPECT_TRUE(desktop::waitUntil([&] { return panel->URLs()->count() == 1; }));
    EXPECT_EQ(utf8(panel->URLs()->objectAtIndex(0)->path()), photo);
    EXPECT_EQ(target->senders.size(), 1U) << "not twice";
}

} // namespace
