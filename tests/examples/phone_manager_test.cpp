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
#include "window/ZuSimpleButton.h"
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

    Ref<PhoneManager> start() const { return make<PhoneManager>((folder.path() / "s.json").string()); }
    /// One that has these, all unchecked.
    Ref<PhoneManager> start(const std::vector<Contact>& contacts, const std::vector<Message>& messages) const
    {
        Ref<PhoneManager> manager = start();
        manager->phone()->contacts() = contacts;
        manager->phone()->messages() = messages;
        manager->phone()->didChange();
        return manager;
    }

    static void finish(const PhoneManager& manager)
    {
        while (manager.task()->state() == Task::State::Running) {
            NSApplication::sharedApplication()->handlePendingEvents();
        }
    }

    static std::string status(const PhoneManager& manager) { return utf8(manager.taskStatus->stringValue()); }

    /// The rows of a page in their order: "o" if unchecked, "x" if checked, "-" if they cannot be, and "*"
    /// behind the text of one that is selected.
    static Rows rowsOf(const Page& page)
    {
        Rows rows;
        NSTableView& shown = *page.tableView;
        for (std::int64_t row = 0; row < shown.numberOfRows(); ++row) {
            auto& cell = dynamic_cast<ZuTableCheckImageCell&>(*shown.preparedCellAtColumn_row(0, row));
            std::string line = !cell.isEnabled() ? "- " : cell.isChecked() == 1 ? "x " : "o ";
            const Ref<NSCell> next = shown.preparedCellAtColumn_row(1, row);
            if (const auto* message = dynamic_cast<PelSmsTableCheckImageCell*>(next.get())) {
                line += utf8(message->title()) + (message->sentSmsType() == 5 ? "!" : "");
            } else {
                line += utf8(cell.stringValue());
            }
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
    folder.write("s.json",
                 R"({"color_border":"255,0,51","color_used_":"0,0,255","icon_offset":30,"page":"Messages"})");
    const Ref<PhoneManager> manager = start({{"Ann", "", "1"}}, {});
    const auto button = [](const PhoneManager& of) {
        NSView& sidebar = *of.content()->subviews().front();
        return Ref<ZuToolButton>(dynamic_cast<ZuToolButton*>(sidebar.subviews().front().get()));
    };
    EXPECT_EQ(button(*manager)->color_border()->description(), "sRGB(1, 0, 0.2, 1)");
    EXPECT_EQ(button(*manager)->color_background()->description(), "sRGB(0, 0, 1, 1)") << "not in the file";
    EXPECT_EQ(manager->taskProgress->color_used_()->description(), "sRGB(0, 0, 1, 1)");
    EXPECT_EQ(button(*manager)->offset(), 30);
    EXPECT_FALSE(manager->messagesPage->isHidden());
    EXPECT_TRUE(manager->contactsPage->isHidden());

    manager->changeAppearance(nullptr);
    const std::string accent = button(*manager)->color_border()->description();
    EXPECT_EQ(status(*manager), "The buttons are in Sky from now on.");
    EXPECT_EQ(manager->taskProgress->color_used_()->description(), accent);
    EXPECT_EQ(manager->taskCancel->color_hover_font()->description(), accent);
    manager->outline->selectKind(KindsView::Kind::Pictures);
    manager->openKind(nullptr);
    EXPECT_FALSE(manager->picturesPage->isHidden());
    EXPECT_EQ(utf8(manager->headline->stringValue()), "Pictures");
    const Ref<PhoneManager> next = start({{"Ann", "", "1"}}, {});
    EXPECT_EQ(button(*next)->color_border()->description(), accent);
    EXPECT_FALSE(next->picturesPage->isHidden());
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
    std::string settings = "{\"page\":\"Contacts\"";
    for (const char* key : kKeys) {
        settings += std::string(",\"") + key + "\":\"0,51," + std::to_string(settings.size() % 256) + '"';
    }
    folder.write("s.json", settings + '}');
    const Ref<PhoneManager> manager = start();
    const Settings kept((folder.path() / "s.json").string());
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
    }
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
    EXPECT_EQ(utf8(manager->contactsPage->status->stringValue()), "1 von 2 Kontakten markiert");
    EXPECT_EQ(utf8(manager->contactsPage->tableView->tableColumns()[2]->title()), "Telefon");
    for (const auto& [row, group] : {std::pair{0, "Arbeit"}, {1, "Contacts"}}) {
        const Ref<NSCell> cell = manager->contactsPage->tableView->preparedCellAtColumn_row(1, row);
        EXPECT_EQ(utf8(dynamic_cast<ZuImageCell&>(*cell).description()), group) << "as far as it is ours";
    }
    EXPECT_EQ(rowsOf(*manager->contactsPage), (Rows{"o Ann", "x Ben"}));
    EXPECT_EQ(status(*manager).substr(0, 8), "Aufgabe ");
    EXPECT_EQ(utf8(start()->headline->stringValue()), "Noch ist nichts da");
    EXPECT_NE(folder.read("s.json").find("\"language\": \"de\""), std::string::npos);
    choose("en");
    EXPECT_EQ(utf8(start()->headline->stringValue()), "Noch ist nichts da") << "as the settings say";
    manager->switchLanguage(nullptr);
    EXPECT_EQ(utf8(manager->headline->stringValue()), "Contacts");
}

TEST_F(PhoneManagerTest, ChecksContactsWhichStaySoWhenTheyAreSorted)
{
    const Ref<PhoneManager> manager =
        start({{"Ben", "Work", "2"}, {"Ann", "Family", "3"}, {"Cem", "Family", "1", true}}, {});
    const ContactsPage& page = *manager->contactsPage;
    NSTableView& table = *page.tableView;
    auto& header = dynamic_cast<ZuCheckTableHeaderView&>(*table.headerView());
    const auto clickColumn = [&](std::size_t column) {
        manager->contactsPage->tableView_didClickTableColumn(&table, table.tableColumns()[column].get());
    };
    const auto expectChecked = [&](const char* shown, bool all) {
        EXPECT_EQ(utf8(page.status->stringValue()), shown + std::string(" contacts checked"));
        EXPECT_EQ(header.isChecked(), all ? 1 : 0);
    };
    EXPECT_EQ(rowsOf(page), (Rows{"o Ann", "o Ben", "- Cem"}));
    expectChecked("0 of 2", false);

    clickRow(table, 1);
    clickRow(table, 2);
    expectChecked("1 of 2", false);
    table.selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(0).get(), false);
    clickColumn(1);
    EXPECT_EQ(rowsOf(page), (Rows{"o Ann*", "- Cem", "x Ben"}));
    clickColumn(1);
    EXPECT_EQ(rowsOf(page), (Rows{"x Ben", "o Ann*", "- Cem"}));
    EXPECT_EQ(utf8(table.tableColumns()[1]->title()), "Group ▼");
    clickColumn(2);
    EXPECT_EQ(rowsOf(page), (Rows{"- Cem", "x Ben", "o Ann*"}));
    EXPECT_EQ(utf8(table.tableColumns()[1]->title()), "Group");

    clickRow(table, 2);
    expectChecked("2 of 2", true);
    click(header, {kOnCheck, kOnCheck});
    EXPECT_EQ(rowsOf(page), (Rows{"- Cem", "o Ben", "o Ann*"}));
    click(header, {kOnCheck, kOnCheck});
    expectChecked("2 of 2", true);
    EXPECT_TRUE(header.showChecked());
    manager->phone()->contacts().clear();
    manager->phone()->didChange();
    EXPECT_FALSE(header.showChecked());
}

TEST_F(PhoneManagerTest, CountsAndChecksKindsWithTheirGroups)
{
    using Kind = Message::Kind;
    const Ref<PhoneManager> manager =
        start({{"Ben", "Work", "2"}, {"Ann", "Family", "3"}, {"Cem", "Family", "1", true}},
              {{Kind::Sent, "Ann", "1", "a"}, {Kind::Failed, "Ann", "1", "b"}});
    KindsView& outline = *manager->outline;
    outline.expandItem(outline.itemAtRow(0).get());
    EXPECT_EQ(rowsOf(outline), (Rows{"Contacts (3) no", "Family (2) no", "Work (1) no", "Messages (2) no",
                                     "Pictures (0) off"}));
    clickRow(outline, 1);
    EXPECT_EQ(rowsOf(outline), (Rows{"Contacts (3), some of them mixed", "Family (2) yes", "Work (1) no",
                                     "Messages (2) no", "Pictures (0) off"}));
    EXPECT_EQ(rowsOf(*manager->contactsPage), (Rows{"x Ann", "o Ben", "- Cem"}));
    clickRow(outline, 0);
    EXPECT_EQ(rowsOf(outline)[2], "Work (1) yes") << "all that can be";
    clickRow(outline, 3);
    EXPECT_EQ(rowsOf(*manager->messagesPage), (Rows{"x Ann", "x Ann!"}));
    clickRow(outline, 0);
    EXPECT_EQ(rowsOf(outline)[0], "Contacts (3) no");
    EXPECT_EQ(rowsOf(outline)[3], "Messages (2) yes");
}

TEST_F(PhoneManagerTest, FiltersMessagesByNameAndKind)
{
    using Kind = Message::Kind;
    const Ref<PhoneManager> manager = start({}, {{Kind::Received, "Ann", "1", "a"},
                                                 {Kind::Failed, "Ben", "2", "b"},
                                                 {Kind::Sent, "", "3", "c"},
                                                 {Kind::Sent, "Joanna", "4", "d"}});
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
    page.PopOver(nullptr);
    clickRow(*page.kindChoices(), 1);
    EXPECT_EQ(rowsOf(page), (Rows{"x Ann", "o Ben!"}));
    EXPECT_EQ(utf8(page.kindFilter->stringValue()), "Received,Sent,Failed,");
    page.kindFilter->popoverDidClose(nullptr);
    EXPECT_EQ(utf8(page.kindFilter->stringValue()), "Received,Failed,");
    EXPECT_EQ(utf8(page.status->stringValue()), "1 of 2 messages checked");
}

TEST_F(PhoneManagerTest, ShowsTheSelectedMessageWithItsLinks)
{
    const std::string words = "“Ü” https://a.org/x?y=1. And (http://b.org)! ftp://c.org https://a.org/x?y=1";
    const Ref<PhoneManager> manager =
        start({}, {{Message::Kind::Received, "Ann", "1", words, "2026-01-02 03:04:05"}});
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
    manager->phone()->messages()[0].text = "https://" + std::string(500'000, 'a');
    manager->phone()->didChange(); // an endless link is no harm
}

TEST_F(PhoneManagerTest, RenamesAllMessagesOfANumber)
{
    using Kind = Message::Kind;
    const Ref<PhoneManager> manager = start({}, {{Kind::Received, "Ann", "1", "a"},
                                                 {Kind::Sent, "Ben", "", "b"},
                                                 {Kind::Sent, "A.", "1", "c"},
                                                 {Kind::Sent, "Cem", "", "d"}});
    manager->outline->selectKind(KindsView::Kind::Messages);
    manager->openWindow();
    NSApplication::sharedApplication()->handlePendingEvents();
    MessagesPage& page = *manager->messagesPage;
    NSTableView& list = *page.tableView;
    const double left = list.frameOfCellAtColumn_row(1, 0).origin.x;
    const auto press = [&](double x, double y) { list.mouseDown(eventAt(list, {left + x, y}).get()); };
    press(20.0, 20.0);
    EXPECT_EQ(page.nameField(), nullptr) << "not while names are not being edited";
    const Ref<ZuSimpleButton> button = make<ZuSimpleButton>();
    page.switchEditing(button.get());
    EXPECT_EQ(utf8(button->title()), "Done");
    press(200.0, 20.0);
    EXPECT_EQ(page.nameField(), nullptr) << "beside the name";
    press(50.0, 20.0);
    ASSERT_NE(page.nameField(), nullptr) << "on the name";
    EXPECT_EQ(utf8(page.nameField()->stringValue()), "Ann");
    press(20.0, 70.0);
    EXPECT_EQ(rowsOf(page), (Rows{"o Ann", "o Ben", "o A.", "o Cem"})) << "a press elsewhere ends editing";
    EXPECT_EQ(list.subviews().size(), 1U);
    page.nameField()->setStringValue(text("Bo"));
    press(50.0, 20.0);
    page.nameField()->setStringValue(text("Anna"));
    press(20.0, 70.0);
    EXPECT_EQ(rowsOf(page), (Rows{"o Anna", "o Bo", "o Anna", "o Cem"})) << "without numbers, by names";
    const auto names = page.nameFilter->values_();
    EXPECT_EQ(utf8(names->begin()[1]), "Anna");
    manager->phone()->messages().push_back({Kind::Sent, "Dan", "4", "e"});
    manager->phone()->didChange();
    EXPECT_EQ(names->count(), 5U) << "everyone and four names";
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
    finish(*manager);
    EXPECT_EQ(rowsOf(*manager->contactsPage), (Rows{"o Ben", "o Ben"}));
    EXPECT_TRUE(status(*manager).ends_with("\n“none.csv” cannot be read.")) << "of the one before";
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
    EXPECT_TRUE(phone->contacts().empty());
}

} // namespace
