#include "platform/foundation/NSFileManager.h"

#include "platform/foundation/NSString.h"
#include "support/Drawing.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace
{

TEST(NSFileManagerTest, TellsFilesFromFolders)
{
    const TemporaryFolder folder;
    folder.write("file \xC3\xA4", "");
    std::filesystem::create_directory(folder.path() / "folder");
    std::filesystem::create_symlink("folder", folder.path() / "link");
    std::filesystem::create_symlink("missing", folder.path() / "broken");
    const struct {
        const char* name;
        bool exists;
        bool isDirectory;
    } cases[] = {{"file \xC3\xA4", true, false}, {"folder", true, true},
                 {"link", true, true},           {"broken", false, false},
                 {"missing", false, false},      {"file \xC3\xA4/x", false, false}};
    const Ref<NSFileManager> manager = NSFileManager::defaultManager();
    for (const auto& [name, exists, isDirectory] : cases) {
        const Ref<NSString> path = text((folder.path() / name).c_str());
        bool answer = !isDirectory;
        EXPECT_EQ(manager->fileExistsAtPath_isDirectory(path.get(), &answer), exists) << name;
        EXPECT_EQ(answer, isDirectory) << name;
        EXPECT_EQ(manager->fileExistsAtPath_isDirectory(path.get(), nullptr), exists) << name;
    }
    const Ref<NSString> cut = NSString::stringWithCharacters(
        text(folder.path().c_str())->characters().data() + std::u16string(1, u'\0'));
    EXPECT_FALSE(manager->fileExistsAtPath_isDirectory(cut.get(), nullptr));
    EXPECT_FALSE(manager->fileExistsAtPath_isDirectory(nullptr, nullptr));
}

} // namespace
