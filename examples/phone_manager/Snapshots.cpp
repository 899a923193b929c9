#include "Snapshots.h"

#include "PhoneManager.h"
#include "Texts.h"

#include <platform/appkit/NSApplication.h>
#include <platform/appkit/NSEvent.h>
#include <platform/foundation/NSBundle.h>
#include <platform/foundation/NSIndexSet.h>
#include <platform/foundation/NSNumber.h>
#include <platform/foundation/NSUserDefaults.h>
#include <platform/graphics/NSImage.h>
#include <window/ZuOutlineItem.h>
#include <window/ZuToolButton.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

namespace
{

/// Leaves pictures of the program in a folder.
class Photographer
{
public:
    explicit Photographer(std::filesystem::path folder) : _folder(std::move(folder)) {}

    bool hasFailed() const { return _hasFailed; }

    void take(const PhoneManager& manager, const char* name)
    {
        constexpr double kPixelsPerPoint = 2.0;
        manager.content()->imageOfBounds(kPixelsPerPoint); // asks for small pictures, which come later
        settle();
        const std::filesystem::path file = _folder / (std::string(name) + ".png");
        const Ref<NSImage> picture = manager.content()->imageOfBounds(kPixelsPerPoint);
        if (picture && picture->writePNGToFile(file.string())) {
            std::printf("%s\n", file.c_str());
        } else {
            std::fprintf(stderr, "%s cannot be written\n", file.c_str());
            _hasFailed = true;
        }
    }

private:
    static void settle()
    {
        for (int turn = 0; turn < 10; ++turn) {
            NSApplication::sharedApplication()->handlePendingEvents();
        }
    }

    std::filesystem::path _folder;
    bool _hasFailed = false;
};

Ref<NSEvent> pointer(const NSView& view, NSEventType type, NSPoint point)
{
    return NSEvent::mouseEventWithType_location_window(type, view.convertPoint_toView(point, nullptr),
                                                       nullptr);
}

/// Clicks on the check of a row.
void clickCheck(NSTableView& view, std::int64_t row)
{
    constexpr double kInImage = 12.0;
    const NSRect cell = view.frameOfCellAtColumn_row(0, row);
    const NSPoint point{cell.origin.x + kInImage, cell.origin.y + cell.size.height * 0.5};
    view.mouseDown(pointer(view, NSEventType::LeftMouseDown, point).get());
    view.mouseUp(pointer(view, NSEventType::LeftMouseUp, point).get());
}

void select(NSTableView& view, std::size_t row)
{
    view.selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(row).get(), false);
}

void finishTask(const PhoneManager& manager)
{
    while (manager.task()->state() == Task::State::Running) {
        NSApplication::sharedApplication()->handlePendingEvents();
    }
}

void open(PhoneManager& manager, KindsView::Kind kind)
{
    manager.outline()->selectKind(kind);
    manager.openKind(nullptr);
}

void walk(Photographer& photographer, std::vector<std::filesystem::path> files,
          const std::filesystem::path& work)
{
    const std::string settings = (work / "settings.json").string();
    const Ref<PhoneManager> manager = make<PhoneManager>()->initWithSettingsFile(settings);
    photographer.take(*manager, "start");
    if (files.empty()) {
        manager->importSample(nullptr);
    } else {
        manager->importFiles(std::move(files));
    }
    photographer.take(*manager, "import");
    finishTask(*manager);

    open(*manager, KindsView::Kind::Contacts);
    NSTableView& contacts = *manager->contactsPage()->tableView();
    for (std::int64_t row = 0; row < contacts.numberOfRows() && row < 8; row += 2) {
        clickCheck(contacts, row);
    }
    photographer.take(*manager, "contacts");

    open(*manager, KindsView::Kind::Messages);
    NSTableView& messages = *manager->messagesPage()->tableView();
    for (std::int64_t row = 0; row < messages.numberOfRows() && row < 3; ++row) {
        clickCheck(messages, row);
    }
    if (messages.numberOfRows() > 4) {
        select(messages, 4);
    }
    KindsView& outline = *manager->outline();
    outline.expandItem(outline.itemAtRow(1).get());
    photographer.take(*manager, "messages");

    open(*manager, KindsView::Kind::Pictures);
    manager->picturesPage()->setHeaderCheckItem(NSNumber::numberWithInteger(1).get());
    photographer.take(*manager, "pictures");

    manager->exportTo(work);
    finishTask(*manager);
    photographer.take(*manager, "export");

    std::ofstream(work / "broken.csv") << "name,number\nAnna,1\n\"Ben\" Okafor,2\nClara,3\n";
    manager->importFiles({work / "broken.csv", work / "none such.csv"});
    finishTask(*manager);
    open(*manager, KindsView::Kind::Contacts);
    manager->changeAppearance(nullptr);
    manager->importFiles({work / "broken.csv", work / "none such.csv"});
    finishTask(*manager);
    photographer.take(*manager, "faults");

    manager->switchLanguage(nullptr);
    photographer.take(*manager, "german");

    std::ofstream(settings) << "{ \"color_border\": \"32,186,";
    photographer.take(*Ref<PhoneManager>(make<PhoneManager>()->initWithSettingsFile(settings)),
                      "broken-settings");
}

} // namespace

bool writeSnapshots(const std::filesystem::path& folder, std::vector<std::filesystem::path> files)
{
    std::string work = (std::filesystem::temp_directory_path() / "phone_manager-XXXXXX").string();
    if (mkdtemp(work.data()) == nullptr) {
        std::perror(work.c_str());
        return false;
    }
    std::error_code error; // shows with the first picture
    std::filesystem::create_directories(folder, error);
    NSUserDefaults::setStandardDomain(text(work + "/defaults.ini").get());
    NSUserDefaults::standardUserDefaults()->setObject_forKey(text("en").get(), text("Tavori").get());
    Photographer photographer(folder);
    walk(photographer, std::move(files), work);
    std::filesystem::remove_all(work, error);
    return !photographer.hasFailed();
}
