#include "phone_manager/ImportView.h"
#include "phone_manager/PageView.h"
#include "phone_manager/PhoneManager.h"
#include "phone_manager/PhotoImport.h"

#include "basic/bas_user_defaults.h"
#include "platform/appkit/NSApplication.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/NSColor.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"
#include "util/FileUtil.h"
#include "window/ZuSimpleButton.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

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

    /// Whether the view shows a text with `part` in it.
    static bool shows(NSView& view, const std::string& part)
    {
        return std::ranges::any_of(operationsOf(view), [&](const std::string& operation) {
            return operation.starts_with("draw") && operation.find(part) != std::string::npos;
        });
    }
    static bool shows(PhoneManager& manager, const std::string& part) { return shows(*manager.page(), part); }
    static bool showsInside(NSView& view, const std::string& part)
    {
        return shows(view, part) || std::ranges::any_of(view.subviews(), [&](const auto& each) {
                   return showsInside(*each, part);
               });
    }

    /// Presses the button, and the one that cancels once so many files have been copied.
    static void runImport(ImportView& view, std::size_t most = 1000)
    {
        view.importButton()->performClick(nullptr);
        const PhotoImport* photos = view.photoImport();
        while (photos != nullptr && photos->state() == PhotoImport::State::Running) {
            EXPECT_FALSE(view.importButton()->isEnabled());
            const std::size_t before = photos->finished();
            if (before == most) {
                view.cancelButton()->performClick(nullptr);
            } else {
                NSApplication::sharedApplication()->handlePendingEvents();
                EXPECT_LE(photos->finished(), before + 1) << "one with each turn";
            }
        }
        EXPECT_FALSE(view.cancelButton()->isEnabled());
    }

    std::set<std::string> filesIn(const std::filesystem::path& name) const
    {
        std::set<std::string> files;
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path() / name, error)) {
            files.insert(entry.path().filename().string());
        }
        return files;
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

    ZuToolButton& backups = *manager->buttons()[4];
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

TEST_F(PhoneManagerTest, ImportsAllPhotosWhileAnotherPageShows)
{
    choose("de");
    const std::string photos = FileUtil::GetResourcesDir()->UTF8String() + "Photos/";
    for (const std::string& name :
         std::vector<std::string>{"Importierte Fotos", "Importierte Fotos(1)", "chosen"}) {
        folder.write("s.json", name == "chosen" ? R"({"import_folder":"chosen"})" : "{}");
        const Ref<PhoneManager> manager = start();
        EXPECT_TRUE(manager->importView()->isHidden());
        manager->buttons()[3]->performClick(nullptr);
        EXPECT_FALSE(manager->importView()->isHidden());
        EXPECT_TRUE(showsInside(*manager->importView(), "2 photos"));
        manager->importView()->importButton()->performClick(nullptr);
        manager->buttons()[0]->performClick(nullptr);
        EXPECT_TRUE(manager->importView()->isHidden());
        runImport(*manager->importView());
        EXPECT_TRUE(showsInside(*manager->importView(), "2 Fotos sind jetzt in"));
        for (const char* file : {"broken.png", "square.png"}) {
            EXPECT_EQ(folder.read(name + "/" + file), folder.read(photos + file)) << name;
        }
    }
}

TEST_F(PhoneManagerTest, SaysHowAnImportEnded)
{
    struct Case {
        std::set<std::string> files;
        const char* folder;
        std::size_t most;
        std::set<std::string> imported;
        const char* shown;
    };
    folder.write("a.jpg", "a");
    folder.write("b.jpg", "b");
    for (const Case& each : {
             Case{{"a.jpg", "b.jpg"}, "1/new", 1000, {"a.jpg", "b.jpg"}, "2 photos are in “"},
             Case{{"a.jpg", "b.jpg"}, "2/new", 1, {"a.jpg"}, "One photo is in “"},
             Case{{"a.jpg", "b.jpg"}, "3/new", 0, {}, "The import was cancelled."},
             Case{{"a.jpg", "missing.jpg"}, "4/new", 1000, {"a.jpg"}, "Not copied: missing.jpg"},
             Case{{"missing.jpg"}, "5/new/", 1000, {}, "No photo was copied."},
             Case{{"a.jpg"}, "b.jpg/new", 1000, {}, "nothing can be written there"},
             Case{{"a.jpg"}, "b.jpg", 1000, {}, "nothing can be written there"},
             Case{{}, "6/new", 1000, {}, "There is nothing to import."},
         }) {
        const Ref<ImportView> view = make<ImportView>()->initWithFrame(NSMakeRect(0.0, 0.0, 460.0, 372.0));
        std::vector<std::filesystem::path> files;
        for (const std::string& name : each.files) {
            files.push_back(folder.path() / name);
        }
        view->setFiles_folder(files, folder.path() / each.folder);
        runImport(*view, each.most);
        EXPECT_TRUE(showsInside(*view, each.shown)) << each.folder;
        EXPECT_EQ(view->importButton()->isEnabled(), !files.empty());
        EXPECT_EQ(filesIn(each.folder), each.imported) << each.folder;
        EXPECT_EQ(exists(folder.path() / std::string(each.folder, 1)), !each.imported.empty()) << each.folder;
    }
}

TEST_F(PhoneManagerTest, StopsAnImportWhosePageIsGone)
{
    folder.write("a.jpg", "a");
    folder.write("b.jpg", "b");
    Ref<ImportView> view = make<ImportView>()->initWithFrame(NSMakeRect(0.0, 0.0, 460.0, 372.0));
    view->setFiles_folder({folder.path() / "a.jpg", folder.path() / "b.jpg"}, folder.path() / "new");
    view->importButton()->performClick(nullptr);
    const Ref<PhotoImport> photos = view->photoImport();
    while (photos->finished() == 0) {
        NSApplication::sharedApplication()->handlePendingEvents();
    }
    view = nullptr;
    EXPECT_EQ(photos->state(), PhotoImport::State::Cancelled);
    NSApplication::sharedApplication()->handlePendingEvents();
    EXPECT_EQ(filesIn("new"), std::set<std::string>{"a.jpg"});
}

} // namespace
