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
#include <initializer_list>
#include <string>

namespace fs = std::filesystem;

namespace
{

void check(Page& page, std::initializer_list<std::int64_t> rows)
{
    for (const std::int64_t row : rows) {
        if (row < page.tableView->numberOfRows()) {
            page.setCheckItem(NSNumber::numberWithInteger(row).get());
        }
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

} // namespace

bool writeSnapshots(const fs::path& folder, const std::vector<fs::path>& files)
{
    std::string work = P_tmpdir "/phone_manager-XXXXXX";
    if (mkdtemp(work.data()) == nullptr) {
        std::perror(work.c_str());
        return false;
    }
    std::error_code error; // shows with the first picture
    fs::create_directories(folder, error);
    NSUserDefaults::setStandardDomain(text(work + "/defaults.ini").get());
    setLanguage("en");
    const std::string settings = work + "/settings.json";
    const Ref<PhoneManager> manager = make<PhoneManager>(settings);
    bool isComplete = true;
    const auto take = [&](const char* name) {
        constexpr double kPixelsPerPoint = 2.0;
        manager->content()->imageOfBounds(kPixelsPerPoint); // asks for small pictures, which come later
        for (int turn = 0; turn < 10; ++turn) {
            NSApplication::sharedApplication()->handlePendingEvents();
        }
        const std::string file = (folder / name).string();
        const Ref<NSImage> picture = manager->content()->imageOfBounds(kPixelsPerPoint);
        const bool isWritten = picture && picture->writePNGToFile(file);
        std::fprintf(isWritten ? stdout : stderr, isWritten ? "%s\n" : "%s cannot be written\n",
                     file.c_str());
        isComplete = isComplete && isWritten;
    };
    take("start.png");
    if (files.empty()) {
        manager->importSample(nullptr);
    } else {
        manager->importFiles(files);
    }
    take("import.png");
    finishTask(*manager);

    open(*manager, KindsView::Kind::Contacts);
    check(*manager->contactsPage, {0, 2, 4});
    take("contacts.png");

    open(*manager, KindsView::Kind::Messages);
    check(*manager->messagesPage, {0, 1, 2});
    manager->messagesPage->tableView->selectRowIndexes_byExtendingSelection(
        NSIndexSet::indexSetWithIndex(4).get(), false);
    manager->outline->expandItem(manager->outline->itemAtRow(1).get());
    take("messages.png");

    open(*manager, KindsView::Kind::Pictures);
    manager->picturesPage->setHeaderCheckItem(NSNumber::numberWithInteger(1).get());
    take("pictures.png");

    manager->exportTo(work);
    finishTask(*manager);
    take("export.png");

    const fs::path broken = work + "/broken.csv";
    std::ofstream(broken) << "name,number\nAnna,1\n\"Ben\" Okafor,2\nClara,3\n";
    open(*manager, KindsView::Kind::Contacts);
    manager->changeAppearance(nullptr);
    manager->importFiles({broken, "none such.csv"});
    finishTask(*manager);
    take("faults.png");

    manager->switchLanguage(nullptr);
    take("german.png");
    fs::remove_all(work, error);
    return isComplete;
}
