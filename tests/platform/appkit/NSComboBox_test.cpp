#include "platform/appkit/NSComboBox.h"

#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSNotification.h"
#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "support/Accessibility.h"
#include "support/ActionTarget.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWheelEvent>

#include <algorithm>
#include <functional>

namespace
{

/// Answers what a combo box asks, and writes down what it is told.
class Names : public NSObject, public NSComboBoxDataSource, public NSComboBoxDelegate
{
public:
    std::int64_t numberOfItemsInComboBox(NSComboBox* /*comboBox*/) override
    {
        onCount();
        return static_cast<std::int64_t>(items.size());
    }
    Ref<NSObject> comboBox_objectValueForItemAtIndex(NSComboBox* /*comboBox*/, std::int64_t index) override
    {
        onItem();
        ++asked;
        return text(items.at(static_cast<std::size_t>(index)).c_str());
    }
    std::size_t comboBox_indexOfItemWithStringValue(NSComboBox* /*comboBox*/, NSString* name) override
    {
        const auto found = std::ranges::find(items, name->UTF8String());
        return found != items.end() ? static_cast<std::size_t>(found - items.begin()) : NSNotFound;
    }
    Ref<NSString> comboBox_completedString(NSComboBox* /*comboBox*/, NSString* typed) override
    {
        return completion ? completion : Ref<NSString>(typed);
    }
    void comboBoxSelectionDidChange(NSNotification* notification) override
    {
        auto& comboBox = dynamic_cast<NSComboBox&>(*notification->object());
        EXPECT_EQ(utf8(notification->name()), "NSComboBoxSelectionDidChangeNotification");
        told.push_back(utf8(comboBox.stringValue()) + " " + std::to_string(comboBox.indexOfSelectedItem()));
    }
    void controlTextDidChange(NSTextField* field) override
    {
        told.push_back("typed " + utf8(field->stringValue()));
    }

    std::vector<std::string> items;
    Ref<NSString> completion;
    std::function<void()> onCount = [] {};
    std::function<void()> onItem = [] {};
    int asked = 0;
    std::vector<std::string> told;
};

/// A combo box that counts presses, and can keep them to itself.
class Pressed : public NSComboBox
{
public:
    void mouseDown(NSEvent* event) override
    {
        ++presses;
        if (!keepsPresses) {
            NSComboBox::mouseDown(event);
        }
    }
    bool keepsPresses = false;
    int presses = 0;
};

class NSComboBoxTest : public testing::Test
{
protected:
    using Strings = std::vector<std::string>;

    NSComboBoxTest()
    {
        names->items = {"Ada", "Bob", "Cleo", "Bob"};
        comboBox->initWithFrame(NSMakeRect(10.0, 60.0, 140.0, 24.0));
        comboBox->setUsesDataSource(true);
        comboBox->setDataSource(names.get());
        comboBox->setDelegate(names.get());
        comboBox->setTarget(target.get());
        comboBox->setAction(ActionTarget::kAction);
        content->addSubview(comboBox);
        window->setContentView(content);
        window->makeKeyAndOrderFront();
        QCoreApplication::processEvents();
    }

    QComboBox& peer() const { return *content->widget()->findChild<QComboBox*>(); }
    QLineEdit& line() const { return *peer().lineEdit(); }
    bool listShows() const { return peer().view()->isVisible(); }

    /// Whether it was used.
    static bool key(QWidget& widget, int code, const char* typed = "",
                    Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent event(QEvent::KeyPress, code, modifiers, typed);
        QCoreApplication::sendEvent(&widget, &event);
        return event.isAccepted();
    }
    bool key(int code, const char* typed = "", Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        return key(peer(), code, typed, modifiers);
    }
    void type(const char* letters) const
    {
        for (; *letters != '\0'; ++letters) {
            key(Qt::Key_unknown, std::string(1, *letters).c_str());
        }
    }

    static void mouse(QWidget& widget, QEvent::Type type, QPointF place)
    {
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &event);
    }
    void pressArrow() const { mouse(peer(), QEvent::MouseButtonPress, QPointF(peer().width() - 6.0, 12.0)); }
    /// Opens the list and moves to one of its items, for a key to choose it.
    QWidget& openAt(int item) const
    {
        EXPECT_TRUE(key(Qt::Key_F4));
        peer().view()->setCurrentIndex(peer().model()->index(item, 0));
        return *peer().view();
    }

    std::string shown() const { return line().text().toStdString(); }
    Strings takeTold() const { return std::exchange(names->told, {}); }
    std::size_t takeActions() const { return std::exchange(target->senders, {}).size(); }

    Ref<Names> names = make<Names>();
    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<Pressed> comboBox = make<Pressed>();
    Ref<NSView> content = make<NSView>()->initWithFrame(NSMakeRect(0.0, 0.0, 200.0, 100.0));
    Ref<NSWindow> window = make<NSWindow>()->initWithContentRect_styleMask(content->frame(), 0);
};

TEST_F(NSComboBoxTest, PutsTheItemThatTheUserChoosesIntoItsText)
{
    comboBox->setStringValue(text("Cleo"));
    EXPECT_EQ(shown(), "Cleo") << "at once";
    EXPECT_EQ(comboBox->indexOfSelectedItem(), -1) << "it was not chosen";
    key(Qt::Key_Down);
    EXPECT_EQ(takeTold(), (Strings{"Bob 3"})) << "the one behind the text";
    key(Qt::Key_Up);
    key(Qt::Key_PageUp);
    EXPECT_EQ(takeTold(), (Strings{"Cleo 2", "Bob 1"}));
    QWheelEvent wheel(QPointF(5.0, 5.0), peer().mapToGlobal(QPointF(5.0, 5.0)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&peer(), &wheel);
    EXPECT_EQ(takeTold(), (Strings{"Cleo 2"}));
    EXPECT_EQ(takeActions(), 4U);

    names->items[3] = "Dan";
    names->items.emplace_back("Eve");
    key(openAt(4), Qt::Key_Return);
    EXPECT_FALSE(listShows());
    EXPECT_EQ(takeTold(), (Strings{"Eve 4"})) << "opening the list asks for it";
    key(openAt(3), Qt::Key_Escape);
    EXPECT_FALSE(listShows());
    EXPECT_EQ(shown(), "Eve");
    EXPECT_EQ(takeActions(), 1U);

    names->items.pop_back();
    comboBox->reloadData();
    EXPECT_EQ(shown(), "Eve");
    EXPECT_EQ(comboBox->indexOfSelectedItem(), -1);
    EXPECT_EQ(peer().count(), 4);
    comboBox->setUsesDataSource(false);
    EXPECT_EQ(peer().count(), 0);
}

TEST_F(NSComboBoxTest, EditsItsText)
{
    key(Qt::Key_Down);
    line().end(false);
    takeTold();
    takeActions();
    type("!");
    EXPECT_EQ(takeTold(), (Strings{"typed Ada!"}));
    EXPECT_EQ(comboBox->indexOfSelectedItem(), -1);
    line().setCursorPosition(1);
    comboBox->reloadData();
    key(openAt(2), Qt::Key_Escape);
    EXPECT_EQ(shown(), "Ada!");
    EXPECT_EQ(line().cursorPosition(), 1) << "the caret stays where it is";
    key(Qt::Key_Escape);
    EXPECT_EQ(shown(), "Ada") << "the text from before it was edited, which was chosen";
    EXPECT_EQ(takeActions(), 0U);
    key(Qt::Key_Return);
    EXPECT_EQ(takeActions(), 1U);

    line().selectAll();
    type("Cleo");
    takeTold();
    peer().clearFocus();
    EXPECT_EQ(takeTold(), Strings{}) << "a text like that of an item is no choice";
    EXPECT_EQ(takeActions(), 0U);
}

TEST_F(NSComboBoxTest, CompletesWhatTheDataSourceCompletes)
{
    type("A");
    EXPECT_EQ(shown(), "A");
    names->completion = text("Adam");
    type("d");
    EXPECT_EQ(shown(), "Adam");
    comboBox->reloadData();
    EXPECT_EQ(line().selectedText().toStdString(), "am");
    type("a");
    EXPECT_EQ(line().selectedText().toStdString(), "m");
    key(Qt::Key_Backspace);
    key(Qt::Key_Backspace);
    EXPECT_EQ(shown(), "Ad") << "what is taken away is not put back";
    type("x");
    EXPECT_EQ(shown(), "Adx") << "the answer does not begin so";
    comboBox->setStringValue(nullptr);
    type("A");
    EXPECT_EQ(shown(), "Adam") << "it is begun anew";
    EXPECT_EQ(takeTold(), (Strings{"typed A", "typed Adam", "typed Adam", "typed Ada", "typed Ad",
                                   "typed Adx", "typed Adam"}));
}

TEST_F(NSComboBoxTest, OpensALongListWithoutAskingForItsItems)
{
    names->items.assign(100'000, "name");
    names->items[50'000] = "here";
    for (const bool editable : {true, false}) {
        comboBox->setEditable(editable);
        comboBox->setStringValue(text("here"));
        names->asked = 0;
        comboBox->accessibilityPerformShowMenu();
        QCoreApplication::processEvents();
        EXPECT_TRUE(listShows());
        EXPECT_EQ(peer().view()->currentIndex().row(), 50'000);
        EXPECT_LT(names->asked, 300);
        peer().hidePopup();
    }
}

TEST_F(NSComboBoxTest, HearsPressesBeforeTheToolkit)
{
    comboBox->keepsPresses = true;
    comboBox->setStringValue(text("Cleo"));
    pressArrow();
    mouse(line(), QEvent::MouseButtonPress, QPointF(5.0, 5.0));
    mouse(line(), QEvent::MouseMove, QPointF(50.0, 5.0));
    mouse(line(), QEvent::MouseButtonRelease, QPointF(50.0, 5.0));
    EXPECT_FALSE(listShows());
    EXPECT_FALSE(line().hasSelectedText());

    EXPECT_EQ(comboBox->presses, 2);
    comboBox->keepsPresses = false;
    comboBox->setEnabled(false);
    pressArrow();
    EXPECT_FALSE(comboBox->accessibilityPerformShowMenu());
    EXPECT_FALSE(listShows());
    EXPECT_FALSE(peer().isEnabled());

    comboBox->setEnabled(true);
    pressArrow();
    EXPECT_TRUE(listShows());
    comboBox->presses = 0;
    mouse(*peer().view()->viewport(), QEvent::MouseButtonPress, QPointF(5.0, 5.0));
    EXPECT_EQ(comboBox->presses, 0) << "the list is no part of it";
    comboBox->setEnabled(false);
    EXPECT_FALSE(listShows());
}

TEST_F(NSComboBoxTest, OnlyChoosesWhereItsTextCannotBeEdited)
{
    comboBox->setSelectable(false);
    EXPECT_FALSE(comboBox->isEditable());
    comboBox->setStringValue(text("Bob,"));
    EXPECT_EQ(shown(), "Bob,") << "any text can be shown";
    type("c");
    EXPECT_EQ(takeTold(), (Strings{"Cleo 2"}));
    type("z");
    EXPECT_EQ(takeTold(), Strings{}) << "there is no such item";
    EXPECT_EQ(shown(), "Cleo");
    key(Qt::Key_Space, " ");
    EXPECT_TRUE(listShows());
    key(*peer().view(), Qt::Key_Escape);
    mouse(line(), QEvent::MouseButtonPress, QPointF(5.0, 5.0));
    EXPECT_TRUE(listShows());
    EXPECT_EQ(takeActions(), 1U);
}

TEST_F(NSComboBoxTest, SurvivesItsEnd)
{
    const auto end = [this] {
        comboBox->removeFromSuperview();
        comboBox = nullptr;
    };
    const auto renew = [this] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        comboBox = make<Pressed>();
        comboBox->initWithFrame(NSMakeRect(10.0, 60.0, 140.0, 24.0));
        comboBox->setUsesDataSource(true);
        comboBox->setDataSource(names.get());
        comboBox->setTarget(target.get());
        comboBox->setAction(ActionTarget::kAction);
        content->addSubview(comboBox);
    };
    target->onAction = end;
    key(Qt::Key_Down);
    EXPECT_EQ(comboBox, nullptr);
    renew();
    key(openAt(1), Qt::Key_Return);
    EXPECT_EQ(comboBox, nullptr);
    target->onAction = nullptr;

    for (int question = 0; question < 10; ++question) {
        renew();
        int questions = 0;
        names->onCount = names->onItem = [&] {
            if (questions++ == question) {
                end();
            }
        };
        key(Qt::Key_F4);
        EXPECT_EQ(comboBox == nullptr, question < questions) << question;
        EXPECT_EQ(QApplication::activePopupWidget() == nullptr, question < questions) << question;
        names->onCount = names->onItem = [] {};
        if (comboBox) {
            end();
        }
    }

    renew();
    openAt(1);
    end();

    renew();
    comboBox->setStringValue(text("Bob"));
    QWidget& list = openAt(2);
    names = nullptr;
    key(list, Qt::Key_Return);
    EXPECT_EQ(shown(), "Bob") << "there is nothing to choose without a data source";
}

TEST_F(NSComboBoxTest, LooksAndAnnouncesItselfAsTheToolkitHasIt)
{
    EXPECT_EQ(operationsOf(*comboBox), Operations{});
    EXPECT_TRUE(comboBox->cursorRects().empty());
    EXPECT_EQ(peer().geometry(), QRect(0, 0, 140, 24));
    comboBox->setTextColor(NSColor::blueColor());
    EXPECT_EQ(line().palette().color(QPalette::Active, QPalette::Text), QColor(Qt::blue));

    comboBox->setAccessibilityLabel(text("Name"));
    comboBox->setStringValue(text("Bob"));
    QAccessibleInterface& said = *QAccessible::queryAccessibleInterface(&peer());
    EXPECT_EQ(said.role(), QAccessible::ComboBox);
    EXPECT_EQ(said.text(QAccessible::Name).toStdString(), "Name");
    EXPECT_EQ(said.text(QAccessible::Value).toStdString(), "Bob");
    said.actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_TRUE(listShows());
    EXPECT_TRUE(said.state().expanded);
    EXPECT_TRUE(said.state().editable);
    comboBox->setEditable(false);
    EXPECT_FALSE(said.state().editable);
    said.actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    EXPECT_FALSE(listShows());
    comboBox->setEnabled(false);
    EXPECT_EQ(said.actionInterface()->actionNames().size(), 0);
}

} // namespace
