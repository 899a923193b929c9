// Combo boxes under a real pointer and keyboard.

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSButton.h"
#include "platform/appkit/NSPopover.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSMutableArray.h"
#include "real/Desktop.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"
#include "window/ZuComboBox.h"
#include "window/ZuMultiSelectComboBox.h"
#include "window/ZuMultiSelectComboBoxData.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>

#include <array>

namespace
{

/// Shows a pop-over with a button for each choice of a combo box, which checks it.
class Chooser : public NSObject
{
public:
    /// Checks a choice, or takes the check away.
    class Toggle : public NSObject
    {
    public:
        explicit Toggle(Ref<ZuMultiSelectComboBoxData> toggled) : choice(std::move(toggled)) {}
        void toggle() { choice->setIsCheck(!choice->isCheck()); }

        const ClassTable& classTable() const override
        {
            static constexpr std::array kSelectors{selector<&Toggle::toggle>("toggle")};
            static constexpr ClassTable kTable{"Toggle", &NSObject::table, {}, kSelectors};
            return kTable;
        }

        Ref<ZuMultiSelectComboBoxData> choice;
    };

    void PopOver(NSObject* sender)
    {
        auto& comboBox = dynamic_cast<ZuMultiSelectComboBox&>(*sender);
        const Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 120.0, 100.0));
        buttons.clear();
        toggles.clear();
        for (const Ref<ZuMultiSelectComboBoxData>& choice : *comboBox.values_()) {
            const double place = 10.0 + 30.0 * static_cast<double>(buttons.size());
            const Ref<NSButton> button =
                make<NSButton>()->initWithFrame(NSMakeRect(10.0, place, 100.0, 24.0));
            button->setTitle(choice->value());
            toggles.push_back(make<Toggle>(choice));
            button->setTarget(toggles.back().get());
            button->setAction(SEL{"toggle"});
            content->addSubview(button);
            buttons.push_back(button);
        }
        const Ref<NSPopover> shown = make<NSPopover>();
        shown->setContentView(content);
        shown->setDelegate(&comboBox);
        shown->showRelativeToRect_ofView_preferredEdge(NSZeroRect, &comboBox, NSRectEdge::MaxY);
        popover = shown;
        ++asked;
    }

    const ClassTable& classTable() const override
    {
        static constexpr std::array kSelectors{selector<&Chooser::PopOver>("PopOver:")};
        static constexpr ClassTable kTable{"Chooser", &NSObject::table, {}, kSelectors};
        return kTable;
    }

    bool popoverShows() const
    {
        const Ref<NSPopover> shown = popover.get();
        return shown && shown->isShown();
    }

    std::vector<Ref<NSButton>> buttons;
    std::vector<Ref<Toggle>> toggles;
    Weak<NSPopover> popover;
    int asked = 0;
};

class ComboBoxesRealTest : public testing::Test
{
protected:
    ComboBoxesRealTest()
    {
        for (const char* name : {"Ada", "Bob", "Cleo"}) {
            single->values_()->addObject(text(name));
            const Ref<ZuMultiSelectComboBoxData> choice = make<ZuMultiSelectComboBoxData>();
            choice->setValue(text(name));
            multiple->values_()->addObject(choice);
        }
        single->reloadData();
        single->setTarget(target.get());
        single->setAction(ActionTarget::kAction);
        multiple->setDelegate(chooser.get());
        content->addSubview(single);
        content->addSubview(multiple);
        desktop::movePointer(QPoint(0, 0));
        window->setContentView(content);
        window->makeKeyAndOrderFront();
        desktop::focus(content->widget()->window()->winId());
        EXPECT_TRUE(desktop::waitUntil([&] { return window->isKeyWindow(); }));
    }

    static void click(QWidget& widget, QPoint place)
    {
        desktop::movePointer(widget.mapToGlobal(place));
        desktop::xdotool({"click", "1"});
    }
    static QComboBox& peer(NSComboBox& comboBox) { return *comboBox.widget()->findChild<QComboBox*>(); }
    bool listShows() { return peer(*single).view()->isVisible(); }
    bool becomes(NSComboBox& comboBox, const char* expected)
    {
        return desktop::waitUntil([&] { return utf8(comboBox.stringValue()) == expected; });
    }

    Ref<NSApplication> application = NSApplication::sharedApplication();
    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<Chooser> chooser = make<Chooser>();
    Ref<ZuComboBox> single = make<ZuComboBox>()->initWithFrame(NSMakeRect(20.0, 250.0, 160.0, 26.0));
    Ref<ZuMultiSelectComboBox> multiple =
        make<ZuMultiSelectComboBox>()->initWithFrame(NSMakeRect(220.0, 250.0, 160.0, 26.0));
    Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 400.0, 300.0));
    Ref<NSWindow> window =
        make<NSWindow>()->initWithContentRect_styleMask(NSMakeRect(100.0, 300.0, 400.0, 300.0), 0);
};

TEST_F(ComboBoxesRealTest, AreChosenFromAndTypedInto)
{
    click(*single->widget(), QPoint(150, 13));
    EXPECT_TRUE(desktop::waitUntil([&] { return listShows(); }));
    QAbstractItemView& list = *peer(*single).view();
    click(*list.viewport(), list.visualRect(list.model()->index(1, 0)).center());
    EXPECT_TRUE(becomes(*single, "Bob"));
    EXPECT_TRUE(desktop::waitUntil([&] { return !listShows() && target->senders.size() == 1; }));

    desktop::xdotool({"key", "F4"});
    EXPECT_TRUE(desktop::waitUntil([&] { return listShows(); }));
    desktop::xdotool({"key", "Down", "Return"});
    EXPECT_TRUE(becomes(*single, "Cleo"));
    EXPECT_TRUE(desktop::waitUntil([&] { return !listShows() && target->senders.size() == 2; }));
    desktop::xdotool({"key", "Up"});
    EXPECT_TRUE(becomes(*single, "Bob"));
    EXPECT_EQ(target->senders.size(), 3U);

    desktop::xdotool({"key", "ctrl+a"});
    desktop::xdotool({"type", "Ad"});
    EXPECT_TRUE(becomes(*single, "Ad"));
    desktop::xdotool({"key", "Return"});
    EXPECT_TRUE(desktop::waitUntil([&] { return target->senders.size() == 4; }));
    EXPECT_EQ(utf8(single->stringValue()), "Ad") << "nothing is completed";

    single->setEditable(false);
    click(*single->widget(), QPoint(20, 13)); // on the text
    EXPECT_TRUE(desktop::waitUntil([&] { return listShows(); }));
    click(*list.viewport(), list.visualRect(list.model()->index(0, 0)).center());
    EXPECT_TRUE(becomes(*single, "Ada"));
    EXPECT_TRUE(desktop::waitUntil([&] { return !listShows(); }));
}

TEST_F(ComboBoxesRealTest, ListWhatIsCheckedInAPopOver)
{
    click(*multiple->widget(), QPoint(20, 13));
    EXPECT_TRUE(desktop::waitUntil([&] { return chooser->popoverShows(); }));
    for (const std::size_t checked : {1U, 0U}) {
        click(*chooser->buttons[checked]->widget(), QPoint(50, 12));
        EXPECT_TRUE(desktop::waitUntil([&] { return chooser->toggles[checked]->choice->isCheck(); }));
    }
    EXPECT_EQ(utf8(multiple->stringValue()), "");
    click(*single->widget(), QPoint(150, 13));
    EXPECT_TRUE(becomes(*multiple, "Ada,Bob,"));
    EXPECT_FALSE(chooser->popoverShows());
    EXPECT_FALSE(listShows()) << "the press did nothing else";

    peer(*multiple).setFocus(Qt::TabFocusReason);
    desktop::xdotool({"key", "alt+Down"});
    EXPECT_TRUE(desktop::waitUntil([&] { return chooser->popoverShows(); }));
    desktop::xdotool({"key", "Tab", "space"}); // on the first of the buttons
    EXPECT_TRUE(desktop::waitUntil([&] { return !chooser->toggles[0]->choice->isCheck(); }));
    desktop::xdotool({"key", "Escape"});
    EXPECT_TRUE(becomes(*multiple, "Bob,"));
    EXPECT_EQ(chooser->asked, 2);

    click(*multiple->widget(), QPoint(20, 13));
    EXPECT_TRUE(desktop::waitUntil([&] { return chooser->popoverShows(); }));
    multiple->removeFromSuperview();
    multiple = nullptr;
    EXPECT_TRUE(desktop::waitUntil([&] { return !chooser->popoverShows(); }));
}

} // namespace
