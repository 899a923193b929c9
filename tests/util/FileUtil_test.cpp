#include "util/FileUtil.h"

#include "support/Drawing.h"
#include "support/EnvironmentVariable.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
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

/// A working folder, to which paths are relative.
class FileUtilTest : public testing::Test
{
protected:
    FileUtilTest() { fs::current_path(folder.path()); }
    ~FileUtilTest() override
    {
        for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
            std::error_code ignored; // of links
            fs::permissions(entry, fs::perms::owner_all, ignored);
        }
        fs::current_path("/");
    }

    static std::string charset(const char* file) { return utf8(FileUtil::getHtmlCharset(text(file).get())); }

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
    using Case = std::pair<std::uint64_t, const char*>;
    constexpr Case kCases[] = {
        {0, "0.0 B"},         {1023, "1023.0 B"},   {1024, "1.0 KB"},          {1048575, "1024.0 KB"},
        {1048576, "1.00 MB"}, {1 << 30, "1.00 GB"}, {1ULL << 41, "2048.00 GB"}};
    for (const auto& [bytes, size] : kCases) {
        EXPECT_EQ(utf8(FileUtil::QxGetFormatSizeFromBytes(bytes)), size);
    }
}

TEST_F(FileUtilTest, FindsTheCharacterSetOfAPage)
{
    using namespace std::string_literals;
    const std::pair<std::string, const char*> cases[] = {
        {"<META CONTENT='text/html; CHARSET = \t Shift_JIS \t\">", "Shift_JIS"},
        {"<meta charset=\"utf-16\">", ""},
        {"charsecharset x=a b\" charset=c\"", "a b"},
        {"\0charset=\xE9\xA0\""s, "\u00e9\u00a0"},
        {"charset=big5", "UTF-8"},
        {"charset=" + std::string(FileUtil::kLongestCharset + 1, 'x') + '"', "UTF-8"}};
    for (const auto& [html, expected] : cases) {
        folder.write("page.html", html);
        EXPECT_EQ(charset("page.html"), expected) << html.substr(0, 60);
    }
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    for (const char* none : {"pipe", "/no/such", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(charset(none), "UTF-8");
    }
    // Across the boundary of the parts in which the file may be read, and in little memory.
    std::ofstream("large.html").seekp((50 << 20) - 6) << "charset=big5\"";
    std::array<rusage, 2> usage{};
    getrusage(RUSAGE_SELF, &usage[0]);
    EXPECT_EQ(charset("large.html"), "big5");
    getrusage(RUSAGE_SELF, &usage[1]);
    EXPECT_LT(usage[1].ru_maxrss - usage[0].ru_maxrss, 10 * 1024) << "kilobytes";
}

TEST_F(FileUtilTest, FindsFreeNames)
{
    for (const char* name : {"photos", "photos(1)", "a(bc)(d)", "d.d/photos", "x(2).pdf"}) {
        fs::create_directories(name);
    }
    for (const char* file : {"photos(2)", "x.pdf", "x(1).pdf", "d"}) {
        folder.write(file, "");
    }
    using Paths = std::pair<const char*, const char*>;
    constexpr Paths kFolders[] = {
        {"/", "/(1)"},           {"d.d//photos", "d.d/photos(1)"}, {"d.d/photos/", "d.d/photos/(1)"},
        {"photos", "photos(2)"}, {"photos(2)", "photos(2)"},       {"a(bc)(d)", "a(bc)(1)"}};
    for (const auto& [path, expected] : kFolders) { // a file is no folder
        EXPECT_EQ(utf8(FileUtil::getDirNewName(text(path).get())), expected);
    }
    for (const char* name : kOddNames) {
        EXPECT_EQ(utf8(FileUtil::getDirNewName(text(name).get())), name);
        EXPECT_TRUE(FileUtil::Mkdir(name));
        EXPECT_EQ(utf8(FileUtil::getDirNewName(text(name).get())), std::string(name) + "(1)");
    }
    const Ref<NSString> withNul = NSString::stringWithCharacters(std::u16string_view(u"photos\0", 7));
    EXPECT_EQ(FileUtil::getDirNewName(withNul.get()), withNul);
    EXPECT_EQ(FileUtil::getDirNewName(nullptr), nullptr);

    using Names = std::array<const char*, 3>;
    constexpr Names kFiles[] = {
        {"x.txt", ".txt", "x.txt"},
        {"x.txt", ".pdf", "x(3).pdf"},
        {"./y.old.txt", ".pdf", "./y.old.pdf"},
        {"d.d/report", nullptr, "d(1)"}, // the cut is at the last full stop of the path
        {nullptr, "x", "null"}};
    for (const auto& [path, tail, expected] : kFiles) {
        EXPECT_EQ(utf8(FileUtil::getFilePathNewName_withPosfix(text(path).get(), text(tail).get())),
                  expected);
    }
}

TEST_F(FileUtilTest, MakesFoldersAndMeasuresFiles)
{
    folder.write("file", "12345");
    fs::create_symlink("nowhere", "dangling");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const auto size = [](const char* path) { return FileUtil::getFileSize(path); };
    EXPECT_TRUE(FileUtil::Mkdir("a/b/c/") && fs::is_directory("a/b/c"));
    EXPECT_TRUE(FileUtil::Mkdir("file") && FileUtil::isFileExist("a") && FileUtil::isFileExist("pipe"));
    EXPECT_EQ(size("file"), 5);
    fs::resize_file("file", std::uintmax_t{5} << 32); // takes no room
    EXPECT_EQ(size("file"), std::int64_t{5} << 32);
    EXPECT_TRUE(size("a") == 0 && size("pipe") == 0);
    const std::string tooLong(5000, 'x');
    for (const char* none : {"dangling", tooLong.c_str(), static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(FileUtil::Mkdir(none));
        EXPECT_FALSE(FileUtil::isFileExist(none));
        EXPECT_EQ(size(none), 0);
    }
    fs::permissions("file", fs::perms::owner_all);
    fs::permissions(folder.path(), fs::perms::owner_all | fs::perms::others_exec);
    if (geteuid() == 0) {
        EXPECT_TRUE(holdsForAUser([&] {
            return !FileUtil::Mkdir("new/folder") && size("file") == 0 && !FileUtil::Cp_To("a", "new") &&
                   !FileUtil::ModifyFileDateTime_withPath("2019-04-03 12:30:45", "a");
        }));
    }
}

TEST_F(FileUtilTest, CopiesWholeFoldersOrNothing)
{
    using fs::perms;
    fs::create_directories("from/locked/empty");
    folder.write("from/run", "code");
    for (const char* name : kOddNames) {
        folder.write(std::string("from/locked/") + name, name);
    }
    fs::create_symlink("../nowhere", "from/link");
    const auto time = fs::last_write_time("from") - std::chrono::hours(1000);
    fs::permissions("from/run", perms::owner_read | perms::owner_exec | perms::others_exec);
    fs::permissions("from/locked", perms::owner_read | perms::owner_exec);
    fs::permissions(folder.path(), perms::all);
    for (const char* path : {"from/run", "from/locked", "from"}) {
        fs::last_write_time(path, time);
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder.path())) {
        ASSERT_TRUE(geteuid() != 0 || lchown(entry.path().c_str(), 65534, 65534) == 0);
    }
    EXPECT_TRUE(holdsForAUser([] { return FileUtil::Cp_To("from/", "to/"); }));
    for (const std::string path : {"", "/run", "/locked", "/locked/empty"}) {
        EXPECT_EQ(fs::status("from" + path).permissions(), fs::status("to" + path).permissions()) << path;
        EXPECT_EQ(fs::last_write_time("from" + path), fs::last_write_time("to" + path)) << path;
    }
    for (const char* name : kOddNames) {
        EXPECT_EQ(folder.read(std::string("to/locked/") + name), name);
    }
    EXPECT_TRUE(FileUtil::Cp_To("to/link", "copied") && FileUtil::Cp_To("to/run", "single"));
    EXPECT_EQ(fs::read_symlink("copied"), "../nowhere");
    EXPECT_EQ(folder.read("single"), "code");

    fs::create_directory_symlink("from", "alias");
    using Paths = std::pair<const char*, const char*>;
    constexpr Paths kFailing[] = {
        {"from", "to"},         {"from", "to/link"}, {"from", "from/copy"}, {"from", "from/locked/copy"},
        {"from", "alias/copy"}, {"none", "copy"},    {nullptr, "copy"},     {"from", nullptr}};
    for (const auto& [source, destination] : kFailing) {
        EXPECT_FALSE(FileUtil::Cp_To(source, destination)) << source << " " << destination;
    }
    EXPECT_TRUE(fs::last_write_time("from") == time && fs::last_write_time("from/locked") == time)
        << "no copy was begun in the folder itself";
    EXPECT_TRUE(FileUtil::Cp_To("from", "fromage")) << "its name only begins the same";
    EXPECT_EQ(mkfifo("from/pipe", 0600), 0); // which cannot be copied
    for (const std::string locked : {"from/a", "from/b", "from/c", "from/d", "from/e", "from/f"}) {
        fs::create_directories(locked + "/folder");
        fs::permissions(locked, perms::all & ~(perms::owner_write | perms::others_write));
    }
    fs::permissions("from/locked", perms::all);
    EXPECT_TRUE(holdsForAUser(
        [] { return !FileUtil::Cp_To("from", "copy") && !FileUtil::Cp_To("from/pipe", "copy"); }));
    EXPECT_FALSE(fs::exists(fs::symlink_status("copy")));
}

TEST_F(FileUtilTest, SetsTheTimeOfModification)
{
    const EnvironmentVariable locale("LC_ALL", "C");
    const EnvironmentVariable zone("TZ", "Europe/Berlin");
    folder.write("file", "");
    const auto modified = [] {
        const auto time = std::chrono::file_clock::to_sys(fs::last_write_time("file"));
        return std::chrono::duration<double>(time.time_since_epoch()).count();
    };
    using Moment = std::pair<const char*, double>;
    constexpr Moment kMoments[] = {{"2019-03-31 01:59:59", 1553993999}, {"2019-03-31 03:00:00", 1553994000},
                                   {"2019-10-27 01:59:59", 1572134399}, {"2019-10-27 03:00:00", 1572141600},
                                   {"1969-12-31 23:00:00", -7200},      {"2019-04-03 12:30:45", 1554287445}};
    for (const auto& [dateTime, seconds] : kMoments) {
        EXPECT_TRUE(FileUtil::ModifyFileDateTime_withPath(dateTime, "file"));
        EXPECT_EQ(modified(), seconds) << dateTime;
        EXPECT_FALSE(FileUtil::ModifyFileDateTime_withPath(dateTime, nullptr));
    }
    for (const char* unreadable : {"today", "2019-03-31 02:30:00", static_cast<const char*>(nullptr)}) {
        EXPECT_TRUE(FileUtil::ModifyFileDateTime_withPath(unreadable, "file"));
        EXPECT_FALSE(FileUtil::ModifyFileDateTime_withPath(unreadable, "none"));
    }
    EXPECT_EQ(modified(), 1554287445) << "unchanged";
}

TEST_F(FileUtilTest, KnowsWhereTheProgramIs)
{
    const fs::path program = fs::read_symlink("/proc/self/exe");
    EXPECT_EQ(utf8(FileUtil::GetServerExePath()), program);
    EXPECT_EQ(utf8(FileUtil::GetExeDir()), program.parent_path() / "");
    EXPECT_EQ(utf8(FileUtil::GetResourcesDir()), program.parent_path() / "Resources" / "");
}

} // namespace
