#include "window/PelSMSTableData.h"

#include "platform/foundation/Weak.h"
#include "support/Drawing.h"

#include <gtest/gtest.h>

namespace
{

TEST(PelSMSTableDataTest, StoresWhatItIsGiven)
{
    const Ref<PelSMSTableData> row = make<PelSMSTableData>()->init();
    int data = 0;
    for (const bool isNew : {true, false}) {
        EXPECT_EQ(row->progressBarDouble(), 0.0) << isNew;
        EXPECT_EQ(row->check(), nullptr);
        EXPECT_EQ(row->image(), nullptr);
        EXPECT_EQ(row->title(), nullptr);
        EXPECT_EQ(row->contactsName(), nullptr);
        EXPECT_EQ(row->phoneNumber(), nullptr);
        EXPECT_EQ(row->isChecked(), 0);
        EXPECT_EQ(row->cUserdata(), nullptr);
        row->setProgressBarDouble(0.5);
        row->setCheck(text("check"));
        row->setImage(blankImage("face", 20.0, 10.0));
        row->setTitle(text("title"));
        row->setContactsName(text("Anna"));
        row->setPhoneNumber(text("+49 30 1234"));
        row->setIsChecked(-2);
        row->setCUserdata(&data);
        EXPECT_EQ(row->progressBarDouble(), 0.5);
        EXPECT_EQ(utf8(row->check()), "check");
        EXPECT_EQ(utf8(row->title()), "title");
        EXPECT_EQ(utf8(row->contactsName()), "Anna");
        EXPECT_EQ(utf8(row->phoneNumber()), "+49 30 1234");
        EXPECT_EQ(row->isChecked(), -2);
        EXPECT_EQ(row->cUserdata(), &data);
        row->init();
    }
}

TEST(PelSMSTableDataTest, KeepsAnImageOfItsOwn)
{
    Ref<PelSMSTableData> row = make<PelSMSTableData>()->init();
    const Ref<NSImage> original = blankImage("face", 20.0, 10.0);
    row->setImage(original);
    const Weak<NSImage> kept = row->image();
    EXPECT_NE(kept.get(), original);
    original->setName("another");
    EXPECT_EQ(kept.get()->name(), "face");
    EXPECT_EQ(kept.get()->size(), original->size());
    row = nullptr;
    EXPECT_EQ(kept.get(), nullptr);
}

} // namespace
