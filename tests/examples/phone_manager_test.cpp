#include "phone_manager/PageView.h"
#include "phone_manager/PhoneManager.h"

#include "basic/bas_user_defaults.h"
#include "platform/foundation/NSUserDefaults.h"
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
    PhoneManagerTest()
    {
        NSUserDefaults::setStandardDomain(text((folder.path() / "defaults.ini").c_str()).get());
        choose("none such");
    }
    ~PhoneManagerTest() override { NSUserDefaults::setStandardDomain(nullptr); }

    static void choose(const char* language)
    {
        NSUserDefaults::standardUserDefaults()->setObject_forKey(text(language).get(), text("Tavori").get());
    }

    Ref<PhoneManager> start()
    {
        return make<PhoneManager>()->initWithSettingsFile((folder.path() / "s.json").string());
    }

    /// Whether the page shows a text with `part` in it.
    static bool shows(PhoneManager& manager, const std::string& part)
    {
        return std::ranges::any_of(operationsOf(*manager.page()), [&](const std::string& operation) {
            return operation.starts_with("draw") && operation.find(part) != std::string::npos;
        });
    }

    TemporaryFolder folder;
};

TEST_F(PhoneManagerTest, TakesTheSettingsAsFarAsTheyGo)
{
    folder.write(
        "s.json",
        R"({"color_border":"255,0,51","icon_offset":30,"kind":"backups","opened_photos":2147483647})");
    const Ref<PhoneManager> manager = start();
    for (const Ref<ZuToolButton>& button : manager->buttons()) {
        EXPECT_EQ(button->color_border()->description(), "sRGB(1, 0, 0.2, 1)");
        EXPECT_EQ(button->color_background()->description(), "sRGB(0, 0, 1, 1)") << "not in the file";
        EXPECT_EQ(button->offset(), 30);
    }
    EXPECT_TRUE(shows(*manager, "Messages")) << "not the page of the unavailable kind";
    manager->buttons()[2]->performClick(nullptr);
    EXPECT_TRUE(shows(*manager, "Opened 1000000000 times."));
    EXPECT_TRUE(shows(*manager, "square.png"));
    EXPECT_TRUE(shows(*manager, "78.0 B"));
    EXPECT_FALSE(shows(*manager, "broken.png"));
    manager->buttons()[0]->performClick(nullptr);
    EXPECT_FALSE(shows(*manager, "square.png"));

    ZuToolButton& backups = *manager->buttons()[3];
    EXPECT_FALSE(backups.isEnabled());
    EXPECT_EQ(backups.image()->size(), (NSSize{32.0, 32.0}));
    for (const int place : {20, 44}) { // in and beyond the quarter that has as many pixels as points
        EXPECT_EQ(pixel(*backups.image(), place, 50), "#337f7f7f");
    }
}

TEST_F(PhoneManagerTest, RemembersThePageAndSpeaksTheChosenLanguage)
{
    choose("de");
    const Ref<PhoneManager> manager = start();
    EXPECT_TRUE(shows(*manager, "Nachrichten"));
    manager->buttons()[1]->performClick(nullptr);
    EXPECT_TRUE(shows(*manager, "Kontakte wird"));
    EXPECT_TRUE(shows(*start(), "Einmal"));
}

TEST_F(PhoneManagerTest, LeavesADamagedFileAlone)
{
    EXPECT_TRUE(shows(*start(), "There are no settings"));
    const std::string damaged = "{\"color_border\": \"32,1";
    folder.write("s.json", damaged);
    const Ref<PhoneManager> manager = start();
    for (const Ref<ZuToolButton>& button : manager->buttons()) {
        button->performClick(nullptr);
    }
    EXPECT_TRUE(shows(*manager, "cannot be read"));
    EXPECT_TRUE(shows(*manager, "Opened once.")) << "it works all the same";
    EXPECT_EQ(folder.read("s.json"), damaged);
}

} // namespace
