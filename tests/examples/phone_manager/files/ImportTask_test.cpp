#include "phone_manager/files/ImportTask.h"

#include "phone_manager/Phone.h"
#include "phone_manager/Resources.h"
#include "platform/appkit/NSApplication.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;
using namespace std::string_literals;

class ImportTaskTest : public testing::Test
{
protected:
    Ref<ImportTask> start(const std::vector<std::string>& files, const std::string& charset = "UTF-8")
    {
        std::vector<fs::path> paths;
        std::ranges::transform(files, std::back_inserter(paths),
                               [&](const auto& file) { return folder.path() / file; });
        Ref<ImportTask> task = make<ImportTask>(paths, phone, charset);
        task->start();
        return task;
    }

    /// Contacts, messages and pictures, a line each.
    std::string held() const
    {
        std::string lines;
        for (const Contact& each : phone->contacts) {
            lines += each.name + '|' + each.group + '|' + each.number + '|' + each.email + '\n';
        }
        for (const Message& each : phone->messages) {
            lines += Message::kStates[each.state] + "|"s + each.name + '|' + each.number + '|' + each.date +
                     '|' + each.text + '\n';
        }
        for (const Picture& each : phone->pictures) {
            lines += each.file.filename().string() + '\n';
        }
        return lines;
    }

    void writePicture(const std::string& name) const
    {
        const Ref<NSImage> image = blankImage("", 4.0, 3.0);
        image->lockFocus();
        image->unlockFocus();
        ASSERT_TRUE(image->writePNGToFile(folder.path() / "picture.png"));
        fs::rename(folder.path() / "picture.png", folder.path() / name); // which may be no text
    }

    TemporaryFolder folder;
    Ref<Phone> phone = make<Phone>();
};

TEST_F(ImportTaskTest, TellsTablesByTheirColumns)
{
    const struct {
        std::string table;
        std::string held;
        std::vector<std::string> faults;
    } cases[] = {
        {"name,number\nZoë,1\n,\n", "Zoë||1|\n|||\n", {}},
        {"E-Mail,\" NUMBER \",Name,group,EMAIL,name\nx,1,Zoë,Work,z@a.b,y\nx,2,Ben,,,\n",
         "Zoë|Work|1|z@a.b\nBen||2|\n",
         {}},
        {"Kind;number;text\nReceived;1;a, b\n\n failed ;2;\"\nx\"",
         "Received||1||a, b\nFailed||2||\nx\n",
         {}},
        {"text\tdate\tname\tnumber\tkind\na\t2026-04-03 12:30:45\tBen\t1\tsent\n",
         "Sent|Ben|1|2026-04-03 12:30:45|a\n",
         {}},
        {"", "", {"line 1: The names of the columns are missing."}},
        {"\n\r\n", "", {"line 1: The names of the columns are missing."}},
        {"\nalpha,beta\na,b\n", "", {"line 2: These are no columns of contacts or messages."}},
        {"\xFF,beta\n",
         "",
         {
             "line 1: These are no columns of contacts or messages.",
         }},
        {"name\nx", "", {"line 1: The column “number” is missing."}},
        {"number,text\n1,x", "", {"line 1: The column “kind” is missing."}},
        {"name,\"number\n", "", {"line 1: A quotation mark is not closed."}},
        {"name,number\na\nb,1\n\"c,2\n1,2,3\nd,3\xFF\n\0,\ne,"s,
         "b||1|\nd||3\ufffd|\ne|||\n",
         {"line 2: There are 1 fields in 2 columns.", "line 4: A quotation mark is not closed.",
          "line 5: There are 3 fields in 2 columns.", "line 6: Some bytes are no characters in “UTF-8”.",
          "line 7: There is a NUL character in it."}},
        {"kind,number,text\nlost,1,a\nsent,2,b\n,3,c\n" + std::string(5000, 'x') + ",4,d",
         "Sent||2||b\n",
         {"line 2: “lost” is no kind of message.", "line 4: “” is no kind of message.",
          "line 5: “…” is no kind of message."}},
        {"name,number\na," + std::string(5 << 20, 'x') + "\nb,1",
         "b||1|\n",
         {"line 2: The record is too long."}},
    };
    for (const auto& [table, expected, faults] : cases) {
        folder.write("table.CSV", table);
        phone = make<Phone>();
        const Ref<ImportTask> task = start({"table.CSV"});
        task->run();
        EXPECT_EQ(held(), expected) << table.substr(0, 60);
        ASSERT_EQ(task->faults().size(), faults.size()) << table.substr(0, 60);
        for (std::size_t place = 0; place < faults.size(); ++place) {
            EXPECT_EQ(task->faults()[place], "“table.CSV”, " + faults[place]);
        }
        EXPECT_EQ(task->summary(), "Imported contacts: " + std::to_string(phone->contacts.size()) +
                                       ", messages: " + std::to_string(phone->messages.size()) +
                                       ", pictures: 0.");
        EXPECT_EQ(task->progress(), 1.0);
    }
}

TEST_F(ImportTaskTest, ImportsFilesOfAllKinds)
{
    fs::create_directories(folder.path() / "all/inside");
    writePicture("all/b.png");
    for (const char* name : {"f", "d", "a", "e"}) {
        writePicture("all/"s + name + ".png");
    }
    writePicture("all/g\xFF");
    writePicture("all/h.html");
    writePicture("all/.hidden.png");
    writePicture("all/inside/c.png");
    folder.write("all/a.csv", "\uFEFFname,number\nZoë,1\n");
    folder.write("all/index.html", "<html>");
    folder.write("all/cut.png", folder.read("all/b.png").substr(0, 40));
    folder.write("old.txt", "kind,number,text\nsent,1,M\xFCller");
    folder.write("%s.tsv", "#charset=klingon\n");
    ASSERT_EQ(mkfifo((folder.path() / "pipe.csv").c_str(), 0600), 0);
    const Ref<ImportTask> task =
        start({"none.csv", "all", "%s.tsv", "old.txt", "pipe.csv", "all/b.png"}, "latin1");
    EXPECT_EQ(task->progress(), 0.0);
    task->run();
    EXPECT_EQ(task->state(), Task::State::Done);
    EXPECT_EQ(held(), "Zoë||1|\nSent||1||Müller\na.png\nb.png\nd.png\ne.png\nf.png\ng\xFF\nh.html\nb.png\n");
    const std::vector<std::string> faults = {
        "“none.csv” cannot be read.", "“cut.png” is neither a table nor a picture.",
        "“%s.tsv”: The character set “klingon” is not known.", "“pipe.csv” cannot be read."};
    EXPECT_EQ(task->faults(), faults);
    EXPECT_EQ(task->summary(), "Imported contacts: 1, messages: 1, pictures: 8.");
    EXPECT_NE(task->identifier(), start({})->identifier());
}

TEST_F(ImportTaskTest, WorksInSlicesUntilItIsCancelled)
{
    std::string table = "name,number\n";
    for (int row = 0; row < 10000; ++row) {
        table += row % 3 == 0 ? "fault\n" : "name,1\n";
    }
    folder.write("table.csv", table);
    const Ref<ImportTask> task = start({"table.csv"});
    double last = -1.0;
    std::size_t slices = 0;
    task->didProceed = [&] {
        EXPECT_LT(last, task->progress());
        last = task->progress();
        ++slices;
    };
    while (task->progress() < 0.5) {
        const std::size_t before = phone->contacts.size();
        NSApplication::sharedApplication()->handlePendingEvents();
        EXPECT_LE(phone->contacts.size(), before + 500);
    }
    EXPECT_GE(slices, 5U);
    EXPECT_EQ(task->faults().size(), Task::kMostFaults);
    EXPECT_GT(task->faultCount(), Task::kMostFaults);
    task->didProceed = [] {};
    task->cancel();
    EXPECT_EQ(task->state(), Task::State::Cancelled);
    const std::size_t kept = phone->contacts.size();
    for (int turn = 0; turn < 3; ++turn) {
        NSApplication::sharedApplication()->handlePendingEvents();
    }
    EXPECT_EQ(phone->contacts.size(), kept);
    EXPECT_EQ(task->summary(), "The import was cancelled. Imported contacts: " + std::to_string(kept) +
                                   ", messages: 0, pictures: 0.");

    std::string longTexts = "name,number\n";
    for (int row = 0; row < 8; ++row) {
        longTexts += std::string(500'000, 'x') + ",1\n";
    }
    folder.write("long.csv", longTexts);
    const std::size_t before = phone->contacts.size();
    const Ref<ImportTask> slow = start({"long.csv"});
    NSApplication::sharedApplication()->handlePendingEvents();
    EXPECT_LE(phone->contacts.size(), before + 3) << "a slice of about a megabyte";
    slow->run();
    EXPECT_EQ(phone->contacts.size(), before + 8);

    folder.write("film.mp4", std::string(5 << 20, 'x'));
    const Ref<ImportTask> film = start({"film.mp4"});
    film->run();
    EXPECT_EQ(film->faults(), std::vector{"“film.mp4” is neither a table nor a picture."s});

    folder.write("large.csv", "");
    fs::resize_file(folder.path() / "large.csv", kLargestFile + 1); // which takes no place
    const Ref<ImportTask> large = start({"large.csv"});
    large->run();
    EXPECT_EQ(large->faults(), std::vector{"“large.csv” is too large."s});
}

} // namespace
