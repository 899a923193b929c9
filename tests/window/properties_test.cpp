// What all controls have in common: properties that interface files set by name, and a frame.

#include "platform/foundation/ClassTable.h"
#include "platform/foundation/NSNumber.h"
#include "platform/graphics/NSColor.h"
#include "platform/graphics/NSFont.h"
#include "support/Drawing.h"
#include "window/DragDropView.h"
#include "window/PelSMSTableData.h"
#include "window/PelSmsTableCheckImageCell.h"
#include "window/ZuBorderView.h"
#include "window/ZuBox.h"
#include "window/ZuCenterTextFieldCell.h"
#include "window/ZuCheckImageCell.h"
#include "window/ZuCheckTableHeaderView.h"
#include "window/ZuComboBox.h"
#include "window/ZuFlippedView.h"
#include "window/ZuImageCell.h"
#include "window/ZuLine.h"
#include "window/ZuMultiSelectComboBox.h"
#include "window/ZuMultiSelectComboBoxData.h"
#include "window/ZuOutlineImageCell.h"
#include "window/ZuOutlineItem.h"
#include "window/ZuOutlineView.h"
#include "window/ZuProgressView.h"
#include "window/ZuSimpleButton.h"
#include "window/ZuSmsImageCell.h"
#include "window/ZuTableCheckImageCell.h"
#include "window/ZuTableCornerView.h"
#include "window/ZuTableHeaderCell.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

class ControlTest : public testing::Test
{
protected:
    template <class T> static Ref<T> made()
    {
        const NSRect frame = NSMakeRect(1.0, 2.0, 30.0, 40.0);
        Ref<T> control = make<T>()->initWithFrame(frame);
        EXPECT_EQ(control->frame(), frame);
        EXPECT_EQ(control->superview(), nullptr);
        return control;
    }

    /// Sets the property `key` to a value of its own and sees that `getter` answers it.
    template <class T, class Value>
    void expectSet(const Ref<T>& control, const char* key, Value (T::*getter)() const)
    {
        if constexpr (std::is_same_v<Value, Ref<NSColor>>) {
            expectSet(control, key, getter, NSColor::colorWithCalibratedWhite_alpha(0.5, 0.5));
        } else {
            const int number = ++_number;
            EXPECT_TRUE(control->setValue_forKey(NSNumber::numberWithInteger(number).get(), key)) << key;
            EXPECT_EQ(((*control).*getter)(), static_cast<Value>(number)) << key;
        }
    }
    template <class T, class Object>
    void expectSet(const Ref<T>& control, const char* key, Ref<Object> (T::*getter)() const,
                   const Ref<Object>& value)
    {
        EXPECT_TRUE(control->setValue_forKey(value.get(), key)) << key;
        EXPECT_EQ(((*control).*getter)(), value) << key;
        EXPECT_EQ(control->valueForKey(key), value) << key;
    }

private:
    int _number = 1;
};

TEST_F(ControlTest, TakesPropertiesByNameAndItsFrame)
{
    const Ref<ZuSimpleButton> button = made<ZuSimpleButton>();
    expectSet(button, "color_normal_font", &ZuSimpleButton::getColor_normal_font);
    expectSet(button, "color_hover_font", &ZuSimpleButton::color_hover_font);
    expectSet(button, "color_normal_border", &ZuSimpleButton::color_normal_border);
    expectSet(button, "color_normal_background", &ZuSimpleButton::color_normal_background);
    expectSet(button, "color_hover_border", &ZuSimpleButton::color_hover_border);
    expectSet(button, "color_hover_background", &ZuSimpleButton::color_hover_background);
    expectSet(button, "xRadius_", &ZuSimpleButton::xRadius_);
    expectSet(button, "yRadius_", &ZuSimpleButton::yRadius_);

    const Ref<ZuProgressView> progress = made<ZuProgressView>();
    expectSet(progress, "color_border_", &ZuProgressView::color_border_);
    expectSet(progress, "color_unuse_", &ZuProgressView::color_unuse_);
    expectSet(progress, "color_used_", &ZuProgressView::color_used_);
    expectSet(progress, "xRadius_", &ZuProgressView::xRadius_);
    expectSet(progress, "yRadius_", &ZuProgressView::yRadius_);
    expectSet(progress, "total_", &ZuProgressView::total_);
    expectSet(progress, "step_", &ZuProgressView::step_);

    const Ref<ZuLine> line = made<ZuLine>();
    expectSet(line, "type_", &ZuLine::type_);
    expectSet(line, "style_", &ZuLine::style_);
    expectSet(line, "color_", &ZuLine::color_);

    const Ref<ZuBox> box = made<ZuBox>();
    expectSet(box, "color", &ZuBox::color);
    expectSet(box, "height", &ZuBox::height);

    const Ref<ZuBorderView> border = made<ZuBorderView>();
    expectSet(border, "color_border_", &ZuBorderView::color_border_);
    expectSet(border, "width_border_", &ZuBorderView::width_border_);

    const Ref<ZuOutlineItem> item = make<ZuOutlineItem>()->init();
    expectSet(item, "number", &ZuOutlineItem::number);
    expectSet(item, "id_", &ZuOutlineItem::id_);
    expectSet(item, "isEnable", &ZuOutlineItem::isEnable);
    expectSet(item, "isChecked", &ZuOutlineItem::isChecked);
    expectSet(item, "indent_item", &ZuOutlineItem::indent_item);
    expectSet(item, "gap_logo_to_text", &ZuOutlineItem::gap_logo_to_text);

    const Ref<ZuImageCell> imageCell = make<ZuImageCell>();
    expectSet(imageCell, "description", &ZuImageCell::description, text("Lake"));
    expectSet(imageCell, "offset", &ZuImageCell::offset);
    expectSet(imageCell, "font", &ZuImageCell::font, NSFont::fontWithName_size("Arial", 15.0));

    const Ref<ZuTableCheckImageCell> checkCell = make<ZuTableCheckImageCell>();
    expectSet(checkCell, "isChecked", &ZuTableCheckImageCell::isChecked);
    expectSet(checkCell, "imageOffset", &ZuTableCheckImageCell::imageOffset);

    const Ref<ZuCheckTableHeaderView> header = made<ZuCheckTableHeaderView>();
    expectSet(header, "showChecked", &ZuCheckTableHeaderView::showChecked);
    expectSet(header, "isChecked", &ZuCheckTableHeaderView::isChecked);
    expectSet(header, "imageOffset", &ZuCheckTableHeaderView::imageOffset);

    const Ref<ZuOutlineImageCell> outlineCell = make<ZuOutlineImageCell>();
    expectSet(outlineCell, "item", &ZuOutlineImageCell::item, item);

    const Ref<ZuCheckImageCell> buttonCell = make<ZuCheckImageCell>();
    expectSet(buttonCell, "item", &ZuCheckImageCell::item, item);
    expectSet(buttonCell, "flagValue", &ZuCheckImageCell::flagValue);
    EXPECT_TRUE(buttonCell->performSelector_withObject({"SetContactCheck"}, nullptr));

    const Ref<PelSMSTableData> data = make<PelSMSTableData>()->init();
    expectSet(data, "progressBarDouble", &PelSMSTableData::progressBarDouble);
    expectSet(data, "check", &PelSMSTableData::check, text("check"));
    expectSet(data, "title", &PelSMSTableData::title, text("title"));
    expectSet(data, "contactsName", &PelSMSTableData::contactsName, text("Anna"));
    expectSet(data, "phoneNumber", &PelSMSTableData::phoneNumber, text("1234"));
    expectSet(data, "isChecked", &PelSMSTableData::isChecked);
    EXPECT_TRUE(
        data->setValue_forKey(blankImage("face", 1.0, 1.0).get(), "image")); // of which it keeps a copy
    EXPECT_EQ(data->image()->name(), "face");

    const Ref<ZuSmsImageCell> smsCell = make<ZuSmsImageCell>();
    expectSet(smsCell, "isTitleAlignCenter", &ZuSmsImageCell::isTitleAlignCenter);
    expectSet(smsCell, "sentSmsType", &ZuSmsImageCell::sentSmsType);
    expectSet(smsCell, "buttonContents", &ZuSmsImageCell::buttonContents, text("See you"));

    const Ref<PelSmsTableCheckImageCell> smsButton = make<PelSmsTableCheckImageCell>();
    expectSet(smsButton, "isTitleAlignCenter", &PelSmsTableCheckImageCell::isTitleAlignCenter);
    expectSet(smsButton, "editNameFlag", &PelSmsTableCheckImageCell::editNameFlag);
    expectSet(smsButton, "sentSmsType", &PelSmsTableCheckImageCell::sentSmsType);
    expectSet(smsButton, "buttonContents", &PelSmsTableCheckImageCell::buttonContents, text("See you"));

    const Ref<ZuOutlineView> outline = made<ZuOutlineView>();
    expectSet(outline, "backgroundImage_", &ZuOutlineView::backgroundImage_, blankImage("", 1.0, 1.0));

    const Ref<DragDropView> drops = made<DragDropView>();
    expectSet(drops, "filePostfix", &DragDropView::filePostfix, text("vcf"));
    EXPECT_TRUE(drops->setValue_forKey(item.get(), "delegate"));
    EXPECT_EQ(drops->delegate(), item);

    const Ref<ZuComboBox> comboBox = made<ZuComboBox>();
    expectSet<NSComboBox>(comboBox, "dataSource", &NSComboBox::dataSource, Ref<NSObject>(item));
    EXPECT_TRUE(comboBox->setValue_forKey(NSNumber::numberWithInteger(0).get(), "usesDataSource"));
    EXPECT_FALSE(comboBox->usesDataSource());

    const Ref<ZuMultiSelectComboBoxData> choice = make<ZuMultiSelectComboBoxData>();
    expectSet(choice, "isCheck", &ZuMultiSelectComboBoxData::isCheck);
    expectSet(choice, "key", &ZuMultiSelectComboBoxData::key, text("a"));
    expectSet(choice, "value", &ZuMultiSelectComboBoxData::value, text("A"));

    EXPECT_EQ(made<ZuMultiSelectComboBox>()->classTable().name, "ZuMultiSelectComboBox");
    EXPECT_EQ(make<ZuCenterTextFieldCell>()->classTable().name, "ZuCenterTextFieldCell");
    EXPECT_EQ(make<ZuTableHeaderCell>()->classTable().name, "ZuTableHeaderCell");
    EXPECT_EQ(made<ZuFlippedView>()->classTable().name, "ZuFlippedView");
    EXPECT_EQ(made<ZuTableCornerView>()->classTable().name, "ZuTableCornerView");
    made<ZuToolButton>();
}

} // namespace
