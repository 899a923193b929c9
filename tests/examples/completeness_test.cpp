// Whether the examples use, or show, all that the library offers.

#include "platform/foundation/ClassTable.h"
#include "window/Classes.h"
#include "window/PelSMSTableData.h"
#include "window/ZuMultiSelectComboBoxData.h"
#include "window/ZuOutlineItem.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace
{

const std::filesystem::path kProject = PROJECT_SOURCE_DIR;

std::string contentsOf(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What `pattern`, or its first group, finds in the examples' sources, interface files and settings.
std::set<std::string> foundInExamples(const std::regex& pattern, std::size_t group = 0)
{
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kProject / "examples")) {
        const std::string extension = entry.path().extension().string();
        if (extension == ".cpp" || extension == ".h" || extension == ".ui" || extension == ".json") {
            const std::string text = contentsOf(entry.path());
            for (std::sregex_iterator each(text.begin(), text.end(), pattern), end; each != end; ++each) {
                found.insert((*each)[group].str());
            }
        }
    }
    return found;
}

/// The classes that the headers of a floor give away.
std::vector<std::string> classesOf(const char* floor)
{
    std::vector<std::string> classes;
    for (const auto& entry : std::filesystem::directory_iterator(kProject / "src" / floor)) {
        if (entry.path().extension() == ".h") {
            const std::string text = contentsOf(entry.path());
            static const std::regex kClass("(?:class|struct) TESSALINE_EXPORT (\\w+)");
            for (std::sregex_iterator found(text.begin(), text.end(), kClass), end; found != end; ++found) {
                classes.push_back((*found)[1].str());
            }
        }
    }
    return classes;
}

TEST(CompletenessTest, EveryClassIsUsedOrShown)
{
    const std::set<std::string> words = foundInExamples(std::regex("\\w+"));
    std::size_t count = 0;
    for (const char* floor : {"basic", "util", "window"}) {
        for (const std::string& name : classesOf(floor)) {
            EXPECT_TRUE(words.contains(name)) << name;
            ++count;
        }
    }
    EXPECT_GE(count, kWindowClasses.size()) << "the headers were found";
}

TEST(CompletenessTest, EveryPropertyIsUsedOrShown)
{
    // Members that are called, what forms set, and the colours that are set by name.
    std::set<std::string> members = foundInExamples(std::regex("(?:\\.|->|::|<property name=\")(\\w+)"), 1);
    members.merge(foundInExamples(std::regex("\"(color_\\w+)\""), 1));
    std::vector<const ClassTable*> tables(kWindowClasses.begin(), kWindowClasses.end());
    tables.insert(tables.end(),
                  {&PelSMSTableData::table, &ZuMultiSelectComboBoxData::table, &ZuOutlineItem::table});
    for (const ClassTable* each : tables) {
        for (const PropertyEntry& property : each->properties) {
            const std::string name(property.name);
            std::string setter = "set" + name;
            setter[3] = static_cast<char>(std::toupper(static_cast<unsigned char>(setter[3])));
            EXPECT_TRUE(members.contains(setter) || members.contains(name)) << each->name << ' ' << name;
        }
    }
}

} // namespace
