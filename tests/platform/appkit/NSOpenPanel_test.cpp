#include "platform/appkit/NSOpenPanel.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSButton.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSMutableArray.h"
#include "platform/foundation/NSURL.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"
#include "window/ZuComboBox.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QSettings>
#include <QTimer>
#include <QWindow>

#include <functional>

namespace
{

/// The panel that shows, null for none.
QFileDialog* dialog()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* const found = qobject_cast<QFileDialog*>(widget)) {
            return found;
        }
    }
    return nullptr;
}

void cancel()
{
    if (dialog() != nullptr) {
        dialog()->reject();
    }
}

void pressKey(QWidget* widget, Qt::Key key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, key == Qt::Key_Space ? " " : "");
    QCoreApplication::sendEvent(widget, &event);
}

/// Types a text and a return where the panel takes names.
void enter(const char* typed)
{
    auto* const field = dialog()->findChild<QLineEdit*>("fileNameEdit");
    field->setText(typed);
    pressKey(field, Qt::Key_Return);
}

/// Does one step after the other, each in a turn of the event loop of its own.
void later(std::vector<std::function<void()>> steps)
{
    QTimer::singleShot(0, [steps = std::move(steps)]() mutable {
        const std::function<void()> step = steps.front();
        steps.erase(steps.begin());
        if (!steps.empty()) {
            later(std::move(steps));
        }
        step();
    });
}

class NSOpenPanelTest : public testing::Test
{
protected:
    NSOpenPanelTest()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString((folder.path() / "settings").string()));
        std::filesystem::create_directory(folder.path() / "sub");
        for (const char* file :
             {"b.txt", "a.TXT", "x y.txt", "c.png", "z.tar.gz", "txt", "sub/d.txt", "q\xFF.txt"}) {
            folder.write(file, "");
        }
        panel->setDirectoryURL(NSURL::fileURLWithPath(text(folder.path().c_str()).get()));
    }

    void show()
    {
        window->setContentView(content);
        window->makeKeyAndOrderFront();
        application->handlePendingEvents();
        EXPECT_TRUE(window->isKeyWindow());
    }

    /// What is chosen when the user types a text and a return: the names in the folder, or "cancelled" if the
    /// panel stays, after "(message) " if it shows one.
    std::string choose(const char* typed)
    {
        std::string answer;
        later({[&] { enter(typed); },
               [&] {
                   if (auto* const message = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                       answer = "(message) ";
                       message->close();
                   }
                   cancel();
               }});
        if (panel->runModal() == NSModalResponseCancel) {
            answer += "cancelled";
        }
        application->handlePendingEvents();
        for (const Ref<NSURL>& url : *panel->URLs()) {
            answer += std::filesystem::relative(utf8(url->path()), folder.path()).string() + ';';
        }
        return answer;
    }

    Ref<NSApplication> application = NSApplication::sharedApplication();
    TemporaryFolder folder;
    Ref<NSOpenPanel> panel = NSOpenPanel::openPanel();
    Ref<NSView> content = make<NSView>();
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(50.0, 50.0, 200.0, 100.0), 0);
};

TEST_F(NSOpenPanelTest, AnswersWhatIsChosen)
{
    const std::string several = R"("x y.txt" "a.TXT" "c.png")";
    const char* replaced = "q\xEF\xBF\xBD.txt";
    EXPECT_EQ(choose("b.txt"), "b.txt;");
    EXPECT_EQ(choose("sub"), "cancelled") << "it is opened";
    EXPECT_EQ(choose((folder.path() / "sub/d.txt").c_str()), "sub/d.txt;");
    EXPECT_EQ(choose("none.txt"), "(message) cancelled");
    EXPECT_EQ(choose(replaced), "(message) cancelled") << "its name is no text";
    EXPECT_EQ(panel->URLs()->count(), 0U);

    EXPECT_EQ(choose(several.c_str()), "cancelled");
    panel->setAllowsMultipleSelection(true);
    EXPECT_EQ(choose(several.c_str()), "x y.txt;a.TXT;c.png;");
    panel->setAllowedFileTypes(NSArray<NSString>::arrayWithObjects({text("txt"), text("tar.gz")}));
    EXPECT_EQ(choose(R"("a.TXT" "z.tar.gz")"), "a.TXT;z.tar.gz;");
    EXPECT_EQ(choose(several.c_str()), "cancelled");
    EXPECT_EQ(choose("txt"), "cancelled") << "it has no extension";

    panel->setCanChooseDirectories(true);
    EXPECT_EQ(choose(R"("sub" "b.txt")"), "sub;b.txt;");
    EXPECT_EQ(choose(R"("sub" "c.png")"), "cancelled");
    panel->setCanChooseFiles(false);
    EXPECT_EQ(choose("sub"), "sub;");
    EXPECT_EQ(choose(""), ".;");
    EXPECT_EQ(choose("b.txt"), "cancelled");
}

TEST_F(NSOpenPanelTest, ShowsWhatItIsTold)
{
    const auto look = [this](const std::function<void(QFileDialog&)>& see) {
        later({[&] { see(*dialog()); }, cancel});
        EXPECT_EQ(panel->runModal(), NSModalResponseCancel);
    };
    look([&](QFileDialog& shown) {
        EXPECT_EQ(shown.directory().path().toStdString(), folder.path());
        EXPECT_EQ(shown.windowTitle(), "Open");
        EXPECT_EQ(shown.nameFilters(), QStringList("All Files (*)"));
        EXPECT_TRUE(shown.testOption(QFileDialog::ReadOnly));
        EXPECT_TRUE(shown.isModal());
        EXPECT_EQ(shown.windowHandle()->transientParent(), nullptr);
    });
    show();
    panel->setTitle(text("Import"));
    panel->setPrompt(text("Take"));
    panel->setAllowedFileTypes(NSArray<NSString>::arrayWithObjects({text("jpg"), text("png")}));
    panel->setCanCreateDirectories(true);
    panel->setDirectoryURL(NSURL::fileURLWithPath(text((folder.path() / "sub").c_str()).get()));
    look([&](QFileDialog& shown) {
        EXPECT_EQ(shown.directory().dirName(), "sub");
        EXPECT_EQ(shown.windowTitle(), "Import");
        EXPECT_EQ(shown.labelText(QFileDialog::Accept), "Take");
        EXPECT_EQ(shown.nameFilters(), QStringList("*.jpg *.png"));
        EXPECT_FALSE(shown.testOption(QFileDialog::ReadOnly));
        EXPECT_EQ(shown.windowHandle()->transientParent(), content->widget()->window()->windowHandle());
    });
    for (const char* nowhere : {"http://example.com/", "file:///nowhere"}) {
        panel->setDirectoryURL(NSURL::URLWithString(text(nowhere).get()));
        look(
            [&](QFileDialog& shown) { EXPECT_EQ(shown.directory().dirName(), "sub") << "as the last time"; });
    }
    panel->setCanChooseFiles(false);
    panel->setCanChooseDirectories(true);
    look([&](QFileDialog& shown) {
        EXPECT_TRUE(shown.testOption(QFileDialog::ShowDirsOnly));
        EXPECT_EQ(shown.nameFilters(), QStringList("All Files (*)"));
    });
}

TEST_F(NSOpenPanelTest, OutlivesWhatItWasAskedBy)
{
    const Ref<ActionTarget> target = make<ActionTarget>();
    std::vector<std::function<void()>> steps;
    QPointer<QWidget> around; // the widget that asks; null if none does
    NSModalResponse response = NSModalResponseOK;
    target->onAction = [&] {
        const bool byWidget = !around.isNull();
        later(steps);
        response = panel->runModal();
        EXPECT_EQ(!around.isNull(), byWidget) << "Qt is still at work there";
    };
    const auto runByButton = [&] {
        Ref<NSButton> button = make<NSButton>()->initWithFrame(NSMakeRect(10.0, 10.0, 60.0, 20.0));
        button->setTarget(target.get());
        button->setAction(ActionTarget::kAction);
        content->addSubview(button);
        around = content->widget();
        QWidget* const asking = std::exchange(button, nullptr)->widget();
        asking->setFocus();
        pressKey(asking, Qt::Key_Space);
    };
    const auto runByComboBox = [&] {
        Ref<ZuComboBox> comboBox = make<ZuComboBox>()->initWithFrame(NSMakeRect(10.0, 10.0, 90.0, 24.0));
        comboBox->values_()->addObject(text("Folder"));
        comboBox->reloadData();
        comboBox->setTarget(target.get());
        comboBox->setAction(ActionTarget::kAction);
        content->addSubview(comboBox);
        around = content->widget();
        pressKey(std::exchange(comboBox, nullptr)->widget()->findChild<QComboBox*>(), Qt::Key_Down);
    };
    const auto runByLoop = [&] {
        target->performSelector_withObject_afterDelay(ActionTarget::kAction, nullptr, 0.0);
        for (const std::size_t sent = target->senders.size(); target->senders.size() == sent || dialog();) {
            application->handlePendingEvents();
        }
    };
    const auto replaceContent = [&] {
        content = make<NSView>();
        window->setContentView(content);
    };
    const auto closeWindow = [&] { window = nullptr; };
    const auto closeWithMessage = [&] {
        later({closeWindow, [] { QApplication::activeModalWidget()->close(); }});
        enter("none");
    };
    const std::vector<std::function<void()>> ways{runByButton, runByComboBox, runByLoop};
    const std::vector<std::vector<std::function<void()>>> meanwhile{{[&] { panel = nullptr; }, cancel},
                                                                    {replaceContent, [] {}, cancel},
                                                                    {closeWindow},
                                                                    {closeWithMessage}};
    for (const std::function<void()>& run : ways) {
        for (const std::vector<std::function<void()>>& happening : meanwhile) {
            steps = happening;
            panel = NSOpenPanel::openPanel();
            window = make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(50.0, 50.0, 200.0, 100.0), 0);
            content = make<NSView>();
            show();
            around = nullptr;
            response = NSModalResponseOK;
            run();
            EXPECT_EQ(response, NSModalResponseCancel);
            EXPECT_EQ(dialog(), nullptr);
            application->handlePendingEvents();
        }
    }
}

TEST_F(NSOpenPanelTest, NeedsSomethingToChooseAndShowsOnce)
{
    std::string reported;
    const auto run = [&] {
        testing::internal::CaptureStderr();
        EXPECT_EQ(panel->runModal(), NSModalResponseCancel);
        reported += testing::internal::GetCapturedStderr();
    };
    later({run, cancel});
    panel->runModal();
    panel->setCanChooseFiles(false);
    run();
    EXPECT_EQ(reported, "runModal: the panel shows already\n"
                        "runModal: neither files nor folders can be chosen\n");
}

} // namespace
