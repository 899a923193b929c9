#include "Snapshots.h"

#include "PhoneManager.h"
#include "Resources.h"

#include <platform/appkit/NSApplication.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/foundation/NSNumber.h>
#include <platform/foundation/NSUserDefaults.h>
#include <platform/graphics/NSImage.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

namespace fs = std::filesystem;

namespace
{

/// Leaves pictures of the program in a folder.
class Photographer
{
public:
    explicit Photographer(fs::path folder) : _folder(std::move(folder)) {}

    bool hasFailed() const { return _hasFailed; }

    void take(const PhoneManager& manager, const char* name)
    {
        constexpr double kPixelsPerPoint = 2.0;
        manager.content()->imageOfBounds(kPixelsPerPoint); // asks for small pictures, which come later
        for (int turn = 0; turn < 10; ++turn) {
            NSApplication::sharedApplication()->handlePendingEvents();
        }
        const fs::path file = _folder / (std::string(name) + ".png");
        const Ref<NSImage> picture = manager.content()->imageOfBounds(kPixelsPerPoint);
        if (picture && picture->writePNGToFile(file.string())) {
            std::printf("%s\n", file.c_str());
        } else {
            std::fprintf(stderr, "%s cannot be written\n", file.c_str());
            _hasFailed = true;
        }
    }

private:
    fs::path _folder;
    bool _hasFailed = false;
};

void check(Page& page, std::int64_t row)
{
    if (row < page.tableView->numberOfRows()) {
        page.setCheckItem(NSNumber::numberWithInteger(row).get());
    }
}

void finishTask(const PhoneManager& manager)
{
    while (manager.task()->state() == Task::State::Running) {
        NSApplication::sharedApplication()->handlePendingEvents();
    }
}

void open(PhoneManager& manager, KindsView::Kind kind)
{
    manager.outline->selectKind(kind);
    manager.openKind(nullptr);
}

void walk(Photographer& photographer, const std::vector<fs::path>& files, const fs::path& work)
{
    const std::string settings = (work / "settings.json").string();
    const Ref<PhoneManager> manager = make<PhoneManager>(settings);
    photographer.take(*manager, "start");
    if (files.empty()) {
        manager->importSample(nullptr);
    } else {
        manager->importFiles(files);
    }
    photographer.take(*manager, "import");
    finishTask(*manager);

    open(*manager, KindsView::Kind::Contacts);
    for (const std::int64_t row : {0, 2, 4, 6}) {
        check(*manager->contactsPage, row);
    }
    photographer.take(*manager, "contacts");

    open(*manager, KindsView::Kind::Messages);
    for (const std::int64_t row : {0, 1, 2}) {
        check(*manager->messagesPage, row);
    }
    manager->messagesPage->tableView->selectRowIndexes_byExtendingSelection(
        NSIndexSet::indexSetWithIndex(4).get(), false);
    manager->outline->expandItem(manager->outline->itemAtRow(1).get());
    photographer.take(*manager, "messages");

    open(*manager, KindsView::Kind::Pictures);
    manager->picturesPage->setHeaderCheckItem(NSNumber::numberWithInteger(1).get());
    photographer.take(*manager, "pictures");

    manager->exportTo(work);
    finishTask(*manager);
    photographer.take(*manager, "export");

    std::ofstream(work / "broken.csv") << "name,number\nAnna,1\n\"Ben\" Okafor,2\nClara,3\n";
    open(*manager, KindsView::Kind::Contacts);
    manager->changeAppearance(nullptr);
    manager->importFiles({work / "broken.csv", work / "none such.csv"});
    finishTask(*manager);
    photographer.take(*manager, "faults");

    manager->switchLanguage(nullptr);
    photographer.take(*manager, "german");

    std::ofstream(settings) << "{ \"color_border\": \"32,186,";
    photographer.take(*make<PhoneManager>(settings), "broken-settings");
}

} // namespace

bool writeSnapshots(const fs::path& folder, const std::vector<fs::path>& files)
{
    std::string work = (fs::temp_directory_path() / "phone_manager-XXXXXX").string();
    if (mkdtemp(work.data()) == nullptr) {
        std::perror(work.c_str());
        return false;
    }
    std::error_code error; // shows with the first picture
    fs::create_directories(folder, error);
    NSUserDefaults::setStandardDomain(text(work + "/defaults.ini").get());
    NSUserDefaults::standardUserDefaults()->setObject_forKey(text("en").get(), text("Tavori").get());
    Photographer photographer(folder);
    walk(photographer, files, work);
    fs::remove_all(work, error);
    return !photographer.hasFailed();
}
