// The example application as a user has it: a process of its own, a pointer, a keyboard, and files.

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
#include <QUrl>

#include <filesystem>
#include <map>
#include <regex>
#include <sstream>

namespace
{

namespace fs = std::filesystem;

// Where things are in the window, in points from its top-left.
constexpr QPoint kImport(170, 28);
constexpr QPoint kImportBlank(262, 20); // where its face has no text
constexpr QPoint kImportEdge(200, 12);
constexpr QPoint kExport(170, 94);
constexpr QPoint kAppearance(170, 456);
constexpr QPoint kLanguage(170, 588);
constexpr QRect kSidebar(12, 440, 256, 188); // the buttons below the outline
constexpr QPoint kContacts(100, 157);        // in the outline, as long as all is collapsed
constexpr QPoint kMessages(100, 181);
constexpr QPoint kPictures(100, 205);
constexpr QRect kCounts(74, 150, 150, 64);
constexpr QPoint kContactsTriangle(20, 157);
constexpr QPoint kContactsCheck(32, 152); // where checks are blue if they are checked
constexpr QPoint kMessagesCheck(32, 176);
constexpr QPoint kPicturesCheck(32, 200);
constexpr QPoint kFamilyCheck(48, 224); // while the contacts are expanded, as are the next
constexpr QPoint kWorkCheck(48, 176);
constexpr QPoint kSampleLink(390, 112);
constexpr QPoint kHeaderCheck(320, 70);
constexpr QPoint kFirstCheck(320, 95);
constexpr QPoint kSecondCheck(320, 119); // of one of the family, in the example
constexpr QPoint kFirstName(380, 99);
constexpr QRect kStatus(309, 470, 400, 20);
constexpr QPoint kNameFilter(370, 73);
constexpr QPoint kKindArrow(664, 73);
constexpr QRect kKinds(500, 64, 100, 18);
constexpr QPoint kReceivedCheck(504, 95); // in the pop-over
constexpr QPoint kFirstMessage(343, 147); // the edge of a picture that tells its kind
constexpr QPoint kSecondMessage(343, 199);
constexpr QPoint kThirdMessage(343, 251);
constexpr QPoint kLink(650, 405); // in the text of the first message of which that has one
constexpr QPoint kFirstPictureCheck(320, 107);
constexpr QPoint kFirstThumbnail(575, 110);
constexpr QPoint kSecondThumbnail(575, 160);
constexpr QPoint kProgressBegin(322, 602);
constexpr QPoint kCancel(866, 596); // above its title
constexpr QRect kSentence(318, 505, 600, 40);
constexpr QPoint kNowhere(600, 620);

constexpr const char* kBlank = "#ffffff";
constexpr const char* kChecked = "#2680c8";
constexpr const char* kReceived = "#349853";
constexpr const char* kSent = "#2096d6";
constexpr const char* kSky = "#20baea";     // the shipped colour
constexpr const char* kSkyEdge = "#8ad7ef"; // where that lies over the window
constexpr const char* kMeadow = "#349853";

constexpr const char* kSettings = "phone_manager/settings.json";
constexpr const char* kGerman = "^Telefonverwaltung$";
constexpr int kManyMessages = 100'000;
constexpr int kManyPictures = 3000; // so that reading them takes a while

/// Contacts with all that a table can hold, written as exports are.
constexpr const char* kContactsTable = "\xEF\xBB\xBFName,Group,Number,Email\r\n"
                                       "\"Zoë \"\"Z\"\" Groß\",Family,+49 30 1,z@example.org\r\n"
                                       "\"Comma, and; semicolon\",\"Two\nlines\",,\r\n"
                                       "  Leading blanks,  ,\t1,\r\n"
                                       "\xF0\x9F\x98\x80 \xE2\x80\xAE<b>&amp;,Work,00,\"a\r\nb\"\r\n";

class PhoneManagerRealTest : public testing::Test
{
protected:
    ~PhoneManagerRealTest() override { quit(); }

    QProcessEnvironment environment() const
    {
        QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
        const QString own = QString::fromStdString(folder.path().string());
        result.insert("LC_ALL", "de_DE.UTF-8");
        result.insert("PATH", own + ":" + result.value("PATH")); // where what opens links may be
        result.insert("XDG_CONFIG_HOME", own);
        return result;
    }

    void start(const QStringList& files = {}, const char* title = kGerman)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.setProcessEnvironment(environment());
        process.start(PHONE_MANAGER, files);
        window = desktop::xdotool({"search", "--sync", "--onlyvisible", "--name", title});
        ASSERT_FALSE(window.empty());
        desktop::focus(std::stoul(window));
        const std::map<std::string, int> place = geometry();
        origin = QPoint(place.at("X"), place.at("Y"));
        moveTo(kNowhere);
        EXPECT_TRUE(shows(QPoint(290, 10), "#f5f5f5"));
    }

    /// Starts it with the example, which the link on the start page imports.
    void startWithSample(const char* title = kGerman)
    {
        start({}, title);
        const QImage empty = picture(kCounts);
        click(kSampleLink);
        EXPECT_TRUE(changes(kCounts, empty));
    }

    void quit()
    {
        process.terminate();
        process.waitForFinished();
    }

    std::map<std::string, int> geometry() const
    {
        std::map<std::string, int> result;
        std::istringstream lines(desktop::xdotool({"getwindowgeometry", "--shell", window}));
        for (std::string line; std::getline(lines, line);) {
            const std::size_t sign = line.find('=');
            result[line.substr(0, sign)] = std::stoi(line.substr(sign + 1));
        }
        return result;
    }

    QString pathOf(const std::string& name) const
    {
        return QString::fromStdString((folder.path() / name).string());
    }

    void moveTo(QPoint place) const { desktop::movePointer(origin + place); }
    void click(QPoint place) const
    {
        moveTo(place);
        desktop::press();
        desktop::release();
    }
    /// Has the field with the keyboard hold this, and ends editing.
    static void enter(const std::string& words)
    {
        desktop::xdotool({"key", "ctrl+a", "BackSpace"});
        desktop::xdotool({"type", words});
        desktop::xdotool({"key", "Return"});
    }

    bool shows(QPoint place, const char* color) const
    {
        return desktop::waitUntil([&] { return desktop::colorOnScreen(origin + place).name() == color; });
    }
    QImage picture(QRect rect) const { return desktop::pictureOfScreen(rect.translated(origin)); }
    bool changes(QRect rect, const QImage& before) const
    {
        return desktop::waitUntil([&] { return picture(rect) != before; });
    }
    bool returns(QRect rect, const QImage& before) const
    {
        return desktop::waitUntil([&] { return picture(rect) == before; });
    }
    bool holds(const std::string& file, const std::string& part) const
    {
        return desktop::waitUntil([&] { return folder.read(file).find(part) != std::string::npos; });
    }

    /// Whether that is the colour of a button that is pressed.
    bool buttonsAre(const char* color) const
    {
        moveTo(kImportBlank);
        desktop::press();
        const bool result = shows(kImportBlank, color);
        moveTo(kNowhere); // so that it does nothing
        desktop::release();
        return result;
    }

    /// Drops files of the folder from the other process.
    void drop(const std::vector<std::string>& names, QPoint place)
    {
        std::string urls;
        for (const std::string& name : names) {
            urls += QUrl::fromLocalFile(pathOf(name)).toEncoded().toStdString() + "\r\n";
        }
        desktop::OtherProcess other;
        other.drag(urls, "text/uri-list", origin + place,
                   [&] { return other.said().contains("would copy") || other.says("would copy"); });
        EXPECT_TRUE(other.drops("copied"));
        desktop::focus(std::stoul(window)); // which the other window had taken
    }

    /// Writes tables and pictures to drop.
    std::vector<std::string> writeFiles() const
    {
        folder.write("Kontakte.csv", kContactsTable);
        folder.write("SMS \xE2\x9C\x89.TXT",
                     "kind;number;text;name;date\n"
                     "sent;+49 1;\"  \"\"\";;\n"
                     "Failed;\"1;2\";\"Two\r\nlines, \"\"quoted\"\"\";Zoë;2026-04-03\n"
                     "received;3;\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x9A\x80;;\n");
        for (const char* name : {"Sunset.jpg", "Über den Wolken.jpg"}) {
            fs::copy_file(fs::path(PHONE_MANAGER).parent_path() / "Resources/Sample/Pictures" / name,
                          folder.path() / name);
        }
        return {"Kontakte.csv", "SMS \xE2\x9C\x89.TXT", "Sunset.jpg", "Über den Wolken.jpg"};
    }

    /// Types the path of what is in the folder into the panel with this title.
    void choose(const char* title, const std::string& name) const
    {
        desktop::focus(std::stoul(desktop::xdotool({"search", "--sync", "--onlyvisible", "--name", title})));
        enter((folder.path() / name).string());
    }

    /// Checks all and exports it, by the panel, to a new folder of this name. Returns what is in it.
    std::map<std::string, std::string> exportTo(const std::string& name)
    {
        for (const QPoint check : {kContactsCheck, kMessagesCheck, kPicturesCheck}) {
            click(check);
        }
        EXPECT_TRUE(shows(kPicturesCheck, kChecked));
        fs::create_directory(folder.path() / name);
        click(kExport);
        choose("^Exportieren$", name);
        EXPECT_TRUE(holds(name + "/Telefon-Export/index.html", "</html>"));
        return filesIn(name + "/Telefon-Export");
    }

    /// What all files in a folder hold, without the dates of the page.
    std::map<std::string, std::string> filesIn(const std::string& name) const
    {
        static const std::regex dates("[0-9]{1,2}[.] [^ ]+ [0-9]{4}, [0-9]{2}:[0-9]{2}");
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path() / name)) {
            if (entry.is_regular_file()) {
                const std::string file = entry.path().lexically_relative(folder.path() / name).string();
                files[file] = folder.read((fs::path(name) / file).string());
            }
        }
        files["index.html"] = std::regex_replace(files["index.html"], dates, "");
        return files;
    }

    TemporaryFolder folder;
    QProcess process;
    std::string window;
    QPoint origin;
};

TEST_F(PhoneManagerRealTest, KeepsWhatWasChosenOverARestart)
{
    startWithSample();
    const QImage german = picture(kSidebar);
    click(kMessages);
    EXPECT_TRUE(shows(kFirstMessage, kReceived));
    click(kLanguage);
    moveTo(kNowhere);
    EXPECT_TRUE(changes(kSidebar, german));
    EXPECT_TRUE(shows(kFirstMessage, kReceived)) << "the same page";
    EXPECT_TRUE(buttonsAre(kSky));
    click(kAppearance);
    EXPECT_TRUE(holds(kSettings, "\"color_background\": \"52,152,83\""));
    desktop::xdotool({"windowsize", window, "1000", "660"});
    EXPECT_TRUE(holds(kSettings, "\"window_height\": 660"));

    quit();
    startWithSample("^Phone Manager$"); // the language is kept
    EXPECT_EQ(geometry()["WIDTH"], 1000);
    EXPECT_EQ(geometry()["HEIGHT"], 660);
    EXPECT_TRUE(buttonsAre(kMeadow));
}

TEST_F(PhoneManagerRealTest, PutsBrokenSettingsAside)
{
    fs::create_directory(folder.path() / "phone_manager");
    folder.write(kSettings, "{ \"folder\": ");
    start();
    EXPECT_EQ(folder.read("phone_manager/settings.broken.json"), "{ \"folder\": ");
    EXPECT_TRUE(holds(kSettings, "\"color_desc\"")) << "that is shipped counts";
    const QImage told = picture(kSentence);
    EXPECT_NE(told.pixelColor(0, 0), QColor("#f5f5f5")) << "a panel";
    click(kAppearance);
    EXPECT_TRUE(holds(kSettings, "\"color_background\": \"52,152,83\""));
    EXPECT_TRUE(changes(kSentence, told));
}

TEST_F(PhoneManagerRealTest, ChecksContacts)
{
    startWithSample();
    const QImage noneChecked = picture(kStatus);
    click(kFirstCheck);
    EXPECT_TRUE(shows(kFirstCheck, kChecked));
    click(kFirstCheck);
    EXPECT_TRUE(shows(kFirstCheck, kBlank));
    click(kFirstName); // selects it
    desktop::xdotool({"key", "space"});
    EXPECT_TRUE(shows(kFirstCheck, kChecked));
    desktop::xdotool({"key", "space"});
    EXPECT_TRUE(shows(kFirstCheck, kBlank));
    click(kHeaderCheck);
    EXPECT_TRUE(shows(kSecondCheck, kChecked));
    EXPECT_TRUE(shows(kHeaderCheck, kChecked));
    EXPECT_TRUE(shows(kContactsCheck, kChecked)) << "in the outline";
    click(kHeaderCheck);
    EXPECT_TRUE(returns(kStatus, noneChecked));

    EXPECT_TRUE(shows(kContactsCheck, kBlank));
    click(kContactsTriangle);
    click(kFamilyCheck);
    EXPECT_TRUE(shows(kSecondCheck, kChecked));
    EXPECT_TRUE(shows(kFirstCheck, kBlank)) << "a friend";
    EXPECT_TRUE(shows(kContactsCheck, kChecked)) << "of the mixed image";
    EXPECT_TRUE(shows(kWorkCheck, kBlank));
    EXPECT_TRUE(shows(kHeaderCheck, kBlank));
    click(kFamilyCheck);
    EXPECT_TRUE(shows(kSecondCheck, kBlank));
    EXPECT_TRUE(shows(kContactsCheck, kBlank));
}

TEST_F(PhoneManagerRealTest, FiltersMessages)
{
    startWithSample();
    click(kMessages);
    EXPECT_TRUE(shows(kFirstMessage, kReceived));
    EXPECT_TRUE(shows(kThirdMessage, kSent));
    const QImage all = picture(kStatus);
    click(kNameFilter);
    enter("clara");
    EXPECT_TRUE(shows(kThirdMessage, kBlank)) << "two messages are left";
    EXPECT_TRUE(shows(kSecondMessage, kSent));
    const QImage two = picture(kStatus);
    enter("");
    EXPECT_TRUE(returns(kStatus, all));
    enter("clara");
    EXPECT_TRUE(returns(kStatus, two));

    const QImage kinds = picture(kKinds);
    click(kKindArrow);
    EXPECT_TRUE(shows(kReceivedCheck, kChecked));
    click(kReceivedCheck);
    EXPECT_TRUE(shows(kReceivedCheck, kBlank));
    EXPECT_TRUE(shows(kSecondMessage, kBlank));
    click(kNowhere);
    EXPECT_TRUE(changes(kKinds, kinds)) << "tells them when the pop-over has closed";
    EXPECT_TRUE(shows(kFirstMessage, kSent));
}

TEST_F(PhoneManagerRealTest, OpensAndCopiesTheLinkOfAMessage)
{
    folder.write("xdg-open", "#!/bin/sh\necho \"$1\" >\"$XDG_CONFIG_HOME/opened\"\n");
    fs::permissions(folder.path() / "xdg-open", fs::perms::owner_all);
    startWithSample();
    click(kMessages);
    click(kNameFilter);
    enter("clara");
    EXPECT_TRUE(shows(kThirdMessage, kBlank));
    const QImage nothing = picture(QRect(kLink, QSize(40, 10)));
    click(kFirstMessage);
    EXPECT_TRUE(changes(QRect(kLink, QSize(40, 10)), nothing));
    click(kLink);
    EXPECT_TRUE(holds("opened", "https://example.org/photos/concert-2026\n"));

    const QPoint item(20, 12); // of the menu, from where it opens
    const QImage before = picture(QRect(kLink + item, QSize(10, 10)));
    moveTo(kLink);
    desktop::xdotool({"click", "3"});
    EXPECT_TRUE(changes(QRect(kLink + item, QSize(10, 10)), before));
    click(kLink + item);
    EXPECT_TRUE(returns(QRect(kLink + item + QPoint(20, 0), QSize(10, 10)), before));
    desktop::OtherProcess other;
    other.start({"clipboard"});
    EXPECT_TRUE(other.says("https://example.org/photos/concert-2026\n"));
    other.drops("");
}

TEST_F(PhoneManagerRealTest, ShowsPicturesThatAreDroppedAndChosen)
{
    const std::vector<std::string> files = writeFiles();
    start();
    click(kPictures);
    drop({files[2]}, kFamilyCheck);
    const auto warmth = [&](QPoint place) {
        const QColor color = desktop::colorOnScreen(origin + place);
        return color.red() - color.blue();
    };
    EXPECT_TRUE(desktop::waitUntil([&] { return warmth(kFirstThumbnail) > 40; })) << "a sunset";
    fs::rename(folder.path() / files[3], folder.path() / "Clouds.jpg"); // which can be typed
    click(kImport);
    choose("^Importieren$", "Clouds.jpg");
    EXPECT_TRUE(desktop::waitUntil([&] { return warmth(kSecondThumbnail) < -40; })) << "above the clouds";
    EXPECT_TRUE(holds(kSettings, "\"folder\": \"" + folder.path().string() + "\""));
}

TEST_F(PhoneManagerRealTest, GoesOnWorkingDuringLongImports)
{
    std::string table = "kind,number,text\n";
    for (int i = 0; i < kManyMessages; ++i) {
        table += "sent," + std::to_string(i) + ",text\n";
    }
    folder.write("long.csv", table);
    const fs::path sunset = folder.path() / writeFiles()[2];
    fs::create_directory(folder.path() / "Photos");
    for (int i = 0; i < kManyPictures; ++i) {
        fs::create_hard_link(sunset, folder.path() / "Photos" / (std::to_string(i) + ".jpg"));
    }
    start();
    click(kMessages);
    const QImage empty = picture(kCounts);
    drop({"long.csv"}, kImport);
    EXPECT_TRUE(changes(kCounts, empty));
    EXPECT_TRUE(shows(kFirstMessage, kSent));

    drop({"Photos"}, kNowhere);
    const auto runs = [&] { return desktop::colorOnScreen(origin + kProgressBegin) == QColor(kSky); };
    EXPECT_TRUE(desktop::waitUntil(runs));
    moveTo(kImport);
    EXPECT_TRUE(shows(kImportEdge, kSkyEdge));
    moveTo(kCancel);
    desktop::press();
    const QImage pressed = picture(kSentence);
    EXPECT_TRUE(changes(kSentence, pressed)) << "it proceeds meanwhile";
    EXPECT_TRUE(runs());
    desktop::release();
    EXPECT_TRUE(desktop::waitUntil([&] { return !runs(); }));
    const QImage cancelled = picture(kSentence);
    click(kPictures);
    click(kPicturesCheck);
    EXPECT_TRUE(shows(kFirstPictureCheck, kChecked)) << "what it had read stays";
    EXPECT_EQ(picture(kSentence), cancelled) << "it does not go on";
    click(kExport);
    choose("^Exportieren$", "");
    EXPECT_TRUE(holds("Telefon-Export/index.html", "</html>"));
    EXPECT_FALSE(fs::exists(folder.path() / "Telefon-Export/messages.csv")) << "none of them is checked";
    EXPECT_LT(filesIn("Telefon-Export/thumbnails").size(), static_cast<std::size_t>(kManyPictures));
}

TEST_F(PhoneManagerRealTest, ExportsWhatWasImportedAndTheOtherWayRound)
{
    const std::vector<std::string> dropped = writeFiles();
    start();
    const QImage empty = picture(kCounts);
    drop(dropped, kContacts);
    EXPECT_TRUE(changes(kCounts, empty));
    const std::map<std::string, std::string> first = exportTo("first");
    EXPECT_EQ(first.at("contacts.csv"), kContactsTable);
    EXPECT_EQ(first.at("messages.csv"), "\xEF\xBB\xBFKind,Name,Number,Date,Text\r\n"
                                        "Sent,,+49 1,,\"  \"\"\"\r\n"
                                        "Failed,Zoë,1;2,2026-04-03,\"Two\r\nlines, \"\"quoted\"\"\"\r\n"
                                        "Received,,3,,\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x9A\x80\r\n");
    for (const std::size_t place : {2U, 3U}) {
        EXPECT_EQ(first.at(dropped[place]), folder.read(dropped[place]));
    }
    quit();

    start();
    drop({"first/Telefon-Export"}, kContacts); // a folder
    EXPECT_TRUE(changes(kCounts, empty));
    EXPECT_EQ(exportTo("second"), first);
    quit();

    QProcess shell;
    shell.setProcessEnvironment(environment());
    QStringList arguments{"--import"};
    for (const std::string& file : dropped) {
        arguments << pathOf(file);
    }
    shell.start(PHONE_MANAGER, arguments + QStringList{"--export", pathOf("third")});
    EXPECT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().constData();
    EXPECT_EQ(filesIn("third"), first);
}

} // namespace
