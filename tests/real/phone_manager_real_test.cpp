// The example application as a user has it: a process of its own, a pointer, and a settings file.

#include "platform/appkit/NSApplication.h"
#include "real/Desktop.h"
#include "real/OtherProcess.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QProcess>
#include <QRect>

#include <filesystem>
#include <sstream>

namespace
{

// Where things are in the window, in points from its top-left.
constexpr QPoint kMessages(150, 65);
constexpr QPoint kContacts(150, 150); // the free part of a button's face
constexpr QPoint kImport(150, 300);
constexpr QPoint kBackups(150, 384);
constexpr QPoint kAppearance(150, 562);
constexpr QPoint kContactsBlank(275, 160); // where the face has no text
constexpr QPoint kPage(500, 500);
constexpr QPoint kFirstCheck(339, 150); // where check images are blue, and white if nothing is checked
constexpr QPoint kHeaderCheck(339, 125);
constexpr QPoint kNameHeader(450, 130);
constexpr QPoint kFirstName(450, 155);
constexpr QPoint kFirstTriangle(337, 129);
constexpr QPoint kFirstKindsCheck(349, 124);
constexpr QPoint kSecondKindsCheck(349, 148);
constexpr QPoint kFirstFoldersCheck(365, 148); // which is there while the first kind is expanded
constexpr QRect kStatus(329, 450, 400, 30);
constexpr QPoint kImportButton(656, 370); // above its title
constexpr QPoint kProgressEnd(704, 272);
constexpr QPoint kImportDrop(520, 330);
constexpr QPoint kNameFilter(370, 129);
constexpr QPoint kKindArrow(618, 129);
constexpr QPoint kReceivedCheck(494, 151); // in the pop-over
constexpr QPoint kEditNames(650, 129);
constexpr QPoint kFirstMessage(333, 176); // the edge of a picture that tells its kind
constexpr QPoint kThirdMessage(333, 280);
constexpr QPoint kFirstSender(372, 168);
constexpr QRect kSenders(360, 151, 130, 12); // the upper parts of the first sender's name
constexpr QRect kHelp(478, 455, 250, 20);

constexpr const char* kReceived = "#349853";
constexpr const char* kSent = "#2096d6";
constexpr const char* kChecked = "#2680c8";
constexpr const char* kUnchecked = "#ffffff";

class PhoneManagerRealTest : public testing::Test
{
protected:
    PhoneManagerRealTest() { std::filesystem::copy_file(shippedSettings(), settingsPath()); }
    ~PhoneManagerRealTest() override { quit(); }

    static std::filesystem::path shippedSettings()
    {
        return std::filesystem::path(PHONE_MANAGER).parent_path() / "Resources" / "settings.json";
    }
    std::filesystem::path settingsPath() const { return folder.path() / "settings.json"; }

    void start(const QString& locale)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LC_ALL", locale);
        environment.insert("PATH", QString::fromStdString(folder.path().string()) + ":" +
                                       environment.value("PATH")); // where what opens links may be
        environment.insert("XDG_CONFIG_HOME", QString::fromStdString(folder.path().string()));
        process.setProcessEnvironment(environment);
        process.start(PHONE_MANAGER, {QString::fromStdString(settingsPath().string())});
        const std::string window =
            desktop::xdotool({"search", "--sync", "--onlyvisible", "--name", "^Telefonverwaltung$"});
        ASSERT_FALSE(window.empty());
        desktop::focus(std::stoul(window));
        std::istringstream geometry(desktop::xdotool({"getwindowgeometry", "--shell", window}));
        for (std::string line; std::getline(geometry, line);) {
            if (line.starts_with("X=")) {
                origin.setX(std::stoi(line.substr(2)));
            } else if (line.starts_with("Y=")) {
                origin.setY(std::stoi(line.substr(2)));
            }
        }
        EXPECT_TRUE(shows(kPage, "#f5f5f5"));
    }

    void quit()
    {
        process.terminate();
        process.waitForFinished();
    }

    void moveTo(QPoint place) { desktop::movePointer(origin + place); }
    void click(QPoint place)
    {
        moveTo(place);
        desktop::press();
        desktop::release();
    }
    bool shows(QPoint place, const char* color) const
    {
        return desktop::waitUntil([&] { return desktop::colorOnScreen(origin + place).name() == color; });
    }
    QImage picture(QRect rect) const { return desktop::pictureOfScreen(rect.translated(origin)); }
    bool saved(const std::string& part) const
    {
        return desktop::waitUntil(
            [&] { return folder.read("settings.json").find(part) != std::string::npos; });
    }

    TemporaryFolder folder;
    QProcess process;
    QPoint origin;
};

TEST_F(PhoneManagerRealTest, ShowsWhatWasChosenAfterARestart)
{
    start("de_DE.UTF-8");
    moveTo(kContacts);
    desktop::press();
    EXPECT_TRUE(shows(kContactsBlank, "#20baea")) << "the shipped colour";
    desktop::release();
    EXPECT_TRUE(saved("\"opened_contacts\": 1"));
    EXPECT_TRUE(saved("\"kind\": \"contacts\""));
    click(kAppearance);
    EXPECT_TRUE(saved("\"color_background\": \"52,152,83\""));

    quit();
    start("C"); // still German: the choice is kept
    moveTo(kContacts);
    desktop::press();
    EXPECT_TRUE(shows(kContactsBlank, "#349853"));
    desktop::release();
    EXPECT_TRUE(saved("\"opened_contacts\": 2"));
}

TEST_F(PhoneManagerRealTest, ImportsThePhotosAtThePressOfAButton)
{
    start("de_DE.UTF-8");
    click(kImport);
    EXPECT_TRUE(shows(kProgressEnd, "#f0f0f0")) << "nothing done yet";
    click(kImportButton);
    EXPECT_TRUE(shows(kProgressEnd, "#20baea"));
    EXPECT_TRUE(shows(kImportButton, "#1b9ec7")) << "it can be pressed again";
    int photos = 0;
    for (const auto& entry :
         std::filesystem::directory_iterator(shippedSettings().parent_path() / "Photos")) {
        const std::string name = entry.path().filename().string();
        EXPECT_EQ(folder.read("Importierte Fotos/" + name), folder.read(entry.path().string())) << name;
        ++photos;
    }
    EXPECT_EQ(photos, 3);
}

TEST_F(PhoneManagerRealTest, ChecksContactsByThePointerAndTheSpaceKey)
{
    start("de_DE.UTF-8");
    click(kContacts);
    EXPECT_TRUE(shows(kFirstCheck, kUnchecked));
    const QImage noneChecked = picture(kStatus);

    click(kFirstCheck);
    EXPECT_TRUE(shows(kFirstCheck, kChecked));
    EXPECT_TRUE(desktop::waitUntil([&] { return picture(kStatus) != noneChecked; }));
    click(kNameHeader);
    EXPECT_TRUE(shows(kFirstCheck, kUnchecked)) << "the last contact is first now";
    click(kHeaderCheck);
    EXPECT_TRUE(shows(kFirstCheck, kChecked));
    EXPECT_TRUE(shows(kHeaderCheck, kChecked));

    click(kFirstName); // selects it
    desktop::xdotool({"key", "space"});
    EXPECT_TRUE(shows(kFirstCheck, kUnchecked));
    EXPECT_TRUE(shows(kHeaderCheck, kUnchecked));
    click(kNameHeader);
    EXPECT_TRUE(shows(kFirstCheck, kChecked)) << "the first contact is back";
    click(kHeaderCheck);
    click(kHeaderCheck);
    EXPECT_TRUE(desktop::waitUntil([&] { return picture(kStatus) == noneChecked; }));
}

TEST_F(PhoneManagerRealTest, ExpandsAKindOfTheBackupAndChoosesAmongItsFolders)
{
    start("de_DE.UTF-8");
    click(kBackups);
    EXPECT_TRUE(shows(kSecondKindsCheck, kChecked));
    const QImage allChosen = picture(kStatus);

    click(kFirstTriangle);
    EXPECT_TRUE(shows(kFirstFoldersCheck, kChecked));
    EXPECT_TRUE(shows(kSecondKindsCheck, kUnchecked)) << "it went down";
    click(kFirstFoldersCheck);
    EXPECT_TRUE(shows(kFirstFoldersCheck, kUnchecked));
    EXPECT_TRUE(desktop::waitUntil([&] { return picture(kStatus) != allChosen; }));
    click(kFirstKindsCheck);
    EXPECT_TRUE(shows(kFirstFoldersCheck, kChecked));
    EXPECT_TRUE(desktop::waitUntil([&] { return picture(kStatus) == allChosen; }));
    click(kFirstTriangle);
    EXPECT_TRUE(shows(kSecondKindsCheck, kChecked));
}

TEST_F(PhoneManagerRealTest, FiltersMessagesAndEditsTheirNames)
{
    start("de_DE.UTF-8");
    click(kMessages);
    EXPECT_TRUE(shows(kFirstMessage, kReceived));
    EXPECT_TRUE(shows(kThirdMessage, kSent));
    const QImage all = picture(kStatus);

    click(kNameFilter);
    desktop::xdotool({"key", "ctrl+a"});
    desktop::xdotool({"type", "clara"});
    desktop::xdotool({"key", "Return"});
    EXPECT_TRUE(shows(kThirdMessage, "#ffffff")) << "two messages are left";
    EXPECT_TRUE(shows(kFirstMessage, kReceived));
    desktop::xdotool({"key", "ctrl+a"});
    desktop::xdotool({"key", "BackSpace"});
    desktop::xdotool({"key", "Return"});
    EXPECT_TRUE(desktop::waitUntil([&] { return picture(kStatus) == all; }));

    const QImage allKinds = picture(QRect(kKindArrow - QPoint(120, 8), QSize(100, 16)));
    click(kKindArrow);
    EXPECT_TRUE(shows(kReceivedCheck, kChecked));
    click(kReceivedCheck);
    EXPECT_TRUE(shows(kReceivedCheck, kUnchecked));
    EXPECT_TRUE(shows(kFirstMessage, kSent));
    EXPECT_EQ(picture(QRect(kKindArrow - QPoint(120, 8), QSize(100, 16))), allKinds) << "until it closes";
    click(kPage);
    EXPECT_TRUE(desktop::waitUntil(
        [&] { return picture(QRect(kKindArrow - QPoint(120, 8), QSize(100, 16))) != allKinds; }));
    EXPECT_TRUE(shows(kReceivedCheck, "#ffffff")) << "the list again";

    const QImage names = picture(kSenders);
    click(kEditNames);
    click(kFirstSender);
    EXPECT_TRUE(desktop::waitUntil([&] { return picture(kSenders) != names; })) << "a field is there";
    desktop::xdotool({"type", "WWWWWW"});
    desktop::xdotool({"key", "Return"});
    click(kEditNames);
    click(kNameFilter);
    desktop::xdotool({"key", "ctrl+a"});
    desktop::xdotool({"type", "wwwwww"});
    desktop::xdotool({"key", "Return"});
    EXPECT_TRUE(shows(kThirdMessage, "#ffffff")) << "one message that was sent has this name";
    EXPECT_TRUE(shows(kFirstMessage, kSent));
}

TEST_F(PhoneManagerRealTest, OpensTheGuideByTheDesktop)
{
    folder.write("xdg-open", "#!/bin/sh\necho \"$1\" >\"$XDG_CONFIG_HOME/opened\"\n");
    std::filesystem::permissions(folder.path() / "xdg-open", std::filesystem::perms::owner_all);
    start("de_DE.UTF-8");
    click(kMessages);
    QPoint link;
    EXPECT_TRUE(desktop::waitUntil([&] {
        const QImage help = picture(kHelp);
        for (int x = 0; x < help.width(); ++x) {
            for (int y = 0; y < help.height(); ++y) {
                if (help.pixelColor(x, y) == QColor("#0000ff")) {
                    link = kHelp.topLeft() + QPoint(x + 10, y - 3);
                    return true;
                }
            }
        }
        return false;
    })) << "its underline";
    click(link);
    EXPECT_TRUE(desktop::waitUntil([&] {
        return std::filesystem::exists(folder.path() / "opened") &&
               folder.read("opened") == "https://example.org/phone-manager/messages\n";
    }));
}

TEST_F(PhoneManagerRealTest, ImportsPhotosThatAreDropped)
{
    start("de_DE.UTF-8");
    click(kImport);
    EXPECT_TRUE(shows(kProgressEnd, "#f0f0f0"));
    folder.write("zwei W\xC3\xB6rter.jpg", "a photo");
    folder.write("notes.txt", "no photo");
    const auto url = [&](const char* name) { return "file://" + (folder.path() / name).string() + "\r\n"; };
    desktop::OtherProcess other;
    other.drag(url("zwei%20W%C3%B6rter.jpg") + url("notes.txt"), "text/uri-list", origin + kImportDrop,
               [&] { return other.said().contains("would copy") || other.says("would copy"); });
    EXPECT_TRUE(other.drops("copied"));
    click(kImportButton);
    EXPECT_TRUE(desktop::waitUntil(
        [&] { return std::filesystem::exists(folder.path() / "Importierte Fotos/zwei W\xC3\xB6rter.jpg"); }));
    EXPECT_TRUE(shows(kProgressEnd, "#20baea"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "Importierte Fotos/notes.txt"));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "Importierte Fotos/Sunset.jpg"));
}

} // namespace
