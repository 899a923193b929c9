#include "util/FileUtil.h"

#include "platform/foundation/NSString.h"
#include "support/Drawing.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

std::string utf8(const Ref<NSString>& string)
{
    return string ? string->UTF8String() : "null";
}

/// A working folder, to which paths are relative.
class FileUtilTest : public testing::Test
{
protected:
    FileUtilTest() { fs::current_path(folder.path()); }
    ~FileUtilTest() override { fs::current_path("/"); }

    std::string charset(const std::string& html)
    {
        folder.write("page.html", html);
        return utf8(FileUtil::getHtmlCharset(text("page.html").get()));
    }

    /// Whether `check` holds in a process without the rights of the administrator.
    static bool holdsForAUser(const std::function<bool()>& check)
    {
        constexpr uid_t kNobody = 65534;
        const pid_t child = fork();
        if (child == 0) {
            _exit((geteuid() == 0 && setuid(kNobody) != 0) || !check() ? 1 : 0);
        }
        int status = -1;
        waitpid(child, &status, 0);
        return status == 0;
    }

    TemporaryFolder folder;
};

// Every forbidden character of other systems, blanks, dots and letters of several bytes.
constexpr const char* kOddNames[] = {"a\\b?c%d*e|f\"g<h>i:j",       " x ", "...",
                                     "caf\u00e9 \u4e2d \U0001F600", "-rf", "a\nb"};

TEST_F(FileUtilTest, FormatsSizesInTheLargestUnit)
{
    for (const auto& [bytes, size] :
         std::initializer_list<std::pair<std::uint64_t, const char*>>{{0, "0.0 B"},
                                                                      {1023, "1023.0 B"},
                                                                      {1024, "1.0 KB"},
                                                                      {1536, "1.5 KB"},
                                                                      {1048575, "1024.0 KB"},
                                                                      {1048576, "1.00 MB"},
                                                                      {1073741823, "1024.00 MB"},
                                                                      {1073741824, "1.00 GB"},
                                                                      {2048ULL << 30, "2048.00 GB"},
                                                                      {UINT64_MAX, "17179869184.00 GB"}}) {
        EXPECT_EQ(utf8(FileUtil::QxGetFormatSizeFromBytes(bytes)), size);
    }
}

TEST_F(FileUtilTest, FindsTheCharacterSetOfAPage)
{
    using namespace std::string_literals;
    for (const auto& [html, expected] : std::initializer_list<std::pair<std::string, const char*>>{
             {"<meta content=\"text/html; charset=big5\">", "big5"},
             {"<META CONTENT='text/html; CHARSET = \t Shift_JIS \t\">", "Shift_JIS"},
             {"<meta charset=\"utf-16\">", ""},
             {"ccharset x=y\"", "y"},
             {"charsecharset=a b\" charset=c\"", "a b"},
             {"charset=\xE9\xA0\"", "\u00e9\u00a0"},
             {"\0char\0 charset=x\""s, "x"},
             {"=\" charset", "UTF-8"},
             {"charset \"", "UTF-8"},
             {"charset=big5", "UTF-8"},
             {"charset=" + std::string(FileUtil::kLongestCharset + 1, 'x') + '"', "UTF-8"},
             {"", "UTF-8"}}) {
        EXPECT_EQ(charset(html).c_str(), std::string(expected)) << html.substr(0, 60);
    }
    // Across every boundary of the parts in which the file may be read.
    const std::string declaration = "charset=big5\"";
    for (std::size_t start = 65536 - declaration.size(); start <= 65536; ++start) {
        EXPECT_EQ(charset(std::string(start, 'c') + declaration), "big5");
    }
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    for (const char* none : {"pipe", ".", "/no/such", ""}) {
        EXPECT_EQ(utf8(FileUtil::getHtmlCharset(text(none).get())), "UTF-8");
    }
    EXPECT_EQ(utf8(FileUtil::getHtmlCharset(nullptr)), "UTF-8");
}

TEST_F(FileUtilTest, ReadsLargePagesInLittleMemory)
{
    std::ofstream("page.html").seekp(50 << 20) << "charset=big5\"";
    const auto peak = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    const long before = peak();
    EXPECT_EQ(utf8(FileUtil::getHtmlCharset(text("page.html").get())), "big5");
    EXPECT_LT(peak() - before, 10 * 1024) << "kilobytes";
}

TEST_F(FileUtilTest, FindsFreeNamesForFolders)
{
    for (const char* name : {"photos", "photos(1)", "photos(2)", "a(b)", "a(", "p.q", "d/photos"}) {
        fs::create_directories(name);
    }
    folder.write("photos(3)", "a file is no folder");
    const std::string here = folder.path().string();
    for (const auto& [path, expected] :
         std::initializer_list<std::pair<std::string, std::string>>{{"photos", "photos(3)"},
                                                                    {here + "/photos", here + "/photos(3)"},
                                                                    {here + "//photos", here + "/photos(3)"},
                                                                    {"d/photos", "d/photos(1)"},
                                                                    {"d/photos/", "d/photos/(1)"},
                                                                    {"a(b)", "a(1)"},
                                                                    {"a(", "a(1)"},
                                                                    {"p.q", "p.q(1)"},
                                                                    {"photos(3)", "photos(3)"},
                                                                    {"none", "none"},
                                                                    {"/", "/(1)"},
                                                                    {"/tmp", "/tmp(1)"},
                                                                    {"", ""}}) {
        EXPECT_EQ(utf8(FileUtil::getDirNewName(text(path.c_str()).get())), expected) << path;
    }
    for (const char* name : kOddNames) {
        EXPECT_EQ(utf8(FileUtil::getDirNewName(text(name).get())), name);
        EXPECT_TRUE(FileUtil::Mkdir(name));
        EXPECT_EQ(utf8(FileUtil::getDirNewName(text(name).get())), std::string(name) + "(1)");
    }
    const Ref<NSString> withNul = NSString::stringWithCharacters(std::u16string_view(u"photos\0", 7));
    EXPECT_EQ(FileUtil::getDirNewName(withNul.get()), withNul);
    EXPECT_EQ(FileUtil::getDirNewName(nullptr), nullptr);
}

TEST_F(FileUtilTest, FindsFreeNamesForFiles)
{
    folder.write("report.txt", "");
    folder.write("x.pdf", "");
    folder.write("x(1).pdf", "");
    fs::create_directory("x(2).pdf");
    fs::create_directories("a.b");
    folder.write("a", "");
    for (const auto& [path, tail, expected] : std::initializer_list<std::array<const char*, 3>>{
             {"report.txt", ".pdf", "report.pdf"},
             {"report.txt", ".txt", "report(1).txt"},
             {"./x.old.txt", ".pdf", "./x.old.pdf"},
             {"x.txt", ".pdf", "x(3).pdf"},
             {"a", "", "a(1)"},
             {"a.b/report", "", "a(1)"}, // the cut is at the last full stop of the path
             {"new", ".txt", "new.txt"},
             {".", "", ""}}) {
        EXPECT_EQ(utf8(FileUtil::getFilePathNewName_withPosfix(text(path).get(), text(tail).get())),
                  expected);
    }
    for (const char* name : kOddNames) {
        const std::string stem = fs::path(name).string().substr(0, std::string(name).rfind('.'));
        folder.write(stem + "!", "");
        EXPECT_EQ(utf8(FileUtil::getFilePathNewName_withPosfix(text(name).get(), text("!").get())),
                  stem + "(1)!");
    }
    EXPECT_EQ(utf8(FileUtil::getFilePathNewName_withPosfix(text("a.x").get(), nullptr)), "a(1)");
    EXPECT_EQ(FileUtil::getFilePathNewName_withPosfix(nullptr, text("x").get()), nullptr);
}

TEST_F(FileUtilTest, MakesFoldersAndMeasuresFiles)
{
    folder.write("file", "12345");
    fs::create_symlink("nowhere", "dangling");
    fs::create_symlink("file", "link");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const auto size = [](const char* path) { return FileUtil::getFileSize(path); };
    EXPECT_TRUE(FileUtil::Mkdir("a/b/c") && FileUtil::Mkdir("a/b/c") && fs::is_directory("a/b/c"));
    EXPECT_TRUE(FileUtil::Mkdir("d/e/") && fs::is_directory("d/e"));
    EXPECT_TRUE(FileUtil::Mkdir("file"));
    EXPECT_TRUE(FileUtil::isFileExist("file") && FileUtil::isFileExist("a") && FileUtil::isFileExist("pipe"));
    EXPECT_EQ(size("file"), 5);
    EXPECT_EQ(size("link"), 5);
    fs::resize_file("file", std::uintmax_t{5} << 32); // takes no room
    EXPECT_EQ(size("file"), std::int64_t{5} << 32);
    EXPECT_TRUE(size("a") == 0 && size("pipe") == 0);
    const std::string tooLong(5000, 'x');
    for (const char* none : {"", "dangling", "file/x", tooLong.c_str(), static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(FileUtil::Mkdir(none));
        EXPECT_FALSE(FileUtil::isFileExist(none));
        EXPECT_EQ(size(none), 0);
    }
    fs::permissions(folder.path(), fs::perms::owner_all | fs::perms::others_exec | fs::perms::others_read);
    fs::permissions("file", fs::perms::owner_all);
    if (geteuid() == 0) {
        EXPECT_TRUE(holdsForAUser([&] {
            return !FileUtil::Mkdir("new/folder") && size("file") == 0 && !FileUtil::Cp_To("a", "new") &&
                   !FileUtil::ModifyFileDateTime_withPath("2019-04-03 12:30:45", "a");
        }));
    }
}

TEST_F(FileUtilTest, CopiesFoldersWholeAndKeepsWhatBelongsToFiles)
{
    fs::create_directories("from/locked/empty");
    folder.write("from/run", "code");
    for (const char* name : kOddNames) {
        folder.write(std::string("from/locked/") + name, name);
    }
    fs::create_symlink("../nowhere", "from/link");
    const auto time = fs::last_write_time("from") - std::chrono::hours(1000);
    using fs::perms;
    fs::permissions("from/run", perms::owner_read | perms::owner_exec | perms::others_exec);
    fs::permissions("from/locked", perms::owner_read | perms::owner_exec);
    for (const char* path : {"from/run", "from/locked", "from"}) {
        fs::last_write_time(path, time);
    }
    fs::permissions(folder.path(), perms::all);
    if (geteuid() == 0) {
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            ASSERT_EQ(lchown(entry.path().c_str(), 65534, 65534), 0);
        }
    }
    EXPECT_TRUE(holdsForAUser([] { return FileUtil::Cp_To("from/", "to/"); }));
    for (const char* path : {"", "/run", "/locked", "/locked/empty"}) {
        const std::string from = std::string("from") + path;
        const std::string to = std::string("to") + path;
        EXPECT_EQ(fs::status(from).permissions(), fs::status(to).permissions()) << path;
        EXPECT_EQ(fs::last_write_time(from), fs::last_write_time(to)) << path;
    }
    EXPECT_EQ(folder.read("to/run"), "code");
    for (const char* name : kOddNames) {
        EXPECT_EQ(folder.read(std::string("to/locked/") + name), name);
    }
    EXPECT_EQ(fs::read_symlink("to/link"), "../nowhere");
    EXPECT_TRUE(FileUtil::Cp_To("from/link", "copied"));
    EXPECT_TRUE(FileUtil::Cp_To("from/run", "single"));
    EXPECT_EQ(fs::read_symlink("copied"), "../nowhere");
    EXPECT_EQ(folder.read("single"), "code");
    for (const char* path : {"from/locked", "to/locked"}) {
        fs::permissions(path, perms::owner_all);
    }
}

TEST_F(FileUtilTest, LeavesNothingBehindWhenACopyFails)
{
    fs::create_directories("from/a");
    fs::create_directories("full");
    folder.write("from/a/file", "x");
    folder.write("file", "x");
    fs::create_symlink("nowhere", "dangling");
    fs::create_directory_symlink("from", "alias");
    const auto time = fs::last_write_time("from");
    for (const auto& [from, to] :
         std::initializer_list<std::pair<const char*, const char*>>{{"from", "full"},
                                                                    {"from", "dangling"},
                                                                    {"from", "file"},
                                                                    {"file", "full"},
                                                                    {"from", "from/copy"},
                                                                    {"from", "from/a/copy"},
                                                                    {"from", "alias/copy"},
                                                                    {"from", "from"},
                                                                    {"from", "none/copy"},
                                                                    {"from", "file/copy"},
                                                                    {"none", "copy"},
                                                                    {"", "copy"},
                                                                    {"file", ""},
                                                                    {nullptr, "copy"},
                                                                    {"file", nullptr},
                                                                    {"from", "."}}) {
        EXPECT_FALSE(FileUtil::Cp_To(from, to))
            << (from == nullptr ? "null" : from) << " " << (to == nullptr ? "null" : to);
    }
    EXPECT_EQ(fs::last_write_time("from"), time) << "no copy was begun in the folder itself";
    EXPECT_TRUE(FileUtil::Cp_To("from", "fromage")) << "its name only begins the same";
    ASSERT_EQ(mkfifo("from/pipe", 0600), 0); // which cannot be copied
    fs::permissions(folder.path(), fs::perms::all);
    for (const char* locked : {"from/a", "from/b", "from/c", "from/d", "from/e", "from/f"}) {
        fs::create_directories(std::string(locked) + "/folder");
        fs::permissions(locked, fs::perms::all & ~(fs::perms::owner_write | fs::perms::others_write));
    }
    EXPECT_TRUE(holdsForAUser(
        [] { return !FileUtil::Cp_To("from", "copy") && !FileUtil::Cp_To("from/pipe", "copy"); }));
    EXPECT_FALSE(fs::exists(fs::symlink_status("copy")));
    EXPECT_TRUE(fs::is_empty("full"));
    EXPECT_EQ(fs::read_symlink("dangling"), "nowhere");
    for (const auto& entry : fs::directory_iterator("from")) {
        fs::permissions(entry, fs::perms::owner_all);
    }
}

TEST_F(FileUtilTest, SetsTheTimeOfModification)
{
    const EnvironmentVariable locale("LC_ALL", "C");
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    folder.write("file", "");
    fs::create_directory("folder");
    const auto modified = [](const char* path) {
        struct stat status {
        };
        stat(path, &status);
        return std::pair(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    };
    for (const auto& [dateTime, seconds] :
         std::initializer_list<std::pair<const char*, long>>{{"2019-03-31 01:59:59", 1553993999},
                                                             {"2019-03-31 03:00:00", 1553994000},
                                                             {"2019-10-27 01:59:59", 1572134399},
                                                             {"2019-10-27 03:00:00", 1572141600},
                                                             {"1969-12-31 23:00:00", -7200}}) {
        for (const char* path : {"file", "folder"}) {
            EXPECT_TRUE(FileUtil::ModifyFileDateTime_withPath(dateTime, path));
            EXPECT_EQ(modified(path), std::pair(seconds, 0L)) << dateTime;
        }
        EXPECT_FALSE(FileUtil::ModifyFileDateTime_withPath(dateTime, "none"));
        EXPECT_FALSE(FileUtil::ModifyFileDateTime_withPath(dateTime, nullptr));
    }
    for (const char* unreadable : {"", "today", "2019-03-31 02:30:00", static_cast<const char*>(nullptr)}) {
        EXPECT_TRUE(FileUtil::ModifyFileDateTime_withPath(unreadable, "file"));
        EXPECT_FALSE(FileUtil::ModifyFileDateTime_withPath(unreadable, "none"));
        EXPECT_FALSE(FileUtil::ModifyFileDateTime_withPath(unreadable, nullptr));
    }
    EXPECT_EQ(modified("file"), std::pair(-7200L, 0L)) << "unchanged";
}

TEST_F(FileUtilTest, KnowsWhereTheProgramIs)
{
    const fs::path program = fs::read_symlink("/proc/self/exe");
    EXPECT_EQ(utf8(FileUtil::GetServerExePath()), program);
    EXPECT_EQ(utf8(FileUtil::GetExeDir()), program.parent_path() / "");
    EXPECT_EQ(utf8(FileUtil::GetResourcesDir()), program.parent_path() / "Resources" / "");
}

} // namespace
