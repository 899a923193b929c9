#include "phone_manager/PageView.h"
#include "phone_manager/PhoneManager.h"

#include "basic/bas_user_defaults.h"
#include "platform/graphics/NSColor.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

class PhoneManagerTest : public testing::Test
{
protected:
    Ref<PhoneManager> start()
    {
        return make<PhoneManager>()->initWithSettingsFile((folder.path() / "s.json").string());
    }

    /// Whether the page shows a text with `part` in it.
    static bool shows(PhoneManager& manager, const std::string& part)
    {
        return std::ranges::any_of(operationsOf(*manager.page()), [&](const std::string& operation) {
            return operation.starts_with("drawText") && operation.find(part) != std::string::npos;
        });
    }

    TemporaryFolder folder;
};

TEST_F(PhoneManagerTest, TakesItsColoursFromTheSettings)
{
    folder.write("s.json",
                 R"({"color_border":"255,0,51","icon_offset":30,"kind":"photos","opened_photos":1})");
    const Ref<PhoneManager> manager = start();
    for (const Ref<ZuToolButton>& button : manager->buttons()) {
        EXPECT_EQ(button->color_border()->description(), "sRGB(1, 0, 0.2, 1)");
        EXPECT_EQ(button->color_background()->description(), "sRGB(0, 0, 1, 1)") << "not in the file";
        EXPECT_EQ(button->offset(), 30);
    }
    EXPECT_TRUE(shows(*manager, "Photos"));
    EXPECT_TRUE(shows(*manager, "Opened 1 time."));
}

TEST_F(PhoneManagerTest, RemembersWhatWasChanged)
{
    std::string color;
    {
        const Ref<PhoneManager> manager = start();
        EXPECT_TRUE(shows(*manager, "There are no settings"));
        manager->buttons()[1]->performClick(nullptr);
        manager->buttons()[1]->performClick(nullptr);
        manager->buttons().back()->performClick(nullptr);
        color = manager->buttons()[0]->color_border()->description();
    }
    const Ref<PhoneManager> manager = start();
    EXPECT_TRUE(shows(*manager, "Contacts"));
    EXPECT_TRUE(shows(*manager, "Opened 2 times."));
    EXPECT_EQ(manager->buttons()[0]->color_border()->description(), color);
    manager->buttons().back()->performClick(nullptr);
    EXPECT_NE(manager->buttons()[0]->color_border()->description(), color);
}

TEST_F(PhoneManagerTest, LeavesADamagedFileAlone)
{
    const std::string damaged = "{\"color_border\": \"32,1";
    folder.write("s.json", damaged);
    const Ref<PhoneManager> manager = start();
    EXPECT_TRUE(shows(*manager, "cannot be read"));
    for (const Ref<ZuToolButton>& button : manager->buttons()) {
        button->performClick(nullptr);
    }
    EXPECT_TRUE(shows(*manager, "cannot be read"));
    EXPECT_TRUE(shows(*manager, "Opened 1 time.")) << "it works all the same";
    EXPECT_EQ(folder.read("s.json"), damaged);
}

TEST_F(PhoneManagerTest, TakesWhatIsOutOfRange)
{
    folder.write("s.json", R"({"opened_photos":2147483647,"kind":"faxes"})");
    const Ref<PhoneManager> manager = start();
    EXPECT_TRUE(shows(*manager, "Messages"));
    manager->buttons()[2]->performClick(nullptr);
    EXPECT_TRUE(shows(*manager, "Opened 1000000000 times."));
    const std::string endless = "/" + std::string(5000, 'x');
    EXPECT_TRUE(shows(*make<PhoneManager>()->initWithSettingsFile(endless), "cannot be read"));
}

} // namespace
