#include "Snapshots.h"

#include "PhoneManager.h"
#include "Resources.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

static void open(PhoneManager& manager, Kind kind)
{
    manager.outline->selectKind(kind);
    manager.openKind(nullptr);
}

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
    const Ref<PhoneManager> manager = make<PhoneManager>(work + "/settings.json");
    bool isComplete = true;
    const auto take = [&](const char* name) {
        constexpr double kPixelsPerPoint = 2.0;
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
    manager->task()->run();
    std::size_t place = 0; // every other record
    manager->phone()->visit([&](Kind, const std::string&, bool& isChecked) { isChecked = place++ % 2 == 0; });
    manager->phone()->didChange();
    open(*manager, Kind::Contacts);
    take("contacts.png");
    open(*manager, Kind::Messages);
    manager->outline->expandItem(manager->outline->itemAtRow(1).get());
    manager->messagesPage->tableView->selectRowIndexes_byExtendingSelection(
        NSIndexSet::indexSetWithIndex(4).get(), false);
    take("messages.png");
    open(*manager, Kind::Pictures);
    take("pictures.png");
    manager->exportTo(work);
    manager->task()->run();
    take("export.png");
    const fs::path broken = work + "/broken.csv";
    std::ofstream(broken) << "name,number\nAnna,1\n\"Ben\" Okafor,2\nClara,3\n";
    open(*manager, Kind::Contacts);
    manager->changeAppearance(nullptr);
    manager->importFiles({broken, "none such.csv"});
    manager->task()->run();
    take("faults.png");
    manager->switchLanguage(nullptr);
    take("german.png");
    fs::remove_all(work, error);
    return isComplete;
}
