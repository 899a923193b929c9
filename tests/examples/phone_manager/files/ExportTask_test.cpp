#include "phone_manager/Resources.h"
#include "phone_manager/files/ExportTask.h"
#include "phone_manager/files/RecordReader.h"
#include "platform/appkit/NSApplication.h"
#include "platform/foundation/NSUserDefaults.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"
#include "util/FileUtil.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <tuple>

namespace
{

namespace fs = std::filesystem;

class ExportTaskTest : public testing::Test
{
protected:
    Ref<ExportTask> start(const std::string& name = "out")
    {
        Ref<ExportTask> task = make<ExportTask>(*phone, folder.path() / name);
        task->start();
        return task;
    }
    void addPicture(const std::string& name, NSSize size)
    {
        const Ref<NSImage> image = blankImage("", size.width, size.height);
        image->lockFocus();
        image->unlockFocus();
        ASSERT_TRUE(image->writePNGToFile(folder.path() / "picture.png"));
        fs::rename(folder.path() / "picture.png", folder.path() / name); // which may be no text
        phone->pictures.push_back({folder.path() / name, nullptr, true});
    }

    /// Paths in the folder of what is in another one.
    std::set<std::string> filesIn(const fs::path& name) const
    {
        std::set<std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path() / name)) {
            files.insert(fs::relative(entry.path(), folder.path() / name));
        }
        return files;
    }

    TemporaryFolder folder;
    Ref<Phone> phone = make<Phone>();
};

TEST_F(ExportTaskTest, LosesNothingThatIsImportedAgain)
{
    const std::vector<std::string> pieces = {
        ",",       ";",      "\t",     "\"",         "\"\"",   "\r\n",   "\n",
        "\r",      " ",      "=1+1",   "#charset=x", "@",      "-",      "a",
        "ä",       "\u2028", "\u200b", "\ufeff",     "\ufffd", "\uffff", "\U0001f469\u200d\U0001f680",
        "e\u0301", "\x01",   "\x1a",   "\x7f",       "<b>",    "\\"};
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
    const auto nasty = [&] {
        std::string text;
        for (auto length = random() % 6; length > 0; --length) {
            text += pieces[random() % pieces.size()];
        }
        return text;
    };
    for (int count = 0; count < 3000; ++count) {
        phone->contacts.push_back({nasty(), nasty(), nasty(), nasty(), true});
        phone->messages.push_back(
            {random() % Message::kStates.size(), nasty(), nasty(), nasty(), nasty(), true});
    }
    const Ref<ExportTask> task = start();
    double last = 0.0;
    while (task->state() == Task::State::Running) {
        NSApplication::sharedApplication()->handlePendingEvents();
        EXPECT_LE(last, task->progress());
        EXPECT_LT(task->progress(), last + 0.1) << "in slices";
        last = task->progress();
    }
    EXPECT_EQ(last, 1.0);
    EXPECT_EQ(task->faults().size(), 0U);
    const Ref<Phone> again = make<Phone>();
    for (const char* name : {"contacts.csv", "messages.csv"}) {
        RecordReader reader(name, TextFile(task->folder() / name));
        for (std::string fault; reader.next(*again, fault);) {
            EXPECT_EQ(fault, "");
        }
    }
    const std::vector<Contact>& contacts = again->contacts;
    ASSERT_EQ(contacts.size(), 3000U);
    const std::vector<Message>& messages = again->messages;
    ASSERT_EQ(messages.size(), 3000U);
    for (std::size_t place = 0; place < 3000; ++place) {
        const Contact& a = contacts[place];
        const Contact& b = phone->contacts[place];
        ASSERT_EQ(std::tie(a.name, a.group, a.number, a.email), std::tie(b.name, b.group, b.number, b.email));
        const Message& c = messages[place];
        const Message& d = phone->messages[place];
        ASSERT_EQ(std::tie(c.state, c.name, c.number, c.date, c.text),
                  std::tie(d.state, d.name, d.number, d.date, d.text));
    }
}

TEST_F(ExportTaskTest, WritesWhatIsCheckedForABrowser)
{
    NSUserDefaults::setStandardDomain(text((folder.path() / "defaults.ini").c_str()).get());
    setLanguage("de");
    phone->contacts = {{"Zoë <1> & \"2\"", "Work", "1", "z@a.b", true}, {"Ben", "Work", "2"}};
    phone->messages = {{Message::kFailed, "Zoë", "1", "a\n</td>", "2026-04-03 12:30:45", true}};
    fs::create_directories(folder.path() / "a.b/c");
    addPicture("a.b/x #1.y.png", {400.0, 200.0});
    addPicture("a.b/c/x #1.y.png", {2.0, 1.0});
    addPicture("a.b/long", {16000.0, 1.0});
    addPicture("a.b/unchecked.png", {2.0, 1.0});
    phone->pictures.back().isChecked = false;
    addPicture("a.b/gone.png", {2.0, 1.0});
    fs::remove(folder.path() / "a.b/gone.png");
    addPicture("a.b/file.png", {2.0, 1.0});
    addPicture("a.b/\xFF<?>.png", {2.0, 1.0});
    fs::create_symlink("file.png", folder.path() / "a.b/link.png");
    phone->pictures.push_back({folder.path() / "a.b/link.png", nullptr, true});
    addPicture("a.b/.x.png", {2.0, 1.0});
    const std::string longest(255, 'x');
    addPicture(longest, {2.0, 1.0});
    fs::create_directories(folder.path() / "a.b/out");
    const Ref<ExportTask> task = start("a.b/out/");
    phone->contacts.clear(); // what is exported is that of the start
    task->run();

    EXPECT_EQ(task->folder(), folder.path() / "a.b/out(1)");
    const std::set<std::string> expected = {"contacts.csv",
                                            "messages.csv",
                                            "index.html",
                                            "thumbnails",
                                            "x #1.y.png",
                                            "x #1.y(1).png",
                                            "long",
                                            "picture",
                                            "file.png",
                                            "link.png",
                                            "picture.x.png",
                                            longest,
                                            "thumbnails/1.png",
                                            "thumbnails/2.png",
                                            "thumbnails/3.png",
                                            "thumbnails/4.png",
                                            "thumbnails/5.png",
                                            "thumbnails/6.png",
                                            "thumbnails/7.png",
                                            "thumbnails/8.png"};
    EXPECT_EQ(filesIn("a.b/out(1)"), expected);
    EXPECT_FALSE(fs::is_symlink(task->folder() / "link.png"));
    EXPECT_EQ(task->faults(), std::vector<std::string>{"“gone.png” cannot be copied."});
    EXPECT_EQ(task->summary(),
              "In “" + task->folder().string() + "” are contacts: 1, messages: 1, pictures: 8.");
    EXPECT_EQ(folder.read("a.b/out(1)/contacts.csv"),
              "\uFEFFName,Group,Number,Email\r\n\"Zoë <1> & \"\"2\"\"\",Work,1,z@a.b\r\n");
    const Ref<NSImage> thumbnail =
        make<NSImage>()->initWithContentsOfFile(text((task->folder() / "thumbnails/1.png").c_str()).get());
    EXPECT_EQ(thumbnail->size(), (NSSize{160.0, 80.0}));

    const std::string page = folder.read("a.b/out(1)/index.html");
    for (const char* part :
         {"<tr><td>Zoë &lt;1&gt; &amp; &quot;2&quot;</td><td>Arbeit</td><td>1</td><td>z@a.b</td></tr>",
          "<tr><td>Failed</td><td>Zoë</td><td>1</td><td>2026-04-03 12:30:45</td><td>a\n&lt;/td&gt;</td></tr>",
          "<figure><a href=\"./x%20%231.y(1).png\"><img "
          "src=\"thumbnails/2.png\" alt=\"x #1.y(1).png\"><br>x "
          "#1.y(1).png</a><figcaption>"}) {
        EXPECT_NE(page.find(part), std::string::npos) << part;
    }
    EXPECT_TRUE(page.ends_with("</html>\n"));
    EXPECT_EQ(page.find("Ben"), std::string::npos);
    EXPECT_EQ(utf8(FileUtil::getHtmlCharset(text((task->folder() / "index.html").c_str()).get())), "utf-8");
    NSUserDefaults::setStandardDomain(nullptr);
}

TEST_F(ExportTaskTest, LeavesNothingOfWhatIsCancelled)
{
    phone->contacts = {{"Zoë", "", "1", "", true}};
    phone->messages.assign(5000, {1, "Zoë", "1", "text", "", true});
    const Ref<ExportTask> task = start();
    while (!fs::exists(task->folder() / "messages.csv")) {
        ASSERT_EQ(task->state(), Task::State::Running);
        NSApplication::sharedApplication()->handlePendingEvents();
    }
    task->cancel();
    EXPECT_FALSE(fs::exists(task->folder()));
    EXPECT_EQ(task->summary(), "The export was cancelled.");
    EXPECT_EQ(start()->folder(), folder.path() / "out");

    phone->messages.clear();
    fs::create_directory(folder.path() / "some");
    for (const char* here : {"some/.", "some/./"}) {
        const Ref<ExportTask> beside = start(here);
        beside->run();
        EXPECT_TRUE(beside->folder().filename().string().starts_with("some(")) << here;
    }
    folder.write("file", "");
    for (const char* name : {"file", "file/inside"}) {
        const Ref<ExportTask> impossible = start(name);
        impossible->run();
        EXPECT_EQ(impossible->faults(),
                  std::vector<std::string>{"The folder “" + (folder.path() / name).string() +
                                           "” cannot be made: nothing can be written there."});
        EXPECT_EQ(impossible->summary(), "Nothing was exported.");
    }
}

} // namespace
