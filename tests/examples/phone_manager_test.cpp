#include "phone_manager/PhoneManager.h"
#include "phone_manager/files/Task.h"

#include "platform/appkit/NSApplication.h"
#include "platform/appkit/NSWindow.h"
#include "platform/foundation/NSArray.h"
#include "platform/foundation/NSAttributedString.h"
#include "platform/foundation/NSIndexSet.h"
#include "platform/foundation/NSMutableArray.h"
#include "platform/foundation/NSNumber.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/graphics/NSColor.h"
#include "support/Drawing.h"
#include "support/Links.h"
#include "support/Tables.h"
#include "support/TemporaryFolder.h"
#include "window/PelSmsTableCheckImageCell.h"
#include "window/WyClickableURLTextField.h"
#include "window/ZuCheckTableHeaderView.h"
#include "window/ZuComboBox.h"
#include "window/ZuImageCell.h"
#include "window/ZuMultiSelectComboBox.h"
#include "window/ZuTableCheckImageCell.h"
#include "window/ZuToolButton.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace
{

using Rows = std::vector<std::string>;
// States of messages
constexpr std::size_t kReceived = 0;
constexpr std::size_t kSent = 1;
constexpr std::size_t kFailed = Message::kFailed;
constexpr double kOnCheck = 14.0; // from the left and the upper edge of a row

class PhoneManagerTest : public testing::Test
{
protected:
    PhoneManagerTest()
    {
        NSUserDefaults::setStandardDomain(text((folder.path() / "defaults.ini").c_str()).get());
        choose("en");
        folder.write("s.json", "{}");
    }
    ~PhoneManagerTest() override { NSUserDefaults::setStandardDomain(nullptr); }

    static void choose(const char* language)
    {
        NSUserDefaults::standardUserDefaults()->setObject_forKey(text(language).get(), text("Tavori").get());
    }

    Ref<PhoneManager> start() const { return make<PhoneManager>(folder.path() / "s.json"); }
    /// One that has these, all unchecked.
    Ref<PhoneManager> start(const std::vector<Contact>& contacts, const std::vector<Message>& messages) const
    {
        Ref<PhoneManager> manager = start();
        manager->phone()->contacts = contacts;
        manager->phone()->messages = messages;
        manager->phone()->didChange();
        return manager;
    }

    /// Has all of its tasks end.
    static void finish(const PhoneManager& manager)
    {
        while (manager.task()->state() == Task::State::Running) {
            manager.task()->run();
        }
    }

    static std::string status(const PhoneManager& manager) { return utf8(manager.taskStatus->stringValue()); }

    /// The rows of a page in their order: "o" if unchecked, "x" if checked, and "*" behind the text of one
    /// that is selected.
    static Rows rowsOf(const Page& page)
    {
        Rows rows;
        NSTableView& shown = *page.tableView;
        for (std::int64_t row = 0; row < shown.numberOfRows(); ++row) {
            const Ref<NSCell> check = shown.preparedCellAtColumn_row(0, row);
            std::string line = dynamic_cast<ZuTableCheckImageCell&>(*check).isChecked() == 1 ? "x " : "o ";
            const Ref<NSCell> cell = shown.preparedCellAtColumn_row(1, row);
            const auto* message = dynamic_cast<PelSmsTableCheckImageCell*>(cell.get());
            line += utf8(message != nullptr ? message->title() : cell->stringValue());
            line += message != nullptr && message->sentSmsType() == 5 ? "!" : "";
            rows.push_back(line + (shown.isRowSelected(row) ? "*" : ""));
        }
        return rows;
    }
    /// What the outline shows, each row with the name of its check image.
    static Rows rowsOf(KindsView& outline)
    {
        Rows rows;
        for (std::int64_t row = 0; row < outline.numberOfRows(); ++row) {
            const NSCell& cell = *outline.preparedCellAtColumn_row(0, row);
            rows.push_back(utf8(cell.accessibilityLabel()) + ' ' + cell.image()->name().substr(14));
        }
        return rows;
    }
    static void click(NSView& view, NSPoint point)
    {
        view.mouseDown(eventAt(view, point).get());
        view.mouseUp(eventAt(view, point, NSEventType::LeftMouseUp).get());
    }
    static void clickRow(NSTableView& view, std::int64_t row)
    {
        const NSPoint corner = view.frameOfCellAtColumn_row(0, row).origin;
        click(view, {corner.x + kOnCheck, view.rectOfRow(row).origin.y + kOnCheck});
    }

    TemporaryFolder folder;
};

TEST_F(PhoneManagerTest, TakesTheSettingsAndKeepsChanges)
{
    folder.write("s.json", R"({"color_border":"255,0,51","color_used_":"0,0,255","icon_offset":30})");
    const Ref<PhoneManager> manager = start({{"Ann", "", "1"}}, {});
    const auto button = [](const PhoneManager& of) {
        NSView& sidebar = *of.content()->subviews().front();
        return Ref<ZuToolButton>(dynamic_cast<ZuToolButton*>(sidebar.subviews().front().get()));
    };
    EXPECT_EQ(button(*manager)->color_border()->description(), "sRGB(1, 0, 0.2, 1)");
    EXPECT_EQ(button(*manager)->color_background()->description(), "sRGB(0, 0, 1, 1)") << "not in the file";
    EXPECT_EQ(manager->taskProgress->color_used_()->description(), "sRGB(0, 0, 1, 1)");
    EXPECT_EQ(button(*manager)->offset(), 30);
    EXPECT_FALSE(manager->contactsPage->isHidden());

    manager->changeAppearance(nullptr);
    const std::string accent = button(*manager)->color_border()->description();
    EXPECT_EQ(status(*manager), "The buttons are in Sky from now on.");
    EXPECT_EQ(manager->taskProgress->color_used_()->description(), accent);
    EXPECT_EQ(manager->taskCancel->color_hover_font()->description(), accent);
    manager->outline->selectKind(Kind::Pictures);
    manager->openKind(nullptr);
    EXPECT_FALSE(manager->picturesPage->isHidden());
    EXPECT_TRUE(manager->contactsPage->isHidden());
    EXPECT_EQ(utf8(manager->headline->stringValue()), "Pictures");
    EXPECT_EQ(button(*start())->color_border()->description(), accent);
}

TEST_F(PhoneManagerTest, ShowsEveryColorOfTheSettings)
{
    constexpr std::array kKeys{"color_border",
                               "color_background",
                               "color_used_",
                               "color_normal_border",
                               "color_normal_background",
                               "color_hover_border",
                               "color_hover_font",
                               "color_normal_font",
                               "color_hover_background",
                               "color_border_normal",
                               "color_desc",
                               "color_name_hover",
                               "color_desc_hover"};
    std::string settings = "{\"icon_offset\":12";
    for (const char* key : kKeys) {
        settings += std::string(",\"") + key + "\":\"0,51," + std::to_string(settings.size() % 256) + '"';
    }
    folder.write("s.json", settings + '}');
    const Ref<PhoneManager> manager = start();
    const Settings kept(folder.path() / "s.json");
    const Ref<NSView> import(manager->content()->subviews().front()->subviews().front());
    for (const char* key : kKeys) {
        bool isShown = false;
        for (NSView* view : {import.get(), static_cast<NSView*>(manager->taskProgress.get()),
                             static_cast<NSView*>(manager->taskCancel.get())}) {
            if (view->classTable().findProperty(key) != nullptr) {
                const Ref<NSObject> shown = view->valueForKey(key);
                EXPECT_EQ(dynamic_cast<NSColor&>(*shown).description(), kept.color(key)->description())
                    << key;
                isShown = true;
            }
        }
        EXPECT_TRUE(isShown) << key;
    }
}

TEST_F(PhoneManagerTest, PutsBrokenSettingsAside)
{
    const std::string broken = "{\"color_border\": \"32,1";
    for (const char* aside : {"s.broken.json", "s(1).broken.json"}) {
        folder.write("s.json", broken);
        const Ref<PhoneManager> manager = start();
        EXPECT_NE(status(*manager).find(aside), std::string::npos) << status(*manager);
        EXPECT_FALSE(std::filesystem::exists(folder.path() / "s.json")) << "nothing is saved yet";
        manager->changeAppearance(nullptr);
        EXPECT_EQ(folder.read(aside), broken);
        EXPECT_NE(folder.read("s.json").find("32,186,234"), std::string::npos);
        EXPECT_EQ(status(*manager), "The buttons are in Sky from now on.") << "now they are saved";
    }
    folder.write("s.json", broken);
    const Ref<PhoneManager> manager = start();
    manager->importFiles({});
    finish(*manager);
    EXPECT_NE(status(*manager).find("\nThe settings in "), std::string::npos) << status(*manager);
}

TEST_F(PhoneManagerTest, LeavesBrokenSettingsThatCannotBePutAside)
{
    const auto content = [] {
        std::ifstream own("/proc/self/comm"); // which can be written, and not be moved
        return std::string(std::istreambuf_iterator<char>(own), {});
    };
    const std::string before = content();
    const Ref<PhoneManager> manager = make<PhoneManager>("/proc/self/comm");
    const std::string told = status(*manager);
    EXPECT_NE(told.find("nothing is saved"), std::string::npos) << told;
    manager->changeAppearance(nullptr);
    EXPECT_EQ(content(), before);
    EXPECT_EQ(status(*manager), told);

    folder.write("\xFF.json", "{");
    const Ref<PhoneManager> unnamed = make<PhoneManager>(folder.path() / "\xFF.json");
    unnamed->changeAppearance(nullptr);
    EXPECT_EQ(folder.read("\xFF.json"), "{");
    EXPECT_NE(status(*unnamed).find("nothing is saved"), std::string::npos);
}

TEST_F(PhoneManagerTest, ChangesTheLanguageOfEverythingAndNothingElse)
{
    const Ref<PhoneManager> manager = start({{"Ann", "Work", "1"}, {"Ben", "Contacts", "2"}}, {});
    manager->importFiles(std::vector(5, folder.path() / "none.csv"));
    finish(*manager);
    EXPECT_EQ(
        status(*manager).substr(status(*manager).find('\n')),
        "\n“none.csv” cannot be read.\n“none.csv” cannot be read.\n“none.csv” cannot be read.\n… and 2 more");
    clickRow(*manager->contactsPage->tableView, 1);
    const Weak<NSView> english(manager->content());
    manager->switchLanguage(nullptr);
    EXPECT_EQ(english.get(), nullptr);
    EXPECT_EQ(utf8(manager->headline->stringValue()), "Kontakte");
    EXPECT_EQ(utf8(manager->contactsPage->status->stringValue()), "1 von 2 markiert");
    EXPECT_EQ(utf8(manager->contactsPage->tableView->tableColumns()[3]->title()), "Telefon");
    for (const auto& [row, group] : {std::pair{0, "Arbeit"}, {1, "Contacts"}}) {
        const Ref<NSCell> cell = manager->contactsPage->tableView->preparedCellAtColumn_row(2, row);
        EXPECT_EQ(utf8(dynamic_cast<ZuImageCell&>(*cell).description()), group) << "as far as it is ours";
    }
    EXPECT_EQ(rowsOf(*manager->contactsPage), (Rows{"o Ann", "x Ben"}));
    manager->outline->expandItem(manager->outline->itemAtRow(0).get());
    EXPECT_EQ(rowsOf(*manager->outline)[1], "Arbeit (1) no") << "in the order of this language";
    EXPECT_EQ(status(*manager).substr(0, 8), "Aufgabe ");
    EXPECT_EQ(utf8(start()->headline->stringValue()), "Noch ist nichts da");
    EXPECT_NE(folder.read("s.json").find("\"language\": \"de\""), std::string::npos);
    choose("en");
    EXPECT_EQ(utf8(start()->headline->stringValue()), "Noch ist nichts da") << "as the settings say";
    manager->switchLanguage(nullptr);
    EXPECT_EQ(utf8(manager->headline->stringValue()), "Contacts");
}

TEST_F(PhoneManagerTest, ChecksContacts)
{
    const Ref<PhoneManager> manager = start({{"Ben", "Work", "2", "b@a.org"}, {"Ann", "Family", "3"}}, {});
    const ContactsPage& page = *manager->contactsPage;
    NSTableView& table = *page.tableView;
    auto& header = dynamic_cast<ZuCheckTableHeaderView&>(*table.headerView());
    const auto expect = [&](const Rows& rows, const char* status, bool all) {
        EXPECT_EQ(rowsOf(page), rows);
        EXPECT_EQ(utf8(page.status->stringValue()), status);
        EXPECT_EQ(header.isChecked(), all ? 1 : 0);
    };
    const auto textAt = [&](std::int64_t column) {
        return utf8(table.preparedCellAtColumn_row(column, 0)->stringValue());
    };
    EXPECT_EQ(textAt(3) + ' ' + textAt(4), "2 b@a.org");
    expect({"o Ben", "o Ann"}, "0 of 2 checked", false);
    clickRow(table, 1);
    expect({"o Ben", "x Ann"}, "1 of 2 checked", false);
    table.selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(1).get(), false);
    manager->phone()->contacts.push_back({"Cem", "", ""});
    manager->phone()->didChange();
    expect({"o Ben", "x Ann*", "o Cem"}, "1 of 3 checked", false);
    for (const bool all : {true, false}) {
        click(header, {kOnCheck, kOnCheck});
        expect(all ? Rows{"x Ben", "x Ann*", "x Cem"} : Rows{"o Ben", "o Ann*", "o Cem"},
               all ? "3 of 3 checked" : "0 of 3 checked", all);
    }
    EXPECT_TRUE(header.showChecked());
    manager->phone()->contacts.clear();
    manager->phone()->didChange();
    expect({}, "0 of 0 checked", false);
    EXPECT_FALSE(header.showChecked());
}

TEST_F(PhoneManagerTest, CountsAndChecksKindsWithTheirGroups)
{
    const Ref<PhoneManager> manager = start({{"Ben", "Work", "2"}, {"Ann", "Family", "3"}, {"Cem", "", "1"}},
                                            {{kSent, "Ann", "1", "a"}, {kFailed, "Ann", "1", "b"}});
    KindsView& outline = *manager->outline;
    outline.expandItem(outline.itemAtRow(0).get());
    EXPECT_EQ(rowsOf(outline), (Rows{"Contacts (3) no", "Family (1) no", "Work (1) no", "Messages (2) no",
                                     "Pictures (0) off"}));
    clickRow(outline, 1);
    EXPECT_EQ(rowsOf(outline), (Rows{"Contacts (3), some of them mixed", "Family (1) yes", "Work (1) no",
                                     "Messages (2) no", "Pictures (0) off"}));
    EXPECT_EQ(rowsOf(*manager->contactsPage), (Rows{"o Ben", "x Ann", "o Cem"}));
    clickRow(outline, 0);
    EXPECT_EQ(rowsOf(outline)[2], "Work (1) yes");
    clickRow(outline, 3);
    EXPECT_EQ(rowsOf(*manager->messagesPage), (Rows{"x Ann", "x Ann!"}));
    clickRow(outline, 0);
    EXPECT_EQ(rowsOf(outline)[0], "Contacts (3) no");
    EXPECT_EQ(rowsOf(outline)[3], "Messages (2) yes");
}

TEST_F(PhoneManagerTest, FiltersMessagesByNameAndKind)
{
    const Ref<PhoneManager> manager = start({}, {{kReceived, "Ann", "1", "a"},
                                                 {kFailed, "Ben", "2", "b"},
                                                 {kSent, "", "3", "c"},
                                                 {kSent, "Joanna", "4", "d"}});
    MessagesPage& page = *manager->messagesPage;
    const auto filter = [&](const char* name) {
        page.nameFilter->setStringValue(text(name));
        page.filter(nullptr);
        return rowsOf(page);
    };
    const Rows all{"o Ann", "o Ben!", "o 3", "o Joanna"};
    EXPECT_EQ(utf8(page.nameFilter->stringValue()), "Everyone");
    EXPECT_EQ(page.nameFilter->values_()->count(), 5U);
    EXPECT_EQ(rowsOf(page), all);
    EXPECT_EQ(filter("ANN"), (Rows{"o Ann", "o Joanna"}));
    page.setHeaderCheckItem(NSNumber::numberWithInteger(1).get());
    EXPECT_EQ(filter("nobody"), Rows());
    EXPECT_EQ(filter(""), (Rows{"x Ann", "o Ben!", "o 3", "x Joanna"})) << "all that showed";
    page.tableView->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(0).get(), false);
    EXPECT_EQ(filter("joa"), (Rows{"x Joanna"}));
    filter("");
    EXPECT_EQ(utf8(page.messageField->stringValue()), "Select a message to read all of it.");
    page.PopOver(nullptr);
    clickRow(*page.kindChoices(), 1);
    EXPECT_EQ(rowsOf(page), (Rows{"x Ann", "o Ben!"}));
    EXPECT_EQ(utf8(page.kindFilter->stringValue()), "Received,Sent,Failed,");
    page.kindFilter->popoverDidClose(nullptr);
    EXPECT_EQ(utf8(page.kindFilter->stringValue()), "Received,Failed,");
    EXPECT_EQ(utf8(page.status->stringValue()), "1 of 2 checked");
}

TEST_F(PhoneManagerTest, ShowsTheSelectedMessageWithItsLinks)
{
    const std::string words = "“Ü” https://a.org/x?y=1. And (http://b.org)! ftp://c.org https://a.org/x?y=1";
    const Ref<PhoneManager> manager = start({}, {{kReceived, "Ann", "1", words, "2026-01-02 03:04:05"}});
    const MessagesPage& page = *manager->messagesPage;
    EXPECT_EQ(utf8(page.messageField->stringValue()), "Select a message to read all of it.");
    page.tableView->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(0).get(), false);
    std::string links;
    for (const NSAttributedString::Run& run : page.messageField->attributedStringValue()->runs()) {
        if (auto* link = dynamic_cast<NSString*>(run.attributes[NSLinkAttributeName])) {
            const Ref<NSString> all = page.messageField->stringValue();
            EXPECT_EQ(all->characters().substr(run.range.location, run.range.length), link->characters());
            links += link->UTF8String() + ' ';
        }
    }
    EXPECT_EQ(links, "https://a.org/x?y=1 http://b.org https://a.org/x?y=1 ");
    EXPECT_EQ(utf8(page.messageField->stringValue()), "1, 2026-01-02 03:04:05\n" + words);
    manager->phone()->messages[0].text = "https://" + std::string(500'000, 'a');
    manager->phone()->didChange(); // an endless link is no harm
}

TEST_F(PhoneManagerTest, GoesThroughTasksOneAfterTheOther)
{
    folder.write("a.csv", "name,number\nAnn,1\n");
    folder.write("b.csv", "name,number\nBen,2\n");
    const Ref<PhoneManager> manager = start();
    EXPECT_FALSE(manager->startPage->isHidden());
    EXPECT_TRUE(manager->taskPanel->isHidden());
    const auto drop = [&](const char* name) {
        manager->dragDropViewFileList(
            NSArray<NSString>::arrayWithObjects({text((folder.path() / name).c_str())}).get());
    };
    drop("a.csv");
    drop("b.csv");
    EXPECT_FALSE(manager->taskCancel->isHidden());
    const std::int64_t first = manager->task()->identifier();
    manager->cancelTask(nullptr);
    EXPECT_NE(manager->task()->identifier(), first) << "the next one runs";
    drop("none.csv");
    drop("b.csv");
    manager->chooseExport(nullptr);
    manager->changeAppearance(nullptr);
    finish(*manager);
    EXPECT_EQ(rowsOf(*manager->contactsPage), (Rows{"o Ben", "o Ben"}));
    for (const char* told : {"\n“none.csv” cannot be read.\n", "\nThe buttons are in Sky from now on.\n",
                             "\nCheck what is to be exported first."}) {
        EXPECT_NE(status(*manager).find(told), std::string::npos) << told << " before the last one ran";
    }
    EXPECT_TRUE(manager->startPage->isHidden());
    EXPECT_TRUE(manager->taskCancel->isHidden());

    manager->chooseExport(nullptr);
    EXPECT_EQ(status(*manager), "Check what is to be exported first.");
    clickRow(*manager->contactsPage->tableView, 0);
    manager->exportTo(folder.path());
    finish(*manager);
    EXPECT_EQ(status(*manager).find("none.csv"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "Phone export" / "contacts.csv")) << status(*manager);
    EXPECT_EQ(manager->taskProgress->step_(), 1.0);
}

TEST_F(PhoneManagerTest, StopsItsTasksWhenItGoes)
{
    folder.write("a.csv", "name,number\nAnn,1\n");
    Ref<PhoneManager> manager = start();
    const Ref<Phone> phone(manager->phone());
    manager->importFiles({folder.path() / "a.csv"});
    const Ref<Task> task(manager->task());
    manager = nullptr;
    EXPECT_EQ(task->state(), Task::State::Cancelled);
    NSApplication::sharedApplication()->handlePendingEvents();
    EXPECT_TRUE(phone->contacts.empty());
}

} // namespace
