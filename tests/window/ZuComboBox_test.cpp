#include "window/ZuComboBox.h"

#include "platform/foundation/NSMutableArray.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

class ZuComboBoxTest : public testing::Test
{
protected:
    std::size_t placeOf(const char* name) { return comboBox->indexOfItemWithStringValue(text(name).get()); }
    std::string valueAt(std::int64_t index)
    {
        const Ref<NSObject> value = comboBox->comboBox_objectValueForItemAtIndex(comboBox.get(), index);
        return value ? dynamic_cast<NSString&>(*value).UTF8String() : "null";
    }

    Ref<ZuComboBox> comboBox = make<ZuComboBox>();
};

TEST_F(ZuComboBoxTest, IsSetUpOnce)
{
    EXPECT_EQ(comboBox->values_(), nullptr);
    EXPECT_EQ(valueAt(0), "null");
    EXPECT_EQ(placeOf("A"), NSNotFound);
    comboBox->awakeFromNib();
    EXPECT_TRUE(comboBox->usesDataSource());
    EXPECT_EQ(comboBox->dataSource(), comboBox);
    EXPECT_EQ(comboBox->delegate(), comboBox);

    comboBox->values_()->addObject(text("A"));
    comboBox->keys_()->addObject(text("a"));
    comboBox->setDelegate(nullptr);
    comboBox->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 24.0));
    comboBox->awakeFromNib();
    EXPECT_EQ(comboBox->delegate(), nullptr) << "the application's";
    EXPECT_EQ(valueAt(0), "A");
    EXPECT_EQ(comboBox->keys_()->count(), 1U);
}

TEST_F(ZuComboBoxTest, ListsItsValues)
{
    comboBox->initWithFrame(NSMakeRect(0.0, 0.0, 100.0, 24.0));
    EXPECT_EQ(comboBox->numberOfItemsInComboBox(comboBox.get()), 0);
    EXPECT_EQ(valueAt(0), "null");
    EXPECT_EQ(placeOf(""), NSNotFound);
    for (const char* name : {"A", "B", "B"}) {
        comboBox->values_()->addObject(text(name));
    }
    EXPECT_EQ(comboBox->numberOfItemsInComboBox(comboBox.get()), 3);
    EXPECT_EQ(valueAt(2), "B");
    for (const std::int64_t index :
         {std::int64_t{-1}, std::int64_t{3}, std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_EQ(valueAt(index), "null") << index;
    }
    EXPECT_EQ(placeOf("B"), 1U) << "the first";
    EXPECT_EQ(placeOf("C"), NSNotFound);
    EXPECT_EQ(comboBox->comboBox_indexOfItemWithStringValue(comboBox.get(), text("B").get()), 1U);
    EXPECT_EQ(utf8(comboBox->comboBox_completedString(comboBox.get(), text("a").get())), "a");
}

} // namespace
