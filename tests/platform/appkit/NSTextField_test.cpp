#include "platform/appkit/NSTextField.h"

#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSTextFieldCell.h"
#include "platform/appkit/NSWindow.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "platform/graphics/NSParagraphStyle.h"
#include "support/Accessibility.h"
#include "support/ActionTarget.h"
#include "support/Links.h"
#include "support/Tables.h" // eventAt

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

#include <gtest/gtest.h>

#include <functional>

namespace
{

using Messages = std::vector<std::string>;

class Listener final : public NSObject, public NSTextFieldDelegate
{
public:
    void controlTextDidChange(NSTextField* field) override { hear("change ", *field); }
    void controlTextDidEndEditing(NSTextField* field) override { hear("end ", *field); }

    Messages messages;
    std::function<void()> onMessage = [] {};

private:
    void hear(const char* what, const NSTextField& field)
    {
        messages.push_back(what + utf8(field.stringValue()));
        onMessage();
    }
};

/// Counts the presses that nobody else takes.
class Ground final : public NSView
{
public:
    void mouseDown(NSEvent* /*event*/) override { ++presses; }
    void mouseUp(NSEvent* /*event*/) override { ++releases; }

    int presses = 0;
    int releases = 0;
};

class NSTextFieldTest : public testing::Test
{
protected:
    NSTextFieldTest()
    {
        window->initWithContentRect_styleMask(ground->frame(), NSWindowStyleMaskTitled);
        window->setContentView(ground);
        ground->addSubview(field);
        ground->addSubview(other);
        field->setDelegate(listener.get());
        field->setTarget(target.get());
        field->setAction(ActionTarget::kAction);
        window->makeKeyAndOrderFront();
        QApplication::processEvents();
    }

    QTextEdit& editor() { return *field->widget()->findChild<QTextEdit*>(); }

    static void key(int key, const char* types = "", Qt::KeyboardModifiers modifiers = {})
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, QString::fromUtf8(types));
        QApplication::sendEvent(QApplication::focusWidget(), &event);
    }
    static void type(const char* words)
    {
        for (const QChar character : QString::fromUtf8(words)) {
            key(0, QString(character).toUtf8().constData());
        }
    }
    /// What the pointer does at a point of the field, by way of the widget that is there.
    void pointer(QEvent::Type type, QPoint place)
    {
        QWidget& outer = *field->widget();
        QWidget* const child = outer.childAt(place);
        QWidget& hit = child != nullptr ? *child : outer;
        const QPointF scene = outer.mapTo(outer.window(), QPointF(place));
        const bool held = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, hit.mapFrom(&outer, place), scene, outer.mapToGlobal(QPointF(place)),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          held ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&hit, &event);
    }
    void click(QPoint place)
    {
        pointer(QEvent::MouseButtonPress, place);
        pointer(QEvent::MouseButtonRelease, place);
    }

    Ref<Listener> listener = make<Listener>();
    Ref<ActionTarget> target = make<ActionTarget>();
    Ref<NSWindow> window = make<NSWindow>();
    Ref<Ground> ground = [] {
        auto view = make<Ground>();
        view->initWithFrame(NSMakeRect(0.0, 0.0, 400.0, 300.0));
        return view;
    }();
    Ref<NSTextField> field = make<NSTextField>()->initWithFrame(NSMakeRect(20.0, 30.0, 200.0, 60.0));
    Ref<NSTextField> other = make<NSTextField>()->initWithFrame(NSMakeRect(20.0, 130.0, 200.0, 60.0));
};

TEST_F(NSTextFieldTest, DrawsItsFaceAndItsText)
{
    field->setStringValue(text("Anna"));
    other->selectText(nullptr);
    const Operations face{"fillColor white(1, 1)", "fillRect {{0, 0}, {200, 60}}",
                          "strokeColor white(0.5, 1)", "strokeRect {{0.5, 0.5}, {199, 59}} width 1"};
    Operations whole = face;
    whole.emplace_back("drawText \"Anna\" {{5, 3}, {190, 54}}");
    EXPECT_EQ(operationsOf(*field), whole);
    field->selectText(nullptr);
    EXPECT_EQ(operationsOf(*field), face) << "the toolkit shows what is being edited";
    other->selectText(nullptr);
    EXPECT_EQ(operationsOf(*field), whole);

    field->setBezeled(false);
    field->setDrawsBackground(false);
    field->setTextColor(NSColor::blueColor());
    field->setFont(NSFont::fontWithName_size("Arial Bold", 14.0));
    EXPECT_EQ(operationsOf(*field),
              Operations{"drawText \"Anna\" {{2, 0}, {196, 60}} font \"Arial Bold\" 14 color "
                         "calibratedRGB(0, 0, 1, 1)"});
    field->setTextColor(nullptr);
    field->setFont(nullptr);
    field->setEnabled(false);
    EXPECT_EQ(operationsOf(*field), Operations{"drawText \"Anna\" {{2, 0}, {196, 60}} color white(0.5, 1)"});
    field->cell()->setWraps(false);
    field->setEnabled(true);
    field->setFrame(NSMakeRect(0.0, 0.0, 30.0, 60.0));
    EXPECT_EQ(operationsOf(*field), Operations{"drawText \"A…\" {{2, 0}, {26, 60}}"});

    field->setCell(nullptr);
    EXPECT_EQ(operationsOf(*field), Operations{});
    field->setStringValue(text("Ben"));
    EXPECT_EQ(utf8(field->stringValue()), "");
}

TEST_F(NSTextFieldTest, IsEditedByTheToolkit)
{
    field->setStringValue(text("Anna"));
    field->selectText(nullptr);
    EXPECT_TRUE(field->isEditing());
    type("Zoë");
    EXPECT_EQ(utf8(field->stringValue()), "Zoë");
    EXPECT_EQ(std::exchange(listener->messages, {}), (Messages{"change Z", "change Zo", "change Zoë"}));
    key(Qt::Key_Z, "", Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "Anna") << "undone";
    type("x");
    listener->messages.clear();
    key(Qt::Key_Return, "\r");
    EXPECT_EQ(std::exchange(listener->messages, {}), Messages{"end Annax"});
    EXPECT_EQ(target->senders.size(), 1U);
    EXPECT_TRUE(field->isEditing()) << "the next text replaces this one";
    type("y");
    key(Qt::Key_Escape);
    EXPECT_EQ(utf8(field->stringValue()), "Annax");
    EXPECT_EQ(target->senders.size(), 1U);
    EXPECT_EQ(std::exchange(listener->messages, {}), (Messages{"change y", "end Annax"}));

    type("z");
    listener->messages.clear();
    key(Qt::Key_Tab, "\t");
    EXPECT_TRUE(other->isEditing());
    EXPECT_FALSE(field->isEditing());
    EXPECT_EQ(listener->messages, Messages{"end z"});
    EXPECT_EQ(target->senders.size(), 1U);
    key(Qt::Key_Backtab, "", Qt::ShiftModifier);
    EXPECT_TRUE(field->isEditing());
}

TEST_F(NSTextFieldTest, ShowsWhatTheProgramSetsWhileItIsEdited)
{
    field->selectText(nullptr);
    type("a");
    field->setStringValue(text("Ben"));
    EXPECT_EQ(editor().toPlainText(), "Ben");
    EXPECT_EQ(listener->messages, Messages{"change a"}) << "only what the user does";
    key(Qt::Key_End);
    type("!");
    key(Qt::Key_Escape);
    EXPECT_EQ(utf8(field->stringValue()), "Ben");
    field->setEditable(false);
    type("x");
    EXPECT_EQ(utf8(field->stringValue()), "Ben");
    EXPECT_TRUE(field->isEditing()) << "it can be selected still";
    field->setSelectable(false);
    EXPECT_FALSE(field->isEditing());
    EXPECT_EQ(field->widget()->findChild<QTextEdit*>(), nullptr);
    field->setEditable(true);
    EXPECT_TRUE(field->isSelectable());
    field->selectText(nullptr);
    type("Cem");
    EXPECT_EQ(utf8(field->stringValue()), "Cem");
}

TEST_F(NSTextFieldTest, LeavesTheCaretWhereItIs)
{
    field->selectText(nullptr);
    listener->onMessage = [&] {
        const std::string words = utf8(field->stringValue());
        field->setStringValue(text(words == "a" ? "A" : words == "Ab" ? "AB" : "ABC"));
    };
    type("abc");
    EXPECT_EQ(utf8(field->stringValue()), "ABC");
    listener->onMessage = [] {};
    key(Qt::Key_Left);
    field->setEnabled(true);
    field->setTextColor(NSColor::blueColor());
    field->setStringValue(text("ABC"));
    type("-");
    EXPECT_EQ(utf8(field->stringValue()), "AB-C");
    field->setTextColor(NSColor::blueColor());
    key(Qt::Key_Z, "", Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "ABC") << "what is the same can still be undone";
    field->setStringValue(text("D"));
    key(Qt::Key_Z, "", Qt::ControlModifier);
    EXPECT_EQ(utf8(field->stringValue()), "D") << "not what the program does";
    type("E");
    key(Qt::Key_Escape);
    const Ref<NSFont> bold = NSFont::fontWithName_size("Arial Bold", 14.0);
    field->setFont(bold);
    EXPECT_EQ(field->attributedStringValue()->runs()[0].attributes[NSFontAttributeName], bold.get())
        << "plain again";
    ground->setHidden(true);
    EXPECT_FALSE(field->isEditing());
}

TEST_F(NSTextFieldTest, SetsTheTextInPlaceOfItsOwn)
{
    // A centred link between lines that are longer than the field is high.
    const Ref<NSMutableAttributedString> words = make<NSMutableAttributedString>()->initWithAttributedString(
        LinkedText().link("here", url("a:1")).plain("\n2\n3\n4\n5\n6\n7\n8").text().get());
    const auto centred = make<NSMutableParagraphStyle>();
    centred->setAlignment(NSTextAlignment::Center);
    words->addAttribute_value_range(NSParagraphStyleAttributeName, Ref<NSParagraphStyle>(centred), {0, 5});
    OpenedLinks opened;
    field->setAllowsEditingTextAttributes(true);
    field->setAttributedStringValue(words);
    EXPECT_TRUE(field->attributedStringValue()->isEqual(words.get()));
    click(QPoint(10, 10));
    EXPECT_EQ(opened.take(), Messages{});
    click(QPoint(100, 10));
    EXPECT_EQ(opened.take(), Messages{"a:1"});
    key(Qt::Key_End, "", Qt::ControlModifier);
    type("!");
    EXPECT_GT(editor().verticalScrollBar()->value(), 0);
    other->selectText(nullptr);
    EXPECT_EQ(editor().verticalScrollBar()->value(), 0) << "from where the field draws";
    EXPECT_EQ(utf8(field->stringValue()), "here\n2\n3\n4\n5\n6\n7\n8!");
    const Ref<NSAttributedString> edited = field->attributedStringValue();
    EXPECT_NE(edited->attributesAtIndex_effectiveRange(4, nullptr)[NSParagraphStyleAttributeName], nullptr);
    EXPECT_EQ(edited->attributesAtIndex_effectiveRange(5, nullptr)[NSParagraphStyleAttributeName], nullptr);
}

TEST_F(NSTextFieldTest, KeepsAttributesWhereTheyCount)
{
    const auto rich = [] {
        Ref<NSMutableAttributedString> words =
            make<NSMutableAttributedString>()->initWithString(text("blue\nplain").get());
        words->addAttribute_value_range(NSForegroundColorAttributeName, NSColor::blueColor(), {0, 4});
        return words;
    };
    field->setAllowsEditingTextAttributes(true);
    field->setAttributedStringValue(rich());
    field->selectText(nullptr);
    key(Qt::Key_Home, "", Qt::ControlModifier);
    key(Qt::Key_End);
    type("r");
    const Ref<NSAttributedString> edited = field->attributedStringValue();
    EXPECT_EQ(utf8(edited->string()), "bluer\nplain");
    NSRange range;
    const NSColor* const color = edited->attribute_atIndex_longestEffectiveRange_inRange(
        NSForegroundColorAttributeName, 4, &range, {0, edited->length()});
    EXPECT_TRUE(color != nullptr && color->isEqual(NSColor::blueColor().get()));
    EXPECT_EQ(range, (NSRange{0, 5}));
    EXPECT_EQ(edited->attributesAtIndex_effectiveRange(7, nullptr)[NSForegroundColorAttributeName], nullptr);
    key(Qt::Key_Escape);
    EXPECT_TRUE(field->attributedStringValue()->isEqual(rich().get()));

    field->setAllowsEditingTextAttributes(false);
    key(Qt::Key_Delete);
    type("one");
    EXPECT_EQ(field->attributedStringValue()->runs().size(), 1U);
    EXPECT_EQ(utf8(field->stringValue()), "one");
    field->setAttributedStringValue(rich());
    key(Qt::Key_Home, "", Qt::ControlModifier);
    type("x");
    EXPECT_EQ(editor().document()->firstBlock().begin().fragment().charFormat().foreground().color(),
              QColor(Qt::black))
        << "what shows is what there is";
}

TEST_F(NSTextFieldTest, FollowsAClickedLink)
{
    OpenedLinks opened;
    field->setAttributedStringValue(
        LinkedText().link("link", text("a:1")).plain(" and more ").link("other", url("a:2")).text());
    field->setEditable(false);
    const QPoint link(12, 10);
    click(link);
    EXPECT_EQ(opened.take(), Messages{}) << "its attributes do not count";
    EXPECT_EQ(field->cursorRects().size(), 1U);
    field->setAllowsEditingTextAttributes(true);
    click(link);
    EXPECT_EQ(opened.take(), Messages{"a:1"});
    click(QPoint(55, 10));
    EXPECT_EQ(opened.take(), Messages{});
    pointer(QEvent::MouseButtonPress, link);
    pointer(QEvent::MouseMove, QPoint(26, 10));
    pointer(QEvent::MouseButtonRelease, QPoint(26, 10));
    EXPECT_EQ(opened.take(), Messages{}) << "a part of it was selected";
    pointer(QEvent::MouseButtonPress, link);
    pointer(QEvent::MouseButtonRelease, QPoint(100, 10));
    EXPECT_EQ(opened.take(), Messages{}) << "another link";
    key(Qt::Key_End);
    key(Qt::Key_Return, "\r");
    EXPECT_EQ(opened.take(), Messages{"a:2"}) << "the caret is on it";

    const auto hover = [&](QPoint place) {
        QWidget& outer = *field->widget();
        QWidget& hit = *outer.childAt(place);
        QMouseEvent move(QEvent::MouseMove, hit.mapFrom(&outer, QPointF(place)),
                         outer.mapTo(outer.window(), QPointF(place)), outer.mapToGlobal(QPointF(place)),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&hit, &move);
        return hit.cursor().shape();
    };
    EXPECT_EQ(hover(link), Qt::PointingHandCursor);
    EXPECT_EQ(hover(QPoint(55, 10)), Qt::IBeamCursor);
    field->setEnabled(false);
    field->setEditable(false);
    click(link);
    EXPECT_EQ(opened.take(), Messages{});
}

TEST_F(NSTextFieldTest, LeavesPressesToOthersWhereNothingCanBeSelected)
{
    click(QPoint(50, 10));
    EXPECT_EQ(ground->presses, 0);
    EXPECT_TRUE(field->isEditing());
    field->setSelectable(false);
    click(QPoint(50, 10));
    EXPECT_EQ(ground->presses, 1);
    EXPECT_EQ(ground->releases, 1);
    EXPECT_FALSE(field->isEditing());
    field->setEditable(true);
    field->setEnabled(false);
    click(QPoint(50, 10));
    field->selectText(nullptr);
    EXPECT_FALSE(field->isEditing());
    EXPECT_EQ(ground->presses, 1) << "it is disabled, not absent";
}

TEST_F(NSTextFieldTest, SurvivesWhatItsDelegateDoes)
{
    field->selectText(nullptr);
    listener->onMessage = [&] { field->setSelectable(false); };
    type("a");
    EXPECT_EQ(listener->messages, (Messages{"change a", "end a"}));
    EXPECT_FALSE(field->isEditing());

    const Weak<NSTextField> watched(field.get());
    field->setEditable(true);
    field->selectText(nullptr);
    listener->onMessage = [&] {
        if (field) {
            field->removeFromSuperview();
            field = nullptr;
        }
    };
    key(Qt::Key_Return, "\r");
    EXPECT_FALSE(watched.get());
    EXPECT_TRUE(target->senders.size() == 1U);

    field = other;
    const auto third = make<NSTextField>();
    third->setFrame(NSMakeRect(20.0, 200.0, 200.0, 60.0));
    ground->addSubview(third);
    field->setDelegate(listener.get());
    field->selectText(nullptr);
    listener->onMessage = [&] { third->setSelectable(false); };
    third->selectText(nullptr);
    EXPECT_FALSE(third->isEditing()) << "locked by the delegate of the field before";
    field->selectText(nullptr);
    listener->onMessage = [] {};
    listener = nullptr;
    type("b");
    ground->addSubview(make<NSView>());
    field->removeFromSuperview();
    EXPECT_FALSE(field->isEditing());
}

TEST_F(NSTextFieldTest, TellsWhatItSays)
{
    field->setStringValue(text("Anna"));
    EXPECT_EQ(utf8(field->accessibilityLabel()), "null");
    field->setSelectable(false);
    EXPECT_EQ(field->accessibilityRole(), NSAccessibilityRole::StaticText);
    EXPECT_EQ(utf8(field->accessibilityLabel()), "Anna");
}

} // namespace
