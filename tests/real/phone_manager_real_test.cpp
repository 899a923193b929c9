// The example application as a user has it: a process of its own, a pointer, and a settings file.

#include "platform/appkit/NSApplication.h"
#include "real/Desktop.h"
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

} // namespace
