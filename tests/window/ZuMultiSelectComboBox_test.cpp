#include "window/ZuMultiSelectComboBox.h"

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSMutableArray.h"
#include "support/Drawing.h"
#include "window/ZuMultiSelectComboBoxData.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>

#include <array>

namespace
{

/// Counts how often it is asked for a pop-over.
class Asked : public NSObject
{
public:
    // The name is the message's.
    void PopOver(NSObject* comboBox) { senders.push_back(comboBox); }

    const ClassTable& classTable() const override
    {
        static constexpr std::array kSelectors{selector<&Asked::PopOver>("PopOver:")};
        static constexpr ClassTable kTable{"Asked", &NSObject::table, {}, kSelectors};
        return kTable;
    }

    std::vector<NSObject*> senders; // not retained: only compared
};

class ZuMultiSelectComboBoxTest : public testing::Test
{
protected:
    ZuMultiSelectComboBoxTest() { comboBox->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 24.0)); }

    Ref<ZuMultiSelectComboBoxData> add(const char* value)
    {
        Ref<ZuMultiSelectComboBoxData> choice = make<ZuMultiSelectComboBoxData>();
        choice->setValue(value != nullptr ? text(value) : nullptr);
        comboBox->values_()->addObject(choice);
        return choice;
    }

    Ref<ZuMultiSelectComboBox> comboBox = make<ZuMultiSelectComboBox>();
};

TEST_F(ZuMultiSelectComboBoxTest, ListsCheckedValuesWhenItsPopOverCloses)
{
    const Ref<ZuMultiSelectComboBoxData> a = add("A");
    const Ref<ZuMultiSelectComboBoxData> b = add("B");
    const Ref<ZuMultiSelectComboBoxData> unnamed = add(nullptr);
    comboBox->setStringValue(text("before"));
    struct Case {
        bool a, b, unnamed;
        const char* expected;
    };
    for (const Case& each : {Case{false, false, false, "before"},
                             {true, false, false, "A,"},
                             {true, true, false, "A,B,"},
                             {false, true, true, "B,,"},
                             {false, false, false, "B,,"},
                             {false, false, true, ","}}) {
        const std::string earlier = utf8(comboBox->stringValue());
        a->setIsCheck(each.a);
        b->setIsCheck(each.b);
        unnamed->setIsCheck(each.unnamed);
        EXPECT_EQ(utf8(comboBox->stringValue()), earlier) << "checking alone changes nothing";
        comboBox->popoverDidClose(nullptr);
        EXPECT_EQ(utf8(comboBox->stringValue()), each.expected);
    }

    comboBox->awakeFromNib();
    EXPECT_EQ(comboBox->values_()->count(), 3U) << "it is set up once";
    EXPECT_FALSE(comboBox->usesDataSource());
    const Ref<ZuMultiSelectComboBox> allocated = make<ZuMultiSelectComboBox>();
    allocated->setCheckValue();
    allocated->awakeFromNib();
    EXPECT_EQ(allocated->values_()->count(), 0U);
}

TEST_F(ZuMultiSelectComboBoxTest, AsksItsDelegateForThePopOver)
{
    const Ref<Asked> delegate = make<Asked>();
    comboBox->mouseDown(nullptr); // goes to no one
    comboBox->setDelegate(delegate.get());
    comboBox->mouseDown(nullptr);
    EXPECT_EQ(delegate->senders, (std::vector<NSObject*>{comboBox.get()}));

    QWidget& peer = *comboBox->widget()->findChild<QComboBox*>();
    const auto key = [&](int code, const char* typed, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, code, modifiers, typed);
        QCoreApplication::sendEvent(&peer, &event);
        return std::exchange(delegate->senders, {}).size();
    };
    key(Qt::Key_Shift, "", Qt::NoModifier);
    EXPECT_EQ(key(Qt::Key_F4, "", Qt::NoModifier), 1U);
    EXPECT_EQ(key(Qt::Key_Down, "", Qt::AltModifier), 1U);
    EXPECT_EQ(key(Qt::Key_Down, "", Qt::NoModifier), 1U) << "there are no items to move through";
    EXPECT_EQ(key(Qt::Key_Space, " ", Qt::NoModifier), 0U);
    EXPECT_EQ(utf8(comboBox->stringValue()), " ") << "it is typed";
    comboBox->setEditable(false);
    EXPECT_EQ(key(Qt::Key_Space, " ", Qt::NoModifier), 1U);
    comboBox->setEnabled(false);
    comboBox->mouseDown(nullptr);
    EXPECT_TRUE(delegate->senders.empty());

    comboBox->setEnabled(true);
    const Ref<NSObject> deaf = make<NSObject>();
    comboBox->setDelegate(deaf.get());
    testing::internal::CaptureStderr();
    comboBox->mouseDown(nullptr);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "") << "it has no such method";
}

} // namespace
