#include "phone_manager/BackupView.h"
#include "phone_manager/ContactsView.h"
#include "phone_manager/ImportView.h"
#include "phone_manager/MessagesView.h"
#include "phone_manager/PageView.h"
#include "phone_manager/PhoneManager.h"
#include "phone_manager/PhotoImport.h"

#include "basic/bas_user_defaults.h"
#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSArray.h"
#include "platform/foundation/NSIndexSet.h"
#include "platform/foundation/NSMutableArray.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/NSColor.h"
#include "support/Drawing.h"
#include "support/Links.h"
#include "support/Tables.h"
#include "support/TemporaryFolder.h"
#include "util/FileUtil.h"
#include "window/PelSmsTableCheckImageCell.h"
#include "window/ZuCheckTableHeaderView.h"
#include "window/ZuComboBox.h"
#include "window/ZuHyperlinkTextField.h"
#include "window/ZuMultiSelectComboBox.h"
#include "window/ZuMultiSelectComboBoxData.h"
#include "window/ZuOutlineView.h"
#include "window/ZuSimpleButton.h"
#include "window/ZuTableCheckImageCell.h"
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

    /// The contacts in their order: "o" if unchecked, "x" if checked, "-" if they cannot be, and "*" behind
    /// the name of one that is selected.
    static std::vector<std::string> rowsOf(const ContactsView& view)
    {
        std::vector<std::string> rows;
        NSTableView& shown = *view.tableView();
        for (std::int64_t row = 0; row < shown.numberOfRows(); ++row) {
            auto& cell = dynamic_cast<ZuTableCheckImageCell&>(*shown.preparedCellAtColumn_row(0, row));
            const char* check = !cell.isEnabled() ? "- " : cell.isChecked() == 1 ? "x " : "o ";
            rows.push_back(check + utf8(cell.stringValue()) + (shown.isRowSelected(row) ? "*" : ""));
        }
        return rows;
    }
    /// What the outline shows, each row with the name of its check image.
    static std::vector<std::string> rowsOf(const BackupView& view)
    {
        std::vector<std::string> rows;
        NSOutlineView& shown = *view.outlineView();
        for (std::int64_t row = 0; row < shown.numberOfRows(); ++row) {
            const NSCell& cell = *shown.preparedCellAtColumn_row(0, row);
            rows.push_back(utf8(cell.accessibilityLabel()) + ' ' + cell.image()->name());
        }
        return rows;
    }
    static void clickCheck(NSView& view, NSPoint point)
    {
        view.mouseDown(eventAt(view, point).get());
        view.mouseUp(eventAt(view, point, NSEventType::LeftMouseUp).get());
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
        R"({"color_border":"255,0,51","icon_offset":30,"kind":"calendar","opened_photos":2147483647})");
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

    ZuToolButton& calendar = *manager->buttons()[5];
    EXPECT_FALSE(calendar.isEnabled());
    EXPECT_EQ(calendar.image()->size(), (NSSize{32.0, 32.0}));
    for (const int place : {20, 44}) { // in and beyond the quarter that has as many pixels as points
        EXPECT_EQ(pixel(*calendar.image(), place, 50), "#337f7f7f");
    }
}

TEST_F(PhoneManagerTest, RemembersThePageAndSpeaksTheChosenLanguage)
{
    choose("de");
    const Ref<PhoneManager> manager = start();
    EXPECT_TRUE(shows(*manager, "Nachrichten"));
    EXPECT_TRUE(manager->contactsView()->isHidden());
    manager->buttons()[1]->performClick(nullptr);
    EXPECT_TRUE(shows(*manager, "Kontakte wird"));
    EXPECT_FALSE(manager->contactsView()->isHidden());
    EXPECT_TRUE(manager->backupView()->isHidden());
    EXPECT_TRUE(showsInside(*manager->contactsView(), "0 von 0 Kontakten")) << "there are none";
    EXPECT_EQ(manager->contactsView()->headerView()->isChecked(), 0);
    EXPECT_TRUE(shows(*start(), "Einmal"));
    manager->buttons()[4]->performClick(nullptr);
    EXPECT_TRUE(manager->contactsView()->isHidden());
    EXPECT_FALSE(manager->backupView()->isHidden());
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

TEST_F(PhoneManagerTest, ReadsContactsOneALine)
{
    folder.write("contacts.txt", "Zoë; Work; 1 2\n\nnobody; Work\nBen;Family;2; fixed\nAnn; Family; 3; odd");
    const std::vector<Contact> contacts = readContacts(folder.path() / "contacts.txt");
    ASSERT_EQ(contacts.size(), 3U);
    EXPECT_EQ(contacts[0].name + "|" + contacts[0].group + "|" + contacts[0].number, "Zoë|Work|1 2");
    EXPECT_TRUE(contacts[1].isFixed);
    EXPECT_FALSE(contacts[2].isFixed);
    EXPECT_TRUE(readContacts(folder.path() / "none").empty());
}

TEST_F(PhoneManagerTest, ReadsMessagesOneALine)
{
    folder.write("messages.txt",
                 "received; Ann; 1; Hello; you\nsent;;2;x\nlost; Ben; 3; y\nfailed; Cem; 4\n\n"
                 "failed; Cem; 4; z");
    const std::vector<Message> messages = readMessages(folder.path() / "messages.txt");
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(messages[0].kind, Message::Kind::Received);
    EXPECT_EQ(messages[0].name + "|" + messages[0].number + "|" + messages[0].text, "Ann|1|Hello; you");
    EXPECT_EQ(messages[1].name + "|" + messages[1].number + "|" + messages[1].text, "|2|x");
    EXPECT_EQ(messages[2].kind, Message::Kind::Failed);
    EXPECT_TRUE(readMessages(folder.path() / "none").empty());
}

TEST_F(PhoneManagerTest, FiltersMessagesByNameAndKind)
{
    using Kind = Message::Kind;
    const auto view = make<MessagesView>();
    view->initWithFrame(NSMakeRect(0.0, 0.0, 460.0, 400.0));
    view->setMessages({{Kind::Received, "Ann", "1", "a"},
                       {Kind::Failed, "Ben", "2", "b"},
                       {Kind::Sent, "", "3", "c"},
                       {Kind::Sent, "Joanna", "4", "d"}});
    NSTableView& list = *view->tableView();
    const auto rows = [&] {
        std::string all;
        for (std::int64_t row = 0; row < list.numberOfRows(); ++row) {
            const auto& cell =
                dynamic_cast<PelSmsTableCheckImageCell&>(*list.preparedCellAtColumn_row(0, row));
            all += utf8(cell.title()) + (cell.sentSmsType() == 5 ? "! " : " ");
        }
        return all;
    };
    const auto filter = [&](const char* name) {
        view->nameFilter()->setStringValue(text(name));
        view->filter(nullptr);
        return rows();
    };
    EXPECT_EQ(utf8(view->nameFilter()->stringValue()), "Everyone");
    EXPECT_EQ(view->nameFilter()->values_()->count(), 5U);
    EXPECT_EQ(rows(), "Ann Ben! 3 Joanna ");
    EXPECT_EQ(filter("ANN"), "Ann Joanna ");
    EXPECT_EQ(filter("nobody"), "");
    EXPECT_EQ(filter(""), "Ann Ben! 3 Joanna ");
    view->setCheckItem(NSNumber::numberWithInteger(1).get());
    EXPECT_EQ(rows(), "Ann Ben! ");
    EXPECT_EQ(utf8(view->kindFilter()->stringValue()), "Received,Sent,Failed,");
    view->kindFilter()->popoverDidClose(nullptr);
    EXPECT_EQ(utf8(view->kindFilter()->stringValue()), "Received,Failed,");
    EXPECT_TRUE(showsInside(*view, "2 of 4 messages"));
}

TEST_F(PhoneManagerTest, RenamesAllMessagesOfANumber)
{
    using Kind = Message::Kind;
    const auto view = make<MessagesView>();
    view->initWithFrame(NSMakeRect(0.0, 0.0, 460.0, 400.0));
    view->setMessages(
        {{Kind::Received, "Ann", "1", "a"}, {Kind::Sent, "Ben", "2", "b"}, {Kind::Sent, "Ann", "1", "c"}});
    NSTableView& list = *view->tableView();
    const auto press = [&](double x, double y) { list.mouseDown(eventAt(list, {x, y}).get()); };
    press(20.0, 20.0);
    EXPECT_EQ(view->nameField(), nullptr) << "not while names are not being edited";
    const auto window = make<NSWindow>();
    window->initWithContentRect_styleMask(view->frame(), NSWindowStyleMaskTitled);
    window->setContentView(view);
    window->makeKeyAndOrderFront();
    NSApplication::sharedApplication()->handlePendingEvents();
    view->editButton()->performClick(nullptr);
    press(200.0, 20.0);
    EXPECT_EQ(view->nameField(), nullptr) << "beside the name";
    press(20.0, 20.0);
    ASSERT_NE(view->nameField(), nullptr);
    EXPECT_EQ(utf8(view->nameField()->stringValue()), "Ann");
    view->nameField()->setStringValue(text("Anna"));
    press(20.0, 70.0);
    EXPECT_EQ(view->messages()[0].name + view->messages()[1].name + view->messages()[2].name, "AnnaBenAnna")
        << "a press elsewhere ends editing";
    EXPECT_EQ(utf8(view->nameField()->stringValue()), "Ben");
    EXPECT_EQ(list.subviews().size(), 1U);
}

TEST_F(PhoneManagerTest, ChecksContactsWhichStaySoWhenTheyAreSorted)
{
    using Rows = std::vector<std::string>;
    constexpr double kOnCheck = 14.0;
    const Ref<ContactsView> view = make<ContactsView>()->initWithFrame(NSMakeRect(0.0, 0.0, 460.0, 372.0));
    view->setContacts({{"Ben", "Work", "2"}, {"Ann", "Family", "3"}, {"Cem", "Family", "1", true}});
    NSTableView& table = *view->tableView();
    ZuCheckTableHeaderView& header = *view->headerView();
    const auto clickRow = [&](std::int64_t row) {
        clickCheck(table, {kOnCheck, table.rectOfRow(row).origin.y + kOnCheck});
    };
    const auto clickColumn = [&](std::size_t column) {
        view->tableView_didClickTableColumn(&table, table.tableColumns()[column].get());
    };
    const auto expectChecked = [&](const char* status, bool all) {
        EXPECT_TRUE(showsInside(*view, status)) << status;
        EXPECT_EQ(header.isChecked(), all ? 1 : 0);
    };
    EXPECT_EQ(rowsOf(*view), (Rows{"o Ann", "o Ben", "- Cem"}));
    expectChecked("0 of 2", false);

    clickRow(1);
    clickRow(2);
    expectChecked("1 of 2", false);
    table.selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(2).get(), false);
    table.selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(0).get(), true);
    clickColumn(1);
    EXPECT_EQ(rowsOf(*view), (Rows{"o Ann*", "- Cem*", "x Ben"}));
    EXPECT_EQ(table.selectedRow(), 0) << "Ann was selected last";
    clickColumn(1);
    EXPECT_EQ(rowsOf(*view), (Rows{"x Ben", "o Ann*", "- Cem*"}));
    EXPECT_EQ(table.selectedRow(), 1);
    EXPECT_EQ(utf8(table.tableColumns()[1]->title()), "Group ▼");
    clickColumn(2);
    EXPECT_EQ(rowsOf(*view), (Rows{"- Cem*", "x Ben", "o Ann*"}));
    EXPECT_EQ(utf8(table.tableColumns()[1]->title()), "Group");

    clickRow(2);
    expectChecked("2 of 2", true);
    clickRow(1);
    expectChecked("1 of 2", false);
    clickCheck(header, {kOnCheck, kOnCheck});
    EXPECT_EQ(rowsOf(*view), (Rows{"- Cem*", "x Ben", "x Ann*"}));
    expectChecked("2 of 2", true);
    clickCheck(header, {kOnCheck, kOnCheck});
    expectChecked("0 of 2", false);
}

TEST_F(PhoneManagerTest, ChoosesKindsOfABackupTogetherWithTheirFolders)
{
    using Rows = std::vector<std::string>;
    const Ref<BackupView> view = make<BackupView>()->initWithFrame(NSMakeRect(0.0, 0.0, 460.0, 372.0));
    view->setKinds({{"Messages", "", {{"Inbox", 4}, {"Sent", 2}}}, {"Photos", "", {{"Camera", 7}}}});
    ZuOutlineView& outline = *view->outlineView();
    const auto clickRow = [&](std::int64_t row) {
        const NSRect cell = outline.frameOfCellAtColumn_row(0, row);
        clickCheck(outline, {cell.origin.x + 8.0, cell.origin.y + 8.0});
    };
    const auto expectRows = [&](const Rows& rows, const char* status) {
        EXPECT_EQ(rowsOf(*view), rows);
        EXPECT_TRUE(showsInside(*view, status)) << status;
    };
    expectRows({"Messages (6) content-check-yes", "Photos (7) content-check-yes"}, "13 of 13");

    outline.expandItem(outline.itemAtRow(0).get());
    clickRow(2);
    expectRows({"Messages (6) content-check-mixed", "Inbox (4) content-check-yes",
                "Sent (2) content-check-no", "Photos (7) content-check-yes"},
               "11 of 13");
    clickRow(0);
    clickRow(3);
    expectRows({"Messages (6) content-check-yes", "Inbox (4) content-check-yes", "Sent (2) content-check-yes",
                "Photos (7) content-check-no"},
               "6 of 13");
    outline.selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(0).get(), false);
    outline.keyDown(
        NSEvent::keyEventWithType_characters_isARepeat_window(NSEventType::KeyDown, text(" "), false, nullptr)
            .get());
    expectRows({"Messages (6) content-check-no", "Inbox (4) content-check-no", "Sent (2) content-check-no",
                "Photos (7) content-check-no"},
               "0 of 13");
    clickRow(1);
    clickRow(2);
    expectRows({"Messages (6) content-check-yes", "Inbox (4) content-check-yes", "Sent (2) content-check-yes",
                "Photos (7) content-check-no"},
               "6 of 13");
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

TEST_F(PhoneManagerTest, ImportsDroppedPhotosInsteadOfTheOthers)
{
    const auto view = make<ImportView>();
    view->initWithFrame(NSMakeRect(0.0, 0.0, 460.0, 400.0));
    const std::filesystem::path target = folder.path() / "in here";
    view->setFiles_folder({folder.path() / "other.jpg"}, target);
    EXPECT_TRUE(showsInside(*view, "One photo"));
    folder.write("a.JPG", "a");
    folder.write("b.png", "b");
    folder.write("c.txt", "c");
    const auto drop = [&](std::initializer_list<const char*> names) {
        std::vector<Ref<NSString>> paths;
        for (const char* name : names) {
            paths.push_back(text((folder.path() / name).c_str()));
        }
        view->dragDropViewFileList(NSArray<NSString>::arrayWithObjects(paths).get());
    };
    drop({"c.txt", "jpg", "a.jp", "no.jpg,png"});
    EXPECT_EQ(view->files(), std::vector{folder.path() / "other.jpg"});
    drop({"a.JPG", "c.txt", "b.png"});
    EXPECT_EQ(view->files(), (std::vector{folder.path() / "a.JPG", folder.path() / "b.png"}));
    EXPECT_TRUE(view->folderLink()->isHidden());
    view->startImport(nullptr);
    while (view->photoImport()->state() == PhotoImport::State::Running) {
        NSApplication::sharedApplication()->handlePendingEvents();
    }
    EXPECT_TRUE(std::filesystem::exists(target / "b.png"));

    OpenedLinks opened;
    EXPECT_FALSE(view->folderLink()->isHidden());
    view->folderLink()->mouseDown(eventAt(*view->folderLink(), {5.0, 5.0}).get());
    EXPECT_EQ(opened.take(), std::vector{"file://" + folder.path().string() + "/in%20here"});
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
